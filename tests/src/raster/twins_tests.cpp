// The raster library against its plain twins, on drawn, random and real masks: the same pixels and points.
#include <gtest/gtest.h>

#include "plain_raster.h"
#include "raster/borders.h"
#include "raster/components.h"
#include "raster/skeleton.h"
#include "raster/spline_fit.h"
#include "raster/tracing.h"
#include "raster_pictures.h"

using namespace corvane::raster;

namespace {

std::vector<PixelPoint> foreground(const RasterImage& mask) {
    std::vector<PixelPoint> pixels;
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x)
            if (mask.row(y)[x]) pixels.push_back({x, y});
    return pixels;
}

RasterImage only(const RasterImage& like, std::span<const PixelPoint> pixels) {
    RasterImage mask(like.rows, like.cols);
    for (const PixelPoint p : pixels) mask.row(p.y)[p.x] = 255;
    return mask;
}

// Traces of all masks' skeletons, whole: with junctions, gaps and doubled lines.
std::vector<std::vector<PixelPath>> manyTraces() {
    std::vector<std::vector<PixelPath>> traces;
    for (const RasterImage& mask : support::manyMasks())
        traces.push_back(TraceSkeleton(foreground(ThinZhangSuen(mask))));
    return traces;
}

PixelPath wander(unsigned seed, size_t count) {
    std::mt19937 random(seed);
    PixelPath path{{100, 100}};
    int direction = 0;
    while (path.size() < count) {
        if (random() % 5 == 0) direction = int(random() % 8);
        const PixelPoint step = kNeighbours[direction];
        path.push_back({path.back().x + step.x, path.back().y + step.y});
    }
    return path;
}

} // namespace

TEST(RasterTwins, ThinningAndPruningRegionByRegionLeaveTheSamePixels) {
    int number = 0;
    for (const RasterImage& mask : support::manyMasks()) {
        SCOPED_TRACE(number++);
        const RasterImage thinned = plain::thin(mask);
        EXPECT_EQ(thinned, ThinZhangSuen(mask));
        const Components regions = FindComponents(mask);
        Skeleton skeleton(mask);
        for (size_t i = 0; i < regions.count(); ++i) {
            skeleton.thin(regions[i]);
            skeleton.prune(regions[i], 6);
        }
        EXPECT_EQ(plain::prune(thinned, 6), only(mask, skeleton.remaining(regions.pixels)));
        EXPECT_EQ(plain::prune(thinned, 15), PruneSpurs(thinned, 15));
    }
}

TEST(RasterTwins, RegionsAreFloodsSortedBySize) {
    for (const RasterImage& mask : support::manyMasks()) {
        const Components regions = FindComponents(mask);
        RasterImage left = mask;
        size_t last = mask.pixels() + 1;
        for (size_t i = 0; i < regions.count(); ++i) {
            EXPECT_LE(regions[i].size(), last);
            last = regions[i].size();
            const auto pixels = regions[i];
            // Each pixel is new, and beside an earlier one of its own region.
            for (size_t k = 0; k < pixels.size(); ++k) {
                ASSERT_TRUE(plain::on(left, pixels[k].x, pixels[k].y));
                left.row(pixels[k].y)[pixels[k].x] = 0;
            }
            // Nothing of another region touches it.
            for (const PixelPoint p : pixels) ASSERT_TRUE(plain::around(left, p).empty());
        }
        EXPECT_TRUE(foreground(left).empty());
    }
}

TEST(RasterTwins, TracesHoldAllPixelsInTheOrderOfTheRule) {
    for (const RasterImage& mask : support::manyMasks()) {
        const auto pixels = foreground(plain::prune(plain::thin(mask), 6));
        if (pixels.size() > 3000) continue; // the twin looks through all that is left at each gap
        EXPECT_EQ(pixels.empty() ? std::vector<PixelPath>() : plain::trace(pixels), TraceSkeleton(pixels));
    }
}

TEST(RasterTwins, BordersAreFollowedAlike) {
    int number = 0;
    for (const RasterImage& mask : support::manyMasks()) {
        SCOPED_TRACE(number++);
        EXPECT_EQ(plain::borders(mask), FollowBorders(mask));
    }
}

TEST(RasterTwins, TailsAndDoublesAreFoundAlike) {
    size_t cuts = 0, drops = 0;
    const auto compare = [&](const PixelPath& path) {
        const size_t expected = plain::foldedTail(path);
        EXPECT_EQ(expected, FoldedTailStart(path));
        cuts += expected < path.size();
    };
    for (const auto& paths : manyTraces()) {
        for (const PixelPath& path : paths) compare(path);
        const auto kept = plain::dropCovered(paths);
        EXPECT_EQ(kept, DropCoveredPaths(paths));
        drops += paths.size() - kept.size();
    }
    for (unsigned seed = 1; seed <= 60; ++seed) compare(wander(seed, 6 + seed * 3));
    std::vector<PixelPath> wanderers;
    for (unsigned seed = 1; seed <= 40; ++seed) wanderers.push_back(wander(seed, 10 + seed * 4));
    const auto kept = plain::dropCovered(wanderers);
    EXPECT_EQ(kept, DropCoveredPaths(wanderers));
    drops += wanderers.size() - kept.size();
    EXPECT_GT(cuts, 5u);
    EXPECT_GT(drops, 5u);
}

TEST(RasterTwins, SplinesAreFittedAlike) {
    for (unsigned seed = 1; seed <= 25; ++seed) {
        const PixelPath path = wander(seed, 2 + seed * seed);
        EXPECT_EQ(plain::fit(path), FitCubicBSpline(path)) << seed;
    }
    EXPECT_TRUE(FitCubicBSpline({{1, 1}, {2, 2}, {3, 3}}).empty());
    EXPECT_TRUE(FitCubicBSpline({{1, 1}, {1, 1}, {1, 1}, {1, 1}, {1, 1}}).empty());
}
