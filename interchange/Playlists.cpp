#include "interchange/Playlists.h"

BOOL ForEachPlaylistLine(const CString& path, const PlaylistLineFn& take) {
    CStdioFile file;
    if (!file.Open(path, CFile::typeText))
        return FALSE;
    CString line;
    while (file.ReadString(line)) {
        CString lower(line);
        lower.MakeLower();
        take(line, lower);
    }
    file.Close();
    return TRUE;
}

void BuildPlaylistItems(const CStringArray& titles, const CStringArray& locations,
                        const CExtensionArray& extensions, CMediaArray& items) {
    for (int i = 0; i < locations.GetSize(); ++i) {
        CMediaItem item;
        CExtension kind;
        extensions.ClassifyLocation(locations[i], kind);
        item.m_type = kind.m_type == MEDIA_NONE ? MEDIA_AUDIO_URL : kind.m_type;
        item.m_location = locations[i];
        item.m_name = i < titles.GetSize() ? titles[i] : CString(u"Unknown");
        items.Add(item);
    }
}

BOOL IsPlsPlaylistItem(const CMediaItem& item) {
    return item.m_location.Find(CString(u"pls")) >= 0;
}
