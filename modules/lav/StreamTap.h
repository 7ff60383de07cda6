// Where the splitter source records a stream: the bytes as they come from
// the network, before any parser or decoder. That is the source's own
// output, or, when the source's bytes wrap the media (ICY metadata between
// the audio, an HLS playlist of fragments), the output of the element that
// unwraps them. Announced titles split the recording into one file a song.
#pragma once
#include <gst/gst.h>

#include <mutex>
#include <string>

#include "modules/lav/RecordingWriter.h"

class CStreamTap {
public:
    // owner: the filter's bin, through which the graph hears of a failure.
    explicit CStreamTap(GstElement* owner);
    ~CStreamTap();
    CStreamTap(const CStreamTap&) = delete;
    CStreamTap& operator=(const CStreamTap&) = delete;

    // Follows the elements a decoding bin makes for its source; call before
    // the bin starts.
    void Watch(GstElement* decodeBin);
    // Lets go of the pads; the bin must be stopped.
    void Release();

    // 0 when recording started; VFW-style results are the caller's: -1 when
    // there is nothing to record, else the system's error number.
    int Start(const std::string& folder, const std::string& name);
    void Stop();
    bool Recording() const { return m_writer.Recording(); }
    std::string Failure() const { return m_writer.Failure(); }

    // The file name extension for a stream of these caps.
    static std::string ExtensionForCaps(const GstCaps* caps);

private:
    static void OnSourceSetup(GstElement* bin, GstElement* source, gpointer self);
    static void OnElementAdded(GstBin* bin, GstBin* child, GstElement* element, gpointer self);
    static void OnUnwrappedPad(GstElement* element, GstPad* pad, gpointer self);
    static void OnHaveType(GstElement* typefind, guint probability, GstCaps* caps, gpointer self);
    static GstPadProbeReturn OnData(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    void Forward(GstPadProbeInfo* info);
    void TellFailure();

    GstElement* m_owner;
    std::mutex m_lock;
    GstPad* m_sourcePad = nullptr;    // the source's output
    GstPad* m_unwrappedPad = nullptr; // the unwrapping element's first output
    GstCaps* m_streamCaps = nullptr;  // the type found for the source's bytes
    GstPad* m_tap = nullptr;          // where the recording takes its bytes
    gulong m_probe = 0;
    CRecordingWriter m_writer;
};
