// Cutting lines and areas to a box.
#pragma once

#include <cstdint>
#include <vector>

#include "host/ge/extents.h"

namespace host {

struct PageRect;

struct ClipBox {
    double left, top, right, bottom;

    static ClipBox around(const PageRect& rect, double band);
    bool holds(const AcGePoint2d& p) const {
        return p.x >= left && p.x <= right && p.y >= top && p.y <= bottom;
    }
    bool meets(const AcDbExtents2d& b) const {
        return b.isValid() && b.maxPoint().x >= left && b.minPoint().x <= right && b.maxPoint().y >= top &&
               b.minPoint().y <= bottom;
    }
};

// Appends the parts of an open path that lie within the box as contours (Liang, Barsky 1984). A path of one
// point, a dot, stays one.
void clipLine(const std::vector<AcGePoint2d>& line, const ClipBox& box, std::vector<AcGePoint2d>& points,
              std::vector<std::uint32_t>& ends);

// Appends the closed contour, cut to the box (Sutherland, Hodgman 1974).
void clipArea(const std::vector<AcGePoint2d>& area, const ClipBox& box, std::vector<AcGePoint2d>& points,
              std::vector<std::uint32_t>& ends);

} // namespace host
