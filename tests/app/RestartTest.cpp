#include <gtest/gtest.h>

#include "app/OrvexApp.h"
#include "tests/app/DocFixtures.h"
#include "tests/contents/TreeBuilder.h"
#include "tests/support/FileBytes.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

TEST(Restart, ALibrarySurvivesARestartByteForByte) {
    RunningProgram program;
    MessageBoxRecorder boxes;
    TempDir::Write(program.start + "/TopicAlias.txt", "// stored,display\nDoc,Documentaries\n");
    program.Start();
    std::string contents;
    std::string user;
    {
        COrvexDoc& doc = *program.doc;
        EXPECT_TRUE(doc.m_contents.m_topics.IsEmpty());
        const CNodeArray docs =
            Ensure(doc.m_contents, {u"Documentaries", u"Space"}, MEDIA_VIDEO_FILE);
        const CNodeArray radio = Ensure(doc.m_contents, {u"Radio"}, MEDIA_AUDIO_URL);
        doc.m_contents.AddItem(
            docs, MakeItem(u"Moon", MEDIA_VIDEO_FILE, {u"Documentaries", u"Space"}), FALSE);
        doc.m_contents.AddItem(
            docs, MakeItem(u"Mars", MEDIA_VIDEO_FILE, {u"Documentaries", u"Space"}), FALSE);
        CMediaItem station = MakeItem(u"Jazz FM – Ünïcødé", MEDIA_AUDIO_URL, {u"Radio"});
        station.m_location = u"https://stream.example/jazz";
        doc.m_contents.AddItem(radio, station, FALSE);
        ASSERT_TRUE(doc.SetItemFavorite(
            docs, MakeItem(u"Mars", MEDIA_VIDEO_FILE, {u"Documentaries", u"Space"}), TRUE, FALSE));
        ASSERT_TRUE(doc.SetItemFavorite(radio, station, TRUE, FALSE));
        ASSERT_TRUE(doc.SortTopicMedia(docs, TRUE));
        SetFaceName(doc.m_leftFont, CString(u"Left Face"));
        doc.m_rightFont.lfWeight = FW_BOLD;
        doc.m_lavSetup.m_bWmaAll = FALSE;
        doc.SetFolderLocations(CString(u"/home/me/lists"), CString(u"/home/me/videos"));
        doc.OnSaveContents();
        EXPECT_FALSE(doc.m_bContentsChanged);
        contents = program.Contents();
        user = program.User();
        // Topic names are stored in their stored form; items keep theirs.
        EXPECT_NE(contents.find(filebytes::Wide(CString(u"Doc"))), std::string::npos);
        EXPECT_EQ(contents.find(filebytes::Wide(CString(u"Documentaries"))), std::string::npos);
        EXPECT_TRUE(doc.SaveModified());
    }
    program.Start();
    {
        COrvexDoc& doc = *program.doc;
        // It comes up showing the favourites, with the display names.
        EXPECT_TRUE(doc.m_bFavoritesView);
        EXPECT_EQ(doc.m_displayTopic.GetName(), CString(kFavoritesName));
        ASSERT_EQ(doc.m_displayTopic.m_media.GetSize(), 2);
        EXPECT_EQ(doc.m_displayTopic.m_media[0].m_name, CString(u"Mars"));
        EXPECT_EQ(doc.m_displayTopic.m_media[1].m_name, CString(u"Jazz FM – Ünïcødé"));
        EXPECT_EQ(doc.m_favoritePaths[0], MakePath({{u"Documentaries", 0}, {u"Space", 0}}));
        EXPECT_EQ(doc.m_favorites[0].m_topics[0], CString(u"Documentaries"));
        EXPECT_EQ(GetFaceName(doc.m_leftFont), CString(u"Left Face"));
        EXPECT_EQ(doc.m_rightFont.lfWeight, FW_BOLD);
        EXPECT_FALSE(doc.m_lavSetup.m_bWmaAll);
        EXPECT_EQ(doc.m_videoFolder, CString(u"/home/me/videos"));
        EXPECT_EQ(doc.m_contentsFolder, CString(u"/home/me/lists"));
        EXPECT_FALSE(doc.m_bContentsChanged);
        doc.OnSaveContents();
        EXPECT_EQ(program.Contents(), contents);
        EXPECT_EQ(program.User(), user);
    }
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST(Restart, AnEmptyDefaultLibraryStartsEmptyWithoutAWord) {
    MessageBoxRecorder boxes;
    RunningProgram program;
    EXPECT_TRUE(program.doc->m_contents.m_topics.IsEmpty());
    EXPECT_FALSE(program.doc->m_bFavoritesView);
    EXPECT_EQ(program.doc->m_leftFont.lfHeight, GetSystemMenuFont().lfHeight);
    EXPECT_TRUE(boxes.Boxes().empty());
}
