// The frame's message table: what the bar, the panes, the pipeline and the
// radio job post to the frame, and the position timer.
#include <QTimerEvent>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/UserMessages.h"
#include "ui/MainFrame.h"

LRESULT CMainFrame::OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case UM_GRAPH_NOTIFY:
        m_player.OnGraphEvent(this);
        break;
    case UM_PLAY_MEDIA:
        if (!m_mediaPath.IsEmpty())
            StartMediaFile(m_mediaPath);
        break;
    case UM_PLAY_DVD:
        if (!m_mediaPath.IsEmpty())
            StartDvd(m_mediaPath);
        break;
    case UM_PLAY_CD:
        OnPlayCdRequest();
        break;
    case UM_STOP:
        StopPlayback(FALSE);
        FocusRightPane();
        break;
    case UM_PAUSE:
        TogglePause(static_cast<BOOL>(wParam != 0));
        break;
    case UM_SEEK_DRAG:
        OnSeekDrag(wParam, lParam);
        break;
    case UM_SEEK_TO:
        OnSeekTo(lParam);
        break;
    case UM_SET_VOLUME:
        OnSetVolume(wParam, lParam);
        break;
    case UM_MUTE:
        OnMute(wParam);
        break;
    case UM_SHOW_LEFT:
        if (COrvexApp* app = AfxGetOrvexApp())
            PostMessageW(app->m_hwndSplitterView, message, wParam, lParam);
        break;
    case UM_UPDATE_FAILED:
    case UM_UPDATE_DONE:
        m_document.OnRadioJobMessage(message);
        break;
    default:
        break;
    }
    return 0;
}

void CMainFrame::OnMute(WPARAM keepFocus) {
    m_player.ToggleMute();
    PostToBar(UM_BAR_MUTED, 0, m_player.m_bMuted != 0);
    if (!keepFocus)
        FocusRightPane();
}

void CMainFrame::OnSetVolume(WPARAM focusRightPane, LPARAM percent) {
    if (m_player.m_state == 1) {
        // No volume changes while paused: the slider goes back.
        PostToBar(UM_BAR_VOLUME, 0, m_player.m_volume);
        return;
    }
    m_player.SetVolume(static_cast<int>(percent < 0 ? 0 : (percent > 100 ? 100 : percent)));
    if (focusRightPane)
        FocusRightPane();
}

void CMainFrame::OnSeekDrag(WPARAM moving, LPARAM perMille) {
    if (m_player.m_state == 0)
        return;
    int seconds = 0;
    if (!m_player.SeekDrag(moving != 0, static_cast<int>(perMille), seconds))
        return;
    if (moving)
        PostToBar(UM_BAR_POSITION, seconds, perMille);
    else
        FocusRightPane();
}

void CMainFrame::OnSeekTo(LPARAM perMille) {
    if (m_player.m_state == 0)
        return;
    int seconds = 0;
    if (m_player.SeekTo(static_cast<int>(perMille), seconds))
        PostToBar(UM_BAR_POSITION, seconds, perMille);
}

void CMainFrame::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_positionTimer.timerId())
        OnPositionTimer();
    else
        QMainWindow::timerEvent(event);
}

void CMainFrame::OnPositionTimer() {
    // Paused, the bar keeps what it shows.
    if (m_player.m_state != 2)
        return;
    constexpr uint32_t kVideoTitleSetMenu = 3;
    if (m_player.m_bDvd && m_player.m_dvdDomain == kVideoTitleSetMenu) {
        PostToBar(UM_BAR_POSITION, 0, 0);
        return;
    }
    int perMille = 0;
    int seconds = 0;
    if (m_player.GetPosition(perMille, seconds))
        PostToBar(UM_BAR_POSITION, seconds, perMille);
}
