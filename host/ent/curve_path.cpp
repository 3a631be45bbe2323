// Paths of curves: parameters, points, derivatives, lengths. Closest points, boxes, areas and images
// are in curve_path_measure.cpp.
#include "host/ent/curve_path.h"

#include <algorithm>
#include <cmath>

#include "host/ent/filing.h"
#include "host/ge/curves/nurbs_make.h"

namespace host {

namespace {
constexpr double kTwoPi = 2 * std::numbers::pi;
// Parameters are taken as the end's when they miss it by this part of the range.
constexpr double kParamRounding = 1e-9;
} // namespace

AcGePoint3d PlaneChain::toWorld(const AcGePoint2d& p) const {
    return host::toWorld({p.x, p.y, elevation}, normal);
}
AcGeVector3d PlaneChain::toWorld(const AcGeVector2d& v) const {
    return isWorldZ(normal) ? AcGeVector3d(v.x, v.y, 0)
                            : AcGeMatrix3d::planeToWorld(normal) * AcGeVector3d(v.x, v.y, 0);
}
AcGePoint2d PlaneChain::toPlane(const AcGePoint3d& p) const {
    const AcGePoint3d q = host::toPlane(p, normal);
    return {q.x, q.y};
}
AcGeMatrix3d PlaneChain::matrix() const {
    return AcGeMatrix3d::planeToWorld(normal) * AcGeMatrix3d::translation({0, 0, elevation});
}

// -- making -------------------------------------------------------------------------------------------

void CurvePath::setRange(double start, double end, int pieces) {
    start_ = start, end_ = end, pieces_ = pieces;
}

CurvePath CurvePath::line(const AcGePoint3d& start, const AcGePoint3d& end) {
    CurvePath path;
    path.form_ = SpaceChain{{start, end}, false};
    path.isLine_ = true;
    path.setRange(0, start.distanceTo(end), 1);
    return path;
}

CurvePath CurvePath::conic(const ge::EllipticArc& arc) {
    CurvePath path;
    path.form_ = arc;
    path.setRange(arc.start, arc.end, 1);
    return path;
}

CurvePath CurvePath::spline(ge::Nurbs curve) {
    CurvePath path;
    if (!curve.isValid()) return path;
    path.setRange(curve.start(), curve.end(), 1);
    path.form_ = std::move(curve);
    return path;
}

namespace {
// A chain of one vertex has one piece, from the vertex to itself.
int piecesOf(size_t vertices, bool closed) {
    if (vertices <= 1) return int(vertices);
    return int(vertices) - (closed ? 0 : 1);
}
} // namespace

CurvePath CurvePath::chain(SpaceChain chain) {
    CurvePath path;
    const int pieces = piecesOf(chain.points.size(), chain.closed);
    path.setRange(0, chain.points.size() > 1 ? pieces : 0, pieces);
    path.form_ = std::move(chain);
    return path;
}

CurvePath CurvePath::chain(PlaneChain chain) {
    CurvePath path;
    const int pieces = piecesOf(chain.vertices.size(), chain.closed);
    path.setRange(0, chain.vertices.size() > 1 ? pieces : 0, pieces);
    path.form_ = std::move(chain);
    return path;
}

bool CurvePath::isClosed() const {
    if (const auto* conic = asConic()) return conic->isClosed();
    if (const auto* nurbs = asNurbs()) return nurbs->closed || nurbs->periodic || nurbs->endsMeet();
    if (const auto* plane = asPlaneChain()) return plane->closed;
    const auto* space = asSpaceChain();
    return space && space->closed;
}

// -- pieces -------------------------------------------------------------------------------------------

ge::BulgeSegment CurvePath::segment(int index) const {
    const auto& vertices = std::get<PlaneChain>(form_).vertices;
    const auto& from = vertices[size_t(index)];
    const auto& to = vertices[size_t(index + 1) % vertices.size()];
    return {from.point, to.point, from.bulge};
}

AcGeLineSeg3d CurvePath::straight(int index) const {
    const auto& points = std::get<SpaceChain>(form_).points;
    return AcGeLineSeg3d(points[size_t(index)], points[size_t(index + 1) % points.size()]);
}

PathPiece CurvePath::piece(int index) const {
    if (const auto* conic = asConic()) return *conic;
    if (const auto* nurbs = asNurbs()) return *nurbs;
    if (asSpaceChain()) return straight(index);
    const PlaneChain& chain = std::get<PlaneChain>(form_);
    const ge::BulgeSegment s = segment(index);
    // Arcs that rise less than rounding above their chord are their chord.
    if (std::fabs(s.bulge) < 1e-10 || s.chord() == 0)
        return AcGeLineSeg3d(chain.toWorld(s.start), chain.toWorld(s.end));
    const ge::BulgeCircle circle = s.circle();
    const AcGePoint3d center = chain.toWorld(circle.center);
    const AcGeVector3d x = chain.toWorld(AcGeVector2d(circle.radius, 0));
    if (circle.sweep > 0)
        return ge::EllipticArc{center, chain.normal, x, 1, circle.startAngle, circle.endAngle()};
    return ge::EllipticArc{center, -chain.normal, x, 1, -circle.startAngle, -circle.endAngle()};
}

double CurvePath::paramOfPiece(int index, double own) const {
    if (asConic() || asNurbs()) return own;
    if (asPlaneChain() && !segment(index).isStraight())
        if (const auto arc = piece(index); const auto* conic = std::get_if<ge::EllipticArc>(&arc))
            own = (own - conic->start) / conic->sweep();
    return start_ + paramStep() * (index + std::clamp(own, 0.0, 1.0));
}

CurvePath::Place CurvePath::locate(double param) const {
    const double step = paramStep();
    if (!(step > 0) || pieces_ == 0) return {};
    const double at = (param - start_) / step;
    const int index = std::clamp(int(std::floor(std::clamp(at, -1.0, double(pieces_)))), 0, pieces_ - 1);
    return {index, at - index};
}

// -- parameters, points, derivatives ------------------------------------------------------------------

std::optional<double> CurvePath::inRange(double param) const {
    if (!std::isfinite(param)) return {};
    const double slack =
        kParamRounding * std::max(end_ - start_, std::max(std::fabs(start_), std::fabs(end_)));
    if (param >= start_ - slack && param <= end_ + slack) return std::clamp(param, start_, end_);
    const auto* conic = asConic();
    if (!conic) return {};
    const double turned = conic->paramInRange(param);
    const double turns = (param - turned) / kTwoPi;
    if (std::fabs(turns - std::round(turns)) > kParamRounding) return {};
    return turned;
}

AcGePoint3d CurvePath::pointAt(double param) const {
    if (const auto* conic = asConic()) return conic->point(param);
    if (const auto* nurbs = asNurbs()) return nurbs->point(param);
    const Place at = locate(param);
    if (const auto* plane = asPlaneChain()) return plane->toWorld(segment(at.piece).pointAt(at.fraction));
    return straight(at.piece).evalPoint(at.fraction);
}

AcGeVector3d CurvePath::derivative(double param, int order) const {
    if (const auto* conic = asConic()) return conic->derivative(param, order);
    if (const auto* nurbs = asNurbs()) return nurbs->derivatives(param, order).d[size_t(order - 1)];
    const Place at = locate(param);
    if (const auto* plane = asPlaneChain()) {
        const ge::BulgeSegment s = segment(at.piece);
        const AcGeVector2d along = s.tangentAt(at.fraction) * s.length();
        return plane->toWorld(order == 1 ? along : along.perpVector() * s.sweep());
    }
    const AcGeLineSeg3d line = straight(at.piece);
    if (order > 1 || !(paramStep() > 0)) return {};
    return (line.endPoint() - line.startPoint()) / paramStep();
}

// -- lengths ------------------------------------------------------------------------------------------

double CurvePath::pieceLength(int index) const {
    return asPlaneChain() ? segment(index).length() : straight(index).length();
}

const std::vector<double>& CurvePath::lengths() const {
    if (!lengths_.empty()) return lengths_;
    lengths_.reserve(size_t(pieces_));
    double sum = 0;
    for (int i = 0; i < pieces_; ++i) lengths_.push_back(sum += pieceLength(i));
    return lengths_;
}

const ge::ArcLengthTable& CurvePath::lengthTable() const {
    if (!table_) table_ = std::make_shared<ge::ArcLengthTable>(std::get<ge::Nurbs>(form_));
    return *table_;
}

double CurvePath::lengthAt(double param) const {
    if (const auto* conic = asConic())
        return conic->lengthBetween(conic->start, std::clamp(param, start_, end_));
    if (asNurbs()) return lengthTable().lengthAt(param);
    const Place at = locate(std::clamp(param, start_, end_));
    const auto& sums = lengths();
    const double before = at.piece > 0 ? sums[size_t(at.piece) - 1] : 0;
    return before + (sums[size_t(at.piece)] - before) * std::clamp(at.fraction, 0.0, 1.0);
}

double CurvePath::paramAtLength(double length) const {
    if (const auto* conic = asConic()) return conic->paramAtLength(length);
    if (asNurbs()) return lengthTable().paramAt(length);
    const auto& sums = lengths();
    if (!(length > 0)) return start_;
    if (length >= sums.back()) return end_;
    const size_t index = size_t(std::upper_bound(sums.begin(), sums.end(), length) - sums.begin());
    const double before = index > 0 ? sums[index - 1] : 0;
    return start_ + paramStep() * (double(index) + (length - before) / (sums[index] - before));
}

} // namespace host
