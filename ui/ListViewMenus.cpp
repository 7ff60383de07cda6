// The media list's context menus: one for an item, one for the empty list
// or no row (adding items and topics), and one for several rows.
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>

#include "app/OrvexDoc.h"
#include "interchange/MediaRecordFormat.h"
#include "platform/base/MessageBox.h"
#include "platform/qt/QtGlue.h"
#include "ui/ListModel.h"
#include "ui/ListView.h"
#include "ui/PaneIcons.h"

namespace {

enum ListCommand {
    CMD_EDIT = 102,
    CMD_DELETE = 103,
    CMD_COPY_TEXT = 104,
    CMD_REMOVE_FAVORITE = 105,
    CMD_ADD_FAVORITE = 106,
    CMD_NEW_ITEM = 107,
    CMD_NEW_TOPIC = 112,
    CMD_ADD_FILES = 114,
    CMD_IMPORT_PLAYLIST = 116,
};

struct MenuEntry {
    const char16_t* text;
    int command;
};

// Runs a menu of the entries at a point; 0 when nothing was chosen.
int RunMenu(QWidget* owner, const std::vector<MenuEntry>& entries, const QPoint& at) {
    if (entries.empty())
        return 0;
    QMenu menu(owner);
    menu.setObjectName(QStringLiteral("ListMenu"));
    for (const MenuEntry& entry : entries)
        menu.addAction(ToQString(CString(entry.text)))->setData(entry.command);
    QAction* chosen = menu.exec(at);
    return chosen ? chosen->data().toInt() : 0;
}

} // namespace

void CopyMediaRecordToClipboard(const CMediaItem& item) {
    QApplication::clipboard()->setText(ToQString(MediaRecordClipboardText(item)));
}

void COrvexListView::contextMenuEvent(QContextMenuEvent* event) {
    if (!m_pDoc)
        return;
    if (selectionModel()->selectedRows().size() > 1)
        ShowMultiMenu(event);
    else
        ShowRowMenu(event);
}

void COrvexListView::ShowRowMenu(QContextMenuEvent* event) {
    const BOOL favorites = IsFavoritesView();
    const BOOL folderView = m_pDoc->m_bFolderView;
    const Qt::KeyboardModifiers modifiers = QApplication::keyboardModifiers();
    int row = -1;
    QPoint at = event->globalPos();
    if (event->reason() == QContextMenuEvent::Mouse) {
        if (folderView)
            return;
        const QModelIndex hit = indexAt(viewport()->mapFromGlobal(event->globalPos()));
        row = hit.isValid() ? hit.row() : -1;
    } else {
        const std::vector<int> selected = SelectedRows();
        if (favorites || RowCount() == 0 || selected.empty())
            return;
        row = selected.front();
        const bool shiftAndCtrl =
            (modifiers & Qt::ShiftModifier) && (modifiers & Qt::ControlModifier);
        if (shiftAndCtrl || !IsItemRow(row) || folderView)
            row = -1;
        if (row >= 0) {
            // The bottom right of the row's icon.
            const QRect rect = visualRect(Model()->index(row, LIST_COLUMN_NAME));
            at = viewport()->mapToGlobal(
                QPoint(rect.left() + iconSize().width() + 4, rect.top() + rect.height() - 2));
        } else {
            at = mapToGlobal(QPoint(10, height() / 2));
        }
    }
    if (folderView)
        return;

    if (row == -1) {
        m_currentRow = -1;
        DeselectAll();
        if (favorites)
            return;
        std::vector<MenuEntry> entries;
        if (IsFileMediaType(m_pDoc->m_displayTopic.m_mediaType))
            entries.push_back({u"Add Files...", CMD_ADD_FILES});
        else
            entries.push_back({u"Add New MediaItem...", CMD_NEW_ITEM});
        entries.push_back({u"Add New Topic...", CMD_NEW_TOPIC});
        RunEmptyCommand(RunMenu(this, entries, at));
        return;
    }
    if (!IsItemRow(row))
        return;
    m_currentRow = row;
    const CMediaItem& item = Media()[row];
    std::vector<MenuEntry> entries;
    if (favorites) {
        if (item.m_favorite)
            entries.push_back({u"Remove From Favorites", CMD_REMOVE_FAVORITE});
    } else {
        const CString tail = item.m_location.Mid(std::max(item.m_location.GetLength() - 7, 0));
        const bool pls = tail.Find(CString(u".pls")) >= 0;
        const bool m3u = !pls && tail.Find(CString(u".m3u")) >= 0;
        if (pls)
            entries.push_back({u"Import .pls Playlist...", CMD_IMPORT_PLAYLIST});
        else if (m3u)
            entries.push_back({u"Import .m3u Playlist...", CMD_IMPORT_PLAYLIST});
        if (item.m_favorite)
            entries.push_back({u"Remove From Favorites", CMD_REMOVE_FAVORITE});
        entries.push_back({u"Edit...", CMD_EDIT});
        entries.push_back({u"Delete", CMD_DELETE});
        if (!pls && !m3u && !item.m_favorite)
            entries.push_back({u"Add To Favorites", CMD_ADD_FAVORITE});
        entries.push_back({u"Copy as text to Clipboard", CMD_COPY_TEXT});
    }
    RunRowCommand(RunMenu(this, entries, at));
}

void COrvexListView::RunEmptyCommand(int command) {
    const CTopic& shown = m_pDoc->m_displayTopic;
    const CNodeArray path = shown.Path();
    const MediaType type = shown.m_mediaType;
    switch (command) {
    case CMD_ADD_FILES:
        RememberListState(FALSE, TRUE, FALSE);
        m_pDoc->AddMediaFiles(path, type);
        break;
    case CMD_NEW_ITEM: {
        CMediaItem item;
        item.m_type = type;
        path.GetPathNames(item.m_topics);
        RememberListState(TRUE, FALSE, FALSE);
        m_pDoc->EditMediaItem(path, item, TRUE);
        break;
    }
    case CMD_NEW_TOPIC:
        m_pDoc->EditTopic(path, type, TRUE);
        break;
    default:
        break;
    }
}

void COrvexListView::RunRowCommand(int command) {
    if (command == 0 || !IsItemRow(m_currentRow))
        return;
    RememberListState(FALSE, FALSE, FALSE);
    CMediaItem item = Media()[m_currentRow];
    CNodeArray path = ShownPath();
    if (IsFavoritesView()) {
        if (m_currentRow >= m_pDoc->m_favoritePaths.GetSize())
            return;
        path = m_pDoc->m_favoritePaths[m_currentRow];
    }
    switch (command) {
    case CMD_REMOVE_FAVORITE:
        m_pDoc->SetItemFavorite(path, item, FALSE, FALSE);
        break;
    case CMD_ADD_FAVORITE:
        m_pDoc->SetItemFavorite(path, item, TRUE, FALSE);
        break;
    case CMD_EDIT:
        m_pDoc->EditMediaItem(path, item, FALSE);
        break;
    case CMD_DELETE:
        if (AfxMessageBox(CString(u"Delete single selection?"), MB_YESNO | MB_ICONINFORMATION) ==
            IDYES)
            m_pDoc->RemoveMediaItem(path, item);
        break;
    case CMD_COPY_TEXT:
        CopyMediaRecordToClipboard(item);
        break;
    case CMD_IMPORT_PLAYLIST:
        m_pDoc->ImportPlaylistItem(path, &item);
        break;
    default:
        break;
    }
}

void COrvexListView::ShowMultiMenu(QContextMenuEvent* event) {
    if (IsFavoritesView())
        return;
    std::vector<int> selected = SelectedRows();
    if (selected.size() < 2)
        DeselectAll();
    QPoint at = event->globalPos();
    int row = indexAt(viewport()->mapFromGlobal(at)).row();
    if (event->reason() != QContextMenuEvent::Mouse && !selected.empty()) {
        row = selected.front();
        const QRect rect = visualRect(Model()->index(row, LIST_COLUMN_NAME));
        at = viewport()->mapToGlobal(
            QPoint(rect.left() + iconSize().width() + 4, rect.top() + rect.height() - 2));
    }
    m_currentRow = IsItemRow(row) ? row : -1;
    CMediaArray items;
    BOOL topicAmong = FALSE;
    for (int r : selected) {
        if (IsItemRow(r))
            items.Add(Media()[r]);
        else
            topicAmong = TRUE;
    }
    if (items.GetSize() < 2)
        return;
    if (RunMenu(this, {{u"Delete", CMD_DELETE}}, at) != CMD_DELETE)
        return;
    if (topicAmong) {
        AfxMessageBox(CString(u"Cannot delete topics in list. Delete in Contents."));
        return;
    }
    DeleteItems(items, TRUE);
}
