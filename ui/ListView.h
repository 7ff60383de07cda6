// The right pane at rest: the media list. It holds no rows yet; the frame
// and the splitter need its window, its first update and the restore of
// its place when it comes back after playback.
#pragma once
#include <QTreeView>

#include "ui/WindowHandles.h"

class COrvexDoc;

class COrvexListView : public QTreeView, public CWndTarget {
    Q_OBJECT
public:
    explicit COrvexListView(COrvexDoc* document, QWidget* parent = nullptr);

    COrvexDoc* GetDocument() const { return m_pDoc; }
    void OnInitialUpdate() {}
    // Brings back the focused and top rows the document remembers.
    void RestoreListState() {}

private:
    COrvexDoc* m_pDoc;
};
