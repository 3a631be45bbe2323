// Scatters cut to the outline of their boundaries by the host's XCLIP.
#pragma once
#include <vector>

#include "core/host/database.h"

namespace corvane::scatter {

// Cuts the block reference to the boundaries: a polyline of straight segments as it is, everything else by a
// polygon that follows the outline of all boundaries together closely. False, and the reference uncut, when
// there is no single outline or the host refuses it.
bool ClipToBoundaries(AcDbObjectId reference, const std::vector<AcDbObjectId>& boundaries);

} // namespace corvane::scatter
