// The update job's thread: what the document hands to it, and its routine.
#pragma once
#include <thread>
#include <utility>

#include "platform/base/CString.h"
#include "platform/base/Event.h"
#include "platform/base/Window.h"

class CRadioBrowseDb;

struct RadioJobParams {
    HWND hwndMain = nullptr;     // gets the end message
    HWND hwndProgress = nullptr; // gets status and progress
    CEvent* pCancelEvent = nullptr;
    const CString* pFile = nullptr;
    const CString* pUrl = nullptr;
    CRadioBrowseDb* pDb = nullptr;
};

// Runs the whole job on the calling (worker) thread and posts UM_UPDATE_DONE
// or UM_UPDATE_FAILED to hwndMain. Gives the thread's exit code: 0 or 1.
unsigned RadioUpdateThreadProc(RadioJobParams* params);

// The worker of one job. A job still running when its owner goes is asked to
// stop and waited for, so it never outlives what it works on.
class CJobThread {
public:
    CJobThread() = default;
    ~CJobThread();
    CJobThread(const CJobThread&) = delete;
    CJobThread& operator=(const CJobThread&) = delete;

    template <typename Routine>
    void Start(CEvent* cancel, Routine&& routine) {
        m_cancel = cancel;
        m_thread = std::thread(std::forward<Routine>(routine));
    }
    BOOL IsRunning() const { return m_thread.joinable(); }
    // Waits with no time-out for the job's end.
    void Wait();

private:
    std::thread m_thread;
    CEvent* m_cancel = nullptr;
};
