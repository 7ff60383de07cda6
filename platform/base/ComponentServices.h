// Start-up of the platform services that components (the media pipeline and
// its modules) need before the first object is made.
#pragma once
#include <functional>

#include "platform/base/Types.h"

// Adds a service to start; each runs once, in the order added.
void RegisterComponentService(std::function<bool()> start);
// Starts every registered service; 0 when one of them fails.
BOOL AfxOleInit();
