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
    // How long each status text holds the job, so that a dialog reads it
    // before the next replaces it. A job whose texts are taken as they are
    // set (a console) needs none.
    DWORD m_statusPauseMs = 250;

    // With a progress window: puts the text in the application's status slot,
    // posts UM_UPDATE_STATUS to the window and pauses m_statusPauseMs.
    // Without one: nothing.
    void ShowStatus(const CString& text);
    // Polls the cancel event without waiting; a poll that finds it set also
    // clears it, so a request to stop is seen exactly once.
    BOOL IsCancelled();
};
