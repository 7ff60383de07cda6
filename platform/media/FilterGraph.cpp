#include "platform/media/FilterGraph.h"

#include <algorithm>
#include <cmath>

#include "platform/media/GraphSettings.h"

namespace {

OAFilterState ToFilterState(GstState state) {
    switch (state) {
    case GST_STATE_PLAYING:
        return State_Running;
    case GST_STATE_PAUSED:
        return State_Paused;
    default:
        return State_Stopped;
    }
}

} // namespace

CFilterGraph::CFilterGraph() {
    m_pipeline = gst_pipeline_new("filtergraph");
    gst_object_ref_sink(m_pipeline);
    GstBus* bus = gst_pipeline_get_bus(GST_PIPELINE(m_pipeline));
    gst_bus_set_sync_handler(bus, &CFilterGraph::OnBusMessage, this, nullptr);
    gst_object_unref(bus);
}

CFilterGraph::~CFilterGraph() {
    {
        std::lock_guard<std::mutex> lock(m_eventLock);
        m_closing = true;
    }
    {
        std::lock_guard<std::mutex> state(m_stateLock);
        gst_element_set_state(m_pipeline, GST_STATE_NULL);
    }
    {
        // Work already handed to the pool finds the graph closing and ends.
        std::unique_lock<std::mutex> lock(m_eventLock);
        m_eventReady.wait(lock, [this] { return m_asyncCalls == 0; });
    }
    GstBus* bus = gst_pipeline_get_bus(GST_PIPELINE(m_pipeline));
    gst_bus_set_sync_handler(bus, nullptr, nullptr, nullptr);
    gst_object_unref(bus);
    for (GstElement* v : m_volumes)
        gst_object_unref(v);
    if (m_overlay)
        gst_object_unref(m_overlay);
    if (m_videoSink)
        gst_object_unref(m_videoSink);
    std::vector<FilterEntry> filters;
    filters.swap(m_filters);
    for (FilterEntry& e : filters) {
        e.gst->JoinGraph(nullptr);
        gst_bin_remove(GST_BIN(m_pipeline), e.gst->GetElement());
        e.gst->Release();
        e.filter->Release();
    }
    gst_object_unref(m_pipeline);
}

HRESULT CFilterGraph::QueryInterface(REFIID riid, void** ppv) {
    if (!ppv)
        return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IGraphBuilder)
        *ppv = static_cast<IGraphBuilder*>(this);
    else if (riid == IID_IMediaControl)
        *ppv = static_cast<IMediaControl*>(this);
    else if (riid == IID_IMediaEventEx)
        *ppv = static_cast<IMediaEventEx*>(this);
    else if (riid == IID_IMediaSeeking)
        *ppv = static_cast<IMediaSeeking*>(this);
    else if (riid == IID_IBasicAudio)
        *ppv = static_cast<IBasicAudio*>(this);
    else if (riid == IID_IBasicVideo)
        *ppv = static_cast<IBasicVideo*>(this);
    else if (riid == IID_IVideoWindow)
        *ppv = static_cast<IVideoWindow*>(this);
    else if (riid == IID_IGraphErrorText)
        *ppv = static_cast<IGraphErrorText*>(this);
    else if (riid == IID_IGraphStreamTitle)
        *ppv = static_cast<IGraphStreamTitle*>(this);
    else {
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG CFilterGraph::AddRef() {
    return ++m_refs;
}

ULONG CFilterGraph::Release() {
    ULONG left = --m_refs;
    if (left == 0)
        delete this;
    return left;
}

// ---- building ----

HRESULT CFilterGraph::AddFilter(IBaseFilter* filter, LPCWSTR name) {
    if (!filter)
        return E_POINTER;
    IGstFilter* gst = nullptr;
    if (FAILED(filter->QueryInterface(IID_IGstFilter, reinterpret_cast<void**>(&gst))))
        return E_NOINTERFACE;
    GstElement* bin = gst->GetElement();
    if (GST_OBJECT_PARENT(bin) != nullptr) {
        gst->Release();
        return VFW_E_WRONG_STATE;
    }
    // The graph waits in the paused state from the start, so that a source
    // that has already opened its medium keeps its place, and every element
    // added later prerolls as soon as data reaches it.
    GstState current = GST_STATE_NULL;
    gst_element_get_state(m_pipeline, &current, nullptr, 0);
    if (current == GST_STATE_NULL &&
        gst_element_set_state(m_pipeline, GST_STATE_PAUSED) == GST_STATE_CHANGE_FAILURE) {
        gst->Release();
        return E_FAIL;
    }
    if (!gst_bin_add(GST_BIN(m_pipeline), bin)) {
        gst->Release();
        return E_FAIL;
    }
    GstState binState = GST_STATE_NULL;
    gst_element_get_state(bin, &binState, nullptr, 0);
    if (binState == GST_STATE_NULL)
        gst_element_sync_state_with_parent(bin);
    // Only a live source comes already playing: it cannot wait for anyone.
    if (binState == GST_STATE_PLAYING) {
        std::lock_guard<std::mutex> lock(m_eventLock);
        m_live = true;
    }
    filter->AddRef();
    m_filters.push_back({filter, gst, name ? std::u16string(name) : std::u16string()});
    gst->JoinGraph(static_cast<IGraphBuilder*>(this));
    return S_OK;
}

HRESULT CFilterGraph::RemoveFilter(IBaseFilter* filter) {
    for (auto it = m_filters.begin(); it != m_filters.end(); ++it) {
        if (it->filter != filter)
            continue;
        FilterEntry entry = *it;
        m_filters.erase(it);
        entry.gst->JoinGraph(nullptr);
        GstElement* bin = entry.gst->GetElement();
        gst_element_set_state(bin, GST_STATE_NULL);
        gst_bin_remove(GST_BIN(m_pipeline), bin);
        entry.gst->Release();
        entry.filter->Release();
        return S_OK;
    }
    return VFW_E_NOT_FOUND;
}

GstElement* CFilterGraph::AddBranch(const std::string& description, GstPad* from) {
    GError* error = nullptr;
    GstElement* branch = gst_parse_bin_from_description(description.c_str(), TRUE, &error);
    if (!branch) {
        if (error)
            g_error_free(error);
        return nullptr;
    }
    if (error)
        g_error_free(error);
    gst_bin_add(GST_BIN(m_pipeline), branch);
    GstPad* sink = gst_element_get_static_pad(branch, "sink");
    bool linked = sink && GST_PAD_LINK_SUCCESSFUL(gst_pad_link(from, sink));
    if (sink)
        gst_object_unref(sink);
    if (!linked) {
        gst_element_set_state(branch, GST_STATE_NULL);
        gst_bin_remove(GST_BIN(m_pipeline), branch);
        return nullptr;
    }
    gst_element_sync_state_with_parent(branch);
    return branch;
}

HRESULT CFilterGraph::Render(IPin* pin) {
    if (!pin)
        return E_POINTER;
    PIN_DIRECTION direction;
    if (FAILED(pin->QueryDirection(&direction)) || direction != PINDIR_OUTPUT)
        return VFW_E_INVALID_DIRECTION;
    IGstPin* gstPin = nullptr;
    if (FAILED(pin->QueryInterface(IID_IGstPin, reinterpret_cast<void**>(&gstPin))))
        return VFW_E_CANNOT_RENDER;
    GstPad* pad = gstPin->GetPad();
    gstPin->Release();
    if (!pad || gst_pad_is_linked(pad))
        return VFW_E_ALREADY_CONNECTED;

    // What the pin says it carries decides the branch.
    GUID major = GUID_NULL;
    GstCaps* caps = nullptr;
    IEnumMediaTypes* types = nullptr;
    if (SUCCEEDED(pin->EnumMediaTypes(&types))) {
        AM_MEDIA_TYPE* mt = nullptr;
        ULONG got = 0;
        if (types->Next(1, &mt, &got) == S_OK && got == 1) {
            major = mt->majortype;
            caps = CapsOfMediaType(mt);
        }
        DeleteMediaType(mt);
        types->Release();
    }
    HRESULT hr = VFW_E_CANNOT_RENDER;
    if (major == MEDIATYPE_Video)
        hr = RenderVideo(pad, caps);
    else if (major == MEDIATYPE_Audio)
        hr = RenderAudio(pad);
    if (caps)
        gst_caps_unref(caps);
    return hr;
}

HRESULT CFilterGraph::RenderVideo(GstPad* pad, GstCaps* caps) {
    std::lock_guard<std::recursive_mutex> lock(m_videoLock);
    if (m_videoSink)
        return VFW_E_CANNOT_RENDER;
    GstElement* branch = AddBranch("videoconvert ! videoscale ! " + GraphVideoSink(), pad);
    if (!branch)
        return VFW_E_CANNOT_RENDER;
    m_videoSink = GST_ELEMENT(gst_object_ref(branch));
    if (caps && gst_caps_get_size(caps) > 0) {
        const GstStructure* s = gst_caps_get_structure(caps, 0);
        int w = 0, h = 0, parN = 0, parD = 0;
        if (gst_structure_get_int(s, "width", &w) && gst_structure_get_int(s, "height", &h)) {
            // The size the picture shows at, as GetVideoSize gives it later.
            if (gst_structure_get_fraction(s, "pixel-aspect-ratio", &parN, &parD) && parN > 0 &&
                parD > 0)
                w = static_cast<int>(static_cast<int64_t>(w) * parN / parD);
            m_videoWidth = w;
            m_videoHeight = h;
        }
    }
    return S_OK;
}

HRESULT CFilterGraph::RenderAudio(GstPad* pad) {
    GstElement* branch = AddBranch(
        "audioconvert ! audioresample ! volume name=orvexvolume ! " + GraphAudioSink(), pad);
    if (!branch)
        return VFW_E_CANNOT_RENDER;
    GstElement* volume = gst_bin_get_by_name(GST_BIN(branch), "orvexvolume");
    if (volume) {
        g_object_set(volume, "volume", m_volume <= -10000 ? 0.0 : pow(10.0, m_volume / 2000.0),
                     nullptr);
        m_volumes.push_back(volume);
    }
    return S_OK;
}

// ---- running ----

void CFilterGraph::PrepareFilters() {
    if (m_prepared)
        return;
    m_prepared = true;
    for (FilterEntry& e : m_filters)
        e.gst->PrepareRun();
}

GstState CFilterGraph::PipelineTargetLocked() const {
    switch (m_target) {
    case State_Running:
        return m_buffering ? GST_STATE_PAUSED : GST_STATE_PLAYING;
    case State_Paused:
        return GST_STATE_PAUSED;
    default:
        return GST_STATE_NULL;
    }
}

HRESULT CFilterGraph::SetTargetState(OAFilterState filterState) {
    std::lock_guard<std::mutex> state(m_stateLock);
    GstState target;
    {
        std::lock_guard<std::mutex> lock(m_eventLock);
        if (m_target == State_Stopped) {
            m_complete = false;
            m_errorText.clear();
        }
        if (filterState == State_Stopped)
            m_buffering = false;
        m_target = filterState;
        target = PipelineTargetLocked();
    }
    m_eventReady.notify_all();
    if (target != GST_STATE_NULL)
        PrepareFilters();
    switch (gst_element_set_state(m_pipeline, target)) {
    case GST_STATE_CHANGE_FAILURE:
        return E_FAIL;
    case GST_STATE_CHANGE_ASYNC:
        return S_FALSE;
    default:
        return S_OK;
    }
}

HRESULT CFilterGraph::Run() {
    return SetTargetState(State_Running);
}

HRESULT CFilterGraph::Pause() {
    return SetTargetState(State_Paused);
}

HRESULT CFilterGraph::Stop() {
    return SetTargetState(State_Stopped);
}

HRESULT CFilterGraph::GetState(LONG timeoutMs, OAFilterState* state) {
    if (!state)
        return E_POINTER;
    // A stream refilling its buffer is running as far as anyone asks: it
    // goes on by itself once it has the data.
    auto wanted = [this](OAFilterState* target) {
        std::lock_guard<std::mutex> lock(m_eventLock);
        *target = m_target;
        return m_target == State_Stopped || m_buffering;
    };
    if (wanted(state))
        return S_OK;
    gint64 deadline =
        g_get_monotonic_time() + static_cast<gint64>(timeoutMs) * 1000 * GraphStateWaitScale();
    GstState current = GST_STATE_NULL, pending = GST_STATE_VOID_PENDING;
    GstStateChangeReturn ret;
    for (;;) {
        gint64 left = deadline - g_get_monotonic_time();
        GstClockTime timeout =
            timeoutMs < 0 ? GST_CLOCK_TIME_NONE
                          : static_cast<GstClockTime>(std::max<gint64>(left, 0)) * GST_USECOND;
        ret = gst_element_get_state(m_pipeline, &current, &pending, timeout);
        if (wanted(state))
            return S_OK;
        // A wait cut short by a change of the buffer's making is no failure:
        // wait on for what is left of the time.
        GST_OBJECT_LOCK(m_pipeline);
        bool interrupted = ret == GST_STATE_CHANGE_FAILURE &&
                           GST_STATE_RETURN(m_pipeline) != GST_STATE_CHANGE_FAILURE;
        GST_OBJECT_UNLOCK(m_pipeline);
        if (!interrupted || (timeoutMs >= 0 && left <= 0))
            break;
    }
    *state = ToFilterState(current);
    switch (ret) {
    case GST_STATE_CHANGE_FAILURE:
        return E_FAIL;
    case GST_STATE_CHANGE_ASYNC:
        return VFW_S_STATE_INTERMEDIATE;
    default:
        return S_OK;
    }
}

// ---- seeking ----

HRESULT CFilterGraph::CheckCapabilities(DWORD* capabilities) {
    if (!capabilities)
        return E_POINTER;
    DWORD have = AM_SEEKING_CanGetCurrentPos;
    GstQuery* query = gst_query_new_seeking(GST_FORMAT_TIME);
    if (gst_element_query(m_pipeline, query)) {
        gboolean seekable = FALSE;
        gst_query_parse_seeking(query, nullptr, &seekable, nullptr, nullptr);
        if (seekable)
            have |= AM_SEEKING_CanSeekAbsolute | AM_SEEKING_CanSeekForwards |
                    AM_SEEKING_CanSeekBackwards;
    }
    gst_query_unref(query);
    gint64 duration = -1;
    if (gst_element_query_duration(m_pipeline, GST_FORMAT_TIME, &duration) && duration > 0)
        have |= AM_SEEKING_CanGetDuration | AM_SEEKING_CanGetStopPos;
    DWORD asked = *capabilities;
    *capabilities = asked & have;
    if (*capabilities == asked)
        return S_OK;
    return *capabilities ? S_FALSE : E_FAIL;
}

HRESULT CFilterGraph::GetDuration(LONGLONG* duration) {
    if (!duration)
        return E_POINTER;
    gint64 ns = -1;
    if (!gst_element_query_duration(m_pipeline, GST_FORMAT_TIME, &ns) || ns < 0)
        return E_FAIL;
    *duration = ns / 100;
    return S_OK;
}

HRESULT CFilterGraph::GetCurrentPosition(LONGLONG* position) {
    if (!position)
        return E_POINTER;
    gint64 ns = -1;
    if (!gst_element_query_position(m_pipeline, GST_FORMAT_TIME, &ns) || ns < 0)
        return E_FAIL;
    *position = ns / 100;
    return S_OK;
}

HRESULT CFilterGraph::SetPositions(LONGLONG* current, DWORD currentFlags, LONGLONG* stop,
                                   DWORD stopFlags) {
    bool setStart = (currentFlags & 0x3) == AM_SEEKING_AbsolutePositioning;
    bool setStop = (stopFlags & 0x3) == AM_SEEKING_AbsolutePositioning;
    if ((setStart && !current) || (setStop && !stop))
        return E_POINTER;
    if (!setStart && !setStop)
        return S_OK;
    if ((setStart && *current < 0) || (setStop && *stop < 0))
        return E_INVALIDARG;
    gboolean ok = gst_element_seek(
        m_pipeline, 1.0, GST_FORMAT_TIME,
        static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE),
        setStart ? GST_SEEK_TYPE_SET : GST_SEEK_TYPE_NONE, setStart ? *current * 100 : 0,
        setStop ? GST_SEEK_TYPE_SET : GST_SEEK_TYPE_NONE, setStop ? *stop * 100 : 0);
    if (!ok)
        return E_FAIL;
    std::lock_guard<std::mutex> lock(m_eventLock);
    m_complete = false;
    return S_OK;
}

// ---- sound ----

HRESULT CFilterGraph::put_Volume(LONG volume) {
    if (volume < -10000 || volume > 0)
        return E_INVALIDARG;
    if (m_volumes.empty())
        return E_NOTIMPL;
    m_volume = volume;
    double linear = volume <= -10000 ? 0.0 : pow(10.0, volume / 2000.0);
    for (GstElement* v : m_volumes)
        g_object_set(v, "volume", linear, nullptr);
    return S_OK;
}

HRESULT CFilterGraph::get_Volume(LONG* volume) {
    if (!volume)
        return E_POINTER;
    if (m_volumes.empty())
        return E_NOTIMPL;
    *volume = m_volume;
    return S_OK;
}
