// orvexctl radio-build, radio-search and radio-update, run as programs.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/StationDirectoryWriter.h"
#include "tests/support/OrvexctlRun.h"
#include "tests/support/StartDirectory.h"
#include "tests/support/TempDir.h"
#include "tests/support/TestHttpServer.h"

namespace {

const std::string& Directory() {
    static const std::string document = StationDirectoryWriter(5).Document(21000);
    return document;
}

} // namespace

TEST(OrvexctlRadio, BuildsSearchesAndRefusesTooLittle) {
    TempDir dir;
    MakeStartDirectory(dir.Path());
    TempDir::Write(dir / "stations.xml", Directory());
    CtlRun build = Orvexctl(dir, "radio-build stations.xml rb.dat");
    ASSERT_EQ(build.exitCode, 0) << build.err;
    // Every status text, in order, though the build makes no pauses for them.
    const size_t counted = build.out.find(" stations proccessed.\n");
    ASSERT_NE(counted, std::string::npos) << build.out;
    const std::string stations = build.out.substr(53, counted - 53);
    EXPECT_EQ(build.out.substr(0, build.out.find(", ")),
              "Proccessing Radio Browser station data.\nPlease wait.\n" + stations +
                  " stations proccessed.\nLoading countries.\nSetting country codes.\n"
                  "Building tag list.\nBuilding states list.\nLoading languages.\n" +
                  stations + " stations");
    EXPECT_NE(build.out.find("249 countries"), std::string::npos) << build.out;
    EXPECT_NE(build.out.find("184 languages"), std::string::npos) << build.out;

    CtlRun search = Orvexctl(dir, "radio-search rb.dat --tag jazz --tag blues --min-votes 100 "
                                  "--sort votes --desc --max 3");
    ASSERT_EQ(search.exitCode, 0) << search.err;
    EXPECT_EQ(search.out.rfind("Showing 3 of ", 0), 0u) << search.out;
    // Three rows, most votes first.
    std::vector<int> votes;
    size_t at = search.out.find('\n') + 1;
    while (at < search.out.size()) {
        const size_t tab = search.out.find('\t', at);
        votes.push_back(std::stoi(search.out.substr(tab + 1)));
        at = search.out.find('\n', at) + 1;
    }
    ASSERT_EQ(votes.size(), 3u);
    EXPECT_GE(votes[0], votes[1]);
    EXPECT_GE(votes[1], votes[2]);
    EXPECT_GE(votes[2], 100);

    EXPECT_EQ(Orvexctl(dir, "radio-search rb.dat --name zzzzzz").out,
              "No results in " + stations + " Stations searched\n");
    CtlRun none = Orvexctl(dir, "radio-search rb.dat");
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.out, "Please set one or more search criteria.\n");
    EXPECT_EQ(Orvexctl(dir, "radio-search rb.dat --sort size").exitCode, 2);

    TempDir::Write(dir / "small.xml", StationDirectoryWriter(5).Document(100));
    CtlRun small = Orvexctl(dir, "radio-build small.xml small.dat");
    EXPECT_EQ(small.exitCode, 1);
    EXPECT_FALSE(std::filesystem::exists(dir / "small.dat"));
}

TEST(OrvexctlRadio, UpdatesTheDataFolderFromAServer) {
    TempDir dir;
    MakeStartDirectory(dir.Path());
    TestHttpServer server;
    server.Route("/xml/stations?limit=1000000", Directory());
    const std::string env = "XDG_DATA_HOME='" + (dir / "data") + "'";
    CtlRun run = Orvexctl(dir, "radio-update --server " + server.Url(""), env);
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.out.find("Radio Station Database update successfull.\n"), std::string::npos);
    CtlRun search =
        Orvexctl(dir, "radio-search " + (dir / "data/Orvex/RadioBrowse.dat") + " --min-clicks 1");
    EXPECT_EQ(search.exitCode, 0);
    EXPECT_EQ(search.out.rfind("Found ", 0), 0u);

    // A server list without servers: the program's words, nothing fetched.
    server.Route("/json/servers", "[]\n");
    CtlRun noServers =
        Orvexctl(dir, "radio-update --server-list-url " + server.Url("/json/servers"), env);
    EXPECT_EQ(noServers.exitCode, 1);
    EXPECT_EQ(noServers.out, "ERROR CRadioBrowseDb GetServers - no server urls gotten.\n\n");
    EXPECT_EQ(server.RequestCount("/xml/stations"), 1);
}
