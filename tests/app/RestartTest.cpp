#include <gtest/gtest.h>

#include "app/OrvexApp.h"
#include "tests/app/DocFixtures.h"
#include "tests/contents/TreeBuilder.h"
#include "tests/support/FileBytes.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

namespace {

// One installation: a start directory with the alias table and empty
// default files, and a data home beside it.
struct Installation {
    TempDir root;
    std::string start = root / "start";
    std::string userFolder = root / "data/Orvex";

    Installation() {
        for (const char* f :
             {"OrvexContents.dat", "OrvexUser.dat", "RadioBrowse.dat", "results.txt"})
            TempDir::Write(start + "/" + f, "");
        TempDir::Write(start + "/TopicAlias.txt", "// stored,display\nDoc,Documentaries\n");
    }
};

// One run of the program, from start-up to the end of the process.
struct ProgramRun {
    std::vector<std::string> log;
    ScopedCurrentDir cwd;
    ScopedEnv env;
    COrvexApp app;

    explicit ProgramRun(Installation& install)
        : cwd(install.start), env("XDG_DATA_HOME", install.root / "data") {
        app.SetFrameFactory([this](COrvexDoc&) { return std::make_unique<FakeFrame>(log); });
        EXPECT_TRUE(app.InitInstance());
    }
    COrvexDoc& Doc() { return *app.GetDocument(); }
};

} // namespace

TEST(Restart, ALibrarySurvivesARestartByteForByte) {
    Installation install;
    MessageBoxRecorder boxes;
    std::string contents;
    std::string user;
    {
        ProgramRun first(install);
        COrvexDoc& doc = first.Doc();
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
        contents = TempDir::Read(install.userFolder + "/OrvexContents.dat");
        user = TempDir::Read(install.userFolder + "/OrvexUser.dat");
        // Topic names are stored in their stored form; items keep theirs.
        EXPECT_NE(contents.find(filebytes::Wide(CString(u"Doc"))), std::string::npos);
        EXPECT_EQ(contents.find(filebytes::Wide(CString(u"Documentaries"))), std::string::npos);
        EXPECT_TRUE(doc.SaveModified());
    }
    {
        ProgramRun second(install);
        COrvexDoc& doc = second.Doc();
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
        EXPECT_EQ(TempDir::Read(install.userFolder + "/OrvexContents.dat"), contents);
        EXPECT_EQ(TempDir::Read(install.userFolder + "/OrvexUser.dat"), user);
    }
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST(Restart, AnEmptyDefaultLibraryStartsEmptyWithoutAWord) {
    Installation install;
    MessageBoxRecorder boxes;
    ProgramRun run(install);
    EXPECT_TRUE(run.Doc().m_contents.m_topics.IsEmpty());
    EXPECT_FALSE(run.Doc().m_bFavoritesView);
    EXPECT_EQ(run.Doc().m_leftFont.lfHeight, GetSystemMenuFont().lfHeight);
    EXPECT_TRUE(boxes.Boxes().empty());
}
