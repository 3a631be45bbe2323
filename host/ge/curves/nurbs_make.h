// B-splines that are other curves exactly, and joining them. Interpolation is in interpolate.h.
#pragma once

#include <vector>

#include "host/ge/curves/bulge.h"
#include "host/ge/curves/conic.h"
#include "host/ge/curves/nurbs.h"

namespace host::ge {

Nurbs lineNurbs(const AcGePoint3d& start, const AcGePoint3d& end); // degree 1 on [0, 1]
// Rational of degree 2, over the arc's own parameters: one piece a quarter turn or less, whose ends are met
// at their angles.
Nurbs conicNurbs(const EllipticArc& arc);
// Degree 1 without bulges, else rational of degree 2; a knot a vertex, at 0, 1, 2 ... Points are in the
// plane's own coordinates and are taken to the world by toWorld. Segments of no length make no piece; when
// nothing is left the result is not valid().
Nurbs polylineNurbs(const std::vector<BulgeVertex>& vertices, bool closed,
                    const AcGeMatrix3d& toWorld = AcGeMatrix3d::kIdentity);
Nurbs polylineNurbs(const std::vector<AcGePoint3d>& points, bool closed);
// One curve through all, in the given order and sense, of the highest degree among them; each follows the
// domain of the one before. Ends are taken as meeting: the joint is the earlier curve's end. Empty input
// gives an invalid curve.
Nurbs joined(const std::vector<Nurbs>& curves);

} // namespace host::ge
