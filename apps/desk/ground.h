// What lies under and beside the drawing: the grid of the user's plane, and the axes in the corner.
#pragma once
#include <QPainter>

#include "apps/desk/screen_map.h"

namespace desk {

// GRIDMODE is on.
bool gridShows();
// Lines at round distances in the user's axes, ten to twenty pixels apart or more, each tenth stronger.
// Nothing where the plane is seen so much from its edge that lines would run together.
void paintGrid(QImage& picture, const ScreenMap& map, bool dark);
// The user's axes in the lower left corner, as the view turns them.
void paintAxes(QPainter& painter, const ScreenMap& map, bool dark);

} // namespace desk
