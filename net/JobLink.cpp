#include "net/JobLink.h"

#include <chrono>
#include <thread>

#include "platform/base/AppContext.h"
#include "platform/base/UserMessages.h"

void CJobLink::ShowStatus(const CString& text) {
    if (!m_hwndProgress)
        return;
    AfxGetAppContext().SetUpdateStatus(text);
    PostMessageW(m_hwndProgress, UM_UPDATE_STATUS, 0, 0);
    if (m_statusPauseMs)
        std::this_thread::sleep_for(std::chrono::milliseconds(m_statusPauseMs));
}

BOOL CJobLink::IsCancelled() {
    return m_pCancelEvent && WaitForSingleObject(m_pCancelEvent, 0) == WAIT_OBJECT_0;
}
