#include "interchange/MediaRecordFormat.h"
#include "interchange/Playlists.h"

BOOL ReadM3uEntries(const CString& path, CStringArray& titles, CStringArray& urls) {
    return ForEachPlaylistLine(path, [&](const CString& line, const CString& lower) {
        if (lower.Find(CString(u"#extinf:-1")) >= 0) {
            const int comma = line.Find(u',');
            if (comma >= 0)
                titles.Add(line.Mid(comma + 1));
        } else if (lower.Left(4) == u"http") {
            urls.Add(line);
        }
    });
}

void WriteM3uHead(CStdioFileEx* file) {
    file->WriteString(u"\r\n#EXTM3U\r\n\r\n");
}

BOOL CTopic::WriteM3u(CStdioFileEx* file, int* count) const {
    for (const CMediaItem& item : m_media) {
        if (IsDiscFileItem(item))
            continue;
        file->WriteString(CString(u"#EXTINF:-1,") + item.m_name + u"\r\n");
        file->WriteString(item.m_location + u"\r\n\r\n");
        ++*count;
    }
    for (const CTopic& child : m_children)
        child.WriteM3u(file, count);
    return TRUE;
}

BOOL CMediaContents::WriteM3u(CStdioFileEx* file, int* count) const {
    if (m_topics.IsEmpty())
        return FALSE;
    WriteM3uHead(file);
    for (const CTopic& root : m_topics)
        root.WriteM3u(file, count);
    return TRUE;
}
