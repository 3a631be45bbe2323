// The control-point prompt and the choice of points by regions, walked by scripts through every state: what
// is said, where points go, when the cage is applied.
#include "deform/cage/cage_loops.h"

using namespace support;
using corvane::deform::ControlPoint;
using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(CageLoops, SinglePointsArePickedDraggedLockedAndTakenBack) {
    const LoopRun walk = run(LR"(10,10
60,60
L
100,100
110,120
L
50,0
^C
U
U
U
U
S
R
99,99
X
)");
    EXPECT_TRUE(sameLines(R"(#
锁形模式：解锁
> 10,10
picked 0
拖拽到新位置: 60,60
变形已应用。
#
锁形模式：解锁
> L
锁形模式：锁定（仅移动控制点，不变形物体）
#
锁形模式：锁定
> 100,100
picked 8
拖拽到新位置: 110,120
控制点已移动（锁形模式）。
#
锁形模式：锁定
> L
锁形已解除，当前控制点位置已设为新的初始位置。
#
锁形模式：解锁
> 50,0
picked 3
拖拽到新位置: *Cancel*
#
锁形模式：解锁
> U
已撤销上一步变形（剩余 2 步可撤销）。
#
锁形模式：解锁
> U
已撤销上一步变形（剩余 1 步可撤销）。
#
锁形模式：解锁
> U
已撤销上一步变形（剩余 0 步可撤销）。
#
锁形模式：解锁
> U
已撤销上一步变形（无更多可撤销步骤）。
#
锁形模式：解锁
> S
#
锁形模式：解锁
> R
#
锁形模式：解锁
> 99,99
未选中控制点，请重试。
#
锁形模式：解锁
> X
退出FFD命令。)",
                          brief(walk.said)));
    EXPECT_TRUE(walk.deformed && !walk.ranDry && !walk.leftOver);
    EXPECT_EQ(L"SR", cage.asked);
    EXPECT_EQ(4, cage.applied); // the drag and three undos; not the drag under the lock
    EXPECT_THAT(xs(), ElementsAre(0, 0, 0, 50, 50, 50, 100, 100));
    EXPECT_EQ(60, int(cage.points[0].initialPosition.x)); // taken over when the lock was undone
    EXPECT_EQ(3u, cage.points[0].trail.size());
}

TEST_F(CageLoops, PicksReachFifteenUnitsAndTiesGoToTheEarlierPoint) {
    run(L"65,50\n50,25\n65.1,50\n25,50\nX\n"); // dragged to 50,25, which is as near to 3 and 4
    EXPECT_EQ(25, int(cage.points[4].position.y));
    const LoopRun missed = run(L"84.9,50\nX\n");
    EXPECT_THAT(missed.said, HasSubstr("未选中控制点，请重试。"));
    cage.points[4].position = cage.points[3].position;
    EXPECT_THAT(run(L"50,0\n^C\n^C\n").said, HasSubstr("picked 3"));
    EXPECT_EQ(0, cage.points[3].selectionState);
}

TEST_F(CageLoops, UndoAppliesUnderALockAndDropsStepsOfAnotherCage) {
    run(L"L\n0,0\n-20,0\nU\nX\n");
    EXPECT_EQ(1, cage.applied);
    EXPECT_EQ(0, cage.points[0].position.x);
    run(L"L\n0,0\n-20,0\nR\nU\nX\n"); // the step is of nine points
    EXPECT_EQ(-20, cage.points[0].position.x);
}

TEST_F(CageLoops, RegionsChooseWhatIsSeenInside) {
    struct Row {
        const wchar_t* answers;
        std::vector<int> chosen;
    };
    const Row rows[] = {
        {L"M\n50,100\n0,50", {1, 2, 4, 5}},                              // corners count
        {L"M\nC\n50,50\n50", {1, 3, 4, 5, 7}},                           // the rim counts
        {L"M\nC\nP\n-10,-10\n110,-10\n110,110\n\n", {0, 3, 4, 6, 7, 8}}, // four on the edge or out
        {L"M\nP\nR\n-1,-1\n1,101", {0, 1, 2}},
        {L"M\nP\nC\n0,0\n0", {0}},
        {L"M\n200,200\n300,300", {}},
        {L"M\nP\n0,0\n100,100\n\n", {}}, // two corners hold nothing
        {L"M\nC\n0,0\n^C", {}},
        {L"M\n\n", {}}};
    for (const Row& row : rows) {
        FlatCage fresh;
        const std::wstring script =
            row.answers + std::wstring(L"\n") + (row.chosen.empty() ? L"X\n" : L"@0,-1\n");
        const std::string said = runLoop(fresh, script).said;
        const std::string count = "已选中 " + std::to_string(row.chosen.size()) + " 个控制点";
        EXPECT_EQ(!row.chosen.empty(), said.find(count) != std::string::npos) << host::utf8(row.answers);
    }
}

TEST_F(CageLoops, CtrlGoesOnChoosingAndTogglesWhileItIsDown) {
    const LoopRun walk = run(LR"(M
keys ctrl
-1,-1
1,101
-1,-1
101,1
keys none
49,-1
51,51
^C
X
)");
    EXPECT_TRUE(sameLines(R"(#
锁形模式：解锁
> M
指定第一个角点 [或选择框选方式圆形(C)/任意多边形(P)]: keys ctrl
指定第一个角点 [或选择框选方式圆形(C)/任意多边形(P)]: -1,-1
指定对角点: 1,101
Ctrl多选：当前选中 3 个控制点（Ctrl+框选继续，松开Ctrl结束）。
指定第一个角点 [或选择框选方式圆形(C)/任意多边形(P)]: -1,-1
指定对角点: 101,1
Ctrl多选：当前选中 4 个控制点（Ctrl+框选继续，松开Ctrl结束）。
指定第一个角点 [或选择框选方式圆形(C)/任意多边形(P)]: keys none
指定第一个角点 [或选择框选方式圆形(C)/任意多边形(P)]: 49,-1
指定对角点: 51,51
Ctrl多选：当前选中 4 个控制点（Ctrl+框选继续，松开Ctrl结束）。
已选中 4 个控制点。
Gizmo已设为移动模式（按DEFAULTGIZMO），进入Gizmo交互。
控制点保持选中状态，可继续操作，或按[M]重新选择。
[Gizmo: 移动模式] *Cancel*
已取消多选。
#
锁形模式：解锁
> X
退出FFD命令。)",
                          brief(walk.said)));
}

TEST_F(CageLoops, WithoutAnythingChosenCtrlIsAskedForOnceMore) {
    constexpr char kAsked[] = "当前未选中控制点，按下Ctrl即继续多选，或回车退出。";
    // Ctrl was let go with nothing left; Enter ends.
    const LoopRun left = run(L"M\nkeys ctrl\n-1,-1\n1,1\nkeys none\n-1,-1\n1,1\n\nX\n");
    EXPECT_THAT(left.said, HasSubstr(kAsked));
    EXPECT_THAT(left.said, testing::Not(HasSubstr("Gizmo")));
    // Alt takes away from nothing, and then a region is taken all the same.
    const LoopRun alt = run(L"M\nkeys alt\n-1,-1\n1,101\nkeys none\n-1,-1\n1,1\n^C\nX\n");
    EXPECT_THAT(alt.said, HasSubstr(kAsked));
    EXPECT_THAT(alt.said, HasSubstr("已选中 1 个控制点。"));
    // Both keys are as none.
    EXPECT_THAT(run(L"M\nkeys ctrl+alt\n-1,-1\n1,101\n^C\nX\n").said, HasSubstr("已选中 3 个控制点。"));
    // Esc ends also while Ctrl stays down, with what was chosen.
    EXPECT_THAT(run(L"M\nkeys ctrl\n-1,-1\n1,101\n^C\n^C\nX\n").said, HasSubstr("已选中 3 个控制点。"));
}

TEST_F(CageLoops, SnapsAreOffMeanwhileAndComeBack) {
    corvane::WriteSysVar(L"OSMODE", short(37));
    corvane::WriteSysVar(L"AUTOSNAP", short(1));
    run(L"0,0\n'SETVAR OSMODE\n\n'SETVAR AUTOSNAP\n\n^C\n");
    const std::string said = run(L"'SETVAR OSMODE\n\n'SETVAR AUTOSNAP\n\nX\n").said;
    EXPECT_THAT(said, HasSubstr("<0>"));
    EXPECT_THAT(said, HasSubstr("<9>"));
    EXPECT_EQ(37, corvane::GetSysVarInt(L"OSMODE"));
    EXPECT_EQ(1, corvane::GetSysVarInt(L"AUTOSNAP"));
}

// Without a document nobody tells of the cursor: what is selected is dragged as a group.
TEST(CageLoopsAlone, WithoutADocumentTheSelectionIsDraggedAsOne) {
    { const Drawing start; }
    ASSERT_EQ(nullptr, curDoc());
    FlatCage cage;
    const LoopRun walk =
        runLoop(cage, L"M\n-1,-1\n1,101\n0,100\n10,50\nL\n12,35\n20,50\n200,200\n0,0\n^C\n^C\n");
    EXPECT_THAT(walk.said, HasSubstr("错误：无法获取当前文档！"));
    EXPECT_THAT(walk.said, HasSubstr("当前多选保持：3 个控制点"));
    EXPECT_THAT(walk.said, HasSubstr("3个控制点已同步移动，变形已应用。"));
    EXPECT_THAT(walk.said, HasSubstr("3个控制点已移动（锁形模式）。"));
    EXPECT_THAT(walk.said, HasSubstr("未选中控制点，请重试。")); // far away: the selection ends
    EXPECT_THAT(walk.said, testing::Not(HasSubstr("picked")));   // 0,0 is no control point any more
    EXPECT_EQ(20, cage.points[0].position.x);
    EXPECT_EQ(1, cage.applied);
    const LoopRun cancelled = runLoop(cage, L"M\n15,-1\n25,101\n20,50\n^C\nX\n");
    EXPECT_THAT(cancelled.said, HasSubstr("已取消多选。"));
}
