#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QStatusBar>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/FontDialog.h"
#include "platform/base/HelpViewer.h"
#include "platform/qt/QtGlue.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/PrintCString.h"
#include "tests/support/TempDir.h"
#include "tests/ui/UrlRecorder.h"
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

TEST(MainFrame, OrvexHelpOpensTheManualInTheDesktopsBrowser) {
    App();
    InstallQtPlatformGlue();
    UrlRecorder browser;
    MessageBoxRecorder boxes;
    COrvexDoc doc;
    CMainFrame frame(doc);
    QAction* help = frame.CommandAction(ID_HELP_CONTENTS);
    ASSERT_TRUE(help->isEnabled());
    {
        // The staged start directory holds the manual.
        ScopedCurrentDir stage(getenv("ORVEX_STAGE_DIR"));
        help->trigger();
    }
    const QString manual = QString::fromUtf8(getenv("ORVEX_STAGE_DIR")) + "/OrvexHelp/index.html";
    ASSERT_EQ(browser.urls.size(), 1u);
    EXPECT_EQ(browser.urls[0], QUrl::fromLocalFile(manual));
    // Every link between the manual's pages leads to a page and section
    // that exist, the search's own section among them.
    const QDir folder = QFileInfo(manual).dir();
    const QRegularExpression link(QStringLiteral("href=\"([a-z-]+\\.html)(?:#([a-z-]+))?\""));
    int links = 0;
    for (const QString& name : folder.entryList({QStringLiteral("*.html")})) {
        QFile page(folder.filePath(name));
        ASSERT_TRUE(page.open(QIODevice::ReadOnly));
        for (const auto& match : link.globalMatch(QString::fromUtf8(page.readAll()))) {
            ++links;
            QFile target(folder.filePath(match.captured(1)));
            ASSERT_TRUE(target.open(QIODevice::ReadOnly))
                << name.toStdString() << " -> " << match.captured(1).toStdString();
            if (!match.captured(2).isEmpty()) {
                EXPECT_TRUE(target.readAll().contains(
                    QStringLiteral("id=\"%1\"").arg(match.captured(2)).toUtf8()))
                    << name.toStdString() << " -> " << match.captured(0).toStdString();
            }
        }
    }
    EXPECT_GT(links, 50);
    QFile radio(folder.filePath(ToQString(CString(kRadioHelpPage))));
    ASSERT_TRUE(radio.open(QIODevice::ReadOnly));
    EXPECT_TRUE(radio.readAll().contains(
        QStringLiteral("id=\"%1\"").arg(ToQString(CString(kRadioSearchHelpSection))).toUtf8()));
    EXPECT_TRUE(boxes.Texts().empty());

    // Where the manual is missing, the user hears of it and nothing opens.
    TempDir empty;
    ScopedCurrentDir elsewhere(empty.Path());
    help->trigger();
    EXPECT_EQ(browser.urls.size(), 1u);
    CString missing;
    missing.Format(u"The help file %s/OrvexHelp/index.html could not be found.", empty.Str());
    EXPECT_EQ(boxes.Texts(), std::vector<CString>{missing});
}
