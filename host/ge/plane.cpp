// Planes, and the straight things of line.h.
#include "host/ge/plane.h"

#include <algorithm>
#include <cmath>

#include "host/ge/line.h"
#include "host/ge/matrix3d.h"

namespace {

constexpr AcGeTol kExact = AcGeTol().setEqualPoint(0).setEqualVector(0);

// Parameter of the foot of the perpendicular, kept in the range; 0 for things of no length.
template <class P, class V>
double footParam(const P& origin, const V& along, double low, double high, const P& point) {
    const double size = along.lengthSqrd();
    return size > 0 ? std::clamp((point - origin).dotProduct(along) / size, low, high) : std::max(low, 0.0);
}

} // namespace

AcGePlane& AcGePlane::set(const AcGePoint3d& point, const AcGeVector3d& normal) {
    const AcGeVector3d n = normal.normal(kExact);
    origin_ = point;
    u_ = n.perpVector();
    v_ = n.crossProduct(u_);
    return *this;
}

void AcGePlane::get(AcGePoint3d& origin, AcGeVector3d& uAxis, AcGeVector3d& vAxis) const {
    origin = origin_;
    uAxis = u_;
    vAxis = v_;
}

AcGeVector3d AcGePlane::normal() const { return u_.crossProduct(v_).normal(kExact); }

AcGePoint2d AcGePlane::paramOf(const AcGePoint3d& point) const {
    const AcGeVector2d p = paramOf(point - origin_);
    return {p.x, p.y};
}

AcGeVector2d AcGePlane::paramOf(const AcGeVector3d& v) const {
    const double uu = u_.lengthSqrd(), uv = u_.dotProduct(v_), vv = v_.lengthSqrd();
    const double pu = v.dotProduct(u_), pv = v.dotProduct(v_), det = uu * vv - uv * uv;
    if (det == 0) return {};
    return {(pu * vv - pv * uv) / det, (pv * uu - pu * uv) / det};
}

double AcGePlane::signedDistanceTo(const AcGePoint3d& point) const {
    return (point - origin_).dotProduct(normal());
}

double AcGePlane::distanceTo(const AcGePoint3d& point) const { return std::fabs(signedDistanceTo(point)); }

AcGePoint3d AcGePlane::closestPointTo(const AcGePoint3d& point) const {
    return point - normal() * signedDistanceTo(point);
}

bool AcGePlane::isOn(const AcGePoint3d& point, const AcGeTol& tol) const {
    return distanceTo(point) <= tol.equalPoint();
}

bool AcGePlane::isParallelTo(const AcGePlane& other, const AcGeTol& tol) const {
    return normal().isParallelTo(other.normal(), tol);
}

bool AcGePlane::isPerpendicularTo(const AcGePlane& other, const AcGeTol& tol) const {
    return normal().isPerpendicularTo(other.normal(), tol);
}

bool AcGePlane::isCoplanarTo(const AcGePlane& other, const AcGeTol& tol) const {
    return isParallelTo(other, tol) && isOn(other.origin_, tol);
}

bool AcGePlane::isEqualTo(const AcGePlane& other, const AcGeTol& tol) const {
    return origin_.isEqualTo(other.origin_, tol) && u_.isEqualTo(other.u_, tol) &&
           v_.isEqualTo(other.v_, tol);
}

bool AcGePlane::intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& point, const AcGeTol& tol) const {
    return line.intersectWith(*this, point, tol);
}

bool AcGePlane::intersectWith(const AcGePlane& other, AcGeLine3d& line, const AcGeTol& tol) const {
    const AcGeVector3d n = normal(), m = other.normal(), along = n.crossProduct(m);
    if (along.length() <= tol.equalVector()) return false;
    // From this origin, within this plane, straight down to the other plane.
    const AcGeVector3d down = along.crossProduct(n).normal(kExact);
    line.set(origin_ - down * (other.signedDistanceTo(origin_) / down.dotProduct(m)), along.normal(kExact));
    return true;
}

AcGePlane& AcGePlane::reverseNormal() {
    std::swap(u_, v_);
    return *this;
}

AcGePlane& AcGePlane::transformBy(const AcGeMatrix3d& m) {
    return *this = AcGePlane(m * origin_, m * u_, m * v_);
}

AcGeVector3d AcGeLinearEnt3d::direction() const { return along_.normal(kExact); }
AcGeLine3d AcGeLinearEnt3d::getLine() const { return AcGeLine3d(origin_, direction()); }

double AcGeLinearEnt3d::paramOf(const AcGePoint3d& point) const {
    return footParam(origin_, along_, low_, high_, point);
}

bool AcGeLinearEnt3d::intersectWith(const AcGeLinearEnt3d& other, AcGePoint3d& point,
                                    const AcGeTol& tol) const {
    const AcGeVector3d u = direction(), v = other.direction(), n = u.crossProduct(v);
    const double sine = n.lengthSqrd();
    if (sine <= tol.equalVector() * tol.equalVector()) return false;
    const double reach = (other.origin_ - origin_).crossProduct(v).dotProduct(n) / sine;
    const AcGePoint3d met = origin_ + u * reach;
    if (!isOn(met, tol) || !other.isOn(met, tol)) return false;
    point = met;
    return true;
}

bool AcGeLinearEnt3d::intersectWith(const AcGePlane& plane, AcGePoint3d& point, const AcGeTol& tol) const {
    const AcGeVector3d u = direction();
    const double slope = u.dotProduct(plane.normal());
    if (std::fabs(slope) <= tol.equalVector()) return false;
    const AcGePoint3d met = origin_ - u * (plane.signedDistanceTo(origin_) / slope);
    if (!isOn(met, tol)) return false;
    point = met;
    return true;
}

bool AcGeLinearEnt3d::isColinearTo(const AcGeLinearEnt3d& other, const AcGeTol& tol) const {
    return isParallelTo(other, tol) && getLine().isOn(other.origin_, tol);
}

void AcGeLinearEnt3d::transformBy(const AcGeMatrix3d& m) {
    origin_ = m * origin_;
    along_ = m * along_;
}

double AcGeLinearEnt2d::paramOf(const AcGePoint2d& point) const {
    return footParam(origin_, along_, low_, high_, point);
}

bool AcGeLinearEnt2d::intersectWith(const AcGeLinearEnt2d& other, AcGePoint2d& point,
                                    const AcGeTol& tol) const {
    const AcGeVector2d u = direction(), v = other.direction();
    const double sine = u.crossProduct(v);
    if (std::fabs(sine) <= tol.equalVector()) return false;
    const AcGePoint2d met = origin_ + u * ((other.origin_ - origin_).crossProduct(v) / sine);
    if (!isOn(met, tol) || !other.isOn(met, tol)) return false;
    point = met;
    return true;
}

bool AcGeLinearEnt2d::isColinearTo(const AcGeLinearEnt2d& other, const AcGeTol& tol) const {
    return isParallelTo(other, tol) && AcGeLine2d(origin_, along_).isOn(other.origin_, tol);
}

void AcGeLinearEnt2d::transformBy(const AcGeMatrix2d& m) {
    origin_ = m * origin_;
    along_ = m * along_;
}
