#include "platform/base/Event.h"

#include <chrono>

CEvent::CEvent(BOOL initiallySet, BOOL manualReset)
    : m_set(initiallySet != 0), m_manualReset(manualReset != 0) {}

BOOL CEvent::SetEvent() {
    {
        std::lock_guard<std::mutex> lock(m_lock);
        m_set = true;
    }
    m_changed.notify_all();
    return TRUE;
}

BOOL CEvent::ResetEvent() {
    std::lock_guard<std::mutex> lock(m_lock);
    m_set = false;
    return TRUE;
}

BOOL CEvent::Lock(DWORD timeoutMilliseconds) {
    std::unique_lock<std::mutex> lock(m_lock);
    if (timeoutMilliseconds == INFINITE)
        m_changed.wait(lock, [this] { return m_set; });
    else if (timeoutMilliseconds > 0)
        m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMilliseconds),
                           [this] { return m_set; });
    if (!m_set)
        return FALSE;
    if (!m_manualReset)
        m_set = false;
    return TRUE;
}

DWORD WaitForSingleObject(CEvent* event, DWORD timeoutMilliseconds) {
    if (!event)
        return WAIT_TIMEOUT;
    return event->Lock(timeoutMilliseconds) ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}
