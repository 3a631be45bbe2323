// CVFFD as a whole: what scripts leave in the drawing, also when they end too early.
#include <gmock/gmock.h>

#include "core/sysvar_stack.h"
#include "deform/cage/cage_loop.h"
#include "host/view/screen.h"
#include "host/view/transients.h"
#include "support/drawing.h"

using testing::HasSubstr;

namespace {

// A square of 100, wrapped in a lattice of 3 by 3, and the points on its right chosen.
const std::wstring kRightSide = L"CVFFD all\n\nN\nN\nM\n90,-20\n120,120\n";

double rightmost(const support::Drawing& drawing) {
    const AcDbObjectId id = drawing.only<AcDbPolyline>();
    AcDbObjectPointer<AcDbPolyline> square(id, AcDb::kForRead);
    AcDbExtents extents;
    EXPECT_EQ(Acad::eOk, square->getGeomExtents(extents));
    return extents.maxPoint().x;
}

} // namespace

TEST(FreeFormDeformation, ARunIsOneStepToTakeBack) {
    support::Drawing drawing;
    drawing.addPolyline({{0, 0}, {100, 0}, {100, 100}, {0, 100}}, true);
    drawing.database().undoLog().commit();
    const std::string before = drawing.bytes();
    // From 105,50 twenty to the right, twice; the second is taken back inside the command.
    const std::string said = drawing.run(kRightSide + L"125,51\n145,51\nU\n^C\n^C\n");
    EXPECT_THAT(said, HasSubstr("3个控制点沿X移动了 (20.00, 0.00, 0.00)。"));
    EXPECT_THAT(said, HasSubstr("FFD自由变形完成。"));
    EXPECT_FALSE(drawing.ranDry);
    EXPECT_GT(rightmost(drawing), 110);
    EXPECT_LT(rightmost(drawing), 120);
    drawing.run(L"U\n");
    EXPECT_EQ(before, drawing.bytes());
    EXPECT_THAT(drawing.run(L"CVFFD all\n\nN\nN\nX\n"), HasSubstr("FFD变形已取消。"));
}

TEST(FreeFormDeformation, AScriptThatRunsDryLeavesNothingBehind) {
    support::Drawing drawing;
    drawing.addPolyline({{0, 0}, {100, 0}, {100, 100}, {0, 100}}, true);
    corvane::WriteSysVar(L"OSMODE", short(37));
    // At the picks, in a drag, in a region, with the gizmo, and in the middle of a rotation.
    for (const wchar_t* rest : {L"", L"L\n105,105\n", L"M\n0,0\n", L"M\n90,-20\n120,120\n",
                                L"M\n90,-20\n120,120\nG\nG\nmove 113,50\n130,50\n"}) {
        drawing.run(L"CVFFD all\n\nN\nN\n" + std::wstring(rest));
        EXPECT_TRUE(drawing.ranDry) << host::utf8(rest);
        EXPECT_TRUE(acgiGetTransientManager()->entries().empty());
        EXPECT_TRUE(host::screen().vectors().empty());
        EXPECT_EQ(37, corvane::GetSysVarInt(L"OSMODE"));
    }
}
