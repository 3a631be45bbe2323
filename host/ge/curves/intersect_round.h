// Where lines and circles of space meet, in closed form. intersect.h is the way in and tells what results
// mean.
#pragma once

#include "host/ge/curves/intersect.h"

namespace host::ge {

// Arcs must be circular; the tolerance is a distance above 0.
Intersections meetRound(const AcGeLineSeg3d& first, const AcGeLineSeg3d& second, double tolerance);
Intersections meetRound(const AcGeLineSeg3d& first, const EllipticArc& second, double tolerance);
Intersections meetRound(const EllipticArc& first, const EllipticArc& second, double tolerance);

} // namespace host::ge
