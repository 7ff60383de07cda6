#include "platform/media/DvdNavigator.h"

namespace {

// What the navigator reads ahead of the picture on the screen, per stream.
constexpr guint64 kReadAhead = 2 * GST_SECOND;

GstElement* MakeQueue(guint64 maxTime) {
    GstElement* queue = gst_element_factory_make("queue", nullptr);
    g_object_set(queue, "max-size-buffers", 0u, "max-size-bytes", 0u, "max-size-time", maxTime,
                 nullptr);
    return queue;
}

} // namespace

CDvdNavigator::CDvdNavigator() : CGstFilter("dvdnavigator") {
    static const char16_t* const kNames[CDvdReader::kOutputs] = {u"Video", u"AC3", u"SubPicture"};
    gst_bin_add(GST_BIN(m_bin), m_reader.Element());
    for (int i = 0; i < CDvdReader::kOutputs; ++i) {
        const auto output = static_cast<CDvdReader::Output>(i);
        GstPad* src = nullptr;
        if (output == CDvdReader::kSubPicture) {
            // Sub-pictures are sparse and tiny, and go straight on: a menu's
            // highlight, which overtakes everything queued, must never
            // arrive before the stream it belongs to has been set up.
            src = GST_PAD(gst_object_ref(m_reader.Pad(output)));
        } else {
            GstElement* queue = MakeQueue(kReadAhead);
            gst_bin_add(GST_BIN(m_bin), queue);
            GstPad* sink = gst_element_get_static_pad(queue, "sink");
            gst_pad_link(m_reader.Pad(output), sink);
            gst_object_unref(sink);
            src = gst_element_get_static_pad(queue, "src");
        }
        if (i == CDvdReader::kVideo)
            gst_pad_add_probe(src, GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, OnVideoLeaving, this,
                              nullptr);
        std::u16string name(kNames[i]);
        GstPad* ghost = gst_ghost_pad_new(std::string(name.begin(), name.end()).c_str(), src);
        gst_object_unref(src);
        m_outputs[i] = AddPin(name, PINDIR_OUTPUT, ghost, MEDIATYPE_DVD_ENCRYPTED_PACK, true);
    }
}

CDvdNavigator::~CDvdNavigator() {
    // The reader's thread ends before the reader goes.
    gst_element_set_state(m_bin, GST_STATE_NULL);
}

HRESULT CDvdNavigator::QueryOther(REFIID riid, void** ppv) {
    if (riid == IID_IDvdControl2)
        *ppv = static_cast<IDvdControl2*>(this);
    else if (riid == IID_IDvdInfo2)
        *ppv = static_cast<IDvdInfo2*>(this);
    else if (riid == IID_IGraphErrorText)
        *ppv = static_cast<IGraphErrorText*>(this);
    else {
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

void CDvdNavigator::PrepareRun() {
    m_reader.Start();
}

void CDvdNavigator::JoinGraph(IUnknown* graph) {
    std::lock_guard<std::mutex> lock(m_graphLock);
    m_graph = graph;
}

std::vector<GstCaps*> CDvdNavigator::OfferedCaps(CGstPin* pin) {
    for (int i = 0; i < CDvdReader::kOutputs; ++i) {
        if (pin != m_outputs[i])
            continue;
        GstCaps* caps = gst_pad_get_current_caps(pin->GetPad());
        return {caps ? caps : m_reader.InitialCaps(static_cast<CDvdReader::Output>(i))};
    }
    return CGstFilter::OfferedCaps(pin);
}

// The reports for the graph leave the picture's queue just as the picture
// they belong to does, and go to the graph from there.
GstPadProbeReturn CDvdNavigator::OnVideoLeaving(GstPad*, GstPadProbeInfo* info, gpointer data) {
    auto* self = static_cast<CDvdNavigator*>(data);
    GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
    const GstStructure* s = gst_event_get_structure(event);
    if (GST_EVENT_TYPE(event) != GST_EVENT_CUSTOM_DOWNSTREAM || !s ||
        !gst_structure_has_name(s, kDvdGraphEventName))
        return GST_PAD_PROBE_OK;
    gint code = 0;
    gint64 param1 = 0;
    gst_structure_get_int(s, "code", &code);
    gst_structure_get_int64(s, "param1", &param1);
    if (code == EC_DVD_DOMAIN_CHANGE)
        self->m_shownDomain = static_cast<LONG>(param1);
    else if (code == EC_DVD_TITLE_CHANGE)
        self->m_shownTitle = static_cast<LONG>(param1);
    GstStructure* report = gst_structure_copy(s);
    gst_structure_set_name(report, kGraphEventMessage);
    gst_element_post_message(self->m_bin, gst_message_new_element(GST_OBJECT(self->m_bin), report));
    return GST_PAD_PROBE_DROP;
}

HRESULT CDvdNavigator::SetDVDDirectory(LPCWSTR path) {
    if (!path)
        return E_POINTER;
    std::string reason;
    const bool opened = !CString(path).IsEmpty() && m_reader.Open(CString(path).ToUtf8(), reason);
    std::lock_guard<std::mutex> lock(m_errorLock);
    m_error = opened ? std::string() : reason;
    return opened ? S_OK : E_FAIL;
}

HRESULT CDvdNavigator::GetErrorText(CString* text) {
    if (!text)
        return E_POINTER;
    std::lock_guard<std::mutex> lock(m_errorLock);
    if (m_error.empty())
        return E_FAIL;
    *text = CString(m_error);
    return S_OK;
}

HRESULT CDvdNavigator::PlayTitle(ULONG title, DWORD, IDvdCmd** cmd) {
    if (cmd)
        *cmd = nullptr;
    return m_reader.PlayTitle(static_cast<int>(title)) ? S_OK : E_FAIL;
}

HRESULT CDvdNavigator::PlayChapterInTitle(ULONG title, ULONG chapter, DWORD, IDvdCmd** cmd) {
    if (cmd)
        *cmd = nullptr;
    return m_reader.PlayChapter(static_cast<int>(title), static_cast<int>(chapter)) ? S_OK : E_FAIL;
}

HRESULT CDvdNavigator::PlayAtTimeInTitle(ULONG title, DVD_HMSF_TIMECODE* time, DWORD,
                                         IDvdCmd** cmd) {
    if (cmd)
        *cmd = nullptr;
    if (!time)
        return E_POINTER;
    const uint64_t seconds = time->bHours * 3600ull + time->bMinutes * 60ull + time->bSeconds;
    const uint64_t ticks = seconds * 90000 + time->bFrames * 3003ull;
    return m_reader.PlayAtTime(static_cast<int>(title), ticks) ? S_OK : E_FAIL;
}

HRESULT CDvdNavigator::ShowMenu(DVD_MENU_ID menu, DWORD, IDvdCmd** cmd) {
    if (cmd)
        *cmd = nullptr;
    return m_reader.ShowMenu(menu) ? S_OK : E_FAIL;
}

bool CDvdNavigator::ToFrame(POINT point, int& x, int& y) {
    LONG left = 0, top = 0, width = 0, height = 0;
    {
        std::lock_guard<std::mutex> lock(m_graphLock);
        IVideoWindow* window = nullptr;
        if (!m_graph ||
            FAILED(m_graph->QueryInterface(IID_IVideoWindow, reinterpret_cast<void**>(&window))))
            return false;
        const HRESULT hr = window->GetWindowPosition(&left, &top, &width, &height);
        window->Release();
        if (FAILED(hr))
            return false;
    }
    int frameWidth = 0, frameHeight = 0;
    if (width <= 0 || height <= 0 || !m_reader.FrameSize(frameWidth, frameHeight))
        return false;
    if (point.x < left || point.y < top || point.x >= left + width || point.y >= top + height)
        return false;
    x = static_cast<int>(static_cast<int64_t>(point.x - left) * frameWidth / width);
    y = static_cast<int>(static_cast<int64_t>(point.y - top) * frameHeight / height);
    return true;
}

HRESULT CDvdNavigator::SelectAtPosition(POINT point) {
    int x = 0, y = 0;
    return ToFrame(point, x, y) && m_reader.SelectAt(x, y) ? S_OK : E_FAIL;
}

HRESULT CDvdNavigator::ActivateAtPosition(POINT point) {
    int x = 0, y = 0;
    return ToFrame(point, x, y) && m_reader.ActivateAt(x, y) ? S_OK : E_FAIL;
}

HRESULT CDvdNavigator::GetCurrentDomain(DVD_DOMAIN* domain) {
    if (!domain)
        return E_POINTER;
    if (!m_reader.IsOpen())
        return E_FAIL;
    const LONG shown = m_shownDomain;
    *domain = static_cast<DVD_DOMAIN>(shown ? shown : m_reader.Domain());
    return S_OK;
}

HRESULT CDvdNavigator::GetNumberOfChapters(ULONG title, ULONG* chapters) {
    if (!chapters)
        return E_POINTER;
    int count = 0;
    if (!m_reader.Chapters(static_cast<int>(title), count))
        return E_FAIL;
    *chapters = static_cast<ULONG>(count);
    return S_OK;
}

HRESULT CDvdNavigator::GetTotalTitleTime(DVD_HMSF_TIMECODE* total, ULONG* timeCodeFlags) {
    if (!total)
        return E_POINTER;
    uint64_t ticks = 0;
    if (m_shownDomain != DVD_DOMAIN_Title || !m_reader.TitleLength(m_shownTitle, ticks))
        return E_FAIL;
    const uint64_t seconds = ticks / 90000;
    total->bHours = static_cast<BYTE>(seconds / 3600);
    total->bMinutes = static_cast<BYTE>(seconds / 60 % 60);
    total->bSeconds = static_cast<BYTE>(seconds % 60);
    total->bFrames = static_cast<BYTE>(ticks % 90000 / 3003);
    if (timeCodeFlags)
        *timeCodeFlags = DVD_TC_FLAG_30fps;
    return S_OK;
}

HRESULT CDvdNavigator::GetDVDVolumeInfo(ULONG* volumes, ULONG* volume, DVD_DISC_SIDE* side,
                                        ULONG* titles) {
    if (!volumes || !volume || !side || !titles)
        return E_POINTER;
    int count = 0;
    if (!m_reader.Titles(count))
        return E_FAIL;
    *volumes = 1;
    *volume = 1;
    *side = DVD_SIDE_A;
    *titles = static_cast<ULONG>(count);
    return S_OK;
}
