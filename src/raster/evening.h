// Paths of pixels turned into lines without stairs.
#pragma once
#include "raster/image.h"

namespace corvane::raster {

struct PathPoint {
    double x = 0, y = 0;
};

// How far, in pixels, the straight edges may leave the path: 1 at level 10, which just takes the steps out of
// slopes; less in proportion at lower levels and for paths smaller than 16 pixels, so that specks keep their
// shape. `size` is the sum of the path's extents in x and y.
double EveningTolerance(double size, double level);

// The path as a line that leaves it by the tolerance: edges as long as it allows (Ramer, 1972; Douglas and
// Peucker, 1973), and where two edges meet, a parabola of at most half their lengths, as points, that stays
// within seven tenths of the tolerance of the corner. Turns of more than a radian between edges too long for
// that stay sharp. Open paths keep their ends. A tolerance of 0 gives the points as they are.
std::vector<PathPoint> EvenPath(const PixelPath& path, bool closed, double tolerance);

} // namespace corvane::raster
