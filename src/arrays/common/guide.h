// Guides: the curves along which arrays run. Their measures and points as plain data, and the prompts by
// which users say where on a guide an array begins.
#pragma once
#include <vector>

#include "arrays/common/spacing.h"
#include "core/host/entities.h"

namespace corvane {

// Length 0 for curves that can't tell. The ray's distance is 0 where it can't be found.
GuideMeasure MeasureGuide(const AcDbCurve& curve, const GuideStart& start);
// SampleDistances for a curve.
std::vector<double> SampleDistances(const AcDbCurve& curve, const ArraySettings& settings,
                                    const GuideStart& start);

// A place on a guide.
struct GuidePoint {
    bool found = false;
    AcGePoint3d point;
    AcGeVector3d tangent = AcGeVector3d::kXAxis; // unit; the X axis where the curve has no direction
};
GuidePoint GuidePointAt(const AcDbCurve& curve, double distance);
std::vector<GuidePoint> GuidePointsAt(const AcDbCurve& curve, const std::vector<double>& distances);

// True unless the curve is closed, no shorter than 1e-9, and runs clockwise as seen from above: by the area
// of the polygon of 200 points at equal distances.
bool RunsCounterClockwise(const AcDbCurve& curve);

// The texts by which a command asks for the start.
struct GuidePrompts {
    const wchar_t *ray, *direction, *openEnd; // source texts
    const wchar_t *keywords, *clockwise;      // of the direction, and the one that means clockwise
};
// Asks a closed guide's ray and sense, an open one's end. Enter keeps the ray, makes the direction +1, and
// means the start point. False, and nothing changed, when the user cancels or the curve is gone.
bool AskGuideStart(AcDbObjectId guide, const GuidePrompts& prompts, GuideStart& start);

// The middle of the object's extents; the origin when it has none.
AcGePoint3d MiddleOf(AcDbObjectId object);
// The entity that the user picks; null when nothing comes of it.
AcDbObjectId PickEntity(const wchar_t* prompt);
AcDbObjectId PickCurve(const wchar_t* prompt); // null for other entities, too
bool IsCurve(AcDbObjectId object);

} // namespace corvane
