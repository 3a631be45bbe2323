// Variation curves: small functions of the position along a path that scale an array's copies or weigh the
// distances between them. Pure numbers; the graph in which users shape them is in graph_model.h.
#pragma once

namespace corvane {

enum VariationKind { kConstant, kLinear, kSine, kEase, kBezier };
inline constexpr int kVariationKinds = 5;

// Source texts of the kinds, in their order.
inline constexpr const wchar_t* kVariationLabels[kVariationKinds] = {L"不变", L"线性", L"正弦", L"缓入缓出",
                                                                     L"贝塞尔"};

// Values in percent, abscissae in 0..1. For the sine, `end` is the amplitude as an offset from 100 and `c2`
// the period in percent of the path.
struct VariationCurve {
    int kind = kConstant;
    double start = 100, end = 100;
    double c1 = 100, c2 = 100;
    double t1 = 1.0 / 3, t2 = 2.0 / 3;
    bool operator==(const VariationCurve&) const = default;
};

// The factor at position t, 1 for 100 percent. t counts as within 0..1 and values as within 1..10000 percent;
// what is no number counts as the lower bound. Kinds beyond those named are Bézier curves: cubic, the
// parameter found by 14 halvings unless the controls stand at thirds, where it is the position itself.
double EvalVariation(int kind, double t, double start, double end, double c1, double c2, double t1,
                     double t2);
double EvalVariation(const VariationCurve& curve, double t);

// Stretches the factor's distance from 1; a gain below 1 counts as 1.
double ApplyGain(double factor, int gain);

// With the gain, within 0.001..1000: the scale of the copy at t.
double SizeFactor(const VariationCurve& curve, double t, int gain);
// With the gain, within 0.01..100: the weight of the distance at t.
double SpacingWeight(const VariationCurve& curve, double t, int gain);

// The value within the bounds; `low` for what is no number.
inline double ClampNumber(double value, double low, double high) {
    return value >= low ? (value <= high ? value : high) : low;
}

// The period of a sine as a share of the path, 0.05..1.
double SinePeriod(const VariationCurve& curve);

} // namespace corvane
