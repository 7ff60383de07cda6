// The lock-key panes of the status bar follow the X keyboard's locks,
// whichever program changed them.
#include <QLabel>
#include <QStatusBar>
#include <QtGui/qguiapplication_platform.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdlib>

#include "tests/ui/FrameMedia.h"
#include "ui/Commands.h"

namespace {

// Taps a key by its keysym on the server itself, as a keyboard would.
void TapKey(xcb_keysym_t keysym) {
    xcb_connection_t* c =
        qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const xcb_setup_t* setup = xcb_get_setup(c);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    xcb_get_keyboard_mapping_reply_t* map = xcb_get_keyboard_mapping_reply(
        c, xcb_get_keyboard_mapping(c, setup->min_keycode, static_cast<uint8_t>(count)), nullptr);
    ASSERT_NE(map, nullptr);
    const xcb_keysym_t* syms = xcb_get_keyboard_mapping_keysyms(map);
    xcb_keycode_t code = 0;
    for (int i = 0; i < count * map->keysyms_per_keycode && !code; ++i)
        if (syms[i] == keysym)
            code = static_cast<xcb_keycode_t>(setup->min_keycode + i / map->keysyms_per_keycode);
    std::free(map);
    ASSERT_NE(code, 0);
    xcb_test_fake_input(c, XCB_KEY_PRESS, code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_test_fake_input(c, XCB_KEY_RELEASE, code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(c);
}

constexpr xcb_keysym_t kCapsLock = 0xffe5;
constexpr xcb_keysym_t kNumLock = 0xff7f;

} // namespace

using StatusIndicators = FrameTest;

TEST_F(StatusIndicators, TheLockPanesFollowTheKeyboard) {
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
    Frame().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Frame()));
    Frame().CommandAction(ID_VIEW_STATUS_BAR)->trigger();
    auto* cap = Frame().statusBar()->findChild<QLabel*>(QStringLiteral("CAP"));
    auto* num = Frame().statusBar()->findChild<QLabel*>(QStringLiteral("NUM"));
    ASSERT_TRUE(cap && num);
    EXPECT_EQ(cap->text(), QString());

    TapKey(kCapsLock);
    EXPECT_TRUE(WaitFor([&] { return cap->text() == QStringLiteral("CAP"); }, 3000));
    TapKey(kNumLock);
    EXPECT_TRUE(WaitFor([&] { return num->text() == QStringLiteral("NUM"); }, 3000));
    EXPECT_EQ(cap->text(), QStringLiteral("CAP"));

    // Turned off again, and the display's keyboard is left as it was found.
    TapKey(kCapsLock);
    TapKey(kNumLock);
    EXPECT_TRUE(WaitFor([&] { return cap->text().isEmpty() && num->text().isEmpty(); }, 3000));
}
