// Started where there is no display, the program says so in one line and
// leaves with a failure code; it never crashes.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

#include "tests/support/TempDir.h"

namespace {

struct StartResult {
    int exitCode = -1; // -1: ended by a signal
    std::string err;
};

StartResult StartOrvex(const TempDir& dir, const std::string& environment) {
    const std::string command = "cd '" + dir.Path().string() + "' && env -u DISPLAY -u " +
                                "WAYLAND_DISPLAY -u QT_QPA_PLATFORM XDG_DATA_HOME='" +
                                (dir / "data") + "' " + environment + " '" +
                                getenv("ORVEX_STAGE_DIR") + "/orvex' 2>'" + (dir / "err") + "'";
    const int status = system(command.c_str());
    StartResult run;
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.err = TempDir::Read(dir / "err");
    return run;
}

} // namespace

TEST(HeadlessStart, NoDisplayGivesOneLineAndAFailureCode) {
    TempDir dir;
    StartResult none = StartOrvex(dir, "");
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.err,
              "orvex: no display to open the window on (DISPLAY and WAYLAND_DISPLAY are unset)\n");

    StartResult unreachable = StartOrvex(dir, "DISPLAY=:4711");
    EXPECT_EQ(unreachable.exitCode, 1);
    EXPECT_EQ(unreachable.err, "orvex: cannot connect to the X display \":4711\"\n");

    StartResult waylandOnly = StartOrvex(dir, "WAYLAND_DISPLAY=wayland-0");
    EXPECT_EQ(waylandOnly.exitCode, 1);
    EXPECT_EQ(waylandOnly.err, "orvex: the window needs X11; this Wayland session offers no "
                               "XWayland (DISPLAY is unset)\n");
}
