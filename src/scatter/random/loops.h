// Closed loops of points out of pieces of curves, and how they nest.
#pragma once
#include <functional>
#include <vector>

#include "core/host/entities.h"

namespace corvane::scatter {

using PointChain = std::vector<AcGePoint3d>;

// Joins open chains end to end where their ends are within 1e-6, turning them round as needed. The loops that
// close, each without its last point, which is the first again; chains that don't close are left out.
std::vector<PointChain> ChainLoops(std::vector<PointChain> pieces);

// The loops of a region, its curves taken as the points that `flatten` gives, ends included. None when it
// can't be exploded.
std::vector<PointChain> LoopsOf(const AcDbRegion& region,
                                const std::function<PointChain(const AcDbCurve&)>& flatten);

// Seen from above: loops round an even number of others are outer ones, the others are holes.
struct NestedLoop {
    std::vector<AcGePoint2d> points; // outer ones run counter-clockwise, holes clockwise
    size_t loop = 0;                 // which of the given ones
    int depth = 0;                   // how many others hold it
};
std::vector<NestedLoop> NestLoops(const std::vector<PointChain>& loops);

} // namespace corvane::scatter
