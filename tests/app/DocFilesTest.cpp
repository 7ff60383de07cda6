#include <gtest/gtest.h>

#include "tests/app/DocFixtures.h"
#include "tests/contents/TreeBuilder.h"
#include "tests/support/FileBytes.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

using namespace filebytes;

namespace {

const CString kSchemaRefused(u"User data file could not be read.");

// A document with a tree of two roots and three items, one a favourite.
void FillLibrary(COrvexDoc& doc) {
    const CNodeArray jazz = Ensure(doc.m_contents, {u"Music", u"Jazz"});
    doc.m_contents.AddItem(jazz, MakeItem(u"Blue", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}, TRUE),
                           FALSE);
    doc.m_contents.AddItem(jazz, MakeItem(u"Alpha", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}), FALSE);
    const CNodeArray news = Ensure(doc.m_contents, {u"News"}, MEDIA_AUDIO_URL);
    doc.m_contents.AddItem(news, MakeItem(u"World", MEDIA_AUDIO_URL, {u"News"}), FALSE);
}

} // namespace

TEST(SaveContents, WritesTheSmallExampleAndAnEmptyTreeAsEightBytes) {
    TempDir dir;
    COrvexDoc doc;
    MessageBoxRecorder boxes;
    ASSERT_TRUE(doc.SaveContents(dir.File("empty.dat")));
    EXPECT_EQ(TempDir::Read(dir / "empty.dat"), std::string("\x01\0\0\0\0\0\0\0", 8));

    Ensure(doc.m_contents, {u"A"}, MEDIA_AUDIO_FILE);
    ASSERT_TRUE(doc.SaveContents(dir.File("small.dat")));
    EXPECT_EQ(TempDir::Read(dir / "small.dat"), SmallContentsFile());
    EXPECT_TRUE(boxes.Boxes().empty());
    EXPECT_FALSE(doc.m_bContentsChanged);
}

TEST(SaveContents, AFailedSaveLeavesEveryLibraryFileByteForByte) {
    TempDir dir;
    COrvexDoc doc;
    doc.m_dataFolder = dir.Str();
    FillLibrary(doc);
    CStation station;
    station.m_name = u"Radio";
    doc.m_radioDb.m_stations.Add(station);
    ASSERT_TRUE(doc.SaveContents(dir.File("OrvexContents.dat")));
    ASSERT_TRUE(doc.SaveUserData(dir.File("OrvexUser.dat")));
    ASSERT_TRUE(doc.SaveRadioDb());
    const std::string contents = TempDir::Read(dir / "OrvexContents.dat");
    const std::string user = TempDir::Read(dir / "OrvexUser.dat");
    const std::string radio = TempDir::Read(dir / "RadioBrowse.dat");

    const CNodeArray news = MakePath({{u"News", 1}});
    for (int i = 0; i < 500; ++i) {
        doc.m_contents.AddItem(news, MakeItem(u"World", MEDIA_AUDIO_URL, {u"News"}), FALSE);
        doc.m_radioDb.m_stations.Add(station);
    }
    doc.m_videoFolder = CString(u"/a/folder/long/enough/to/pass/the/limit");
    MessageBoxRecorder boxes;
    {
        // Smaller than each new file: every save fails half way.
        ScopedFileSizeLimit limit(user.size() - 20);
        EXPECT_FALSE(doc.SaveContents(dir.File("OrvexContents.dat")));
        EXPECT_FALSE(doc.SaveUserData(dir.File("OrvexUser.dat")));
        EXPECT_FALSE(doc.SaveRadioDb());
    }
    EXPECT_EQ(TempDir::Read(dir / "OrvexContents.dat"), contents);
    EXPECT_EQ(TempDir::Read(dir / "OrvexUser.dat"), user);
    EXPECT_EQ(TempDir::Read(dir / "RadioBrowse.dat"), radio);
    // The user data file stays silent about a failed write, as ever.
    EXPECT_EQ(boxes.Texts(),
              (std::vector<CString>{
                  CString(u"Disk full while accessing ") + dir.File("OrvexContents.dat") + u".",
                  CString(u"Disk full while accessing ") + dir.File("RadioBrowse.dat") + u"."}));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 3);

    // A folder that isn't there: the report names the file.
    boxes.Clear();
    EXPECT_FALSE(doc.SaveContents(dir.File("no/such/folder/c.dat")));
    EXPECT_EQ(boxes.Texts(),
              std::vector<CString>{dir.File("no/such/folder/c.dat") + u" was not found."});
}

// The round trip through a restart is in RestartTest; here the panes are
// told tree then list, and a refused or cut file keeps what it should.
TEST(LoadContents, WhatEachFileLeavesAndWhomItTells) {
    TempDir dir;
    COrvexDoc saved;
    FillLibrary(saved);
    ASSERT_TRUE(saved.SaveContents(dir.File("full.dat")));
    const std::string full = TempDir::Read(dir / "full.dat");
    std::string schema2 = SmallContentsFile();
    schema2[0] = 2;
    TempDir::Write(dir / "schema2.dat", schema2);
    TempDir::Write(dir / "cut.dat", full.substr(0, full.size() - 2));
    TempDir::Write(dir / "short.dat", std::string("\x01\0", 2));
    TempDir::Write(dir / "tree.dat", std::string("\x01\0\0\0\0\0\0\0", 8));
    TempDir::Write(dir / "zero.dat", "");

    COrvexDoc doc;
    RecordingView view;
    doc.AddView(&view);
    MessageBoxRecorder boxes;
    ASSERT_TRUE(doc.LoadContents(dir.File("full.dat")));
    ASSERT_TRUE(doc.LoadContents(dir.File("full.dat"))); // replaces; nothing merges
    EXPECT_TRUE(boxes.Boxes().empty());
    EXPECT_EQ(view.Numbers(), (std::vector<int>{HINT_TREE, HINT_LIST, HINT_TREE, HINT_LIST}));
    EXPECT_TRUE(doc.m_bFavoritesView);
    ASSERT_EQ(doc.m_favorites.GetSize(), 1);
    EXPECT_EQ(doc.m_favorites[0].m_name, CString(u"Blue"));
    EXPECT_FALSE(doc.m_bContentsChanged); // loading is no change
    EXPECT_EQ(ChildNames(doc.m_contents), CString(u"Music,News"));

    // Refused, missing, empty or too short: the tree stays.
    view.Clear();
    EXPECT_FALSE(doc.LoadContents(dir.File("schema2.dat")));
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text, kSchemaRefused);
    EXPECT_EQ(boxes.Boxes()[0].caption, CString(u"Orvex Application"));
    EXPECT_EQ(boxes.Boxes()[0].type, MB_OK | MB_ICONINFORMATION);
    EXPECT_EQ(boxes.Boxes()[0].owner, nullptr);
    boxes.Clear();
    EXPECT_FALSE(doc.LoadContents(dir.File("missing.dat")));
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_NE(boxes.Texts()[0].Find(CString(u"missing.dat")), -1);
    EXPECT_FALSE(doc.LoadContents(dir.File("zero.dat")));
    EXPECT_TRUE(view.m_hints.empty());
    boxes.Clear();
    EXPECT_FALSE(doc.LoadContents(dir.File("short.dat")));
    EXPECT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(ChildNames(doc.m_contents), CString(u"Music,News"));

    // Cut off: what was read is kept, and shown.
    view.Clear();
    boxes.Clear();
    EXPECT_FALSE(doc.LoadContents(dir.File("cut.dat")));
    ASSERT_EQ(boxes.Boxes().size(), 1u); // the archive's report
    EXPECT_NE(boxes.Texts()[0].Find(CString(u"cut.dat")), -1);
    EXPECT_EQ(ChildNames(doc.m_contents), CString(u"Music"));
    EXPECT_EQ(view.Numbers(), (std::vector<int>{HINT_TREE, HINT_LIST}));
    EXPECT_EQ(doc.m_favorites.GetSize(), 1);

    // A valid empty tree replaces it, but nobody is told.
    view.Clear();
    EXPECT_FALSE(doc.LoadContents(dir.File("tree.dat")));
    EXPECT_TRUE(doc.m_contents.m_topics.IsEmpty());
    EXPECT_TRUE(view.m_hints.empty());
}

TEST(UserData, SavesTheFieldsAtTheirOffsets) {
    TempDir dir;
    COrvexDoc doc;
    memset(&doc.m_rightFont, 0x11, sizeof doc.m_rightFont);
    memset(&doc.m_leftFont, 0x22, sizeof doc.m_leftFont);
    doc.m_rightFont.lfHeight = -15;
    SetFaceName(doc.m_leftFont, CString(u"DejaVu Sans"));
    doc.m_lavSetup.m_bWmaPro = FALSE;
    doc.m_videoFolder = u"/home/v";
    doc.m_contentsFolder = u"/home/c";
    ASSERT_TRUE(doc.SaveUserData(dir.File("u.dat")));
    const std::string bytes = TempDir::Read(dir / "u.dat");
    const std::string right(reinterpret_cast<const char*>(&doc.m_rightFont), 92);
    const std::string left(reinterpret_cast<const char*>(&doc.m_leftFont), 92);
    EXPECT_EQ(bytes.substr(4, 4), I32(-15)); // lfHeight of the right font leads
    EXPECT_EQ(bytes.substr(96 + 28, 4), std::string("D\0e\0", 4)); // lfFaceName at 28
    EXPECT_EQ(bytes, I32(2) + right + left + I32(1) + I32(0) + I32(1) + I32(1) +
                         Wide(CString(u"/home/v")) + Wide(CString(u"/home/c")));

    COrvexDoc back;
    ASSERT_TRUE(back.LoadUserData(dir.File("u.dat")));
    EXPECT_EQ(memcmp(&back.m_rightFont, &doc.m_rightFont, 92), 0);
    EXPECT_EQ(memcmp(&back.m_leftFont, &doc.m_leftFont, 92), 0);
    EXPECT_FALSE(back.m_lavSetup.m_bWmaPro);
    EXPECT_TRUE(back.m_lavSetup.m_bStereoSpeakers);
    EXPECT_EQ(back.m_videoFolder, CString(u"/home/v"));
    EXPECT_EQ(back.m_contentsFolder, CString(u"/home/c"));
    EXPECT_FALSE(back.m_bContentsChanged);
}

TEST(UserData, OlderSchemasEndBehindTheLavChoices) {
    TempDir dir;
    const std::string right(92, '\x33');
    const std::string left(92, '\x44');
    const std::string body = right + left + I32(0) + I32(1) + I32(0) + I32(1);
    for (int32_t schema : {1, 0, -7}) {
        TempDir::Write(dir / "u1.dat", I32(schema) + body);
        ASSERT_EQ(TempDir::Read(dir / "u1.dat").size(), 204u);
        COrvexDoc doc;
        doc.m_videoFolder = u"kept";
        ASSERT_TRUE(doc.LoadUserData(dir.File("u1.dat"))) << schema;
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(&doc.m_rightFont), 92), right);
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(&doc.m_leftFont), 92), left);
        EXPECT_FALSE(doc.m_lavSetup.m_bWma2);
        EXPECT_EQ(doc.m_videoFolder, CString(u"kept"));
        // Saving writes schema 2 with two folder strings, empty ones as FF FE FF 00.
        doc.m_videoFolder.Empty();
        ASSERT_TRUE(doc.SaveUserData(dir.File("u2.dat")));
        EXPECT_EQ(TempDir::Read(dir / "u2.dat"),
                  I32(2) + body + std::string("\xFF\xFE\xFF\x00\xFF\xFE\xFF\x00", 8));
    }
}

TEST(UserData, NewerEmptyMissingOrCutFilesNeverSpeak) {
    TempDir dir;
    MessageBoxRecorder boxes;
    COrvexDoc doc;
    const LOGFONTW menuFont = doc.m_rightFont;

    TempDir::Write(dir / "u3.dat", I32(3) + std::string(200, '\x55'));
    EXPECT_FALSE(doc.LoadUserData(dir.File("u3.dat")));
    EXPECT_EQ(memcmp(&doc.m_rightFont, &menuFont, 92), 0);
    EXPECT_TRUE(doc.m_lavSetup.m_bWma2);

    TempDir::Write(dir / "empty.dat", "");
    EXPECT_FALSE(doc.LoadUserData(dir.File("empty.dat")));
    EXPECT_FALSE(doc.LoadUserData(dir.File("missing.dat")));

    // Cut inside the second font: the first is read, the second partly.
    TempDir::Write(dir / "cut.dat", I32(2) + std::string(92, '\x66') + std::string(10, '\x77'));
    EXPECT_FALSE(doc.LoadUserData(dir.File("cut.dat")));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&doc.m_rightFont), 92),
              std::string(92, '\x66'));
    const std::string leftNow(reinterpret_cast<const char*>(&doc.m_leftFont), 92);
    EXPECT_EQ(leftNow.substr(0, 10), std::string(10, '\x77'));
    EXPECT_EQ(leftNow.substr(10),
              std::string(reinterpret_cast<const char*>(&menuFont), 92).substr(10));
    EXPECT_TRUE(boxes.Boxes().empty());

    // Only a file that can't be opened for writing is reported.
    EXPECT_FALSE(doc.SaveUserData(dir.File("no/folder/u.dat")));
    EXPECT_EQ(boxes.Boxes().size(), 1u);
}
