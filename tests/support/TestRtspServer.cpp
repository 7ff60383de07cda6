#include "tests/support/TestRtspServer.h"

#include <gst/rtsp-server/rtsp-server.h>

#include <stdexcept>

const char* const TestRtspServer::kVideoAndSound =
    "( videotestsrc is-live=true ! video/x-raw,width=320,height=240,framerate=25/1 ! "
    "x264enc tune=zerolatency speed-preset=ultrafast key-int-max=25 ! rtph264pay name=pay0 pt=96 "
    "audiotestsrc is-live=true ! audioconvert ! opusenc ! rtpopuspay name=pay1 pt=97 )";

struct TestRtspServer::Context {
    GMainContext* context = nullptr;
    GMainLoop* loop = nullptr;
    GstRTSPServer* server = nullptr;
    guint source = 0;
};

TestRtspServer::TestRtspServer(const std::string& launch) : m_context(new Context) {
    if (!gst_is_initialized() && !gst_init_check(nullptr, nullptr, nullptr))
        throw std::runtime_error("TestRtspServer: no media pipeline library");
    m_context->context = g_main_context_new();
    m_context->loop = g_main_loop_new(m_context->context, FALSE);
    m_context->server = gst_rtsp_server_new();
    gst_rtsp_server_set_address(m_context->server, "127.0.0.1");
    gst_rtsp_server_set_service(m_context->server, "0");

    GstRTSPMediaFactory* factory = gst_rtsp_media_factory_new();
    gst_rtsp_media_factory_set_launch(factory, launch.c_str());
    gst_rtsp_media_factory_set_shared(factory, TRUE);
    GstRTSPMountPoints* mounts = gst_rtsp_server_get_mount_points(m_context->server);
    gst_rtsp_mount_points_add_factory(mounts, "/stream", factory);
    g_object_unref(mounts);

    m_context->source = gst_rtsp_server_attach(m_context->server, m_context->context);
    m_port = gst_rtsp_server_get_bound_port(m_context->server);
    if (m_context->source == 0 || m_port <= 0)
        throw std::runtime_error("TestRtspServer: cannot listen on 127.0.0.1");
    m_thread = std::thread([loop = m_context->loop] { g_main_loop_run(loop); });
}

TestRtspServer::~TestRtspServer() {
    g_main_loop_quit(m_context->loop);
    m_thread.join();
    if (GSource* source = g_main_context_find_source_by_id(m_context->context, m_context->source))
        g_source_destroy(source);
    // Sessions and their media go with the server's pool.
    GstRTSPSessionPool* pool = gst_rtsp_server_get_session_pool(m_context->server);
    gst_rtsp_session_pool_cleanup(pool);
    g_object_unref(pool);
    g_object_unref(m_context->server);
    g_main_loop_unref(m_context->loop);
    g_main_context_unref(m_context->context);
    delete m_context;
}

std::string TestRtspServer::Url(const std::string& scheme) const {
    return scheme + "://127.0.0.1:" + std::to_string(m_port) + "/stream";
}
