#include "platform/media/DvdReader.h"

#include <dvdnav/dvdnav.h>
#include <gst/video/video.h>

const char* const kDvdGraphEventName = "orvex-dvd-graph-event";

namespace {

// The element that holds the reader's pads. It stops the reader before it
// leaves the paused state, since its pads can only be deactivated once the
// streaming thread has let go of them.
struct OrvexDvdReaderElement {
    GstElement parent;
    CDvdReader* owner;
};
struct OrvexDvdReaderElementClass {
    GstElementClass parent_class;
};

G_DEFINE_TYPE(OrvexDvdReaderElement, orvex_dvd_reader_element, GST_TYPE_ELEMENT)

GstStaticPadTemplate kVideoTemplate =
    GST_STATIC_PAD_TEMPLATE("video", GST_PAD_SRC, GST_PAD_ALWAYS, GST_STATIC_CAPS_ANY);
GstStaticPadTemplate kAudioTemplate =
    GST_STATIC_PAD_TEMPLATE("audio", GST_PAD_SRC, GST_PAD_ALWAYS, GST_STATIC_CAPS_ANY);
GstStaticPadTemplate kSubPictureTemplate =
    GST_STATIC_PAD_TEMPLATE("subpicture", GST_PAD_SRC, GST_PAD_ALWAYS, GST_STATIC_CAPS_ANY);

GstStateChangeReturn ChangeState(GstElement* element, GstStateChange transition) {
    CDvdReader* owner = reinterpret_cast<OrvexDvdReaderElement*>(element)->owner;
    if (transition == GST_STATE_CHANGE_PAUSED_TO_READY && owner)
        owner->Stop();
    GstStateChangeReturn ret =
        GST_ELEMENT_CLASS(orvex_dvd_reader_element_parent_class)->change_state(element, transition);
    if (transition == GST_STATE_CHANGE_READY_TO_PAUSED && owner && ret != GST_STATE_CHANGE_FAILURE)
        owner->OnPaused();
    return ret;
}

void orvex_dvd_reader_element_class_init(OrvexDvdReaderElementClass* klass) {
    GstElementClass* element = GST_ELEMENT_CLASS(klass);
    element->change_state = ChangeState;
    gst_element_class_add_static_pad_template(element, &kVideoTemplate);
    gst_element_class_add_static_pad_template(element, &kAudioTemplate);
    gst_element_class_add_static_pad_template(element, &kSubPictureTemplate);
    gst_element_class_set_static_metadata(element, "DVD reader", "Source/Video/DVD",
                                          "Reads a DVD-Video disc as its navigation dictates",
                                          "Orvex");
}

void orvex_dvd_reader_element_init(OrvexDvdReaderElement* element) {
    element->owner = nullptr;
}

} // namespace

CDvdReader::CDvdReader() {
    m_element = GST_ELEMENT(gst_object_ref_sink(
        g_object_new(orvex_dvd_reader_element_get_type(), "name", "dvdreader", nullptr)));
    reinterpret_cast<OrvexDvdReaderElement*>(m_element)->owner = this;
    GstStaticPadTemplate* templates[kOutputs] = {&kVideoTemplate, &kAudioTemplate,
                                                 &kSubPictureTemplate};
    for (int i = 0; i < kOutputs; ++i) {
        m_pads[i] = gst_pad_new_from_static_template(templates[i], templates[i]->name_template);
        gst_pad_use_fixed_caps(m_pads[i]);
        gst_element_add_pad(m_element, m_pads[i]);
    }
    gst_segment_init(&m_segment, GST_FORMAT_TIME);
}

CDvdReader::~CDvdReader() {
    Stop();
    reinterpret_cast<OrvexDvdReaderElement*>(m_element)->owner = nullptr;
    {
        std::lock_guard<std::mutex> lock(m_lock);
        for (Action& a : m_pending) {
            if (a.event)
                gst_event_unref(a.event);
            if (a.buffer)
                gst_buffer_unref(a.buffer);
        }
        m_pending.clear();
        if (m_nav)
            dvdnav_close(m_nav);
        m_nav = nullptr;
    }
    gst_object_unref(m_element);
}

GstCaps* CDvdReader::InitialCaps(Output output) {
    switch (output) {
    case kVideo: {
        std::lock_guard<std::mutex> lock(m_lock);
        return gst_caps_new_simple("video/mpeg", "mpegversion", G_TYPE_INT, 2, "systemstream",
                                   G_TYPE_BOOLEAN, FALSE, "width", G_TYPE_INT, m_facts.width,
                                   "height", G_TYPE_INT, m_facts.height, "pixel-aspect-ratio",
                                   GST_TYPE_FRACTION, m_facts.parN, m_facts.parD, nullptr);
    }
    case kAudio:
        return AudioCaps(DvdAudioCoding::Ac3);
    default:
        return gst_caps_new_empty_simple("subpicture/x-dvd");
    }
}

GstCaps* CDvdReader::AudioCaps(DvdAudioCoding coding) const {
    switch (coding) {
    case DvdAudioCoding::Dts:
        return gst_caps_new_empty_simple("audio/x-dts");
    case DvdAudioCoding::Lpcm:
        return gst_caps_new_empty_simple("audio/x-private1-lpcm");
    case DvdAudioCoding::Mpeg:
        return gst_caps_new_simple("audio/mpeg", "mpegversion", G_TYPE_INT, 1, nullptr);
    default:
        return gst_caps_new_empty_simple("audio/x-ac3");
    }
}

bool CDvdReader::Open(const std::string& path, std::string& reason) {
    CDvdDiscFacts facts;
    if (!ExamineDvdDisc(path, facts, reason))
        return false;
    std::lock_guard<std::mutex> lock(m_lock);
    if (m_taskRunning) {
        reason = "The navigator is already playing a disc.";
        return false;
    }
    if (m_nav)
        dvdnav_close(m_nav);
    m_nav = OpenDvdNavigation(path, &m_navMessages, reason);
    if (!m_nav)
        return false;
    m_facts = facts;
    m_noFirstPlay = !facts.hasFirstPlay;
    return true;
}

bool CDvdReader::IsOpen() {
    std::lock_guard<std::mutex> lock(m_lock);
    return m_nav != nullptr;
}

void CDvdReader::Start() {
    {
        std::lock_guard<std::mutex> lock(m_lock);
        m_prepared = true;
        if (!m_nav || m_taskRunning)
            return;
        GstState state = GST_STATE_NULL;
        gst_element_get_state(m_element, &state, nullptr, 0);
        if (state < GST_STATE_PAUSED)
            return;
        m_stopping = false;
        m_taskRunning = true;
    }
    gst_pad_start_task(m_pads[kVideo], TaskFunc, this, nullptr);
}

void CDvdReader::OnPaused() {
    bool prepared;
    {
        std::lock_guard<std::mutex> lock(m_lock);
        prepared = m_prepared;
    }
    if (prepared)
        Start();
}

void CDvdReader::Stop() {
    {
        std::lock_guard<std::mutex> lock(m_lock);
        if (!m_taskRunning)
            return;
        m_stopping = true;
        m_wake.notify_all();
    }
    // A push that waits on a full queue lets go, and the thread ends.
    for (GstPad* pad : m_pads)
        gst_pad_push_event(pad, gst_event_new_flush_start());
    gst_pad_stop_task(m_pads[kVideo]);
    for (GstPad* pad : m_pads)
        gst_pad_push_event(pad, gst_event_new_flush_stop(TRUE));
    std::lock_guard<std::mutex> lock(m_lock);
    m_taskRunning = false;
    m_stopping = false;
    m_sentStart = false;
    ResetAfterFlushLocked();
}

void CDvdReader::ResetAfterFlushLocked() {
    m_haveSegment = false;
    m_resetBase = true;
    m_discont = true;
    for (bool& d : m_padDiscont)
        d = true;
    m_vobuEnd = GST_CLOCK_TIME_NONE;
    m_audioEnd = GST_CLOCK_TIME_NONE;
    m_stillExtra = 0;
    m_inStill = false;
    // After a flush the graph hears the whole state again.
    m_domain = 0;
    m_title = -1;
    m_chapter = -1;
    m_second = -1;
    m_buttons = -1;
    m_button = -1;
    m_highlightButton = -1;
    m_highlightKey = 0;
}

void CDvdReader::TaskFunc(gpointer self) {
    static_cast<CDvdReader*>(self)->Step();
}

void CDvdReader::Step() {
    Actions actions;
    int still = -1;
    bool failed = false;
    std::string failure;
    {
        std::lock_guard<std::mutex> lock(m_lock);
        if (m_stopping || m_flushing || !m_nav || m_failed) {
            gst_pad_pause_task(m_pads[kVideo]);
            return;
        }
        actions.swap(m_pending);
        if (!m_sentStart)
            BeginStreamsLocked(actions);
        int event = DVDNAV_NOP;
        int length = kDvdPackSize;
        if (dvdnav_get_next_block(m_nav, m_block, &event, &length) != DVDNAV_STATUS_OK) {
            m_failed = true;
            m_failure = "The disc could not be read";
            if (!m_navMessages.empty())
                m_failure += ": " + m_navMessages;
            m_failure += ". If the disc is encrypted (CSS), descrambling needs the libdvdcss "
                         "library, which Debian does not ship.";
            GraphEventLocked(actions, EC_DVD_ERROR, DVD_ERROR_Unexpected, 0);
        } else {
            still = HandleEventLocked(event, actions);
        }
        failed = m_failed;
        failure = m_failure;
    }
    GstFlowReturn flow = Push(actions);
    if (failed) {
        GST_ELEMENT_ERROR(m_element, RESOURCE, READ, ("%s", failure.c_str()), (nullptr));
        gst_pad_pause_task(m_pads[kVideo]);
        return;
    }
    if (flow == GST_FLOW_FLUSHING)
        return;
    if (flow != GST_FLOW_OK) {
        if (flow == GST_FLOW_NOT_NEGOTIATED || flow == GST_FLOW_ERROR)
            GST_ELEMENT_ERROR(m_element, STREAM, FAILED, ("Internal data stream error."),
                              ("the disc's streams stopped: %s", gst_flow_get_name(flow)));
        gst_pad_pause_task(m_pads[kVideo]);
        return;
    }
    if (still >= 0)
        WaitInStill(still);
}

GstFlowReturn CDvdReader::Push(Actions& actions) {
    GstFlowReturn result = GST_FLOW_OK;
    for (Action& a : actions) {
        if (result != GST_FLOW_OK) {
            if (a.event)
                gst_event_unref(a.event);
            if (a.buffer)
                gst_buffer_unref(a.buffer);
            continue;
        }
        GstFlowReturn flow = GST_FLOW_OK;
        if (a.event) {
            if (!gst_pad_push_event(a.pad, a.event) && GST_PAD_IS_FLUSHING(a.pad))
                flow = GST_FLOW_FLUSHING;
        } else {
            flow = gst_pad_push(a.pad, a.buffer);
        }
        // A sound track or sub-picture nobody takes does not stop the disc.
        if (flow == GST_FLOW_NOT_LINKED && a.pad != m_pads[kVideo])
            flow = GST_FLOW_OK;
        result = flow;
    }
    actions.clear();
    return result;
}

void CDvdReader::WaitInStill(int length) {
    std::unique_lock<std::mutex> lock(m_lock);
    auto woken = [this] { return m_stopping || m_flushing || !m_pending.empty(); };
    // An endless still ends only by a jump: the user's choice in a menu.
    if (length == 0xFF) {
        m_wake.wait(lock, woken);
        return;
    }
    if (m_wake.wait_until(lock, m_stillDeadline, woken))
        return;
    dvdnav_still_skip(m_nav);
    m_inStill = false;
    m_stillExtra += static_cast<GstClockTime>(length) * GST_SECOND;
    lock.unlock();
    gst_pad_push_event(m_pads[kVideo], gst_video_event_new_still_frame(FALSE));
}

template <typename Command>
bool CDvdReader::Jump(Command command) {
    std::unique_lock<std::mutex> lock(m_lock);
    if (!m_nav || !command())
        return false;
    // A still of the place left behind is over.
    dvdnav_still_skip(m_nav);
    if (!m_taskRunning)
        return true;
    m_flushing = true;
    m_wake.notify_all();
    lock.unlock();
    for (GstPad* pad : m_pads)
        gst_pad_push_event(pad, gst_event_new_flush_start());
    GST_PAD_STREAM_LOCK(m_pads[kVideo]);
    lock.lock();
    m_flushing = false;
    m_failed = false;
    ResetAfterFlushLocked();
    const bool run = m_taskRunning && !m_stopping;
    lock.unlock();
    for (GstPad* pad : m_pads)
        gst_pad_push_event(pad, gst_event_new_flush_stop(TRUE));
    if (run)
        gst_pad_start_task(m_pads[kVideo], TaskFunc, this, nullptr);
    GST_PAD_STREAM_UNLOCK(m_pads[kVideo]);
    return true;
}

bool CDvdReader::PlayTitle(int title) {
    return Jump([&] { return dvdnav_title_play(m_nav, title) == DVDNAV_STATUS_OK; });
}

bool CDvdReader::PlayChapter(int title, int chapter) {
    return Jump([&] { return dvdnav_part_play(m_nav, title, chapter) == DVDNAV_STATUS_OK; });
}

bool CDvdReader::PlayAtTime(int title, uint64_t ticks) {
    return Jump([&] {
        // The library seeks by time only within the title that plays.
        int32_t current = 0, part = 0;
        if ((DomainLocked() != kDvdDomainTitle ||
             dvdnav_current_title_info(m_nav, &current, &part) != DVDNAV_STATUS_OK ||
             current != title) &&
            dvdnav_title_play(m_nav, title) != DVDNAV_STATUS_OK)
            return false;
        return dvdnav_time_search(m_nav, ticks) == DVDNAV_STATUS_OK;
    });
}

bool CDvdReader::ShowMenu(int menu) {
    return Jump([&] {
        return dvdnav_menu_call(m_nav, static_cast<DVDMenuID_t>(menu)) == DVDNAV_STATUS_OK;
    });
}

bool CDvdReader::ActivateAt(int x, int y) {
    return Jump([&] {
        pci_t* pci = dvdnav_get_current_nav_pci(m_nav);
        return pci && pci->hli.hl_gi.hli_ss != 0 &&
               dvdnav_mouse_activate(m_nav, pci, x, y) == DVDNAV_STATUS_OK;
    });
}

bool CDvdReader::SelectAt(int x, int y) {
    std::lock_guard<std::mutex> lock(m_lock);
    if (!m_nav)
        return false;
    pci_t* pci = dvdnav_get_current_nav_pci(m_nav);
    if (!pci || pci->hli.hl_gi.hli_ss == 0 ||
        dvdnav_mouse_select(m_nav, pci, x, y) != DVDNAV_STATUS_OK)
        return false;
    // The new highlight is drawn and told by the streaming thread, which
    // a still keeps waiting for just this.
    HighlightLocked(m_pending);
    ReportButtonsLocked(m_pending);
    if (!m_pending.empty())
        m_wake.notify_all();
    return true;
}

LONG CDvdReader::Domain() {
    std::lock_guard<std::mutex> lock(m_lock);
    return DomainLocked();
}

LONG CDvdReader::DomainLocked() {
    if (!m_nav)
        return kDvdDomainStop;
    if (dvdnav_is_domain_fp(m_nav))
        return kDvdDomainFirstPlay;
    if (dvdnav_is_domain_vmgm(m_nav))
        return kDvdDomainVideoManagerMenu;
    if (dvdnav_is_domain_vtsm(m_nav))
        return kDvdDomainVideoTitleSetMenu;
    if (dvdnav_is_domain_vts(m_nav))
        return kDvdDomainTitle;
    return kDvdDomainStop;
}

bool CDvdReader::Chapters(int title, int& count) {
    std::lock_guard<std::mutex> lock(m_lock);
    int32_t parts = 0;
    if (!m_nav || dvdnav_get_number_of_parts(m_nav, title, &parts) != DVDNAV_STATUS_OK)
        return false;
    count = parts;
    return true;
}

bool CDvdReader::TitleLength(int title, uint64_t& ticks) {
    std::lock_guard<std::mutex> lock(m_lock);
    if (!m_nav || title <= 0)
        return false;
    uint64_t* times = nullptr;
    uint64_t duration = 0;
    const uint32_t chapters = dvdnav_describe_title_chapters(m_nav, title, &times, &duration);
    free(times);
    if (chapters == 0)
        return false;
    ticks = duration;
    return true;
}

bool CDvdReader::Titles(int& count) {
    std::lock_guard<std::mutex> lock(m_lock);
    int32_t titles = 0;
    if (!m_nav || dvdnav_get_number_of_titles(m_nav, &titles) != DVDNAV_STATUS_OK)
        return false;
    count = titles;
    return true;
}

bool CDvdReader::FrameSize(int& width, int& height) {
    std::lock_guard<std::mutex> lock(m_lock);
    if (!m_nav)
        return false;
    uint32_t w = 0, h = 0;
    if (dvdnav_get_video_resolution(m_nav, &w, &h) == DVDNAV_STATUS_OK && w > 0 && h > 0) {
        width = static_cast<int>(w);
        height = static_cast<int>(h);
    } else {
        width = m_facts.width;
        height = m_facts.height;
    }
    return true;
}
