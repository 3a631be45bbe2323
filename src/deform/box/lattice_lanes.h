// The inner loops of the lattice's volume, apart so that they are compiled for several kinds of processor.
#pragma once
#include <span>
#include <vector>

#include "deform/box/lattice.h"

namespace corvane::deform {

// Adds to each point of `out` the sum, over all control points, of the product of the three Bernstein weights
// of its sample with the control point's shift. `shift` holds all x, all y, all z.
void addShifts(const AxisCounts& counts, const std::vector<double>& shift,
               std::span<const LatticeSample> samples, std::span<AcGePoint3d> out);

} // namespace corvane::deform
