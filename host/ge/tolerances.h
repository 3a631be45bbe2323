// The tolerances of the curve mathematics, by name and purpose. All are relative to the size of the thing
// they judge unless said otherwise; those of the host's point and vector classes stand in tol.h.
#pragma once

namespace host::ge::tolerance {

// Coordinates that differ by less, relative to the curve's size, are the same place.
inline constexpr double kPoint = 1e-9;
// Lengths and areas by quadrature.
inline constexpr double kQuadrature = 1e-12;
// Excess of a box over the curve inside it.
inline constexpr double kExtents = 1e-12;
// Poles off a common plane or line.
inline constexpr double kFlat = 1e-9;
// Knots closer than this, relative to the domain, are one knot.
inline constexpr double kKnot = 1e-12;
// Conjugate half axes that make a circle.
inline constexpr double kCircle = 1e-13;
// Squared distances that no further search for a closest point would improve.
inline constexpr double kClosest = 1e-19;
// Sines of angles below which directions are parallel.
inline constexpr double kParallel = 1e-12;
// |bulge| below which quotients with the bulge are taken from their series.
inline constexpr double kSmallBulge = 0.03;

} // namespace host::ge::tolerance
