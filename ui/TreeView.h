// The left pane: one tree with the row "Favorites", the root topics and the
// removable and optical drives at the top. The rows are the pane's only
// data: a closed row with something under it holds one placeholder "temp",
// and its real rows are made from the document when it opens and thrown
// away when it closes. A row's path is built from it and its parents when
// the document needs one.
#pragma once
#include <QBasicTimer>
#include <QPersistentModelIndex>
#include <QTreeWidget>
#include <vector>

#include "app/DocView.h"
#include "contents/NodeArray.h"
#include "ui/WindowHandles.h"

class COrvexDoc;
class CTopic;
class QMimeData;

class COrvexTreeView : public QTreeWidget, public CWndTarget, public IDocView {
    Q_OBJECT
public:
    explicit COrvexTreeView(COrvexDoc* document, QWidget* parent = nullptr);
    ~COrvexTreeView() override;

    COrvexDoc* GetDocument() const { return m_pDoc; }
    void OnInitialUpdate();
    void OnUpdate(IDocView* sender, int hint, const CString* object) override;

    // Rows and paths.
    // The name a row stands for in a path: a drive row's root, else its text.
    static CString RowName(const QTreeWidgetItem* row);
    BOOL BuildPath(const QTreeWidgetItem* row, CNodeArray& out) const;
    BOOL IsDriveRow(const QTreeWidgetItem* row) const;
    BOOL IsDrivePath(const CNodeArray& path) const;
    int FillTree();
    int AddDrives();
    BOOL AddDrive(const CString& drive);
    BOOL AddFolderPlaceholder(QTreeWidgetItem* row, const CString& folder);
    int AddSubFolders(QTreeWidgetItem* row, const CString& folder);
    QTreeWidgetItem* SelectByName(const CString& name);
    QTreeWidgetItem* SelectByPath(const CNodeArray& path);
    const std::vector<CString>& Drives() const { return m_drives; }

    // Items dropped from the list pane; `index` is a row of the shown topic.
    void DropMediaItem(int index, QTreeWidgetItem* target);
    void DropMediaItems(const std::vector<int>& indices, QTreeWidgetItem* target);

    // Moving a topic by mouse: the data a drag of the row carries, or null
    // when the row can't be dragged (said in a box for "Favorites").
    QMimeData* BeginTopicDrag(QTreeWidgetItem* row, const QPoint& start);
    BOOL IsDragging() const { return m_dragging; }
    int DropMode() const { return m_dropMode; }
    QTreeWidgetItem* DropHighlight() const { return Row(m_dropHighlight); }

    // The "Move Up Down" mode on a row: the insertion mark moves among its
    // siblings by keys and mouse until Enter or a click confirms, or Esc
    // cancels.
    void StartMoveMode(QTreeWidgetItem* row);
    BOOL InMoveMode() const { return m_moveMode; }
    QTreeWidgetItem* MoveTarget() const { return Row(m_moveTarget); }
    BOOL MarkAfter() const { return m_markAfter; }
    // The insertion mark as it is drawn: the row and whether it is behind it.
    QTreeWidgetItem* InsertMark(BOOL* after = nullptr) const;

    // Milliseconds before the first scroll or opening during a drag, and
    // between the later steps; the pixel height of the scrolling zones.
    int m_dragDelay = 400;
    int m_scrollZone = 0;
    int m_scrollRepeat = 200;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    // Rows are remembered by index, so that a row deleted in between is
    // forgotten rather than left dangling.
    QTreeWidgetItem* Row(const QPersistentModelIndex& index) const;
    QPersistentModelIndex Index(QTreeWidgetItem* row) const;

    // Row making and the lazy filling (TreeView.cpp).
    QTreeWidgetItem* MakeTopicRow(const CTopic& topic, int position, BOOL filesIcon) const;
    void AddPlaceholder(QTreeWidgetItem* row) const;
    void OnItemExpanded(QTreeWidgetItem* row);
    void OnItemCollapsed(QTreeWidgetItem* row);
    // 0 when the row must not open.
    BOOL FillOpenedRow(QTreeWidgetItem* row);
    void OnSelectionChanged();
    void OnDiscHint(const CString& drive, BOOL arrived);
    void SetPaneFont();
    QTreeWidgetItem* TopLevelRow(const CString& name) const;
    QTreeWidgetItem* SearchByName(QTreeWidgetItem* row, const CString& name);

    // Menu and keys (TreeViewCommands.cpp).
    void DeleteTopicRow(QTreeWidgetItem* row);
    void MoveFocusOnTab();

    // Dragging (TreeViewDrag.cpp).
    void TopicDragMove(QDragMoveEvent* event);
    void MediaDragMove(QDragMoveEvent* event);
    void DropTopic(QTreeWidgetItem* row);
    void EndDrag();
    void OnDragTimer();
    bool InTopZone(const QPoint& point) const;
    bool InBottomZone(const QPoint& point) const;
    void SetDropHighlight(QTreeWidgetItem* row);
    void SetInsertMark(QTreeWidgetItem* row, BOOL after);

    // Move Up Down (TreeViewMoveMode.cpp).
    void CancelMoveMode();
    void ConfirmMoveMode(BOOL fromKey);
    void MoveMarkDown();
    void MoveMarkUp();
    void PlaceMoveMark(QTreeWidgetItem* row, BOOL after);
    void MoveModeMouse(const QPoint& point);
    BOOL MoveModeKey(int key);

    COrvexDoc* m_pDoc;
    BOOL m_initialised = FALSE;
    BOOL m_rebuilding = FALSE;
    // Set while the pane itself opens or closes a row that it then undoes.
    BOOL m_settingExpansion = FALSE;
    std::vector<CString> m_drives;
    CNodeArray m_reopenPath;

    enum DragKind { DRAG_NONE, DRAG_TOPIC, DRAG_MEDIA };
    DragKind m_dragKind = DRAG_NONE;
    BOOL m_dragging = FALSE;
    QPersistentModelIndex m_dragItem;
    int m_dropMode = 0;
    QBasicTimer m_dragTimer;
    QPoint m_dragPoint;
    QPoint m_pressPoint;
    QPersistentModelIndex m_dropHighlight;
    QPersistentModelIndex m_markRow;
    BOOL m_markRowAfter = TRUE;

    BOOL m_moveMode = FALSE;
    BOOL m_markAfter = TRUE;
    BOOL m_moveJustStarted = FALSE;
    QPersistentModelIndex m_moveItem;
    QPersistentModelIndex m_moveTarget;
};

// Sibling steps on tree rows, for the root level as for any other.
QTreeWidgetItem* NextSiblingRow(const QTreeWidgetItem* row);
QTreeWidgetItem* PreviousSiblingRow(const QTreeWidgetItem* row);
