// What entities draw is where they say they are.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "host/db/database.h"
#include "host/ent/blockreference.h"
#include "host/view/collector.h"
#include "host/view/database_source.h"
#include "specimens.h"

namespace {

class Drawn : public ::testing::Test {
protected:
    Drawn() { host::registerEntityClasses(); }
    host::DisplayList draw(const AcDbEntity& entity, double chordError = 1e-4) {
        host::DatabaseSource source(&drawing);
        host::DisplayOptions options;
        options.chordError = chordError;
        host::DisplayCollector collector(source, options);
        collector.add(entity, {});
        return collector.take();
    }
    AcDbDatabase drawing;
};

double lengthOf(const host::DisplayList& list) {
    double sum = 0;
    for (std::uint32_t c = 0; c < list.contourEnds.size(); ++c) {
        const auto points = list.contour(c);
        for (size_t i = 1; i < points.size(); ++i) sum += points[i].distanceTo(points[i - 1]);
    }
    return sum;
}

TEST_F(Drawn, ThinCurvesHaveTheirOwnBoxAndLength) {
    for (const auto& s : specimens::all()) {
        SCOPED_TRACE(s.name);
        if (auto* polyline = AcDbPolyline::cast(s.curve.get())) polyline->setConstantWidth(0);
        const host::DisplayList list = draw(*s.curve);
        AcDbExtents box;
        s.curve->getGeomExtents(box);
        EXPECT_LE(list.extents.minPoint().distanceTo(box.minPoint()), 5e-3);
        EXPECT_LE(list.extents.maxPoint().distanceTo(box.maxPoint()), 5e-3);
        double end = 0, length = 0;
        s.curve->getEndParam(end), s.curve->getDistAtParam(end, length);
        EXPECT_NEAR(lengthOf(list), length, 2e-3 * length);
        for (const AcGePoint3d& p : list.points) {
            AcGePoint3d near;
            s.curve->getClosestPointTo(p, near);
            EXPECT_LE(p.distanceTo(near), 1e-6);
        }
    }
}

TEST_F(Drawn, PointsShowAsTheDrawingSaysAtASizeOfItsOwnOrOfTheView) {
    AcDbObjectId id;
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
    auto* point = new AcDbPoint({100, 50, 0});
    ASSERT_EQ(space->appendAcDbEntity(id, point), Acad::eOk);
    point->close();
    space.close();
    AcDbObjectPointer<AcDbPoint> placed(id, AcDb::kForRead);
    EXPECT_EQ(draw(*placed).extents.maxPoint().x, 100); // a dot
    drawing.setHeaderInteger("$PDMODE", 70, 34);        // plus and circle
    drawing.setHeaderReal("$PDSIZE", 40, 4);
    const host::DisplayList own = draw(*placed);
    EXPECT_NEAR(own.extents.maxPoint().x, 104, 1e-9);
    EXPECT_NEAR(own.extents.minPoint().y, 46, 1e-9);
    EXPECT_NEAR(lengthOf(own), 16 + 4 * std::numbers::pi, 0.01);
    drawing.setHeaderReal("$PDSIZE", 40, 0);
    drawing.setHeaderInteger("$PDMODE", 70, 96); // dot, circle and square: 24 of a thousand pixels
    host::DatabaseSource source(&drawing);
    host::DisplayOptions options;
    options.view.height = 100, options.view.aspect = 2;
    host::DisplayCollector collector(source, options);
    collector.add(*placed, {});
    EXPECT_NEAR(collector.take().extents.maxPoint().x, 102.4, 1e-9);
}

TEST_F(Drawn, WidePolylinesAreFilled) {
    AcDbPolyline wide;
    wide.addVertexAt(0, {0, 0}), wide.addVertexAt(1, {10, 0});
    wide.setConstantWidth(2);
    const host::DisplayList list = draw(wide);
    ASSERT_EQ(list.primitives.size(), 1u);
    EXPECT_EQ(list.primitives[0].kind, host::DisplayPrimitive::Kind::ribbon);
    EXPECT_NEAR(list.extents.minPoint().y, -1, 1e-12);
    EXPECT_NEAR(list.extents.maxPoint().y, 1, 1e-12);
}

TEST_F(Drawn, TextIsDrawnInsideItsBox) {
    AcDbText text({5, 5, 0}, L"Slanted", {}, 2, 0.5);
    text.setOblique(0.2), text.setWidthFactor(0.8), text.mirrorInX(true);
    AcDbMText paragraphs;
    paragraphs.setContents(L"a b c d e f g h"), paragraphs.setTextHeight(1), paragraphs.setWidth(4);
    paragraphs.setAttachment(AcDbMText::kMiddleCenter), paragraphs.setRotation(1);
    for (const AcDbEntity* entity :
         {static_cast<const AcDbEntity*>(&text), static_cast<const AcDbEntity*>(&paragraphs)}) {
        const host::DisplayList list = draw(*entity);
        AcDbExtents box;
        ASSERT_EQ(entity->getGeomExtents(box), Acad::eOk);
        ASSERT_FALSE(list.texts.empty());
        EXPECT_LE(list.extents.minPoint().distanceTo(box.minPoint()), 1e-9);
        EXPECT_LE(list.extents.maxPoint().distanceTo(box.maxPoint()), 1e-9);
    }
}

TEST_F(Drawn, ReferencesDrawTheirBlockInEveryRowAndColumn) {
    AcDbObjectId block;
    {
        AcDbObjectPointer<AcDbBlockTable> table(drawing.blockTableId(), AcDb::kForWrite);
        auto* record = new AcDbBlockTableRecord;
        record->setName(L"b"), record->setOrigin({1, 1, 0});
        table->add(block, record);
        for (AcDbEntity* entity : {static_cast<AcDbEntity*>(new AcDbLine({1, 1, 0}, {3, 2, 0})),
                                   static_cast<AcDbEntity*>(new AcDbAttributeDefinition)}) {
            record->appendAcDbEntity(entity);
            entity->close();
        }
        record->close();
    }
    AcDbBlockReference reference({100, 0, 0}, block);
    reference.setArray(3, 2, 10, 20), reference.setRotation(std::numbers::pi / 2);
    const host::DisplayList list = draw(reference);
    EXPECT_EQ(list.contourEnds.size(), 6u); // the definition isn't shown
    AcDbExtents box;
    ASSERT_EQ(reference.getGeomExtents(box), Acad::eOk);
    EXPECT_LE(list.extents.minPoint().distanceTo(box.minPoint()), 1e-9);
    EXPECT_LE(list.extents.maxPoint().distanceTo(box.maxPoint()), 1e-9);
}

} // namespace
