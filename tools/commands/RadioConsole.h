// What the radio subcommands share: the progress window and the status slot
// of the update job as a console sees them.
#pragma once
#include <atomic>
#include <cstdio>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "platform/base/AppContext.h"
#include "platform/base/File.h"
#include "platform/base/StartDirectory.h"
#include "platform/base/UserMessages.h"
#include "platform/base/Window.h"

inline void PrintStatus(CString text) {
    if (text.IsEmpty())
        return;
    text.Remove(u'\r');
    printf("%s\n", text.ToUtf8().c_str());
    fflush(stdout);
}

// The job's progress window as a console sees it: with printStatus, prints
// each status text the window is told of; notes the end.
class CConsoleProgress : public CMessageTarget {
public:
    explicit CConsoleProgress(bool printStatus = true) : m_printStatus(printStatus) {}
    LRESULT OnWindowMessage(UINT message, WPARAM, LPARAM) override {
        CString text;
        if (message == UM_UPDATE_STATUS && m_printStatus &&
            AfxGetAppContext().GetUpdateStatus(text))
            PrintStatus(text);
        else if (message == UM_UPDATE_IDLE)
            m_idle = true;
        return 0;
    }
    bool Idle() const { return m_idle; }

private:
    bool m_printStatus;
    bool m_idle = false;
};

// A status slot that prints each text the moment it is set, so a job needs
// no pause for its texts to be read. Registered while it lives.
class CConsoleStatus : public IAppContext {
public:
    CConsoleStatus() { AfxSetAppContext(this); }
    ~CConsoleStatus() override { AfxSetAppContext(nullptr); }
    CString GetStartDirectory() const override { return FindStartDirectory(); }
    void SetUpdateStatus(const CString& text) override {
        std::lock_guard<std::mutex> lock(m_lock);
        m_text = text;
        PrintStatus(text);
    }
    BOOL GetUpdateStatus(CString& out) override {
        std::lock_guard<std::mutex> lock(m_lock);
        out = m_text;
        return TRUE;
    }

private:
    std::mutex m_lock;
    CString m_text;
};

// Runs `work` on a worker thread while this thread delivers what it posts.
inline void RunWhilePumping(const std::function<void()>& work) {
    std::atomic<bool> done{false};
    std::thread worker([&] {
        work();
        done = true;
    });
    while (!done)
        PumpMessages(50);
    worker.join();
    PumpMessages();
}
