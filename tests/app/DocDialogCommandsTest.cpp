// The menu commands that ask a dialog first: what each dialog opens with,
// and what its answer changes.
#include <gtest/gtest.h>

#include "app/OrvexDoc.h"
#include "tests/app/ScriptedDialogs.h"
#include "tests/interchange/InterchangeHelpers.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

namespace {

struct CommandFixture {
    CommandFixture() {
        doc.SetDialogs(&dialogs);
        doc.m_extensions.LoadExtensions();
        doc.m_dataFolder = dir.Str();
        doc.m_contentsFolder = dir.Str();
        doc.m_contents = SampleTree();
    }
    TempDir dir;
    ScriptedDialogs dialogs;
    MessageBoxRecorder boxes;
    COrvexDoc doc;
};

} // namespace

TEST(DialogCommands, FolderLocationsTakeTheirAnswerOnlyAfterOkAndLavSetupItsChoices) {
    CommandFixture f;
    f.doc.m_videoFolder = u"/v";
    f.doc.OnFolderLocations();
    EXPECT_EQ(f.dialogs.folders.opened.m_contentsFolder, f.dir.Str());
    EXPECT_EQ(f.dialogs.folders.opened.m_videoFolder, CString(u"/v"));
    EXPECT_FALSE(f.doc.m_bContentsChanged);
    // OK marks a change even when nothing changed.
    f.dialogs.folders.answer = [](CFoldersFields&) { return IDOK; };
    f.doc.OnFolderLocations();
    EXPECT_TRUE(f.doc.m_bContentsChanged);
    f.dialogs.folders.answer = [](CFoldersFields& d) {
        d.m_videoFolder = u"/films";
        return IDOK;
    };
    f.doc.OnFolderLocations();
    EXPECT_EQ(f.doc.m_videoFolder, CString(u"/films"));
    EXPECT_EQ(f.doc.m_contentsFolder, f.dir.Str());
    EXPECT_TRUE(f.doc.m_bContentsChanged);

    // LAV Setup opens on the document's four choices; what its answers do
    // is driven through the real dialog in the ui tests.
    f.doc.m_lavSetup.m_bWmaAll = FALSE;
    f.doc.OnLavSetup();
    const CLavSetupFields& opened = f.dialogs.lav.opened;
    EXPECT_TRUE(opened.m_bWma2 && opened.m_bWmaPro && !opened.m_bWmaAll &&
                opened.m_bStereoSpeakers && !opened.m_bChanged);
}

TEST(DialogCommands, ImportAndExportHandTheAnswerToTheOperations) {
    CommandFixture f;
    f.dialogs.exportTo.answer = [&f](CExportFields& d) {
        d.m_toText = TRUE;
        d.m_path = f.dir.File("all.txt");
        return IDOK;
    };
    f.doc.OnExport();
    EXPECT_EQ(f.dialogs.exportTo.opened.m_startFolder, f.dir.Str());
    EXPECT_EQ(f.dialogs.exportTo.opened.m_title, CString(u"Export Contents Media"));
    EXPECT_FALSE(f.dialogs.exportTo.opened.m_topicOnly);

    CNodeArray radio;
    radio.Add(CNodeItem(u"Radio", 1));
    f.dialogs.exportTo.answer = nullptr;
    f.doc.ExportTopic(radio);
    EXPECT_EQ(f.dialogs.exportTo.opened.m_title, CString(u"Export Topic"));
    EXPECT_TRUE(f.dialogs.exportTo.opened.m_topicOnly);

    f.doc.m_contents.ResetContents();
    f.dialogs.import.answer = [&f](CImportFields& d) {
        d.m_fromText = TRUE;
        d.m_overwrite = TRUE;
        d.m_path = f.dir.File("all.txt");
        return IDOK;
    };
    f.doc.OnImport();
    EXPECT_EQ(f.dialogs.import.opened.m_startFolder, f.dir.Str());
    EXPECT_EQ(Flatten(f.doc.m_contents).size(), 6u); // what the export wrote

    // The playlist item's dialog opens with the delete box clear.
    f.dialogs.playlist.answer = nullptr;
    CMediaItem item = Item(MEDIA_AUDIO_URL, u"L", u"http://x/l.pls", {u"Radio"});
    f.doc.ImportPlaylistItem(radio, &item);
    EXPECT_FALSE(f.dialogs.playlist.opened.m_deleteItem);
    EXPECT_EQ(f.dialogs.playlist.opened.m_topic, CString(u"Imported Media"));
}

TEST(DialogCommands, AWatchedDownloadThatIsCancelledEndsWithoutAWord) {
    CommandFixture f;
    const auto before = Flatten(f.doc.m_contents);
    CString seenTarget;
    f.dialogs.download = [&seenTarget](const CString&, const CString& target, CString*) {
        seenTarget = target;
        return TRANSFER_CANCELLED;
    };
    EXPECT_FALSE(f.doc.ImportFromSource(IMPORT_SOURCE_M3U, u"http://host/list.m3u", u"T"));
    EXPECT_EQ(seenTarget, f.dir.File("results.txt"));
    CMediaItem item = Item(MEDIA_AUDIO_URL, u"L", u"http://x/l.m3u", {u"Radio"});
    CNodeArray radio;
    radio.Add(CNodeItem(u"Radio", 1));
    EXPECT_FALSE(f.doc.ImportPlaylistItemTo(radio, item, u"T", TRUE));
    EXPECT_TRUE(f.boxes.Texts().empty());
    EXPECT_EQ(Flatten(f.doc.m_contents), before);
    EXPECT_FALSE(f.doc.m_bContentsChanged);

    // A failure keeps both boxes.
    f.dialogs.download = [](const CString&, const CString&, CString* error) {
        *error = u"Download Failed: Error X";
        return TRANSFER_FAILED;
    };
    EXPECT_FALSE(f.doc.ImportFromSource(IMPORT_SOURCE_PLS, u"http://host/l.pls", u"T"));
    EXPECT_EQ(f.boxes.Texts(),
              (std::vector<CString>{
                  u"COrvexDoc ReadPls - GetInternetData failed: Download Failed: Error X\n",
                  u"Import from http://host/l.pls failed."}));
}
