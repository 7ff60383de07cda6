// Window handles and window messages. A handle names a registered message
// target; posting queues the message for the user interface thread and is safe
// from any thread; sending calls the target at once. A message for a handle
// that is no longer registered is dropped, so a worker can never reach a
// window that has gone.
#pragma once
#include <cstdint>

#include "platform/base/Types.h"

struct HWND__;
using HWND = HWND__*;
using WPARAM = uintptr_t;
using LPARAM = intptr_t;
using LRESULT = intptr_t;

constexpr UINT WM_USER = 0x0400;

class CMessageTarget {
public:
    CMessageTarget();
    virtual ~CMessageTarget();
    CMessageTarget(const CMessageTarget&) = delete;
    CMessageTarget& operator=(const CMessageTarget&) = delete;

    HWND GetSafeHwnd() const { return m_hwnd; }
    virtual LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

private:
    HWND m_hwnd;
};

// The way posted messages travel to the user interface thread. The default is
// a plain queue that the owner of the thread drains with PumpMessages; the Qt
// glue installs one that rides on the application's event loop.
class IMessageDispatcher {
public:
    virtual ~IMessageDispatcher() = default;
    virtual void Post(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) = 0;
};

// Installs a dispatcher (null restores the built-in queue); gives the previous.
IMessageDispatcher* SetMessageDispatcher(IMessageDispatcher* dispatcher);

BOOL IsWindow(HWND hwnd);
BOOL PostMessageW(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT SendMessageW(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

// Hands one message to its target if that target still exists. Called by the
// dispatchers on the user interface thread.
void DeliverWindowMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

// The built-in queue: delivers what has been posted so far on the calling
// thread and gives the number delivered. With a wait, blocks up to that many
// milliseconds for the first message when none is queued.
int PumpMessages(DWORD waitMilliseconds = 0);
