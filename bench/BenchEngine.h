// What the engine's start-up benchmarks share: a main window that only
// answers, GStreamer's own player (playbin, as gst-play-1.0 runs it) timed
// to PLAYING, and the figures of a series of rounds.
#pragma once
#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "platform/media/GstFilter.h"
#include "player/LavSetup.h"
#include "player/MediaPlayer.h"

using Clock = std::chrono::steady_clock;
inline const char* const kSink = "fakesink sync=true";

class CBenchFrame : public CMessageTarget, public IPlayerFrame {
public:
    CLavSetup m_setup;
    LRESULT OnWindowMessage(UINT, WPARAM, LPARAM) override { return 0; }
    BOOL SetVideoWindow(BOOL, BOOL, HWND* owner, HWND* notify, RECT* rect) override {
        *owner = GetSafeHwnd();
        *notify = GetSafeHwnd();
        *rect = RECT{0, 0, 640, 360};
        return TRUE;
    }
    void StopPlayback(BOOL) override {}
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    const CLavSetup& GetLavSetup() const override { return m_setup; }
};

inline std::string UriOf(const std::string& path) {
    if (path.find("://") != std::string::npos)
        return path;
    gchar* uri = gst_filename_to_uri(path.c_str(), nullptr);
    std::string out = uri ? uri : "";
    g_free(uri);
    return out;
}

// Milliseconds to PLAYING, or -1; with lengthAfterMs, how long after that
// the length became known (-1: not within 20 s).
inline double PlaybinStart(const std::string& path, double* lengthAfterMs = nullptr) {
    auto t0 = Clock::now();
    GstElement* playbin = gst_element_factory_make("playbin", nullptr);
    GstElement* audio = gst_parse_bin_from_description(kSink, TRUE, nullptr);
    GstElement* video = gst_parse_bin_from_description(kSink, TRUE, nullptr);
    g_object_set(playbin, "uri", UriOf(path).c_str(), "audio-sink", audio, "video-sink", video,
                 nullptr);
    gst_element_set_state(playbin, GST_STATE_PLAYING);
    GstState state = GST_STATE_NULL;
    GstStateChangeReturn ret = gst_element_get_state(playbin, &state, nullptr, 10 * GST_SECOND);
    auto running = Clock::now();
    double ms = std::chrono::duration<double, std::milli>(running - t0).count();
    bool played = ret == GST_STATE_CHANGE_SUCCESS && state == GST_STATE_PLAYING;
    if (lengthAfterMs) {
        *lengthAfterMs = -1;
        gint64 duration = -1;
        while (played && Clock::now() - running < std::chrono::seconds(20)) {
            if (gst_element_query_duration(playbin, GST_FORMAT_TIME, &duration) && duration > 0) {
                *lengthAfterMs =
                    std::chrono::duration<double, std::milli>(Clock::now() - running).count();
                break;
            }
            g_usleep(5000);
        }
    }
    gst_element_set_state(playbin, GST_STATE_NULL);
    gst_object_unref(playbin);
    return played ? ms : -1;
}

struct Figures {
    double median;
    double mean;
    double min;
};

inline Figures Summarise(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    double sum = 0;
    for (double x : v)
        sum += x;
    return {v[v.size() / 2], sum / static_cast<double>(v.size()), v.front()};
}
