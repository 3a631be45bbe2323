// The graph in which users shape a spacing function, without its window: where the curve and its handles lie,
// which handle a click takes, what dragging one does. The control that shows it is spacing_graph.h.
#pragma once
#include <vector>

#include "assoc/spacing.h"
#include "core/unit_plot.h"

namespace corvane {

inline constexpr int kSpacingGraphPoints = 121;

enum class SpacingHandle { none, start, end, control1, control2, bend, length, height };

struct PlacedHandle {
    SpacingHandle handle;
    PlotShare at;
};
// The handles of the function's kind, in the order in which clicks try them; none for numbers that are no
// kind.
std::vector<PlacedHandle> SpacingHandles(const SpacingFunction& spacing);
// The handle at most 7 pixels away both ways.
SpacingHandle HitSpacingHandle(const SpacingFunction& spacing, const UnitPlot& plot, PlotPixel pixel);
// Takes the handle there. Handles that the kind doesn't have change nothing.
void DragSpacingHandle(SpacingFunction& spacing, SpacingHandle handle, PlotShare to);

// The function as pixels, from t = 0 to 1 in equal steps.
std::vector<PlotPixel> SpacingPixels(const SpacingFunction& spacing, const UnitPlot& plot);

} // namespace corvane
