// Starting and stopping a medium in the frame: the engine's build, the
// window that owns the picture, the timer, the title and the right pane.
#include <QWidget>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/MessageBox.h"
#include "platform/base/UserMessages.h"
#include "platform/qt/QtGlue.h"
#include "ui/ListView.h"
#include "ui/MainFrame.h"
#include "ui/SplitterView.h"
#include "ui/VideoView.h"
#include "ui/desktop/FrameDesktop.h"

namespace {

// The owner of the picture or the sound and its client rectangle; a box
// with the text for what is missing, and false, when either is.
BOOL TakeOwner(HWND hwnd, const char16_t* noWindow, const char16_t* noArea, HWND* hOwner,
               RECT* rect) {
    *hOwner = hwnd;
    if (!hwnd) {
        AfxMessageBox(CString(noWindow));
        return FALSE;
    }
    QWidget* widget = WidgetFromHwnd(hwnd);
    if (!widget) {
        AfxMessageBox(CString(noArea));
        return FALSE;
    }
    *rect = RECT{0, 0, widget->width(), widget->height()};
    return TRUE;
}

} // namespace

BOOL CMainFrame::StartMediaFile(const CString& path) {
    // A station given by its playlist plays the playlist's first stream.
    CString playable = path;
    bool resolved =
        !IsStationPlaylistUrl(path) || m_document.ResolveStationPlaylist(path, playable);
    if (!resolved || !m_player.PlayFileLav(playable, this)) {
        if (COrvexSplitterView* view = GetSplitterView())
            view->ReplaceView(&COrvexListView::staticMetaObject);
        FocusRightPane();
        return FALSE;
    }
    StartPositionTimer();
    if (!m_mediaTitle.IsEmpty())
        setWindowTitle(ToQString(m_mediaTitle));
    else
        setWindowTitle(ToQString(TitleFor(path, m_player.m_bStream)));
    FocusRightPane();
    m_desktop->OnStarted(path, playable);
    return TRUE;
}

CString CMainFrame::TitleFor(const CString& path, BOOL isStream) {
    // A stream's address is shown whole; a file by its name, the part
    // behind the last separator. A separator in the very first place
    // leaves only the program's name.
    const int last = isStream ? -1 : path.ReverseFind(u'/');
    if (last == 0)
        return CString(u"ORVEX");
    CString title;
    title.Format(u"ORVEX:  %s", last > 0 ? path.Mid(last + 1) : path);
    return title;
}

BOOL CMainFrame::SetVideoWindow(BOOL hasVideo, BOOL hasAudio, HWND* hOwner, HWND* hNotify,
                                RECT* rect) {
    COrvexApp* app = AfxGetOrvexApp();
    if (hasVideo) {
        COrvexSplitterView* view = GetSplitterView();
        if (!view) {
            AfxMessageBox(CString(u"ERROR Video Window not accessable."));
            return FALSE;
        }
        if (!view->ReplaceView(&COrvexVideoView::staticMetaObject)) {
            AfxMessageBox(CString(u"ERROR could not create VideoView Window"));
            return FALSE;
        }
        if (!TakeOwner(app ? app->m_hwndVideo : nullptr, u"VideoView Window not created.",
                       u"VideoView Window area not available.", hOwner, rect))
            return FALSE;
    } else if (hasAudio) {
        if (!TakeOwner(app ? app->m_hwndList : nullptr, u"ListView Video Window not available.",
                       u"ListView Window area not available.", hOwner, rect))
            return FALSE;
    }
    *hNotify = GetSafeHwnd();
    return TRUE;
}

void CMainFrame::StopPlayback(BOOL goOn) {
    if (m_player.m_state == 0) {
        // A stream that dropped has no graph while it waits to connect
        // again, and still plays as far as the user is concerned.
        if (m_desktop && m_desktop->CancelReconnect())
            RestAfterPlayback();
        return;
    }
    // A track list goes on by itself with its next track, unless the sleep
    // timer waits for the end of this one.
    if (goOn && m_cdListActive && !m_desktop->StopsAtEndOfItem()) {
        StartNextCdTrack();
        return;
    }
    m_cdListActive = FALSE;
    m_cdIndex = -1;
    m_cdTracks.RemoveAll();
    // A teardown that went wrong leaves the window as it is.
    if (!m_player.CleanPlayback())
        return;
    RestAfterPlayback();
}

void CMainFrame::RestAfterPlayback() {
    StopPositionTimer();
    setWindowTitle(QStringLiteral("ORVEX"));
    m_mediaPath.Empty();
    m_mediaTitle.Empty();
    if (COrvexSplitterView* view = GetSplitterView())
        view->ReplaceView(&COrvexListView::staticMetaObject);
    if (m_desktop)
        m_desktop->OnStopped();
}

void CMainFrame::OnStreamTitle(const CString& title) {
    m_desktop->OnStreamTitle(title);
}

BOOL CMainFrame::OnStreamDropped(const CString& error) {
    return m_desktop->OnStreamDropped(error);
}

void CMainFrame::OnRecordingStopped(const CString& reason) {
    m_desktop->OnRecordingStopped(reason);
}

void CMainFrame::TogglePause(BOOL keepFocus) {
    m_player.PauseResume();
    PostToBar(UM_BAR_PAUSED, 0, m_player.m_state == 1);
    if (!keepFocus)
        FocusRightPane();
}

void CMainFrame::StartPositionTimer() {
    if (m_player.m_state != 2)
        return;
    m_positionTimer.start(1000, this);
    PostToBar(UM_BAR_STARTED);
}

void CMainFrame::StopPositionTimer() {
    m_positionTimer.stop();
    PostToBar(UM_BAR_STOPPED);
}
