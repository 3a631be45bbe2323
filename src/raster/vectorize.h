// From an image to paths: the outlines of what is dark in it, or the centre lines of its strokes.
#pragma once
#include <functional>

#include "raster/image.h"

namespace corvane::raster {

enum class VectorizeMode { centreLines = 0, outlines = 1 };
enum class VectorizeFailure { none, unreadable, noMask };

struct VectorizeOptions {
    VectorizeMode mode = VectorizeMode::centreLines;
    int minVertices = 0; // paths of fewer points are left out
    int blurLevel = 0;   // of the grey image, 0 to 5
};
struct VectorizeResult {
    std::vector<PixelPath> paths; // outlines are closed; a centre line is where its last point is its first
    VectorizeFailure failure = VectorizeFailure::none;
};
// Percent done, told when it changes.
using VectorizeProgress = std::function<void(int percent)>;

// A mask that isn't empty is traced as it stands; otherwise the image gives one (MaskOf). Outlines that cover
// less than two square pixels are left out. An image without anything dark gives no paths and no failure.
// Progress is told for centre lines. Linear in the pixels but for sorting.
VectorizeResult VectorizeImage(const RasterImage& image, const VectorizeOptions& options,
                               const RasterImage& mask = {}, const VectorizeProgress& progress = {});

} // namespace corvane::raster
