#include <gtest/gtest.h>

#include "contents/Extensions.h"
#include "contents/TopicAliases.h"
#include "tests/support/TempDir.h"

TEST(CTopicStrAliasAr, ReadsLinesByTheirRules) {
    TempDir dir;
    TempDir::Write(dir / "TopicAlias.txt",
                   "// comment\r\n"
                   "\r\n"
                   "no comma here\n"
                   "Doc,Documentaries\r\n"
                   "Web,http://example.org/x\n" // holds "//": a comment
                   "Two,Comma, Separated\n"     // splits at the first comma
                   ",Empty Stored\n"            // empty stored form
                   "Doc,Other Display\n"        // the first row of a stored form wins
                   "Alt,Documentaries\n"        // a second stored form of one display form
                   "Grün,Grüne Musik");         // last line without a line end, UTF-8
    CTopicStrAliasAr aliases;
    aliases.AddAlias(CString(u"old"), CString(u"row"));
    ASSERT_TRUE(aliases.LoadAliasesFrom(dir.File("TopicAlias.txt")));
    ASSERT_EQ(aliases.GetSize(), 6); // the old row is gone
    EXPECT_EQ(aliases[1].m_topic, CString(u"Comma, Separated"));
    EXPECT_EQ(aliases[1].m_alias, CString(u"Two"));

    EXPECT_EQ(aliases.GetTopic(CString(u"Doc")), CString(u"Documentaries"));
    EXPECT_EQ(aliases.GetAlias(CString(u"Documentaries")), CString(u"Doc"));
    EXPECT_EQ(aliases.GetAlias(CString(u"Other Display")), CString(u"Doc"));
    EXPECT_EQ(aliases.GetTopic(CString()), CString(u"Empty Stored"));
    EXPECT_EQ(aliases.GetTopic(CString(u"Grün")), CString(u"Grüne Musik"));
    EXPECT_EQ(aliases.GetTopic(CString(u"doc")), CString(u"doc")); // with case
    EXPECT_EQ(aliases.GetAlias(CString(u"Unknown")), CString(u"Unknown"));

    CString text(u"Documentaries");
    EXPECT_TRUE(aliases.TopicToAlias(text));
    EXPECT_EQ(text, CString(u"Doc"));
    EXPECT_TRUE(aliases.AliasToTopic(text));
    EXPECT_EQ(text, CString(u"Documentaries"));
    text = u"nothing";
    EXPECT_FALSE(aliases.AliasToTopic(text));
    EXPECT_EQ(text, CString(u"nothing"));

    // A missing file leaves the table as it was.
    EXPECT_FALSE(aliases.LoadAliasesFrom(dir.File("missing.txt")));
    EXPECT_EQ(aliases.GetSize(), 6);

    // An editor's UTF-8 byte-order mark is not part of the first stored form.
    TempDir::Write(dir / "marked.txt", "\xEF\xBB\xBF"
                                       "Doc,Documentaries\n");
    ASSERT_TRUE(aliases.LoadAliasesFrom(dir.File("marked.txt")));
    ASSERT_EQ(aliases.GetSize(), 1);
    EXPECT_EQ(aliases[0].m_alias, CString(u"Doc"));
}

TEST(CExtensionArray, TableAndTypesByExtension) {
    CExtensionArray table;
    table.LoadExtensions();
    ASSERT_EQ(table.GetSize(), 33);
    EXPECT_EQ(table[0].m_ext, CString(u"3g2"));
    EXPECT_EQ(table[26].m_ext, CString(u"m3u8"));
    EXPECT_EQ(table[32].m_ext, CString(u"xmv"));
    int audio = 0;
    for (const CExtension& row : table)
        audio += row.m_type == MEDIA_AUDIO_FILE;
    EXPECT_EQ(audio, 4);

    EXPECT_EQ(table.GetExtensionType(CString(u"MP3"), FALSE), MEDIA_AUDIO_FILE);
    EXPECT_EQ(table.GetExtensionType(CString(u"MP3"), TRUE), MEDIA_AUDIO_URL);
    EXPECT_EQ(table.GetExtensionType(CString(u"mkv"), FALSE), MEDIA_VIDEO_FILE);
    EXPECT_EQ(table.GetExtensionType(CString(u"mkv"), TRUE), MEDIA_VIDEO_URL);
    EXPECT_EQ(table.GetExtensionType(CString(u"ogg"), FALSE), MEDIA_NONE);
    EXPECT_TRUE(table.IsKnownExtension(CString(u"M4V")));
    EXPECT_FALSE(table.IsKnownExtension(CString(u"flac")));
    table.LoadExtensions(); // loading again doesn't double the rows
    EXPECT_EQ(table.GetSize(), 33);
}

TEST(CExtensionArray, ClassifiesPathsAndUrls) {
    CExtensionArray table;
    table.LoadExtensions();
    struct Case {
        const char16_t* location;
        BOOL ok;
        MediaType type;
        const char16_t* ext;
    };
    const Case cases[] = {
        {u"/music/Song.MP3", TRUE, MEDIA_AUDIO_FILE, u"mp3"},
        {u"http://host/a/song.mp3", TRUE, MEDIA_AUDIO_URL, u"mp3"},
        {u"https://host/video.mp4", TRUE, MEDIA_VIDEO_URL, u"mp4"},
        {u"/disc/Track01.cda", TRUE, MEDIA_VIDEO_FILE, u"cda"},
        {u"http://stream", TRUE, MEDIA_AUDIO_URL, u""},
        {u"http://live/HLS", TRUE, MEDIA_VIDEO_URL, u""},
        {u"rtsp+http://cam/mp4feed", TRUE, MEDIA_VIDEO_URL, u""},
        {u"http://radio.example.com:8000/stream", FALSE, MEDIA_NONE, u""}, // dot in the host
        {u"http://host/song.mp3?x=1", FALSE, MEDIA_NONE, u""},             // query defeats it
        {u"/home/user/README", FALSE, MEDIA_NONE, u""},
        {u"/home/user/name.", FALSE, MEDIA_NONE, u""},
        {u"/home/user/file.abcde", FALSE, MEDIA_NONE, u""},
        {u"/home/user/file.ogg", FALSE, MEDIA_NONE, u""},
        {u"/home/httpd/clip.avi", TRUE, MEDIA_VIDEO_URL, u"avi"}, // "http" in a local path
    };
    for (const Case& c : cases) {
        CExtension result;
        result.m_type = MEDIA_VIDEO_FILE;
        result.m_ext = u"stale";
        EXPECT_EQ(table.ClassifyLocation(CString(c.location), result), c.ok)
            << CString(c.location).ToUtf8();
        EXPECT_EQ(result.m_type, c.type) << CString(c.location).ToUtf8();
        EXPECT_EQ(result.m_ext, CString(c.ext)) << CString(c.location).ToUtf8();
    }
}
