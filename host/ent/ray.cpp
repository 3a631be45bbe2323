// Rays and construction lines: data, form in files, and what they do as curves and entities.
#include "host/ent/ray.h"

#include <algorithm>

#include "host/ent/filing.h"
#include "host/ent/line.h"
#include "host/gi/draw.h"

HOST_DEFINE_CLASS(AcDbRay, AcDbCurve, L"RAY")
HOST_DEFINE_CLASS(AcDbXline, AcDbCurve, L"XLINE")

namespace host {

namespace {
// How far off the line a point may lie and still be taken as on it, relative to its distance.
constexpr double kOnLine = 1e-9;
} // namespace

Acad::ErrorStatus EndlessCurve::setBasePoint(const AcGePoint3d& point) { HOST_SET_FINITE(base_, point); }
Acad::ErrorStatus EndlessCurve::setUnitDir(const AcGeVector3d& direction) {
    const double length = direction.length();
    if (!std::isfinite(length) || !(length > 0)) return Acad::eInvalidInput;
    HOST_SET(direction_, direction / length);
}

bool EndlessCurve::inGroup(const Group& group, ReadContext& context) {
    if (context.within(marker()) && (takeTriple(group, 10, base_) || takeTriple(group, 11, direction_)))
        return true;
    return AcDbCurve::inGroup(group, context);
}

void EndlessCurve::inDone(ReadContext& context) {
    const double length = direction_.length();
    if (!std::isfinite(length) || !(length > 0)) {
        direction_ = AcGeVector3d::kXAxis;
        context.repaired("endless line without a direction: the X axis taken");
    } else if (std::fabs(length - 1) > 1e-9) {
        direction_ /= length;
    }
}

void EndlessCurve::outGroups(GroupWriter& writer) const {
    AcDbCurve::outGroups(writer);
    writer.subclass(marker());
    writer.point(10, base_);
    writer.vector(11, direction_);
}

// -- as curves ----------------------------------------------------------------------------------------

bool EndlessCurve::holds(double param) const {
    return std::isfinite(param) && (!hasStart() || param >= -kOnLine);
}

std::optional<double> EndlessCurve::paramNear(const AcGePoint3d& point) const {
    if (!finite(point)) return {};
    const double param = (point - base_).dotProduct(direction_);
    const double off = point.distanceTo(base_ + direction_ * param);
    const double reach = kOnLine * (1 + std::fabs(param) + base_.asVector().length());
    return off <= reach && holds(param) ? std::optional(param) : std::nullopt;
}

Acad::ErrorStatus EndlessCurve::getStartParam(double& param) const {
    if (!hasStart()) return Acad::eNotApplicable;
    return param = 0, Acad::eOk;
}
Acad::ErrorStatus EndlessCurve::getStartPoint(AcGePoint3d& point) const {
    if (!hasStart()) return Acad::eNotApplicable;
    return point = base_, Acad::eOk;
}
Acad::ErrorStatus EndlessCurve::getPointAtParam(double param, AcGePoint3d& point) const {
    if (!holds(param)) return Acad::eInvalidInput;
    return point = base_ + direction_ * param, Acad::eOk;
}
Acad::ErrorStatus EndlessCurve::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    const auto at = paramNear(point);
    if (!at) return Acad::eInvalidInput;
    return param = *at, Acad::eOk;
}
Acad::ErrorStatus EndlessCurve::getDistAtParam(double param, double& distance) const {
    if (!hasStart()) return Acad::eNotApplicable;
    if (!holds(param)) return Acad::eInvalidInput;
    return distance = std::max(param, 0.0), Acad::eOk;
}
Acad::ErrorStatus EndlessCurve::getParamAtDist(double distance, double& param) const {
    return getDistAtParam(distance, param);
}
Acad::ErrorStatus EndlessCurve::getDistAtPoint(const AcGePoint3d& point, double& distance) const {
    const auto at = paramNear(point);
    return at ? getDistAtParam(*at, distance) : Acad::eInvalidInput;
}
Acad::ErrorStatus EndlessCurve::getPointAtDist(double distance, AcGePoint3d& point) const {
    return hasStart() ? getPointAtParam(distance, point) : Acad::eNotApplicable;
}
Acad::ErrorStatus EndlessCurve::getFirstDeriv(double param, AcGeVector3d& derivative) const {
    if (!holds(param)) return Acad::eInvalidInput;
    return derivative = direction_, Acad::eOk;
}
Acad::ErrorStatus EndlessCurve::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const {
    const auto at = paramNear(point);
    return at ? getFirstDeriv(*at, derivative) : Acad::eInvalidInput;
}
Acad::ErrorStatus EndlessCurve::getSecondDeriv(double param, AcGeVector3d& derivative) const {
    if (!holds(param)) return Acad::eInvalidInput;
    return derivative = AcGeVector3d::kIdentity, Acad::eOk;
}
Acad::ErrorStatus EndlessCurve::getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const {
    const auto at = paramNear(point);
    return at ? getSecondDeriv(*at, derivative) : Acad::eInvalidInput;
}

Acad::ErrorStatus EndlessCurve::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& onCurve,
                                                  Adesk::Boolean extend) const {
    if (!finite(given)) return Acad::eInvalidInput;
    double param = (given - base_).dotProduct(direction_);
    if (hasStart() && !extend) param = std::max(param, 0.0);
    return onCurve = base_ + direction_ * param, Acad::eOk;
}

// Both flattened along the direction; the base point for a line that is seen end-on.
Acad::ErrorStatus EndlessCurve::getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                                  AcGePoint3d& onCurve, Adesk::Boolean extend) const {
    if (!finite(given) || !(direction.length() > 0)) return Acad::eInvalidInput;
    const AcGeVector3d flat = direction_.orthoProject(direction);
    const double seen = flat.lengthSqrd();
    double param = seen > 1e-24 ? (given - base_).orthoProject(direction).dotProduct(flat) / seen : 0;
    if (hasStart() && !extend) param = std::max(param, 0.0);
    return onCurve = base_ + direction_ * param, Acad::eOk;
}

Acad::ErrorStatus EndlessCurve::getOffsetCurves(double distance, AcDbVoidPtrArray& curves) const {
    const AcGeVector3d right = direction_.crossProduct(AcGeVector3d::kZAxis);
    if (!std::isfinite(distance)) return Acad::eInvalidInput;
    if (!(right.length() > 1e-12)) return Acad::eNotApplicable;
    auto* parallel = static_cast<EndlessCurve*>(clone());
    parallel->base_ += right * (distance / right.length());
    return curves.append(static_cast<AcDbCurve*>(parallel)), Acad::eOk;
}

Acad::ErrorStatus EndlessCurve::getPlane(AcGePlane& plane) const {
    const bool upright = std::fabs(direction_.z) > 1 - 1e-12;
    const AcGeVector3d across =
        upright ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis.crossProduct(direction_).normal();
    return plane.set(base_, direction_, across), Acad::eOk;
}

// A piece of the line that reaches past the other's box, or, where there is no such box, one that is
// extended both ways, meets the other; what lies before a ray's start is left out.
Acad::ErrorStatus EndlessCurve::subIntersectWith(const AcDbEntity* other, AcDb::Intersect extension,
                                                 const AcGePlane* plane, AcGePoint3dArray& points) const {
    const auto* endless = dynamic_cast<const EndlessCurve*>(other);
    int extended = extension | AcDb::kExtendThis | (endless ? AcDb::kExtendArg : 0);
    AcDbLine own(base_, base_ + direction_);
    AcDbExtents box;
    if (!plane && !(extended & AcDb::kExtendArg) && other->getGeomExtents(box) == Acad::eOk) {
        const double size = box.minPoint().distanceTo(box.maxPoint()), reach = size > 0 ? 2 * size : 1;
        const AcGePoint3d middle = box.minPoint() + (box.maxPoint() - box.minPoint()) * 0.5;
        const AcGePoint3d near = base_ + direction_ * (middle - base_).dotProduct(direction_);
        own = AcDbLine(near - direction_ * reach, near + direction_ * reach);
        extended = AcDb::kOnBothOperands;
    }
    const AcDbLine theirs = endless ? AcDbLine(endless->base_, endless->base_ + endless->direction_) : own;
    const AcDbEntity* with = endless ? &theirs : other;
    AcGePoint3dArray found;
    const auto how = AcDb::Intersect(extended);
    const auto es = plane ? own.intersectWith(with, how, *plane, found) : own.intersectWith(with, how, found);
    if (es != Acad::eOk) return es;
    const auto seen = [&](const AcGeVector3d& v) { return plane ? v.orthoProject(plane->normal()) : v; };
    const auto within = [&](const EndlessCurve& curve, const AcGePoint3d& p) {
        return curve.holds(seen(p - curve.base_).dotProduct(seen(curve.direction_)));
    };
    for (const AcGePoint3d& p : found) {
        const bool onThis = (extension & AcDb::kExtendThis) || within(*this, p);
        const bool onOther = !endless || (extension & AcDb::kExtendArg) || within(*endless, p);
        if (onThis && onOther) points.append(p);
    }
    return Acad::eOk;
}

// -- as entities --------------------------------------------------------------------------------------

Adesk::Boolean EndlessCurve::subWorldDraw(AcGiWorldDraw* context) const {
    if (hasStart())
        context->geometry().ray(base_, base_ + direction_);
    else
        context->geometry().xline(base_, base_ + direction_);
    return true;
}

Acad::ErrorStatus EndlessCurve::subTransformBy(const AcGeMatrix3d& matrix) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    const AcGeVector3d image = matrix * direction_;
    base_ = matrix * base_;
    direction_ = image / image.length();
    return Acad::eOk;
}

Acad::ErrorStatus EndlessCurve::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(base_);
    points.append(base_ + direction_);
    return Acad::eOk;
}

// The second grip turns the line about its base point.
Acad::ErrorStatus EndlessCurve::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (indices.contains(0)) return setBasePoint(base_ + offset);
    return setUnitDir(direction_ + offset);
}

// A stretched construction line moves with its base point.
Acad::ErrorStatus EndlessCurve::subGetStretchPoints(AcGePoint3dArray& points) const {
    return points.append(base_), Acad::eOk;
}
Acad::ErrorStatus EndlessCurve::subMoveStretchPointsAt(const AcGeIntArray&, const AcGeVector3d& offset) {
    return setBasePoint(base_ + offset);
}

Acad::ErrorStatus EndlessCurve::subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                                  const AcGePoint3d& last, AcGePoint3dArray& points) const {
    AcGePoint3d foot;
    if (mode == AcDb::kOsModeEnd && hasStart()) points.append(base_);
    if (mode == AcDb::kOsModeMid && !hasStart()) points.append(base_);
    if (mode == AcDb::kOsModePerp && getClosestPointTo(last, foot, true) == Acad::eOk) points.append(foot);
    if (mode == AcDb::kOsModeNear && getClosestPointTo(pick, foot) == Acad::eOk) points.append(foot);
    return Acad::eOk;
}

} // namespace host
