#include "modules/lav/LavSplitterSource.h"

namespace {

// How long opening may take before the source gives up: network sources
// can be slow to answer, but a source never waits forever.
constexpr GstClockTime kLoadTimeout = 30 * GST_SECOND;
constexpr const char* kReadyMessage = "orvex-splitter-ready";

} // namespace

IUnknown* NewLavSplitterSource() {
    return static_cast<IBaseFilter*>(new CLavSplitterSource);
}

CLavSplitterSource::CLavSplitterSource() : CLavSplitterStreams("lavsplittersource") {}

CLavSplitterSource::~CLavSplitterSource() {
    Unload();
}

HRESULT CLavSplitterSource::QueryOther(REFIID riid, void** ppv) {
    if (riid == IID_IFileSourceFilter)
        *ppv = static_cast<IFileSourceFilter*>(this);
    else
        return CLavSplitterStreams::QueryOther(riid, ppv);
    AddRef();
    return S_OK;
}

void CLavSplitterSource::Unload() {
    gst_element_set_state(m_bin, GST_STATE_NULL);
    ReleaseStreams();
    if (m_loadBus) {
        gst_object_unref(m_loadBus);
        m_loadBus = nullptr;
    }
}

void CLavSplitterSource::OnAllStreamsFound() {
    GstStructure* s = gst_structure_new_empty(kReadyMessage);
    gst_element_post_message(m_bin, gst_message_new_application(GST_OBJECT(m_bin), s));
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

    m_decode = MakeDemuxer("uridecodebin");
    if (!m_decode) {
        g_free(uri);
        return E_FAIL;
    }
    g_object_set(m_decode, "uri", uri, nullptr);
    g_free(uri);
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
