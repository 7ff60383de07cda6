// Vertical scrolling for a resizable dialog that the user makes lower than it
// opened: the scroll range is what is missing of the opening outer height,
// each scroll message moves the dialog's body by a tenth (page) or a
// hundredth (line, unless the dialog chooses otherwise) of it, and a dragged
// thumb moves the body only once released. A size change resets the bar but
// leaves the body where it is, unless the dialog asks for its top back once
// it is as high as it opened.
#pragma once
#include <QObject>
#include <QRect>
#include <QWidget>

class QScrollBar;
class QWidget;

class CDialogScroller : public QObject {
public:
    // The scroll codes of the bar.
    enum Code {
        SB_LINEUP = 0,
        SB_LINEDOWN = 1,
        SB_PAGEUP = 2,
        SB_PAGEDOWN = 3,
        SB_THUMBPOSITION = 4,
        SB_THUMBTRACK = 5,
        SB_TOP = 6,
        SB_BOTTOM = 7,
    };

    // `window` is the dialog, `body` the widget that scrolls inside it.
    CDialogScroller(QWidget* window, QWidget* body, QScrollBar* bar);

    int m_height = 0;           // the present client height
    int m_scrollPos = 0;        // the present scroll position, from 0
    QRect m_initialRect;        // the dialog's outer rectangle when it opened
    int m_lineDivisor = 100;    // a line is this part of the range
    bool m_topWhenHigh = false; // as high as it opened: the body goes back to its top

    // When the dialog shows for the first time.
    void OnOpen();
    void OnSize(int cy);
    void OnVScroll(int code, int thumbPosition);

private:
    void OnBarAction(int action);
    void ScrollBy(int step);

    QWidget* m_window;
    QWidget* m_body;
    QScrollBar* m_bar;
};

// The part of a dialog that scrolls: it keeps its own height, however low the
// dialog gets, and is moved only by the scroller. Its width follows the
// dialog's.
class CScrolledArea : public QWidget {
public:
    CScrolledArea(QWidget* parent, QWidget* body);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* m_body;
};

// Lays `dialog` out as the scrolling `body` beside a vertical bar, and gives
// the scroller that moves it.
CDialogScroller* MakeScrollingBody(QWidget* dialog, QWidget* body);
