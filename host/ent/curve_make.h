// Entities from paths and from plain curves. The entities are new and outside any drawing.
#pragma once

#include <memory>

#include "host/ent/curve.h"
#include "host/ent/curve_path.h"

namespace host {

// Line, circle, arc, ellipse, lightweight polyline, 3D polyline or spline, as the path is. Null for
// empty paths and for conics without a radius.
std::unique_ptr<AcDbCurve> makeCurve(const CurvePath& path);
std::unique_ptr<AcDbCurve> makeConic(const ge::EllipticArc& arc);

} // namespace host
