// What the polylines of space do as curves. The drawn curve runs through the vertices that aren't
// control vertices.
#include <algorithm>

#include "host/ent/curve_make.h"
#include "host/ent/filing.h"
#include "host/ent/polyline3d.h"

namespace {
bool isControl(const AcDb3dPolylineVertex& v) { return v.vertexType() == AcDb::k3dControlVertex; }
} // namespace

// Frames that nothing was fitted to are drawn themselves.
std::vector<AcGePoint3d> AcDb3dPolyline::drawnPoints() const {
    std::vector<AcGePoint3d> drawn, frame;
    parts_.each<AcDb3dPolylineVertex>(
        [&](const AcDb3dPolylineVertex& v) { (isControl(v) ? frame : drawn).push_back(v.position()); });
    return drawn.empty() ? frame : drawn;
}

host::CurvePath AcDb3dPolyline::makePath() const {
    return host::CurvePath::chain(host::SpaceChain{drawnPoints(), closed_});
}

std::unique_ptr<AcDbCurve> AcDb3dPolyline::makePart(double from, double to) const {
    const host::CurvePath whole = makePath();
    AcGePoint3dArray points;
    points.append(whole.pointAt(from));
    for (double at = std::floor(from) + 1; at < to; ++at) points.append(whole.pointAt(at));
    points.append(whole.pointAt(to));
    return std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, points);
}

Acad::ErrorStatus AcDb3dPolyline::reverseCurve() {
    std::vector<AcGePoint3d> frame, drawn;
    parts_.each<AcDb3dPolylineVertex>(
        [&](const AcDb3dPolylineVertex& v) { (isControl(v) ? frame : drawn).push_back(v.position()); });
    if (auto es = willModify(); es != Acad::eOk) return es;
    // A closed one keeps its first vertex.
    for (auto* list : {&frame, &drawn})
        if (!list->empty()) std::reverse(list->begin() + (closed_ ? 1 : 0), list->end());
    size_t nextFrame = 0, nextDrawn = 0;
    parts_.eachForWrite<AcDb3dPolylineVertex>([&](AcDb3dPolylineVertex& v) {
        v.setPosition(isControl(v) ? frame[nextFrame++] : drawn[nextDrawn++]);
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::extend(double toParam) {
    const auto p = path();
    if (!std::isfinite(toParam) || closed_ || !(p->endParam() > 0)) return Acad::eInvalidInput;
    if (toParam >= 0 && toParam <= p->endParam()) return Acad::eInvalidInput;
    return extend(toParam < 0, p->pointAt(toParam));
}

Acad::ErrorStatus AcDb3dPolyline::extend(Adesk::Boolean atStart, const AcGePoint3d& toPoint) {
    if (type_ != AcDb::k3dSimplePoly) return Acad::eNotApplicable;
    const std::vector<AcGePoint3d> points = drawnPoints();
    if (!host::finite(toPoint) || closed_ || points.size() < 2) return Acad::eInvalidInput;
    const size_t n = points.size();
    const AcGePoint3d end = points[atStart ? 0 : n - 1], from = points[atStart ? 1 : n - 2];
    const AcGeVector3d along = end - from;
    const double t = (toPoint - from).dotProduct(along) / along.lengthSqrd();
    if (!(t > 1)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    const size_t which = atStart ? 0 : n - 1;
    size_t at = 0;
    parts_.eachForWrite<AcDb3dPolylineVertex>([&](AcDb3dPolylineVertex& v) {
        if (at++ == which) v.setPosition(from + along * t);
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    parts_.eachForWrite<AcDb3dPolylineVertex>(
        [&](AcDb3dPolylineVertex& v) { v.setPosition(matrix * v.position()); });
    return Acad::eOk;
}

// Frames have the grips where there are some.
Acad::ErrorStatus AcDb3dPolyline::subGetGripPoints(AcGePoint3dArray& points) const {
    parts_.each<AcDb3dPolylineVertex>([&](const AcDb3dPolylineVertex& v) {
        if (type_ == AcDb::k3dSimplePoly || isControl(v)) points.append(v.position());
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::subMoveGripPointsAt(const AcGeIntArray& indices,
                                                      const AcGeVector3d& offset) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    int at = 0;
    parts_.eachForWrite<AcDb3dPolylineVertex>([&](AcDb3dPolylineVertex& v) {
        if (type_ != AcDb::k3dSimplePoly && !isControl(v)) return;
        if (indices.contains(at++)) v.setPosition(v.position() + offset);
    });
    return type_ != AcDb::k3dSimplePoly ? convertToPolyType(type_) : Acad::eOk;
}
