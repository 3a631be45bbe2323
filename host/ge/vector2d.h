// AcGeVector2d: a displacement in the plane. Points are in point2d.h, transformations in matrix2d.h.
#pragma once

#include "host/ge/tol.h"

class AcGeMatrix2d;

class AcGeVector2d {
public:
    double x = 0, y = 0;
    static const AcGeVector2d kIdentity; // zero
    static const AcGeVector2d kXAxis;
    static const AcGeVector2d kYAxis;

    constexpr AcGeVector2d() = default;
    constexpr AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}

    constexpr double operator[](unsigned i) const { return i == 0 ? x : y; }
    double& operator[](unsigned i) { return i == 0 ? x : y; }
    AcGeVector2d& set(double xx, double yy) {
        x = xx;
        y = yy;
        return *this;
    }

    constexpr AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr AcGeVector2d operator-() const { return {-x, -y}; }
    constexpr AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
    constexpr AcGeVector2d operator/(double s) const { return {x / s, y / s}; }
    friend constexpr AcGeVector2d operator*(double s, const AcGeVector2d& v) { return v * s; }
    AcGeVector2d& operator+=(const AcGeVector2d& v) { return *this = *this + v; }
    AcGeVector2d& operator-=(const AcGeVector2d& v) { return *this = *this - v; }
    AcGeVector2d& operator*=(double s) { return *this = *this * s; }
    AcGeVector2d& operator/=(double s) { return *this = *this / s; }
    AcGeVector2d& setToSum(const AcGeVector2d& a, const AcGeVector2d& b) { return *this = a + b; }
    AcGeVector2d& setToProduct(const AcGeMatrix2d& m, const AcGeVector2d& v);
    AcGeVector2d& negate() { return *this = -*this; }
    AcGeVector2d& scaleBy(double s) { return *this *= s; }

    constexpr double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }
    // The z of the spatial cross product: positive when v lies to the left.
    constexpr double crossProduct(const AcGeVector2d& v) const { return x * v.y - y * v.x; }
    constexpr double lengthSqrd() const { return x * x + y * y; }
    double length() const;
    // This vector turned by +90 degrees.
    constexpr AcGeVector2d perpVector() const { return {-y, x}; }
    // A unit vector; a vector of no length comes back as it is.
    AcGeVector2d normal(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeVector2d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }

    double angle() const;                           // from the X axis, [0, 2 pi)
    double angleTo(const AcGeVector2d& v) const;    // the smaller angle, [0, pi]
    double angleToCCW(const AcGeVector2d& v) const; // counter-clockwise, [0, 2 pi)

    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const;
    bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const;
    bool isEqualTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeVector2d& v) const { return isEqualTo(v); }
    // The three relations are false when either vector has no length.
    bool isParallelTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isCodirectionalTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isPerpendicularTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;

    AcGeVector2d& rotateBy(double angle);
    AcGeVector2d& mirror(const AcGeVector2d& line);
    AcGeVector2d& transformBy(const AcGeMatrix2d& m);
};

inline constexpr AcGeVector2d AcGeVector2d::kIdentity{};
inline constexpr AcGeVector2d AcGeVector2d::kXAxis{1, 0};
inline constexpr AcGeVector2d AcGeVector2d::kYAxis{0, 1};
