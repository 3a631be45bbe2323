// The points that objects hang on, by kind.
#include "deform/box/vertices.h"

#include <memory>

#include "core/properties.h"

namespace corvane::deform {
namespace {

template <class Vertex, class Whole, class Position>
std::vector<VertexObject> verticesOf(const Whole& whole, Position position) {
    std::vector<VertexObject> vertices;
    const std::unique_ptr<AcDbObjectIterator> each(whole.vertexIterator());
    for (; !each->done(); each->step()) {
        AcDbObjectPointer<Vertex> vertex(each->objectId(), AcDb::kForRead);
        if (vertex) vertices.push_back({position(*vertex), each->objectId()});
    }
    return vertices;
}

} // namespace

bool IsRigid(const AcDbEntity& entity) {
    return entity.isKindOf(AcDbText::desc()) || entity.isKindOf(AcDbMText::desc()) ||
           entity.isKindOf(AcDbBlockReference::desc());
}

std::vector<AcGePoint3d> FitPoints(const AcDbSpline& spline) {
    std::vector<AcGePoint3d> points(size_t(spline.numFitPoints()));
    for (size_t i = 0; i < points.size(); ++i) spline.getFitPointAt(int(i), points[i]);
    return points;
}

std::vector<AcGePoint3d> ControlPoints(const AcDbSpline& spline) {
    std::vector<AcGePoint3d> points(size_t(spline.numControlPoints()));
    for (size_t i = 0; i < points.size(); ++i) spline.getControlPointAt(int(i), points[i]);
    return points;
}

std::optional<AcGePoint3d> CentreOf(const AcDbCurve& curve) {
    if (const auto* circle = AcDbCircle::cast(&curve)) return circle->center();
    if (const auto* arc = AcDbArc::cast(&curve)) return arc->center();
    if (const auto* ellipse = AcDbEllipse::cast(&curve)) return ellipse->center();
    return {};
}

std::vector<VertexObject> VertexObjects(const AcDbCurve& curve) {
    if (const auto* flat = AcDb2dPolyline::cast(&curve))
        return verticesOf<AcDb2dVertex>(*flat, [&](const auto& v) { return flat->vertexPosition(v); });
    if (const auto* inSpace = AcDb3dPolyline::cast(&curve))
        return verticesOf<AcDb3dPolylineVertex>(*inSpace, [](const auto& v) { return v.position(); });
    return {};
}

AcGeMatrix3d WorldToPlane(const AcGeVector3d& normal) {
    AcGeMatrix3d matrix;
    MatrixFromNormal(normal, matrix);
    return matrix.invert();
}

} // namespace corvane::deform
