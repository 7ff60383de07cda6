// The radio update's document side against a local server: failures that
// change nothing, a second start, server discovery, the stored database at
// start-up and a document that goes while its job runs. A whole update and a
// Cancel at each stage are driven through the real dialog in the ui tests.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "app/MainFrameLink.h"
#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "bench/StationDirectoryWriter.h"
#include "platform/base/AppContext.h"
#include "platform/base/UserMessages.h"
#include "platform/base/WaitCursor.h"
#include "tests/support/JobRecorders.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/PrintCString.h"
#include "tests/support/StartDirectory.h"
#include "tests/support/TempDir.h"
#include "tests/support/TestHttpServer.h"

namespace {

// The main frame as far as the job needs it: it hands the job's end
// messages to the document.
class JobFrame : public IMainFrame, public CMessageTarget {
public:
    explicit JobFrame(COrvexDoc& doc) : m_doc(doc) {}
    void ShowFrame() override {}
    void StopPlaybackForExit() override {}
    HWND GetFrameHwnd() const override { return GetSafeHwnd(); }
    LRESULT OnWindowMessage(UINT message, WPARAM, LPARAM) override {
        m_doc.OnRadioJobMessage(message);
        return 0;
    }

private:
    COrvexDoc& m_doc;
};

// The update dialog as far as the job needs it: the moment the job is over.
class UpdateDialog : public CMessageTarget {
public:
    LRESULT OnWindowMessage(UINT message, WPARAM, LPARAM) override {
        if (message == UM_UPDATE_IDLE)
            idle = true;
        return 0;
    }
    bool idle = false;
};

constexpr int kStations = 21000;

const std::string& Directory() {
    static const std::string document = StationDirectoryWriter().Document(kStations);
    return document;
}

// An installed program: a start directory with the shipped name files and
// default data files, a data home, a running application and a server.
class RadioUpdateTest : public ::testing::Test {
protected:
    RadioUpdateTest() {
        MakeStartDirectory(m_start);
        m_cwd = std::make_unique<ScopedCurrentDir>(m_start);
        m_env = std::make_unique<ScopedEnv>("XDG_DATA_HOME", m_root / "data");
        m_app = std::make_unique<COrvexApp>();
        m_app->SetFrameFactory([](COrvexDoc& doc) -> std::unique_ptr<IMainFrame> {
            return std::make_unique<JobFrame>(doc);
        });
        EXPECT_TRUE(m_app->InitInstance());
        m_doc = m_app->GetDocument();
        // Every text is recorded as the job sets it, so the job needs no
        // pause for a dialog to read it.
        m_status = std::make_unique<RecordingAppContext>(CString(m_start));
        m_doc->m_radioDbNew.m_statusPauseMs = 0;
        m_doc->m_serverUrl = CString(m_server.Url(""));
        if (m_doc->m_serverUrl.Right(1) == u"/")
            m_doc->m_serverUrl.Truncate(m_doc->m_serverUrl.GetLength() - 1);
        m_datFile = m_doc->m_dataFolder.ToUtf8() + "/RadioBrowse.dat";
    }
    ~RadioUpdateTest() override {
        m_status.reset();
        m_app.reset();
        PumpMessages();
    }

    // The database the user has before the update, live and on disk.
    void InstallOldDatabase() {
        CRadioBrowseDb old;
        CStation station;
        station.m_name = u"Old Station";
        station.m_url = u"http://old/stream";
        old.m_stations.Add(station);
        m_doc->m_radioDb.AssignTables(old);
        ASSERT_TRUE(m_doc->SaveRadioDb());
        m_oldBytes = TempDir::Read(m_datFile);
    }

    // Runs one job to its end and gives the texts it showed; empty when it
    // didn't end in time.
    std::vector<CString> RunJob(UpdateDialog& dialog) {
        const size_t before = m_status->StatusHistory().size();
        m_doc->StartRadioUpdate(dialog.GetSafeHwnd());
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(120);
        while (!dialog.idle && std::chrono::steady_clock::now() < deadline)
            PumpMessages(50);
        if (!dialog.idle)
            return {};
        const std::vector<CString> all = m_status->StatusHistory();
        return std::vector<CString>(all.begin() + static_cast<long>(before), all.end());
    }
    std::vector<CString> LastTexts(const std::vector<CString>& texts, size_t count) {
        return std::vector<CString>(texts.end() - static_cast<long>(std::min(count, texts.size())),
                                    texts.end());
    }

    void ExpectNothingChanged() {
        ASSERT_EQ(m_doc->m_radioDb.m_stations.GetSize(), 1);
        EXPECT_EQ(m_doc->m_radioDb.m_stations[0].m_name, CString(u"Old Station"));
        EXPECT_TRUE(m_doc->m_radioDb.m_tags.IsEmpty());
        EXPECT_EQ(TempDir::Read(m_datFile), m_oldBytes);
        EXPECT_FALSE(m_doc->m_hJobThread.IsRunning());
        EXPECT_TRUE(m_doc->m_radioDbNew.m_stations.IsEmpty());
        EXPECT_EQ(m_doc->m_hwndUpdateDlg, nullptr);
    }

    TempDir m_root;
    std::string m_start = m_root / "start";
    TestHttpServer m_server;
    std::unique_ptr<ScopedCurrentDir> m_cwd;
    std::unique_ptr<ScopedEnv> m_env;
    MessageBoxRecorder m_boxes;
    std::unique_ptr<COrvexApp> m_app;
    std::unique_ptr<RecordingAppContext> m_status;
    COrvexDoc* m_doc = nullptr;
    std::string m_datFile;
    std::string m_oldBytes;
};

} // namespace

TEST_F(RadioUpdateTest, FailuresChangeNothing) {
    InstallOldDatabase();
    const std::vector<CString> corrupt = {u"Radio Browser data appears corrupt - update failed.",
                                          u"Radio Database Update failed."};
    // Too few stations for the limits.
    m_server.Route("/xml/stations?limit=1000000", StationDirectoryWriter(3).Document(500));
    UpdateDialog small;
    EXPECT_EQ(LastTexts(RunJob(small), 2), corrupt);
    ExpectNothingChanged();

    // Enough stations, but the document was cut short: a complete answer of
    // its bytes, and an answer without a length that simply stops.
    const std::string& whole = Directory();
    m_server.Route("/xml/stations?limit=1000000", whole.substr(0, whole.size() - 500));
    UpdateDialog cut;
    EXPECT_EQ(LastTexts(RunJob(cut), 2), corrupt);
    ExpectNothingChanged();
    TestHttpResponse open;
    open.body = whole.substr(0, whole.rfind("<station"));
    open.contentLength = false;
    m_server.Route("/xml/stations?limit=1000000", open);
    UpdateDialog unannounced;
    EXPECT_EQ(LastTexts(RunJob(unannounced), 2), corrupt);
    ExpectNothingChanged();

    // No station at all.
    m_server.Route("/xml/stations?limit=1000000", "<result></result>");
    UpdateDialog empty;
    EXPECT_EQ(LastTexts(RunJob(empty), 2)[0], CString(u"Building Stations failed."));
    ExpectNothingChanged();

    // A server that is gone.
    m_doc->m_serverUrl = u"http://127.0.0.1:1";
    UpdateDialog gone;
    EXPECT_EQ(LastTexts(RunJob(gone), 3)[0].Find(CString(u"Download Failed: Error ")), 0);
    ExpectNothingChanged();
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST_F(RadioUpdateTest, ASecondStartWhileAJobRunsStartsNothing) {
    m_server.Trickle("/xml/stations?limit=1000000", Directory(), 256 * 1024, 10);
    UpdateDialog dialog;
    m_doc->StartRadioUpdate(dialog.GetSafeHwnd());
    m_doc->StartRadioUpdate(dialog.GetSafeHwnd());
    ASSERT_FALSE(RunJob(dialog).empty());
    EXPECT_EQ(m_server.RequestCount("/xml/stations"), 1);
    // With no job, Cancel only sets the dialog back to idle.
    UpdateDialog idle;
    m_doc->m_hwndUpdateDlg = idle.GetSafeHwnd();
    m_doc->CancelRadioUpdate();
    PumpMessages();
    EXPECT_TRUE(idle.idle);
}

TEST_F(RadioUpdateTest, ServersAreFoundOnceInTheList) {
    const std::string list =
        "[\n  {\"name\": \"de1.api.radio-browser.info\", \"ip\": \"1.2.3.4\"},\n"
        "  {\"name\": \"de1.api.radio-browser.info\", \"ip\": \"::1\"},\n"
        "  {\"name\": \"nl1.api.radio-browser.info\", \"ip\": \"5.6.7.8\"}\n]\n";
    const CString results = m_doc->m_dataFolder + u"/results.txt";
    CString message;
    CStringArray servers;
    auto serve = [&](const std::string& body) {
        m_server.Route("/json/servers", body);
        return m_doc->m_radioDb.GetServers(CString(m_server.Url("/json/servers")), results,
                                           &message, &servers);
    };
    ASSERT_EQ(serve(list), 2);
    EXPECT_EQ(servers[0], CString(u"https://de1.api.radio-browser.info"));
    EXPECT_EQ(servers[1], CString(u"https://nl1.api.radio-browser.info"));
    CString tooLong;
    tooLong.Format(CString(u"CRadioBrowseDb GetServers - file %s is too long.\n"), results);
    const struct {
        std::string body;
        CString message;
    } refused[] = {
        // Fewer than four characters in front of the domain, or none behind it.
        {"ab.api.radio-browser.info\"\n", u"CRadioBrowseDb GetServers - parsing error.\n"},
        {"xxxx.api.radio-browser.info\n", u"CRadioBrowseDb GetServers - parsing error.\n"},
        {"[]\n", u"ERROR CRadioBrowseDb GetServers - no server urls gotten.\n"},
        {std::string(2048, ' '), u"ERROR CRadioBrowseDb GetServers - no server urls gotten.\n"},
        {std::string(2049, ' '), tooLong},
    };
    for (const auto& r : refused) {
        EXPECT_EQ(serve(r.body), 0);
        EXPECT_EQ(message, r.message);
    }

    // Discovery happens once per process, under the wait cursor: a chosen
    // server is kept.
    std::vector<bool> cursor;
    const WaitCursorHook previous = SetWaitCursorHook([&](bool busy) { cursor.push_back(busy); });
    m_doc->m_serverUrl.Empty();
    m_doc->m_serverListUrl = CString(m_server.Url("/json/servers"));
    m_server.Route("/json/servers", list);
    ASSERT_TRUE(m_doc->ChooseRadioServer());
    const CString chosen = m_doc->m_serverUrl;
    EXPECT_TRUE(chosen == CString(u"https://de1.api.radio-browser.info") ||
                chosen == CString(u"https://nl1.api.radio-browser.info"));
    const int before = m_server.RequestCount("/json/servers");
    ASSERT_TRUE(m_doc->ChooseRadioServer());
    EXPECT_EQ(m_server.RequestCount("/json/servers"), before);
    EXPECT_EQ(m_doc->m_serverUrl, chosen);
    EXPECT_EQ(cursor, (std::vector<bool>{true, false}));

    // A list that can't be fetched is told in a box, without the busy cursor.
    m_doc->m_serverUrl.Empty();
    m_doc->m_serverListUrl = u"http://127.0.0.1:1/json/servers";
    EXPECT_FALSE(m_doc->ChooseRadioServer());
    ASSERT_EQ(m_boxes.Texts().size(), 1u);
    EXPECT_EQ(m_boxes.Texts()[0].Find(CString(u"Could not connect to Radio Browser server: ")), 0);
    EXPECT_TRUE(m_doc->m_serverUrl.IsEmpty());
    EXPECT_EQ(cursor, (std::vector<bool>{true, false, true, false}));
    SetWaitCursorHook(previous);
}

TEST_F(RadioUpdateTest, StartUpLoadsTheRadioDatabaseOfTheDataFolder) {
    InstallOldDatabase();
    m_app.reset();
    m_app = std::make_unique<COrvexApp>();
    ASSERT_TRUE(m_app->InitInstance());
    ASSERT_EQ(m_app->GetDocument()->m_radioDb.m_stations.GetSize(), 1);
    EXPECT_EQ(m_app->GetDocument()->m_radioDb.m_stations[0].m_name, CString(u"Old Station"));
}

TEST_F(RadioUpdateTest, ADocumentThatGoesStopsItsJobFirst) {
    m_server.Trickle("/xml/stations?limit=1000000", Directory(), 16 * 1024, 20);
    InstallOldDatabase();
    UpdateDialog dialog;
    m_doc->StartRadioUpdate(dialog.GetSafeHwnd());
    ASSERT_TRUE(m_doc->m_hJobThread.IsRunning());
    ASSERT_TRUE(m_server.WaitForRequest("/xml/stations", 10000));
    // The job is asked to stop and waited for; nothing it had is installed.
    const auto start = std::chrono::steady_clock::now();
    m_app.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_EQ(TempDir::Read(m_datFile), m_oldBytes);
}
