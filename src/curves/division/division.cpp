// Rebuilding through the services on curves, rays through the host's intersections.
#include "curves/division/division.h"

#include <cmath>
#include <numbers>

#include "core/curve_services.h"
#include "core/messages.h"

namespace corvane {
namespace {

constexpr double kShortest = 0.0001;

// A polyline through the points in the curve's place, with its layer, colour and the like.
bool replaceBy(AcDbCurve& curve, const std::vector<AcGePoint3d>& points, AcDbObjectId& made) {
    if (MakePolylineThroughPoints(made, int(points.size()), points.data(), curve.isClosed(), &curve) !=
        Acad::eOk)
        return false;
    if (AcDbObjectPointer<AcDbEntity> polyline(made, AcDb::kForWrite); polyline)
        polyline->setPropertiesFrom(&curve);
    return (curve.isWriteEnabled() || curve.upgradeOpen() == Acad::eOk) && curve.erase() == Acad::eOk;
}

// Points at i * step; the last is the curve's end.
bool steppedPoints(const AcDbCurve& curve, int count, double step, std::vector<AcGePoint3d>& points) {
    points.resize(size_t(count));
    for (int i = 0; i + 1 < count; ++i)
        if (curve.getPointAtDist(step * i, points[size_t(i)]) != Acad::eOk) return false;
    return curve.getEndPoint(points.back()) == Acad::eOk;
}

} // namespace

bool RebuildByCount(AcDbCurve& curve, int count, AcDbObjectId& made) {
    constexpr int kFewest = 4, kUsual = 16;
    if (count < kFewest) count = kUsual;
    const double length = CurveLength(curve);
    std::vector<AcGePoint3d> points;
    return length >= kShortest && steppedPoints(curve, count, length / (count - 1), points) &&
           replaceBy(curve, points, made);
}

bool RebuildByDistance(AcDbCurve& curve, double distance) {
    const double length = CurveLength(curve);
    if (length < kShortest) return false;
    if (distance > length * 0.25) {
        PrintLine(L"\n线条长度小于4倍设定的等分距离，本曲线不处理。");
        return false;
    }
    // More points than this serve nobody, and the count must stay a whole number.
    constexpr double kMost = 1e7;
    if (!(distance > 0) || length / distance > kMost) return false;
    std::vector<AcGePoint3d> points;
    AcDbObjectId made;
    return steppedPoints(curve, int(length / distance + 1.0), distance, points) &&
           replaceBy(curve, points, made);
}

std::vector<AcGePoint3d> DivisionPoints(const AcDbCurve& curve, int count, double length) {
    std::vector<AcGePoint3d> points;
    points.reserve(size_t(count));
    const double step = length / (curve.isClosed() ? count : count - 1);
    for (int i = 0; i < count; ++i) {
        AcGePoint3d point;
        if (curve.getPointAtDist(std::min(step * i, length), point) != Acad::eOk) break;
        points.push_back(point);
    }
    return points;
}

std::optional<AcGePoint3d> RayPointOnCurve(const AcDbCurve& curve, const AcGePoint3d& centre, double angle,
                                           double rayLength) {
    const AcDbLine ray(centre, centre + AcGeVector3d(std::cos(angle), std::sin(angle), 0) * rayLength);
    AcGePoint3dArray points;
    if (ray.intersectWith(&curve, AcDb::kOnBothOperands, points) != Acad::eOk || points.isEmpty())
        return std::nullopt;
    return points[0];
}

std::vector<AcGePoint3d> RingPoints(const AcDbCurve& curve, const AcGePoint3d& centre, int count,
                                    double offset, double rayLength) {
    std::vector<AcGePoint3d> points;
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * std::numbers::pi * i / count + offset;
        const auto point = RayPointOnCurve(curve, centre, angle, rayLength);
        if (!point) return {};
        points.push_back(*point);
    }
    return points;
}

} // namespace corvane
