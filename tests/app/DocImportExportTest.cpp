// The document's import and export commands, after their dialogs: what
// reaches the tree, the display and the user.
#include <gtest/gtest.h>

#include "app/OrvexDoc.h"
#include "tests/interchange/InterchangeHelpers.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

namespace {

const std::string kTwoRecords =
    "\r\n// Orvex Media List\r\n\r\n"
    "0\r\nAUDU\r\n6\r\nA,B\r\n7\r\nyes\r\n10\r\nab\r\n11\r\nhttp://ab\r\n"
    "\r\n0\r\nVIDU\r\n6\r\nC\r\n10\r\nc\r\n11\r\nhttp://c/v.mp4\r\n\r\n";

struct DocFixture {
    DocFixture() {
        doc.m_extensions.LoadExtensions();
        doc.m_dataFolder = dir.Str();
        doc.m_contents = SampleTree();
    }
    std::vector<CString> Texts() const { return boxes.Texts(); }

    TempDir dir;
    COrvexDoc doc;
    MessageBoxRecorder boxes;
};

CString Msg(const char16_t* format, const CString& a) {
    CString s;
    s.Format(format, a);
    return s;
}

} // namespace

TEST(DocImport, MediaRecordsOverwriteTheContentsAndShowFavourites) {
    DocFixture f;
    TempDir::Write(f.dir / "r.txt", kTwoRecords);
    ASSERT_TRUE(f.doc.ImportFromSource(IMPORT_SOURCE_MEDIA_RECORDS, f.dir.File("r.txt"), u""));
    EXPECT_EQ(f.Texts(), std::vector<CString>{u"Contents overwritten with 2 Media Items."});
    ASSERT_EQ(f.boxes.Boxes()[0].type, MB_OK);
    const auto flat = Flatten(f.doc.m_contents);
    ASSERT_EQ(flat.size(), 2u);
    EXPECT_EQ(flat[0].first, u"A\\B");
    EXPECT_EQ(flat[1].first, u"C");
    EXPECT_TRUE(f.doc.IsFavoritesDisplayed());
    EXPECT_EQ(f.doc.m_displayTopic.m_media.GetSize(), 1);
    EXPECT_TRUE(f.doc.m_bContentsChanged);
}

TEST(DocImport, MediaRecordsPlacedUnderATopicMoveOneLevelDown) {
    DocFixture f;
    TempDir::Write(f.dir / "r.txt", kTwoRecords);
    const size_t before = Flatten(f.doc.m_contents).size();
    ASSERT_TRUE(f.doc.ImportFromSource(IMPORT_SOURCE_MEDIA_RECORDS, f.dir.File("r.txt"), u"T"));
    EXPECT_EQ(f.Texts(), std::vector<CString>{u"2 Media Items placed under T Topic."});
    const auto flat = Flatten(f.doc.m_contents);
    ASSERT_EQ(flat.size(), before + 2);
    EXPECT_EQ(flat[before].first, u"T\\A\\B");
    EXPECT_EQ(flat[before + 1].first, u"T\\C");
    // The list shows the topic that received the last item.
    EXPECT_EQ(f.doc.m_displayTopic.GetPathString(), u"T\\C");
}

TEST(DocImport, FailuresLeaveTheContentsAlone) {
    DocFixture f;
    const auto before = Flatten(f.doc.m_contents);
    TempDir::Write(f.dir / "comments.txt", "// nothing\r\n// here\r\n");
    TempDir::Write(f.dir / "empty.pls", "[playlist]\r\nNumberOfEntries=0\r\n");
    EXPECT_FALSE(
        f.doc.ImportFromSource(IMPORT_SOURCE_MEDIA_RECORDS, f.dir.File("comments.txt"), u""));
    EXPECT_FALSE(f.doc.ImportFromSource(IMPORT_SOURCE_MEDIA_RECORDS, f.dir.File("none.txt"), u""));
    EXPECT_FALSE(f.doc.ImportFromSource(IMPORT_SOURCE_PLS, f.dir.File("empty.pls"), u"T"));
    TempDir::Write(f.dir / "ok.m3u", "http://a\r\n");
    EXPECT_FALSE(f.doc.ImportFromSource(IMPORT_SOURCE_M3U, f.dir.File("ok.m3u"), u""));
    EXPECT_EQ(f.Texts(),
              (std::vector<CString>{Msg(u"Import from %s failed.", f.dir.File("comments.txt")),
                                    Msg(u"Import from %s failed.", f.dir.File("none.txt")),
                                    Msg(u"Import from %s failed.", f.dir.File("empty.pls")),
                                    Msg(u"Import from %s failed.", f.dir.File("ok.m3u"))}));
    EXPECT_EQ(Flatten(f.doc.m_contents), before);
    EXPECT_FALSE(f.doc.m_bContentsChanged);
}

TEST(DocImport, TopicsNestAtMostAThousandLevelsWhereverTheyAreMade) {
    DocFixture f;
    // Short names: a line of code-page text reaches the reader in pieces of
    // 4095 bytes.
    auto record = [](int levels) {
        std::string topics = "a";
        for (int level = 1; level < levels; ++level)
            topics += ",a";
        return "0\r\nAUDU\r\n6\r\n" + topics + "\r\n10\r\nx\r\n11\r\nhttp://x\r\n\r\n";
    };
    TempDir::Write(f.dir / "1000.txt", record(1000));
    TempDir::Write(f.dir / "1001.txt", kTwoRecords + record(1001));
    // UTF-16, ten thousand levels: refused at once, without running out of memory.
    std::string wide = "\xFF\xFE";
    for (char c : record(10000))
        wide += std::string{c, '\0'};
    TempDir::Write(f.dir / "10000.txt", wide);
    const auto before = Flatten(f.doc.m_contents);
    for (const char* file : {"1001.txt", "10000.txt"}) {
        f.boxes.Clear();
        EXPECT_FALSE(f.doc.ImportFromSource(IMPORT_SOURCE_MEDIA_RECORDS, f.dir.File(file), u""));
        EXPECT_EQ(f.Texts(),
                  (std::vector<CString>{
                      Msg(u"Topics in %s nest deeper than 1000 levels. Nothing was imported.",
                          f.dir.File(file)),
                      Msg(u"Import from %s failed.", f.dir.File(file))}));
        EXPECT_EQ(Flatten(f.doc.m_contents), before);
    }
    // Placed under a topic, a thousand levels become one too many.
    EXPECT_FALSE(f.doc.ImportFromSource(IMPORT_SOURCE_MEDIA_RECORDS, f.dir.File("1000.txt"), u"T"));
    EXPECT_EQ(Flatten(f.doc.m_contents), before);
    // A thousand levels of their own fit, and the saved library loads again.
    ASSERT_TRUE(f.doc.ImportFromSource(IMPORT_SOURCE_MEDIA_RECORDS, f.dir.File("1000.txt"), u""));
    ASSERT_TRUE(f.doc.SaveContents(f.dir.File("c.dat")));
    COrvexDoc back;
    f.boxes.Clear();
    EXPECT_TRUE(back.LoadContents(f.dir.File("c.dat")));
    EXPECT_TRUE(f.boxes.Boxes().empty());
    EXPECT_EQ(Flatten(back.m_contents), Flatten(f.doc.m_contents));

    // Nor does the tree make a deeper topic by adding or moving one.
    CMediaContents& tree = f.doc.m_contents;
    const CTopic* walk = &tree.m_topics[0];
    while (!walk->m_children.IsEmpty())
        walk = &walk->m_children[0];
    const CNodeArray deepest = walk->Path();
    ASSERT_EQ(deepest.GetSize(), MAX_TOPIC_DEPTH);
    CTopic child;
    child.SetName(u"one more");
    EXPECT_FALSE(tree.AddChildTopic(deepest, child, FALSE));
    const MediaType type = MEDIA_AUDIO_URL;
    CStringArray names;
    names.Add(CString(u"R"));
    names.Add(CString(u"S"));
    CNodeArray path;
    ASSERT_TRUE(tree.EnsureTopicPath(names, &type, path));
    EXPECT_FALSE(tree.RelocateTopic(path, deepest, RELOCATE_INTO, FALSE));
    CNodeArray parent;
    path.GetParentPath(parent);
    EXPECT_FALSE(tree.RelocateTopic(parent, deepest, RELOCATE_AFTER, FALSE));
    EXPECT_TRUE(tree.RelocateTopic(path, deepest, RELOCATE_AFTER, FALSE));
}

TEST(DocImport, PlaylistsPlaceDirectlyInTheTopicAndTwiceGivesTwice) {
    DocFixture f;
    TempDir::Write(f.dir / "p.pls", "[playlist]\r\nFile1=http://s/one\r\nTitle1=One\r\n"
                                    "File2=http://s/two.mp3\r\n");
    for (int round = 0; round < 2; ++round)
        ASSERT_TRUE(f.doc.ImportFromSource(IMPORT_SOURCE_PLS, f.dir.File("p.pls"), u"Radio"));
    EXPECT_EQ(f.Texts(), (std::vector<CString>{u"2 Media Items placed under Radio Topic.",
                                               u"2 Media Items placed under Radio Topic."}));
    CTopic radio;
    CNodeArray path;
    path.Add(CNodeItem(u"Radio", 1));
    ASSERT_TRUE(f.doc.m_contents.GetTopicCopy(path, radio));
    ASSERT_EQ(radio.m_media.GetSize(), 5); // Morning Talk, then two rounds of two
    EXPECT_EQ(radio.m_media[1].m_name, u"One");
    EXPECT_EQ(radio.m_media[2].m_name, u"Unknown");
    EXPECT_EQ(radio.m_media[2].m_type, MEDIA_AUDIO_URL);
    EXPECT_EQ(radio.m_media[3], radio.m_media[1]);
    EXPECT_TRUE(f.doc.m_bContentsChanged);
}

TEST(DocExport, EveryFormWithItsMessageAndTheDatFileImportsSilently) {
    DocFixture f;
    CExportOptions options;
    options.m_form = EXPORT_FORM_DAT;
    ASSERT_TRUE(f.doc.ExportContents(options, f.dir.File("o.dat")));
    options.m_form = EXPORT_FORM_MEDIA_RECORDS;
    options.m_excludeDiscFiles = TRUE;
    ASSERT_TRUE(f.doc.ExportContents(options, f.dir.File("o.txt")));
    EXPECT_FALSE(f.doc.ExportContents(options, f.dir.File("no/dir/o.txt")));
    options.m_form = EXPORT_FORM_M3U;
    options.m_unicode = TRUE;
    ASSERT_TRUE(f.doc.ExportContents(options, f.dir.File("o.m3u")));
    EXPECT_EQ(f.Texts(), (std::vector<CString>{
                             Msg(u"7 Topics and 6 Media items saved to %s.", f.dir.File("o.dat")),
                             Msg(u"4 Media records saved to %s.", f.dir.File("o.txt")),
                             Msg(u"Export to %s failed.", f.dir.File("no/dir/o.txt")),
                             Msg(u"4 Media records saved to %s.", f.dir.File("o.m3u"))}));
    EXPECT_FALSE(f.doc.m_bContentsChanged);

    // The contents file replaces the tree and says nothing.
    const auto saved = Flatten(f.doc.m_contents);
    f.doc.m_contents.ResetContents();
    f.boxes.Clear();
    EXPECT_TRUE(f.doc.ImportFromSource(IMPORT_SOURCE_DAT, f.dir.File("o.dat"), u""));
    EXPECT_TRUE(f.Texts().empty());
    EXPECT_EQ(Flatten(f.doc.m_contents), saved);
    EXPECT_TRUE(f.doc.m_bContentsChanged);

    // A tree without a root topic exports nothing and leaves 0 bytes behind.
    f.doc.m_contents.ResetContents();
    EXPECT_FALSE(f.doc.ExportContents(options, f.dir.File("empty.m3u")));
    EXPECT_EQ(f.Texts(),
              std::vector<CString>{Msg(u"Export to %s failed.", f.dir.File("empty.m3u"))});
    EXPECT_EQ(TempDir::Read(f.dir / "empty.m3u"), "");
}

TEST(DocExportTopic, ChecksAndMessages) {
    DocFixture f;
    CTopic topic;
    CNodeArray missing;
    missing.Add(CNodeItem(u"Nope", 7));
    EXPECT_FALSE(f.doc.PrepareTopicExport(missing, topic));
    CNodeArray emptyPath;
    CStringArray names;
    names.Add(u"Empty");
    MediaType type = MEDIA_AUDIO_URL;
    ASSERT_TRUE(f.doc.m_contents.EnsureTopicPath(names, &type, emptyPath));
    EXPECT_FALSE(f.doc.PrepareTopicExport(emptyPath, topic));

    CNodeArray radio;
    radio.Add(CNodeItem(u"Radio", 1));
    ASSERT_TRUE(f.doc.PrepareTopicExport(radio, topic));
    CExportOptions options;
    options.m_form = EXPORT_FORM_DAT;
    EXPECT_FALSE(f.doc.ExportTopicTo(topic, options, f.dir.File("t.dat")));
    options.m_form = EXPORT_FORM_M3U;
    EXPECT_FALSE(f.doc.ExportTopicTo(topic, options, f.dir.File("no/dir/t.m3u")));
    EXPECT_TRUE(f.doc.ExportTopicTo(topic, options, f.dir.File("t.m3u")));
    EXPECT_EQ(f.Texts(),
              (std::vector<CString>{
                  u"Topic error - export failed", u"No media items in Topic - export failed",
                  u"Cannot export topic to .dat file.", u"File open error - export failed",
                  Msg(u"2 Media records saved to %s.", f.dir.File("t.m3u"))}));
    EXPECT_FALSE(f.doc.m_bContentsChanged);
}

TEST(DocPlaylistItem, ImportsAndDeletesTheItemOrSaysNoStations) {
    DocFixture f;
    TempDir::Write(f.dir / "list.m3u", "#EXTINF:-1,Jazz\r\nhttp://jazz/live\r\n");
    CMediaItem playlist =
        Item(MEDIA_AUDIO_FILE, u"List", f.dir.File("list.m3u").GetString(), {u"Audio Files"});
    CNodeArray audio;
    audio.Add(CNodeItem(u"Audio Files", 2));
    ASSERT_TRUE(f.doc.m_contents.AddItem(audio, playlist, FALSE));
    ASSERT_TRUE(f.doc.ImportPlaylistItemTo(audio, playlist, u"Imported Media", TRUE));
    EXPECT_TRUE(f.Texts().empty()); // success says nothing
    CTopic copy;
    ASSERT_TRUE(f.doc.m_contents.GetTopicCopy(audio, copy));
    EXPECT_FALSE(copy.m_media.Contains(playlist));
    const auto flat = Flatten(f.doc.m_contents);
    EXPECT_EQ(flat.back().first, u"Imported Media");
    EXPECT_EQ(flat.back().second.m_name, u"Jazz");

    TempDir::Write(f.dir / "empty.m3u", "#EXTM3U\r\n");
    CMediaItem empty = Item(MEDIA_AUDIO_FILE, u"E", f.dir.File("empty.m3u").GetString(), {});
    EXPECT_FALSE(f.doc.ImportPlaylistItemTo(audio, empty, u"Imported Media", TRUE));
    ASSERT_EQ(f.boxes.Boxes().size(), 1u);
    EXPECT_EQ(f.boxes.Boxes()[0].text, u"No radio stations in Playlist.");
    EXPECT_EQ(f.boxes.Boxes()[0].type, MB_OK | MB_ICONINFORMATION);
}
