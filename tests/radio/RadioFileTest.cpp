#include <gtest/gtest.h>

#include "radio/RadioBrowseDb.h"
#include "tests/radio/RadioTestSupport.h"
#include "tests/support/FileBytes.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

using namespace filebytes;

namespace {

void FillSmall(CRadioBrowseDb& db) {
    db.m_stations.Add(MakeStation(u"A", u"u", u"US", u"", u"en", u"", 5, -1));
    CCountryCode country;
    country.m_name = u"Chad";
    country.m_code = u"TD";
    country.m_used = 1;
    db.m_countries.Add(country);
    CTag tag;
    tag.m_name = u"pop";
    tag.m_count = 80;
    db.m_tags.Add(tag);
    CState state;
    state.m_name = u"Ohio";
    state.m_countryCode = u"US";
    state.m_count = 2;
    db.m_states.Add(state);
    CLanguageCode language;
    language.m_name = u"English";
    language.m_code = u"en";
    db.m_languages.Add(language);
}

// The file of FillSmall, from the format tables: schema, then stations,
// countries, tags, states, languages, each a count and its records.
std::string SmallFileBytes() {
    return I32(1) + I32(1) + Wide(u"A") + Wide(u"u") + Wide(u"US") + Wide(u"") + Wide(u"en") +
           Wide(u"") + I32(5) + I32(-1) + I32(1) + Wide(u"Chad") + Wide(u"TD") + I32(1) + I32(1) +
           Wide(u"pop") + I32(80) + I32(1) + Wide(u"Ohio") + Wide(u"US") + I32(2) + I32(1) +
           Wide(u"English") + Wide(u"en") + I32(0);
}

bool SameTables(const CRadioBrowseDb& a, const CRadioBrowseDb& b) {
    return a.m_stations == b.m_stations && a.m_countries == b.m_countries && a.m_tags == b.m_tags &&
           a.m_states == b.m_states && a.m_languages == b.m_languages;
}

} // namespace

TEST(RadioBrowseFile, GoldenBytesBothWaysAndEveryFieldBack) {
    TempDir dir;
    CRadioBrowseDb empty;
    ASSERT_TRUE(SaveRadioBrowseFile(empty, dir.File("RadioBrowse.dat")));
    EXPECT_EQ(TempDir::Read(dir / "RadioBrowse.dat"),
              I32(1) + I32(0) + I32(0) + I32(0) + I32(0) + I32(0));
    CRadioBrowseDb db;
    FillSmall(db);
    ASSERT_TRUE(SaveRadioBrowseFile(db, dir.File("RadioBrowse.dat")));
    EXPECT_EQ(TempDir::Read(dir / "RadioBrowse.dat"), SmallFileBytes());

    // The reader takes the golden bytes, also with a single-byte string.
    std::string bytes = SmallFileBytes();
    bytes.replace(8, Wide(u"A").size(), Narrow("A"));
    TempDir::Write(dir / "narrow.dat", bytes);
    CRadioBrowseDb loaded;
    MessageBoxRecorder boxes;
    ASSERT_TRUE(LoadRadioBrowseFile(loaded, dir.File("narrow.dat")));
    EXPECT_TRUE(SameTables(db, loaded));

    db.m_stations.Add(MakeStation(u"!!Playlist: \u00C3\u00A9 x", u"http://h/a.pls", u"Germany",
                                  u" ", u"de,en", u"a,b", -7, 2147483647));
    ASSERT_TRUE(SaveRadioBrowseFile(db, dir.File("RadioBrowse.dat")));
    ASSERT_TRUE(LoadRadioBrowseFile(loaded, dir.File("RadioBrowse.dat")));
    EXPECT_TRUE(SameTables(db, loaded));
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST(RadioBrowseFile, BadFilesReportAndKeepWhatWasRead) {
    TempDir dir;
    std::string bytes = SmallFileBytes();
    bytes[0] = 2;
    TempDir::Write(dir / "schema2.dat", bytes);
    TempDir::Write(dir / "empty.dat", "");
    MessageBoxRecorder boxes;
    CRadioBrowseDb db;
    EXPECT_FALSE(LoadRadioBrowseFile(db, dir.File("schema2.dat")));
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text, CString(u"RB data wrong schema."));
    EXPECT_EQ(boxes.Boxes()[0].caption, CString(u"Orvex Application"));
    EXPECT_EQ(boxes.Boxes()[0].type, MB_ICONINFORMATION);
    EXPECT_TRUE(db.m_stations.IsEmpty());
    // An empty file fails without a word, a missing one with the report.
    boxes.Clear();
    EXPECT_FALSE(LoadRadioBrowseFile(db, dir.File("empty.dat")));
    EXPECT_TRUE(boxes.Boxes().empty());
    EXPECT_FALSE(LoadRadioBrowseFile(db, dir.File("none.dat")));
    EXPECT_EQ(boxes.Boxes().size(), 1u);

    // Cut inside the tag section: stations and countries stand, tags don't.
    bytes = SmallFileBytes();
    TempDir::Write(dir / "cut.dat", bytes.substr(0, bytes.find(Wide(u"pop")) + 3));
    boxes.Clear();
    EXPECT_FALSE(LoadRadioBrowseFile(db, dir.File("cut.dat")));
    EXPECT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(db.m_stations.GetSize(), 1);
    EXPECT_EQ(db.m_countries.GetSize(), 1);
    EXPECT_TRUE(db.m_tags.IsEmpty());
}

TEST(RadioBrowseFile, HugeCountsCostNoMoreThanTheFileHolds) {
    TempDir dir;
    TempDir::Write(dir / "RadioBrowse.dat", I32(1) + I32(0x7FFFFFFF) + Wide(u"A"));
    MessageBoxRecorder boxes;
    CRadioBrowseDb db;
    EXPECT_FALSE(LoadRadioBrowseFile(db, dir.File("RadioBrowse.dat")));
    EXPECT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_TRUE(db.m_stations.IsEmpty());
}

TEST(RadioBrowseDb, AssignTablesCopiesTheFiveTablesOnly) {
    CRadioBrowseDb source;
    FillSmall(source);
    source.m_bFindName = TRUE;
    source.m_results.AddStation(0);
    CRadioBrowseDb target;
    target.m_stations.Add(MakeStation(u"old", u"o", u"", u"", u"", u""));
    target.AssignTables(source);
    EXPECT_TRUE(SameTables(source, target));
    EXPECT_FALSE(target.m_bFindName);
    EXPECT_TRUE(target.m_results.IsEmpty());
    target.AssignTables(target);
    EXPECT_TRUE(SameTables(source, target));
    target.ClearTables();
    EXPECT_TRUE(SameTables(CRadioBrowseDb(), target));
}

TEST(RadioBrowseDb, SetUsedMarksOnlyTheFirstRecordOfACode) {
    CCountryCodeArray countries;
    for (const char16_t* name : {u"One", u"Two"}) {
        CCountryCode c;
        c.m_name = name;
        c.m_code = u"XX";
        countries.Add(c);
    }
    EXPECT_TRUE(countries.SetUsed(CString(u"XX")));
    EXPECT_FALSE(countries.SetUsed(CString(u"XX")));
    EXPECT_FALSE(countries.SetUsed(CString(u"xx")));
    EXPECT_EQ(countries[0].m_used, 1);
    EXPECT_EQ(countries[1].m_used, 0);
}

TEST(RadioBrowseDb, FindNoCaseComparesInUpperCase) {
    CRadioBrowseDb db;
    EXPECT_EQ(db.FindNoCase(CString(u"Radio Paradise"), CString(u"PARA")), 6);
    EXPECT_EQ(db.FindNoCase(CString(u"caf\u00E9"), CString(u"\u00C9")), 3);
    EXPECT_EQ(db.FindNoCase(CString(u"abc"), CString(u"x")), -1);
    EXPECT_EQ(db.FindNoCase(CString(u"abc"), CString()), 0);
}
