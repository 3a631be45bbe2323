// Outlines: the borders of a mask's regions and of their holes as closed paths.
#pragma once
#include "raster/image.h"

namespace corvane::raster {

// Follows every border of the foreground (border following after Suzuki and Abe, 1985, without their
// hierarchy). A path keeps the pixels at which it changes direction, outer borders and holes alike; most
// vertices first, of equals the one met first by rows. A start pixel whose upper and left neighbours are both
// background looks for its first neighbour from the right on, any other from the left. Linear in the pixels.
std::vector<PixelPath> FollowBorders(const RasterImage& mask);

// Leaves out contours without pixels and those that pass the same set of pixels as an earlier one.
std::vector<PixelPath> DropEqualContours(std::vector<PixelPath> contours);

// Half the absolute value of the sum over the closed path (Gauss); 0 below three vertices.
double AreaOf(const PixelPath& path);

} // namespace corvane::raster
