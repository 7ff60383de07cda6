// Search results into the library: each station becomes an audio stream item
// under a root topic of the user's choosing.
#include "app/OrvexDoc.h"

int COrvexDoc::ImportStationResults(CString topicName, int maxCount) {
    CStationAr& results = m_radioDb.m_results;
    if (results.IsEmpty() || topicName.IsEmpty())
        return 0;
    CMediaArray items;
    for (const CStation& station : results) {
        if (maxCount != 0 && items.GetSize() >= maxCount)
            break;
        CMediaItem item;
        item.m_type = MEDIA_AUDIO_URL;
        item.m_location = station.m_url;
        // A "!!Playlist: " name stays: the list pane finds playlists by it.
        item.m_name = station.m_name;
        items.Add(item);
    }
    for (CMediaItem& item : items) {
        item.m_topics.Add(topicName);
        m_contents.AddItemByTopics(item, TRUE);
    }
    RefreshDisplay(TRUE, FALSE, &m_contents.m_currentTopic, TRUE, TRUE);
    m_radioDb.ClearSearch();
    m_bContentsChanged = TRUE;
    return items.GetSize();
}
