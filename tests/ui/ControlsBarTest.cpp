// The transport bar's own rules: its time text, where its controls go for a
// width, and the keys and slider moves it turns into messages.
#include <QPushButton>
#include <QSlider>

#include "tests/ui/FrameMedia.h"
#include "ui/ControlsBar.h"
#include "ui/SplitterView.h"
#include "ui/TreeView.h"
#include "ui/VideoView.h"

TEST(ControlsBarText, TimeHasThreePartsAndNoLimitOfHours) {
    EXPECT_EQ(CControlsBar::TimeText(0), CString(u"00:00:00"));
    EXPECT_EQ(CControlsBar::TimeText(59), CString(u"00:00:59"));
    EXPECT_EQ(CControlsBar::TimeText(60), CString(u"00:01:00"));
    EXPECT_EQ(CControlsBar::TimeText(3661), CString(u"01:01:01"));
    EXPECT_EQ(CControlsBar::TimeText(36000 + 61), CString(u"10:01:01"));
    EXPECT_EQ(CControlsBar::TimeText(360000), CString(u"100:00:00"));
}

TEST(ControlsBarLayout, OneRowWhenAllFitsElseSlidersAboveButtons) {
    // Buttons 60 wide (270 with gaps), sliders and labels 100 (424).
    BarRects model;
    for (int i = 0; i < kBarControlCount; ++i)
        model[i] = QRect(0, 6, i < kProgressLabel ? 60 : 100, 26);
    int height = 0;
    BarRects one = LayoutBar(model, 800, &height);
    EXPECT_EQ(one[kVolumeSlider].right() + 1, 794);
    EXPECT_EQ(one[kVolumeLabel].right() + 1 + 6, one[kVolumeSlider].left());
    EXPECT_EQ(one[kProgressLabel].right() + 1 + 6, one[kProgressSlider].left());
    EXPECT_EQ(one[kMute].right() + 1 + 6, one[kProgressLabel].left());
    EXPECT_EQ(one[kHideLeft].right() + 1 + 6, one[kStop].left());
    EXPECT_EQ(one[kHideLeft].top(), 6);
    EXPECT_EQ(height, 38);

    // 694 does not take both rows' worth: the buttons go below, right-aligned.
    BarRects two = LayoutBar(model, 694, &height);
    EXPECT_EQ(two[kVolumeSlider].right() + 1, 688);
    EXPECT_EQ(two[kMute].right() + 1, 688);
    EXPECT_EQ(two[kMute].top(), 6 + 26);
    EXPECT_EQ(height, 6 + 26 + 26 + 6);

    // Narrower than a row: each row starts at the left, in reading order.
    BarRects narrow = LayoutBar(model, 260, &height);
    EXPECT_EQ(narrow[kProgressLabel].left(), 6);
    EXPECT_EQ(narrow[kProgressSlider].left(), 112);
    EXPECT_EQ(narrow[kHideLeft].left(), 6);
    EXPECT_EQ(narrow[kStop].left(), 72);
    EXPECT_EQ(narrow[kMute].left(), 204);
}

using ControlsBarKeys = PlaybackTest;

TEST_F(ControlsBarKeys, SeekLimitsLiveStreamsEnterAndTab) {
    CControlsBar* bar = Frame().GetControlsBar();
    auto* progress = bar->findChild<QSlider*>(QStringLiteral("1006"));
    auto* volume = bar->findChild<QSlider*>(QStringLiteral("1008"));
    auto* pause = bar->findChild<QPushButton*>(QStringLiteral("1003"));
    auto* hideLeft = bar->findChild<QPushButton*>(QStringLiteral("1001"));
    COrvexSplitterView* view = Frame().GetSplitterView();

    // At rest: Tab from Hide Left goes to the tree.
    hideLeft->setFocus();
    QTest::keyClick(hideLeft, Qt::Key_Tab);
    EXPECT_TRUE(view->GetTreeView()->hasFocus());

    ASSERT_TRUE(Frame().StartMediaFile(CString(Media().movie)));
    ASSERT_TRUE(WaitFor([&] { return progress->isEnabled(); }));
    // Page right near the end stops at 997.
    bar->m_position = 900;
    progress->setFocus();
    QTest::keyClick(progress, Qt::Key_PageUp);
    ASSERT_TRUE(WaitFor([&] { return bar->m_position == 997; }));

    // Enter on Pause keeps the focus on the button.
    pause->setFocus();
    QTest::keyClick(pause, Qt::Key_Return);
    ASSERT_TRUE(WaitFor([&] { return Engine().m_state == 1; }));
    EXPECT_TRUE(pause->hasFocus());
    QTest::keyClick(pause, Qt::Key_Return);
    ASSERT_TRUE(WaitFor([&] { return Engine().m_state == 2; }));

    // Tab from the volume slider: to the tree while the left pane shows,
    // else to Hide Left while the picture plays.
    volume->setFocus();
    QTest::keyClick(volume, Qt::Key_Tab);
    EXPECT_TRUE(view->GetTreeView()->hasFocus());
    view->GetSplitter().SetColumnInfo(1, 1);
    volume->setFocus();
    QTest::keyClick(volume, Qt::Key_Tab);
    EXPECT_TRUE(hideLeft->hasFocus());
    // Tab on the picture goes to the bar.
    view->GetVideoView()->setFocus();
    QTest::keyClick(view->GetVideoView(), Qt::Key_Tab);
    EXPECT_TRUE(hideLeft->hasFocus());

    // A medium without a length has nowhere to seek: the slider snaps to 0.
    Engine().m_duration = 0;
    progress->setFocus();
    QTest::keyClick(progress, Qt::Key_PageUp);
    EXPECT_EQ(progress->value(), 0);
    EXPECT_EQ(bar->m_position, 0);
}
