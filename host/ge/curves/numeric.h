// Quadrature and root finding that the curves share.
#pragma once

#include <array>
#include <cmath>
#include <utility>

#include "host/ge/tolerances.h"

namespace host::ge {

inline constexpr double kPi = 3.14159265358979323846264338327950288;

// Integral over one piece, without subdivision: the 15 point Kronrod rule (Kronrod, 1965; nodes and weights
// as in QUADPACK, 1983), exact for polynomials up to degree 22. F returns anything that adds and takes a
// factor.
template <class F> auto kronrod15(F&& f, double a, double b) {
    constexpr std::array<double, 8> kNode{
        0.991455371120812639206854697526329, 0.949107912342758524526189684047851,
        0.864864423359769072789712788640926, 0.741531185599394439863864773280788,
        0.586087235467691130294144691258749, 0.405845151377397166906606412076961,
        0.207784955007898467600689403773245, 0};
    constexpr std::array<double, 8> kWeight{
        0.022935322010529224963732008058970, 0.063092092629978553290700663189204,
        0.104790010322250183839876322541518, 0.140653259715525918745189590510238,
        0.169004726639267902826583426598550, 0.190350578064785409913256402421014,
        0.204432940075298892414161999234649, 0.209482141084727828012999174891714};
    const double mid = 0.5 * (a + b), half = 0.5 * (b - a);
    auto sum = f(mid) * kWeight[7];
    for (unsigned i = 0; i < 7; ++i)
        sum += (f(mid - half * kNode[i]) + f(mid + half * kNode[i])) * kWeight[i];
    return sum * half;
}

// Integral of a real function by bisection until halves agree with the whole within the absolute error given.
// The depth is bounded, so integrands with corners and cusps end, too.
template <class F> double integrate(F&& f, double a, double b, double error, int depth = 40) {
    struct Piece {
        double a, b, value;
        int depth;
    };
    std::array<Piece, 64> stack; // holds one sibling a level
    size_t top = 0;
    double sum = 0;
    stack[top++] = {a, b, kronrod15(f, a, b), depth < 60 ? depth : 60};
    while (top > 0) {
        const Piece p = stack[--top];
        const double m = 0.5 * (p.a + p.b);
        const double left = kronrod15(f, p.a, m), right = kronrod15(f, m, p.b);
        if (!(std::fabs(left + right - p.value) > error) || p.depth == 0) {
            sum += left + right;
            continue;
        }
        stack[top++] = {m, p.b, right, p.depth - 1};
        stack[top++] = {p.a, m, left, p.depth - 1};
    }
    return sum;
}

struct ValueAndSlope {
    double value, slope;
};

// The root in [low, high] of a function whose signs differ there: Newton steps, bisection where they leave
// the bracket or gain too little (after Press et al., 1992). Without a change of sign the end nearer to a
// root.
template <class F> double rootInBracket(F&& f, double low, double high, double guess) {
    const double atLow = f(low).value, atHigh = f(high).value;
    if (atLow == 0) return low;
    if (atHigh == 0) return high;
    if ((atLow > 0) == (atHigh > 0)) return std::fabs(atLow) < std::fabs(atHigh) ? low : high;
    if (atLow > 0) std::swap(low, high); // the value is negative at low
    double x = guess, step = std::fabs(high - low), before = step;
    for (int i = 0; i < 200; ++i) {
        const ValueAndSlope y = f(x);
        if (y.value == 0) return x;
        (y.value < 0 ? low : high) = x;
        double next = x - y.value / y.slope;
        const bool inside = (next - low) * (next - high) < 0;
        if (!inside || std::fabs(next - x) > 0.5 * before) next = 0.5 * (low + high);
        before = step;
        step = std::fabs(next - x);
        if (next == x || next == low || next == high) return next;
        x = next;
    }
    return x;
}

} // namespace host::ge
