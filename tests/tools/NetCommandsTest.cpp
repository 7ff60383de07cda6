// orvexctl fetch and check-update, run as programs against a local server.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/support/OrvexctlRun.h"
#include "tests/support/TempDir.h"
#include "tests/support/TestHttpServer.h"

TEST(OrvexctlFetch, WritesTheBodyIntoTheFile) {
    TempDir dir;
    TestHttpServer server;
    server.StageCertificates(dir.Path());
    server.Route("/list.m3u", "#EXTM3U\r\nhttp://radio/stream\r\n");
    server.Route("/gone", "error page", 404);
    CtlRun ok = Orvexctl(dir, "fetch " + server.HttpsUrl("/list.m3u") + " got.m3u");
    EXPECT_EQ(ok.exitCode, 0) << ok.err;
    EXPECT_EQ(TempDir::Read(dir / "got.m3u"), "#EXTM3U\r\nhttp://radio/stream\r\n");
    CtlRun notFound = Orvexctl(dir, "fetch " + server.Url("/gone") + " gone.txt");
    EXPECT_EQ(notFound.exitCode, 0);
    EXPECT_EQ(TempDir::Read(dir / "gone.txt"), "error page");
}

TEST(OrvexctlFetch, StopsAtTheLimitWithTheProgramsWords) {
    TempDir dir;
    TestHttpServer server;
    server.Route("/big.pls", std::string(200000, 'p'));
    CtlRun run = Orvexctl(dir, "fetch " + server.Url("/big.pls") + " big.pls --max-bytes 102400");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "Cancelling download - maximum file size exceeded.\n");
    EXPECT_NE(run.err.find("Download Failed: Error Failed writing received data"),
              std::string::npos);
    std::string kept = TempDir::Read(dir / "big.pls");
    EXPECT_LE(kept.size(), 102400u);
    EXPECT_EQ(kept, std::string(kept.size(), 'p'));
}

TEST(OrvexctlFetch, RefusesBadArguments) {
    TempDir dir;
    EXPECT_EQ(Orvexctl(dir, "fetch http://127.0.0.1:1/").exitCode, 2);
    EXPECT_EQ(Orvexctl(dir, "fetch http://127.0.0.1:1/ f.txt --max-bytes").exitCode, 2);
    EXPECT_EQ(Orvexctl(dir, "fetch http://127.0.0.1:1/ f.txt --max-bytes -5").exitCode, 2);
    EXPECT_EQ(Orvexctl(dir, "fetch http://127.0.0.1:1/ f.txt --max-bytes 4294967296").exitCode, 2);
    CtlRun refused = Orvexctl(dir, "fetch http://127.0.0.1:1/ f.txt");
    EXPECT_EQ(refused.exitCode, 1);
    // libcurl's own trace comes first: the transfer asks for it.
    const std::string last = "\nDownload Failed: Error Couldn't connect to server\n";
    ASSERT_GE(refused.err.size(), last.size());
    EXPECT_EQ(refused.err.substr(refused.err.size() - last.size()), last);
}

TEST(OrvexctlCheckUpdate, PrintsTheOutcome) {
    TempDir dir;
    TestHttpServer server;
    server.Route("/orvex/SourceCode/VersionStats.7z", "stats");
    std::string env = "XDG_DATA_HOME='" + dir.Path().string() + "/data'";
    server.Route("/orvex/SourceCode/version.dat", "Orvex 0.9.0.0\n");
    CtlRun latest = Orvexctl(dir, "check-update --url " + server.Url("/"), env);
    EXPECT_EQ(latest.exitCode, 0);
    EXPECT_EQ(latest.out, "You have the latest version.\n");
    EXPECT_EQ(TempDir::Read(dir / "data/Orvex/results.txt"), "stats");

    server.Route("/orvex/SourceCode/version.dat", "Orvex 9.9.9.9\n");
    CtlRun newer = Orvexctl(dir, "check-update --url " + server.Url(""), env);
    EXPECT_EQ(newer.exitCode, 0);
    EXPECT_EQ(newer.out.substr(0, 43), "A newer version, 9.9.9.9, is available at: ");

    server.Route("/orvex/SourceCode/version.dat", "Orvex 9.9.9\n");
    CtlRun failed = Orvexctl(dir, "check-update --url " + server.Url(""), env);
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(failed.out, "Check for updates failed\n");
    EXPECT_EQ(Orvexctl(dir, "check-update --bogus", env).exitCode, 2);
}
