// Prompts, selection and messages round the conversions.
#include "curves/conversion/conversion_commands.h"

#include <algorithm>
#include <string>

#include "core/messages.h"
#include "core/selection.h"
#include "core/sysvar_stack.h"
#include "curves/conversion/arc_polyline.h"
#include "curves/conversion/curve_kinds.h"

namespace corvane {
namespace {

constexpr wchar_t kSelectCurves[] = L"请选择各种线条>\n";
constexpr double kNoWidth = 1e-11;

// A whole number above 0; `otherwise` for Enter and Esc.
int askCount(const wchar_t* prompt, int otherwise) {
    short value = 0;
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    return acedGetShort(Translate(prompt), &value) == RTNORM ? value : otherwise;
}

ArcMode askArcMode() {
    PrintLine(L"\n请选择转换算法：");
    PrintText(L"\n");
    PrintLine(L"[0] 原生光滑圆弧算法（快速，C0连续，输出圆弧多段线）");
    PrintText(L"\n");
    PrintLine(L"[1] 高阶光滑圆弧算法（工业级CAM/数控首选，G1连续，输出圆弧多段线）");
    PrintText(L"\n");
    short value = 1;
    acedInitGet(RSG_NONEG, L"0 1");
    int status = acedGetShort(Translate(L"\n请输入算法选项 [0/1] <1>:"), &value);
    // The answers are keywords as well as numbers.
    if (std::wstring keyword; status == RTKWORD && acedGetInput(keyword) == RTNORM)
        value = keyword == L"0" ? 0 : 1, status = RTNORM;
    if (status != RTNORM) return ArcMode::highOrder;
    if (value != 0 && value != 1) PrintLine(L"\n无效选项，使用默认算法（高阶光滑圆弧算法）。");
    return value == 0 ? ArcMode::native : ArcMode::highOrder;
}

double askTolerance() {
    double value = kUsualArcTolerance;
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    const int status = acedGetReal(Translate(L"\n请输入容差ε（全局最大偏差）<0.1>:"), &value);
    return status == RTNORM && value > 0 ? value : kUsualArcTolerance;
}

bool holdsCurvesWithoutVertices(const SelectionSet& set) {
    for (long i = 0; i < set.length(); ++i) {
        AcDbObjectPointer<AcDbEntity> entity(set.at(i), AcDb::kForRead);
        if (entity && (entity->isKindOf(AcDbSpline::desc()) || entity->isKindOf(AcDbEllipse::desc())))
            return true;
    }
    return false;
}

int askPolylinePrecision() {
    constexpr int kUsual = 3, kFinest = 12;
    for (;;) {
        const int value = askCount(L"\n请输入精度，允许值1--12，默认值3:", kUsual);
        if (value >= 1 && value <= kFinest) return value;
        PrintLine(L"输入值范围必须为 1--12。\n");
    }
}

SelectionSet askPolylines() {
    return SelectionSet::Ask(L"请选择待优化的多段线>\n", CurveFilter::polylines, L"未选中多段线。\n",
                             Purpose::change);
}

// The host's own editor of polylines, on all of them at once.
void editPolylines(const SelectionSet& set, const wchar_t* option) {
    acedCommandS(RTSTR, L"_PEDIT", RTSTR, L"M", RTPICKS, set.name(), RTSTR, L"", RTSTR, option, RTSTR, L"",
                 RTNONE);
}

} // namespace

void SplineToPolylineCommand() {
    const CommandFrame frame;
    const SelectionSet set = SelectionSet::Ask(L"请选择SPLINE线>\n", CurveFilter::conicsAndSplines,
                                               L"未选中SPLINE线。\n", Purpose::change);
    if (set.empty()) return;
    const int precision = std::clamp(askCount(L"\n请输入精度，允许值1--99，默认值10:", 10), 1, 99);
    int count = 0;
    ForEach<AcDbSpline>(set, AcDb::kForRead,
                        [&](AcDbSpline& spline) { count += SplineToPolyline(spline, precision); });
    ReportCurveCount(count);
}

void CurvesToArcsCommand() {
    const CommandFrame frame;
    const ArcMode mode = askArcMode();
    const bool native = mode == ArcMode::native;
    const int precision = native ? std::clamp(askCount(L"\n请输入精度（1-99）<10>:", 10), 1, 99) : 0;
    const double tolerance = native ? kUsualArcTolerance : askTolerance();
    const bool eraseSources = AskYesNo(L"\n是否删除原样条曲线？[是(Y)/否(N)] <否>:",
                                       L"\nDelete original spline curves? [Yes(Y)/No(N)] <No>:", false);
    const SelectionSet set =
        SelectionSet::AskKinds(L"\n请选择样条/曲线>", L"SPLINE ELLIPSE CIRCLE ARC LWPOLYLINE POLYLINE",
                               L"\n未选中任何曲线。", eraseSources ? Purpose::change : Purpose::look);
    if (set.empty()) return;
    int made = 0, failed = 0;
    for (long i = 0; i < set.length(); ++i) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, set.at(i), AcDb::kForRead) != Acad::eOk) continue;
        AcDbObjectId id;
        ++(SplineToArcs(entity, mode, precision, tolerance, eraseSources, id) ? made : failed);
    }
    PrintText(native ? TranslateFormat(L"\n原生算法处理完成：成功 %d 根曲线，失败 %d 根。", made, failed)
                     : TranslateFormat(L"\n高阶算法处理完成：成功 %d 根曲线，失败 %d 根。", made, failed));
}

void CurvesToSplinesCommand() {
    const CommandFrame frame;
    const SelectionSet set =
        SelectionSet::AskKinds(kSelectCurves, L"ELLIPSE CIRCLE HELIX ARC LINE POLYLINE LWPOLYLINE",
                               L"未选中线条。\n", Purpose::change);
    if (set.empty()) return;
    constexpr int kUsual = 36, kFewest = 12, kMost = 256;
    const bool equalDivision =
        AskYesNo(L"\n Y = 按等分方式, N =按原顶点？[Y/N]（Y）:",
                 L"\n Y = Divide the curves equally, N = Based on the vertex？[Y/N]（Y）:", true);
    const int points =
        equalDivision ? std::clamp(askCount(L"\n等分点数12~256[36]:", kUsual), kFewest, kMost) : kUsual;
    int count = 0;
    ForEach<AcDbCurve>(set, AcDb::kForRead,
                       [&](AcDbCurve& curve) { count += CurveToSpline(curve, equalDivision, points); });
    ReportCurveCount(count);
}

void CurvesToPolylinesCommand() {
    const CommandFrame frame;
    const SelectionSet set = SelectionSet::AskKinds(kSelectCurves, L"POLYLINE LINE ELLIPSE CIRCLE ARC SPLINE",
                                                    L"未选中任何线条。\n", Purpose::change);
    if (set.empty()) return;
    const int precision = holdsCurvesWithoutVertices(set) ? askPolylinePrecision() : 0;
    int count = 0;
    ForEach<AcDbCurve>(set, AcDb::kForRead, [&](AcDbCurve& curve) {
        AcDbObjectId id;
        count += CurveToLwPolyline(curve, precision, id);
    });
    ReportCurveCount(count);
}

void LightToOldCommand() {
    const CommandFrame frame;
    const SelectionSet set =
        SelectionSet::AskKinds(L"请选择轻量级多段线>\n", L"LWPOLYLINE", L"未选中。\n", Purpose::change);
    if (set.empty()) return;
    int count = 0;
    for (long i = 0; i < set.length(); ++i) {
        AcDbPolyline* polyline = nullptr;
        if (acdbOpenObject(polyline, set.at(i), AcDb::kForWrite) == Acad::eOk)
            count += LightToOldPolyline(polyline);
    }
    ReportCurveCount(count);
}

void OldToLightCommand() {
    const CommandFrame frame;
    const SelectionSet set =
        SelectionSet::AskKinds(L"请选择老式多段线>\n", L"POLYLINE", L"未选中。\n", Purpose::change);
    if (set.empty()) return;
    int count = 0;
    for (long i = 0; i < set.length(); ++i) {
        AcDbEntity* polyline = nullptr;
        if (acdbOpenObject(polyline, set.at(i), AcDb::kForWrite) == Acad::eOk)
            count += OldToLightPolyline(polyline);
    }
    ReportCurveCount(count);
}

void PolylineWidthCommand() {
    const SelectionSet set = askPolylines();
    if (set.empty()) return;
    double width = 0;
    acedInitGet(RSG_NONEG, nullptr);
    if (acedGetDist(nullptr, Translate(L"\n请输入新的线宽:"), &width) != RTNORM) return;
    if (width < kNoWidth) width = 0;
    const CommandFrame frame;
    acedCommandS(RTSTR, L"_PEDIT", RTSTR, L"M", RTPICKS, set.name(), RTSTR, L"", RTSTR, L"W", RTREAL, width,
                 RTSTR, L"", RTNONE);
}

void ClosePolylinesCommand() {
    const CommandFrame frame;
    const SelectionSet set = askPolylines();
    if (!set.empty()) editPolylines(set, L"C");
}

void OpenPolylinesCommand() {
    const CommandFrame frame;
    const SelectionSet set = askPolylines();
    if (!set.empty()) editPolylines(set, L"O");
}

} // namespace corvane
