// Where two segments with bulges meet, in closed form: the fast way for what is done to polylines as a whole.
// Stretches shared by other kinds of curves, and curves in space, are the matter of intersect.h.
#pragma once

#include <array>

#include "host/ge/curves/bulge.h"

namespace host::ge {

struct BulgeMeeting {
    AcGePoint2d point;
    double first = 0, second = 0; // fractions of the lengths
};

// By rising fraction of the first segment. Of a shared stretch the two ends are told.
struct BulgeMeetings {
    std::array<BulgeMeeting, 6> at;
    int count = 0;
    bool isShared = false; // a stretch lies on both
    const BulgeMeeting* begin() const { return at.data(); }
    const BulgeMeeting* end() const { return at.data() + count; }
};

// Crossings, touchings and ends that lie on the other segment, within the tolerance (a distance). The
// crossings of lines and circles are polished on the segments' own form, so that nearly straight arcs lose
// nothing. Segments without a chord meet nothing.
BulgeMeetings meetings(const BulgeSegment& first, const BulgeSegment& second, double tolerance);

} // namespace host::ge
