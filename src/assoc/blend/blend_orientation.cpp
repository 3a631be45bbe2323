// Orientation rules of blends.
#include "assoc/blend/blend_orientation.h"

#include <cmath>

namespace corvane {
namespace {

constexpr double kSame = 1e-8;
constexpr double kMeeting = 0.0001;

enum class Side { none, start, end };

bool touches(const CurveEnds& guide, const AcGePoint3d& point) {
    return guide.start.distanceTo(point) < kMeeting || guide.end.distanceTo(point) < kMeeting;
}
Side metAt(const CurveEnds& guide, const CurveEnds& curve) {
    return touches(guide, curve.start) ? Side::start : touches(guide, curve.end) ? Side::end : Side::none;
}

} // namespace

bool ComesAfter(const AcGePoint3d& point, const AcGePoint3d& other) {
    for (const double difference : {point.x - other.x, point.y - other.y, point.z - other.z})
        if (std::abs(difference) > kSame) return difference > 0;
    return false;
}

bool StartsFarther(const CurveEnds& ends, const AcGePoint3d& from) {
    return ends.start.distanceTo(from) > ends.end.distanceTo(from) + kSame;
}

bool ReversedByPick(const CurveEnds& ends, const AcGePoint3d& pick) {
    if (StartsFarther(ends, pick)) return true;
    return !StartsFarther(ends.turned(), pick) && ComesAfter(ends.start, ends.end);
}

BlendOrientation OrientByGuides(const CurveEnds& curve1, const CurveEnds& curve2, const CurveEnds& guide1,
                                const std::optional<CurveEnds>& guide2) {
    BlendOrientation result;
    result.reversed1 = curve1.start.x > curve1.end.x;
    result.reversed2 = curve2.start.x > curve2.end.x;
    const CurveEnds first = curve1.turnedIf(result.reversed1);
    Side met = metAt(guide1, first);
    const Side metSecond = metAt(guide1, curve2.turnedIf(result.reversed2));
    if (met != Side::none && metSecond != Side::none && met != metSecond)
        result.reversed2 = !result.reversed2;
    if (met == Side::none) met = metSecond;
    // The second guide has a say where the first one meets nothing.
    if (met == Side::none && guide2) {
        const Side other = metAt(*guide2, first);
        met = other == Side::start ? Side::end : Side::start;
    }
    result.atStarts = met == Side::end ? (guide2 ? 1 : -1) : 0;
    result.atEnds = met == Side::end ? 0 : guide2 ? 1 : -1;
    return result;
}

} // namespace corvane
