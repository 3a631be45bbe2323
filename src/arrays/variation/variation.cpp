// The functions of the five kinds.
#include "arrays/variation/variation.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/unit_cubic.h"

namespace corvane {
namespace {

double factorOf(double percent) { return ClampNumber(percent / 100, 0.01, 100); }
double periodOf(double percent) { return ClampNumber(percent / 100, 0.05, 1); }

// Arrays that were stored must be rebuilt with the same numbers.
double parameterAt(double t, double x1, double x2) {
    constexpr double kThird = 1.0 / 3, kEven = 1e-9;
    constexpr int kHalvings = 14;
    if (std::abs(x1 - kThird) <= kEven && std::abs(x2 - 2 * kThird) <= kEven) return t;
    return UnitCubicParameter(t, x1, x2, kHalvings);
}

} // namespace

double EvalVariation(int kind, double t, double start, double end, double c1, double c2, double t1,
                     double t2) {
    if (kind == kConstant) return 1;
    t = ClampNumber(t, 0, 1);
    const double a = factorOf(start), b = factorOf(end);
    switch (kind) {
    case kLinear: return a + (b - a) * t;
    case kSine: {
        const double amplitude = ClampNumber((end - 100) / 100, -0.99, 0.99);
        return ClampNumber(a + amplitude * std::sin(2 * std::numbers::pi * t / periodOf(c2)), 0.01, 100);
    }
    case kEase: return a + (b - a) * (3 - 2 * t) * t * t;
    default:
        return UnitCubic(parameterAt(t, ClampNumber(t1, 0, 1), ClampNumber(t2, 0, 1)), a, factorOf(c1),
                         factorOf(c2), b);
    }
}

double EvalVariation(const VariationCurve& v, double t) {
    return EvalVariation(v.kind, t, v.start, v.end, v.c1, v.c2, v.t1, v.t2);
}

double ApplyGain(double factor, int gain) { return (factor - 1) * std::max(1, gain) + 1; }

double SizeFactor(const VariationCurve& curve, double t, int gain) {
    return ClampNumber(ApplyGain(EvalVariation(curve, t), gain), 0.001, 1000);
}
double SpacingWeight(const VariationCurve& curve, double t, int gain) {
    return ClampNumber(ApplyGain(EvalVariation(curve, t), gain), 0.01, 100);
}

double SinePeriod(const VariationCurve& curve) { return periodOf(curve.c2); }

} // namespace corvane
