// The reader's streaming side: what each event of the navigation library
// becomes on the three pads, and what the graph is told.
#include <gst/video/video.h>

#include "platform/media/DvdReader.h"

#include <dvdnav/dvdnav.h>

namespace {

// How far the disc's own clock may jump forward between two video object
// units before the reader starts a new segment rather than let it run on.
constexpr GstClockTime kSeamlessJump = 2 * GST_SECOND;
// How far the sound may lag behind the picture before the sound's renderer
// is told that nothing comes.
constexpr GstClockTime kAudioSilence = GST_SECOND;

GstClockTime TicksToTime(uint64_t ticks) {
    return gst_util_uint64_scale(ticks, GST_SECOND, 90000);
}

GstEvent* DvdEvent(GstEventType type, GstStructure* structure) {
    return gst_event_new_custom(type, structure);
}

LONG_PTR Bcd(int64_t value) {
    return static_cast<LONG_PTR>((value / 10) << 4 | (value % 10));
}

} // namespace

void CDvdReader::BeginStreamsLocked(Actions& actions) {
    static const char* const kStreamNames[kOutputs] = {"video", "audio", "subpicture"};
    const guint group = gst_util_group_id_next();
    for (int i = 0; i < kOutputs; ++i) {
        gchar* id = gst_pad_create_stream_id(m_pads[i], m_element, kStreamNames[i]);
        GstEvent* start = gst_event_new_stream_start(id);
        g_free(id);
        gst_event_set_group_id(start, group);
        actions.push_back({m_pads[i], start, nullptr});
        GstCaps* caps = nullptr;
        if (i == kVideo)
            caps = gst_caps_new_simple("video/mpeg", "mpegversion", G_TYPE_INT, 2, "systemstream",
                                       G_TYPE_BOOLEAN, FALSE, "width", G_TYPE_INT, m_facts.width,
                                       "height", G_TYPE_INT, m_facts.height, "pixel-aspect-ratio",
                                       GST_TYPE_FRACTION, m_facts.parN, m_facts.parD, nullptr);
        else if (i == kAudio)
            caps = AudioCaps(m_audioCoding);
        else
            caps = gst_caps_new_empty_simple("subpicture/x-dvd");
        actions.push_back({m_pads[i], gst_event_new_caps(caps), nullptr});
        gst_caps_unref(caps);
    }
    m_sentStart = true;
    if (m_noFirstPlay) {
        m_noFirstPlay = false;
        GraphEventLocked(actions, EC_DVD_NO_FP_PGC, 0, 0);
    }
}

int CDvdReader::HandleEventLocked(int event, Actions& actions) {
    switch (event) {
    case DVDNAV_BLOCK_OK:
        OnPackLocked(actions);
        break;
    case DVDNAV_NAV_PACKET:
        OnNavPacketLocked(actions);
        break;
    case DVDNAV_STILL_FRAME: {
        const int length = reinterpret_cast<dvdnav_still_event_t*>(m_block)->length;
        if (!m_inStill)
            EnterStillLocked(length, actions);
        return length;
    }
    case DVDNAV_SPU_CLUT_CHANGE: {
        const auto* clut = reinterpret_cast<const uint32_t*>(m_block);
        GstStructure* s = gst_structure_new("application/x-gst-dvd", "event", G_TYPE_STRING,
                                            "dvd-spu-clut-change", nullptr);
        for (int i = 0; i < 16; ++i) {
            char name[16];
            g_snprintf(name, sizeof(name), "clut%02d", i);
            gst_structure_set(s, name, G_TYPE_INT, static_cast<int>(clut[i]), nullptr);
        }
        actions.push_back({m_pads[kSubPicture], DvdEvent(GST_EVENT_CUSTOM_DOWNSTREAM, s), nullptr});
        break;
    }
    case DVDNAV_SPU_STREAM_CHANGE: {
        const auto* change = reinterpret_cast<dvdnav_spu_stream_change_event_t*>(m_block);
        m_spuTrack = change->physical_wide < 0 ? -1 : (change->physical_wide & 0x1F);
        const gboolean forcedOnly = change->physical_wide >= 0 && (change->physical_wide & 0x80);
        GstStructure* s =
            gst_structure_new("application/x-gst-dvd", "event", G_TYPE_STRING,
                              "dvd-set-subpicture-track", "physical-id", G_TYPE_INT, m_spuTrack,
                              "forced-only", G_TYPE_BOOLEAN, forcedOnly, nullptr);
        actions.push_back({m_pads[kSubPicture], DvdEvent(GST_EVENT_CUSTOM_DOWNSTREAM, s), nullptr});
        break;
    }
    case DVDNAV_AUDIO_STREAM_CHANGE:
        m_audioTrack = reinterpret_cast<dvdnav_audio_stream_change_event_t*>(m_block)->physical;
        break;
    case DVDNAV_VTS_CHANGE:
    case DVDNAV_CELL_CHANGE:
        // The time and the buttons wait for the new place's first navigation
        // pack: until then the library still holds those of the old one.
        ReportPlaceLocked(actions);
        break;
    case DVDNAV_HIGHLIGHT:
        HighlightLocked(actions);
        ReportButtonsLocked(actions);
        break;
    case DVDNAV_HOP_CHANNEL:
        m_discont = true;
        break;
    case DVDNAV_WAIT:
        dvdnav_wait_skip(m_nav);
        break;
    case DVDNAV_STOP:
        if (m_domain != kDvdDomainStop) {
            m_domain = kDvdDomainStop;
            GraphEventLocked(actions, EC_DVD_DOMAIN_CHANGE, kDvdDomainStop, 0);
        }
        for (GstPad* pad : m_pads)
            actions.push_back({pad, gst_event_new_eos(), nullptr});
        break;
    default:
        break;
    }
    return -1;
}

void CDvdReader::OnPackLocked(Actions& actions) {
    std::vector<DvdPayload> pieces;
    if (!SplitDvdPack(m_block, kDvdPackSize, pieces))
        return;
    for (const DvdPayload& piece : pieces) {
        if (piece.scrambled) {
            m_failed = true;
            m_failure = "This DVD is encrypted (CSS). Orvex cannot read it: descrambling needs "
                        "the libdvdcss library, which Debian does not ship.";
            return;
        }
        // Nothing plays before the first navigation pack has set the time.
        if (!m_haveSegment || piece.size == 0)
            continue;
        Output output;
        if (piece.kind == DvdStreamKind::Video) {
            output = kVideo;
        } else if (piece.kind == DvdStreamKind::Audio) {
            if (piece.track != m_audioTrack)
                continue;
            output = kAudio;
            if (piece.audio != m_audioCoding) {
                m_audioCoding = piece.audio;
                GstCaps* caps = AudioCaps(piece.audio);
                actions.push_back({m_pads[kAudio], gst_event_new_caps(caps), nullptr});
                gst_caps_unref(caps);
            }
        } else if (piece.kind == DvdStreamKind::SubPicture) {
            if (piece.track != m_spuTrack)
                continue;
            output = kSubPicture;
        } else {
            continue;
        }
        GstBuffer* buffer = gst_buffer_new_memdup(m_block + piece.offset, piece.size);
        if (piece.hasPts) {
            const GstClockTime pts = TicksToTime(piece.pts);
            GST_BUFFER_PTS(buffer) = pts;
            if (output == kAudio)
                m_audioEnd = pts;
        }
        if (m_padDiscont[output]) {
            GST_BUFFER_FLAG_SET(buffer, GST_BUFFER_FLAG_DISCONT);
            m_padDiscont[output] = false;
        }
        actions.push_back({m_pads[output], nullptr, buffer});
    }
}

void CDvdReader::OnNavPacketLocked(Actions& actions) {
    pci_t* pci = dvdnav_get_current_nav_pci(m_nav);
    if (!pci)
        return;
    const GstClockTime start = TicksToTime(pci->pci_gi.vobu_s_ptm);
    const GstClockTime end = TicksToTime(pci->pci_gi.vobu_e_ptm);
    m_inStill = false;
    const bool jumped =
        m_vobuEnd == GST_CLOCK_TIME_NONE || start < m_vobuEnd || start - m_vobuEnd > kSeamlessJump;
    if (!m_haveSegment || m_discont || jumped)
        NewSegmentLocked(start, actions);
    m_vobuEnd = end;
    // A stretch with no sound still lets the sound's renderer go on.
    if (m_audioEnd == GST_CLOCK_TIME_NONE || m_audioEnd < m_segment.start)
        m_audioEnd = m_segment.start;
    if (start > m_audioEnd + kAudioSilence) {
        actions.push_back(
            {m_pads[kAudio], gst_event_new_gap(m_audioEnd, start - m_audioEnd), nullptr});
        m_audioEnd = start;
    }
    ReportStateLocked(actions);
    HighlightLocked(actions);
}

void CDvdReader::NewSegmentLocked(GstClockTime start, Actions& actions) {
    GstClockTime base = 0;
    // The disc's clock jumped: the new segment goes on where the old one
    // ends, so the running time never stops or goes back.
    if (m_haveSegment && !m_resetBase) {
        const GstClockTime end = m_vobuEnd != GST_CLOCK_TIME_NONE && m_vobuEnd > m_segment.start
                                     ? m_vobuEnd
                                     : m_segment.start;
        base = m_segment.base + (end - m_segment.start) + m_stillExtra;
    }
    m_stillExtra = 0;
    m_resetBase = false;
    m_discont = false;
    gst_segment_init(&m_segment, GST_FORMAT_TIME);
    m_segment.start = start;
    m_segment.time = start;
    m_segment.position = start;
    m_segment.base = base;
    for (GstPad* pad : m_pads)
        actions.push_back({pad, gst_event_new_segment(&m_segment), nullptr});
    for (bool& d : m_padDiscont)
        d = true;
    m_haveSegment = true;
    m_audioEnd = start;
}

void CDvdReader::EnterStillLocked(int length, Actions& actions) {
    m_inStill = true;
    m_stillDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(length);
    if (m_haveSegment) {
        // The decoder gives up the last picture it holds, and everything
        // downstream knows that it stays on the screen.
        GstBuffer* end = gst_buffer_new_memdup(kMpegSequenceEnd, sizeof(kMpegSequenceEnd));
        actions.push_back({m_pads[kVideo], nullptr, end});
        actions.push_back({m_pads[kVideo], gst_video_event_new_still_frame(TRUE), nullptr});
        const GstClockTime from = m_audioEnd != GST_CLOCK_TIME_NONE ? m_audioEnd : m_segment.start;
        actions.push_back({m_pads[kAudio], gst_event_new_gap(from, GST_CLOCK_TIME_NONE), nullptr});
    }
    ReportStateLocked(actions);
    HighlightLocked(actions);
}

void CDvdReader::ReportStateLocked(Actions& actions) {
    if (ReportPlaceLocked(actions)) {
        const int64_t ticks = dvdnav_get_current_time(m_nav);
        const int64_t second = ticks >= 0 ? ticks / 90000 : 0;
        if (second != m_second) {
            m_second = second;
            const int64_t h = second / 3600, m = second / 60 % 60, s = second % 60;
            const LONG_PTR hmsf = static_cast<LONG_PTR>((h & 0xFF) | (m << 8) | (s << 16));
            GraphEventLocked(actions, EC_DVD_CURRENT_HMSF_TIME, hmsf, 0);
            GraphEventLocked(actions, EC_DVD_CURRENT_TIME,
                             Bcd(h % 100) | Bcd(m) << 8 | Bcd(s) << 16, 0);
        }
    }
    ReportButtonsLocked(actions);
}

bool CDvdReader::ReportPlaceLocked(Actions& actions) {
    const int domain = DomainLocked();
    if (domain != m_domain) {
        m_domain = domain;
        GraphEventLocked(actions, EC_DVD_DOMAIN_CHANGE, domain, 0);
    }
    int32_t title = 0, part = 0;
    if (domain == kDvdDomainTitle &&
        dvdnav_current_title_info(m_nav, &title, &part) == DVDNAV_STATUS_OK && title > 0) {
        if (title != m_title) {
            m_title = title;
            m_chapter = -1;
            GraphEventLocked(actions, EC_DVD_TITLE_CHANGE, title, 0);
        }
        if (part != m_chapter) {
            m_chapter = part;
            GraphEventLocked(actions, EC_DVD_CHAPTER_START, part, 0);
        }
        return true;
    }
    return false;
}

void CDvdReader::ReportButtonsLocked(Actions& actions) {
    pci_t* pci = dvdnav_get_current_nav_pci(m_nav);
    const int count = pci && pci->hli.hl_gi.hli_ss != 0 ? pci->hli.hl_gi.btn_ns : 0;
    int32_t button = 0;
    if (count == 0 || dvdnav_get_current_highlight(m_nav, &button) != DVDNAV_STATUS_OK)
        button = 0;
    if (count == m_buttons && button == m_button)
        return;
    m_buttons = count;
    m_button = button;
    GraphEventLocked(actions, EC_DVD_BUTTON_CHANGE, count, button);
}

void CDvdReader::HighlightLocked(Actions& actions) {
    pci_t* pci = dvdnav_get_current_nav_pci(m_nav);
    int32_t button = 0;
    dvdnav_highlight_area_t area{};
    const bool shown = pci && pci->hli.hl_gi.hli_ss != 0 &&
                       dvdnav_get_current_highlight(m_nav, &button) == DVDNAV_STATUS_OK &&
                       button > 0 && button <= pci->hli.hl_gi.btn_ns &&
                       dvdnav_get_highlight_area(pci, button, 0, &area) == DVDNAV_STATUS_OK;
    const uint32_t key = shown ? area.palette ^ (static_cast<uint32_t>(area.sx) << 16 | area.sy) ^
                                     (static_cast<uint32_t>(area.ex) << 8 | area.ey)
                               : 0;
    const int drawn = shown ? button : 0;
    if (drawn == m_highlightButton && key == m_highlightKey)
        return;
    m_highlightButton = drawn;
    m_highlightKey = key;
    GstStructure* s;
    if (shown)
        s = gst_structure_new("application/x-gst-dvd", "event", G_TYPE_STRING, "dvd-spu-highlight",
                              "button", G_TYPE_INT, button, "palette", G_TYPE_INT,
                              static_cast<int>(area.palette), "sx", G_TYPE_INT, area.sx, "sy",
                              G_TYPE_INT, area.sy, "ex", G_TYPE_INT, area.ex, "ey", G_TYPE_INT,
                              area.ey, nullptr);
    else
        s = gst_structure_new("application/x-gst-dvd", "event", G_TYPE_STRING,
                              "dvd-spu-reset-highlight", nullptr);
    // Out of band: a menu that waits as a still frame is redrawn at once.
    actions.push_back({m_pads[kSubPicture], DvdEvent(GST_EVENT_CUSTOM_DOWNSTREAM_OOB, s), nullptr});
}

void CDvdReader::GraphEventLocked(Actions& actions, LONG code, LONG_PTR param1, LONG_PTR param2) {
    GstStructure* s = gst_structure_new(kDvdGraphEventName, "code", G_TYPE_INT, code, "param1",
                                        G_TYPE_INT64, static_cast<gint64>(param1), "param2",
                                        G_TYPE_INT64, static_cast<gint64>(param2), nullptr);
    actions.push_back({m_pads[kVideo], DvdEvent(GST_EVENT_CUSTOM_DOWNSTREAM, s), nullptr});
}
