// The window plays: a file opened from the File menu runs under the
// transport bar, which steers it and follows it, and its end takes the
// window back to rest.
#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QStyleOptionSlider>
#include <QWheelEvent>

#include "platform/base/UserMessages.h"
#include "tests/ui/FrameMedia.h"
#include "ui/Commands.h"
#include "ui/ControlsBar.h"
#include "ui/ListView.h"
#include "ui/SplitterView.h"
#include "ui/VideoView.h"

namespace {

template <typename T>
T* Control(CMainFrame& frame, int id) {
    T* control = frame.GetControlsBar()->findChild<T*>(QString::number(id));
    EXPECT_NE(control, nullptr) << id;
    return control;
}

QString Text(CMainFrame& frame, int id) {
    if (auto* label = frame.GetControlsBar()->findChild<QLabel*>(QString::number(id)))
        return label->text();
    return Control<QPushButton>(frame, id)->text();
}

QPoint HandleCenter(QSlider* slider) {
    QStyleOptionSlider option;
    option.initFrom(slider);
    option.orientation = slider->orientation();
    option.minimum = slider->minimum();
    option.maximum = slider->maximum();
    option.sliderPosition = slider->sliderPosition();
    option.sliderValue = slider->value();
    return slider->style()
        ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider)
        .center();
}

void Wheel(QWidget* widget, int delta) {
    const QPointF at(widget->width() / 2.0, widget->height() / 2.0);
    QWheelEvent event(at, widget->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
}

} // namespace

TEST_F(PlaybackTest, AFileFromTheFileMenuPlaysUnderTheBarWhichSteersIt) {
    CMainFrame& frame = Frame();
    auto* stop = Control<QPushButton>(frame, 1002);
    auto* pause = Control<QPushButton>(frame, 1003);
    auto* mute = Control<QPushButton>(frame, 1004);
    auto* progress = Control<QSlider>(frame, 1006);
    auto* volume = Control<QSlider>(frame, 1008);
    EXPECT_FALSE(progress->isEnabled());
    EXPECT_FALSE(stop->isEnabled());

    ChooseFile(Media().movie);
    frame.CommandAction(ID_FILE_OPEN)->trigger();
    ASSERT_EQ(Engine().m_state, 2);
    EXPECT_EQ(frame.windowTitle(), QStringLiteral("ORVEX:  movie.mkv"));
    ASSERT_NE(frame.GetSplitterView()->GetVideoView(), nullptr);
    EXPECT_EQ(App().m_hwndList, nullptr);

    // The bar wakes up at half volume, and the position follows the medium.
    ASSERT_TRUE(WaitFor([&] { return progress->isEnabled(); }));
    EXPECT_TRUE(stop->isEnabled() && pause->isEnabled() && volume->isEnabled());
    EXPECT_EQ(volume->value(), 50);
    EXPECT_EQ(Text(frame, 1007), QStringLiteral("50 %"));
    EXPECT_EQ(Text(frame, 1005), QStringLiteral("00:00:00"));
    ASSERT_TRUE(WaitFor([&] { return Text(frame, 1005) == QStringLiteral("00:00:01"); }, 5000));
    EXPECT_GT(progress->value(), 100);

    // Volume: the keyboard steps the slider, the wheel over the slider moves
    // it by 2, the wheel over the picture by 4.
    volume->setFocus();
    QTest::keyClick(volume, Qt::Key_Right);
    ASSERT_TRUE(WaitFor([&] { return Engine().m_volume == 51; }));
    EXPECT_EQ(Text(frame, 1007), QStringLiteral("51 %"));
    Wheel(volume, 120);
    ASSERT_TRUE(WaitFor([&] { return Engine().m_volume == 53; }));
    Wheel(volume, -120);
    ASSERT_TRUE(WaitFor([&] { return Engine().m_volume == 51; }));
    Wheel(frame.GetSplitterView()->GetVideoView(), 120);
    EXPECT_EQ(Engine().m_volume, 55);
    ASSERT_TRUE(WaitFor([&] { return volume->value() == 55; }));
    EXPECT_EQ(frame.GetControlsBar()->m_barVolume, 55);

    // Mute: the volume slider stays put until the sound comes back.
    QTest::mouseClick(mute, Qt::LeftButton);
    ASSERT_TRUE(WaitFor([&] { return mute->text() == QStringLiteral("Unmute"); }));
    EXPECT_TRUE(Engine().m_bMuted);
    volume->setFocus();
    QTest::keyClick(volume, Qt::Key_Right);
    EXPECT_EQ(volume->value(), 55);
    QTest::mouseClick(mute, Qt::LeftButton);
    ASSERT_TRUE(WaitFor([&] { return mute->text() == QStringLiteral("Mute"); }));
    EXPECT_FALSE(Engine().m_bMuted);

    // Pause by the button; a click gives the focus to the picture. Paused,
    // a volume change is put back and the progress keys do nothing.
    QTest::mouseClick(pause, Qt::LeftButton);
    ASSERT_TRUE(WaitFor([&] { return pause->text() == QStringLiteral("Play"); }));
    EXPECT_EQ(Engine().m_state, 1);
    EXPECT_TRUE(frame.GetSplitterView()->GetVideoView()->hasFocus());
    volume->setFocus();
    QTest::keyClick(volume, Qt::Key_Right);
    ASSERT_TRUE(WaitFor([&] { return volume->value() == 55; }));
    EXPECT_EQ(Engine().m_volume, 55);
    const int pausedAt = progress->value();
    progress->setFocus();
    QTest::keyClick(progress, Qt::Key_PageUp);
    EXPECT_EQ(progress->value(), pausedAt);
    // Space anywhere in the bar resumes, and the focus stays where it was.
    QTest::keyClick(progress, Qt::Key_Space);
    ASSERT_TRUE(WaitFor([&] { return pause->text() == QStringLiteral("Pause"); }));
    EXPECT_EQ(Engine().m_state, 2);
    EXPECT_TRUE(progress->hasFocus());
    // Space over the picture pauses a file.
    QTest::keyClick(frame.GetSplitterView()->GetVideoView(), Qt::Key_Space);
    ASSERT_TRUE(WaitFor([&] { return pause->text() == QStringLiteral("Play"); }));
    QTest::keyClick(frame.GetSplitterView()->GetVideoView(), Qt::Key_Space);
    ASSERT_TRUE(WaitFor([&] { return Engine().m_state == 2; }));

    // A drag pauses and seeks as it goes; letting go plays on from there.
    QTest::mousePress(progress, Qt::LeftButton, {}, HandleCenter(progress));
    QTest::mouseMove(progress, QPoint(progress->width() * 3 / 4, progress->height() / 2));
    ASSERT_TRUE(WaitFor([&] { return Engine().m_state == 1; }));
    EXPECT_TRUE(frame.GetControlsBar()->m_bDragging);
    const int target = progress->value();
    EXPECT_GT(target, 600);
    QTest::mouseRelease(progress, Qt::LeftButton, {},
                        QPoint(progress->width() * 3 / 4, progress->height() / 2));
    ASSERT_TRUE(WaitFor([&] { return Engine().m_state == 2; }));
    EXPECT_FALSE(frame.GetControlsBar()->m_bDragging);
    int perMille = 0, seconds = 0;
    ASSERT_TRUE(WaitFor([&] { return Engine().GetPosition(perMille, seconds); }));
    EXPECT_GE(perMille, target - 20);

    // Stop: the list is back, the bar rests, the title too.
    QTest::mouseClick(stop, Qt::LeftButton);
    ASSERT_TRUE(WaitFor([&] { return !progress->isEnabled(); }));
    EXPECT_EQ(Engine().m_state, 0);
    EXPECT_EQ(frame.windowTitle(), QStringLiteral("ORVEX"));
    EXPECT_NE(frame.GetSplitterView()->GetListView(), nullptr);
    EXPECT_EQ(App().m_hwndVideo, nullptr);
    EXPECT_EQ(Text(frame, 1005), QStringLiteral("Progress"));
    EXPECT_EQ(Text(frame, 1007), QStringLiteral("Volume"));
    EXPECT_FALSE(stop->isEnabled());
    EXPECT_TRUE(m_boxes.Texts().empty());
}

TEST_F(PlaybackTest, TheEndOfAMediumResetsTheBarAndSwapsBackToTheList) {
    CMainFrame& frame = Frame();
    auto* hideLeft = Control<QPushButton>(frame, 1001);
    QTest::mouseClick(hideLeft, Qt::LeftButton);
    ASSERT_TRUE(WaitFor([&] { return frame.GetSplitterView()->IsLeftHidden(); }));

    frame.SetMediaPath(CString(Media().clip));
    frame.SetMediaTitle(CString(u"A Clip"));
    PostMessageW(frame.GetSafeHwnd(), UM_PLAY_MEDIA, 0, 0);
    ASSERT_TRUE(WaitFor([&] { return Engine().m_state == 2; }));
    EXPECT_EQ(frame.windowTitle(), QStringLiteral("A Clip"));
    ASSERT_TRUE(WaitFor([&] { return Engine().m_state == 0; }, 10000));
    ASSERT_TRUE(WaitFor([&] { return !Control<QSlider>(frame, 1006)->isEnabled(); }));
    EXPECT_EQ(frame.windowTitle(), QStringLiteral("ORVEX"));
    EXPECT_TRUE(frame.GetMediaPath().IsEmpty());
    EXPECT_TRUE(frame.GetMediaTitle().IsEmpty());
    EXPECT_NE(frame.GetSplitterView()->GetListView(), nullptr);
    EXPECT_EQ(Text(frame, 1001), QStringLiteral("Show Left"));
    EXPECT_EQ(Control<QSlider>(frame, 1008)->value(), 0);

    // An audio-only medium plays with the list in view.
    frame.SetMediaPath(CString(Media().song));
    PostMessageW(frame.GetSafeHwnd(), UM_PLAY_MEDIA, 0, 0);
    ASSERT_TRUE(WaitFor([&] { return Engine().m_state == 2; }));
    EXPECT_EQ(Engine().m_hVideoOwner, App().m_hwndList);
    EXPECT_NE(frame.GetSplitterView()->GetListView(), nullptr);
    // Nothing to play: nothing happens.
    frame.StopPlayback(FALSE);
    frame.SetMediaPath(CString());
    PostMessageW(frame.GetSafeHwnd(), UM_PLAY_MEDIA, 0, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(Engine().m_state, 0);
    EXPECT_TRUE(m_boxes.Texts().empty());
}
