// Time from the OK of Open Media File to the file's first picture on the
// screen, beside GStreamer's own player (gst-play-1.0) from its start to its
// first picture, on the same file with the same sinks. The picture is seen
// where it is seen: a second connection to the display reads the screen
// until the test pattern's colour is there. Needs an X display; run from
// the staged start directory:
//   cd build/stage && xvfb-run -a -s "-screen 0 1280x800x24" ../bench/bench_open_picture [ROUNDS]
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QAction>
#include <QApplication>
#include <QTest>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>
#include <xcb/xcb.h>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "bench/BenchMedia.h"
#include "platform/base/FileDialog.h"
#include "platform/media/GraphSettings.h"
#include "platform/media/GstFilter.h"
#include "platform/qt/QtGlue.h"
#include "ui/Commands.h"
#include "ui/MainFrame.h"
#include "ui/SplitterView.h"

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

double Ms(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration<double, std::milli>(to - from).count();
}

// Reads one pixel of the screen over its own connection until it is green,
// and notes when.
class CGreenWatch {
public:
    CGreenWatch(int x, int y) : m_x(x), m_y(y) {
        m_thread = std::thread([this] { Run(); });
    }
    ~CGreenWatch() {
        m_stop = true;
        m_thread.join();
    }
    bool Seen() const { return m_seen; }
    Clock::time_point When() const { return m_when; }

private:
    void Run() {
        xcb_connection_t* c = xcb_connect(nullptr, nullptr);
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
        const auto deadline = Clock::now() + std::chrono::seconds(15);
        while (!m_stop && Clock::now() < deadline) {
            auto* reply = xcb_get_image_reply(
                c,
                xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, root, static_cast<int16_t>(m_x),
                              static_cast<int16_t>(m_y), 1, 1, 0xffffffff),
                nullptr);
            if (reply) {
                const uint8_t* p = xcb_get_image_data(reply); // B, G, R, x
                const bool green = p[1] > 150 && p[0] < 100 && p[2] < 100;
                free(reply);
                if (green) {
                    m_when = Clock::now();
                    m_seen = true;
                    break;
                }
            }
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        }
        xcb_disconnect(c);
    }

    int m_x, m_y;
    std::atomic<bool> m_stop{false};
    std::atomic<bool> m_seen{false};
    Clock::time_point m_when;
    std::thread m_thread;
};

double GstPlay(const std::string& file) {
    const std::string audio = "--audiosink=fakesink sync=true";
    const char* args[] = {"gst-play-1.0", "-q",         "--no-interactive",
                          audio.c_str(),  file.c_str(), nullptr};
    CGreenWatch watch(320, 180); // the middle of its own window, at the top left
    const auto start = Clock::now();
    pid_t pid = 0;
    if (posix_spawnp(&pid, "gst-play-1.0", nullptr, nullptr, const_cast<char**>(args), environ) !=
        0)
        return -1;
    while (!watch.Seen() && Ms(start, Clock::now()) < 15000)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    kill(pid, SIGTERM);
    waitpid(pid, nullptr, 0);
    return watch.Seen() ? Ms(start, watch.When()) : -1;
}

double OpenInWindow(CMainFrame& frame, const std::string& file) {
    QWidget* pane = frame.GetSplitterView()->GetRightPane();
    const QPoint middle = pane->mapToGlobal(QPoint(pane->width() / 2, pane->height() / 2));
    SetFileDialogHook([file](const FileDialogRequest&, CString& path) {
        path = CString(file);
        return TRUE;
    });
    CGreenWatch watch(middle.x(), middle.y());
    const auto ok = Clock::now();
    frame.CommandAction(ID_FILE_OPEN)->trigger();
    while (!watch.Seen() && Ms(ok, Clock::now()) < 15000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    const double ms = watch.Seen() ? Ms(ok, watch.When()) : -1;
    frame.StopPlayback(FALSE);
    QTest::qWait(300);
    return ms;
}

double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

} // namespace

int main(int argc, char** argv) {
    if (!getenv("DISPLAY")) {
        fprintf(stderr, "bench_open_picture: needs an X display (xvfb-run -a ...)\n");
        return 2;
    }
    const int rounds = argc > 1 ? std::max(1, atoi(argv[1])) : 10;
    if (!EnsureGstInit())
        return 2;
    const std::filesystem::path dir =
        std::filesystem::temp_directory_path() / ("orvex-open-bench-" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
    const std::string file = (dir / "green.mkv").string();
    if (!Encode("videotestsrc pattern=green num-buffers=250 ! "
                "video/x-raw,width=640,height=360,framerate=25/1 ! "
                "x264enc speed-preset=ultrafast key-int-max=25 ! h264parse ! matroskamux name=m ! "
                "filesink location=" +
                file +
                " audiotestsrc num-buffers=431 samplesperbuffer=1024 ! audioconvert ! "
                "vorbisenc ! m.")) {
        fprintf(stderr, "bench_open_picture: cannot encode the file\n");
        return 2;
    }

    std::vector<double> gstPlay;
    for (int i = 0; i < rounds; ++i)
        gstPlay.push_back(GstPlay(file));

    setenv("XDG_DATA_HOME", (dir / "home").c_str(), 1);
    QApplication application(argc, argv);
    InstallQtPlatformGlue();
    SetGraphAudioSink("fakesink sync=true");
    COrvexApp app;
    app.SetFrameFactory([](COrvexDoc& document) { return std::make_unique<CMainFrame>(document); });
    if (!app.InitInstance())
        return 2;
    CMainFrame* frame = GetOrvexFrame();
    frame->move(0, 0);
    if (!QTest::qWaitForWindowExposed(frame))
        return 2;
    QTest::qWait(300);
    const double first = OpenInWindow(*frame, file);
    std::vector<double> orvex;
    for (int i = 0; i < rounds; ++i)
        orvex.push_back(OpenInWindow(*frame, file));
    std::filesystem::remove_all(dir);

    if (*std::min_element(gstPlay.begin(), gstPlay.end()) < 0 ||
        *std::min_element(orvex.begin(), orvex.end()) < 0 || first < 0) {
        fprintf(stderr, "bench_open_picture: a picture never showed\n");
        return 1;
    }
    const double play = Median(gstPlay);
    const double open = Median(orvex);
    printf("gst-play-1.0, start to first picture:       median %7.1f ms (%d rounds)\n", play,
           rounds);
    printf("Orvex, Open Media File OK to first picture: median %7.1f ms (%d rounds), first open "
           "in the process %.1f ms\n",
           open, rounds, first);
    printf("ratio %.2fx (first open %.2fx); target <= 1.0x: %s\n", open / play, first / play,
           open <= play ? "ok" : "MISSED");
    return 0;
}
