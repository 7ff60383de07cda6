#include "interchange/Playlists.h"

namespace {

// The text behind the first "=", when there is one.
void AddValue(const CString& line, CStringArray& list, const CString& folder = CString()) {
    const int equals = line.Find(u'=');
    if (equals >= 0)
        list.Add(ResolvePlaylistEntry(line.Mid(equals + 1), folder));
}

} // namespace

BOOL ReadPlsEntries(const CString& path, const CString& folder, CStringArray& titles,
                    CStringArray& files) {
    return ForEachPlaylistLine(path, [&](const CString& line, const CString& lower) {
        if (lower == u"[playlist]" || lower.Find(CString(u"numberofentries")) >= 0)
            return;
        if (lower.Find(CString(u"file")) >= 0)
            AddValue(line, files, folder);
        else if (lower.Find(CString(u"title")) >= 0)
            AddValue(line, titles);
    });
}
