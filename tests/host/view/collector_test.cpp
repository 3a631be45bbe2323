// What drawables leave in the display list: inheritance through blocks, hidden things, dashes, limits.
#include "host/view/collector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <map>

using namespace host;
using Kind = DisplayPrimitive::Kind;

namespace {

// A drawable that draws whatever the test says.
class Thing : public AcGiDrawable {
public:
    std::function<void(AcGiWorldDraw&)> draws = [](AcGiWorldDraw&) {};
    DrawableLook look;
    bool worldDraw(AcGiWorldDraw* context) const override { return draws(*context), true; }
    void viewportDraw(AcGiViewportDraw*) const override {}
};

// Layers, linetypes and blocks by number; a number stands in for a record.
class Sketch : public DrawingSource {
public:
    std::map<int, LayerLook> layers;
    std::map<int, LinetypeLook> linetypes;
    double scale = 1;
    AcDbObjectId id(int number) { return AcDbObjectId(&cells_[number]); }

    DrawableLook look(const AcGiDrawable& drawable) override {
        return static_cast<const Thing&>(drawable).look;
    }
    LayerLook layer(AcDbObjectId layerId) override { return find(layers, layerId); }
    LinetypeLook linetype(AcDbObjectId linetypeId) override { return find(linetypes, linetypeId); }
    double linetypeScale() override { return scale; }

private:
    template <class T> T find(const std::map<int, T>& table, AcDbObjectId wanted) {
        for (const auto& [number, value] : table)
            if (id(number) == wanted) return value;
        return {};
    }
    std::map<int, host::IdCell> cells_;
};

AcCmColor index(Adesk::UInt16 number) {
    AcCmColor color;
    color.setColorIndex(number);
    return color;
}

Thing lineThing(double length = 10) {
    Thing thing;
    thing.draws = [length](AcGiWorldDraw& context) {
        const AcGePoint3d points[] = {{0, 0, 0}, {length, 0, 0}};
        context.geometry().polyline(2, points);
    };
    return thing;
}

LayerLook layerLook(const wchar_t* name, Adesk::UInt16 color) {
    LayerLook look;
    look.name = name;
    look.color = index(color);
    look.isZero = look.name == L"0";
    return look;
}

} // namespace

TEST(Collector, ByLayerByBlockAndLayerZeroTakeTheReferencesLook) {
    Sketch sketch;
    sketch.layers[1] = layerLook(L"0", 7);
    sketch.layers[2] = layerLook(L"walls", 1);
    sketch.layers[3] = layerLook(L"doors", 3);
    Thing onZero = lineThing(), byBlock = lineThing(), own = lineThing();
    onZero.look.traits.layer = sketch.id(1);
    byBlock.look.traits.layer = sketch.id(3);
    byBlock.look.traits.color.setByBlock();
    own.look.traits.layer = sketch.id(3);
    Thing reference;
    reference.look.traits.layer = sketch.id(2);
    reference.look.traits.color = index(5);
    reference.look.block = sketch.id(9);
    reference.draws = [&](AcGiWorldDraw& context) {
        for (const Thing* thing : {&onZero, &byBlock, &own}) context.geometry().draw(thing);
    };
    DisplayCollector collector(sketch);
    collector.add(reference);
    collector.add(onZero);
    const DisplayList list = collector.take();
    ASSERT_EQ(list.primitives.size(), 4u);
    const auto look = [&](int i) { return list.styleOf(list.primitives[std::size_t(i)]); };
    EXPECT_EQ(look(0).color.rgb, 0xFF0000u); // by layer of layer 0: the reference's layer
    EXPECT_EQ(list.layers[look(0).layer].name, L"walls");
    EXPECT_EQ(look(1).color.rgb, 0x0000FFu); // by block: the reference's own colour
    EXPECT_EQ(list.layers[look(1).layer].name, L"doors");
    EXPECT_EQ(look(2).color.rgb, 0x00FF00u);
    EXPECT_TRUE(look(3).color.foreground); // colour 7, outside any block
    EXPECT_EQ(list.layers[look(3).layer].name, L"0");
    EXPECT_EQ(list.primitives[3].owner, 1u);
}

TEST(Collector, OffHidesItsOwnFrozenHidesAllBelow) {
    Sketch sketch;
    sketch.layers[1] = layerLook(L"shown", 7);
    sketch.layers[2] = layerLook(L"off", 7);
    sketch.layers[2].off = true;
    sketch.layers[3] = layerLook(L"frozen", 7);
    sketch.layers[3].frozen = true;
    Thing inside = lineThing();
    inside.look.traits.layer = sketch.id(1);
    Thing reference;
    reference.draws = [&](AcGiWorldDraw& context) {
        const AcGePoint3d points[] = {{0, 0, 0}, {1, 1, 0}};
        context.geometry().polyline(2, points);
        context.geometry().draw(&inside);
    };
    for (int layer : {1, 2, 3}) {
        reference.look.traits.layer = sketch.id(layer);
        DisplayCollector collector(sketch);
        collector.add(reference);
        EXPECT_EQ(collector.take().primitives.size(), std::size_t(3 - layer)) << layer;
    }
    inside.look.visible = false;
    reference.look.traits.layer = sketch.id(1);
    DisplayCollector collector(sketch);
    collector.add(reference);
    EXPECT_EQ(collector.take().primitives.size(), 1u);
}

TEST(Collector, TransformationsNestAndForgottenPopsHarmNobody) {
    Sketch sketch;
    Thing line = lineThing(1), sloppy;
    sloppy.draws = [&](AcGiWorldDraw& context) {
        context.geometry().pushModelTransform(AcGeMatrix3d::translation({100, 0, 0}));
        context.geometry().pushModelTransform(AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis));
        context.geometry().draw(&line);
    };
    DisplayCollector collector(sketch);
    collector.add(sloppy);
    collector.add(line);
    const DisplayList list = collector.take();
    EXPECT_EQ(list.contour(0)[1], AcGePoint3d(100, 1, 0));
    EXPECT_EQ(list.contour(1)[1], AcGePoint3d(1, 0, 0));
    EXPECT_EQ(list.extents.maxPoint(), AcGePoint3d(100, 1, 0));
}

TEST(Collector, BlocksThatHoldThemselvesEndAtTheSecondRound) {
    Sketch sketch;
    Thing line = lineThing(), a, b;
    a.look.block = sketch.id(1);
    b.look.block = sketch.id(2);
    a.draws = [&](AcGiWorldDraw& context) {
        context.geometry().draw(&line);
        context.geometry().draw(&b);
    };
    b.draws = [&](AcGiWorldDraw& context) { context.geometry().draw(&a); };
    DisplayCollector collector(sketch);
    collector.add(a);
    EXPECT_EQ(collector.take().primitives.size(), 1u);
}

TEST(Collector, DoublingBlocksAreCutOffByCount) {
    Sketch sketch;
    std::vector<Thing> levels(40);
    levels[0] = lineThing();
    for (int i = 1; i < 40; ++i) {
        levels[std::size_t(i)].look.block = sketch.id(i);
        levels[std::size_t(i)].draws = [&levels, i](AcGiWorldDraw& context) {
            for (int k = 0; k < 2; ++k) context.geometry().draw(&levels[std::size_t(i - 1)]);
        };
    }
    DisplayCollector collector(sketch, {.mostDrawables = 1000});
    collector.add(levels.back());
    const DisplayList list = collector.take();
    EXPECT_TRUE(list.truncated);
    EXPECT_LE(list.primitives.size(), 1000u);
}

TEST(Collector, DashesFollowScalesAndKeepTheirSizeInScaledBlocks) {
    Sketch sketch;
    sketch.layers[1] = layerLook(L"dashed", 7);
    sketch.layers[1].linetype = sketch.id(5);
    sketch.linetypes[5] = {LinetypeKind::pattern, {1, -1}};
    sketch.scale = 0.5;
    Thing line = lineThing(10);
    line.look.traits.layer = sketch.id(1);
    line.look.traits.linetypeScale = 2;
    const auto dashes = [&](const Thing& thing) {
        DisplayCollector collector(sketch);
        collector.add(thing);
        return collector.take().primitives.at(0).count;
    };
    EXPECT_EQ(dashes(line), 5u); // four repeats of 2, then a dash; half a unit of spare at each end
    Thing block;
    block.look.traits.layer = sketch.id(1);
    block.look.block = sketch.id(9);
    block.draws = [&](AcGiWorldDraw& context) {
        context.geometry().pushModelTransform(AcGeMatrix3d::scaling(10));
        context.geometry().draw(&line);
        context.geometry().popModelTransform();
    };
    EXPECT_EQ(dashes(block), 50u);
}

TEST(Collector, WidePolylinesAreFilledWithWidthsScaledByTheirBlock) {
    Sketch sketch;
    Thing thing;
    thing.draws = [](AcGiWorldDraw& context) {
        const PlineVertex vertices[] = {{{0, 0}, 0, 2, 2}, {{10, 0}, 0, 0, 0}, {{20, 0}, 0, 0, 0}};
        context.geometry().pushModelTransform(AcGeMatrix3d::scaling(3));
        context.geometry().pline({.vertices = vertices});
    };
    DisplayCollector collector(sketch);
    collector.add(thing);
    const DisplayList list = collector.take();
    ASSERT_EQ(list.primitives.size(), 2u);
    EXPECT_EQ(list.primitives[0].kind, Kind::ribbon);
    EXPECT_EQ(list.primitives[0].box.maxPoint(), AcGePoint3d(30, 3, 0));
    EXPECT_EQ(list.primitives[1].kind, Kind::line);
    EXPECT_EQ(list.primitives[1].box.minPoint(), AcGePoint3d(30, 0, 0));
}

TEST(Collector, WhatIsNoPlaceIsLeftOutAndEndlessLinesHaveNoExtents) {
    Sketch sketch;
    Thing thing;
    thing.draws = [](AcGiWorldDraw& context) {
        const AcGePoint3d bad[] = {{0, 0, 0}, {std::nan(""), 0, 0}, {1, 1, 1}};
        context.geometry().polyline(3, bad);
        context.geometry().polygon(3, bad);
        context.geometry().circle(AcGePoint3d(), std::numeric_limits<double>::infinity(),
                                  AcGeVector3d::kZAxis);
        context.geometry().xline(AcGePoint3d(5, 5, 0), AcGePoint3d(6, 5, 0));
        context.geometry().ray(AcGePoint3d(5, 5, 0), AcGePoint3d(5, 5, 0));
        context.geometry().text(AcGePoint3d(), AcGeVector3d::kZAxis, AcGeVector3d(), 1, 1, 0,
                                L"no direction");
    };
    DisplayCollector collector(sketch);
    collector.add(thing);
    const DisplayList list = collector.take();
    ASSERT_EQ(list.primitives.size(), 1u);
    EXPECT_EQ(list.primitives[0].kind, Kind::xline);
    EXPECT_FALSE(list.extents.isValid());
    EXPECT_EQ(list.points.size(), 2u);
}

TEST(Collector, TextHasItsBoxTurnedAndItsLinesBelow) {
    Sketch sketch;
    Thing thing;
    thing.draws = [](AcGiWorldDraw& context) {
        context.geometry().text(AcGePoint3d(10, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(0, 1, 0), 2, 1, 0,
                                L"%%uAB");
    };
    DisplayCollector collector(sketch);
    collector.add(thing);
    const DisplayList list = collector.take();
    ASSERT_EQ(list.primitives.size(), 2u);
    EXPECT_EQ(list.texts[0].text, L"AB");
    // Written upwards, capitals reach 2 to the left of the baseline; the line stands to its right.
    EXPECT_NEAR(list.primitives[0].box.minPoint().x, 8, 1e-9);
    EXPECT_NEAR(list.primitives[0].box.maxPoint().x, 10, 1e-9);
    EXPECT_NEAR(list.primitives[1].box.minPoint().x, 10.4, 1e-9);
}

TEST(Collector, ThicknessRaisesASecondPathWithItsEdges) {
    Sketch sketch;
    Thing thing = lineThing(1);
    thing.look.traits.thickness = 5;
    DisplayCollector collector(sketch);
    collector.add(thing);
    const DisplayList list = collector.take();
    EXPECT_EQ(list.primitives.at(0).count, 4u);
    EXPECT_EQ(list.extents.maxPoint(), AcGePoint3d(1, 0, 5));
}
