#include "contents/MediaContents.h"

namespace {

const char16_t* const kErrorName = u"ERROR";

} // namespace

CMediaContents::CMediaContents() {
    ResetContents();
}

void CMediaContents::ResetContents() {
    m_topics.RemoveAll();
    m_errorTopic.Clear();
    m_errorTopic.Add(CNodeItem(kErrorName, 0));
}

CTopic* CMediaContents::FindTopic(const CNodeArray& path, CTopic* notFound) {
    if (path.IsEmpty())
        return notFound;
    int index = path[0].m_index;
    if (index < 0 || index >= m_topics.GetSize())
        return notFound;
    CTopic* topic = &m_topics[index];
    if (!topic->IsPrefixOf(path, nullptr))
        return notFound;
    for (int level = 1; level < path.GetSize(); ++level) {
        index = path[level].m_index;
        if (index < 0 || index >= topic->m_children.GetSize())
            return notFound;
        topic = &topic->m_children[index];
        if (!topic->IsPrefixOf(path, nullptr))
            return notFound;
    }
    BOOL exact = FALSE;
    topic->IsPrefixOf(path, &exact);
    return exact ? topic : notFound;
}

CTopic* CMediaContents::Find(const CNodeArray& path) {
    CTopic* topic = FindTopic(path, &m_errorTopic);
    return topic->GetName() == kErrorName ? nullptr : topic;
}

void CMediaContents::MakeCurrent(const CTopic& topic, BOOL bSetCurrent) {
    if (bSetCurrent)
        m_currentTopic = topic;
}

BOOL CMediaContents::GetTopicCopy(const CNodeArray& path, CTopic& out) {
    CTopic* topic = Find(path);
    if (!topic)
        return FALSE;
    out = *topic;
    return TRUE;
}

BOOL CMediaContents::AddItem(const CNodeArray& path, const CMediaItem& item, BOOL bSetCurrent) {
    CTopic* topic = Find(path);
    if (!topic)
        return FALSE;
    topic->m_media.Add(item);
    MakeCurrent(*topic, bSetCurrent);
    return TRUE;
}

BOOL CMediaContents::AddItems(const CNodeArray& path, const CMediaArray& items, BOOL bSetCurrent) {
    if (items.IsEmpty())
        return FALSE;
    CTopic* topic = Find(path);
    if (!topic)
        return FALSE;
    // Only what the topic held before the call counts as already there.
    const CMediaArray before = topic->m_media;
    for (const CMediaItem& item : items) {
        if (!before.Contains(item))
            topic->m_media.Add(item);
    }
    MakeCurrent(*topic, bSetCurrent);
    return TRUE;
}

BOOL CMediaContents::RemoveItem(const CNodeArray& path, const CMediaItem& item, BOOL bSetCurrent) {
    CTopic* topic = Find(path);
    if (!topic || !topic->RemoveMediaItem(item))
        return FALSE;
    MakeCurrent(*topic, bSetCurrent);
    return TRUE;
}

BOOL CMediaContents::RemoveItems(const CNodeArray& path, const CMediaArray& items,
                                 BOOL bSetCurrent) {
    CTopic* topic = Find(path);
    if (!topic)
        return FALSE;
    if (topic->RemoveMediaItems(items) < items.GetSize())
        return FALSE;
    MakeCurrent(*topic, bSetCurrent);
    return TRUE;
}

BOOL CMediaContents::ReplaceItem(const CNodeArray& path, const CMediaItem& oldItem,
                                 const CMediaItem& newItem, BOOL bSetCurrent) {
    CTopic* topic = Find(path);
    if (!topic)
        return FALSE;
    for (CMediaItem& item : topic->m_media) {
        if (item == oldItem) {
            item = newItem;
            MakeCurrent(*topic, bSetCurrent);
            return TRUE;
        }
    }
    return FALSE;
}

BOOL CMediaContents::SetItemFavorite(const CNodeArray& path, const CMediaItem& item, BOOL favorite,
                                     BOOL bSetCurrent) {
    CTopic* topic = Find(path);
    if (!topic)
        return FALSE;
    for (CMediaItem& element : topic->m_media) {
        if (element == item) {
            element.m_favorite = favorite;
            MakeCurrent(*topic, bSetCurrent);
            return TRUE;
        }
    }
    return FALSE;
}

BOOL CMediaContents::SortTopic(const CNodeArray& path, BOOL ascending, BOOL bSetCurrent) {
    CTopic* topic = Find(path);
    if (!topic)
        return FALSE;
    topic->m_media.SortByName(ascending);
    MakeCurrent(*topic, bSetCurrent);
    return TRUE;
}

BOOL CMediaContents::MoveItem(const CMediaItem& item, const CNodeArray& fromPath,
                              const CNodeArray& toPath) {
    CTopic* from = Find(fromPath);
    CTopic* to = Find(toPath);
    if (!from || !to)
        return FALSE;
    CMediaItem copy = item;
    toPath.GetPathNames(copy.m_topics);
    to->m_media.Add(copy);
    return from->RemoveMediaItem(item);
}

BOOL CMediaContents::MoveItems(const CMediaArray& items, const CNodeArray& fromPath,
                               const CNodeArray& toPath, BOOL bSetCurrent) {
    CTopic* from = Find(fromPath);
    CTopic* to = Find(toPath);
    if (!from || !to)
        return FALSE;
    CStringArray names;
    toPath.GetPathNames(names);
    for (const CMediaItem& item : items) {
        CMediaItem copy = item;
        copy.m_topics = names;
        to->m_media.Add(copy);
    }
    for (const CMediaItem& item : items) {
        if (!from->RemoveMediaItem(item))
            return FALSE;
    }
    MakeCurrent(*to, bSetCurrent);
    return TRUE;
}

BOOL CMediaContents::EnsureTopicPath(const CStringArray& names, const MediaType* pType,
                                     CNodeArray& outPath) {
    // A deeper path is refused before anything is made.
    if (names.IsEmpty() || names.GetSize() > MAX_TOPIC_DEPTH)
        return FALSE;
    const MediaType type = pType ? *pType : MEDIA_NONE;

    CTopic* topic = nullptr;
    for (CTopic& root : m_topics) {
        if (root.GetName() == names[0]) {
            topic = &root;
            break;
        }
    }
    if (!topic) {
        CTopic fresh;
        fresh.Add(CNodeItem(names[0], m_topics.GetSize()));
        fresh.m_mediaType = type;
        topic = &m_topics[m_topics.Add(fresh)];
    }
    outPath = topic->Path();

    for (int level = 1; level < names.GetSize(); ++level) {
        if (!topic->IsNamePrefixOf(names, nullptr))
            return FALSE;
        CTopic* next = nullptr;
        for (CTopic& child : topic->m_children) {
            if (child.GetName() == names[level]) {
                next = &child;
                break;
            }
        }
        if (!next) {
            CTopic fresh;
            fresh.Path() = topic->Path();
            fresh.Add(CNodeItem(names[level], topic->m_children.GetSize()));
            fresh.m_mediaType = type;
            next = &topic->m_children[topic->m_children.Add(fresh)];
        }
        topic = next;
        outPath = topic->Path();
    }
    return TRUE;
}

BOOL CMediaContents::AddTopicPath(const CStringArray& names, const MediaType* pType,
                                  BOOL bSetCurrent) {
    if (!pType || *pType == MEDIA_NONE || names.IsEmpty())
        return FALSE;
    CNodeArray path;
    if (!EnsureTopicPath(names, pType, path))
        return FALSE;
    CTopic* topic = Find(path);
    if (!topic)
        return FALSE;
    MakeCurrent(*topic, bSetCurrent);
    return TRUE;
}

BOOL CMediaContents::AddItemByTopics(const CMediaItem& item, BOOL bSetCurrent) {
    if (item.m_type == MEDIA_NONE)
        return FALSE;
    CMediaItem copy = item;
    copy.GetTopicName(); // an item that names no topic goes to its group
    CNodeArray path;
    if (!EnsureTopicPath(copy.m_topics, &copy.m_type, path))
        return FALSE;
    CTopic* topic = Find(path);
    if (!topic)
        return FALSE;
    topic->m_media.Add(copy);
    MakeCurrent(*topic, bSetCurrent);
    return TRUE;
}

BOOL CMediaContents::BuildFavorites(CMediaArray& items, CNodesArArray& paths, int* pCount) const {
    items.RemoveAll();
    paths.RemoveAll();
    int count = 0;
    for (const CTopic& root : m_topics)
        root.CollectFavorites(items, paths, &count);
    if (pCount)
        *pCount = count;
    return count != 0;
}

void CMediaContents::CountEntries(int* pTopics, int* pItems) const {
    *pTopics = 0;
    *pItems = 0;
    *pTopics += m_topics.GetSize();
    for (const CTopic& root : m_topics)
        root.CountEntries(pTopics, pItems);
}
