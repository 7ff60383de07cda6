#include "ui/MainFrame.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QStatusBar>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/media/GraphSettings.h"
#include "platform/qt/DriveWatcher.h"
#include "platform/qt/QtGlue.h"
#include "ui/AboutDlg.h"
#include "ui/AppIcon.h"
#include "ui/Commands.h"
#include "ui/ControlsBar.h"
#include "ui/SplitterView.h"
#include "ui/StatusIndicators.h"
#include "ui/VideoView.h"
#include "ui/WindowHandles.h"
#include "ui/desktop/FrameDesktop.h"

CMainFrame* GetOrvexFrame() {
    return dynamic_cast<CMainFrame*>(GetMainFrame());
}

CMainFrame::CMainFrame(COrvexDoc& document) : m_document(document) {
    setWindowTitle(QStringLiteral("Orvex"));
    setWindowIcon(OrvexIcon());
    setObjectName(QStringLiteral("MainFrame"));
    resize(1000, 680);
    // The pipeline draws the picture into the native window behind a handle.
    SetNativeWindowResolver(NativeWindowFromHwnd);
    SetNativeWindowPlacer(
        [](HWND owner, long left, long top, long width, long height, bool visible) {
            if (auto* view = qobject_cast<COrvexVideoView*>(WidgetFromHwnd(owner)))
                view->PlacePicture(left, top, width, height, visible);
        });

    QStatusBar* status = statusBar();
    status->setObjectName(QStringLiteral("59393"));
    new CStatusIndicators(status);

    m_wndControls = new CControlsBar(this);
    addToolBar(Qt::TopToolBarArea, m_wndControls);

    m_pSplitterView = new COrvexSplitterView(&m_document, this);
    setCentralWidget(m_pSplitterView);
    status->hide();
    CreateMenus();

    // A volume that comes or goes reaches the document as the drive root
    // the panes know, and the document tells them and ends disc playback
    // when a disc went.
    m_driveWatcher = std::make_unique<CDriveWatcher>(DriveEventsFor(m_document));
    m_driveWatcher->AddSystemSources();

    // Command groups that live in their own files connect themselves here.
    ConnectItemDialogCommands(*this, m_document);
    ConnectDiscCommands(*this, m_document);
    m_desktop = std::make_unique<CFrameDesktop>(*this, m_document);
}

CMainFrame::~CMainFrame() {
    // A window that goes while something plays takes the pipeline with it,
    // so nothing draws into a window that no longer exists.
    if (m_player.m_pGraph)
        m_player.CleanPlayback();
}

QAction* CMainFrame::AddCommand(QMenu* menu, int id, const QString& text) {
    // A tab in the text separates the shortcut hint, shown on the right.
    QString label = text;
    QString hint;
    if (int tab = text.indexOf(QLatin1Char('\t')); tab >= 0) {
        label = text.left(tab);
        hint = text.mid(tab + 1);
    }
    auto* action = menu->addAction(label);
    action->setObjectName(QString::number(id));
    action->setData(id);
    if (!hint.isEmpty())
        action->setShortcut(QKeySequence(hint));
    action->setEnabled(false);
    m_commands[id] = action;
    return action;
}

void CMainFrame::CreateMenus() {
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    QAction* open = AddCommand(file, ID_FILE_OPEN, QStringLiteral("&Open Media File...\tCtrl+O"));
    open->setEnabled(true);
    connect(open, &QAction::triggered, this, &CMainFrame::OnOpenMediaFile);
    QAction* openUrl = AddCommand(file, ID_OPEN_MEDIA_URL, QStringLiteral("Open Media URL"));
    openUrl->setEnabled(true);
    connect(openUrl, &QAction::triggered, this, &CMainFrame::OnOpenMediaUrl);
    QAction* save = AddCommand(file, ID_SAVE_CONTENTS, QStringLiteral("Save Contents"));
    save->setStatusTip(QStringLiteral("Save any changes to the Contents"));
    save->setEnabled(true);
    connect(save, &QAction::triggered, this, [this] { m_document.OnSaveContents(); });
    file->addSeparator();
    QAction* exit = AddCommand(file, ID_APP_EXIT, QStringLiteral("E&xit"));
    exit->setEnabled(true);
    connect(exit, &QAction::triggered, this, &QWidget::close);

    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    QAction* statusBarAction = AddCommand(view, ID_VIEW_STATUS_BAR, QStringLiteral("&Status Bar"));
    statusBarAction->setCheckable(true);
    statusBarAction->setChecked(false);
    statusBarAction->setEnabled(true);
    connect(statusBarAction, &QAction::toggled, statusBar(), &QWidget::setVisible);

    QMenu* setup = menuBar()->addMenu(QStringLiteral("&Setup"));
    QAction* fontLeft = AddCommand(setup, ID_FONT_LEFT, QStringLiteral("Font - Left Pane..."));
    fontLeft->setEnabled(true);
    connect(fontLeft, &QAction::triggered, this, [this] { m_document.OnFontLeft(); });
    QAction* fontRight = AddCommand(setup, ID_FONT_RIGHT, QStringLiteral("Font - Right Pane..."));
    fontRight->setEnabled(true);
    connect(fontRight, &QAction::triggered, this, [this] { m_document.OnFontRight(); });
    AddCommand(setup, ID_FOLDER_LOCATIONS, QStringLiteral("Folder Locations..."));
    AddCommand(setup, ID_LAV_SETUP, QStringLiteral("LAV Setup..."));
    QAction* checkForUpdates =
        AddCommand(setup, ID_CHECK_FOR_UPDATES, QStringLiteral("Check For Updates"));
    checkForUpdates->setEnabled(true);
    connect(checkForUpdates, &QAction::triggered, this, [this] { m_document.OnCheckForUpdates(); });

    QMenu* tools = menuBar()->addMenu(QStringLiteral("&Tools"));
    AddCommand(tools, ID_EXPORT, QStringLiteral("Export"));
    AddCommand(tools, ID_IMPORT, QStringLiteral("Import"));
    AddCommand(tools, ID_RADIO_SEARCH, QStringLiteral("Search For Radio Stations"));
    AddCommand(tools, ID_RADIO_UPDATE, QStringLiteral("Update Radio Station Database"));

    QMenu* disc = menuBar()->addMenu(QStringLiteral("&CD-DVD"));
    disc->setObjectName(QStringLiteral("CD-DVD"));
    AddCommand(disc, ID_DVD_NAVIGATION, QStringLiteral("DVD Navigation"));
    AddCommand(disc, ID_PLAY_DVD, QStringLiteral("Play DVD"));
    AddCommand(disc, ID_PLAY_CD, QStringLiteral("Play CD"));
    AddCommand(disc, ID_PLAY_DVD_FOLDER, QStringLiteral("Play DVD Folder or Image..."));

    QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
    AddCommand(help, ID_HELP_CONTENTS, QStringLiteral("Orvex Help"));
    QAction* about = AddCommand(help, ID_ABOUT, QStringLiteral("&About Orvex..."));
    about->setEnabled(true);
    connect(about, &QAction::triggered, this, &CMainFrame::OnAbout);
}

QAction* CMainFrame::CommandAction(int id) const {
    auto it = m_commands.find(id);
    return it == m_commands.end() ? nullptr : it->second;
}

void CMainFrame::ShowFrame() {
    show();
    m_pSplitterView->OnInitialUpdate();
}

void CMainFrame::StopPlaybackForExit() {
    StopPlayback(FALSE);
}

void CMainFrame::StopDiscPlayback() {
    if (m_player.m_bCd || m_player.m_bDvd)
        StopPlayback(FALSE);
}

COrvexSplitterView* CMainFrame::GetSplitterView() const {
    COrvexApp* app = AfxGetOrvexApp();
    return app ? app->m_pSplitterView : nullptr;
}

void CMainFrame::FocusRightPane() {
    COrvexApp* app = AfxGetOrvexApp();
    if (app && app->m_hwndRightPane)
        SetFocus(app->m_hwndRightPane);
}

BOOL CMainFrame::PostToBar(UINT message, WPARAM wParam, LPARAM lParam) {
    COrvexApp* app = AfxGetOrvexApp();
    if (!app || !app->m_hwndControls)
        return FALSE;
    PostMessageW(app->m_hwndControls, message, wParam, lParam);
    return TRUE;
}

void CMainFrame::BeginWaitCursor() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

void CMainFrame::EndWaitCursor() {
    QApplication::restoreOverrideCursor();
}

const CLavSetup& CMainFrame::GetLavSetup() const {
    return m_document.m_lavSetup;
}

void CMainFrame::OnAbout() {
    CAboutDlg dialog(this);
    dialog.exec();
}

void CMainFrame::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        FocusRightPane();
}

void CMainFrame::closeEvent(QCloseEvent* event) {
    if (m_desktop->KeepInTray()) {
        event->ignore();
        return;
    }
    if (m_document.SaveModified())
        event->accept();
    else
        event->ignore();
}
