// AcGePlane: an unbounded plane with an origin and two axes.
#pragma once

#include "host/ge/point3d.h"

class AcGeMatrix3d;
class AcGeLinearEnt3d;
class AcGeLine3d;

class AcGePlane {
public:
    static const AcGePlane kXYPlane;
    static const AcGePlane kYZPlane;
    static const AcGePlane kZXPlane;

    constexpr AcGePlane() = default;
    // The axes follow the DXF arbitrary axis rule.
    AcGePlane(const AcGePoint3d& point, const AcGeVector3d& normal) { set(point, normal); }
    // Axes as given, neither scaled nor made orthogonal.
    constexpr AcGePlane(const AcGePoint3d& point, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis)
        : origin_(point), u_(uAxis), v_(vAxis) {}
    // Through three points: u runs to uPoint, v to vPoint.
    constexpr AcGePlane(const AcGePoint3d& uPoint, const AcGePoint3d& origin, const AcGePoint3d& vPoint)
        : origin_(origin), u_(uPoint - origin), v_(vPoint - origin) {}

    AcGePlane& set(const AcGePoint3d& point, const AcGeVector3d& normal);
    AcGePlane& set(const AcGePoint3d& point, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis) {
        return *this = AcGePlane(point, uAxis, vAxis);
    }
    void get(AcGePoint3d& origin, AcGeVector3d& uAxis, AcGeVector3d& vAxis) const;
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& uAxis, AcGeVector3d& vAxis) const {
        get(origin, uAxis, vAxis);
    }

    AcGeVector3d normal() const; // unit; zero when the axes are dependent
    AcGePoint3d pointOnPlane() const { return origin_; }
    AcGePoint3d evalPoint(const AcGePoint2d& param) const { return origin_ + u_ * param.x + v_ * param.y; }
    AcGePoint2d paramOf(const AcGePoint3d& point) const; // of the foot of the perpendicular
    AcGeVector2d paramOf(const AcGeVector3d& v) const;

    double signedDistanceTo(const AcGePoint3d& point) const;
    double distanceTo(const AcGePoint3d& point) const;
    AcGePoint3d closestPointTo(const AcGePoint3d& point) const;
    bool isOn(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isParallelTo(const AcGePlane& other, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isPerpendicularTo(const AcGePlane& other, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isCoplanarTo(const AcGePlane& other, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isEqualTo(const AcGePlane& other, const AcGeTol& tol = AcGeContext::gTol) const;
    // False, with the result untouched, when parallel.
    bool intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& point,
                       const AcGeTol& tol = AcGeContext::gTol) const;
    bool intersectWith(const AcGePlane& other, AcGeLine3d& line,
                       const AcGeTol& tol = AcGeContext::gTol) const;

    AcGePlane& reverseNormal();
    AcGePlane& transformBy(const AcGeMatrix3d& m);
    AcGePlane& translateBy(const AcGeVector3d& v) {
        origin_ += v;
        return *this;
    }

private:
    AcGePoint3d origin_;
    AcGeVector3d u_{1, 0, 0}, v_{0, 1, 0};
};

inline constexpr AcGePlane AcGePlane::kXYPlane{};
inline constexpr AcGePlane AcGePlane::kYZPlane{AcGePoint3d(), AcGeVector3d(0, 1, 0), AcGeVector3d(0, 0, 1)};
inline constexpr AcGePlane AcGePlane::kZXPlane{AcGePoint3d(), AcGeVector3d(0, 0, 1), AcGeVector3d(1, 0, 0)};
