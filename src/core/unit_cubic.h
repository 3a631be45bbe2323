// Cubic Bézier functions over the unit interval, as the graphs of dialogs shape them: the ends stand at 0 and
// 1, the two controls at abscissae of their own.
#pragma once

namespace corvane {

// The cubic Bézier polynomial of four values at s in 0..1.
inline double UnitCubic(double s, double p0, double p1, double p2, double p3) {
    const double r = 1 - s;
    return r * r * r * p0 + 3 * r * r * s * p1 + 3 * r * s * s * p2 + s * s * s * p3;
}

// The Bézier parameter at which the abscissa is t, for controls at x1 and x2 within 0..1, where the abscissa
// never falls: the middle of what is left of 0..1 after that many halvings. Drawings are rebuilt from stored
// numbers, so each use keeps to its own fixed count.
inline double UnitCubicParameter(double t, double x1, double x2, int halvings) {
    double low = 0, high = 1;
    for (int round = 0; round < halvings; ++round) {
        const double middle = (low + high) / 2;
        (t > UnitCubic(middle, 0, x1, x2, 1) ? low : high) = middle;
    }
    return (low + high) / 2;
}

} // namespace corvane
