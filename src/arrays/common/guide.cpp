// Measures, points and starts of guides.
#include "arrays/common/guide.h"

#include <cmath>

#include "core/curve_services.h"
#include "core/host/editor.h"
#include "core/language.h"
#include "core/properties.h"

namespace corvane {
namespace {

AcGePoint3d middleOf(const AcDbExtents& box) {
    return box.minPoint() + (box.maxPoint() - box.minPoint()) / 2;
}

// Where a ray from the middle of the curve's box comes back to it from far outside.
double rayDistance(const AcDbCurve& curve, double ray) {
    AcDbExtents box;
    if (curve.getGeomExtents(box) != Acad::eOk) return 0;
    const double reach = (box.maxPoint() - box.minPoint()).length() * 10 + 1;
    const AcGePoint3d far = middleOf(box) + AcGeVector3d(std::cos(ray), std::sin(ray), 0) * reach;
    AcGePoint3d nearest;
    double distance = 0;
    if (curve.getClosestPointTo(far, nearest) != Acad::eOk ||
        curve.getDistAtPoint(nearest, distance) != Acad::eOk)
        return 0;
    return distance;
}

struct AskedPoint {
    int status = RTERROR;
    AcGePoint3d point; // world
};
AskedPoint askPoint(const wchar_t* prompt, const AcGePoint3d* base = nullptr) {
    ads_point from, given;
    if (base) {
        AcGePoint3d ucs = *base;
        WcsToUcs(ucs);
        from[X] = ucs.x, from[Y] = ucs.y, from[Z] = ucs.z;
    }
    AskedPoint asked;
    asked.status = acedGetPoint(base ? from : nullptr, Translate(prompt), given);
    if (asked.status != RTNORM) return asked;
    asked.point.set(given[X], given[Y], given[Z]);
    UcsToWcs(asked.point);
    return asked;
}

// What the prompts need of the curve, so that it isn't open while they run.
struct GuideFacts {
    bool closed = false, counterClockwise = true;
    AcGePoint3d first, last;
};
std::optional<GuideFacts> factsOf(AcDbObjectId guide) {
    AcDbObjectPointer<AcDbCurve> curve(guide, AcDb::kForRead);
    if (!curve) return std::nullopt;
    GuideFacts facts;
    facts.closed = curve->isClosed();
    if (facts.closed) facts.counterClockwise = RunsCounterClockwise(*curve);
    curve->getStartPoint(facts.first);
    curve->getEndPoint(facts.last);
    return facts;
}

bool askRing(const AcGePoint3d& centre, bool counterClockwise, const GuidePrompts& prompts,
             GuideStart& start) {
    const AskedPoint towards = askPoint(prompts.ray, &centre);
    if (towards.status != RTNORM && towards.status != RTNONE) return false;
    std::wstring word;
    acedInitGet(0, prompts.keywords);
    const int status = acedGetKword(Translate(prompts.direction), word);
    if (status != RTNORM && status != RTNONE) return false;
    if (towards.status == RTNORM)
        start.ray = std::atan2(towards.point.y - centre.y, towards.point.x - centre.x);
    start.direction = status == RTNONE || (word == prompts.clockwise) != counterClockwise ? 1 : -1;
    return true;
}

bool askEnd(const GuideFacts& facts, const GuidePrompts& prompts, GuideStart& start) {
    const AskedPoint near = askPoint(prompts.openEnd);
    if (near.status != RTNORM && near.status != RTNONE) return false;
    start.fromEnd =
        near.status == RTNORM && near.point.distanceTo(facts.first) > near.point.distanceTo(facts.last);
    return true;
}

} // namespace

GuideMeasure MeasureGuide(const AcDbCurve& curve, const GuideStart& start) {
    GuideMeasure guide{CurveLength(curve), bool(curve.isClosed()), 0};
    if (guide.closed) guide.rayDistance = rayDistance(curve, start.ray);
    return guide;
}

std::vector<double> SampleDistances(const AcDbCurve& curve, const ArraySettings& settings,
                                    const GuideStart& start) {
    return SampleDistances(MeasureGuide(curve, start), settings, start);
}

GuidePoint GuidePointAt(const AcDbCurve& curve, double distance) {
    constexpr double kNoDirection = 1e-9;
    GuidePoint place;
    double param = 0;
    if (curve.getParamAtDist(distance, param) != Acad::eOk ||
        curve.getPointAtParam(param, place.point) != Acad::eOk)
        return place;
    place.found = true;
    AcGeVector3d derivative;
    if (curve.getFirstDeriv(param, derivative) == Acad::eOk && derivative.length() >= kNoDirection)
        place.tangent = derivative.normal();
    return place;
}

std::vector<GuidePoint> GuidePointsAt(const AcDbCurve& curve, const std::vector<double>& distances) {
    std::vector<GuidePoint> places;
    places.reserve(distances.size());
    for (const double distance : distances) places.push_back(GuidePointAt(curve, distance));
    return places;
}

bool RunsCounterClockwise(const AcDbCurve& curve) {
    constexpr int kPoints = 200;
    const double length = CurveLength(curve);
    if (!curve.isClosed() || length < 1e-9) return true;
    std::vector<AcGePoint3d> points;
    AcGePoint3d point;
    for (int i = 0; i < kPoints; ++i)
        if (curve.getPointAtDist(i * length / kPoints, point) == Acad::eOk) points.push_back(point);
    if (points.size() < 3) return true;
    // From the first point, so that a ring far from the origin keeps its digits.
    double area = 0;
    for (size_t j = 0; j < points.size(); ++j) {
        const AcGeVector3d a = points[j] - points[0], b = points[(j + 1) % points.size()] - points[0];
        area += a.x * b.y - a.y * b.x;
    }
    return area >= 0;
}

bool AskGuideStart(AcDbObjectId guide, const GuidePrompts& prompts, GuideStart& start) {
    const auto facts = factsOf(guide);
    if (!facts) return false;
    if (!facts->closed) return askEnd(*facts, prompts, start);
    return askRing(MiddleOf(guide), facts->counterClockwise, prompts, start);
}

AcGePoint3d MiddleOf(AcDbObjectId object) {
    AcDbObjectPointer<AcDbEntity> entity(object, AcDb::kForRead);
    AcDbExtents box;
    return entity && entity->getGeomExtents(box) == Acad::eOk ? middleOf(box) : AcGePoint3d::kOrigin;
}

AcDbObjectId PickEntity(const wchar_t* prompt) {
    ads_name picked;
    ads_point at;
    AcDbObjectId id;
    if (acedEntSel(Translate(prompt), picked, at) != RTNORM || acdbGetObjectId(id, picked) != Acad::eOk)
        return {};
    return id;
}

AcDbObjectId PickCurve(const wchar_t* prompt) {
    const AcDbObjectId id = PickEntity(prompt);
    return IsCurve(id) ? id : AcDbObjectId();
}

bool IsCurve(AcDbObjectId object) { return bool(AcDbObjectPointer<AcDbCurve>(object, AcDb::kForRead)); }

} // namespace corvane
