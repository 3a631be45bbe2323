// CurvePath: what every kind of curve looks like to the services that all curves share. A path is a
// line, a conic, a B-spline, or a chain of segments, with the parameters of its entity; it answers
// for points, derivatives, lengths, closest points and boxes. Entities of a path are made in
// curve_make.h; curves keep their paths in curve_state.h.
#pragma once

#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "host/ge/curves/bulge.h"
#include "host/ge/curves/conic.h"
#include "host/ge/curves/nurbs_measure.h"
#include "host/ge/line.h"

namespace host {

// One piece in space; its own parameters are [0, 1] for segments, the angle, the knots' parameter.
using PathPiece = std::variant<AcGeLineSeg3d, ge::EllipticArc, ge::Nurbs>;

struct PathClosest {
    AcGePoint3d point;
    double param = 0, distance = 0;
};

// A chain of lines and arcs in the plane of a normal at an elevation (object coordinates).
struct PlaneChain {
    std::vector<ge::BulgeVertex> vertices;
    bool closed = false;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    double elevation = 0;

    AcGePoint3d toWorld(const AcGePoint2d& p) const;
    AcGeVector3d toWorld(const AcGeVector2d& v) const;
    AcGePoint2d toPlane(const AcGePoint3d& p) const; // the foot of the perpendicular
    AcGeMatrix3d matrix() const;                     // from the plane's coordinates to the world's
};
struct SpaceChain {
    std::vector<AcGePoint3d> points;
    bool closed = false;
};

class CurvePath {
public:
    CurvePath() = default; // empty
    // Parameters: the length from the start; angle; knots; vertex number plus fraction. Chains of one
    // vertex are a place without length, chains of none and invalid B-splines are empty.
    static CurvePath line(const AcGePoint3d& start, const AcGePoint3d& end);
    static CurvePath conic(const ge::EllipticArc& arc);
    static CurvePath spline(ge::Nurbs curve);
    static CurvePath chain(SpaceChain chain);
    static CurvePath chain(PlaneChain chain);

    bool isEmpty() const { return pieces_ == 0; }
    bool isLine() const { return isLine_; }
    const ge::EllipticArc* asConic() const { return std::get_if<ge::EllipticArc>(&form_); }
    const ge::Nurbs* asNurbs() const { return std::get_if<ge::Nurbs>(&form_); }
    const SpaceChain* asSpaceChain() const { return std::get_if<SpaceChain>(&form_); }
    const PlaneChain* asPlaneChain() const { return std::get_if<PlaneChain>(&form_); }
    bool isClosed() const; // ends meet by construction

    // None of the following is asked of an empty path.
    double startParam() const { return start_; }
    double endParam() const { return end_; }
    // The parameter inside the range that is meant; nothing when it lies outside by more than rounding.
    std::optional<double> inRange(double param) const;
    AcGePoint3d pointAt(double param) const;
    // Of order 1 or 2; at a vertex that of the segment to come.
    AcGeVector3d derivative(double param, int order) const;
    double length() const { return lengthAt(end_); }
    double lengthAt(double param) const;       // from the start
    double paramAtLength(double length) const; // lengths outside give the ends
    PathClosest closestTo(const AcGePoint3d& point) const;
    // Closest as seen along a direction: distances count across it.
    PathClosest closestAlong(const AcGePoint3d& point, const AcGeVector3d& direction) const;

    AcDbExtents extents() const; // tight
    double size() const;         // diagonal of the extents
    ge::Planarity planarity() const;
    // Half the integral of P x dP, closed by the chord: along the normal of a plane counter-clockwise curve.
    AcGeVector3d areaVector() const;
    ge::Nurbs nurbs() const; // exact; not valid when nothing has a length

    int pieceCount() const { return pieces_; }
    PathPiece piece(int index) const;
    // The parameter of this path at a piece's own one.
    double paramOfPiece(int index, double own) const;

    // Affine images, also onto a plane. Chains whose arcs don't stay arcs become B-splines, conics seen
    // edge-on become lines.
    CurvePath transformed(const AcGeMatrix3d& matrix) const;

private:
    struct Place {
        int piece = 0;
        double fraction = 0;
    };
    Place locate(double param) const;
    ge::BulgeSegment segment(int index) const;
    AcGeLineSeg3d straight(int index) const;
    double pieceLength(int index) const;
    const std::vector<double>& lengths() const; // to the end of each piece
    const ge::ArcLengthTable& lengthTable() const;
    PathClosest closestOnChain(const PlaneChain& chain, const AcGePoint3d& point) const;
    PathClosest closestOnChain(const SpaceChain& chain, const AcGePoint3d& point) const;
    AcDbExtents chainExtents(const PlaneChain& chain) const;
    void setRange(double start, double end, int pieces);
    double paramStep() const { return isLine_ ? end_ : 1; }

    std::variant<std::monostate, SpaceChain, PlaneChain, ge::EllipticArc, ge::Nurbs> form_;
    double start_ = 0, end_ = 0;
    int pieces_ = 0;
    bool isLine_ = false;
    // Measured at the first question.
    mutable std::vector<double> lengths_;
    mutable std::shared_ptr<const ge::ArcLengthTable> table_;
    mutable std::shared_ptr<const ge::ClosestPointFinder> finder_;
    mutable std::optional<AcDbExtents> extents_;
};

} // namespace host
