// Small services on curves: length, even samples, and curves and polylines through points.
#pragma once
#include <functional>
#include <vector>

#include <vector>

#include "core/host/entities.h"

namespace corvane {

// The length of a curve; 0 for anything else, and when the curve can't tell.
double CurveLength(const AcDbEntity& entity);

// `count` points at equal distances along the curve, the last one exactly its end point; points that the
// curve can't give are left out. False, and no points, for curves without an end or shorter than 0.0001.
bool SampleCurveEvenly(const AcDbCurve& curve, AcGePoint3dArray& points, int count);

// Calls `visit` with each vertex that a polyline of any class is drawn through, in world coordinates, and
// with the vertex's own id where it is an object. Control points of a smoothed polyline stand beside the
// curve and are left out. False for other curves.
bool ForEachVertex(const AcDbCurve& curve,
                   const std::function<void(const AcGePoint3d& point, AcDbObjectId vertex)>& visit);
std::vector<AcGePoint3d> PolylineVertices(const AcDbCurve& curve); // empty for other curves

// A curve through the points, appended to the current space. `colorIndex`: 1 to 255, 0 by block, 256 by
// layer, any other the drawing's current colour. Two points, or points that all lie in one direction from the
// first (within 0.001 radians), give a line from the first to the last, whatever `closed` says. Otherwise a
// spline of order 4 through them, with the end tangents when neither is zero, or a polyline, by
// CurveKindIsSpline. False below two points.
bool MakeCurveThroughPoints(AcDbObjectId& id, int count, const AcGePoint3d* points, int colorIndex,
                            bool closed, const AcGeVector3d& startTangent, const AcGeVector3d& endTangent);
extern bool CurveKindIsSpline; // true at the start

// A polyline through the points, appended beside `reference`, or to the current space without one: a 3D
// polyline smoothed as a cubic spline when successive points differ by more than 0.0001 in Z, else a
// lightweight one at the first point's height. A status other than eOk: nothing was made.
Acad::ErrorStatus MakePolylineThroughPoints(AcDbObjectId& id, int count, const AcGePoint3d* points,
                                            bool closed, const AcDbEntity* reference = nullptr);
// The lightweight form with a bulge a vertex.
Acad::ErrorStatus MakeBulgedPolyline(AcDbObjectId& id, int count, const AcGePoint3d* points,
                                     const double* bulges, bool closed,
                                     const AcDbEntity* reference = nullptr);

} // namespace corvane
