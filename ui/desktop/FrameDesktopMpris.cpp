// What the desktop's sound menu and media keys see and do, through the
// frame's own operations and messages, under the rules of the window: a
// stream can't pause or seek, volume stays while paused or muted.
#include <QCoreApplication>
#include <QTimer>
#include <QUrl>
#include <filesystem>

#include "platform/base/UserMessages.h"
#include "platform/qt/QtGlue.h"
#include "ui/CommandLine.h"
#include "ui/MainFrame.h"
#include "ui/desktop/FrameDesktop.h"
#include "ui/desktop/StreamReconnect.h"

namespace {

constexpr LONGLONG kUnitsPerMicrosecond = 10;

} // namespace

CPlaybackState CFrameDesktop::PlaybackState() {
    const CMediaPlayer& player = m_frame.m_player;
    CPlaybackState state;
    state.track = m_track;
    if (player.m_state == 2 || (player.m_state == 0 && m_reconnect->Active()))
        state.status = CPlaybackState::Playing;
    else if (player.m_state == 1)
        state.status = CPlaybackState::Paused;
    state.canPlay = state.status != CPlaybackState::Stopped || !m_requested.IsEmpty();
    if (state.status == CPlaybackState::Stopped)
        return state;
    state.name = ToQString(m_name);
    state.song = ToQString(m_song);
    state.station = ToQString(m_name);
    state.stream = m_isStream;
    state.url = m_isStream || m_played.Find(u"://") > 0
                    ? ToQString(m_played)
                    : QUrl::fromLocalFile(ToQString(m_played)).toString();
    state.lengthUs = player.m_duration / kUnitsPerMicrosecond;
    state.volume = player.m_state == 0 ? m_volume : player.m_volume;
    state.muted = player.m_state == 0 ? m_muted : player.m_bMuted;
    state.canPause = player.m_state != 0 && !player.m_bStream;
    state.canSeek = state.canPause && !player.m_bDvd && player.m_duration > 0;
    state.canGoNext = m_frame.m_cdListActive && m_frame.m_cdIndex >= 0 &&
                      m_frame.m_cdIndex + 1 < m_frame.m_cdTracks.GetSize();
    state.canGoPrevious = m_frame.m_cdListActive && m_frame.m_cdIndex > 0;
    return state;
}

qlonglong CFrameDesktop::PositionUs() {
    CMediaPlayer& player = m_frame.m_player;
    LONGLONG now = 0;
    if (player.m_state == 0)
        return 0;
    // While a seek flushes the pipeline its position is unknown for a
    // moment; the last one known keeps the bus from seeing a jump to 0.
    if (player.GetMediaTime(now))
        m_positionUs = now / kUnitsPerMicrosecond;
    return m_positionUs;
}

void CFrameDesktop::Play() {
    CMediaPlayer& player = m_frame.m_player;
    if (player.m_state == 1) {
        m_frame.TogglePause(TRUE);
    } else if (player.m_state == 0 && !m_reconnect->Active() && !m_requested.IsEmpty()) {
        // The last medium again, as it was chosen.
        m_frame.SetMediaPath(m_requested);
        m_frame.SetMediaTitle(m_requestedTitle);
        PostMessageW(m_frame.GetSafeHwnd(), UM_PLAY_MEDIA, 0, 0);
    }
}

void CFrameDesktop::Pause() {
    if (m_frame.m_player.m_state == 2 && !m_frame.m_player.m_bStream)
        m_frame.TogglePause(TRUE);
}

void CFrameDesktop::PlayPause() {
    const CMediaPlayer& player = m_frame.m_player;
    if (player.m_state == 1)
        m_frame.TogglePause(TRUE);
    else if (player.m_state == 0 && !m_reconnect->Active())
        Play();
    // A stream can't pause: the key that would pause it stops it, and the
    // next press plays it again.
    else if (player.m_bStream || player.m_state == 0)
        Stop();
    else
        m_frame.TogglePause(TRUE);
}

void CFrameDesktop::Stop() {
    m_frame.StopPlayback(FALSE);
}

void CFrameDesktop::Next() {
    if (PlaybackState().canGoNext)
        m_frame.StepCdTrack(1);
}

void CFrameDesktop::Previous() {
    if (PlaybackState().canGoPrevious)
        m_frame.StepCdTrack(-1);
}

qlonglong CFrameDesktop::SeekBy(qlonglong offsetUs) {
    const CPlaybackState state = PlaybackState();
    if (!state.canSeek)
        return -1;
    qlonglong target = PositionUs() + offsetUs;
    if (target > state.lengthUs) {
        // Past the end is the next track, or the end.
        if (state.canGoNext)
            Next();
        else
            Stop();
        return -1;
    }
    return SeekTo(target < 0 ? 0 : target);
}

qlonglong CFrameDesktop::SeekTo(qlonglong positionUs) {
    CMediaPlayer& player = m_frame.m_player;
    const CPlaybackState state = PlaybackState();
    if (!state.canSeek || positionUs < 0 || positionUs > state.lengthUs)
        return -1;
    LONGLONG reached = 0;
    if (!player.SeekToTime(positionUs * kUnitsPerMicrosecond, reached))
        return -1;
    m_positionUs = reached / kUnitsPerMicrosecond;
    const LONGLONG seconds = reached / 10000000;
    m_frame.PostToBar(UM_BAR_POSITION, static_cast<WPARAM>(seconds),
                      static_cast<LPARAM>(reached * 1000 / player.m_duration));
    return reached / kUnitsPerMicrosecond;
}

void CFrameDesktop::SetVolume(int percent) {
    CMediaPlayer& player = m_frame.m_player;
    // As on the bar: no change while paused, none while muted.
    if (player.m_state != 2 || !player.SetVolume(percent))
        return;
    m_frame.PostToBar(UM_BAR_VOLUME, 0, player.m_volume);
}

void CFrameDesktop::OpenUri(const QString& uri) {
    const std::string argument = uri.toStdString();
    m_frame.PlayAtStart(MediumFromArgument(argument, std::filesystem::current_path().string()));
}

void CFrameDesktop::Raise() {
    m_frame.showNormal();
    m_frame.raise();
    m_frame.activateWindow();
}

void CFrameDesktop::Quit() {
    m_quitting = true;
    // Closed from the tray, the window may be hidden: the application ends
    // all the same once it has closed.
    if (m_frame.close())
        QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
    m_quitting = false;
}
