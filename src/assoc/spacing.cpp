// The spacing functions, and their values in drawings.
#include "assoc/spacing.h"

#include <cmath>
#include <numbers>

#include "core/unit_cubic.h"

namespace corvane {
namespace {

constexpr int kHalvings = 32;
constexpr double kShortestSine = 0.05;
constexpr double kStoredUnit = 10000;
constexpr size_t kStoredOrder[] = {1, 2, 3, 4, 0, 5};

double accelerated(double t, int accel) {
    const double a = std::clamp(accel, -kMostAcceleration, kMostAcceleration) / double(kMostAcceleration);
    return a >= 0 ? std::pow(t, 2 * a + 1) : 1 - std::pow(1 - t, 1 - 2 * a);
}

double lengthOf(double d4) { return std::max(UnitShare(d4), kShortestSine); }
double heightOf(double d5) { return UnitShare(d5) - 0.5; }

} // namespace

const wchar_t* SpacingLabel(int kind) {
    return kind >= 0 && kind < kSpacingKinds ? kSpacingLabels[kind] : L"未知";
}

double BlendSpacing(double t, int kind, int accel, const std::array<double, 6>& d) {
    t = UnitShare(t);
    const double a = UnitShare(d[0]), b = UnitShare(d[5]);
    switch (kind) {
    case kLinearSpacing: return a + (b - a) * t;
    case kAccelerated: return accelerated(t, accel);
    case kSineSpacing:
        return UnitShare(a + std::sin(2 * std::numbers::pi * t / lengthOf(d[4])) * heightOf(d[5]));
    case kSmoothSpacing: return a + (b - a) * (3 - 2 * t) * t * t;
    case kBezierSpacing: {
        const double u = UnitCubicParameter(t, UnitShare(d[1]), UnitShare(d[3]), kHalvings);
        return UnitShare(UnitCubic(u, d[0], d[2], d[4], d[5]));
    }
    default: return t;
    }
}

double CopyShare(int index, int count, const SpacingFunction& spacing) {
    return BlendSpacing((index + 1.0) / (count + 1.0), spacing);
}

double SineLength(const SpacingFunction& spacing) { return lengthOf(spacing.d[4]); }
double SineHeight(const SpacingFunction& spacing) { return heightOf(spacing.d[5]); }

StoredShares ToStored(const std::array<double, 6>& d) {
    StoredShares stored;
    for (size_t i = 0; i < stored.size(); ++i)
        stored[i] = short(std::floor(UnitShare(d[kStoredOrder[i]]) * kStoredUnit + 0.5));
    return stored;
}

std::array<double, 6> FromStored(const StoredShares& stored) {
    std::array<double, 6> d{};
    for (size_t i = 0; i < stored.size(); ++i)
        d[kStoredOrder[i]] = std::clamp<double>(stored[i], 0, kStoredUnit) / kStoredUnit;
    return d;
}

} // namespace corvane
