// Kinds whose groups stay as they came: exact round trips, and what they show of them.
#include "host/ent/blockreference.h"
#include "host/ent/dimension.h"
#include "host/ent/leader.h"
#include "host/ent/line.h"
#include "host/ent/mline.h"
#include "host/ent/raster_image.h"
#include "host/ent/subdmesh.h"
#include "host/ent/viewport.h"
#include "kinds_support.h"

namespace {

const std::string kMesh = // a pyramid over a square, with a creased edge
    "100|AcDbSubDMesh|71|2|72|0|91|1|92|5|10|0|20|0|30|0|10|2|20|0|30|0|10|2|20|2|30|0|10|0|20|2|30|0|"
    "10|1|20|1|30|3|93|21|90|4|90|0|90|1|90|2|90|3|90|3|90|0|90|1|90|4|90|3|90|1|90|2|90|4|90|3|90|2|90|3|"
    "90|4|90|3|90|3|90|0|90|4|94|1|90|0|90|1|95|1|140|2|90|0";
const std::string kRotated =
    "100|AcDbDimension|280|0|2|*D1|10|9|20|5|30|0|11|6|21|5.5|31|0|70|32|71|5|42|6|3|Standard|"
    "100|AcDbAlignedDimension|13|3|23|1|33|0|14|9|24|2|34|0|50|30|100|AcDbRotatedDimension";
const std::string kLeader =
    "100|AcDbLeader|3|Standard|71|1|73|0|40|3|41|35|76|3|10|0|20|0|30|0|10|4|20|3|30|0|"
    "10|8|20|3|30|0|340|1F|213|1|223|0|233|0";
const std::string kMline = // two strokes a unit apart, the lower one with a gap
    "100|AcDbMline|2|STANDARD|340|18|40|1|70|0|71|1|72|2|73|2|10|0|20|0|30|0|210|0|220|0|230|1|"
    "11|0|21|0|31|0|12|1|22|0|32|0|13|0|23|1|33|0|74|2|41|0|41|0|75|0|74|4|41|-1|41|0|41|3|41|5|75|0|"
    "11|10|21|0|31|0|12|1|22|0|32|0|13|0|23|1|33|0|74|2|41|0|41|0|75|0|74|2|41|-1|41|0|75|0";
const std::string kImage =
    "100|AcDbRasterImage|90|0|10|100|20|50|30|0|11|0.5|21|0|31|0|12|0|22|0.5|32|0|13|20|23|10|"
    "340|247|70|7|280|0|281|50|282|50|283|0|71|1|91|2|14|-0.5|24|-0.5|14|19.5|24|9.5";
const std::string kWipeout =
    "100|AcDbWipeout|90|0|10|910|20|-90|30|0|11|90|21|0|31|0|12|0|22|90|32|0|13|1|23|1|340|0|"
    "70|7|280|1|281|50|71|2|91|4|14|-0.5|24|0.5|14|0.5|24|0.5|14|-0.5|24|-0.5|14|-0.5|24|0.5";
const std::string kViewport =
    "100|AcDbViewport|10|128.5|20|97.5|30|0|40|400|41|200|68|1|69|2|12|1|22|2|16|0|26|0|36|1|"
    "42|50|45|100|51|90|1||281|0";

AcDbObjectId place(AcDbDatabase& drawing, AcDbEntity* entity, AcDbObjectId block = {}) {
    AcDbObjectPointer<AcDbBlockTableRecord> record(block.isNull() ? drawing.modelSpaceId() : block,
                                                   AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    return id;
}

} // namespace

TEST(Grouped, EveryGroupComesBackInItsOrder) {
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbSubDMesh>(kMesh)), kMesh);
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbDimension>(kRotated)), kRotated);
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbLeader>(kLeader)), kLeader);
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbMline>(kMline)), kMline);
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbRasterImage>(kImage)), kImage);
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbWipeout>(kWipeout)), kWipeout);
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbViewport>(kViewport)), kViewport);
    const std::string arc = "100|AcDbDimension|2|*D2|70|37|100|AcDbArcDimension|13|1|23|2|33|0";
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbArcDimension>(arc)), arc);
}

TEST(Grouped, ImagesOfTranslationsAndBackAreTheSame) {
    const AcGeMatrix3d there = AcGeMatrix3d::translation({8, -4, 2}), back = there.inverse();
    const auto check = [&](auto entity, const std::string& rows) {
        ASSERT_EQ(entity->transformBy(there), Acad::eOk);
        EXPECT_NE(kinds::rowsOf(*entity), rows);
        ASSERT_EQ(entity->transformBy(back), Acad::eOk);
        EXPECT_EQ(kinds::rowsOf(*entity), rows);
    };
    check(kinds::made<AcDbSubDMesh>(kMesh), kMesh);
    check(kinds::made<AcDbLeader>(kLeader), kLeader);
    check(kinds::made<AcDbMline>(kMline), kMline);
    check(kinds::made<AcDbRasterImage>(kImage), kImage);
    check(kinds::made<AcDbViewport>(kViewport), kViewport);
}

TEST(Grouped, AMeshShowsItsFacesEdgesOnce) {
    const auto mesh = kinds::made<AcDbSubDMesh>(kMesh);
    Adesk::Int32 faces = 0, level = 0;
    mesh->numOfFaces(faces), mesh->subdLevel(level);
    EXPECT_EQ(faces, 5);
    EXPECT_EQ(level, 1);
    EXPECT_EQ(mesh->wires().edges.size(), 8u);
    EXPECT_NEAR(kinds::Sketch(*mesh).length(), 8 + 4 * std::sqrt(11), 1e-9);
    ASSERT_EQ(mesh->setVertexAt(4, {1, 1, -5}), Acad::eOk);
    kinds::expectBox(kinds::boxOf(*mesh), {0, 0, -5}, {2, 2, 0});
    AcDbSubDMesh other;
    EXPECT_EQ(other.setSubDMesh({{0, 0, 0}}, {3, 0, 1, 2}, 0), Acad::eInvalidInput);
    EXPECT_EQ(other.setSubDMesh({{0, 0, 0}}, {2, 0}, 0), Acad::eInvalidInput);
    ASSERT_EQ(other.setSubDMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {3, 0, 1, 2}, 0), Acad::eOk);
    const auto again = kinds::made<AcDbSubDMesh>(kinds::rowsOf(other));
    EXPECT_EQ(again->wires().edges.size(), 3u);
}

TEST(Grouped, ADimensionShowsItsBlockWhereItWasMovedTo) {
    AcDbDatabase drawing;
    AcDbObjectId block;
    {
        AcDbObjectPointer<AcDbBlockTable> table(drawing.blockTableId(), AcDb::kForWrite);
        auto* record = new AcDbBlockTableRecord;
        record->setName(L"*D1");
        ASSERT_EQ(table->add(block, record), Acad::eOk);
        record->close();
    }
    std::wstring name;
    {
        AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
        name = record->name();
    }
    place(drawing, new AcDbLine({3, 5, 0}, {9, 5, 0}), block);
    std::string rows = kRotated;
    rows.replace(rows.find("*D1"), 3, host::utf8(name));
    const AcDbObjectId id = place(drawing, kinds::made<AcDbDimension>(rows, &drawing).release());
    AcDbObjectPointer<AcDbDimension> dimension(id, AcDb::kForWrite);
    EXPECT_EQ(dimension->kind(), AcDbDimension::kRotated);
    EXPECT_EQ(dimension->dimBlockId(), block);
    kinds::expectBox(kinds::boxOf(*dimension.object()), {3, 5, 0}, {9, 5, 0});
    ASSERT_EQ(dimension->transformBy(AcGeMatrix3d::translation({1, 2, 0})), Acad::eOk);
    ASSERT_EQ(dimension->transformBy(AcGeMatrix3d::translation({0, 2, 0})), Acad::eOk);
    EXPECT_EQ(dimension->transformBy(AcGeMatrix3d::scaling(2)), Acad::eNotApplicable);
    kinds::expectBox(kinds::boxOf(*dimension.object()), {4, 9, 0}, {10, 9, 0});
    kinds::expectPoint(dimension->dimLinePoint(), {10, 9, 0});
    kinds::expectPoint(dimension->textPosition(), {7, 9.5, 0});
    EXPECT_NE(kinds::rowsOf(*dimension.object(), &drawing).find("31|0|12|1|22|4|32|0|70|32"),
              std::string::npos);
    const kinds::Sketch sketch(*dimension.object());
    ASSERT_EQ(sketch.lines.size(), 1u);
    kinds::expectPoint(sketch.lines[0][0], {4, 9, 0});
    EXPECT_TRUE(drawing.blockReferences().empty()); // it shows the block without being a reference
    AcDbVoidPtrArray parts;
    ASSERT_EQ(dimension->explode(parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 1);
    delete static_cast<AcDbEntity*>(parts[0]);
}

TEST(Grouped, DimensionsOfOldFilesGetTheMarkersOfTheirKind) {
    const auto dimension =
        kinds::made<AcDbDimension>("2|*D1|10|9|20|5|30|0|13|3|23|1|33|0|14|9|24|2|34|0|70|0|50|90");
    EXPECT_EQ(kinds::rowsOf(*dimension),
              "100|AcDbDimension|2|*D1|10|9|20|5|30|0|70|0|100|AcDbAlignedDimension|"
              "13|3|23|1|33|0|14|9|24|2|34|0|50|90|100|AcDbRotatedDimension");
    const auto radial = kinds::made<AcDbDimension>("10|9|20|5|30|0|15|3|25|1|35|0|70|4|40|2");
    EXPECT_EQ(kinds::rowsOf(*radial), "100|AcDbDimension|10|9|20|5|30|0|70|4|100|AcDbRadialDimension|"
                                      "15|3|25|1|35|0|40|2");
}

TEST(Grouped, ALeaderIsACurveWithAnArrowAtItsStart) {
    const auto leader = kinds::made<AcDbLeader>(kLeader);
    double length = 0, end = 0;
    leader->getEndParam(end), leader->getDistAtParam(end, length);
    EXPECT_NEAR(length, 9, 1e-12);
    const kinds::Sketch sketch(*leader);
    ASSERT_EQ(sketch.areas.size(), 1u);
    const auto& arrow = sketch.areas[0][0];
    kinds::expectPoint(arrow[0], {0, 0, 0});
    EXPECT_NEAR(((arrow[1] - arrow[0]) + (arrow[2] - arrow[0])).length() / 2, leader->arrowSize(), 1e-12);
    ASSERT_EQ(leader->setVertexAt(1, {0.1, 0, 0}), Acad::eOk); // no room for an arrow any more
    EXPECT_TRUE(kinds::Sketch(*leader).areas.empty());
    ASSERT_EQ(leader->transformBy(AcGeMatrix3d::rotation(std::acos(-1), AcGeVector3d::kZAxis)), Acad::eOk);
    kinds::expectPoint(leader->lastVertex(), {-8, -3, 0}, 1e-12);
    EXPECT_NE(kinds::rowsOf(*leader).find("213|-1"), std::string::npos);
}

TEST(Grouped, MultipleLinesHaveTheirElementsAndGaps) {
    const auto mline = kinds::made<AcDbMline>(kMline);
    ASSERT_EQ(mline->strokes().size(), 3u);
    EXPECT_NEAR(kinds::Sketch(*mline).length(), 10 + 3 + 5, 1e-12);
    kinds::expectBox(kinds::boxOf(*mline), {0, -1, 0}, {10, 0, 0});
    const AcGeMatrix3d move =
        AcGeMatrix3d::rotation(0.7, AcGeVector3d(1, 2, 3), {4, 5, 6}) * AcGeMatrix3d::scaling(3);
    const auto before = mline->strokes();
    ASSERT_EQ(mline->transformBy(move), Acad::eOk);
    const auto after = mline->strokes();
    for (size_t i = 0; i < 3; ++i) {
        kinds::expectPoint(after[i].from, move * before[i].from);
        kinds::expectPoint(after[i].to, move * before[i].to);
    }
    EXPECT_EQ(mline->transformBy(AcGeMatrix3d::scaling(AcGeScale3d(1, 2, 1))),
              Acad::eCannotScaleNonUniformly);
}

TEST(Grouped, PicturesShowTheirFrameClippedOnesTheirBoundary) {
    kinds::expectBox(kinds::boxOf(*kinds::made<AcDbRasterImage>(kImage)), {100, 50, 0}, {110, 55, 0});
    const auto wipeout = kinds::made<AcDbWipeout>(kWipeout);
    AcGePoint3dArray corners;
    ASSERT_EQ(wipeout->getVertices(corners), Acad::eOk);
    ASSERT_EQ(corners.length(), 3);
    kinds::expectPoint(corners[0], {910, -90, 0}); // Y runs down in the boundary
    kinds::expectPoint(corners[1], {1000, -90, 0});
    kinds::expectPoint(corners[2], {910, 0, 0});
    EXPECT_NEAR(kinds::Sketch(*wipeout).length(), 180 + 90 * std::sqrt(2), 1e-9);
    ASSERT_EQ(wipeout->transformBy(AcGeMatrix3d::scaling(AcGeScale3d(2, 1, 1))), Acad::eOk);
    kinds::expectBox(kinds::boxOf(*wipeout), {1820, -90, 0}, {2000, 0, 0});
}

TEST(Grouped, ViewportsAreFramedOnPaperAlone) {
    AcDbDatabase drawing;
    const auto onPaper = kinds::made<AcDbViewport>(kViewport, &drawing);
    EXPECT_EQ(onPaper->customScale(), 2);
    EXPECT_NEAR(onPaper->twistAngle(), std::acos(-1) / 2, 1e-12);
    EXPECT_TRUE(kinds::Sketch(*onPaper).lines.empty()); // it stands nowhere yet
    const AcDbObjectId paper =
        place(drawing, kinds::made<AcDbViewport>(kViewport, &drawing).release(), drawing.paperSpaceId());
    const AcDbObjectId model = place(drawing, kinds::made<AcDbViewport>(kViewport, &drawing).release());
    const AcDbObjectPointer<AcDbViewport> a(paper, AcDb::kForRead), b(model, AcDb::kForRead);
    EXPECT_NEAR(kinds::Sketch(*a.object()).length(), 1200, 1e-9);
    EXPECT_TRUE(kinds::Sketch(*b.object()).lines.empty());
}

TEST(Grouped, APictureKeptByOtherProgramsGoesWithTheFirstChange) {
    AcDbDatabase drawing;
    host::registerEntityClasses();
    AcDbMline mline;
    for (const host::Group group : kinds::groupsOf("100|AcDbEntity|160|4|310|abcd|284|1"))
        mline.tailForWrite().kept.append(group);
    kinds::feed(mline, kinds::groupsOf(kMline));
    ASSERT_EQ(mline.transformBy(AcGeMatrix3d::translation({1, 0, 0})), Acad::eOk);
    host::Group found;
    EXPECT_FALSE(mline.tail()->kept.find(310, found));
    EXPECT_FALSE(mline.tail()->kept.find(160, found));
    EXPECT_TRUE(mline.tail()->kept.find(284, found));
}
