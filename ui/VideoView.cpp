#include "ui/VideoView.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QtGui/qguiapplication_platform.h>

#include <xcb/xcb.h>

#include "app/OrvexApp.h"
#include "platform/base/UserMessages.h"
#include "ui/MainFrame.h"
#include "ui/PlaybackKeys.h"

namespace {

bool OnX11() {
    return QGuiApplication::platformName() == QStringLiteral("xcb");
}

// The X server clears the picture's window to black by itself whenever it
// is exposed, so nothing ever paints over the engine there.
void SetBlackBackground(WId window) {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11 || !x11->connection())
        return;
    xcb_connection_t* connection = x11->connection();
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    if (!screen.rem)
        return;
    const uint32_t black = screen.data->black_pixel;
    xcb_change_window_attributes(connection, static_cast<xcb_window_t>(window), XCB_CW_BACK_PIXEL,
                                 &black);
    xcb_clear_area(connection, 0, static_cast<xcb_window_t>(window), 0, 0, 0, 0);
    xcb_flush(connection);
}

// The native window the engine draws into. Mouse and keys pass through it
// to the view.
class CPictureWindow : public QWidget {
public:
    explicit CPictureWindow(COrvexVideoView* view) : QWidget(view), m_view(view) {
        setAttribute(Qt::WA_NativeWindow);
        setAttribute(Qt::WA_PaintOnScreen);
        setAttribute(Qt::WA_NoSystemBackground);
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        // Its native window still gets the X server's pointer moves; with
        // tracking on, Qt hands them on to the view, where a DVD menu's
        // buttons follow the mouse.
        setMouseTracking(true);
        setFocusPolicy(Qt::NoFocus);
        setObjectName(QStringLiteral("PictureWindow"));
    }
    QPaintEngine* paintEngine() const override { return nullptr; }

protected:
    void paintEvent(QPaintEvent*) override {
        m_view->m_bRepaintVideo = TRUE;
        m_view->OnDraw();
    }

private:
    COrvexVideoView* m_view;
};

} // namespace

COrvexVideoView::COrvexVideoView(COrvexDoc* document, QWidget* parent)
    : QWidget(parent), CWndTarget(this), m_pDoc(document) {
    setObjectName(QStringLiteral("VideoView"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    if (OnX11()) {
        m_picture = new CPictureWindow(this);
        m_picture->hide();
    }
}

void COrvexVideoView::OnInitialUpdate() {
    if (!m_picture)
        return;
    const WId window = m_picture->winId();
    SetBlackBackground(window);
    PublishNativeWindow(static_cast<uintptr_t>(window));
}

void COrvexVideoView::PlacePicture(int left, int top, int width, int height, bool visible) {
    if (!m_picture)
        return;
    m_picture->setGeometry(left, top, width, height);
    m_picture->setVisible(visible && width > 0 && height > 0);
}

CMediaPlayer* COrvexVideoView::Engine() const {
    CMainFrame* frame = GetOrvexFrame();
    return frame ? &frame->m_player : nullptr;
}

void COrvexVideoView::paintEvent(QPaintEvent* event) {
    // The erase: black around the picture. With a picture playing, it is
    // then put back.
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::black);
    CMediaPlayer* engine = Engine();
    if (engine && engine->m_state != 0)
        m_bRepaintVideo = TRUE;
    OnDraw();
}

void COrvexVideoView::OnDraw() {
    CMediaPlayer* engine = Engine();
    if (!m_bRepaintVideo || !engine || engine->m_state == 0)
        return;
    // The server has cleared the picture's window already; hiding it first,
    // as a blank would, would only expose the view again.
    engine->ShowVideo(FALSE);
    m_bRepaintVideo = FALSE;
}

void COrvexVideoView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!isVisible() || width() == 0 || height() == 0)
        return;
    CMediaPlayer* engine = Engine();
    if (engine && engine->m_state != 0 && engine->SetVideoRect(RECT{0, 0, width(), height()}))
        m_bRepaintVideo = TRUE;
}

void COrvexVideoView::mouseMoveEvent(QMouseEvent* event) {
    QWidget::mouseMoveEvent(event);
    CMediaPlayer* engine = Engine();
    if (m_pDoc && engine && engine->m_state != 0 && engine->m_bDvd)
        OnDvdMenuMouse(event->position().toPoint(), FALSE);
}

void COrvexVideoView::mouseReleaseEvent(QMouseEvent* event) {
    QWidget::mouseReleaseEvent(event);
    CMediaPlayer* engine = Engine();
    if (event->button() == Qt::LeftButton && m_pDoc && engine && engine->m_state != 0 &&
        engine->m_bDvd)
        OnDvdMenuMouse(event->position().toPoint(), TRUE);
}

void COrvexVideoView::OnDvdMenuMouse(const QPoint& point, BOOL activate) {
    CMediaPlayer* engine = Engine();
    if (activate)
        engine->ActivateMenuButton(point.x(), point.y());
    else
        engine->SelectMenuButton(point.x(), point.y());
}

void COrvexVideoView::wheelEvent(QWheelEvent* event) {
    COrvexApp* app = AfxGetOrvexApp();
    CMediaPlayer* engine = Engine();
    // Paused or stopped, the wheel changes nothing.
    if (m_pDoc && app && app->m_hwndControls && engine && engine->m_state == 2) {
        int volume = 0;
        if (engine->StepVolume(event->angleDelta().y() >= 1, volume))
            PostMessageW(app->m_hwndControls, UM_BAR_VOLUME, 0, volume);
    }
    QWidget::wheelEvent(event);
}

void COrvexVideoView::keyPressEvent(QKeyEvent* event) {
    CMediaPlayer* engine = Engine();
    if (event->key() != Qt::Key_Space || event->isAutoRepeat() || !engine || engine->m_state == 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    PauseOrMuteBySpace(*engine);
    setFocus(Qt::OtherFocusReason);
}

bool COrvexVideoView::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab) {
        COrvexApp* app = AfxGetOrvexApp();
        CMediaPlayer* engine = Engine();
        if (hasFocus() && engine && engine->m_state != 0 && app && app->m_hwndControls) {
            SetFocus(app->m_hwndControls);
            return true;
        }
    }
    return QWidget::event(event);
}
