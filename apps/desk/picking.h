// What lies under the cursor, by what is drawn there.
#pragma once
#include "apps/desk/scene.h"

namespace desk {

// The entity drawn nearest to the pixel; null when none is within the radius, pixels. Lines and outlines go
// before the insides of areas, later ones before earlier ones.
AcDbObjectId entityUnder(Scene& scene, const ScreenMap& map, const QPointF& pixel, double radius);

// The entities that lie wholly in the rectangle of pixels, or with `crossing` those that touch it, too, in
// drawing order. By their strokes: the inside of an area counts for nothing.
std::vector<AcDbObjectId> entitiesWithin(Scene& scene, const ScreenMap& map, const QRectF& pixels,
                                         bool crossing);

} // namespace desk
