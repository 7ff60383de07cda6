// The graph's events and picture: bus messages become queued events that a
// posted message announces, and the picture follows its owner window.
#include <gst/video/video.h>

#include <algorithm>
#include <chrono>

#include "platform/media/FilterGraph.h"
#include "platform/media/GraphSettings.h"

namespace {

// A guard on the queue's length; with one waiting event of each kind it is
// never reached in practice.
constexpr size_t kMaxQueuedEvents = 256;

// The events that end a graph's streams. None is ever dropped.
bool IsEnding(LONG code) {
    return code == EC_COMPLETE || code == EC_USERABORT || code == EC_ERRORABORT;
}

} // namespace

GstBusSyncReply CFilterGraph::OnBusMessage(GstBus*, GstMessage* message, gpointer self) {
    static_cast<CFilterGraph*>(self)->HandleBusMessage(message);
    // Everything is handled here, on the thread that posts it; nothing is
    // left on the bus to pile up.
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void CFilterGraph::HandleBusMessage(GstMessage* message) {
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_EOS:
        if (GST_MESSAGE_SRC(message) == GST_OBJECT(m_pipeline))
            QueueEvent(EC_COMPLETE, S_OK, 0);
        break;
    case GST_MESSAGE_ERROR:
        OnError(message);
        break;
    case GST_MESSAGE_BUFFERING:
        OnBuffering(message);
        break;
    case GST_MESSAGE_LATENCY:
        // A live source changed how long it holds data back; the renderers
        // must hear of it.
        CallAsync(
            [](CFilterGraph* graph) { gst_bin_recalculate_latency(GST_BIN(graph->m_pipeline)); });
        break;
    case GST_MESSAGE_CLOCK_LOST:
        // The element that gave the clock went; a pause and a run pick
        // another one.
        CallAsync([](CFilterGraph* graph) {
            GstState target;
            {
                std::lock_guard<std::mutex> lock(graph->m_eventLock);
                target = graph->PipelineTargetLocked();
            }
            if (target == GST_STATE_PLAYING) {
                gst_element_set_state(graph->m_pipeline, GST_STATE_PAUSED);
                gst_element_set_state(graph->m_pipeline, GST_STATE_PLAYING);
            }
        });
        break;
    case GST_MESSAGE_TAG:
        OnTags(message);
        break;
    case GST_MESSAGE_ELEMENT: {
        LONG code = 0;
        LONG_PTR param1 = 0, param2 = 0;
        if (ParseGraphNotice(message, &code, &param1, &param2)) {
            QueueEvent(code, param1, param2);
        } else if (gst_is_video_overlay_prepare_window_handle_message(message)) {
            std::lock_guard<std::recursive_mutex> lock(m_videoLock);
            if (m_overlay)
                gst_object_unref(m_overlay);
            m_overlay = GST_ELEMENT(gst_object_ref(GST_MESSAGE_SRC(message)));
            if (uintptr_t window = ResolveNativeWindow(m_owner)) {
                gst_video_overlay_set_window_handle(GST_VIDEO_OVERLAY(m_overlay), window);
                // With a drain, mouse and keys go on to the owner window.
                gst_video_overlay_handle_events(GST_VIDEO_OVERLAY(m_overlay),
                                                m_drain ? FALSE : TRUE);
                ApplyOverlay();
            }
        }
        break;
    }
    default:
        break;
    }
}

// An error ends the streams: the pipeline stops delivering, so the graph
// says so the way every end is said, and keeps the words of the first error
// (later ones follow from it) for the user.
void CFilterGraph::OnError(GstMessage* message) {
    GError* error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    {
        std::lock_guard<std::mutex> lock(m_eventLock);
        if (m_errorText.empty())
            m_errorText = error && error->message ? error->message : "Internal data stream error.";
    }
    if (error)
        g_error_free(error);
    QueueEvent(EC_ERRORABORT, E_FAIL, 0);
    QueueEvent(EC_COMPLETE, E_FAIL, 0);
}

// A network stream whose buffer runs low pauses until it is full again, as
// long as the user wants it running. A live source is never held: it would
// only fall behind.
void CFilterGraph::OnBuffering(GstMessage* message) {
    gint percent = 100;
    gst_message_parse_buffering(message, &percent);
    GstBufferingMode mode = GST_BUFFERING_STREAM;
    gst_message_parse_buffering_stats(message, &mode, nullptr, nullptr, nullptr);
    if (mode == GST_BUFFERING_LIVE)
        return;
    {
        std::lock_guard<std::mutex> lock(m_eventLock);
        bool buffering = percent < 100 && m_target == State_Running && !m_live;
        if (buffering == m_buffering)
            return;
        m_buffering = buffering;
    }
    CallAsync(FollowTarget);
}

// A new title of the stream counts once the renderers have it: what the
// user hears, not what the network has brought ahead of it. Each sink tells
// of the same tags, so only a title that differs from the last is news.
void CFilterGraph::OnTags(GstMessage* message) {
    GstObject* source = GST_MESSAGE_SRC(message);
    if (!GST_IS_ELEMENT(source) || !GST_OBJECT_FLAG_IS_SET(source, GST_ELEMENT_FLAG_SINK))
        return;
    GstTagList* tags = nullptr;
    gst_message_parse_tag(message, &tags);
    std::string title = StreamTitleOfTags(tags);
    if (tags)
        gst_tag_list_unref(tags);
    if (title.empty())
        return;
    LONG_PTR count;
    {
        std::lock_guard<std::mutex> lock(m_eventLock);
        if (title == m_streamTitle)
            return;
        m_streamTitle = title;
        count = ++m_titleCount;
    }
    QueueEvent(EC_STREAM_TITLE, count, 0);
}

HRESULT CFilterGraph::GetStreamTitle(CString* text) {
    if (!text)
        return E_POINTER;
    std::lock_guard<std::mutex> lock(m_eventLock);
    if (m_streamTitle.empty())
        return E_FAIL;
    *text = CString(m_streamTitle);
    return S_OK;
}

void CFilterGraph::CallAsync(void (*work)(CFilterGraph* graph)) {
    {
        std::lock_guard<std::mutex> lock(m_eventLock);
        if (m_closing)
            return;
        ++m_asyncCalls;
    }
    struct Call {
        CFilterGraph* graph;
        void (*work)(CFilterGraph*);
    };
    gst_element_call_async(
        m_pipeline,
        [](GstElement*, gpointer data) {
            auto* call = static_cast<Call*>(data);
            CFilterGraph* graph = call->graph;
            {
                std::lock_guard<std::mutex> state(graph->m_stateLock);
                bool closing;
                {
                    std::lock_guard<std::mutex> lock(graph->m_eventLock);
                    closing = graph->m_closing;
                }
                if (!closing)
                    call->work(graph);
            }
            std::lock_guard<std::mutex> lock(graph->m_eventLock);
            --graph->m_asyncCalls;
            graph->m_eventReady.notify_all();
        },
        new Call{this, work}, [](gpointer data) { delete static_cast<Call*>(data); });
}

// Runs with the state lock held.
void CFilterGraph::FollowTarget(CFilterGraph* graph) {
    GstState target;
    {
        std::lock_guard<std::mutex> lock(graph->m_eventLock);
        target = graph->PipelineTargetLocked();
    }
    if (target != GST_STATE_NULL)
        gst_element_set_state(graph->m_pipeline, target);
}

void CFilterGraph::QueueEvent(LONG code, LONG_PTR param1, LONG_PTR param2) {
    HWND notify;
    UINT notifyMessage;
    LONG_PTR instance;
    {
        std::lock_guard<std::mutex> lock(m_eventLock);
        if (IsEnding(code) && !m_complete) {
            m_complete = true;
            m_completeCode = code;
        }
        // One waiting event of each kind: a later one of an ending kind adds
        // nothing, any other brings its newer values to the waiting one.
        for (GraphEvent& waiting : m_events) {
            if (waiting.code != code)
                continue;
            if (!IsEnding(code)) {
                waiting.param1 = param1;
                waiting.param2 = param2;
            }
            return;
        }
        if (m_events.size() >= kMaxQueuedEvents) {
            auto oldest = std::find_if(m_events.begin(), m_events.end(),
                                       [](const GraphEvent& e) { return !IsEnding(e.code); });
            if (oldest != m_events.end())
                m_events.erase(oldest);
        }
        m_events.push_back({code, param1, param2});
        notify = m_notify;
        notifyMessage = m_notifyMessage;
        instance = m_notifyInstance;
    }
    m_eventReady.notify_all();
    if (notify)
        PostMessageW(notify, notifyMessage, 0, instance);
}

HRESULT CFilterGraph::GetErrorText(CString* text) {
    if (!text)
        return E_POINTER;
    std::lock_guard<std::mutex> lock(m_eventLock);
    if (m_errorText.empty())
        return E_FAIL;
    *text = CString(m_errorText);
    return S_OK;
}

HRESULT CFilterGraph::GetEvent(LONG* code, LONG_PTR* param1, LONG_PTR* param2, LONG timeoutMs) {
    if (!code || !param1 || !param2)
        return E_POINTER;
    std::unique_lock<std::mutex> lock(m_eventLock);
    auto ready = [this] { return !m_events.empty(); };
    if (timeoutMs < 0)
        m_eventReady.wait(lock, ready);
    else if (timeoutMs > 0)
        m_eventReady.wait_for(lock, std::chrono::milliseconds(timeoutMs), ready);
    if (m_events.empty())
        return E_ABORT;
    GraphEvent e = m_events.front();
    m_events.pop_front();
    *code = e.code;
    *param1 = e.param1;
    *param2 = e.param2;
    return S_OK;
}

HRESULT CFilterGraph::FreeEventParams(LONG, LONG_PTR, LONG_PTR) {
    // Every parameter this graph hands out is a number.
    return S_OK;
}

HRESULT CFilterGraph::WaitForCompletion(LONG timeoutMs, LONG* code) {
    if (!code)
        return E_POINTER;
    *code = 0;
    std::unique_lock<std::mutex> lock(m_eventLock);
    auto done = [this] { return m_complete || m_target != State_Running; };
    if (m_target != State_Running)
        return VFW_E_WRONG_STATE;
    if (timeoutMs < 0)
        m_eventReady.wait(lock, done);
    else
        m_eventReady.wait_for(lock, std::chrono::milliseconds(timeoutMs), done);
    if (!m_complete)
        return E_ABORT;
    *code = m_completeCode;
    return S_OK;
}

HRESULT CFilterGraph::SetNotifyWindow(HWND window, UINT message, LONG_PTR instance) {
    bool pending;
    {
        std::lock_guard<std::mutex> lock(m_eventLock);
        m_notify = window;
        m_notifyMessage = message;
        m_notifyInstance = instance;
        pending = window && !m_events.empty();
    }
    if (pending)
        PostMessageW(window, message, 0, instance);
    return S_OK;
}

// ---- picture ----

void CFilterGraph::ApplyOverlay() {
    if (m_overlay && HasNativeWindowPlacer()) {
        // The picture has a window of its own, placed by the owner.
        gst_video_overlay_expose(GST_VIDEO_OVERLAY(m_overlay));
        return;
    }
    if (!m_overlay || m_width <= 0 || m_height <= 0)
        return;
    if (m_visible)
        gst_video_overlay_set_render_rectangle(GST_VIDEO_OVERLAY(m_overlay), m_left, m_top, m_width,
                                               m_height);
    else
        gst_video_overlay_set_render_rectangle(GST_VIDEO_OVERLAY(m_overlay), 0, 0, 1, 1);
    gst_video_overlay_expose(GST_VIDEO_OVERLAY(m_overlay));
}

HRESULT CFilterGraph::GetVideoSize(LONG* width, LONG* height) {
    if (!width || !height)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    if (!m_videoSink)
        return VFW_E_NOT_CONNECTED;
    LONG w = m_videoWidth, h = m_videoHeight;
    GstPad* pad = gst_element_get_static_pad(m_videoSink, "sink");
    GstCaps* caps = pad ? gst_pad_get_current_caps(pad) : nullptr;
    GstVideoInfo info;
    if (caps && gst_video_info_from_caps(&info, caps) && info.width > 0 && info.height > 0) {
        w = info.width;
        h = info.height;
        if (info.par_n > 0 && info.par_d > 0 && info.par_n != info.par_d)
            w = static_cast<LONG>(static_cast<int64_t>(w) * info.par_n / info.par_d);
    }
    if (caps)
        gst_caps_unref(caps);
    if (pad)
        gst_object_unref(pad);
    if (w <= 0 || h <= 0)
        return E_FAIL;
    *width = w;
    *height = h;
    return S_OK;
}

HRESULT CFilterGraph::put_Owner(HWND owner) {
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    if (!m_videoSink)
        return E_NOINTERFACE;
    m_owner = owner;
    if (m_overlay) {
        gst_video_overlay_set_window_handle(GST_VIDEO_OVERLAY(m_overlay),
                                            ResolveNativeWindow(owner));
        ApplyOverlay();
    }
    return S_OK;
}

HRESULT CFilterGraph::get_Owner(HWND* owner) {
    if (!owner)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    *owner = m_owner;
    return m_videoSink ? S_OK : E_NOINTERFACE;
}

HRESULT CFilterGraph::put_MessageDrain(HWND drain) {
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    if (!m_videoSink)
        return E_NOINTERFACE;
    m_drain = drain;
    if (m_overlay)
        gst_video_overlay_handle_events(GST_VIDEO_OVERLAY(m_overlay), drain ? FALSE : TRUE);
    return S_OK;
}

HRESULT CFilterGraph::get_MessageDrain(HWND* drain) {
    if (!drain)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    *drain = m_drain;
    return m_videoSink ? S_OK : E_NOINTERFACE;
}

HRESULT CFilterGraph::put_WindowStyle(LONG style) {
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    if (!m_videoSink)
        return E_NOINTERFACE;
    m_style = style;
    return S_OK;
}

HRESULT CFilterGraph::get_WindowStyle(LONG* style) {
    if (!style)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    *style = m_style;
    return m_videoSink ? S_OK : E_NOINTERFACE;
}

HRESULT CFilterGraph::put_Visible(LONG visible) {
    {
        std::lock_guard<std::recursive_mutex> lock(m_videoLock);
        if (!m_videoSink)
            return E_NOINTERFACE;
        m_visible = visible ? OATRUE : OAFALSE;
    }
    PlacePictureWindow();
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    ApplyOverlay();
    return S_OK;
}

void CFilterGraph::PlacePictureWindow() {
    HWND owner;
    LONG left, top, width, height;
    bool visible;
    {
        std::lock_guard<std::recursive_mutex> lock(m_videoLock);
        owner = m_owner;
        left = m_left;
        top = m_top;
        width = m_width;
        height = m_height;
        visible = m_visible != OAFALSE;
    }
    // Outside the lock: the owner's toolkit may call back into the graph.
    PlaceNativeWindow(owner, left, top, width, height, visible);
}

HRESULT CFilterGraph::get_Visible(LONG* visible) {
    if (!visible)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    *visible = m_visible;
    return m_videoSink ? S_OK : E_NOINTERFACE;
}

HRESULT CFilterGraph::SetWindowPosition(LONG left, LONG top, LONG width, LONG height) {
    if (width < 0 || height < 0)
        return E_INVALIDARG;
    {
        std::lock_guard<std::recursive_mutex> lock(m_videoLock);
        if (!m_videoSink)
            return E_NOINTERFACE;
        m_left = left;
        m_top = top;
        m_width = width;
        m_height = height;
    }
    PlacePictureWindow();
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    ApplyOverlay();
    return S_OK;
}

HRESULT CFilterGraph::GetWindowPosition(LONG* left, LONG* top, LONG* width, LONG* height) {
    if (!left || !top || !width || !height)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    *left = m_left;
    *top = m_top;
    *width = m_width;
    *height = m_height;
    return m_videoSink ? S_OK : E_NOINTERFACE;
}
