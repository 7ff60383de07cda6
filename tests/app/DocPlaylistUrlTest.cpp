// Playlists given by URL: downloaded into the data folder's scratch file
// through the one transfer class, with the playlist size limit.
#include <gtest/gtest.h>

#include "app/OrvexDoc.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"
#include "tests/support/TestHttpServer.h"

namespace {

struct UrlFixture {
    UrlFixture() {
        doc.m_extensions.LoadExtensions();
        doc.m_dataFolder = dir.Str();
    }
    TempDir dir;
    TestHttpServer server;
    COrvexDoc doc;
    MessageBoxRecorder boxes;
};

} // namespace

TEST(DocPlaylistUrl, PlsAndM3uComeDownIntoResultsTxt) {
    UrlFixture f;
    const std::string pls = "[playlist]\nFile1=http://s/a.mp3\nTitle1=A\n";
    f.server.Route("/list.pls", pls);
    f.server.Route("/list.m3u", "#EXTINF:-1,Video\r\nhttp://s/v.mp4\r\n");
    ASSERT_TRUE(
        f.doc.ImportFromSource(IMPORT_SOURCE_PLS, CString(f.server.Url("/list.pls")), u"Radio"));
    ASSERT_TRUE(
        f.doc.ImportFromSource(IMPORT_SOURCE_M3U, CString(f.server.Url("/list.m3u")), u"Radio"));
    EXPECT_EQ(f.boxes.Texts(), (std::vector<CString>{u"1 Media Items placed under Radio Topic.",
                                                     u"1 Media Items placed under Radio Topic."}));
    ASSERT_EQ(f.doc.m_contents.m_topics.GetSize(), 1);
    const CMediaArray& items = f.doc.m_contents.m_topics[0].m_media;
    ASSERT_EQ(items.GetSize(), 2);
    EXPECT_EQ(items[0].m_type, MEDIA_AUDIO_URL);
    EXPECT_EQ(items[1].m_type, MEDIA_VIDEO_URL);
    EXPECT_EQ(TempDir::Read(f.dir / "results.txt"), "#EXTINF:-1,Video\r\nhttp://s/v.mp4\r\n");
}

TEST(DocPlaylistUrl, OversizedDownloadShowsTheReadersBoxThenTheFailure) {
    UrlFixture f;
    f.server.Route("/big.pls", "File1=http://x\n" + std::string(120000, '#'));
    const CString url(f.server.Url("/big.pls"));
    EXPECT_FALSE(f.doc.ImportFromSource(IMPORT_SOURCE_PLS, url, u"Radio"));
    const auto texts = f.boxes.Texts();
    ASSERT_GE(texts.size(), 2u);
    EXPECT_EQ(texts[texts.size() - 2].Left(44).ToUtf8(),
              "COrvexDoc ReadPls - GetInternetData failed: ");
    EXPECT_EQ(texts[texts.size() - 2].Right(1), u"\n");
    CString last;
    last.Format(u"Import from %s failed.", url);
    EXPECT_EQ(texts.back(), last);
    EXPECT_TRUE(f.doc.m_contents.m_topics.IsEmpty());
}

TEST(DocPlaylistUrl, UnreachableUrlFromAPlaylistItemSaysNoStations) {
    UrlFixture f;
    const std::string url = f.server.Url("/x.m3u");
    f.server.Stop();
    CMediaItem item;
    item.m_type = MEDIA_AUDIO_URL;
    item.m_name = u"List";
    item.m_location = CString(url);
    CNodeArray path;
    EXPECT_FALSE(f.doc.ImportPlaylistItemTo(path, item, u"Imported Media", TRUE));
    const auto texts = f.boxes.Texts();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0].Left(44).ToUtf8(), "COrvexDoc ReadM3u - GetInternetData failed: ");
    EXPECT_EQ(texts[1], u"No radio stations in Playlist.");
}

TEST(DocPlaylistUrl, SourceInCapitalsIsALocalPath) {
    UrlFixture f;
    f.server.Route("/list.m3u", "http://s/a\r\n");
    std::string url = f.server.Url("/list.m3u");
    url.replace(0, 4, "HTTP");
    EXPECT_FALSE(f.doc.ImportFromSource(IMPORT_SOURCE_M3U, CString(url), u"Radio"));
    EXPECT_EQ(f.server.RequestCount("/list.m3u"), 0);
}
