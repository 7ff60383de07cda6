// The menu commands that ask a dialog first: what each dialog opens with,
// and what its answer changes.
#include <gtest/gtest.h>

#include "app/OrvexDoc.h"
#include "tests/app/ScriptedDialogs.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

namespace {

struct CommandFixture {
    CommandFixture() {
        doc.SetDialogs(&dialogs);
        doc.m_contentsFolder = dir.Str();
    }
    TempDir dir;
    ScriptedDialogs dialogs;
    MessageBoxRecorder boxes;
    COrvexDoc doc;
};

} // namespace

TEST(DialogCommands, FolderLocationsAndLavSetupTakeTheirAnswersOnlyAfterOk) {
    CommandFixture f;
    f.doc.m_videoFolder = u"/v";
    f.doc.OnFolderLocations();
    EXPECT_EQ(f.dialogs.folders.opened.m_contentsFolder, f.dir.Str());
    EXPECT_EQ(f.dialogs.folders.opened.m_videoFolder, CString(u"/v"));
    EXPECT_FALSE(f.doc.m_bContentsChanged);
    f.dialogs.folders.answer = [](CFoldersFields& d) {
        d.m_videoFolder = u"/films";
        return IDOK;
    };
    f.doc.OnFolderLocations();
    EXPECT_EQ(f.doc.m_videoFolder, CString(u"/films"));
    EXPECT_EQ(f.doc.m_contentsFolder, f.dir.Str());
    EXPECT_TRUE(f.doc.m_bContentsChanged);

    // LAV Setup: opened on the four choices; an OK without a click keeps the flag.
    f.doc.m_bContentsChanged = FALSE;
    f.doc.m_lavSetup.m_bWmaAll = FALSE;
    f.dialogs.lav.answer = [](CLavSetupFields& d) {
        d.m_bWma2 = FALSE;
        return IDOK;
    };
    f.doc.OnLavSetup();
    const CLavSetupFields& opened = f.dialogs.lav.opened;
    EXPECT_TRUE(opened.m_bWma2 && opened.m_bWmaPro && !opened.m_bWmaAll &&
                opened.m_bStereoSpeakers && !opened.m_bChanged);
    EXPECT_FALSE(f.doc.m_lavSetup.m_bWma2);
    EXPECT_FALSE(f.doc.m_bContentsChanged);
    f.dialogs.lav.answer = [](CLavSetupFields& d) {
        d.m_bWma2 = d.m_bWmaPro = d.m_bWmaAll = d.m_bStereoSpeakers = FALSE;
        d.m_bChanged = TRUE;
        return IDOK;
    };
    f.doc.OnLavSetup();
    EXPECT_FALSE(f.doc.m_lavSetup.m_bStereoSpeakers);
    EXPECT_TRUE(f.doc.m_bContentsChanged);
    f.dialogs.lav.answer = [](CLavSetupFields& d) {
        d.m_bWma2 = TRUE;
        d.m_bChanged = TRUE;
        return IDCANCEL;
    };
    f.doc.m_bContentsChanged = FALSE;
    f.doc.OnLavSetup();
    EXPECT_FALSE(f.doc.m_lavSetup.m_bWma2);
    EXPECT_FALSE(f.doc.m_bContentsChanged);
}
