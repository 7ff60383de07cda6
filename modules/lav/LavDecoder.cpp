#include "modules/lav/LavDecoder.h"

#include <algorithm>
#include <cstring>

namespace {

// The decoders of one kind, best first: FFmpeg's before the others, then by
// rank. Read from the registry once.
GList* DecoderFactories(bool video) {
    static GList* lists[2] = {nullptr, nullptr};
    static std::once_flag once[2];
    int i = video ? 1 : 0;
    std::call_once(once[i], [&] {
        GList* all = gst_element_factory_list_get_elements(
            GST_ELEMENT_FACTORY_TYPE_DECODER | (video ? GST_ELEMENT_FACTORY_TYPE_MEDIA_VIDEO
                                                      : GST_ELEMENT_FACTORY_TYPE_MEDIA_AUDIO),
            GST_RANK_MARGINAL);
        all = g_list_sort(all, [](gconstpointer a, gconstpointer b) -> gint {
            auto* fa = GST_ELEMENT_FACTORY(const_cast<void*>(a));
            auto* fb = GST_ELEMENT_FACTORY(const_cast<void*>(b));
            bool avA = g_str_has_prefix(GST_OBJECT_NAME(fa), "avdec_");
            bool avB = g_str_has_prefix(GST_OBJECT_NAME(fb), "avdec_");
            if (avA != avB)
                return avA ? -1 : 1;
            return gst_plugin_feature_rank_compare_func(a, b);
        });
        lists[i] = all;
    });
    return lists[i];
}

bool IsRaw(const GstCaps* caps) {
    const char* name = gst_structure_get_name(gst_caps_get_structure(caps, 0));
    return strcmp(name, "video/x-raw") == 0 || strcmp(name, "audio/x-raw") == 0;
}

GstElement* MakeDecoder(const GstCaps* caps, bool video) {
    if (IsRaw(caps))
        return gst_element_factory_make("identity", nullptr);
    GList* fit =
        gst_element_factory_list_filter(DecoderFactories(video), caps, GST_PAD_SINK, FALSE);
    GstElement* decoder = nullptr;
    for (GList* l = fit; l && !decoder; l = l->next)
        decoder = gst_element_factory_create(GST_ELEMENT_FACTORY(l->data), nullptr);
    gst_plugin_feature_list_free(fit);
    return decoder;
}

// The parser that frames a stream of these caps, best ranked first; null
// when the decoder takes the stream as it comes.
GstElement* MakeParser(const GstCaps* caps, bool video) {
    GList* all = gst_element_factory_list_get_elements(
        GST_ELEMENT_FACTORY_TYPE_PARSER |
            (video ? GST_ELEMENT_FACTORY_TYPE_MEDIA_VIDEO : GST_ELEMENT_FACTORY_TYPE_MEDIA_AUDIO),
        GST_RANK_MARGINAL);
    all = g_list_sort(all, gst_plugin_feature_rank_compare_func);
    GList* fit = gst_element_factory_list_filter(all, caps, GST_PAD_SINK, FALSE);
    GstElement* parser = nullptr;
    for (GList* l = fit; l && !parser; l = l->next)
        parser = gst_element_factory_create(GST_ELEMENT_FACTORY(l->data), nullptr);
    gst_plugin_feature_list_free(fit);
    gst_plugin_feature_list_free(all);
    return parser;
}

void Discard(std::vector<GstElement*>& elements) {
    for (GstElement* e : elements) {
        if (e)
            gst_object_unref(gst_object_ref_sink(e));
    }
    elements.clear();
}

} // namespace

// ---- CLavDecoder ----

CLavDecoder::CLavDecoder(const char* name, REFGUID major) : CGstFilter(name), m_major(major) {
    m_input =
        AddPin(u"Input", PINDIR_INPUT, gst_ghost_pad_new_no_target("Input", GST_PAD_SINK), major);
    m_output =
        AddPin(u"Output", PINDIR_OUTPUT, gst_ghost_pad_new_no_target("Output", GST_PAD_SRC), major);
}

CLavDecoder::~CLavDecoder() {
    if (m_inputCaps)
        gst_caps_unref(m_inputCaps);
}

bool CLavDecoder::AcceptsMajor(CGstPin* pin, REFGUID major) {
    if (pin == m_input && major == MEDIATYPE_DVD_ENCRYPTED_PACK)
        return TakesDvdStreams();
    return CGstFilter::AcceptsMajor(pin, major);
}

std::vector<GUID> CLavDecoder::FurtherMajors(CGstPin* pin) {
    if (pin == m_input && TakesDvdStreams() && !pin->IsConnected())
        return {MEDIATYPE_DVD_ENCRYPTED_PACK};
    return {};
}

HRESULT CLavDecoder::OnReceiveConnection(CGstPin* pin, IPin*, GstCaps* caps) {
    if (pin != m_input || !caps || gst_caps_get_size(caps) == 0)
        return VFW_E_TYPE_NOT_ACCEPTED;
    if (!(MajorTypeOfCaps(caps) == m_major) || !Accepts(caps))
        return VFW_E_TYPE_NOT_ACCEPTED;
    std::lock_guard<std::mutex> lock(m_chainLock);
    if (!m_chain.empty())
        return VFW_E_ALREADY_CONNECTED;
    m_fromDvd = pin->ConnectedMajor() == MEDIATYPE_DVD_ENCRYPTED_PACK;
    if (!BuildChainLocked(caps))
        return VFW_E_TYPE_NOT_ACCEPTED;
    if (m_inputCaps)
        gst_caps_unref(m_inputCaps);
    m_inputCaps = gst_caps_copy(caps);
    if (m_fromDvd && !m_dvdProbe)
        m_dvdProbe = gst_pad_add_probe(m_input->GetPad(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM,
                                       OnDvdInputEvent, this, nullptr);
    return S_OK;
}

bool CLavDecoder::BuildChainLocked(const GstCaps* caps) {
    const bool video = m_major == MEDIATYPE_Video;
    std::vector<GstElement*> chain;
    if (m_fromDvd && !IsRaw(caps)) {
        if (GstElement* parser = MakeParser(caps, video))
            chain.push_back(parser);
    }
    GstElement* decoder = MakeDecoder(caps, video);
    if (!decoder) {
        Discard(chain);
        return false;
    }
    chain.push_back(decoder);
    for (GstElement* e : MakeTail())
        chain.push_back(e);
    if (std::find(chain.begin(), chain.end(), nullptr) != chain.end()) {
        Discard(chain);
        return false;
    }
    for (GstElement* e : chain)
        gst_bin_add(GST_BIN(m_bin), e);
    bool linked = true;
    for (size_t i = 1; i < chain.size() && linked; ++i)
        linked = gst_element_link(chain[i - 1], chain[i]);
    GstPad* sink = gst_element_get_static_pad(chain.front(), "sink");
    GstPad* src = linked ? LinkTail(chain.back()) : nullptr;
    linked = linked && sink && src &&
             gst_ghost_pad_set_target(GST_GHOST_PAD(m_input->GetPad()), sink) &&
             gst_ghost_pad_set_target(GST_GHOST_PAD(m_output->GetPad()), src);
    if (sink)
        gst_object_unref(sink);
    if (src)
        gst_object_unref(src);
    m_chain = chain;
    if (!linked) {
        DropChainLocked();
        return false;
    }
    for (auto it = chain.rbegin(); it != chain.rend(); ++it)
        gst_element_sync_state_with_parent(*it);
    return true;
}

void CLavDecoder::DropChainLocked() {
    gst_ghost_pad_set_target(GST_GHOST_PAD(m_input->GetPad()), nullptr);
    gst_ghost_pad_set_target(GST_GHOST_PAD(m_output->GetPad()), nullptr);
    for (GstElement* e : m_chain) {
        gst_element_set_state(e, GST_STATE_NULL);
        gst_bin_remove(GST_BIN(m_bin), e);
    }
    m_chain.clear();
}

GstPad* CLavDecoder::LinkTail(GstElement* last) {
    return gst_element_get_static_pad(last, "src");
}

GstPadProbeReturn CLavDecoder::OnDvdInputEvent(GstPad*, GstPadProbeInfo* info, gpointer data) {
    GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) != GST_EVENT_CAPS)
        return GST_PAD_PROBE_OK;
    auto* self = static_cast<CLavDecoder*>(data);
    GstCaps* caps = nullptr;
    gst_event_parse_caps(event, &caps);
    std::lock_guard<std::mutex> lock(self->m_chainLock);
    if (!caps || gst_caps_get_size(caps) == 0 || self->m_chain.empty() || !self->m_inputCaps)
        return GST_PAD_PROBE_OK;
    if (gst_structure_has_name(
            gst_caps_get_structure(caps, 0),
            gst_structure_get_name(gst_caps_get_structure(self->m_inputCaps, 0))))
        return GST_PAD_PROBE_OK;
    // Called on the stream's own thread, before the new description passes:
    // the old chain has nothing in flight.
    self->DropChainLocked();
    if (self->Accepts(caps) && self->BuildChainLocked(caps)) {
        gst_caps_unref(self->m_inputCaps);
        self->m_inputCaps = gst_caps_copy(caps);
    }
    return GST_PAD_PROBE_OK;
}

void CLavDecoder::OnDisconnect(CGstPin* pin) {
    if (pin != m_input)
        return;
    std::lock_guard<std::mutex> lock(m_chainLock);
    if (m_dvdProbe) {
        gst_pad_remove_probe(m_input->GetPad(), m_dvdProbe);
        m_dvdProbe = 0;
    }
    DropChainLocked();
}

std::vector<GstCaps*> CLavDecoder::OfferedCaps(CGstPin* pin) {
    std::lock_guard<std::mutex> lock(m_chainLock);
    GstCaps* caps = gst_pad_get_current_caps(pin->GetPad());
    if (!caps && m_inputCaps)
        caps = pin == m_input ? gst_caps_ref(m_inputCaps) : OutputFor(m_inputCaps);
    // Unconnected, a pin states only its major type.
    return {caps};
}

// ---- CLavVideo ----

IUnknown* NewLavVideo() {
    return static_cast<IBaseFilter*>(new CLavVideo);
}

CLavVideo::CLavVideo() : CLavDecoder("lavvideo", MEDIATYPE_Video) {}

HRESULT CLavVideo::QueryOther(REFIID riid, void** ppv) {
    if (riid == IID_ILAVVideoSettings) {
        *ppv = static_cast<ILAVVideoSettings*>(this);
        AddRef();
        return S_OK;
    }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

HRESULT CLavVideo::SetRuntimeConfig(BOOL runtime) {
    m_runtimeConfig = runtime;
    return S_OK;
}

HRESULT CLavVideo::SetDVDVideoSupport(BOOL enabled) {
    m_dvdVideo = enabled ? TRUE : FALSE;
    if (!enabled || m_subtitle)
        return S_OK;
    // The sub-pictures are drawn onto the decoded picture; without the
    // element that draws them the filter keeps its one input.
    m_overlay = gst_element_factory_make("dvdspu", nullptr);
    m_plainPicture = gst_element_factory_make("capsfilter", nullptr);
    if (!m_overlay || !m_plainPicture) {
        for (GstElement* e : {m_overlay, m_plainPicture}) {
            if (e)
                gst_object_unref(gst_object_ref_sink(e));
        }
        m_overlay = m_plainPicture = nullptr;
        return S_OK;
    }
    // The sub-pictures are drawn into the picture itself: a renderer that
    // would draw them as an overlay of its own is not offered the chance,
    // since not every one draws the menu's highlights right.
    GstCaps* plain = gst_caps_new_empty_simple("video/x-raw");
    g_object_set(m_plainPicture, "caps", plain, nullptr);
    gst_caps_unref(plain);
    gst_bin_add_many(GST_BIN(m_bin), m_overlay, m_plainPicture, nullptr);
    gst_element_link(m_overlay, m_plainPicture);
    GstPad* subpicture = gst_element_get_static_pad(m_overlay, "subpicture");
    GstPad* ghost = gst_ghost_pad_new("Subtitle Input", subpicture);
    gst_object_unref(subpicture);
    m_subtitle = AddPin(u"Subtitle Input", PINDIR_INPUT, ghost, MEDIATYPE_DVD_ENCRYPTED_PACK);
    return S_OK;
}

bool CLavVideo::AcceptsMajor(CGstPin* pin, REFGUID major) {
    if (pin == m_subtitle)
        return major == MEDIATYPE_DVD_ENCRYPTED_PACK || major == MEDIATYPE_Text;
    return CLavDecoder::AcceptsMajor(pin, major);
}

HRESULT CLavVideo::OnReceiveConnection(CGstPin* pin, IPin* connector, GstCaps* caps) {
    if (pin != m_subtitle)
        return CLavDecoder::OnReceiveConnection(pin, connector, caps);
    if (!caps || gst_caps_get_size(caps) == 0 ||
        !gst_structure_has_name(gst_caps_get_structure(caps, 0), "subpicture/x-dvd"))
        return VFW_E_TYPE_NOT_ACCEPTED;
    return S_OK;
}

std::vector<GstCaps*> CLavVideo::OfferedCaps(CGstPin* pin) {
    if (pin == m_subtitle)
        return {gst_caps_new_empty_simple("subpicture/x-dvd")};
    return CLavDecoder::OfferedCaps(pin);
}

GstPad* CLavVideo::LinkTail(GstElement* last) {
    GstPad* src = gst_element_get_static_pad(last, "src");
    if (!m_dvdVideo || !m_overlay)
        return src;
    GstPad* video = gst_element_get_static_pad(m_overlay, "video");
    const bool linked = src && video && GST_PAD_LINK_SUCCESSFUL(gst_pad_link(src, video));
    if (src)
        gst_object_unref(src);
    if (video)
        gst_object_unref(video);
    return linked ? gst_element_get_static_pad(m_plainPicture, "src") : nullptr;
}

GstCaps* CLavVideo::OutputFor(const GstCaps* input) {
    GstCaps* out = gst_caps_new_empty_simple("video/x-raw");
    const GstStructure* s = gst_caps_get_structure(input, 0);
    int w = 0, h = 0, parN = 0, parD = 0;
    if (gst_structure_get_int(s, "width", &w) && gst_structure_get_int(s, "height", &h))
        gst_caps_set_simple(out, "width", G_TYPE_INT, w, "height", G_TYPE_INT, h, nullptr);
    if (gst_structure_get_fraction(s, "pixel-aspect-ratio", &parN, &parD) && parN > 0 && parD > 0)
        gst_caps_set_simple(out, "pixel-aspect-ratio", GST_TYPE_FRACTION, parN, parD, nullptr);
    return out;
}

// ---- CLavAudio ----

IUnknown* NewLavAudio() {
    return static_cast<IBaseFilter*>(new CLavAudio);
}

CLavAudio::CLavAudio() : CLavDecoder("lavaudio", MEDIATYPE_Audio) {
    std::fill(std::begin(m_codecs), std::end(m_codecs), TRUE);
}

HRESULT CLavAudio::QueryOther(REFIID riid, void** ppv) {
    if (riid == IID_ILAVAudioSettings) {
        *ppv = static_cast<ILAVAudioSettings*>(this);
        AddRef();
        return S_OK;
    }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

HRESULT CLavAudio::SetRuntimeConfig(BOOL runtime) {
    m_runtimeConfig = runtime;
    return S_OK;
}

HRESULT CLavAudio::SetFormatConfiguration(LAVAudioCodec codec, BOOL enabled) {
    if (codec < 0 || codec >= kLavAudioCodecSlots)
        return E_FAIL;
    m_codecs[codec] = enabled ? TRUE : FALSE;
    return S_OK;
}

BOOL CLavAudio::GetFormatConfiguration(LAVAudioCodec codec) {
    return codec >= 0 && codec < kLavAudioCodecSlots ? m_codecs[codec] : FALSE;
}

HRESULT CLavAudio::SetMixingEnabled(BOOL enabled) {
    m_mixing = enabled ? TRUE : FALSE;
    std::lock_guard<std::mutex> lock(m_chainLock);
    if (m_mixFilter) {
        GstCaps* caps = MixCaps();
        g_object_set(m_mixFilter, "caps", caps, nullptr);
        gst_caps_unref(caps);
    }
    return S_OK;
}

BOOL CLavAudio::GetMixingEnabled() {
    return m_mixing;
}

int CLavAudio::CodecOf(const GstCaps* caps) {
    const GstStructure* s = gst_caps_get_structure(caps, 0);
    if (!gst_structure_has_name(s, "audio/x-wma"))
        return -1;
    int version = 0;
    gst_structure_get_int(s, "wmaversion", &version);
    switch (version) {
    case 1:
    case 2:
        return Codec_WMA2;
    case 3:
        return Codec_WMAPRO;
    case 4:
        return Codec_WMALL;
    default:
        return -1;
    }
}

bool CLavAudio::Accepts(const GstCaps* caps) {
    int codec = CodecOf(caps);
    return codec < 0 || m_codecs[codec];
}

GstCaps* CLavAudio::MixCaps() const {
    return m_mixing ? gst_caps_new_simple("audio/x-raw", "channels", G_TYPE_INT, 2, nullptr)
                    : gst_caps_new_any();
}

std::vector<GstElement*> CLavAudio::MakeTail() {
    GstElement* convert = gst_element_factory_make("audioconvert", nullptr);
    GstElement* mix = gst_element_factory_make("capsfilter", nullptr);
    if (mix) {
        GstCaps* caps = MixCaps();
        g_object_set(mix, "caps", caps, nullptr);
        gst_caps_unref(caps);
    }
    m_mixFilter = mix;
    return {convert, mix};
}

GstCaps* CLavAudio::OutputFor(const GstCaps* input) {
    GstCaps* out = gst_caps_new_empty_simple("audio/x-raw");
    const GstStructure* s = gst_caps_get_structure(input, 0);
    int channels = 0, rate = 0;
    if (m_mixing)
        gst_caps_set_simple(out, "channels", G_TYPE_INT, 2, nullptr);
    else if (gst_structure_get_int(s, "channels", &channels))
        gst_caps_set_simple(out, "channels", G_TYPE_INT, channels, nullptr);
    if (gst_structure_get_int(s, "rate", &rate))
        gst_caps_set_simple(out, "rate", G_TYPE_INT, rate, nullptr);
    return out;
}
