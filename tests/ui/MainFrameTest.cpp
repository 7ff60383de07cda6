#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QStatusBar>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/FontDialog.h"
#include "platform/qt/QtGlue.h"
#include "tests/support/TempDir.h"
#include "ui/AboutDlg.h"
#include "ui/Commands.h"
#include "ui/MainFrame.h"

namespace {

QApplication& App() {
    static int argc = 1;
    static char name[] = "test_ui";
    static char* argv[] = {name, nullptr};
    static QApplication* app = new QApplication(argc, argv);
    return *app;
}

} // namespace

TEST(MainFrame, MenuBarCarriesEveryCommandInItsMenu) {
    App();
    COrvexDoc doc;
    CMainFrame frame(doc);
    EXPECT_EQ(frame.windowTitle(), QStringLiteral("Orvex"));
    QStringList menus;
    for (QAction* a : frame.menuBar()->actions())
        menus << a->text().remove(QLatin1Char('&'));
    EXPECT_EQ(menus, (QStringList{"File", "View", "Playback", "Setup", "Tools", "CD-DVD", "Help"}));

    struct Entry {
        int id;
        const char* text;
    };
    const Entry entries[] = {
        {ID_FILE_OPEN, "&Open Media File..."},
        {ID_OPEN_MEDIA_URL, "Open Media URL"},
        {ID_SAVE_CONTENTS, "Save Contents"},
        {ID_APP_EXIT, "E&xit"},
        {ID_VIEW_STATUS_BAR, "&Status Bar"},
        {ID_FONT_LEFT, "Font - Left Pane..."},
        {ID_FONT_RIGHT, "Font - Right Pane..."},
        {ID_FOLDER_LOCATIONS, "Folder Locations..."},
        {ID_LAV_SETUP, "LAV Setup..."},
        {ID_CHECK_FOR_UPDATES, "Check For Updates"},
        {ID_EXPORT, "Export"},
        {ID_IMPORT, "Import"},
        {ID_RADIO_SEARCH, "Search For Radio Stations"},
        {ID_RADIO_UPDATE, "Update Radio Station Database"},
        {ID_DVD_NAVIGATION, "DVD Navigation"},
        {ID_PLAY_DVD, "Play DVD"},
        {ID_PLAY_CD, "Play CD"},
        {ID_HELP_CONTENTS, "Orvex Help"},
        {ID_ABOUT, "&About Orvex..."},
    };
    for (const Entry& e : entries) {
        QAction* action = frame.CommandAction(e.id);
        ASSERT_NE(action, nullptr) << e.id;
        EXPECT_EQ(action->text(), QString::fromUtf8(e.text)) << e.id;
        EXPECT_EQ(action->objectName(), QString::number(e.id));
    }
    EXPECT_EQ(frame.CommandAction(ID_FILE_OPEN)->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+O")));
    EXPECT_TRUE(frame.CommandAction(ID_ABOUT)->isEnabled());
    EXPECT_TRUE(frame.CommandAction(ID_APP_EXIT)->isEnabled());
    EXPECT_TRUE(frame.CommandAction(ID_CHECK_FOR_UPDATES)->isEnabled());

    // The status bar starts hidden and the View menu shows it.
    frame.show();
    EXPECT_FALSE(frame.statusBar()->isVisible());
    frame.CommandAction(ID_VIEW_STATUS_BAR)->trigger();
    EXPECT_TRUE(frame.statusBar()->isVisible());
}

TEST(AboutDlg, ShowsTheAboutTextInItsEditControl) {
    App();
    COrvexApp app;
    COrvexDoc doc;
    app.m_pDoc = &doc;
    CAboutDlg dialog;
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("About Orvex"));
    auto* edit = dialog.findChild<QPlainTextEdit*>(QStringLiteral("1053"));
    ASSERT_NE(edit, nullptr);
    EXPECT_TRUE(edit->isReadOnly());
    EXPECT_TRUE(edit->toPlainText().startsWith(QStringLiteral("Orvex version:  0.9.0.0\n   http")));
}

TEST(QtGlue, FontsMapBothWays) {
    App();
    LOGFONTW font{};
    font.lfHeight = -15;
    font.lfWeight = FW_BOLD;
    font.lfItalic = 1;
    SetFaceName(font, CString(u"DejaVu Sans"));
    QFont q = FontFromLogFont(font);
    EXPECT_EQ(q.pixelSize(), 15);
    EXPECT_TRUE(q.bold());
    EXPECT_TRUE(q.italic());
    LOGFONTW back = LogFontFromFont(q);
    EXPECT_EQ(back.lfHeight, -15);
    EXPECT_EQ(back.lfWeight, FW_BOLD);
    EXPECT_EQ(GetFaceName(back), CString(u"DejaVu Sans"));
    EXPECT_EQ(FromQString(ToQString(CString(u"Ж𝄞x"))), CString(u"Ж𝄞x"));
}

TEST(MainFrame, SaveContentsAndFontCommandsReachTheDocument) {
    App();
    TempDir dir;
    COrvexDoc doc;
    doc.m_dataFolder = dir.Str();
    doc.m_bContentsChanged = TRUE;
    CMainFrame frame(doc);
    QAction* save = frame.CommandAction(ID_SAVE_CONTENTS);
    ASSERT_TRUE(save->isEnabled());
    save->trigger();
    EXPECT_FALSE(doc.m_bContentsChanged);
    EXPECT_EQ(TempDir::Read(dir / "OrvexContents.dat"), std::string("\x01\0\0\0\0\0\0\0", 8));
    EXPECT_EQ(TempDir::Read(dir / "OrvexUser.dat").size(), 212u);

    FontDialogHook previous = SetFontDialogHook([](LOGFONTW& font, DWORD) {
        SetFaceName(font, CString(u"Picked"));
        return TRUE;
    });
    ASSERT_TRUE(frame.CommandAction(ID_FONT_RIGHT)->isEnabled());
    frame.CommandAction(ID_FONT_RIGHT)->trigger();
    EXPECT_EQ(GetFaceName(doc.m_rightFont), CString(u"Picked"));
    frame.CommandAction(ID_FONT_LEFT)->trigger();
    EXPECT_EQ(GetFaceName(doc.m_leftFont), CString(u"Picked"));
    EXPECT_TRUE(doc.m_bContentsChanged);
    SetFontDialogHook(previous);
}
