// Check for updates against a version file served on 127.0.0.1: the digit by
// digit comparison, the 13-character and 20-byte rules, and every message.
#include <curl/curl.h>
#include <gtest/gtest.h>

#include <filesystem>

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

TEST_F(UpdateCheckTest, TheLinesOfTheVersionFileDecide) {
    const CString newer =
        CString(u"A newer version, 0.9.0.1, is available at: ") + CString(kProjectWebAddress);
    const struct {
        std::string file;
        CString box;
    } cases[] = {
        {"Orvex 0.9.0.0\r\n", kLatest},
        {"v-no.x0.9.0.1", newer},
        {"Orvex 0.8.9.9\n", kLatest}, // the comparison stops at the first difference
        {"", kLatest},                // no lines at all
        {"Orvex 0.9.0.1\nxx", kFailed},
        {"Orvex 0.9.0.1\n\n", kFailed},
        {"Orvex 0.9.0.10", kFailed},
        {"Orvex 0.9.a.0", kFailed},
        {"Orvex 0.9.0.\xd9\xa3", kFailed},        // a digit, but not a decimal one of ASCII
        {"Orvex 0.9.1.x", newer.Left(16)},        // the letter lies behind the difference
        {"Orvex 0x9y0z0", kLatest},               // the other side's dots aren't read
        {"Orvex 0.9.0.0\n\n\n\n\n\n\n", kFailed}, // 20 bytes are read
        {"Gone", kFailed},
    };
    int checks = 0;
    for (const auto& c : cases) {
        m_boxes.Clear();
        const MessageBoxRequest box = Check(c.file);
        EXPECT_EQ(box.text.Left(c.box.GetLength()), c.box) << c.file;
        EXPECT_EQ(box.type, box.text == kFailed ? 0u : MB_ICONINFORMATION) << c.file;
        EXPECT_EQ(m_server.RequestCount(kStatsPath), ++checks);
    }
    // The statistics are asked for after the version, under one wait cursor.
    EXPECT_EQ(m_server.Requests()[0].path, kVersionPath);
    EXPECT_EQ(m_server.Requests()[1].path, kStatsPath);
    EXPECT_EQ(m_cursor.size(), 2u * checks);
}

TEST_F(UpdateCheckTest, FailuresBeforeTheComparisonEndTheCheckEarly) {
    const CString tooLong =
        CString(u"Check for updates - file ") + m_data.File("results.txt") + u" is too long.\n";
    EXPECT_EQ(Check("Orvex 0.9.0.0\n\n\n\n\n\n\n\n").text, tooLong);
    m_boxes.Clear();
    m_server.Route(kVersionPath, "<html>Not here</html>", 404);
    CheckForUpdates(m_data.Str(), CString(m_server.Url("")), u"0.9.0.0");
    EXPECT_EQ(m_boxes.Texts(), std::vector<CString>{tooLong});
    m_boxes.Clear();
    CheckForUpdates(m_data.Str(), u"http://orvex-updates.invalid", u"0.9.0.0");
    EXPECT_EQ(m_boxes.Texts(),
              std::vector<CString>{u"Unable to check for updates. Download Failed: Error Couldn't "
                                   u"resolve host name\nAre you connected to the internet?"});
    EXPECT_EQ(m_server.RequestCount(kStatsPath), 0);
    EXPECT_EQ(m_cursor, (std::vector<bool>{true, false, true, false, true, false}));
}

TEST_F(UpdateCheckTest, AServerThatAnswersWithoutEndCannotFillTheDisc) {
    TestHttpResponse endless;
    endless.body = "Orvex 0.9.0.1\n";
    endless.endless = true;
    m_server.Route(kVersionPath, endless);
    CheckForUpdates(m_data.Str(), CString(m_server.Url("")), u"0.9.0.0");
    EXPECT_EQ(
        m_boxes.Texts(),
        (std::vector<CString>{u"Cancelling download - maximum file size exceeded.",
                              CString(u"Unable to check for updates. Download Failed: Error ") +
                                  curl_easy_strerror(CURLE_WRITE_ERROR)}));
    EXPECT_LE(std::filesystem::file_size(m_data / "results.txt"), kVersionDownloadLimit);

    // The statistics file is cut off without a word; the check goes on.
    m_boxes.Clear();
    m_server.Route(kStatsPath, endless);
    EXPECT_EQ(Check("Orvex 0.9.0.0").text, kLatest);
    EXPECT_LE(std::filesystem::file_size(m_data / "results.txt"), kVersionDownloadLimit);
}

TEST_F(UpdateCheckTest, WorksOverHttpsForTheProgramsOwnVersion) {
    COrvexDoc doc;
    CString version = u"unchanged";
    EXPECT_TRUE(doc.GetVersionString(version));
    EXPECT_EQ(version, CString(u"0.9.0.0"));
    m_server.Route(kVersionPath, "Orvex 0.9.0.1");
    CheckForUpdates(m_data.Str(), CString(m_server.HttpsUrl("")), version);
    ASSERT_EQ(m_boxes.Texts().size(), 1u);
    EXPECT_EQ(m_boxes.Texts()[0].Left(25), CString(u"A newer version, 0.9.0.1,"));
    EXPECT_TRUE(m_server.Requests()[0].tls);
}

TEST(CompareVersionLine, NeedsAProgramVersionOfSevenCharactersAndNeverClearsAFlag) {
    CVersionCheck check;
    CompareVersionLine(u"......0.9.0.0", u"0.10.0.0", check);
    EXPECT_TRUE(check.failed);
    CVersionCheck later;
    CompareVersionLine(u"Orvex 0.9.0.5", u"0.9.0.0", later);
    CompareVersionLine(u"Orvex 0.0.0.0", u"0.9.0.0", later);
    EXPECT_TRUE(later.newer);
    EXPECT_FALSE(later.failed);
    EXPECT_EQ(later.latest, CString(u"0.0.0.0"));
}

} // namespace
