// Stand-ins for the panes and the main window, for tests of the document.
#pragma once
#include <string>
#include <vector>

#include "app/MainFrameLink.h"
#include "app/OrvexDoc.h"

// A pane that records every hint it is told, with the object's text.
class RecordingView : public IDocView {
public:
    struct Hint {
        int hint;
        CString object;
        bool hadObject;
        bool operator==(const Hint&) const = default;
    };

    void OnUpdate(IDocView*, int hint, const CString* object) override {
        m_hints.push_back({hint, object ? *object : CString(), object != nullptr});
    }
    std::vector<int> Numbers() const {
        std::vector<int> out;
        for (const Hint& h : m_hints)
            out.push_back(h.hint);
        return out;
    }
    void Clear() { m_hints.clear(); }

    std::vector<Hint> m_hints;
};

// A main window that only writes down what it is asked to do.
class FakeFrame : public IMainFrame, public CMessageTarget {
public:
    explicit FakeFrame(std::vector<std::string>& log) : m_log(log) {}
    void ShowFrame() override { m_log.push_back("show"); }
    void StopPlaybackForExit() override { m_log.push_back("stop"); }
    void StopDiscPlayback() override { m_log.push_back("stop disc"); }
    HWND GetFrameHwnd() const override { return GetSafeHwnd(); }
    LRESULT OnWindowMessage(UINT, WPARAM, LPARAM) override { return 0; }

private:
    std::vector<std::string>& m_log;
};
