// The frame's only view: a splitter of one row and two columns, the topic
// tree on the left and, on the right, the media list or, while a picture
// plays, the video pane. The left column keeps its width in pixels when the
// window is resized, and can be hidden down to one pixel and shown again.
#pragma once
#include <QSplitter>

#include "ui/WindowHandles.h"

class COrvexDoc;
class COrvexListView;
class COrvexTreeView;
class COrvexVideoView;
struct QMetaObject;

class CMySplitterWnd : public QSplitter {
    Q_OBJECT
public:
    CMySplitterWnd(COrvexDoc* document, QWidget* parent);

    // Puts a new view of the class (the list's or the video's) into the
    // right pane in place of the old one, which is destroyed. A pane of
    // that class already there stays.
    BOOL ReplaceView(const QMetaObject* viewClass);

    // Width and minimum of the left column; the minimum applies to dragging.
    int ColumnWidth() const;
    void SetColumnInfo(int width, int minimum);

private:
    void NoteRightPane(QWidget* pane);

    COrvexDoc* m_pDoc;
};

class COrvexSplitterView : public QWidget, public CWndTarget {
    Q_OBJECT
public:
    explicit COrvexSplitterView(COrvexDoc* document, QWidget* parent = nullptr);

    // After the document has loaded: the left column takes a quarter of the
    // width, and both panes run their own first update.
    void OnInitialUpdate();
    BOOL ReplaceView(const QMetaObject* viewClass) { return m_wndSplitter.ReplaceView(viewClass); }
    // The left column is under 3 pixels wide.
    BOOL IsLeftHidden() const;

    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    COrvexTreeView* GetTreeView() const;
    // The pane on the right, and the same as a list or a video view (null
    // when the other kind is there).
    QWidget* GetRightPane() const;
    COrvexListView* GetListView() const;
    COrvexVideoView* GetVideoView() const;
    CMySplitterWnd& GetSplitter() { return m_wndSplitter; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void ShowLeft(BOOL hide, BOOL keepFocus);

    CMySplitterWnd m_wndSplitter;
    int m_leftWidth = 400;
    int m_savedLeftWidth = 0;
};
