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

TEST_F(CurlinetJobTest, ReportsStatusAndProgressPerWholeMebibyte) {
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
    // Each status is announced to the progress window as it is set.
    std::vector<CString> announced;
    for (const RecordingWindow::Message& m : m_progress.Messages())
        if (m.message == UM_UPDATE_STATUS) {
            EXPECT_EQ(m.wParam, 0u);
            EXPECT_EQ(m.lParam, 0);
            announced.push_back(m.status);
        }
    EXPECT_EQ(announced.size(), 3u);
    EXPECT_TRUE(m_main.Messages().empty());
    EXPECT_EQ(net.m_hwndMain, m_main.GetSafeHwnd());
    EXPECT_EQ(net.m_lastProgress, 3);
    ASSERT_EQ(m_server.Requests().size(), 1u);
    EXPECT_EQ(m_server.Requests()[0].Header("user-agent"), "Orvex application");
}

TEST_F(CurlinetJobTest, MissingHandlesAreRefusedBeforeAnythingElse) {
    m_server.Route("/x", "body");
    CCurlinet net;
    CEvent cancel;
    const CString expected = u"CCurlinet::GetInternetDataUnicodeThread param errors.\n";
    HWND main = m_main.GetSafeHwnd(), progress = m_progress.GetSafeHwnd();
    CString url = U(m_server.Url("/x"));
    CString error;
    EXPECT_FALSE(
        net.GetInternetDataUnicodeThread(url, Target(), &error, nullptr, progress, &cancel));
    EXPECT_EQ(error, expected);
    error.Empty();
    EXPECT_FALSE(net.GetInternetDataUnicodeThread(url, Target(), &error, main, nullptr, &cancel));
    EXPECT_EQ(error, expected);
    error.Empty();
    EXPECT_FALSE(net.GetInternetDataUnicodeThread(url, Target(), &error, main, progress, nullptr));
    EXPECT_EQ(error, expected);
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
    ASSERT_TRUE(m_server.WaitForRequest("/xml/stations", 10000));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
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

TEST_F(CurlinetJobTest, HasNoSizeLimit) {
    std::string body = Pattern(300000);
    m_server.Route("/big", body);
    CCurlinet net;
    CString error;
    EXPECT_TRUE(RunJob(net, m_server.Url("/big"), &error));
    EXPECT_EQ(TargetBytes(), body);
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST(JobLink, ShowsNothingWithoutAProgressWindow) {
    TempDir dir;
    RecordingAppContext context(dir.Str());
    CJobLink link;
    auto started = std::chrono::steady_clock::now();
    link.ShowStatus(u"nobody reads this");
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::milliseconds(200));
    EXPECT_TRUE(context.StatusHistory().empty());
    EXPECT_FALSE(link.IsCancelled());
}

} // namespace
