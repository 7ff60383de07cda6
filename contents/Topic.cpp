#include "contents/Topic.h"

void CTopic::Clear() {
    *this = CTopic();
}

BOOL CTopic::RemoveMediaItem(const CMediaItem& item) {
    for (int i = 0; i < m_media.GetSize(); ++i) {
        if (m_media[i] == item) {
            m_media.RemoveAt(i);
            return TRUE;
        }
    }
    return FALSE;
}

BOOL CTopic::RebuildChildPaths(int* pCount) {
    for (int i = 0; i < m_children.GetSize(); ++i) {
        CTopic& child = m_children[i];
        CNodeItem last;
        if (!child.GetLastNode(last))
            return FALSE;
        child.Path() = Path();
        child.Add(CNodeItem(last.m_name, i));
        if (pCount)
            ++*pCount;
        if (!child.m_media.IsEmpty()) {
            CStringArray names;
            child.GetPathNames(names);
            for (CMediaItem& item : child.m_media) {
                item.m_topics = names;
                if (pCount)
                    ++*pCount;
            }
        }
        if (!child.m_children.IsEmpty() && !child.RebuildChildPaths(pCount))
            return FALSE;
    }
    return TRUE;
}

void CTopic::CollectFavorites(CMediaArray& items, CNodesArArray& paths, int* pCount) const {
    for (const CMediaItem& item : m_media) {
        if (item.m_favorite) {
            items.Add(item);
            paths.Add(Path());
            ++*pCount;
        }
    }
    for (const CTopic& child : m_children)
        child.CollectFavorites(items, paths, pCount);
}

void CTopic::CountEntries(int* pTopics, int* pItems) const {
    *pTopics += m_children.GetSize();
    *pItems += m_media.GetSize();
    for (const CTopic& child : m_children)
        child.CountEntries(pTopics, pItems);
}

int SubtreeHeight(const CTopic& topic) {
    int below = 0;
    for (const CTopic& child : topic.m_children) {
        const int height = SubtreeHeight(child);
        if (height > below)
            below = height;
    }
    return below + 1;
}

void RenumberTopics(CTopicArray& topics, int from) {
    int count = 0;
    for (int i = from < 0 ? 0 : from; i < topics.GetSize(); ++i) {
        topics[i].SetLastIndex(i);
        topics[i].RebuildChildPaths(&count);
    }
}

int PlaceTopic(CTopicArray& topics, int position, const CTopic& topic) {
    if (position >= topics.GetSize())
        return topics.Add(topic);
    topics.InsertAt(position, topic);
    return position;
}
