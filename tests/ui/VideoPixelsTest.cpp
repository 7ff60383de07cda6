// The picture on an X display: a test pattern played in the window shows
// its colours in the video pane, read back from the display itself (the
// pane's own painting never holds the picture). Runs under a virtual X
// server.
#include <QImage>
#include <QPointer>

#include "tests/ui/XDisplay.h"
#include "ui/ListView.h"
#include "ui/SplitterView.h"
#include "ui/VideoView.h"

namespace {

// The colour bars of the test pattern, as the display shows them after the
// encoder and the converters: each within a margin.
struct Bar {
    const char* name;
    QColor colour;
};
const Bar kBars[] = {{"yellow", QColor(191, 191, 0)},
                     {"cyan", QColor(0, 191, 191)},
                     {"magenta", QColor(191, 0, 191)},
                     {"blue", QColor(0, 0, 191)}};

// The bars found in what the display shows over a widget.
std::vector<std::string> BarsOnScreen(QWidget* widget) {
    const QPoint origin = widget->mapToGlobal(QPoint(0, 0));
    const QImage image =
        widget->screen()
            ->grabWindow(0, origin.x(), origin.y(), widget->width(), widget->height())
            .toImage();
    std::vector<std::string> found;
    for (const Bar& bar : kBars) {
        int hits = 0;
        for (int y = 0; y < image.height(); y += 4)
            for (int x = 0; x < image.width(); x += 4)
                hits += Near(image.pixel(x, y), bar.colour);
        if (hits > 20)
            found.push_back(bar.name);
    }
    return found;
}

// The picture's window is the largest 4:3 rectangle centred in the pane.
bool FitsPane(QWidget* picture, QWidget* pane) {
    const int w = pane->width(), h = pane->height();
    const QSize fit = w * 3 >= h * 4 ? QSize(h * 4 / 3, h) : QSize(w, w * 3 / 4);
    return std::abs(picture->width() - fit.width()) <= 1 &&
           std::abs(picture->height() - fit.height()) <= 1 &&
           std::abs(picture->x() - (w - picture->width()) / 2) <= 1 &&
           std::abs(picture->y() - (h - picture->height()) / 2) <= 1;
}

std::string PlaceText(QWidget* picture, QWidget* pane) {
    if (!picture)
        return "no picture";
    return std::to_string(picture->width()) + "x" + std::to_string(picture->height()) + "+" +
           std::to_string(picture->x()) + "+" + std::to_string(picture->y()) + " in " +
           std::to_string(pane->width()) + "x" + std::to_string(pane->height());
}

class VideoPixels : public PixelsTest {
protected:
    std::string Pattern() {
        const std::string path = m_data / "bars.mkv";
        EXPECT_TRUE(EncodeMedia("videotestsrc pattern=smpte75 num-buffers=250 ! "
                                "video/x-raw,width=320,height=240,framerate=25/1 ! "
                                "x264enc speed-preset=ultrafast ! h264parse ! matroskamux name=m "
                                "! filesink location=" +
                                path +
                                " audiotestsrc num-buffers=430 samplesperbuffer=1024 ! "
                                "audioconvert ! vorbisenc ! m."));
        return path;
    }
};

} // namespace

TEST_F(VideoPixels, APlayingPatternShowsItsColoursInThePaneAndTheListComesBack) {
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
    ASSERT_TRUE(Frame().StartMediaFile(CString(Pattern())));
    COrvexVideoView* video = Frame().GetSplitterView()->GetVideoView();
    ASSERT_NE(video, nullptr);
    ASSERT_NE(video->PictureWindow(), nullptr);

    const std::vector<std::string> all = {"yellow", "cyan", "magenta", "blue"};
    std::vector<std::string> seen;
    EXPECT_TRUE(WaitFor([&] { return (seen = BarsOnScreen(video)) == all; }, 10000))
        << "bars seen: " << seen.size();
    // The picture keeps its proportions, centred in the pane, whichever
    // side limits it; a resized pane fits it again.
    QPointer<QWidget> picture = video->PictureWindow();
    for (QSize size : {QSize(900, 600), QSize(1200, 420)}) {
        Frame().resize(size);
        EXPECT_TRUE(WaitFor([&] { return picture && FitsPane(picture, video); }, 3000))
            << PlaceText(picture, video);
        EXPECT_EQ(BarsOnScreen(video), all);
    }

    // The wheel turned away from the user over the picture reaches the pane,
    // through the picture's window and the sink's: 4 percent louder.
    XPointer(video, QPoint(video->width() / 2, video->height() / 2), 4);
    EXPECT_TRUE(WaitFor([&] { return Frame().m_player.m_volume == 54; }, 3000))
        << Frame().m_player.m_volume;

    Frame().StopPlayback(FALSE);
    COrvexListView* list = Frame().GetSplitterView()->GetListView();
    ASSERT_NE(list, nullptr);
    QTest::qWait(200);
    EXPECT_TRUE(BarsOnScreen(list).empty());
    EXPECT_TRUE(m_boxes.Texts().empty());
}
