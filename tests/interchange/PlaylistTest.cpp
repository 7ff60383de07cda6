#include <gtest/gtest.h>

#include "interchange/Export.h"
#include "interchange/Playlists.h"
#include "tests/interchange/InterchangeHelpers.h"
#include "tests/support/TempDir.h"

namespace {

CExtensionArray Extensions() {
    CExtensionArray extensions;
    extensions.LoadExtensions();
    return extensions;
}

using EntryReader = BOOL (*)(const CString&, CStringArray&, CStringArray&);

CMediaArray ReadPlaylistText(TempDir& dir, EntryReader read, const std::string& text) {
    TempDir::Write(dir / "playlist", text);
    CStringArray titles, locations;
    EXPECT_TRUE(read(dir.File("playlist"), titles, locations));
    CMediaArray items;
    BuildPlaylistItems(titles, locations, Extensions(), items);
    return items;
}

CMediaArray ReadM3uText(TempDir& dir, const std::string& text) {
    return ReadPlaylistText(dir, ReadM3uEntries, text);
}

CMediaArray ReadPlsText(TempDir& dir, const std::string& text) {
    return ReadPlaylistText(dir, ReadPlsEntries, text);
}

} // namespace

TEST(M3uRead, TitlesAndUrlsPairByPosition) {
    TempDir dir;
    // Two titles then one URL: A names it, B is lost. Then a URL, a URL and a
    // title: the first takes C, the second is "Unknown".
    const CMediaArray items =
        ReadM3uText(dir, "#EXTINF:-1,A\r\n#EXTINF:-1,B\r\nhttp://one/a.mp3\r\n"
                         "HTTP://TWO/LIVE\r\nhttps://three/x.m3u8\r\n#EXTINF:-1,C, with comma\r\n");
    ASSERT_EQ(items.GetSize(), 3);
    EXPECT_EQ(items[0].m_name, u"A");
    EXPECT_EQ(items[0].m_type, MEDIA_AUDIO_URL); // mp3 over http
    EXPECT_EQ(items[1].m_name, u"B");
    EXPECT_EQ(items[1].m_location, u"HTTP://TWO/LIVE"); // keeps its case
    EXPECT_EQ(items[2].m_name, u"C, with comma");
    EXPECT_EQ(items[2].m_type, MEDIA_VIDEO_URL);
    EXPECT_TRUE(items[2].m_topics.IsEmpty());
    EXPECT_FALSE(items[2].m_favorite);
}

TEST(M3uRead, OnlyHttpLinesCountWhateverTheLineEnds) {
    TempDir dir;
    const CMediaArray items = ReadM3uText(
        dir, "#EXTINF:120,Timed\n  http://blank-lead\n/abs/song.mp3\nrel/song.mp3\n"
             "C:\\song.mp3\n#EXTINF:-1 no comma\nhttp://lf\r\nhttp://crlf\rhttp://same-line\n"
             "http://dup\nhttp://dup");
    ASSERT_EQ(items.GetSize(), 4);
    EXPECT_EQ(items[0].m_location, u"http://lf");
    EXPECT_EQ(items[0].m_name, u"Unknown");
    // A lone CR is no line end for the text stream.
    EXPECT_EQ(items[1].m_location, u"http://crlf\rhttp://same-line");
    EXPECT_EQ(items[2].m_location, u"http://dup");
    EXPECT_EQ(items[3].m_location, u"http://dup");
}

TEST(M3uRead, NoByteOrderMarkTestAndUtf8Titles) {
    TempDir dir;
    const CMediaArray items =
        ReadM3uText(dir, "#EXTINF:-1,Caf\xC3\xA9 \xE6\x97\xA5\r\nhttp://c\r\n");
    ASSERT_EQ(items.GetSize(), 1);
    EXPECT_EQ(items[0].m_name, u"Caf\u00E9 \u65E5");
    CStringArray titles, urls;
    EXPECT_FALSE(ReadM3uEntries(dir.File("missing.m3u"), titles, urls));
}

TEST(M3uWrite, GoldenTextAndDiscFilesLeftOut) {
    TempDir dir;
    const CMediaContents tree = SampleTree();
    int count = 0;
    ASSERT_TRUE(ExportTreeM3u(tree, CString(dir / "o.m3u"), FALSE, &count));
    EXPECT_EQ(count, 4);
    EXPECT_EQ(TempDir::Read(dir / "o.m3u"),
              "\r\n#EXTM3U\r\n\r\n"
              "#EXTINF:-1,Share film\r\n\\\\server\\films\\a.mkv\r\n\r\n"
              "#EXTINF:-1,Morning Talk\r\nhttp://radio.example/talk\r\n\r\n"
              "#EXTINF:-1,10\r\nhttps://tv.example/live.m3u8\r\n\r\n"
              "#EXTINF:-1,Relative song\r\nMusic/song.mp3\r\n\r\n");
}

TEST(M3uWrite, Utf16HeadGoldenBytes) {
    TempDir dir;
    CMediaContents tree;
    tree.AddItemByTopics(Item(MEDIA_AUDIO_URL, u"\u00E9", u"http://e", {u"R"}), FALSE);
    int count = 0;
    ASSERT_TRUE(ExportTreeM3u(tree, CString(dir / "o.m3u"), TRUE, &count));
    const std::string bytes = TempDir::Read(dir / "o.m3u");
    const std::string expectStart("\xFF\xFE\r\0\n\0#\0E\0X\0T\0M\0003\0U\0\r\0\n\0\r\0\n\0", 28);
    EXPECT_EQ(bytes.substr(0, expectStart.size()), expectStart);
    EXPECT_NE(bytes.find(std::string(",\0\xE9\0\r\0\n\0", 8)), std::string::npos);
}

TEST(M3uRoundTrip, NamesAndUrlsComeBackTypedByLocation) {
    TempDir dir;
    const CMediaContents tree = SampleTree();
    int count = 0;
    ASSERT_TRUE(ExportTreeM3u(tree, CString(dir / "o.m3u"), FALSE, &count));
    const CMediaArray items = ReadM3uText(dir, TempDir::Read(dir / "o.m3u"));
    // The share path and the relative path don't start with "http".
    ASSERT_EQ(items.GetSize(), 2);
    EXPECT_EQ(items[0].m_location, u"http://radio.example/talk");
    // Titles pair by position, so the file items' titles shift onto the streams.
    EXPECT_EQ(items[0].m_name, u"Share film");
    EXPECT_EQ(items[1].m_location, u"https://tv.example/live.m3u8");
}

TEST(PlsRead, KeysByLowerCaseAndPairingByOrder) {
    TempDir dir;
    const CMediaArray items = ReadPlsText(
        dir, "[playlist]\r\nNumberOfEntries=9\r\nTitle2=Second\r\nfile1=http://a/x?q=1\r\n"
             "Title1=First\r\nFILE2=http://B/Y.MP3\nFile3=\nLength1=-1\nVersion=2\n");
    ASSERT_EQ(items.GetSize(), 3);
    EXPECT_EQ(items[0].m_location, u"http://a/x?q=1");
    EXPECT_EQ(items[0].m_name, u"Second");
    EXPECT_EQ(items[1].m_location, u"http://B/Y.MP3");
    EXPECT_EQ(items[1].m_name, u"First");
    EXPECT_EQ(items[2].m_location, u""); // taken as it stands
    EXPECT_EQ(items[2].m_name, u"Unknown");
}

TEST(PlsRead, TitleHoldingFileShiftsThePairsAndLocalPathsStay) {
    TempDir dir;
    const CMediaArray items = ReadPlsText(dir, "File1=/music/a.mp3\nTitle1=My file\nTitle2=Two\n"
                                               "File2=relative/b.mkv\nTitle3=Three\n");
    ASSERT_EQ(items.GetSize(), 3);
    EXPECT_EQ(items[0].m_location, u"/music/a.mp3");
    EXPECT_EQ(items[0].m_type, MEDIA_AUDIO_FILE);
    EXPECT_EQ(items[1].m_location, u"My file");
    EXPECT_EQ(items[1].m_type, MEDIA_AUDIO_URL); // nothing to classify
    EXPECT_EQ(items[2].m_location, u"relative/b.mkv");
    EXPECT_EQ(items[2].m_type, MEDIA_VIDEO_FILE);
    EXPECT_EQ(items[0].m_name, u"Two");
    EXPECT_EQ(items[1].m_name, u"Three");
    EXPECT_EQ(items[2].m_name, u"Unknown");
}

TEST(PlsRead, HeadAloneGivesNoEntries) {
    TempDir dir;
    EXPECT_EQ(ReadPlsText(dir, "[playlist]\nNumberOfEntries=0\n").GetSize(), 0);
}

TEST(PlaylistItems, PlsTestLooksAnywhereWithCase) {
    EXPECT_TRUE(IsPlsPlaylistItem(Item(MEDIA_AUDIO_URL, u"p", u"http://x/list.pls", {})));
    EXPECT_TRUE(IsPlsPlaylistItem(Item(MEDIA_AUDIO_URL, u"p", u"http://plsrv/a.m3u", {})));
    EXPECT_FALSE(IsPlsPlaylistItem(Item(MEDIA_AUDIO_URL, u"p", u"http://x/LIST.PLS", {})));
}
