// AcGePoint2d: a place in the plane. Displacements are in vector2d.h, transformations in matrix2d.h.
#pragma once

#include "host/ge/vector2d.h"

class AcGeLine2d;

class AcGePoint2d {
public:
    double x = 0, y = 0;
    static const AcGePoint2d kOrigin;

    constexpr AcGePoint2d() = default;
    constexpr AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}

    constexpr double operator[](unsigned i) const { return i == 0 ? x : y; }
    double& operator[](unsigned i) { return i == 0 ? x : y; }
    AcGePoint2d& set(double xx, double yy) {
        x = xx;
        y = yy;
        return *this;
    }

    constexpr AcGeVector2d asVector() const { return {x, y}; }
    constexpr AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }
    constexpr AcGePoint2d operator*(double s) const { return {x * s, y * s}; }
    constexpr AcGePoint2d operator/(double s) const { return {x / s, y / s}; }
    friend constexpr AcGePoint2d operator*(double s, const AcGePoint2d& p) { return p * s; }
    AcGePoint2d& operator+=(const AcGeVector2d& v) { return *this = *this + v; }
    AcGePoint2d& operator-=(const AcGeVector2d& v) { return *this = *this - v; }
    AcGePoint2d& operator*=(double s) { return *this = *this * s; }
    AcGePoint2d& operator/=(double s) { return *this = *this / s; }
    AcGePoint2d& setToSum(const AcGePoint2d& p, const AcGeVector2d& v) { return *this = p + v; }
    AcGePoint2d& setToProduct(const AcGeMatrix2d& m, const AcGePoint2d& p);

    double distanceTo(const AcGePoint2d& p) const { return (*this - p).length(); }
    bool isEqualTo(const AcGePoint2d& p, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGePoint2d& p) const { return isEqualTo(p); }

    AcGePoint2d& rotateBy(double angle, const AcGePoint2d& wrtPoint = kOrigin);
    AcGePoint2d& scaleBy(double factor, const AcGePoint2d& wrtPoint = kOrigin);
    AcGePoint2d& mirror(const AcGeLine2d& line);
    AcGePoint2d& transformBy(const AcGeMatrix2d& m);
};

inline constexpr AcGePoint2d AcGePoint2d::kOrigin{};
