// Layout, hit test and drag rules of the graph.
#include "arrays/variation/graph_model.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

constexpr int kReach = 8;
constexpr double kApart = 0.02, kLowest = 1;

} // namespace

GraphPixel GraphPlot::toPixel(GraphValue value) const {
    return plot_.toPixel({value.t, value.percent / kGraphTop});
}

GraphValue GraphPlot::toValue(GraphPixel pixel) const {
    const PlotShare share = plot_.toShare(pixel);
    return {share.t, std::clamp(share.value * kGraphTop, kLowest, kGraphTop)};
}

std::vector<GraphHandle> GraphHandles(const VariationCurve& c) {
    std::vector<GraphHandle> handles{{kStartHandle, {0, c.start}}};
    if (c.kind == kSine) {
        const double period = SinePeriod(c);
        handles.push_back({kEndHandle, {period, c.end}});
        handles.push_back({kAmplitudeHandle,
                           {period / 4, ClampNumber(std::abs(c.end - 100) + c.start, kLowest, kGraphTop)}});
        return handles;
    }
    handles.push_back({kEndHandle, {1, c.end}});
    if (c.kind == kBezier) {
        handles.push_back({kHandle1, {c.t1, c.c1}});
        handles.push_back({kHandle2, {c.t2, c.c2}});
    }
    return handles;
}

int HitHandle(const VariationCurve& curve, const GraphPlot& plot, GraphPixel pixel) {
    for (const GraphHandle& handle : GraphHandles(curve)) {
        const GraphPixel at = plot.toPixel(handle.at);
        if (std::abs(at.x - pixel.x) < kReach && std::abs(at.y - pixel.y) < kReach) return handle.number;
    }
    return kNoHandle;
}

void DragHandle(VariationCurve& c, int handle, GraphValue to, ControlOrder order) {
    const bool sine = c.kind == kSine, bezier = c.kind == kBezier, apart = order == ControlOrder::apart;
    if (handle == kStartHandle) c.start = to.percent;
    if (handle == kEndHandle && !sine) c.end = to.percent;
    if (handle == kEndHandle && sine) c.c2 = ClampNumber(to.t, 0.05, 1.0) * 100;
    if (handle == kAmplitudeHandle && sine)
        c.end = ClampNumber(to.percent - c.start + 100, kLowest, kGraphTop);
    if (handle == kHandle1 && bezier) {
        c.c1 = to.percent;
        c.t1 = std::max(0.0, std::min(to.t, apart ? c.t2 - kApart : 1.0));
    }
    if (handle == kHandle2 && bezier) {
        c.c2 = to.percent;
        c.t2 = std::min(1.0, std::max(to.t, apart ? c.t1 + kApart : 0.0));
    }
}

std::vector<GraphPixel> CurvePixels(const VariationCurve& curve, const GraphPlot& plot) {
    std::vector<GraphPixel> pixels;
    pixels.reserve(kCurvePoints);
    for (int i = 0; i < kCurvePoints; ++i) {
        const double t = double(i) / (kCurvePoints - 1);
        pixels.push_back(plot.toPixel({t, EvalVariation(curve, t) * 100}));
    }
    return pixels;
}

} // namespace corvane
