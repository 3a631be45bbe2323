// Spacing functions: how the copies between two curves are spread, from the first curve (0) to the second
// (1). Pure numbers; the graph in which users shape them is in spacing_graph_model.h.
#pragma once
#include <algorithm>
#include <array>

namespace corvane {

enum SpacingKind { kLinearSpacing, kAccelerated, kSineSpacing, kSmoothSpacing, kBezierSpacing };
inline constexpr int kSpacingKinds = 5;

// Source texts of the kinds, in their order.
inline constexpr const wchar_t* kSpacingLabels[kSpacingKinds] = {L"线性", L"加速度", L"正弦", L"平滑",
                                                                 L"贝塞尔"};
// The source text of a kind; one of its own for numbers that are no kind.
const wchar_t* SpacingLabel(int kind);

inline constexpr int kMostAcceleration = 100;

struct SpacingFunction {
    int kind = kAccelerated;
    int accel = 0; // -100 (slowing down) to 100
    // Values at the start and the end in 0 and 5; abscissa and value of the two Bézier controls in 1, 2 and
    // 3, 4. The sine has its length in 4, and in 5 its height above a half.
    std::array<double, 6> d{0, 1.0 / 3, 0, 2.0 / 3, 1, 1};
    bool operator==(const SpacingFunction&) const = default;
};

// The share of the way, 0..1, of a copy at t. t, the values and the acceleration count as within their
// ranges, what is no number as the lower end; a kind that there isn't gives t itself.
//   linear, smooth  from d0 to d5, straight or level at both ends
//   accelerated     t^(2a+1), or its mirror image for a below 0, with a = accel / 100
//   sine            d0 + (d5 - 1/2) sin(2 pi t / d4), with d4 at least 0.05
//   Bézier          cubic through d0, d2, d4, d5; the parameter at t by 32 halvings
double BlendSpacing(double t, int kind, int accel, const std::array<double, 6>& d);
inline double BlendSpacing(double t, const SpacingFunction& f) {
    return BlendSpacing(t, f.kind, f.accel, f.d);
}
// The share of copy `index`, from 0, among `count` between the two curves.
double CopyShare(int index, int count, const SpacingFunction& spacing);

// The length of a sine, 0.05..1, and its height, -0.5..0.5.
double SineLength(const SpacingFunction& spacing);
double SineHeight(const SpacingFunction& spacing);

// The six values as drawings keep them: ten-thousandths, in the order 1, 2, 3, 4, 0, 5. What a drawing lacks
// has the number given here.
using StoredShares = std::array<short, 6>;
inline constexpr StoredShares kUsualShares{3333, 0, 6667, 10000, 0, 10000};
StoredShares ToStored(const std::array<double, 6>& d);
std::array<double, 6> FromStored(const StoredShares& stored);

// Within 0..1; 0 for what is no number.
inline double UnitShare(double value) { return value >= 0 ? std::min(value, 1.0) : 0.0; }

} // namespace corvane
