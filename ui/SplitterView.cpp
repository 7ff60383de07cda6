#include "ui/SplitterView.h"

#include <QResizeEvent>

#include "app/OrvexApp.h"
#include "platform/base/MessageBox.h"
#include "platform/base/UserMessages.h"
#include "ui/ListView.h"
#include "ui/TreeView.h"
#include "ui/VideoView.h"

namespace {

// The right pane is given all the room the left column leaves; the number
// only has to be larger than any screen.
constexpr int kRestOfTheWidth = 1 << 20;

QWidget* CreateRightPane(const QMetaObject* viewClass, COrvexDoc* document) {
    if (viewClass == &COrvexVideoView::staticMetaObject)
        return new COrvexVideoView(document);
    if (viewClass == &COrvexListView::staticMetaObject)
        return new COrvexListView(document);
    return nullptr;
}

} // namespace

CMySplitterWnd::CMySplitterWnd(COrvexDoc* document, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent), m_pDoc(document) {
    setObjectName(QStringLiteral("59648")); // 0xE900
    setChildrenCollapsible(false);
    addWidget(new COrvexTreeView(document));
    addWidget(new COrvexListView(document));
    // Only the right pane grows and shrinks with the window.
    setStretchFactor(0, 0);
    setStretchFactor(1, 1);
    setCollapsible(0, true);
}

int CMySplitterWnd::ColumnWidth() const {
    return sizes().value(0);
}

void CMySplitterWnd::SetColumnInfo(int width, int minimum) {
    // Below its minimum a dragged column collapses; an explicit minimum of
    // 1 lets the column stand at a single pixel when it is hidden.
    widget(0)->setMinimumWidth(minimum > 1 ? minimum : 1);
    setSizes({width, kRestOfTheWidth});
}

BOOL CMySplitterWnd::ReplaceView(const QMetaObject* viewClass) {
    COrvexApp* app = AfxGetOrvexApp();
    if (!app || !app->m_pDoc) {
        AfxMessageBox(CString(u"CMySplitterWnd ReplaceView - pDoc Null."));
        return FALSE;
    }
    QWidget* old = widget(1);
    if (old && old->metaObject() == viewClass) {
        if (auto* list = qobject_cast<COrvexListView*>(old))
            list->RestoreListState();
        return TRUE;
    }
    if (qobject_cast<COrvexListView*>(old))
        app->m_hwndList = nullptr;
    else if (qobject_cast<COrvexVideoView*>(old))
        app->m_hwndVideo = nullptr;

    QWidget* pane = CreateRightPane(viewClass, app->m_pDoc);
    if (!pane)
        return FALSE;
    const QList<int> widths = sizes();
    replaceWidget(1, pane);
    delete old;
    setSizes(widths);
    NoteRightPane(pane);

    pane->show();
    if (auto* list = qobject_cast<COrvexListView*>(pane))
        list->OnInitialUpdate();
    else if (auto* video = qobject_cast<COrvexVideoView*>(pane))
        video->OnInitialUpdate();
    pane->update();
    pane->setFocus(Qt::OtherFocusReason);
    return TRUE;
}

void CMySplitterWnd::NoteRightPane(QWidget* pane) {
    COrvexApp* app = AfxGetOrvexApp();
    if (!app)
        return;
    if (auto* list = qobject_cast<COrvexListView*>(pane)) {
        app->m_hwndList = list->GetSafeHwnd();
        app->m_hwndRightPane = list->GetSafeHwnd();
    } else if (auto* video = qobject_cast<COrvexVideoView*>(pane)) {
        app->m_hwndVideo = video->GetSafeHwnd();
        app->m_hwndRightPane = video->GetSafeHwnd();
    }
}

COrvexSplitterView::COrvexSplitterView(COrvexDoc* document, QWidget* parent)
    : QWidget(parent), CWndTarget(this), m_wndSplitter(document, this) {
    setObjectName(QStringLiteral("SplitterView"));
    if (COrvexApp* app = AfxGetOrvexApp()) {
        app->m_hwndSplitterView = GetSafeHwnd();
        app->m_hwndTree = GetTreeView()->GetSafeHwnd();
        app->m_hwndList = GetListView()->GetSafeHwnd();
        app->m_hwndRightPane = app->m_hwndList;
    }
}

void COrvexSplitterView::OnInitialUpdate() {
    m_leftWidth = width() / 4;
    m_wndSplitter.SetColumnInfo(m_leftWidth, 50);
    GetTreeView()->OnInitialUpdate();
    if (COrvexListView* list = GetListView())
        list->OnInitialUpdate();
    if (COrvexApp* app = AfxGetOrvexApp())
        app->m_pSplitterView = this;
}

BOOL COrvexSplitterView::IsLeftHidden() const {
    return m_wndSplitter.ColumnWidth() < 3 ? TRUE : FALSE;
}

void COrvexSplitterView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const QSize size = event->size();
    if (size.width() == 0 || size.height() == 0)
        return;
    // The width the user gave the left column survives the resize.
    if (int current = m_wndSplitter.ColumnWidth(); current != 0)
        m_leftWidth = current;
    m_wndSplitter.setGeometry(0, 0, size.width(), size.height());
    m_wndSplitter.SetColumnInfo(m_leftWidth, GetTreeView()->minimumWidth());
}

LRESULT COrvexSplitterView::OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == UM_SHOW_LEFT)
        ShowLeft(lParam != 0, wParam != 0);
    return 0;
}

void COrvexSplitterView::ShowLeft(BOOL hide, BOOL keepFocus) {
    if (hide) {
        m_savedLeftWidth = m_wndSplitter.ColumnWidth();
        m_wndSplitter.SetColumnInfo(1, 1);
    } else {
        m_wndSplitter.SetColumnInfo(m_savedLeftWidth < 150 ? 150 : m_savedLeftWidth, 0);
    }
    if (!keepFocus) {
        if (QWidget* pane = GetRightPane())
            pane->setFocus(Qt::OtherFocusReason);
    }
}

COrvexTreeView* COrvexSplitterView::GetTreeView() const {
    return static_cast<COrvexTreeView*>(m_wndSplitter.widget(0));
}

QWidget* COrvexSplitterView::GetRightPane() const {
    return m_wndSplitter.widget(1);
}

COrvexListView* COrvexSplitterView::GetListView() const {
    return qobject_cast<COrvexListView*>(GetRightPane());
}

COrvexVideoView* COrvexSplitterView::GetVideoView() const {
    return qobject_cast<COrvexVideoView*>(GetRightPane());
}
