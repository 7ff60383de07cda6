#include "ui/desktop/TrayIcon.h"

#include <QAction>
#include <QEvent>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QWidget>

CTrayIcon::CTrayIcon(QWidget* window, CTrayCommands commands, QObject* parent)
    : QObject(parent), m_window(window), m_commands(std::move(commands)) {
    m_icon = new QSystemTrayIcon(window->windowIcon(), this);
    m_icon->setObjectName(QStringLiteral("TrayIcon"));
    m_menu = new QMenu(window);
    m_menu->setObjectName(QStringLiteral("TrayMenu"));
    m_nowPlaying = m_menu->addAction(QString());
    m_nowPlaying->setEnabled(false);
    m_menu->addSeparator();
    m_playPause =
        m_menu->addAction(QStringLiteral("Pause"), this, [this] { m_commands.playPause(); });
    m_stop = m_menu->addAction(QStringLiteral("Stop"), this, [this] { m_commands.stop(); });
    m_menu->addSeparator();
    m_showHide = m_menu->addAction(QStringLiteral("Hide Orvex"), this, [this] { ToggleWindow(); });
    m_menu->addAction(QStringLiteral("Quit"), this, [this] { m_commands.quit(); });
    m_icon->setContextMenu(m_menu);
    connect(m_icon, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason why) {
                if (why == QSystemTrayIcon::Trigger)
                    ToggleWindow();
            });
    // The menu offers what the window's state calls for when it opens.
    connect(m_menu, &QMenu::aboutToShow, this, [this] {
        m_showHide->setText(m_window->isVisible() ? QStringLiteral("Hide Orvex")
                                                  : QStringLiteral("Show Orvex"));
    });
    Refresh(CPlaybackState());
}

CTrayIcon::~CTrayIcon() {
    delete m_menu;
}

void CTrayIcon::Show(bool trayAvailable) {
    m_shown = trayAvailable;
    m_icon->setVisible(trayAvailable);
}

bool CTrayIcon::IsShown() const {
    return m_shown;
}

void CTrayIcon::Refresh(const CPlaybackState& state) {
    const bool stopped = state.status == CPlaybackState::Stopped;
    const QString title = stopped ? QStringLiteral("Nothing playing") : state.Title();
    m_nowPlaying->setText(title);
    m_playPause->setText(state.status == CPlaybackState::Playing && state.canPause
                             ? QStringLiteral("Pause")
                             : QStringLiteral("Play"));
    m_playPause->setEnabled(state.canPlay || state.canPause);
    m_stop->setEnabled(!stopped);
    QString tip = QStringLiteral("Orvex");
    if (!stopped) {
        tip += QStringLiteral("\n") + title;
        if (!state.song.isEmpty())
            tip += QStringLiteral("\n") + state.station;
    }
    m_icon->setToolTip(tip);
}

void CTrayIcon::ToggleWindow() {
    if (m_window->isVisible() && !m_window->isMinimized()) {
        m_window->hide();
        return;
    }
    m_window->showNormal();
    m_window->raise();
    m_window->activateWindow();
}
