// The cubic spline through given points: twice continuously differentiable, the points met at its knots.
#pragma once

#include <optional>
#include <vector>

#include "host/ge/curves/nurbs.h"

namespace host::ge {

enum class KnotSpacing { chord, squareRootOfChord, uniform };

struct FitOptions {
    KnotSpacing spacing = KnotSpacing::chord;
    bool closed = false; // periodic; a last point on the first one is taken as the same
    // Directions at the ends of an open spline; their length is not used, the spline runs through the ends at
    // unit speed of its parameter scaled to the chord. Without one the second derivative vanishes at that
    // end.
    std::optional<AcGeVector3d> startTangent = {}, endTangent = {};
};

struct FitResult {
    Nurbs curve;                  // not valid when fewer than two different points were given
    std::vector<double> params;   // of the points that were kept, in order
    std::vector<AcGePoint3d> fit; // those points: neighbours that coincide are one
};

// O(n); the system for the derivatives at the points is tridiagonal (de Boor, 1978), cyclic when closed.
FitResult interpolate(const std::vector<AcGePoint3d>& points, const FitOptions& options = {});

} // namespace host::ge
