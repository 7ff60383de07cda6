// Search results into the library: each station becomes an audio stream item
// under a root topic of the user's choosing.
#include "app/OrvexDoc.h"
#include "interchange/ImportPlacing.h"
#include "radio/StationText.h"

int COrvexDoc::ImportStationResults(CString topicName, int maxCount) {
    const CStationResults& results = m_radioDb.m_results;
    if (results.IsEmpty() || topicName.IsEmpty())
        return 0;
    CMediaArray items;
    for (const CStation& station : results) {
        if (maxCount != 0 && items.GetSize() >= maxCount)
            break;
        CMediaItem item;
        item.m_type = MEDIA_AUDIO_URL;
        // The library holds the text as people read it, not the directory's
        // bytes. A "!!Playlist: " name stays: the list pane finds playlists by it.
        item.m_location = StationText(station.m_url);
        item.m_name = StationText(station.m_name);
        items.Add(item);
    }
    // Each item is filed under the root topic of that name, which becomes
    // current once at the end rather than copied for every item.
    PlaceItemsUnderTopic(m_contents, items, topicName, nullptr);
    RefreshDisplay(TRUE, FALSE, &m_contents.m_currentTopic, TRUE, TRUE);
    m_radioDb.ClearSearch();
    m_bContentsChanged = TRUE;
    return items.GetSize();
}
