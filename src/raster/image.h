// The values that the raster library works on: images as plain arrays, pixels, paths of pixels. No type of
// the host appears in this folder; the command that traces images into the drawing is in raster/vectorizing.
#pragma once
#include <compare>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane::raster {

using Byte = std::uint8_t;

// The longest side that a pixel's key has room for.
inline constexpr std::int32_t kLongestSide = 65536;

enum class PixelKind { grey = 0, bgr = 1, bgra = 2 };

// Rows from the top, one after the other without gaps. Masks are grey images: 0 is background, anything else
// (255 where this library writes them) foreground.
struct RasterImage {
    std::int32_t rows = 0, cols = 0;
    PixelKind kind = PixelKind::grey;
    std::vector<Byte> data;

    RasterImage() = default;
    RasterImage(std::int32_t rowCount, std::int32_t colCount, PixelKind pixelKind = PixelKind::grey,
                Byte value = 0)
        : rows(rowCount), cols(colCount), kind(pixelKind) {
        data.assign(std::size_t(rows) * stride(), value);
    }

    bool empty() const { return data.empty() || rows < 1 || cols < 1; }
    std::size_t pixelSize() const { return kind == PixelKind::grey ? 1 : kind == PixelKind::bgr ? 3 : 4; }
    std::size_t stride() const { return std::size_t(cols) * pixelSize(); }
    std::size_t pixels() const { return std::size_t(rows) * std::size_t(cols); }
    Byte* row(std::int32_t y) { return data.data() + std::size_t(y) * stride(); }
    const Byte* row(std::int32_t y) const { return data.data() + std::size_t(y) * stride(); }
    bool operator==(const RasterImage&) const = default;
};

// Column and row; y grows downward.
struct PixelPoint {
    std::int32_t x = 0, y = 0;
    bool operator==(const PixelPoint&) const = default;
};
using PixelPath = std::vector<PixelPoint>;

// Orders pixels by rows.
inline std::uint32_t PixelKey(PixelPoint p) {
    return std::uint32_t(p.y) << 16 | (std::uint32_t(p.x) & 0xFFFF);
}
inline std::int64_t SquaredDistance(PixelPoint a, PixelPoint b) {
    const std::int64_t dx = a.x - b.x, dy = a.y - b.y;
    return dx * dx + dy * dy;
}

// The eight neighbours row by row, in the order in which floods and traces look at them.
inline constexpr PixelPoint kNeighbours[8] = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0},
                                              {1, 0},   {-1, 1}, {0, 1},  {1, 1}};

// A mask with a frame of background round it, so that neighbours are read without asking where the image
// ends: one number an offset from the pixel's place.
struct FramedMask {
    std::int32_t rows = 0, cols = 0, frame = 1;
    std::ptrdiff_t stride = 0;
    std::vector<Byte> cells;

    FramedMask(std::int32_t rowCount, std::int32_t colCount, std::int32_t frameWidth = 1)
        : rows(rowCount), cols(colCount), frame(frameWidth), stride(colCount + 2 * frameWidth),
          cells(std::size_t(rowCount + 2 * frameWidth) * std::size_t(stride)) {}
    // Foreground is 255.
    explicit FramedMask(const RasterImage& mask) : FramedMask(mask.rows, mask.cols) {
        for (std::int32_t y = 0; y < rows; ++y) {
            const Byte* from = mask.row(y);
            Byte* to = at({0, y});
            for (std::int32_t x = 0; x < cols; ++x) to[x] = from[x] ? 255 : 0;
        }
    }
    Byte* at(PixelPoint p) { return cells.data() + (p.y + frame) * stride + p.x + frame; }
    const Byte* at(PixelPoint p) const { return cells.data() + (p.y + frame) * stride + p.x + frame; }
    std::ptrdiff_t offset(PixelPoint step) const { return step.y * stride + step.x; }
};

} // namespace corvane::raster
