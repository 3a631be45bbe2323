// Parallels by interpolation: first the stretches of the path whose parallel is valid, then a spline through
// ever more points of each.
#include "host/ent/curve_offset_fit.h"

#include <algorithm>
#include <cmath>

#include "host/ge/curves/interpolate.h"

namespace host {

namespace {

constexpr double kFitError = 1e-6;  // of the path's size, that a fitted parallel may be off
constexpr double kTooNear = 1e-9;   // of the path's size, that a valid point may be nearer than the distance
constexpr double kSameParam = 1e-9; // of the range
constexpr double kTinySpan = 1e-6;  // of the range: parts that have no parallel of their own
constexpr int kFewest = 16, kMost = 4096;
constexpr int kProbes = 512; // of a smooth stretch, for where the parallel is valid

struct Stretch {
    double from, to; // beyond the end: on from the start of a closed path
};

class Parallel {
public:
    Parallel(const CurvePath& path, const AcGeVector3d& normal, double distance)
        : path_(path), normal_(normal), distance_(distance), range_(path.endParam() - path.startParam()),
          slack_(kTooNear * (path.size() + std::fabs(distance))) {}

    bool isSmoothlyClosed() const {
        const AcGeVector3d a = path_.derivative(path_.startParam(), 1), b = direction(path_.endParam(), -1);
        return path_.isClosed() && a.crossProduct(b).length() <= 1e-6 * a.length() && a.dotProduct(b) > 0;
    }

    // The path between its corners.
    std::vector<Stretch> smooth() const {
        std::vector<double> corners{path_.startParam()};
        if (const ge::Nurbs* curve = path_.asNurbs()) {
            const std::vector<double> knots = curve->distinctKnots();
            for (size_t i = 1; i + 1 < knots.size(); ++i) {
                const bool isBend = isSharpBend(*curve, knots[i], knots[i + 1]);
                if ((isBend || isCorner(*curve, knots[i])) && corners.back() < knots[i])
                    corners.push_back(knots[i]);
                if (isBend && knots[i + 1] < path_.endParam()) corners.push_back(knots[i + 1]);
            }
        }
        corners.push_back(path_.endParam());
        std::vector<Stretch> out;
        for (size_t i = 0; i + 1 < corners.size(); ++i) out.push_back({corners[i], corners[i + 1]});
        return out;
    }

    // What of a smooth stretch has a valid parallel.
    std::vector<Stretch> valid(const Stretch& smooth) const {
        std::vector<Stretch> out;
        const double step = (smooth.to - smooth.from) / kProbes;
        // Corners belong to both sides; the parallel's ends there are looked at from inside.
        const auto param = [&](int i) {
            const double inset = i == 0 ? kSameParam : i == kProbes ? -kSameParam : 0;
            return smooth.from + step * (i + inset);
        };
        bool before = isValid(param(0));
        double from = smooth.from;
        for (int i = 1; i <= kProbes; ++i) {
            const bool now = isValid(param(i));
            if (now != before) {
                const double change = boundary(param(i - 1), param(i), before);
                if (now)
                    from = change;
                else
                    out.push_back({from, change});
            }
            before = now;
        }
        if (before) out.push_back({from, smooth.to});
        std::erase_if(out, [&](const Stretch& s) { return !(s.to - s.from > kTinySpan * range_); });
        return out;
    }

    ge::Nurbs fitted(const Stretch& s, bool closed) const {
        for (int steps = kFewest; steps <= kMost; steps *= 2) {
            const Fit fit = fitWith(s, closed, steps);
            if (fit.isClose) return fit.curve;
        }
        return {};
    }

private:
    struct Fit {
        ge::Nurbs curve;
        bool isClose = false;
    };

    static bool isCorner(const ge::Nurbs& curve, double knot) {
        if (curve.multiplicityAt(knot) < curve.degree) return false;
        const AcGeVector3d a = curve.derivativesFromLeft(knot, 1).d[0], b = curve.derivatives(knot, 1).d[0];
        return a.crossProduct(b).length() > 1e-9 * a.length() * b.length() || a.dotProduct(b) < 0;
    }

    // Between knots that are nearly one a curve may turn as sharply as at a corner.
    bool isSharpBend(const ge::Nurbs& curve, double knot, double next) const {
        if (next - knot > kTinySpan * range_) return false;
        const AcGeVector3d a = curve.derivativesFromLeft(knot, 1).d[0], b = curve.derivatives(next, 1).d[0];
        return a.crossProduct(b).length() > 1e-6 * a.length() * b.length() || a.dotProduct(b) < 0;
    }

    // Beyond the end by more than rounding: on from the start.
    double wrapped(double param) const {
        if (param > path_.endParam() + kSameParam * range_) return param - range_;
        return std::min(param, path_.endParam());
    }

    // Where the path stands still, that of its neighbourhood; `side` tells from where a corner is seen.
    AcGeVector3d direction(double param, int side) const {
        const double nudge = kSameParam * range_;
        if (side < 0) param = std::max(param - nudge, path_.startParam());
        AcGeVector3d along = path_.derivative(wrapped(param), 1);
        if (!(along.length() > 1e-12 * path_.size() / range_)) {
            const bool atEnd = param + 1e3 * nudge > path_.endParam();
            along = path_.derivative(wrapped(param + (atEnd || side < 0 ? -1e3 : 1e3) * nudge), 1);
        }
        return along;
    }

    AcGePoint3d at(double param, int side) const {
        const AcGeVector3d along = direction(param, side), right = along.crossProduct(normal_);
        const double length = right.length();
        const AcGePoint3d p = path_.pointAt(wrapped(param));
        return length > 0 ? p + right * (distance_ / length) : p;
    }

    bool isValid(double param) const {
        return path_.closestTo(at(param, 1)).distance >= std::fabs(distance_) - slack_;
    }

    double boundary(double low, double high, bool atLow) const {
        while (high - low > 1e-14 * range_) {
            const double middle = 0.5 * (low + high);
            if (middle <= low || middle >= high) break;
            (isValid(middle) == atLow ? low : high) = middle;
        }
        return atLow ? low : high; // on the valid side
    }

    Fit fitWith(const Stretch& s, bool closed, int steps) const {
        std::vector<AcGePoint3d> points, between;
        // A closed spline comes back to its first point by itself.
        for (int i = 0; i < 2 * steps + (closed ? 0 : 1); ++i)
            (i % 2 ? between : points)
                .push_back(at(s.from + (s.to - s.from) * i / (2 * steps), i == 2 * steps ? -1 : 1));
        ge::FitOptions options;
        options.closed = closed;
        if (!closed) options.startTangent = direction(s.from, 1), options.endTangent = direction(s.to, -1);
        Fit fit{ge::interpolate(points, options).curve, false};
        if (!fit.curve.isValid()) return fit;
        const ge::ClosestPointFinder finder(fit.curve);
        const double bound = kFitError * path_.size();
        fit.isClose = std::all_of(between.begin(), between.end(), [&](const AcGePoint3d& p) {
            return finder.closestTo(p).distance <= bound;
        });
        return fit;
    }

    const CurvePath& path_;
    AcGeVector3d normal_;
    double distance_, range_, slack_;
};

// One after the other, with a corner where they meet; both clamped and of one degree.
ge::Nurbs joined(ge::Nurbs a, const ge::Nurbs& b) {
    const double shift = a.end() - b.start();
    a.knots.pop_back();
    for (size_t i = size_t(b.degree) + 1; i < b.knots.size(); ++i) a.knots.push_back(b.knots[i] + shift);
    a.poles.back() += (b.poles.front() - a.poles.back()) * 0.5;
    a.poles.insert(a.poles.end(), b.poles.begin() + 1, b.poles.end());
    return a;
}

// Pieces of a parallel that were trimmed at one crossing are one curve; round the seam it closes.
std::vector<ge::Nurbs> joinedWhereTheyMeet(std::vector<ge::Nurbs> pieces, double reach) {
    const auto meet = [&](const ge::Nurbs& a, const ge::Nurbs& b) {
        return !a.closed && !b.closed && a.poles.back().distanceTo(b.poles.front()) <= reach;
    };
    std::vector<ge::Nurbs> out;
    for (ge::Nurbs& piece : pieces) {
        if (!out.empty() && meet(out.back(), piece))
            out.back() = joined(std::move(out.back()), piece);
        else
            out.push_back(std::move(piece));
    }
    if (out.size() > 1 && meet(out.back(), out.front())) {
        out.front() = joined(std::move(out.back()), out.front());
        out.pop_back();
    }
    if (out.size() == 1 && meet(out[0], out[0])) {
        out[0].poles.back() = out[0].poles.front();
        out[0].closed = true;
    }
    return out;
}

} // namespace

std::vector<ge::Nurbs> fitParallels(const CurvePath& path, const AcGeVector3d& normal, double distance) {
    const Parallel parallel(path, normal, distance);
    std::vector<Stretch> stretches;
    const std::vector<Stretch> smooth = parallel.smooth();
    for (const Stretch& s : smooth)
        for (const Stretch& v : parallel.valid(s)) stretches.push_back(v);
    const double start = path.startParam(), end = path.endParam();
    const bool goesRound = !stretches.empty() && parallel.isSmoothlyClosed() &&
                           stretches.front().from == start && stretches.back().to == end;
    const bool isWhole = goesRound && smooth.size() == 1 && stretches.size() == 1;
    if (goesRound && stretches.size() > 1) {
        stretches.back().to = end + (stretches.front().to - start);
        stretches.erase(stretches.begin());
    }
    std::vector<ge::Nurbs> out;
    for (const Stretch& s : stretches) {
        ge::Nurbs curve = parallel.fitted(s, isWhole);
        if (curve.isValid()) out.push_back(std::move(curve));
    }
    return joinedWhereTheyMeet(std::move(out), kFitError * path.size());
}

} // namespace host
