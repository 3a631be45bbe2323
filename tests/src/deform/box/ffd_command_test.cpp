// CVFFD from its first prompt to its last word, in scripts. The loop's own states are walked in deform/cage.
#include <gmock/gmock.h>

#include <cmath>

#include "support/drawing.h"

namespace corvane {
namespace {

using support::Drawing;
using testing::HasSubstr;
using testing::Not;

AcGePoint2d vertex(AcDbObjectId id, unsigned index) {
    AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    AcGePoint2d point;
    EXPECT_TRUE(polyline && polyline->getPointAt(index, point) == Acad::eOk);
    return point;
}

double elevation(AcDbObjectId id) { return AcDbObjectPointer<AcDbPolyline>(id, AcDb::kForRead)->elevation(); }

// The lattice of a square of 100 reaches from -5 to 105.
TEST(FreeFormDeformCommand, DragsACornerAndUndoesTheRunInOneStep) {
    Drawing drawing;
    const AcDbObjectId square = drawing.addPolyline({{0, 0}, {100, 0}, {100, 100}, {0, 100}}, true);
    const std::string before = drawing.bytes();
    const std::string said = drawing.run(L"CVFFD\nall\n\nN\nN\n105,105\n@110,0\nX\n");
    EXPECT_THAT(said, HasSubstr("已选中 1 个实体。"));
    EXPECT_THAT(said, HasSubstr("当前控制点数量：3x3x1（默认3x3x3）"));
    EXPECT_THAT(said, HasSubstr("不细分节点，仅对原有节点进行变形。"));
    EXPECT_THAT(said, HasSubstr("FFD Box 控制网格已创建，共 9 个控制点。"));
    EXPECT_THAT(said, HasSubstr("已采样 1 个实体的顶点数据。"));
    EXPECT_THAT(said, HasSubstr("已选中控制点 [2, 2, 0]"));
    EXPECT_THAT(said, HasSubstr("FFD自由变形完成。"));
    EXPECT_FALSE(drawing.ranDry);
    // The corner weighs u²v² where the vertex lies: u = v = 105/110.
    const double u = 105.0 / 110;
    EXPECT_NEAR(100 + 110 * u * u * u * u, vertex(square, 2).x, 1e-9);
    EXPECT_EQ(100, vertex(square, 2).y);
    drawing.run(L"U\n");
    EXPECT_TRUE(before == drawing.bytes());
}

TEST(FreeFormDeformCommand, LeavingWithoutAMoveChangesNothing) {
    Drawing drawing;
    drawing.addPolyline({{0, 0}, {100, 0}, {100, 100}});
    const std::string before = drawing.bytes();
    EXPECT_THAT(drawing.run(L"CVFFD\nall\n\nN\nY\n\nX\n"), HasSubstr("FFD变形已取消。"));
    EXPECT_TRUE(before == drawing.bytes());
    EXPECT_THAT(drawing.run(L"CVFFD\n\n"), HasSubstr("未选中任何实体。"));
}

TEST(FreeFormDeformCommand, CountsAreHeldTo16AndSettingsRebuildTheLattice) {
    Drawing drawing;
    drawing.addPolyline({{0, 0}, {100, 0}, {100, 100}});
    const std::string said = drawing.run(L"CVFFD\nall\n\nY\n1441=99\n1442=x\n1443=2\nOK\nY\n77\n"
                                         L"S\n\"X方向控制点数 (1-16):\"=2\nOK\nS\nCANCEL\nX\n");
    EXPECT_THAT(said, HasSubstr("控制点数量已设置为：16x1x2"));
    EXPECT_THAT(said, HasSubstr("细分精度：10 级"));
    EXPECT_THAT(said, HasSubstr("共 32 个控制点。"));
    EXPECT_THAT(said, HasSubstr("控制点数量已更新为：2x1x2。"));
    EXPECT_EQ(said.find("已更新为"), said.rfind("已更新为")); // Cancel rebuilds nothing
}

TEST(FreeFormDeformCommand, ResetWrapsWhatTheRunHasMade) {
    Drawing drawing;
    const AcDbObjectId square = drawing.addPolyline({{0, 0}, {100, 0}, {100, 100}, {0, 100}}, true);
    // The middle point goes up; then a corner of the lattice round the square where it is now.
    const std::string said = drawing.run(L"CVFFD\nall\n\nN\nN\n50,50\n50,50,80\nR\n105,105\n@0,0,11\nX\n");
    EXPECT_THAT(said, HasSubstr("控制点已重置，网格已更新包含变形后的全部物体。"));
    // What a middle and a corner point weigh at the four vertices, as their mean: u = 105/110 or its rest.
    const double u = 105.0 / 110, r = 1 - u;
    const double middle = std::pow(2 * u * r, 2), corner = std::pow(u * u + r * r, 2) / 4;
    EXPECT_NEAR(80 * middle + 11 * corner, elevation(square), 1e-9);
    EXPECT_EQ(100, vertex(square, 2).x);
}

TEST(FreeFormDeformCommand, AfterSubdivisionOldCurvesAreSplinesAndSettingsLetThemGo) {
    Drawing drawing;
    drawing.add(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(100, 100, 0)));
    const std::string said =
        drawing.run(L"CVFFD\nall\n\nN\nY\n2\n105,105\n120,90\nS\nOK\n105,105\n200,200\nX\n");
    EXPECT_THAT(said, HasSubstr("细分精度：2 级"));
    AcDbObjectPointer<AcDbSpline> spline(drawing.only<AcDbSpline>(), AcDb::kForRead);
    AcGePoint3d end;
    spline->getEndPoint(end);
    EXPECT_LT(end.x, 120); // the second move had no object any more
}

TEST(FreeFormDeformCommand, ObjectsOnLockedLayersStay) {
    Drawing drawing;
    drawing.addPolyline({{0, 0}, {100, 0}, {100, 100}});
    const std::string before = drawing.bytes();
    EXPECT_THAT(drawing.run(L"-LAYER\nLO\n0\n\n"), Not(HasSubstr("Unknown")));
    const std::string locked = drawing.bytes();
    drawing.run(L"CVFFD\nall\n\nN\nN\n105,105\n@110,0\nX\n");
    EXPECT_TRUE(locked == drawing.bytes());
    EXPECT_FALSE(before == locked);
}

} // namespace
} // namespace corvane
