// Paints a scene into a picture, on as many threads as the machine has.
#pragma once
#include <QImage>

#include "apps/desk/list_painter.h"
#include "apps/desk/scene.h"

namespace desk {

// Over what the picture holds; it has the size of the map's pixels times its device pixel ratio, and 32 bits
// a pixel without alpha. Only `part` of it, pixels of the picture, is painted. Rows are shared out among
// threads in bands; neither their number nor the part changes what a pixel gets.
void paintScene(QImage& picture, Scene& scene, const ScreenMap& map, const PaintLook& look,
                TextOutlines& texts, const QRect& part);
// Only what belongs to these entities.
void paintEntities(QImage& picture, Scene& scene, const ScreenMap& map, const PaintLook& look,
                   TextOutlines& texts, const std::vector<AcDbObjectId>& entities);

} // namespace desk
