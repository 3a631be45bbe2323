// Union, intersection and difference of faces with straight edges alone, by polygon clipping: fast for
// thousands of edges, and safe with edges that all but coincide.
#pragma once
#include "host/solid/face_boolean.h"

namespace host {

bool isStraight(const PlanarFaces& faces);
// Straight faces in one plane. Corners nearer to each other than about 1e-9 of the whole become one, and
// edges in line become one; slivers that enclose nothing are left out.
PlanarFaces combinePolygons(const PlanarFaces& first, const PlanarFaces& second,
                            AcDb::BoolOperType operation);

} // namespace host
