#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "platform/base/Event.h"
#include "platform/base/Window.h"

TEST(CEvent, AutoResetEventIsClearedByAPoll) {
    CEvent cancel;
    EXPECT_EQ(WaitForSingleObject(&cancel, 0), WAIT_TIMEOUT);
    cancel.SetEvent();
    EXPECT_EQ(WaitForSingleObject(&cancel, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(&cancel, 0), WAIT_TIMEOUT);

    CEvent manual(FALSE, TRUE);
    manual.SetEvent();
    EXPECT_EQ(WaitForSingleObject(&manual, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(&manual, 0), WAIT_OBJECT_0);

    CEvent later;
    std::thread setter([&] { later.SetEvent(); });
    EXPECT_EQ(WaitForSingleObject(&later, 5000), WAIT_OBJECT_0);
    setter.join();
}

namespace {

class Recorder : public CMessageTarget {
public:
    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        seen.push_back({message, wParam, lParam});
        return static_cast<LRESULT>(message + 1);
    }
    struct Seen {
        UINT message;
        WPARAM w;
        LPARAM l;
    };
    std::vector<Seen> seen;
};

} // namespace

TEST(WindowMessages, PostedMessagesArriveInOrderAndGoneWindowsDropThem) {
    PumpMessages();
    Recorder target;
    HWND hwnd = target.GetSafeHwnd();
    ASSERT_TRUE(IsWindow(hwnd));
    std::thread worker([hwnd] {
        for (int i = 0; i < 100; ++i)
            PostMessageW(hwnd, WM_USER + 1, static_cast<WPARAM>(i), -i);
    });
    worker.join();
    EXPECT_TRUE(target.seen.empty()); // nothing arrives before the owner pumps
    EXPECT_EQ(PumpMessages(), 100);
    ASSERT_EQ(target.seen.size(), 100u);
    EXPECT_EQ(target.seen[99].w, 99u);
    EXPECT_EQ(target.seen[99].l, -99);
    EXPECT_EQ(SendMessageW(hwnd, 7, 0, 0), 8);

    HWND gone;
    {
        Recorder shortLived;
        gone = shortLived.GetSafeHwnd();
        PostMessageW(gone, WM_USER, 0, 0); // queued, then its window goes
    }
    EXPECT_FALSE(IsWindow(gone));
    EXPECT_FALSE(PostMessageW(gone, WM_USER, 0, 0));
    EXPECT_EQ(SendMessageW(gone, 7, 0, 0), 0);
    EXPECT_EQ(PumpMessages(), 1); // taken from the queue and dropped
}
