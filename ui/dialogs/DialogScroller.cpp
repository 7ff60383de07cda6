#include "ui/dialogs/DialogScroller.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QWidget>
#include <algorithm>

CDialogScroller::CDialogScroller(QWidget* window, QWidget* body, QScrollBar* bar)
    : QObject(window), m_window(window), m_body(body), m_bar(bar) {
    m_bar->setFocusPolicy(Qt::NoFocus);
    m_bar->setRange(0, 0);
    connect(m_bar, &QAbstractSlider::actionTriggered, this, &CDialogScroller::OnBarAction);
    connect(m_bar, &QAbstractSlider::sliderReleased, this,
            [this] { OnVScroll(SB_THUMBPOSITION, m_bar->sliderPosition()); });
}

void CDialogScroller::OnOpen() {
    m_initialRect = m_window->frameGeometry();
    m_scrollPos = 0;
    OnSize(m_window->height());
}

void CDialogScroller::OnSize(int cy) {
    m_height = cy;
    const int h = m_initialRect.height();
    const int range = cy < h ? h - cy : 0;
    if (m_topWhenHigh && range == 0 && m_scrollPos != 0) {
        m_body->move(m_body->x(), m_body->y() + m_scrollPos);
        m_scrollPos = 0;
    }
    const QSignalBlocker quiet(m_bar);
    m_bar->setRange(0, range);
    m_bar->setPageStep(range / 10);
    m_bar->setValue(0);
}

void CDialogScroller::OnVScroll(int code, int thumbPosition) {
    const int range = m_initialRect.height() - m_height;
    const int p = m_scrollPos;
    int step = 0;
    switch (code) {
    case SB_LINEUP:
        if (p > 0)
            step = -std::min(range / m_lineDivisor, p);
        break;
    case SB_LINEDOWN:
        if (p < range)
            step = std::min(range / m_lineDivisor, range - p);
        break;
    case SB_PAGEUP:
        if (p > 0)
            step = -std::min(range / 10, p);
        break;
    case SB_PAGEDOWN:
        if (p < range)
            step = std::min(range / 10, range - p);
        break;
    case SB_THUMBPOSITION:
        step = thumbPosition - p;
        break;
    default:
        m_bar->setSliderPosition(m_scrollPos);
        return;
    }
    ScrollBy(step);
}

void CDialogScroller::ScrollBy(int step) {
    m_scrollPos += step;
    m_bar->setSliderPosition(m_scrollPos);
    m_body->move(m_body->x(), m_body->y() - step);
}

void CDialogScroller::OnBarAction(int action) {
    switch (action) {
    case QAbstractSlider::SliderSingleStepSub:
        OnVScroll(SB_LINEUP, 0);
        break;
    case QAbstractSlider::SliderSingleStepAdd:
        OnVScroll(SB_LINEDOWN, 0);
        break;
    case QAbstractSlider::SliderPageStepSub:
        OnVScroll(SB_PAGEUP, 0);
        break;
    case QAbstractSlider::SliderPageStepAdd:
        OnVScroll(SB_PAGEDOWN, 0);
        break;
    case QAbstractSlider::SliderMove:
        // The thumb follows a drag; the body waits for the release. A wheel
        // turn moves nothing.
        if (!m_bar->isSliderDown())
            m_bar->setSliderPosition(m_scrollPos);
        break;
    case QAbstractSlider::SliderToMinimum:
        OnVScroll(SB_TOP, 0);
        break;
    case QAbstractSlider::SliderToMaximum:
        OnVScroll(SB_BOTTOM, 0);
        break;
    default:
        break;
    }
}

CScrolledArea::CScrolledArea(QWidget* parent, QWidget* body) : QWidget(parent), m_body(body) {
    body->setParent(this);
}

QSize CScrolledArea::sizeHint() const {
    return m_body->sizeHint();
}

QSize CScrolledArea::minimumSizeHint() const {
    return QSize(m_body->minimumSizeHint().width(), 0);
}

void CScrolledArea::resizeEvent(QResizeEvent*) {
    m_body->resize(width(), std::max(m_body->sizeHint().height(), height()));
}

CDialogScroller* MakeScrollingBody(QWidget* dialog, QWidget* body) {
    auto* bar = new QScrollBar(Qt::Vertical, dialog);
    auto* layout = new QHBoxLayout(dialog);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new CScrolledArea(dialog, body), 1);
    layout->addWidget(bar);
    return new CDialogScroller(dialog, body, bar);
}
