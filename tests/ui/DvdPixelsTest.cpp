// A DVD on an X display: its menu shows in the video pane with its buttons
// drawn onto the picture, the button under the X pointer lights up, and a
// click there plays the title it leads to; all read back from the display.
#include <QScreen>

#include <QtGui/qguiapplication_platform.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include "tests/support/TestDiscs.h"
#include "tests/ui/FrameMedia.h"
#include "ui/SplitterView.h"
#include "ui/VideoView.h"

namespace {

// The disc's colours as the display shows them, each within a margin.
const QColor kMenuBlue(32, 64, 192);
const QColor kButtonWhite(255, 255, 255);
const QColor kHighlightYellow(255, 255, 0);
const QColor kTitleGreen(0, 128, 0);

// Moves the X server's pointer to a point of a widget, and clicks the left
// button there when asked: the server decides which window gets it.
void PointerTo(QWidget* widget, QPoint at, bool click) {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* c = x11->connection();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    const QPoint global = widget->mapToGlobal(at);
    xcb_test_fake_input(c, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, root,
                        static_cast<int16_t>(global.x()), static_cast<int16_t>(global.y()), 0);
    if (click) {
        xcb_test_fake_input(c, XCB_BUTTON_PRESS, 1, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        xcb_test_fake_input(c, XCB_BUTTON_RELEASE, 1, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    }
    xcb_flush(c);
}

class DvdPixels : public FrameTest {
protected:
    DvdPixels() {
        SetGraphAudioSink("fakesink sync=true");
        SetGraphVideoSink("");
    }
    ~DvdPixels() override { SetGraphAudioSink(""); }

    COrvexVideoView* Video() { return Frame().GetSplitterView()->GetVideoView(); }
    // Where the view shows a point of the disc's 720x480 frame.
    QPoint OnPicture(int x, int y) {
        LONG left = 0, top = 0, width = 0, height = 0;
        Frame().m_player.m_pVideoWindow->GetWindowPosition(&left, &top, &width, &height);
        return QPoint(left + x * width / 720, top + y * height / 480);
    }
    QPoint OnButton(int which) {
        const int left = which == 1 ? TestDiscs::kButton1Left : TestDiscs::kButton2Left;
        return OnPicture(left + 100, (TestDiscs::kButtonTop + TestDiscs::kButtonBottom) / 2);
    }
    // Whether the display shows this colour at a point of the view.
    bool Shows(QPoint at, const QColor& colour) {
        const QPoint global = Video()->mapToGlobal(at);
        const QRgb pixel =
            Video()->screen()->grabWindow(0, global.x(), global.y(), 1, 1).toImage().pixel(0, 0);
        return std::abs(qRed(pixel) - colour.red()) < 40 &&
               std::abs(qGreen(pixel) - colour.green()) < 40 &&
               std::abs(qBlue(pixel) - colour.blue()) < 40;
    }
};

} // namespace

TEST_F(DvdPixels, TheMenuShowsItsButtonsAndTheOneUnderThePointerPlaysItsTitle) {
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
    ASSERT_TRUE(Frame().StartDvd(CString(TestDiscs::Get().Dvd())));
    ASSERT_NE(Video(), nullptr);
    // The menu waits with its first button selected.
    ASSERT_TRUE(WaitFor([&] {
        const CMediaPlayer& engine = Frame().m_player;
        return engine.m_dvdDomain == DVD_DOMAIN_VideoManagerMenu && engine.m_dvdButton == 1;
    }));
    // On the screen: blue, the first button lit, the second plain white.
    EXPECT_TRUE(WaitFor([&] {
        return Shows(OnPicture(360, 100), kMenuBlue) && Shows(OnButton(1), kHighlightYellow) &&
               Shows(OnButton(2), kButtonWhite);
    }));
    PointerTo(Video(), OnButton(2), false);
    EXPECT_TRUE(WaitFor([&] { return Frame().m_player.m_dvdButton == 2; }, 3000));
    EXPECT_TRUE(WaitFor(
        [&] { return Shows(OnButton(2), kHighlightYellow) && Shows(OnButton(1), kButtonWhite); }));
    PointerTo(Video(), OnButton(2), true);
    EXPECT_TRUE(WaitFor([&] { return Shows(OnPicture(360, 240), kTitleGreen); }));
    EXPECT_TRUE(WaitFor([&] { return Frame().m_player.m_dvdTitle == 2; }));
    EXPECT_TRUE(m_boxes.Texts().empty());
}
