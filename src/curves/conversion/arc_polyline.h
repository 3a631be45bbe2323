// Curves of a drawing turned into polylines of arcs: sampling, fit, and the new entity. The fit itself is
// arcfit.h's.
#pragma once
#include <vector>

#include "core/host/entities.h"
#include "curves/conversion/arcfit.h"

namespace corvane {

inline constexpr double kUsualArcTolerance = 0.1;

// The curve as the fit wants it, seen from above: Z is dropped. Samples lie at most a quarter of the
// tolerance apart on short curves, a 12000th of the length on long ones, and closer where the curve turns.
// Empty when the curve has no length or can't tell its points.
std::vector<FitSample> SampleForArcs(const AcDbCurve& curve, double tolerance);

// Appends a lightweight polyline of arcs and lines beside the curve, with the drawing's current properties,
// at elevation 0; one vertex an end, so that a closed curve's polyline ends on its start. False, and nothing
// made, when no arc comes of it: a straight curve has none.
bool FitArcsToCurve(const AcDbCurve& curve, double tolerance, AcDbObjectId& id);

enum class ArcMode { native, highOrder };
// Splines become the host's own arc polylines in native mode, with `precision` samples a span (1 to 99); all
// else is fitted within `tolerance`. The curve is open for read and closed here; with `eraseSource` it goes
// when its successor stands. True when an entity was made.
bool SplineToArcs(AcDbEntity* curve, ArcMode mode, int precision, double tolerance, bool eraseSource,
                  AcDbObjectId& id);

// The host's polyline of a spline, arcs or chords as PLINECONVERTMODE says; null when it can't be made.
AcDbCurve* PolylineOfSpline(const AcDbSpline& spline, int precision);

} // namespace corvane
