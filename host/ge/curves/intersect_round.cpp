// Lines and circles: in one plane by their segments (bulge_meet.h), askew by the line that their planes have
// in common. Candidates are gathered first, ends before crossings; what lies between neighbours then tells
// touchings and shared stretches.
#include "host/ge/curves/intersect_round.h"

#include <algorithm>
#include <cmath>

#include "host/ge/curves/bulge_meet.h"
#include "host/ge/curves/numeric.h"

namespace host::ge {

namespace {

// What the two kinds answer alike.
struct Place {
    double param, distance;
};
struct Line {
    const AcGeLineSeg3d& form;
    double start() const { return 0; }
    double end() const { return 1; }
    bool isClosed() const { return false; }
    double size() const { return form.length(); }
    AcGePoint3d point(double t) const { return form.evalPoint(t); }
    Place closest(const AcGePoint3d& p) const {
        const double t = form.paramOf(p);
        return {t, form.evalPoint(t).distanceTo(p)};
    }
};
struct Circle {
    const EllipticArc& form;
    double start() const { return form.start; }
    double end() const { return form.end; }
    bool isClosed() const { return form.isClosed(); }
    double size() const { return form.majorRadius(); }
    AcGePoint3d point(double u) const { return form.point(u); }
    Place closest(const AcGePoint3d& p) const {
        const ConicClosest c = form.closestTo(p);
        return {c.param, c.distance};
    }
};

template <class A, class B> class Gathering {
public:
    Gathering(const A& a, const B& b, double tolerance) : a_(a), b_(b), tolerance_(tolerance) {
        for (const double s : {a.start(), a.end()}) offerOfFirst(s);
        for (const double t : {b.start(), b.end()}) {
            const Place onA = a_.closest(b_.point(t));
            if (onA.distance <= tolerance_) add(onA.param, t);
        }
    }

    void offerOfFirst(double s) {
        const Place onB = b_.closest(a_.point(s));
        if (onB.distance <= tolerance_) add(s, onB.param);
    }
    // Both parameters known by whoever found them.
    void add(double s, double t) {
        const AcGePoint3d p = a_.point(s);
        const double halfA = 0.5 * (a_.end() - a_.start()), halfB = 0.5 * (b_.end() - b_.start());
        const bool known = std::any_of(found_.begin(), found_.end(), [&](const Crossing& c) {
            return c.point.distanceTo(p) <= tolerance_ && std::fabs(c.first - s) < halfA &&
                   std::fabs(c.second - t) < halfB;
        });
        if (!known) found_.push_back({p, s, t});
    }

    Intersections result() {
        std::sort(found_.begin(), found_.end(), [](const Crossing& p, const Crossing& q) {
            return p.first != q.first ? p.first < q.first : p.second < q.second;
        });
        joinTouchings();
        Intersections out;
        std::vector<char> isEnd(found_.size());
        for (size_t i = 0; i + 1 < found_.size(); ++i) {
            const double middle = 0.5 * (found_[i].first + found_[i + 1].first);
            const Place onB = b_.closest(a_.point(middle));
            if (onB.distance > tolerance_) continue;
            addStretch(out.shared, found_[i], found_[i + 1], onB.param);
            isEnd[i] = isEnd[i + 1] = 1;
        }
        for (size_t i = 0; i < found_.size(); ++i)
            if (!isEnd[i]) out.points.push_back(found_[i]);
        // The seam of a closed curve is one place.
        if (a_.isClosed() && out.points.size() > 1 &&
            out.points.front().point.distanceTo(out.points.back().point) <= tolerance_)
            out.points.pop_back();
        return out;
    }

private:
    // Neighbours that the curves stay together between, nearer to each other than a touching is sharp.
    void joinTouchings() {
        const double reach = 4 * std::sqrt(tolerance_ * std::min(a_.size(), b_.size()));
        std::vector<Crossing> kept;
        for (const Crossing& c : found_) {
            if (!kept.empty()) {
                const double middle = 0.5 * (kept.back().first + c.first);
                const AcGePoint3d p = a_.point(middle);
                const Place onB = b_.closest(p);
                if (onB.distance <= tolerance_ && p.distanceTo(c.point) <= reach) {
                    kept.back() = {p, middle, onB.param};
                    continue;
                }
            }
            kept.push_back(c);
        }
        found_ = std::move(kept);
    }

    // A place on the second curve's seam has two parameters; the stretch's own is on the side of its middle.
    double besideSeam(double t, double middle) const {
        if (!b_.isClosed() || std::fabs(t - middle) <= kPi) return t;
        return std::clamp(t + std::copysign(2 * kPi, middle - t), b_.start(), b_.end());
    }

    void addStretch(std::vector<SharedStretch>& shared, const Crossing& p, const Crossing& q, double middle) {
        const double from = besideSeam(p.second, middle), to = besideSeam(q.second, middle);
        if (!shared.empty() && shared.back().firstTo == p.first && shared.back().secondTo == from)
            shared.back().firstTo = q.first, shared.back().secondTo = to;
        else
            shared.push_back({p.first, q.first, from, to});
    }

    const A& a_;
    const B& b_;
    double tolerance_;
    std::vector<Crossing> found_;
};

struct Frame {
    AcGePoint3d origin;
    AcGeVector3d x, y, z;
    explicit Frame(const EllipticArc& arc)
        : origin(arc.center), x(arc.majorAxis / arc.majorRadius()), y(arc.normal.crossProduct(x)),
          z(arc.normal) {}
    AcGePoint2d flat(const AcGePoint3d& p) const {
        const AcGeVector3d v = p - origin;
        return {v.dotProduct(x), v.dotProduct(y)};
    }
    double height(const AcGePoint3d& p) const { return (p - origin).dotProduct(z); }
};

struct Part {
    BulgeSegment shape;
    double from = 0, to = 1;
    double paramAt(double fraction) const { return from + (to - from) * fraction; }
};

// In halves where an arc turns far: their chords tell more of it.
std::vector<Part> partsOf(const Frame& frame, const EllipticArc& arc) {
    const int count = arc.sweep() > 0.75 * kPi ? 2 : 1;
    const double sense = arc.normal.dotProduct(frame.z) < 0 ? -1 : 1, step = arc.sweep() / count;
    std::vector<Part> out;
    for (int i = 0; i < count; ++i) {
        const double from = arc.start + step * i, to = i + 1 < count ? from + step : arc.end;
        const BulgeSegment shape{frame.flat(arc.point(from)), frame.flat(arc.point(to)),
                                 bulgeOfSweep(sense * step)};
        out.push_back({shape, from, to});
    }
    return out;
}
std::vector<Part> partsOf(const Frame& frame, const AcGeLineSeg3d& line) {
    return {{{frame.flat(line.startPoint()), frame.flat(line.endPoint()), 0}, 0, 1}};
}

template <class A, class B>
void meetInPlane(const std::vector<Part>& as, const std::vector<Part>& bs, double tolerance,
                 Gathering<A, B>& out) {
    for (const Part& a : as)
        for (const Part& b : bs)
            for (const BulgeMeeting& m : meetings(a.shape, b.shape, tolerance))
                out.add(a.paramAt(m.first), b.paramAt(m.second));
}

} // namespace

Intersections meetRound(const AcGeLineSeg3d& first, const AcGeLineSeg3d& second, double tolerance) {
    const Line a{first}, b{second};
    Gathering<Line, Line> out(a, b, tolerance);
    const AcGeVector3d u = first.endPoint() - first.startPoint(), v = second.endPoint() - second.startPoint();
    const AcGeVector3d gap = second.startPoint() - first.startPoint(), across = u.crossProduct(v);
    const double square = across.lengthSqrd();
    if (square > tolerance::kParallel * tolerance::kParallel * u.lengthSqrd() * v.lengthSqrd()) {
        const double s = gap.crossProduct(v).dotProduct(across) / square;
        const double t = gap.crossProduct(u).dotProduct(across) / square;
        const bool inside = s >= 0 && s <= 1 && t >= 0 && t <= 1;
        if (inside && a.point(s).distanceTo(b.point(t)) <= tolerance) out.add(s, t);
    }
    return out.result();
}

Intersections meetRound(const AcGeLineSeg3d& first, const EllipticArc& second, double tolerance) {
    const Line a{first};
    const Circle b{second};
    Gathering<Line, Circle> out(a, b, tolerance);
    const Frame frame(second);
    const double low = frame.height(first.startPoint()), high = frame.height(first.endPoint());
    if (std::max(std::fabs(low), std::fabs(high)) <= tolerance)
        meetInPlane(partsOf(frame, first), partsOf(frame, second), tolerance, out);
    else if ((low < 0) != (high < 0))
        out.offerOfFirst(low / (low - high));
    return out.result();
}

Intersections meetRound(const EllipticArc& first, const EllipticArc& second, double tolerance) {
    const Circle a{first}, b{second};
    Gathering<Circle, Circle> out(a, b, tolerance);
    const Frame frame(second);
    // Heights over the other's plane go as p cos u + q sin u + r around the first circle.
    const double p = first.majorAxis.dotProduct(frame.z), q = first.minorAxis().dotProduct(frame.z);
    const double r = frame.height(first.center), most = std::hypot(p, q);
    if (most + std::fabs(r) <= tolerance) {
        meetInPlane(partsOf(frame, first), partsOf(frame, second), tolerance, out);
    } else if (std::fabs(r) <= most + tolerance) {
        const double middle = std::atan2(q, p), turn = std::acos(std::clamp(-r / most, -1.0, 1.0));
        for (const double u : {middle - turn, middle + turn}) out.offerOfFirst(first.paramInRange(u));
    }
    return out.result();
}

} // namespace host::ge
