#include "ui/TreeView.h"

COrvexTreeView::COrvexTreeView(COrvexDoc* document, QWidget* parent)
    : QTreeView(parent), CWndTarget(this), m_pDoc(document) {
    setObjectName(QStringLiteral("TreeView"));
    setHeaderHidden(true);
}
