// PLYH, PLYH2, PLYH3 and QXTY: prompts, selection and messages round the workers.
#include "curves/smoothing/smoothing_commands.h"

#include <algorithm>
#include <cstdint>

#include "core/appending.h"
#include "core/messages.h"
#include "core/selection.h"
#include "curves/smoothing/smoothing.h"

namespace corvane {
namespace {

constexpr double kSmallestExtent = 0.001;
constexpr wchar_t kSelectPolylines[] = L"请选择待优化的多段线>\n";
constexpr wchar_t kNoPolylines[] = L"未选中多段线。\n";

double diagonal(const AcDbExtents& extents) {
    return extents.isValid() ? extents.minPoint().distanceTo(extents.maxPoint()) : 0;
}
double selectionDiagonal(const SelectionSet& set) {
    AcDbExtents extents;
    SelectionExtents(extents, set.name());
    return diagonal(extents);
}

// The error from 1 to 10 that the user allows; 0 for Esc.
int askTolerance() {
    short value = 1;
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    const int status = acedGetShort(Translate(L"\n请输入误差[1--10](1):"), &value);
    if (status == RTCAN) return 0;
    return status == RTNORM ? std::clamp<int>(value, 1, 10) : 1;
}

void thinOne(AcDbCurve& curve, double selectionSize, bool protectDetails, double factor) {
    AcDb::Poly2dType type = AcDb::k2dSimplePoly;
    if (auto* flat = AcDb2dPolyline::cast(&curve); flat && flat->polyType() != AcDb::k2dSimplePoly) {
        const AcDb::Poly2dType before = flat->polyType();
        if (flat->upgradeOpen() == Acad::eOk && flat->convertToPolyType(AcDb::k2dSimplePoly) == Acad::eOk)
            type = before;
    }
    double size = selectionSize;
    AcDbExtents own;
    if (protectDetails && curve.getGeomExtents(own) == Acad::eOk && diagonal(own) > kSmallestExtent)
        size = diagonal(own);
    AcDbObjectId id;
    SmoothPolyline(id, AcDbObjectId(), curve, size, factor);
    RestorePolyType(id, type);
}

void reportThinning() {
    if (VerticesBefore <= 0) return;
    VerticesAfter = std::min(VerticesAfter, VerticesBefore);
    const int percent = int(std::int64_t(VerticesBefore - VerticesAfter) * 100 / VerticesBefore);
    PrintText(TranslateFormat(L"\n优化前顶点数: %d， 优化后顶点数: %d，优化效率%d％。 ", VerticesBefore,
                              VerticesAfter, percent));
}

} // namespace

void ThinPolylinesCommand() {
    const CommandFrame frame;
    VerticesBefore = VerticesAfter = 0;
    const SelectionSet set =
        SelectionSet::Ask(kSelectPolylines, CurveFilter::polylines, kNoPolylines, Purpose::change);
    if (set.empty()) return;
    const double size = selectionDiagonal(set);
    if (size < kSmallestExtent) return PrintLine(L"多段线包围盒高度太低。\n");
    const int tolerance = askTolerance();
    if (tolerance == 0) return;
    const bool protectDetails = AskYesNo(L"\n是否保护细节(Y/N)[Y]", L"\nProtect details(Y/N)[Y]", true);
    ForEach<AcDbCurve>(set, AcDb::kForRead,
                       [&](AcDbCurve& curve) { thinOne(curve, size, protectDetails, tolerance - 0.5); });
    reportThinning();
}

void RemoveDuplicatesCommand() {
    const CommandFrame frame;
    VerticesBefore = 0;
    const SelectionSet set =
        SelectionSet::Ask(kSelectPolylines, CurveFilter::polylines, kNoPolylines, Purpose::change);
    if (set.empty()) return;
    ForEach<AcDbCurve>(set, AcDb::kForRead, [](AcDbCurve& curve) { RemoveDuplicateVertices(curve); });
    PrintText(TranslateFormat(L"\n删除了< %d >个重复顶点。 ", VerticesBefore));
}

void SplineFitCommand() {
    const CommandFrame frame;
    const SelectionSet set =
        SelectionSet::Ask(kSelectPolylines, CurveFilter::polylines, kNoPolylines, Purpose::change);
    if (set.empty()) return;
    const double size = selectionDiagonal(set);
    if (size < kSmallestExtent) return PrintLine(L"多段线包围盒太小。\n");
    ForEach<AcDbCurve>(set, AcDb::kForWrite, [&](AcDbCurve& curve) {
        AcDbObjectId id;
        SmoothToSplinePolyline(id, AcDbObjectId(), curve, size, 1.0);
    });
}

void ProjectCurvesCommand() {
    const CommandFrame frame;
    PrintLine(L"\n垂直投影各类曲线到世界坐标系XY平面...");
    const SelectionSet set = SelectionSet::Ask(L"请选择曲线 >", CurveFilter::allCurves, L"未选中曲线。\n");
    if (set.empty()) return;
    int made = 0;
    ForEach<AcDbCurve>(set, AcDb::kForRead, [&](AcDbCurve& curve) {
        AcDbCurve* projected = nullptr;
        if (curve.getProjectedCurve(AcGePlane::kXYPlane, AcGeVector3d::kZAxis, projected) != Acad::eOk)
            return;
        AcDbObjectId id;
        if (AppendToCurrentSpace(projected, id) == Acad::eOk)
            ++made;
        else
            delete projected;
    });
    if (made > 0) PrintText(TranslateFormat(L"\n生成了< %d >根投影曲线。 ", made));
}

} // namespace corvane
