// Running totals, and the axes of the disc.
#include "scatter/random/chain.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace corvane::scatter {
namespace {

// Squared lengths below this have no direction.
AcGeVector3d unitOr(const AcGeVector3d& v, const AcGeVector3d& otherwise) {
    return v.lengthSqrd() < 1e-12 ? otherwise : v / v.length();
}

} // namespace

void CurveChain::Add(size_t curve, double from, double to) {
    const auto [start, end] = std::minmax(from, to);
    if (!(end - start > 1e-9) || !std::isfinite(end - start)) return;
    paths_.push_back({curve, start, end, end - start});
    reached_.push_back((reached_.empty() ? 0 : reached_.back()) + (end - start));
}

ChainPlace CurveChain::At(double distance) const {
    const auto found = std::lower_bound(reached_.begin(), reached_.end(), distance);
    const size_t index = std::min(size_t(found - reached_.begin()), paths_.size() - 1);
    const ScatterPath& path = paths_[index];
    const double before = index == 0 ? 0 : reached_[index - 1];
    return {index, std::clamp(path.start + (distance - before), path.start, path.end)};
}

AcGePoint3d AcrossTangent(const AcGePoint3d& centre, const AcGeVector3d& tangent, double radius, double u1,
                          double u2) {
    const AcGeVector3d t = unitOr(tangent, AcGeVector3d::kXAxis);
    AcGeVector3d side = t.crossProduct(AcGeVector3d::kZAxis);
    if (side.lengthSqrd() < 1e-12) side = t.crossProduct(AcGeVector3d::kXAxis);
    side = unitOr(side, AcGeVector3d::kYAxis);
    const AcGeVector3d up = unitOr(t.crossProduct(side), AcGeVector3d::kZAxis);
    const double r = std::sqrt(u1) * radius, a = 2 * std::numbers::pi * u2;
    return centre + side * (r * std::cos(a)) + up * (r * std::sin(a));
}

} // namespace corvane::scatter
