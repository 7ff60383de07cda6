#include "ui/ListModel.h"

#include "platform/qt/QtGlue.h"
#include "ui/PaneIcons.h"

namespace {

// The folder view names the parts of a DVD in the Topic column.
CString FolderTopicText(const CMediaItem& item) {
    if (item.m_name.Find(CString(u"VIDEO_TS")) >= 0)
        return CString(u"Main Movie");
    if (item.m_name.Find(CString(u"VOB")) >= 0)
        return CString(u"movie part");
    return CString();
}

// The item's own topic; an item filed under no topic shows its group.
CString TopicText(const CMediaItem& item) {
    if (item.m_topics.IsEmpty())
        return item.GetGroupName();
    return item.m_topics[item.m_topics.GetUpperBound()];
}

} // namespace

int COrvexListModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid())
        return 0;
    return m_itemCount + m_topicCount;
}

int COrvexListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : LIST_COLUMN_COUNT;
}

CString COrvexListModel::CellText(int row, int column) const {
    const int items = ItemCount();
    if (row < 0 || row >= rowCount())
        return CString();
    if (row >= items) {
        if (row - items >= m_rows.childTopics->GetSize())
            return CString();
        const CTopic& topic = (*m_rows.childTopics)[row - items];
        if (column == LIST_COLUMN_NAME)
            return topic.GetName();
        if (column == LIST_COLUMN_TOPIC)
            return m_rows.shownName;
        return CString();
    }
    if (row >= m_rows.media->GetSize())
        return CString();
    const CMediaItem& item = (*m_rows.media)[row];
    switch (column) {
    case LIST_COLUMN_NAME:
        return item.m_name;
    case LIST_COLUMN_TYPE:
        return item.GetTypeName();
    case LIST_COLUMN_TOPIC:
        if (m_rows.folderView) {
            CString text = FolderTopicText(item);
            if (!text.IsEmpty())
                return text;
        }
        return TopicText(item);
    case LIST_COLUMN_FAVORITE:
        return CString(item.m_favorite ? u"yes" : u"no");
    case LIST_COLUMN_LOCATION:
        return item.m_location;
    default:
        return CString();
    }
}

QVariant COrvexListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return QVariant();
    if (role == Qt::DisplayRole)
        return ToQString(CellText(index.row(), index.column()));
    if (role == Qt::DecorationRole && index.column() == LIST_COLUMN_NAME) {
        if (index.row() < ItemCount())
            return PaneIcon(ICON_MEDIA_ITEM);
        return PaneIcon(m_rows.childFilesIcon ? ICON_FILE_TOPIC : ICON_STREAM_TOPIC);
    }
    return QVariant();
}

QVariant COrvexListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    static const char* const kHeadings[LIST_COLUMN_COUNT] = {"Name", "Type", "Topic", "Favorite",
                                                             "URL - Path"};
    return section >= 0 && section < LIST_COLUMN_COUNT ? QString::fromLatin1(kHeadings[section])
                                                       : QVariant();
}

Qt::ItemFlags COrvexListModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
}
