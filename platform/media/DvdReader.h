// What reads a DVD-Video disc for the navigator: libdvdnav walks the disc's
// program chains as its own virtual machine dictates (first play, menus,
// titles, stills, jumps), and one streaming thread splits the packs it
// delivers into the picture, the sound track and the sub-pictures that
// play, each pushed on its own pad with continuous timestamps. Everything
// the graph must hear of (domain, title, chapter, buttons, time) travels as
// an event down the picture's stream, so that it is told when that point is
// shown rather than when it was read.
#pragma once
#include <gst/gst.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

#include "platform/media/DvdDisc.h"
#include "platform/media/DvdEvents.h"
#include "platform/media/DvdPacks.h"

// The structure name of the events that carry a report for the graph: the
// fields "code" (int), "param1" and "param2" (int64).
extern const char* const kDvdGraphEventName;

class CDvdReader {
public:
    enum Output { kVideo = 0, kAudio = 1, kSubPicture = 2, kOutputs = 3 };

    CDvdReader();
    ~CDvdReader();
    CDvdReader(const CDvdReader&) = delete;
    CDvdReader& operator=(const CDvdReader&) = delete;

    // The element with the three source pads; whoever puts it in a bin
    // takes a reference of its own.
    GstElement* Element() const { return m_element; }
    GstPad* Pad(Output output) const { return m_pads[output]; }
    // The stream description an output states before data has come.
    GstCaps* InitialCaps(Output output);

    // Opens a disc; false with the reason, in words for the user.
    bool Open(const std::string& path, std::string& reason);
    bool IsOpen();
    // The streaming thread: started once the graph is about to run, stopped
    // when the element leaves the paused state.
    void Start();
    void Stop();
    void OnPaused();

    // Navigation; false when the disc refuses it. A jump throws away what
    // was read ahead, so the new place shows at once.
    bool PlayTitle(int title);
    bool PlayChapter(int title, int chapter);
    bool PlayAtTime(int title, uint64_t ticks);
    bool ShowMenu(int menu);
    // A point of the picture in frame pixels.
    bool SelectAt(int x, int y);
    bool ActivateAt(int x, int y);

    // The domain as the DVD events number it (kDvdDomain...), where the
    // reading stands: ahead of the picture on the screen.
    LONG Domain();
    bool Chapters(int title, int& count);
    // In 90 kHz ticks.
    bool TitleLength(int title, uint64_t& ticks);
    bool Titles(int& count);
    bool FrameSize(int& width, int& height);

private:
    struct Action {
        GstPad* pad;
        GstEvent* event;   // or
        GstBuffer* buffer; // owned
    };
    using Actions = std::vector<Action>;

    static void TaskFunc(gpointer self);
    void Step();
    GstFlowReturn Push(Actions& actions);
    void WaitInStill(int length);
    // Runs a command on the navigation library; after it succeeds, what was
    // read ahead is flushed and reading goes on from the new place.
    template <typename Command>
    bool Jump(Command command);
    void ResetAfterFlushLocked();

    // Under m_lock, on the streaming thread (DvdReaderStream.cpp).
    void BeginStreamsLocked(Actions& actions);
    // The length of a still that begins, or -1.
    int HandleEventLocked(int event, Actions& actions);
    void OnPackLocked(Actions& actions);
    void OnNavPacketLocked(Actions& actions);
    void NewSegmentLocked(GstClockTime start, Actions& actions);
    void EnterStillLocked(int length, Actions& actions);
    // Domain, title and chapter, and on a navigation pack the time and the
    // buttons too. ReportPlaceLocked is true in a title.
    void ReportStateLocked(Actions& actions);
    bool ReportPlaceLocked(Actions& actions);
    void ReportButtonsLocked(Actions& actions);
    void HighlightLocked(Actions& actions);
    void GraphEventLocked(Actions& actions, LONG code, LONG_PTR param1, LONG_PTR param2);
    LONG DomainLocked();
    GstCaps* AudioCaps(DvdAudioCoding coding) const;

    GstElement* m_element;
    GstPad* m_pads[kOutputs];

    std::mutex m_lock;
    std::condition_variable m_wake;
    dvdnav_s* m_nav = nullptr;
    std::string m_navMessages;
    CDvdDiscFacts m_facts;
    uint8_t m_block[kDvdPackSize];
    bool m_prepared = false;
    bool m_taskRunning = false;
    bool m_stopping = false;
    bool m_flushing = false;
    bool m_failed = false;
    std::string m_failure;
    // Work for the streaming thread from other threads.
    Actions m_pending;

    // The timeline: one segment for all outputs, continued seamlessly
    // across the disc's own time jumps, started afresh after a flush.
    bool m_sentStart = false;
    bool m_haveSegment = false;
    bool m_resetBase = true;
    bool m_discont = true;
    bool m_padDiscont[kOutputs] = {true, true, true};
    GstSegment m_segment;
    GstClockTime m_vobuEnd = GST_CLOCK_TIME_NONE;
    GstClockTime m_audioEnd = GST_CLOCK_TIME_NONE;
    GstClockTime m_stillExtra = 0;
    bool m_inStill = false;
    std::chrono::steady_clock::time_point m_stillDeadline;

    // Which of the disc's streams play.
    int m_audioTrack = 0;
    DvdAudioCoding m_audioCoding = DvdAudioCoding::Ac3;
    int m_spuTrack = 0;

    // What the graph was last told.
    int m_domain = 0;
    int m_title = -1;
    int m_chapter = -1;
    int64_t m_second = -1;
    int m_buttons = -1;
    int m_button = -1;
    bool m_noFirstPlay = false;
    // The highlight last drawn: button and area.
    int m_highlightButton = -1;
    uint32_t m_highlightKey = 0;
};
