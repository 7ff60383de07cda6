// The widgets behind window handles. The frame's focus calls go from a
// handle in the application object to its widget; the pipeline's threads
// need the native window behind the picture's owner, which they read here
// without touching the widget.
#pragma once
#include <cstdint>

#include "platform/base/Window.h"

class QWidget;

// A widget that is also a message target: its handle names it for as long
// as it lives.
class CWndTarget : public CMessageTarget {
public:
    explicit CWndTarget(QWidget* widget);
    ~CWndTarget() override;

    LRESULT OnWindowMessage(UINT, WPARAM, LPARAM) override { return 0; }

protected:
    // Records the widget's native window for the pipeline; call on the user
    // interface thread once the native window exists.
    void PublishNativeWindow(uintptr_t window);
};

// The widget of a live handle, or null. User interface thread only.
QWidget* WidgetFromHwnd(HWND hwnd);
// The native window published for a handle, or 0. Any thread.
uintptr_t NativeWindowFromHwnd(HWND hwnd);
// Gives focus to the widget of a handle, when there is one.
void SetFocus(HWND hwnd);
