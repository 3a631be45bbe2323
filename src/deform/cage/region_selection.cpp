// The prompts of regions, and what lies inside. All of it is measured as seen: in display coordinates.
#include "deform/cage/region_selection.h"

#include <algorithm>
#include <functional>

#include "core/host/dialogs.h"
#include "core/messages.h"
#include "deform/cage/prompt_points.h"

namespace corvane::deform {
namespace {

constexpr int kWhite = 7;

// Tells whether a point, as seen, is inside.
using Inside = std::function<bool(const AcGePoint2d&)>;

AcGePoint2d seenAt(const AcGePoint3d& world) {
    const AcGePoint3d display = DisplayPoint(world);
    return {display.x, display.y};
}

void drawLine(const AcGePoint3d& fromWorld, const AcGePoint3d& toWorld) {
    const AcGePoint3d from = InUcs(fromWorld), to = InUcs(toWorld);
    const ads_point a{from.x, from.y, from.z}, b{to.x, to.y, to.z};
    acedGrDraw(a, b, kWhite, 0);
}

// What a region's prompts gave: a region, another kind to go on with, or neither.
struct RegionAnswer {
    Inside inside;
    wchar_t otherKind = 0;
};

RegionAnswer askRectangle() {
    const PromptPoint first =
        AskPoint({Translate(L"\n指定第一个角点 [或选择框选方式圆形(C)/任意多边形(P)]: "), L"C P"});
    if (!first) return {{}, first.keyword};
    const PromptPoint second = AskPoint({Translate(L"\n指定对角点: "), nullptr, 0, &first.world, true});
    if (!second) return {};
    const AcGePoint2d a = seenAt(first.world), b = seenAt(second.world);
    const AcGePoint2d low(std::min(a.x, b.x), std::min(a.y, b.y)),
        high(std::max(a.x, b.x), std::max(a.y, b.y));
    const AcGePoint3d corners[] = {DisplayToWorld({low.x, low.y, 0}), DisplayToWorld({high.x, low.y, 0}),
                                   DisplayToWorld({high.x, high.y, 0}), DisplayToWorld({low.x, high.y, 0})};
    for (size_t i = 0; i < 4; ++i) drawLine(corners[i], corners[(i + 1) % 4]);
    return {[low, high](const AcGePoint2d& p) {
        return p.x >= low.x && p.x <= high.x && p.y >= low.y && p.y <= high.y;
    }};
}

RegionAnswer askCircle() {
    const PromptPoint centre =
        AskPoint({Translate(L"\n指定圆心 [或选择框选方式矩形(R)/任意多边形(P)]: "), L"R P"});
    if (!centre) return {{}, centre.keyword};
    const AcGePoint3d ucs = InUcs(centre.world);
    const ads_point from{ucs.x, ucs.y, ucs.z};
    ads_real radius = 0;
    if (acedGetDist(from, Translate(L"\n指定半径: "), &radius) != RTNORM) return {};
    return {[middle = seenAt(centre.world), radius](const AcGePoint2d& p) {
        return p.distanceTo(middle) <= radius;
    }};
}

RegionAnswer askPolygon() {
    const PromptPoint first =
        AskPoint({Translate(L"\n指定多边形第一点 [或选择框选方式矩形(R)/圆形(C)]: "), L"R C"});
    if (!first) return {{}, first.keyword};
    std::vector<AcGePoint2d> corners{seenAt(first.world)};
    AcGePoint3d last = first.world;
    for (;;) {
        const PromptPoint next = AskPoint({Translate(L"\n下一点或 <回车结束>: "), nullptr, 0, &last});
        if (next.status == RTCAN) return {};
        if (!next) break;
        drawLine(last, next.world);
        corners.push_back(seenAt(next.world));
        last = next.world;
    }
    drawLine(last, first.world);
    return {[corners](const AcGePoint2d& p) {
        return corners.size() > 2 && host_door::polygonHolds(corners, p);
    }};
}

bool held(UINT key) { return GetAsyncKeyState(int(key)) < 0; }

// Those that are in the set go, the others come to its end.
void toggle(std::vector<int>& set, const std::vector<int>& indices) {
    for (const int index : indices)
        if (std::erase(set, index) == 0) set.push_back(index);
}

// Marks what is chosen so far, where another region may follow.
void showChosen(CageState& state, const std::vector<int>& chosen) {
    state.select(chosen);
    state.redraw();
    PrintText(TranslateFormat(L"\nCtrl多选：当前选中 %d 个控制点（Ctrl+框选继续，松开Ctrl结束）。",
                              int(chosen.size())));
}

// The key may be let go between two looks at it.
bool ctrlStaysDown() {
    constexpr unsigned kBreath = 100; // milliseconds
    if (!held(VK_CONTROL)) return false;
    Sleep(kBreath);
    return held(VK_CONTROL);
}

void goOnChoosing(CageState& state, std::vector<int> chosen) {
    for (;;) {
        if (!ctrlStaysDown()) {
            if (!chosen.empty()) return;
            PrintLine(L"\n当前未选中控制点，按下Ctrl即继续多选，或回车退出。");
        }
        const auto more = SelectRegion(state.cage);
        if (!more || (chosen.empty() && more->empty())) return;
        toggle(chosen, *more);
        showChosen(state, chosen);
    }
}

} // namespace

std::optional<std::vector<int>> SelectRegion(const Cage& cage) {
    RegionAnswer answer{{}, L'R'};
    while (answer.otherKind)
        answer = answer.otherKind == L'C'   ? askCircle()
                 : answer.otherKind == L'P' ? askPolygon()
                                            : askRectangle();
    if (!answer.inside) return std::nullopt;
    std::vector<int> indices;
    for (int i = 0; i < cage.size(); ++i)
        if (answer.inside(seenAt(cage.point(i).position))) indices.push_back(i);
    return indices;
}

void MultiSelectControlPoints(CageState& state) {
    state.clearSelection();
    const auto region = SelectRegion(state.cage);
    if (!region || region->empty()) return state.redraw();
    const bool ctrl = held(VK_CONTROL), alt = held(VK_MENU);
    if (ctrl == alt) {
        state.select(*region);
        return state.redraw();
    }
    // Alt takes away from nothing: it goes on like a selection that has become empty.
    std::vector<int> chosen;
    if (ctrl) chosen = *region, showChosen(state, chosen);
    goOnChoosing(state, std::move(chosen));
}

} // namespace corvane::deform
