// Polygons of boundaries.
#include "scatter/random/boundary.h"

#include <algorithm>
#include <cmath>

namespace corvane::scatter {
namespace {

constexpr double kStraight = 1e-6, kNoArea = 1e-9;

void addPointAt(const AcDbCurve& curve, double param, std::vector<AcGePoint2d>& points) {
    AcGePoint3d point;
    if (curve.getPointAtParam(param, point) == Acad::eOk) points.emplace_back(point.x, point.y);
}

std::vector<AcGePoint2d> polygonOf(const AcDbPolyline& polyline) {
    constexpr int kParts = 10; // a segment spans 1 in parameter, and 10 parts is the least
    std::vector<AcGePoint2d> points;
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint3d corner;
        double bulge = 0;
        polyline.getPointAt(i, corner);
        polyline.getBulgeAt(i, bulge);
        points.emplace_back(corner.x, corner.y);
        if (std::abs(bulge) <= kStraight) continue;
        for (int part = 1; part < kParts; ++part) addPointAt(polyline, i + double(part) / kParts, points);
    }
    return points;
}

std::vector<AcGePoint2d> polygonOf(const AcDbCurve& curve) {
    double first = 0, last = 0, from = 0, to = 0;
    std::vector<AcGePoint2d> points;
    if (curve.getStartParam(first) != Acad::eOk || curve.getEndParam(last) != Acad::eOk) return points;
    curve.getDistAtParam(first, from);
    curve.getDistAtParam(last, to);
    const int count = int(std::clamp(std::abs(to - from), 100.0, 1000.0));
    for (int i = 0; i < count; ++i) addPointAt(curve, first + (last - first) * i / count, points);
    return points;
}

std::vector<AcGePoint2d> polygonOf(const AcDbEntity& entity) {
    if (const auto* polyline = AcDbPolyline::cast(&entity)) return polygonOf(*polyline);
    const auto* curve = AcDbCurve::cast(&entity);
    return curve ? polygonOf(*curve) : std::vector<AcGePoint2d>();
}

} // namespace

bool IsBoundary(const AcDbEntity& entity) {
    const auto* curve = AcDbCurve::cast(&entity);
    return curve && curve->isClosed() &&
           (AcDbPolyline::cast(curve) || AcDbCircle::cast(curve) || AcDbEllipse::cast(curve));
}

std::optional<ScatterRegion> RegionOf(AcDbObjectId id) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    ScatterRegion region;
    if (!entity || !IsBoundary(*entity) || entity->getGeomExtents(region.box) != Acad::eOk)
        return std::nullopt;
    std::vector<AcGePoint2d> polygon = polygonOf(*entity);
    region.area = std::abs(SignedArea(polygon));
    if (polygon.size() < 3 || !(region.area > kNoArea)) return std::nullopt;
    region.id = id;
    region.polygon = WindingIndex(std::move(polygon));
    region.elevation = region.box.minPoint().z;
    return region;
}

} // namespace corvane::scatter
