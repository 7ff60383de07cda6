// What the engine needs of the main window it plays in: the choice of the
// window that owns the picture, the end of playback, the wait cursor and the
// user's decoder settings. The main frame implements it; tools and tests
// give their own.
#pragma once
#include "platform/base/Rect.h"
#include "platform/base/Window.h"

class CLavSetup;

class IPlayerFrame {
public:
    virtual ~IPlayerFrame() = default;
    // Picks the owner of the picture (video) or of the sound (audio only) and
    // its client rectangle, and the window that gets the graph's events.
    virtual BOOL SetVideoWindow(BOOL hasVideo, BOOL hasAudio, HWND* hOwner, HWND* hNotify,
                                RECT* rect) = 0;
    // Ends playback and puts the panes back; bForce as the frame defines it.
    virtual void StopPlayback(BOOL bForce) = 0;
    virtual void BeginWaitCursor() = 0;
    virtual void EndWaitCursor() = 0;
    // The user's decoder settings, kept by the document.
    virtual const CLavSetup& GetLavSetup() const = 0;
};
