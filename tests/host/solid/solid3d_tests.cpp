// Bodies in space: what shows of them, and what moving them does to their text.
#include "host/solid/solid3d.h"

#include <gtest/gtest.h>

#include "host/db/database.h"
#include "host/dxf/dxf.h"
#include "host/ent/register.h"
#include "host/solid/modeler_write.h"
#include "host/solid/region.h"

namespace {

// A ball of radius 2 about (1,0,0), and a body of one edge from (0,0,0) to (4,0,3). The first stands without
// a transform in version 4, the second with one, shifted by (10,20,30) and doubled, in version 7.
const char* const kBall = R"(400 6 1 0
8 Somebody 3 ASM 3 now
1 9.9999999999999995e-007 1e-010
body $-1 $1 $-1 $-1 #
lump $-1 $-1 $2 $0 #
shell $-1 $-1 $-1 $3 $-1 $1 #
face $-1 $-1 $-1 $2 $-1 $4 forward single #
sphere-surface $-1 1 0 0 2 1 0 0 0 0 1 forward_v I I I I #
point $-1 0 0 0 #
End-of-ACIS-data
)";
const char* const kEdge = R"(700 0 1 0
8 Somebody 3 ASM 3 now
1 9.9999999999999995e-007 1e-010
body $-1 -1 $-1 $-1 $-1 $1 #
transform $-1 -1 $-1 1 0 0 0 1 0 0 0 1 10 20 30 2
no_rotate no_reflect no_shear #
edge $-1 -1 $-1 $4 0 $5 5 $-1 $3 forward @7 unknown #
straight-curve $-1 -1 $-1 0 0 0 4 0 3 I I #
vertex $-1 -1 $-1 $2 $6 #
vertex $-1 -1 $-1 $2 $7 #
point $-1 -1 $-1 0 0 0 #
point $-1 -1 $-1 4 0 3 #
End-of-ACIS-data
)";

host::ModelerText read(const std::string& text) { return host::readModelerText(host::modelerGroups(text)); }

AcDbExtents boxOf(const host::ModelerText& modeler) {
    AcDbExtents box;
    for (const host::CurvePath& wire : host::wiresOf(modeler)) box.addExt(wire.extents());
    return box;
}

void expectBox(const AcDbExtents& box, const AcGePoint3d& low, const AcGePoint3d& high) {
    EXPECT_LT(box.minPoint().distanceTo(low), 1e-9);
    EXPECT_LT(box.maxPoint().distanceTo(high), 1e-9);
}

TEST(Bodies, ShowBallsAndEdgesWhereTheyStand) {
    EXPECT_EQ(3u, host::wiresOf(read(kBall)).size());
    expectBox(boxOf(read(kBall)), {-1, -2, -2}, {3, 2, 2});
    expectBox(boxOf(read(kEdge)), {10, 20, 30}, {18, 20, 36});
}

TEST(Bodies, MovingChangesTheTransformAlone) {
    const AcGeMatrix3d move = AcGeMatrix3d::translation({5, 6, 7}) * AcGeMatrix3d::scaling(3);
    const auto ball = host::movedModelerText(read(kBall), move),
               edge = host::movedModelerText(read(kEdge), move);
    ASSERT_TRUE(ball && edge);
    expectBox(boxOf(read(ball->substr(1))), {2, 0, 1}, {14, 12, 13});
    expectBox(boxOf(read(edge->substr(1))), {35, 66, 97}, {59, 66, 115});
    // The ball had none: it is a seventh record, counted in the head.
    EXPECT_NE(ball->npos, ball->find("400 7 1 0"));
    EXPECT_NE(ball->npos, ball->find("body $-1 $1 $-1 $6 #"));
    EXPECT_NE(edge->npos, edge->find("700 0 1 0"));
    EXPECT_EQ(8u, read(edge->substr(1)).records.size());
    // Back again.
    const auto back = host::movedModelerText(read(ball->substr(1)), move.inverse());
    expectBox(boxOf(read(back->substr(1))), {-1, -2, -2}, {3, 2, 2});
    // Neither a shear nor a body that nobody understands.
    AcGeMatrix3d shear;
    shear.entry[0][1] = 1;
    EXPECT_FALSE(host::movedModelerText(read(kBall), shear));
    EXPECT_FALSE(host::movedModelerText(read("400 1 1 0\na\nb\nbody $-1 #\n"), move));
    EXPECT_FALSE(host::movedModelerText(read(""), move));
}

TEST(Bodies, EntitiesKeepAllElseOfTheirData) {
    host::registerEntityClasses();
    host::registerSolidClasses();
    std::string drawing =
        "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  0\nENDSEC\n  0\nSECTION\n  2\n"
        "ENTITIES\n  0\n3DSOLID\n  5\nABC\n100\nAcDbEntity\n  8\n0\n100\nAcDbModelerGeometry\n";
    for (const host::Group group : host::modelerGroups(kBall))
        if (group.code != 100)
            drawing += "  " + std::to_string(group.code) + "\n" +
                       (group.code == 70 ? "1" : std::string(group.text)) + "\n";
    drawing += "100\nAcDb3dSolid\n350\n0\n  0\nENDSEC\n  0\nEOF\n";
    AcDbDatabase database(false);
    ASSERT_TRUE(host::readDrawingBytes(drawing, "ball.dxf", database, {}).ok);
    AcDbObjectId id;
    {
        AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForRead);
        for (const AcDbObjectId each : space->entities()) id = each;
    }
    AcDbObjectPointer<AcDb3dSolid> solid(id, AcDb::kForWrite);
    ASSERT_TRUE(solid);
    ASSERT_EQ(Acad::eOk, solid->transformBy(AcGeMatrix3d::translation({100, 0, 0})));
    AcDbExtents box;
    ASSERT_EQ(Acad::eOk, solid->getGeomExtents(box));
    expectBox(box, {99, -2, -2}, {103, 2, 2});
    solid.close();
    const std::string written = host::drawingBytes(database);
    EXPECT_NE(written.npos, written.find("100\nAcDb3dSolid\n350\n0\n"));
    AcDbDatabase again(false);
    ASSERT_TRUE(host::readDrawingBytes(written, "again.dxf", again, {}).ok);
    EXPECT_TRUE(written == host::drawingBytes(again));
}

} // namespace
