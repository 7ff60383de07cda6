// What the radio subcommands share: the progress window and the status slot
// of the update job as a console sees them.
#pragma once
#include <atomic>
#include <cstdio>
#include <functional>
#include <string>
#include <thread>

#include "platform/base/AppContext.h"
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

// The status slot as it was, printing each text the moment it is set, so a
// job needs no pause for its texts to be read. Registered while it lives.
class CConsoleStatus : public IAppContext {
public:
    CConsoleStatus() : m_slot(AfxGetAppContext()) { AfxSetAppContext(this); }
    ~CConsoleStatus() override { AfxSetAppContext(&m_slot); }
    CString GetStartDirectory() const override { return m_slot.GetStartDirectory(); }
    void SetUpdateStatus(const CString& text) override {
        m_slot.SetUpdateStatus(text);
        PrintStatus(text);
    }
    BOOL GetUpdateStatus(CString& out) override { return m_slot.GetUpdateStatus(out); }

private:
    IAppContext& m_slot;
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
