// DevideLine1 to 3: lines between division points, drawn one by one so that the figure grows before the eye.
#include <cmath>
#include <numbers>

#include "core/appending.h"
#include "core/host/editor.h"
#include "core/messages.h"
#include "core/settings.h"
#include "curves/division/division.h"
#include "curves/division/division_commands.h"
#include "curves/division/thread_art.h"

namespace corvane {
namespace {

constexpr int kFigureTime = 2000;        // milliseconds for a figure
constexpr size_t kMostThreads = 1000000; // lines that a drawing still can hold

struct Picked {
    AcDbObjectId id;
    bool closed = false;
};

// The curve that the user picks. What went wrong is told.
std::optional<Picked> pickCurve(const wchar_t* prompt) {
    ads_name name;
    ads_point at;
    Picked picked;
    if (acedEntSel(Translate(prompt), name, at) != RTNORM || acdbGetObjectId(picked.id, name) != Acad::eOk)
        return PrintLine(L"\n选择对象失败。"), std::nullopt;
    AcDbObjectPointer<AcDbEntity> entity(picked.id, AcDb::kForRead);
    if (!entity) return PrintLine(L"\n打开对象失败。"), std::nullopt;
    const auto* curve = AcDbCurve::cast(entity.object());
    if (!curve) return PrintLine(L"\n所选对象不是曲线。"), std::nullopt;
    picked.closed = curve->isClosed();
    return picked;
}

// Appends the line to the current space and closes it; one that can't be appended is deleted.
void DrawLineAnimated(AcDbLine* line) {
    AcDbObjectId id;
    if (AppendToCurrentSpace(line, id) != Acad::eOk) delete line;
}

// The lines, a wait behind each, so that the whole takes its time whatever their number.
void drawFigure(const std::vector<LinePair>& lines, const std::vector<AcGePoint3d>& starts,
                const std::vector<AcGePoint3d>& ends) {
    const int count = int(lines.size());
    for (int i = 0; i < count; ++i) {
        auto* line = new AcDbLine(starts[size_t(lines[size_t(i)].start)], ends[size_t(lines[size_t(i)].end)]);
        line->setDatabaseDefaults(acdbHostApplicationServices()->workingDatabase());
        DrawLineAnimated(line);
        acedUpdateDisplay();
        if (const int wait = kFigureTime / count + (i < kFigureTime % count); wait > 0) Sleep(unsigned(wait));
    }
}

// -- one curve ----------------------------------------------------------------------------------------

struct SinglePlan {
    int m = 0, n = 0;
    ThreadMode mode = ThreadMode::together;
};

std::optional<SinglePlan> askSinglePlan() {
    short m = 0, n = 0;
    if (acedGetShort(Translate(L"\n请输入等分点数 M："), &m) != RTNORM) return std::nullopt;
    if (m < 2) return PrintLine(L"\nM 必须 >= 2。"), std::nullopt;
    if (acedGetShort(Translate(L"\n请输入连接起始偏移量 N："), &n) != RTNORM) return std::nullopt;
    if (n < 1 || n >= m) return PrintLine(L"\nN 必须满足 1 <= N < M。"), std::nullopt;
    if (n < m / 10 || n > m / 3)
        PrintText(
            TranslateFormat(L"\n提示：N 一般建议在 M/10 到 M/3 范围内。当前 N=%d, M=%d", int(n), int(m)));
    std::wstring word;
    acedInitGet(0, L"G M C T");
    const int status =
        acedGetKword(Translate(L"\n终点固定(G)\\终点慢移(M)\\终点超前(C)\\同步(T)[T]："), word);
    if (status != RTNORM && status != RTNONE) return std::nullopt;
    SinglePlan plan{m, n, ThreadMode::together};
    if (word == L"G") plan.mode = ThreadMode::fixed;
    if (word == L"M") plan.mode = ThreadMode::slow;
    if (word == L"C") plan.mode = ThreadMode::ahead;
    return plan;
}

std::optional<double> lengthOf(const AcDbCurve& curve) {
    double start = 0, end = 0, before = 0, behind = 0;
    if (curve.getStartParam(start) != Acad::eOk || curve.getEndParam(end) != Acad::eOk)
        return PrintLine(L"\n获取曲线参数范围失败。"), std::nullopt;
    if (curve.getDistAtParam(start, before) != Acad::eOk || curve.getDistAtParam(end, behind) != Acad::eOk)
        return PrintLine(L"\n获取曲线长度失败。"), std::nullopt;
    if (!(behind - before > 0)) return PrintLine(L"\n曲线长度异常。"), std::nullopt;
    return behind - before;
}

// -- rings --------------------------------------------------------------------------------------------

// A number of points between 3 and 999, the last one used offered. Nothing, and told, for others.
std::optional<int> askRingCount(const wchar_t* setting, const wchar_t* prompt, const wchar_t* refusal) {
    int count = int(SettingsStore::ReadInt(setting));
    const int status = acedGetInt(TranslateFormat(prompt, count), &count);
    if (status != RTNORM && status != RTNONE) return std::nullopt;
    if (count <= 3 || count >= 999) return PrintLine(refusal), std::nullopt;
    SettingsStore::WriteInt(setting, std::uint32_t(count));
    return count;
}

struct RingPlan {
    int starts = 0, ends = 0;
    double offset = 0; // radians
};
std::optional<RingPlan> askRingPlan() {
    const auto starts =
        askRingCount(L"devideLineM1", L"\n请输入起点等分点数 M1[%d]：", L"\nM1 必须满足 3 < M1 < 999。");
    if (!starts) return std::nullopt;
    const auto ends =
        askRingCount(L"devideLineM2", L"\n请输入终点等分点数 M2[%d]：", L"\nM2 必须满足 3 < M2 < 999。");
    if (!ends) return std::nullopt;
    double degrees = 60;
    const int status = acedGetReal(Translate(L"\n请输入起始偏移角度(默认60度)："), &degrees);
    if (status != RTNORM && status != RTNONE) return std::nullopt;
    return RingPlan{*starts, *ends, degrees * std::numbers::pi / 180};
}

// Points round the curve, seen from the middle of its box.
std::vector<AcGePoint3d> ringOf(AcDbObjectId id, int count, double offset, const wchar_t* failure) {
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    AcDbExtents box;
    if (!curve || curve->getGeomExtents(box) != Acad::eOk)
        return PrintLine(L"\n获取包围框失败。"), std::vector<AcGePoint3d>();
    const AcGeVector3d diagonal = box.maxPoint() - box.minPoint();
    const double size = diagonal.length() > 1e-6 ? diagonal.length() : 1.0;
    auto points = RingPoints(*curve, box.minPoint() + diagonal / 2, count, offset, size * 10 + 1);
    if (points.empty()) PrintLine(failure);
    return points;
}

// Passes until the user has enough or there is nothing new.
void drawRings(const RingPlan& plan, AcDbObjectId first, AcDbObjectId second) {
    const auto starts = ringOf(first, plan.starts, 0, L"\n计算起点等分点失败。");
    if (starts.empty()) return;
    const auto ends = ringOf(second, plan.ends, plan.offset, L"\n计算终点等分点失败。");
    if (ends.empty()) return;
    LinePairs drawn;
    for (int a = 0, b = 0;; a = (a + 1) % plan.starts, b = (b + 1) % plan.ends) {
        const auto lines = RingThreads(plan.starts, plan.ends, a, b, drawn);
        if (lines.empty()) return PrintLine(L"\n没有可绘制的连接线，已结束。");
        drawFigure(lines, starts, ends);
        std::wstring word;
        acedInitGet(0, L"Y N");
        const int status = acedGetKword(Translate(L"\n是否继续(Y/N)[Y]："), word);
        if ((status != RTNORM && status != RTNONE) || word == L"N") return;
    }
}

} // namespace

void ThreadOneCurveCommand() {
    const auto picked =
        pickCurve(L"\n请选择一条曲线(圆、圆弧、椭圆、椭圆弧、二维多段线、三维多段线、样条曲线)：");
    const auto plan = picked ? askSinglePlan() : std::nullopt;
    if (!plan) return;
    AcDbObjectPointer<AcDbCurve> curve(picked->id, AcDb::kForRead);
    const auto length = curve ? lengthOf(*curve) : std::nullopt;
    if (!length) return;
    const auto points = DivisionPoints(*curve, plan->m, *length);
    curve.close();
    if (int(points.size()) != plan->m) return PrintLine(L"\n计算等分点失败。");
    const auto lines = SingleCurveThreads(plan->m, plan->n, plan->mode, picked->closed, kMostThreads);
    if (lines.empty()) return PrintLine(L"\n当前 M/N/模式 组合无法生成连线。");
    if (lines.size() == kMostThreads)
        PrintText(TranslateFormat(L"\n连线过多，只绘制前 %d 条。", int(kMostThreads)));
    drawFigure(lines, points, points);
}

void ThreadOneRingCommand() {
    const auto picked =
        pickCurve(L"\n请选择一条封闭曲线(圆、圆弧、椭圆、椭圆弧、二维多段线、三维多段线、样条曲线)：");
    if (!picked) return;
    if (!picked->closed) return PrintLine(L"\n所选曲线不是封闭曲线，程序退出。");
    if (const auto plan = askRingPlan()) drawRings(*plan, picked->id, picked->id);
}

void ThreadTwoRingsCommand() {
    const auto first =
        pickCurve(L"\n请选择第一条封闭曲线(圆、圆弧、椭圆、椭圆弧、二维多段线、三维多段线、样条曲线)：");
    if (!first) return;
    if (!first->closed) return PrintLine(L"\n第一条曲线不是封闭曲线，程序退出。");
    const auto second =
        pickCurve(L"\n请选择第二条封闭曲线(圆、圆弧、椭圆、椭圆弧、二维多段线、三维多段线、样条曲线)：");
    if (!second) return;
    if (!second->closed) return PrintLine(L"\n第二条曲线不是封闭曲线，程序退出。");
    if (const auto plan = askRingPlan()) drawRings(*plan, first->id, second->id);
}

} // namespace corvane
