// Speed of the radio database on a made-up directory of 55,000 stations:
// scanning, the lookup lists, sorting results, and RadioBrowse.dat.
//   radio_bench [STATIONS]
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "bench/StationDirectoryWriter.h"
#include "radio/RadioBrowseDb.h"

namespace {

double BestMs(int runs, const std::function<void()>& work) {
    double best = 1e30;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const auto stop = std::chrono::steady_clock::now();
        best = std::min(best, std::chrono::duration<double, std::milli>(stop - start).count());
    }
    return best;
}

int g_failures = 0;

void Report(const char* what, double value, const char* unit, double target, bool atLeast) {
    const bool ok = atLeast ? value >= target : value < target;
    if (!ok)
        ++g_failures;
    printf("%-44s %10.2f %-5s (target %s %.0f) %s\n", what, value, unit, atLeast ? ">=" : "<",
           target, ok ? "ok" : "MISSED");
}

} // namespace

int main(int argc, char** argv) {
    const int stations = argc > 1 ? atoi(argv[1]) : 55000;
    // The name files are read from the start directory, the staged one here.
    if (chdir(ORVEX_STAGE_DIR) != 0) {
        fprintf(stderr, "radio_bench: cannot enter %s\n", ORVEX_STAGE_DIR);
        return 2;
    }
    const std::filesystem::path dir =
        std::filesystem::temp_directory_path() / ("orvex-radio-bench-" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
    const std::string xml = (dir / "stations.xml").string();
    const std::string dat = (dir / "RadioBrowse.dat").string();
    StationDirectoryWriter writer;
    if (!writer.WriteFile(xml, stations)) {
        fprintf(stderr, "radio_bench: cannot write %s\n", xml.c_str());
        return 2;
    }
    const double megabytes = static_cast<double>(std::filesystem::file_size(xml)) / 1e6;
    printf("directory: %d stations, %.1f MB of XML\n", stations, megabytes);

    CRadioBrowseDb db;
    CString error;
    int parsed = 0;
    const double scanMs = BestMs(3, [&] { parsed = db.ParseStationFile(CString(xml), &error); });
    printf("parsed %d stations\n", parsed);
    Report("scanning", megabytes / (scanMs / 1000.0), "MB/s", 300, true);

    int counts[5] = {};
    const double listMs = BestMs(3, [&] {
        CRadioBrowseDb work;
        work.AssignTables(db);
        const auto start = std::chrono::steady_clock::now();
        counts[0] = work.BuildCountryCodesArray();
        work.SetCountryCodesUsed();
        counts[1] = work.BuildTagArray(RB_TAG_MIN_COUNT);
        counts[2] = work.BuildStateArray();
        counts[3] = work.BuildLanguageCodesArray();
        work.ResolveLanguageCodes();
        counts[4] = work.SetLanguageCodesUsed();
        (void)start;
    });
    // The copy of the stations above is part of each run; measure it alone
    // and take it off.
    const double copyMs = BestMs(3, [&] {
        CRadioBrowseDb work;
        work.AssignTables(db);
    });
    printf("lists: %d countries, %d tags, %d states, %d languages (%d used)\n", counts[0],
           counts[1], counts[2], counts[3], counts[4]);
    Report("lookup lists (all five stages)", listMs - copyMs, "ms", 100, false);

    db.BuildCountryCodesArray();
    db.SetCountryCodesUsed();
    db.BuildTagArray(RB_TAG_MIN_COUNT);
    db.BuildStateArray();
    db.BuildLanguageCodesArray();
    db.ResolveLanguageCodes();
    db.SetLanguageCodesUsed();
    printf("limits met: %s\n", db.MeetsLimits() ? "yes" : "no");

    // The searches themselves are measured by radio_search_bench.
    db.ClearCriteria();
    db.m_bMinVotes = TRUE;
    db.m_minVotes = 1;
    db.SearchStations();
    for (int key = 0; key < 3; ++key) {
        const double ms =
            BestMs(3, [&] { db.SortResults(key == 1, key == 0, key == 1, key == 2); });
        char label[96];
        snprintf(label, sizeof label, "sort %d results by %s", db.m_results.GetSize(),
                 key == 0   ? "name"
                 : key == 1 ? "votes"
                            : "clicks");
        Report(label, ms, "ms", 10 * 5, false);
    }

    const double saveMs = BestMs(3, [&] { SaveRadioBrowseFile(db, CString(dat)); });
    printf("RadioBrowse.dat: %.1f MB, saved in %.1f ms\n",
           static_cast<double>(std::filesystem::file_size(dat)) / 1e6, saveMs);
    const double loadMs = BestMs(5, [&] {
        CRadioBrowseDb loaded;
        LoadRadioBrowseFile(loaded, CString(dat));
    });
    Report("RadioBrowse.dat load", loadMs, "ms", 80, false);

    std::filesystem::remove_all(dir);
    return g_failures == 0 ? 0 : 1;
}
