// VINS, insert2p and mcopy on drawings.
#include <gmock/gmock.h>

#include <cmath>

#include "aids/insert/placement.h"
#include "support/drawing.h"

using support::Drawing;
using testing::HasSubstr;

namespace {

// A block "ARROW" of one line of length 4 along X from its insertion point.
void defineArrow(Drawing& drawing) {
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(Acad::eOk, drawing.database().getBlockTable(table, AcDb::kForWrite));
    auto* record = new AcDbBlockTableRecord;
    record->setName(L"ARROW");
    AcDbObjectId id;
    ASSERT_EQ(Acad::eOk, table->add(id, record));
    table->close();
    auto* line = new AcDbLine({0, 0, 0}, {4, 0, 0});
    record->appendAcDbEntity(id, line);
    line->close();
    record->close();
}

std::vector<AcDbObjectId> references(const Drawing& drawing) {
    std::vector<AcDbObjectId> found;
    for (const AcDbObjectId id : drawing.entities())
        if (id.objectClass()->isDerivedFrom(AcDbBlockReference::desc())) found.push_back(id);
    return found;
}

} // namespace

TEST(InsertAcross, BlocksStandOnTheCurveAlongItsTangent) {
    Drawing drawing;
    defineArrow(drawing);
    drawing.add(std::make_unique<AcDbCircle>(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 10));
    const std::string transcript = drawing.run(L"VINS\nARROW\n10,0\n30,0\n0,-4\n\n");
    EXPECT_THAT(transcript, HasSubstr("插入了< 2 >个图块。"));
    const auto placed = references(drawing);
    ASSERT_EQ(2u, placed.size());
    AcDbObjectPointer<AcDbBlockReference> right(placed[0], AcDb::kForRead), below(placed[1], AcDb::kForRead);
    EXPECT_LT(right->position().distanceTo({10, 0, 0}), 1e-9);
    EXPECT_NEAR(std::acos(0.0), right->rotation(), 1e-9) << "the circle runs upwards there";
    EXPECT_LT(below->position().distanceTo({0, -10, 0}), 1e-9);
    EXPECT_NEAR(0, std::remainder(below->rotation(), 4 * std::acos(0.0)), 1e-9);
}

TEST(InsertByTwoPoints, TheBlockReachesFromTheFirstPointToTheSecond) {
    Drawing drawing;
    defineArrow(drawing);
    drawing.run(L"insert2p\nARROW\n1,1\n1,9\n5,5\n5,5\n\n");
    const auto placed = references(drawing);
    ASSERT_EQ(1u, placed.size()) << "coinciding points insert nothing";
    AcDbObjectPointer<AcDbBlockReference> reference(placed[0], AcDb::kForRead);
    AcDbExtents extents;
    ASSERT_EQ(Acad::eOk, reference->getGeomExtents(extents));
    EXPECT_LT(extents.minPoint().distanceTo({1, 1, 0}), 1e-9);
    EXPECT_LT(extents.maxPoint().distanceTo({1, 9, 0}), 1e-9);
}

TEST(Insert, AnUnknownBlockIsToldAndTheLastOneIsOfferedAgain) {
    Drawing drawing;
    defineArrow(drawing);
    EXPECT_THAT(drawing.run(L"insert2p\nNOSUCH\n"), HasSubstr("图形中没有图块 \"NOSUCH\"。"));
    drawing.run(L"insert2p\narrow\n0,0\n1,0\n\n");
    EXPECT_THAT(drawing.run(L"insert2p\n\n0,0\n2,0\n\n"), HasSubstr("<arrow>"));
    EXPECT_EQ(2u, references(drawing).size());
}

TEST(MultipleCopy, EachPointMovesACopyOfTheWholeSelection) {
    Drawing drawing;
    drawing.addPolyline({{0, 0}, {1, 0}, {1, 1}});
    drawing.add2dPolyline(AcGePoint3dArray({{0, 5, 0}, {1, 5, 0}, {1, 6, 0}}), AcDb::k2dCubicSplinePoly);
    // Relative answers are shifts from the base point, for each copy.
    EXPECT_THAT(drawing.run(L"mcopy\nall\n\n0,0\n100,0\n@0,50\n\n"), HasSubstr("复制了< 4 >个对象。"));
    const auto all = drawing.entities();
    ASSERT_EQ(6u, all.size());
    for (size_t i = 0; i < 2; ++i) {
        AcDbExtents source, copy, second;
        AcDbObjectPointer<AcDbEntity> a(all[i], AcDb::kForRead), b(all[2 + i], AcDb::kForRead),
            c(all[4 + i], AcDb::kForRead);
        ASSERT_TRUE(a->getGeomExtents(source) == Acad::eOk && b->getGeomExtents(copy) == Acad::eOk &&
                    c->getGeomExtents(second) == Acad::eOk);
        EXPECT_LT((copy.minPoint() - source.minPoint() - AcGeVector3d(100, 0, 0)).length(), 1e-9);
        EXPECT_LT((second.maxPoint() - source.maxPoint() - AcGeVector3d(0, 50, 0)).length(), 1e-9);
    }
}
