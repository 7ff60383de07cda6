// Orvex in the desktop's tray, where the desktop has one: play or pause,
// stop, what plays now, and the window shown or hidden.
#pragma once
#include <QObject>
#include <functional>

#include "ui/desktop/PlaybackState.h"

class QAction;
class QMenu;
class QSystemTrayIcon;
class QWidget;

struct CTrayCommands {
    std::function<void()> playPause;
    std::function<void()> stop;
    std::function<void()> quit;
};

class CTrayIcon : public QObject {
public:
    CTrayIcon(QWidget* window, CTrayCommands commands, QObject* parent = nullptr);
    ~CTrayIcon() override;

    // Shows the icon when the desktop has a tray (tests may say it has).
    void Show(bool trayAvailable);
    bool IsShown() const;
    void Refresh(const CPlaybackState& state);
    // Shows a hidden window, hides a shown one.
    void ToggleWindow();
    QMenu* Menu() const { return m_menu; }

private:
    QWidget* m_window;
    CTrayCommands m_commands;
    QSystemTrayIcon* m_icon;
    QMenu* m_menu;
    QAction* m_nowPlaying;
    QAction* m_playPause;
    QAction* m_stop;
    QAction* m_showHide;
    bool m_shown = false;
};
