// The blocking transfer: bodies, the size limit, the failure texts, the limits
// that keep a transfer from hanging or wandering, and the certificates.
#include <unistd.h>

#include <filesystem>

#include "tests/net/CurlinetTestFixture.h"

namespace {

const CString kUntouched = u"untouched";

CString CurlText(CURLcode code) {
    return CString(u"Download Failed: Error ") + CString(curl_easy_strerror(code));
}

TEST_F(CurlinetTest, EveryBodyLandsAsSentWhateverItsStatus) {
    m_server.Route("/empty", "");
    m_server.Route("/gone", "<html>Gone away</html>", 404, "text/html");
    m_server.Route("/final", "the last body");
    m_server.Redirect("/first", "/second");
    m_server.Redirect("/second", m_server.Url("/final"), 301);
    TempDir::Write(m_dir / "results.txt", "stale contents");
    CString error = kUntouched;
    CCurlinet net;
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/empty")), Target(), &error, 0));
    EXPECT_EQ(TargetBytes(), "");
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/gone")), Target(), &error, 0));
    EXPECT_EQ(TargetBytes(), "<html>Gone away</html>");
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/first")), Target(), &error, 0));
    EXPECT_EQ(TargetBytes(), "the last body");
    EXPECT_EQ(m_server.RequestCount("/second") + m_server.RequestCount("/final"), 2);
    EXPECT_EQ(error, kUntouched);
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST_F(CurlinetTest, TheSizeLimitStopsAtTheChunkThatCrossesIt) {
    const unsigned limit = 0x19000;
    const std::string body = Pattern(300000);
    m_server.Route("/big.pls", body);
    m_server.Route("/exact", body.substr(0, limit));
    CString error;
    CCurlinet net;
    EXPECT_FALSE(net.GetInternetData(U(m_server.Url("/big.pls")), Target(), &error, limit));
    EXPECT_EQ(m_boxes.Texts(),
              std::vector<CString>{u"Cancelling download - maximum file size exceeded."});
    EXPECT_EQ(error, CurlText(CURLE_WRITE_ERROR));
    const std::string kept = TargetBytes();
    EXPECT_LE(kept.size(), limit);
    EXPECT_GT(kept.size(), limit - CURL_MAX_WRITE_SIZE);
    EXPECT_EQ(kept, body.substr(0, kept.size()));

    // Exactly the limit passes, the count starts again with every transfer,
    // and 0 is no limit.
    m_boxes.Clear();
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/exact")), Target(), &error, limit));
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/exact")), Target(), &error, limit));
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/big.pls")), Target(), &error, 0));
    EXPECT_EQ(TargetBytes(), body);
    // A quiet limit ends the transfer all the same, without the box.
    net.m_bQuietLimit = TRUE;
    EXPECT_FALSE(net.GetInternetData(U(m_server.Url("/big.pls")), Target(), &error, limit));
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST_F(CurlinetTest, FailuresReportLibcurlsWords) {
    CString error;
    CCurlinet net;
    EXPECT_FALSE(
        net.GetInternetData(u"http://orvex-test-host.invalid/version.dat", Target(), &error, 0));
    EXPECT_EQ(error, CString(u"Download Failed: Error Couldn't resolve host name\n"
                             u"Are you connected to the internet?"));

    int closedPort = 0;
    {
        TestHttpServer gone;
        closedPort = gone.Port();
    }
    CString url;
    url.Format(u"http://127.0.0.1:%d/x", closedPort);
    EXPECT_FALSE(net.GetInternetData(url, Target(), &error, 0));
    EXPECT_EQ(error, CurlText(CURLE_COULDNT_CONNECT));

    // What arrived before a cut stays in the file.
    const std::string body = Pattern(50000);
    m_server.Cut("/cut", body, 1000);
    EXPECT_FALSE(net.GetInternetData(U(m_server.Url("/cut")), Target(), &error, 0));
    EXPECT_EQ(error, CurlText(CURLE_PARTIAL_FILE));
    EXPECT_EQ(TargetBytes(), body.substr(0, 1000));
    EXPECT_TRUE(m_boxes.Boxes().empty());

    // A target that can't be opened fails quietly before connecting.
    const int connections = m_server.ConnectionCount();
    error = kUntouched;
    EXPECT_FALSE(
        net.GetInternetData(U(m_server.Url("/cut")), m_dir.File("no/such/r.txt"), &error, 0));
    EXPECT_EQ(error, kUntouched);
    EXPECT_EQ(m_server.ConnectionCount(), connections);

    // A write that fails shows the file's report, cut to 254 characters.
    if (access("/dev/full", W_OK) == 0) {
        EXPECT_FALSE(net.GetInternetData(U(m_server.Url("/cut")), u"/dev/full", &error, 0));
        ASSERT_EQ(m_boxes.Texts().size(), 1u);
        EXPECT_EQ(m_boxes.Texts()[0].Left(15), CString(u"Unknown error: "));
        EXPECT_LE(m_boxes.Texts()[0].GetLength(), 15 + 254);
        EXPECT_EQ(error, CurlText(CURLE_WRITE_ERROR));
    }
}

TEST_F(CurlinetTest, ATransferNeitherHangsNorWanders) {
    SetTransferStallSeconds(1);
    // A server that stops sending half way.
    m_server.Trickle("/stall", Pattern(100), 1, 600000);
    // A loop of redirects, one to another protocol, and one from https to http.
    m_server.Redirect("/loop", "/loop");
    m_server.Redirect("/ftp", "ftp://127.0.0.1:" + std::to_string(m_server.Port()) + "/x");
    m_server.Route("/final", "reached");
    m_server.Redirect("/down", m_server.Url("/final"));
    m_server.Redirect("/up", m_server.HttpsUrl("/final"));
    CString error;
    CCurlinet net;
    EXPECT_FALSE(net.GetInternetData(U(m_server.Url("/stall")), Target(), &error, 0));
    EXPECT_EQ(error, CurlText(CURLE_OPERATION_TIMEDOUT));
    EXPECT_EQ(TargetBytes(), Pattern(1));

    EXPECT_FALSE(net.GetInternetData(U(m_server.Url("/loop")), Target(), &error, 0));
    EXPECT_EQ(error, CurlText(CURLE_TOO_MANY_REDIRECTS));
    EXPECT_EQ(m_server.RequestCount("/loop"), 1 + kMaxRedirects);

    const int connections = m_server.ConnectionCount();
    EXPECT_FALSE(net.GetInternetData(U(m_server.Url("/ftp")), Target(), &error, 0));
    EXPECT_EQ(error, CurlText(CURLE_UNSUPPORTED_PROTOCOL));
    EXPECT_EQ(m_server.ConnectionCount(), connections + 1);

    EXPECT_FALSE(net.GetInternetData(U(m_server.HttpsUrl("/down")), Target(), &error, 0));
    EXPECT_EQ(error, CurlText(CURLE_UNSUPPORTED_PROTOCOL));
    EXPECT_EQ(m_server.RequestCount("/final"), 0);
    // Up from http to https, or within https, is followed.
    EXPECT_TRUE(net.GetInternetData(U(m_server.Url("/up")), Target(), &error, 0));
    EXPECT_TRUE(net.GetInternetData(U(m_server.HttpsUrl("/up")), Target(), &error, 0));
    EXPECT_EQ(TargetBytes(), "reached");
    SetTransferStallSeconds(kDefaultStallSeconds);
}

TEST_F(CurlinetTest, HttpsTrustsOnlyTheCertificatesOfTheStartDirectory) {
    m_server.Route("/secure.txt", "over TLS");
    CString error;
    CCurlinet net;
    ASSERT_TRUE(net.GetInternetData(U(m_server.HttpsUrl("/secure.txt")), Target(), &error, 0))
        << error.ToUtf8();
    EXPECT_EQ(TargetBytes(), "over TLS");
    ASSERT_EQ(m_server.Requests().size(), 1u);
    EXPECT_TRUE(m_server.Requests()[0].tls);

    // Verification stays on: without the files of the start directory the
    // server can't be trusted, and nothing else is searched.
    TempDir bare;
    RecordingAppContext elsewhere(bare.Str());
    EXPECT_FALSE(net.GetInternetData(U(m_server.HttpsUrl("/secure.txt")), Target(), &error, 0));
    EXPECT_EQ(error.Left(23), CString(u"Download Failed: Error "));
    EXPECT_EQ(TargetBytes(), "");
}

} // namespace
