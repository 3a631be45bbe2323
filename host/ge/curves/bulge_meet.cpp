// Crossings of lines and circles as first guesses, Newton's steps on the segments, then the ends.
#include "host/ge/curves/bulge_meet.h"

#include <algorithm>
#include <cmath>

#include "host/ge/curves/numeric.h"

namespace host::ge {

namespace {

// Arcs flatter than this cross where their chords do, as a first guess.
constexpr double kFlatBulge = 1e-5;

struct Guesses {
    std::array<AcGePoint2d, 2> at;
    int count = 0;
    void add(const AcGePoint2d& p) { at[size_t(count++)] = p; }
};

bool isFlat(const BulgeSegment& s) { return std::fabs(s.bulge) < kFlatBulge; }

Guesses lineWithLine(const BulgeSegment& a, const BulgeSegment& b) {
    Guesses out;
    const AcGeVector2d u = a.end - a.start, v = b.end - b.start;
    const double cross = u.crossProduct(v);
    if (std::fabs(cross) <= tolerance::kParallel * u.length() * v.length()) return out;
    out.add(a.start + u * ((b.start - a.start).crossProduct(v) / cross));
    return out;
}

Guesses lineWithCircle(const BulgeSegment& line, const BulgeCircle& circle, double slack) {
    Guesses out;
    const AcGeVector2d along = (line.end - line.start) / line.chord();
    const AcGePoint2d foot = line.start + along * (circle.center - line.start).dotProduct(along);
    const double off = foot.distanceTo(circle.center);
    if (off > circle.radius + slack) return out;
    const double half = std::sqrt(std::max((circle.radius - off) * (circle.radius + off), 0.0));
    out.add(foot - along * half);
    if (half > 0) out.add(foot + along * half);
    return out;
}

Guesses circleWithCircle(const BulgeCircle& a, const BulgeCircle& b, double slack) {
    Guesses out;
    const AcGeVector2d between = b.center - a.center;
    const double d = between.length();
    if (!(d > slack) || d > a.radius + b.radius + slack || d < std::fabs(a.radius - b.radius) - slack)
        return out;
    const AcGeVector2d unit = between / d;
    const double at = 0.5 * (d + (a.radius - b.radius) * (a.radius + b.radius) / d);
    // Heron's product keeps its digits where the circles nearly touch.
    const double square = (a.radius + b.radius - d) * (d + a.radius - b.radius) * (d - a.radius + b.radius) *
                          (d + a.radius + b.radius);
    const double half = std::sqrt(std::max(square, 0.0)) / (2 * d);
    out.add(a.center + unit * at - unit.perpVector() * half);
    if (half > 0) out.add(a.center + unit * at + unit.perpVector() * half);
    return out;
}

Guesses guesses(const BulgeSegment& a, const BulgeSegment& b, double slack) {
    if (isFlat(a) && isFlat(b)) return lineWithLine(a, b);
    if (isFlat(a)) return lineWithCircle(a, b.circle(), slack);
    if (isFlat(b)) return lineWithCircle(b, a.circle(), slack);
    return circleWithCircle(a.circle(), b.circle(), slack);
}

// Newton's steps from a guess; where the tangents run alike the guess stands.
BulgeMeeting polished(const BulgeSegment& a, const BulgeSegment& b, const AcGePoint2d& guess) {
    BulgeMeeting m{guess, a.closestTo(guess).fraction, b.closestTo(guess).fraction};
    const double lengthA = a.length(), lengthB = b.length();
    for (int step = 0; step < 4; ++step) {
        const AcGePoint2d p = a.pointAt(m.first), q = b.pointAt(m.second);
        const AcGeVector2d u = a.tangentAt(m.first), v = b.tangentAt(m.second), gap = q - p;
        const double cross = u.crossProduct(v);
        if (std::fabs(cross) < 1e-4) break;
        const double first = std::clamp(m.first + gap.crossProduct(v) / cross / lengthA, 0.0, 1.0);
        const double second = std::clamp(m.second + gap.crossProduct(u) / cross / lengthB, 0.0, 1.0);
        const bool isStill = first == m.first && second == m.second;
        m.first = first, m.second = second;
        if (isStill) break;
    }
    m.point = a.pointAt(m.first);
    return m;
}

void add(BulgeMeetings& out, const BulgeMeeting& m, double slack) {
    for (const BulgeMeeting& known : out)
        if (known.point.distanceTo(m.point) <= slack && std::fabs(known.first - m.first) < 0.5 &&
            std::fabs(known.second - m.second) < 0.5)
            return;
    if (out.count == int(out.at.size())) return;
    size_t place = size_t(out.count++);
    for (; place > 0 && m.first < out.at[place - 1].first; --place) out.at[place] = out.at[place - 1];
    out.at[place] = m;
}

bool sharesStretch(const BulgeSegment& a, const BulgeSegment& b, const BulgeMeetings& found, double slack) {
    for (int i = 0; i + 1 < found.count; ++i) {
        const BulgeMeeting &p = found.at[size_t(i)], &q = found.at[size_t(i) + 1];
        const AcGePoint2d middle = a.pointAt(0.5 * (p.first + q.first));
        if (middle.distanceTo(p.point) > slack && b.closestTo(middle).distance <= slack) return true;
    }
    return false;
}

} // namespace

BulgeMeetings meetings(const BulgeSegment& a, const BulgeSegment& b, double slack) {
    BulgeMeetings out;
    if (!(a.chord() > 0) || !(b.chord() > 0)) return out;
    // Ends first: a crossing next to one is that end.
    for (double f : {0.0, 1.0}) {
        const BulgeClosest onB = b.closestTo(a.pointAt(f));
        if (onB.distance <= slack) add(out, {a.pointAt(f), f, onB.fraction}, slack);
    }
    for (double f : {0.0, 1.0}) {
        const BulgeClosest onA = a.closestTo(b.pointAt(f));
        if (onA.distance <= slack) add(out, {b.pointAt(f), onA.fraction, f}, slack);
    }
    const Guesses crossing = guesses(a, b, slack);
    for (int i = 0; i < crossing.count; ++i) {
        const BulgeMeeting m = polished(a, b, crossing.at[size_t(i)]);
        if (m.point.distanceTo(b.pointAt(m.second)) <= slack) add(out, m, slack);
    }
    out.isShared = sharesStretch(a, b, out, slack);
    return out;
}

} // namespace host::ge
