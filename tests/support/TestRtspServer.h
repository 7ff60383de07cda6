// An RTSP server on 127.0.0.1 for tests, on an ephemeral port and a thread
// of its own: one live stream made by a pipeline description whose payloaders
// are named pay0, pay1, ... It answers rtsp:// (RTP over UDP) and rtspt://
// (RTP interleaved in the TCP connection) alike.
//
//   TestRtspServer server;                 // video (H.264) and sound (Opus)
//   server.Url("rtsp"), server.Url("rtspt")  "rtsp://127.0.0.1:PORT/stream"
#pragma once
#include <string>
#include <thread>

class TestRtspServer {
public:
    static const char* const kVideoAndSound;

    explicit TestRtspServer(const std::string& launch = kVideoAndSound);
    ~TestRtspServer();
    TestRtspServer(const TestRtspServer&) = delete;
    TestRtspServer& operator=(const TestRtspServer&) = delete;

    int Port() const { return m_port; }
    std::string Url(const std::string& scheme = "rtsp") const;

private:
    struct Context;
    Context* m_context;
    int m_port = 0;
    std::thread m_thread;
};
