// Traced paths made even by a spline.
#pragma once
#include "raster/image.h"

namespace corvane::raster {

// Fits a clamped cubic B-spline to the path by least squares over chord lengths (one control point to five
// points, 4 to 200) and reads it off again on the pixel grid. Empty for paths that have fewer than four
// points after direct repeats, or no length, and when the equations can't be solved.
PixelPath FitCubicBSpline(const PixelPath& path);

} // namespace corvane::raster
