// Circles and circular arcs of the host's classes, in the plane and in space.
#include "host/ge/arc.h"

#include <algorithm>
#include <cmath>

#include "host/ge/matrix2d.h"

namespace {

using host::ge::kTwoPi;
constexpr AcGeTol kExact = AcGeTol().setEqualPoint(0).setEqualVector(0);

// An end angle above the start angle by at most one turn.
double endAfter(double start, double end) {
    const double sweep = std::fmod(end - start, kTwoPi);
    return start + (sweep <= 0 ? sweep + kTwoPi : sweep);
}

// The angle, turned into the arc's range; outside it, the nearer end.
double angleInRange(double angle, double start, double end) {
    double beyond = std::fmod(angle - start, kTwoPi);
    if (beyond < 0) beyond += kTwoPi;
    const double sweep = end - start;
    if (beyond <= sweep) return start + beyond;
    return beyond - sweep < kTwoPi - beyond ? end : start;
}

// The roots of |base + t u| = radius for a unit u; tangency within the tolerance gives one root.
struct Crossings {
    int count = 0;
    double at[2] = {0, 0};
};

template <class V> Crossings crossCircle(const V& base, const V& u, double radius, double tolerance) {
    const double middle = -base.dotProduct(u), off = (base + u * middle).length();
    if (off > radius + tolerance) return {};
    const double half = std::sqrt(std::max(0.0, (radius - off) * (radius + off)));
    if (off >= radius - tolerance) return {1, {middle, middle}};
    return {2, {middle - half, middle + half}};
}

template <class P> void keep(const P& point, bool wanted, int& count, P& p1, P& p2) {
    if (wanted) (count++ == 0 ? p1 : p2) = point;
}

template <class P> AcGeError threePointFault(const P& a, const P& b, const P& c, double twiceArea) {
    const double tol = AcGeContext::gTol.equalPoint();
    if (a.distanceTo(b) <= tol) return AcGe::kEqualArg1Arg2;
    if (a.distanceTo(c) <= tol) return AcGe::kEqualArg1Arg3;
    if (b.distanceTo(c) <= tol) return AcGe::kEqualArg2Arg3;
    const double size = a.distanceTo(b) * a.distanceTo(c);
    return twiceArea > AcGeContext::gTol.equalVector() * size ? AcGe::kOk
                                                              : AcGe::kLinearlyDependentArg1Arg2Arg3;
}

} // namespace

AcGeCircArc2d& AcGeCircArc2d::set(const AcGePoint2d& center, double radius) {
    return set(center, radius, 0, kTwoPi);
}

AcGeCircArc2d& AcGeCircArc2d::set(const AcGePoint2d& center, double radius, double startAngle,
                                  double endAngle, const AcGeVector2d& refVec, bool isClockWise) {
    center_ = center;
    radius_ = radius;
    ref_ = refVec.normal(kExact);
    clockwise_ = isClockWise;
    return setAngles(startAngle, endAngle);
}

AcGeCircArc2d& AcGeCircArc2d::set(const AcGePoint2d& start, const AcGePoint2d& point,
                                  const AcGePoint2d& end) {
    AcGeError ignored;
    return set(start, point, end, ignored);
}

AcGeCircArc2d& AcGeCircArc2d::set(const AcGePoint2d& start, const AcGePoint2d& point, const AcGePoint2d& end,
                                  AcGeError& error) {
    const AcGeVector2d b = point - start, c = end - start;
    const double twice = b.crossProduct(c);
    error = threePointFault(start, point, end, std::fabs(twice));
    if (error != AcGe::kOk) return *this;
    const AcGeVector2d toCenter = (b * c.lengthSqrd() - c * b.lengthSqrd()).perpVector() / (2 * twice);
    const AcGePoint2d middle = start + toCenter;
    const bool clockwise = twice < 0;
    const AcGeVector2d ref = (start - middle).normal(kExact);
    const double turn = ref.angleToCCW(end - middle);
    return set(middle, toCenter.length(), 0, clockwise ? kTwoPi - turn : turn, ref, clockwise);
}

AcGeCircArc2d& AcGeCircArc2d::set(const AcGePoint2d& start, const AcGePoint2d& end, double bulge,
                                  bool bulgeFlag) {
    const AcGeVector2d chord = end - start;
    const double half = 0.5 * chord.length();
    if (!bulgeFlag && half > 0) bulge /= half;
    if (half == 0 || bulge == 0) return *this;
    const double radius = half * (1 + bulge * bulge) / (2 * std::fabs(bulge));
    const AcGePoint2d middle = start + chord * 0.5 + chord.perpVector() * ((1 - bulge * bulge) / (4 * bulge));
    return set(middle, radius, 0, 4 * std::atan(std::fabs(bulge)), start - middle, bulge < 0);
}

AcGeCircArc2d& AcGeCircArc2d::setCenter(const AcGePoint2d& p) {
    center_ = p;
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setRadius(double r) {
    radius_ = r;
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setAngles(double startAngle, double endAngle) {
    start_ = startAngle;
    end_ = endAfter(startAngle, endAngle);
    return *this;
}

AcGePoint2d AcGeCircArc2d::evalPoint(double angle) const {
    const AcGeVector2d side = clockwise_ ? -ref_.perpVector() : ref_.perpVector();
    return center_ + ref_ * (radius_ * std::cos(angle)) + side * (radius_ * std::sin(angle));
}

bool AcGeCircArc2d::isClosed() const { return end_ - start_ >= kTwoPi - AcGeContext::gTol.equalVector(); }

double AcGeCircArc2d::paramOf(const AcGePoint2d& point) const {
    const double turn = ref_.angleToCCW(point - center_);
    return angleInRange(clockwise_ ? -turn : turn, start_, end_);
}

bool AcGeCircArc2d::isInside(const AcGePoint2d& point, const AcGeTol& tol) const {
    return center_.distanceTo(point) < radius_ + tol.equalPoint();
}

bool AcGeCircArc2d::intersectWith(const AcGeLinearEnt2d& line, int& count, AcGePoint2d& p1, AcGePoint2d& p2,
                                  const AcGeTol& tol) const {
    const AcGePoint2d base = line.pointOnLine();
    const AcGeVector2d u = line.direction();
    const Crossings roots = crossCircle(base - center_, u, radius_, tol.equalPoint());
    count = 0;
    for (int i = 0; i < roots.count; ++i) {
        const AcGePoint2d p = base + u * roots.at[i];
        keep(p, isOn(p, tol) && line.isOn(p, tol), count, p1, p2);
    }
    return count > 0;
}

bool AcGeCircArc2d::intersectWith(const AcGeCircArc2d& other, int& count, AcGePoint2d& p1, AcGePoint2d& p2,
                                  const AcGeTol& tol) const {
    count = 0;
    const AcGeVector2d between = other.center_ - center_;
    const double d = between.length();
    if (d <= tol.equalPoint()) return false; // concentric: apart or the same
    // The radical line crosses the line of centres at a right angle.
    const double reach = 0.5 * (d + (radius_ - other.radius_) * (radius_ + other.radius_) / d);
    const AcGeVector2d u = between / d;
    const Crossings roots = crossCircle(u * reach, u.perpVector(), radius_, tol.equalPoint());
    for (int i = 0; i < roots.count; ++i) {
        const AcGePoint2d p = center_ + u * reach + u.perpVector() * roots.at[i];
        keep(p, isOn(p, tol) && other.isOn(p, tol), count, p1, p2);
    }
    return count > 0;
}

bool AcGeCircArc2d::tangent(const AcGePoint2d& point, AcGeLine2d& line, const AcGeTol& tol) const {
    if (!isOn(point, tol)) return false;
    const AcGePoint2d foot = closestPointTo(point);
    const AcGeVector2d side = (foot - center_).normal(kExact).perpVector();
    line.set(foot, clockwise_ ? -side : side);
    return true;
}

AcGeCircArc2d& AcGeCircArc2d::transformBy(const AcGeMatrix2d& m) {
    center_ = m * center_;
    ref_ = (m * ref_).normal(kExact);
    radius_ *= std::sqrt(std::fabs(m.det()));
    clockwise_ = clockwise_ != (m.det() < 0);
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& center, const AcGeVector3d& normal, double radius) {
    return set(center, normal, normal.perpVector(), radius, 0, kTwoPi);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& center, const AcGeVector3d& normal,
                                  const AcGeVector3d& refVec, double radius, double startAngle,
                                  double endAngle) {
    center_ = center;
    normal_ = normal.normal(kExact);
    ref_ = refVec.orthoProject(normal_).normal(kExact);
    radius_ = radius;
    return setAngles(startAngle, endAngle);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& start, const AcGePoint3d& point,
                                  const AcGePoint3d& end) {
    AcGeError ignored;
    return set(start, point, end, ignored);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& start, const AcGePoint3d& point, const AcGePoint3d& end,
                                  AcGeError& error) {
    const AcGeVector3d b = point - start, c = end - start, n = b.crossProduct(c);
    error = threePointFault(start, point, end, n.length());
    if (error != AcGe::kOk) return *this;
    const AcGeVector3d toCenter =
        n.crossProduct(b * c.lengthSqrd() - c * b.lengthSqrd()) / (2 * n.lengthSqrd());
    const AcGePoint3d middle = start + toCenter;
    return set(middle, n, start - middle, toCenter.length(), 0, (start - middle).angleTo(end - middle, n));
}

AcGeCircArc3d& AcGeCircArc3d::setCenter(const AcGePoint3d& p) {
    center_ = p;
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setRadius(double r) {
    radius_ = r;
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setAngles(double startAngle, double endAngle) {
    start_ = startAngle;
    end_ = endAfter(startAngle, endAngle);
    return *this;
}

AcGePoint3d AcGeCircArc3d::evalPoint(double angle) const {
    return center_ + ref_ * (radius_ * std::cos(angle)) +
           normal_.crossProduct(ref_) * (radius_ * std::sin(angle));
}

AcGeVector3d AcGeCircArc3d::tangentAt(double angle) const {
    return normal_.crossProduct(ref_) * std::cos(angle) - ref_ * std::sin(angle);
}

bool AcGeCircArc3d::isClosed() const { return end_ - start_ >= kTwoPi - AcGeContext::gTol.equalVector(); }

double AcGeCircArc3d::paramOf(const AcGePoint3d& point) const {
    const AcGeVector3d v = point - center_;
    return angleInRange(std::atan2(v.dotProduct(normal_.crossProduct(ref_)), v.dotProduct(ref_)), start_,
                        end_);
}

bool AcGeCircArc3d::isInside(const AcGePoint3d& point, const AcGeTol& tol) const {
    const AcGeVector3d v = point - center_;
    return std::fabs(v.dotProduct(normal_)) <= tol.equalPoint() &&
           v.orthoProject(normal_).length() < radius_ + tol.equalPoint();
}

bool AcGeCircArc3d::intersectWith(const AcGeLinearEnt3d& line, int& count, AcGePoint3d& p1, AcGePoint3d& p2,
                                  const AcGeTol& tol) const {
    const AcGePoint3d base = line.pointOnLine();
    const AcGeVector3d u = line.direction();
    count = 0;
    const double slope = u.dotProduct(normal_);
    if (std::fabs(slope) > tol.equalVector()) {
        const AcGePoint3d p = base - u * ((base - center_).dotProduct(normal_) / slope);
        keep(p, isOn(p, tol) && line.isOn(p, tol), count, p1, p2);
        return count > 0;
    }
    const Crossings roots = crossCircle(base - center_, u, radius_, tol.equalPoint());
    for (int i = 0; i < roots.count; ++i) {
        const AcGePoint3d p = base + u * roots.at[i];
        keep(p, isOn(p, tol) && line.isOn(p, tol), count, p1, p2);
    }
    return count > 0;
}

bool AcGeCircArc3d::intersectWith(const AcGePlane& plane, int& count, AcGePoint3d& p1, AcGePoint3d& p2,
                                  const AcGeTol& tol) const {
    AcGePlane own;
    AcGeLine3d line;
    getPlane(own);
    count = 0;
    return own.intersectWith(plane, line, tol) && intersectWith(line, count, p1, p2, tol);
}

AcGeCircArc3d& AcGeCircArc3d::transformBy(const AcGeMatrix3d& m) {
    const AcGeVector3d x = m * ref_, y = m * normal_.crossProduct(ref_), n = x.crossProduct(y);
    center_ = m * center_;
    radius_ *= std::sqrt(n.length());
    normal_ = n.normal(kExact);
    ref_ = x.normal(kExact);
    return *this;
}
