// The File menu's two ways to play something that is not in the library,
// and the medium named on the command line.
#include "app/OrvexDoc.h"
#include "platform/base/Deployment.h"
#include "platform/base/FileDialog.h"
#include "platform/base/MessageBox.h"
#include "platform/base/UserMessages.h"
#include "platform/qt/QtGlue.h"
#include "ui/MainFrame.h"
#include "ui/OpenUrlDlg.h"

void CMainFrame::OnOpenMediaFile() {
    FileDialogRequest request;
    request.open = TRUE;
    request.flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
    request.filter = u"Media Files (*.avi*.mp4*.mp3*.flv*.wmv)|*.avi;*.mp4;*.mp3;*.flv;*.wmv|"
                     u"All Files (*.*)|*.*||";
    request.initialFolder = m_document.m_videoFolder;
    CString path;
    if (!RunFileDialog(request, path))
        return;
    m_mediaPath.Empty();
    // A CD track chosen here plays alone, with no list behind it.
    if (path.Find(CString(u".cda")) >= 0)
        StartCd(path);
    else
        StartMediaFile(path);
}

void CMainFrame::OnOpenMediaUrl() {
    COpenUrlDlg dialog(this);
    dialog.m_url = kSampleStreamUrl;
    if (dialog.exec() != QDialog::Accepted)
        return;
    OpenMediaUrl(dialog.m_url);
}

void CMainFrame::OpenMediaUrl(const CString& url) {
    if (url.IsEmpty())
        return;
    CString lower = url;
    lower.MakeLower();
    bool known = false;
    for (const char16_t* scheme : {u"http://", u"https://", u"rtsp://", u"rtspt://"})
        known = known || lower.Find(CString(scheme)) >= 0;
    if (!known) {
        AfxMessageBox(CString(u"Invalid URL - no http://, https://, rtsp:// or rtspt://."));
        return;
    }
    if (lower.Find(CString(u".pls")) >= 0) {
        AfxMessageBox(CString(u"Use Tools-Import for a .pls file."));
        return;
    }
    if (lower.Find(CString(u".m3u8")) < 0 && lower.Find(CString(u".m3u")) >= 0) {
        AfxMessageBox(CString(u"Use Tools-Import for a .m3u file."));
        return;
    }
    StartMediaFile(url);
}

void CMainFrame::PlayAtStart(const CString& medium) {
    // Played from the message queue, once the window stands, as a medium
    // chosen in the list would be.
    SetMediaPath(medium);
    SetMediaTitle(CString());
    PostMessageW(GetSafeHwnd(), UM_PLAY_MEDIA, 0, 0);
}
