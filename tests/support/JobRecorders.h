// Stand-ins for the two things a background job talks to: the application's
// status slot and the window that shows its progress. Both keep everything
// they were given, in order, so tests can check the exact texts and positions.
#pragma once
#include <functional>
#include <mutex>
#include <vector>

#include "platform/base/AppContext.h"
#include "platform/base/CString.h"
#include "platform/base/UserMessages.h"
#include "platform/base/Window.h"

// Registers itself as the application context while it lives: a chosen start
// directory and a status slot that also remembers every text put in it.
class RecordingAppContext : public IAppContext {
public:
    explicit RecordingAppContext(const CString& startDirectory) : m_startDirectory(startDirectory) {
        AfxSetAppContext(this);
    }
    ~RecordingAppContext() override { AfxSetAppContext(nullptr); }

    CString GetStartDirectory() const override { return m_startDirectory; }
    void SetUpdateStatus(const CString& text) override {
        {
            std::lock_guard<std::mutex> lock(m_lock);
            m_status = text;
            m_history.push_back(text);
        }
        if (m_onStatus)
            m_onStatus(text);
    }
    BOOL GetUpdateStatus(CString& out) override {
        std::lock_guard<std::mutex> lock(m_lock);
        out = m_status;
        return TRUE;
    }
    std::vector<CString> StatusHistory() const {
        std::lock_guard<std::mutex> lock(m_lock);
        return m_history;
    }

    // Called on the job's own thread as each text is set, before the job goes
    // on: a test can act at an exact point of the job without guessing times.
    std::function<void(const CString&)> m_onStatus;

private:
    CString m_startDirectory;
    mutable std::mutex m_lock;
    CString m_status;
    std::vector<CString> m_history;
};

// A window that records the messages delivered to it. On UM_UPDATE_STATUS
// it fetches the status slot, as a progress dialog does. Posted
// messages arrive when the test thread calls PumpMessages.
class RecordingWindow : public CMessageTarget {
public:
    struct Message {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        CString status; // the status slot's text, for UM_UPDATE_STATUS
    };

    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        Message m{message, wParam, lParam, CString()};
        if (message == UM_UPDATE_STATUS)
            AfxGetAppContext().GetUpdateStatus(m.status);
        m_messages.push_back(m);
        return 0;
    }
    const std::vector<Message>& Messages() const { return m_messages; }
    std::vector<LPARAM> Params(UINT message) const {
        std::vector<LPARAM> params;
        for (const Message& m : m_messages)
            if (m.message == message)
                params.push_back(m.lParam);
        return params;
    }

private:
    std::vector<Message> m_messages;
};
