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

double seenDistance(const AcGePoint3d& a, const AcGePoint3d& b) { return std::hypot(a.x - b.x, a.y - b.y); }

class ControlPointPrompt {
public:
    explicit ControlPointPrompt(CageSession& session) : session_(session) {}
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

    CageSession& session_;
};

void ControlPointPrompt::printMenu() const {
    PrintLine(L"\n操作提示：");
    PrintLine(session_.cage.manners().menu);
    PrintLine(session_.cage.shapeLocked() ? L"\n锁形模式：锁定" : L"\n锁形模式：解锁");
    if (!session_.selection().empty())
        PrintText(TranslateFormat(L"\n当前多选保持：%d 个控制点", int(session_.selection().size())));
}

bool ControlPointPrompt::ask() {
    printMenu();
    const CageManners& manners = session_.cage.manners();
    const PromptPoint answer = AskPoint({Translate(manners.prompt), manners.keywords});
    if (answer) pick(answer.world);
    return answer || (answer.status == RTKWORD && keyword(answer.keyword));
}

bool ControlPointPrompt::keyword(wchar_t letter) {
    switch (letter) {
    case L'M': selectMany(); break;
    case L'L': session_.cage.toggleLock(); break;
    case L'U': undo(); break;
    case L'X': PrintLine(session_.cage.manners().leaving); return false;
    default:
        if (session_.cage.keyword(letter)) session_.rebuilt();
    }
    return true;
}

GizmoMode usualMode() {
    short mode = 0;
    ReadSysVar(L"DEFAULTGIZMO", mode);
    return mode == 1 ? GizmoMode::rotate : mode == 2 ? GizmoMode::scale : GizmoMode::move;
}

void ControlPointPrompt::selectMany() {
    MultiSelectControlPoints(session_);
    if (session_.selection().empty()) return;
    session_.mode = usualMode();
    PrintText(TranslateFormat(L"\n已选中 %d 个控制点。", int(session_.selection().size())));
    PrintText(TranslateFormat(L"\nGizmo已设为%s模式（按DEFAULTGIZMO），进入Gizmo交互。",
                              GizmoModeName(session_.mode)));
    PrintLine(L"\n控制点保持选中状态，可继续操作，或按[M]重新选择。");
}

void ControlPointPrompt::undo() {
    const CageManners& manners = session_.cage.manners();
    if (const auto left = session_.undo())
        PrintText(TranslateFormat(manners.undone, *left));
    else
        PrintLine(manners.undoneLast);
}

// The control point that is seen nearest, the first among equals; -1 when none is within reach.
int ControlPointPrompt::nearest(const AcGePoint3d& display) const {
    int found = -1;
    double least = kPickReach;
    for (int i = 0; i < session_.cage.size(); ++i) {
        const double away = seenDistance(DisplayPoint(session_.cage.point(i).position), display);
        if (away > least || (found >= 0 && away == least)) continue;
        least = away;
        found = i;
    }
    return found;
}

bool ControlPointPrompt::isGroupPick(int hit, const AcGePoint3d& display) const {
    const auto& chosen = session_.selection();
    if (chosen.empty()) return false;
    if (std::find(chosen.begin(), chosen.end(), hit) != chosen.end()) return true;
    return seenDistance(DisplayPoint(session_.selectionMean()), display) <= kGroupReach;
}

void ControlPointPrompt::pick(const AcGePoint3d& at) {
    const AcGePoint3d display = DisplayPoint(at);
    const int hit = nearest(display);
    if (isGroupPick(hit, display)) return dragGroup();
    session_.clearSelection();
    if (hit < 0) return PrintLine(L"\n未选中控制点，请重试。");
    dragOne(hit);
}

void ControlPointPrompt::dragOne(int index) {
    PrintText(session_.cage.pickedText(index));
    ControlPoint& point = session_.cage.point(index);
    point.selectionState = ControlPoint::kSelected;
    session_.redraw();
    // A drag that is given up leaves its step: the next undo then changes nothing.
    session_.PushUndoSnapshot();
    PointQuestion question;
    question.prompt = Translate(L"\n拖拽到新位置: ");
    question.base = &point.position;
    const PromptPoint to = AskPoint(question);
    point.selectionState = ControlPoint::kPlain;
    if (!to) return;
    session_.placePoint(index, to.world);
    PrintLine(session_.cage.shapeLocked() ? L"\n控制点已移动（锁形模式）。" : L"\n变形已应用。");
}

void ControlPointPrompt::dragGroup() {
    session_.PushUndoSnapshot();
    const AcGePoint3d mean = session_.selectionMean();
    PointQuestion question;
    question.prompt = Translate(L"\n拖拽到新位置: ");
    question.base = &mean;
    const PromptPoint to = AskPoint(question);
    if (!to) {
        session_.clearSelection();
        return PrintLine(L"\n已取消多选。");
    }
    const AcGeVector3d shift = to.world - mean;
    session_.placeSelected([&](const AcGePoint3d& p) { return p + shift; });
    const int count = int(session_.selection().size());
    PrintText(session_.cage.shapeLocked() ? TranslateFormat(L"\n%d个控制点已移动（锁形模式）。", count)
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
    CageSession session(cage);
    session.snapModes = turnSnapsOff(saved);
    for (;;) {
        session.redraw();
        if (!session.selection().empty() && RunGizmoLoop(session)) continue;
        if (!ControlPointPrompt(session).ask()) break;
    }
    session.clearSelection();
    return {session.deformed};
}

} // namespace corvane::deform
