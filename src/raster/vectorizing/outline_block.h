// Traced paths as polylines in an anonymous block, and its reference in the drawing.
#pragma once
#include <functional>

#include "core/host/entities.h"
#include "raster/vectorize.h"

namespace corvane {

// A new anonymous block with a polyline a path, in pixels with y downward; null when it can't be made. Paths
// below two points give nothing. Outlines are closed, centre lines where they end at their start. `level` is
// that of evening (raster/evening.h), 0 for the paths as they are. `told` hears how many are done.
AcDbObjectId MakeOutlineBlock(const std::vector<raster::PixelPath>& paths, raster::VectorizeMode mode,
                              int level, const std::function<void(size_t done)>& told);

// The block's reference in the current space: an image of that many rows at that height above the corner.
// False, and nothing made, when the drawing refuses it.
bool PlaceOutlineBlock(AcDbObjectId block, const AcGePoint3d& corner, double height, int rows);

} // namespace corvane
