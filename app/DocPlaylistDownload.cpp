// Playlists given by URL come down into the data folder's scratch file, with
// a limit that keeps a stream mistaken for a playlist from filling the disc.
#include "app/OrvexDoc.h"
#include "interchange/Playlists.h"
#include "net/Curlinet.h"
#include "platform/base/MessageBox.h"

BOOL COrvexDoc::DownloadPlaylist(const CString& url, const CString& target,
                                 const char16_t* reader) {
    CCurlinet net;
    CString error;
    if (net.GetInternetData(url, target, &error, kPlaylistDownloadLimit))
        return TRUE;
    CString message;
    message.Format(u"COrvexDoc %s - GetInternetData failed: %s\n", reader, error);
    AfxMessageBox(message, MB_OK);
    return FALSE;
}
