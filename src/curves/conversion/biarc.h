// Pairs of circular arcs between two points with given directions. Fitting chains of them to a curve is
// arcfit.h's.
#pragma once
#include "core/host/geometry.h"

namespace corvane {

// One piece of an arc polyline. The bulge is the tangent of a quarter of the sweep, positive to the left;
// 0 is a straight piece.
struct FitArc {
    AcGePoint2d start, end;
    double bulge = 0;
};

// A circular arc as the fit measures it: from `start` along the unit direction `tangent` with a signed
// curvature (1/radius, positive to the left), which stays exact as arcs turn into lines.
struct ArcPath {
    AcGePoint2d start;
    AcGeVector2d tangent;
    double curvature = 0;
};

// Signed distance of a point from the full circle of the arc, positive to the left.
double DistanceFromArc(const ArcPath& arc, const AcGePoint2d& point);
// The direction in which the circle passes the point, times a length of 1 near the circle.
AcGeVector2d DirectionAt(const ArcPath& arc, const AcGePoint2d& point);

// One or two arcs that leave the first point and reach the second in the given directions. With two, they
// meet in `joint` in the common direction `second.tangent`.
struct Biarc {
    int count = 0; // 0: there is none
    AcGePoint2d joint;
    ArcPath first, second;
    double firstBulge = 0, secondBulge = 0;
};

inline constexpr double kSmallestBulge = 1e-8; // below it a piece is straight
inline constexpr double kLargestBulge = 1.0;   // a half circle

// The biarc with legs of equal length (Bolton, 1975), unit directions given. When one arc or line does, it
// is one. None for points closer than 1e-12, for arcs beyond a half circle and for directions that turn back.
Biarc SolveBiarc(const AcGePoint2d& from, const AcGeVector2d& fromTangent, const AcGePoint2d& to,
                 const AcGeVector2d& toTangent);

} // namespace corvane
