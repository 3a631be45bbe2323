// Biarcs by their legs: no angle is taken, so that flat pairs lose no digits.
#include "curves/conversion/biarc.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

constexpr double kSamePoint = 1e-12;
// Directions at the ends of one arc differ from those asked for by less than this (radians); a tenth of what
// a joint may be off.
constexpr double kOneArcTurn = 1e-7;
constexpr double kBiarcBulge = 0.95; // the side of a joint is told by a line, so arcs stay below half circles

double cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

// Sine of the angle between the tangent and the chord, and what follows from it.
struct ChordAngle {
    double sine, cosine, length;
    double bulge() const { return sine / (1 + cosine); }
    double curvature() const { return 2 * sine / length; }
};
ChordAngle chordAngle(const AcGeVector2d& from, const AcGeVector2d& to, double length) {
    return {cross(from, to) / length, from.dotProduct(to) / length, length};
}

Biarc oneArc(const AcGePoint2d& from, const AcGeVector2d& tangent, const AcGePoint2d& to,
             const ChordAngle& angle) {
    Biarc result;
    const double bulge = angle.bulge();
    if (!(std::abs(bulge) <= kLargestBulge * (1 + 1e-9))) return result; // straight back it is no number
    result.count = 1;
    result.joint = to;
    result.first = {from, tangent, angle.curvature()};
    result.firstBulge = std::clamp(bulge, -kLargestBulge, kLargestBulge);
    if (std::abs(bulge) <= kSmallestBulge) {
        const AcGeVector2d along = to - from;
        result.first = {from, along / along.length(), 0};
        result.firstBulge = 0;
    }
    return result;
}

} // namespace

double DistanceFromArc(const ArcPath& arc, const AcGePoint2d& point) {
    const AcGeVector2d w = point - arc.start;
    const double g = 2 * cross(arc.tangent, w) - arc.curvature * w.dotProduct(w);
    return g / (1 + std::sqrt(std::max(0.0, 1 - arc.curvature * g)));
}

AcGeVector2d DirectionAt(const ArcPath& arc, const AcGePoint2d& point) {
    const AcGeVector2d w = point - arc.start;
    return {arc.tangent.x - arc.curvature * w.y, arc.tangent.y + arc.curvature * w.x};
}

Biarc SolveBiarc(const AcGePoint2d& from, const AcGeVector2d& fromTangent, const AcGePoint2d& to,
                 const AcGeVector2d& toTangent) {
    const AcGeVector2d chord = to - from;
    const double square = chord.dotProduct(chord);
    const double length = std::sqrt(square);
    if (!(length > kSamePoint)) return {};
    const ChordAngle leaving = chordAngle(fromTangent, chord, length);
    const ChordAngle arriving = chordAngle(chord, toTangent, length);
    if (std::abs(leaving.sine - arriving.sine) < kOneArcTurn && leaving.cosine * arriving.cosine >= -1e-12)
        return oneArc(from, fromTangent, to, leaving);
    // The legs of length d solve chord^2 - 2 d chord.(t0 + t1) - 2 d^2 (1 - t0.t1) = 0.
    const double b = chord.dotProduct(fromTangent + toTangent);
    const double a = 2 * (1 - fromTangent.dotProduct(toTangent));
    const double divisor = b + std::sqrt(b * b + a * square);
    if (!(divisor > 1e-9 * length)) return {};
    const double leg = square / divisor;
    const AcGePoint2d corner0 = from + fromTangent * leg, corner1 = to - toTangent * leg;
    const AcGeVector2d middle = corner1 - corner0;
    if (!(middle.length() > kSamePoint)) return {};
    Biarc result;
    result.joint = corner0 + middle * 0.5;
    const AcGeVector2d w0 = result.joint - from, w1 = to - result.joint;
    const double length0 = w0.length(), length1 = w1.length();
    if (!(std::min(length0, length1) > kSamePoint)) return {};
    const ChordAngle angle0 = chordAngle(fromTangent, w0, length0);
    const ChordAngle angle1 = chordAngle(w1, toTangent, length1);
    if (!(std::max(std::abs(angle0.bulge()), std::abs(angle1.bulge())) <= kBiarcBulge)) return {};
    result.count = 2;
    result.first = {from, fromTangent, angle0.curvature()};
    result.second = {result.joint, middle / middle.length(), angle1.curvature()};
    result.firstBulge = angle0.bulge();
    result.secondBulge = angle1.bulge();
    return result;
}

} // namespace corvane
