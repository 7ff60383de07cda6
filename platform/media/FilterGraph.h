// The Filter Graph Manager: one pipeline holding the filters' bins and the
// renderer branches it adds itself. Its state, clock, events, seeking,
// volume and picture placement are the pipeline's, in the engine's units.
#pragma once
#include <condition_variable>
#include <deque>

#include "platform/media/GstFilter.h"

class CFilterGraph final : public IGraphBuilder,
                           public IMediaControl,
                           public IMediaEventEx,
                           public IMediaSeeking,
                           public IBasicAudio,
                           public IBasicVideo,
                           public IVideoWindow,
                           public IGraphErrorText,
                           public IGraphStreamTitle {
public:
    CFilterGraph();
    ~CFilterGraph();
    CFilterGraph(const CFilterGraph&) = delete;
    CFilterGraph& operator=(const CFilterGraph&) = delete;

    HRESULT QueryInterface(REFIID riid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;

    // IGraphBuilder
    HRESULT AddFilter(IBaseFilter* filter, LPCWSTR name) override;
    HRESULT RemoveFilter(IBaseFilter* filter) override;
    HRESULT Render(IPin* pin) override;

    // IMediaControl
    HRESULT Run() override;
    HRESULT Pause() override;
    HRESULT Stop() override;
    HRESULT GetState(LONG timeoutMs, OAFilterState* state) override;

    // IMediaEventEx
    HRESULT GetEvent(LONG* code, LONG_PTR* param1, LONG_PTR* param2, LONG timeoutMs) override;
    HRESULT FreeEventParams(LONG code, LONG_PTR param1, LONG_PTR param2) override;
    HRESULT WaitForCompletion(LONG timeoutMs, LONG* code) override;
    HRESULT SetNotifyWindow(HWND window, UINT message, LONG_PTR instance) override;

    // IMediaSeeking
    HRESULT CheckCapabilities(DWORD* capabilities) override;
    HRESULT GetDuration(LONGLONG* duration) override;
    HRESULT GetCurrentPosition(LONGLONG* position) override;
    HRESULT SetPositions(LONGLONG* current, DWORD currentFlags, LONGLONG* stop,
                         DWORD stopFlags) override;

    // IBasicAudio
    HRESULT put_Volume(LONG volume) override;
    HRESULT get_Volume(LONG* volume) override;

    // IBasicVideo
    HRESULT GetVideoSize(LONG* width, LONG* height) override;

    // IVideoWindow
    HRESULT put_Owner(HWND owner) override;
    HRESULT get_Owner(HWND* owner) override;
    HRESULT put_MessageDrain(HWND drain) override;
    HRESULT get_MessageDrain(HWND* drain) override;
    HRESULT put_WindowStyle(LONG style) override;
    HRESULT get_WindowStyle(LONG* style) override;
    HRESULT put_Visible(LONG visible) override;
    HRESULT get_Visible(LONG* visible) override;
    HRESULT SetWindowPosition(LONG left, LONG top, LONG width, LONG height) override;
    HRESULT GetWindowPosition(LONG* left, LONG* top, LONG* width, LONG* height) override;

    // IGraphErrorText
    HRESULT GetErrorText(CString* text) override;

    // IGraphStreamTitle
    HRESULT GetStreamTitle(CString* text) override;

private:
    struct FilterEntry {
        IBaseFilter* filter;
        IGstFilter* gst;
        std::u16string name;
    };
    struct GraphEvent {
        LONG code;
        LONG_PTR param1;
        LONG_PTR param2;
    };

    static GstBusSyncReply OnBusMessage(GstBus* bus, GstMessage* message, gpointer self);
    void HandleBusMessage(GstMessage* message);
    void QueueEvent(LONG code, LONG_PTR param1, LONG_PTR param2);
    void OnError(GstMessage* message);
    void OnBuffering(GstMessage* message);
    void OnTags(GstMessage* message);
    // Has a pool thread of the pipeline library run work that changes the
    // pipeline, which the threads that post messages must never do.
    void CallAsync(void (*work)(CFilterGraph* graph));
    // Puts the pipeline where the wish of the user and the buffer put it.
    static void FollowTarget(CFilterGraph* graph);
    GstState PipelineTargetLocked() const;
    void PrepareFilters();
    HRESULT SetTargetState(OAFilterState filterState);
    void ApplyOverlay();
    void PlacePictureWindow();
    HRESULT RenderVideo(GstPad* pad, GstCaps* caps);
    HRESULT RenderAudio(GstPad* pad);
    GstElement* AddBranch(const std::string& description, GstPad* from);

    std::atomic<ULONG> m_refs{1};
    GstElement* m_pipeline;
    std::vector<FilterEntry> m_filters;
    bool m_prepared = false;
    // Held by whoever changes the pipeline's state, so that a change made
    // on behalf of the buffer never undoes a later one of the user's.
    std::mutex m_stateLock;

    // Audio branches' volume elements and the level they were given.
    std::vector<GstElement*> m_volumes;
    LONG m_volume = 0;

    // The picture: the branch's sink, its size as known before the first
    // frame, and where the owner wants it.
    // Recursive: a sink may ask for its window from inside an overlay call
    // made under this lock, on the same thread.
    std::recursive_mutex m_videoLock;
    GstElement* m_videoSink = nullptr;
    GstElement* m_overlay = nullptr;
    LONG m_videoWidth = 0;
    LONG m_videoHeight = 0;
    HWND m_owner = nullptr;
    HWND m_drain = nullptr;
    LONG m_style = 0;
    LONG m_visible = OATRUE;
    LONG m_left = 0, m_top = 0, m_width = 0, m_height = 0;

    // Events: queued by the pipeline's threads, taken on the user interface
    // thread, announced by a posted message. The run state lives under the
    // same lock: the state the user asked for, and whether a network stream
    // that ran dry holds the pipeline paused until it has refilled.
    std::mutex m_eventLock;
    std::condition_variable m_eventReady;
    std::deque<GraphEvent> m_events;
    OAFilterState m_target = State_Stopped;
    bool m_live = false;
    bool m_buffering = false;
    bool m_complete = false;
    LONG m_completeCode = 0;
    std::string m_errorText;
    // The last title the renderers heard, and how many came so far.
    std::string m_streamTitle;
    LONG_PTR m_titleCount = 0;
    int m_asyncCalls = 0;
    bool m_closing = false;
    HWND m_notify = nullptr;
    UINT m_notifyMessage = 0;
    LONG_PTR m_notifyInstance = 0;
};
