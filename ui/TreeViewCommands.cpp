// The tree pane's context menu and keys: editing, deleting, exporting and
// adding topics, the start of "Move Up Down", and Tab to the next pane.
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/MessageBox.h"
#include "platform/qt/QtGlue.h"
#include "ui/TreeRows.h"
#include "ui/TreeView.h"

namespace {} // namespace

void COrvexTreeView::contextMenuEvent(QContextMenuEvent* event) {
    if (m_moveMode || !m_pDoc)
        return;
    QTreeWidgetItem* row = nullptr;
    QPoint at = event->globalPos();
    if (event->reason() == QContextMenuEvent::Mouse) {
        row = itemAt(viewport()->mapFromGlobal(event->globalPos()));
        if (row) {
            setCurrentItem(row);
        } else {
            clearSelection();
        }
    } else {
        const QList<QTreeWidgetItem*> selected = selectedItems();
        if (selected.isEmpty())
            return;
        row = selected.first();
        // Just inside the bottom right corner of the row's text.
        const QRect rect = visualItemRect(row);
        const int textRight =
            rect.left() + iconSize().width() + 6 + fontMetrics().horizontalAdvance(row->text(0));
        at = viewport()->mapToGlobal(QPoint(textRight - 5, rect.bottom() - 5));
    }
    CNodeArray path;
    if (row) {
        BuildPath(row, path);
        if (IsDrivePath(path) || IsFavoritesRow(row))
            return;
    }
    const BOOL rootRow = row && !row->parent();
    const QPersistentModelIndex rowIndex = Index(row);

    QMenu menu(this);
    menu.setObjectName(QStringLiteral("TreeMenu"));
    QAction* edit = nullptr;
    QAction* remove = nullptr;
    QAction* move = nullptr;
    QAction* exportTopic = nullptr;
    QAction* addRoot = nullptr;
    if (row) {
        edit = menu.addAction(QStringLiteral("Edit..."));
        remove = menu.addAction(QStringLiteral("Delete..."));
        move = menu.addAction(QStringLiteral("Move Up Down"));
        exportTopic = menu.addAction(QStringLiteral("Export Topic..."));
    }
    if (rootRow || !row)
        addRoot = menu.addAction(QStringLiteral("Add New Root Topic..."));
    menu.addAction(QStringLiteral("Cancel (Esc)"));
    QAction* chosen = menu.exec(at);
    if (!chosen)
        return;
    if (chosen == edit) {
        m_pDoc->EditTopic(path, MEDIA_NONE, FALSE);
    } else if (chosen == remove) {
        if (QTreeWidgetItem* still = Row(rowIndex))
            DeleteTopicRow(still);
    } else if (chosen == move) {
        if (QTreeWidgetItem* still = Row(rowIndex))
            StartMoveMode(still);
    } else if (chosen == exportTopic) {
        m_pDoc->ExportTopic(path);
    } else if (chosen == addRoot) {
        m_pDoc->EditTopic(CNodeArray(), MEDIA_NONE, TRUE);
    }
}

void COrvexTreeView::DeleteTopicRow(QTreeWidgetItem* row) {
    CNodeArray path;
    if (!BuildPath(row, path))
        return;
    if (AfxMessageBox(CString(u"Delete selected Topic?"), MB_YESNO | MB_ICONINFORMATION) != IDYES)
        return;
    // The open parent stays open once the tree is built again.
    m_reopenPath.RemoveAll();
    if (QTreeWidgetItem* parent = row->parent(); parent && parent->isExpanded())
        BuildPath(parent, m_reopenPath);
    m_pDoc->DeleteTopic(path);
}

void COrvexTreeView::keyPressEvent(QKeyEvent* event) {
    if (m_moveMode && MoveModeKey(event->key()))
        return;
    if (event->key() == Qt::Key_Delete && m_pDoc && !m_pDoc->IsFavoritesDisplayed()) {
        const QList<QTreeWidgetItem*> selected = selectedItems();
        CNodeArray path;
        if (!selected.isEmpty() && BuildPath(selected.first(), path)) {
            if (IsDrivePath(path))
                setCurrentItem(selected.first());
            else
                DeleteTopicRow(selected.first());
        }
    }
    QTreeWidget::keyPressEvent(event);
}

void COrvexTreeView::MoveFocusOnTab() {
    COrvexApp* app = AfxGetOrvexApp();
    if (!app)
        return;
    if (app->m_hwndList)
        SetFocus(app->m_hwndList);
    else if (app->m_hwndVideo && app->m_hwndControls)
        SetFocus(app->m_hwndControls);
}

bool COrvexTreeView::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab && key->modifiers() == Qt::NoModifier) {
            if (hasFocus())
                MoveFocusOnTab();
            return true;
        }
    }
    return QTreeWidget::event(event);
}
