// Where entities meet: curves by their pieces, block references by what they draw.
#pragma once

#include "host/db/entity.h"
#include "host/ent/curve_path.h"

namespace host {

// Appends the points that both paths have, in order of the first one's parameter, the ends of shared
// stretches included. Extended paths go on beyond their ends as lines, circles and ellipses.
void intersectPaths(const CurvePath& first, const CurvePath& second, AcDb::Intersect extension,
                    std::vector<AcGePoint3d>& points);

// The same for entities; eNotImplementedYet when one of them is neither a curve nor made of curves.
// With a plane, what is seen along its normal; the points then lie in the plane.
Acad::ErrorStatus intersectEntities(const AcDbEntity& first, const AcDbEntity& second,
                                    AcDb::Intersect extension, const AcGePlane* plane,
                                    AcGePoint3dArray& points);

} // namespace host
