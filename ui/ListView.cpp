#include "ui/ListView.h"

COrvexListView::COrvexListView(COrvexDoc* document, QWidget* parent)
    : QTreeView(parent), CWndTarget(this), m_pDoc(document) {
    setObjectName(QStringLiteral("ListView"));
    setRootIsDecorated(false);
}
