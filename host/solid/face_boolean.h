// Union, intersection and difference of plane faces: by the solid modeller, or as polygons (face_polygons.h)
// where all edges are straight.
#pragma once
#include "host/db/adesk.h"
#include "host/solid/planar_faces.h"

namespace AcDb {
enum BoolOperType { kBoolUnite = 0, kBoolIntersect = 1, kBoolSubtract = 2 };
}

namespace host {

// The faces that come of the operation, merged where they meet and their edges where one goes on as another.
// Nothing when the modeller fails; faces must lie in one plane.
std::optional<PlanarFaces> combineFaces(const PlanarFaces& first, const PlanarFaces& second,
                                        AcDb::BoolOperType operation);

} // namespace host
