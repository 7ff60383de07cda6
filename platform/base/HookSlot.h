// The one function the toolkit puts in for a system call (a message box, a
// file picker, the wait cursor, ...). Any thread may ask for it, so a
// caller takes a copy and calls that outside the lock.
#pragma once
#include <mutex>
#include <utility>

template <typename Hook>
class CHookSlot {
public:
    // Puts `hook` in and gives back the one it replaces.
    Hook Swap(Hook hook) {
        std::lock_guard<std::mutex> lock(m_lock);
        Hook previous = std::move(m_hook);
        m_hook = std::move(hook);
        return previous;
    }
    Hook Get() const {
        std::lock_guard<std::mutex> lock(m_lock);
        return m_hook;
    }

private:
    mutable std::mutex m_lock;
    Hook m_hook;
};
