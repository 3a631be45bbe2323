// Curves of one kind replaced by another: splines, lightweight and old polylines. Arc polylines are
// arc_polyline.h's; the commands round them conversion_commands.h's.
#pragma once
#include "core/host/entities.h"

namespace corvane {

// Each replaces `curve`, which is open for read, by a new entity beside it, and erases it. False, and nothing
// changed, when it can't be done.

// A spline becomes the host's polyline with `precision` samples a span (1 to 99), arcs or chords as
// PLINECONVERTMODE says.
bool SplineToPolyline(AcDbSpline& spline, int precision);
// A spline through `count` points at equal distances, or, without `equalDivision`, the curve's own spline
// where it has one, else one through its vertices. The source's layer and colour carry over.
bool CurveToSpline(AcDbCurve& curve, bool equalDivision, int count);
// A lightweight polyline with the source's properties: the shape itself for lines, arcs, circles and old
// polylines, `precision` (1 to 12; 3 for less, 12 for more) times three arcs a quarter or span for ellipses
// and splines. 3D polylines that leave their plane become smoothed 3D polylines. Lightweight polylines are
// left alone.
bool CurveToLwPolyline(AcDbCurve& curve, int precision, AcDbObjectId& id);
// These keep the object's id and handle, so that references to it hold. Open for write; closed here.
bool LightToOldPolyline(AcDbPolyline* polyline);
bool OldToLightPolyline(AcDbEntity* polyline);

} // namespace corvane
