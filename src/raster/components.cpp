// One flood a region.
#include "raster/components.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace corvane::raster {
namespace {

// Moves every pixel that hangs together with the last of `pixels` there, clearing it in the mask.
void flood(FramedMask& mask, const std::array<std::ptrdiff_t, 8>& steps, std::vector<PixelPoint>& pixels) {
    for (std::size_t next = pixels.size() - 1; next < pixels.size(); ++next) {
        const PixelPoint p = pixels[next];
        Byte* cell = mask.at(p);
        for (std::size_t k = 0; k < 8; ++k) {
            if (!cell[steps[k]]) continue;
            cell[steps[k]] = 0;
            pixels.push_back({p.x + kNeighbours[k].x, p.y + kNeighbours[k].y});
        }
    }
}

Components largestFirst(const Components& found) {
    std::vector<std::size_t> order(found.count());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return found[a].size() > found[b].size(); });
    Components sorted;
    sorted.pixels.reserve(found.pixels.size());
    sorted.starts.reserve(found.starts.size());
    for (const std::size_t i : order) {
        sorted.pixels.insert(sorted.pixels.end(), found[i].begin(), found[i].end());
        sorted.starts.push_back(sorted.pixels.size());
    }
    return sorted;
}

} // namespace

Components FindComponents(const RasterImage& mask) {
    Components found;
    if (mask.empty()) return found;
    FramedMask left(mask);
    std::array<std::ptrdiff_t, 8> steps{};
    for (std::size_t k = 0; k < 8; ++k) steps[k] = left.offset(kNeighbours[k]);
    for (std::int32_t y = 0; y < left.rows; ++y) {
        Byte* const row = left.at({0, y});
        Byte* const end = row + left.cols;
        for (Byte* cell = std::find(row, end, Byte(255)); cell != end;
             cell = std::find(cell, end, Byte(255))) {
            *cell = 0;
            found.pixels.push_back({std::int32_t(cell - row), y});
            flood(left, steps, found.pixels);
            found.starts.push_back(found.pixels.size());
        }
    }
    return largestFirst(found);
}

} // namespace corvane::raster
