// Handles of the spacing graph.
#include "assoc/spacing_graph_model.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

constexpr int kReach = 7;
constexpr double kBendAt = 0.5;

// The acceleration that leads through the value at the middle: the inverse of 0.5^(2a+1) and its mirror
// image.
int accelerationThrough(double value) {
    const double nearer = std::max(std::min(value, 1 - value), 1e-9);
    const double a = (std::log(nearer) / std::log(kBendAt) - 1) / 2 * (value > kBendAt ? -1 : 1);
    return int(std::lround(std::clamp(a, -1.0, 1.0) * kMostAcceleration));
}

PlacedHandle startOf(const SpacingFunction& f) { return {SpacingHandle::start, {0, UnitShare(f.d[0])}}; }
PlacedHandle endOf(const SpacingFunction& f) { return {SpacingHandle::end, {1, UnitShare(f.d[5])}}; }

} // namespace

std::vector<PlacedHandle> SpacingHandles(const SpacingFunction& f) {
    switch (f.kind) {
    case kLinearSpacing:
    case kSmoothSpacing: return {startOf(f), endOf(f)};
    case kAccelerated: return {{SpacingHandle::bend, {kBendAt, BlendSpacing(kBendAt, f)}}};
    case kSineSpacing: {
        const double length = SineLength(f), crest = UnitShare(f.d[0]) + SineHeight(f);
        return {{SpacingHandle::height, {length / 4, UnitShare(crest)}},
                startOf(f),
                {SpacingHandle::length, {length, UnitShare(f.d[0])}}};
    }
    case kBezierSpacing:
        return {{SpacingHandle::control1, {UnitShare(f.d[1]), UnitShare(f.d[2])}},
                {SpacingHandle::control2, {UnitShare(f.d[3]), UnitShare(f.d[4])}},
                startOf(f),
                endOf(f)};
    default: return {};
    }
}

SpacingHandle HitSpacingHandle(const SpacingFunction& spacing, const UnitPlot& plot, PlotPixel pixel) {
    for (const PlacedHandle& placed : SpacingHandles(spacing)) {
        const PlotPixel at = plot.toPixel(placed.at);
        if (std::abs(at.x - pixel.x) <= kReach && std::abs(at.y - pixel.y) <= kReach) return placed.handle;
    }
    return SpacingHandle::none;
}

void DragSpacingHandle(SpacingFunction& f, SpacingHandle handle, PlotShare to) {
    const std::vector<PlacedHandle> present = SpacingHandles(f);
    if (std::none_of(present.begin(), present.end(),
                     [&](const PlacedHandle& p) { return p.handle == handle; }))
        return;
    const double t = UnitShare(to.t), value = UnitShare(to.value);
    switch (handle) {
    case SpacingHandle::start: f.d[0] = value; break;
    case SpacingHandle::end: f.d[5] = value; break;
    case SpacingHandle::control1: f.d[1] = t, f.d[2] = value; break;
    case SpacingHandle::control2: f.d[3] = t, f.d[4] = value; break;
    case SpacingHandle::bend: f.accel = accelerationThrough(value); break;
    case SpacingHandle::length: f.d[4] = std::max(t, 0.05); break;
    case SpacingHandle::height: f.d[5] = UnitShare(0.5 + value - UnitShare(f.d[0])); break;
    case SpacingHandle::none: break;
    }
}

std::vector<PlotPixel> SpacingPixels(const SpacingFunction& spacing, const UnitPlot& plot) {
    std::vector<PlotPixel> pixels;
    pixels.reserve(kSpacingGraphPoints);
    for (int i = 0; i < kSpacingGraphPoints; ++i) {
        const double t = double(i) / (kSpacingGraphPoints - 1);
        pixels.push_back(plot.toPixel({t, BlendSpacing(t, spacing)}));
    }
    return pixels;
}

} // namespace corvane
