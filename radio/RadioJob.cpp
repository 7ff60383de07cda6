// The update job on its worker thread: download, parse, derive the lists and
// hold the result against the limits. Everything it reports travels by the
// status slot and posted messages.
#include "radio/RadioJob.h"

#include "net/Curlinet.h"
#include "platform/base/UserMessages.h"
#include "radio/RadioBrowseDb.h"

int CRadioBrowseDb::BuildStationArrayThread(const CString& url, const CString& fileName,
                                            CString* error) {
    m_lastProgress = -1;
    CCurlinet transfer;
    transfer.m_statusPauseMs = m_statusPauseMs;
    ShowStatus(CString(u"Getting Radio Browser station data from RB server.\r\nPlease wait."));
    if (m_hwndProgress)
        PostMessageW(m_hwndProgress, UM_UPDATE_RANGE, 0, 40);
    CString text;
    if (!transfer.GetInternetDataUnicodeThread(url, fileName, &text, m_hwndMain, m_hwndProgress,
                                               m_pCancelEvent)) {
        if (error) {
            error->Format(CString(u"CRadioBrowseDb::BuildStationArrayThread - "
                                  u"GetInternetDataThread failed: %s\n"),
                          text);
        }
        return 0;
    }
    return ParseStationFile(fileName, error);
}

int CRadioBrowseDb::BuildRadioBrowserThread(const CString& url, const CString& fileName,
                                            CString* error, HWND hwndMain, HWND hwndProgress,
                                            CEvent* pCancelEvent) {
    if (!hwndMain || !hwndProgress || !pCancelEvent) {
        if (error)
            *error = u"CRadioBrowseDb::BuildRadioBrowserThread param errors.";
        return 0;
    }
    m_hwndMain = hwndMain;
    m_hwndProgress = hwndProgress;
    m_pCancelEvent = pCancelEvent;
    m_lastProgress = -1;
    const int stations = BuildStationArrayThread(url, fileName, error);
    if (stations == 0) {
        ShowStatus(CString(u"Building Stations failed."));
        return 0;
    }
    return BuildLookupLists(stations, error);
}

unsigned RadioUpdateThreadProc(RadioJobParams* params) {
    const RadioJobParams job = *params;
    const CString file = *job.pFile;
    const CString url = *job.pUrl;
    // What the user is to read has gone to the status box already; the
    // error text is for callers that have no box.
    CString error;
    if (job.pDb->BuildRadioBrowserThread(url, file, &error, job.hwndMain, job.hwndProgress,
                                         job.pCancelEvent)) {
        PostMessageW(job.hwndMain, UM_UPDATE_DONE, 0, 0);
        return 0;
    }
    PostMessageW(job.hwndMain, UM_UPDATE_FAILED, 0, 0);
    return 1;
}
