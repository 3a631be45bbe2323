// Intersection of curves by halving boxes; lines and circles have closed forms in intersect_round.h. Shared
// stretches are found first, from the ends of the curves' pieces that lie on the other curve; the halving
// then leaves them out, so that equal curves cost no more than others.
#include "host/ge/curves/intersect.h"

#include <algorithm>
#include <cmath>

#include "host/ge/curves/intersect_round.h"
#include "host/ge/curves/nurbs_make.h"
#include "host/ge/curves/nurbs_measure.h"
#include "host/ge/tolerances.h"

namespace host::ge {

namespace {

constexpr int kDepth = 60;         // halvings, of both pieces together
constexpr int kMostPairs = 400000; // pairs of pieces looked at
constexpr double kStraight = 0.05; // sagging of a piece, of its chord, that the iteration may begin from

struct Meeting {
    double s, t, distance;
};

class Search {
public:
    Search(const Nurbs& a, const Nurbs& b, double tolerance)
        : a_(a), b_(b), onA_(a), onB_(b), size_(std::max(a.size(), b.size())),
          tolerance_(tolerance > 0 ? tolerance : tolerance::kPoint * size_),
          isSelf_(isSame(a.poles, b.poles) && a.knots == b.knots && a.weights == b.weights) {}

    Intersections run() {
        if (isSelf_) return runOnItself();
        findShared();
        const std::vector<BezierPiece> as = bezierPieces(a_);
        std::vector<BezierPiece> bs = bezierPieces(b_);
        // By their left sides, so that a piece looks only at those that begin before it ends.
        std::sort(bs.begin(), bs.end(), [](const BezierPiece& p, const BezierPiece& q) {
            const double l = hull(p).minPoint().x, r = hull(q).minPoint().x;
            return l != r ? l < r : p.from < q.from;
        });
        std::vector<AcDbExtents> boxes;
        for (const BezierPiece& b : bs) boxes.push_back(hull(b));
        for (const BezierPiece& a : as) {
            const AcDbExtents box = hull(a);
            for (size_t i = 0; i < bs.size() && boxes[i].minPoint().x <= box.maxPoint().x + tolerance_; ++i)
                if (meet(box, boxes[i])) descend(a, bs[i], kDepth);
        }
        gather();
        return std::move(result_);
    }

private:
    static bool isSame(const std::vector<AcGePoint3d>& p, const std::vector<AcGePoint3d>& q) {
        return std::equal(p.begin(), p.end(), q.begin(), q.end(), [](const auto& x, const auto& y) {
            return x.x == y.x && x.y == y.y && x.z == y.z;
        });
    }

    // The whole curve is shared with itself; what else there is are its loops' crossings, each told once.
    Intersections runOnItself() {
        const std::vector<BezierPiece> pieces = bezierPieces(a_);
        for (size_t i = 0; i < pieces.size(); ++i) {
            descendAlone(pieces[i], kDepth);
            for (size_t j = i + 1; j < pieces.size(); ++j) descend(pieces[i], pieces[j], kDepth);
        }
        const double range = a_.end() - a_.start(), same = 1e-6 * range;
        std::erase_if(meetings_, [&](const Meeting& m) {
            const double apart = std::fabs(m.s - m.t);
            return apart < same || (apart > range - same && a_.endsMeet());
        });
        gather();
        result_.shared.push_back({a_.start(), a_.end(), a_.start(), a_.end()});
        return std::move(result_);
    }

    // What goes on along one direction throughout doesn't come back to itself.
    static bool goesAlong(const AcGeVector3d& direction, const BezierPiece& piece) {
        for (size_t i = 0; i + 1 < piece.poles.size(); ++i)
            if (!((piece.pole(i + 1) - piece.pole(i)).dotProduct(direction) > 0)) return false;
        return true;
    }

    void descendAlone(const BezierPiece& piece, int depth) {
        const AcGeVector3d chord = piece.pole(piece.poles.size() - 1) - piece.pole(0);
        if (depth == 0 || diagonal(hull(piece)) <= tolerance_ || goesAlong(chord, piece)) return;
        if (++pairs_ > kMostPairs) return void(result_.isComplete = false);
        const BezierHalves h = halved(piece);
        descendAlone(h.first, depth - 1);
        descendAlone(h.second, depth - 1);
        descend(h.first, h.second, depth - 1);
    }

    static bool areOneWay(const BezierPiece& a, const BezierPiece& b) {
        if (a.to != b.from) return false;
        const AcGeVector3d chord = b.pole(b.poles.size() - 1) - a.pole(0);
        return goesAlong(chord, a) && goesAlong(chord, b);
    }

    static AcDbExtents hull(const BezierPiece& piece) {
        AcDbExtents box;
        for (size_t i = 0; i < piece.poles.size(); ++i) box.addPoint(piece.pole(i));
        return box;
    }

    bool meet(const AcDbExtents& p, const AcDbExtents& q) const {
        for (unsigned axis = 0; axis < 3; ++axis)
            if (p.minPoint()[axis] > q.maxPoint()[axis] + tolerance_ ||
                q.minPoint()[axis] > p.maxPoint()[axis] + tolerance_)
                return false;
        return true;
    }

    // Whether a slab along the first piece's chord parts the two: boxes along the axes cannot where curves
    // run side by side at a slant.
    bool arePartedBySlab(const BezierPiece& a, const BezierPiece& b) const {
        const auto middle = [](const BezierPiece& p) {
            return p.pole(0) + (p.pole(p.poles.size() - 1) - p.pole(0)) * 0.5;
        };
        const AcGeTol exact = AcGeTol().setEqualVector(0);
        const AcGePoint3d base = middle(a);
        const AcGeVector3d along = (a.pole(a.poles.size() - 1) - a.pole(0)).normal(exact),
                           over = middle(b) - base;
        const AcGeVector3d axis = (over - along * over.dotProduct(along)).normal(exact);
        double highest = -1e300, lowest = 1e300;
        for (size_t i = 0; i < a.poles.size(); ++i)
            highest = std::max(highest, (a.pole(i) - base).dotProduct(axis));
        for (size_t i = 0; i < b.poles.size(); ++i)
            lowest = std::min(lowest, (b.pole(i) - base).dotProduct(axis));
        return lowest > highest + tolerance_;
    }

    static double diagonal(const AcDbExtents& box) { return box.minPoint().distanceTo(box.maxPoint()); }

    static bool isStraight(const BezierPiece& piece, double size) {
        const AcGePoint3d start = piece.pole(0), end = piece.pole(piece.poles.size() - 1);
        const AcGeLineSeg3d chord(start, end);
        for (size_t i = 1; i + 1 < piece.poles.size(); ++i)
            if (chord.distanceTo(piece.pole(i)) > kStraight * size) return false;
        return true;
    }

    void findShared() {
        std::vector<Meeting> contacts;
        for (const double s : a_.distinctKnots()) {
            const NurbsClosest c = onB_.closestTo(a_.point(s));
            if (c.distance <= tolerance_) contacts.push_back({s, c.param, c.distance});
        }
        for (const double t : b_.distinctKnots()) {
            const NurbsClosest c = onA_.closestTo(b_.point(t));
            if (c.distance <= tolerance_) contacts.push_back({c.param, t, c.distance});
        }
        // The seam of a closed curve is at both its ends.
        for (size_t i = 0, n = contacts.size(); i < n; ++i) {
            const Meeting c = contacts[i];
            for (const double s : {a_.start(), a_.end()})
                if (s != c.s && a_.point(s).distanceTo(a_.point(c.s)) <= tolerance_)
                    contacts.push_back({s, c.t, 0});
        }
        std::sort(contacts.begin(), contacts.end(),
                  [](const Meeting& p, const Meeting& q) { return p.s < q.s; });
        for (size_t i = 0; i + 1 < contacts.size(); ++i) addIfShared(contacts[i].s, contacts[i + 1].s);
    }

    void addIfShared(double from, double to) {
        if (a_.point(from).distanceTo(a_.point(to)) <= tolerance_ &&
            a_.point(0.5 * (from + to)).distanceTo(a_.point(from)) <= tolerance_)
            return;
        // Unequal fractions, so that no symmetry of the curves hides a gap.
        for (const double f : {0.11, 0.37, 0.58, 0.83})
            if (onB_.closestTo(a_.point(from + f * (to - from))).distance > tolerance_) return;
        // Seen from inside, as an end may lie on a seam of the other curve.
        const double low = onB_.closestTo(a_.point(from + 1e-3 * (to - from))).param;
        const double high = onB_.closestTo(a_.point(to - 1e-3 * (to - from))).param;
        SharedStretch s{from, to, snapped(low, from), snapped(high, to)};
        auto& shared = result_.shared;
        if (!shared.empty() && shared.back().firstTo == from && shared.back().secondTo == s.secondFrom) {
            shared.back().firstTo = to;
            shared.back().secondTo = s.secondTo;
        } else {
            shared.push_back(s);
        }
    }

    // The parameter near t whose point on the second curve is the first curve's at s; at a seam, the nearer
    // end.
    double snapped(double t, double s) const {
        const AcGePoint3d p = a_.point(s);
        const double found = onB_.closestTo(p).param, range = b_.end() - b_.start();
        double best = found;
        for (const double end : {b_.start(), b_.end()})
            if (b_.point(end).distanceTo(p) <= tolerance_ && std::fabs(end - t) < std::fabs(best - t))
                best = end;
        return std::fabs(best - t) < 0.5 * range ? best : found;
    }

    bool isShared(double s, double t, double marginS, double marginT) const {
        return std::any_of(result_.shared.begin(), result_.shared.end(), [&](const SharedStretch& x) {
            const auto [low, high] = std::minmax(x.secondFrom, x.secondTo);
            return s >= x.firstFrom - marginS && s <= x.firstTo + marginS && t >= low - marginT &&
                   t <= high + marginT;
        });
    }

    // Whether both pieces lie in one shared stretch.
    bool inShared(const BezierPiece& a, const BezierPiece& b) const {
        const double ms = tolerance::kPoint * (a_.end() - a_.start()),
                     mt = tolerance::kPoint * (b_.end() - b_.start());
        return isShared(a.from, b.from, ms, mt) && isShared(a.to, b.to, ms, mt) &&
               isShared(0.5 * (a.from + a.to), 0.5 * (b.from + b.to), ms, mt);
    }

    // Least distance near (s, t): Gauss and Newton on the difference, damped where the tangents run alike.
    Meeting approach(double s, double t) const {
        double damping = 0;
        Meeting best{s, t, a_.point(s).distanceTo(b_.point(t))};
        for (int step = 0; step < 40 && best.distance > 0; ++step) {
            const CurvePoint p = a_.derivatives(best.s, 1), q = b_.derivatives(best.t, 1);
            const AcGeVector3d d = p.point - q.point, &u = p.d[0], &v = q.d[0];
            const double uu = u.lengthSqrd() * (1 + damping), vv = v.lengthSqrd() * (1 + damping);
            const double uv = u.dotProduct(v), det = uu * vv - uv * uv;
            if (!(det > tolerance::kParallel * uu * vv)) {
                if (damping >= 1) break;
                damping = damping == 0 ? 1e-6 : damping * 100;
                continue;
            }
            const double du = -d.dotProduct(u), dv = d.dotProduct(v);
            const double ns = std::clamp(best.s + (du * vv + dv * uv) / det, a_.start(), a_.end());
            const double nt = std::clamp(best.t + (dv * uu + du * uv) / det, b_.start(), b_.end());
            const double distance = a_.point(ns).distanceTo(b_.point(nt));
            if (!(distance < best.distance)) break;
            best = {ns, nt, distance};
        }
        return best;
    }

    void descend(const BezierPiece& a, const BezierPiece& b, int depth) {
        if (++pairs_ > kMostPairs) {
            result_.isComplete = false;
            return;
        }
        if (isSelf_ && areOneWay(a, b)) return;
        const AcDbExtents boxA = hull(a), boxB = hull(b);
        if (!meet(boxA, boxB) || arePartedBySlab(a, b) || arePartedBySlab(b, a) || inShared(a, b)) return;
        const double sizeA = diagonal(boxA), sizeB = diagonal(boxB);
        const double s = 0.5 * (a.from + a.to), t = 0.5 * (b.from + b.to);
        const bool tiny = std::max(sizeA, sizeB) <= tolerance_ || depth == 0;
        if (tiny || (isStraight(a, sizeA) && isStraight(b, sizeB))) {
            const Meeting m = approach(s, t);
            const bool ownS = m.s >= a.from && m.s <= a.to, ownT = m.t >= b.from && m.t <= b.to;
            if (m.distance <= tolerance_) {
                meetings_.push_back(m);
                if (ownS && ownT && crossOnce(a, b)) return;
            }
            if (tiny) return;
        }
        if (std::max(sizeA, sizeB) <= std::sqrt(tolerance_ * size_) && alreadyMet(a, sizeA, b, sizeB)) return;
        if (sizeA >= sizeB) {
            const BezierHalves h = halved(a);
            descend(h.first, b, depth - 1);
            descend(h.second, b, depth - 1);
        } else {
            const BezierHalves h = halved(b);
            descend(a, h.first, depth - 1);
            descend(a, h.second, depth - 1);
        }
    }

    // Straight pieces whose directions differ by more than both sag meet no second time.
    static bool crossOnce(const BezierPiece& a, const BezierPiece& b) {
        const AcGeVector3d u = a.pole(a.poles.size() - 1) - a.pole(0),
                           v = b.pole(b.poles.size() - 1) - b.pole(0);
        return u.crossProduct(v).length() > 0.6 * u.length() * v.length();
    }

    // A touching was found near these small pieces, along both curves: within the square root of the
    // tolerance the curves do not part, and what is left there is the same one.
    bool alreadyMet(const BezierPiece& a, double sizeA, const BezierPiece& b, double sizeB) const {
        const double reach = 4 * std::sqrt(tolerance_ * size_);
        const double reachS = (a.to - a.from) * (1 + reach / sizeA),
                     reachT = (b.to - b.from) * (1 + reach / sizeB);
        const double s = 0.5 * (a.from + a.to), t = 0.5 * (b.from + b.to);
        return std::any_of(meetings_.begin(), meetings_.end(), [&](const Meeting& m) {
            return std::fabs(m.s - s) <= reachS && std::fabs(m.t - t) <= reachT;
        });
    }

    // The curves do not part between two meetings.
    bool isSame(const Meeting& p, const Meeting& q) const {
        const double apart = a_.point(p.s).distanceTo(a_.point(q.s));
        if (apart <= 4 * tolerance_) return true;
        if (apart > 4 * std::sqrt(tolerance_ * size_)) return false;
        return a_.point(0.5 * (p.s + q.s)).distanceTo(b_.point(0.5 * (p.t + q.t))) <= tolerance_;
    }

    void gather() {
        const double ms = tolerance::kPoint * (a_.end() - a_.start()),
                     mt = tolerance::kPoint * (b_.end() - b_.start());
        std::sort(meetings_.begin(), meetings_.end(), [](const Meeting& p, const Meeting& q) {
            return p.distance != q.distance ? p.distance < q.distance : p.s < q.s;
        });
        std::vector<Meeting> kept;
        for (const Meeting& m : meetings_) {
            if (isShared(m.s, m.t, ms, mt)) continue;
            if (std::none_of(kept.begin(), kept.end(), [&](const Meeting& k) { return isSame(k, m); }))
                kept.push_back(m);
        }
        std::sort(kept.begin(), kept.end(), [](const Meeting& p, const Meeting& q) { return p.s < q.s; });
        for (const Meeting& m : kept) result_.points.push_back({a_.point(m.s), m.s, m.t});
    }

    const Nurbs &a_, &b_;
    ClosestPointFinder onA_, onB_;
    double size_, tolerance_;
    bool isSelf_;
    int pairs_ = 0;
    std::vector<Meeting> meetings_;
    Intersections result_;
};

double ownParam(const EllipticArc& arc, const Nurbs& form, double t) {
    if (t <= form.start()) return arc.start;
    return t >= form.end() ? arc.end : arc.closestTo(form.point(t)).param;
}
double ownParam(const BulgeSegment& segment, const Nurbs& form, double t) {
    const AcGePoint3d p = form.point(t);
    return t <= form.start() ? 0 : t >= form.end() ? 1 : segment.closestTo({p.x, p.y}).fraction;
}
double ownParam(const AcGeLineSeg3d&, const Nurbs&, double t) { return t; }
double ownParam(const Nurbs&, const Nurbs&, double t) { return t; }

Nurbs formOf(const EllipticArc& arc) { return conicNurbs(arc); }
Nurbs formOf(const BulgeSegment& s) { return polylineNurbs({{s.start, s.bulge}, {s.end, 0}}, false); }
Nurbs formOf(const AcGeLineSeg3d& s) { return lineNurbs(s.startPoint(), s.endPoint()); }
const Nurbs& formOf(const Nurbs& c) { return c; }

template <class A, class B> Intersections ofAny(const A& a, const B& b, double tolerance) {
    const Nurbs& fa = formOf(a);
    const Nurbs& fb = formOf(b);
    if (!fa.isValid() || !fb.isValid()) return {};
    Intersections r = Search(fa, fb, tolerance).run();
    for (Crossing& c : r.points) {
        c.first = ownParam(a, fa, c.first);
        c.second = ownParam(b, fb, c.second);
    }
    for (SharedStretch& s : r.shared)
        s = {ownParam(a, fa, s.firstFrom), ownParam(a, fa, s.firstTo), ownParam(b, fb, s.secondFrom),
             ownParam(b, fb, s.secondTo)};
    return r;
}

} // namespace

Intersections intersect(const Nurbs& a, const Nurbs& b, double tolerance) { return ofAny(a, b, tolerance); }
namespace {
double sizeOf(const EllipticArc& arc) { return 2 * arc.majorRadius(); }
double sizeOf(const AcGeLineSeg3d& line) { return line.length(); }
bool isRound(const EllipticArc& arc) { return arc.isCircular(); }
bool isRound(const AcGeLineSeg3d&) { return true; }

template <class A, class B> Intersections ofPlain(const A& a, const B& b, double tolerance) {
    if (!(sizeOf(a) > 0) || !(sizeOf(b) > 0)) return {};
    if (!isRound(a) || !isRound(b)) return ofAny(a, b, tolerance);
    return meetRound(a, b, tolerance > 0 ? tolerance : tolerance::kPoint * std::max(sizeOf(a), sizeOf(b)));
}
} // namespace

Intersections intersect(const EllipticArc& a, const EllipticArc& b, double tolerance) {
    return ofPlain(a, b, tolerance);
}
Intersections intersect(const AcGeLineSeg3d& a, const EllipticArc& b, double tolerance) {
    return ofPlain(a, b, tolerance);
}
Intersections intersect(const AcGeLineSeg3d& a, const AcGeLineSeg3d& b, double tolerance) {
    return ofPlain(a, b, tolerance);
}
Intersections intersect(const AcGeLineSeg3d& a, const Nurbs& b, double tolerance) {
    return ofAny(a, b, tolerance);
}
Intersections intersect(const EllipticArc& a, const Nurbs& b, double tolerance) {
    return ofAny(a, b, tolerance);
}
Intersections intersect(const BulgeSegment& a, const BulgeSegment& b, double tolerance) {
    return ofAny(a, b, tolerance);
}

} // namespace host::ge
