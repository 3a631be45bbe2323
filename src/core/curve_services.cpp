// Lengths, samples and curves through points.
#include "core/curve_services.h"

#include <cmath>
#include <memory>

#include "core/appending.h"

namespace corvane {

bool CurveKindIsSpline = true;

namespace {

constexpr double kShortestSampled = 0.0001;
constexpr double kSameDirection = 0.001; // radians
constexpr double kSameHeight = 0.0001;

AcDbDatabase* workingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

AcCmColor colorOf(int index) {
    AcCmColor color;
    if (index >= 0 && index <= 256)
        color.setColorIndex(Adesk::UInt16(index));
    else
        color = workingDatabase()->cecolor();
    return color;
}

// All points seen from the first in the direction of the second, in plan.
bool inOneDirection(int count, const AcGePoint3d* points) {
    if (count == 2) return true;
    const AcGeVector3d along = points[1] - points[0];
    const double angle = std::atan2(along.y, along.x);
    for (int i = 2; i < count; ++i) {
        const AcGeVector3d v = points[i] - points[0];
        if (std::abs(std::remainder(std::atan2(v.y, v.x) - angle, 2 * std::acos(-1.0))) > kSameDirection)
            return false;
    }
    return true;
}

// Through the points, in one direction or as splines; null when the host can't make it.
std::unique_ptr<AcDbCurve> splineThrough(int count, const AcGePoint3d* points, bool closed,
                                         const AcGeVector3d& startTangent, const AcGeVector3d& endTangent) {
    const AcGePoint3dArray all(std::vector<AcGePoint3d>(points, points + count));
    if (closed) {
        const AcDb3dPolyline ring(AcDb::k3dSimplePoly, all, true);
        AcDbSpline* spline = nullptr;
        return ring.getSpline(spline) == Acad::eOk ? std::unique_ptr<AcDbCurve>(spline) : nullptr;
    }
    auto spline = std::make_unique<AcDbSpline>(all, 4, 0.0);
    if (!startTangent.isZeroLength() && !endTangent.isZeroLength())
        spline->setFitTangents(startTangent, endTangent);
    return spline;
}

Acad::ErrorStatus appendBeside(std::unique_ptr<AcDbEntity> entity, const AcDbEntity* reference,
                               AcDbObjectId& id) {
    AcDbDatabase* database = reference && reference->database() ? reference->database() : workingDatabase();
    const Acad::ErrorStatus status =
        AppendBesideEntity(database, entity.get(), reference ? reference->objectId() : AcDbObjectId(), id);
    if (status == Acad::eOk) entity.release();
    return status;
}

} // namespace

double CurveLength(const AcDbEntity& entity) {
    const AcDbCurve* curve = AcDbCurve::cast(&entity);
    double end = 0, length = 0;
    if (!curve || curve->getEndParam(end) != Acad::eOk || curve->getDistAtParam(end, length) != Acad::eOk)
        return 0;
    return length;
}

bool SampleCurveEvenly(const AcDbCurve& curve, AcGePoint3dArray& points, int count) {
    double end = 0;
    if (count < 2 || curve.getEndParam(end) != Acad::eOk) return false;
    const double length = CurveLength(curve);
    if (length < kShortestSampled) return false;
    const double step = length / (count - 1);
    points.setLogicalLength(0);
    AcGePoint3d point;
    for (int i = 0; i < count; ++i)
        if (curve.getPointAtDist(step * i, point) == Acad::eOk) points.append(point);
    if (points.isEmpty()) return false;
    if (curve.getEndPoint(point) == Acad::eOk) points.last() = point;
    return true;
}

bool ForEachVertex(const AcDbCurve& curve,
                   const std::function<void(const AcGePoint3d& point, AcDbObjectId vertex)>& visit) {
    if (const auto* light = AcDbPolyline::cast(&curve)) {
        AcGePoint3d point;
        for (unsigned i = 0; light->getPointAt(i, point) == Acad::eOk; ++i) visit(point, {});
        return true;
    }
    if (const auto* flat = AcDb2dPolyline::cast(&curve)) {
        flat->parts().each<AcDb2dVertex>([&](const AcDb2dVertex& v) {
            if (v.vertexType() != AcDb::k2dSplineCtlVertex) visit(flat->vertexPosition(v), v.objectId());
        });
        return true;
    }
    if (const auto* spatial = AcDb3dPolyline::cast(&curve)) {
        spatial->parts().each<AcDb3dPolylineVertex>([&](const AcDb3dPolylineVertex& v) {
            if (v.vertexType() != AcDb::k3dControlVertex) visit(v.position(), v.objectId());
        });
        return true;
    }
    return false;
}

std::vector<AcGePoint3d> PolylineVertices(const AcDbCurve& curve) {
    std::vector<AcGePoint3d> points;
    ForEachVertex(curve, [&](const AcGePoint3d& point, AcDbObjectId) { points.push_back(point); });
    return points;
}

bool MakeCurveThroughPoints(AcDbObjectId& id, int count, const AcGePoint3d* points, int colorIndex,
                            bool closed, const AcGeVector3d& startTangent, const AcGeVector3d& endTangent) {
    if (count < 2) return false;
    std::unique_ptr<AcDbEntity> curve;
    if (inOneDirection(count, points)) {
        curve = std::make_unique<AcDbLine>(points[0], points[count - 1]);
    } else if (CurveKindIsSpline) {
        curve = splineThrough(count, points, closed, startTangent, endTangent);
    } else {
        if (MakePolylineThroughPoints(id, count, points, closed) != Acad::eOk) return false;
        AcDbObjectPointer<AcDbEntity> polyline(id, AcDb::kForWrite);
        return polyline && polyline->setColor(colorOf(colorIndex)) == Acad::eOk;
    }
    if (!curve) return false;
    curve->setDatabaseDefaults();
    curve->setColor(colorOf(colorIndex));
    if (AppendToCurrentSpace(curve.get(), id) != Acad::eOk) return false;
    curve.release();
    return true;
}

Acad::ErrorStatus MakePolylineThroughPoints(AcDbObjectId& id, int count, const AcGePoint3d* points,
                                            bool closed, const AcDbEntity* reference) {
    bool inSpace = false;
    for (int i = 1; i < count; ++i) inSpace |= std::abs(points[i].z - points[i - 1].z) > kSameHeight;
    if (!inSpace) return MakeBulgedPolyline(id, count, points, nullptr, closed, reference);
    const AcGePoint3dArray all(std::vector<AcGePoint3d>(points, points + count));
    auto polyline = std::make_unique<AcDb3dPolyline>(AcDb::k3dCubicSplinePoly, all, closed);
    polyline->setDatabaseDefaults();
    return appendBeside(std::move(polyline), reference, id);
}

Acad::ErrorStatus MakeBulgedPolyline(AcDbObjectId& id, int count, const AcGePoint3d* points,
                                     const double* bulges, bool closed, const AcDbEntity* reference) {
    if (count < 2) return Acad::eInvalidInput;
    auto polyline = std::make_unique<AcDbPolyline>();
    std::vector<AcDbPolyline::Vertex> vertices(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        vertices[size_t(i)] = {{points[i].x, points[i].y}, bulges ? bulges[i] : 0, -1, -1};
    if (auto es = polyline->setVertices(std::move(vertices)); es != Acad::eOk) return es;
    polyline->setElevation(points[0].z);
    polyline->setClosed(closed);
    polyline->setDatabaseDefaults();
    return appendBeside(std::move(polyline), reference, id);
}

} // namespace corvane
