// The left pane: the topic tree. It holds no rows yet; the splitter and
// the frame need only its window and its first update.
#pragma once
#include <QTreeView>

#include "ui/WindowHandles.h"

class COrvexDoc;

class COrvexTreeView : public QTreeView, public CWndTarget {
    Q_OBJECT
public:
    explicit COrvexTreeView(COrvexDoc* document, QWidget* parent = nullptr);

    COrvexDoc* GetDocument() const { return m_pDoc; }
    void OnInitialUpdate() {}

private:
    COrvexDoc* m_pDoc;
};
