// Chains of vertices with bulges and widths, as lightweight and old plane polylines share them: what
// lies between two parameters, the other way round, and longer at an end.
#pragma once

#include <vector>

#include "host/ent/curve_path.h"
#include "host/ent/polyline.h"

namespace host {

struct WideChain {
    std::vector<AcDbPolyline::Vertex> vertices;
    bool closed = false;

    int segments() const;
    ge::BulgeSegment segment(int index) const;
    std::vector<ge::BulgeVertex> plain() const;
    // Open, widths as they are at the cuts. Parameters as on the polyline, from < to.
    WideChain part(double from, double to) const;
    // A closed chain keeps its first vertex.
    WideChain reversed() const;
    // With its last segment going on to the point nearest to `to` on its line or circle. False, and
    // nothing changed, when closed, too short, or when the segment wouldn't grow.
    bool extendEnd(const AcGePoint2d& to);
    bool extend(bool atStart, const AcGePoint2d& to);
    // The place at a parameter before the first or after the last, on the end segment's line or circle.
    AcGePoint2d beyond(double param) const;
    // In a plane seen through `local`. False, and nothing changed, when arcs wouldn't stay arcs.
    bool transformBy(const AcGeMatrix2d& local);
};

} // namespace host
