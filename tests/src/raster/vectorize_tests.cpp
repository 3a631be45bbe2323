// Images to paths: outlines, centre lines, what is left out, progress, evening.
#include "raster/vectorize.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "raster/borders.h"
#include "raster/evening.h"
#include "raster/tracing.h"
#include "raster_pictures.h"

using namespace corvane::raster;
using support::drawn;

namespace {

// Dark where the mask is foreground.
RasterImage inkOf(const RasterImage& mask) {
    RasterImage image(mask.rows, mask.cols, PixelKind::bgr, 255);
    for (size_t i = 0; i < mask.data.size(); ++i)
        if (mask.data[i]) std::fill_n(&image.data[3 * i], 3, Byte(0));
    return image;
}
std::vector<PixelPath> outlines(const RasterImage& image, int minVertices = 0) {
    return VectorizeImage(image, {VectorizeMode::outlines, minVertices, 0}).paths;
}
std::vector<PixelPath> centreLines(const RasterImage& image, int minVertices = 0) {
    return VectorizeImage(image, {VectorizeMode::centreLines, minVertices, 0}).paths;
}
RasterImage disc(double outer, double inner) {
    RasterImage mask(141, 141);
    for (int y = 0; y < 141; ++y)
        for (int x = 0; x < 141; ++x)
            if (const double r = std::hypot(x - 70, y - 70); r <= outer && r >= inner) mask.row(y)[x] = 255;
    return mask;
}
double toLine(PathPoint p, const std::vector<PathPoint>& line, bool closed) {
    double least = 1e9;
    for (size_t i = 0; i + (closed ? 0 : 1) < line.size(); ++i) {
        const PathPoint a = line[i], b = line[(i + 1) % line.size()];
        const double dx = b.x - a.x, dy = b.y - a.y, squared = dx * dx + dy * dy;
        const double t =
            squared > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / squared, 0.0, 1.0) : 0;
        least = std::min(least, std::hypot(a.x + t * dx - p.x, a.y + t * dy - p.y));
    }
    return least;
}

} // namespace

TEST(Vectorize, OutlinesOfASquareAndARing) {
    RasterImage square(12, 14);
    for (int y = 3; y <= 8; ++y) std::fill_n(square.row(y) + 2, 9, Byte(255));
    const auto found = outlines(inkOf(square));
    ASSERT_EQ(1u, found.size());
    PixelPath corners = found[0];
    std::sort(corners.begin(), corners.end(), [](auto a, auto b) { return PixelKey(a) < PixelKey(b); });
    EXPECT_EQ((PixelPath{{2, 3}, {10, 3}, {2, 8}, {10, 8}}), corners);
    EXPECT_EQ(40, AreaOf(found[0]));
    EXPECT_EQ(2u, outlines(inkOf(disc(60, 40))).size()) << "the hole has an outline of its own";
    EXPECT_TRUE(outlines(inkOf(square), 5).empty()) << "four vertices are too few";
    EXPECT_TRUE(outlines(inkOf(drawn({"...", ".#.", "..."}))).empty()) << "no area";
}

TEST(Vectorize, CentreLinesRunInTheMiddle) {
    RasterImage bar(21, 60);
    for (int y = 8; y <= 12; ++y) std::fill_n(bar.row(y) + 5, 50, Byte(255));
    const auto lines = centreLines(inkOf(bar));
    ASSERT_EQ(1u, lines.size());
    EXPECT_GT(lines[0].size(), 40u);
    for (const PixelPoint p : lines[0]) EXPECT_NEAR(10, p.y, 1);
    const auto ring = centreLines(inkOf(disc(60, 54)), 4); // single pixels left at turns don't count
    ASSERT_EQ(1u, ring.size());
    for (const PixelPoint p : ring[0]) EXPECT_NEAR(57, std::hypot(p.x - 70, p.y - 70), 2.2);
}

TEST(Vectorize, SmallThings) {
    EXPECT_TRUE(centreLines(RasterImage(9, 9, PixelKind::bgr, 255)).empty())
        << "an image without ink is no fault";
    EXPECT_EQ(VectorizeFailure::unreadable, VectorizeImage({}, {}).failure);
    const RasterImage pair = inkOf(drawn({".....", ".##..", "....."}));
    EXPECT_EQ((std::vector<PixelPath>{{{1, 1}, {2, 1}}}), centreLines(pair, 2));
    EXPECT_TRUE(centreLines(pair, 3).empty());
    EXPECT_TRUE(centreLines(inkOf(drawn({"...", ".#.", "..."}))).empty());
    const RasterImage row = inkOf(drawn({".#####."}));
    EXPECT_EQ(1u, centreLines(row).size()) << "one row is not thinned";
}

TEST(Vectorize, AMaskIsTracedAsItStands) {
    const RasterImage white(12, 12, PixelKind::bgr, 255);
    RasterImage mask(12, 12);
    for (int y = 3; y <= 8; ++y) std::fill_n(mask.row(y) + 3, 6, Byte(1));
    const auto found = VectorizeImage(white, {VectorizeMode::outlines, 0, 0}, mask).paths;
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ(25, AreaOf(found[0]));
}

TEST(Vectorize, ProgressRisesToTheWhole) {
    const RasterImage image = support::photographed("handwriting-on-paper.png");
    std::vector<int> told;
    const VectorizeProgress tell = [&](int percent) { told.push_back(percent); };
    const auto lines = VectorizeImage(image, {}, {}, tell);
    EXPECT_GT(lines.paths.size(), 3u);
    ASSERT_GT(told.size(), 10u);
    EXPECT_EQ(1, told.front());
    EXPECT_EQ(8, told[1]);
    EXPECT_EQ(12, told[2]);
    EXPECT_EQ(100, told.back());
    for (const int percent : told) EXPECT_TRUE(percent >= 1 && percent <= 100);
    const size_t count = told.size();
    VectorizeImage(image, {VectorizeMode::outlines, 0, 0}, {}, tell);
    EXPECT_EQ(count, told.size()) << "outlines are quick and say nothing";
}

TEST(SkeletonPaths, ATailBackAlongThePathIsCut) {
    PixelPath path;
    for (int x = 0; x < 40; ++x) path.push_back({x, 10});
    for (int x = 39; x >= 30; --x) path.push_back({x, 12});
    for (int x = 31; x <= 36; ++x) path.push_back({x, 11});
    const PixelPath whole(path.begin(), path.begin() + 40);
    CutFoldedTails(path);
    EXPECT_LT(path.size(), 52u) << "the fold of back and forth beside the stroke";
    ASSERT_GE(path.size(), 40u);
    EXPECT_TRUE(std::equal(whole.begin(), whole.end(), path.begin()));
    PixelPath straight = whole;
    CutFoldedTails(straight);
    EXPECT_EQ(whole, straight);
}

TEST(SkeletonPaths, OfTwoStrokesSideBySideTheShorterGoes) {
    PixelPath longer, beside, meeting, apart;
    for (int x = 0; x < 60; ++x) longer.push_back({x, 0});
    for (int x = 10; x < 50; ++x) beside.push_back({x, 2});
    for (int x = 0; x < 40; ++x) meeting.push_back({x, 2});
    for (int x = 10; x < 50; ++x) apart.push_back({x, 3});
    const std::vector<PixelPath> paths{beside, longer, meeting, apart};
    EXPECT_EQ((std::vector<PixelPath>{longer, meeting, apart}), DropCoveredPaths(paths));
}

TEST(Evening, StaysWithinAPixelAndRoundsWhatIsRound) {
    const double tolerance = EveningTolerance(240, 10);
    EXPECT_EQ(1, tolerance);
    const auto rings = outlines(inkOf(disc(60, 40)));
    for (const PixelPath& ring : rings) {
        const auto line = EvenPath(ring, true, tolerance);
        const double radius = std::hypot(ring[0].x - 70, ring[0].y - 70);
        for (const PixelPoint p : ring) EXPECT_LT(toLine({double(p.x), double(p.y)}, line, true), 1.3);
        double sharpest = 0;
        for (size_t i = 0; i < line.size(); ++i) {
            const PathPoint a = line[i], b = line[(i + 1) % line.size()], c = line[(i + 2) % line.size()];
            EXPECT_NEAR(radius, std::hypot(b.x - 70, b.y - 70), 1.6);
            const double turn = std::abs(std::remainder(
                std::atan2(c.y - b.y, c.x - b.x) - std::atan2(b.y - a.y, b.x - a.x), 2 * M_PI));
            sharpest = std::max(sharpest, turn);
        }
        EXPECT_LT(sharpest, 0.45) << "stairs turn by 0.79";
    }
}

TEST(Evening, KeepsCornersEndsAndSpecks) {
    const PixelPath square{{0, 0}, {30, 0}, {30, 20}, {0, 20}};
    EXPECT_EQ(4u, EvenPath(square, true, 1).size());
    const PixelPath bend{{0, 0}, {100, 0}, {190, 40}};
    EXPECT_GT(EvenPath(bend, false, 1).size(), 4u) << "a turn of 24 degrees is rounded";
    for (const PathPoint p : EvenPath(bend, false, 1))
        EXPECT_LT(toLine(p, {{0, 0}, {100, 0}, {190, 40}}, false), 0.9);
    PixelPath stairs;
    for (int x = 0; x <= 60; ++x) stairs.push_back({x, x / 3});
    const auto line = EvenPath(stairs, false, 1);
    EXPECT_EQ(2u, line.size()) << "a slope is one edge";
    EXPECT_EQ(60, line.back().x);
    EXPECT_EQ(stairs.size(), EvenPath(stairs, false, 0).size());
    EXPECT_NEAR(0.25, EveningTolerance(4, 10), 1e-12) << "specks keep their shape";
    EXPECT_EQ(0, EveningTolerance(100, 0));
}
