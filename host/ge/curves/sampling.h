// Flattening of curves to polylines whose chords stay within a tolerance of the curve, for drawing and
// picking.
#pragma once

#include <vector>

#include "host/ge/curves/bulge.h"
#include "host/ge/curves/conic.h"
#include "host/ge/curves/nurbs.h"

namespace host::ge {

struct Flattening {
    double chordTolerance = 0.01; // greatest distance between curve and chord, in drawing units
    int maxPoints = 10000; // a curve takes no more than this, the tolerance yields; at least 3 are used
};

struct FlatPoint {
    AcGePoint3d point;
    double param = 0;
};

// Steps of equal angle that keep a circle within the tolerance, 1 .. maxSteps.
int circleSteps(double radius, double sweep, double chordTolerance, int maxSteps);

// Both ends are among the points, in order of the parameter.
std::vector<FlatPoint> flatten(const EllipticArc& arc, const Flattening& how);
std::vector<FlatPoint> flatten(const Nurbs& curve, const Flattening& how);
// Vertices and points between them; a closed polyline's first point is not repeated.
std::vector<AcGePoint2d> flatten(const std::vector<BulgeVertex>& vertices, bool closed,
                                 const Flattening& how);

} // namespace host::ge
