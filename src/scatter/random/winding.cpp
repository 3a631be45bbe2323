// Strips of edges, and the count.
#include "scatter/random/winding.h"

#include <algorithm>
#include <cmath>

namespace corvane::scatter {

double SignedArea(std::span<const AcGePoint2d> polygon) {
    // From the first point, so that polygons far from the origin keep their digits.
    double twice = 0;
    for (size_t i = 1; i + 1 < polygon.size(); ++i) {
        const AcGeVector2d a = polygon[i] - polygon[0], b = polygon[i + 1] - polygon[0];
        twice += a.x * b.y - a.y * b.x;
    }
    return twice / 2;
}

WindingIndex::WindingIndex(std::vector<AcGePoint2d> polygon) : polygon_(std::move(polygon)) {
    if (polygon_.empty()) return;
    const auto [low, high] = std::minmax_element(polygon_.begin(), polygon_.end(),
                                                 [](const auto& a, const auto& b) { return a.y < b.y; });
    low_ = low->y;
    high_ = high->y;
    const size_t count = polygon_.size();
    // So many strips that tall edges don't fill them all: five entries an edge at most.
    double heights = 0;
    for (size_t i = 0; i < count; ++i) heights += std::abs(polygon_[(i + 1) % count].y - polygon_[i].y);
    const double fitting = heights > 0 ? 4 * double(count) * (high_ - low_) / heights : 1;
    strips_ = size_t(std::clamp(fitting, 1.0, double(count)));
    // Counting first, then filling, makes one array of all strips.
    first_.assign(strips_ + 1, 0);
    const auto eachStrip = [&](auto visit) {
        for (size_t i = 0; i < count; ++i) {
            const auto [from, to] = std::minmax(polygon_[i].y, polygon_[(i + 1) % count].y);
            for (size_t strip = stripOf(from); strip <= stripOf(to); ++strip) visit(strip, i);
        }
    };
    eachStrip([&](size_t strip, size_t) { ++first_[strip + 1]; });
    for (size_t i = 0; i < strips_; ++i) first_[i + 1] += first_[i];
    edges_.resize(first_[strips_]);
    std::vector<size_t> next(first_.begin(), first_.end() - 1);
    eachStrip([&](size_t strip, size_t edge) { edges_[next[strip]++] = std::uint32_t(edge); });
}

size_t WindingIndex::stripOf(double y) const {
    if (!(high_ > low_)) return 0;
    return std::min(size_t(std::max(0.0, (y - low_) / (high_ - low_)) * double(strips_)), strips_ - 1);
}

int WindingIndex::At(const AcGePoint2d& p) const {
    if (polygon_.empty() || !(p.y >= low_ && p.y <= high_)) return 0;
    const size_t strip = stripOf(p.y);
    int winding = 0;
    for (size_t k = first_[strip]; k < first_[strip + 1]; ++k) {
        const size_t i = edges_[k];
        const AcGePoint2d &a = polygon_[i], &b = polygon_[i + 1 == polygon_.size() ? 0 : i + 1];
        const double d = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
        if (a.y <= p.y)
            winding += b.y > p.y && d > 0;
        else
            winding -= b.y <= p.y && d <= 0;
    }
    return winding;
}

} // namespace corvane::scatter
