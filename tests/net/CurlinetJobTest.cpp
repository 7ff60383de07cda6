// The worker road: status texts through the status slot, progress per whole
// MiB, and the cancel event before and during a transfer.
#include <chrono>
#include <filesystem>
#include <thread>

#include "platform/base/UserMessages.h"
#include "tests/net/CurlinetTestFixture.h"

namespace {

const CString kUntouched = u"untouched";
const CString kConnecting = u"Connecting to Radio Browser server.";
const CString kDownloading = u"Downloading Radio Browser data.\r\nPlease wait.";
const CString kComplete = u"Download complete.";
const CString kCanceling = u"Canceling download.";

class CurlinetJobTest : public CurlinetTest {
protected:
    // Runs the transfer on a worker thread, as the update job does, and hands
    // the posted messages to the window afterwards.
    BOOL RunJob(CCurlinet& net, const std::string& url, CString* error) {
        BOOL result = FALSE;
        std::thread worker([&] {
            result = net.GetInternetDataUnicodeThread(U(url), Target(), error, m_main.GetSafeHwnd(),
                                                      m_progress.GetSafeHwnd(), &m_cancel);
        });
        worker.join();
        PumpMessages();
        return result;
    }

    RecordingWindow m_main;
    RecordingWindow m_progress;
    CEvent m_cancel;
};

TEST_F(CurlinetJobTest, ReportsStatusAndProgressPerWholeMebibyteWithoutASizeLimit) {
    std::string body = Pattern(3 * 1024 * 1024 + 600 * 1024);
    // Small pieces make libcurl report progress many times within each MiB.
    m_server.Trickle("/xml/stations", body, 64 * 1024, 1);
    CString error = kUntouched;
    CCurlinet net;
    EXPECT_TRUE(RunJob(net, m_server.Url("/xml/stations"), &error));
    EXPECT_EQ(error, kUntouched);
    EXPECT_EQ(TargetBytes(), body);
    EXPECT_EQ(m_context.StatusHistory(),
              (std::vector<CString>{kConnecting, kDownloading, kComplete}));
    EXPECT_EQ(m_progress.Params(UM_UPDATE_POS), (std::vector<LPARAM>{0, 1, 2, 3}));
    EXPECT_EQ(m_progress.Params(UM_UPDATE_STATUS), (std::vector<LPARAM>{0, 0, 0}));
    EXPECT_TRUE(m_main.Messages().empty());
    EXPECT_TRUE(m_boxes.Boxes().empty());
    ASSERT_EQ(m_server.Requests().size(), 1u);
    EXPECT_EQ(m_server.Requests()[0].Header("user-agent"), "Orvex application");
}

TEST_F(CurlinetJobTest, MissingHandlesAreRefusedBeforeAnythingElse) {
    m_server.Route("/x", "body");
    CCurlinet net;
    const HWND main = m_main.GetSafeHwnd(), progress = m_progress.GetSafeHwnd();
    const struct {
        HWND main, progress;
        CEvent* cancel;
    } missing[] = {
        {nullptr, progress, &m_cancel}, {main, nullptr, &m_cancel}, {main, progress, nullptr}};
    for (const auto& call : missing) {
        CString error;
        EXPECT_FALSE(net.GetInternetDataUnicodeThread(U(m_server.Url("/x")), Target(), &error,
                                                      call.main, call.progress, call.cancel));
        EXPECT_EQ(error, CString(u"CCurlinet::GetInternetDataUnicodeThread param errors.\n"));
    }
    EXPECT_FALSE(std::filesystem::exists(m_dir / "results.txt"));
    EXPECT_EQ(m_server.ConnectionCount(), 0);
    EXPECT_TRUE(m_context.StatusHistory().empty());
}

TEST_F(CurlinetJobTest, CancelBeforeTheStartMakesNoConnection) {
    m_server.Route("/xml/stations", "never fetched");
    TempDir::Write(m_dir / "results.txt", "the previous download");
    m_cancel.SetEvent();
    CString error = kUntouched;
    CCurlinet net;
    EXPECT_FALSE(RunJob(net, m_server.Url("/xml/stations"), &error));
    EXPECT_EQ(error, kUntouched);
    EXPECT_EQ(m_server.ConnectionCount(), 0);
    // The target was opened, and so emptied, before the event was looked at.
    EXPECT_EQ(TargetBytes(), "");
    EXPECT_EQ(m_context.StatusHistory(), std::vector<CString>{kCanceling});
    ASSERT_EQ(m_progress.Messages().size(), 1u);
    EXPECT_EQ(m_progress.Messages()[0].message, UM_UPDATE_STATUS);
    EXPECT_EQ(m_progress.Messages()[0].status, kCanceling);
    // The poll that saw the request also cleared it.
    EXPECT_FALSE(m_cancel.Lock(0));
}

TEST_F(CurlinetJobTest, CancelDuringTheTransferGivesTheUsersWords) {
    std::string body = Pattern(4 * 1024 * 1024);
    m_server.Trickle("/xml/stations", body, 16 * 1024, 20); // about five seconds in all
    CString error;
    CCurlinet net;
    BOOL result = TRUE;
    std::thread worker([&] {
        result = net.GetInternetDataUnicodeThread(U(m_server.Url("/xml/stations")), Target(),
                                                  &error, m_main.GetSafeHwnd(),
                                                  m_progress.GetSafeHwnd(), &m_cancel);
    });
    // Cancelled once part of the body is on the disc.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (TargetBytes().empty() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    m_cancel.SetEvent();
    worker.join();
    PumpMessages();

    EXPECT_FALSE(result);
    EXPECT_EQ(error, CString(u"Download canceled by user."));
    std::vector<CString> statuses = m_context.StatusHistory();
    EXPECT_EQ(statuses, (std::vector<CString>{kConnecting, kDownloading, kCanceling,
                                              CString(u"Download canceled by user.")}));
    std::string kept = TargetBytes();
    EXPECT_LT(kept.size(), body.size());
    EXPECT_EQ(kept, body.substr(0, kept.size()));
    EXPECT_FALSE(m_cancel.Lock(0));
}

TEST_F(CurlinetJobTest, AnUnresolvableHostAddsTheHintWithCarriageReturnAndLineFeed) {
    CString error;
    CCurlinet net;
    EXPECT_FALSE(RunJob(net, "http://radio-browser.invalid/json/servers", &error));
    const CString expected = u"Download Failed: Error Couldn't resolve host name\r\n"
                             u"Are you connected to the internet?";
    EXPECT_EQ(error, expected);
    std::vector<CString> statuses = m_context.StatusHistory();
    ASSERT_FALSE(statuses.empty());
    EXPECT_EQ(statuses.back(), expected);
}

} // namespace
