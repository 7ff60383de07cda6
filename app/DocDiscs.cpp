// The CD-DVD menu's commands on the document: which drive holds a DVD-Video
// or an audio CD, looked at each time the menu opens, and playing it.
#include "app/MainFrameLink.h"
#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/Drives.h"

BOOL COrvexDoc::ProbeDiscRoot(const CString& root, CString* found, BOOL dvd) {
    std::vector<CFolderEntry> entries;
    if (!found || !GetDriveList().ListFolder(root, entries))
        return FALSE;
    for (const CFolderEntry& entry : entries) {
        if (entry.m_isFolder) {
            if (dvd && entry.m_name == u"VIDEO_TS") {
                *found = FolderChild(root, entry.m_name) + u"/";
                return TRUE;
            }
        } else if (!dvd && entry.m_readOnly && entry.m_name == u"Track01.cda") {
            // The tracks' folder, with the separator its files are joined by.
            *found = FolderChild(root, CString());
            return TRUE;
        }
    }
    return FALSE;
}

BOOL COrvexDoc::FindDiscPath(BOOL dvd) {
    IDriveList& drives = GetDriveList();
    for (const CDriveInfo& drive : drives.GetDrives()) {
        if (drive.m_type != DRIVE_CDROM)
            continue;
        CString found;
        if (ProbeDiscRoot(drive.m_root, &found, dvd)) {
            (dvd ? m_dvdPath : m_cdPath) = found;
            return TRUE;
        }
    }
    return FALSE;
}

BOOL COrvexDoc::OnUpdatePlayDvd() {
    IMainFrame* frame = GetMainFrame();
    if (!frame || frame->IsDvdPlaying())
        return FALSE;
    m_dvdPath.Empty();
    return FindDiscPath(TRUE) && !m_dvdPath.IsEmpty();
}

BOOL COrvexDoc::OnUpdatePlayCd() {
    IMainFrame* frame = GetMainFrame();
    if (!frame || frame->IsCdPlaying())
        return FALSE;
    m_cdPath.Empty();
    return FindDiscPath(FALSE) && !m_cdPath.IsEmpty();
}

BOOL COrvexDoc::OnUpdateDvdNavigation() {
    IMainFrame* frame = GetMainFrame();
    return frame && frame->IsDvdPlaying();
}

void COrvexDoc::OnPlayDvd() {
    IMainFrame* frame = GetMainFrame();
    if (!m_dvdPath.IsEmpty() && frame)
        frame->StartDvd(m_dvdPath);
}

void COrvexDoc::OnPlayCd() {
    IMainFrame* frame = GetMainFrame();
    if (!m_cdPath.IsEmpty() && frame)
        frame->StartCdFolder(m_cdPath);
}

void COrvexDoc::OnDvdNavigation() {
    IMainFrame* frame = GetMainFrame();
    if (frame && frame->IsDvdPlaying())
        frame->RunDvdNavigation();
}
