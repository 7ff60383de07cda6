// The one top-level window: the menu, the transport bar, the hidden status
// bar, and the splitter view with the tree and the list or the picture. It
// holds the playback engine, is the target of every message that starts,
// stops or steers playback, owns the position timer and sets the title.
#pragma once
#include <QBasicTimer>
#include <QMainWindow>
#include <map>
#include <memory>

#include "app/MainFrameLink.h"
#include "platform/base/Array.h"
#include "platform/base/CString.h"
#include "player/MediaPlayer.h"

class CDriveWatcher;
class CFrameDesktop;
class COrvexDoc;
class COrvexSplitterView;
class CControlsBar;
class QAction;
class QMenu;

class CMainFrame : public QMainWindow,
                   public IMainFrame,
                   public IPlayerFrame,
                   public CMessageTarget {
public:
    explicit CMainFrame(COrvexDoc& document);
    ~CMainFrame() override;

    // IMainFrame
    void ShowFrame() override;
    void StopPlaybackForExit() override;
    void StopDiscPlayback() override;
    HWND GetFrameHwnd() const override { return GetSafeHwnd(); }
    BOOL IsDvdPlaying() const override { return m_player.m_bDvd; }
    BOOL IsCdPlaying() const override { return m_player.m_bCd; }
    // Plays a DVD folder, image or drive; true when it plays.
    BOOL StartDvd(const CString& folder) override;
    // Plays every file of a CD's folder as a track list, from the first.
    BOOL StartCdFolder(const CString& folder) override;
    void RunDvdNavigation() override;

    // IPlayerFrame
    BOOL SetVideoWindow(BOOL hasVideo, BOOL hasAudio, HWND* hOwner, HWND* hNotify,
                        RECT* rect) override;
    // Ends playback; with goOn a CD track list goes on to its next track.
    void StopPlayback(BOOL goOn) override;
    void BeginWaitCursor() override;
    void EndWaitCursor() override;
    const CLavSetup& GetLavSetup() const override;
    void OnStreamTitle(const CString& title) override;
    BOOL OnStreamDropped(const CString& error) override;
    void OnRecordingStopped(const CString& reason) override;

    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    void SetMediaPath(CString path) { m_mediaPath = std::move(path); }
    void SetMediaTitle(CString title) { m_mediaTitle = std::move(title); }
    const CString& GetMediaPath() const { return m_mediaPath; }
    const CString& GetMediaTitle() const { return m_mediaTitle; }

    // Plays a file or URL; true when it plays. A failure has been shown and
    // leaves the list in the right pane.
    BOOL StartMediaFile(const CString& path);
    // CD tracks (MainFrameDisc.cpp): one track, the next of the list, and
    // the list pane's request to play its topic as a track list.
    BOOL StartCd(const CString& path);
    void StartNextCdTrack();
    void OnPlayCdRequest();
    // "Play DVD Folder or Image...": a VIDEO_TS folder or an image from disk.
    void OnPlayDvdFolderOrImage();
    void TogglePause(BOOL keepFocus);
    void StartPositionTimer();
    void StopPositionTimer();
    BOOL PostToBar(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    void FocusRightPane();
    COrvexSplitterView* GetSplitterView() const;

    // File menu: a file from the file dialog, a URL from the Open URL box.
    void OnOpenMediaFile();
    void OnOpenMediaUrl();
    // What the Open URL command does with the text of its box.
    void OpenMediaUrl(const CString& url);
    // A medium named on the command line plays once the window is up.
    void PlayAtStart(const CString& medium);

    // The window title for a medium that plays with no title of its own.
    static CString TitleFor(const CString& path, BOOL isStream);

    // The menu entry of a command id, for the handlers that enable them.
    QAction* CommandAction(int id) const;
    CControlsBar* GetControlsBar() const { return m_wndControls; }
    // The desktop's part: now playing, recording, the tray, MPRIS.
    CFrameDesktop& Desktop() { return *m_desktop; }
    // The CD track walk one track on (1) or back (-1).
    void StepCdTrack(int step);
    // Drive changes go on to the document.
    CDriveWatcher& GetDriveWatcher() { return *m_driveWatcher; }

    CMediaPlayer m_player;
    BOOL m_cdListActive = FALSE;
    int m_cdIndex = -1;
    CStringArray m_cdTracks;

protected:
    void closeEvent(QCloseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // Plays the track of the list at index; the list stays on.
    void PlayCdTrack(int index);
    void CreateMenus();
    // The window at rest after playback: the bar, the title, the list.
    void RestAfterPlayback();
    QAction* AddCommand(QMenu* menu, int id, const QString& text);
    void OnAbout();
    void OnPositionTimer();
    // Handlers of the steering messages.
    void OnMute(WPARAM keepFocus);
    void OnSetVolume(WPARAM focusRightPane, LPARAM percent);
    void OnSeekDrag(WPARAM moving, LPARAM perMille);
    void OnSeekTo(LPARAM perMille);

    COrvexDoc& m_document;
    CControlsBar* m_wndControls = nullptr;
    COrvexSplitterView* m_pSplitterView = nullptr;
    CString m_mediaPath;
    CString m_mediaTitle;
    QBasicTimer m_positionTimer;
    std::unique_ptr<CDriveWatcher> m_driveWatcher;
    std::map<int, QAction*> m_commands;
    std::unique_ptr<CFrameDesktop> m_desktop;
};

// The main window if it is a CMainFrame, else null.
CMainFrame* GetOrvexFrame();
