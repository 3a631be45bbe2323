// Smoothing of a polyline from its control frame: B-spline curves as points, and the fit curve as pairs of
// arcs.
#pragma once

#include <optional>
#include <vector>

#include "host/ge/curves/bulge.h"
#include "host/ge/curves/nurbs.h"

namespace host::ge {

// The uniform B-spline of a frame: open ones are clamped and run from the first to the last point, closed
// ones are periodic and begin near the first point. Frames too short for the degree take the highest that
// fits; fewer than two points (closed: three) give an invalid curve.
Nurbs frameSpline(const std::vector<AcGePoint3d>& frame, int degree, bool closed);

// Points of that spline, segments a frame segment: (n - 1) * segments + 1 for open, n * segments for closed
// frames. segments is brought to 1 .. 32767 in absolute value.
std::vector<AcGePoint3d> frameSplinePoints(const std::vector<AcGePoint3d>& frame, int degree, bool closed,
                                           int segments);

struct FitVertex {
    AcGePoint2d point;
    std::optional<AcGeVector2d> tangent; // the direction to pass the vertex with
};

struct FitCurve {
    std::vector<BulgeVertex> vertices;
    std::vector<bool> isAdded; // the vertex is a joint of two arcs, not one of the given ones
};

// A pair of arcs between neighbouring vertices, tangents continuous throughout (biarcs: Bolton, 1975).
// Without a tangent of its own a vertex takes that of the circle through it and its neighbours; an end takes
// the one that makes its segment a single arc.
FitCurve fitCurve(const std::vector<FitVertex>& vertices, bool closed);

struct Biarc {
    AcGePoint2d joint;
    double firstBulge = 0, secondBulge = 0;
};
// Arcs from start to joint to end with these unit tangents at the ends, the joint at equal tangent lengths.
// Where an end's tangent is the opposite of what a single arc would arrive with there is no such pair: the
// joint then falls on an end, and the tangent turns back there.
Biarc biarc(const AcGePoint2d& start, const AcGeVector2d& startTangent, const AcGePoint2d& end,
            const AcGeVector2d& endTangent);

} // namespace host::ge
