#include <gtest/gtest.h>

#include <algorithm>

#include "app/OrvexApp.h"
#include "platform/base/FileDialog.h"
#include "tests/app/DocFixtures.h"
#include "tests/contents/TreeBuilder.h"
#include "tests/support/PrintCString.h"
#include "tests/support/TempDir.h"
#include "tests/support/TestDrives.h"

namespace {

// One removable drive whose root is a folder of the test.
class OneDrive : public CTestDriveList {
public:
    explicit OneDrive(const CString& root) {
        AddDrive(root, DRIVE_REMOVABLE, CString(u"X"), CString(u"/dev/sdx"));
    }
    BOOL ListFolder(const CString& folder, std::vector<CFolderEntry>& entries) override {
        return ListFileSystemFolder(folder, entries);
    }
};

CNodeArray FolderPath(std::initializer_list<CString> names) {
    CNodeArray path;
    for (const CString& name : names)
        path.Add(CNodeItem(name, -1));
    return path;
}

} // namespace

TEST(DocFolders, AShownFolderIsAMadeUpTopicOfItsMediaFilesAndSubFolders) {
    TempDir disc;
    for (const char* file :
         {"movie.mp4", "song.mp3", "x.cda.mp3", "Track01.cda", "noext", "notes.txt"})
        TempDir::Write(disc / file, "x");
    TempDir::Write(disc / "VIDEO_TS/VIDEO_TS.IFO", "x");
    TempDir::Write(disc / "Extras/.keep", "");
    OneDrive drive(disc.Str());
    COrvexDoc doc;
    doc.m_extensions.LoadExtensions();
    RecordingView view;
    doc.AddView(&view);

    // A folder text with a separator at its end lists the same folder; the
    // locations then show the separator twice.
    doc.ShowDiscFolder(disc.Str() + u"/");
    EXPECT_EQ(view.Numbers(), std::vector<int>({HINT_LIST}));
    EXPECT_TRUE(doc.m_bFolderView);
    EXPECT_FALSE(doc.m_bFavoritesView);
    EXPECT_FALSE(doc.m_bContentsChanged);
    EXPECT_TRUE(doc.m_contents.m_topics.IsEmpty());
    const CTopic& shown = doc.m_displayTopic;
    EXPECT_EQ(shown.Path(), FolderPath({disc.Str()}));
    EXPECT_EQ(shown.m_mediaType, MEDIA_VIDEO_FILE);
    std::vector<CMediaItem> items(shown.m_media.begin(), shown.m_media.end());
    std::sort(items.begin(), items.end(),
              [](const CMediaItem& a, const CMediaItem& b) { return a.m_name < b.m_name; });
    ASSERT_EQ(items.size(), 4u);
    EXPECT_EQ(items[0].m_name, CString(u"Track01.cda"));
    EXPECT_EQ(items[0].m_type, MEDIA_AUDIO_FILE);
    EXPECT_EQ(items[1].m_name, CString(u"movie.mp4"));
    EXPECT_EQ(items[1].m_type, MEDIA_VIDEO_FILE);
    EXPECT_EQ(items[1].m_location, disc.Str() + u"//movie.mp4");
    EXPECT_EQ(items[1].m_topics, Names({disc.Str().GetString()}));
    EXPECT_FALSE(items[1].m_favorite);
    EXPECT_EQ(items[2].m_type, MEDIA_VIDEO_FILE); // sound on a disc shows as video
    EXPECT_EQ(items[3].m_name, CString(u"x.cda.mp3"));
    EXPECT_EQ(items[3].m_type, MEDIA_AUDIO_FILE);
    ASSERT_EQ(shown.m_children.GetSize(), 2);
    std::vector<CString> folders{shown.m_children[0].GetName(), shown.m_children[1].GetName()};
    std::sort(folders.begin(), folders.end());
    EXPECT_EQ(folders, std::vector<CString>({CString(u"Extras"), CString(u"VIDEO_TS")}));
    EXPECT_EQ(shown.m_children[0].GetSize(), 2);
    EXPECT_EQ(shown.m_children[0][1].m_index, -1);

    // A sub-folder is named from its drive down; one that can't be read is empty.
    doc.ShowDiscFolder(disc.Str() + u"/VIDEO_TS");
    EXPECT_EQ(doc.m_displayTopic.Path(), FolderPath({disc.Str(), CString(u"VIDEO_TS")}));
    EXPECT_EQ(doc.m_displayTopic.m_media[0].m_topics, Names({disc.Str().GetString(), u"VIDEO_TS"}));
    doc.ShowDiscFolder(disc.Str() + u"/gone");
    EXPECT_TRUE(doc.m_displayTopic.m_media.IsEmpty());
    EXPECT_TRUE(doc.m_displayTopic.m_children.IsEmpty());
    EXPECT_EQ(doc.m_displayTopic.GetName(), CString(u"gone"));
}

TEST(DocFolders, AddFilesTakesTheTopicsTypeAndLeavesOutWhatItHolds) {
    RunningProgram program;
    COrvexDoc& doc = *program.doc;
    const CNodeArray films = Ensure(doc.m_contents, {u"Films"}, MEDIA_VIDEO_FILE);
    doc.m_contents.AddItem(films, MakeItem(u"old.mkv", MEDIA_VIDEO_FILE, {u"Films"}), FALSE);

    std::vector<FileDialogRequest> asked;
    CStringArray answer;
    BOOL ok = TRUE;
    MultiFileDialogHook previous =
        SetMultiFileDialogHook([&](const FileDialogRequest& request, CStringArray& paths) {
            asked.push_back(request);
            paths = answer;
            return ok;
        });
    answer.Add(CString(u"/videos/new.avi"));
    answer.Add(CString(u"/media/old.mkv")); // the item the topic holds
    doc.AddMediaFiles(films, MEDIA_VIDEO_FILE);
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].title, CString(u"Add Video Files"));
    EXPECT_EQ(asked[0].filter,
              CString(u"Video Files (*.avi*.mp4*.flv*.wmv*.mov*.webm*.ogg)|*.avi;"
                      u"*.mp4;*.flv;*.wmv;*.mov;*.webm;*.ogg|All Files (*.*)|*.*||"));
    EXPECT_TRUE(asked[0].initialFolder.IsEmpty());
    ASSERT_EQ(doc.m_displayTopic.m_media.GetSize(), 2);
    const CMediaItem& added = doc.m_displayTopic.m_media[1];
    EXPECT_EQ(added.m_name, CString(u"new.avi"));
    EXPECT_EQ(added.m_location, CString(u"/videos/new.avi"));
    EXPECT_EQ(added.m_type, MEDIA_VIDEO_FILE);
    EXPECT_EQ(added.m_topics, Names({u"Films"}));
    EXPECT_TRUE(doc.m_bContentsChanged);

    // Nothing is added on Cancel, nor when the names don't fit the picker's
    // buffer; every other type takes the audio picker.
    doc.m_bContentsChanged = FALSE;
    doc.m_videoFolder = u"/videos";
    ok = FALSE;
    doc.AddMediaFiles(films, MEDIA_AUDIO_URL);
    EXPECT_EQ(asked.back().title, CString(u"Add Audio Files"));
    EXPECT_EQ(asked.back().initialFolder, CString(u"/videos"));
    ok = TRUE;
    answer.RemoveAll();
    for (int i = 0; i < 500; ++i)
        answer.Add(CString(u"/videos/a-rather-long-file-name-for-the-buffer-") +
                   CString(std::to_string(i)) + u".avi");
    doc.AddMediaFiles(films, MEDIA_VIDEO_FILE);
    CTopic topic;
    doc.m_contents.GetTopicCopy(films, topic);
    EXPECT_EQ(topic.m_media.GetSize(), 2);
    EXPECT_FALSE(doc.m_bContentsChanged);
    SetMultiFileDialogHook(previous);
}
