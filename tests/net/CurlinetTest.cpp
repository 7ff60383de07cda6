// The blocking transfer: bodies, redirects, error pages, the size limit, the
// failure texts and the certificate files of the start directory.
#include <unistd.h>

#include <filesystem>

#include "tests/net/CurlinetTestFixture.h"

namespace {

const CString kUntouched = u"untouched";

TEST_F(CurlinetTest, ZeroByteBodyGivesSuccessAndAnEmptyFile) {
    m_server.Route("/empty", "");
    TempDir::Write(m_dir / "results.txt", "stale contents");
    CString error = kUntouched;
    CCurlinet net;
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/empty")), Target(), &error, 0));
    EXPECT_TRUE(std::filesystem::exists(m_dir / "results.txt"));
    EXPECT_EQ(TargetBytes(), "");
    EXPECT_EQ(error, kUntouched);
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST_F(CurlinetTest, RedirectIsFollowedAndOnlyTheLastBodyLands) {
    m_server.Route("/final", "the last body");
    m_server.Redirect("/first", "/second");
    m_server.Redirect("/second", m_server.Url("/final"), 301);
    CString error;
    CCurlinet net;
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/first")), Target(), &error, 0));
    EXPECT_EQ(TargetBytes(), "the last body");
    EXPECT_EQ(m_server.RequestCount("/first"), 1);
    EXPECT_EQ(m_server.RequestCount("/second"), 1);
    EXPECT_EQ(m_server.RequestCount("/final"), 1);
}

TEST_F(CurlinetTest, ErrorPagesAreSuccessesAndLandInTheFile) {
    m_server.Route("/gone", "<html>Gone away</html>", 404, "text/html");
    m_server.Route("/broken", "server trouble", 500);
    CString error = kUntouched;
    CCurlinet net;
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/gone")), Target(), &error, 0));
    EXPECT_EQ(TargetBytes(), "<html>Gone away</html>");
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/broken")), Target(), &error, 0));
    EXPECT_EQ(TargetBytes(), "server trouble");
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/nowhere")), Target(), &error, 0));
    EXPECT_NE(TargetBytes().find("404 Not Found"), std::string::npos);
    EXPECT_EQ(error, kUntouched);
}

TEST_F(CurlinetTest, CrossingTheLimitStopsAndKeepsTheEarlierChunks) {
    const unsigned limit = 0x19000;
    std::string body = Pattern(300000);
    m_server.Route("/big.pls", body);
    CString error;
    CCurlinet net;
    EXPECT_FALSE(net.GetInternetData(U(m_server.Url("/big.pls")), Target(), &error, limit));
    ASSERT_EQ(m_boxes.Texts().size(), 1u);
    EXPECT_EQ(m_boxes.Texts()[0], CString(u"Cancelling download - maximum file size exceeded."));
    EXPECT_EQ(error,
              CString(u"Download Failed: Error ") + CString(curl_easy_strerror(CURLE_WRITE_ERROR)));
    std::string kept = TargetBytes();
    // Nothing of the crossing chunk is written; every chunk before it is.
    EXPECT_LE(kept.size(), limit);
    EXPECT_GT(kept.size(), limit - CURL_MAX_WRITE_SIZE);
    EXPECT_EQ(kept, body.substr(0, kept.size()));
}

TEST_F(CurlinetTest, ABodyOfExactlyTheLimitPasses) {
    const unsigned limit = 0x19000;
    std::string body = Pattern(limit);
    m_server.Route("/exact", body);
    CString error;
    CCurlinet net;
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/exact")), Target(), &error, limit));
    EXPECT_EQ(TargetBytes(), body);
    EXPECT_TRUE(m_boxes.Boxes().empty());
    // The count starts again with every transfer of the same object.
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/exact")), Target(), &error, limit));
    EXPECT_TRUE(m_boxes.Boxes().empty());
    // And a limit of 0 is none at all.
    std::string bigger = Pattern(3 * limit);
    m_server.Route("/bigger", bigger);
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/bigger")), Target(), &error, 0));
    EXPECT_EQ(TargetBytes(), bigger);
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST_F(CurlinetTest, AnUnresolvableHostAddsTheHintWithALineFeed) {
    CString error;
    CCurlinet net;
    EXPECT_FALSE(
        net.GetInternetData(u"http://orvex-test-host.invalid/version.dat", Target(), &error, 0));
    EXPECT_EQ(error, CString(u"Download Failed: Error Couldn't resolve host name\n"
                             u"Are you connected to the internet?"));
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST_F(CurlinetTest, OtherFailuresHaveNoHint) {
    int closedPort = 0;
    {
        TestHttpServer gone;
        closedPort = gone.Port();
    }
    CString error;
    CCurlinet net;
    CString url;
    url.Format(u"http://127.0.0.1:%d/x", closedPort);
    EXPECT_FALSE(net.GetInternetData(url, Target(), &error, 0));
    EXPECT_EQ(error, CString(u"Download Failed: Error Couldn't connect to server"));

    std::string body = Pattern(50000);
    m_server.Cut("/cut", body, 1000);
    EXPECT_FALSE(net.GetInternetData(U(m_server.Url("/cut")), Target(), &error, 0));
    EXPECT_EQ(error, CString(u"Download Failed: Error ") +
                         CString(curl_easy_strerror(CURLE_PARTIAL_FILE)));
    // What arrived before the cut stays in the file.
    EXPECT_EQ(TargetBytes(), body.substr(0, 1000));
}

TEST_F(CurlinetTest, HttpsUsesTheCertificatesOfTheStartDirectory) {
    m_server.Route("/secure.txt", "over TLS");
    CString error;
    CCurlinet net;
    ASSERT_TRUE(net.GetInternetData(U(m_server.HttpsUrl("/secure.txt")), Target(), &error, 0))
        << error.ToUtf8();
    EXPECT_EQ(TargetBytes(), "over TLS");
    ASSERT_EQ(m_server.Requests().size(), 1u);
    EXPECT_TRUE(m_server.Requests()[0].tls);

    // No other place is searched: without the files of the start directory the
    // server can't be trusted.
    TempDir bare;
    RecordingAppContext elsewhere(bare.Str());
    EXPECT_FALSE(net.GetInternetData(U(m_server.HttpsUrl("/secure.txt")), Target(), &error, 0));
    EXPECT_EQ(error.Left(23), CString(u"Download Failed: Error "));
    EXPECT_EQ(TargetBytes(), "");
}

TEST_F(CurlinetTest, ATargetThatCannotBeOpenedFailsQuietlyBeforeConnecting) {
    m_server.Route("/x", "body");
    CString error = kUntouched;
    CCurlinet net;
    EXPECT_FALSE(
        net.GetInternetData(U(m_server.Url("/x")), m_dir.File("no/such/folder/r.txt"), &error, 0));
    EXPECT_EQ(error, kUntouched);
    EXPECT_EQ(m_server.ConnectionCount(), 0);
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST_F(CurlinetTest, AWriteFailureShowsTheFileReportAndFails) {
    if (access("/dev/full", W_OK) != 0)
        GTEST_SKIP() << "no /dev/full";
    m_server.Route("/x", Pattern(5000));
    CString error;
    CCurlinet net;
    EXPECT_FALSE(net.GetInternetData(U(m_server.Url("/x")), u"/dev/full", &error, 0));
    ASSERT_EQ(m_boxes.Texts().size(), 1u);
    CString box = m_boxes.Texts()[0];
    EXPECT_EQ(box.Left(15), CString(u"Unknown error: "));
    EXPECT_GT(box.GetLength(), 15);
    EXPECT_LE(box.GetLength(), 15 + 254);
    EXPECT_EQ(error,
              CString(u"Download Failed: Error ") + CString(curl_easy_strerror(CURLE_WRITE_ERROR)));
}

TEST(CurlinetOptions, AreGivenInTheirFixedOrder) {
    CCurlinet net;
    std::string url = "http://h/", agent = kJobUserAgent, bundle = "/s/b.crt", cert = "/s/c.pem";
    std::vector<int> blocking;
    for (const CurlOption& o : net.TransferOptions(url, nullptr, bundle, cert))
        blocking.push_back(o.id);
    EXPECT_EQ(blocking, (std::vector<int>{10002, 42, 20011, 52, 10097, 10065, 80, 10001, 41}));
    // A watched blocking transfer adds the progress options, still without a user agent.
    net.m_watch = [](uint64_t, uint64_t) { return true; };
    blocking.clear();
    for (const CurlOption& o : net.TransferOptions(url, nullptr, bundle, cert))
        blocking.push_back(o.id);
    EXPECT_EQ(blocking, (std::vector<int>{10002, 42, 20011, 52, 10097, 10065, 80, 10001, 41, 43,
                                          20219, 10057}));
    net.m_watch = nullptr;

    std::vector<CurlOption> job = net.TransferOptions(url, &agent, bundle, cert);
    std::vector<int> ids;
    for (const CurlOption& o : job)
        ids.push_back(o.id);
    EXPECT_EQ(ids, (std::vector<int>{10002, 10018, 42, 20011, 52, 10097, 10065, 80, 10001, 41, 43,
                                     20219, 10057}));
    EXPECT_STREQ(job[1].text, "Orvex application");
    EXPECT_STREQ(job[5].text, "/s/b.crt");
    EXPECT_STREQ(job[6].text, "/s/c.pem");
    EXPECT_EQ(job[8].data, &net);
    EXPECT_EQ(job[12].data, &net);
    EXPECT_EQ(job[4].number, 1);
    EXPECT_EQ(job[10].number, 0);
}

TEST(CurlinetErrorText, FollowsLibcurlsWordsExactly) {
    EXPECT_EQ(CurlErrorText("Couldn't resolve host name", u"\r\n", true),
              CString(u"Download Failed: Error Couldn't resolve host name\r\n"
                      u"Are you connected to the internet?"));
    EXPECT_EQ(CurlErrorText("Operation was aborted by an application callback", u"\r\n", true),
              CString(u"Download canceled by user."));
    EXPECT_EQ(CurlErrorText("Operation was aborted by an application callback", u"\n", false),
              CString(u"Download Failed: Error Operation was aborted by an application callback"));
    EXPECT_EQ(CurlErrorText("Couldn't resolve proxy name", u"\n", false),
              CString(u"Download Failed: Error Couldn't resolve proxy name"));
}

} // namespace
