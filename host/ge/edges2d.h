// AcGeEllipArc2d and AcGeNurbCurve2d: elliptic arcs and B-splines of the plane as plain records, for what
// hands out the edges of an outline. Their mathematics is in curves/; lines and circular arcs are in
// line.h and arc.h.
#pragma once

#include <cmath>
#include <vector>

#include "host/ge/array.h"
#include "host/ge/point2d.h"

// point(u) = center + majorAxis * majorRadius * cos u + minorAxis * minorRadius * sin u, from startAng() to
// endAng(); the minor axis lies to the left of the major one, or to the right in clockwise arcs.
class AcGeEllipArc2d {
public:
    AcGeEllipArc2d() = default;
    // Unit axes; angles are parameters.
    AcGeEllipArc2d(const AcGePoint2d& center, const AcGeVector2d& majorAxis, const AcGeVector2d& minorAxis,
                   double majorRadius, double minorRadius, double startAngle, double endAngle)
        : center_(center), major_(majorAxis), minor_(minorAxis), majorRadius_(majorRadius),
          minorRadius_(minorRadius), start_(startAngle), end_(endAngle) {}

    AcGePoint2d center() const { return center_; }
    AcGeVector2d majorAxis() const { return major_; }
    AcGeVector2d minorAxis() const { return minor_; }
    double majorRadius() const { return majorRadius_; }
    double minorRadius() const { return minorRadius_; }
    double startAng() const { return start_; }
    double endAng() const { return end_; }
    bool isClockWise() const { return major_.crossProduct(minor_) < 0; }
    AcGePoint2d evalPoint(double u) const {
        return center_ + major_ * (majorRadius_ * std::cos(u)) + minor_ * (minorRadius_ * std::sin(u));
    }
    AcGePoint2d startPoint() const { return evalPoint(start_); }
    AcGePoint2d endPoint() const { return evalPoint(end_); }

private:
    AcGePoint2d center_;
    AcGeVector2d major_{1, 0}, minor_{0, 1};
    double majorRadius_ = 1, minorRadius_ = 1, start_ = 0, end_ = 6.283185307179586;
};

// Weights are there, one a control point, when the curve is rational.
class AcGeNurbCurve2d {
public:
    AcGeNurbCurve2d() = default;
    AcGeNurbCurve2d(int degree, AcGeDoubleArray knots, AcGePoint2dArray controlPoints,
                    AcGeDoubleArray weights, bool periodic = false)
        : degree_(degree), periodic_(periodic), knots_(std::move(knots)), points_(std::move(controlPoints)),
          weights_(std::move(weights)) {}

    int degree() const { return degree_; }
    bool isRational() const { return !weights_.isEmpty(); }
    int numKnots() const { return knots_.length(); }
    double knotAt(int index) const { return knots_[index]; }
    int numControlPoints() const { return points_.length(); }
    AcGePoint2d controlPointAt(int index) const { return points_[index]; }
    int numWeights() const { return weights_.length(); }
    double weightAt(int index) const { return isRational() ? weights_[index] : 1.0; }
    void getDefinitionData(int& degree, bool& rational, bool& periodic, AcGeDoubleArray& knots,
                           AcGePoint2dArray& controlPoints, AcGeDoubleArray& weights) const {
        degree = degree_, rational = isRational(), periodic = periodic_;
        knots = knots_, controlPoints = points_, weights = weights_;
    }

private:
    int degree_ = 3;
    bool periodic_ = false;
    AcGeDoubleArray knots_;
    AcGePoint2dArray points_;
    AcGeDoubleArray weights_;
};
