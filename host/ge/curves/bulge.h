// A segment of a polyline with a bulge: a straight line (bulge 0) or a circular arc. All results come from
// the chord and the bulge rather than from a centre, so that nearly straight segments far from the origin
// lose nothing. Polylines of such segments are smoothed in polyframe.h, offset in offset.h.
#pragma once

#include <vector>

#include "host/ge/extents.h"
#include "host/ge/point2d.h"

namespace host::ge {

// A vertex and the bulge of the segment that leaves it: the tangent of a quarter of the turn, positive to the
// left.
struct BulgeVertex {
    AcGePoint2d point;
    double bulge = 0;
};

// The same arc by its centre. Angles in radians from the X axis; sweep is signed, positive counter-clockwise.
struct BulgeCircle {
    AcGePoint2d center;
    double radius = 0;
    double startAngle = 0;
    double sweep = 0;
    double endAngle() const { return startAngle + sweep; }
    bool isClockwise() const { return sweep < 0; }
};

struct BulgeClosest {
    AcGePoint2d point;
    double fraction = 0; // of the segment's length, [0, 1]
    double distance = 0;
};

struct BulgeSplit;

struct BulgeSegment {
    AcGePoint2d start, end;
    double bulge = 0;

    bool isStraight() const { return bulge == 0; }
    double sweep() const; // signed turn, (-2 pi, 2 pi)
    double chord() const { return start.distanceTo(end); }
    double sagitta() const { return 0.5 * bulge * chord(); } // signed height over the chord
    double radius() const;                                   // infinite for a straight segment
    double length() const;
    // Centre form; only for bulge != 0 and a chord that is not empty (radius 0 and infinite values
    // otherwise).
    BulgeCircle circle() const;
    // The contribution to a closed outline's signed area: integral of (x dy - y dx) / 2 about the base point.
    double areaAbout(const AcGePoint2d& base) const;
    AcGePoint2d pointAt(double fraction) const; // fraction of the length; outside [0, 1] on the whole circle
    AcGeVector2d tangentAt(double fraction) const; // unit; zero for an empty chord
    AcGePoint2d midPoint() const { return pointAt(0.5); }
    BulgeClosest closestTo(const AcGePoint2d& point) const;
    AcDbExtents2d extents() const; // tight
    BulgeSegment reversed() const { return {end, start, -bulge}; }
    BulgeSplit splitAt(double fraction) const;
    BulgeSegment part(double from, double to) const; // 0 <= from <= to <= 1
};

struct BulgeSplit {
    BulgeSegment first, second;
};

// Bulge of an arc that turns by sweep (signed, inside (-2 pi, 2 pi)).
double bulgeOfSweep(double sweep);
// The segment of a centre form.
BulgeSegment bulgeSegment(const BulgeCircle& circle);
// Through three points; straight when they lie on a line.
BulgeSegment bulgeThrough(const AcGePoint2d& start, const AcGePoint2d& via, const AcGePoint2d& end);
// From a start with its tangent to an end. A tangent that points straight back gives no arc: straight.
BulgeSegment bulgeWithTangent(const AcGePoint2d& start, const AcGeVector2d& tangent, const AcGePoint2d& end);

// Whole polylines; closed ones have a last segment from the last vertex to the first.
int segmentCount(const std::vector<BulgeVertex>& vertices, bool closed);
BulgeSegment segmentOf(const std::vector<BulgeVertex>& vertices, int index);
double polylineLength(const std::vector<BulgeVertex>& vertices, bool closed);
// Signed, positive counter-clockwise; an open polyline is closed by its chord.
double polylineArea(const std::vector<BulgeVertex>& vertices);
AcDbExtents2d polylineExtents(const std::vector<BulgeVertex>& vertices, bool closed);
std::vector<BulgeVertex> reversedPolyline(const std::vector<BulgeVertex>& vertices, bool closed);

} // namespace host::ge
