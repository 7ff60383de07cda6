// Playlists given by URL come down into the data folder's scratch file, with
// a limit that keeps a stream mistaken for a playlist from filling the disc.
// With the user interface's dialogs the transfer runs where the user can
// watch and stop it; otherwise it blocks the caller under the busy cursor.
#include "app/OrvexDoc.h"
#include "interchange/Playlists.h"
#include "net/Curlinet.h"
#include "platform/base/MessageBox.h"
#include "platform/base/WaitCursor.h"

BOOL COrvexDoc::DownloadPlaylist(const CString& url, const CString& target,
                                 const char16_t* reader) {
    CString error;
    TransferOutcome outcome = TRANSFER_FAILED;
    if (m_pDialogs) {
        outcome = m_pDialogs->Download(url, target, kPlaylistDownloadLimit, &error);
    } else {
        CWaitCursor wait;
        CCurlinet net;
        if (net.GetInternetData(url, target, &error, kPlaylistDownloadLimit))
            outcome = TRANSFER_DONE;
    }
    if (outcome == TRANSFER_DONE)
        return TRUE;
    if (outcome == TRANSFER_CANCELLED) {
        m_bPlaylistCancelled = TRUE;
        return FALSE;
    }
    CString message;
    message.Format(u"COrvexDoc %s - GetInternetData failed: %s\n", reader, error);
    AfxMessageBox(message, MB_OK);
    return FALSE;
}
