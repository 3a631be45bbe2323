// The view of the current drawing as its active viewport record keeps it, and changes of it by hand: these
// are no work on the drawing, so they can't be taken back and ask for no saving.
#pragma once
#include "apps/desk/screen_map.h"

namespace desk {

host::ViewFrame storedView();
void storeView(const host::ViewFrame& view);

// The same view moved so that what lay at the first pixel lies at the second.
host::ViewFrame panned(const ScreenMap& map, const QPointF& from, const QPointF& to);
// Enlarged by the factor; what lies at the pixel stays there. The height is kept within sensible bounds.
host::ViewFrame zoomed(const ScreenMap& map, const QPointF& at, double factor);

} // namespace desk
