// Parallel chains of lines and arcs in their plane.
#pragma once

#include "host/ent/curve_path.h"

namespace host {

// The chain at a distance to the right (negative: left). Neighbours are joined where their lines and
// circles meet, nearest to the corner; arcs too small for the distance and segments that the joints
// turn round fall away. Where the result crosses itself it is left so. Empty when nothing remains.
PlaneChain offsetChain(const PlaneChain& chain, double distance);

} // namespace host
