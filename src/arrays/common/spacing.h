// Where an array's copies stand along a path: distances from numbers alone. How a curve becomes such numbers
// stands in guide.h, the variation curves in variation/variation.h.
#pragma once
#include <cstddef>
#include <vector>

#include "arrays/variation/variation.h"

namespace corvane {

enum ArrayMode { kByCount, kBySpacing };
// More copies than anybody can look at; a count beyond it counts as this.
inline constexpr int kMostCopies = 100000;
inline constexpr double kLeastSpacing = 1e-6;

// What the dialogs of all arrays ask for.
struct ArraySettings {
    int mode = kByCount;
    int count = 10;      // 2..kMostCopies
    double spacing = 10; // kLeastSpacing or more
    int gain = 1;        // of both variations
    VariationCurve sizes, gaps;
    bool operator==(const ArraySettings&) const = default;
};

// Where on its guide an array begins and which way it runs.
struct GuideStart {
    int direction = 1;    // -1: against the curve's own sense
    bool fromEnd = false; // open guides: begins at the end point and runs the other way
    double ray = 0;       // closed guides: radians, in the XY plane, from the middle of the guide's box
    bool operator==(const GuideStart&) const = default;
};

// A guide in numbers.
struct GuideMeasure {
    double length = 0;
    bool closed = false;
    double rayDistance = 0; // closed guides: where the ray of the start meets it
};

// The distances from the guide's start point at which the copies stand, in the order of the array: 0..length
// on open guides, 0 up to but not the length on closed ones, no place twice on a ring. By count, the last
// copy of an open guide stands exactly at the far end; by spacing, one that would fall beyond it is left out.
// Spacings count as within a thousandth and a half of the length. At least two; none for a guide shorter than
// 1e-6.
std::vector<double> SampleDistances(const GuideMeasure& guide, const ArraySettings& settings,
                                    const GuideStart& start);

// A copy's position in 0..1 for its size: on a ring the last copy stays short of 1, where the first one is.
double CopyPosition(size_t index, size_t copies, bool closed);

} // namespace corvane
