// Every test program runs headless and knows the staged start directory and
// the source tree, also when it is started by hand rather than by ctest.
// Values already in the environment win.
#include <cstdlib>

namespace {

const bool kEnvironmentSet = [] {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("ORVEX_STAGE_DIR", ORVEX_TEST_STAGE_DIR, 0);
    setenv("ORVEX_SOURCE_DIR", ORVEX_TEST_SOURCE_DIR, 0);
    // A graph that merely starts slowly on a busy test machine still starts.
    setenv("ORVEX_STATE_WAIT_SCALE", "5", 0);
#ifndef ORVEX_TEST_OWN_BUS
    // A window made by a test would otherwise announce itself on the
    // desktop's session bus, to the user's media keys and sound menu. Only
    // programs run under a bus of their own use one.
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/orvex-test-bus", 1);
#endif
    return true;
}();

} // namespace
