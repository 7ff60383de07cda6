#include <gtest/gtest.h>

#include <algorithm>

#include "bench/StationDirectoryWriter.h"
#include "radio/RadioBrowseDb.h"
#include "radio/StationText.h"
#include "radio/TextFind.h"
#include "tests/radio/RadioTestSupport.h"
#include "tests/support/TempDir.h"

namespace {

// Text as the scanner stores it: each UTF-8 byte one character.
CString Stored(const char* utf8) {
    std::u16string text;
    for (const char* p = utf8; *p; ++p)
        text.push_back(static_cast<unsigned char>(*p));
    return CString(std::move(text));
}

class SearchTest : public ::testing::Test {
protected:
    SearchTest() {
        Add("Radio Paradise", "US", "California", "en", "rock,eclectic", 50, 900);
        Add("Caf\xC3\xA9 Jazz", "FR", "\xC3\x8Ele-de-France", "fr", "jazz,lounge", 10, 20);
        Add("United One", "United States", "Ohio", "english", "", 5, 5);
        Add("Rockabilly Hour", "DE", "Berlin", "de,en", "rockabilly", 10, 300);
        Add("News 24", "GB", "", "en", "news,talk", 0, 0);
        Add("Antenne M\xC3\x9CNCHEN", "DE", "Bayern", "de",
            "\xC3\x9C"
            "bersicht",
            1, 1);
        Add("\xE6\x9D\xB1\xE4\xBA\xAC\xE3\x83\xA9\xE3\x82\xB8\xE3\x82\xAA", "JP", "", "ja", "", 2,
            2);
    }
    void Add(const char* name, const char* country, const char* state, const char* language,
             const char* tags, int votes, int clicks) {
        CStation s;
        s.m_name = Stored(name);
        s.m_country = Stored(country);
        s.m_state = Stored(state);
        s.m_language = Stored(language);
        s.m_tags = Stored(tags);
        s.m_votes = votes;
        s.m_clicks = clicks;
        m_db.m_stations.Add(s);
    }
    std::vector<CString> Names() const {
        std::vector<CString> names;
        for (const CStation& s : m_db.m_results)
            names.push_back(StationText(s.m_name));
        return names;
    }
    std::vector<CString> FindName(const char16_t* words) {
        m_db.ClearCriteria();
        m_db.m_bFindName = TRUE;
        m_db.m_findName = words;
        m_db.SearchStations();
        return Names();
    }

    CRadioBrowseDb m_db;
};

} // namespace

TEST_F(SearchTest, TextCriteriaAreSubstringsOfTheDecodedTextWithoutCase) {
    m_db.m_minVotes = 5; // a value without its flag is no criterion
    EXPECT_EQ(m_db.SearchStations(), 0);
    EXPECT_EQ(FindName(u"RADIO"), std::vector<CString>{u"Radio Paradise"});
    EXPECT_EQ(FindName(u"caf\u00C9"), std::vector<CString>{u"Caf\u00E9 Jazz"});
    EXPECT_EQ(FindName(u"m\u00FCnchen"), std::vector<CString>{u"Antenne M\u00DCNCHEN"});
    // A letter finds only itself, never a byte of another script's letter.
    EXPECT_TRUE(FindName(u"\u00C1").empty());
    EXPECT_TRUE(FindName(u"\u00E3").empty());
    EXPECT_EQ(FindName(u"\u30E9\u30B8\u30AA").size(), 1u);
    // The whole text is one substring, not words.
    EXPECT_TRUE(FindName(u"one radio").empty());

    // A criterion taken from the tables, in the stored form, finds as well.
    m_db.ClearCriteria();
    m_db.m_bFindState = TRUE;
    m_db.m_findState = Stored("\xC3\x8Ele");
    EXPECT_EQ(m_db.SearchStations(), 1);
    m_db.m_findState = u"\u00EELE";
    EXPECT_EQ(m_db.SearchStations(), 1);
}

TEST_F(SearchTest, CodesTagsAndNumbersAllMustHold) {
    m_db.m_bFindCountry = TRUE;
    m_db.m_findCountry = u"ta"; // a code is a substring too: in "United States"
    EXPECT_EQ(m_db.SearchStations(), 1);
    m_db.ClearCriteria();
    m_db.m_bFindLanguage = TRUE;
    m_db.m_findLanguage = u"en";
    EXPECT_EQ(m_db.SearchStations(), 4); // en, english, de,en, en

    m_db.ClearCriteria();
    m_db.m_bFindTags = TRUE;
    m_db.m_findTags.Add(CString(u"ROCK"));
    EXPECT_EQ(m_db.SearchStations(), 2); // inside longer tags too
    m_db.m_findTags.Add(CString(u"\u00FCbersicht"));
    EXPECT_EQ(m_db.SearchStations(), 3); // any one of them
    m_db.m_findTags.RemoveAll();
    m_db.m_findTags.Add(CString());
    EXPECT_EQ(m_db.SearchStations(), 5); // never in no tags at all

    m_db.ClearCriteria();
    m_db.m_bMinVotes = TRUE;
    m_db.m_minVotes = 10;
    m_db.m_bMinClicks = TRUE;
    m_db.m_minClicks = 300;
    EXPECT_EQ(m_db.SearchStations(), 2);
    m_db.m_bFindState = TRUE;
    m_db.m_findState = u"BERL";
    EXPECT_EQ(m_db.SearchStations(), 1);
    EXPECT_EQ(Names(), std::vector<CString>{u"Rockabilly Hour"});
    m_db.ClearSearch();
    EXPECT_EQ(m_db.CountCriteria(), 0);
    EXPECT_TRUE(m_db.m_results.IsEmpty());
    EXPECT_TRUE(m_db.m_findState.IsEmpty());

    // Changed tables are searched afresh.
    m_db.m_bFindName = TRUE;
    m_db.m_findName = u"radio";
    CRadioBrowseDb other;
    other.m_stations.Add(MakeStation(u"Radio A", u"u", u"", u"", u"", u""));
    other.m_stations.Add(MakeStation(u"Radio B", u"u", u"", u"", u"", u""));
    m_db.AssignTables(other);
    EXPECT_EQ(m_db.SearchStations(), 2);
    m_db.ClearTables();
    EXPECT_EQ(m_db.SearchStations(), 0);
}

TEST_F(SearchTest, SortsTheDecodedNamesWithoutCaseAndByNumbersBothWays) {
    Add("\xC3\x91"
        "b",
        "", "", "", "", 0, 0); // "Ñb"
    Add("\xC3\xB1"
        "a",
        "", "", "", "", 0, 0); // "ña"
    m_db.m_bMinVotes = TRUE;
    m_db.m_minVotes = 0;
    ASSERT_EQ(m_db.SearchStations(), 9);
    m_db.SortResults(TRUE, TRUE, FALSE, FALSE);
    EXPECT_EQ(Names(),
              (std::vector<CString>{u"Antenne M\u00DCNCHEN", u"Caf\u00E9 Jazz", u"News 24",
                                    u"Radio Paradise", u"Rockabilly Hour", u"United One",
                                    u"\u00F1a", u"\u00D1b", u"\u6771\u4EAC\u30E9\u30B8\u30AA"}));
    m_db.SortResults(FALSE, FALSE, TRUE, FALSE);
    // Equal votes in descending order fall back to names descending.
    const std::vector<CString> byVotes = Names();
    EXPECT_EQ(std::vector<CString>(byVotes.begin(), byVotes.begin() + 4),
              (std::vector<CString>{u"Radio Paradise", u"Rockabilly Hour", u"Caf\u00E9 Jazz",
                                    u"United One"}));
    m_db.SortResults(TRUE, FALSE, FALSE, TRUE);
    EXPECT_EQ(Names().back(), CString(u"Radio Paradise"));
    const std::vector<CString> before = Names();
    m_db.SortResults(TRUE, FALSE, FALSE, FALSE);
    EXPECT_EQ(Names(), before);
}

TEST(StationSearch, TheIndexedSearchEqualsAPlainScanOfTheDecodedText) {
    TempDir dir;
    TempDir::Write(dir / "d.xml", StationDirectoryWriter(11).Document(3000));
    CRadioBrowseDb db;
    CString error;
    ASSERT_GT(db.ParseStationFile(dir.File("d.xml"), &error), 0);
    auto folded = [](const CString& text) {
        std::u16string out = StationText(text).str();
        for (char16_t& unit : out)
            unit = FoldCaseUnit(unit);
        return out;
    };
    auto occurs = [&](const CString& field, const CString& pattern) {
        return folded(field).find(folded(pattern)) != std::u16string::npos;
    };
    const char16_t* names[] = {u"radio", u"CAF\u00C9", u"\u0420\u0410\u0414\u0418\u041E", u"\u00F6",
                               u"ra"};
    const char16_t* states[] = {u"\u00EEle", u"BER", u"e"};
    for (const char16_t* name : names) {
        for (const char16_t* state : states) {
            db.ClearCriteria();
            db.m_bFindName = TRUE, db.m_findName = name;
            db.m_bFindState = TRUE, db.m_findState = state;
            db.m_bFindTags = TRUE, db.m_findTags.Add(CString(u"POP"));
            std::vector<int> hits;
            for (int i = 0; i < db.m_stations.GetSize(); ++i) {
                const CStation& s = db.m_stations[i];
                if (occurs(s.m_name, name) && occurs(s.m_state, state) && !s.m_tags.IsEmpty() &&
                    occurs(s.m_tags, u"POP"))
                    hits.push_back(i);
            }
            ASSERT_EQ(db.SearchStations(), static_cast<int>(hits.size()));
            for (size_t k = 0; k < hits.size(); ++k)
                EXPECT_TRUE(db.m_results[static_cast<int>(k)] == db.m_stations[hits[k]]);
        }
    }
}

TEST(StationSearch, TextDecodesValidSequencesAndKeepsTheRest) {
    EXPECT_EQ(StationText(Stored("Caf\xC3\xA9 \xF0\x9F\x8E\xB5 \xE2\x82\xAC")),
              CString(u"Caf\u00E9 \U0001F3B5 \u20AC"));
    // Latin-1 bytes, overlong forms, surrogates and cut sequences stand for
    // themselves; decoded text stays as it is.
    EXPECT_EQ(StationText(Stored("caf\xE9 \xC0\xAF \xED\xA0\x80 \xE2\x82")),
              CString(u"caf\u00E9 \u00C0\u00AF \u00ED\u00A0\u0080 \u00E2\u0082"));
    EXPECT_EQ(StationText(CString(u"M\u00FCnchen \u6771\u4EAC")),
              CString(u"M\u00FCnchen \u6771\u4EAC"));
    // Simple case folding, not upper-casing: sigma, Kelvin and dotless i.
    EXPECT_EQ(FoldedStationText(u"\u03A3\u03C2\u212A\u0131I\u1E9E"), u"\u03C3\u03C3k\u0131i\u00DF");
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
