// PLDF, PLDJDF, PLDD and PLBH: prompts, selection and messages.
#include "curves/division/division_commands.h"

#include "core/host/editor.h"
#include "core/messages.h"
#include "core/selection.h"
#include "curves/division/division.h"
#include "curves/reports/curve_rows.h"

namespace corvane {
namespace {

constexpr wchar_t kSelectCurves[] = L"请选择各种线条>\n";
constexpr wchar_t kNoCurves[] = L"未选中任何线条。\n";

template <class Work> void eachCurve(const SelectionSet& set, AcDb::OpenMode mode, Work work) {
    int count = 0;
    ForEach<AcDbCurve>(set, mode, [&](AcDbCurve& curve) { count += work(curve); });
    ReportCurveCount(count);
}

} // namespace

void DivideByCountCommand() {
    const CommandFrame frame;
    const SelectionSet set =
        SelectionSet::Ask(kSelectCurves, CurveFilter::allCurves, kNoCurves, Purpose::change);
    if (set.empty()) return;
    constexpr short kFewest = 4, kMost = 100, kUsual = 16;
    short count = 0;
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    do {
        if (acedGetShort(Translate(L"\n请输入等分点数，允许值4--100，默认值16:"), &count) != RTNORM)
            count = kUsual;
    } while (count < kFewest || count > kMost);
    eachCurve(set, AcDb::kForRead, [&](AcDbCurve& curve) {
        AcDbObjectId made;
        return RebuildByCount(curve, count, made);
    });
}

void DivideByDistanceCommand() {
    const CommandFrame frame;
    const SelectionSet set =
        SelectionSet::Ask(kSelectCurves, CurveFilter::allCurves, kNoCurves, Purpose::change);
    if (set.empty()) return;
    constexpr double kShortest = 0.0001;
    double distance = 0;
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    if (acedGetDist(nullptr, Translate(L"\n请输入等分距离:"), &distance) != RTNORM || distance < kShortest)
        return;
    eachCurve(set, AcDb::kForRead, [&](AcDbCurve& curve) { return RebuildByDistance(curve, distance); });
}

void ReverseCurvesCommand() {
    const CommandFrame frame;
    const SelectionSet set =
        SelectionSet::Ask(L"请选择多段线>\n", CurveFilter::allCurves, L"未选中多段线。\n", Purpose::change);
    if (set.empty()) return;
    eachCurve(set, AcDb::kForWrite, [](AcDbCurve& curve) { return curve.reverseCurve() == Acad::eOk; });
}

void MarkVerticesCommand() {
    const CommandFrame frame;
    const SelectionSet set = SelectionSet::AskKinds(
        L"请选择多段线>\n", L"POLYLINE LWPOLYLINE SPLINE LINE ELLIPSE ARC", L"未选中多段线。\n");
    if (set.empty()) return;
    const double height = AskMarkHeight();
    const bool lowerLeft = AskLowerLeftStart();
    int index = 0;
    ForEach<AcDbCurve>(set, AcDb::kForRead, [&](AcDbCurve& curve) {
        CString rows; // the marks alone are wanted
        WriteCurveRows(rows, curve, height, true, ++index, lowerLeft);
    });
    ShowMarks();
}

} // namespace corvane
