// The whole program in a test: the application object, its document loaded
// from the staged start directory with a fresh data folder, and the main
// window, with posted messages riding on the Qt event loop as in the
// program.
#pragma once
#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <cstdlib>
#include <functional>
#include <memory>
#include <ostream>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/qt/QtGlue.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"
#include "tests/ui/PrintQString.h"
#include "ui/MainFrame.h"

inline QApplication& TestApplication() {
    static int argc = 1;
    static char name[] = "test_ui_frame";
    static char* argv[] = {name, nullptr};
    static QApplication* app = [] {
        auto* a = new QApplication(argc, argv);
        InstallQtPlatformGlue();
        return a;
    }();
    return *app;
}

// Runs the event loop until the condition holds or the time is up.
inline bool WaitFor(const std::function<bool()>& condition, int milliseconds = 10000) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > milliseconds)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QTest::qWait(5);
    }
    return true;
}

class FrameTest : public ::testing::Test {
protected:
    FrameTest()
        : m_qt(TestApplication()), m_cwd(getenv("ORVEX_STAGE_DIR")),
          m_dataHome("XDG_DATA_HOME", m_data / "home") {
        m_app = std::make_unique<COrvexApp>();
        m_app->SetFrameFactory(
            [](COrvexDoc& document) { return std::make_unique<CMainFrame>(document); });
        EXPECT_TRUE(m_app->InitInstance());
        m_frame = GetOrvexFrame();
        m_frame->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_frame));
        QCoreApplication::processEvents();
    }
    ~FrameTest() override {
        m_frame->StopPlayback(FALSE);
        QCoreApplication::processEvents();
        m_app.reset();
        QCoreApplication::processEvents();
    }

    COrvexApp& App() { return *m_app; }
    CMainFrame& Frame() { return *m_frame; }
    COrvexDoc& Doc() { return *m_app->m_pDoc; }

    QApplication& m_qt;
    TempDir m_data;
    ScopedCurrentDir m_cwd;
    ScopedEnv m_dataHome;
    MessageBoxRecorder m_boxes;
    std::unique_ptr<COrvexApp> m_app;
    CMainFrame* m_frame = nullptr;
};
