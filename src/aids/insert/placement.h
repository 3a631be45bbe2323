// Where an inserted block goes, on plain data.
#pragma once
#include <optional>

#include "core/host/geometry.h"

namespace corvane {

struct Placement {
    AcGePoint3d position;
    double rotation = 0; // radians in the XY plane
    double scale = 1;
};

// A block whose Y axis stands across a curve with this tangent at the point: its X axis runs along the curve.
// Nothing for a tangent without a direction in plan.
std::optional<Placement> AcrossCurve(const AcGePoint3d& onCurve, const AcGeVector3d& tangent);

// A block of this width (along its X axis, from its insertion point) stretched from the first point to the
// second. A block without width keeps its scale. Nothing when the points coincide.
std::optional<Placement> ByTwoPoints(const AcGePoint3d& from, const AcGePoint3d& to, double blockWidth);

} // namespace corvane
