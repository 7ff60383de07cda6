// Stand-ins for the panes and the main window, for tests of the document.
#pragma once
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/MainFrameLink.h"
#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "tests/support/TempDir.h"

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

// The program installed in a folder of the test (a start directory of empty
// default files and a data home beside it), started with a frame that logs
// or the one `makeFrame` gives.
class RunningProgram {
public:
    using FrameMaker = std::function<std::unique_ptr<IMainFrame>(std::vector<std::string>& log)>;

    explicit RunningProgram(FrameMaker makeFrame = nullptr) : m_makeFrame(std::move(makeFrame)) {
        for (const char* f :
             {"OrvexContents.dat", "OrvexUser.dat", "RadioBrowse.dat", "results.txt"})
            TempDir::Write(start + "/" + f, "");
        m_cwd = std::make_unique<ScopedCurrentDir>(start);
        m_env = std::make_unique<ScopedEnv>("XDG_DATA_HOME", root / "data");
        Start();
    }
    ~RunningProgram() { app.reset(); }

    // Ends the program, if it runs, and starts it afresh, as a new process.
    void Start() {
        app.reset();
        app = std::make_unique<COrvexApp>();
        app->SetFrameFactory([this](COrvexDoc&) -> std::unique_ptr<IMainFrame> {
            return m_makeFrame ? m_makeFrame(log) : std::make_unique<FakeFrame>(log);
        });
        EXPECT_TRUE(app->InitInstance());
        doc = app->GetDocument();
        log.clear();
    }
    std::string Contents() const { return TempDir::Read(userFolder + "/OrvexContents.dat"); }
    std::string User() const { return TempDir::Read(userFolder + "/OrvexUser.dat"); }

    TempDir root;
    std::string start = root / "start";
    std::string userFolder = root / "data/Orvex";
    std::vector<std::string> log;
    std::unique_ptr<COrvexApp> app;
    COrvexDoc* doc = nullptr;

private:
    FrameMaker m_makeFrame;
    std::unique_ptr<ScopedCurrentDir> m_cwd;
    std::unique_ptr<ScopedEnv> m_env;
};
