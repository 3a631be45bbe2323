// The outer loop, and the prompt where control points are picked one by one.
#include "deform/cage/cage_loop.h"

#include <algorithm>
#include <cmath>

#include "core/messages.h"
#include "core/sysvar_stack.h"
#include "deform/cage/gizmo_loop.h"
#include "deform/cage/gizmo_names.h"
#include "deform/cage/prompt_points.h"
#include "deform/cage/region_selection.h"

namespace corvane::deform {
namespace {

constexpr double kPickReach = 15.0, kGroupReach = 20.0; // display units

// In drawings so large that this many units are less than as many pixels, the pixels count: nobody could hit
// a point any more.
double reachOf(double units) { return units * std::max(1.0, 1.0 / CurrentScreen().pixelsPerUnit()); }

double seenDistance(const AcGePoint3d& a, const AcGePoint3d& b) { return std::hypot(a.x - b.x, a.y - b.y); }

class ControlPointPrompt {
public:
    explicit ControlPointPrompt(CageState& state) : state_(state) {}
    // False when the user ends the command.
    bool ask();

private:
    void printMenu() const;
    bool keyword(wchar_t letter);
    void selectMany();
    void undo();
    void pick(const AcGePoint3d& at);
    void dragOne(int index);
    void dragGroup();
    int nearest(const AcGePoint3d& display) const;
    bool isGroupPick(int hit, const AcGePoint3d& display) const;

    CageState& state_;
};

void ControlPointPrompt::printMenu() const {
    PrintLine(L"\n操作提示：");
    PrintLine(state_.cage.manners().menu);
    PrintLine(state_.cage.shapeLocked() ? L"\n锁形模式：锁定" : L"\n锁形模式：解锁");
    if (!state_.selection().empty())
        PrintText(TranslateFormat(L"\n当前多选保持：%d 个控制点", int(state_.selection().size())));
}

bool ControlPointPrompt::ask() {
    printMenu();
    const CageManners& manners = state_.cage.manners();
    const PromptPoint answer = AskPoint({Translate(manners.prompt), manners.keywords});
    if (answer) pick(answer.world);
    return answer || (answer.status == RTKWORD && keyword(answer.keyword));
}

bool ControlPointPrompt::keyword(wchar_t letter) {
    switch (letter) {
    case L'M': selectMany(); break;
    case L'L': state_.cage.toggleLock(); break;
    case L'U': undo(); break;
    case L'X': PrintLine(state_.cage.manners().leaving); return false;
    default:
        if (state_.cage.keyword(letter)) state_.rebuilt();
    }
    return true;
}

GizmoMode usualMode() {
    short mode = 0;
    ReadSysVar(L"DEFAULTGIZMO", mode);
    return mode == 1 ? GizmoMode::rotate : mode == 2 ? GizmoMode::scale : GizmoMode::move;
}

void ControlPointPrompt::selectMany() {
    MultiSelectControlPoints(state_);
    if (state_.selection().empty()) return;
    state_.mode = usualMode();
    PrintText(TranslateFormat(L"\n已选中 %d 个控制点。", int(state_.selection().size())));
    PrintText(TranslateFormat(L"\nGizmo已设为%s模式（按DEFAULTGIZMO），进入Gizmo交互。",
                              GizmoModeName(state_.mode)));
    PrintLine(L"\n控制点保持选中状态，可继续操作，或按[M]重新选择。");
}

void ControlPointPrompt::undo() {
    const CageManners& manners = state_.cage.manners();
    if (const auto left = state_.undo())
        PrintText(TranslateFormat(manners.undone, *left));
    else
        PrintLine(manners.undoneLast);
}

// The control point that is seen nearest, the first among equals; -1 when none is within reach.
int ControlPointPrompt::nearest(const AcGePoint3d& display) const {
    int found = -1;
    double least = reachOf(kPickReach);
    for (int i = 0; i < state_.cage.size(); ++i) {
        const double away = seenDistance(DisplayPoint(state_.cage.point(i).position), display);
        if (away > least || (found >= 0 && away == least)) continue;
        least = away;
        found = i;
    }
    return found;
}

bool ControlPointPrompt::isGroupPick(int hit, const AcGePoint3d& display) const {
    const auto& chosen = state_.selection();
    if (chosen.empty()) return false;
    if (std::find(chosen.begin(), chosen.end(), hit) != chosen.end()) return true;
    return seenDistance(DisplayPoint(state_.selectionMean()), display) <= reachOf(kGroupReach);
}

void ControlPointPrompt::pick(const AcGePoint3d& at) {
    const AcGePoint3d display = DisplayPoint(at);
    const int hit = nearest(display);
    if (isGroupPick(hit, display)) return dragGroup();
    state_.clearSelection();
    if (hit < 0) return PrintLine(L"\n未选中控制点，请重试。");
    dragOne(hit);
}

void ControlPointPrompt::dragOne(int index) {
    PrintText(state_.cage.pickedText(index));
    ControlPoint& point = state_.cage.point(index);
    point.selectionState = ControlPoint::kSelected;
    state_.redraw();
    // A drag that is given up leaves its step: the next undo then changes nothing.
    state_.PushUndoSnapshot();
    PointQuestion question;
    question.prompt = Translate(L"\n拖拽到新位置: ");
    question.base = &point.position;
    const PromptPoint to = AskPoint(question);
    point.selectionState = ControlPoint::kPlain;
    if (!to) return;
    state_.placePoint(index, to.world);
    PrintLine(state_.cage.shapeLocked() ? L"\n控制点已移动（锁形模式）。" : L"\n变形已应用。");
}

void ControlPointPrompt::dragGroup() {
    state_.PushUndoSnapshot();
    const AcGePoint3d mean = state_.selectionMean();
    PointQuestion question;
    question.prompt = Translate(L"\n拖拽到新位置: ");
    question.base = &mean;
    const PromptPoint to = AskPoint(question);
    if (!to) {
        state_.clearSelection();
        return PrintLine(L"\n已取消多选。");
    }
    const AcGeVector3d shift = to.world - mean;
    if (!state_.placeSelected([&](const AcGePoint3d& p) { return p + shift; })) return PrintLine(kTooFar);
    const int count = int(state_.selection().size());
    PrintText(state_.cage.shapeLocked() ? TranslateFormat(L"\n%d个控制点已移动（锁形模式）。", count)
                                        : TranslateFormat(L"\n%d个控制点已同步移动，变形已应用。", count));
}

// Object snaps would catch the cursor away from the handles; marks of tracking (8 in AUTOSNAP) stay.
short turnSnapsOff(SdSysVarStack& saved) {
    constexpr short kTracking = 8;
    short modes = 0, marks = 0;
    ReadSysVar(L"OSMODE", modes);
    ReadSysVar(L"AUTOSNAP", marks);
    saved.Push(L"OSMODE", short(0));
    saved.Push(L"AUTOSNAP", short(marks | kTracking));
    return modes;
}

} // namespace

CageOutcome RunCageLoop(Cage& cage) {
    SdSysVarStack saved;
    CageState state(cage);
    state.snapModes = turnSnapsOff(saved);
    for (;;) {
        state.redraw();
        if (!state.selection().empty() && RunGizmoLoop(state)) continue;
        if (!ControlPointPrompt(state).ask()) break;
    }
    state.clearSelection();
    return {state.deformed};
}

} // namespace corvane::deform
