// Polygons of the plane.
#pragma once

#include <span>

#include "host/ge/point2d.h"

namespace host {

// True for a point within the closed polygon, by the odd-even rule. Points on its edges may count either way.
inline bool polygonHolds(std::span<const AcGePoint2d> polygon, const AcGePoint2d& p) {
    bool in = false;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const AcGePoint2d &a = polygon[i], &b = polygon[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) in = !in;
    }
    return in;
}

} // namespace host
