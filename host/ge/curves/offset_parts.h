// What the steps of offsetting polylines hand to each other; offset.h is the way in.
#pragma once

#include "host/ge/curves/boxtree.h"
#include "host/ge/curves/bulge.h"

namespace host::ge::offsetting {

// The source, brought near the origin and turned so that the parallel lies to its right.
struct Source {
    std::vector<BulgeSegment> segments; // none without a chord
    bool closed = false;
    double distance = 0; // positive
    double slack = 0;    // distances that are the same
    BoxTree tree{std::vector<AcDbExtents2d>()};

    // Whether a point is nearer to the source than the distance, by more than rounding.
    bool isTooNear(const AcGePoint2d& point) const;
};

// A segment moved aside, or the arc about a corner.
struct Edge {
    BulgeSegment shape;
    int before = -1, after = -1; // the segments that it stands for or lies between
    bool isCorner() const { return before != after; }
};

struct Piece {
    int edge = 0;
    double from = 0, to = 1; // of the edge
    BulgeSegment shape;
};

struct Chain {
    std::vector<Piece> pieces;
    bool closed = false;
};

// The right side's edges along the source.
std::vector<Edge> rightEdges(const Source& source);
// All else that bounds the band: the left side, and circles about the ends of an open source.
std::vector<Edge> otherEdges(const Source& source);
// The pieces of the right edges that are at the distance from the source.
std::vector<Piece> validPieces(const Source& source, const std::vector<Edge>& right);
// Joined end to start; neighbours from one edge are one again.
std::vector<Chain> stitched(std::vector<Piece> pieces, double slack);
// Corner arcs between two whole ends give way to points, where these are clear of everything.
void sharpen(const Source& source, const std::vector<Edge>& edges, std::vector<Chain>& chains);

} // namespace host::ge::offsetting
