// Check for updates against a version file served on 127.0.0.1: the digit by
// digit comparison, the 13-character and 20-byte rules, and every message.
#include <gtest/gtest.h>

#include "app/OrvexDoc.h"
#include "app/UpdateCheck.h"
#include "platform/base/Deployment.h"
#include "platform/base/MessageBox.h"
#include "platform/base/WaitCursor.h"
#include "tests/support/JobRecorders.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"
#include "tests/support/TestHttpServer.h"

namespace {

const CString kLatest = u"You have the latest version.";
const CString kFailed = u"Check for updates failed";
const std::string kVersionPath = "/orvex/SourceCode/version.dat";
const std::string kStatsPath = "/orvex/SourceCode/VersionStats.7z";

class UpdateCheckTest : public ::testing::Test {
protected:
    UpdateCheckTest() : m_context(m_start.Str()) {
        m_server.StageCertificates(m_start.Path());
        m_server.Route(kStatsPath, "7z statistics, never read");
        m_previousCursorHook = SetWaitCursorHook([this](bool busy) { m_cursor.push_back(busy); });
    }
    ~UpdateCheckTest() override { SetWaitCursorHook(m_previousCursorHook); }

    // Serves the version file and runs the check as version 0.9.0.0; gives the
    // one message box it showed.
    MessageBoxRequest Check(const std::string& versionFile, const CString& current = u"0.9.0.0") {
        m_server.Route(kVersionPath, versionFile);
        CheckForUpdates(m_data.Str(), CString(m_server.Url("")), current);
        EXPECT_EQ(m_boxes.Boxes().size(), 1u);
        return m_boxes.Boxes().empty() ? MessageBoxRequest{} : m_boxes.Boxes().back();
    }

    TempDir m_start;
    TempDir m_data;
    TestHttpServer m_server;
    RecordingAppContext m_context;
    MessageBoxRecorder m_boxes;
    std::vector<bool> m_cursor;
    WaitCursorHook m_previousCursorHook;
};

TEST_F(UpdateCheckTest, TheSameVersionIsTheLatest) {
    MessageBoxRequest box = Check("Orvex 0.9.0.0\r\n");
    EXPECT_EQ(box.text, kLatest);
    EXPECT_EQ(box.type, MB_ICONINFORMATION);
    // Both files were asked for, the statistics after the version.
    std::vector<TestHttpRequest> requests = m_server.Requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].path, kVersionPath);
    EXPECT_EQ(requests[1].path, kStatsPath);
    EXPECT_EQ(m_cursor, (std::vector<bool>{true, false}));
}

TEST_F(UpdateCheckTest, ANewerVersionIsNamedWithTheWebAddress) {
    MessageBoxRequest box = Check("v-no.x0.9.0.1");
    EXPECT_EQ(box.text, CString(u"A newer version, 0.9.0.1, is available at: ") +
                            CString(kProjectWebAddress));
    EXPECT_EQ(box.type, MB_ICONINFORMATION);
}

TEST_F(UpdateCheckTest, TheComparisonStopsAtTheFirstDifference) {
    EXPECT_EQ(Check("Orvex 0.8.9.9\n").text, kLatest);
    m_boxes.Clear();
    EXPECT_EQ(Check("Orvex 1.0.0.0\n").text.Left(16), CString(u"A newer version,"));
}

TEST_F(UpdateCheckTest, AnEmptyFileHasNoLinesAndIsTheLatest) {
    EXPECT_EQ(Check("").text, kLatest);
    EXPECT_EQ(m_server.RequestCount(kStatsPath), 1);
}

TEST_F(UpdateCheckTest, EveryLineMustBeThirteenCharacters) {
    // A second line of another length fails the check even after a newer first.
    EXPECT_EQ(Check("Orvex 0.9.0.1\nxx").text, kFailed);
    m_boxes.Clear();
    EXPECT_EQ(Check("Orvex 0.9.0.1\n\n").text, kFailed);
    m_boxes.Clear();
    EXPECT_EQ(Check("Orvex 0.9.0.10").text, kFailed);
    m_boxes.Clear();
    EXPECT_EQ(Check("Orvex 0.9.0.").text, kFailed);
}

TEST_F(UpdateCheckTest, ALetterInTheVersionFails) {
    EXPECT_EQ(Check("Orvex 0.9.a.0").text, kFailed);
    m_boxes.Clear();
    // Before the first difference only: the comparison ends at 0 < 1.
    EXPECT_EQ(Check("Orvex 0.9.1.x").text.Left(16), CString(u"A newer version,"));
    m_boxes.Clear();
    // The dots of the program's own version are skipped unread on the other side.
    EXPECT_EQ(Check("Orvex 0x9y0z0").text, kLatest);
}

TEST_F(UpdateCheckTest, AFileOverTwentyBytesIsTooLong) {
    // 20 bytes are read (and the empty lines fail), 21 are not read at all.
    EXPECT_EQ(Check("Orvex 0.9.0.0\n\n\n\n\n\n\n").text, kFailed);
    EXPECT_EQ(m_server.RequestCount(kStatsPath), 1);
    m_boxes.Clear();
    CString path = m_data.File("results.txt");
    EXPECT_EQ(Check("Orvex 0.9.0.0\n\n\n\n\n\n\n\n").text,
              CString(u"Check for updates - file ") + path + u" is too long.\n");
    // An early end leaves the statistics alone.
    EXPECT_EQ(m_server.RequestCount(kStatsPath), 1);
    EXPECT_EQ(m_cursor, (std::vector<bool>{true, false, true, false}));
}

TEST_F(UpdateCheckTest, AnErrorPageIsTooLongOrFails) {
    m_server.Route(kVersionPath, "<html>Not here</html>", 404);
    CheckForUpdates(m_data.Str(), CString(m_server.Url("")), u"0.9.0.0");
    ASSERT_EQ(m_boxes.Texts().size(), 1u);
    EXPECT_EQ(m_boxes.Texts()[0].Left(25), CString(u"Check for updates - file "));
    m_boxes.Clear();
    EXPECT_EQ(Check("Gone").text, kFailed);
}

TEST_F(UpdateCheckTest, AFailedDownloadSaysWhy) {
    CheckForUpdates(m_data.Str(), u"http://orvex-updates.invalid", u"0.9.0.0");
    ASSERT_EQ(m_boxes.Texts().size(), 1u);
    EXPECT_EQ(m_boxes.Texts()[0],
              CString(u"Unable to check for updates. Download Failed: Error Couldn't resolve host "
                      u"name\nAre you connected to the internet?"));
    EXPECT_EQ(m_cursor, (std::vector<bool>{true, false}));
}

TEST_F(UpdateCheckTest, WorksOverHttps) {
    m_server.Route(kVersionPath, "Orvex 0.9.0.1");
    CheckForUpdates(m_data.Str(), CString(m_server.HttpsUrl("")), u"0.9.0.0");
    ASSERT_EQ(m_boxes.Texts().size(), 1u);
    EXPECT_EQ(m_boxes.Texts()[0].Left(25), CString(u"A newer version, 0.9.0.1,"));
    ASSERT_EQ(m_server.Requests().size(), 2u);
    EXPECT_TRUE(m_server.Requests()[0].tls);
}

TEST(CompareVersionLine, ComparesDigitByDigit) {
    struct Case {
        const char16_t* line;
        const char16_t* current;
        BOOL failed;
        BOOL newer;
    };
    const Case cases[] = {
        {u"......0.9.0.0", u"0.9.0.0", FALSE, FALSE}, {u"......0.9.0.1", u"0.9.0.0", FALSE, TRUE},
        {u"......0.8.9.9", u"0.9.0.0", FALSE, FALSE}, {u"......1.0.0.0", u"0.9.9.9", FALSE, TRUE},
        {u"......0.9.1.0", u"0.9.0.9", FALSE, TRUE},  {u"......a.9.0.0", u"0.9.0.0", TRUE, FALSE},
        {u"......0.9.0.0", u"0.10.0.0", TRUE, FALSE}, {u"......0.9.0.0", u"", TRUE, FALSE},
        {u"0.9.0.1", u"0.9.0.0", TRUE, FALSE},        {u"", u"0.9.0.0", TRUE, FALSE},
        {u"......0.9.0.٣", u"0.9.0.0", TRUE, FALSE},
    };
    for (const Case& c : cases) {
        CVersionCheck check;
        CompareVersionLine(c.line, c.current, check);
        EXPECT_EQ(check.failed, c.failed)
            << CString(c.line).ToUtf8() << " vs " << CString(c.current).ToUtf8();
        EXPECT_EQ(check.newer, c.newer) << CString(c.line).ToUtf8();
    }
    CVersionCheck check;
    CompareVersionLine(u"Orvex 0.9.0.5", u"0.9.0.0", check);
    EXPECT_EQ(check.latest, CString(u"0.9.0.5"));
    // The flags stay set: a later line never clears them.
    CompareVersionLine(u"Orvex 0.0.0.0", u"0.9.0.0", check);
    EXPECT_TRUE(check.newer);
    EXPECT_EQ(check.latest, CString(u"0.0.0.0"));
}

TEST(UpdateCheck, TheProgramsVersionAndServer) {
    COrvexDoc doc;
    CString version = u"unchanged";
    EXPECT_TRUE(doc.GetVersionString(version));
    EXPECT_EQ(version, CString(u"0.9.0.0"));
    EXPECT_EQ(DownloadServerAddress(), CString(u"https://") + kDownloadServerHost);
}

} // namespace
