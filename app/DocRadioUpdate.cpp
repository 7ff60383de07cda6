// The start of a radio update: a server chosen once per process, and the
// worker started on the job's fields.
#include <cstdlib>
#include <ctime>

#include "app/MainFrameLink.h"
#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/Deployment.h"
#include "platform/base/MessageBox.h"
#include "platform/base/WaitCursor.h"

BOOL COrvexDoc::ChooseRadioServer() {
    if (!m_serverUrl.IsEmpty())
        return TRUE;
    const CString listUrl =
        m_serverListUrl.IsEmpty() ? CString(RB_SERVER_LIST_URL) : m_serverListUrl;
    CWaitCursor wait;
    CString message;
    CStringArray servers;
    if (!m_radioDb.GetServers(listUrl, m_dataFolder + u"/results.txt", &message, &servers)) {
        wait.Restore();
        AfxMessageBox(message);
        return FALSE;
    }
    srand(static_cast<unsigned>(time(nullptr)));
    m_serverUrl = servers[rand() % servers.GetSize()];
    return TRUE;
}

void COrvexDoc::OnUpdateRadioDb() {
    if (!ChooseRadioServer())
        return;
    if (m_pDialogs)
        m_pDialogs->RunRadioUpdateDialog(m_serverUrl);
}

void COrvexDoc::OnSearchRadio() {
    if (m_pDialogs)
        m_pDialogs->RunRadioSearchDialog();
}

void COrvexDoc::StartRadioUpdate(HWND hwndDialog) {
    if (!hwndDialog)
        return;
    m_hwndUpdateDlg = hwndDialog;
    if (m_hJobThread.IsRunning())
        return;
    m_cancelEvent.ResetEvent();
    m_jobFile = m_dataFolder + u"/results.txt";
    // Without a limit the servers answer with only their first thousand
    // stations; the job wants the whole directory.
    m_jobUrl = m_serverUrl + u"/xml/stations?limit=1000000";
    IMainFrame* frame = GetMainFrame();
    const HWND hwndMain = frame ? frame->GetFrameHwnd() : nullptr;
    if (!hwndMain)
        return;
    m_jobParams.hwndMain = hwndMain;
    m_jobParams.hwndProgress = hwndDialog;
    m_jobParams.pCancelEvent = &m_cancelEvent;
    m_jobParams.pFile = &m_jobFile;
    m_jobParams.pUrl = &m_jobUrl;
    m_jobParams.pDb = &m_radioDbNew;
    m_hJobThread.Start(&m_cancelEvent, [params = &m_jobParams] { RadioUpdateThreadProc(params); });
}
