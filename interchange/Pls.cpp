#include "interchange/Playlists.h"

namespace {

// The text behind the first "=", when there is one.
void AddValue(const CString& line, CStringArray& list) {
    const int equals = line.Find(u'=');
    if (equals >= 0)
        list.Add(line.Mid(equals + 1));
}

} // namespace

BOOL ReadPlsEntries(const CString& path, CStringArray& titles, CStringArray& files) {
    CStdioFile file;
    if (!file.Open(path, CFile::typeText))
        return FALSE;
    CString line;
    while (file.ReadString(line)) {
        CString lower(line);
        lower.MakeLower();
        if (lower == u"[playlist]" || lower.Find(CString(u"numberofentries")) >= 0)
            continue;
        if (lower.Find(CString(u"file")) >= 0)
            AddValue(line, files);
        else if (lower.Find(CString(u"title")) >= 0)
            AddValue(line, titles);
    }
    file.Close();
    return TRUE;
}

BOOL IsPlsPlaylistItem(const CMediaItem& item) {
    return item.m_location.Find(CString(u"pls")) >= 0;
}
