#include "modules/lav/StreamTap.h"

#include <cstring>

#include "platform/media/GstFilter.h"

namespace {

// Elements whose input wraps the media and whose output is the media
// itself: interleaved ICY metadata, adaptive playlists of fragments.
bool Unwraps(GstElement* element) {
    GstElementFactory* factory = gst_element_get_factory(element);
    if (!factory)
        return false;
    if (strcmp(GST_OBJECT_NAME(factory), "icydemux") == 0)
        return true;
    const char* klass = gst_element_factory_get_metadata(factory, GST_ELEMENT_METADATA_KLASS);
    return klass && strstr(klass, "Adaptive");
}

bool IsTypeFinder(GstElement* element) {
    GstElementFactory* factory = gst_element_get_factory(element);
    return factory && strcmp(GST_OBJECT_NAME(factory), "typefind") == 0;
}

} // namespace

CStreamTap::CStreamTap(GstElement* owner) : m_owner(owner) {}

CStreamTap::~CStreamTap() {
    Release();
}

void CStreamTap::Watch(GstElement* decodeBin) {
    g_signal_connect(decodeBin, "source-setup", G_CALLBACK(OnSourceSetup), this);
    g_signal_connect(decodeBin, "deep-element-added", G_CALLBACK(OnElementAdded), this);
}

void CStreamTap::Release() {
    m_writer.Stop();
    std::lock_guard<std::mutex> lock(m_lock);
    if (m_probe && m_tap)
        gst_pad_remove_probe(m_tap, m_probe);
    m_probe = 0;
    m_tap = nullptr;
    for (GstPad** pad : {&m_sourcePad, &m_unwrappedPad}) {
        if (*pad)
            gst_object_unref(*pad);
        *pad = nullptr;
    }
    if (m_streamCaps)
        gst_caps_unref(m_streamCaps);
    m_streamCaps = nullptr;
}

void CStreamTap::OnSourceSetup(GstElement*, GstElement* source, gpointer data) {
    auto* self = static_cast<CStreamTap*>(data);
    // A source of packets (RTSP) has no pad of its own bytes: there is
    // nothing to record as received.
    GstPad* pad = gst_element_get_static_pad(source, "src");
    if (!pad)
        return;
    std::lock_guard<std::mutex> lock(self->m_lock);
    if (self->m_sourcePad)
        gst_object_unref(self->m_sourcePad);
    self->m_sourcePad = pad;
}

void CStreamTap::OnElementAdded(GstBin*, GstBin*, GstElement* element, gpointer data) {
    if (Unwraps(element))
        g_signal_connect(element, "pad-added", G_CALLBACK(OnUnwrappedPad), data);
    else if (IsTypeFinder(element))
        g_signal_connect(element, "have-type", G_CALLBACK(OnHaveType), data);
}

void CStreamTap::OnUnwrappedPad(GstElement*, GstPad* pad, gpointer data) {
    auto* self = static_cast<CStreamTap*>(data);
    if (GST_PAD_DIRECTION(pad) != GST_PAD_SRC)
        return;
    std::lock_guard<std::mutex> lock(self->m_lock);
    if (!self->m_unwrappedPad)
        self->m_unwrappedPad = GST_PAD(gst_object_ref(pad));
}

void CStreamTap::OnHaveType(GstElement*, guint, GstCaps* caps, gpointer data) {
    auto* self = static_cast<CStreamTap*>(data);
    std::lock_guard<std::mutex> lock(self->m_lock);
    // The first type found describes the source's bytes.
    if (!self->m_streamCaps && caps)
        self->m_streamCaps = gst_caps_ref(caps);
}

std::string CStreamTap::ExtensionForCaps(const GstCaps* caps) {
    if (!caps || gst_caps_get_size(caps) == 0)
        return "bin";
    const GstStructure* s = gst_caps_get_structure(caps, 0);
    const char* name = gst_structure_get_name(s);
    if (strcmp(name, "audio/mpeg") == 0) {
        int version = 1, layer = 3;
        gst_structure_get_int(s, "mpegversion", &version);
        gst_structure_get_int(s, "layer", &layer);
        if (version != 1)
            return "aac";
        return layer == 2 ? "mp2" : "mp3";
    }
    struct Known {
        const char* caps;
        const char* extension;
    };
    static const Known known[] = {
        {"application/ogg", "ogg"},  {"audio/ogg", "ogg"},        {"audio/x-flac", "flac"},
        {"video/mpegts", "ts"},      {"audio/x-m4a", "m4a"},      {"video/quicktime", "mp4"},
        {"audio/x-matroska", "mka"}, {"video/x-matroska", "mkv"}, {"video/webm", "webm"},
        {"audio/webm", "webm"},      {"audio/x-wav", "wav"},      {"video/x-flv", "flv"},
        {"audio/x-ac3", "ac3"},      {"audio/x-opus", "opus"},    {"application/x-id3", "mp3"},
        {"audio/aac", "aac"},        {"audio/x-aac", "aac"},      {"audio/x-ms-asf", "wma"},
        {"video/x-ms-asf", "asf"},
    };
    for (const Known& k : known) {
        if (strcmp(name, k.caps) == 0)
            return k.extension;
    }
    return "bin";
}

int CStreamTap::Start(const std::string& folder, const std::string& name) {
    GstPad* tap;
    GstCaps* caps = nullptr;
    {
        std::lock_guard<std::mutex> lock(m_lock);
        tap = m_unwrappedPad ? m_unwrappedPad : m_sourcePad;
        if (!tap)
            return -1;
        caps = gst_pad_get_current_caps(tap);
        // A source states no type of its own; the type found for its bytes
        // does.
        if (!caps && m_streamCaps)
            caps = gst_caps_ref(m_streamCaps);
    }
    std::string extension = ExtensionForCaps(caps);
    if (caps)
        gst_caps_unref(caps);
    // The song now passing, when the stream has named it, names the first
    // file.
    std::string title;
    if (GstEvent* tagEvent = gst_pad_get_sticky_event(tap, GST_EVENT_TAG, 0)) {
        GstTagList* tags = nullptr;
        gst_event_parse_tag(tagEvent, &tags);
        title = StreamTitleOfTags(tags);
        gst_event_unref(tagEvent);
    }
    if (int error = m_writer.Start(folder, name, title, extension))
        return error;
    std::lock_guard<std::mutex> lock(m_lock);
    if (!m_probe) {
        m_tap = tap;
        m_probe = gst_pad_add_probe(tap,
                                    static_cast<GstPadProbeType>(
                                        GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_BUFFER_LIST |
                                        GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM),
                                    OnData, this, nullptr);
    }
    return 0;
}

void CStreamTap::Stop() {
    m_writer.Stop();
}

GstPadProbeReturn CStreamTap::OnData(GstPad*, GstPadProbeInfo* info, gpointer data) {
    auto* self = static_cast<CStreamTap*>(data);
    if (self->m_writer.Recording())
        self->Forward(info);
    return GST_PAD_PROBE_OK;
}

void CStreamTap::Forward(GstPadProbeInfo* info) {
    auto write = [this](GstBuffer* buffer) {
        GstMapInfo map;
        if (!gst_buffer_map(buffer, &map, GST_MAP_READ))
            return;
        m_writer.Write(map.data, map.size);
        gst_buffer_unmap(buffer, &map);
    };
    if (info->type & GST_PAD_PROBE_TYPE_BUFFER) {
        write(GST_PAD_PROBE_INFO_BUFFER(info));
    } else if (info->type & GST_PAD_PROBE_TYPE_BUFFER_LIST) {
        GstBufferList* list = GST_PAD_PROBE_INFO_BUFFER_LIST(info);
        for (guint i = 0, n = gst_buffer_list_length(list); i < n && m_writer.Recording(); ++i)
            write(gst_buffer_list_get(list, i));
    } else if (info->type & GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM) {
        GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
        if (GST_EVENT_TYPE(event) == GST_EVENT_TAG) {
            GstTagList* tags = nullptr;
            gst_event_parse_tag(event, &tags);
            std::string title = StreamTitleOfTags(tags);
            if (!title.empty())
                m_writer.NewTitle(title);
        } else if (GST_EVENT_TYPE(event) == GST_EVENT_EOS) {
            m_writer.EndOfStream();
        }
    }
    TellFailure();
}

void CStreamTap::TellFailure() {
    if (m_writer.TakeFailure())
        NotifyGraph(m_owner, EC_RECORDING_STOPPED, 0, 0);
}
