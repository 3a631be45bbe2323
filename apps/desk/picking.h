// What lies under the cursor, by what is drawn there.
#pragma once
#include "apps/desk/scene.h"

namespace desk {

// The entity drawn nearest to the pixel; null when none is within the radius, pixels. Lines and outlines go
// before the insides of areas, later ones before earlier ones.
AcDbObjectId entityUnder(Scene& scene, const ScreenMap& map, const QPointF& pixel, double radius);

} // namespace desk
