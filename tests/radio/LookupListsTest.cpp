#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "bench/StationDirectoryWriter.h"
#include "radio/RadioBrowseDb.h"
#include "tests/radio/RadioTestSupport.h"
#include "tests/support/TempDir.h"

namespace {

// A start directory holding the two name files.
class ListsTest : public ::testing::Test {
protected:
    ListsTest() : m_cwd(m_dir.Path()) {}
    void WriteFiles(const std::string& countries, const std::string& languages) {
        TempDir::Write(m_dir / "RadioBrowse_CC.txt", countries);
        TempDir::Write(m_dir / "RadioBrowse_LC.txt", languages);
    }
    void AddStation(const char16_t* country, const char16_t* state, const char16_t* language,
                    const char16_t* tags) {
        m_db.m_stations.Add(MakeStation(u"n", u"u", country, state, language, tags));
    }

    TempDir m_dir;
    ScopedCurrentDir m_cwd;
    CRadioBrowseDb m_db;
};

// The lists the slow way, one linear search per occurrence, as the design
// describes them; the indexed build must give the very same tables.
CTagArray ReferenceTags(const CStationAr& stations, int minCount) {
    CTagArray all;
    auto add = [&](const CString& name) {
        for (CTag& tag : all) {
            if (tag.m_name == name) {
                ++tag.m_count;
                return;
            }
        }
        CTag tag;
        tag.m_name = name;
        tag.m_count = 1;
        all.Add(tag);
    };
    for (const CStation& station : stations) {
        CString text = station.m_tags;
        while (!text.IsEmpty()) {
            const int comma = text.Find(u',');
            if (comma < 0) {
                add(CString(text).Trim());
                text.Empty();
            } else {
                add(text.Left(comma).Trim());
                text = text.Mid(comma + 1);
            }
        }
    }
    CTagArray kept;
    for (const CTag& tag : all) {
        if (tag.m_count >= minCount)
            kept.Add(tag);
    }
    std::stable_sort(kept.begin(), kept.end(), [](const CTag& a, const CTag& b) {
        return FoldForSort(a.m_name) < FoldForSort(b.m_name);
    });
    return kept;
}

CStateArray ReferenceStates(const CStationAr& stations) {
    CStateArray states;
    for (const CStation& station : stations) {
        if (station.m_state.IsEmpty() || station.m_country.IsEmpty())
            continue;
        bool found = false;
        for (CState& state : states) {
            if (state.m_name == station.m_state && state.m_countryCode == station.m_country) {
                ++state.m_count;
                found = true;
                break;
            }
        }
        if (!found) {
            CState state;
            state.m_name = station.m_state;
            state.m_countryCode = station.m_country;
            state.m_count = 1;
            states.Add(state);
        }
    }
    std::stable_sort(states.begin(), states.end(), [](const CState& a, const CState& b) {
        const std::u16string codeA = FoldForSort(a.m_countryCode);
        const std::u16string codeB = FoldForSort(b.m_countryCode);
        return codeA != codeB ? codeA < codeB : FoldForSort(a.m_name) < FoldForSort(b.m_name);
    });
    return states;
}

} // namespace

TEST_F(ListsTest, NameFilesFollowTheirGrammarAndMayGiveNothing) {
    WriteFiles("// countries, with a comma\r\n\r\nChad,TD\r\nno comma here\r\n"
               "Odd,X,Y\r\n Spaced , S \r\nBehind,BH // comment\r\n,EMPTY\r\nLast,LS",
               "English,en\n");
    ASSERT_EQ(m_db.BuildCountryCodesArray(), 5);
    EXPECT_EQ(m_db.m_countries[0].m_name, CString(u"Chad"));
    EXPECT_EQ(m_db.m_countries[0].m_code, CString(u"TD"));
    EXPECT_EQ(m_db.m_countries[1].m_code, CString(u"X,Y"));
    EXPECT_EQ(m_db.m_countries[2].m_name, CString(u" Spaced "));
    EXPECT_EQ(m_db.m_countries[2].m_code, CString(u" S "));
    EXPECT_EQ(m_db.m_countries[3].m_name, CString());
    EXPECT_EQ(m_db.m_countries[3].m_code, CString(u"EMPTY"));
    EXPECT_EQ(m_db.m_countries[3].m_used, 0);
    EXPECT_EQ(m_db.m_countries[4].m_code, CString(u"LS"));
    EXPECT_EQ(m_db.BuildLanguageCodesArray(), 1);
    // Missing files, or files without a record, give nothing.
    std::filesystem::remove(m_dir / "RadioBrowse_CC.txt");
    std::filesystem::remove(m_dir / "RadioBrowse_LC.txt");
    EXPECT_EQ(m_db.BuildCountryCodesArray(), 0);
    EXPECT_EQ(m_db.BuildLanguageCodesArray(), 0);
    WriteFiles("// only a comment, here\n", "no comma\n");
    EXPECT_EQ(m_db.BuildCountryCodesArray(), 0);
    EXPECT_EQ(m_db.BuildLanguageCodesArray(), 0);
}

TEST_F(ListsTest, TheShippedFilesAreLargeEnoughAndReadAsUtf8) {
    const std::string deploy = std::string(getenv("ORVEX_SOURCE_DIR")) + "/deploy/";
    WriteFiles(TempDir::Read(deploy + "RadioBrowse_CC.txt"),
               TempDir::Read(deploy + "RadioBrowse_LC.txt"));
    EXPECT_GE(m_db.BuildCountryCodesArray(), RB_MIN_COUNTRIES);
    EXPECT_GE(m_db.BuildLanguageCodesArray(), RB_MIN_LANGUAGES);
    bool aland = false;
    for (const CCountryCode& c : m_db.m_countries) {
        EXPECT_EQ(c.m_code.GetLength(), 2);
        aland |= c.m_name == CString(u"\u00C5land Islands") && c.m_code == CString(u"AX");
    }
    EXPECT_TRUE(aland);
    for (const CLanguageCode& l : m_db.m_languages)
        EXPECT_EQ(l.m_code.GetLength(), 2);
}

TEST_F(ListsTest, CountryCodesAreMarkedExactlyOnce) {
    WriteFiles("Chad,TD\nChad again,TD\nGermany,DE\nFrance,FR\n", "");
    AddStation(u"TD", u"", u"", u"");
    AddStation(u"TD", u"", u"", u"");
    AddStation(u"Germany", u"", u"", u"");
    AddStation(u"fr", u"", u"", u"");
    ASSERT_EQ(m_db.BuildCountryCodesArray(), 4);
    EXPECT_EQ(m_db.SetCountryCodesUsed(), 1);
    EXPECT_EQ(m_db.m_countries[0].m_used, 1);
    EXPECT_EQ(m_db.m_countries[1].m_used, 0);
    EXPECT_EQ(m_db.m_countries[2].m_used, 0);
    EXPECT_EQ(m_db.m_countries[3].m_used, 0);
    EXPECT_EQ(m_db.SetCountryCodesUsed(), 0);
}

TEST_F(ListsTest, TagsAreSplitTrimmedCountedAndNeedEightyStations) {
    AddStation(u"", u"", u"", u" rock , pop,rock");
    AddStation(u"", u"", u"", u"jazz,");
    AddStation(u"", u"", u"", u",Rock,,jazz");
    ASSERT_EQ(m_db.BuildTagArray(1), 5);
    // Sorted without case; "" from the leading comma and from ",,".
    const std::vector<std::pair<CString, int>> expected = {{CString(), 2},
                                                           {CString(u"jazz"), 2},
                                                           {CString(u"pop"), 1},
                                                           {CString(u"rock"), 2},
                                                           {CString(u"Rock"), 1}};
    ASSERT_EQ(m_db.m_tags.GetSize(), 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(m_db.m_tags[i].m_name, expected[i].first) << i;
        EXPECT_EQ(m_db.m_tags[i].m_count, expected[i].second) << i;
    }
    EXPECT_EQ(m_db.BuildTagArray(2), 3);
    EXPECT_EQ(m_db.BuildTagArray(3), 0);
    // A tag seen 79 times goes, one seen 80 times stays.
    for (int i = 0; i < 80; ++i)
        AddStation(u"", u"", u"", i < 79 ? u"often,rare" : u"often");
    ASSERT_EQ(m_db.BuildTagArray(RB_TAG_MIN_COUNT), 1);
    EXPECT_EQ(m_db.m_tags[0].m_name, CString(u"often"));
    EXPECT_EQ(m_db.m_tags[0].m_count, 80);
}

TEST_F(ListsTest, StatesArePairsWithCountryCodesSortedAndCounted) {
    AddStation(u"US", u"Texas", u"", u"");
    AddStation(u"MX", u"Texas", u"", u"");
    AddStation(u"US", u"texas", u"", u"");
    AddStation(u"US", u"Texas", u"", u"");
    AddStation(u"US", u" ", u"", u"");
    AddStation(u"", u"Nowhere", u"", u"");
    AddStation(u"de", u"Berlin", u"", u"");
    ASSERT_EQ(m_db.BuildStateArray(), 5);
    EXPECT_EQ(m_db.m_states[0].m_countryCode, CString(u"de"));
    EXPECT_EQ(m_db.m_states[1].m_countryCode, CString(u"MX"));
    EXPECT_EQ(m_db.m_states[2].m_name, CString(u" "));
    EXPECT_EQ(m_db.m_states[3].m_name, CString(u"Texas"));
    EXPECT_EQ(m_db.m_states[3].m_count, 2);
    EXPECT_EQ(m_db.m_states[4].m_name, CString(u"texas"));
    m_db.m_stations.RemoveAll();
    AddStation(u"US", u"", u"", u"");
    EXPECT_EQ(m_db.BuildStateArray(), 0);
}

TEST_F(ListsTest, LanguageNamesBecomeCodesAndCodesAreMarked) {
    WriteFiles("", "English,en\nGerman,de\nMalay,ms\nMalayalam,ml\nEnglish too,en\n");
    ASSERT_EQ(m_db.BuildLanguageCodesArray(), 5);
    AddStation(u"", u"", u"en", u"");
    AddStation(u"", u"", u"ENGLISH", u"");
    AddStation(u"", u"", u"swiss german", u"");
    AddStation(u"", u"", u"malayalam", u"");
    AddStation(u"", u"", u"de,en", u"");
    AddStation(u"", u"", u"xx", u"");
    AddStation(u"", u"", u"german english", u"");
    AddStation(u"", u"", u"", u"");
    CString code;
    EXPECT_EQ(m_db.FindLanguageCode(CString(u"de"), code), 2);
    EXPECT_TRUE(code.IsEmpty());
    EXPECT_EQ(m_db.FindLanguageCode(CString(u"xx"), code), 0);
    m_db.ResolveLanguageCodes();
    const char16_t* expected[] = {u"en", u"en", u"de", u"ms", u"de,en", u"xx", u"en", u""};
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(m_db.m_stations[i].m_language, CString(expected[i])) << i;
    EXPECT_EQ(m_db.SetLanguageCodesUsed(), 3);
    EXPECT_EQ(m_db.m_languages[0].m_used, 1);
    EXPECT_EQ(m_db.m_languages[3].m_used, 0);
    EXPECT_EQ(m_db.m_languages[4].m_used, 0);
}

TEST_F(ListsTest, IndexedListsEqualTheLinearOnes) {
    const std::string sample = TempDir::Read(std::string(getenv("ORVEX_SOURCE_DIR")) +
                                             "/fixtures/radio-stations-sample-500.xml");
    StationDirectoryWriter writer(7);
    TempDir::Write(m_dir / "big.xml", writer.Document(4000));
    TempDir::Write(m_dir / "sample.xml", sample);
    for (const char* file : {"sample.xml", "big.xml"}) {
        CString error;
        ASSERT_GT(m_db.ParseStationFile(m_dir.File(file), &error), 0);
        const CTagArray tags = ReferenceTags(m_db.m_stations, 2);
        const CStateArray states = ReferenceStates(m_db.m_stations);
        ASSERT_EQ(m_db.BuildTagArray(2), tags.GetSize());
        EXPECT_TRUE(m_db.m_tags == tags) << file;
        ASSERT_EQ(m_db.BuildStateArray(), states.GetSize());
        EXPECT_TRUE(m_db.m_states == states) << file;
    }
}
