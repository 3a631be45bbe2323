// Placements from tangents and point pairs.
#include "aids/insert/placement.h"

#include <cmath>

namespace corvane {
namespace {
constexpr double kNoLength = 1e-9;
}

std::optional<Placement> AcrossCurve(const AcGePoint3d& onCurve, const AcGeVector3d& tangent) {
    if (std::hypot(tangent.x, tangent.y) < kNoLength) return std::nullopt;
    return Placement{onCurve, std::atan2(tangent.y, tangent.x), 1};
}

std::optional<Placement> ByTwoPoints(const AcGePoint3d& from, const AcGePoint3d& to, double blockWidth) {
    const AcGeVector3d along = to - from;
    const double length = std::hypot(along.x, along.y);
    if (length < kNoLength) return std::nullopt;
    return Placement{from, std::atan2(along.y, along.x), blockWidth > kNoLength ? length / blockWidth : 1};
}

} // namespace corvane
