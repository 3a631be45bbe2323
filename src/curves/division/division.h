// Curves built anew from equally spaced points, and points on closed curves by their direction.
#pragma once
#include <optional>
#include <vector>

#include "core/host/entities.h"

namespace corvane {

// Replaces the curve by a polyline through `count` points at equal distances, the last one its end point;
// counts below 4 are taken as 16. The source is erased. False, and nothing changed, for curves without an end
// or shorter than 0.0001, and when the polyline can't be made.
bool RebuildByCount(AcDbCurve& curve, int count, AcDbObjectId& made);
// The same by points `distance` apart; the last span takes up the rest. A curve shorter than four times the
// distance is told and left alone.
bool RebuildByDistance(AcDbCurve& curve, double distance);

// `count` points at equal distances: from end to end on an open curve; round a closed one, with the seam
// once. Fewer when the curve can't give one.
std::vector<AcGePoint3d> DivisionPoints(const AcDbCurve& curve, int count, double length);

// Where a ray from the centre at that angle (radians, in the XY plane) meets the curve: the first of the
// meetings that the host finds. Nothing when it meets none.
std::optional<AcGePoint3d> RayPointOnCurve(const AcDbCurve& curve, const AcGePoint3d& centre, double angle,
                                           double rayLength);
// A ring of points: rays at equal angles, the first at `offset` radians. Empty when one meets nothing.
std::vector<AcGePoint3d> RingPoints(const AcDbCurve& curve, const AcGePoint3d& centre, int count,
                                    double offset, double rayLength);

} // namespace corvane
