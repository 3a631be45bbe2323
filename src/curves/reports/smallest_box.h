// The rectangle of least area round points of the plane: what a cutter lays a piece into.
#pragma once
#include <vector>

#include "core/host/geometry.h"

namespace corvane {

struct BoxSize {
    double length = 0, width = 0; // length at least width
};
// By the convex hull (Andrew 1979) and a rectangle on each of its edges (Freeman and Shapira 1975). Points on
// a line give a width of 0, no points nothing at all.
BoxSize SmallestBox(std::vector<AcGePoint2d> points);

} // namespace corvane
