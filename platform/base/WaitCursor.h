// The busy cursor shown while the user interface thread blocks on work, such
// as a download. Logic code only says when it starts and ends; the user
// interface installs the hook that changes the pointer.
#pragma once
#include <functional>

// Called with true when a wait starts and false when it ends; waits may nest.
using WaitCursorHook = std::function<void(bool busy)>;

// Installs a hook (empty: none) and gives the previous one.
WaitCursorHook SetWaitCursorHook(WaitCursorHook hook);

// Shows the busy cursor for its lifetime, or until Restore.
class CWaitCursor {
public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;

    // Ends the wait early; later calls and the destructor do nothing more.
    void Restore();

private:
    bool m_busy;
};
