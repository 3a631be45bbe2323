// Measures of B-splines: lengths both ways, closest points, tight boxes, areas, planarity.
#pragma once

#include <vector>

#include "host/ge/curves/nurbs.h"
#include "host/ge/extents.h"

namespace host::ge {

// Lengths along a curve, measured once: the curve is cut until the 15 point Kronrod rule is exact on every
// piece to 1e-12 of the whole; a query integrates one piece. Both directions are accurate to 1e-10 of the
// length.
class ArcLengthTable {
public:
    explicit ArcLengthTable(Nurbs curve);
    double length() const { return lengths_.back(); }
    double lengthAt(double param) const; // from the start; parameters outside give 0 or the whole length
    double paramAt(double length) const; // lengths outside give the ends
    AcGePoint3d pointAt(double length) const { return curve_.point(paramAt(length)); }
    const Nurbs& curve() const { return curve_; }

private:
    double speed(double t) const { return curve_.derivatives(t, 1).d[0].length(); }
    double pieceLength(double from, double to) const;
    void addSpan(double from, double to, double error);

    Nurbs curve_;
    std::vector<double> params_;  // ends of the pieces
    std::vector<double> lengths_; // from the start to params_
};

double curveLength(const Nurbs& curve);

struct NurbsClosest {
    AcGePoint3d point;
    double param = 0;
    double distance = 0;
};

// The nearest point of a curve, for many questions to the same curve. Branch and bound over the Bezier
// pieces: the squared distance has Bernstein coefficients, whose least bounds it from below (Chen et al.,
// 2008), so loops, equal distances and even the centre of a circle end quickly and the answer is the global
// one.
class ClosestPointFinder {
public:
    explicit ClosestPointFinder(const Nurbs& curve);
    NurbsClosest closestTo(const AcGePoint3d& point) const;

private:
    struct Search;
    void descend(Search& search, const BezierPiece& piece, int depth) const;
    void offer(Search& search, double param) const;
    void settle(Search& search) const;
    double polish(const AcGePoint3d& point, double param) const;

    AcGeVector3d base_;
    Nurbs curve_;
    std::vector<BezierPiece> pieces_;
    std::vector<AcDbExtents> boxes_;
    double size_ = 0;
};

NurbsClosest closestPoint(const Nurbs& curve, const AcGePoint3d& point);

// Tight: every side touches the curve to 1e-12 of its size.
AcDbExtents tightExtents(const Nurbs& curve);

// Half the integral of C x dC about the curve's start, an open curve closed by its chord: points along the
// normal of a counter-clockwise planar curve, as long as the area is large.
AcGeVector3d areaVector(const Nurbs& curve);

struct Planarity {
    bool isPlanar = false;
    bool isLinear = false; // then the normal is any that is perpendicular to the line
    AcGePoint3d origin;
    AcGeVector3d normal; // unit; along the area vector where that has a length
};
Planarity planarity(const std::vector<AcGePoint3d>& points);
Planarity planarity(const Nurbs& curve);

} // namespace host::ge
