#include "modules/lav/LavSplitterSource.h"

#include <gio/gio.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace {

// How long opening may take before the source gives up: network sources
// can be slow to answer, but a source never waits forever.
constexpr GstClockTime kLoadTimeout = 30 * GST_SECOND;
constexpr const char* kReadyMessage = "orvex-splitter-ready";
// What a live network source (RTSP) holds back against the jitter of the
// network. Its own default of 2 s would keep a running graph from its first
// picture for longer than the engine waits for it; a fifth of a second
// absorbs the jitter of ordinary networks.
constexpr guint kLiveLatencyMs = 200;

// A name opens as a URL only when it has the form scheme://..., and no file
// of that name exists: "Live:2019.mp3" is a file in the current folder.
bool IsUrl(const gchar* name) {
    const gchar* colon = strchr(name, ':');
    if (!colon || colon == name || strncmp(colon, "://", 3) != 0)
        return false;
    for (const gchar* c = name; c < colon; ++c) {
        if (!g_ascii_isalnum(*c) && *c != '+' && *c != '-' && *c != '.')
            return false;
    }
    struct stat st;
    return g_ascii_isalpha(name[0]) && stat(name, &st) != 0;
}

// Certificates that HTTPS sources trust: the same file as the program's
// own transfers, in the start directory, when it is there.
constexpr const char* kCertificateFile = "Curl_Local/bin/cacert.pem";

void OnSourceSetup(GstElement*, GstElement* source, gpointer) {
    GObjectClass* type = G_OBJECT_GET_CLASS(source);
    if (g_object_class_find_property(type, "latency"))
        g_object_set(source, "latency", kLiveLatencyMs, nullptr);
    // The database, not the file name: the network library behind the
    // source takes only the former.
    if (g_object_class_find_property(type, "tls-database") &&
        g_file_test(kCertificateFile, G_FILE_TEST_IS_REGULAR)) {
        gchar* path = g_canonicalize_filename(kCertificateFile, nullptr);
        if (GTlsDatabase* database = g_tls_file_database_new(path, nullptr)) {
            g_object_set(source, "tls-database", database, nullptr);
            g_object_unref(database);
        }
        g_free(path);
    }
}

std::string Utf8(LPCWSTR text) {
    gchar* utf8 =
        g_utf16_to_utf8(reinterpret_cast<const gunichar2*>(text), -1, nullptr, nullptr, nullptr);
    std::string result = utf8 ? utf8 : "";
    g_free(utf8);
    return result;
}

} // namespace

IUnknown* NewLavSplitterSource() {
    return static_cast<IBaseFilter*>(new CLavSplitterSource);
}

CLavSplitterSource::CLavSplitterSource() : CLavSplitterStreams("lavsplittersource"), m_tap(m_bin) {}

CLavSplitterSource::~CLavSplitterSource() {
    Unload();
}

HRESULT CLavSplitterSource::QueryOther(REFIID riid, void** ppv) {
    if (riid == IID_IFileSourceFilter)
        *ppv = static_cast<IFileSourceFilter*>(this);
    else if (riid == IID_IStreamRecorder)
        *ppv = static_cast<IStreamRecorder*>(this);
    else
        return CLavSplitterStreams::QueryOther(riid, ppv);
    AddRef();
    return S_OK;
}

void CLavSplitterSource::Unload() {
    gst_element_set_state(m_bin, GST_STATE_NULL);
    m_tap.Release();
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
    gchar* uri = IsUrl(path) ? g_strdup(path) : gst_filename_to_uri(path, nullptr);
    g_free(path);
    if (!uri)
        return E_INVALIDARG;

    m_decode = MakeDemuxer("uridecodebin");
    if (!m_decode) {
        g_free(uri);
        return E_FAIL;
    }
    // A network stream that runs dry pauses the graph until it has refilled
    // (the graph acts on the buffering messages). A file never runs dry.
    g_object_set(m_decode, "uri", uri, "use-buffering", !g_str_has_prefix(uri, "file:"), nullptr);
    g_signal_connect(m_decode, "source-setup", G_CALLBACK(OnSourceSetup), nullptr);
    m_tap.Watch(m_decode);
    g_free(uri);
    gst_bin_add(GST_BIN(m_bin), m_decode);

    // Until the graph takes the bin, its messages come here.
    m_loadBus = gst_bus_new();
    gst_element_set_bus(m_bin, m_loadBus);
    HRESULT hr = VFW_E_TIMEOUT;
    GstStateChangeReturn ret = gst_element_set_state(m_bin, GST_STATE_PAUSED);
    // A live source makes its streams only while it plays. It goes on
    // playing: its streams are held at the pins until the graph runs, and a
    // graph can only get to running once data reaches its renderers.
    bool live = ret == GST_STATE_CHANGE_NO_PREROLL;
    if (live) {
        // Its jitter buffer times the packets by a clock; the graph gives
        // its own one when it runs.
        GstClock* clock = gst_system_clock_obtain();
        gst_element_set_clock(m_bin, clock);
        gst_element_set_base_time(m_bin, gst_clock_get_time(clock));
        gst_object_unref(clock);
        ret = gst_element_set_state(m_bin, GST_STATE_PLAYING);
    }
    if (ret == GST_STATE_CHANGE_FAILURE)
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
    // A live source may still be finishing its start (an RTSP PLAY answered
    // late); the graph that takes the bin must not wait for an end that has
    // already gone to this bus.
    if (live && SUCCEEDED(hr)) {
        gint64 left = deadline - g_get_monotonic_time();
        if (left <= 0 || gst_element_get_state(m_bin, nullptr, nullptr,
                                               static_cast<GstClockTime>(left) * GST_USECOND) ==
                             GST_STATE_CHANGE_ASYNC)
            hr = VFW_E_TIMEOUT;
    }
    gst_bus_set_flushing(m_loadBus, TRUE);
    if (FAILED(hr)) {
        Unload();
        return hr;
    }
    return Pins().empty() ? VFW_E_UNKNOWN_FILE_TYPE : S_OK;
}

HRESULT CLavSplitterSource::StartRecording(LPCWSTR folder, LPCWSTR name) {
    if (!folder || !name)
        return E_POINTER;
    int result = m_tap.Start(Utf8(folder), Utf8(name));
    if (result < 0)
        return VFW_E_NOT_CONNECTED;
    return result == 0 ? S_OK : HRESULT_FROM_WIN32(static_cast<DWORD>(result));
}

HRESULT CLavSplitterSource::StopRecording() {
    m_tap.Stop();
    return S_OK;
}

HRESULT CLavSplitterSource::IsRecording() {
    return m_tap.Recording() ? S_OK : S_FALSE;
}

HRESULT CLavSplitterSource::GetRecordingFailure(char16_t* text, ULONG size) {
    if (!text || size == 0)
        return E_POINTER;
    std::string failure = m_tap.Failure();
    glong length = 0;
    gunichar2* wide = g_utf8_to_utf16(failure.c_str(), -1, nullptr, &length, nullptr);
    ULONG n = wide ? std::min<ULONG>(static_cast<ULONG>(length), size - 1) : 0;
    if (n)
        memcpy(text, wide, n * sizeof(char16_t));
    text[n] = 0;
    g_free(wide);
    return S_OK;
}
