// The replacement of curves by others.
#include "curves/conversion/curve_kinds.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

#include "core/appending.h"
#include "core/curve_services.h"
#include "curves/conversion/arc_polyline.h"

namespace corvane {
namespace {

using std::numbers::pi;
constexpr double kSamePoint = 1e-9;
constexpr int kUsualPrecision = 3, kFinestPrecision = 12;

bool replace(std::unique_ptr<AcDbEntity> successor, AcDbEntity& source, AcDbObjectId& id) {
    if (!successor ||
        AppendBesideEntity(source.database(), successor.get(), source.objectId(), id) != Acad::eOk)
        return false;
    successor.release();
    if (!source.isWriteEnabled()) source.upgradeOpen();
    source.erase();
    return true;
}

// -- Splines ------------------------------------------------------------------------------------------

// The direction in which a smooth closed curve passes its start; zero for others.
AcGeVector3d seamDirection(const AcDbCurve& curve) {
    double start = 0, end = 0;
    AcGeVector3d first, last;
    if (!curve.isClosed() || curve.getStartParam(start) != Acad::eOk || curve.getEndParam(end) != Acad::eOk ||
        curve.getFirstDeriv(start, first) != Acad::eOk || curve.getFirstDeriv(end, last) != Acad::eOk ||
        first.isZeroLength() || last.isZeroLength() || (first.normal() - last.normal()).length() > 1e-6)
        return {};
    return first.normal();
}

std::unique_ptr<AcDbSpline> splineThrough(const AcDbCurve& curve, AcGePoint3dArray points) {
    if (points.length() < 2) return nullptr;
    if (curve.isClosed() && points.first().distanceTo(points.last()) > kSamePoint)
        points.append(AcGePoint3d(points.first()));
    const AcGeVector3d seam = seamDirection(curve);
    if (seam.isZeroLength()) return std::make_unique<AcDbSpline>(points, 4, 0.0);
    return std::make_unique<AcDbSpline>(points, seam, seam, 4, 0.0);
}

std::unique_ptr<AcDbSpline> ownSpline(const AcDbCurve& curve) {
    AcDbSpline* spline = nullptr;
    if (curve.getSpline(spline) == Acad::eOk) return std::unique_ptr<AcDbSpline>(spline);
    return nullptr;
}

// -- Lightweight polylines ----------------------------------------------------------------------------

using Vertices = std::vector<AcDbPolyline::Vertex>;

AcGePoint2d inPlane(const AcGeMatrix3d& toPlane, const AcGePoint3d& point) {
    const AcGePoint3d own = toPlane * point;
    return {own.x, own.y};
}

std::unique_ptr<AcDbPolyline> polylineIn(const AcGeVector3d& normal, const AcGePoint3d& place,
                                         double thickness, Vertices vertices, bool closed) {
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->setNormal(normal);
    polyline->setElevation((AcGeMatrix3d::worldToPlane(normal) * place).z);
    polyline->setThickness(thickness);
    polyline->setClosed(closed);
    return polyline->setVertices(std::move(vertices)) == Acad::eOk ? std::move(polyline) : nullptr;
}

std::unique_ptr<AcDbPolyline> ofLine(const AcDbLine& line) {
    const AcGePoint3d from = line.startPoint(), to = line.endPoint();
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->addVertexAt(0, {from.x, from.y});
    polyline->addVertexAt(1, {to.x, to.y});
    polyline->setElevation(from.z);
    return polyline;
}

std::unique_ptr<AcDbPolyline> ofArc(const AcDbArc& arc) {
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(arc.normal());
    AcGePoint3d from, to;
    arc.getStartPoint(from);
    arc.getEndPoint(to);
    double sweep = arc.endAngle() - arc.startAngle();
    if (sweep < 0) sweep += 2 * pi;
    return polylineIn(arc.normal(), arc.center(), arc.thickness(),
                      {{inPlane(toPlane, from), std::tan(sweep / 4)}, {inPlane(toPlane, to)}}, false);
}

std::unique_ptr<AcDbPolyline> ofCircle(const AcDbCircle& circle) {
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(circle.normal());
    AcGeVector3d across = circle.normal().perpVector();
    if (across.isZeroLength()) across = AcGeVector3d::kXAxis;
    across = across.normal() * circle.radius();
    return polylineIn(circle.normal(), circle.center(), circle.thickness(),
                      {{inPlane(toPlane, circle.center() + across), 1.0},
                       {inPlane(toPlane, circle.center() - across), 1.0}},
                      true);
}

// The bulge of the circle from `from` through `middle` to `to`: tangent of a quarter of the sweep, from the
// angle at the middle, which is half of what the sweep leaves of the full turn.
double bulgeThrough(const AcGePoint2d& from, const AcGePoint2d& middle, const AcGePoint2d& to) {
    const AcGeVector2d a = middle - from, b = to - middle;
    return std::tan(0.5 * std::atan2(a.x * b.y - a.y * b.x, a.dotProduct(b)));
}

// The quarters that lie in the sweep, ends of the sweep included.
std::vector<double> quarterAngles(double start, double end) {
    std::vector<double> angles{start};
    for (double quarter = std::floor(start / (pi / 2)) + 1; quarter * pi / 2 < end - 1e-9; ++quarter)
        if (quarter * pi / 2 > start + 1e-9) angles.push_back(quarter * pi / 2);
    angles.push_back(end);
    return angles;
}

std::unique_ptr<AcDbPolyline> ofEllipse(const AcDbEllipse& ellipse, int precision) {
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(ellipse.normal());
    const int steps = precision * 3;
    double start = 0, end = 0;
    if (ellipse.getStartParam(start) != Acad::eOk || ellipse.getEndParam(end) != Acad::eOk) return nullptr;
    const auto at = [&](double param) {
        AcGePoint3d point;
        ellipse.getPointAtParam(std::clamp(param, start, end), point);
        return inPlane(toPlane, point);
    };
    const std::vector<double> angles = quarterAngles(start, end);
    Vertices vertices;
    AcGePoint2d from = at(start);
    for (size_t part = 1; part < angles.size(); ++part) {
        const double step = (angles[part] - angles[part - 1]) / steps;
        for (int i = 0; i < steps; ++i) {
            const double param = angles[part - 1] + step * i;
            const AcGePoint2d to = at(i + 1 == steps ? angles[part] : param + step);
            vertices.push_back({from, bulgeThrough(from, at(param + step / 2), to)});
            from = to;
        }
    }
    if (!ellipse.isClosed()) vertices.push_back({from});
    return polylineIn(ellipse.normal(), ellipse.center(), 0, std::move(vertices), ellipse.isClosed());
}

std::unique_ptr<AcDbPolyline> ofOldPolyline(const AcDb2dPolyline& old) {
    Vertices vertices;
    old.parts().each<AcDb2dVertex>([&](const AcDb2dVertex& v) {
        if (v.vertexType() == AcDb::k2dSplineCtlVertex) return;
        const auto widths = old.widthsOf(v);
        vertices.push_back({{v.position().x, v.position().y}, v.bulge(), widths.start, widths.end});
    });
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->setNormal(old.normal());
    polyline->setElevation(old.elevation());
    polyline->setThickness(old.thickness());
    polyline->setPlinegen(old.isLinetypeGenerationOn());
    polyline->setClosed(old.isClosed());
    return polyline->setVertices(std::move(vertices)) == Acad::eOk ? std::move(polyline) : nullptr;
}

std::unique_ptr<AcDbEntity> lightOf(const AcDbCurve& curve, int precision) {
    if (const auto* line = AcDbLine::cast(&curve)) return ofLine(*line);
    if (const auto* arc = AcDbArc::cast(&curve)) return ofArc(*arc);
    if (const auto* circle = AcDbCircle::cast(&curve)) return ofCircle(*circle);
    if (const auto* ellipse = AcDbEllipse::cast(&curve)) return ofEllipse(*ellipse, precision);
    if (const auto* old = AcDb2dPolyline::cast(&curve)) return ofOldPolyline(*old);
    if (const auto* spline = AcDbSpline::cast(&curve))
        return std::unique_ptr<AcDbEntity>(PolylineOfSpline(*spline, precision * 3));
    return nullptr;
}

bool replaceSpatial(AcDb3dPolyline& source, AcDbObjectId& id) {
    const AcGePoint3dArray points(PolylineVertices(source));
    if (points.length() < 2 || MakePolylineThroughPoints(id, points.length(), points.asArrayPtr(),
                                                         source.isClosed(), &source) != Acad::eOk)
        return false;
    if (AcDbObjectPointer<AcDbEntity> made(id, AcDb::kForWrite); made) made->setPropertiesFrom(&source);
    if (!source.isWriteEnabled()) source.upgradeOpen();
    source.erase();
    return true;
}

} // namespace

bool SplineToPolyline(AcDbSpline& spline, int precision) {
    AcDbObjectId id;
    return replace(std::unique_ptr<AcDbEntity>(PolylineOfSpline(spline, precision)), spline, id);
}

bool CurveToSpline(AcDbCurve& curve, bool equalDivision, int count) {
    std::unique_ptr<AcDbSpline> spline;
    AcGePoint3dArray points;
    if (!equalDivision && !(spline = ownSpline(curve))) points = AcGePoint3dArray(PolylineVertices(curve));
    if (!spline) {
        if (points.isEmpty() && !SampleCurveEvenly(curve, points, count)) return false;
        spline = splineThrough(curve, std::move(points));
    }
    if (!spline) return false;
    spline->setPropertiesFrom(&curve);
    AcDbObjectId id;
    return replace(std::move(spline), curve, id);
}

bool CurveToLwPolyline(AcDbCurve& curve, int precision, AcDbObjectId& id) {
    precision = precision <= 0 ? kUsualPrecision : std::min(precision, kFinestPrecision);
    if (curve.isKindOf(AcDbPolyline::desc())) return false;
    if (auto* spatial = AcDb3dPolyline::cast(&curve)) return replaceSpatial(*spatial, id);
    auto polyline = lightOf(curve, precision);
    if (!polyline) return false;
    polyline->setPropertiesFrom(&curve);
    return replace(std::move(polyline), curve, id);
}

bool LightToOldPolyline(AcDbPolyline* polyline) {
    AcDb2dPolyline* old = nullptr;
    if (polyline->convertTo(true, old) != Acad::eOk) return polyline->close(), false;
    delete polyline; // the new one has its place in the drawing
    old->close();
    return true;
}

bool OldToLightPolyline(AcDbEntity* old) {
    auto polyline = std::make_unique<AcDbPolyline>();
    if (polyline->convertFrom(old, true) != Acad::eOk) return old->close(), false;
    polyline.release()->close();
    return true;
}

} // namespace corvane
