// Outlines of wide polylines, in their plane: mitred corners, tapered segments.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "host/ge/point2d.h"

namespace host {

// A place on the centre line with half the width of the piece that ends there and of the one that
// begins there.
struct RibbonPoint {
    AcGePoint2d at;
    double before = 0, after = 0;
};

// A place on the piece from a to b.
inline RibbonPoint between(const RibbonPoint& a, const RibbonPoint& b, double t) {
    const double half = a.after + (b.before - a.after) * t;
    return {a.at + (b.at - a.at) * t, half, half};
}

// Contours, one behind the other; `ends` holds where each one stops. All run counter-clockwise, so
// overlapping ones are filled together by the nonzero rule.
struct RibbonOutline {
    std::vector<AcGePoint2d> points;
    std::vector<std::uint32_t> ends;
};

// Appends the outline of a ribbon. Corners are mitred where the widths on both sides agree and the turn
// is no sharper than 152 degrees; others end square. Points that coincide are passed over.
void appendRibbon(RibbonOutline& out, std::span<const RibbonPoint> line, bool closed);

} // namespace host
