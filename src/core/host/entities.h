// The door to the host: the kinds of entity, and what features need of them in bulk.
#pragma once
#include "host/ent/blockreference.h"
#include "host/ent/conics.h"
#include "host/ent/faces.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
#include "host/ent/polyline2d.h"
#include "host/ent/polyline3d.h"
#include "host/ent/spline.h"
#include "host/ent/text.h"
#include "host/solid/region.h"
#include "host/solid/solid3d.h"

namespace corvane::host_door {

// Removes the vertices whose mark is set, all at once: what removeVertexAt does one by one, without moving
// the rest of the array each time. Returns how many went; a polyline keeps two at least, as at the host.
int removeVertices(AcDbPolyline& polyline, const std::vector<bool>& marks);

// World points of all that the entity draws, blocks and texts included: ends of strokes close enough that
// none keeps farther than `error` from its curve; texts by the corners of their boxes.
std::vector<AcGePoint3d> drawnPoints(const AcDbEntity& entity, double error);

} // namespace corvane::host_door
