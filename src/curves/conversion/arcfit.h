// The fewest circular arcs that stay within a tolerance of a curve and run on from one another in one
// direction. Plain data in and out; arc_polyline.h samples curves of a drawing and draws the arcs.
#pragma once
#include <vector>

#include "curves/conversion/biarc.h"

namespace corvane {

// One point of the curve. Where the direction turns at a point (a corner) or the curvature jumps, there are
// two samples in the same place: what arrives and what leaves.
struct FitSample {
    AcGePoint2d point;
    AcGeVector2d tangent; // unit
    double curvature = 0; // signed, positive to the left
    double distance = 0;  // along the curve from its start
};

// Corners that turn by more than this (radians) stay corners; gentler ones are smoothed where the tolerance
// allows, so that polylines drawn for curves become curves again.
inline constexpr double kSharpTurn = 0.5;

// The arcs from the first sample to the last, each beginning where the one before ends; straight pieces have
// the bulge 0. Their ends lie on samples or, between these, within the tolerance of the curve. Directions
// agree at all joints except at sharp corners and at gentle ones where nothing else stays within the
// tolerance. At the ends the arcs keep the curve's directions. Empty below two samples, for a tolerance not
// above 0 and for numbers that aren't finite.
//
// The samples are to be so close that the curve bends little between neighbours: what it may bow out there is
// reckoned from curvature and spacing, and counts against the tolerance.
//
// Dynamic programming over pairs of arcs (biarcs) between samples; the directions at the joints are turned
// off the curve's by what makes an evenly spaced chain of arcs swing evenly about it, which saves up to a
// third of the arcs. Time grows with the number of samples times the square of those under one arc.
std::vector<FitArc> FitArcs(const std::vector<FitSample>& samples, double tolerance);

} // namespace corvane
