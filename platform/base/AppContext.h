// What subsystems below the application need of the application object: the
// start directory and the status slot that worker threads write. The
// application object registers itself here; without one (tools, tests that
// build no application) the start directory is the working directory and the
// status slot is a local one.
#pragma once
#include "platform/base/CString.h"
#include "platform/base/Window.h"

class IAppContext {
public:
    virtual ~IAppContext() = default;
    virtual CString GetStartDirectory() const = 0;
    // The status slot: one text under a lock, replaced by each new text.
    virtual void SetUpdateStatus(const CString& text) = 0;
    virtual BOOL GetUpdateStatus(CString& out) = 0;
    // The DVD Navigation dialog while it is open, which hears of each new
    // chapter; null otherwise.
    virtual HWND GetDvdNavWindow() const { return nullptr; }
};

// The registered application, or a process-wide fallback; never null.
IAppContext& AfxGetAppContext();
void AfxSetAppContext(IAppContext* context);
