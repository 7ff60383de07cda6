// The transport bar: Hide Left, Stop, Pause, Mute, the progress and volume
// sliders with their texts. It never touches the pipeline: what the user
// does goes to the frame as posted messages, and what the engine does comes
// back the same way. It keeps its own copy of position and volume, so a
// slider can be put back when a move is refused.
#pragma once
#include <QToolBar>

#include "platform/base/CString.h"
#include "ui/ControlsBarLayout.h"
#include "ui/WindowHandles.h"

class CMediaPlayer;
class QLabel;
class QPushButton;
class QSlider;

// Scroll codes of the sliders, as the bar's rules name them.
enum BarScrollCode {
    SB_LINELEFT = 0,
    SB_LINERIGHT = 1,
    SB_PAGELEFT = 2,
    SB_PAGERIGHT = 3,
    SB_THUMBPOSITION = 4,
    SB_THUMBTRACK = 5,
    SB_LEFT = 6,
    SB_RIGHT = 7,
    SB_ENDSCROLL = 8,
};

class CControlsBar : public QToolBar, public CWndTarget {
    Q_OBJECT
public:
    explicit CControlsBar(QWidget* parent = nullptr);
    ~CControlsBar() override;

    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    // The enable rule of the Stop button, run after each message.
    void OnUpdateCmdUI();

    // "00:00:00" from whole seconds; hours have no upper limit.
    static CString TimeText(int seconds);

    BOOL m_bDragging = FALSE;
    int m_barVolume = 0;
    int m_position = 0;
    BOOL m_bWheel = FALSE;
    BOOL m_bEnterKey = FALSE;

signals:
    // Every message the bar has taken in: what the engine did reaches the
    // bar, so the desktop's controls follow it from here.
    void MessageHandled(UINT message);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class CPanel;

    void InitDialog();
    void OnStarted();
    void OnStopped();
    void OnProgressScroll(int code, int nPos);
    void OnProgressReleased();
    void OnVolumeScroll(int code, int nPos);
    void OnButton(UINT message);
    void OnHideLeft();
    // Keys over any control of the bar; true when the key is used up.
    bool OnKeyDown(QWidget* target, QKeyEvent* key);
    void PostToFrame(UINT message, WPARAM wParam, LPARAM lParam);
    void SetControlsEnabled(bool enabled);
    void SetVolumeText(int percent);
    CMediaPlayer* Engine() const;

    // The direction of the wheel turn being handled: away from the user
    // moves forward and louder.
    bool m_wheelUp = false;
    CPanel* m_panel;
    QPushButton* m_hideLeft;
    QPushButton* m_stop;
    QPushButton* m_pause;
    QPushButton* m_mute;
    QLabel* m_progressText;
    QSlider* m_progress;
    QLabel* m_volumeText;
    QSlider* m_volume;
};
