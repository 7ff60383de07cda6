// An event object. Auto-reset by default: a successful wait, including a poll
// with a time-out of 0, clears it again.
#pragma once
#include <condition_variable>
#include <mutex>

#include "platform/base/Types.h"

constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_TIMEOUT = 258;

class CEvent {
public:
    explicit CEvent(BOOL initiallySet = FALSE, BOOL manualReset = FALSE);
    CEvent(const CEvent&) = delete;
    CEvent& operator=(const CEvent&) = delete;

    BOOL SetEvent();
    BOOL ResetEvent();
    // 1 when the event was set within the time-out (INFINITE waits for ever).
    BOOL Lock(DWORD timeoutMilliseconds = INFINITE);

private:
    std::mutex m_lock;
    std::condition_variable m_changed;
    bool m_set;
    bool m_manualReset;
};

DWORD WaitForSingleObject(CEvent* event, DWORD timeoutMilliseconds);
