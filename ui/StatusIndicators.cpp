#include "ui/StatusIndicators.h"

#include <cstdlib>

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QStatusBar>
#include <QtGui/qguiapplication_platform.h>
#include <xcb/xcb.h>

namespace {

// The keyboard lights of a PC keyboard as X numbers them from bit 0.
struct Lock {
    const char* text;
    uint32_t led;
};
constexpr std::array<Lock, 3> kLocks = {{{"CAP", 1u << 0}, {"NUM", 1u << 1}, {"SCRL", 1u << 2}}};

// The server keeps the locks as its keyboard's lights; 0 where there is no
// X connection to ask.
uint32_t LitKeyboardLights() {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11 || !x11->connection())
        return 0;
    xcb_connection_t* connection = x11->connection();
    xcb_get_keyboard_control_reply_t* reply =
        xcb_get_keyboard_control_reply(connection, xcb_get_keyboard_control(connection), nullptr);
    if (!reply)
        return 0;
    const uint32_t lights = reply->led_mask;
    std::free(reply);
    return lights;
}

} // namespace

CStatusIndicators::CStatusIndicators(QStatusBar* bar) : QObject(bar), m_bar(bar) {
    for (size_t i = 0; i < kLocks.size(); ++i) {
        auto* pane = new QLabel(bar);
        pane->setObjectName(QString::fromLatin1(kLocks[i].text));
        pane->setAlignment(Qt::AlignCenter);
        pane->setFrameShape(QFrame::Panel);
        pane->setFrameShadow(QFrame::Sunken);
        // Each pane keeps its width while empty, so that the row never jumps.
        pane->setMinimumWidth(pane->fontMetrics().horizontalAdvance(QString::fromLatin1(" SCRL ")));
        bar->addPermanentWidget(pane);
        m_panes[i] = pane;
    }
    // A lock may change in another program while Orvex is in the back, so
    // the panes are read again when it comes to the front, when the bar is
    // shown, and after every key that reaches the program.
    qApp->installEventFilter(this);
}

void CStatusIndicators::Refresh() {
    if (!m_bar->isVisible())
        return;
    const uint32_t lights = LitKeyboardLights();
    for (size_t i = 0; i < kLocks.size(); ++i)
        m_panes[i]->setText((lights & kLocks[i].led) ? QString::fromLatin1(kLocks[i].text)
                                                     : QString());
}

bool CStatusIndicators::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::KeyRelease || type == QEvent::ApplicationActivate ||
        (type == QEvent::Show && watched == m_bar))
        Refresh();
    return false;
}
