#include <gtest/gtest.h>

#include "radio/RadioBrowseDb.h"
#include "radio/TextFind.h"
#include "tests/radio/RadioTestSupport.h"
#include "tests/support/StationDirectoryWriter.h"
#include "tests/support/TempDir.h"

namespace {

class SearchTest : public ::testing::Test {
protected:
    SearchTest() {
        Add(u"Radio Paradise", u"US", u"California", u"en", u"rock,eclectic", 50, 900);
        Add(u"Caf\u00E9 Jazz", u"FR", u"\u00CEle-de-France", u"fr", u"jazz,lounge", 10, 20);
        Add(u"United One", u"United States", u"Ohio", u"english", u"", 5, 5);
        Add(u"Rockabilly Hour", u"DE", u"Berlin", u"de,en", u"rockabilly", 10, 300);
        Add(u"News 24", u"GB", u"", u"en", u"news,talk", 0, 0);
    }
    void Add(const char16_t* name, const char16_t* country, const char16_t* state,
             const char16_t* language, const char16_t* tags, int votes, int clicks) {
        m_db.m_stations.Add(
            MakeStation(name, u"http://s", country, state, language, tags, votes, clicks));
    }
    std::vector<CString> Names() const {
        std::vector<CString> names;
        for (const CStation& s : m_db.m_results)
            names.push_back(s.m_name);
        return names;
    }

    CRadioBrowseDb m_db;
};

// The search the slow way: FindNoCase on every test, as the design has it.
int ReferenceSearch(CRadioBrowseDb& db, std::vector<int>& hits) {
    hits.clear();
    const int needed = db.CountCriteria();
    if (needed == 0)
        return 0;
    for (int i = 0; i < db.m_stations.GetSize(); ++i) {
        const CStation s = db.m_stations[i];
        int held = 0;
        held += db.m_bFindName && db.FindNoCase(s.m_name, db.m_findName) >= 0;
        held += db.m_bFindCountry && db.FindNoCase(s.m_country, db.m_findCountry) >= 0;
        held += db.m_bFindState && db.FindNoCase(s.m_state, db.m_findState) >= 0;
        held += db.m_bFindLanguage && db.FindNoCase(s.m_language, db.m_findLanguage) >= 0;
        if (db.m_bFindTags && !s.m_tags.IsEmpty()) {
            for (const CString& tag : db.m_findTags) {
                if (db.FindNoCase(s.m_tags, tag) >= 0) {
                    ++held;
                    break;
                }
            }
        }
        held += db.m_bMinClicks && s.m_clicks >= db.m_minClicks;
        held += db.m_bMinVotes && s.m_votes >= db.m_minVotes;
        if (held == needed)
            hits.push_back(i);
    }
    return static_cast<int>(hits.size());
}

} // namespace

TEST_F(SearchTest, NoCriterionFindsNothing) {
    m_db.m_minVotes = 5; // a value without its flag is no criterion
    EXPECT_EQ(m_db.CountCriteria(), 0);
    EXPECT_EQ(m_db.SearchStations(), 0);
}

TEST_F(SearchTest, TextCriteriaAreSubstringsWithoutCase) {
    m_db.m_bFindName = TRUE;
    m_db.m_findName = u"RADIO";
    EXPECT_EQ(m_db.SearchStations(), 1);
    m_db.m_findName = u"caf\u00C9";
    EXPECT_EQ(m_db.SearchStations(), 1);
    m_db.m_findName = u"one radio"; // one substring, not words
    EXPECT_EQ(m_db.SearchStations(), 0);
}

TEST_F(SearchTest, ACountryCodeMatchesInsideANameAndLanguagesInsideLists) {
    m_db.m_bFindCountry = TRUE;
    m_db.m_findCountry = u"ta"; // in "United States"
    EXPECT_EQ(m_db.SearchStations(), 1);
    EXPECT_EQ(Names(), std::vector<CString>{CString(u"United One")});
    m_db.ClearCriteria();
    m_db.m_bFindLanguage = TRUE;
    m_db.m_findLanguage = u"en";
    EXPECT_EQ(m_db.SearchStations(), 4); // en, english, de,en, en
}

TEST_F(SearchTest, TagsMatchInsideLongerTagsAndAnyOneIsEnough) {
    m_db.m_bFindTags = TRUE;
    m_db.m_findTags.Add(CString(u"ROCK"));
    EXPECT_EQ(m_db.SearchStations(), 2);
    m_db.m_findTags.Add(CString(u"talk"));
    EXPECT_EQ(m_db.SearchStations(), 3);
    m_db.m_findTags.RemoveAll();
    m_db.m_findTags.Add(CString());
    // An empty tag occurs in every tag text, but never in no tags at all.
    EXPECT_EQ(m_db.SearchStations(), 4);
}

TEST_F(SearchTest, AllCriteriaMustHold) {
    m_db.m_bMinVotes = TRUE;
    m_db.m_minVotes = 10;
    EXPECT_EQ(m_db.SearchStations(), 3);
    m_db.m_bMinClicks = TRUE;
    m_db.m_minClicks = 300;
    EXPECT_EQ(m_db.SearchStations(), 2);
    m_db.m_bFindState = TRUE;
    m_db.m_findState = u"BERL";
    EXPECT_EQ(Names().size(), 2u);
    EXPECT_EQ(m_db.SearchStations(), 1);
    EXPECT_EQ(Names(), std::vector<CString>{CString(u"Rockabilly Hour")});
    m_db.ClearSearch();
    EXPECT_EQ(m_db.CountCriteria(), 0);
    EXPECT_TRUE(m_db.m_results.IsEmpty());
    EXPECT_TRUE(m_db.m_findState.IsEmpty());
}

TEST_F(SearchTest, ChangedTablesAreSearchedAfresh) {
    m_db.m_bFindName = TRUE;
    m_db.m_findName = u"radio";
    EXPECT_EQ(m_db.SearchStations(), 1);
    CRadioBrowseDb other;
    other.m_stations.Add(MakeStation(u"Radio A", u"u", u"", u"", u"", u""));
    other.m_stations.Add(MakeStation(u"Radio B", u"u", u"", u"", u"", u""));
    m_db.AssignTables(other);
    EXPECT_EQ(m_db.SearchStations(), 2);
    m_db.ClearTables();
    EXPECT_EQ(m_db.SearchStations(), 0);
}

TEST_F(SearchTest, SortsByNameVotesAndClicksBothWays) {
    m_db.m_bMinVotes = TRUE;
    m_db.m_minVotes = 0;
    ASSERT_EQ(m_db.SearchStations(), 5);
    m_db.SortResults(TRUE, TRUE, FALSE, FALSE);
    EXPECT_EQ(Names()[0], CString(u"Caf\u00E9 Jazz"));
    EXPECT_EQ(Names()[4], CString(u"United One"));
    m_db.SortResults(FALSE, FALSE, TRUE, FALSE);
    // Equal votes in descending order fall back to names descending.
    const std::vector<CString> byVotes = {CString(u"Radio Paradise"), CString(u"Rockabilly Hour"),
                                          CString(u"Caf\u00E9 Jazz"), CString(u"United One"),
                                          CString(u"News 24")};
    EXPECT_EQ(Names(), byVotes);
    m_db.SortResults(TRUE, FALSE, FALSE, TRUE);
    EXPECT_EQ(Names()[0], CString(u"News 24"));
    EXPECT_EQ(Names()[4], CString(u"Radio Paradise"));
    const std::vector<CString> before = Names();
    m_db.SortResults(TRUE, FALSE, FALSE, FALSE);
    EXPECT_EQ(Names(), before);
}

TEST(StationSearch, IndexedSearchEqualsTheDesignedScan) {
    TempDir dir;
    StationDirectoryWriter writer(11);
    TempDir::Write(dir / "d.xml", writer.Document(3000));
    CRadioBrowseDb db;
    CString error;
    ASSERT_EQ(db.ParseStationFile(dir.File("d.xml"), &error) > 0, true);
    struct Case {
        const char16_t* name;
        const char16_t* country;
        const char16_t* state;
        const char16_t* language;
        std::vector<const char16_t*> tags;
        int votes;
        int clicks;
    };
    const Case cases[] = {
        {u"radio", nullptr, nullptr, nullptr, {}, 0, 0},
        {u"\u00C3\u00A9", nullptr, nullptr, nullptr, {}, 0, 0}, // "é" as the scanner stores it
        {nullptr, u"u", nullptr, nullptr, {}, 0, 0},
        {nullptr, nullptr, u"\u00C3\u008E", u"E", {}, 0, 0}, // "Î"
        {nullptr, nullptr, nullptr, nullptr, {u"POP", u"\u0440\u043E\u0441"}, 0, 0},
        {u"a", u"D", u"e", u"e", {u"o"}, 10, 10},
        {nullptr, nullptr, nullptr, nullptr, {}, 100, 0},
        {nullptr, nullptr, nullptr, nullptr, {}, 0, 5000},
    };
    for (const Case& c : cases) {
        db.ClearCriteria();
        db.m_bFindName = c.name != nullptr, db.m_findName = c.name ? c.name : u"";
        db.m_bFindCountry = c.country != nullptr, db.m_findCountry = c.country ? c.country : u"";
        db.m_bFindState = c.state != nullptr, db.m_findState = c.state ? c.state : u"";
        db.m_bFindLanguage = c.language != nullptr;
        db.m_findLanguage = c.language ? c.language : u"";
        db.m_bFindTags = !c.tags.empty();
        for (const char16_t* tag : c.tags)
            db.m_findTags.Add(CString(tag));
        db.m_bMinVotes = c.votes != 0, db.m_minVotes = c.votes;
        db.m_bMinClicks = c.clicks != 0, db.m_minClicks = c.clicks;
        std::vector<int> hits;
        const int expected = ReferenceSearch(db, hits);
        ASSERT_EQ(db.SearchStations(), expected);
        EXPECT_GT(expected, 0) << (&c - cases);
        for (size_t k = 0; k < hits.size(); ++k)
            EXPECT_TRUE(db.m_results[static_cast<int>(k)] == db.m_stations[hits[k]]);
    }
}

TEST(StationSearch, BlockwiseFindGivesWhatFindGives) {
    // Every pattern of every length at every place, in texts around the
    // eight-unit blocks, found and not found.
    std::u16string text;
    for (int i = 0; i < 40; ++i)
        text.push_back(static_cast<char16_t>(u'a' + (i * 7) % 5));
    text[33] = u'\u00E9';
    for (size_t length = 0; length <= text.size(); ++length) {
        const std::u16string_view haystack = std::u16string_view(text).substr(0, length);
        for (size_t from = 0; from < text.size(); ++from) {
            for (size_t m = 0; from + m <= text.size() && m < 12; ++m) {
                std::u16string pattern = text.substr(from, m);
                EXPECT_EQ(FindUnits(haystack, pattern), haystack.find(pattern));
                if (!pattern.empty()) {
                    pattern.back() = u'z';
                    EXPECT_EQ(FindUnits(haystack, pattern), haystack.find(pattern));
                }
            }
        }
    }
}
