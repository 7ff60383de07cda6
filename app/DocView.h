// A pane that the document tells about changes through numbered hints.
#pragma once
#include "platform/base/CString.h"

constexpr int HINT_LIST = 90;
constexpr int HINT_TREE = 91;
constexpr int HINT_RIGHT_FONT = 92;
constexpr int HINT_LEFT_FONT = 93;
constexpr int HINT_DISC_ARRIVED = 95;
constexpr int HINT_DISC_REMOVED = 96;

class IDocView {
public:
    virtual ~IDocView() = default;
    // `object` is the drive text for the disc hints, null otherwise.
    virtual void OnUpdate(IDocView* sender, int hint, const CString* object) = 0;
};
