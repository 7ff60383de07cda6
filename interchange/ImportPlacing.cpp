#include "interchange/ImportPlacing.h"

void PlaceItemsUnderTopic(CMediaContents& contents, const CMediaArray& items, const CString& topic,
                          int* count) {
    for (const CMediaItem& source : items) {
        CMediaItem item = source;
        if (item.m_topics.IsEmpty())
            item.m_topics.Add(topic);
        else if (item.m_topics[0] != topic)
            item.m_topics.InsertAt(0, topic);
        contents.AddItemByTopics(item, TRUE);
        if (count)
            ++*count;
    }
}

void OverwriteContents(CMediaContents& contents, const CMediaArray& items) {
    contents.ResetContents();
    for (const CMediaItem& item : items)
        contents.AddItemByTopics(item, FALSE);
}
