// Arcs and bulged polylines as points, close enough for drawing. The exact curves live in host/ge/curves.
#pragma once

#include <vector>

#include "host/ge/point3d.h"
#include "host/gi/geometry.h"

namespace host {

// Chords needed for an arc so that none keeps farther than `error` from it: at least 1 per quarter
// turn, at most 4096; 1 for radii and angles that are no numbers.
int arcChords(double radius, double sweep, double error);

// The bulged segment from `from` to `to` without its last point; a straight one gives `from` alone.
void appendBulge(std::vector<AcGePoint2d>& out, const AcGePoint2d& from, const AcGePoint2d& to, double bulge,
                 double error);

// The points of an elliptic arc, both ends included.
void appendEllipse(std::vector<AcGePoint3d>& out, const EllipticArc& arc, double error);

// The circle through three points; `radius` 0 when they lie on a line.
struct CircleThrough {
    AcGePoint3d center;
    AcGeVector3d normal; // the points run counter-clockwise about it
    double radius = 0;
};
CircleThrough circleThrough(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c);

} // namespace host
