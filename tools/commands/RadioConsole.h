// What the radio subcommands share: the progress window of the update job as
// a console sees it, and the conversions between the database's text, which
// holds the directory's bytes one per character, and the terminal's UTF-8.
#pragma once
#include <atomic>
#include <cstdio>
#include <functional>
#include <string>
#include <thread>

#include "platform/base/AppContext.h"
#include "platform/base/UserMessages.h"
#include "platform/base/Window.h"

// Prints each status text the job shows, line by line, and notes the end.
class CConsoleProgress : public CMessageTarget {
public:
    LRESULT OnWindowMessage(UINT message, WPARAM, LPARAM) override {
        if (message == UM_UPDATE_STATUS) {
            CString text;
            if (AfxGetAppContext().GetUpdateStatus(text) && !text.IsEmpty()) {
                text.Remove(u'\r');
                printf("%s\n", text.ToUtf8().c_str());
                fflush(stdout);
            }
        } else if (message == UM_UPDATE_IDLE) {
            m_idle = true;
        }
        return 0;
    }
    bool Idle() const { return m_idle; }

private:
    bool m_idle = false;
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

// The database keeps the directory's bytes as characters; give them back.
inline std::string StationText(const CString& text) {
    std::string bytes;
    for (char16_t ch : text.str()) {
        if (ch > 0xFF)
            return text.ToUtf8();
        bytes.push_back(static_cast<char>(ch));
    }
    return bytes;
}

// A criterion typed in UTF-8, in the database's form: a character a byte.
inline CString CriterionText(const std::string& utf8) {
    std::u16string text;
    for (unsigned char c : utf8)
        text.push_back(c);
    return CString(std::move(text));
}
