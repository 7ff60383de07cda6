// The program's command line: at most one medium to play at start, as a
// desktop file manager's "Open with" hands it over, and the check that
// there is a display to open the window on.
#pragma once
#include <QString>
#include <string>

#include "platform/base/CString.h"

// The path or URL to play for an argument: a local path made absolute, a
// file:// URL as its local path, any other URL as it is.
CString MediumFromArgument(const std::string& argument, const std::string& currentDirectory);

// Whether a window can be opened: the window runs on X11, natively or
// through XWayland, since the engine draws the picture into an X window
// inside it. An X connection made to find out is
// held until the object goes: an X server resets when its last client
// leaves, and one with no other client (a virtual display) would then
// refuse the application's own connection for a moment.
class CDisplayCheck {
public:
    CDisplayCheck();
    ~CDisplayCheck();
    CDisplayCheck(const CDisplayCheck&) = delete;
    CDisplayCheck& operator=(const CDisplayCheck&) = delete;

    // Empty when a window can be opened; otherwise the one line that says
    // why not. Only looks when no platform was chosen (QT_QPA_PLATFORM).
    const std::string& MissingReason() const { return m_reason; }
    // On a Wayland session with XWayland at hand, the window runs on X11 so
    // the engine can draw the picture into it.
    void PreferX11UnderWayland() const;

    // With the window on X11 inside a Wayland session, the pipeline's GL
    // sink must draw with X11 too: left to itself it takes the Wayland
    // display and cannot use the X window it is given. Call once the
    // application runs.
    static void KeepPictureOnX11(const QString& platformName);

private:
    struct xcb_connection_t* m_x11 = nullptr;
    std::string m_reason;
};
