#include <gtest/gtest.h>

#include <string>

#include "platform/base/AppContext.h"
#include "platform/base/UserMessages.h"
#include "radio/RadioBrowseDb.h"
#include "tests/radio/RadioTestSupport.h"
#include "tests/support/JobRecorders.h"
#include "tests/support/TempDir.h"

namespace {

// A start directory whose name files give exactly the minimum of countries
// and languages, and a database whose stations give exactly the minimum of
// tags and states when there are at least 20,000 of them.
class StagesTest : public ::testing::Test {
protected:
    StagesTest() : m_cwd(m_dir.Path()) {
        std::string countries = "// made for the test\n";
        for (int k = 0; k < RB_MIN_COUNTRIES; ++k)
            countries += "Country " + std::to_string(k) + ",K" + std::to_string(k) + "\n";
        std::string languages;
        for (int k = 0; k < RB_MIN_LANGUAGES; ++k)
            languages += "Language " + std::to_string(k) + ",l" + std::to_string(k) + "\n";
        TempDir::Write(m_dir / "RadioBrowse_CC.txt", countries);
        TempDir::Write(m_dir / "RadioBrowse_LC.txt", languages);
    }
    void AddStations(int count) {
        for (int i = 0; i < count; ++i) {
            CStation s;
            s.m_name = CString("Station " + std::to_string(i));
            s.m_url = u"http://host/stream";
            s.m_country = CString("K" + std::to_string(i % RB_MIN_COUNTRIES));
            s.m_state = CString("State " + std::to_string(i % RB_MIN_STATES));
            s.m_language = CString("Language " + std::to_string(i % RB_MIN_LANGUAGES));
            s.m_tags =
                CString("tag " + std::to_string(i % RB_MIN_TAGS) + ", rare " + std::to_string(i));
            m_db.m_stations.Add(std::move(s));
        }
    }

    // Status texts go to m_context as the job sets them, with no pause.
    void Watch() {
        m_db.m_hwndProgress = m_progress.GetSafeHwnd();
        m_db.m_statusPauseMs = 0;
    }

    TempDir m_dir;
    ScopedCurrentDir m_cwd;
    RecordingAppContext m_context{m_dir.Str()};
    RecordingWindow m_progress;
    CRadioBrowseDb m_db;
    CString m_error;
};

const char16_t* const kStageTexts[] = {u"Loading countries.", u"Setting country codes.",
                                       u"Building tag list.", u"Building states list.",
                                       u"Loading languages."};

} // namespace

TEST_F(StagesTest, EachLimitPassesAtItsMinimumAndFailsOneBelow) {
    AddStations(RB_MIN_STATIONS);
    Watch();
    ASSERT_EQ(m_db.BuildLookupLists(RB_MIN_STATIONS, &m_error), 1) << m_error.ToUtf8();
    PumpMessages();
    // The bar: a scale of five, each stage's position, and 5 once more at the end.
    EXPECT_EQ(m_progress.Params(UM_UPDATE_RANGE), std::vector<LPARAM>{5});
    EXPECT_EQ(m_progress.Params(UM_UPDATE_POS), (std::vector<LPARAM>{0, 1, 2, 3, 4, 5, 5}));
    EXPECT_EQ(m_db.m_countries.GetSize(), RB_MIN_COUNTRIES);
    EXPECT_EQ(m_db.m_tags.GetSize(), RB_MIN_TAGS);
    EXPECT_EQ(m_db.m_states.GetSize(), RB_MIN_STATES);
    EXPECT_EQ(m_db.m_languages.GetSize(), RB_MIN_LANGUAGES);
    EXPECT_TRUE(m_db.MeetsLimits());
    // The language names became their codes and marked them.
    EXPECT_EQ(m_db.m_stations[5].m_language, CString(u"l5"));
    EXPECT_EQ(m_db.m_languages[0].m_used, 1);

    auto dropOne = [&](auto& table) {
        auto saved = table;
        table.RemoveAt(table.GetSize() - 1);
        EXPECT_FALSE(m_db.MeetsLimits());
        table = saved;
        EXPECT_TRUE(m_db.MeetsLimits());
    };
    dropOne(m_db.m_stations);
    dropOne(m_db.m_countries);
    dropOne(m_db.m_tags);
    dropOne(m_db.m_states);
    dropOne(m_db.m_languages);
}

TEST_F(StagesTest, EachStageFailsWithItsOwnWords) {
    AddStations(10);
    std::filesystem::rename(m_dir / "RadioBrowse_CC.txt", m_dir / "cc");
    EXPECT_EQ(m_db.BuildLookupLists(10, &m_error), 0);
    EXPECT_EQ(m_error, CString(u"Loading countries failed."));

    TempDir::Write(m_dir / "RadioBrowse_CC.txt", "Nowhere,ZZ\n");
    EXPECT_EQ(m_db.BuildLookupLists(10, &m_error), 0);
    EXPECT_EQ(m_error, CString(u"Setting country codes used failed."));

    std::filesystem::rename(m_dir / "cc", m_dir / "RadioBrowse_CC.txt");
    EXPECT_EQ(m_db.BuildLookupLists(10, &m_error), 0); // no tag on 80 stations
    EXPECT_EQ(m_error, CString(u"Building tags failed."));

    m_db.m_stations.RemoveAll();
    AddStations(200);
    for (CStation& s : m_db.m_stations) {
        s.m_tags = u"common";
        s.m_state.Empty();
    }
    EXPECT_EQ(m_db.BuildLookupLists(200, &m_error), 0);
    EXPECT_EQ(m_error, CString(u"Building states failed."));

    m_db.m_stations[0].m_state = u"Somewhere";
    std::filesystem::remove(m_dir / "RadioBrowse_LC.txt");
    EXPECT_EQ(m_db.BuildLookupLists(200, &m_error), 0);
    EXPECT_EQ(m_error, CString(u"Loading languages failed."));
}

TEST_F(StagesTest, ACancelIsSeenAfterEachStageButTheLast) {
    AddStations(6000);
    Watch();
    for (int stage = 0; stage < 5; ++stage) {
        SCOPED_TRACE(stage);
        CEvent cancel;
        m_db.m_pCancelEvent = &cancel;
        m_context.m_onStatus = [&](const CString& text) {
            if (text == kStageTexts[stage])
                cancel.SetEvent();
        };
        const size_t before = m_context.StatusHistory().size();
        EXPECT_EQ(m_db.BuildLookupLists(6000, &m_error), 0);
        const std::vector<CString> all = m_context.StatusHistory();
        std::vector<CString> expected = {CString(u"6000 stations proccessed.")};
        for (int k = 0; k <= stage; ++k)
            expected.push_back(CString(kStageTexts[k]));
        // Polled after every stage but the last, where the job runs to its
        // end: 6,000 stations are too few.
        expected.push_back(stage < 4
                               ? CString(u"Canceling Update.")
                               : CString(u"Radio Browser data appears corrupt - update failed."));
        EXPECT_EQ(std::vector<CString>(all.begin() + static_cast<long>(before), all.end()),
                  expected);
        EXPECT_EQ(WaitForSingleObject(&cancel, 0), stage < 4 ? WAIT_TIMEOUT : WAIT_OBJECT_0);
    }
}
