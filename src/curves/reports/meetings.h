// Where many curves meet: the pairs that can meet are found by their boxes, the points by the host.
#pragma once
#include <utility>
#include <vector>

#include "core/host/entities.h"

namespace corvane {

// The pairs (i, j), i before j, of boxes that touch, in the order of the plain double loop. Boxes that aren't
// valid touch nothing. A sweep over X: cost grows with the count and with how many lie over one another.
std::vector<std::pair<int, int>> TouchingBoxes(const std::vector<AcDbExtents>& boxes);

struct CurveMeetings {
    std::vector<AcGePoint3d> points;               // of all pairs, in the order of the pairs
    std::vector<std::vector<AcGePoint3d>> ofCurve; // those that lie on each curve
};
// All points that two of the curves share; a single curve is held against itself.
CurveMeetings MeetingsOf(const std::vector<AcDbObjectId>& curves);

// Cuts the curve at the points into pieces with its properties; the curve is erased. Returns how many pieces
// there are; 0, and nothing changed, when the points cut nothing off.
int BreakCurve(AcDbObjectId curve, const std::vector<AcGePoint3d>& points);

} // namespace corvane
