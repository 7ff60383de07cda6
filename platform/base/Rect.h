// A rectangle in a window's client coordinates.
#pragma once
#include "platform/base/Types.h"

struct POINT {
    LONG x = 0;
    LONG y = 0;
};

struct RECT {
    LONG left = 0;
    LONG top = 0;
    LONG right = 0;
    LONG bottom = 0;

    LONG Width() const { return right - left; }
    LONG Height() const { return bottom - top; }
};

// True when the rectangle has no area.
inline BOOL IsRectEmpty(const RECT& r) {
    return r.right <= r.left || r.bottom <= r.top ? TRUE : FALSE;
}

// Grows the rectangle by dx on the left and right and dy on the top and
// bottom; negative amounts shrink it.
inline void InflateRect(RECT& r, LONG dx, LONG dy) {
    r.left -= dx;
    r.right += dx;
    r.top -= dy;
    r.bottom += dy;
}
