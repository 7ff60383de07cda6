#include "interchange/ImportPlacing.h"

void PlaceItemsUnderTopic(CMediaContents& contents, const CMediaArray& items, const CString& topic,
                          int* count) {
    // Making a topic current copies it whole. Only the last receiving topic
    // stays current, so it is copied once at the end: copying it for every
    // item would make a large playlist cost the square of its length.
    CMediaItem lastPlaced;
    BOOL placed = FALSE;
    for (const CMediaItem& source : items) {
        CMediaItem item = source;
        if (item.m_topics.IsEmpty())
            item.m_topics.Add(topic);
        else if (item.m_topics[0] != topic)
            item.m_topics.InsertAt(0, topic);
        if (contents.AddItemByTopics(item, FALSE)) {
            lastPlaced = item;
            placed = TRUE;
        }
        if (count)
            ++*count;
    }
    CNodeArray path;
    MediaType type = lastPlaced.m_type;
    if (placed && contents.EnsureTopicPath(lastPlaced.m_topics, &type, path))
        contents.GetTopicCopy(path, contents.m_currentTopic);
}

void OverwriteContents(CMediaContents& contents, const CMediaArray& items) {
    contents.ResetContents();
    for (const CMediaItem& item : items)
        contents.AddItemByTopics(item, FALSE);
}

BOOL ItemsFitTopicDepth(const CMediaArray& items, const CString& topic) {
    for (const CMediaItem& item : items) {
        const CStringArray& topics = item.m_topics;
        const bool movesDown = !topic.IsEmpty() && !topics.IsEmpty() && topics[0] != topic;
        if (topics.GetSize() + (movesDown ? 1 : 0) > MAX_TOPIC_DEPTH)
            return FALSE;
    }
    return TRUE;
}
