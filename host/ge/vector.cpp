// The operations of the vector and point classes, in the plane and in space, that are too large for their
// headers.
#include <cmath>

#include "host/ge/arc.h"
#include "host/ge/line.h"
#include "host/ge/matrix2d.h"
#include "host/ge/matrix3d.h"
#include "host/ge/plane.h"

namespace {

// An angle of atan2 brought to [0, 2 pi).
double turned(double angle) {
    if (angle < 0) angle += host::ge::kTwoPi;
    return angle >= host::ge::kTwoPi ? 0 : angle;
}

template <class V> bool sameDirection(const V& a, const V& b, double tol) { return (a - b).length() <= tol; }

} // namespace

double AcGeVector2d::length() const { return std::sqrt(lengthSqrd()); }

AcGeVector2d AcGeVector2d::normal(const AcGeTol& tol) const {
    const double len = length();
    return len <= tol.equalVector() ? *this : *this / len;
}

double AcGeVector2d::angle() const { return turned(std::atan2(y, x)); }

double AcGeVector2d::angleTo(const AcGeVector2d& v) const {
    return std::atan2(std::fabs(crossProduct(v)), dotProduct(v));
}

double AcGeVector2d::angleToCCW(const AcGeVector2d& v) const {
    return turned(std::atan2(crossProduct(v), dotProduct(v)));
}

bool AcGeVector2d::isZeroLength(const AcGeTol& tol) const { return length() <= tol.equalVector(); }

bool AcGeVector2d::isUnitLength(const AcGeTol& tol) const {
    return std::fabs(length() - 1) <= tol.equalVector();
}

bool AcGeVector2d::isEqualTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    return (*this - v).length() <= tol.equalVector();
}

bool AcGeVector2d::isCodirectionalTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return sameDirection(normal(tol), v.normal(tol), tol.equalVector());
}

bool AcGeVector2d::isParallelTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    return isCodirectionalTo(v, tol) || isCodirectionalTo(-v, tol);
}

bool AcGeVector2d::isPerpendicularTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return std::fabs(normal(tol).dotProduct(v.normal(tol))) <= tol.equalVector();
}

AcGeVector2d& AcGeVector2d::rotateBy(double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return set(c * x - s * y, s * x + c * y);
}

AcGeVector2d& AcGeVector2d::mirror(const AcGeVector2d& line) {
    const AcGeVector2d u = line.normal();
    return *this = u * (2 * dotProduct(u)) - *this;
}

AcGeVector2d& AcGeVector2d::transformBy(const AcGeMatrix2d& m) { return *this = m * *this; }
AcGeVector2d& AcGeVector2d::setToProduct(const AcGeMatrix2d& m, const AcGeVector2d& v) {
    return *this = m * v;
}

bool AcGePoint2d::isEqualTo(const AcGePoint2d& p, const AcGeTol& tol) const {
    return distanceTo(p) <= tol.equalPoint();
}

AcGePoint2d& AcGePoint2d::rotateBy(double angle, const AcGePoint2d& wrtPoint) {
    return *this = wrtPoint + (*this - wrtPoint).rotateBy(angle);
}

AcGePoint2d& AcGePoint2d::scaleBy(double factor, const AcGePoint2d& wrtPoint) {
    return *this = wrtPoint + (*this - wrtPoint) * factor;
}

AcGePoint2d& AcGePoint2d::mirror(const AcGeLine2d& line) {
    const AcGePoint2d foot = line.closestPointTo(*this);
    return *this = foot + (foot - *this);
}

AcGePoint2d& AcGePoint2d::transformBy(const AcGeMatrix2d& m) { return *this = m * *this; }
AcGePoint2d& AcGePoint2d::setToProduct(const AcGeMatrix2d& m, const AcGePoint2d& p) { return *this = m * p; }

AcGeVector3d& AcGeVector3d::set(const AcGePlane& plane, const AcGeVector2d& v) {
    AcGePoint3d origin;
    AcGeVector3d u, w;
    plane.get(origin, u, w);
    return *this = u * v.x + w * v.y;
}

AcGeVector2d AcGeVector3d::convert2d(const AcGePlane& plane) const { return plane.paramOf(*this); }

double AcGeVector3d::length() const { return std::sqrt(lengthSqrd()); }

unsigned AcGeVector3d::largestElement() const {
    const double ax = std::fabs(x), ay = std::fabs(y), az = std::fabs(z);
    return ax >= ay && ax >= az ? 0 : ay >= az ? 1 : 2;
}

AcGeVector3d AcGeVector3d::perpVector() const {
    constexpr double kNearZ = 1.0 / 64; // of the DXF reference
    const AcGeVector3d n = normal(AcGeTol().setEqualVector(0));
    const bool alongZ = std::fabs(n.x) < kNearZ && std::fabs(n.y) < kNearZ;
    return (alongZ ? kYAxis : kZAxis).crossProduct(n).normal();
}

AcGeVector3d AcGeVector3d::normal(const AcGeTol& tol) const {
    const double len = length();
    return len <= tol.equalVector() ? *this : *this / len;
}

double AcGeVector3d::angleTo(const AcGeVector3d& v) const {
    return std::atan2(crossProduct(v).length(), dotProduct(v));
}

double AcGeVector3d::angleTo(const AcGeVector3d& v, const AcGeVector3d& reference) const {
    const double angle = angleTo(v);
    return turned(crossProduct(v).dotProduct(reference) < 0 ? -angle : angle);
}

double AcGeVector3d::angleOnPlane(const AcGePlane& plane) const { return plane.paramOf(*this).angle(); }

bool AcGeVector3d::isZeroLength(const AcGeTol& tol) const { return length() <= tol.equalVector(); }

bool AcGeVector3d::isUnitLength(const AcGeTol& tol) const {
    return std::fabs(length() - 1) <= tol.equalVector();
}

bool AcGeVector3d::isEqualTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    return (*this - v).length() <= tol.equalVector();
}

bool AcGeVector3d::isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return sameDirection(normal(tol), v.normal(tol), tol.equalVector());
}

bool AcGeVector3d::isParallelTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    return isCodirectionalTo(v, tol) || isCodirectionalTo(-v, tol);
}

bool AcGeVector3d::isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return std::fabs(normal(tol).dotProduct(v.normal(tol))) <= tol.equalVector();
}

AcGeVector3d& AcGeVector3d::rotateBy(double angle, const AcGeVector3d& axis) {
    return *this = AcGeMatrix3d::rotation(angle, axis) * *this;
}

AcGeVector3d& AcGeVector3d::mirror(const AcGeVector3d& normalToPlane) {
    const AcGeVector3d n = normalToPlane.normal();
    return *this -= n * (2 * dotProduct(n));
}

AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& m) { return *this = m * *this; }
AcGeVector3d& AcGeVector3d::setToProduct(const AcGeMatrix3d& m, const AcGeVector3d& v) {
    return *this = m * v;
}

AcGeVector3d AcGeVector3d::orthoProject(const AcGeVector3d& planeNormal) const {
    const AcGeVector3d n = planeNormal.normal();
    return *this - n * dotProduct(n);
}

AcGeVector3d AcGeVector3d::project(const AcGeVector3d& planeNormal, const AcGeVector3d& direction) const {
    const AcGeVector3d n = planeNormal.normal(), d = direction.normal();
    const double slope = n.dotProduct(d);
    return std::fabs(slope) <= AcGeContext::gTol.equalVector() ? *this : *this - d * (dotProduct(n) / slope);
}

AcGePoint3d& AcGePoint3d::set(const AcGePlane& plane, const AcGePoint2d& p) {
    return *this = plane.evalPoint(p);
}
AcGePoint2d AcGePoint3d::convert2d(const AcGePlane& plane) const { return plane.paramOf(*this); }

bool AcGePoint3d::isEqualTo(const AcGePoint3d& p, const AcGeTol& tol) const {
    return distanceTo(p) <= tol.equalPoint();
}

AcGePoint3d& AcGePoint3d::rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& wrtPoint) {
    return *this = wrtPoint + (*this - wrtPoint).rotateBy(angle, axis);
}

AcGePoint3d& AcGePoint3d::scaleBy(double factor, const AcGePoint3d& wrtPoint) {
    return *this = wrtPoint + (*this - wrtPoint) * factor;
}

AcGePoint3d& AcGePoint3d::mirror(const AcGePlane& plane) {
    return *this -= plane.normal() * (2 * plane.signedDistanceTo(*this));
}

AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& m) { return *this = m * *this; }
AcGePoint3d& AcGePoint3d::setToProduct(const AcGeMatrix3d& m, const AcGePoint3d& p) { return *this = m * p; }

AcGePoint3d AcGePoint3d::orthoProject(const AcGePlane& plane) const { return plane.closestPointTo(*this); }

AcGePoint3d AcGePoint3d::project(const AcGePlane& plane, const AcGeVector3d& direction) const {
    const AcGeVector3d d = direction.normal();
    const double slope = plane.normal().dotProduct(d);
    if (std::fabs(slope) <= AcGeContext::gTol.equalVector()) return *this;
    return *this - d * (plane.signedDistanceTo(*this) / slope);
}
