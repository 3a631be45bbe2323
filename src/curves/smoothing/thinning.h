// Thinning and evening of point rows, on plain points. Linear in their number.
#pragma once
#include <vector>

#include "core/host/geometry.h"

namespace corvane {

inline constexpr double DuplicateTolerance = 1e-5; // drawing units

// Marks for the points that repeat their successor within DuplicateTolerance: of a run of equal points the
// last stays. A last point that repeats the first is marked as well, and `closesOnItself` set.
struct DuplicateMarks {
    std::vector<bool> marks;
    bool closesOnItself = false;
};
DuplicateMarks MarkDuplicates(const std::vector<AcGePoint3d>& points);

// Five passes at most, each over every second point: the point goes when it lies within `tolerance` of the
// line from its predecessor along the direction to its successor, unless it is the tip of a spike (below 0.1
// radian). Rows of fewer than three points come back as they are.
std::vector<AcGePoint3d> ThinPoints(std::vector<AcGePoint3d> points, double tolerance);

// Runs of points within `radius` of their first become their mean; where the next point after the start or
// after the end of a run is farther off than `gap`, it stays beside the mean, so that long segments keep
// their direction. Fewer than two points come back as they are.
std::vector<AcGePoint3d> ClusterPoints(const std::vector<AcGePoint3d>& points, double radius, double gap);

} // namespace corvane
