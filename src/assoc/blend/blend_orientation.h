// Which way the source curves of a blend run, and which of their ends a guide steers. Plain points in, plain
// decisions out.
#pragma once
#include <optional>

#include "core/host/geometry.h"

namespace corvane {

struct CurveEnds {
    AcGePoint3d start, end;
    CurveEnds turned() const { return {end, start}; }
    CurveEnds turnedIf(bool reversed) const { return reversed ? turned() : *this; }
};

// By x, then y, then z, each beyond 1e-8: whether the first point comes behind the second.
bool ComesAfter(const AcGePoint3d& point, const AcGePoint3d& other);
// True when the start lies farther from the point than the end does, by more than 1e-8.
bool StartsFarther(const CurveEnds& ends, const AcGePoint3d& from);
// A source turned so that it starts near its pick; with both ends as far, so that it starts at the lesser end
// by x, y and z. True: it is to be reversed.
bool ReversedByPick(const CurveEnds& ends, const AcGePoint3d& pick);

struct BlendOrientation {
    bool reversed1 = false, reversed2 = false;
    // Of the guides that were picked: which one, 0 or 1, steers the starts, and which the ends; -1 none.
    int atStarts = -1, atEnds = -1;
};

// With guides the curves run toward greater x. A guide that meets both curves (within 0.0001) at the same end
// steers that end; where it meets the start of one and the end of the other, the second curve is turned.
// Guides that meet nothing take the ends that are left, starts first.
BlendOrientation OrientByGuides(const CurveEnds& curve1, const CurveEnds& curve2, const CurveEnds& guide1,
                                const std::optional<CurveEnds>& guide2);

// Judged on the curve as the blend runs along it: whether it was turned round since its start was at the
// anchor.
inline bool TurnedSince(const CurveEnds& ends, bool reversed, const AcGePoint3d& anchor) {
    return StartsFarther(ends.turnedIf(reversed), anchor);
}

} // namespace corvane
