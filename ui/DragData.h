// What a drag between the panes carries. A topic row is dragged only inside
// the tree, which remembers the row itself; rows of the list carry their
// row numbers in the shown topic.
#pragma once
#include <QMimeData>
#include <vector>

inline const QString kTopicRowMime = QStringLiteral("application/x-orvex-topic-row");
inline const QString kMediaRowsMime = QStringLiteral("application/x-orvex-media-rows");

struct CMediaRowsDrag {
    int m_dragIndex = -1;      // the row the drag began on
    bool m_dropAllowed = true; // no drop at all: a topic row is among them, or favourites
    std::vector<int> m_rows;   // all rows of a drag of several; empty for one
};

// The rows as "allowed;index;row,row,...".
QMimeData* MakeMediaRowsMime(const CMediaRowsDrag& drag);
// False when the data isn't a drag of list rows or is damaged.
bool ReadMediaRowsMime(const QMimeData* data, CMediaRowsDrag& drag);
