// B-spline curves, rational or not: evaluation, and editing that keeps the shape. Making them from other
// curves is in nurbs_make.h, measuring them in nurbs_measure.h, interpolation in interpolate.h. Algorithm
// numbers are those of Piegl and Tiller, The NURBS Book, 1997.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "host/ge/matrix3d.h"

namespace host::ge {

inline constexpr int kMaxDegree = 25;
inline constexpr int kMaxCurveOrder = 3; // of derivatives

struct CurvePoint {
    AcGePoint3d point;
    std::array<AcGeVector3d, kMaxCurveOrder> d; // first to third derivative, zero above the order asked for
};

// The curve runs over [knots[degree], knots[poles.size()]], clamped or not; parameters outside are brought to
// the ends. knots.size() == poles.size() + degree + 1; weights has one positive number a pole when rational,
// else none. A periodic curve carries its wrapped poles: the last `degree` poles repeat the first ones.
struct Nurbs {
    int degree = 3;
    bool rational = false;
    bool closed = false;   // ends meet
    bool periodic = false; // ends meet with all derivatives that the degree allows; unclamped knots
    std::vector<double> knots;
    std::vector<double> weights;
    std::vector<AcGePoint3d> poles;

    // Sizes fit, numbers are finite, knots do not fall, weights are positive, the domain is not empty.
    bool isValid() const;
    double start() const { return knots[static_cast<size_t>(degree)]; }
    double end() const { return knots[poles.size()]; }
    double weight(size_t i) const { return rational ? weights[i] : 1; }
    AcGePoint3d point(double t) const;
    AcGePoint3d startPoint() const { return point(start()); }
    AcGePoint3d endPoint() const { return point(end()); }
    // At a knot of full multiplicity the derivatives are those of the span to its right (at the end: to its
    // left).
    CurvePoint derivatives(double t, int order) const; // order 0 to 3; A2.3 and A4.2
    // As derivatives(), but of the span to the left of a knot.
    CurvePoint derivativesFromLeft(double t, int order) const;
    // The index i of the non-empty knot interval [knots[i], knots[i + 1]) that holds t.
    int spanOf(double t) const;
    std::vector<double> distinctKnots() const; // inside the domain, ends included
    int multiplicityAt(double t) const;
    double size() const; // diagonal of the poles' box
    bool endsMeet(double relativeTolerance = 1e-9) const;
};

// A piece of polynomial degree between two parameters, in homogeneous Bernstein form about a local origin:
// the point is origin + (x, y, z) / w. The form that bounds, extremes and closest points work on.
struct BezierPiece {
    struct Pole {
        double x = 0, y = 0, z = 0, w = 1;
    };
    double from = 0, to = 1;
    AcGePoint3d origin;
    std::vector<Pole> poles;

    AcGePoint3d pole(size_t i) const;
    AcGePoint3d point(double s) const; // s in [0, 1]
};
using HomogeneousPole = BezierPiece::Pole;

struct BezierHalves {
    BezierPiece first, second;
};
BezierHalves halved(const BezierPiece& piece);

// The same curve on another knot vector that holds every knot of the old one (inside its domain) at least as
// often. Poles are blossoms (Ramshaw, 1989), each computed from the middle of its own span: stable and linear
// in size.
Nurbs onKnots(const Nurbs& curve, std::vector<double> knots);
Nurbs clamped(const Nurbs& curve);
// Inserts the knot so that it is there `times` more often, at most `degree` times in all.
Nurbs withKnot(const Nurbs& curve, double t, int times = 1);
// Inserts every given parameter once.
Nurbs refined(const Nurbs& curve, std::vector<double> params);
// The clamped piece between two parameters of the domain, from < to.
Nurbs part(const Nurbs& curve, double from, double to);
// The clamped pieces between the given parameters, in order; parameters at the ends or doubled make none.
std::vector<Nurbs> splitAt(const Nurbs& curve, std::vector<double> params);
// A closed curve opened at t: starts and ends there, the domain shifted accordingly. Clamped.
Nurbs withSeamAt(const Nurbs& curve, double t);
Nurbs reversed(const Nurbs& curve);                           // same domain
Nurbs elevated(const Nurbs& curve, int toDegree);             // clamped
Nurbs transformed(const Nurbs& curve, const AcGeMatrix3d& m); // affine
Nurbs onDomain(const Nurbs& curve, double start, double end); // linear change of parameter
std::vector<BezierPiece> bezierPieces(const Nurbs& curve);

} // namespace host::ge
