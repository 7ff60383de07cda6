#include "ui/TreeView.h"

#include <QStyle>

#include "app/OrvexDoc.h"
#include "platform/base/Drives.h"
#include "platform/qt/QtGlue.h"
#include "ui/PaneIcons.h"
#include "ui/TreeRows.h"

namespace {

// The topic at `path` for reading during one call; null when not found.
const CTopic* PeekTopic(COrvexDoc& doc, const CNodeArray& path) {
    const CTopic* topic = doc.m_contents.FindTopic(path, &doc.m_contents.m_errorTopic);
    return topic->GetName() == u"ERROR" ? nullptr : topic;
}

} // namespace

QTreeWidgetItem* NextSiblingRow(const QTreeWidgetItem* row) {
    if (!row)
        return nullptr;
    if (QTreeWidgetItem* parent = row->parent())
        return parent->child(parent->indexOfChild(const_cast<QTreeWidgetItem*>(row)) + 1);
    QTreeWidget* tree = row->treeWidget();
    return tree ? tree->topLevelItem(tree->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(row)) +
                                     1)
                : nullptr;
}

QTreeWidgetItem* PreviousSiblingRow(const QTreeWidgetItem* row) {
    if (!row)
        return nullptr;
    if (QTreeWidgetItem* parent = row->parent()) {
        const int index = parent->indexOfChild(const_cast<QTreeWidgetItem*>(row));
        return index > 0 ? parent->child(index - 1) : nullptr;
    }
    QTreeWidget* tree = row->treeWidget();
    if (!tree)
        return nullptr;
    const int index = tree->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(row));
    return index > 0 ? tree->topLevelItem(index - 1) : nullptr;
}

COrvexTreeView::COrvexTreeView(COrvexDoc* document, QWidget* parent)
    : QTreeWidget(parent), CWndTarget(this), m_pDoc(document) {
    setObjectName(QStringLiteral("TreeView"));
    setHeaderHidden(true);
    setColumnCount(1);
    setRootIsDecorated(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformRowHeights(true);
    setAnimated(false);
    // Dragging is the pane's own: no drop indicator or scrolling of Qt's.
    setDragEnabled(true);
    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDropIndicatorShown(false);
    setAutoScroll(false);
    m_scrollZone = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    connect(this, &QTreeWidget::itemExpanded, this, &COrvexTreeView::OnItemExpanded);
    connect(this, &QTreeWidget::itemCollapsed, this, &COrvexTreeView::OnItemCollapsed);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &COrvexTreeView::OnSelectionChanged);
    if (m_pDoc)
        m_pDoc->AddView(this);
}

COrvexTreeView::~COrvexTreeView() {
    if (m_pDoc)
        m_pDoc->RemoveView(this);
}

QTreeWidgetItem* COrvexTreeView::Row(const QPersistentModelIndex& index) const {
    return index.isValid() ? itemFromIndex(index) : nullptr;
}

QPersistentModelIndex COrvexTreeView::Index(QTreeWidgetItem* row) const {
    return row ? QPersistentModelIndex(indexFromItem(row)) : QPersistentModelIndex();
}

void COrvexTreeView::OnInitialUpdate() {
    if (m_initialised)
        return;
    FillTree();
    SetPaneFont();
    m_initialised = TRUE;
}

void COrvexTreeView::SetPaneFont() {
    if (m_pDoc)
        setFont(FontFromLogFont(m_pDoc->m_leftFont));
}

CString COrvexTreeView::RowName(const QTreeWidgetItem* row) {
    if (!row)
        return CString();
    const QVariant root = row->data(0, kRootRole);
    return FromQString(root.isValid() ? root.toString() : row->text(0));
}

BOOL COrvexTreeView::BuildPath(const QTreeWidgetItem* row, CNodeArray& out) const {
    out.RemoveAll();
    if (!row || row->text(0).isEmpty())
        return FALSE;
    for (const QTreeWidgetItem* r = row; r; r = r->parent())
        out.InsertAt(0, CNodeItem(RowName(r), r->data(0, kItemDataRole).toInt()));
    return TRUE;
}

BOOL COrvexTreeView::IsDriveRow(const QTreeWidgetItem* row) const {
    if (!row)
        return FALSE;
    const CString name = RowName(row);
    return std::find(m_drives.begin(), m_drives.end(), name) != m_drives.end();
}

BOOL COrvexTreeView::IsDrivePath(const CNodeArray& path) const {
    return !path.IsEmpty() &&
           std::find(m_drives.begin(), m_drives.end(), path[0].m_name) != m_drives.end();
}

void COrvexTreeView::AddPlaceholder(QTreeWidgetItem* row) const {
    row->addChild(NewPlaceholderRow());
}

QTreeWidgetItem* COrvexTreeView::MakeTopicRow(const CTopic& topic, int position,
                                              BOOL filesIcon) const {
    QTreeWidgetItem* row = NewRow(ToQString(topic.GetName()),
                                  filesIcon ? ICON_FILE_TOPIC : ICON_STREAM_TOPIC, position);
    if (!topic.m_children.IsEmpty())
        AddPlaceholder(row);
    return row;
}

int COrvexTreeView::FillTree() {
    if (m_moveMode)
        CancelMoveMode();
    clear();
    if (!m_pDoc)
        return 0;
    QList<QTreeWidgetItem*> rows;
    rows.append(NewRow(ToQString(CString(kFavoritesName)), ICON_STREAM_TOPIC, 0));
    const CTopicArray& roots = m_pDoc->m_contents.m_topics;
    for (int i = 0; i < roots.GetSize(); ++i)
        rows.append(MakeTopicRow(roots[i], i, IsFileMediaType(roots[i].m_mediaType)));
    addTopLevelItems(rows);
    AddDrives();
    return topLevelItemCount();
}

int COrvexTreeView::AddDrives() {
    m_drives.clear();
    int added = 0;
    for (const CDriveInfo& drive : GetDriveList().GetDrives()) {
        if (AddDrive(drive.m_root)) {
            m_drives.push_back(drive.m_root);
            ++added;
        }
    }
    return added;
}

BOOL COrvexTreeView::AddDrive(const CString& drive) {
    for (const CDriveInfo& info : GetDriveList().GetDrives()) {
        if (info.m_root != drive)
            continue;
        // Hard discs and network shares have no row.
        if (info.m_type != DRIVE_REMOVABLE && info.m_type != DRIVE_CDROM)
            return FALSE;
        QTreeWidgetItem* row = NewRow(
            ToQString(info.m_label), info.m_type == DRIVE_CDROM ? ICON_OPTICAL : ICON_REMOVABLE, 0);
        row->setData(0, kRootRole, ToQString(info.m_root));
        row->setToolTip(0, ToQString(info.m_root));
        addTopLevelItem(row);
        AddFolderPlaceholder(row, drive);
        return TRUE;
    }
    return FALSE;
}

BOOL COrvexTreeView::AddFolderPlaceholder(QTreeWidgetItem* row, const CString& folder) {
    if (!GetDriveList().HasSubFolder(folder))
        return FALSE;
    AddPlaceholder(row);
    return TRUE;
}

int COrvexTreeView::AddSubFolders(QTreeWidgetItem* row, const CString& folder) {
    std::vector<CFolderEntry> entries;
    if (!GetDriveList().ListFolder(folder, entries)) {
        // A drive without a disc keeps its expand button.
        if (!row->parent())
            AddPlaceholder(row);
        return 0;
    }
    QList<QTreeWidgetItem*> rows;
    for (const CFolderEntry& entry : entries) {
        if (!entry.m_isFolder || entry.m_name == u"." || entry.m_name == u"..")
            continue;
        QTreeWidgetItem* sub = NewRow(ToQString(entry.m_name), ICON_FILE_TOPIC, 0);
        AddFolderPlaceholder(sub, FolderChild(folder, entry.m_name));
        rows.append(sub);
    }
    row->addChildren(rows);
    return static_cast<int>(rows.size());
}

BOOL COrvexTreeView::FillOpenedRow(QTreeWidgetItem* row) {
    CNodeArray path;
    if (!m_pDoc || !BuildPath(row, path))
        return TRUE;
    if (IsDrivePath(path)) {
        CStringArray names;
        path.GetPathNames(names);
        delete row->takeChild(0);
        return AddSubFolders(row, JoinFolderPath(names)) ? TRUE : FALSE;
    }
    const CTopic* topic = PeekTopic(*m_pDoc, path);
    delete row->takeChild(0);
    // A topic that has lost its children since the row was made doesn't
    // open: the placeholder is never shown.
    if (!topic || topic->m_children.IsEmpty())
        return FALSE;
    const BOOL filesIcon = IsFileMediaType(topic->m_mediaType);
    QList<QTreeWidgetItem*> rows;
    rows.reserve(topic->m_children.GetSize());
    for (int i = 0; i < topic->m_children.GetSize(); ++i)
        rows.append(MakeTopicRow(topic->m_children[i], i, filesIcon));
    row->addChildren(rows);
    return TRUE;
}

void COrvexTreeView::OnItemExpanded(QTreeWidgetItem* row) {
    if (m_rebuilding || m_settingExpansion)
        return;
    if (FillOpenedRow(row))
        return;
    m_settingExpansion = TRUE;
    row->setExpanded(false);
    m_settingExpansion = FALSE;
}

void COrvexTreeView::OnItemCollapsed(QTreeWidgetItem* row) {
    if (m_rebuilding || m_settingExpansion)
        return;
    const QList<QTreeWidgetItem*> children = row->takeChildren();
    if (children.isEmpty())
        return;
    qDeleteAll(children);
    AddPlaceholder(row);
}

void COrvexTreeView::OnSelectionChanged() {
    if (!m_initialised || m_rebuilding || !m_pDoc)
        return;
    const QList<QTreeWidgetItem*> selected = selectedItems();
    if (selected.isEmpty() || IsPlaceholderRow(selected.first()))
        return;
    QTreeWidgetItem* row = selected.first();
    if (row->text(0) == ToQString(CString(kFavoritesName))) {
        m_pDoc->ShowFavorites();
        return;
    }
    CNodeArray path;
    if (!BuildPath(row, path))
        return;
    if (IsDrivePath(path)) {
        CStringArray names;
        path.GetPathNames(names);
        m_pDoc->ShowDiscFolder(JoinFolderPath(names));
        return;
    }
    m_pDoc->SelectTopic(path);
}

QTreeWidgetItem* COrvexTreeView::TopLevelRow(const CString& name) const {
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (RowName(topLevelItem(i)) == name)
            return topLevelItem(i);
    }
    return nullptr;
}

QTreeWidgetItem* COrvexTreeView::SearchByName(QTreeWidgetItem* row, const CString& name) {
    if (IsPlaceholderRow(row))
        return nullptr;
    if (RowName(row) == name)
        return row;
    BOOL opened = FALSE;
    if (!row->isExpanded() && row->childCount() > 0) {
        row->setExpanded(true);
        opened = row->isExpanded();
    }
    for (int i = 0; i < row->childCount(); ++i) {
        if (QTreeWidgetItem* found = SearchByName(row->child(i), name))
            return found;
    }
    if (opened)
        row->setExpanded(false);
    return nullptr;
}

QTreeWidgetItem* COrvexTreeView::SelectByName(const CString& name) {
    if (name.IsEmpty())
        return nullptr;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (QTreeWidgetItem* found = SearchByName(topLevelItem(i), name)) {
            setCurrentItem(found);
            return found;
        }
    }
    return nullptr;
}

QTreeWidgetItem* COrvexTreeView::SelectByPath(const CNodeArray& path) {
    if (path.IsEmpty())
        return nullptr;
    QTreeWidgetItem* row = TopLevelRow(path[0].m_name);
    for (int level = 1; row && level < path.GetSize(); ++level) {
        if (!row->isExpanded())
            row->setExpanded(true);
        QTreeWidgetItem* next = nullptr;
        for (int i = 0; i < row->childCount() && !next; ++i) {
            QTreeWidgetItem* child = row->child(i);
            if (!IsPlaceholderRow(child) && RowName(child) == path[level].m_name)
                next = child;
        }
        row = next;
    }
    if (!row)
        return nullptr;
    setCurrentItem(row);
    setFocus(Qt::OtherFocusReason);
    return row;
}

void COrvexTreeView::OnUpdate(IDocView*, int hint, const CString* object) {
    if (!m_pDoc)
        return;
    switch (hint) {
    case HINT_TREE: {
        m_rebuilding = TRUE;
        FillTree();
        m_rebuilding = FALSE;
        // The selection asks the document for the shown topic once more.
        const CNodeArray shown = m_pDoc->m_displayTopic.Path();
        const CString name = shown.GetName();
        QTreeWidgetItem* row = nullptr;
        if (name == kFavoritesName) {
            row = SelectByName(name);
        } else {
            row = SelectByPath(shown);
            if (!row)
                row = SelectByName(name);
        }
        if (!shown.IsEmpty() && shown == m_reopenPath) {
            if (row)
                row->setExpanded(true);
            m_reopenPath.RemoveAll();
        }
        break;
    }
    case HINT_LEFT_FONT:
        SetPaneFont();
        break;
    case HINT_DISC_ARRIVED:
    case HINT_DISC_REMOVED:
        if (object)
            OnDiscHint(*object, hint == HINT_DISC_ARRIVED);
        break;
    default:
        break;
    }
}

void COrvexTreeView::OnDiscHint(const CString& drive, BOOL arrived) {
    QTreeWidgetItem* row = TopLevelRow(drive);
    if (arrived) {
        if (!row) {
            AddDrive(drive);
            m_drives.push_back(drive);
            return;
        }
        // A fresh placeholder: the new disc is read when the row opens.
        row->setExpanded(false);
        qDeleteAll(row->takeChildren());
        AddPlaceholder(row);
        return;
    }
    if (!row)
        return;
    CNodeArray rowPath;
    BuildPath(row, rowPath);
    const BOOL showsDrive = m_pDoc->m_bFolderView && !m_pDoc->m_displayTopic.IsEmpty() &&
                            m_pDoc->m_displayTopic[0].m_name == drive && IsDrivePath(rowPath);
    if (GetDriveList().GetDriveType(drive) == DRIVE_NO_ROOT_DIR) {
        delete row;
        m_drives.erase(std::remove(m_drives.begin(), m_drives.end(), drive), m_drives.end());
    } else {
        qDeleteAll(row->takeChildren());
    }
    // A list that showed the drive empties: its folder gives no listing now.
    if (showsDrive) {
        CStringArray names;
        rowPath.GetPathNames(names);
        m_pDoc->ShowDiscFolder(JoinFolderPath(names));
    }
}
