// Polygons of boundaries.
#include "scatter/random/boundary.h"

#include <algorithm>
#include <cmath>

#include "scatter/random/loops.h"

namespace corvane::scatter {
namespace {

constexpr double kStraight = 1e-6, kNoArea = 1e-9;

// As many parts as the length; lengths beyond what numbers hold count as the most.
int partsOf(double length) { return length < 1000 ? int(std::max(length, 100.0)) : 1000; }

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
    const int count = partsOf(std::abs(to - from));
    for (int i = 0; i < count; ++i) addPointAt(curve, first + (last - first) * i / count, points);
    return points;
}

PointChain flattened(const AcDbCurve& curve) {
    PointChain points;
    double first = 0, last = 0, from = 0, to = 0;
    if (curve.getStartParam(first) != Acad::eOk || curve.getEndParam(last) != Acad::eOk) return points;
    curve.getDistAtParam(first, from);
    curve.getDistAtParam(last, to);
    const int parts = AcDbLine::cast(&curve) ? 1 : partsOf(std::abs(to - from));
    AcGePoint3d point;
    for (int i = 0; i <= parts; ++i)
        if (curve.getPointAtParam(first + (last - first) * i / parts, point) == Acad::eOk)
            points.push_back(point);
    return points;
}

// All loops in one polygon: each comes round to its own start and goes back to the first one's, so that the
// ways between them are gone there and back. Holes don't count then, and pieces apart do.
std::vector<AcGePoint2d> polygonOf(const AcDbRegion& region) {
    std::vector<AcGePoint2d> points;
    for (const NestedLoop& loop : NestLoops(LoopsOf(region, flattened))) {
        points.insert(points.end(), loop.points.begin(), loop.points.end());
        points.push_back(loop.points.front());
        points.push_back(AcGePoint2d(points.front()));
    }
    return points;
}

std::vector<AcGePoint2d> polygonOf(const AcDbEntity& entity) {
    if (const auto* region = AcDbRegion::cast(&entity)) return polygonOf(*region);
    if (const auto* polyline = AcDbPolyline::cast(&entity)) return polygonOf(*polyline);
    const auto* curve = AcDbCurve::cast(&entity);
    return curve ? polygonOf(*curve) : std::vector<AcGePoint2d>();
}

} // namespace

bool IsBoundary(const AcDbEntity& entity) {
    if (const auto* region = AcDbRegion::cast(&entity)) return !region->isNull();
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
    if (polygon.size() < 3 || !(region.area > kNoArea) || !std::isfinite(region.area)) return std::nullopt;
    region.id = id;
    region.polygon = WindingIndex(std::move(polygon));
    region.elevation = region.box.minPoint().z;
    return region;
}

} // namespace corvane::scatter
