// The lines of hatch patterns, clipped to outlines. Plain data of the plane in and out; what a hatch is
// lives in hatch.h.
#pragma once

#include <cstddef>
#include <vector>

#include "host/ge/point2d.h"

namespace host {

// Parallel lines: the first runs through `base` at `angle` (radians), each next one is moved by `offset`,
// and so are its dashes. Dashes: above 0 drawn, below 0 left out, 0 a dot; none: the line is whole.
struct HatchLineFamily {
    double angle = 0;
    AcGePoint2d base;
    AcGeVector2d offset;
    std::vector<double> dashes;
};

// Closed outlines, the first point not repeated. What lies inside an odd number of them is hatched.
using HatchContours = std::vector<std::vector<AcGePoint2d>>;

struct HatchSegment {
    AcGePoint2d from, to; // the same for a dot
};

// Appends the family's dashes inside the contours, by line and along each. A family whose offset runs
// along its lines is one line. False, with nothing appended, when there would be more than `most`, or
// when a number isn't finite. Edges are taken line by line with half-open ends, so each line is crossed
// an even number of times; O(n + k log k) for n edges and k crossings.
bool appendHatchLines(const HatchContours& contours, const HatchLineFamily& family, std::size_t most,
                      std::vector<HatchSegment>& segments);

// The contours without those that lie deeper inside others than `deepest`: 0 keeps the outermost alone,
// 1 their holes, too.
HatchContours withoutInner(const HatchContours& contours, int deepest);

// Inside an odd number of them.
bool isInside(const HatchContours& contours, const AcGePoint2d& point);
// Signed, positive counter-clockwise.
double contourArea(const std::vector<AcGePoint2d>& contour);

} // namespace host
