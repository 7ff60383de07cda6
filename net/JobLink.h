// The three fields a background job shares with whoever started it: where its
// status and progress go, and the event that asks it to stop. Transfers and
// the radio database update both begin with them.
#pragma once
#include "platform/base/CString.h"
#include "platform/base/Event.h"
#include "platform/base/Window.h"

class CJobLink {
public:
    HWND m_hwndMain = nullptr;
    HWND m_hwndProgress = nullptr;
    CEvent* m_pCancelEvent = nullptr;

    // With a progress window: puts the text in the application's status slot,
    // posts UM_UPDATE_STATUS to the window and gives it a quarter of a second
    // to be read before the next one replaces it. Without one: nothing.
    void ShowStatus(const CString& text);
    // Polls the cancel event without waiting; a poll that finds it set also
    // clears it, so a request to stop is seen exactly once.
    BOOL IsCancelled();
};

// How long ShowStatus holds the job after each text.
constexpr DWORD kStatusPauseMilliseconds = 250;
