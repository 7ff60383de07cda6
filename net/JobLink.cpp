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
    std::this_thread::sleep_for(std::chrono::milliseconds(kStatusPauseMilliseconds));
}

BOOL CJobLink::IsCancelled() {
    return m_pCancelEvent && WaitForSingleObject(m_pCancelEvent, 0) == WAIT_OBJECT_0;
}
