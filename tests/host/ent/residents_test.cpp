// Entities in drawings: parts that are objects, references to blocks, undo, and filing.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "host/db/capture.h"
#include "host/db/database.h"
#include "host/ent/blockreference.h"
#include "host/ent/faces.h"
#include "host/ent/helix.h"
#include "host/os/text.h"
#include "specimens.h"

namespace {

constexpr double kPi = std::numbers::pi;

class Residents : public ::testing::Test {
protected:
    Residents() { host::registerEntityClasses(); }

    AcDbObjectId add(AcDbEntity* entity, AcDbObjectId block = {}) {
        AcDbObjectPointer<AcDbBlockTableRecord> record(block.isNull() ? drawing.modelSpaceId() : block,
                                                       AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        return id;
    }
    AcDbObjectId newBlock(const ACHAR* name) {
        AcDbObjectPointer<AcDbBlockTable> table(drawing.blockTableId(), AcDb::kForWrite);
        auto* record = new AcDbBlockTableRecord;
        record->setName(name);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->close();
        return id;
    }
    AcDbExtents extentsOf(AcDbObjectId id) {
        AcDbExtents box;
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        EXPECT_EQ(entity->getGeomExtents(box), Acad::eOk);
        return box;
    }
    double lengthOf(AcDbObjectId id) {
        AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
        double end = 0, length = 0;
        curve->getEndParam(end), curve->getDistAtParam(end, length);
        return length;
    }

    AcDbDatabase drawing;
};

void expectBox(const AcDbExtents& box, const AcGePoint3d& low, const AcGePoint3d& high) {
    EXPECT_LE(box.minPoint().distanceTo(low), 1e-9);
    EXPECT_LE(box.maxPoint().distanceTo(high), 1e-9);
}

TEST_F(Residents, AVertexThatMovesIsSeenByItsPolyline) {
    const AcDbObjectId id = add(new AcDb3dPolyline(AcDb::k3dSimplePoly, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}));
    EXPECT_NEAR(lengthOf(id), 2, 1e-12);
    AcDbObjectId last;
    {
        AcDbObjectPointer<AcDb3dPolyline> polyline(id, AcDb::kForRead);
        last = polyline->parts().ids().back();
    }
    AcDbObjectPointer<AcDb3dPolylineVertex> vertex(last, AcDb::kForWrite);
    vertex->setPosition({5, 0, 0});
    vertex.close();
    EXPECT_NEAR(lengthOf(id), 5, 1e-12);
    vertex.open(last, AcDb::kForWrite);
    vertex->erase();
    vertex.close();
    EXPECT_NEAR(lengthOf(id), 1, 1e-12);
}

TEST_F(Residents, SmoothingIsUndoneWithTheVerticesItMade) {
    const AcDbObjectId id = add(new AcDb2dPolyline(AcDb::k2dSimplePoly, specimens::zigzag()));
    const double plain = lengthOf(id);
    for (AcDb::Poly2dType type : {AcDb::k2dCubicSplinePoly, AcDb::k2dQuadSplinePoly, AcDb::k2dFitCurvePoly}) {
        drawing.undoLog().commit();
        drawing.undoLog().begin(L"PEDIT");
        {
            AcDbObjectPointer<AcDb2dPolyline> polyline(id, AcDb::kForWrite);
            ASSERT_EQ(polyline->convertToPolyType(type), Acad::eOk);
        }
        drawing.undoLog().end();
        EXPECT_GT(std::fabs(lengthOf(id) - plain), 1e-3);
        drawing.undoLog().undo();
        EXPECT_NEAR(lengthOf(id), plain, 1e-12);
        AcDbObjectPointer<AcDb2dPolyline> polyline(id, AcDb::kForRead);
        EXPECT_EQ(polyline->polyType(), AcDb::k2dSimplePoly);
    }
}

TEST_F(Residents, ACloneHasVerticesOfItsOwn) {
    const AcDbObjectId id = add(new AcDb2dPolyline(AcDb::k2dCubicSplinePoly, specimens::zigzag()));
    const double before = lengthOf(id);
    std::unique_ptr<AcDb2dPolyline> copy;
    {
        AcDbObjectPointer<AcDb2dPolyline> polyline(id, AcDb::kForRead);
        copy.reset(static_cast<AcDb2dPolyline*>(polyline->clone()));
        EXPECT_EQ(copy->parts().size(), polyline->parts().size());
    }
    copy->transformBy(AcGeMatrix3d::scaling(3));
    EXPECT_NEAR(lengthOf(id), before, 1e-12);
    const AcDbObjectId second = add(copy.release());
    EXPECT_NEAR(lengthOf(second), 3 * before, 1e-9);
}

TEST_F(Residents, ConversionTakesTheOldOnesPlace) {
    const AcDbObjectId id = add(specimens::bulged(true).release());
    const double length = lengthOf(id);
    AcDbPolyline* light = nullptr;
    ASSERT_EQ(acdbOpenObject(light, id, AcDb::kForWrite), Acad::eOk);
    AcDb2dPolyline* old = nullptr;
    ASSERT_EQ(light->convertTo(true, old), Acad::eOk);
    delete light;
    old->close();
    EXPECT_EQ(id.objectClass(), AcDb2dPolyline::desc());
    EXPECT_NEAR(lengthOf(id), length, 1e-12);
    AcDbEntity* given = nullptr;
    ASSERT_EQ(acdbOpenObject(given, id, AcDb::kForWrite), Acad::eOk);
    auto* again = new AcDbPolyline;
    ASSERT_EQ(again->convertFrom(given), Acad::eOk);
    again->close();
    EXPECT_EQ(given, nullptr);
    EXPECT_EQ(id.objectClass(), AcDbPolyline::desc());
    EXPECT_NEAR(lengthOf(id), length, 1e-12);
}

TEST_F(Residents, ReferencesShowTheirBlockPlacedTurnedScaledAndRepeated) {
    const AcDbObjectId inner = newBlock(L"disc"), outer = newBlock(L"pair");
    add(new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1), inner);
    add(new AcDbBlockReference({0, 0, 0}, inner), outer);
    add(new AcDbBlockReference({4, 0, 0}, inner), outer);
    auto* reference = new AcDbBlockReference({10, 20, 0}, outer);
    reference->setScaleFactors({2, 1, 1});
    reference->setRotation(kPi / 2);
    const AcDbObjectId id = add(reference);
    // Turned by a quarter, twice as long along what is Y now.
    expectBox(extentsOf(id), {9, 18, 0}, {11, 30, 0});
    AcDbObjectPointer<AcDbBlockReference> open(id, AcDb::kForWrite);
    open->setArray(2, 3, 100, 50); // columns run up, rows to the left
    AcDbExtents box;
    open->getGeomExtents(box);
    expectBox(box, {-91, 18, 0}, {11, 130, 0});
    AcDbVoidPtrArray parts;
    ASSERT_EQ(open->explode(parts), Acad::eOk);
    EXPECT_EQ(parts.length(), 12);
    AcDbExtents sum;
    for (void* part : parts) {
        const std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
        AcDbExtents one;
        owned->getGeomExtents(one);
        sum.addExt(one);
    }
    expectBox(sum, box.minPoint(), box.maxPoint());
    AcGePoint3dArray points;
    const AcDbLine line({10, 0, 0}, {10, 200, 0});
    line.intersectWith(open.object(), AcDb::kOnBothOperands, points);
    EXPECT_EQ(points.length(), 12); // two discs in three columns of the first row, twice each
}

TEST_F(Residents, MirroredAndTurnedReferencesKeepTheirMatrix) {
    const AcDbObjectId block = newBlock(L"b");
    AcDbBlockReference reference({1, 2, 3}, block);
    reference.setScaleFactors({2, 3, 0.5});
    const AcGeMatrix3d moves[] = {AcGeMatrix3d::mirroring(AcGePlane({1, 0, 0}, AcGeVector3d(1, 2, 0))),
                                  AcGeMatrix3d::rotation(1.1, AcGeVector3d(1, 2, 3)),
                                  AcGeMatrix3d::scaling(0.25, {3, 3, 3}),
                                  AcGeMatrix3d::mirroring(AcGePlane::kXYPlane)};
    for (const AcGeMatrix3d& move : moves) {
        const AcGeMatrix3d wanted = move * reference.blockTransform();
        ASSERT_EQ(reference.transformBy(move), Acad::eOk);
        EXPECT_TRUE(
            reference.blockTransform().isEqualTo(wanted, AcGeTol().setEqualPoint(1e-9).setEqualVector(1e-9)));
    }
    AcGeMatrix3d shear;
    shear(0, 1) = 0.5;
    EXPECT_EQ(reference.transformBy(shear), Acad::eCannotScaleNonUniformly);
}

TEST_F(Residents, ABlockInsideItselfEnds) {
    const AcDbObjectId block = newBlock(L"snake");
    add(new AcDbLine({0, 0, 0}, {1, 0, 0}), block);
    add(new AcDbBlockReference({1, 0, 0}, block), block);
    const AcDbBlockReference reference({0, 0, 0}, block);
    AcDbExtents box;
    EXPECT_EQ(reference.getGeomExtents(box), Acad::eOk);
    EXPECT_GE(box.maxPoint().x, 2);
}

TEST_F(Residents, ShearedReferencesComeApartUntilTheirPiecesCanBeSheared) {
    const AcDbObjectId inner = newBlock(L"inner"), outer = newBlock(L"outer");
    add(new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1), inner);
    auto* turned = new AcDbBlockReference({3, 0, 0}, inner);
    turned->setRotation(0.5);
    add(turned, outer);
    auto* reference = new AcDbBlockReference({0, 0, 0}, outer);
    reference->setScaleFactors({2, 1, 1});
    const AcDbObjectId id = add(reference);
    AcDbObjectPointer<AcDbBlockReference> open(id, AcDb::kForRead);
    ASSERT_EQ(open->explodeToOwnerSpace(), Acad::eOk);
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForRead);
    AcDbObjectPointer<AcDbEllipse> ellipse(space->entities().back(), AcDb::kForRead);
    ASSERT_TRUE(ellipse);
    EXPECT_NEAR(ellipse->radiusRatio(), 0.5, 1e-12);
    EXPECT_NEAR(ellipse->center().x, 6, 1e-12);
}

TEST_F(Residents, AttributesBecomeTextsAndDefinitionsStayHidden) {
    const AcDbObjectId block = newBlock(L"tagged");
    auto* definition = new AcDbAttributeDefinition;
    definition->setTag(L"NAME"), definition->setTextString(L"default");
    add(definition, block);
    auto* reference = new AcDbBlockReference({5, 5, 0}, block);
    auto* attribute = new AcDbAttribute;
    attribute->setTag(L"NAME"), attribute->setTextString(L"value"), attribute->setPosition({6, 6, 0});
    reference->appendAttribute(attribute);
    AcDbVoidPtrArray parts;
    ASSERT_EQ(reference->explode(parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 1);
    const std::unique_ptr<AcDbText> text(static_cast<AcDbText*>(parts[0]));
    EXPECT_STREQ(text->textStringConst(), L"value");
    EXPECT_EQ(text->isA(), AcDbText::desc());
    reference->transformBy(AcGeMatrix3d::translation({10, 0, 0}));
    EXPECT_EQ(attribute->position().x, 16);
    delete reference;
}

TEST_F(Residents, TextLiesWhereItsJustificationSays) {
    // Boxes of mirrored and turned text are images of the plain one's.
    AcDbText text({0, 0, 0}, L"Width", {}, 2);
    AcDbExtents plain, box;
    text.getGeomExtents(plain);
    const double width = plain.maxPoint().x;
    EXPECT_GT(width, 4);
    text.setHorizontalMode(AcDb::kTextRight), text.setAlignmentPoint({100, 0, 0});
    text.adjustAlignment();
    const double advance = 100 - text.position().x;
    EXPECT_GE(advance, width - 1e-9);
    text.setHorizontalMode(AcDb::kTextCenter), text.setVerticalMode(AcDb::kTextTop);
    text.adjustAlignment();
    EXPECT_NEAR(text.position().x, 100 - advance / 2, 1e-9);
    EXPECT_NEAR(text.position().y, -2, 1e-9);
    AcDbText mirrored({0, 0, 0}, L"Width", {}, 2);
    mirrored.transformBy(AcGeMatrix3d::mirroring(AcGePlane::kYZPlane));
    mirrored.getGeomExtents(box);
    EXPECT_NEAR(box.minPoint().x, -width, 1e-9);
    EXPECT_TRUE(mirrored.isMirroredInX());
    mirrored.transformBy(AcGeMatrix3d::mirroring(AcGePlane::kYZPlane));
    mirrored.getGeomExtents(box);
    expectBox(box, plain.minPoint(), plain.maxPoint());
    EXPECT_FALSE(mirrored.isMirroredInX());
}

TEST_F(Residents, ParagraphsWrapInsideTheirColumn) {
    AcDbMText text;
    text.setTextHeight(1);
    text.setContents(L"one two three four five six seven\\Psecond\\Pthird");
    EXPECT_EQ(text.lines().size(), 3u);
    text.setWidth(10);
    const auto lines = text.lines();
    EXPECT_GT(lines.size(), 4u);
    AcDbExtents box;
    ASSERT_EQ(text.getGeomExtents(box), Acad::eOk);
    EXPECT_LE(box.maxPoint().x - box.minPoint().x, 10 + 1e-9);
    EXPECT_LE(box.maxPoint().y, 1e-9);
    text.setAttachment(AcDbMText::kBottomRight);
    text.getGeomExtents(box);
    EXPECT_LE(box.maxPoint().x, 1e-9);
    EXPECT_GE(box.maxPoint().y, 5);
    AcDbVoidPtrArray parts;
    text.explode(parts);
    EXPECT_EQ(size_t(parts.length()), lines.size());
    for (void* part : parts) delete static_cast<AcDbEntity*>(part);
}

// -- filing -------------------------------------------------------------------------------------------

class PlainContext : public host::ReadContext {
public:
    explicit PlainContext(AcDbDatabase& of) { database = &of; }
    AcDbObjectId id(std::uint64_t handle) override {
        AcDbObjectId found;
        database->getAcDbObjectId(found, false, AcDbHandle(handle));
        return found;
    }
    AcDbObjectId layer(std::string_view name) override { return named(AcDbLayerTable::desc(), name); }
    AcDbObjectId linetype(std::string_view name) override { return named(AcDbLinetypeTable::desc(), name); }
    AcDbObjectId textStyle(std::string_view name) override { return named(AcDbTextStyleTable::desc(), name); }
    AcDbObjectId block(std::string_view name) override { return named(AcDbBlockTable::desc(), name); }
    void repaired(const std::string& sentence) override { ADD_FAILURE() << sentence; }

private:
    AcDbObjectId named(const AcRxClass* table, std::string_view name) {
        return database->find(table, host::wide(std::string(name)));
    }
};

host::GroupList groupsOf(const AcDbObject& object, AcDbDatabase& drawing) {
    host::CapturingWriter writer;
    writer.database = &drawing;
    object.outGroups(writer);
    return writer.groups;
}

TEST_F(Residents, GroupsReadBackGiveTheSameGroups) {
    std::vector<std::unique_ptr<AcDbEntity>> entities;
    for (auto& s : specimens::all()) entities.push_back(std::move(s.curve));
    const AcDbObjectId block = newBlock(L"b");
    auto text = std::make_unique<AcDbText>(AcGePoint3d(1, 2, 3), L"text %%d", AcDbObjectId(), 3.5, 0.3);
    text->setTextStyle(drawing.textstyle());
    text->setHorizontalMode(AcDb::kTextCenter), text->setVerticalMode(AcDb::kTextTop);
    text->setAlignmentPoint({4, 5, 6}), text->setNormal({1, 1, 1}), text->mirrorInX(true);
    entities.push_back(std::move(text));
    auto paragraphs = std::make_unique<AcDbMText>();
    paragraphs->setTextStyle(drawing.textstyle());
    paragraphs->setContents(std::wstring(600, L'x').c_str()), paragraphs->setWidth(30);
    paragraphs->setRotation(0.4);
    entities.push_back(std::move(paragraphs));
    auto reference = std::make_unique<AcDbBlockReference>(AcGePoint3d(1, 2, 3), block);
    reference->setArray(2, 3, 4, 5), reference->setScaleFactors({1, -2, 3}), reference->setRotation(1);
    entities.push_back(std::move(reference));
    entities.push_back(std::make_unique<AcDbPoint>(AcGePoint3d(1, 2, 3)));
    auto helix = std::make_unique<AcDbHelix>();
    helix->setNurbs(static_cast<AcDbSpline*>(specimens::all().back().curve.get())->nurbs());
    helix->transformBy(AcGeMatrix3d::mirroring(AcGePlane::kYZPlane) * AcGeMatrix3d::scaling(3));
    EXPECT_FALSE(helix->twist());
    entities.push_back(std::move(helix));
    const AcGePoint3d corners[] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    entities.push_back(std::make_unique<AcDbSolid>(corners[0], corners[1], corners[2], corners[3]));
    entities.back()->transformBy(AcGeMatrix3d::rotation(1, AcGeVector3d(1, 1, 1)));
    entities.push_back(std::make_unique<AcDbFace>(corners[0], corners[1], corners[3], corners[2]));
    for (const auto& entity : entities) {
        SCOPED_TRACE(host::utf8(entity->isA()->name()));
        entity->setLayer(drawing.layerZero());
        const host::GroupList written = groupsOf(*entity, drawing);
        const std::unique_ptr<AcDbObject> read(static_cast<AcDbObject*>(entity->isA()->create()));
        PlainContext context(drawing);
        std::string marker;
        for (const host::Group group : written) {
            if (group.code == 100) {
                marker = group.text;
                continue;
            }
            context.subclass = marker;
            EXPECT_TRUE(read->inGroup(group, context)) << group.code;
        }
        read->inDone(context);
        const host::GroupList again = groupsOf(*read, drawing);
        auto a = written.begin();
        auto b = again.begin();
        for (; !(a == written.end()) && !(b == again.end()); ++a, ++b) {
            const host::Group p = *a, q = *b;
            ASSERT_EQ(p.code, q.code);
            if (p.type == host::GroupType::real)
                EXPECT_NEAR(p.real, q.real, 4e-15 * (1 + std::fabs(p.real))) << p.code;
            else
                EXPECT_TRUE(p == q) << p.code;
        }
        EXPECT_TRUE(a == written.end() && b == again.end());
    }
}

} // namespace
