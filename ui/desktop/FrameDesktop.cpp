#include "ui/desktop/FrameDesktop.h"

#include <QAction>
#include <QActionGroup>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStandardPaths>
#include <QStatusBar>
#include <QSystemTrayIcon>
#include <ctime>

#include "app/OrvexDoc.h"
#include "app/PlayedTitles.h"
#include "platform/base/MessageBox.h"
#include "platform/base/UserMessages.h"
#include "platform/qt/QtGlue.h"
#include "ui/ControlsBar.h"
#include "ui/MainFrame.h"
#include "ui/desktop/DesktopCommands.h"
#include "ui/desktop/MprisService.h"
#include "ui/desktop/PlayedTitlesDlg.h"
#include "ui/desktop/SleepTimer.h"
#include "ui/desktop/StreamReconnect.h"
#include "ui/desktop/TrayIcon.h"

namespace {

// The part of an address or path behind its last "/", when there is one.
CString LastPart(const CString& path) {
    CString trimmed = AddressWithoutQuery(path);
    trimmed.TrimRight(u'/');
    int slash = trimmed.ReverseFind(u'/');
    return slash >= 0 ? trimmed.Mid(slash + 1) : trimmed;
}

} // namespace

CFrameDesktop::CFrameDesktop(CMainFrame& frame, COrvexDoc& document)
    : m_frame(frame), m_document(document) {
    m_reconnect = std::make_unique<CStreamReconnect>([this] { TryReconnect(); });
    m_sleep = std::make_unique<CSleepTimer>(
        [this](int share) { m_frame.m_player.FadeVolume(share); },
        [this] { m_frame.StopPlayback(FALSE); },
        [this]() -> qint64 {
            CMediaPlayer& player = m_frame.m_player;
            LONGLONG now = 0;
            if (player.m_state != 2 || player.m_duration <= 0 || !player.GetMediaTime(now))
                return -1;
            return (player.m_duration - now) / 10000;
        });
    m_mpris = std::make_unique<CMprisService>(*this);
    m_tray = std::make_unique<CTrayIcon>(
        &frame, CTrayCommands{[this] { PlayPause(); }, [this] { Stop(); }, [this] { Quit(); }});
    m_tray->Show(QSystemTrayIcon::isSystemTrayAvailable());

    m_nowPlaying = new QLabel(&frame);
    m_nowPlaying->setObjectName(QStringLiteral("NowPlaying"));
    m_nowPlaying->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // Before the lock panes, which end the bar.
    frame.statusBar()->insertPermanentWidget(0, m_nowPlaying, 1);
    CreateMenus();
    connect(frame.GetControlsBar(), &CControlsBar::MessageHandled, this, [this] { Refresh(); });
    connect(m_sleep.get(), &CSleepTimer::Changed, this, [this] { Refresh(); });
}

CFrameDesktop::~CFrameDesktop() = default;

void CFrameDesktop::CreateMenus() {
    QMenuBar* bar = m_frame.menuBar();
    QAction* setupEntry = nullptr;
    for (QAction* entry : bar->actions()) {
        if (entry->text() == QStringLiteral("&Setup"))
            setupEntry = entry;
    }
    auto* playback = new QMenu(QStringLiteral("&Playback"), bar);
    bar->insertMenu(setupEntry, playback);

    m_record = playback->addAction(QStringLiteral("&Record"));
    m_record->setObjectName(QString::number(ID_RECORD));
    m_record->setCheckable(true);
    m_record->setShortcut(QKeySequence(QStringLiteral("Ctrl+R")));
    m_record->setStatusTip(QStringLiteral("Record the stream as it is received"));
    connect(m_record, &QAction::triggered, this, [this] { ToggleRecording(); });

    m_sleepMenu = playback->addMenu(QStringLiteral("&Sleep Timer"));
    m_sleepMenu->setObjectName(QString::number(ID_SLEEP_MENU));
    auto* group = new QActionGroup(m_sleepMenu);
    auto addSleep = [&](int id, const QString& text, auto start) {
        QAction* entry = m_sleepMenu->addAction(text);
        entry->setObjectName(QString::number(id));
        entry->setCheckable(true);
        group->addAction(entry);
        connect(entry, &QAction::triggered, this, start);
    };
    addSleep(ID_SLEEP_OFF, QStringLiteral("Off"), [this] { m_sleep->Cancel(); });
    for (int minutes : {15, 30, 60, 90}) {
        addSleep(ID_SLEEP_OFF + minutes, QStringLiteral("%1 Minutes").arg(minutes),
                 [this, minutes] { m_sleep->StartMinutes(minutes); });
    }
    addSleep(ID_SLEEP_END_OF_ITEM, QStringLiteral("End of Current Item"),
             [this] { m_sleep->StartEndOfItem(); });
    // The minutes left, rounded up, where the user looks for them.
    QAction* sleepOff = m_sleepMenu->actions().first();
    connect(m_sleepMenu, &QMenu::aboutToShow, this, [this, sleepOff] {
        const int left = m_sleep->MinutesLeft();
        sleepOff->setText(left < 0 ? QStringLiteral("Off")
                                   : QStringLiteral("Off (%1 min left)").arg(left));
    });

    playback->addSeparator();
    QAction* titles = playback->addAction(QStringLiteral("Played &Titles..."));
    titles->setObjectName(QString::number(ID_PLAYED_TITLES));
    connect(titles, &QAction::triggered, this, [this] { ShowPlayedTitles(); });

    if (QMenu* setup = setupEntry ? setupEntry->menu() : nullptr) {
        setup->addSeparator();
        m_closeToTray = setup->addAction(QStringLiteral("Close to Tray"));
        m_closeToTray->setObjectName(QString::number(ID_CLOSE_TO_TRAY));
        m_closeToTray->setCheckable(true);
        m_closeToTray->setChecked(m_document.m_desktopSettings.m_bCloseToTray);
        m_closeToTray->setStatusTip(
            QStringLiteral("Closing the window keeps Orvex playing in the tray"));
        connect(m_closeToTray, &QAction::toggled, this, [this](bool on) {
            m_document.m_desktopSettings.m_bCloseToTray = on;
            m_document.SaveDesktopSettings();
        });
    }
    Refresh();
}

void CFrameDesktop::OnStarted(const CString& requested, const CString& played,
                              const CString& name) {
    m_reconnect->Reset();
    ++m_track;
    m_requested = requested;
    m_requestedTitle = name.IsEmpty() ? m_frame.GetMediaTitle() : name;
    m_played = played;
    m_isStream = m_frame.m_player.m_bStream;
    m_name = m_requestedTitle.IsEmpty() ? (m_isStream ? requested : LastPart(requested))
                                        : m_requestedTitle;
    m_baseTitle = FromQString(m_frame.windowTitle());
    m_positionUs = 0;
    m_song.Empty();
    m_lastLogged.Empty();
    m_recordWanted = false;
    m_nowPlaying->clear();
    Refresh();
}

void CFrameDesktop::OnStopped() {
    m_reconnect->Reset();
    m_sleep->OnPlaybackStopped();
    m_song.Empty();
    m_recordWanted = false;
    m_nowPlaying->clear();
    m_frame.statusBar()->clearMessage();
    Refresh();
}

void CFrameDesktop::OnStreamTitle(const CString& title) {
    // A song that follows another means the other has ended.
    const bool followsAnother = !m_song.IsEmpty() && m_song != title;
    m_song = title;
    ShowTitle();
    CString entry = m_name + u"\t" + title;
    if (entry != m_lastLogged) {
        m_lastLogged = entry;
        AppendPlayedTitle(m_document.PlayedTitlesPath(), m_name, title, time(nullptr));
    }
    if (followsAnother)
        m_sleep->OnItemEnded();
    Refresh();
}

void CFrameDesktop::ShowTitle() {
    QString text = ToQString(m_baseTitle);
    if (!m_song.IsEmpty())
        text += QStringLiteral(" \u2014 ") + ToQString(m_song);
    if (m_reconnect->Active())
        text += QStringLiteral(" (connecting again)");
    m_frame.setWindowTitle(text);
    m_nowPlaying->setText(ToQString(m_song));
}

void CFrameDesktop::OnRecordingStopped(const CString& reason) {
    m_recordWanted = false;
    Refresh();
    AfxMessageBox(reason, MB_OK | MB_ICONEXCLAMATION);
}

CString CFrameDesktop::DefaultRecordingsFolder() {
    QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    if (music.isEmpty())
        music = QDir::homePath() + QStringLiteral("/Music");
    return FromQString(music + QStringLiteral("/Orvex Recordings"));
}

CString CFrameDesktop::RecordingsFolder() const {
    const CString& chosen = m_document.m_desktopSettings.m_recordingsFolder;
    return chosen.IsEmpty() ? DefaultRecordingsFolder() : chosen;
}

BOOL CFrameDesktop::StartRecordingNow(CString* error) {
    // The part before a stream's first title is named after the station.
    CString name = m_requestedTitle.IsEmpty() ? LastPart(m_played) : m_requestedTitle;
    return m_frame.m_player.StartRecording(RecordingsFolder(), name, error);
}

void CFrameDesktop::ToggleRecording() {
    if (m_recordWanted) {
        m_recordWanted = false;
        m_frame.m_player.StopRecording();
    } else if (m_frame.m_player.m_state != 0 && m_frame.m_player.m_bStream) {
        CString error;
        if (StartRecordingNow(&error))
            m_recordWanted = true;
        else
            AfxMessageBox(error, MB_OK | MB_ICONEXCLAMATION);
    }
    Refresh();
}

void CFrameDesktop::ShowPlayedTitles() {
    QString text =
        ToQString(ReadPlayedTitles(m_document.PlayedTitlesPath(), kMaxPlayedTitlesBytes / 4));
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    CPlayedTitlesDlg dialog(text, &m_frame);
    dialog.exec();
}

BOOL CFrameDesktop::OnStreamDropped(const CString& error) {
    CMediaPlayer& player = m_frame.m_player;
    m_volume = player.m_volume;
    m_muted = player.m_bMuted;
    if (!m_reconnect->Schedule()) {
        CString text = error.IsEmpty()
                           ? CString(u"The stream ended and could not be reached again.")
                           : CString(u"Playback Error - ") + error;
        GiveUpReconnect(text);
        return TRUE;
    }
    // The graph goes; the window stays as it is while the stream is away.
    player.CleanPlayback();
    ShowTitle();
    m_frame.statusBar()->showMessage(QStringLiteral("Connecting again (%1 of %2)...")
                                         .arg(m_reconnect->Tries())
                                         .arg(CStreamReconnect::kMaxTries));
    Refresh();
    return TRUE;
}

void CFrameDesktop::TryReconnect() {
    CMediaPlayer& player = m_frame.m_player;
    player.m_bQuietFailures = TRUE;
    player.m_lastFailure.Empty();
    BOOL playing = player.PlayFileLav(m_played, &m_frame);
    player.m_bQuietFailures = FALSE;
    if (!playing) {
        if (!m_reconnect->Schedule()) {
            GiveUpReconnect(player.m_lastFailure);
            return;
        }
        m_frame.statusBar()->showMessage(QStringLiteral("Connecting again (%1 of %2)...")
                                             .arg(m_reconnect->Tries())
                                             .arg(CStreamReconnect::kMaxTries));
        return;
    }
    m_reconnect->Connected();
    m_frame.statusBar()->clearMessage();
    m_frame.StartPositionTimer();
    // The sound comes back as the user had it.
    if (player.SetVolume(m_volume))
        m_frame.PostToBar(UM_BAR_VOLUME, 0, m_volume);
    if (m_muted) {
        player.ToggleMute();
        m_frame.PostToBar(UM_BAR_MUTED, 0, player.m_bMuted != 0);
    }
    ShowTitle();
    if (m_recordWanted) {
        CString error;
        if (!StartRecordingNow(&error)) {
            m_recordWanted = false;
            AfxMessageBox(error, MB_OK | MB_ICONEXCLAMATION);
        }
    }
    Refresh();
}

void CFrameDesktop::GiveUpReconnect(const CString& text) {
    // The stop puts the window at rest, reconnecting or not.
    m_frame.StopPlayback(FALSE);
    m_reconnect->Reset();
    if (!text.IsEmpty())
        MessageBoxW(m_frame.GetSafeHwnd(), text, u"Orvex", MB_OK);
}

bool CFrameDesktop::CancelReconnect() {
    if (!m_reconnect->Active())
        return false;
    m_reconnect->Reset();
    return true;
}

bool CFrameDesktop::StopsAtEndOfItem() const {
    return m_sleep->GetMode() == CSleepTimer::EndOfItem;
}

bool CFrameDesktop::KeepInTray() {
    if (m_quitting || !m_document.m_desktopSettings.m_bCloseToTray || !m_tray->IsShown())
        return false;
    m_frame.hide();
    return true;
}

void CFrameDesktop::Refresh() {
    const CPlaybackState state = PlaybackState();
    if (m_record) {
        m_record->setEnabled(m_recordWanted ||
                             (state.stream && state.status != CPlaybackState::Stopped));
        m_record->setChecked(m_recordWanted);
    }
    if (m_sleepMenu) {
        int checked = ID_SLEEP_OFF;
        if (m_sleep->GetMode() == CSleepTimer::EndOfItem)
            checked = ID_SLEEP_END_OF_ITEM;
        else if (m_sleep->GetMode() == CSleepTimer::AfterMinutes)
            checked = -1; // the entry the user chose stays checked
        for (QAction* entry : m_sleepMenu->actions()) {
            if (checked >= 0)
                entry->setChecked(entry->objectName() == QString::number(checked));
        }
    }
    m_tray->Refresh(state);
    m_mpris->Refresh();
}
