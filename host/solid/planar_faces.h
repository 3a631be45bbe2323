// Plane faces as plain data: closed loops of lines, conics and B-splines. What regions are made of, whether
// they come from files, from curves, or out of operations (face_boolean.h).
#pragma once
#include <optional>
#include <vector>

#include "host/ent/curve_path.h"

namespace host {

// A line, conic or B-spline of a loop, perhaps run through backwards.
struct FaceEdge {
    CurvePath path;
    bool reversed = false;
    AcGePoint3d start() const { return path.pointAt(reversed ? path.endParam() : path.startParam()); }
    AcGePoint3d end() const { return path.pointAt(reversed ? path.startParam() : path.endParam()); }
};
// Edges end to end; the last one ends where the first begins.
using FaceLoop = std::vector<FaceEdge>;

struct PlanarFace {
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    std::vector<FaceLoop> loops; // the outer one and its holes, in whatever order and sense
};
using PlanarFaces = std::vector<PlanarFace>;

// Moved by the matrix; nothing for a singular one.
std::optional<PlanarFaces> transformedFaces(const PlanarFaces& faces, const AcGeMatrix3d& matrix);
// Half the integral of P x dP round the loop: along the normal of one that runs counter-clockwise.
AcGeVector3d areaVector(const FaceLoop& loop);
// What the face's loops enclose: the largest without the others.
double areaOf(const PlanarFace& face);
AcDbExtents extentsOf(const PlanarFaces& faces);

// The closed loops that the curves form: a closed curve is one, open ones are joined at ends that meet within
// the tolerance. Curves that don't come round are left out.
std::vector<FaceLoop> closedLoops(const std::vector<const CurvePath*>& curves, double tolerance);
// A face of one loop; nothing when it lies in no plane or encloses nothing.
std::optional<PlanarFace> faceOf(FaceLoop loop);

} // namespace host
