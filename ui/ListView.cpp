#include "ui/ListView.h"

#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/UserMessages.h"
#include "platform/qt/QtGlue.h"
#include "ui/ListModel.h"
#include "ui/MainFrame.h"
#include "ui/PaneIcons.h"
#include "ui/SplitterView.h"
#include "ui/TreeView.h"

namespace {

// The widths the first fill starts from, before the contents widen them.
constexpr int kStartWidths[LIST_COLUMN_COUNT] = {278, 126, 121, 83, 566};

} // namespace

COrvexListView::COrvexListView(COrvexDoc* document, QWidget* parent)
    : QTreeView(parent), CWndTarget(this), m_pDoc(document), m_model(new COrvexListModel(this)) {
    setObjectName(QStringLiteral("ListView"));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
    setModel(m_model);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setSectionsClickable(true);
    connect(header(), &QHeaderView::sectionClicked, this, &COrvexListView::OnColumnClick);
    if (m_pDoc)
        m_pDoc->AddView(this);
}

COrvexListView::~COrvexListView() {
    if (!m_pDoc)
        return;
    m_pDoc->RemoveView(this);
    // The widths are the user's until the program ends: the next list,
    // after a picture has played, puts them back.
    m_pDoc->m_columnWidths.clear();
    for (int column = 0; column < LIST_COLUMN_COUNT; ++column)
        m_pDoc->m_columnWidths.push_back(
            static_cast<int16_t>(std::clamp(header()->sectionSize(column), 0, 32767)));
    m_pDoc->m_bRestoreColumns = TRUE;
}

void COrvexListView::OnInitialUpdate() {
    if (m_initialised)
        return;
    m_initialised = TRUE;
    for (int column = 0; column < LIST_COLUMN_COUNT; ++column)
        header()->resizeSection(column, std::max(width() / 5, 20));
    FillList();
    SetPaneFont();
}

void COrvexListView::SetPaneFont() {
    if (m_pDoc)
        setFont(FontFromLogFont(m_pDoc->m_rightFont));
}

void COrvexListView::OnUpdate(IDocView*, int hint, const CString*) {
    if (hint == HINT_LIST) {
        FillList();
    } else if (hint == HINT_RIGHT_FONT) {
        SetPaneFont();
    }
}

LRESULT COrvexListView::OnWindowMessage(UINT message, WPARAM, LPARAM) {
    if (message == UM_LIST_COLUMNS)
        ApplyColumnWidths();
    return 0;
}

BOOL COrvexListView::IsFavoritesView() const {
    return m_pDoc && m_pDoc->IsFavoritesDisplayed();
}

CNodeArray COrvexListView::ShownPath() const {
    return m_pDoc ? m_pDoc->m_displayTopic.Path() : CNodeArray();
}

const CMediaArray& COrvexListView::Media() const {
    static const CMediaArray kNone;
    return m_pDoc ? m_pDoc->m_displayTopic.m_media : kNone;
}

BOOL COrvexListView::IsItemRow(int row) const {
    return row >= 0 && row < m_model->ItemCount() && row < Media().GetSize();
}

int COrvexListView::RowCount() const {
    return m_model->rowCount();
}

void COrvexListView::FillList() {
    // The first fill comes with the pane's first update.
    if (!m_initialised || !m_pDoc)
        return;
    const CTopic& shown = m_pDoc->m_displayTopic;
    CListRows rows;
    rows.media = &shown.m_media;
    rows.childTopics = &m_childTopics;
    rows.folderView = m_pDoc->m_bFolderView;
    rows.shownName = shown.GetName();
    rows.childFilesIcon = IsFileMediaType(shown.m_mediaType);
    const BOOL favorites = IsFavoritesView();
    setUpdatesEnabled(false);
    m_model->Reset(rows, [&] {
        m_childTopics.RemoveAll();
        if (!favorites) {
            // A child row needs only the topic's path and type, not its subtree.
            m_childTopics.Reserve(shown.m_children.GetSize());
            for (const CTopic& child : shown.m_children) {
                CTopic row;
                row.Path() = child.Path();
                row.m_mediaType = child.m_mediaType;
                m_childTopics.Add(std::move(row));
            }
        }
    });
    m_currentRow = m_model->ItemCount() == 0 ? -1 : 0;
    setUpdatesEnabled(true);
    viewport()->update();
    PostMessageW(GetSafeHwnd(), UM_LIST_COLUMNS, 0, 0);
    RestoreListState();
}

void COrvexListView::ApplyColumnWidths() {
    if (!m_pDoc)
        return;
    const BOOL restore = m_pDoc->m_bRestoreColumns;
    if (m_pDoc->m_columnWidths.empty())
        ComputeColumnWidths();
    if (!restore)
        return;
    setUpdatesEnabled(false);
    for (int column = 0;
         column < LIST_COLUMN_COUNT && column < static_cast<int>(m_pDoc->m_columnWidths.size());
         ++column)
        header()->resizeSection(column, m_pDoc->m_columnWidths[static_cast<size_t>(column)]);
    m_pDoc->m_bRestoreColumns = FALSE;
    setUpdatesEnabled(true);
}

void COrvexListView::ComputeColumnWidths() {
    const QFontMetrics metrics = fontMetrics();
    const int pad = metrics.horizontalAdvance(QStringLiteral("XX"));
    int widths[LIST_COLUMN_COUNT];
    std::copy(std::begin(kStartWidths), std::end(kStartWidths), widths);
    // A text's width is the sum of its characters' widths, as a string
    // width is measured without kerning. Characters of the Latin scripts
    // are measured once each; other texts as a whole.
    constexpr char16_t kOwnScriptEnd = 0x0300;
    std::vector<int> advance(kOwnScriptEnd, -1);
    auto textWidth = [&](const CString& text) {
        int width = 0;
        for (char16_t ch : text.view()) {
            if (ch >= kOwnScriptEnd)
                return metrics.horizontalAdvance(ToQString(text));
            if (advance[ch] < 0)
                advance[ch] = metrics.horizontalAdvance(QChar(ch));
            width += advance[ch];
        }
        return width;
    };
    auto widen = [&](int column, const CString& text, int extra) {
        const int width = textWidth(text) + pad;
        if (width > widths[column])
            widths[column] = width + extra;
    };
    for (int row = 0; row < m_model->ItemCount(); ++row) {
        widen(LIST_COLUMN_NAME, m_model->CellText(row, LIST_COLUMN_NAME), 32);
        widen(LIST_COLUMN_TYPE, m_model->CellText(row, LIST_COLUMN_TYPE), 0);
        widen(LIST_COLUMN_TOPIC, m_model->CellText(row, LIST_COLUMN_TOPIC), 0);
        widen(LIST_COLUMN_LOCATION, m_model->CellText(row, LIST_COLUMN_LOCATION), 0);
    }
    if (m_model->ItemCount() > 0)
        widths[LIST_COLUMN_FAVORITE] = metrics.horizontalAdvance(QStringLiteral("Favorite")) + pad;
    m_pDoc->m_columnWidths.assign(std::begin(widths), std::end(widths));
}

int COrvexListView::TopRow() const {
    const QModelIndex top = indexAt(QPoint(1, 1));
    return top.isValid() ? top.row() : 0;
}

int COrvexListView::VisibleRowCount() const {
    const int height = rowHeight(m_model->index(0, 0));
    return height > 0 ? std::max(viewport()->height() / height, 1) : 1;
}

std::vector<int> COrvexListView::SelectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void COrvexListView::DeselectAll() {
    selectionModel()->clearSelection();
    selectionModel()->setCurrentIndex(QModelIndex(), QItemSelectionModel::NoUpdate);
}

void COrvexListView::SelectAndFocus(int row) {
    const QModelIndex index = m_model->index(row, 0);
    selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
}

void COrvexListView::ScrollToTop(int row) {
    verticalScrollBar()->setValue(0);
    if (row > 0)
        scrollTo(m_model->index(row, 0), QAbstractItemView::PositionAtTop);
}

void COrvexListView::ForgetListState() {
    if (!m_pDoc)
        return;
    m_pDoc->m_listRestoreTopic.Empty();
    m_pDoc->m_listRestoreItem = -1;
    m_pDoc->m_listRestoreTop = -1;
    m_pDoc->m_listRestoreCount = 0;
    m_pDoc->m_bListItemAdded = FALSE;
    m_pDoc->m_bListItemsAdded = FALSE;
    m_pDoc->m_bListItemsRemoved = FALSE;
}

void COrvexListView::RememberListState(BOOL itemAdded, BOOL itemsAdded, BOOL itemsRemoved) {
    if (!m_pDoc)
        return;
    ForgetListState();
    m_pDoc->m_listRestoreItem = m_currentRow;
    m_pDoc->m_listRestoreTopic = m_pDoc->m_displayTopic.GetName();
    m_pDoc->m_listRestoreTop = TopRow();
    if (itemAdded) {
        m_pDoc->m_bListItemAdded = TRUE;
    } else if (itemsAdded) {
        m_pDoc->m_bListItemsAdded = TRUE;
        m_pDoc->m_listRestoreCount = RowCount();
    } else if (itemsRemoved) {
        const std::vector<int> selected = SelectedRows();
        if (selected.empty()) {
            ForgetListState();
        } else {
            m_pDoc->m_listRestoreItem = selected.front();
            m_pDoc->m_bListItemsRemoved = TRUE;
        }
    }
}

void COrvexListView::RestoreListState() {
    const int rows = RowCount();
    if (!m_pDoc || rows == 0)
        return;
    COrvexDoc& doc = *m_pDoc;
    if (doc.m_bListItemAdded) {
        scrollTo(m_model->index(rows - 1, 0));
        if (hasFocus())
            SelectAndFocus(rows - 1);
        ForgetListState();
        return;
    }
    if (doc.m_bListItemsAdded) {
        if (rows != doc.m_listRestoreCount) {
            scrollTo(m_model->index(rows - 1, 0));
            // The new items stand at the end of the items, in front of the
            // child topics.
            const int items = m_model->ItemCount();
            const int added = rows - doc.m_listRestoreCount;
            if (hasFocus() && added > 0 && items > 0) {
                const int first = std::max(items - added, 0);
                selectionModel()->select(
                    QItemSelection(m_model->index(first, 0), m_model->index(items - 1, 0)),
                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
                selectionModel()->setCurrentIndex(m_model->index(items - 1, 0),
                                                  QItemSelectionModel::NoUpdate);
            }
        }
        ForgetListState();
        return;
    }
    if (doc.m_bListItemsRemoved) {
        const int top = doc.m_listRestoreTop >= rows ? 0 : std::max(doc.m_listRestoreTop, 0);
        ScrollToTop(top);
        const int row = doc.m_listRestoreItem - 1;
        if (row >= top && row < top + VisibleRowCount() && row < rows)
            SelectAndFocus(row);
        ForgetListState();
        return;
    }
    if (doc.m_listRestoreTopic.IsEmpty() || doc.m_listRestoreItem == -1 ||
        doc.m_listRestoreTop == -1)
        return;
    const CString shownName = doc.m_displayTopic.GetName();
    if (shownName.IsEmpty() || shownName != doc.m_listRestoreTopic || doc.m_listRestoreItem < 0 ||
        doc.m_listRestoreItem >= rows || doc.m_listRestoreTop < 0 || doc.m_listRestoreTop >= rows)
        return;
    m_currentRow = doc.m_listRestoreItem;
    ScrollToTop(doc.m_listRestoreTop);
    if (!hasFocus()) {
        setFocus(Qt::OtherFocusReason);
        DeselectAll();
        m_currentRow = doc.m_listRestoreItem;
    }
    SelectAndFocus(m_currentRow);
    // While media plays the place survives further rebuilds.
    CMediaPlayer* player = GetPlayer();
    if (!player || player->m_state == 0)
        ForgetListState();
}

CMediaPlayer* COrvexListView::GetPlayer() const {
    CMainFrame* frame = m_pDoc ? GetOrvexFrame() : nullptr;
    return frame ? &frame->m_player : nullptr;
}

COrvexTreeView* COrvexListView::GetTreeView() const {
    auto* splitter = qobject_cast<CMySplitterWnd*>(parentWidget());
    return splitter ? qobject_cast<COrvexTreeView*>(splitter->widget(0)) : nullptr;
}

void COrvexListView::mousePressEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    const QModelIndex hit = indexAt(point);
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    // Favourites have no extended selection.
    if (IsFavoritesView() && selectionModel()->hasSelection() && hit.row() != m_currentRow &&
        (modifiers & (Qt::ShiftModifier | Qt::ControlModifier)))
        return;
    if (!hit.isValid()) {
        DeselectAll();
        m_currentRow = -1;
    } else {
        m_currentRow = IsItemRow(hit.row()) ? hit.row() : -1;
    }
    m_pressPoint = point;
    QTreeView::mousePressEvent(event);
}

void COrvexListView::focusInEvent(QFocusEvent* event) {
    QTreeView::focusInEvent(event);
    // Focus from another pane of the program, not back from a menu or
    // from another program.
    if (event->reason() == Qt::ActiveWindowFocusReason || event->reason() == Qt::PopupFocusReason)
        return;
    if (RowCount() > 0 && !selectionModel()->hasSelection()) {
        SelectAndFocus(0);
        m_currentRow = m_model->ItemCount() == 0 ? -1 : 0;
    }
}

void COrvexListView::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    if (!isVisible() || width() == 0 || height() == 0)
        return;
    CMediaPlayer* player = GetPlayer();
    if (player && player->m_state != 0)
        player->SetVideoRect(RECT{0, 0, width(), height()});
    PostMessageW(GetSafeHwnd(), UM_LIST_COLUMNS, 0, 0);
}

void COrvexListView::wheelEvent(QWheelEvent* event) {
    CMediaPlayer* player = GetPlayer();
    COrvexApp* app = AfxGetOrvexApp();
    int volume = 0;
    if (player && player->m_state == 2 && player->StepVolume(event->angleDelta().y() > 0, volume)) {
        if (app && app->m_hwndControls)
            PostMessageW(app->m_hwndControls, UM_BAR_VOLUME, 0, volume);
        event->accept();
        return;
    }
    QTreeView::wheelEvent(event);
}

bool COrvexListView::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab && key->modifiers() == Qt::NoModifier) {
            MoveFocusOnTab();
            return true;
        }
    }
    return QTreeView::event(event);
}

void COrvexListView::MoveFocusOnTab() {
    COrvexApp* app = AfxGetOrvexApp();
    if (!app)
        return;
    if (app->m_hwndControls && WidgetFromHwnd(app->m_hwndControls)) {
        SetFocus(app->m_hwndControls);
    } else if (app->m_hwndTree) {
        COrvexSplitterView* view = app->m_pSplitterView;
        if (!view || !view->IsLeftHidden())
            SetFocus(app->m_hwndTree);
    }
}
