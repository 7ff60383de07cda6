// A limited blocking transfer (GetInternetData) run on a thread of its own,
// so that a window can show how far it has come and stop it. The window polls
// the counts and IsDone; the result is read once the transfer has ended.
#pragma once
#include <atomic>
#include <cstdint>
#include <thread>

#include "platform/base/CString.h"

class CTransferWorker {
public:
    CTransferWorker() = default;
    // Stops a transfer still running and waits for its thread.
    ~CTransferWorker();
    CTransferWorker(const CTransferWorker&) = delete;
    CTransferWorker& operator=(const CTransferWorker&) = delete;

    // Starts the one transfer of this object.
    void Start(const CString& url, const CString& target, unsigned maxBytes);
    // Asks the transfer to stop; libcurl sees it at its next progress call.
    void Cancel() { m_cancel = true; }

    uint64_t Received() const { return m_received; }
    uint64_t Total() const { return m_total; } // 0 until the server announces a size
    bool IsDone() const { return m_done; }

    // Waits for the end, then: nonzero when the file came down whole.
    BOOL Wait();
    // After Wait: the transfer ended because Cancel asked it to.
    bool WasCancelled() const { return m_cancelled; }
    // After Wait: the failure's text, as GetInternetData gives it.
    CString Error() const { return m_error; }

private:
    void Run(CString url, CString target, unsigned maxBytes);

    std::thread m_thread;
    std::atomic<bool> m_cancel{false};
    std::atomic<bool> m_done{false};
    std::atomic<uint64_t> m_received{0};
    std::atomic<uint64_t> m_total{0};
    BOOL m_result = FALSE;
    // Written by the thread before it ends; read after Wait has joined it.
    bool m_cancelled = false;
    CString m_error;
};
