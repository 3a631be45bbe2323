// The gizmo loop, walked by scripts through every state of its three modes.
#include "deform/cage/cage_loops.h"

using namespace support;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {
// The points on the left, with the gizmo at 0,50.
const std::wstring kLeftSide = L"M\n-1,-1\n1,101\n";
constexpr char kEntered[] = "#\n锁形模式：解锁\n> M\n"
                            "指定第一个角点 [或选择框选方式圆形(C)/任意多边形(P)]: -1,-1\n"
                            "指定对角点: 1,101\n已选中 3 个控制点。\n"
                            "Gizmo已设为移动模式（按DEFAULTGIZMO），进入Gizmo交互。\n"
                            "控制点保持选中状态，可继续操作，或按[M]重新选择。\n";
} // namespace

TEST_F(CageLoops, MovesGoAlongAxesInPlanesAndAboutOrigins) {
    const std::wstring plane = beside(20, 50, 80, 80), edge = beside(30, 60, 80, -15),
                       again = beside(35, 60, 80, 80), nowhere = beside(35, 60, 300, 300),
                       label = beside(35, 60, 24, -24), centre = beside(35, 60, -17, 8);
    const LoopRun walk =
        run(kLeftSide + L"20,51\n" + plane + L"\n30,60\n\nmove " + edge + L"\n\n35,65\n^C\nmove " + again +
            L"\n\n^C\n" + nowhere + L"\n" + label + L"\nG\nG\n" + centre +
            L"\n0,0\n1,0\nU\nM\n-1,-1\n101,1\nM\n200,200\n300,300\nX\n");
    const auto said = [](const std::wstring& place) { return host::utf8(place); };
    EXPECT_TRUE(sameLines(kEntered +
                              std::string("[Gizmo: 移动模式] 20,51\n"
                                          "3个控制点沿X移动了 (20.00, 0.00, 0.00)。\n"
                                          "[Gizmo: 移动模式] ") +
                              said(plane) + R"(
已锁定XY平面。点击在该面内移动，[ESC]解锁，空格切换面。
[Gizmo: 移动模式 | 已锁定XY平面] 30,60
3个控制点沿XY移动了 (10.00, 10.00, 0.00)。
[Gizmo: 移动模式 | 已锁定XY平面] 
[Gizmo: 移动模式 | 已锁定XY平面] move )" +
                              said(edge) + R"(
已切换到XZ平面（空格切换）。
[Gizmo: 移动模式 | 已锁定XZ平面] 35,65
3个控制点沿XZ移动了 (5.00, 0.00, 0.00)。
[Gizmo: 移动模式 | 已锁定XZ平面] *Cancel*
已解除锁定。
[Gizmo: 移动模式] move )" + said(again) +
                              R"(
已锁定XY平面（空格锁定）。点击在该面内移动，[ESC]解锁，空格切换面。
[Gizmo: 移动模式 | 已锁定XY平面] *Cancel*
已解除锁定。
[Gizmo: 移动模式] )" + said(nowhere) +
                              R"(
[Gizmo: 移动模式] )" + said(label) +
                              R"(
已切换到缩放模式。
[Gizmo: 缩放模式] G
已切换到旋转模式。
[Gizmo: 旋转模式] G
已切换到移动模式。
[Gizmo: 移动模式] )" + said(centre) +
                              R"(
指定Gizmo新原点位置: 0,0
Gizmo原点已移动到新位置。
[Gizmo: 移动模式] 1,0
3个控制点沿X移动了 (1.00, 0.00, 0.00)。
[Gizmo: 移动模式] U
已撤销上一步（剩余 3 步可撤销）。
[Gizmo: 移动模式] M
指定第一个角点 [或选择框选方式圆形(C)/任意多边形(P)]: -1,-1
指定对角点: 101,1
已选中 2 个控制点。
[Gizmo: 移动模式] M
指定第一个角点 [或选择框选方式圆形(C)/任意多边形(P)]: 200,200
指定对角点: 300,300
已选中 0 个控制点。
#
锁形模式：解锁
> X
退出FFD命令。)",
                          brief(walk.said)));
    EXPECT_THAT(xs(), ElementsAre(35, 35, 35, 50, 50, 50, 100, 100, 100));
    EXPECT_EQ(5, cage.applied); // four moves and an undo
}

TEST_F(CageLoops, ScalesLockWhatTheCursorTouchesOrTakeANumber) {
    const std::wstring onY = beside(0, 50, 0, 200);
    const LoopRun walk =
        run(kLeftSide + L"G\nS\nmove " + onY + L"\n\n5,72.627417\nS\n2\nS\n\nS\n^C\n^C\nmove 30,30\nO\n" +
            L"0,0\nS\n" + L"move 0,5\nS\n0.5\nU\nU\nU\nU\n^C\n^C\nX\n");
    EXPECT_TRUE(sameLines(kEntered +
                              std::string("[Gizmo: 移动模式] G\n"
                                          "已切换到缩放模式。\n"
                                          "[Gizmo: 缩放模式] S\n"
                                          "请先悬停锁定一个轴（X/Y/Z）或中心（均匀），再输入倍数。\n"
                                          "[Gizmo: 缩放模式] move ") +
                              host::utf8(onY) + R"(
A point is needed, such as 10,20 or @5<45.5,72.627417
3个控制点已沿Y缩放，因子=2.000。
[Gizmo: 缩放模式 | 已锁定Y] S
输入缩放倍数（正实数）: 2
已按输入倍数 2.000 缩放。
[Gizmo: 缩放模式 | 已锁定Y] S
输入缩放倍数（正实数）: 
已取消输入倍数。
[Gizmo: 缩放模式 | 已锁定Y] S
输入缩放倍数（正实数）: *Cancel*
已取消输入倍数。
[Gizmo: 缩放模式 | 已锁定Y] *Cancel*
已解除锁定。
[Gizmo: 缩放模式] move 30,30
O
指定Gizmo新原点位置: 0,0
Gizmo原点已移动到新位置。
[Gizmo: 缩放模式] S
请先悬停锁定一个轴（X/Y/Z）或中心（均匀），再输入倍数。
[Gizmo: 缩放模式] move 0,5
S
输入缩放倍数（正实数）: 0.5
已按输入倍数 0.500 缩放。
[Gizmo: 缩放模式 | 已锁定Y] U
已撤销上一步（剩余 2 步可撤销）。
[Gizmo: 缩放模式 | 已锁定Y] U
已撤销上一步（剩余 1 步可撤销）。
[Gizmo: 缩放模式 | 已锁定Y] U
已撤销上一步（剩余 0 步可撤销）。
[Gizmo: 缩放模式 | 已锁定Y] U
无更多可撤销步骤。
[Gizmo: 缩放模式 | 已锁定Y] *Cancel*
已解除锁定。
[Gizmo: 缩放模式] *Cancel*
已取消多选。
#
锁形模式：解锁
> X
退出FFD命令。)",
                          brief(walk.said)));
    EXPECT_EQ(100, cage.points[2].position.y);
}

TEST_F(CageLoops, NothingGoesBeyondAllNumbers) {
    const LoopRun walk =
        run(kLeftSide + L"G\nmove " + beside(0, 50, 0, 200) + L"\nS\n1e300\nS\n1e300\n^C\n^C\nX\n");
    EXPECT_THAT(walk.said, testing::HasSubstr("控制点将超出数值范围，未作移动。"));
    for (const FlatCage::ControlPoint& point : cage.points) EXPECT_TRUE(std::isfinite(point.position.y));
    EXPECT_EQ(1, cage.applied); // by the first of both
}

TEST_F(CageLoops, ScalesGoAboutThePivot) {
    run(kLeftSide + L"G\nmove 0,58\nS\n2\n^C\n^C\nX\n");
    EXPECT_EQ(-50, cage.points[0].position.y);
    EXPECT_EQ(150, cage.points[2].position.y);
    run(L"M\n-1,-60\n1,160\nG\nO\n0,50\nmove 0,58\n1,51.131371\n^C\n^C\nX\n"); // a tenth of the gizmo
    EXPECT_NEAR(40, cage.points[0].position.y, 1e-3);
    EXPECT_NEAR(60, cage.points[2].position.y, 1e-3);
}

TEST_F(CageLoops, RotationsTakeTwoClicksInALockedPlane) {
    constexpr double kOnRing = 305.47 * 0.7 * 0.70710678;
    const std::wstring ring = beside(0, 50, kOnRing, kOnRing);
    const LoopRun walk = run(kLeftSide + L"G\nG\n\nmove " + ring +
                             L"\n\n20,50\nmove 20,60\n0,70\n20,50\n^C\n20,50\n\n^C\nmove " + ring +
                             L"\n^C\n\nU\n^C\nmove 30,30\n100,100\n^C\nX\n");
    EXPECT_TRUE(sameLines(kEntered +
                              std::string("[Gizmo: 移动模式] G\n"
                                          "已切换到缩放模式。\n"
                                          "[Gizmo: 缩放模式] G\n"
                                          "已切换到旋转模式。\n"
                                          "[Gizmo: 旋转模式] \n"
                                          "[Gizmo: 旋转模式] move ") +
                              host::utf8(ring) + R"(
[Gizmo: 旋转模式 | 已锁定XY] 20,50
XY平面旋转：拖动鼠标确定角度，点击完成或 [ESC]取消: move 20,60
XY平面旋转：拖动鼠标确定角度，点击完成或 [ESC]取消: 0,70
3个控制点已绕XY平面旋转 90.0度。
[Gizmo: 旋转模式 | 已锁定XY] 20,50
XY平面旋转：拖动鼠标确定角度，点击完成或 [ESC]取消: *Cancel*
已取消旋转。
[Gizmo: 旋转模式 | 已锁定XY] 20,50
XY平面旋转：拖动鼠标确定角度，点击完成或 [ESC]取消: 
已取消旋转。
[Gizmo: 旋转模式 | 已锁定XY] *Cancel*
已解除锁定。
[Gizmo: 旋转模式] move )" + host::utf8(ring) +
                              R"(
*Cancel*
已解除锁定。
[Gizmo: 旋转模式] 
已锁定XY平面（空格锁定）。点击两次完成旋转，[ESC]解锁。
[Gizmo: 旋转模式 | 已锁定XY] U
已撤销上一步（剩余 0 步可撤销）。
[Gizmo: 旋转模式 | 已锁定XY] *Cancel*
已解除锁定。
[Gizmo: 旋转模式] move 30,30
100,100
[Gizmo: 旋转模式] *Cancel*
已取消多选。
#
锁形模式：解锁
> X
退出FFD命令。)",
                          brief(walk.said)));
    EXPECT_THAT(std::vector<int>(3, xs()[0]), Each(0)); // taken back
}

TEST_F(CageLoops, RotatedPointsAreWhereTheCursorTookThem) {
    const std::wstring start = kLeftSide + L"G\nG\nmove " + beside(0, 50, 151.2, 151.2) + L"\n";
    run(start + L"20,50\n0,70\n^C\n^C\nX\n");
    EXPECT_NEAR(0, cage.points[0].position.distanceTo({50, 50, 0}), 1e-9);
    EXPECT_NEAR(0, cage.points[2].position.distanceTo({-50, 50, 0}), 1e-9);
}

// The told lines of the gizmo, in full.
TEST_F(CageLoops, EachStateTellsItsKeys) {
    const std::wstring plane = beside(0, 50, 80, 80);
    const std::string said = run(kLeftSide + plane + L"\nG\nmove 0,58\n^C\nmove 0,58\nO\n^C\nG\nmove " +
                                 beside(0, 50, 151.2, 151.2) + L"\nO\n^C\nG\n^C\nX\n")
                                 .said;
    for (const char* line :
         {"[Gizmo: 移动模式] 橡皮筋吸附轴亮显，[点击]移动 [点击面/空格]锁定面 [G]切换 [M]重选 [U]撤销 "
          "[ESC]取消多选: ",
          "[Gizmo: 移动模式 | 已锁定XY平面] 点击面内移动，[空格]切换面 [ESC]解锁 [G]切换 [M]重选 [U]撤销: ",
          "[Gizmo: 缩放模式] 悬停轴/中心即锁定，点击缩放 [S]输入倍数 [U]撤销 [G]切换 [M]重选 [O]原点 "
          "[ESC]取消多选: ",
          "[Gizmo: 缩放模式 | 已锁定Y] 点击缩放 [S]输入倍数 [U]撤销 [G]切换 [M]重选 [O]原点 [ESC]解锁: ",
          "[Gizmo: 旋转模式] 悬停面即锁定，[空格]锁定面，[G]切换 [M]重选 [O]原点 [U]撤销 [ESC]取消多选: ",
          "[Gizmo: 旋转模式 | 已锁定XY] 点击两次旋转，[G]切换 [M]重选 [U]撤销 [O]原点 [ESC]解锁: "})
        EXPECT_THAT(said, HasSubstr(line));
}

TEST_F(CageLoops, TheUsualModeIsThatOfDefaultgizmo) {
    const struct {
        short value;
        const char* mode;
    } rows[] = {{0, "移动"}, {1, "旋转"}, {2, "缩放"}, {3, "移动"}};
    for (const auto& row : rows) {
        corvane::WriteSysVar(L"DEFAULTGIZMO", row.value);
        EXPECT_THAT(run(kLeftSide + L"^C\nX\n").said, HasSubstr(std::string("Gizmo已设为") + row.mode))
            << row.value;
    }
    corvane::WriteSysVar(L"DEFAULTGIZMO", short(0));
}

TEST_F(CageLoops, PivotsOfOnesOwnLastAsLongAsTheSelection) {
    // About 0,0; after Esc and a new selection about its mean again.
    run(kLeftSide +
        L"G\nO\n0,0\nmove 0,8\nS\n2\nS\n2\n^C\n^C\nM\n-1,-1\n1,500\nG\nmove 0,208\nS\n0.5\n^C\n^C\nX\n");
    EXPECT_EQ(100, cage.points[0].position.y);
    EXPECT_EQ(200, cage.points[1].position.y);
    EXPECT_EQ(300, cage.points[2].position.y);
}

TEST_F(CageLoops, UnderALockMovesLeaveTheObjectsAlone) {
    const LoopRun walk = run(L"L\n" + kLeftSide + L"20,50\n^C\nX\n");
    EXPECT_EQ(0, cage.applied);
    EXPECT_FALSE(walk.deformed);
    EXPECT_THAT(xs(), ElementsAre(20, 20, 20, 50, 50, 50, 100, 100, 100));
}

TEST_F(CageLoops, SnapsServeTheNewOriginAlone) {
    drawing.addPolyline({{0, 0}, {70, 0}});
    corvane::WriteSysVar(L"OSMODE", short(1));
    const std::string said = run(kLeftSide + L"G\nO\n'SETVAR OSMODE\n\n^C\n'SETVAR OSMODE\n\n^C\nX\n").said;
    const size_t asked = said.find("<1>"), after = said.find("<0>");
    EXPECT_NE(std::string::npos, asked);
    EXPECT_NE(std::string::npos, after);
    EXPECT_LT(asked, after);
}
