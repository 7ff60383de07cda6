#include "platform/base/WaitCursor.h"

#include <mutex>

namespace {

std::mutex g_hookLock;
WaitCursorHook g_hook;

void CallHook(bool busy) {
    WaitCursorHook hook;
    {
        std::lock_guard<std::mutex> lock(g_hookLock);
        hook = g_hook;
    }
    if (hook)
        hook(busy);
}

} // namespace

WaitCursorHook SetWaitCursorHook(WaitCursorHook hook) {
    std::lock_guard<std::mutex> lock(g_hookLock);
    WaitCursorHook previous = std::move(g_hook);
    g_hook = std::move(hook);
    return previous;
}

CWaitCursor::CWaitCursor() : m_busy(true) {
    CallHook(true);
}

CWaitCursor::~CWaitCursor() {
    Restore();
}

void CWaitCursor::Restore() {
    if (!m_busy)
        return;
    m_busy = false;
    CallHook(false);
}
