// Parallels of polylines of lines and arcs. The raw parallel of every segment, with arcs about the corners,
// is cut wherever it meets the edge of the band around the source; what lies nearer to the source than the
// distance falls away, the rest is joined again (after Liu, Yong and Zheng, "An offset algorithm for polyline
// curves", 2007). Corners are made sharp last. Parallels of other curves are the matter of their entities.
#pragma once

#include <vector>

#include "host/ge/curves/bulge.h"

namespace host::ge {

// How a parallel goes round an outer corner of its source.
enum class OffsetCorner {
    sharp, // neighbours go on along their lines and circles until they meet
    round  // on an arc about the corner: every point is at the distance
};

struct OffsetChain {
    std::vector<BulgeVertex> vertices;
    bool closed = false;
};

// The chains at a distance to the right of the polyline (negative: to the left), in its direction, in the
// order of where they begin on it. No point of them is nearer to it than the distance, by more than 1e-9 of
// the size; corners stay round where lines and circles don't meet, where the point would be farther than a
// hundred distances off, or would come too near to the polyline or reach over another stretch of the
// parallel. Pieces of no length and arcs too small for the distance count for nothing. Empty when nothing
// remains, for a distance of 0 and for numbers that aren't finite. The cost grows as n log n while the
// distance is some segments long; where it is thousands of them long, about as n^1.4.
std::vector<OffsetChain> offsetPolyline(const std::vector<BulgeVertex>& vertices, bool closed,
                                        double distance, OffsetCorner corners = OffsetCorner::sharp);

} // namespace host::ge
