// The view of the current drawing as its active viewport record keeps it, and changes of it by hand: these
// are no work on the drawing, so they can't be taken back and ask for no saving.
#pragma once
#include <functional>

#include "apps/desk/screen_map.h"

namespace desk {

host::ViewFrame storedView();
void storeView(const host::ViewFrame& view);
// Does the work on the working drawing without a trace in its undo log, and without asking for saving.
void withoutTrace(const std::function<void()>& work);

// The same view moved so that what lay at the first pixel lies at the second.
host::ViewFrame panned(const ScreenMap& map, const QPointF& from, const QPointF& to);
// Enlarged by the factor; what lies at the pixel stays there. The height is kept within sensible bounds.
host::ViewFrame zoomed(const ScreenMap& map, const QPointF& at, double factor);
// Seen from another side: the eye has gone round the pivot, which stays where it is on the screen, as if the
// hand had turned a ball under it by that many pixels. Up stays up; the eye stops right above and below.
host::ViewFrame orbited(const ScreenMap& map, const QPointF& by, const AcGePoint3d& pivot);

} // namespace desk
