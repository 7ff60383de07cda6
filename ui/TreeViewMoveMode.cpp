// "Move Up Down": a topic moves among its siblings. An insertion mark shows
// the new place, moved by the arrow keys or the mouse; Enter or a click on
// the marked row confirms, Esc cancels. Places that would leave the topic
// where it is are skipped.
#include <QMouseEvent>

#include "app/OrvexDoc.h"
#include "platform/base/MessageBox.h"
#include "platform/qt/QtGlue.h"
#include "ui/TreeView.h"

namespace {

bool IsFirstSibling(const QTreeWidgetItem* row) {
    return row && !PreviousSiblingRow(row);
}

} // namespace

void COrvexTreeView::StartMoveMode(QTreeWidgetItem* row) {
    if (!row)
        return;
    m_moveMode = TRUE;
    m_moveItem = Index(row);
    viewport()->grabMouse();
    viewport()->setMouseTracking(true);
    setCurrentItem(row);
    m_moveTarget = QPersistentModelIndex();
    m_markAfter = TRUE;
    // The first mark: behind the next sibling, else behind the one two
    // places up, else in front of the previous one. A drive row is no
    // place for a topic.
    QTreeWidgetItem* next = NextSiblingRow(row);
    QTreeWidgetItem* previous = PreviousSiblingRow(row);
    QTreeWidgetItem* twoUp = PreviousSiblingRow(previous);
    if (next && !IsDriveRow(next))
        PlaceMoveMark(next, TRUE);
    else if (twoUp)
        PlaceMoveMark(twoUp, TRUE);
    else if (row->parent() && previous)
        PlaceMoveMark(previous, FALSE);
    viewport()->update();
    m_moveJustStarted = TRUE;
}

void COrvexTreeView::PlaceMoveMark(QTreeWidgetItem* row, BOOL after) {
    m_moveTarget = Index(row);
    m_markAfter = after;
    SetInsertMark(row, after);
    scrollToItem(row);
}

void COrvexTreeView::CancelMoveMode() {
    SetInsertMark(nullptr, TRUE);
    m_moveMode = FALSE;
    m_moveItem = QPersistentModelIndex();
    m_moveTarget = QPersistentModelIndex();
    m_markAfter = TRUE;
    m_moveJustStarted = FALSE;
    viewport()->releaseMouse();
}

void COrvexTreeView::ConfirmMoveMode(BOOL fromKey) {
    QTreeWidgetItem* item = Row(m_moveItem);
    QTreeWidgetItem* target = Row(m_moveTarget);
    BOOL after = m_markAfter;
    if (fromKey && item && target && !item->parent() && !after) {
        // In front of a root means behind the root above it; in front of
        // the first row there is no such place, and the mode goes on.
        QTreeWidgetItem* above = PreviousSiblingRow(target);
        if (!above)
            return;
        target = above;
        after = TRUE;
    }
    CancelMoveMode();
    if (!item || !target || !m_pDoc)
        return;
    if (item == target) {
        if (fromKey)
            AfxMessageBox(CString(u"Topic Location not changed."), MB_OK);
        return;
    }
    CNodeArray from;
    CNodeArray to;
    BuildPath(item, from);
    BuildPath(target, to);
    m_pDoc->MoveTopic(from, to, after);
}

void COrvexTreeView::MoveMarkDown() {
    QTreeWidgetItem* item = Row(m_moveItem);
    QTreeWidgetItem* current = m_moveTarget.isValid() ? Row(m_moveTarget) : item;
    QTreeWidgetItem* next = NextSiblingRow(current);
    if (!next)
        return;
    if (!m_markAfter) {
        // The mark first changes sides of the row it stands at.
        if (next != item) {
            PlaceMoveMark(current, TRUE);
            return;
        }
        if (QTreeWidgetItem* behind = NextSiblingRow(item)) {
            PlaceMoveMark(behind, TRUE);
            return;
        }
    }
    if (IsDriveRow(next))
        return;
    if (next == item || next == PreviousSiblingRow(item)) {
        next = NextSiblingRow(item);
        if (!next || IsDriveRow(next))
            return;
    }
    PlaceMoveMark(next, TRUE);
}

void COrvexTreeView::MoveMarkUp() {
    QTreeWidgetItem* item = Row(m_moveItem);
    QTreeWidgetItem* current = m_moveTarget.isValid() ? Row(m_moveTarget) : item;
    QTreeWidgetItem* previous = PreviousSiblingRow(current);
    if (!previous) {
        if (!current || !current->parent() || current == item)
            return;
        PlaceMoveMark(current, FALSE);
        return;
    }
    if (IsDriveRow(previous))
        return;
    if (previous == item || previous == PreviousSiblingRow(item)) {
        QTreeWidgetItem* oldPrevious = previous;
        previous = PreviousSiblingRow(PreviousSiblingRow(item));
        if (!previous) {
            QTreeWidgetItem* front = PreviousSiblingRow(oldPrevious);
            if (item->parent() && front && IsFirstSibling(front))
                PlaceMoveMark(front, FALSE);
            return;
        }
        if (IsDriveRow(previous))
            return;
    }
    PlaceMoveMark(previous, TRUE);
}

BOOL COrvexTreeView::MoveModeKey(int key) {
    switch (key) {
    case Qt::Key_Escape:
        CancelMoveMode();
        return TRUE;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        ConfirmMoveMode(TRUE);
        return TRUE;
    case Qt::Key_Up:
    case Qt::Key_Left:
        MoveMarkUp();
        return TRUE;
    case Qt::Key_Down:
    case Qt::Key_Right:
        MoveMarkDown();
        return TRUE;
    default:
        return FALSE;
    }
}

void COrvexTreeView::MoveModeMouse(const QPoint& point) {
    if (m_moveJustStarted) {
        m_moveJustStarted = FALSE;
        return;
    }
    QTreeWidgetItem* item = Row(m_moveItem);
    if (!item) {
        CancelMoveMode();
        return;
    }
    SetInsertMark(nullptr, TRUE);
    QTreeWidgetItem* row = itemAt(point);
    if (!row || row == item || row->parent() != item->parent() || IsDriveRow(row))
        return;
    BOOL after = TRUE;
    const QRect rect = visualItemRect(row);
    if (item->parent() && IsFirstSibling(row) && point.y() < rect.center().y())
        after = FALSE;
    if (after && row == PreviousSiblingRow(item))
        return;
    m_moveTarget = Index(row);
    m_markAfter = after;
    SetInsertMark(row, after);
    if (InBottomZone(point))
        scrollToItem(row);
    else if (InTopZone(point))
        scrollToItem(PreviousSiblingRow(row) ? PreviousSiblingRow(row) : row);
}

void COrvexTreeView::mousePressEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (m_moveMode && event->button() == Qt::LeftButton && m_moveTarget.isValid()) {
        if (!visualItemRect(Row(m_moveTarget)).contains(point))
            CancelMoveMode();
        else
            ConfirmMoveMode(FALSE);
        return;
    }
    if (m_moveMode && event->button() != Qt::LeftButton)
        return;
    m_pressPoint = point;
    QTreeWidget::mousePressEvent(event);
}

void COrvexTreeView::mouseMoveEvent(QMouseEvent* event) {
    if (m_moveMode) {
        MoveModeMouse(event->position().toPoint());
        return;
    }
    QTreeWidget::mouseMoveEvent(event);
}
