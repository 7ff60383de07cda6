#include "ui/SplitterView.h"
#include "platform/base/UserMessages.h"
#include "tests/ui/FrameFixture.h"
#include "ui/ListView.h"
#include "ui/TreeView.h"
#include "ui/VideoView.h"

namespace {

int LeftWidth(COrvexSplitterView& view) {
    return view.GetSplitter().sizes().value(0);
}

void ShowLeft(COrvexApp& app, bool hide, WPARAM keepFocus = 1) {
    PostMessageW(app.m_hwndSplitterView, UM_SHOW_LEFT, keepFocus, hide ? 1 : 0);
    QCoreApplication::processEvents();
}

} // namespace

using SplitterView = FrameTest;

TEST_F(SplitterView, LeftColumnStartsAtAQuarterAndKeepsItsPixelsOnResize) {
    COrvexSplitterView* view = Frame().GetSplitterView();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(App().m_hwndSplitterView, view->GetSafeHwnd());
    EXPECT_EQ(App().m_hwndTree, view->GetTreeView()->GetSafeHwnd());
    EXPECT_EQ(App().m_hwndList, view->GetListView()->GetSafeHwnd());
    EXPECT_EQ(App().m_hwndRightPane, App().m_hwndList);
    EXPECT_EQ(LeftWidth(*view), view->width() / 4);

    view->GetSplitter().setSizes({180, 5000});
    Frame().resize(Frame().width() + 300, Frame().height());
    QCoreApplication::processEvents();
    EXPECT_EQ(LeftWidth(*view), 180);
    Frame().resize(Frame().width() - 500, Frame().height());
    QCoreApplication::processEvents();
    EXPECT_EQ(LeftWidth(*view), 180);
}

TEST_F(SplitterView, HideLeftCollapsesToOnePixelAndShowRestoresAtLeast150) {
    COrvexSplitterView* view = Frame().GetSplitterView();
    view->GetSplitter().SetColumnInfo(100, 0);
    ShowLeft(App(), true);
    EXPECT_EQ(LeftWidth(*view), 1);
    EXPECT_TRUE(view->IsLeftHidden());
    // The hidden column survives a resize of the window.
    Frame().resize(Frame().width() + 40, Frame().height());
    QCoreApplication::processEvents();
    EXPECT_TRUE(view->IsLeftHidden());
    ShowLeft(App(), false);
    EXPECT_EQ(LeftWidth(*view), 150);

    view->GetSplitter().SetColumnInfo(260, 0);
    ShowLeft(App(), true);
    ShowLeft(App(), false, 0);
    EXPECT_EQ(LeftWidth(*view), 260);
    // Without keep-focus the right pane takes the focus.
    EXPECT_TRUE(view->GetListView()->hasFocus());

    for (int width : {0, 1, 2, 3}) {
        view->GetSplitter().SetColumnInfo(width, 0);
        EXPECT_EQ(view->IsLeftHidden(), width < 3) << width;
    }
}

TEST_F(SplitterView, ReplaceViewSwapsTheRightPaneAndKeepsOneRecordOfEachKind) {
    COrvexSplitterView* view = Frame().GetSplitterView();
    COrvexListView* list = view->GetListView();
    ASSERT_TRUE(view->ReplaceView(&COrvexListView::staticMetaObject));
    EXPECT_EQ(view->GetListView(), list); // no new window for the class already there

    ASSERT_TRUE(view->ReplaceView(&COrvexVideoView::staticMetaObject));
    COrvexVideoView* video = view->GetVideoView();
    ASSERT_NE(video, nullptr);
    EXPECT_EQ(App().m_hwndList, nullptr);
    EXPECT_EQ(App().m_hwndVideo, video->GetSafeHwnd());
    EXPECT_EQ(App().m_hwndRightPane, video->GetSafeHwnd());
    EXPECT_GT(video->width(), 0);

    ASSERT_TRUE(view->ReplaceView(&COrvexListView::staticMetaObject));
    EXPECT_EQ(App().m_hwndVideo, nullptr);
    EXPECT_EQ(App().m_hwndList, view->GetListView()->GetSafeHwnd());
    EXPECT_EQ(App().m_hwndRightPane, App().m_hwndList);
    EXPECT_TRUE(m_boxes.Texts().empty());

    COrvexDoc* doc = App().m_pDoc;
    App().m_pDoc = nullptr;
    EXPECT_FALSE(view->ReplaceView(&COrvexVideoView::staticMetaObject));
    App().m_pDoc = doc;
    EXPECT_EQ(m_boxes.Texts(),
              std::vector<CString>{CString(u"CMySplitterWnd ReplaceView - pDoc Null.")});
}
