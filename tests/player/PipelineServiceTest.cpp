// The pipeline starts with the program's component services: a library that
// cannot start, or lacks what every graph is made of, stops start-up with its
// message instead of failing the first medium. Each failure runs in a fresh
// process, since the library starts once per process.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "app/OrvexApp.h"
#include "platform/base/ComponentServices.h"
#include "platform/media/GstFilter.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

namespace {

// Starts the program in this process and prints what it showed; 0 when it
// started, 3 when it refused to.
int StartProgram() {
    TempDir data;
    setenv("XDG_DATA_HOME", data.Path().c_str(), 1);
    MessageBoxRecorder boxes;
    bool started;
    {
        COrvexApp app;
        started = app.InitInstance();
    }
    for (const CString& text : boxes.Texts())
        fprintf(stderr, "box: %s\n", text.ToUtf8().c_str());
    fflush(stderr);
    return started ? 0 : 3;
}

const char* const kRefused = "box: ERROR COrvexApp::InitInstance Couldn't initialize COM";

} // namespace

TEST(PipelineServiceTest, StartUpBringsThePipelineUp) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            if (gst_is_initialized() || !AfxOleInit() || !gst_is_initialized())
                _exit(1);
            _exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(PipelineServiceTest, LibraryThatCannotStartStopsStartUp) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            SetPipelineLibraryStart([] { return false; });
            _exit(StartProgram());
        },
        testing::ExitedWithCode(3), kRefused);
}

TEST(PipelineServiceTest, LibraryWithoutItsElementsStopsStartUp) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            // A registry of its own over a plugin folder that holds nothing.
            int code;
            {
                TempDir empty;
                setenv("GST_REGISTRY_1_0", (empty / "registry.bin").c_str(), 1);
                setenv("GST_PLUGIN_SYSTEM_PATH_1_0", empty.Path().c_str(), 1);
                setenv("GST_PLUGIN_PATH_1_0", empty.Path().c_str(), 1);
                code = StartProgram();
            }
            _exit(code);
        },
        testing::ExitedWithCode(3), kRefused);
}
