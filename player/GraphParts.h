// What the three graph builders (file or stream, CD, DVD) share: the wait
// cursor over a build and the typed interface query.
#pragma once
#include "platform/media/ComTypes.h"
#include "player/PlayerFrame.h"

// Ends the wait cursor on every way out of a build.
class CBuildWaitCursor {
public:
    explicit CBuildWaitCursor(IPlayerFrame* frame) : m_frame(frame) {
        if (m_frame)
            m_frame->BeginWaitCursor();
    }
    ~CBuildWaitCursor() {
        if (m_frame)
            m_frame->EndWaitCursor();
    }
    CBuildWaitCursor(const CBuildWaitCursor&) = delete;
    CBuildWaitCursor& operator=(const CBuildWaitCursor&) = delete;

private:
    IPlayerFrame* m_frame;
};

template <typename T>
HRESULT QueryTo(IUnknown* from, REFIID riid, T** to) {
    return from->QueryInterface(riid, reinterpret_cast<void**>(to));
}
