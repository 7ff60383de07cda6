// What the engine needs of the main window it plays in: the choice of the
// window that owns the picture, the end of playback, the wait cursor and the
// user's decoder settings. The main frame implements it; tools and tests
// give their own.
#pragma once
#include "platform/base/CString.h"
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

    // A stream announced the song it now plays.
    virtual void OnStreamTitle(const CString&) {}
    // A stream of unknown length ended or broke off, with the pipeline's
    // words when it broke. True when the frame takes it over (to connect
    // again); false lets playback end as for any medium.
    virtual BOOL OnStreamDropped(const CString&) { return FALSE; }
    // The stream's recording stopped by itself; the text says why.
    virtual void OnRecordingStopped(const CString&) {}
};
