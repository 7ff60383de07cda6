// The rows of the media list as a table model over the shown topic: the
// items first, then the child topics. Texts are made only for the rows on
// screen, so a topic of any size fills at once. The row counts are those of
// the last reset: the document tells the list of every change of the shown
// topic at once, and until then a row that has gone shows nothing.
#pragma once
#include <QAbstractTableModel>

#include "contents/Topic.h"

enum ListColumn {
    LIST_COLUMN_NAME = 0,
    LIST_COLUMN_TYPE = 1,
    LIST_COLUMN_TOPIC = 2,
    LIST_COLUMN_FAVORITE = 3,
    LIST_COLUMN_LOCATION = 4,
    LIST_COLUMN_COUNT = 5,
};

// What the rows are built from: the document's shown items and the pane's
// child-topic rows.
struct CListRows {
    const CMediaArray* media = nullptr;
    const CTopicArray* childTopics = nullptr;
    BOOL folderView = FALSE;
    CString shownName;           // the Topic column of child-topic rows
    BOOL childFilesIcon = FALSE; // the shown topic holds files
};

class COrvexListModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    // Replaces all rows; `change` brings the arrays into their new state
    // while the views know the model is being reset.
    template <typename Change>
    void Reset(const CListRows& rows, Change change) {
        beginResetModel();
        change();
        m_rows = rows;
        m_itemCount = rows.media ? rows.media->GetSize() : 0;
        m_topicCount = rows.childTopics ? rows.childTopics->GetSize() : 0;
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    int ItemCount() const { return m_itemCount; }
    // The text of one cell, as the list shows it.
    CString CellText(int row, int column) const;

private:
    CListRows m_rows;
    int m_itemCount = 0;
    int m_topicCount = 0;
};
