// The outlines of hatches as curves and as points, and their images.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/ent/filing.h"
#include "host/ent/hatch_data.h"
#include "host/ge/curves/sampling.h"

namespace host {

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;

AcGePoint3d flat(const AcGePoint2d& p) { return {p.x, p.y, 0}; }
AcGePoint2d flat(const AcGePoint3d& p) { return {p.x, p.y}; }

// Between the parameter of a place on an ellipse and its angle from the major axis, turns kept.
double angleOfParam(double param, double ratio) {
    const double turn = std::floor((param + std::numbers::pi) / kTwoPi) * kTwoPi;
    return turn + std::atan2(ratio * std::sin(param), std::cos(param));
}
double paramOfAngle(double angle, double ratio) { return angleOfParam(angle, 1 / ratio); }

bool usable(double size) { return std::isfinite(size) && size > 0; }

// Start to end in the arc's own sense; equal ends mean the whole.
std::optional<ge::EllipticArc> conic(const AcGePoint2d& center, const AcGeVector2d& major, double ratio,
                                     double start, double end, bool clockwise) {
    if (!usable(major.length()) || !usable(ratio) || !std::isfinite(end - start)) return {};
    ge::EllipticArc arc;
    arc.center = flat(center);
    arc.normal = AcGeVector3d(0, 0, clockwise ? -1 : 1);
    arc.majorAxis = AcGeVector3d(major.x, major.y, 0);
    arc.ratio = ratio, arc.start = start;
    const double sweep = end - start > kTwoPi - 1e-9 ? kTwoPi : std::fmod(end - start, kTwoPi);
    arc.end = start + (sweep > 1e-12 ? sweep : sweep + kTwoPi);
    if (ratio > 1) {
        arc.majorAxis = arc.minorAxis(), arc.ratio = 1 / ratio;
        arc.start -= std::numbers::pi / 2, arc.end -= std::numbers::pi / 2;
    }
    return arc;
}

struct ToConic {
    std::optional<ge::EllipticArc> operator()(const HatchArc& a) const {
        return conic(a.center, {std::fabs(a.radius), 0}, 1, a.start, a.end, a.clockwise);
    }
    std::optional<ge::EllipticArc> operator()(const HatchEllipse& e) const {
        const double ratio = std::fabs(e.ratio);
        if (!usable(ratio)) return {};
        const bool whole = e.end - e.start > kTwoPi - 1e-9;
        const double start = paramOfAngle(e.start, ratio);
        return conic(e.center, e.major, ratio, start, whole ? start + kTwoPi : paramOfAngle(e.end, ratio),
                     e.clockwise);
    }
    template <class Other> std::optional<ge::EllipticArc> operator()(const Other&) const { return {}; }
};

CurvePath pathOf(const HatchEdge& edge) {
    if (const auto* line = std::get_if<HatchLine>(&edge))
        return CurvePath::line(flat(line->start), flat(line->end));
    if (const auto* spline = std::get_if<HatchSpline>(&edge)) {
        if (spline->curve.isValid()) return CurvePath::spline(spline->curve);
        // Splines that can't serve are drawn through the points that they have.
        SpaceChain chain{spline->curve.poles, false};
        if (chain.points.empty())
            for (const AcGePoint2d& p : spline->fitPoints) chain.points.push_back(flat(p));
        return CurvePath::chain(std::move(chain));
    }
    const auto arc = conicOf(edge);
    return arc ? CurvePath::conic(*arc) : CurvePath();
}

std::vector<AcGePoint2d> pointsOf(const CurvePath& path, const ge::Flattening& how) {
    std::vector<AcGePoint2d> out;
    const auto take = [&](const std::vector<ge::FlatPoint>& points) {
        for (const ge::FlatPoint& p : points) out.push_back(flat(p.point));
    };
    if (const auto* arc = path.asConic()) take(ge::flatten(*arc, how));
    if (const auto* curve = path.asNurbs()) take(ge::flatten(*curve, how));
    if (const auto* chain = path.asSpaceChain())
        for (const AcGePoint3d& p : chain->points) out.push_back(flat(p));
    return out;
}

// Runs of points joined at their nearer ends, since some programs turn edges round.
class Joiner {
public:
    void add(std::vector<AcGePoint2d> run) {
        if (run.empty()) return;
        if (!points_.empty()) {
            if (runs_ == 1 && gap(points_.front(), run) < gap(points_.back(), run))
                std::reverse(points_.begin(), points_.end());
            if (points_.back().distanceTo(run.back()) < points_.back().distanceTo(run.front()))
                std::reverse(run.begin(), run.end());
        }
        ++runs_;
        points_.insert(points_.end(), run.begin(), run.end());
    }
    std::vector<AcGePoint2d> take() { return std::move(points_); }

private:
    static double gap(const AcGePoint2d& p, const std::vector<AcGePoint2d>& run) {
        return std::min(p.distanceTo(run.front()), p.distanceTo(run.back()));
    }
    std::vector<AcGePoint2d> points_;
    int runs_ = 0;
};

bool samePlace(const AcGePoint2d& a, const AcGePoint2d& b) { return a.x == b.x && a.y == b.y; }

} // namespace

std::optional<ge::EllipticArc> conicOf(const HatchEdge& edge) { return std::visit(ToConic(), edge); }

std::vector<CurvePath> pathsOf(const HatchLoop& loop, const AcGeVector3d& normal, double elevation) {
    std::vector<CurvePath> paths;
    if (loop.isPolyline) {
        if (!loop.vertices.empty())
            paths.push_back(CurvePath::chain(PlaneChain{loop.vertices, true, normal, elevation}));
        return paths;
    }
    const AcGeMatrix3d place = PlaneChain{{}, true, normal, elevation}.matrix();
    const bool still = isWorldZ(normal) && elevation == 0;
    for (const HatchEdge& edge : loop.edges) {
        CurvePath path = pathOf(edge);
        if (!path.isEmpty()) paths.push_back(still ? std::move(path) : path.transformed(place));
    }
    return paths;
}

std::vector<AcGePoint2d> flatten(const HatchLoop& loop, double chordTolerance) {
    ge::Flattening how;
    how.chordTolerance = chordTolerance;
    Joiner joiner;
    if (loop.isPolyline)
        joiner.add(ge::flatten(loop.vertices, true, how));
    else
        for (const HatchEdge& edge : loop.edges) joiner.add(pointsOf(pathOf(edge), how));
    std::vector<AcGePoint2d> points = joiner.take();
    points.erase(std::unique(points.begin(), points.end(), samePlace), points.end());
    while (points.size() > 1 && samePlace(points.front(), points.back())) points.pop_back();
    if (points.size() < 3 || !std::all_of(points.begin(), points.end(), [](auto& p) { return finite(p); }))
        points.clear();
    return points;
}

// -- from curves --------------------------------------------------------------------------------------

namespace {

struct ToEdge {
    HatchEdge operator()(const AcGeLineSeg3d& line) const {
        return HatchLine{flat(line.startPoint()), flat(line.endPoint())};
    }
    HatchEdge operator()(const ge::EllipticArc& arc) const {
        const bool clockwise = arc.normal.z < 0;
        const AcGeVector2d major(arc.majorAxis.x, arc.majorAxis.y);
        if (arc.isCircular()) {
            const double zero = std::atan2(major.y, major.x) * (clockwise ? -1 : 1);
            return HatchArc{flat(arc.center), arc.majorRadius(), zero + arc.start, zero + arc.end, clockwise};
        }
        const double start = angleOfParam(arc.start, arc.ratio);
        const double end = arc.isClosed() ? start + kTwoPi : angleOfParam(arc.end, arc.ratio);
        return HatchEllipse{flat(arc.center), major, arc.ratio, start, end, clockwise};
    }
    HatchEdge operator()(const ge::Nurbs& curve) const {
        HatchSpline spline;
        spline.curve = curve;
        for (AcGePoint3d& pole : spline.curve.poles) pole.z = 0;
        return spline;
    }
};

} // namespace

void appendPath(const CurvePath& path, HatchLoop& loop) {
    const auto* chain = path.asPlaneChain();
    if (chain && path.isClosed() && loop.edges.empty() && loop.vertices.empty()) {
        loop.isPolyline = true;
        const double sense = chain->normal.z < 0 ? -1 : 1;
        for (const ge::BulgeVertex& v : chain->vertices) {
            loop.vertices.push_back({flat(chain->toWorld(v.point)), sense * v.bulge});
            loop.bulged |= v.bulge != 0;
        }
        return;
    }
    for (int i = 0; i < path.pieceCount(); ++i) loop.edges.push_back(std::visit(ToEdge(), path.piece(i)));
}

// -- images -------------------------------------------------------------------------------------------

namespace {

struct Similarity {
    AcGeMatrix2d matrix;
    double scale, turn;
    bool mirrored;

    explicit Similarity(const AcGeMatrix2d& m)
        : matrix(m), scale(m.scale()), turn(std::atan2(m(1, 0), m(0, 0))), mirrored(m.det() < 0) {}

    void move(AcGePoint2d& p) const { p = matrix * p; }
    void move(AcGePoint3d& p) const { p = flat(matrix * flat(p)); }
    void move(AcGeVector2d& v) const { v = matrix * v; }
    double angle(double was) const {
        const AcGeVector2d image = matrix * AcGeVector2d(std::cos(was), std::sin(was));
        return image.angle();
    }

    void operator()(HatchLine& line) const { move(line.start), move(line.end); }
    void operator()(HatchArc& arc) const {
        move(arc.center);
        arc.radius *= scale;
        const double shift = turn * (arc.clockwise ? -1 : 1) * (mirrored ? -1 : 1);
        arc.start += shift, arc.end += shift;
        arc.clockwise ^= mirrored;
    }
    void operator()(HatchEllipse& ellipse) const {
        move(ellipse.center), move(ellipse.major);
        ellipse.clockwise ^= mirrored;
    }
    void operator()(HatchSpline& spline) const {
        for (AcGePoint3d& pole : spline.curve.poles) move(pole);
        for (AcGePoint2d& p : spline.fitPoints) move(p);
        if (spline.startTangent) move(*spline.startTangent);
        if (spline.endTangent) move(*spline.endTangent);
    }
};

} // namespace

void transform(HatchData& data, const AcGeMatrix2d& local) {
    const Similarity similarity(local);
    for (HatchLoop& loop : data.loops) {
        for (ge::BulgeVertex& vertex : loop.vertices) {
            similarity.move(vertex.point);
            if (similarity.mirrored) vertex.bulge = -vertex.bulge;
        }
        for (HatchEdge& edge : loop.edges) std::visit(similarity, edge);
    }
    for (HatchLineFamily& family : data.lines) {
        similarity.move(family.base), similarity.move(family.offset);
        family.angle = similarity.angle(family.angle);
        for (double& dash : family.dashes) dash *= similarity.scale;
    }
    for (AcGePoint2d& seed : data.seeds) similarity.move(seed);
    data.angle = similarity.angle(data.angle);
    data.scale *= similarity.scale;
}

} // namespace host
