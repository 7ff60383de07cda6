// Time from the engine's Play DVD (PlayDvdLav) to the first picture and from
// its Play CD (PlayCdLav) to the first sound, beside GStreamer's own player
// on the same discs: playbin with dvd:// and cdda:// URIs, as gst-play-1.0
// plays them. Both count until the graph runs, which needs the first frame
// (the first sound) at the renderers. Goal: within 1.2x. The discs are made
// at the start, as the tests make them; the CD is a cue/bin image, which
// GStreamer's own player reads through cdiocddasrc (cdparanoiasrc cannot
// open images, so its rank is lowered here, as GST_PLUGIN_FEATURE_RANK
// would do for gst-play-1.0).
// Run from the staged start directory (it loads LAV/ and AsyncCd/ there):
//   cd build/stage && ../bench/bench_disc_start [rounds]
#include <cstdio>
#include <cstdlib>
#include <functional>

#include "bench/BenchEngine.h"
#include "platform/base/CdTrackPath.h"
#include "platform/media/GraphSettings.h"
#include "tests/support/DiscMaker.h"

namespace {

// Milliseconds until the engine's graph runs, or -1.
double EngineStart(CMediaPlayer& player, const std::function<BOOL()>& play) {
    const auto t0 = Clock::now();
    const BOOL ok = play();
    const double ms = std::chrono::duration<double, std::milli>(Clock::now() - t0).count();
    player.CleanPlayback();
    PumpMessages();
    return ok ? ms : -1;
}

void Report(const char* name, std::vector<double>& engine, std::vector<double>& playbin) {
    if (engine.empty() || playbin.empty()) {
        printf("%s: no figures\n", name);
        return;
    }
    const Figures fe = Summarise(engine), fp = Summarise(playbin);
    printf("%s, %zu rounds\n", name, engine.size());
    printf("  Orvex to Running:   median %.1f ms, mean %.1f ms, min %.1f ms\n", fe.median, fe.mean,
           fe.min);
    printf("  playbin to PLAYING: median %.1f ms, mean %.1f ms, min %.1f ms\n", fp.median, fp.mean,
           fp.min);
    printf("  ratio (median): %.2fx (goal 1.20x)\n", fe.median / fp.median);
}

} // namespace

int main(int argc, char** argv) {
    int rounds = argc > 1 ? atoi(argv[1]) : 10;
    if (rounds < 1)
        rounds = 1;
    if (!EnsureGstInit())
        return 1;
    SetGraphAudioSink(kSink);
    SetGraphVideoSink(kSink);
    if (GstPluginFeature* paranoia =
            gst_registry_lookup_feature(gst_registry_get(), "cdparanoiasrc")) {
        gst_plugin_feature_set_rank(paranoia, GST_RANK_NONE);
        gst_object_unref(paranoia);
    }

    TempDir dir;
    CDiscMaker maker(dir.Path().string());
    std::string dvd;
    if (!maker.MakeDvd(dvd)) {
        fprintf(stderr, "could not make the DVD:\n%s\n", maker.Errors().c_str());
        return 1;
    }
    const std::string cue = maker.MakeAudioCd();

    CMediaPlayer player;
    CBenchFrame frame;
    struct Case {
        const char* name;
        std::function<BOOL()> engine;
        std::string uri;
    };
    const Case cases[] = {
        {"DVD menu (Play DVD to the first picture)",
         [&] { return player.PlayDvdLav(CString(dvd), &frame); }, "dvd://" + dvd},
        {"CD track 1 (Play CD to the first sound)",
         [&] { return player.PlayCdLav(CString(cue + "/" + CdTrackFileName(1)), &frame, 50); },
         "cdda://" + cue + "#1"},
    };
    int failures = 0;
    for (const Case& c : cases) {
        // Warm both roads up: plugin loading is not what is measured.
        EngineStart(player, c.engine);
        PlaybinStart(c.uri);
        std::vector<double> engine, playbin;
        for (int i = 0; i < rounds; ++i) {
            const double e = EngineStart(player, c.engine);
            const double p = PlaybinStart(c.uri);
            if (e < 0 || p < 0) {
                ++failures;
                continue;
            }
            engine.push_back(e);
            playbin.push_back(p);
        }
        Report(c.name, engine, playbin);
    }
    return failures ? 1 : 0;
}
