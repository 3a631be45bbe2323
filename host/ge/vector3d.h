// AcGeVector3d: a displacement in space. Points are in point3d.h, transformations in matrix3d.h.
#pragma once

#include "host/ge/vector2d.h"

class AcGeMatrix3d;
class AcGePlane;

class AcGeVector3d {
public:
    double x = 0, y = 0, z = 0;
    static const AcGeVector3d kIdentity; // zero
    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    constexpr AcGeVector3d() = default;
    constexpr AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
    AcGeVector3d(const AcGePlane& plane, const AcGeVector2d& v) { set(plane, v); }

    constexpr double operator[](unsigned i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](unsigned i) { return i == 0 ? x : i == 1 ? y : z; }
    AcGeVector3d& set(double xx, double yy, double zz) {
        x = xx;
        y = yy;
        z = zz;
        return *this;
    }
    AcGeVector3d& set(const AcGePlane& plane, const AcGeVector2d& v); // v in the plane's axes
    AcGeVector2d convert2d(const AcGePlane& plane) const;             // in the plane's axes

    constexpr AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr AcGeVector3d operator-() const { return {-x, -y, -z}; }
    constexpr AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    constexpr AcGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
    friend constexpr AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }
    AcGeVector3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    AcGeVector3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
    AcGeVector3d& operator*=(double s) { return *this = *this * s; }
    AcGeVector3d& operator/=(double s) { return *this = *this / s; }
    AcGeVector3d& setToSum(const AcGeVector3d& a, const AcGeVector3d& b) { return *this = a + b; }
    AcGeVector3d& setToProduct(const AcGeMatrix3d& m, const AcGeVector3d& v);
    AcGeVector3d& negate() { return *this = -*this; }
    AcGeVector3d& scaleBy(double s) { return *this *= s; }

    constexpr double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
    constexpr AcGeVector3d crossProduct(const AcGeVector3d& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    constexpr double lengthSqrd() const { return x * x + y * y + z * z; }
    double length() const;
    unsigned largestElement() const; // index of the component of largest magnitude
    // The X axis that the DXF arbitrary axis rule gives a plane with this normal; unit length.
    AcGeVector3d perpVector() const;
    // A unit vector; a vector of no length comes back as it is.
    AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }

    double angleTo(const AcGeVector3d& v) const; // the smaller angle, [0, pi]
    // Counter-clockwise as seen from the tip of the reference vector, [0, 2 pi).
    double angleTo(const AcGeVector3d& v, const AcGeVector3d& reference) const;
    double angleOnPlane(const AcGePlane& plane) const; // from the plane's u axis, [0, 2 pi)

    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const;
    bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const;
    bool isEqualTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeVector3d& v) const { return isEqualTo(v); }
    // The three relations are false when either vector has no length.
    bool isParallelTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;

    AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis);
    AcGeVector3d& mirror(const AcGeVector3d& normalToPlane);
    AcGeVector3d& transformBy(const AcGeMatrix3d& m); // without the translation
    AcGeVector3d orthoProject(const AcGeVector3d& planeNormal) const;
    // Along direction onto the plane; a direction that lies in the plane gives this vector back.
    AcGeVector3d project(const AcGeVector3d& planeNormal, const AcGeVector3d& direction) const;
};

inline constexpr AcGeVector3d AcGeVector3d::kIdentity{};
inline constexpr AcGeVector3d AcGeVector3d::kXAxis{1, 0, 0};
inline constexpr AcGeVector3d AcGeVector3d::kYAxis{0, 1, 0};
inline constexpr AcGeVector3d AcGeVector3d::kZAxis{0, 0, 1};
