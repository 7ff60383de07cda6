// The program as a user meets it for the radio: a start directory with the
// shipped name files, a user data folder, the application with its main
// window, and a local server standing in for Radio Browser.
#pragma once
#include <filesystem>
#include <memory>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/StartDirectory.h"
#include "tests/support/TempDir.h"
#include "tests/support/TestHttpServer.h"
#include "tests/ui/DialogTestSupport.h"
#include "ui/MainFrame.h"

class RadioWindow {
public:
    RadioWindow() {
        TestApp();
        // Posted window messages ride on the Qt event loop, as in the program.
        InstallQtPlatformGlue();
        // The filters and the manual as the build stages them.
        MakeStartDirectory(m_start, true);
        m_cwd = std::make_unique<ScopedCurrentDir>(m_start);
        m_env = std::make_unique<ScopedEnv>("XDG_DATA_HOME", m_root / "data");
        m_boxes = std::make_unique<MessageBoxRecorder>();
        m_app = std::make_unique<COrvexApp>();
        m_app->SetFrameFactory([](COrvexDoc& doc) -> std::unique_ptr<IMainFrame> {
            return std::make_unique<CMainFrame>(doc);
        });
        EXPECT_TRUE(m_app->InitInstance());
        doc = m_app->GetDocument();
        frame = static_cast<CMainFrame*>(m_app->GetMainWnd());
        // The server is known, as after a first discovery.
        doc->m_serverUrl = CString(server.Url(""));
    }
    ~RadioWindow() { m_app.reset(); }

    MessageBoxRecorder& Boxes() { return *m_boxes; }
    const std::string& StartDir() const { return m_start; }
    std::string DataFile(const char* name) const { return doc->m_dataFolder.ToUtf8() + "/" + name; }

    TempDir m_root;
    TestHttpServer server;
    COrvexDoc* doc = nullptr;
    CMainFrame* frame = nullptr;

private:
    std::string m_start = m_root / "start";
    std::unique_ptr<ScopedCurrentDir> m_cwd;
    std::unique_ptr<ScopedEnv> m_env;
    std::unique_ptr<MessageBoxRecorder> m_boxes;
    std::unique_ptr<COrvexApp> m_app;
};
