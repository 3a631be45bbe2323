// Skeletons turned into paths, and paths cleaned of tails that double back and of doubles beside others.
#pragma once
#include <span>

#include "raster/image.h"

namespace corvane::raster {

// All pixels in paths, each in exactly one; gaps of up to 5 pixels are bridged. Paths start at the first
// pixel by rows that is left, grow forward and then backward from it; of pixels equally near across a gap the
// first by rows is taken. Fewer than three pixels are one path as they stand. `pixels` are sorted by rows,
// each once.
std::vector<PixelPath> TraceSkeleton(std::span<const PixelPoint> pixels);

// The traces of many skeletons of one image, without a plane for each.
class Tracer {
public:
    Tracer(std::int32_t rows, std::int32_t cols) : left_(rows, cols, kReach) {}
    std::vector<PixelPath> trace(std::span<const PixelPoint> pixels);

private:
    static constexpr std::int32_t kReach = 5;
    bool step(PixelPoint& current);
    bool leap(PixelPoint& current);
    void take(PixelPoint p) { *left_.at(p) = 0; }
    void grow(PixelPoint from, PixelPath& path);

    FramedMask left_; // all background between traces
};

// How many points of a path stay when its tail, which doubles back along it, is cut; all where it doesn't.
std::size_t FoldedTailStart(const PixelPath& path);
// Cuts such tails at both ends, twice at most; paths below 8 points stay.
void CutFoldedTails(PixelPath& path);

// Leaves out paths that run beside a longer one (of more points; of equals the earlier), within 3 pixels
// all along and mostly below 2.3, unless an end of one is within 3 pixels of an end of the other. The rest
// keep their places.
std::vector<PixelPath> DropCoveredPaths(std::vector<PixelPath> paths);

} // namespace corvane::raster
