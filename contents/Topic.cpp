#include "contents/Topic.h"

#include <unordered_map>
#include <vector>

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

int CTopic::RemoveMediaItems(const CMediaArray& items) {
    // Each element removes the first equal item still there, as one
    // RemoveMediaItem after the other would, but the list is walked once and
    // closed up once: deleting a whole large topic's rows stays quick.
    struct Bucket {
        std::vector<int> indices;
        size_t first = 0; // the ones before are removed
    };
    std::unordered_map<CString, Bucket> byLocation;
    for (int i = 0; i < m_media.GetSize(); ++i)
        byLocation[m_media[i].m_location].indices.push_back(i);
    std::vector<bool> removed(static_cast<size_t>(m_media.GetSize()), false);
    int count = 0;
    for (const CMediaItem& item : items) {
        const auto found = byLocation.find(item.m_location);
        int hit = -1;
        if (found != byLocation.end()) {
            Bucket& bucket = found->second;
            while (bucket.first < bucket.indices.size() &&
                   removed[static_cast<size_t>(bucket.indices[bucket.first])])
                ++bucket.first;
            for (size_t k = bucket.first; k < bucket.indices.size() && hit < 0; ++k) {
                const int index = bucket.indices[k];
                if (!removed[static_cast<size_t>(index)] && m_media[index] == item)
                    hit = index;
            }
        }
        if (hit < 0)
            break;
        removed[static_cast<size_t>(hit)] = true;
        ++count;
    }
    if (count > 0) {
        CMediaArray kept;
        kept.Reserve(m_media.GetSize() - count);
        for (int i = 0; i < m_media.GetSize(); ++i)
            if (!removed[static_cast<size_t>(i)])
                kept.Add(std::move(m_media[i]));
        m_media = std::move(kept);
    }
    return count;
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
