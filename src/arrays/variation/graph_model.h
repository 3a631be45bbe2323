// The graph in which users shape a variation curve, without its window: where points and handles lie, which
// handle a click takes, what dragging one does. The control that shows it is graph_ctrl.h.
#pragma once
#include <vector>

#include "arrays/variation/variation.h"
#include "core/unit_plot.h"

namespace corvane {

// Percents that the graph shows: 0 at the bottom.
inline constexpr double kGraphTop = 300;
inline constexpr int kCurvePoints = 121;

using GraphPixel = PlotPixel;
// A position on the path, 0..1, and a value in percent.
struct GraphValue {
    double t = 0, percent = 0;
};

// The plot area within a client area of that size, in pixels from its upper left corner.
class GraphPlot {
public:
    GraphPlot(int clientWidth, int clientHeight) : plot_(clientWidth, clientHeight) {}
    // The nearest pixel; percents count as within 0..300.
    GraphPixel toPixel(GraphValue value) const;
    // The value under the pixel, moved into the plot area first; percents from 1 to 300. An area without
    // width gives t = 0.
    GraphValue toValue(GraphPixel pixel) const;

    int left() const { return plot_.left(); }
    int top() const { return plot_.top(); }
    int right() const { return plot_.right(); }
    int bottom() const { return plot_.bottom(); }

private:
    UnitPlot plot_;
};

// The numbers of handles, as the drag rules know them.
enum GraphHandleNumber { kNoHandle = -1, kStartHandle, kEndHandle, kHandle1, kHandle2, kAmplitudeHandle };

struct GraphHandle {
    int number;
    GraphValue at;
};
// The curve's handles, in the order in which clicks try them.
std::vector<GraphHandle> GraphHandles(const VariationCurve& curve);
// The handle less than 8 pixels away both ways, or kNoHandle.
int HitHandle(const VariationCurve& curve, const GraphPlot& plot, GraphPixel pixel);

// How two graphs differ in what a drag may do: the abscissae of the Bézier controls in order and 0.02 apart,
// or each of them free in 0..1.
enum class ControlOrder { apart, free };
// Takes the handle to the value. Handles that the kind doesn't have change nothing.
void DragHandle(VariationCurve& curve, int handle, GraphValue to, ControlOrder order);

// The curve as pixels, from t = 0 to 1 in equal steps.
std::vector<GraphPixel> CurvePixels(const VariationCurve& curve, const GraphPlot& plot);

} // namespace corvane
