// Dragging onto the tree pane: a topic row moved anywhere in the tree (into,
// in front of or behind another row, with its subtree), and rows of the
// list dropped onto a topic or onto "Favorites". While a drag hovers, the
// pane scrolls at its top and bottom and opens a closed row after a pause.
#include <QDrag>
#include <QDragMoveEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>

#include "app/OrvexDoc.h"
#include "platform/base/MessageBox.h"
#include "platform/qt/QtGlue.h"
#include "ui/DragData.h"
#include "ui/TreeRows.h"
#include "ui/TreeView.h"

namespace {

bool IsAncestorOf(const QTreeWidgetItem* ancestor, const QTreeWidgetItem* row) {
    for (const QTreeWidgetItem* r = row ? row->parent() : nullptr; r; r = r->parent()) {
        if (r == ancestor)
            return true;
    }
    return false;
}

void Refuse(const CString& text) {
    AfxMessageBox(text, MB_OK);
}

} // namespace

QMimeData* COrvexTreeView::BeginTopicDrag(QTreeWidgetItem* row, const QPoint&) {
    if (!row || IsPlaceholderRow(row) || m_moveMode)
        return nullptr;
    if (IsFavoritesRow(row)) {
        Refuse(CString(u"Favorites may not be dragged."));
        return nullptr;
    }
    CNodeArray path;
    if (!BuildPath(row, path) || IsDrivePath(path))
        return nullptr;
    m_dragItem = Index(row);
    m_dragging = TRUE;
    m_dragKind = DRAG_TOPIC;
    m_dropMode = 0;
    auto* data = new QMimeData;
    data->setData(kTopicRowMime, row->text(0).toUtf8());
    return data;
}

void COrvexTreeView::startDrag(Qt::DropActions) {
    QTreeWidgetItem* row = itemAt(m_pressPoint);
    QMimeData* data = BeginTopicDrag(row, m_pressPoint);
    if (!data)
        return;
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    // The picture of the row, held where the press caught it.
    const QRect rect = visualItemRect(row);
    drag->setPixmap(viewport()->grab(rect));
    drag->setHotSpot(m_pressPoint - rect.topLeft());
    drag->exec(Qt::MoveAction);
    EndDrag();
}

void COrvexTreeView::EndDrag() {
    m_dragTimer.stop();
    m_dragging = FALSE;
    m_dragKind = DRAG_NONE;
    m_dragItem = QPersistentModelIndex();
    m_dropMode = 0;
    SetDropHighlight(nullptr);
    SetInsertMark(nullptr, TRUE);
}

void COrvexTreeView::dragEnterEvent(QDragEnterEvent* event) {
    CMediaRowsDrag rows;
    if (event->mimeData()->hasFormat(kTopicRowMime) && m_dragKind == DRAG_TOPIC &&
        Row(m_dragItem)) {
        event->acceptProposedAction();
    } else if (ReadMediaRowsMime(event->mimeData(), rows)) {
        m_dragKind = DRAG_MEDIA;
        event->acceptProposedAction();
    } else {
        event->ignore();
    }
}

void COrvexTreeView::dragMoveEvent(QDragMoveEvent* event) {
    m_dragPoint = event->position().toPoint();
    if (m_dragKind == DRAG_TOPIC)
        TopicDragMove(event);
    else if (m_dragKind == DRAG_MEDIA)
        MediaDragMove(event);
    else
        event->ignore();
}

void COrvexTreeView::dragLeaveEvent(QDragLeaveEvent*) {
    m_dragTimer.stop();
    SetDropHighlight(nullptr);
    SetInsertMark(nullptr, TRUE);
    // A topic's drag goes on outside the pane; the list's ends here.
    if (m_dragKind == DRAG_MEDIA)
        m_dragKind = DRAG_NONE;
}

void COrvexTreeView::TopicDragMove(QDragMoveEvent* event) {
    m_dragTimer.stop();
    m_dropMode = 0;
    SetInsertMark(nullptr, TRUE);
    const QPoint point = m_dragPoint;
    QTreeWidgetItem* row = itemAt(point);
    QTreeWidgetItem* dragged = Row(m_dragItem);
    if (!row || !dragged) {
        SetDropHighlight(nullptr);
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    // The upper quarter and a pixel is in front, the lower one behind, the
    // middle onto the row.
    const QRect rect = visualItemRect(row);
    const int top = rect.top();
    const int bottom = rect.bottom();
    const int quarter = (bottom - top) / 4 + 1;
    const int y = point.y();
    if (top <= y && y <= top + quarter)
        m_dropMode = RELOCATE_BEFORE;
    else if (y > bottom || y < bottom - quarter)
        m_dropMode = RELOCATE_INTO;
    else
        m_dropMode = RELOCATE_AFTER;

    bool openOnHover = false;
    if (m_dropMode == RELOCATE_INTO) {
        if (IsDriveRow(row) || IsFavoritesRow(row)) {
            SetDropHighlight(nullptr);
            return;
        }
        SetDropHighlight(row);
        openOnHover = row->childCount() > 0 && !row->isExpanded();
    } else {
        // Places that would leave the topic where it is get no mark.
        const bool inPlace = row == dragged ||
                             (m_dropMode == RELOCATE_AFTER && row == PreviousSiblingRow(dragged)) ||
                             (m_dropMode == RELOCATE_BEFORE && row == NextSiblingRow(dragged));
        if (inPlace || IsFavoritesRow(row) || IsDriveRow(row)) {
            SetDropHighlight(nullptr);
            return;
        }
        SetDropHighlight(row);
        SetInsertMark(row, m_dropMode == RELOCATE_AFTER);
    }
    if (InTopZone(point) || InBottomZone(point) || openOnHover)
        m_dragTimer.start(m_dragDelay, this);
}

void COrvexTreeView::MediaDragMove(QDragMoveEvent* event) {
    m_dragTimer.stop();
    CMediaRowsDrag drag;
    ReadMediaRowsMime(event->mimeData(), drag);
    const QPoint point = m_dragPoint;
    QTreeWidgetItem* row = itemAt(point);
    // Several rows can't all become favourites by a drop.
    if (!drag.m_dropAllowed || !row || (IsFavoritesRow(row) && !drag.m_rows.empty())) {
        SetDropHighlight(nullptr);
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    SetDropHighlight(row);
    if (InTopZone(point) || InBottomZone(point) || (row->childCount() > 0 && !row->isExpanded()))
        m_dragTimer.start(m_dragDelay, this);
}

void COrvexTreeView::dropEvent(QDropEvent* event) {
    m_dragTimer.stop();
    const QPoint point = event->position().toPoint();
    QTreeWidgetItem* row = itemAt(point);
    if (m_dragKind == DRAG_TOPIC) {
        m_dragging = FALSE;
        SetDropHighlight(nullptr);
        SetInsertMark(nullptr, TRUE);
        if (row)
            DropTopic(row);
        event->acceptProposedAction();
    } else if (m_dragKind == DRAG_MEDIA) {
        CMediaRowsDrag drag;
        SetDropHighlight(nullptr);
        if (row && ReadMediaRowsMime(event->mimeData(), drag) && drag.m_dropAllowed &&
            drag.m_dragIndex != -1) {
            if (drag.m_rows.empty())
                DropMediaItem(drag.m_dragIndex, row);
            else
                DropMediaItems(drag.m_rows, row);
        }
        event->acceptProposedAction();
    } else {
        event->ignore();
    }
    EndDrag();
}

void COrvexTreeView::DropTopic(QTreeWidgetItem* row) {
    QTreeWidgetItem* dragged = Row(m_dragItem);
    if (!dragged || !m_pDoc || m_dropMode == 0)
        return;
    if (m_dropMode == RELOCATE_INTO) {
        if (row == dragged) {
            Refuse(CString(u"A topic cannot be dropped onto itself"));
            return;
        }
        if (row == dragged->parent()) {
            Refuse(CString(u"A topic cannot be dropped onto its parent"));
            return;
        }
        if (IsAncestorOf(dragged, row)) {
            Refuse(CString(u"A topic cannot be dropped onto one of its children"));
            return;
        }
        if (IsFavoritesRow(row)) {
            CString text;
            text.Format(u"Topics cannot be added to the %s topic.", kFavoritesName);
            Refuse(text);
            return;
        }
    } else if (IsAncestorOf(dragged, row)) {
        // In front of or behind a row of its own subtree: no place to go.
        return;
    }
    CNodeArray from;
    CNodeArray to;
    BuildPath(dragged, from);
    BuildPath(row, to);
    m_dragItem = QPersistentModelIndex();
    m_pDoc->RelocateTopic(from, to, m_dropMode);
}

void COrvexTreeView::DropMediaItem(int index, QTreeWidgetItem* target) {
    if (!m_pDoc || !target)
        return;
    const CTopic& shown = m_pDoc->m_displayTopic;
    if (index < 0 || index >= shown.m_media.GetSize())
        return;
    const CMediaItem item = shown.m_media[index];
    const CNodeArray shownPath = shown.Path();
    if (IsFavoritesRow(target)) {
        // A favourite stays where it is; the mark is all that changes.
        if (!item.m_favorite)
            m_pDoc->SetItemFavorite(shownPath, item, TRUE, FALSE);
        return;
    }
    CNodeArray to;
    if (BuildPath(target, to) && !(to == shownPath))
        m_pDoc->MoveMediaItem(item, shownPath, to);
}

void COrvexTreeView::DropMediaItems(const std::vector<int>& indices, QTreeWidgetItem* target) {
    if (!m_pDoc || !target || indices.empty() || IsFavoritesRow(target))
        return;
    const CTopic& shown = m_pDoc->m_displayTopic;
    CMediaArray items;
    for (int index : indices) {
        if (index < 0 || index >= shown.m_media.GetSize())
            return;
        items.Add(shown.m_media[index]);
    }
    const CNodeArray shownPath = shown.Path();
    CNodeArray to;
    if (BuildPath(target, to) && !(to == shownPath))
        m_pDoc->MoveMediaItems(items, shownPath, to);
}

bool COrvexTreeView::InTopZone(const QPoint& point) const {
    return point.y() >= 0 && point.y() <= m_scrollZone;
}

bool COrvexTreeView::InBottomZone(const QPoint& point) const {
    const int height = viewport()->height();
    return point.y() >= height - m_scrollZone && point.y() <= height;
}

void COrvexTreeView::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_dragTimer.timerId())
        OnDragTimer();
    else
        QTreeWidget::timerEvent(event);
}

void COrvexTreeView::OnDragTimer() {
    if (m_dragKind == DRAG_NONE) {
        m_dragTimer.stop();
        return;
    }
    m_dragTimer.start(m_scrollRepeat, this);
    const QPoint point = m_dragPoint;
    const bool top = InTopZone(point);
    if (top || InBottomZone(point)) {
        const QModelIndex firstVisible = indexAt(QPoint(1, 1));
        verticalScrollBar()->triggerAction(top ? QAbstractSlider::SliderSingleStepSub
                                               : QAbstractSlider::SliderSingleStepAdd);
        if (indexAt(QPoint(1, 1)) != firstVisible) {
            if (m_dropHighlight.isValid())
                SetDropHighlight(itemAt(point));
            return;
        }
        m_dragTimer.stop();
    }
    QTreeWidgetItem* row = itemAt(point);
    if (row && row->childCount() > 0 && !row->isExpanded()) {
        row->setExpanded(true);
        m_dragTimer.stop();
    }
}

void COrvexTreeView::SetDropHighlight(QTreeWidgetItem* row) {
    if (Row(m_dropHighlight) == row)
        return;
    m_dropHighlight = Index(row);
    viewport()->update();
}

void COrvexTreeView::SetInsertMark(QTreeWidgetItem* row, BOOL after) {
    if (Row(m_markRow) == row && m_markRowAfter == after)
        return;
    m_markRow = Index(row);
    m_markRowAfter = after;
    viewport()->update();
}

QTreeWidgetItem* COrvexTreeView::InsertMark(BOOL* after) const {
    if (after)
        *after = m_markRowAfter;
    return Row(m_markRow);
}

void COrvexTreeView::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    QPainter painter(viewport());
    if (QTreeWidgetItem* row = Row(m_dropHighlight)) {
        const QRect rect = visualItemRect(row);
        QColor fill = palette().color(QPalette::Highlight);
        painter.setPen(fill);
        fill.setAlpha(70);
        painter.setBrush(fill);
        painter.drawRect(rect.adjusted(0, 0, -1, -1));
    }
    if (QTreeWidgetItem* row = Row(m_markRow)) {
        const QRect rect = visualItemRect(row);
        const int y = m_markRowAfter ? rect.bottom() : rect.top();
        painter.setPen(QPen(palette().color(QPalette::Text), 2));
        painter.drawLine(rect.left(), y, rect.right(), y);
        painter.drawLine(rect.left(), y - 3, rect.left(), y + 3);
        painter.drawLine(rect.right(), y - 3, rect.right(), y + 3);
    }
}
