// "Update Radio Station Database" from the menu, on the real dialog, against
// a local server that serves a made-up directory: every status text as it
// comes, the bar, the new database installed, and a Cancel at each stage
// that leaves the old one, on disk byte for byte.
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QThread>
#include <condition_variable>

#include "bench/StationDirectoryWriter.h"
#include "platform/base/AppContext.h"
#include "platform/base/File.h"
#include "platform/base/UserMessages.h"
#include "platform/qt/QtGlue.h"
#include "tests/support/PrintCString.h"
#include "tests/ui/RadioWindow.h"
#include "ui/Commands.h"
#include "ui/dialogs/RadioBrowseUpdateDlg.h"

namespace {

constexpr int UPDATE = 1056, STATUS = 1061, BAR = 1060;
const std::string kStations = "/xml/stations?limit=1000000";

const std::string& Directory() {
    static const std::string document = StationDirectoryWriter().Document(21000);
    return document;
}

CString Lines(std::initializer_list<CString> lines) {
    CString text;
    for (const CString& line : lines) {
        if (!text.IsEmpty())
            text += u"\r\n";
        text += line;
    }
    return text;
}

// The status slot with a handshake in place of the job's pauses: a new text
// waits until the dialog has fetched the one before, so every text reaches
// the status box once however slow the test machine is. A hook can hold the
// job right behind one text.
class StatusSlot : public IAppContext {
public:
    explicit StatusSlot(const CString& startDirectory) : m_start(startDirectory) {
        AfxSetAppContext(this);
    }
    ~StatusSlot() override { AfxSetAppContext(nullptr); }

    CString GetStartDirectory() const override { return m_start; }
    void SetUpdateStatus(const CString& text) override {
        {
            std::unique_lock<std::mutex> lock(m_lock);
            // The end handlers set texts on the interface thread, where the
            // dialog has fetched everything the job posted before its end.
            if (QThread::currentThread() != qApp->thread()) {
                const bool fetched = m_changed.wait_for(lock, std::chrono::seconds(60),
                                                        [this] { return m_fetched; });
                EXPECT_TRUE(fetched);
            }
            m_text = text;
            m_fetched = false;
        }
        if (onStatus)
            onStatus(text);
    }
    BOOL GetUpdateStatus(CString& out) override {
        std::lock_guard<std::mutex> lock(m_lock);
        out = m_text;
        m_fetched = true;
        m_changed.notify_all();
        return TRUE;
    }

    // On the job's thread, right after each text is set.
    std::function<void(const CString&)> onStatus;

private:
    CString m_start;
    std::mutex m_lock;
    std::condition_variable m_changed;
    CString m_text;
    bool m_fetched = true;
};

class RadioUpdateDlgTest : public ::testing::Test {
protected:
    RadioUpdateDlgTest() { w.doc->m_radioDbNew.m_statusPauseMs = 0; }

    // Holds the job right behind the status text `text` until the test has
    // pressed Cancel on the dialog, as a user who reads it would. The text is
    // brought to the dialog at once, and the job's own message for it then
    // finds the status slot empty, which the dialog passes over.
    void CancelAt(const CString& text) {
        m_status.onStatus = [this, text](const CString& shown) {
            if (shown != text)
                return;
            PostMessageW(w.doc->m_hwndUpdateDlg, UM_UPDATE_STATUS, 0, 0);
            std::unique_lock<std::mutex> lock(m_lock);
            EXPECT_TRUE(m_pressed.wait_for(lock, std::chrono::seconds(60),
                                           [this] { return m_cancelPressed; }));
            m_cancelPressed = false;
            lock.unlock();
            m_status.SetUpdateStatus(CString());
        };
    }
    void CancelPressed() {
        std::lock_guard<std::mutex> lock(m_lock);
        m_cancelPressed = true;
        m_pressed.notify_all();
    }

    // The database the user has before the update, live and on disk.
    void InstallOldDatabase() {
        CRadioBrowseDb old;
        CStation station;
        station.m_name = u"Old Station";
        old.m_stations.Add(station);
        w.doc->m_radioDb.AssignTables(old);
        ASSERT_TRUE(w.doc->SaveRadioDb());
        m_oldBytes = TempDir::Read(w.DataFile("RadioBrowse.dat"));
    }

    // Opens the dialog from the menu, presses Update, lets `during` act on
    // the dialog while the job runs until it says it is done, and closes the
    // dialog once the job is over. Gives the status box's text at the end.
    CString RunUpdate(const std::function<bool(CRadioBrowseUpdateDlg*)>& during) {
        CString text;
        ModalScript script;
        script.Then("153", [&](QWidget* dlg) {
            Click(dlg, UPDATE);
            EXPECT_FALSE(Enabled(dlg, UPDATE) || Enabled(dlg, IDOK));
            EXPECT_TRUE(Enabled(dlg, IDCANCEL));
            return true;
        });
        script.Then("153",
                    [&](QWidget* dlg) { return during(static_cast<CRadioBrowseUpdateDlg*>(dlg)); });
        script.Then("153", [&](QWidget* dlg) {
            if (!Enabled(dlg, IDOK))
                return false;
            EXPECT_TRUE(Enabled(dlg, UPDATE));
            EXPECT_FALSE(Enabled(dlg, IDCANCEL));
            text = static_cast<CRadioBrowseUpdateDlg*>(dlg)->m_text;
            Click(dlg, IDOK);
            return true;
        });
        script.Run([&] { w.frame->CommandAction(ID_RADIO_UPDATE)->trigger(); }, 120000);
        return text;
    }

    RadioWindow w;
    StatusSlot m_status{GetCurrentDirectoryW()};
    std::mutex m_lock;
    std::condition_variable m_pressed;
    bool m_cancelPressed = false;
    std::string m_oldBytes;
};

} // namespace

TEST_F(RadioUpdateDlgTest, AWholeUpdateShowsEachStatusAndInstallsTheNewDatabase) {
    w.server.Route(kStations, Directory());
    InstallOldDatabase();
    int range = -1, position = -1;
    const CString text = RunUpdate([&](CRadioBrowseUpdateDlg* dlg) {
        if (dlg->m_text.Find(CString(u"update successfull.")) < 0)
            return false;
        auto* bar = Find<QProgressBar>(dlg, BAR);
        range = bar->maximum();
        position = bar->value();
        // The box shows its last line.
        auto* box = Find<QPlainTextEdit>(dlg, STATUS);
        EXPECT_EQ(box->verticalScrollBar()->value(), box->verticalScrollBar()->maximum());
        EXPECT_TRUE(box->toPlainText().endsWith(
            QStringLiteral("\nRadio Station Database update successfull.")));
        return true;
    });
    CString server;
    server.Format(u"  %s.", w.doc->m_serverUrl);
    CString stations;
    stations.Format(u"%d stations proccessed.", w.doc->m_radioDb.m_stations.GetSize());
    EXPECT_EQ(
        text,
        Lines({u"Press the Update button to begin.", u"Updates are obtained from:", server,
               u"Getting Radio Browser station data from RB server.", u"Please wait.",
               u"Connecting to Radio Browser server.", u"Downloading Radio Browser data.",
               u"Please wait.", u"Download complete.", u"Proccessing Radio Browser station data.",
               u"Please wait.", stations, u"Loading countries.", u"Setting country codes.",
               u"Building tag list.", u"Building states list.", u"Loading languages.",
               u"Copying Radio Browser data.", u"Radio Station Database update successfull."}));
    EXPECT_EQ(range, 30);
    EXPECT_EQ(position, 0);
    EXPECT_TRUE(w.Boxes().Texts().empty());
    EXPECT_GE(w.doc->m_radioDb.m_stations.GetSize(), 20000);
    CRadioBrowseDb stored;
    ASSERT_TRUE(LoadRadioBrowseFile(stored, CString(w.DataFile("RadioBrowse.dat"))));
    EXPECT_TRUE(stored.m_stations == w.doc->m_radioDb.m_stations);
    EXPECT_TRUE(stored.m_tags == w.doc->m_radioDb.m_tags);
    EXPECT_TRUE(stored.m_states == w.doc->m_radioDb.m_states);
    EXPECT_TRUE(stored.m_languages == w.doc->m_radioDb.m_languages);
    // The job's own tables and fields are gone; the download stays.
    EXPECT_TRUE(w.doc->m_radioDbNew.m_stations.IsEmpty());
    EXPECT_TRUE(w.doc->m_jobUrl.IsEmpty());
    EXPECT_EQ(w.doc->m_hwndUpdateDlg, nullptr);
    EXPECT_EQ(TempDir::Read(w.DataFile("results.txt")), Directory());
}

TEST_F(RadioUpdateDlgTest, ACancelAtEachStageLeavesTheOldDatabase) {
    InstallOldDatabase();
    struct Point {
        const char16_t* cancelAt;
        const char16_t* after;
    };
    const Point points[] = {
        {u"Getting Radio Browser station data from RB server.\r\nPlease wait.",
         u"Canceling download.\r\nBuilding Stations failed."},
        {u"Downloading Radio Browser data.\r\nPlease wait.",
         u"Canceling download.\r\nDownload canceled by user.\r\nBuilding Stations failed."},
        {u"Proccessing Radio Browser station data.\r\nPlease wait.",
         u"Canceling Update.\r\nBuilding Stations failed."},
        {u"Loading countries.", u"Canceling Update."},
        {u"Setting country codes.", u"Canceling Update."},
        {u"Building tag list.", u"Canceling Update."},
        {u"Building states list.", u"Canceling Update."},
    };
    bool byEscape = false;
    for (const Point& point : points) {
        SCOPED_TRACE(CString(point.cancelAt).ToUtf8());
        // A slow answer where the Cancel must land inside the transfer.
        if (CString(point.cancelAt).Find(CString(u"Downloading")) == 0)
            w.server.Trickle(kStations, Directory(), 64 * 1024, 20);
        else
            w.server.Route(kStations, Directory());
        CancelAt(CString(point.cancelAt));
        const CString text = RunUpdate([&](CRadioBrowseUpdateDlg* dlg) {
            if (dlg->m_text.Right(CString(point.cancelAt).GetLength()) != point.cancelAt)
                return false;
            // Escape is the same Cancel; neither closes the dialog.
            if (byEscape)
                QTest::keyClick(dlg, Qt::Key_Escape);
            else
                Click(dlg, IDCANCEL);
            byEscape = !byEscape;
            EXPECT_TRUE(dlg->isVisible());
            CancelPressed();
            return true;
        });
        CString tail;
        tail.Format(u"%s\r\nAttempting to cancel update.\r\n%s\r\nRadio Database Update failed.",
                    point.cancelAt, point.after);
        EXPECT_EQ(text.Right(tail.GetLength()), tail);
        EXPECT_EQ(TempDir::Read(w.DataFile("RadioBrowse.dat")), m_oldBytes);
        ASSERT_EQ(w.doc->m_radioDb.m_stations.GetSize(), 1);
        EXPECT_FALSE(w.doc->m_hJobThread.IsRunning());
        EXPECT_TRUE(w.doc->m_radioDbNew.m_stations.IsEmpty());
        EXPECT_EQ(w.doc->m_hwndUpdateDlg, nullptr);
        EXPECT_FALSE(w.doc->m_serverUrl.IsEmpty()); // kept for the next attempt
    }
}
