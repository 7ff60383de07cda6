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

using EntryReader = BOOL (*)(const CString&, const CString&, CStringArray&, CStringArray&);

// Reads `text` as a playlist file of this machine (in `dir`), or, with
// downloaded set, as one that came from a server.
CMediaArray ReadPlaylistText(TempDir& dir, EntryReader read, const std::string& text,
                             bool downloaded = false) {
    TempDir::Write(dir / "playlist", text);
    CStringArray titles, locations;
    EXPECT_TRUE(read(dir.File("playlist"), downloaded ? CString() : dir.Str(), titles, locations));
    CMediaArray items;
    BuildPlaylistItems(titles, locations, Extensions(), items);
    return items;
}

CMediaArray ReadM3uText(TempDir& dir, const std::string& text, bool downloaded = false) {
    return ReadPlaylistText(dir, ReadM3uEntries, text, downloaded);
}

CMediaArray ReadPlsText(TempDir& dir, const std::string& text, bool downloaded = false) {
    return ReadPlaylistText(dir, ReadPlsEntries, text, downloaded);
}

std::vector<CString> Locations(const CMediaArray& items) {
    std::vector<CString> out;
    for (const CMediaItem& item : items)
        out.push_back(item.m_location);
    return out;
}

std::vector<CString> Titles(const CMediaArray& items) {
    std::vector<CString> out;
    for (const CMediaItem& item : items)
        out.push_back(item.m_name);
    return out;
}

} // namespace

TEST(M3uRead, TitlesAndStreamsPairByPosition) {
    TempDir dir;
    // Two titles then one URL: A names it, B is lost. Then a URL, a URL and a
    // title: the first takes C, the second is "Unknown".
    const CMediaArray items =
        ReadM3uText(dir,
                    "#EXTINF:-1,A\r\n#EXTINF:-1,B\r\nhttp://one/a.mp3\r\nHTTP://TWO/LIVE\r\n"
                    "https://three/x.m3u8\r\n#EXTINF:-1,C, with comma\r\n",
                    true);
    EXPECT_EQ(Titles(items), (std::vector<CString>{u"A", u"B", u"C, with comma"}));
    EXPECT_EQ(items[1].m_location, u"HTTP://TWO/LIVE"); // keeps its case
    EXPECT_EQ(items[0].m_type, MEDIA_AUDIO_URL);        // mp3 over http
    EXPECT_EQ(items[2].m_type, MEDIA_VIDEO_URL);
    EXPECT_TRUE(items[2].m_topics.IsEmpty());
    EXPECT_FALSE(items[2].m_favorite);

    // A lone CR is no line end; lines led by a blank count for nothing; the
    // same URL twice is two entries. A downloaded list takes streams only.
    const CMediaArray streams =
        ReadM3uText(dir,
                    "  http://blank-lead\n/abs/song.mp3\nrel/song.mp3\nhttp://lf\r\n"
                    "http://crlf\rhttp://same-line\nhttp://dup\nhttp://dup",
                    true);
    EXPECT_EQ(Locations(streams),
              (std::vector<CString>{u"http://lf", u"http://crlf\rhttp://same-line", u"http://dup",
                                    u"http://dup"}));
    CStringArray titles, urls;
    EXPECT_FALSE(ReadM3uEntries(dir.File("missing.m3u"), dir.Str(), titles, urls));
}

TEST(M3uRead, PlaylistsAsPeopleHaveThem) {
    TempDir dir;
    // An IPTV list: durations of 0 and attributes holding commas and quotes;
    // rtsp streams; local files, relative to the list; Latin-1 lines beside
    // UTF-8 ones and a byte-order mark.
    const CMediaArray items = ReadM3uText(
        dir,
        "\xEF\xBB\xBF#EXTM3U\r\n"
        "#EXTINF:0 tvg-id=\"a.b\" user-agent=\"Mozilla/5.0 (X11, Linux) like Gecko)\",News, 24\r\n"
        "http://tv/news.m3u8\r\n"
        "#EXTINF:123,Caf\xE9 del Mar\r\nrtsp://cam/live.sdp\r\n"
        "#EXTINF:-1,Caf\xC3\xA9 \xE6\x97\xA5\r\nRTSPT://cam/clip.mp4\r\n"
        "#EXTINF:200,Local\r\nmusic\\song.mp3\r\n"
        "#EXTINF:200,Absolute\r\n/srv/film.mkv\r\n"
        "#EXTINF:200,Unknown kind\r\nsub/track.flac\r\n"
        "#EXTINF:200,Escaped\r\nfile:///srv/My%20Song.mp3\r\n"
        "#EXTINF:200,Share\r\n\\\\server\\a.mp3\r\n");
    EXPECT_EQ(Titles(items),
              (std::vector<CString>{u"News, 24", u"Caf\u00E9 del Mar", u"Caf\u00E9 \u65E5",
                                    u"Local", u"Absolute", u"Unknown kind", u"Escaped", u"Share"}));
    const CString base = dir.Str() + u"/";
    EXPECT_EQ(Locations(items),
              (std::vector<CString>{u"http://tv/news.m3u8", u"rtsp://cam/live.sdp",
                                    u"RTSPT://cam/clip.mp4", base + u"music/song.mp3",
                                    u"/srv/film.mkv", base + u"sub/track.flac", u"/srv/My Song.mp3",
                                    u"\\\\server\\a.mp3"}));
    const std::vector<MediaType> types = {MEDIA_VIDEO_URL,  MEDIA_AUDIO_URL,  MEDIA_VIDEO_URL,
                                          MEDIA_AUDIO_FILE, MEDIA_VIDEO_FILE, MEDIA_AUDIO_FILE,
                                          MEDIA_AUDIO_FILE, MEDIA_AUDIO_FILE};
    for (size_t i = 0; i < types.size(); ++i)
        EXPECT_EQ(items[static_cast<int>(i)].m_type, types[i]) << i;
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

TEST(M3uRoundTrip, NamesAndLocationsComeBackTypedByLocation) {
    TempDir dir;
    const CMediaContents tree = SampleTree();
    int count = 0;
    ASSERT_TRUE(ExportTreeM3u(tree, CString(dir / "o.m3u"), FALSE, &count));
    const CMediaArray items = ReadM3uText(dir, TempDir::Read(dir / "o.m3u"));
    EXPECT_EQ(Titles(items),
              (std::vector<CString>{u"Share film", u"Morning Talk", u"10", u"Relative song"}));
    EXPECT_EQ(
        Locations(items),
        (std::vector<CString>{u"\\\\server\\films\\a.mkv", u"http://radio.example/talk",
                              u"https://tv.example/live.m3u8", dir.Str() + u"/Music/song.mp3"}));
    EXPECT_EQ(items[0].m_type, MEDIA_VIDEO_FILE);
}

TEST(PlsRead, KeysByLowerCaseAndPairingByOrder) {
    TempDir dir;
    const CMediaArray items = ReadPlsText(
        dir, "[playlist]\r\nNumberOfEntries=9\r\nTitle2=Second\r\nfile1=http://a/x?q=1\r\n"
             "Title1=First\r\nFILE2=http://B/Y.MP3\nFile3=\nLength1=-1\nVersion=2\n");
    EXPECT_EQ(Locations(items), (std::vector<CString>{u"http://a/x?q=1", u"http://B/Y.MP3", u""}));
    EXPECT_EQ(Titles(items), (std::vector<CString>{u"Second", u"First", u"Unknown"}));
    EXPECT_EQ(items[2].m_type, MEDIA_AUDIO_URL); // taken as it stands
    EXPECT_EQ(ReadPlsText(dir, "[playlist]\nNumberOfEntries=0\n").GetSize(), 0);
}

TEST(PlsRead, TitleHoldingFileShiftsThePairsAndLocalPathsResolve) {
    TempDir dir;
    const std::string text = "File1=/music/a.mp3\nTitle1=My file\nTitle2=Two\n"
                             "File2=relative/b.mkv\nTitle3=Caf\xE9\nFile3=rtsp://h/x.mp4\n";
    const CMediaArray items = ReadPlsText(dir, text);
    EXPECT_EQ(Locations(items),
              (std::vector<CString>{u"/music/a.mp3", dir.Str() + u"/My file",
                                    dir.Str() + u"/relative/b.mkv", u"rtsp://h/x.mp4"}));
    EXPECT_EQ(Titles(items), (std::vector<CString>{u"Two", u"Caf\u00E9", u"Unknown", u"Unknown"}));
    EXPECT_EQ(items[0].m_type, MEDIA_AUDIO_FILE);
    EXPECT_EQ(items[1].m_type, MEDIA_AUDIO_FILE); // nothing to classify
    EXPECT_EQ(items[2].m_type, MEDIA_VIDEO_FILE);
    EXPECT_EQ(items[3].m_type, MEDIA_VIDEO_URL);
    // A downloaded list keeps its values as they stand.
    EXPECT_EQ(ReadPlsText(dir, text, true)[2].m_location, u"relative/b.mkv");
}

TEST(PlaylistItems, PlsTestLooksAnywhereWithCase) {
    EXPECT_TRUE(IsPlsPlaylistItem(Item(MEDIA_AUDIO_URL, u"p", u"http://x/list.pls", {})));
    EXPECT_TRUE(IsPlsPlaylistItem(Item(MEDIA_AUDIO_URL, u"p", u"http://plsrv/a.m3u", {})));
    EXPECT_FALSE(IsPlsPlaylistItem(Item(MEDIA_AUDIO_URL, u"p", u"http://x/LIST.PLS", {})));
}
