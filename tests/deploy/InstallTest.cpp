// Installs the build into a temporary prefix, as scripts/install.sh does, and
// checks that the installed program answers, finds its shipped files beside
// itself from any working directory, and describes itself to the desktop in
// files the desktop's own checkers accept.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <regex>
#include <string>

#include "tests/support/OrvexctlRun.h"
#include "tests/support/TempDir.h"

namespace {

namespace fs = std::filesystem;

// Runs a shell command line; its standard error joins the output.
CtlRun Shell(const std::string& command) {
    return RunCommand(command + " 2>&1");
}

std::string Quote(const std::string& text) {
    return "'" + text + "'";
}

// The country count that orvexctl radio-build reports: the name file of the
// countries is read from the start directory.
int CountriesSeenFrom(const std::string& workingDirectory, const std::string& orvexctl) {
    const std::string fixture =
        std::string(getenv("ORVEX_SOURCE_DIR")) + "/fixtures/radio-stations-sample-500.xml";
    const CtlRun run = Shell("cd " + Quote(workingDirectory) + " && " + Quote(orvexctl) +
                             " radio-build " + Quote(fixture) + " out.dat");
    std::smatch match;
    if (!std::regex_search(run.out, match, std::regex(R"(stations, (\d+) countries)"))) {
        ADD_FAILURE() << run.out;
        return -1;
    }
    return std::stoi(match[1]);
}

} // namespace

TEST(Install, TheInstalledProgramRunsAndFindsItsFilesBesideItself) {
    TempDir prefix;
    const CtlRun install = Shell(Quote(ORVEX_TEST_CMAKE) + " --install " +
                                 Quote(ORVEX_TEST_BUILD_DIR) + " --prefix " + Quote(prefix.Path()));
    ASSERT_EQ(install.exitCode, 0) << install.out;

    const fs::path start = prefix.Path() / ORVEX_TEST_INSTALL_START_DIR;
    for (const char* file :
         {"LAV/LAVSplitter_1.ax", "LAV/LAVVideo_1.ax", "LAV/LAVAudio_1.ax", "TopicAlias.txt",
          "RadioBrowse_CC.txt", "RadioBrowse_LC.txt", "OrvexHelp/index.html"})
        EXPECT_TRUE(fs::is_regular_file(start / file)) << file;
    // The defaults an installation seeds its users' folders with are empty.
    for (const char* file :
         {"OrvexContents.dat", "OrvexUser.dat", "RadioBrowse.dat", "results.txt"})
        EXPECT_EQ(fs::file_size(start / file), 0u) << file;
    // HTTPS follows the system's certificate bundle.
    for (const char* file : {"Curl_Local/bin/cacert.pem", "Curl_Local/bin/curl-ca-bundle.crt"}) {
        EXPECT_TRUE(fs::is_symlink(start / file)) << file;
        EXPECT_GT(fs::file_size(start / file), 1000u) << file;
    }
    const fs::path share = prefix.Path() / "share";
    for (const char* size :
         {"16x16", "22x22", "24x24", "32x32", "48x48", "64x64", "128x128", "256x256"}) {
        EXPECT_TRUE(
            fs::is_regular_file(share / "icons/hicolor" / size / "apps/io.sourceforge.orvex.png"))
            << size;
    }
    EXPECT_TRUE(
        fs::is_regular_file(share / "icons/hicolor/scalable/apps/io.sourceforge.orvex.svg"));

    // --version answers without a display.
    const CtlRun version = Shell("cd / && env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM " +
                                 Quote((prefix.Path() / "bin/orvex").string()) + " --version");
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_EQ(version.out, "Orvex 0.9.0.0\n");

    // From a folder that holds nothing of the program, the installed companion
    // reads the installed name files; the staged one, which has no
    // installation beside it, keeps to its working directory. A working
    // directory that holds the shipped files itself still comes first.
    TempDir elsewhere;
    const std::string installedCtl = (prefix.Path() / "bin/orvexctl").string();
    EXPECT_GT(CountriesSeenFrom(elsewhere.Path(), installedCtl), 200);
    EXPECT_EQ(
        CountriesSeenFrom(elsewhere.Path(), std::string(getenv("ORVEX_STAGE_DIR")) + "/orvexctl"),
        0);
    fs::create_directory(elsewhere.Path() / "LAV");
    EXPECT_EQ(CountriesSeenFrom(elsewhere.Path(), installedCtl), 0);

    // The desktop's checkers accept the menu entry and the description.
    const CtlRun desktop =
        Shell("desktop-file-validate " +
              Quote((share / "applications/io.sourceforge.orvex.desktop").string()));
    EXPECT_EQ(desktop.exitCode, 0) << desktop.out;
    EXPECT_EQ(desktop.out, "");
    const CtlRun metainfo =
        Shell("appstreamcli validate --no-net --pedantic " +
              Quote((share / "metainfo/io.sourceforge.orvex.metainfo.xml").string()));
    EXPECT_EQ(metainfo.exitCode, 0) << metainfo.out;
}
