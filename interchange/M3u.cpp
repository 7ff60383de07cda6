#include "interchange/MediaRecordFormat.h"
#include "interchange/Playlists.h"

namespace {

// The first "," outside double quotes: attributes such as
// user-agent="Mozilla/5.0 (X11, Linux)" come before the title. A line whose
// quotes don't close falls back to its first ",".
int TitleComma(const CString& line) {
    bool quoted = false;
    for (int i = 0; i < line.GetLength(); ++i) {
        if (line[i] == u'"')
            quoted = !quoted;
        else if (line[i] == u',' && !quoted)
            return i;
    }
    return line.Find(u',');
}

} // namespace

BOOL ReadM3uEntries(const CString& path, const CString& folder, CStringArray& titles,
                    CStringArray& locations) {
    return ForEachPlaylistLine(path, [&](const CString& line, const CString& lower) {
        if (lower.Find(CString(u"#extinf:")) >= 0) {
            const int comma = TitleComma(line);
            if (comma >= 0)
                titles.Add(line.Mid(comma + 1));
        } else if (lower.Left(4) == u"http" || lower.Left(7) == u"rtsp://" ||
                   lower.Left(8) == u"rtspt://") {
            locations.Add(line);
        } else if (!folder.IsEmpty() && !line.IsEmpty() && line[0] != u'#' &&
                   !IsWhiteSpaceUnit(line[0])) {
            locations.Add(ResolvePlaylistEntry(line, folder));
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
