// rndScatter1 and rndScatter2: what to scatter where, and the way to the dialogs that edit scatters.
#include "scatter/random/scatter_commands.h"

#include "core/brackets.h"
#include "core/host/system.h"
#include "core/messages.h"
#include "core/selection.h"
#include "scatter/random/asking.h"
#include "scatter/random/boundary.h"
#include "scatter/random/clip.h"
#include "scatter/random/edit_dialog.h"
#include "scatter/random/scatter_block.h"

namespace corvane {
namespace {

using namespace scatter;

// What was selected: sources of a new scatter, or one scatter to edit.
struct Begun {
    std::vector<AcDbObjectId> sources;
    AcDbObjectId scatter;
};

// `isSource` tells which objects serve. Prints `nothing` when there is neither.
template <class Params, class IsSource>
Begun askWhatToBegin(const wchar_t* prompt, const wchar_t* kinds, const wchar_t* nothing, IsSource isSource) {
    const SelectionSet set = SelectionSet::AskKinds(prompt, kinds, L"");
    Begun begun;
    ForEach<AcDbEntity>(set, AcDb::kForRead, [&](AcDbEntity& entity) {
        if (isSource(entity)) begun.sources.push_back(entity.objectId());
    });
    if (begun.sources.empty() && set.length() == 1 && ReadParams<Params>(set.at(0)))
        begun.scatter = set.at(0);
    if (begun.sources.empty() && begun.scatter.isNull()) PrintLine(nothing);
    return begun;
}

template <class Dialog> void edit(AcDbObjectId scatter) {
    if (IsOnLockedLayer(scatter)) return PrintLine(L"\n散布块位于锁定图层上，无法编辑。");
    const DocumentLock lock;
    if (!lock) return PrintLine(L"\n锁定文档失败，无法进入编辑。");
    Dialog dialog(scatter);
    RunModal(dialog);
}

// Generates and places; tells what fails. Null when nothing came of it.
template <class Params> AcDbObjectId make(const Params& params) {
    EntityList entities;
    if (!Generate(params, entities, ShownProgress())) return PrintLine(L"\n散布生成失败。"), AcDbObjectId();
    const PlacedScatter placed = PlaceScatter(std::move(entities), params);
    if (placed.outcome == Placing::noBlock) PrintLine(L"\n创建匿名块失败。");
    if (placed.outcome == Placing::noReference) PrintLine(L"\n插入匿名块失败。");
    if (placed.outcome == Placing::done && !placed.editable)
        PrintLine(L"\n来源物体过多，参数无法保存在散布块中，该散布块以后不能再编辑。");
    return placed.reference;
}

template <class Params> Params newParams(const std::vector<AcDbObjectId>& sources) {
    Params params;
    params.seed = int(std::uint32_t(host_door::clockSeconds()));
    params.sources = sources;
    return params;
}

bool askYN(const wchar_t* prompt) {
    acedInitGet(0, L"Y N");
    std::wstring word;
    return acedGetKword(Translate(prompt), word) == RTNORM && word == L"Y";
}

bool askAlignment(ScatterOnCurveParams& params) {
    params.alignTangent = askYN(L"\n是否沿曲线切线方向对齐？[Y/N]（N）: ");
    return !params.alignTangent || AskReal(Translate(L"\n请输入方向随机摆动范围(0-180度) <0>: "),
                                           params.tangentJitter, 0, true, 0, 180);
}

bool askBand(ScatterOnCurveParams& params) {
    params.onCurve = askYN(L"\n中心严格在线条上(Y)/中心线条周边散布(N) [Y/N]（N）: ");
    if (params.onCurve) return true;
    const auto width = AskDistance(L"\n请输入中心散布宽度范围: ");
    if (width) params.width = *width;
    return width.has_value();
}

bool ask(ScatterOnCurveParams& params) {
    if (!AskPattern(L"\n散布图案类型 圆(C)/方形(F)/其他物体(S)[C/F/S] <C>: ", params)) return false;
    if (params.pattern == PatternType::templates && !askAlignment(params)) return false;
    if (!askBand(params) || !AskSizes(params)) return false;
    if (params.onCurve)
        params.spacingRandom = AskYesNo(L"\n散布物体位置间距是否随机？[Y/N]（Y）: ", L"", true);
    AskCount(params);
    AskOverlap(params);
    return true;
}

// The range that was given last is offered for as long as the program runs.
bool askRotation(ScatterInRegionParams& params) {
    static double last = 360;
    params.rotate = AskYesNo(L"\n是否随机旋转图案？[Y/N]（N）: ", L"", false);
    if (!params.rotate) return true;
    if (!(last >= 10 && last <= 360)) last = 360;
    if (!AskReal(TranslateFormat(L"\n请输入旋转角度范围ang(10~360) <%g>: ", last), params.rotationRange, last,
                 true, 10, 360))
        return false;
    last = params.rotationRange;
    return true;
}

bool ask(ScatterInRegionParams& params) {
    if (!AskPattern(L"\n散布图案类型 圆(C)/方形(F)/其他物体(S)[C/F/S]  <C>: ", params)) return false;
    if (params.pattern != PatternType::circle && !askRotation(params)) return false;
    if (!AskSizes(params)) return false;
    AskCount(params);
    AskOverlap(params);
    return true;
}

} // namespace

void ScatterOnCurvesCommand() {
    const CommandFrame frame;
    const Begun begun = askWhatToBegin<ScatterOnCurveParams>(
        L"\n选择一条或多条曲线(任意线条)，或选择本命令生成的散布块: ",
        L"LINE ARC CIRCLE LWPOLYLINE POLYLINE SPLINE ELLIPSE HELIX INSERT", L"\n未选择有效曲线或散布块。",
        [](const AcDbEntity& entity) { return AcDbCurve::cast(&entity) != nullptr; });
    if (!begun.scatter.isNull()) return edit<CRndScatterEditDlg>(begun.scatter);
    if (begun.sources.empty()) return;
    auto params = newParams<ScatterOnCurveParams>(begun.sources);
    if (ask(params)) make(params);
}

void ScatterInRegionsCommand() {
    const CommandFrame frame;
    const Begun begun = askWhatToBegin<ScatterInRegionParams>(
        L"\n选择一条或多条封闭曲线(圆、椭圆、封闭多段线、面域)，或选择本命令生成的散布块: ",
        L"CIRCLE ELLIPSE LWPOLYLINE REGION INSERT", L"\n未选择有效封闭曲线或散布块。", IsBoundary);
    if (!begun.scatter.isNull()) return edit<CRndScatter2EditDlg>(begun.scatter);
    if (begun.sources.empty()) return;
    auto params = newParams<ScatterInRegionParams>(begun.sources);
    if (!ask(params)) return;
    const AcDbObjectId reference = make(params);
    if (reference.isNull()) return;
    if (AskYesNo(L"\n是否剪裁超越范围的图案？[Y/N]（N）: ", L"", false) &&
        !ClipToBoundaries(reference, begun.sources))
        PrintLine(L"\n剪裁失败或无法创建范围并集轮廓，已保留未剪裁的匿名块。");
}

} // namespace corvane
