// Strokes brought down to lines of one pixel: thinning, and the spurs it leaves.
//
// Regions that don't touch have no part in each other's skeleton. A mask with many of them is therefore held
// once, and each is worked on where it stands.
#pragma once
#include <functional>
#include <span>

#include "raster/image.h"

namespace corvane::raster {

// Told after each of the two halves of a turn: which half (0 or 1), and the share of the pixels that have
// gone so far, in percent, rounded down.
using ThinningProgress = std::function<void(int half, int percentGone)>;

class Skeleton {
public:
    explicit Skeleton(const RasterImage& mask);

    // Thins one region (Zhang and Suen, 1984), given by all its pixels. Pixels on the rim of the image stay.
    // Each pixel is looked at again only after a change beside it, so that the cost is linear in the pixels.
    void thin(std::span<const PixelPoint> region, const ThinningProgress& progress = {});

    // Clears the spurs of a region thinned before: walks from an end to a junction of at most `limit` pixels,
    // the junction with them. A gap that this opens is bridged when the skeleton is traced.
    void prune(std::span<const PixelPoint> region, int limit);

    // The pixels left of a region, by rows.
    std::vector<PixelPoint> remaining(std::span<const PixelPoint> region) const;
    bool has(PixelPoint p) const { return *plane_.at(p) != 0; }

private:
    struct Cell {
        PixelPoint point;
        Byte* cell;
    };
    unsigned neighbourhood(const Byte* cell) const;
    int neighbours(const Byte* cell) const;
    bool goes(const Byte* cell, int half) const;
    std::size_t clearHalf(int half);
    void lookAgainAround(PixelPoint p);
    std::vector<PixelPoint> spurFrom(PixelPoint end, int limit) const;

    FramedMask plane_;        // 0 background, else foreground with the marks below
    std::ptrdiff_t steps_[8]; // clockwise from above
    std::vector<PixelPoint> pending_[2];
    std::vector<PixelPoint> going_;
};

// The whole of a mask, thinned and pruned as one; 255 is foreground.
RasterImage ThinZhangSuen(const RasterImage& mask);
RasterImage PruneSpurs(const RasterImage& skeleton, int limit);

} // namespace corvane::raster
