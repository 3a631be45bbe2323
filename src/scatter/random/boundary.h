// Closed boundaries as polygons to scatter in.
#pragma once
#include <optional>

#include "core/host/entities.h"
#include "scatter/random/winding.h"

namespace corvane::scatter {

struct ScatterRegion {
    AcDbObjectId id;
    AcDbExtents box;
    WindingIndex polygon;
    double area = 0;
    double elevation = 0; // the least Z of the box
};

// True for what a boundary can be: closed lightweight polylines, circles, full ellipses, regions.
bool IsBoundary(const AcDbEntity& entity);
// The region of the boundary's polygon in the XY plane; nothing below three points or an area of 1e-9.
// Arcs of polylines are cut into 10 parts, other curves at even parameters into as many as they are long (100
// to 1000).
std::optional<ScatterRegion> RegionOf(AcDbObjectId boundary);

} // namespace corvane::scatter
