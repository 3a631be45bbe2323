// What sampling and writing back must see alike: which objects go as a whole, and the points that a curve's
// shape hangs on, in their order.
#pragma once
#include <optional>
#include <vector>

#include "core/host/entities.h"

namespace corvane::deform {

bool IsRigid(const AcDbEntity& entity); // text, multi-line text, block references
std::vector<AcGePoint3d> FitPoints(const AcDbSpline& spline);
std::vector<AcGePoint3d> ControlPoints(const AcDbSpline& spline);
// Of circles, arcs and ellipses.
std::optional<AcGePoint3d> CentreOf(const AcDbCurve& curve);
// The vertices of an old polyline of the plane or of space, those of the frame of a smoothed one included:
// frame and curve are moved alike. Empty for other curves.
struct VertexObject {
    AcGePoint3d point; // world
    AcDbObjectId id;
};
std::vector<VertexObject> VertexObjects(const AcDbCurve& curve);
// From world coordinates to those of a plane of that normal.
AcGeMatrix3d WorldToPlane(const AcGeVector3d& normal);

} // namespace corvane::deform
