// Parallels of smooth curves that have none in closed form: ellipses and plane splines.
#pragma once

#include <vector>

#include "host/ent/curve_path.h"

namespace host {

// The parallel to the right of the path (negative distance: left), seen from where the unit normal points, as
// splines through its points, each off by no more than 1e-6 of the path's size. Where the parallel would come
// nearer to the path than the distance (between cusps, beyond its crossings with itself, at corners) it is
// left out; what remains on both sides of one crossing is joined with a corner. There may be several pieces,
// in order along the path, or none.
std::vector<ge::Nurbs> fitParallels(const CurvePath& path, const AcGeVector3d& normal, double distance);

} // namespace host
