// The document's side of the radio database: its file, and the update job's
// cancel and its two ends.
#include "app/OrvexDoc.h"
#include "platform/base/AppContext.h"
#include "platform/base/UserMessages.h"

BOOL COrvexDoc::SaveRadioDb() {
    return SaveRadioBrowseFile(m_radioDb, m_dataFolder + u"/RadioBrowse.dat");
}

BOOL COrvexDoc::LoadRadioDb(const CString& path) {
    return LoadRadioBrowseFile(m_radioDb, path);
}

void COrvexDoc::CancelRadioUpdate() {
    if (m_hJobThread.IsRunning())
        m_cancelEvent.SetEvent();
    else if (m_hwndUpdateDlg)
        PostMessageW(m_hwndUpdateDlg, UM_UPDATE_IDLE, 0, 0);
}

namespace {

// Tells the dialog directly, on this thread, what the slot now holds.
void SendStatus(HWND dialog, const char16_t* text) {
    AfxGetAppContext().SetUpdateStatus(CString(text));
    SendMessageW(dialog, UM_UPDATE_STATUS, 0, 0);
}

} // namespace

BOOL COrvexDoc::BeginRadioJobEnd() {
    if (!m_hJobThread.IsRunning())
        return FALSE;
    // Nothing of the job is touched before the worker has gone.
    m_hJobThread.Wait();
    SendMessageW(m_hwndUpdateDlg, UM_UPDATE_RANGE, 0, 30);
    SendMessageW(m_hwndUpdateDlg, UM_UPDATE_POS, 0, 0);
    return TRUE;
}

void COrvexDoc::OnRadioUpdateDone() {
    if (!BeginRadioJobEnd())
        return;
    SendStatus(m_hwndUpdateDlg, u"Copying Radio Browser data.");
    m_radioDb.AssignTables(m_radioDbNew);
    // A failed save has said so itself; the new data is live all the same.
    SaveRadioDb();
    SendStatus(m_hwndUpdateDlg, u"Radio Station Database update successfull.");
    PostMessageW(m_hwndUpdateDlg, UM_UPDATE_IDLE, 0, 0);
    EndRadioJob();
}

void COrvexDoc::OnRadioUpdateFailed() {
    if (!BeginRadioJobEnd())
        return;
    SendStatus(m_hwndUpdateDlg, u"Radio Database Update failed.");
    PostMessageW(m_hwndUpdateDlg, UM_UPDATE_IDLE, 0, 0);
    EndRadioJob();
}

void COrvexDoc::EndRadioJob() {
    m_radioDbNew.ClearTables();
    m_jobParams = RadioJobParams();
    m_cancelEvent.ResetEvent();
    m_jobFile.Empty();
    m_jobUrl.Empty();
    m_hwndUpdateDlg = nullptr;
}

BOOL COrvexDoc::OnRadioJobMessage(UINT message) {
    if (message == UM_UPDATE_DONE) {
        OnRadioUpdateDone();
        return TRUE;
    }
    if (message == UM_UPDATE_FAILED) {
        OnRadioUpdateFailed();
        return TRUE;
    }
    return FALSE;
}
