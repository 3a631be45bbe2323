// The connected regions of a mask.
#pragma once
#include <span>

#include "raster/image.h"

namespace corvane::raster {

// The pixels of all regions in one array, region after region.
struct Components {
    std::vector<PixelPoint> pixels;
    std::vector<std::size_t> starts{0}; // where each region begins, and the end of the last

    std::size_t count() const { return starts.size() - 1; }
    std::span<const PixelPoint> operator[](std::size_t i) const {
        return std::span(pixels).subspan(starts[i], starts[i + 1] - starts[i]);
    }
};

// Regions whose pixels touch by an edge or a corner, the largest first, of equals the one met first by rows.
// Within a region the pixels stand in the order in which a flood from its first one meets them. Linear in the
// pixels.
Components FindComponents(const RasterImage& mask);

} // namespace corvane::raster
