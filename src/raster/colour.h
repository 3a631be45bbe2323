// Images in colour: what files hold turned into plain three-channel images, grey values, and the two
// reductions that people choose before an image is traced.
#pragma once
#include <span>

#include "raster/image.h"

namespace corvane::raster {

// An image as bitmaps hold it. Rows from the top, `stride` bytes apart; 1, 4 and 8 bits a pixel are indices
// into the palette, the first pixel in the highest bits; 16 are 5-6-5; 24 and 32 blue, green, red (and
// alpha).
struct Bitmap {
    std::int32_t rows = 0, cols = 0, bits = 0;
    std::size_t stride = 0;
    std::span<const Byte> data;
    std::span<const Byte> palette; // blue, green, red a colour; without one a ramp of greys
};
// The image in three channels; indices beyond the palette take its last colour, alpha is dropped. Empty for
// any other depth, for sides below 1 or above kLongestSide, and for a stride or data too short.
RasterImage ToColour(const Bitmap& bitmap);

// A grey image of a colour one: (29 B + 150 G + 77 R + 128) / 256. Grey images come back as they are.
RasterImage ToGrey(const RasterImage& image);

// In place, on an image of three channels: white where R + G + B is above three times the threshold (held at
// 5..250), else black. A result that is black at five or more of eight places on its rim is turned over, so
// that a drawing on a dark ground becomes dark on light.
void ReduceToBlackAndWhite(RasterImage& image, int threshold);

// In place, on an image of three channels: hue, saturation and value snap to steps that widen with `step` (1
// or more). The outermost rows and columns keep their colours. Hues that snap up to 360 degrees become black.
void ReduceColours(RasterImage& image, int step);

// The regions of one colour: black where a pixel differs from any of its four neighbours, else white. Grey,
// one channel; empty for an image of less than two rows or columns.
RasterImage FlatRegions(const RasterImage& image);

} // namespace corvane::raster
