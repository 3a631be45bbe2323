// The workers that clean up polylines of all three kinds: repeated vertices, thinning, spline fit. They
// work on one open curve each; the commands round them live in smoothing_commands.h.
#pragma once
#include <cstdint>

#include "core/host/entities.h"

namespace corvane {

// Counts of the run; each command resets what it uses, the workers add to them.
extern std::int32_t VerticesBefore;
extern std::int32_t VerticesAfter;

// Removes repeated vertices in place and closes a polyline that ends where it starts. Adds their number to
// VerticesBefore and returns that; erases curves shorter than 1e-5 and returns 0. `curve` is open for read.
std::int32_t RemoveDuplicateVertices(AcDbCurve& curve);

// Replaces the curve by a thinned and evened one in `target`, or beside it when that is null. The tolerance
// is `referenceLength` * `factor` * 0.001. Colour index, layer and constant width carry over; arcs become
// chords. `id` is null when nothing was made: the curve was shorter than 1e-5 (then it is erased), is no
// polyline, has fewer than two points, or its successor could not be appended (then it stays). `curve` is
// open for read or write.
void SmoothPolyline(AcDbObjectId& id, AcDbObjectId target, AcDbCurve& curve, double referenceLength,
                    double factor);

// Replaces the curve, resampled evenly with as many points as it has vertices and smoothed as above, by a 2D
// polyline fitted as a cubic B-spline. Curves with fewer than three vertices stay, with a null id. `curve` is
// open for write.
void SmoothToSplinePolyline(AcDbObjectId& id, AcDbObjectId target, AcDbCurve& curve, double referenceLength,
                            double factor);

// Turns a lightweight polyline back into a 2D polyline of that type; the id follows. Nothing for a null id,
// the simple type and other classes.
void RestorePolyType(AcDbObjectId& id, AcDb::Poly2dType type);

} // namespace corvane
