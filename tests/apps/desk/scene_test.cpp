// The scene: what is drawn anew after changes is what a scene made from nothing shows.
#include <QTest>

#include <random>

#include "apps/desk/drawing_watch.h"
#include "apps/desk/scene_picture.h"
#include "host/ent/blockreference.h"
#include "host/ent/conics.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
#include "host/ent/ray.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

using desk::Scene;

// A drawing that changes, with a scene that follows it.
class SceneTest : public testing::Test {
protected:
    SceneTest() {
        static const app::Session host; // classes and services
        watch_.follow(&drawing_);
        host::ViewFrame view;
        view.center.set(50, 40);
        view.height = 100;
        map_ = desk::ScreenMap(view, {400, 300});
        // Something far out keeps the size of the drawing, and so the fineness of curves, as it is.
        addLine({-100, -100, 0}, {-100, 200, 0});
        addLine({-100, -100, 0}, {200, -100, 0});
    }

    AcDbObjectId add(AcDbEntity* entity, AcDbObjectId record = {}) {
        entity->setDatabaseDefaults(&drawing_);
        AcDbObjectPointer<AcDbBlockTableRecord> space(record.isNull() ? drawing_.modelSpaceId() : record,
                                                      AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        return id;
    }
    AcDbObjectId addLine(const AcGePoint3d& from, const AcGePoint3d& to) {
        return add(new AcDbLine(from, to));
    }
    // A band across the middle, so that the order of drawing shows.
    AcDbObjectId addBand(double turn, int color) {
        auto* band = new AcDbPolyline;
        const double x = 40 * std::cos(turn), y = 40 * std::sin(turn);
        band->addVertexAt(0, {50 - x, 40 - y}, 0, 8, 8);
        band->addVertexAt(1, {50 + x, 40 + y}, 0, 8, 8);
        band->setColorIndex(Adesk::UInt16(color));
        return add(band);
    }
    AcDbObjectId addBlock() {
        AcDbBlockTable* table = nullptr;
        drawing_.getBlockTable(table, AcDb::kForWrite);
        auto* record = new AcDbBlockTableRecord;
        record->setName(L"BLOCK");
        AcDbObjectId id;
        table->add(id, record);
        table->close();
        record->close();
        return id;
    }
    template <class T, class Work> void change(AcDbObjectId id, Work work) {
        AcDbObjectPointer<T> object(id, AcDb::kForWrite);
        ASSERT_TRUE(object);
        work(*object.object());
    }

    QImage picture(Scene& scene) {
        QImage image(map_.pixels(), QImage::Format_RGB32);
        image.fill(Qt::black);
        desk::TextOutlines texts;
        desk::paintScene(image, scene, map_, {}, texts, image.rect());
        return image;
    }
    // Brings the scene up to date, and compares it with a new one. True when it was done by entities.
    bool follow(const char* what) {
        const desk::DrawingWatch::Changes changes = watch_.take();
        bool anew = changes.everything;
        if (anew)
            scene_.rebuild(drawing_, map_);
        else
            anew = scene_.update(drawing_, map_, changes.entities).everything;
        Scene fresh;
        fresh.rebuild(drawing_, map_);
        const QImage here = picture(scene_), there = picture(fresh);
        EXPECT_EQ(here, there) << what;
        const AcDbExtents2d a = scene_.extents(map_.view()), b = fresh.extents(map_.view());
        EXPECT_EQ(a.minPoint(), b.minPoint()) << what;
        EXPECT_EQ(a.maxPoint(), b.maxPoint()) << what;
        return !anew;
    }

    AcDbDatabase drawing_;
    desk::DrawingWatch watch_;
    desk::ScreenMap map_;
    Scene scene_;
};

TEST_F(SceneTest, EveryKindOfChangeShowsAsInANewScene) {
    const AcDbObjectId low = addBand(0.3, 1), middle = addBand(1.2, 2), high = addBand(2.2, 3);
    EXPECT_FALSE(follow("first"));
    host::UndoLog& log = drawing_.undoLog();
    log.commit();

    change<AcDbPolyline>(low, [](AcDbPolyline& band) { band.setPointAt(0, {5, 70}); });
    EXPECT_TRUE(follow("the lowest changes and stays the lowest"));
    log.commit();
    auto* line = new AcDbXline;
    line->setBasePoint({20, 20, 0});
    line->setUnitDir({1, 2, 0});
    const AcDbObjectId endless = add(line);
    EXPECT_TRUE(follow("an endless one comes"));
    change<AcDbXline>(endless, [](AcDbXline& moved) { moved.setBasePoint({60, 20, 0}); });
    EXPECT_TRUE(follow("and moves"));
    log.commit();
    const AcDbObjectId top = addBand(0.8, 5);
    EXPECT_TRUE(follow("one comes"));
    log.commit();
    change<AcDbEntity>(middle, [](AcDbEntity& band) { band.erase(); });
    EXPECT_TRUE(follow("one goes"));
    log.commit();
    change<AcDbEntity>(top, [](AcDbEntity& band) { band.setVisibility(AcDb::kInvisible); });
    EXPECT_TRUE(follow("one is hidden"));
    log.commit();
    for (int i = 0; i < 4; ++i) {
        log.undo();
        EXPECT_TRUE(follow("undone"));
    }
    for (int i = 0; i < 4; ++i) {
        log.redo();
        EXPECT_TRUE(follow("redone"));
    }
    EXPECT_TRUE(scene_.of(middle).first == scene_.of(middle).end);
    EXPECT_FALSE(scene_.of(high).first == scene_.of(high).end);
}

TEST_F(SceneTest, WhatManyEntitiesDependOnDrawsThemAll) {
    const AcDbObjectId block = addBlock();
    const AcDbObjectId inside = add(new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 10), block);
    const AcDbObjectId reference = add(new AcDbBlockReference({40, 40, 0}, block));
    add(new AcDbBlockReference({80, 40, 0}, block));
    follow("first");
    change<AcDbCircle>(inside, [](AcDbCircle& circle) { circle.setRadius(20); });
    follow("the block's circle grows");
    change<AcDbBlockReference>(reference, [](AcDbBlockReference& one) { one.setPosition({30, 20, 0}); });
    EXPECT_TRUE(follow("a reference moves"));
    change<AcDbLayerTableRecord>(drawing_.layerZero(), [](AcDbLayerTableRecord& layer) {
        AcCmColor color;
        color.setColorIndex(4);
        layer.setColor(color);
    });
    follow("the layer's colour");
}

TEST_F(SceneTest, RandomWorkNeverLeavesAnythingBehind) {
    std::mt19937 random(3);
    const auto pick = [&](size_t count) {
        return std::uniform_int_distribution<size_t>(0, count - 1)(random);
    };
    std::vector<AcDbObjectId> ids;
    for (int i = 0; i < 40; ++i) ids.push_back(addBand(i * 0.7, 1 + i % 6));
    follow("first");
    host::UndoLog& log = drawing_.undoLog();
    int byEntity = 0;
    for (int round = 0; round < 60; ++round) {
        for (size_t i = 0; i <= pick(5); ++i) {
            const AcDbObjectId id = ids[pick(ids.size())];
            AcDbObjectPointer<AcDbPolyline> band(id, AcDb::kForWrite);
            if (!band) continue;
            if (pick(4) == 0)
                band->erase();
            else
                band->setPointAt(0, {double(pick(100)), double(pick(80))});
        }
        if (pick(3) == 0) ids.push_back(addBand(round, 1 + round % 6));
        log.commit();
        if (pick(3) == 0) log.undo(int(pick(3)) + 1);
        if (pick(6) == 0) log.redo();
        byEntity += follow("random work");
    }
    EXPECT_GT(byEntity, 50);
}

// Strips painted by themselves are what the whole picture has there.
TEST_F(SceneTest, PartsOfAPictureAreWhatTheWholeIs) {
    for (int i = 0; i < 30; ++i) addBand(i * 0.7, 1 + i % 6), addLine({0, i * 3.0, 0}, {90, 80 - i * 2.0, 0});
    follow("first");
    const QImage whole = picture(scene_);
    QImage parts(map_.pixels(), QImage::Format_RGB32);
    parts.fill(Qt::black);
    desk::TextOutlines texts;
    for (const QRect part : {QRect(0, 0, 37, 300), QRect(37, 0, 363, 51), QRect(37, 51, 363, 249)})
        desk::paintScene(parts, scene_, map_, {}, texts, part);
    int off = 0;
    for (int y = 0; y < whole.height(); ++y)
        for (int x = 0; x < whole.width(); ++x)
            off += std::abs(qGray(whole.pixel(x, y)) - qGray(parts.pixel(x, y))) > 3;
    EXPECT_EQ(off, 0);
}

} // namespace
} // namespace desktest
