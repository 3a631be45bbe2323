// AcGePoint3d: a place in space. Displacements are in vector3d.h, transformations in matrix3d.h.
#pragma once

#include "host/ge/point2d.h"
#include "host/ge/vector3d.h"

class AcGeLine3d;

class AcGePoint3d {
public:
    double x = 0, y = 0, z = 0;
    static const AcGePoint3d kOrigin;

    constexpr AcGePoint3d() = default;
    constexpr AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
    AcGePoint3d(const AcGePlane& plane, const AcGePoint2d& p) { set(plane, p); }

    constexpr double operator[](unsigned i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](unsigned i) { return i == 0 ? x : i == 1 ? y : z; }
    AcGePoint3d& set(double xx, double yy, double zz) {
        x = xx;
        y = yy;
        z = zz;
        return *this;
    }
    AcGePoint3d& set(const AcGePlane& plane, const AcGePoint2d& p); // p in the plane's axes
    AcGePoint2d convert2d(const AcGePlane& plane) const;            // in the plane's axes and from its origin

    constexpr AcGeVector3d asVector() const { return {x, y, z}; }
    constexpr AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
    constexpr AcGePoint3d operator*(double s) const { return {x * s, y * s, z * s}; }
    constexpr AcGePoint3d operator/(double s) const { return {x / s, y / s, z / s}; }
    friend constexpr AcGePoint3d operator*(double s, const AcGePoint3d& p) { return p * s; }
    AcGePoint3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    AcGePoint3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
    AcGePoint3d& operator*=(double s) { return *this = *this * s; }
    AcGePoint3d& operator/=(double s) { return *this = *this / s; }
    AcGePoint3d& setToSum(const AcGePoint3d& p, const AcGeVector3d& v) { return *this = p + v; }
    AcGePoint3d& setToProduct(const AcGeMatrix3d& m, const AcGePoint3d& p);

    double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }
    bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGePoint3d& p) const { return isEqualTo(p); }

    AcGePoint3d& rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& wrtPoint = kOrigin);
    AcGePoint3d& scaleBy(double factor, const AcGePoint3d& wrtPoint = kOrigin);
    AcGePoint3d& mirror(const AcGePlane& plane);
    AcGePoint3d& transformBy(const AcGeMatrix3d& m);
    AcGePoint3d orthoProject(const AcGePlane& plane) const;
    // Along direction onto the plane; a direction parallel to the plane gives this point back.
    AcGePoint3d project(const AcGePlane& plane, const AcGeVector3d& direction) const;
};

inline constexpr AcGePoint3d AcGePoint3d::kOrigin{};
