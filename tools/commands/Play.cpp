// orvexctl play [--seconds N] [--] FILE|URL: plays a medium headless through the
// engine, printing the position once a second, until it ends or N seconds
// have passed. Sound goes to the audio device when there is one, else to a
// clock-synced null sink; a picture always goes to a null sink.
#include <sys/stat.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/base/UserMessages.h"
#include "platform/media/GraphSettings.h"
#include "player/LavSetup.h"
#include "player/MediaPlayer.h"
#include "tools/CtlCommand.h"

namespace {

class CCtlFrame : public CMessageTarget, public IPlayerFrame {
public:
    CMediaPlayer m_player;
    CLavSetup m_lavSetup;
    bool m_ended = false;

    LRESULT OnWindowMessage(UINT message, WPARAM, LPARAM) override {
        if (message == UM_GRAPH_NOTIFY)
            m_player.OnGraphEvent(this);
        return 0;
    }
    BOOL SetVideoWindow(BOOL, BOOL, HWND* hOwner, HWND* hNotify, RECT* rect) override {
        *hOwner = GetSafeHwnd();
        *hNotify = GetSafeHwnd();
        *rect = RECT{0, 0, 640, 360};
        return TRUE;
    }
    void StopPlayback(BOOL) override {
        m_player.CleanPlayback();
        m_ended = true;
    }
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    const CLavSetup& GetLavSetup() const override { return m_lavSetup; }
};

bool Exists(const std::string& path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0;
}

bool HasAudioDevice() {
    if (getenv("PULSE_SERVER"))
        return true;
    const char* runtime = getenv("XDG_RUNTIME_DIR");
    if (runtime && Exists(std::string(runtime) + "/pulse/native"))
        return true;
    return Exists("/dev/snd/controlC0");
}

int RunPlay(const CtlArgs& args) {
    std::string target;
    long seconds = -1;
    bool options = true; // until "--": a name that begins with "-" follows it
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (options && (arg == "--help" || arg == "-h")) {
            return CtlHelp("play");
        } else if (options && arg == "--") {
            options = false;
        } else if (options && arg == "--seconds" && i + 1 < args.size()) {
            char* end = nullptr;
            seconds = strtol(args[++i].c_str(), &end, 10);
            if (!end || *end || seconds < 0)
                return CtlUsageError("play");
        } else if ((options && arg.size() > 1 && arg[0] == '-') || !target.empty()) {
            return CtlUsageError("play");
        } else {
            target = arg;
        }
    }
    if (target.empty())
        return CtlUsageError("play");
    if (!getenv("ORVEX_AUDIO_SINK") && !HasAudioDevice())
        SetGraphAudioSink("fakesink sync=true");
    if (!getenv("ORVEX_VIDEO_SINK"))
        SetGraphVideoSink("fakesink sync=true");

    CCtlFrame frame;
    if (!frame.m_player.PlayFileLav(CString(target), &frame))
        return 1;
    printf("playing %s (%lld s)\n", target.c_str(),
           static_cast<long long>(frame.m_player.m_duration / 10000000));
    fflush(stdout);
    using Clock = std::chrono::steady_clock;
    auto start = Clock::now();
    auto nextTick = start + std::chrono::seconds(1);
    while (!frame.m_ended) {
        auto now = Clock::now();
        if (seconds >= 0 && now - start >= std::chrono::seconds(seconds))
            break;
        if (now >= nextTick) {
            int perMille = 0, at = 0;
            if (frame.m_player.GetPosition(perMille, at))
                printf("position %d s (%d/1000)\n", at, perMille);
            else
                printf("position unknown\n");
            fflush(stdout);
            nextTick += std::chrono::seconds(1);
            continue;
        }
        auto wait = std::chrono::duration_cast<std::chrono::milliseconds>(nextTick - now);
        PumpMessages(static_cast<DWORD>(wait.count()) + 1);
    }
    printf(frame.m_ended ? "end of stream\n" : "stopped\n");
    frame.m_player.CleanPlayback();
    return 0;
}

CtlCommandRegistrar g_play("play", "[--seconds N] [--] FILE|URL",
                           "plays a file or stream headless, printing the position each second",
                           RunPlay);

} // namespace
