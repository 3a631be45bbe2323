// Straight things: unbounded lines, rays and segments, in space and in the plane. One class holds the
// operations of each dimension; the kinds differ only in the range of their parameter. Arcs are in arc.h.
#pragma once

#include <limits>

#include "host/ge/plane.h"

class AcGeMatrix2d;

// The point of parameter t is origin + t * direction; direction need not be of unit length.
class AcGeLinearEnt3d {
public:
    AcGeVector3d direction() const; // unit
    AcGePoint3d pointOnLine() const { return origin_; }
    AcGeLine3d getLine() const;
    AcGePoint3d evalPoint(double param) const { return origin_ + along_ * param; }
    double paramOf(const AcGePoint3d& point) const; // of the closest point, within the range
    AcGePoint3d closestPointTo(const AcGePoint3d& point) const { return evalPoint(paramOf(point)); }
    double distanceTo(const AcGePoint3d& point) const { return closestPointTo(point).distanceTo(point); }
    bool isOn(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(point) <= tol.equalPoint();
    }
    // False, with the result untouched, when skew, parallel, or out of a range.
    bool intersectWith(const AcGeLinearEnt3d& other, AcGePoint3d& point,
                       const AcGeTol& tol = AcGeContext::gTol) const;
    bool intersectWith(const AcGePlane& plane, AcGePoint3d& point,
                       const AcGeTol& tol = AcGeContext::gTol) const;
    bool isParallelTo(const AcGeLinearEnt3d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return along_.isParallelTo(other.along_, tol);
    }
    bool isPerpendicularTo(const AcGeLinearEnt3d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return along_.isPerpendicularTo(other.along_, tol);
    }
    bool isColinearTo(const AcGeLinearEnt3d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    // The plane through the point, perpendicular to this.
    void getPerpPlane(const AcGePoint3d& point, AcGePlane& plane) const { plane.set(point, along_); }
    void transformBy(const AcGeMatrix3d& m);

protected:
    AcGeLinearEnt3d(const AcGePoint3d& origin, const AcGeVector3d& along, double low, double high)
        : origin_(origin), along_(along), low_(low), high_(high) {}

    static constexpr double kFar = std::numeric_limits<double>::infinity();
    AcGePoint3d origin_;
    AcGeVector3d along_;
    double low_, high_;
};

class AcGeLine3d : public AcGeLinearEnt3d {
public:
    static const AcGeLine3d kXAxis;
    static const AcGeLine3d kYAxis;
    static const AcGeLine3d kZAxis;
    AcGeLine3d() : AcGeLine3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}
    AcGeLine3d(const AcGePoint3d& p, const AcGeVector3d& v) : AcGeLinearEnt3d(p, v, -kFar, kFar) {}
    AcGeLine3d(const AcGePoint3d& p, const AcGePoint3d& q) : AcGeLine3d(p, q - p) {}
    AcGeLine3d& set(const AcGePoint3d& p, const AcGeVector3d& v) { return *this = AcGeLine3d(p, v); }
    AcGeLine3d& set(const AcGePoint3d& p, const AcGePoint3d& q) { return *this = AcGeLine3d(p, q); }
};

inline const AcGeLine3d AcGeLine3d::kXAxis{AcGePoint3d(), AcGeVector3d(1, 0, 0)};
inline const AcGeLine3d AcGeLine3d::kYAxis{AcGePoint3d(), AcGeVector3d(0, 1, 0)};
inline const AcGeLine3d AcGeLine3d::kZAxis{AcGePoint3d(), AcGeVector3d(0, 0, 1)};

class AcGeRay3d : public AcGeLinearEnt3d {
public:
    AcGeRay3d() : AcGeRay3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}
    AcGeRay3d(const AcGePoint3d& p, const AcGeVector3d& v) : AcGeLinearEnt3d(p, v, 0, kFar) {}
    AcGeRay3d& set(const AcGePoint3d& p, const AcGeVector3d& v) { return *this = AcGeRay3d(p, v); }
};

class AcGeLineSeg3d : public AcGeLinearEnt3d {
public:
    AcGeLineSeg3d() : AcGeLineSeg3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}
    AcGeLineSeg3d(const AcGePoint3d& start, const AcGeVector3d& v) : AcGeLinearEnt3d(start, v, 0, 1) {}
    AcGeLineSeg3d(const AcGePoint3d& start, const AcGePoint3d& end) : AcGeLineSeg3d(start, end - start) {}
    AcGeLineSeg3d& set(const AcGePoint3d& p, const AcGeVector3d& v) { return *this = AcGeLineSeg3d(p, v); }
    AcGeLineSeg3d& set(const AcGePoint3d& p, const AcGePoint3d& q) { return *this = AcGeLineSeg3d(p, q); }
    AcGePoint3d startPoint() const { return origin_; }
    AcGePoint3d endPoint() const { return origin_ + along_; }
    AcGePoint3d midPoint() const { return origin_ + along_ * 0.5; }
    double length() const { return along_.length(); }
    double length(double fromParam, double toParam) const { return along_.length() * (toParam - fromParam); }
    AcGePoint3d baryComb(double blend) const { return evalPoint(blend); }
    void getBisector(AcGePlane& plane) const { plane.set(midPoint(), along_); }
};

class AcGeLine2d;

class AcGeLinearEnt2d {
public:
    AcGeVector2d direction() const { return along_.normal(AcGeTol().setEqualVector(0)); } // unit
    AcGePoint2d pointOnLine() const { return origin_; }
    AcGePoint2d evalPoint(double param) const { return origin_ + along_ * param; }
    double paramOf(const AcGePoint2d& point) const; // of the closest point, within the range
    AcGePoint2d closestPointTo(const AcGePoint2d& point) const { return evalPoint(paramOf(point)); }
    double distanceTo(const AcGePoint2d& point) const { return closestPointTo(point).distanceTo(point); }
    bool isOn(const AcGePoint2d& point, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(point) <= tol.equalPoint();
    }
    // False, with the result untouched, when parallel or out of a range.
    bool intersectWith(const AcGeLinearEnt2d& other, AcGePoint2d& point,
                       const AcGeTol& tol = AcGeContext::gTol) const;
    bool isParallelTo(const AcGeLinearEnt2d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return along_.isParallelTo(other.along_, tol);
    }
    bool isPerpendicularTo(const AcGeLinearEnt2d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return along_.isPerpendicularTo(other.along_, tol);
    }
    bool isColinearTo(const AcGeLinearEnt2d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    void transformBy(const AcGeMatrix2d& m);

protected:
    AcGeLinearEnt2d(const AcGePoint2d& origin, const AcGeVector2d& along, double low, double high)
        : origin_(origin), along_(along), low_(low), high_(high) {}

    static constexpr double kFar = std::numeric_limits<double>::infinity();
    AcGePoint2d origin_;
    AcGeVector2d along_;
    double low_, high_;
};

class AcGeLine2d : public AcGeLinearEnt2d {
public:
    AcGeLine2d() : AcGeLine2d(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis) {}
    AcGeLine2d(const AcGePoint2d& p, const AcGeVector2d& v) : AcGeLinearEnt2d(p, v, -kFar, kFar) {}
    AcGeLine2d(const AcGePoint2d& p, const AcGePoint2d& q) : AcGeLine2d(p, q - p) {}
    AcGeLine2d& set(const AcGePoint2d& p, const AcGeVector2d& v) { return *this = AcGeLine2d(p, v); }
    AcGeLine2d& set(const AcGePoint2d& p, const AcGePoint2d& q) { return *this = AcGeLine2d(p, q); }
};

class AcGeRay2d : public AcGeLinearEnt2d {
public:
    AcGeRay2d() : AcGeRay2d(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis) {}
    AcGeRay2d(const AcGePoint2d& p, const AcGeVector2d& v) : AcGeLinearEnt2d(p, v, 0, kFar) {}
};

class AcGeLineSeg2d : public AcGeLinearEnt2d {
public:
    AcGeLineSeg2d() : AcGeLineSeg2d(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis) {}
    AcGeLineSeg2d(const AcGePoint2d& start, const AcGeVector2d& v) : AcGeLinearEnt2d(start, v, 0, 1) {}
    AcGeLineSeg2d(const AcGePoint2d& start, const AcGePoint2d& end) : AcGeLineSeg2d(start, end - start) {}
    AcGeLineSeg2d& set(const AcGePoint2d& p, const AcGeVector2d& v) { return *this = AcGeLineSeg2d(p, v); }
    AcGeLineSeg2d& set(const AcGePoint2d& p, const AcGePoint2d& q) { return *this = AcGeLineSeg2d(p, q); }
    AcGePoint2d startPoint() const { return origin_; }
    AcGePoint2d endPoint() const { return origin_ + along_; }
    AcGePoint2d midPoint() const { return origin_ + along_ * 0.5; }
    double length() const { return along_.length(); }
};
