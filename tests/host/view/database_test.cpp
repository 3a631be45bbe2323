// Display lists of real drawings: what the records say is what is drawn, whoever has them open.
#include "host/view/collector.h"
#include "host/view/screen.h"
#include "host/view/transients.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "host/db/database.h"

using namespace host;

namespace {

// An entity that draws a line of ten units, standing in for all the others.
class Stroke : public AcDbEntity {
public:
    std::unique_ptr<AcDbObject> snapshot() const override {
        return std::unique_ptr<AcDbObject>(new Stroke(*this));
    }
    void restore(const AcDbObject& from) override { *this = static_cast<const Stroke&>(from); }

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override {
        const AcGePoint3d points[] = {{0, 0, 0}, {10, 0, 0}};
        context->geometry().polyline(2, points);
        return true;
    }
};

class Drawing : public testing::Test {
protected:
    void SetUp() override { acdbHostApplicationServices()->setWorkingDatabase(&database); }
    void TearDown() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    AcDbObjectId addLayer(const wchar_t* name, Adesk::UInt16 color, AcDbObjectId linetype = {}) {
        AcDbLayerTable* table = nullptr;
        EXPECT_EQ(database.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
        auto* layer = new AcDbLayerTableRecord;
        layer->setName(name);
        AcCmColor shade;
        shade.setColorIndex(color);
        layer->setColor(shade);
        if (!linetype.isNull()) layer->setLinetypeObjectId(linetype);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, layer), Acad::eOk);
        layer->close();
        table->close();
        return id;
    }
    AcDbObjectId addDashed() {
        AcDbLinetypeTable* table = nullptr;
        EXPECT_EQ(database.getLinetypeTable(table, AcDb::kForWrite), Acad::eOk);
        auto* dashed = new AcDbLinetypeTableRecord;
        dashed->setName(L"DASHED1");
        dashed->setPattern({1, -1});
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, dashed), Acad::eOk);
        dashed->close();
        table->close();
        return id;
    }
    AcDbObjectId draw(AcDbObjectId layer) {
        AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        auto* stroke = new Stroke;
        stroke->setDatabaseDefaults(&database);
        stroke->setLayer(layer);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, stroke), Acad::eOk);
        stroke->close();
        return id;
    }

    AcDbDatabase database;
};

} // namespace

TEST_F(Drawing, LayersGiveColourLinetypeAndVisibility) {
    const AcDbObjectId dashed = addLayer(L"dashed", 1, addDashed()), frozen = addLayer(L"frozen", 2);
    const AcDbObjectId first = draw(dashed);
    draw(frozen);
    const AcDbObjectId last = draw(database.layerZero());
    {
        AcDbObjectPointer<AcDbLayerTableRecord> record(frozen, AcDb::kForWrite);
        record->setIsFrozen(true);
    }
    const DisplayList list = displaySpace(database, {});
    ASSERT_EQ(list.primitives.size(), 2u);
    EXPECT_EQ(list.owners[list.primitives[0].owner], first);
    EXPECT_EQ(list.owners[list.primitives[1].owner], last);
    EXPECT_EQ(list.styleOf(list.primitives[0]).color.rgb, 0xFF0000u);
    EXPECT_EQ(list.primitives[0].count, 5u); // ten units: four repeats of two, and a dash
    EXPECT_EQ(list.primitives[1].count, 1u);
    EXPECT_EQ(list.layers[list.styleOf(list.primitives[0]).layer].name, L"dashed");
}

TEST_F(Drawing, ErasedAndInvisibleEntitiesLeaveNothingAndOpenOnesAreDrawn) {
    const AcDbObjectId erased = draw(database.layerZero()), hidden = draw(database.layerZero()),
                       open = draw(database.layerZero());
    {
        AcDbObjectPointer<AcDbEntity> entity(erased, AcDb::kForWrite);
        entity->erase();
    }
    {
        AcDbObjectPointer<AcDbEntity> entity(hidden, AcDb::kForWrite);
        entity->setVisibility(AcDb::kInvisible);
    }
    AcDbObjectPointer<AcDbEntity> writing(open, AcDb::kForWrite);
    AcDbObjectPointer<AcDbLayerTableRecord> layer(database.layerZero(), AcDb::kForWrite);
    const DisplayList list = displaySpace(database, database.modelSpaceId());
    ASSERT_EQ(list.primitives.size(), 1u);
    EXPECT_EQ(list.owners[list.primitives[0].owner], open);
}

TEST_F(Drawing, BlocksAreDrawnThroughTheScreenAndHighlightsAreKept) {
    const AcDbObjectId a = draw(database.layerZero()), b = draw(database.layerZero());
    // Anything that draws model space as its block shows both strokes, turned by what it pushes.
    class Mirror : public Stroke {
    public:
        AcDbObjectId block;
        AcDbObjectId referencedBlock() const override { return block; }

    protected:
        Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override {
            context->geometry().pushModelTransform(AcGeMatrix3d::translation({0, 7, 0}));
            EXPECT_TRUE(entityDisplay()->drawBlock(context, block));
            EXPECT_FALSE(entityDisplay()->drawBlock(context, AcDbObjectId()));
            context->geometry().popModelTransform();
            return true;
        }
    } reference;
    reference.block = database.modelSpaceId();
    screen();
    AcGiTransientManager manager;
    manager.addTransient(&reference, kAcGiMain, 0, AcArray<int>());
    ASSERT_EQ(manager.entries().size(), 1u);
    const DisplayList& list = manager.entries()[0].picture;
    EXPECT_EQ(list.primitives.size(), 2u);
    EXPECT_EQ(list.extents.minPoint(), AcGePoint3d(0, 7, 0));
    screen().highlight(b, true);
    screen().highlight(a, true);
    screen().highlight(b, false);
    EXPECT_EQ(screen().highlighted(), std::set<AcDbObjectId>{a});
    screen().redraw(b);
    screen().redraw(b);
    EXPECT_EQ(screen().takeRedrawn().size(), 1u);
    screen().forget(&database);
    EXPECT_TRUE(screen().highlighted().empty());
}

TEST_F(Drawing, TransientsAreKeptInDrawingOrderAndRedrawnOnUpdate) {
    AcGiTransientManager manager;
    const AcArray<int> all;
    Stroke below, above;
    EXPECT_TRUE(manager.addTransient(&above, kAcGiDirectTopmost, 0, all));
    EXPECT_TRUE(manager.addTransient(&below, kAcGiDirectShortTerm, 0, all));
    EXPECT_FALSE(manager.addTransient(&below, kAcGiDirectShortTerm, 0, all));
    EXPECT_FALSE(manager.addTransient(nullptr, kAcGiMain, 0, all));
    ASSERT_EQ(manager.entries().size(), 2u);
    EXPECT_EQ(manager.entries()[0].drawable, &below);
    EXPECT_EQ(manager.entries()[0].picture.extents.maxPoint().x, 10);
    below.setVisibility(AcDb::kInvisible);
    const unsigned before = manager.generation();
    EXPECT_TRUE(manager.updateTransient(&below, all));
    EXPECT_NE(manager.generation(), before);
    EXPECT_TRUE(manager.entries()[0].picture.primitives.empty());
    int subMode = 0;
    EXPECT_EQ(manager.getFreeSubDrawingMode(kAcGiDirectTopmost, subMode, all), 1);
    EXPECT_TRUE(manager.eraseTransients(kAcGiDirectTopmost, -1, all));
    EXPECT_FALSE(manager.eraseTransient(&above, all));
    EXPECT_TRUE(manager.eraseTransient(&below, all));
}

// Many of them, in several modes, that come, change and go in any order.
TEST_F(Drawing, TransientsAreFoundWhateverCameAndWentBefore) {
    AcGiTransientManager manager;
    const AcArray<int> all;
    std::vector<Stroke> strokes(40);
    for (size_t i = 0; i < strokes.size(); ++i) {
        EXPECT_TRUE(
            manager.addTransient(&strokes[i], AcGiTransientDrawingMode(i * 7 % 5), int(i * 3 % 4), all));
        if (i % 4 == 0) {
            EXPECT_TRUE(manager.addTransient(&strokes[i], kAcGiContrast, 0, all));
        }
    }
    EXPECT_EQ(manager.entries().size(), 50u);
    for (size_t i = 0; i < strokes.size(); i += 3) EXPECT_TRUE(manager.eraseTransient(&strokes[i], all)) << i;
    manager.eraseTransients(kAcGiSprite, -1, all);
    for (size_t i = 0; i < strokes.size(); ++i) {
        const auto& entries = manager.entries();
        const auto count = std::count_if(entries.begin(), entries.end(),
                                         [&](const auto& entry) { return entry.drawable == &strokes[i]; });
        strokes[i].setVisibility(AcDb::kInvisible);
        EXPECT_EQ(manager.updateTransient(&strokes[i], all), count > 0) << i;
    }
    for (const auto& entry : manager.entries()) EXPECT_TRUE(entry.picture.primitives.empty());
    EXPECT_TRUE(
        std::is_sorted(manager.entries().begin(), manager.entries().end(), [](const auto& a, const auto& b) {
            return std::tie(a.mode, a.subMode) < std::tie(b.mode, b.subMode);
        }));
    for (Stroke& stroke : strokes) manager.eraseTransient(&stroke, all);
    EXPECT_TRUE(manager.entries().empty());
}
