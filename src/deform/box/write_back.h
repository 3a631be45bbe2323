// Deformed samples back into the drawing's objects.
#pragma once
#include <span>

#include "deform/box/lattice.h"
#include "deform/box/sampling.h"

namespace corvane::deform {

// Gives the object the shape of its moved samples (`moved` is as long as record.points).
// Text and block references go to the moved middle of their extents with their insertion point, and take
// part in scaling; what is neither curve nor rigid is carried along whole. With subdivision a spline takes
// new fit points, and any other curve is replaced by one, of the same look and in the same place, whose id
// the record takes. Without it lines and polylines take their vertices, splines their fit or control points;
// circles, arcs and ellipses keep their shape and follow with centre and size.
// Sizes are multiplied into the present ones at each call. An object that can't be opened is passed over.
void WriteBackEntity(FFDEntityRecord& record, std::span<const AcGePoint3d> moved, const LatticeScale& scale,
                     const Subdivision& subdivision);

} // namespace corvane::deform
