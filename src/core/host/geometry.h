// The door to the host: geometry types, and plain questions about them.
#pragma once
#include "host/ge/ge.h"
#include "host/ge/polygon2d.h"

namespace corvane::host_door {
using host::polygonHolds;
} // namespace corvane::host_door
