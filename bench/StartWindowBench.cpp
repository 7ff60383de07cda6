// Cold start of the program to its window on the screen, with a library of
// 100,000 items and a radio database of 55,000 stations in the data folder.
// Each round starts a new process (this program again, as the window) and
// measures from before its start to the first expose of the main window:
// loading the libraries, the application framework, the data files, the
// window. Needs a display; run from the staged start directory:
//   cd build/stage && xvfb-run -a ../bench/bench_start_window [ROUNDS]
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QWindow>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "bench/StationDirectoryWriter.h"
#include "platform/qt/QtGlue.h"
#include "radio/RadioBrowseDb.h"
#include "ui/FileChooser.h"
#include "ui/FontChooser.h"
#include "ui/MainFrame.h"

namespace {

constexpr int kItems = 100000;
constexpr int kTopics = 100;
constexpr int kStations = 55000;
int g_stations = 0;

int64_t NowNs() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// The data folder of a user with a large library, written by the
// program's own writers.
bool WriteData(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    COrvexDoc doc;
    for (int t = 0; t < kTopics; ++t) {
        CNodeArray path;
        path.Add(CNodeItem(CString("Topic " + std::to_string(t)), t));
        CMediaArray items;
        for (int i = 0; i < kItems / kTopics; ++i) {
            CMediaItem item;
            item.m_type = MEDIA_VIDEO_FILE;
            item.m_name = CString("Film " + std::to_string(t) + "-" + std::to_string(i));
            item.m_location =
                CString("/films/" + std::to_string(t) + "/" + std::to_string(i) + ".mkv");
            item.m_topics.Add(path[0].m_name);
            item.m_favorite = i % 97 == 0;
            items.Add(item);
        }
        CStringArray names;
        names.Add(path[0].m_name);
        const MediaType type = MEDIA_VIDEO_FILE;
        if (!doc.m_contents.AddTopicPath(names, &type, FALSE) ||
            !doc.m_contents.AddItems(path, items, FALSE))
            return false;
    }
    if (!doc.SaveContents(CString((folder / "OrvexContents.dat").string())) ||
        !doc.SaveUserData(CString((folder / "OrvexUser.dat").string())))
        return false;

    const std::string xml = (folder / "stations.xml").string();
    StationDirectoryWriter writer;
    CRadioBrowseDb db;
    CString error;
    if (!writer.WriteFile(xml, kStations))
        return false;
    g_stations = db.ParseStationFile(CString(xml), &error);
    if (g_stations <= 0)
        return false;
    std::filesystem::remove(xml);
    // The lists as the update job builds them.
    if (!db.BuildLookupLists(g_stations, &error))
        return false;
    if (!SaveRadioBrowseFile(db, CString((folder / "RadioBrowse.dat").string())))
        return false;
    std::filesystem::copy_file("results.txt", folder / "results.txt",
                               std::filesystem::copy_options::overwrite_existing);
    return true;
}

// The window, in the child: prints the times of its stages once the main
// window is first exposed, and leaves.
class CExposeWatch : public QObject {
public:
    CExposeWatch(int64_t started, const int64_t* loaded) : m_started(started), m_loaded(loaded) {}
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Expose) {
            const int64_t now = NowNs();
            printf("%.1f %.1f\n", (now - m_started) / 1e6, (*m_loaded - m_started) / 1e6);
            fflush(stdout);
            _exit(0);
        }
        return false;
    }

private:
    int64_t m_started;
    const int64_t* m_loaded;
};

int RunWindow(int argc, char** argv, int64_t started) {
    QApplication application(argc, argv);
    InstallQtPlatformGlue();
    InstallFontChooser();
    InstallFileChooser();
    int64_t loaded = 0;
    CExposeWatch watch(started, &loaded);
    COrvexApp app;
    // The window is watched from its creation on; InitInstance shows it.
    app.SetFrameFactory([&watch](COrvexDoc& document) {
        auto frame = std::make_unique<CMainFrame>(document);
        frame->winId();
        frame->windowHandle()->installEventFilter(&watch);
        return frame;
    });
    if (!app.InitInstance())
        return 1;
    loaded = NowNs();
    if (app.m_pDoc->m_contents.m_topics.GetSize() != kTopics) {
        fprintf(stderr, "the library did not load\n");
        return 1;
    }
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 2 && std::string(argv[1]) == "--window")
        return RunWindow(1, argv, std::atoll(argv[2]));
    if (!getenv("DISPLAY") && !getenv("WAYLAND_DISPLAY")) {
        fprintf(stderr, "bench_start_window: needs a display (xvfb-run -a ...)\n");
        return 2;
    }
    const int rounds = argc > 1 ? std::max(1, atoi(argv[1])) : 15;
    const std::filesystem::path home =
        std::filesystem::temp_directory_path() / ("orvex-start-bench-" + std::to_string(getpid()));
    if (!WriteData(home / "Orvex")) {
        fprintf(stderr, "bench_start_window: cannot write the data (run it in build/stage)\n");
        return 2;
    }
    printf("data folder: %d items in %d topics (%.1f MB), %d stations (%.1f MB)\n", kItems, kTopics,
           std::filesystem::file_size(home / "Orvex/OrvexContents.dat") / 1e6, g_stations,
           std::filesystem::file_size(home / "Orvex/RadioBrowse.dat") / 1e6);
    setenv("XDG_DATA_HOME", home.c_str(), 1);

    std::vector<double> shown, loaded;
    for (int round = 0; round < rounds; ++round) {
        int out[2];
        if (pipe(out) != 0)
            return 2;
        const int64_t started = NowNs();
        const pid_t child = fork();
        if (child == 0) {
            dup2(out[1], STDOUT_FILENO);
            close(out[0]);
            const std::string stamp = std::to_string(started);
            execl("/proc/self/exe", argv[0], "--window", stamp.c_str(), nullptr);
            _exit(127);
        }
        close(out[1]);
        char text[128] = {};
        const ssize_t n = read(out[0], text, sizeof text - 1);
        close(out[0]);
        int status = 0;
        waitpid(child, &status, 0);
        double total = 0, load = 0;
        if (n <= 0 || sscanf(text, "%lf %lf", &total, &load) != 2) {
            fprintf(stderr, "round %d: the window did not report\n", round);
            return 1;
        }
        shown.push_back(total);
        loaded.push_back(load);
    }
    std::filesystem::remove_all(home);
    std::sort(shown.begin(), shown.end());
    std::sort(loaded.begin(), loaded.end());
    const double median = shown[shown.size() / 2];
    printf(
        "start to window shown: best %.1f ms, median %.1f ms (%d rounds; data loaded at %.1f ms)\n",
        shown.front(), median, rounds, loaded[loaded.size() / 2]);
    printf("target < 300 ms: %s\n", median < 300 ? "ok" : "MISSED");
    return 0;
}
