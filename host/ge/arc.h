// AcGeCircArc2d and AcGeCircArc3d: circles and circular arcs. Angles are measured from the reference vector
// in the sense of the arc (for a clockwise plane arc: clockwise). Straight things are in line.h.
#pragma once

#include "host/ge/line.h"
#include "host/ge/matrix3d.h"

namespace host::ge {
inline constexpr double kTwoPi = 6.283185307179586476925286766559;
}

class AcGeCircArc2d {
public:
    AcGeCircArc2d() = default; // the unit circle
    AcGeCircArc2d(const AcGePoint2d& center, double radius) { set(center, radius); }
    AcGeCircArc2d(const AcGePoint2d& center, double radius, double startAngle, double endAngle,
                  const AcGeVector2d& refVec = AcGeVector2d::kXAxis, bool isClockWise = false) {
        set(center, radius, startAngle, endAngle, refVec, isClockWise);
    }
    AcGeCircArc2d(const AcGePoint2d& start, const AcGePoint2d& point, const AcGePoint2d& end) {
        set(start, point, end);
    }
    AcGeCircArc2d(const AcGePoint2d& start, const AcGePoint2d& end, double bulge, bool bulgeFlag = true) {
        set(start, end, bulge, bulgeFlag);
    }

    AcGeCircArc2d& set(const AcGePoint2d& center, double radius);
    AcGeCircArc2d& set(const AcGePoint2d& center, double radius, double startAngle, double endAngle,
                       const AcGeVector2d& refVec = AcGeVector2d::kXAxis, bool isClockWise = false);
    // Points that coincide or lie on a line leave the arc as it was; the error says which.
    AcGeCircArc2d& set(const AcGePoint2d& start, const AcGePoint2d& point, const AcGePoint2d& end);
    AcGeCircArc2d& set(const AcGePoint2d& start, const AcGePoint2d& point, const AcGePoint2d& end,
                       AcGeError& error);
    // bulge is the tangent of a quarter of the turn, or, without the flag, the height of the arc over its
    // chord with the sign of the turn. A straight or empty segment leaves the arc as it was.
    AcGeCircArc2d& set(const AcGePoint2d& start, const AcGePoint2d& end, double bulge, bool bulgeFlag = true);

    AcGePoint2d center() const { return center_; }
    double radius() const { return radius_; }
    double startAng() const { return start_; }
    double endAng() const { return end_; }
    AcGeVector2d refVec() const { return ref_; }
    bool isClockWise() const { return clockwise_; }
    AcGeCircArc2d& setCenter(const AcGePoint2d& p);
    AcGeCircArc2d& setRadius(double r);
    AcGeCircArc2d& setAngles(double startAngle, double endAngle);

    AcGePoint2d evalPoint(double angle) const;
    AcGePoint2d startPoint() const { return evalPoint(start_); }
    AcGePoint2d endPoint() const { return evalPoint(end_); }
    AcGePoint2d midPoint() const { return evalPoint(0.5 * (start_ + end_)); }
    double length() const { return radius_ * (end_ - start_); }
    bool isClosed() const;
    double paramOf(const AcGePoint2d& point) const; // angle of the closest point of the arc
    AcGePoint2d closestPointTo(const AcGePoint2d& point) const { return evalPoint(paramOf(point)); }
    double distanceTo(const AcGePoint2d& point) const { return closestPointTo(point).distanceTo(point); }
    bool isOn(const AcGePoint2d& point, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(point) <= tol.equalPoint();
    }
    bool isInside(const AcGePoint2d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    // Number of points is 0 to 2; tangency gives one.
    bool intersectWith(const AcGeLinearEnt2d& line, int& count, AcGePoint2d& p1, AcGePoint2d& p2,
                       const AcGeTol& tol = AcGeContext::gTol) const;
    bool intersectWith(const AcGeCircArc2d& other, int& count, AcGePoint2d& p1, AcGePoint2d& p2,
                       const AcGeTol& tol = AcGeContext::gTol) const;
    // The tangent line at the arc's point nearest to the given one; false when that is not on the arc.
    bool tangent(const AcGePoint2d& point, AcGeLine2d& line, const AcGeTol& tol = AcGeContext::gTol) const;
    // A matrix that does not scale evenly uses the mean scale.
    AcGeCircArc2d& transformBy(const AcGeMatrix2d& m);

private:
    AcGePoint2d center_;
    double radius_ = 1;
    double start_ = 0, end_ = host::ge::kTwoPi;
    AcGeVector2d ref_{1, 0};
    bool clockwise_ = false;
};

class AcGeCircArc3d {
public:
    AcGeCircArc3d() = default; // the unit circle in the XY plane
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius) {
        set(center, normal, radius);
    }
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& refVec,
                  double radius, double startAngle, double endAngle) {
        set(center, normal, refVec, radius, startAngle, endAngle);
    }
    AcGeCircArc3d(const AcGePoint3d& start, const AcGePoint3d& point, const AcGePoint3d& end) {
        set(start, point, end);
    }

    AcGeCircArc3d& set(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    AcGeCircArc3d& set(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& refVec,
                       double radius, double startAngle, double endAngle);
    // Points that coincide or lie on a line leave the arc as it was; the error says which.
    AcGeCircArc3d& set(const AcGePoint3d& start, const AcGePoint3d& point, const AcGePoint3d& end);
    AcGeCircArc3d& set(const AcGePoint3d& start, const AcGePoint3d& point, const AcGePoint3d& end,
                       AcGeError& error);

    AcGePoint3d center() const { return center_; }
    AcGeVector3d normal() const { return normal_; }
    AcGeVector3d refVec() const { return ref_; }
    double radius() const { return radius_; }
    double startAng() const { return start_; }
    double endAng() const { return end_; }
    AcGeCircArc3d& setCenter(const AcGePoint3d& p);
    AcGeCircArc3d& setRadius(double r);
    AcGeCircArc3d& setAngles(double startAngle, double endAngle);
    void getPlane(AcGePlane& plane) const { plane.set(center_, ref_, normal_.crossProduct(ref_)); }

    AcGePoint3d evalPoint(double angle) const;
    AcGeVector3d tangentAt(double angle) const; // unit, in the sense of the arc
    AcGePoint3d startPoint() const { return evalPoint(start_); }
    AcGePoint3d endPoint() const { return evalPoint(end_); }
    AcGePoint3d midPoint() const { return evalPoint(0.5 * (start_ + end_)); }
    double length() const { return radius_ * (end_ - start_); }
    double length(double fromParam, double toParam) const { return radius_ * (toParam - fromParam); }
    bool isClosed() const;
    double paramOf(const AcGePoint3d& point) const; // angle of the closest point of the arc
    AcGePoint3d closestPointTo(const AcGePoint3d& point) const { return evalPoint(paramOf(point)); }
    double distanceTo(const AcGePoint3d& point) const { return closestPointTo(point).distanceTo(point); }
    bool isOn(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(point) <= tol.equalPoint();
    }
    bool isInside(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    bool intersectWith(const AcGeLinearEnt3d& line, int& count, AcGePoint3d& p1, AcGePoint3d& p2,
                       const AcGeTol& tol = AcGeContext::gTol) const;
    bool intersectWith(const AcGePlane& plane, int& count, AcGePoint3d& p1, AcGePoint3d& p2,
                       const AcGeTol& tol = AcGeContext::gTol) const;
    // A matrix that does not scale evenly uses the mean scale in the arc's plane.
    AcGeCircArc3d& transformBy(const AcGeMatrix3d& m);

private:
    AcGePoint3d center_;
    AcGeVector3d normal_{0, 0, 1}, ref_{1, 0, 0};
    double radius_ = 1;
    double start_ = 0, end_ = host::ge::kTwoPi;
};
