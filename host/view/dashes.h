// Laying a linetype's dashes along a path of points.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "host/ge/point3d.h"

namespace host {

// A pattern, ready to be laid: lengths above 0 are dashes, below 0 gaps, 0 dots; in world units.
struct DashPattern {
    std::vector<double> lengths;
    double total = 0; // of all, as positive numbers

    // Scaled, with what is no number taken out; empty (a full line) when there is no gap in it.
    static DashPattern scaled(std::span<const double> lengths, double scale);
    bool isContinuous() const { return lengths.empty(); }
};

// A stretch of a path by distance from its start; a dot begins and ends at the same place.
struct Dash {
    double from, to;
};

// The dashes of a path of that length. Like the field draws them: the path begins and ends with a
// dash, the first and the last grown or cut alike; a path too short for one repeat, or one that would
// take more than 20 000 dashes, is drawn full.
std::vector<Dash> layDashes(const DashPattern& pattern, double length);

// Distances of the points from the first, along the path.
std::vector<double> pathDistances(std::span<const AcGePoint3d> points);

inline AcGePoint3d between(const AcGePoint3d& a, const AcGePoint3d& b, double t) { return a + (b - a) * t; }

// Calls `emit(std::span<const Point>)` for each dash with its points. `at` holds the points' distances
// along the path; places in between are asked of `between(a, b, t)`.
template <class Point, class Emit>
void forEachDash(std::span<const Point> points, std::span<const double> at, const DashPattern& pattern,
                 Emit&& emit) {
    if (points.size() < 2 || !(at.back() > 0) || pattern.isContinuous()) {
        emit(points);
        return;
    }
    std::vector<Point> piece;
    std::size_t next = 1; // the first point beyond the place reached
    const auto place = [&](double distance) {
        while (next + 1 < points.size() && at[next] < distance) ++next;
        const double span = at[next] - at[next - 1];
        const double t = span > 0 ? (distance - at[next - 1]) / span : 0;
        return between(points[next - 1], points[next], t < 0 ? 0 : t > 1 ? 1 : t);
    };
    for (const Dash& dash : layDashes(pattern, at.back())) {
        piece.assign(1, place(dash.from));
        for (std::size_t i = next; i < points.size() && at[i] < dash.to; ++i)
            if (at[i] > dash.from) piece.push_back(points[i]);
        if (dash.to > dash.from) piece.push_back(place(dash.to));
        emit(std::span<const Point>(piece));
    }
}

} // namespace host
