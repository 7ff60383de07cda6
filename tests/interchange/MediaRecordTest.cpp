#include <gtest/gtest.h>

#include "interchange/Export.h"
#include "interchange/ImportPlacing.h"
#include "interchange/MediaRecordFormat.h"
#include "tests/interchange/InterchangeHelpers.h"
#include "tests/support/TempDir.h"

namespace {

CMediaArray ReadRecords(const std::string& path, int* count,
                        const CTopicStrAliasAr* aliases = nullptr) {
    static const CTopicStrAliasAr noAliases;
    CMediaArray items;
    EXPECT_TRUE(ReadMediaRecordFile(CString(path), aliases ? aliases : &noAliases, items, count));
    return items;
}

CMediaArray ReadText(TempDir& dir, const std::string& text, int* count = nullptr) {
    TempDir::Write(dir / "r.txt", text);
    int local = 0;
    return ReadRecords(dir / "r.txt", count ? count : &local);
}

void ExpectSameTree(const CMediaContents& a, const CMediaContents& b) {
    const auto left = Flatten(a);
    const auto right = Flatten(b);
    ASSERT_EQ(left.size(), right.size());
    for (size_t i = 0; i < left.size(); ++i) {
        EXPECT_EQ(left[i].first, right[i].first) << i;
        EXPECT_EQ(left[i].second, right[i].second) << i; // type, name, location, topics
        EXPECT_EQ(left[i].second.m_favorite, right[i].second.m_favorite) << i;
    }
}

} // namespace

TEST(MediaRecordWrite, FileHeadAndRecordsGoldenText) {
    TempDir dir;
    CMediaContents tree;
    tree.AddItemByTopics(Item(MEDIA_VIDEO_FILE, u"Harbour at dusk", u"D:\\Films\\harbour.mp4",
                              {u"Video Files", u"Holidays"}, TRUE),
                         FALSE);
    tree.AddItemByTopics(Item(MEDIA_AUDIO_URL, u"Morning Talk", u"http://r.example/t", {u"Radio"}),
                         FALSE);
    int count = 0;
    ASSERT_TRUE(
        ExportTreeMediaRecords(tree, CString(dir / "o.txt"), FALSE, FALSE, FALSE, nullptr, &count));
    EXPECT_EQ(count, 2);
    EXPECT_EQ(TempDir::Read(dir / "o.txt"),
              "\r\n// Orvex Media List\r\n\r\n"
              "// Media Record Format 0.1\r\n"
              "// See MediaRecordFormat.txt for definitions.\r\n"
              "0\r\nVIDF\r\n6\r\nVideo Files,Holidays\r\n7\r\nyes\r\n"
              "10\r\nHarbour at dusk\r\n11\r\nD:\\Films\\harbour.mp4\r\n"
              "\r\n"
              "0\r\nAUDU\r\n6\r\nRadio\r\n10\r\nMorning Talk\r\n"
              "11\r\nhttp://r.example/t\r\n\r\n");
}

TEST(MediaRecordWrite, ItemsBeforeSubTopicsUnknownTypeAndAnEmptyTree) {
    CMediaContents tree;
    tree.AddItemByTopics(Item(MEDIA_AUDIO_URL, u"deep", u"http://d", {u"R", u"S"}), FALSE);
    tree.AddItemByTopics(Item(MEDIA_AUDIO_URL, u"top", u"http://t", {u"R"}), FALSE);
    tree.m_topics[0].m_media[0].m_type = static_cast<MediaType>(9);
    TempDir dir;
    int count = 0;
    ASSERT_TRUE(
        ExportTreeMediaRecords(tree, CString(dir / "o.txt"), FALSE, FALSE, FALSE, nullptr, &count));
    const std::string text = TempDir::Read(dir / "o.txt");
    EXPECT_LT(text.find("top"), text.find("deep"));
    EXPECT_NE(text.find("0\r\nUnknown Stream\r\n"), std::string::npos);

    // An empty tree writes nothing and fails.
    EXPECT_FALSE(ExportTreeMediaRecords(CMediaContents(), CString(dir / "e.txt"), FALSE, FALSE,
                                        FALSE, nullptr, &count));
    EXPECT_EQ(TempDir::Read(dir / "e.txt"), "");
}

TEST(MediaRecordWrite, ExcludeDiscFilesAndWriteAliases) {
    CTopicStrAliasAr aliases;
    aliases.AddAlias(u"VF", u"Video Files");
    CMediaContents tree = SampleTree();
    TempDir dir;
    int count = 0;
    ASSERT_TRUE(
        ExportTreeMediaRecords(tree, CString(dir / "o.txt"), TRUE, FALSE, TRUE, &aliases, &count));
    const std::string text = TempDir::Read(dir / "o.txt");
    // The drive path and the absolute local path go; the share and the
    // relative path stay, as do the streams.
    EXPECT_EQ(count, 4);
    EXPECT_EQ(text.find("harbour.mp4"), std::string::npos);
    EXPECT_EQ(text.find("/home/u/Music"), std::string::npos);
    EXPECT_NE(text.find("\\\\server\\films\\a.mkv"), std::string::npos);
    EXPECT_NE(text.find("Music/song.mp3"), std::string::npos);
    EXPECT_NE(text.find("6\r\nVF\r\n"), std::string::npos);
    EXPECT_NE(text.find("6\r\nRadio,TV,News\r\n"), std::string::npos); // no row: unchanged
}

TEST(MediaRecordWrite, ClipboardFormAlwaysHasTopicsAndFavourite) {
    CMediaItem item = Item(MEDIA_AUDIO_FILE, u"Song", u"/m/s.mp3", {u"Audio Files", u"Pop"});
    EXPECT_EQ(MediaRecordClipboardText(item),
              u"0\r\nAUDF\r\n6\r\nAudio Files,Pop\r\n7\r\nno\r\n10\r\nSong\r\n11\r\n/m/s.mp3\r\n");
    item.m_topics.RemoveAll();
    item.m_favorite = TRUE;
    EXPECT_EQ(MediaRecordClipboardText(item),
              u"0\r\nAUDF\r\n6\r\n\r\n7\r\nyes\r\n10\r\nSong\r\n11\r\n/m/s.mp3\r\n");
}

TEST(MediaRecordRoundTrip, TreeToFileToTreeKeepsEveryFieldInBothEncodingsAndThroughAliases) {
    CTopicStrAliasAr aliases;
    aliases.AddAlias(u"Holidays_stored", u"Holidays");
    for (int form = 0; form < 3; ++form) {
        const BOOL unicode = form == 1;
        const CTopicStrAliasAr* used = form == 2 ? &aliases : nullptr;
        TempDir dir;
        const CMediaContents tree = SampleTree();
        int written = 0;
        ASSERT_TRUE(ExportTreeMediaRecords(tree, CString(dir / "o.txt"), FALSE, unicode,
                                           used != nullptr, used, &written));
        EXPECT_EQ(written, 6);
        const std::string bytes = TempDir::Read(dir / "o.txt");
        EXPECT_EQ(bytes.rfind("\xFF\xFE", 0) == 0, unicode != FALSE);
        EXPECT_EQ(bytes.find("Video Files,Holidays_stored") != std::string::npos, used != nullptr);
        int read = 0;
        const CMediaArray items = ReadRecords(dir / "o.txt", &read, used);
        EXPECT_EQ(read, 6);
        CMediaContents back;
        OverwriteContents(back, items);
        ExpectSameTree(tree, back);
    }
}

TEST(MediaRecordRead, StateMachineEdgeCases) {
    TempDir dir;
    int count = 0;
    // A value that looks like a field number is a value; unknown fields and
    // lines are passed over; field 6 twice adds to the list; blanks around
    // commas go; a bad type eats the lines up to the next code; an empty name
    // line is skipped, so "11" becomes the name and the record is dropped; a
    // name starting with "//" is a comment; the last record needs no closing
    // line or line end; duplicates stay.
    const CMediaArray items = ReadText(dir,
                                       "junk\n5\n0\n0\nAUDU\n8\nstray\n6\nA , B\n6\n,C,\n"
                                       "7\nYeS\n10\n10\n11\nhttp://x\n\n"
                                       "0\nNONE\nvidf\n10\nlost\n11\nhttp://lost\nAUDF\n"
                                       "10\nkept\n11\n/m/k.mp3\n"
                                       "0\nAUDU\n10\n\n11\nhttp://a\n\n"
                                       "0\nAUDU\n10\n// note\nreal\n11\nhttp://b\n"
                                       "0\nVIDU\n7\nno\n10\nreal\n11\nhttp://b",
                                       &count);
    ASSERT_EQ(count, 4);
    ASSERT_EQ(items.GetSize(), 4);
    EXPECT_EQ(items[0].m_type, MEDIA_AUDIO_URL);
    EXPECT_EQ(items[0].m_name, u"10");
    EXPECT_EQ(items[0].m_location, u"http://x");
    EXPECT_TRUE(items[0].m_favorite);
    EXPECT_EQ(items[0].TopicsAsList(), u"A,B,,C"); // an empty element between commas
    EXPECT_EQ(items[1].m_type, MEDIA_AUDIO_FILE);
    EXPECT_EQ(items[1].m_name, u"kept");
    EXPECT_EQ(items[1].m_location, u"/m/k.mp3");
    EXPECT_EQ(items[2].m_name, u"real");
    EXPECT_EQ(items[3].m_location, u"http://b");
    EXPECT_FALSE(items[3].m_favorite);
    EXPECT_TRUE(items[3].m_topics.IsEmpty());
}

TEST(MediaRecordRead, NothingToReadGivesNoRecords) {
    TempDir dir;
    int count = 0;
    EXPECT_TRUE(ReadText(dir, "// a\n// b\n\n", &count).IsEmpty());
    EXPECT_EQ(count, 0);
    CMediaArray items;
    CTopicStrAliasAr aliases;
    EXPECT_FALSE(ReadMediaRecordFile(dir.File("none.txt"), &aliases, items, &count));
    CMediaItem item;
    EXPECT_FALSE(item.SetTopicsFromList(u"A,B", nullptr));
    EXPECT_FALSE(item.SetTopicsFromList(u"", &aliases));
    EXPECT_TRUE(item.m_topics.IsEmpty());
}

TEST(ImportPlacing, FileTreeMovesOneLevelDown) {
    CMediaContents tree;
    tree.AddItemByTopics(Item(MEDIA_AUDIO_URL, u"old", u"http://o", {u"T"}), FALSE);
    CMediaArray items;
    items.Add(Item(MEDIA_AUDIO_URL, u"ab", u"http://ab", {u"A", u"B"}));
    items.Add(Item(MEDIA_AUDIO_URL, u"c", u"http://c", {u"C"}));
    items.Add(Item(MEDIA_AUDIO_URL, u"already", u"http://t", {u"T", u"X"}));
    items.Add(Item(MEDIA_AUDIO_URL, u"none", u"http://n", {}));
    int count = 0;
    PlaceItemsUnderTopic(tree, items, u"T", &count);
    EXPECT_EQ(count, 4);
    const auto flat = Flatten(tree);
    ASSERT_EQ(flat.size(), 5u);
    EXPECT_EQ(flat[0].first, u"T");
    EXPECT_EQ(flat[0].second.m_name, u"old");
    EXPECT_EQ(flat[1].first, u"T");
    EXPECT_EQ(flat[1].second.m_name, u"none");
    EXPECT_EQ(flat[2].first, u"T\\A\\B");
    EXPECT_EQ(flat[3].first, u"T\\C");
    EXPECT_EQ(flat[4].first, u"T\\X"); // not nested a second time
    EXPECT_EQ(tree.m_currentTopic.GetPathString(), u"T");

    // A new topic at the top level, its name neither split nor mapped, and
    // duplicates kept.
    items.RemoveAll();
    items.Add(Item(MEDIA_AUDIO_URL, u"a", u"http://a", {}));
    items.Add(Item(MEDIA_AUDIO_URL, u"a", u"http://a", {}));
    PlaceItemsUnderTopic(tree, items, u"New\\Topic,Two", nullptr);
    ASSERT_EQ(tree.m_topics.GetSize(), 2);
    EXPECT_EQ(tree.m_topics[1].GetName(), u"New\\Topic,Two");
    EXPECT_EQ(tree.m_topics[1].m_media.GetSize(), 2);
}

TEST(ImportPlacing, OverwriteReplacesTheTreeAndFilesByGroup) {
    CMediaContents tree = SampleTree();
    CMediaArray items;
    items.Add(Item(MEDIA_VIDEO_URL, u"v", u"http://v", {}));
    OverwriteContents(tree, items);
    const auto flat = Flatten(tree);
    ASSERT_EQ(flat.size(), 1u);
    EXPECT_EQ(flat[0].first, u"Video Streams");
}
