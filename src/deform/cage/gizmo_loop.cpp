// Clicks, keys and keywords of the gizmo.
#include "deform/cage/gizmo_loop.h"

#include "core/messages.h"
#include "core/sysvar_stack.h"
#include "deform/cage/gizmo_monitor.h"
#include "deform/cage/gizmo_names.h"
#include "deform/cage/prompt_points.h"
#include "deform/cage/region_selection.h"

namespace corvane::deform {
namespace {

// The user's object snaps, for one prompt.
class UserSnaps {
public:
    explicit UserSnaps(short modes) { WriteSysVar(L"OSMODE", modes); }
    ~UserSnaps() { WriteSysVar(L"OSMODE", short(0)); }
    UserSnaps(const UserSnaps&) = delete;
    UserSnaps& operator=(const UserSnaps&) = delete;
};

class GizmoLoop {
public:
    explicit GizmoLoop(CageState& state) : state_(state) {}

    void run() {
        while (!state_.selection().empty()) pass();
        state_.hideGizmo();
    }

private:
    void pass();
    CString status() const;
    void clicked(const AcGePoint3d& at);
    void clickedUnlocked(const AcGePoint3d& at);
    void entered();
    void escaped();
    void keyword(wchar_t letter);

    void lockPlane(int plane, const wchar_t* message);
    void cycleMode();
    void selectAnew();
    void undo();
    void askOrigin();

    void move(const AcGePoint3d& to);
    void scale(const AcGePoint3d& to);
    bool scaleBy(double factor);
    void scaleByNumber();
    void rotate(const AcGePoint3d& from);

    bool unlocked() const { return state_.lockedHandle == kNoHandle; }
    int hover() const { return state_.graphics.gizmo().hoverHandle; }
    int count() const { return int(state_.selection().size()); }

    CageState& state_;
};

// -- asking --------------------------------------------------------------------------------------------

CString GizmoLoop::status() const {
    const CString mode = GizmoModeName(state_.mode), locked = HandleName(state_.lockedHandle);
    switch (state_.mode) {
    case GizmoMode::move:
        return IsPlane(state_.lockedHandle)
                   ? TranslateFormat(L"\n[Gizmo: %s模式 | 已锁定%s平面] 点击面内移动，[空格]切换面 [ESC]解锁 "
                                     L"[G]切换 [M]重选 [U]撤销: ",
                                     mode, locked)
                   : TranslateFormat(L"\n[Gizmo: %s模式] 橡皮筋吸附轴亮显，[点击]移动 [点击面/空格]锁定面 "
                                     L"[G]切换 [M]重选 [U]撤销 [ESC]取消多选: ",
                                     mode);
    case GizmoMode::scale:
        return unlocked()
                   ? TranslateFormat(L"\n[Gizmo: %s模式] 悬停轴/中心即锁定，点击缩放 [S]输入倍数 [U]撤销 "
                                     L"[G]切换 [M]重选 [O]原点 [ESC]取消多选: ",
                                     mode)
                   : TranslateFormat(L"\n[Gizmo: %s模式 | 已锁定%s] 点击缩放 [S]输入倍数 [U]撤销 [G]切换 "
                                     L"[M]重选 [O]原点 [ESC]解锁: ",
                                     mode, locked);
    case GizmoMode::rotate: break;
    }
    if (unlocked())
        return TranslateFormat(L"\n[Gizmo: %s模式] 悬停面即锁定，[空格]锁定面，[G]切换 [M]重选 [O]原点 "
                               L"[U]撤销 [ESC]取消多选: ",
                               mode);
    return IsPlane(state_.lockedHandle)
               ? TranslateFormat(L"\n[Gizmo: %s模式 | 已锁定%s] 点击两次旋转，[G]切换 [M]重选 [U]撤销 "
                                 L"[O]原点 [ESC]解锁: ",
                                 mode, locked)
               : TranslateFormat(L"\n[Gizmo: %s模式 | 已锁定%s] 点击执行操作，[G]切换 [M]重选 [U]撤销 "
                                 L"[O]原点 [ESC]解锁: ",
                                 mode, locked);
}

void GizmoLoop::pass() {
    state_.showGizmo();
    PrintText(status());
    const AcGePoint3d pivot = state_.SelectionCentre();
    PointQuestion question;
    question.base = &pivot;
    question.keywords = state_.mode == GizmoMode::move    ? L"G M U"
                        : state_.mode == GizmoMode::scale ? L"G M U S O"
                                                          : L"G M U O";
    question.bits = state_.mode == GizmoMode::scale ? RSG_NONULL : 0;
    const PromptPoint answer = AskPoint(question);
    switch (answer.status) {
    case RTNORM: return clicked(answer.world);
    case RTNONE: return entered();
    case RTKWORD: return keyword(answer.keyword);
    default: return escaped();
    }
}

// -- what answers mean -----------------------------------------------------------------------------------

void GizmoLoop::clicked(const AcGePoint3d& at) {
    if (unlocked()) return clickedUnlocked(at);
    switch (state_.mode) {
    case GizmoMode::move: return move(at);
    case GizmoMode::scale: return scale(at);
    case GizmoMode::rotate:
        if (IsPlane(state_.lockedHandle)) rotate(at);
    }
}

void GizmoLoop::clickedUnlocked(const AcGePoint3d& at) {
    const bool moves = state_.mode == GizmoMode::move;
    if (moves && IsAxis(hover())) {
        state_.lockedHandle = hover();
        move(at);
        state_.lockedHandle = kNoHandle;
        return;
    }
    if (moves && IsPlane(hover()))
        return lockPlane(hover(), L"\n已锁定%s平面。点击在该面内移动，[ESC]解锁，空格切换面。");
    const bool turns = state_.mode == GizmoMode::rotate && state_.cage.manners().clickLocksRotationPlane;
    if (turns && IsPlane(hover()))
        return lockPlane(hover(), L"\n已锁定%s平面（点击锁定）。点击两次旋转，[ESC]解锁。");
    const ScreenMap screen = CurrentScreen();
    const int hit = HitTestGizmo(state_.gizmo(), screen, screen.pixel(at));
    if (hit == kLabel) cycleMode();
    if (hit == kCentre) askOrigin();
}

void GizmoLoop::entered() {
    if (!IsPlane(hover()) || hover() == state_.lockedHandle) return;
    if (!unlocked()) return lockPlane(hover(), L"\n已切换到%s平面（空格切换）。");
    if (state_.mode == GizmoMode::move)
        lockPlane(hover(), L"\n已锁定%s平面（空格锁定）。点击在该面内移动，[ESC]解锁，空格切换面。");
    if (state_.mode == GizmoMode::rotate)
        lockPlane(hover(), L"\n已锁定%s平面（空格锁定）。点击两次完成旋转，[ESC]解锁。");
}

void GizmoLoop::escaped() {
    if (!unlocked()) {
        state_.lockedHandle = kNoHandle;
        return PrintLine(L"\n已解除锁定。");
    }
    state_.clearSelection();
    PrintLine(L"\n已取消多选。");
}

void GizmoLoop::keyword(wchar_t letter) {
    switch (letter) {
    case L'G': return cycleMode();
    case L'M': return selectAnew();
    case L'U': return undo();
    case L'O': return askOrigin();
    case L'S': return scaleByNumber();
    default: break;
    }
}

void GizmoLoop::lockPlane(int plane, const wchar_t* message) {
    state_.lockedHandle = plane;
    PrintText(TranslateFormat(message, HandleName(plane)));
}

void GizmoLoop::cycleMode() {
    state_.mode = GizmoMode((int(state_.mode) + 1) % 3);
    state_.lockedHandle = kNoHandle;
    PrintText(TranslateFormat(L"\n已切换到%s模式。", GizmoModeName(state_.mode)));
}

// The gizmo steps aside: it has nothing to stand on, and would catch the cursor.
void GizmoLoop::selectAnew() {
    state_.hideGizmo();
    MultiSelectControlPoints(state_);
    PrintText(TranslateFormat(L"\n已选中 %d 个控制点。", count()));
}

void GizmoLoop::undo() {
    const CageManners& manners = state_.cage.manners();
    if (const auto left = state_.undo())
        PrintText(TranslateFormat(manners.gizmoUndone, *left));
    else
        PrintLine(manners.gizmoUndoneLast);
}

void GizmoLoop::askOrigin() {
    const UserSnaps snaps(state_.snapModes);
    const PromptPoint origin = AskPoint({Translate(L"\n指定Gizmo新原点位置: ")});
    if (!origin) return;
    state_.customOrigin = origin.world;
    PrintLine(L"\nGizmo原点已移动到新位置。");
}

// -- what handles do -------------------------------------------------------------------------------------

void GizmoLoop::move(const AcGePoint3d& to) {
    const AcGeVector3d delta =
        Constrained(to - state_.SelectionCentre(), state_.lockedHandle, state_.cage.axes());
    if (!state_.moveSelected([&](const AcGePoint3d& p) { return p + delta; })) return PrintLine(kTooFar);
    PrintText(TranslateFormat(L"\n%d个控制点沿%s移动了 (%.2f, %.2f, %.2f)。", count(),
                              HandleName(state_.lockedHandle), delta.x, delta.y, delta.z));
}

bool GizmoLoop::scaleBy(double factor) {
    const AcGePoint3d pivot = state_.SelectionCentre();
    const GizmoAxes axes = state_.cage.axes();
    return state_.moveSelected(
        [&](const AcGePoint3d& p) { return Scaled(p, pivot, factor, state_.lockedHandle, axes); });
}

void GizmoLoop::scale(const AcGePoint3d& to) {
    const GizmoPlace gizmo = state_.gizmo();
    const double factor = ScaleFactor(to - gizmo.centre, state_.lockedHandle, gizmo.size, gizmo.axes);
    if (!scaleBy(factor)) return PrintLine(kTooFar);
    PrintText(TranslateFormat(L"\n%d个控制点已沿%s缩放，因子=%.3f。", count(),
                              HandleName(state_.lockedHandle), factor));
}

void GizmoLoop::scaleByNumber() {
    if (!IsAxis(state_.lockedHandle) && state_.lockedHandle != kCentre)
        return PrintLine(L"\n请先悬停锁定一个轴（X/Y/Z）或中心（均匀），再输入倍数。");
    ads_real factor = 1.0;
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    if (acedGetReal(Translate(L"\n输入缩放倍数（正实数）: "), &factor) != RTNORM || !(factor > 0))
        return PrintLine(L"\n已取消输入倍数。");
    if (!scaleBy(factor)) return PrintLine(kTooFar);
    PrintText(TranslateFormat(L"\n已按输入倍数 %.3f 缩放。", factor));
}

void GizmoLoop::rotate(const AcGePoint3d& from) {
    constexpr double kHalfTurn = 3.1415926535, kDegrees = 180.0;
    const int plane = state_.lockedHandle;
    const GizmoPlace gizmo = state_.gizmo();
    TransientGizmo& shown = state_.graphics.gizmo();
    {
        const ScreenMap screen = CurrentScreen();
        shown.rotateStart = from;
        shown.rotateStartPixel = shown.rotateCurrentPixel = screen.pixel(from);
        shown.rotateStartAngle = shown.rotateAngle =
            AngleInPlane(gizmo, screen, plane, shown.rotateStartPixel);
    }
    shown.rotating = true;
    state_.graphics.updateGizmo();
    PointQuestion question;
    question.prompt =
        TranslateFormat(L"\n%s平面旋转：拖动鼠标确定角度，点击完成或 [ESC]取消: ", HandleName(plane));
    question.base = &gizmo.centre;
    const PromptPoint to = AskPoint(question);
    shown.rotating = false;
    if (!to) return PrintLine(L"\n已取消旋转。");
    const ScreenMap screen = CurrentScreen();
    const double angle = Turn(screen.pixel(gizmo.centre), screen.pixel(from), screen.pixel(to.world),
                              SeenFromBehind(gizmo, screen, plane));
    if (!state_.moveSelected(
            [&](const AcGePoint3d& p) { return Rotated(p, gizmo.centre, angle, plane, gizmo.axes); }))
        return PrintLine(kTooFar);
    PrintText(TranslateFormat(L"\n%d个控制点已绕%s平面旋转 %.1f度。", count(), HandleName(plane),
                              angle * kDegrees / kHalfTurn));
}

} // namespace

bool RunGizmoLoop(CageState& state) {
    const GizmoListening listening(state);
    if (!listening.ok()) return PrintLine(L"\n错误：无法获取当前文档！"), false;
    GizmoLoop(state).run();
    return true;
}

} // namespace corvane::deform
