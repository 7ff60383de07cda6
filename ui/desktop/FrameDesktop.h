// The main window's part in the Linux desktop: the title a stream announces
// (window title, status area, played titles file), recording a stream,
// connecting again when a stream drops, the sleep timer, the MPRIS player
// on the session bus and the tray icon. The frame tells it what playback
// does; it steers playback through the frame's own operations.
#pragma once
#include <QObject>
#include <memory>

#include "platform/base/CString.h"
#include "ui/desktop/MprisTarget.h"

class CMainFrame;
class COrvexDoc;
class CMprisService;
class CSleepTimer;
class CStreamReconnect;
class CTrayIcon;
class QAction;
class QLabel;
class QMenu;

class CFrameDesktop : public QObject, public IMprisTarget {
public:
    CFrameDesktop(CMainFrame& frame, COrvexDoc& document);
    ~CFrameDesktop() override;

    // What the frame tells.
    // A medium started from the path asked for; played is what the engine
    // opened (a station's playlist gives its first stream); name, when
    // given, is the medium's name (a CD track of a walk).
    void OnStarted(const CString& requested, const CString& played,
                   const CString& name = CString());
    // Playback ended and the window is at rest.
    void OnStopped();
    void OnStreamTitle(const CString& title);
    BOOL OnStreamDropped(const CString& error);
    void OnRecordingStopped(const CString& reason);
    // The user closes the window: true when it goes to the tray instead.
    bool KeepInTray();
    // A stop while a dropped stream waits to connect again: true when one
    // was waiting, which is now given up.
    bool CancelReconnect();
    // With the sleep timer at "end of item", the end of a track stops.
    bool StopsAtEndOfItem() const;
    // Playback may have changed: the desktop's controls follow.
    void Refresh();

    // Commands of the Playback menu.
    void ToggleRecording();
    void ShowPlayedTitles();
    bool IsRecordingWanted() const { return m_recordWanted; }
    // Where recordings go: the chosen folder, else "Orvex Recordings" in
    // the desktop's music folder.
    CString RecordingsFolder() const;
    static CString DefaultRecordingsFolder();

    CStreamReconnect& Reconnect() { return *m_reconnect; }
    CSleepTimer& SleepTimer() { return *m_sleep; }
    CMprisService& Mpris() { return *m_mpris; }
    CTrayIcon& Tray() { return *m_tray; }

    // IMprisTarget
    CPlaybackState PlaybackState() override;
    qlonglong PositionUs() override;
    void Play() override;
    void Pause() override;
    void PlayPause() override;
    void Stop() override;
    void Next() override;
    void Previous() override;
    qlonglong SeekBy(qlonglong offsetUs) override;
    qlonglong SeekTo(qlonglong positionUs) override;
    void SetVolume(int percent) override;
    void OpenUri(const QString& uri) override;
    void Raise() override;
    void Quit() override;

private:
    void CreateMenus();
    void TryReconnect();
    void GiveUpReconnect(const CString& text);
    void ShowTitle();
    BOOL StartRecordingNow(CString* error);

    CMainFrame& m_frame;
    COrvexDoc& m_document;
    std::unique_ptr<CStreamReconnect> m_reconnect;
    std::unique_ptr<CSleepTimer> m_sleep;
    std::unique_ptr<CMprisService> m_mpris;
    std::unique_ptr<CTrayIcon> m_tray;
    QLabel* m_nowPlaying = nullptr;
    QAction* m_record = nullptr;
    QMenu* m_sleepMenu = nullptr;
    QAction* m_closeToTray = nullptr;

    // The medium as it started: what was asked for, what plays, its name
    // and the window title it got.
    quint64 m_track = 0;
    CString m_requested;
    CString m_requestedTitle;
    CString m_played;
    CString m_name;
    CString m_baseTitle;
    BOOL m_isStream = FALSE;
    // Where playback was last seen or sent, in microseconds.
    qlonglong m_positionUs = 0;
    // The song a stream announced last, kept while it connects again.
    CString m_song;
    CString m_lastLogged;
    bool m_recordWanted = false;
    // The sound as the user had it when the stream dropped.
    int m_volume = 50;
    BOOL m_muted = FALSE;
    bool m_quitting = false;
};
