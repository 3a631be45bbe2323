// Grey values, masks and colour reductions: worked numbers, and plain twins for what is computed by
// shortcuts.
#include <gtest/gtest.h>

#include <cmath>

#include "raster_pictures.h"

using namespace corvane::raster;

namespace {

RasterImage greyImage(int rows, int cols, std::vector<Byte> values) {
    RasterImage image(rows, cols);
    image.data = std::move(values);
    return image;
}
RasterImage noise(unsigned seed, int rows, int cols) {
    std::mt19937 random(seed);
    RasterImage image(rows, cols);
    for (Byte& value : image.data) value = Byte(random() % 256);
    return image;
}
RasterImage onePixel(Byte blue, Byte green, Byte red) {
    RasterImage image(3, 3, PixelKind::bgr);
    for (size_t i = 0; i < 27; i += 3)
        image.data[i] = blue, image.data[i + 1] = green, image.data[i + 2] = red;
    return image;
}
std::vector<int> middleOf(const RasterImage& image) {
    const Byte* p = image.row(1) + 3;
    return {p[2], p[1], p[0]};
}

double localGaussian(const RasterImage& grey, int x, int y, int block) {
    const double sigma = block / 3.0;
    double sum = 0, whole = 0;
    for (int dy = -(block / 2); dy <= block / 2; ++dy)
        for (int dx = -(block / 2); dx <= block / 2; ++dx) {
            const double weight = std::exp(-(dx * dx + dy * dy) / (2 * sigma * sigma));
            whole += weight;
            if (x + dx >= 0 && y + dy >= 0 && x + dx < grey.cols && y + dy < grey.rows)
                sum += weight * grey.row(y + dy)[x + dx];
        }
    return sum / whole;
}

} // namespace

TEST(RasterColour, EveryDepthGivesTheSameThreeChannels) {
    const std::vector<Byte> palette{10, 20, 30, 40, 50, 60, 70, 80, 90};
    const auto read = [&](int bits, size_t stride, std::vector<Byte> data, bool withPalette, int cols) {
        return ToColour({1, cols, bits, stride, data,
                         withPalette ? std::span<const Byte>(palette) : std::span<const Byte>()})
            .data;
    };
    using Bytes = std::vector<Byte>;
    EXPECT_EQ((Bytes{40, 50, 60, 10, 20, 30, 40, 50, 60}), read(1, 4, {0b10100000, 9, 9, 9}, true, 3));
    EXPECT_EQ((Bytes{70, 80, 90, 10, 20, 30}), read(4, 1, {0x20}, true, 2)) << "the high half first";
    EXPECT_EQ((Bytes{70, 80, 90}), read(8, 1, {200}, true, 1)) << "beyond the palette";
    EXPECT_EQ((Bytes{85, 85, 85}), read(4, 1, {0x50}, false, 1)) << "a ramp of greys";
    EXPECT_EQ((Bytes{0, 0, 255, 255, 125, 0}), read(16, 4, {0x00, 0xF8, 0xFF, 0x03}, false, 2));
    EXPECT_EQ((Bytes{1, 2, 3}), read(32, 4, {1, 2, 3, 77}, false, 1));
    EXPECT_TRUE(read(24, 2, {1, 2, 3}, false, 1).empty()) << "rows too short";
    EXPECT_TRUE(read(7, 8, {1, 2, 3}, false, 1).empty());
    EXPECT_EQ(Byte((29 * 10 + 150 * 20 + 77 * 30 + 128) / 256), ToGrey(onePixel(10, 20, 30)).data[0]);
}

TEST(RasterColour, DarkGroundsAreTurnedOver) {
    RasterImage image = onePixel(100, 100, 100);
    std::fill_n(image.row(1) + 3, 3, Byte(200));
    ReduceToBlackAndWhite(image, 90);
    EXPECT_EQ((std::vector<int>{255, 255, 255}), middleOf(image)) << "all are above 90";
    image = onePixel(100, 100, 100);
    std::fill_n(image.row(1) + 3, 3, Byte(200));
    ReduceToBlackAndWhite(image, 128);
    EXPECT_EQ((std::vector<int>{0, 0, 0}), middleOf(image)) << "light on dark becomes dark on light";
    EXPECT_EQ(255, image.data[0]);
    image = onePixel(2, 2, 2);
    ReduceToBlackAndWhite(image, 1);
    EXPECT_EQ(255, image.data[0]) << "thresholds start at 5: black, then turned over";
}

TEST(RasterColour, ColoursSnapToSteps) {
    const auto reduced = [](Byte red, Byte green, Byte blue, int step) {
        RasterImage image = onePixel(blue, green, red);
        ReduceColours(image, step);
        EXPECT_EQ(blue, image.data[0]) << "the rim stays";
        return middleOf(image);
    };
    // Step 2: values and saturations of 0, 50 or 100 percent; hues of 0, 180 or 360 degrees.
    EXPECT_EQ((std::vector<int>{255, 255, 255}), reduced(220, 220, 220, 2));
    EXPECT_EQ((std::vector<int>{127, 127, 127}), reduced(100, 110, 105, 2));
    EXPECT_EQ((std::vector<int>{255, 0, 0}), reduced(250, 10, 10, 2));
    EXPECT_EQ((std::vector<int>{0, 255, 255}), reduced(20, 200, 250, 2)) << "193 degrees are nearest 180";
    EXPECT_EQ((std::vector<int>{0, 0, 0}), reduced(250, 10, 60, 2))
        << "348 degrees snap up to the full circle";
    // Step 3 snaps values by 38 percent: white would become 1.14 and is held.
    EXPECT_EQ((std::vector<int>{255, 255, 255}), reduced(255, 255, 255, 3));
    // Step 1: one hue, values by 85 percent.
    EXPECT_EQ((std::vector<int>{216, 0, 0}), reduced(0, 230, 0, 1));
}

TEST(RasterColour, FlatRegionsStopBesideEveryChange) {
    RasterImage image(3, 5, PixelKind::bgr, 9);
    image.row(1)[3 * 3] = 10;
    EXPECT_EQ(support::drawn({"###.#", "##...", "###.#"}), FlatRegions(image));
    EXPECT_TRUE(FlatRegions(RasterImage(1, 5, PixelKind::bgr)).empty());
}

TEST(RasterThresholds, OtsuPartsTwoClassesAtTheFirstBestValue) {
    EXPECT_EQ(10, OtsuThreshold(greyImage(1, 6, {10, 10, 10, 200, 200, 200})));
    // Between 20 and 90, by hand: at 20 the classes are (10, 20) and (90, 100), means 15 and 95.
    EXPECT_EQ(20, OtsuThreshold(greyImage(1, 4, {10, 20, 90, 100})));
    EXPECT_EQ(0, OtsuThreshold(RasterImage(4, 4, PixelKind::grey, 255)));
    EXPECT_EQ(0, OtsuThreshold(RasterImage(4, 4, PixelKind::grey, 0)));
    for (unsigned seed = 1; seed <= 4; ++seed) {
        const RasterImage grey = noise(seed, 20, 30);
        double best = 0;
        int at = 0;
        for (int t = 0; t < 256; ++t) {
            double low = 0, lowSum = 0, highSum = 0;
            for (const Byte v : grey.data) v <= t ? (low += 1, lowSum += v) : highSum += v;
            const double high = double(grey.pixels()) - low;
            if (low == 0 || high == 0) continue;
            const double between = low * high * std::pow(lowSum / low - highSum / high, 2);
            if (between > best * (1 + 1e-12)) best = between, at = t;
        }
        EXPECT_EQ(at, OtsuThreshold(grey)) << seed;
    }
}

TEST(RasterThresholds, ALocalThresholdIsThatOfTheWholeBlock) {
    for (unsigned seed = 1; seed <= 3; ++seed) {
        RasterImage grey = noise(seed, 31, 24);
        for (int y = 0; y < 12; ++y)
            std::fill_n(grey.row(y), 24, Byte(seed * 40)); // flat parts decide by offset
        for (const double offset : {-2.0, 5.0, 0.5}) {
            const RasterImage low = AdaptiveThreshold(grey, 255, LocalMean::gaussian, LocalSense::atMost, 15,
                                                      offset),
                              high = AdaptiveThreshold(grey, 255, LocalMean::gaussian, LocalSense::above, 15,
                                                       offset);
            for (int y = 0; y < 31; ++y)
                for (int x = 0; x < 24; ++x) {
                    const bool above = grey.row(y)[x] > int(localGaussian(grey, x, y, 15) - offset + 0.5);
                    ASSERT_EQ(above ? 0 : 255, low.row(y)[x]) << x << ' ' << y;
                    ASSERT_EQ(above ? 255 : 0, high.row(y)[x]);
                }
        }
    }
    const RasterImage box =
        AdaptiveThreshold(greyImage(1, 3, {0, 90, 0}), 7, LocalMean::box, LocalSense::above, 3, 0);
    EXPECT_EQ((std::vector<Byte>{0, 7, 0}), box.data) << "means 45, 30 and 45";
}

TEST(RasterThresholds, ABlurKeepsFlatsAndRoundsEachPass) {
    EXPECT_EQ(RasterImage(5, 4, PixelKind::grey, 77),
              GaussianBlur(RasterImage(5, 4, PixelKind::grey, 77), 5, 1));
    RasterImage point(5, 5);
    point.row(2)[2] = 255;
    const RasterImage blurred = GaussianBlur(point, 3, 0.5);
    // Weights of 0.1065, 0.7870, 0.1065: across 27, 201, 27, then down.
    EXPECT_EQ(158, blurred.row(2)[2]);
    EXPECT_EQ(21, blurred.row(1)[2]);
    EXPECT_EQ(21, blurred.row(2)[1]);
    EXPECT_EQ(3, blurred.row(1)[1]);
    EXPECT_EQ(0, blurred.row(0)[2]);
    EXPECT_EQ(blurred, GaussianBlur(point, 2, 0.5)) << "sizes are made odd, three at least";
}
