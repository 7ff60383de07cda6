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

#include "bench/BenchEngine.h"
#include "bench/BenchMedia.h"
#include "platform/media/GraphSettings.h"
#include "platform/media/GstFilter.h"
#include "player/LavSetup.h"
#include "player/MediaPlayer.h"

namespace {

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
