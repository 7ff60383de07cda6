#include "modules/lav/LavSplitterStreams.h"

#include <cstring>

namespace {

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

// A stream whose container states no length (a plain constant-rate MP3)
// still has one: the size of the file over the rate the parser has seen.
// It is known as soon as the stream is, so the length is there when the
// graph first runs.
gboolean AnswerQuery(GstPad* pad, GstObject*, GstQuery* query) {
    GstPad* target = gst_ghost_pad_get_target(GST_GHOST_PAD(pad));
    if (!target)
        return FALSE;
    gboolean answered = gst_pad_query(target, query);
    GstFormat format = GST_FORMAT_UNDEFINED;
    if (!answered && GST_QUERY_TYPE(query) == GST_QUERY_DURATION)
        gst_query_parse_duration(query, &format, nullptr);
    gint64 bytes = -1, duration = -1;
    if (format == GST_FORMAT_TIME && gst_pad_query_duration(target, GST_FORMAT_BYTES, &bytes) &&
        bytes > 0 &&
        gst_pad_query_convert(target, GST_FORMAT_BYTES, bytes, GST_FORMAT_TIME, &duration) &&
        duration > 0) {
        gst_query_set_duration(query, GST_FORMAT_TIME, duration);
        answered = TRUE;
    }
    gst_object_unref(target);
    return answered;
}

std::u16string PinName(const char* base, int index) {
    std::string name = base;
    if (index > 0)
        name += " " + std::to_string(index + 1);
    return std::u16string(name.begin(), name.end());
}

} // namespace

CLavSplitterStreams::CLavSplitterStreams(const char* binName) : CGstFilter(binName) {}

CLavSplitterStreams::CLavSplitterStreams(GstElement* bin) : CGstFilter(bin) {}

CLavSplitterStreams::~CLavSplitterStreams() {
    ReleaseStreams();
}

HRESULT CLavSplitterStreams::QueryOther(REFIID riid, void** ppv) {
    if (riid != IID_ILAVFSettings) {
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    *ppv = static_cast<ILAVFSettings*>(this);
    AddRef();
    return S_OK;
}

HRESULT CLavSplitterStreams::SetRuntimeConfig(BOOL runtime) {
    m_runtimeConfig = runtime;
    return S_OK;
}

GstElement* CLavSplitterStreams::MakeDemuxer(const char* factory) {
    GstElement* demuxer = gst_element_factory_make(factory, nullptr);
    if (!demuxer)
        return nullptr;
    g_signal_connect(demuxer, "autoplug-select", G_CALLBACK(OnAutoplugSelect), this);
    g_signal_connect(demuxer, "pad-added", G_CALLBACK(OnPadAdded), this);
    g_signal_connect(demuxer, "no-more-pads", G_CALLBACK(OnNoMorePads), this);
    return demuxer;
}

void CLavSplitterStreams::ReleaseStreams() {
    std::lock_guard<std::mutex> lock(m_streamLock);
    for (HeldStream& s : m_streams) {
        if (s.probe)
            gst_pad_remove_probe(s.pad, s.probe);
        gst_object_unref(s.pad);
    }
    m_streams.clear();
}

void CLavSplitterStreams::OnPadAdded(GstElement*, GstPad* pad, gpointer data) {
    auto* self = static_cast<CLavSplitterStreams*>(data);
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
    gst_pad_set_query_function(ghost, AnswerQuery);
    CGstPin* pin = self->AddPin(name, PINDIR_OUTPUT, ghost, major);
    self->m_streams.push_back({GST_PAD(gst_object_ref(pad)), probe, pin});
}

void CLavSplitterStreams::OnNoMorePads(GstElement*, gpointer data) {
    static_cast<CLavSplitterStreams*>(data)->OnAllStreamsFound();
}

void CLavSplitterStreams::PrepareRun() {
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
