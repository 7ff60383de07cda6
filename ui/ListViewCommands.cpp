// What the media list does with its rows: play, delete, sort, and drag
// them to the tree pane; and the keys that steer playback from the list.
#include <QDrag>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "app/OrvexDoc.h"
#include "platform/base/MessageBox.h"
#include "platform/base/UserMessages.h"
#include "ui/DragData.h"
#include "ui/ListModel.h"
#include "ui/ListView.h"
#include "ui/MainFrame.h"
#include "ui/PlaybackKeys.h"

namespace {

// The last seven characters of a location, where a playlist shows itself.
CString LocationTail(const CString& location) {
    const int length = location.GetLength();
    return location.Mid(length > 7 ? length - 7 : 0);
}

bool IsDvdStartFile(const CString& name) {
    return name == u"VIDEO_TS.IFO" || name == u"VIDEO_TS.VOB" || name == u"VIDEO_TS.BUP";
}

} // namespace

void COrvexListView::PlayRow(int row, BOOL byEnter) {
    if (!IsItemRow(row))
        return;
    const CMediaItem item = Media()[row];
    CMainFrame* frame = GetOrvexFrame();
    if (item.m_location.IsEmpty() || !frame)
        return;
    const CString tail = LocationTail(item.m_location);
    if (tail.Find(CString(u".m3u8")) < 0 &&
        (tail.Find(CString(u".pls")) >= 0 || tail.Find(CString(u".m3u")) >= 0)) {
        AfxMessageBox(CString(u"Cannot play. Right-click to import."), MB_ICONINFORMATION);
        return;
    }
    if (item.m_location.Find(CString(u".cda")) >= 0) {
        frame->SetMediaPath(item.m_location);
        CString title(u"Orvex CD");
        if (!byEnter)
            title.Format(u"Orvex CD: %s", item.m_name);
        frame->SetMediaTitle(title);
        if (byEnter)
            RememberListState(FALSE, FALSE, FALSE);
        PostMessageW(frame->GetSafeHwnd(), UM_PLAY_CD, 0, 0);
        return;
    }
    const int slash = item.m_location.ReverseFind(u'/');
    if (m_pDoc && m_pDoc->m_bFolderView && IsDvdStartFile(item.m_name) && slash >= 0) {
        // A DVD plays from its folder.
        frame->SetMediaPath(item.m_location.Left(slash + 1));
        frame->SetMediaTitle(CString(u"Orvex DVD"));
        if (byEnter)
            RememberListState(FALSE, FALSE, FALSE);
        PostMessageW(frame->GetSafeHwnd(), UM_PLAY_DVD, 0, 0);
        return;
    }
    frame->SetMediaPath(item.m_location);
    frame->SetMediaTitle(item.m_name);
    RememberListState(FALSE, FALSE, FALSE);
    PostMessageW(frame->GetSafeHwnd(), UM_PLAY_MEDIA, 0, 0);
}

void COrvexListView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!m_pDoc || (event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)))
        return;
    const QModelIndex hit = indexAt(event->position().toPoint());
    if (!hit.isValid()) {
        m_currentRow = -1;
        return;
    }
    const int row = hit.row();
    if (IsItemRow(row)) {
        PlayRow(row, FALSE);
    } else if (row < RowCount() && !m_pDoc->m_bFolderView) {
        const CNodeArray path = m_childTopics[row - m_model->ItemCount()].Path();
        m_pDoc->ShowTopic(path);
    }
}

void COrvexListView::OnSpace() {
    CMediaPlayer* player = GetPlayer();
    if (!player || player->m_state == 0)
        return;
    PauseOrMuteBySpace(*player);
    setFocus(Qt::OtherFocusReason);
}

void COrvexListView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Space:
        if (!event->isAutoRepeat())
            OnSpace();
        break;
    case Qt::Key_Delete:
        DeleteSelection();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        const std::vector<int> selected = SelectedRows();
        if (selected.empty())
            return;
        if (selected.size() == 1 && IsItemRow(selected.front())) {
            PlayRow(selected.front(), TRUE);
            return;
        }
        break;
    }
    case Qt::Key_Up:
    case Qt::Key_Left:
    case Qt::Key_Down:
    case Qt::Key_Right: {
        // The row the arrow moves to becomes the row commands act on.
        const std::vector<int> selected = SelectedRows();
        const bool back = event->key() == Qt::Key_Up || event->key() == Qt::Key_Left;
        int row = (selected.empty() ? -1 : selected.front()) + (back ? -1 : 1);
        row = std::clamp(row, 0, std::max(RowCount() - 1, 0));
        m_currentRow = IsItemRow(row) ? row : -1;
        break;
    }
    default:
        break;
    }
    QTreeView::keyPressEvent(event);
}

void COrvexListView::OnColumnClick(int column) {
    const CMediaArray& media = Media();
    if (column != LIST_COLUMN_NAME || !m_pDoc || IsFavoritesView() || m_pDoc->m_bFolderView ||
        media.GetSize() < 2)
        return;
    // The rows say which way they run now; the sort turns them round.
    const BOOL descending = media[0].m_name.CompareNoCase(media[media.GetUpperBound()].m_name) < 0;
    m_pDoc->SortTopicMedia(ShownPath(), descending ? FALSE : TRUE);
}

void COrvexListView::DeleteSelection() {
    if (!m_pDoc)
        return;
    const std::vector<int> selected = SelectedRows();
    if (selected.empty())
        return;
    CMediaArray items;
    for (int row : selected) {
        if (!IsItemRow(row)) {
            AfxMessageBox(CString(u"Topics can only be delete from the Contents Pane."),
                          MB_ICONINFORMATION);
            return;
        }
        items.Add(Media()[row]);
    }
    if (items.GetSize() > 1) {
        if (!IsFavoritesView())
            DeleteItems(items, TRUE);
        return;
    }
    if (IsFavoritesView()) {
        if (AfxMessageBox(CString(u"Remove from Favorites?"), MB_YESNO | MB_ICONINFORMATION) !=
            IDYES)
            return;
        if (m_currentRow < 0 || m_currentRow >= m_pDoc->m_favoritePaths.GetSize())
            return;
        const CNodeArray path = m_pDoc->m_favoritePaths[m_currentRow];
        RememberListState(FALSE, FALSE, FALSE);
        m_pDoc->SetItemFavorite(path, items[0], FALSE, FALSE);
        return;
    }
    if (AfxMessageBox(CString(u"Delete single selection?"), MB_YESNO | MB_ICONINFORMATION) != IDYES)
        return;
    RememberListState(FALSE, FALSE, FALSE);
    m_pDoc->RemoveMediaItem(ShownPath(), items[0]);
}

void COrvexListView::DeleteItems(const CMediaArray& items, BOOL askFirst) {
    if (askFirst && AfxMessageBox(CString(u"Delete multiple selections?"),
                                  MB_YESNO | MB_ICONINFORMATION) != IDYES)
        return;
    RememberListState(FALSE, FALSE, TRUE);
    m_pDoc->RemoveMediaItems(ShownPath(), items);
}

QMimeData* COrvexListView::BeginRowDrag(int row) {
    if (!m_pDoc || m_pDoc->m_bFolderView || row < 0 || row >= RowCount())
        return nullptr;
    CMediaRowsDrag drag;
    // Favourites stay where they are.
    drag.m_dropAllowed = !IsFavoritesView();
    drag.m_dragIndex = row;
    const std::vector<int> selected = SelectedRows();
    if (selected.size() > 1) {
        drag.m_rows = selected;
        for (int r : selected)
            drag.m_dropAllowed = drag.m_dropAllowed && IsItemRow(r);
    } else if (!IsItemRow(row)) {
        drag.m_dropAllowed = false;
    }
    return MakeMediaRowsMime(drag);
}

void COrvexListView::startDrag(Qt::DropActions) {
    const QModelIndex pressed = indexAt(m_pressPoint);
    QMimeData* data = BeginRowDrag(pressed.isValid() ? pressed.row() : -1);
    if (!data)
        return;
    // The picture: the dragged rows as they stand in the list.
    QRect area;
    for (int row : SelectedRows()) {
        const QRect rect = visualRect(m_model->index(row, LIST_COLUMN_NAME));
        if (rect.intersects(viewport()->rect()))
            area = area.united(rect);
    }
    if (area.isEmpty())
        area = visualRect(pressed);
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    drag->setPixmap(viewport()->grab(area.intersected(viewport()->rect())));
    drag->setHotSpot(QPoint(0, 0));
    drag->exec(Qt::MoveAction);
}
