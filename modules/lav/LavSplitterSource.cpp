#include "modules/lav/LavSplitterSource.h"

#include <cstring>

namespace {

// How long opening may take before the source gives up: network sources
// can be slow to answer, but a source never waits forever.
constexpr GstClockTime kLoadTimeout = 30 * GST_SECOND;
constexpr const char* kReadyMessage = "orvex-splitter-ready";

// Decoders are left to the decoder filters: the splitter stops at parsed,
// compressed streams.
int OnAutoplugSelect(GstElement*, GstPad*, GstCaps*, GstElementFactory* factory, gpointer) {
    const char* klass = gst_element_factory_get_metadata(factory, GST_ELEMENT_METADATA_KLASS);
    if (klass && strstr(klass, "Decoder") && !strstr(klass, "Depayloader") &&
        !strstr(klass, "Demuxer"))
        return 1; // expose
    return 0;     // try
}

GstPadProbeReturn HoldData(GstPad*, GstPadProbeInfo*, gpointer) {
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn DropData(GstPad*, GstPadProbeInfo*, gpointer) {
    return GST_PAD_PROBE_DROP;
}

std::u16string PinName(const char* base, int index) {
    std::string name = base;
    if (index > 0)
        name += " " + std::to_string(index + 1);
    return std::u16string(name.begin(), name.end());
}

} // namespace

IUnknown* NewLavSplitterSource() {
    return static_cast<IBaseFilter*>(new CLavSplitterSource);
}

CLavSplitterSource::CLavSplitterSource() : CGstFilter("lavsplittersource") {}

CLavSplitterSource::~CLavSplitterSource() {
    Unload();
}

HRESULT CLavSplitterSource::QueryOther(REFIID riid, void** ppv) {
    if (riid == IID_IFileSourceFilter)
        *ppv = static_cast<IFileSourceFilter*>(this);
    else if (riid == IID_ILAVFSettings)
        *ppv = static_cast<ILAVFSettings*>(this);
    else {
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

HRESULT CLavSplitterSource::SetRuntimeConfig(BOOL runtime) {
    m_runtimeConfig = runtime;
    return S_OK;
}

void CLavSplitterSource::Unload() {
    gst_element_set_state(m_bin, GST_STATE_NULL);
    std::lock_guard<std::mutex> lock(m_streamLock);
    for (HeldStream& s : m_streams) {
        if (s.probe)
            gst_pad_remove_probe(s.pad, s.probe);
        gst_object_unref(s.pad);
    }
    m_streams.clear();
    if (m_loadBus) {
        gst_object_unref(m_loadBus);
        m_loadBus = nullptr;
    }
}

void CLavSplitterSource::OnPadAdded(GstElement*, GstPad* pad, gpointer data) {
    auto* self = static_cast<CLavSplitterSource*>(data);
    GstCaps* caps = PadCaps(pad);
    const GUID& major = MajorTypeOfCaps(caps);
    if (caps)
        gst_caps_unref(caps);
    // One lock over the whole, so that the graph's first run either sees
    // this stream held or the stream sees the graph running.
    std::lock_guard<std::mutex> lock(self->m_streamLock);
    std::u16string name;
    if (major == MEDIATYPE_Video)
        name = PinName("Video", self->m_videoCount++);
    else if (major == MEDIATYPE_Audio)
        name = PinName("Audio", self->m_audioCount++);
    else
        name = PinName("Stream", self->m_otherCount++);
    // A stream that turns up once the graph runs has nothing to connect to.
    gulong probe = 0;
    if (self->m_running)
        gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_DATA_DOWNSTREAM, DropData, nullptr, nullptr);
    else
        probe =
            gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_BLOCK_DOWNSTREAM, HoldData, nullptr, nullptr);
    std::string narrow(name.begin(), name.end());
    GstPad* ghost = gst_ghost_pad_new(narrow.c_str(), pad);
    CGstPin* pin = self->AddPin(name, PINDIR_OUTPUT, ghost, major);
    self->m_streams.push_back({GST_PAD(gst_object_ref(pad)), probe, pin});
}

void CLavSplitterSource::OnNoMorePads(GstElement*, gpointer data) {
    auto* self = static_cast<CLavSplitterSource*>(data);
    GstStructure* s = gst_structure_new_empty(kReadyMessage);
    gst_element_post_message(self->m_bin, gst_message_new_application(GST_OBJECT(self->m_bin), s));
}

HRESULT CLavSplitterSource::Load(LPCOLESTR fileName, const AM_MEDIA_TYPE*) {
    if (!fileName)
        return E_POINTER;
    if (m_decode)
        return VFW_E_WRONG_STATE;
    gchar* path = g_utf16_to_utf8(reinterpret_cast<const gunichar2*>(fileName), -1, nullptr,
                                  nullptr, nullptr);
    if (!path || !*path) {
        g_free(path);
        return E_INVALIDARG;
    }
    gchar* uri = gst_uri_is_valid(path) ? g_strdup(path) : gst_filename_to_uri(path, nullptr);
    g_free(path);
    if (!uri)
        return E_INVALIDARG;

    m_decode = gst_element_factory_make("uridecodebin", nullptr);
    if (!m_decode) {
        g_free(uri);
        return E_FAIL;
    }
    g_object_set(m_decode, "uri", uri, nullptr);
    g_free(uri);
    g_signal_connect(m_decode, "autoplug-select", G_CALLBACK(OnAutoplugSelect), this);
    g_signal_connect(m_decode, "pad-added", G_CALLBACK(OnPadAdded), this);
    g_signal_connect(m_decode, "no-more-pads", G_CALLBACK(OnNoMorePads), this);
    gst_bin_add(GST_BIN(m_bin), m_decode);

    // Until the graph takes the bin, its messages come here.
    m_loadBus = gst_bus_new();
    gst_element_set_bus(m_bin, m_loadBus);
    HRESULT hr = VFW_E_TIMEOUT;
    if (gst_element_set_state(m_bin, GST_STATE_PAUSED) == GST_STATE_CHANGE_FAILURE)
        hr = VFW_E_NOT_FOUND;
    gint64 deadline = g_get_monotonic_time() + static_cast<gint64>(kLoadTimeout / GST_USECOND);
    while (hr == VFW_E_TIMEOUT) {
        gint64 left = deadline - g_get_monotonic_time();
        if (left <= 0)
            break;
        GstMessage* message = gst_bus_timed_pop_filtered(
            m_loadBus, static_cast<GstClockTime>(left) * GST_USECOND,
            static_cast<GstMessageType>(GST_MESSAGE_ERROR | GST_MESSAGE_APPLICATION));
        if (!message)
            break;
        if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR)
            hr = VFW_E_NOT_FOUND;
        else if (gst_message_has_name(message, kReadyMessage))
            hr = S_OK;
        gst_message_unref(message);
    }
    gst_bus_set_flushing(m_loadBus, TRUE);
    if (FAILED(hr)) {
        Unload();
        return hr;
    }
    return Pins().empty() ? VFW_E_UNKNOWN_FILE_TYPE : S_OK;
}

void CLavSplitterSource::PrepareRun() {
    std::lock_guard<std::mutex> lock(m_streamLock);
    m_running = true;
    for (HeldStream& s : m_streams) {
        // A stream nobody takes is dropped at its pin, so that it neither
        // stalls nor fails the ones that are played.
        if (!s.pin->IsConnected())
            gst_pad_add_probe(s.pad, GST_PAD_PROBE_TYPE_DATA_DOWNSTREAM, DropData, nullptr,
                              nullptr);
        if (s.probe) {
            gst_pad_remove_probe(s.pad, s.probe);
            s.probe = 0;
        }
    }
}
