// The picture tests read back what an X display shows: the window is on X11,
// and so is the pointer the test moves.
#pragma once
#include <QScreen>

#include <QtGui/qguiapplication_platform.h>
#include <cstdlib>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include "tests/ui/FrameMedia.h"

inline const bool kOnX11 = [] {
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    return true;
}();

// Moves the X server's own pointer to a point of a widget, then presses and
// lets go `button` there (none for 0): the server decides which window gets it.
inline void XPointer(QWidget* widget, QPoint at, int button = 0) {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* c = x11->connection();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    const QPoint global = widget->mapToGlobal(at);
    xcb_test_fake_input(c, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, root,
                        static_cast<int16_t>(global.x()), static_cast<int16_t>(global.y()), 0);
    if (button) {
        const auto detail = static_cast<uint8_t>(button);
        xcb_test_fake_input(c, XCB_BUTTON_PRESS, detail, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        xcb_test_fake_input(c, XCB_BUTTON_RELEASE, detail, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    }
    xcb_flush(c);
}

// A colour as the display shows it after the encoder and the converters:
// within a margin.
inline bool Near(QRgb pixel, const QColor& colour) {
    return std::abs(qRed(pixel) - colour.red()) < 40 &&
           std::abs(qGreen(pixel) - colour.green()) < 40 &&
           std::abs(qBlue(pixel) - colour.blue()) < 40;
}

// The picture goes to the system's own sink; only the sound is kept off any
// device.
class PixelsTest : public FrameTest {
protected:
    PixelsTest() {
        SetGraphAudioSink("fakesink sync=true");
        SetGraphVideoSink("");
    }
    ~PixelsTest() override { SetGraphAudioSink(""); }
};
