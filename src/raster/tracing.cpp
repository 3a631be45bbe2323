// The growth of paths over what is left of a skeleton.
#include "raster/tracing.h"

#include <algorithm>

namespace corvane::raster {

bool Tracer::step(PixelPoint& current) {
    for (const PixelPoint towards : kNeighbours) {
        const PixelPoint next{current.x + towards.x, current.y + towards.y};
        if (!*left_.at(next)) continue;
        current = next;
        return true;
    }
    return false;
}

bool Tracer::leap(PixelPoint& current) {
    constexpr std::int64_t kFarthest = kReach * kReach;
    std::int64_t nearest = kFarthest + 1;
    PixelPoint found;
    for (std::int32_t dy = -kReach; dy <= kReach; ++dy) {
        const Byte* row = left_.at({current.x, current.y + dy});
        for (std::int32_t dx = -kReach; dx <= kReach; ++dx) {
            if (!row[dx] || dx * dx + dy * dy >= nearest) continue;
            nearest = dx * dx + dy * dy;
            found = {current.x + dx, current.y + dy};
        }
    }
    if (nearest > kFarthest) return false;
    current = found;
    return true;
}

void Tracer::grow(PixelPoint from, PixelPath& path) {
    while (step(from) || leap(from)) {
        take(from);
        path.push_back(from);
    }
}

std::vector<PixelPath> Tracer::trace(std::span<const PixelPoint> pixels) {
    if (pixels.empty()) return {};
    if (pixels.size() < 3) return {PixelPath(pixels.begin(), pixels.end())};
    for (const PixelPoint p : pixels) *left_.at(p) = 255;
    std::vector<PixelPath> paths;
    PixelPath backward;
    for (const PixelPoint start : pixels) {
        if (!*left_.at(start)) continue;
        take(start);
        PixelPath forward;
        grow(start, forward);
        backward.clear();
        grow(start, backward);
        PixelPath path(backward.rbegin(), backward.rend());
        path.push_back(start);
        path.insert(path.end(), forward.begin(), forward.end());
        paths.push_back(std::move(path));
    }
    return paths;
}

std::vector<PixelPath> TraceSkeleton(std::span<const PixelPoint> pixels) {
    PixelPoint low{kLongestSide, kLongestSide}, high{0, 0};
    for (const PixelPoint p : pixels) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    if (pixels.empty()) return {};
    // In its own box the skeleton keeps its order.
    std::vector<PixelPoint> moved(pixels.begin(), pixels.end());
    for (PixelPoint& p : moved) p = {p.x - low.x, p.y - low.y};
    std::vector<PixelPath> paths = Tracer(high.y - low.y + 1, high.x - low.x + 1).trace(moved);
    for (PixelPath& path : paths)
        for (PixelPoint& p : path) p = {p.x + low.x, p.y + low.y};
    return paths;
}

} // namespace corvane::raster
