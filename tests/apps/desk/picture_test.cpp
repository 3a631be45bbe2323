// The painter: how much ink strokes and areas leave, and that parts of a picture are what the whole would be.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "apps/desk/raster_band.h"

namespace desktest {
namespace {

using desk::RasterBand;
using Point = RasterBand::Point;

constexpr int kWide = 160, kHigh = 120;

// Black paper; the ink is white, so that pixels count what covers them.
struct Paper {
    std::vector<std::uint32_t> pixels = std::vector<std::uint32_t>(kWide * kHigh, 0xFF000000);
    double ink() const {
        double sum = 0;
        for (const std::uint32_t pixel : pixels) sum += (pixel & 0xFF) / 255.0;
        return sum;
    }
    double at(int x, int y) const { return (pixels[size_t(y * kWide + x)] & 0xFF) / 255.0; }
    // Calls `paint` with bands of the given size that together make the whole.
    template <class Paint> void inBands(int wide, int high, Paint paint) {
        for (int top = 0; top < kHigh; top += high)
            for (int left = 0; left < kWide; left += wide) {
                RasterBand band(pixels.data(), kWide,
                                {left, std::min(left + wide, kWide), top, std::min(top + high, kHigh)});
                band.setInk(0xFFFFFF, 255);
                paint(band);
            }
    }
    template <class Paint> void whole(Paint paint) { inBands(kWide, kHigh, paint); }
};

TEST(RasterBand, AreasLeaveAsMuchInkAsTheyAreLarge) {
    struct Row {
        const char* what;
        std::vector<std::vector<Point>> loops;
        bool oddEven;
        double area;
    };
    const Row rows[] = {
        {"a square between pixels",
         {{{10.25, 10.5}, {20.75, 10.5}, {20.75, 30.25}, {10.25, 30.25}}},
         true,
         207.375},
        {"a triangle", {{{5, 5}, {95.5, 20.25}, {40, 100}}}, true, 4031.875},
        {"a sliver", {{{10, 10.1}, {150, 10.3}, {150, 10.4}, {10, 10.2}}}, false, 14},
        {"a hole",
         {{{10, 10}, {50, 10}, {50, 50}, {10, 50}}, {{20, 20}, {40, 20}, {40, 40}, {20, 40}}},
         true,
         1200},
        {"no hole",
         {{{10, 10}, {50, 10}, {50, 50}, {10, 50}}, {{20, 20}, {40, 20}, {40, 40}, {20, 40}}},
         false,
         1600},
        {"cut on all sides", {{{-1e6, -1e6}, {1e6, -1e6}, {1e6, 1e6}, {-1e6, 1e6}}}, true, kWide * kHigh},
        {"cut to the left", {{{-50, 20}, {30, 20}, {30, 60}, {-50, 60}}}, true, 1200},
        {"cut to the right", {{{100, 20}, {1e9, 20}, {1e9, 60}, {100, 60}}}, true, 2400}};
    for (const Row& row : rows) {
        Paper paper;
        paper.whole([&](RasterBand& band) {
            for (const auto& loop : row.loops) band.contour(loop);
            band.fill(row.oddEven);
        });
        EXPECT_NEAR(paper.ink(), row.area, 0.01 * row.area + 0.5) << row.what;
    }
}

TEST(RasterBand, LinesLeaveTheirLengthTimesTheirWidth) {
    for (int i = 0; i < 36; ++i) {
        const double turn = i * M_PI / 18, x = 50 * std::cos(turn), y = 50 * std::sin(turn);
        const Point from{80.3 - x, 60.2 - y}, to{80.3 + x, 60.2 + y};
        Paper thin, wide;
        thin.whole([&](RasterBand& band) { band.thinLine(from, to); });
        EXPECT_NEAR(thin.ink(), 100, 2) << i * 10 << " degrees";
        const Point path[] = {from, to};
        wide.whole([&](RasterBand& band) { band.wideLine(path, 6); });
        EXPECT_NEAR(wide.ink(), 600 + M_PI * 9, 6) << i * 10 << " degrees";
    }
}

// A path around a corner doesn't cover the place where its pieces meet twice, and leaves none out.
TEST(RasterBand, WideCornersAreCoveredOnce) {
    const Point path[] = {{20, 20}, {100, 20}, {100, 90}};
    Paper paper;
    paper.whole([&](RasterBand& band) { band.wideLine(path, 10); });
    // Two strips that share a square of 5 by 5 at the inner side, and round parts: two half discs, a quarter
    // one.
    EXPECT_NEAR(paper.ink(), 800 + 700 - 25 + M_PI * 25 + M_PI * 25 / 4, 6);
    EXPECT_EQ(paper.at(98, 22), 1);
    EXPECT_EQ(paper.at(102, 18), 1);
}

TEST(RasterBand, LevelAndUprightLinesAreSharpAndMeetInTheirCorners) {
    for (const double part : {0.1, 0.4, 0.6, 0.9}) {
        const double low = 20 + part, high = 60 + part;
        const Point corners[] = {{low, low}, {high, low}, {high, high}, {low, high}};
        Paper paper;
        paper.whole([&](RasterBand& band) {
            for (int i = 0; i < 4; ++i) band.thinLine(corners[i], corners[(i + 1) % 4]);
        });
        EXPECT_EQ(paper.ink(), 160) << part; // a frame of 41 by 41 pixels, all of them white
        EXPECT_EQ(paper.at(20, 20), 1) << part;
        EXPECT_EQ(paper.at(60, 60), 1) << part;
    }
}

TEST(RasterBand, BandsGiveThePixelsOfTheWhole) {
    std::mt19937 random(41);
    std::uniform_real_distribution<double> near(-40, 200), far(-1e7, 1e7), weight(1, 20);
    const auto place = [&](int i) {
        return i % 7 == 0 ? Point{far(random), far(random)} : Point{near(random), near(random)};
    };
    std::vector<Point> points;
    std::vector<double> widths;
    for (int i = 0; i < 400; ++i) points.push_back(place(i)), widths.push_back(weight(random));
    const auto paint = [&](RasterBand& band) {
        for (size_t i = 0; i + 4 <= points.size(); i += 4) {
            band.setInk(std::uint32_t(i * 40503) & 0xFFFFFF, i % 3 ? 255 : 120);
            const std::span<const Point> four(&points[i], 4);
            if (i % 12 == 0)
                band.contour(four), band.fill(i % 24 == 0);
            else if (i % 12 == 4)
                band.wideLine(four, widths[i]);
            else
                for (int k = 0; k < 3; ++k) band.thinLine(four[k], four[k + 1]);
        }
    };
    Paper whole, rows, tiles;
    whole.whole(paint);
    rows.inBands(kWide, 17, paint);
    tiles.inBands(23, 31, paint);
    EXPECT_EQ(whole.pixels, rows.pixels);
    size_t off = 0; // sums of areas begin anew at a tile's left edge: a share may be rounded the other way
    for (size_t i = 0; i < whole.pixels.size(); ++i)
        for (int shift = 0; shift < 24; shift += 8)
            off += std::abs(int(whole.pixels[i] >> shift & 255) - int(tiles.pixels[i] >> shift & 255)) > 3;
    EXPECT_EQ(off, 0u);
}

} // namespace
} // namespace desktest
