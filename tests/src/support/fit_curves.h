// Ten curves to fit arcs to, as formulas with their derivatives, and measures of a fit that know nothing of
// how it was made: by dense points of the curve and of the arcs.
#pragma once
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <vector>

#include "curves/conversion/arcfit.h"
#include "curves/conversion/arcfit_chain.h"

namespace support {

using corvane::FitArc;
using corvane::FitSample;

struct Jet { // a point and two derivatives
    AcGePoint2d point;
    AcGeVector2d d, dd;
};
struct FitCurve {
    const char* name;
    double from, to;
    std::function<Jet(double)> at;
    double tolerance;
};

inline Jet bezier(const AcGePoint2d (&p)[4], double t) {
    const double s = 1 - t;
    const AcGeVector2d a = p[1] - p[0], b = p[2] - p[1], c = p[3] - p[2];
    return {p[0] + a * (3 * t * s * s + 3 * t * t * s + t * t * t) + b * (3 * t * t * s + t * t * t) +
                c * (t * t * t),
            (a * (s * s) + b * (2 * s * t) + c * (t * t)) * 3, ((b - a) * s + (c - b) * t) * 6};
}

inline const std::vector<FitCurve>& fitCurves() {
    using std::cos, std::sin;
    static const std::vector<FitCurve> curves = {
        {"wave", 0, 1000,
         [](double x) {
             return Jet{{x, 40 * sin(x / 40) + 10 * sin(x / 11)},
                        {1, cos(x / 40) + 10.0 / 11 * cos(x / 11)},
                        {0, -sin(x / 40) / 40 - 10.0 / 121 * sin(x / 11)}};
         },
         0.01},
        {"ellipse", 0, 2 * std::numbers::pi,
         [](double t) {
             return Jet{
                 {60 * cos(t), 18 * sin(t)}, {-60 * sin(t), 18 * cos(t)}, {-60 * cos(t), -18 * sin(t)}};
         },
         0.01},
        {"s-curve", 0, 1,
         [](double t) {
             return bezier({{0, 0}, {80, 0}, {20, 60}, {100, 60}}, t);
         },
         0.05},
        {"loop", 0, 1,
         [](double t) {
             return bezier({{0, 0}, {160, 90}, {-60, 90}, {100, 0}}, t);
         },
         0.02},
        {"rose", 0, 2 * std::numbers::pi,
         [](double t) {
             const double r = 30 + 12 * cos(5 * t), dr = -60 * sin(5 * t), ddr = -300 * cos(5 * t);
             return Jet{{r * cos(t), r * sin(t)},
                        {dr * cos(t) - r * sin(t), dr * sin(t) + r * cos(t)},
                        {(ddr - r) * cos(t) - 2 * dr * sin(t), (ddr - r) * sin(t) + 2 * dr * cos(t)}};
         },
         0.02},
        {"figure of eight", 0, 2 * std::numbers::pi,
         [](double t) {
             return Jet{{50 * sin(t), 25 * sin(2 * t)},
                        {50 * cos(t), 50 * cos(2 * t)},
                        {-50 * sin(t), -100 * sin(2 * t)}};
         },
         0.01},
        {"spiral", 1, 20,
         [](double t) {
             return Jet{{t * cos(t), t * sin(t)},
                        {cos(t) - t * sin(t), sin(t) + t * cos(t)},
                        {-2 * sin(t) - t * cos(t), 2 * cos(t) - t * sin(t)}};
         },
         0.005},
        {"flat with a bump", -100, 100,
         [](double x) {
             const double g = 5 * std::exp(-x * x / 20);
             return Jet{{x, g}, {1, -x / 10 * g}, {0, (x * x / 100 - 0.1) * g}};
         },
         0.01},
        {"parabola", -30, 30,
         [](double x) {
             return Jet{{x, x * x / 4}, {1, x / 2}, {0, 0.5}};
         },
         0.001},
        {"circle", 0, 2 * std::numbers::pi,
         [](double t) {
             return Jet{
                 {50 * cos(t), 50 * sin(t)}, {-50 * sin(t), 50 * cos(t)}, {-50 * cos(t), -50 * sin(t)}};
         },
         0.01},
    };
    return curves;
}

// `count` samples at equal distances along the curve.
inline std::vector<FitSample> samplesOf(const FitCurve& curve, int count) {
    constexpr int kSteps = 50'000;
    std::vector<double> way(kSteps + 1);
    const double step = (curve.to - curve.from) / kSteps;
    for (int i = 1; i <= kSteps; ++i)
        way[size_t(i)] = way[size_t(i - 1)] + curve.at(curve.from + (i - 0.5) * step).d.length() * step;
    std::vector<FitSample> samples;
    size_t k = 0;
    for (int i = 0; i < count; ++i) {
        const double distance = way.back() * i / (count - 1);
        while (k + 2 < way.size() && way[k + 1] < distance) ++k;
        const double t = i + 1 == count
                             ? curve.to
                             : curve.from + step * (double(k) + (distance - way[k]) / (way[k + 1] - way[k]));
        const Jet jet = curve.at(t);
        const double speed = jet.d.length();
        samples.push_back({jet.point, jet.d / speed,
                           (jet.d.x * jet.dd.y - jet.d.y * jet.dd.x) / (speed * speed * speed), distance});
    }
    return samples;
}

// The angle by which an arc's direction at its start (end) lies off the X axis.
inline double angleAt(const FitArc& arc, bool end) {
    const AcGeVector2d chord = arc.end - arc.start;
    return std::atan2(chord.y, chord.x) + (end ? 2 : -2) * std::atan(arc.bulge);
}
// The largest turn between neighbours; an open end, too, where the arcs leave a gap.
inline double worstJoint(const std::vector<FitArc>& arcs) {
    double worst = 0;
    for (size_t i = 1; i < arcs.size(); ++i) {
        if (arcs[i].start.distanceTo(arcs[i - 1].end) > 0) return std::numeric_limits<double>::infinity();
        worst = std::max(worst, std::abs(std::remainder(angleAt(arcs[i], false) - angleAt(arcs[i - 1], true),
                                                        2 * std::numbers::pi)));
    }
    return worst;
}

inline AcGePoint2d pointOn(const FitArc& arc, double t) { // t from 0 to 1
    const double half = 2 * std::atan(arc.bulge);
    const AcGeVector2d chord = arc.end - arc.start;
    if (std::abs(half) < 1e-12) return arc.start + chord * t;
    // The chord to the point: its length goes with the sine, its direction turns.
    const double ratio = std::sin(half * t) / std::sin(half), turn = half * (t - 1);
    return arc.start + AcGeVector2d(chord.x * std::cos(turn) - chord.y * std::sin(turn),
                                    chord.x * std::sin(turn) + chord.y * std::cos(turn)) *
                           ratio;
}

inline double toChain(const AcGePoint2d& p, const std::vector<AcGePoint2d>& chain, size_t& near) {
    // The neighbours of where the last point was: both paths are walked in step.
    const auto scan = [&](size_t from, size_t to) {
        double best = std::numeric_limits<double>::infinity();
        for (size_t i = from; i + 1 < to; ++i) {
            const AcGeVector2d side = chain[i + 1] - chain[i], w = p - chain[i];
            const double t =
                std::clamp(w.dotProduct(side) / std::max(side.dotProduct(side), 1e-300), 0.0, 1.0);
            const double d = (w - side * t).length();
            if (d < best) best = d, near = i;
        }
        return best;
    };
    return scan(near > 60 ? near - 60 : 0, std::min(chain.size(), near + 60));
}

// How far the two paths lie apart at most, each measured from dense points of the other. Exact to about a
// hundred-thousandth of the curve's length over 200.
inline double deviationOf(const std::vector<FitArc>& arcs, const FitCurve& curve, int density = 20'000) {
    std::vector<AcGePoint2d> dense, drawn;
    for (int i = 0; i <= density; ++i)
        dense.push_back(curve.at(curve.from + (curve.to - curve.from) * i / density).point);
    double length = 0;
    for (const FitArc& arc : arcs) length += arc.start.distanceTo(arc.end);
    for (const FitArc& arc : arcs) { // as dense as the curve, so that the two can be walked side by side
        const int each = std::max(8, int(density * arc.start.distanceTo(arc.end) / length));
        for (int i = 0; i < each; ++i) drawn.push_back(pointOn(arc, double(i) / each));
    }
    drawn.push_back(arcs.back().end);
    double worst = 0;
    size_t near = 0;
    for (const AcGePoint2d& p : dense) worst = std::max(worst, toChain(p, drawn, near));
    near = 0;
    for (const AcGePoint2d& p : drawn) worst = std::max(worst, toChain(p, dense, near));
    return worst;
}

// What fits without a plan: from each joint the longest pair of arcs with the curve's own directions that
// stays within the tolerance.
inline std::vector<FitArc> greedyArcs(const std::vector<FitSample>& samples, double tolerance) {
    const corvane::FitChain chain(samples, 0, samples.size() - 1);
    std::vector<FitArc> arcs;
    for (size_t i = 0; i + 1 < samples.size();) {
        corvane::Biarc best;
        size_t reached = i;
        for (size_t j = i + 1, misses = 0; j < samples.size() && misses < 20; ++j) {
            const corvane::Biarc biarc = corvane::SolveBiarc(samples[i].point, samples[i].tangent,
                                                             samples[j].point, samples[j].tangent);
            const bool fits = biarc.count > 0 && chain.deviation(i, j, biarc, tolerance) <= tolerance;
            misses = fits ? 0 : misses + 1;
            if (fits) best = biarc, reached = j;
        }
        if (reached == i) return {};
        arcs.push_back({samples[i].point, best.joint, best.firstBulge});
        if (best.count == 2) arcs.push_back({best.joint, samples[reached].point, best.secondBulge});
        i = reached;
    }
    return arcs;
}

} // namespace support
