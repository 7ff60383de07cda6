// What the application object and the document need of the main window. The
// window itself lives in the user interface; the document reaches it only
// through this link (GetMainFrame), so it builds and runs without one.
#pragma once
#include "platform/base/CString.h"
#include "platform/base/Window.h"

class IMainFrame {
public:
    virtual ~IMainFrame() = default;
    // Shows the window for the first time, after the document has loaded.
    virtual void ShowFrame() = 0;
    // Ends any playback before the program asks about unsaved changes.
    virtual void StopPlaybackForExit() = 0;
    // Ends the playback of a CD or DVD, if one plays, before a disc's rows go.
    virtual void StopDiscPlayback() {}
    virtual HWND GetFrameHwnd() const = 0;
    // Discs: whether one plays, and the two ways the CD-DVD menu starts one.
    virtual BOOL IsDvdPlaying() const { return FALSE; }
    virtual BOOL IsCdPlaying() const { return FALSE; }
    virtual BOOL StartDvd(const CString&) { return FALSE; }
    virtual BOOL StartCdFolder(const CString&) { return FALSE; }
    // The DVD Navigation dialog, run modally on the player.
    virtual void RunDvdNavigation() {}
};
