// Patterns and where their dashes fall.
#include "host/view/dashes.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {
constexpr std::size_t kMostDashes = 20000;
}

DashPattern DashPattern::scaled(std::span<const double> lengths, double scale) {
    DashPattern pattern;
    if (!(scale > 0) || !std::isfinite(scale)) return pattern;
    bool gap = false;
    for (double length : lengths) {
        const double size = length * scale;
        if (!std::isfinite(size)) return {};
        gap |= size < 0;
        pattern.lengths.push_back(size);
        pattern.total += std::fabs(size);
    }
    return gap && std::isfinite(pattern.total) ? pattern : DashPattern{};
}

std::vector<Dash> layDashes(const DashPattern& pattern, double length) {
    const std::vector<Dash> full{{0, length}};
    if (pattern.isContinuous() || !(length > 0)) return full;
    const double first = std::max(pattern.lengths.front(), 0.0);
    // The last repeat is followed by the first dash once more, so that both ends are drawn.
    const double repeats = std::floor((length - first) / pattern.total * (1 + 1e-12));
    if (!(repeats >= 1) || repeats * static_cast<double>(pattern.lengths.size()) > double(kMostDashes))
        return full;
    const double spare = (length - repeats * pattern.total - first) / 2;
    std::vector<Dash> dashes;
    double at = spare;
    const auto count = static_cast<std::size_t>(repeats);
    for (std::size_t repeat = 0; repeat < count; ++repeat) {
        for (double piece : pattern.lengths) {
            if (piece >= 0) dashes.push_back({at, at + piece});
            at += std::fabs(piece);
        }
    }
    dashes.push_back({at, length});
    dashes.front().from = 0;
    return dashes;
}

std::vector<double> pathDistances(std::span<const AcGePoint3d> points) {
    std::vector<double> at(points.size(), 0.0);
    for (std::size_t i = 1; i < points.size(); ++i) at[i] = at[i - 1] + points[i].distanceTo(points[i - 1]);
    return at;
}

} // namespace host
