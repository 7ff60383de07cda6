// Stations whose address is a playlist (.pls, .m3u) rather than the stream:
// the playlist comes down as an import's does, is read by the same readers,
// and its first entry is what plays.
#include "app/OrvexDoc.h"
#include "interchange/Playlists.h"
#include "platform/base/MessageBox.h"

namespace {

// The address without its query and fragment, in lower case.
CString AddressPath(const CString& url) {
    CString path = AddressWithoutQuery(url);
    path.MakeLower();
    return path;
}

bool EndsWith(const CString& text, const char16_t* end) {
    const CString tail(end);
    return text.GetLength() >= tail.GetLength() && text.Right(tail.GetLength()) == tail;
}

} // namespace

CString AddressWithoutQuery(const CString& url) {
    const int end = url.FindOneOf(u"?#");
    return end >= 0 ? url.Left(end) : url;
}

BOOL IsStationPlaylistUrl(const CString& url) {
    CString lower = url;
    lower.MakeLower();
    if (lower.Find(u"http://") != 0 && lower.Find(u"https://") != 0)
        return FALSE;
    const CString path = AddressPath(url);
    return EndsWith(path, u".pls") || EndsWith(path, u".m3u");
}

BOOL COrvexDoc::ResolveStationPlaylist(const CString& url, CString& stream) {
    const BOOL pls = EndsWith(AddressPath(url), u".pls");
    const CString file = m_dataFolder + u"/results.txt";
    m_bPlaylistCancelled = FALSE;
    if (!DownloadPlaylist(url, file, pls ? u"ReadPls" : u"ReadM3u"))
        return FALSE;
    CStringArray titles;
    CStringArray locations;
    try {
        // A downloaded playlist has no folder of its own to resolve against.
        if (!(pls ? ReadPlsEntries(file, CString(), titles, locations)
                  : ReadM3uEntries(file, CString(), titles, locations)))
            return FALSE;
    } catch (const CFileException& e) {
        e.ReportError();
        return FALSE;
    }
    for (int i = 0; i < locations.GetSize(); ++i) {
        CString entry = locations[i];
        entry.Trim();
        if (!entry.IsEmpty()) {
            stream = entry;
            return TRUE;
        }
    }
    CString message;
    message.Format(u"The playlist %s names no stream.", url);
    AfxMessageBox(message, MB_OK);
    return FALSE;
}
