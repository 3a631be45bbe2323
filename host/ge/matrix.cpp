// Building, multiplying, inverting and judging transformations, in the plane and in space.
#include <algorithm>
#include <cmath>

#include "host/ge/line.h"
#include "host/ge/matrix3d.h"
#include "host/ge/plane.h"

namespace {

constexpr AcGeTol kExact = AcGeTol().setEqualPoint(0).setEqualVector(0);

AcGeVector3d column(const AcGeMatrix3d& m, unsigned c) {
    return {m.entry[0][c], m.entry[1][c], m.entry[2][c]};
}

// The affine map with linear part m that leaves center where it is.
AcGeMatrix3d about(AcGeMatrix3d m, const AcGePoint3d& center) {
    m.setTranslation(center - m * center);
    return m;
}

// Gauss and Jordan with partial pivoting, for matrices with a projective row.
AcGeMatrix3d inverseByElimination(AcGeMatrix3d a) {
    AcGeMatrix3d result;
    for (unsigned c = 0; c < 4; ++c) {
        unsigned pivot = c;
        for (unsigned r = c + 1; r < 4; ++r)
            if (std::fabs(a.entry[r][c]) > std::fabs(a.entry[pivot][c])) pivot = r;
        if (a.entry[pivot][c] == 0) return a;
        std::swap(a.entry[pivot], a.entry[c]);
        std::swap(result.entry[pivot], result.entry[c]);
        const double scale = 1 / a.entry[c][c];
        for (unsigned k = 0; k < 4; ++k) {
            a.entry[c][k] *= scale;
            result.entry[c][k] *= scale;
        }
        for (unsigned r = 0; r < 4; ++r) {
            const double f = a.entry[r][c];
            if (r == c || f == 0) continue;
            for (unsigned k = 0; k < 4; ++k) {
                a.entry[r][k] -= f * a.entry[c][k];
                result.entry[r][k] -= f * result.entry[c][k];
            }
        }
    }
    return result;
}

} // namespace

AcGeMatrix2d& AcGeMatrix2d::setToTranslation(const AcGeVector2d& v) {
    return setToIdentity().setTranslation(v);
}

AcGeMatrix2d& AcGeMatrix2d::setToRotation(double angle, const AcGePoint2d& center) {
    const AcGeVector2d x(std::cos(angle), std::sin(angle));
    setCoordSystem(AcGePoint2d::kOrigin, x, x.perpVector());
    return setTranslation(center - *this * center);
}

AcGeMatrix2d& AcGeMatrix2d::setToScaling(double factor, const AcGePoint2d& center) {
    setCoordSystem(AcGePoint2d::kOrigin, {factor, 0}, {0, factor});
    return setTranslation(center - *this * center);
}

AcGeMatrix2d& AcGeMatrix2d::setToMirroring(const AcGePoint2d& point) { return setToScaling(-1, point); }

AcGeMatrix2d& AcGeMatrix2d::setToMirroring(const AcGeLine2d& line) {
    const AcGeVector2d u = line.direction();
    const double c = u.x * u.x - u.y * u.y, s = 2 * u.x * u.y;
    setCoordSystem(AcGePoint2d::kOrigin, {c, s}, {s, -c});
    return setTranslation(line.pointOnLine() - *this * line.pointOnLine());
}

AcGeMatrix2d& AcGeMatrix2d::setToAlignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromX,
                                               const AcGeVector2d& fromY, const AcGePoint2d& toOrigin,
                                               const AcGeVector2d& toX, const AcGeVector2d& toY) {
    AcGeMatrix2d from, to;
    from.setCoordSystem(AcGePoint2d::kOrigin, fromX, fromY);
    to.setCoordSystem(AcGePoint2d::kOrigin, toX, toY);
    *this = to * from.inverse();
    return setTranslation(toOrigin - *this * fromOrigin);
}

AcGeMatrix2d& AcGeMatrix2d::setCoordSystem(const AcGePoint2d& origin, const AcGeVector2d& e0,
                                           const AcGeVector2d& e1) {
    setToIdentity();
    for (unsigned r = 0; r < 2; ++r) {
        entry[r][0] = e0[r];
        entry[r][1] = e1[r];
        entry[r][2] = origin[r];
    }
    return *this;
}

void AcGeMatrix2d::getCoordSystem(AcGePoint2d& origin, AcGeVector2d& e0, AcGeVector2d& e1) const {
    origin.set(entry[0][2], entry[1][2]);
    e0.set(entry[0][0], entry[1][0]);
    e1.set(entry[0][1], entry[1][1]);
}

AcGeMatrix2d& AcGeMatrix2d::setTranslation(const AcGeVector2d& v) {
    entry[0][2] = v.x;
    entry[1][2] = v.y;
    return *this;
}

AcGeMatrix2d AcGeMatrix2d::operator*(const AcGeMatrix2d& m) const {
    AcGeMatrix2d p;
    for (unsigned r = 0; r < 3; ++r)
        for (unsigned c = 0; c < 3; ++c)
            p.entry[r][c] =
                entry[r][0] * m.entry[0][c] + entry[r][1] * m.entry[1][c] + entry[r][2] * m.entry[2][c];
    return p;
}

bool AcGeMatrix2d::isSingular(const AcGeTol& tol) const {
    const double x = std::hypot(entry[0][0], entry[1][0]), y = std::hypot(entry[0][1], entry[1][1]);
    return !(std::fabs(det()) > tol.equalVector() * x * y);
}

AcGeMatrix2d AcGeMatrix2d::inverse() const {
    if (isSingular()) return *this;
    const double d = 1 / det();
    AcGeMatrix2d r;
    r.setCoordSystem(AcGePoint2d::kOrigin, {entry[1][1] * d, -entry[1][0] * d},
                     {-entry[0][1] * d, entry[0][0] * d});
    return r.setTranslation(-(r * translation()));
}

bool AcGeMatrix2d::isUniScaledOrtho(const AcGeTol& tol) const {
    const AcGeVector2d x(entry[0][0], entry[1][0]), y(entry[0][1], entry[1][1]);
    const double limit = tol.equalVector() * scale();
    return scale() > 0 && std::fabs(x.length() - y.length()) <= limit &&
           std::fabs(x.dotProduct(y)) <= limit * scale();
}

double AcGeMatrix2d::scale() const {
    return std::max(std::hypot(entry[0][0], entry[1][0]), std::hypot(entry[0][1], entry[1][1]));
}

bool AcGeMatrix2d::isEqualTo(const AcGeMatrix2d& m, const AcGeTol& tol) const {
    for (unsigned r = 0; r < 3; ++r)
        for (unsigned c = 0; c < 3; ++c)
            if (!(std::fabs(entry[r][c] - m.entry[r][c]) <= tol.equalVector())) return false;
    return true;
}

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& v) {
    return setToIdentity().setTranslation(v);
}

AcGeMatrix3d& AcGeMatrix3d::setToRotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
    const AcGeVector3d u = axis.normal(kExact);
    if (u.isZeroLength(kExact)) return setToIdentity();
    const double c = std::cos(angle), s = std::sin(angle); // Rodrigues
    const auto turn = [&](const AcGeVector3d& v) {
        return v * c + u.crossProduct(v) * s + u * (u.dotProduct(v) * (1 - c));
    };
    setCoordSystem(AcGePoint3d::kOrigin, turn(AcGeVector3d::kXAxis), turn(AcGeVector3d::kYAxis),
                   turn(AcGeVector3d::kZAxis));
    return *this = about(*this, center);
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double factor, const AcGePoint3d& center) {
    return setToScaling(AcGeScale3d(factor), center);
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(const AcGeScale3d& factors, const AcGePoint3d& center) {
    setToIdentity();
    for (unsigned i = 0; i < 3; ++i) entry[i][i] = factors[i];
    return *this = about(*this, center);
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePlane& plane) {
    const AcGeVector3d n = plane.normal();
    setToIdentity();
    for (unsigned r = 0; r < 3; ++r)
        for (unsigned c = 0; c < 3; ++c) entry[r][c] -= 2 * n[r] * n[c];
    return *this = about(*this, plane.pointOnPlane());
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePoint3d& point) { return setToScaling(-1, point); }

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGeLine3d& line) {
    const AcGeVector3d u = line.direction();
    for (unsigned r = 0; r < 3; ++r)
        for (unsigned c = 0; c < 3; ++c) entry[r][c] = 2 * u[r] * u[c] - (r == c ? 1 : 0);
    for (unsigned c = 0; c < 4; ++c) entry[3][c] = c == 3 ? 1 : 0;
    setTranslation(AcGeVector3d());
    return *this = about(*this, line.pointOnLine());
}

AcGeMatrix3d& AcGeMatrix3d::setToProjection(const AcGePlane& plane, const AcGeVector3d& direction) {
    const AcGeVector3d n = plane.normal(), d = direction.normal(kExact);
    const double slope = n.dotProduct(d);
    setToIdentity();
    if (std::fabs(slope) <= AcGeContext::gTol.equalVector()) return *this;
    for (unsigned r = 0; r < 3; ++r)
        for (unsigned c = 0; c < 3; ++c) entry[r][c] -= d[r] * n[c] / slope;
    return *this = about(*this, plane.pointOnPlane());
}

AcGeMatrix3d& AcGeMatrix3d::setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                               const AcGeVector3d& fromY, const AcGeVector3d& fromZ,
                                               const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                               const AcGeVector3d& toY, const AcGeVector3d& toZ) {
    AcGeMatrix3d from, to;
    from.setCoordSystem(AcGePoint3d::kOrigin, fromX, fromY, fromZ);
    to.setCoordSystem(AcGePoint3d::kOrigin, toX, toY, toZ);
    *this = to * from.inverse();
    return setTranslation(toOrigin - *this * fromOrigin);
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGeVector3d& normal) {
    const AcGeVector3d z = normal.normal(kExact), x = z.perpVector();
    return setCoordSystem(AcGePoint3d::kOrigin, x, z.crossProduct(x).normal(), z);
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGePlane& plane) {
    AcGePoint3d origin;
    AcGeVector3d u, v;
    plane.get(origin, u, v);
    return setCoordSystem(origin, u, v, plane.normal());
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGeVector3d& normal) {
    return setToPlaneToWorld(normal).transposeIt();
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGePlane& plane) {
    return setToPlaneToWorld(plane).invert();
}

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                           const AcGeVector3d& yAxis, const AcGeVector3d& zAxis) {
    setToIdentity();
    for (unsigned r = 0; r < 3; ++r) {
        entry[r][0] = xAxis[r];
        entry[r][1] = yAxis[r];
        entry[r][2] = zAxis[r];
        entry[r][3] = origin[r];
    }
    return *this;
}

void AcGeMatrix3d::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                                  AcGeVector3d& zAxis) const {
    origin = AcGePoint3d::kOrigin + translation();
    xAxis = column(*this, 0);
    yAxis = column(*this, 1);
    zAxis = column(*this, 2);
}

AcGeMatrix3d& AcGeMatrix3d::setTranslation(const AcGeVector3d& v) {
    for (unsigned r = 0; r < 3; ++r) entry[r][3] = v[r];
    return *this;
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& m) const {
    AcGeMatrix3d p;
    for (unsigned r = 0; r < 4; ++r)
        for (unsigned c = 0; c < 4; ++c)
            p.entry[r][c] = entry[r][0] * m.entry[0][c] + entry[r][1] * m.entry[1][c] +
                            entry[r][2] * m.entry[2][c] + entry[r][3] * m.entry[3][c];
    return p;
}

double AcGeMatrix3d::det() const {
    return column(*this, 0).crossProduct(column(*this, 1)).dotProduct(column(*this, 2));
}

bool AcGeMatrix3d::isSingular(const AcGeTol& tol) const {
    double size = 1;
    for (unsigned c = 0; c < 3; ++c) size *= column(*this, c).length();
    return !(std::fabs(det()) > tol.equalVector() * size);
}

AcGeMatrix3d AcGeMatrix3d::inverse(const AcGeTol& tol) const {
    if (isSingular(tol)) return *this;
    if (isPerspective(kExact)) return inverseByElimination(*this);
    const AcGeVector3d x = column(*this, 0), y = column(*this, 1), z = column(*this, 2);
    const double d = det();
    AcGeMatrix3d r;
    r.setCoordSystem(AcGePoint3d::kOrigin, y.crossProduct(z) / d, z.crossProduct(x) / d,
                     x.crossProduct(y) / d);
    r.transposeIt();
    return r.setTranslation(-(r * translation()));
}

AcGeMatrix3d AcGeMatrix3d::transpose() const {
    AcGeMatrix3d t;
    for (unsigned r = 0; r < 4; ++r)
        for (unsigned c = 0; c < 4; ++c) t.entry[r][c] = entry[c][r];
    return t;
}

bool AcGeMatrix3d::isScaledOrtho(const AcGeTol& tol) const {
    const AcGeVector3d axes[] = {column(*this, 0), column(*this, 1), column(*this, 2)};
    for (unsigned i = 0; i < 3; ++i) {
        const AcGeVector3d &a = axes[i], &b = axes[(i + 1) % 3];
        const double size = a.length() * b.length();
        if (!(size > 0) || std::fabs(a.dotProduct(b)) > tol.equalVector() * size) return false;
    }
    return true;
}

bool AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
    const double s = scale();
    for (unsigned c = 0; c < 3; ++c)
        if (s - column(*this, c).length() > tol.equalVector() * s) return false;
    return isScaledOrtho(tol);
}

bool AcGeMatrix3d::isPerspective(const AcGeTol& tol) const {
    const double off = std::max({std::fabs(entry[3][0]), std::fabs(entry[3][1]), std::fabs(entry[3][2])});
    return off > tol.equalVector() || std::fabs(entry[3][3] - 1) > tol.equalVector();
}

double AcGeMatrix3d::scale() const {
    return std::max({column(*this, 0).length(), column(*this, 1).length(), column(*this, 2).length()});
}

double AcGeMatrix3d::norm() const {
    return std::sqrt(column(*this, 0).lengthSqrd() + column(*this, 1).lengthSqrd() +
                     column(*this, 2).lengthSqrd());
}

bool AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol) const {
    for (unsigned r = 0; r < 4; ++r)
        for (unsigned c = 0; c < 4; ++c)
            if (!(std::fabs(entry[r][c] - m.entry[r][c]) <= tol.equalVector())) return false;
    return true;
}

AcGeMatrix2d AcGeMatrix3d::convertToLocal(AcGeVector3d& normal, double& elevation) const {
    const AcGeMatrix3d toWorld = planeToWorld(normal);
    const AcGeVector3d x = *this * column(toWorld, 0), y = *this * column(toWorld, 1);
    const AcGePoint3d origin = *this * (toWorld * AcGePoint3d(0, 0, elevation));
    const AcGeVector3d image = x.crossProduct(y).normal(kExact);
    // A mirrored plane keeps facing the way its old normal was taken to.
    normal = image.dotProduct(*this * column(toWorld, 2)) < 0 ? -image : image;
    const AcGeMatrix3d toLocal = worldToPlane(normal);
    const AcGePoint3d o = toLocal * origin;
    const AcGeVector3d u = toLocal * x, v = toLocal * y;
    elevation = o.z;
    return AcGeMatrix2d().setCoordSystem({o.x, o.y}, {u.x, u.y}, {v.x, v.y});
}
