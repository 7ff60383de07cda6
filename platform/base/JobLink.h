// The three fields a background job shares with the window that watches it,
// and the two ways the job talks back: a status text and a cancel poll.
#pragma once
#include "platform/base/CString.h"
#include "platform/base/Event.h"
#include "platform/base/Window.h"

class CJobLink {
public:
    HWND m_hwndMain = nullptr;
    HWND m_hwndProgress = nullptr;
    CEvent* m_pCancelEvent = nullptr;

    // With a progress window: puts the text in the status slot, tells the
    // window, and gives it a quarter of a second to be read.
    void ShowStatus(const CString& text);
    // Polls the cancel event without waiting; a poll that finds it set clears
    // it and says so in the status.
    BOOL IsCancelled();
};
