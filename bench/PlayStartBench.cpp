// Time from PlayFileLav to a running graph, beside the pipeline library's
// own playbin on the same file with the same sinks. Goal: within 1.2x.
// Also when each knows the length of a plain constant-rate MP3 (no header
// states it): the engine must know it when it reports Running. URLs given
// after the rounds (an RTSP server's, say) are measured the same way.
// Run from the staged start directory (it loads LAV/ from there):
//   cd build/stage && ../bench/bench_play_start [rounds] [URL...]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/BenchMedia.h"
#include "platform/media/GraphSettings.h"
#include "platform/media/GstFilter.h"
#include "player/LavSetup.h"
#include "player/MediaPlayer.h"

namespace {

using Clock = std::chrono::steady_clock;
const char* kSink = "fakesink sync=true";

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

std::string UriOf(const std::string& path) {
    if (path.find("://") != std::string::npos)
        return path;
    gchar* uri = gst_filename_to_uri(path.c_str(), nullptr);
    std::string out = uri ? uri : "";
    g_free(uri);
    return out;
}

// Milliseconds to Running, or -1; the length the engine then knows.
double EngineStart(CMediaPlayer& player, CBenchFrame& frame, const std::string& path,
                   double* lengthSeconds = nullptr) {
    auto t0 = Clock::now();
    BOOL ok = player.PlayFileLav(CString(path), &frame);
    double ms = std::chrono::duration<double, std::milli>(Clock::now() - t0).count();
    if (lengthSeconds)
        *lengthSeconds = player.m_duration / 1e7;
    player.CleanPlayback();
    PumpMessages();
    return ok ? ms : -1;
}

// Milliseconds to PLAYING, or -1; with lengthAfterMs, how long after that
// the length became known (-1: not within 20 s).
double PlaybinStart(const std::string& path, double* lengthAfterMs = nullptr) {
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

Figures Summarise(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    double sum = 0;
    for (double x : v)
        sum += x;
    return {v[v.size() / 2], sum / static_cast<double>(v.size()), v.front()};
}

} // namespace

int main(int argc, char** argv) {
    int rounds = argc > 1 ? atoi(argv[1]) : 20;
    if (rounds < 1)
        rounds = 1;
    if (!EnsureGstInit())
        return 1;
    SetGraphAudioSink(kSink);
    SetGraphVideoSink(kSink);
    std::string dir = (std::filesystem::temp_directory_path() / "orvex-bench").string();
    std::filesystem::create_directories(dir);
    struct Case {
        const char* name;
        std::string path;
        std::string encode;
    };
    std::vector<Case> cases = {
        {"h264+vorbis mkv 640x360 10 s", dir + "/both.mkv",
         "videotestsrc num-buffers=250 ! video/x-raw,width=640,height=360,framerate=25/1 ! "
         "x264enc speed-preset=ultrafast key-int-max=25 ! h264parse ! matroskamux name=m ! "
         "filesink location=" +
             dir +
             "/both.mkv audiotestsrc num-buffers=431 samplesperbuffer=1024 ! "
             "audioconvert ! vorbisenc ! m."},
        {"vorbis ogg 10 s", dir + "/audio.ogg",
         "audiotestsrc num-buffers=431 samplesperbuffer=1024 ! audioconvert ! vorbisenc ! "
         "oggmux ! filesink location=" +
             dir + "/audio.ogg"},
    };
    const std::string mp3 = dir + "/cbr.mp3";
    if (!Encode("audiotestsrc num-buffers=450 samplesperbuffer=4410 ! "
                "audio/x-raw,rate=22050,channels=1 ! audioconvert ! "
                "lamemp3enc target=bitrate bitrate=32 cbr=true ! filesink location=" +
                mp3)) {
        fprintf(stderr, "could not encode the MP3\n");
        return 1;
    }
    cases.push_back({"plain CBR mp3 90 s", mp3, ""});
    for (int i = 2; i < argc; ++i)
        cases.push_back({argv[i], argv[i], ""});

    CMediaPlayer player;
    CBenchFrame frame;
    int failures = 0;
    for (Case& c : cases) {
        if (!c.encode.empty() && !Encode(c.encode)) {
            fprintf(stderr, "could not encode %s\n", c.name);
            return 1;
        }
        // Warm both roads up: plugin loading is not what is measured.
        EngineStart(player, frame, c.path);
        PlaybinStart(c.path);
        std::vector<double> engine, playbin, engineLength, playbinLength;
        for (int i = 0; i < rounds; ++i) {
            double length = 0, lengthAfter = -1;
            double e = EngineStart(player, frame, c.path, &length);
            // A stream's length is not waited for: a live one has none.
            bool url = c.path.find("://") != std::string::npos;
            double p = PlaybinStart(c.path, url ? nullptr : &lengthAfter);
            if (e < 0 || p < 0) {
                ++failures;
                continue;
            }
            engine.push_back(e);
            playbin.push_back(p);
            engineLength.push_back(length);
            playbinLength.push_back(lengthAfter);
        }
        if (engine.empty())
            continue;
        Figures fe = Summarise(engine), fp = Summarise(playbin);
        printf("%s, %zu rounds\n", c.name, engine.size());
        printf("  PlayFileLav to Running: median %.1f ms, mean %.1f ms, min %.1f ms\n", fe.median,
               fe.mean, fe.min);
        printf("  playbin to PLAYING:     median %.1f ms, mean %.1f ms, min %.1f ms\n", fp.median,
               fp.mean, fp.min);
        printf("  ratio (median): %.2fx (goal 1.20x)\n", fe.median / fp.median);
        Figures le = Summarise(engineLength), lp = Summarise(playbinLength);
        printf("  length at Running: median %.1f s (min %.1f s); playbin knows it %.0f ms after "
               "PLAYING (median; -1: not within 20 s)\n",
               le.median, le.min, lp.median);
    }
    std::filesystem::remove_all(dir);
    return failures ? 1 : 0;
}
