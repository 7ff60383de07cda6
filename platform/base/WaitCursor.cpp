#include "platform/base/WaitCursor.h"

#include "platform/base/HookSlot.h"

namespace {

CHookSlot<WaitCursorHook> g_hook;

void CallHook(bool busy) {
    const WaitCursorHook hook = g_hook.Get();
    if (hook)
        hook(busy);
}

} // namespace

WaitCursorHook SetWaitCursorHook(WaitCursorHook hook) {
    return g_hook.Swap(std::move(hook));
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
