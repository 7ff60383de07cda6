// A DVD on an X display: its menu shows in the video pane with its buttons
// drawn onto the picture, the button under the X pointer lights up, and a
// click there plays the title it leads to; all read back from the display.
#include "tests/ui/XDisplay.h"
#include "ui/SplitterView.h"
#include "ui/VideoView.h"

namespace {

// The disc's colours as the display shows them, each within a margin.
const QColor kMenuBlue(32, 64, 192);
const QColor kButtonWhite(255, 255, 255);
const QColor kHighlightYellow(255, 255, 0);
const QColor kTitleGreen(0, 128, 0);

class DvdPixels : public PixelsTest {
protected:
    COrvexVideoView* Video() { return Frame().GetSplitterView()->GetVideoView(); }
    QPoint Picture(int x, int y) { return OnDvdPicture(Frame().m_player, x, y); }
    QPoint Button(int which) { return OnDvdButton(Frame().m_player, which); }
    // Whether the display shows this colour at a point of the view.
    bool Shows(QPoint at, const QColor& colour) {
        const QPoint global = Video()->mapToGlobal(at);
        const QRgb pixel =
            Video()->screen()->grabWindow(0, global.x(), global.y(), 1, 1).toImage().pixel(0, 0);
        return Near(pixel, colour);
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
        return Shows(Picture(360, 100), kMenuBlue) && Shows(Button(1), kHighlightYellow) &&
               Shows(Button(2), kButtonWhite);
    }));
    XPointer(Video(), Button(2));
    EXPECT_TRUE(WaitFor([&] { return Frame().m_player.m_dvdButton == 2; }, 3000));
    EXPECT_TRUE(WaitFor(
        [&] { return Shows(Button(2), kHighlightYellow) && Shows(Button(1), kButtonWhite); }));
    XPointer(Video(), Button(2), 1);
    EXPECT_TRUE(WaitFor([&] { return Shows(Picture(360, 240), kTitleGreen); }));
    EXPECT_TRUE(WaitFor([&] { return Frame().m_player.m_dvdTitle == 2; }));
    EXPECT_TRUE(m_boxes.Texts().empty());
}
