// The rows of the media list as a table model over the pane's copies of the
// shown topic: the items first, then the child topics. Texts are made only
// for the rows on screen, so a topic of any size fills at once.
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

// What the rows are built from; the arrays belong to the pane.
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
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    int ItemCount() const { return m_rows.media ? m_rows.media->GetSize() : 0; }
    // The text of one cell, as the list shows it.
    CString CellText(int row, int column) const;

private:
    CListRows m_rows;
};
