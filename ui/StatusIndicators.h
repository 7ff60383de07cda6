// The status bar's lock-key panes, "CAP", "NUM" and "SCRL", each showing its
// text while that lock is on.
#pragma once
#include <array>

#include <QObject>

class QLabel;
class QStatusBar;

class CStatusIndicators : public QObject {
public:
    explicit CStatusIndicators(QStatusBar* bar);

    // Reads the locks again. Without an X display (offscreen, or a plain
    // Wayland session) the panes stay empty.
    void Refresh();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QStatusBar* m_bar;
    std::array<QLabel*, 3> m_panes{};
};
