// Object snaps: the point of the drawing that a pick near it means.
#pragma once
#include <optional>
#include <vector>

#include "host/db/objectid.h"
#include "host/ge/point3d.h"

namespace desk {

enum class SnapKind {
    end,
    middle,
    center,
    node,
    quadrant,
    intersection,
    insertion,
    perpendicular,
    tangent,
    nearest
};

struct Snap {
    AcGePoint3d point; // world
    SnapKind kind = SnapKind::end;
};

// The kinds that OSMODE has on; none while its bit 16384 is set.
int snapModes();

// Candidates among the entities, world coordinates. `last` is where perpendiculars and tangents start from.
// Intersections are looked for among the first sixteen entities.
std::vector<Snap> snapsOf(const std::vector<AcDbObjectId>& entities, int modes, const AcGePoint3d& pick,
                          const AcGePoint3d& last);

} // namespace desk
