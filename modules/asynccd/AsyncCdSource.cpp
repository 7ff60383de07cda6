#include "modules/asynccd/AsyncCdSource.h"

#include <gst/base/gstbasesrc.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "modules/asynccd/WavHeader.h"
#include "platform/base/CdTrackPath.h"

namespace {

// What one read asks of the disc: a little under a fifth of a second.
constexpr guint kSectorsPerRead = 16;

// The element that reads the track: a byte source of a WAV file whose
// samples come from the disc as they are asked for, at any offset.
struct OrvexCdTrackSource {
    GstBaseSrc parent;
    CCdTrackReader* reader;
    std::vector<uint8_t>* scratch;
};
struct OrvexCdTrackSourceClass {
    GstBaseSrcClass parent_class;
};

G_DEFINE_TYPE(OrvexCdTrackSource, orvex_cd_track_source, GST_TYPE_BASE_SRC)

GstStaticPadTemplate kOutputTemplate =
    GST_STATIC_PAD_TEMPLATE("src", GST_PAD_SRC, GST_PAD_ALWAYS, GST_STATIC_CAPS("audio/x-wav"));

guint64 TotalBytes(OrvexCdTrackSource* self) {
    return self->reader
               ? kWavHeaderBytes + static_cast<guint64>(self->reader->Sectors()) * kCdSectorBytes
               : 0;
}

gboolean GetSize(GstBaseSrc* src, guint64* size) {
    auto* self = reinterpret_cast<OrvexCdTrackSource*>(src);
    if (!self->reader)
        return FALSE;
    *size = TotalBytes(self);
    return TRUE;
}

gboolean IsSeekable(GstBaseSrc*) {
    return TRUE;
}

gboolean Start(GstBaseSrc* src) {
    return reinterpret_cast<OrvexCdTrackSource*>(src)->reader != nullptr;
}

GstFlowReturn Fill(GstBaseSrc* src, guint64 offset, guint size, GstBuffer* buffer) {
    auto* self = reinterpret_cast<OrvexCdTrackSource*>(src);
    const guint64 total = TotalBytes(self);
    if (offset >= total)
        return GST_FLOW_EOS;
    const guint64 length = std::min<guint64>(size, total - offset);
    GstMapInfo map;
    if (!gst_buffer_map(buffer, &map, GST_MAP_WRITE))
        return GST_FLOW_ERROR;
    guint64 done = 0;
    if (offset < kWavHeaderBytes) {
        const auto header = CdWavHeader(self->reader->Sectors() * kCdSectorBytes);
        done = std::min<guint64>(length, kWavHeaderBytes - offset);
        memcpy(map.data, header.data() + offset, done);
    }
    bool ok = true;
    while (ok && done < length) {
        const guint64 at = offset + done - kWavHeaderBytes;
        const auto sector = static_cast<uint32_t>(at / kCdSectorBytes);
        const guint64 within = at % kCdSectorBytes;
        const uint32_t sectors =
            std::min<uint32_t>(kSectorsPerRead, self->reader->Sectors() - sector);
        self->scratch->resize(static_cast<size_t>(sectors) * kCdSectorBytes);
        ok = self->reader->Read(sector, sectors, self->scratch->data());
        const guint64 take = std::min<guint64>(length - done, self->scratch->size() - within);
        if (ok)
            memcpy(map.data + done, self->scratch->data() + within, take);
        done += take;
    }
    gst_buffer_unmap(buffer, &map);
    if (!ok) {
        GST_ELEMENT_ERROR(src, RESOURCE, READ, ("The CD track could not be read."), (nullptr));
        return GST_FLOW_ERROR;
    }
    gst_buffer_set_size(buffer, length);
    return GST_FLOW_OK;
}

void Finalize(GObject* object) {
    auto* self = reinterpret_cast<OrvexCdTrackSource*>(object);
    delete self->reader;
    delete self->scratch;
    G_OBJECT_CLASS(orvex_cd_track_source_parent_class)->finalize(object);
}

void orvex_cd_track_source_class_init(OrvexCdTrackSourceClass* klass) {
    G_OBJECT_CLASS(klass)->finalize = Finalize;
    GstElementClass* element = GST_ELEMENT_CLASS(klass);
    gst_element_class_add_static_pad_template(element, &kOutputTemplate);
    gst_element_class_set_static_metadata(element, "CD track source", "Source/Audio",
                                          "Reads an audio CD track as a WAV file", "Orvex");
    GstBaseSrcClass* base = GST_BASE_SRC_CLASS(klass);
    base->get_size = GetSize;
    base->is_seekable = IsSeekable;
    base->start = Start;
    base->fill = Fill;
}

void orvex_cd_track_source_init(OrvexCdTrackSource* self) {
    self->reader = nullptr;
    self->scratch = new std::vector<uint8_t>;
    gst_base_src_set_format(GST_BASE_SRC(self), GST_FORMAT_BYTES);
    gst_base_src_set_blocksize(GST_BASE_SRC(self), kSectorsPerRead * kCdSectorBytes);
}

// Until the pin is connected the source keeps what it has read.
GstPadProbeReturn Hold(GstPad*, GstPadProbeInfo*, gpointer) {
    return GST_PAD_PROBE_OK;
}

} // namespace

IUnknown* NewAsyncCdSource() {
    return static_cast<IBaseFilter*>(new CAsyncCdSource);
}

CAsyncCdSource::CAsyncCdSource() : CGstFilter("asynccd") {
    m_source =
        GST_ELEMENT(g_object_new(orvex_cd_track_source_get_type(), "name", "cdtrack", nullptr));
    gst_bin_add(GST_BIN(m_bin), m_source);
    m_sourcePad = gst_element_get_static_pad(m_source, "src");
    m_hold =
        gst_pad_add_probe(m_sourcePad, GST_PAD_PROBE_TYPE_BLOCK_DOWNSTREAM, Hold, nullptr, nullptr);
    GstPad* ghost = gst_ghost_pad_new("Output", m_sourcePad);
    g_signal_connect(ghost, "linked", G_CALLBACK(OnLinked), this);
    // A byte stream whatever container it holds.
    AddPin(u"Output", PINDIR_OUTPUT, ghost, MEDIATYPE_Stream, true);
}

CAsyncCdSource::~CAsyncCdSource() {
    gst_element_set_state(m_bin, GST_STATE_NULL);
    gst_object_unref(m_sourcePad);
}

HRESULT CAsyncCdSource::QueryOther(REFIID riid, void** ppv) {
    if (riid != IID_IFileSourceFilter) {
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    *ppv = static_cast<IFileSourceFilter*>(this);
    AddRef();
    return S_OK;
}

void CAsyncCdSource::OnLinked(GstPad*, GstPad*, gpointer data) {
    auto* self = static_cast<CAsyncCdSource*>(data);
    if (gulong hold = self->m_hold.exchange(0))
        gst_pad_remove_probe(self->m_sourcePad, hold);
}

HRESULT CAsyncCdSource::Load(LPCOLESTR fileName, const AM_MEDIA_TYPE*) {
    if (!fileName)
        return E_POINTER;
    auto* self = reinterpret_cast<OrvexCdTrackSource*>(m_source);
    if (self->reader)
        return VFW_E_WRONG_STATE;
    gchar* utf8 = g_utf16_to_utf8(reinterpret_cast<const gunichar2*>(fileName), -1, nullptr,
                                  nullptr, nullptr);
    const std::string path = utf8 ? utf8 : "";
    g_free(utf8);
    std::string disc;
    int track = 0;
    if (!SplitCdTrackPath(path, disc, track))
        return E_INVALIDARG;
    auto reader = std::make_unique<CCdTrackReader>();
    if (!reader->Open(disc, track))
        return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    self->reader = reader.release();
    return S_OK;
}
