// The right pane at rest: a report list of the shown topic, its items first,
// then its child topics. The rows are rebuilt from the document at every
// list hint; the pane notes its place in the document so that it finds it
// again after the rebuild, and after it was taken out for a picture.
#pragma once
#include <QPoint>
#include <QTreeView>
#include <vector>

#include "app/DocView.h"
#include "contents/Topic.h"
#include "ui/WindowHandles.h"

class COrvexDoc;
class COrvexListModel;
class COrvexTreeView;
class CMediaPlayer;
class QMimeData;

class COrvexListView : public QTreeView, public CWndTarget, public IDocView {
    Q_OBJECT
public:
    explicit COrvexListView(COrvexDoc* document, QWidget* parent = nullptr);
    ~COrvexListView() override;

    COrvexDoc* GetDocument() const { return m_pDoc; }
    void OnInitialUpdate();
    void OnUpdate(IDocView* sender, int hint, const CString* object) override;
    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    void FillList();
    void ApplyColumnWidths();
    void ComputeColumnWidths();
    void RememberListState(BOOL itemAdded, BOOL itemsAdded, BOOL itemsRemoved);
    void ForgetListState();
    // Brings back the focused and top rows the document remembers.
    void RestoreListState();
    void DeselectAll();

    int RowCount() const;
    BOOL IsItemRow(int row) const;
    int TopRow() const;
    int VisibleRowCount() const;
    std::vector<int> SelectedRows() const;
    int CurrentRow() const { return m_currentRow; }
    // The items of the rows: the document's shown items.
    const CMediaArray& Media() const;
    const CTopicArray& ChildTopics() const { return m_childTopics; }
    COrvexListModel* Model() const { return m_model; }
    // The favourites are known by the name of the shown topic.
    BOOL IsFavoritesView() const;

    // Double click (byEnter 0) and Enter (1) on an item row.
    void PlayRow(int row, BOOL byEnter);
    // A click on a column heading: only "Name" sorts.
    void OnColumnClick(int column);
    // The data a drag of the rows carries, or null when rows don't drag here.
    QMimeData* BeginRowDrag(int row);

    CMediaPlayer* GetPlayer() const;
    COrvexTreeView* GetTreeView() const;

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void startDrag(Qt::DropActions supportedActions) override;

private:
    void SelectAndFocus(int row);
    void ScrollToTop(int row);
    void SetPaneFont();
    CNodeArray ShownPath() const;
    // The commands of the rows (ListViewCommands.cpp).
    void ShowRowMenu(QContextMenuEvent* event);
    void ShowMultiMenu(QContextMenuEvent* event);
    void RunRowCommand(int command);
    void RunEmptyCommand(int command);
    void DeleteSelection();
    void DeleteItems(const CMediaArray& items, BOOL askFirst);
    void OnSpace();
    void MoveFocusOnTab();

    COrvexDoc* m_pDoc;
    COrvexListModel* m_model;
    BOOL m_initialised = FALSE;
    CTopicArray m_childTopics;
    int m_currentRow = -1;
    QPoint m_pressPoint;
};

// One record of the Media Record Format on the desktop clipboard.
void CopyMediaRecordToClipboard(const CMediaItem& item);
