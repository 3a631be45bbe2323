// Masks to try the raster library on: drawn as text, at random, and from real image files.
#pragma once
#include <random>
#include <string>

#include "host/picture/images.h"
#include "raster/colour.h"
#include "raster/threshold.h"

namespace support {

using corvane::raster::RasterImage;

// '#' is foreground.
inline RasterImage drawn(const std::vector<std::string>& rows) {
    RasterImage mask(int(rows.size()), int(rows.at(0).size()));
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x) mask.row(y)[x] = rows[size_t(y)][size_t(x)] == '#' ? 255 : 0;
    return mask;
}

// Strokes and blots that touch and cross, up to the image's rim.
inline RasterImage scribbled(unsigned seed, int cols, int rows) {
    std::mt19937 random(seed);
    const auto below = [&](int n) { return int(random() % unsigned(n)); };
    RasterImage mask(rows, cols);
    for (int stroke = 0; stroke < 12; ++stroke) {
        double x = below(cols), y = below(rows), turn = below(628) / 100.0;
        const int radius = below(4), steps = 10 + below(60);
        for (int i = 0; i < steps; ++i) {
            for (int dy = -radius; dy <= radius; ++dy)
                for (int dx = -radius; dx <= radius; ++dx)
                    if (const int px = int(x) + dx, py = int(y) + dy;
                        px >= 0 && py >= 0 && px < cols && py < rows && dx * dx + dy * dy <= radius * radius)
                        mask.row(py)[px] = 255;
            turn += (below(100) - 50) / 100.0;
            x += std::cos(turn), y += std::sin(turn);
        }
    }
    return mask;
}
inline RasterImage speckled(unsigned seed, int cols, int rows, unsigned percent) {
    std::mt19937 random(seed);
    RasterImage mask(rows, cols);
    for (auto& cell : mask.data) cell = random() % 100 < percent ? 255 : 0;
    return mask;
}

// A file of tests/data/images, in colour.
inline RasterImage photographed(const std::string& name) {
    const host::LoadedImage file = host::loadImage(CORVANE_TEST_DATA "/images/" + name);
    RasterImage image(file.height, file.width, corvane::raster::PixelKind::bgr);
    for (size_t i = 0; i < image.pixels(); ++i)
        for (size_t k = 0; k < 3; ++k) image.data[3 * i + k] = file.rgba[4 * i + 2 - k];
    return image;
}

inline std::vector<RasterImage> manyMasks() {
    std::vector<RasterImage> masks{drawn({"#"}), drawn({"###.##"}), speckled(1, 7, 2, 50)};
    for (unsigned seed = 1; seed <= 12; ++seed) masks.push_back(scribbled(seed, 90, 70));
    for (unsigned percent : {20u, 50u, 80u, 95u}) masks.push_back(speckled(percent, 61, 43, percent));
    for (const char* name : {"horse-silhouette.png", "handwriting-on-paper.png"})
        masks.push_back(corvane::raster::MaskOf(photographed(name), 0));
    return masks;
}

} // namespace support
