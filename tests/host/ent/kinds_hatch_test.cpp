// Hatches: groups of every kind of outline, areas, boxes, images, and what they draw.
#include "host/ent/conics.h"
#include "host/ent/hatch.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
#include "host/ge/arc.h"
#include "host/ge/edges2d.h"
#include "kinds_support.h"

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

const char* const kHead = "100|AcDbHatch|10|0|20|0|30|0|210|0|220|0|230|1|";
const std::string kDisc = "92|1|93|1|72|2|10|5|20|1|40|2|50|0|51|360|73|1|97|0|";
const std::string kSquareWithHole = "92|7|72|0|73|1|93|4|10|0|20|0|10|6|20|0|10|6|20|6|10|0|20|6|97|1|330|1A|"
                                    "92|6|72|1|73|1|93|2|10|2|20|3|42|1|10|4|20|3|42|1|97|0|";
// Half an ellipse and its axis, the arc running clockwise: angles count in its sense.
const std::string kHalfEllipse = "92|1|93|2|72|3|10|0|20|0|11|3|21|0|40|0.5|50|-180|51|0|73|0|"
                                 "72|1|10|3|20|0|11|-3|21|0|97|0|";
const std::string kSpline =
    "92|1|93|2|72|4|94|2|73|1|74|0|95|6|96|3|40|0|40|0|40|0|40|1|40|1|40|1|"
    "10|0|20|0|42|1|10|2|20|4|42|0.7|10|4|20|0|42|1|97|0|72|1|10|4|20|0|11|0|21|0|97|0|";
const std::string kSolidTail = "75|0|76|1|98|1|10|1.5|20|2.5";
const std::string kLinesTail = "75|0|76|0|52|30|41|2|77|0|78|1|53|30|43|0.1|44|0.2|45|-0.25|46|0.433012702|"
                               "79|2|49|0.5|49|-0.25|47|0.01|98|0";
const std::string kGradient = "|450|1|451|0|460|0|461|0|452|0|462|0|453|2|463|0|63|5|421|255|463|1|63|2|"
                              "421|16776960|470|LINEAR";

std::string solid(const std::string& loops, int count = 1, const std::string& more = "") {
    return kHead + ("2|SOLID|70|1|71|0|91|" + std::to_string(count) + "|") + loops + kSolidTail + more;
}
std::string lined(const std::string& loops, int count = 1) {
    return kHead + ("2|MINE|70|0|71|0|91|" + std::to_string(count) + "|") + loops + kLinesTail;
}
double areaOf(const AcDbHatch& hatch) {
    double area = -1;
    EXPECT_EQ(hatch.getArea(area), Acad::eOk);
    return area;
}

struct Row {
    const char* caption;
    std::string rows;
    double area;
    AcGePoint3d low, high;
};
const std::vector<Row>& rows() {
    static const std::vector<Row> all = {
        {"disc", solid(kDisc), 4 * kPi, {3, -1, 0}, {7, 3, 0}},
        {"square with a hole", solid(kSquareWithHole, 2), 36 - kPi, {0, 0, 0}, {6, 6, 0}},
        {"lined square", lined(kSquareWithHole, 2), 36 - kPi, {0, 0, 0}, {6, 6, 0}},
        {"half an ellipse", solid(kHalfEllipse), 2.25 * kPi, {-3, 0, 0}, {3, 1.5, 0}},
        {"gradient", solid(kDisc, 1, kGradient), 4 * kPi, {3, -1, 0}, {7, 3, 0}},
        // The top of the conic is at weight 0.7: 4 * 0.7 / 1.7; its area from the rational form, by
        // quadrature.
        {"spline", solid(kSpline), -1, {0, 0, 0}, {4, 2.8 / 1.7, 0}}};
    return all;
}

} // namespace

TEST(Hatches, UnchangedOnesGiveTheirGroupsBackAndChangedOnesTheSameFromTheirData) {
    for (const Row& row : rows()) {
        SCOPED_TRACE(row.caption);
        const auto hatch = kinds::made<AcDbHatch>(row.rows);
        EXPECT_EQ(kinds::rowsOf(*hatch), row.rows);
        ASSERT_EQ(hatch->setHatchStyle(AcDbHatch::kNormal), Acad::eOk); // counts as a change
        EXPECT_EQ(kinds::rowsOf(*hatch), row.rows);
    }
}

TEST(Hatches, AreasAndBoxesAreThoseOfTheOutlines) {
    for (const Row& row : rows()) {
        SCOPED_TRACE(row.caption);
        const auto hatch = kinds::made<AcDbHatch>(row.rows);
        if (row.area >= 0) {
            EXPECT_NEAR(areaOf(*hatch), row.area, 2e-6 * row.area);
        }
        kinds::expectBox(kinds::boxOf(*hatch), row.low, row.high, 1e-6);
        const AcDbExtents drawn = kinds::Sketch(*hatch).extents();
        EXPECT_LE(drawn.maxPoint().x, row.high.x + 1e-9);
        EXPECT_GE(drawn.maxPoint().x, row.high.x - 0.5);
    }
}

TEST(Hatches, ImagesKeepTheirShape) {
    const AcGeMatrix3d moves[] = {AcGeMatrix3d::translation({3, -2, 7}),
                                  AcGeMatrix3d::scaling(2.5, {1, 1, 0}),
                                  AcGeMatrix3d::rotation(0.7, AcGeVector3d::kZAxis, {1, 2, 0}),
                                  AcGeMatrix3d::mirroring(AcGePlane({1, 0, 0}, AcGeVector3d(1, 0.5, 0))),
                                  AcGeMatrix3d::rotation(1, AcGeVector3d(1, 2, 3)),
                                  AcGeMatrix3d::mirroring(AcGePlane::kXYPlane)};
    for (const Row& row : rows())
        for (const AcGeMatrix3d& move : moves) {
            SCOPED_TRACE(std::string(row.caption) + " by move " + std::to_string(&move - moves));
            const auto plain = kinds::made<AcDbHatch>(row.rows), hatch = kinds::made<AcDbHatch>(row.rows);
            ASSERT_EQ(hatch->transformBy(move), Acad::eOk);
            EXPECT_NEAR(areaOf(*hatch), areaOf(*plain) * std::pow(move.scale(), 2), 1e-5 * areaOf(*plain));
            AcDbExtents wanted;
            for (const auto& loop : plain->data().loops)
                for (const auto& path : host::pathsOf(loop, plain->normal(), plain->elevation()))
                    wanted.addExt(path.transformed(move).extents());
            kinds::expectBox(kinds::boxOf(*hatch), wanted.minPoint(), wanted.maxPoint(), 1e-6);
            // What is drawn is the image of what was drawn, as far as the chords of arcs allow.
            const kinds::Sketch before(*plain), after(*hatch);
            ASSERT_EQ(before.lines.size(), after.lines.size());
            EXPECT_NEAR(after.length(), before.length() * move.scale(), 1e-4 * (1 + before.length()));
            AcGeVector3d sum;
            for (const auto& line : before.lines) sum += move * line[0] - AcGePoint3d::kOrigin;
            for (const auto& line : after.lines) sum -= line[0].asVector();
            if (move.det() > 0) {
                EXPECT_LE(sum.length(), 1e-4 * (1 + double(before.lines.size())));
            }
        }
    const auto hatch = kinds::made<AcDbHatch>(rows()[0].rows);
    EXPECT_EQ(hatch->transformBy(AcGeMatrix3d::scaling(AcGeScale3d(1, 2, 1))),
              Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(kinds::rowsOf(*hatch), rows()[0].rows);
}

TEST(Hatches, PatternLinesCoverTheirShareOfTheArea) {
    const auto hatch = kinds::made<AcDbHatch>(lined(kSquareWithHole, 2));
    const kinds::Sketch sketch(*hatch);
    // Lines half a unit apart, two thirds of each drawn.
    EXPECT_NEAR(sketch.length() * 0.5 * 1.5, 36 - kPi, 1.5);
    EXPECT_TRUE(sketch.areas.empty());
    AcDbVoidPtrArray parts;
    hatch->setLayer(AcDbObjectId());
    ASSERT_EQ(hatch->explode(parts), Acad::eOk);
    double length = 0;
    for (void* part : parts) {
        const std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
        if (const auto* line = AcDbLine::cast(owned.get()))
            length += line->startPoint().distanceTo(line->endPoint());
    }
    EXPECT_NEAR(length, sketch.length(), 1e-2);
    ASSERT_EQ(hatch->setPatternScale(2e-6), Acad::eOk); // a million times denser
    const kinds::Sketch dense(*hatch);
    EXPECT_TRUE(dense.lines.empty());
    EXPECT_EQ(dense.areas.size(), 1u);
}

TEST(Hatches, HandMadeOnesHaveLoopsAndPatterns) {
    AcDbHatch hatch;
    EXPECT_EQ(hatch.evaluateHatch(), Acad::eInvalidInput);
    EXPECT_EQ(hatch.appendLoop(AcDbHatch::kExternal, AcGePoint2dArray{{0, 0}}, AcGeDoubleArray()),
              Acad::eInvalidInput);
    ASSERT_EQ(hatch.appendLoop(AcDbHatch::kExternal, {{0, 0}, {4, 0}, {4, 2}, {0, 2}}, AcGeDoubleArray()),
              Acad::eOk);
    EXPECT_EQ(hatch.loopTypeAt(0), AcDbHatch::kExternal | AcDbHatch::kPolyline);
    EXPECT_EQ(hatch.loopTypeAt(1), -1);
    EXPECT_NEAR(areaOf(hatch), 8, 1e-9);
    EXPECT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"NOSUCH"), Acad::eInvalidInput);
    ASSERT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"ansi31"), Acad::eOk);
    ASSERT_EQ(hatch.setPatternScale(0.1 / 3.175), Acad::eOk);
    EXPECT_NEAR(kinds::Sketch(hatch).length() * 0.1, 8, 0.1);
    ASSERT_EQ(hatch.setPattern(AcDbHatch::kUserDefined, nullptr), Acad::eOk);
    ASSERT_EQ(hatch.setPatternSpace(0.05), Acad::eOk);
    ASSERT_EQ(hatch.setPatternDouble(true), Acad::eOk);
    EXPECT_NEAR(kinds::Sketch(hatch).length() * 0.05, 16, 0.3);
    ASSERT_EQ(hatch.setPatternAngle(0.5), Acad::eOk);
    EXPECT_NEAR(kinds::Sketch(hatch).length() * 0.05, 16, 0.3);
}

TEST(Hatches, LoopsAreHandedOutAsVerticesOrAsCurves) {
    const auto squared = kinds::made<AcDbHatch>(solid(kSquareWithHole, 2));
    Adesk::Int32 type = 0;
    AcGePoint2dArray vertices;
    AcGeDoubleArray bulges;
    ASSERT_EQ(squared->getLoopAt(0, type, vertices, bulges), Acad::eOk);
    EXPECT_EQ(vertices.length(), 4);
    EXPECT_TRUE(bulges.isEmpty());
    ASSERT_EQ(squared->getLoopAt(1, type, vertices, bulges), Acad::eOk);
    EXPECT_EQ(bulges.length(), 2);
    EXPECT_EQ(squared->getLoopAt(2, type, vertices, bulges), Acad::eInvalidIndex);
    AcGeVoidPointerArray edges;
    AcGeIntArray types;
    EXPECT_EQ(squared->getLoopAt(0, type, edges, types), Acad::eNotApplicable);

    const auto half = kinds::made<AcDbHatch>(solid(kHalfEllipse));
    ASSERT_EQ(half->getLoopAt(0, type, edges, types), Acad::eOk);
    ASSERT_EQ(types, (AcGeIntArray{AcDbHatch::kEllArc, AcDbHatch::kLine}));
    const std::unique_ptr<AcGeEllipArc2d> ellipse(static_cast<AcGeEllipArc2d*>(edges[0]));
    const std::unique_ptr<AcGeLineSeg2d> line(static_cast<AcGeLineSeg2d*>(edges[1]));
    EXPECT_LE(ellipse->startPoint().distanceTo({-3, 0}), 1e-12);
    EXPECT_LE(ellipse->endPoint().distanceTo(line->startPoint()), 1e-12);
    EXPECT_LE(ellipse->evalPoint(0.5 * (ellipse->startAng() + ellipse->endAng())).distanceTo({0, 1.5}), 1e-9);
    EXPECT_TRUE(ellipse->isClockWise());

    const auto curved = kinds::made<AcDbHatch>(solid(kSpline));
    ASSERT_EQ(curved->getLoopAt(0, type, edges, types), Acad::eOk);
    const std::unique_ptr<AcGeNurbCurve2d> spline(static_cast<AcGeNurbCurve2d*>(edges[0]));
    delete static_cast<AcGeLineSeg2d*>(edges[1]);
    EXPECT_EQ(spline->numControlPoints(), 3);
    EXPECT_EQ(spline->weightAt(1), 0.7);
    EXPECT_EQ(spline->numKnots(), 6);
}

TEST(Hatches, CurvesOfADrawingBecomeLoopsAndAreFollowedUntilTheHatchMoves) {
    host::registerEntityClasses();
    AcDbDatabase drawing;
    const auto add = [&](AcDbEntity* entity) {
        AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
        AcDbObjectId id;
        space->appendAcDbEntity(id, entity);
        entity->close();
        return id;
    };
    auto* outline = new AcDbPolyline;
    outline->addVertexAt(0, {0, 0}, 0), outline->addVertexAt(1, {4, 0}, 1),
        outline->addVertexAt(2, {4, 4}, 0);
    outline->addVertexAt(3, {0, 4}, 0), outline->setClosed(true);
    const AcDbObjectId polyline = add(outline),
                       circle = add(new AcDbCircle({2, 2, 0}, -AcGeVector3d::kZAxis, 1)),
                       ellipse = add(new AcDbEllipse({20, 0, 0}, AcGeVector3d::kZAxis, {0, 2, 0}, 0.5)),
                       point = add(new AcDbPoint({0, 0, 0}));
    auto* hatch = new AcDbHatch;
    hatch->setAssociative(true);
    ASSERT_EQ(hatch->appendLoop(AcDbHatch::kExternal, AcDbObjectIdArray{polyline}), Acad::eOk);
    ASSERT_EQ(hatch->appendLoop(AcDbHatch::kDefault, AcDbObjectIdArray{circle}), Acad::eOk);
    ASSERT_EQ(hatch->appendLoop(AcDbHatch::kExternal, AcDbObjectIdArray{ellipse}), Acad::eOk);
    EXPECT_EQ(hatch->appendLoop(AcDbHatch::kExternal, AcDbObjectIdArray{point}), Acad::eNotThatKindOfClass);
    EXPECT_NEAR(areaOf(*hatch), 16 + 2 * kPi - kPi + 2 * kPi, 1e-4);
    const AcDbObjectId id = add(hatch);
    AcDbObjectPointer<AcDbHatch> open(id, AcDb::kForWrite);
    AcDbObjectIdArray followed;
    ASSERT_EQ(open->getAssocObjIdsAt(1, followed), Acad::eOk);
    EXPECT_EQ(followed, AcDbObjectIdArray{circle});
    ASSERT_EQ(open->transformBy(AcGeMatrix3d::translation({1, 0, 0})), Acad::eOk);
    EXPECT_FALSE(open->associative());
    followed.removeAll();
    open->getAssocObjIdsAt(1, followed);
    EXPECT_TRUE(followed.isEmpty());
}

TEST(Hatches, StylesFillTheirPartOfTheNest) {
    const auto square = [](int from, int to) {
        const std::string a = std::to_string(from), b = std::to_string(to);
        return "92|3|72|0|73|1|93|4|10|" + a + "|20|" + a + "|10|" + b + "|20|" + a + "|10|" + b + "|20|" +
               b + "|10|" + a + "|20|" + b + "|97|0|";
    };
    const auto hatch = kinds::made<AcDbHatch>(solid(square(0, 10) + square(1, 9) + square(3, 5), 3));
    EXPECT_NEAR(areaOf(*hatch), 100 - 64 + 4, 1e-9);
    hatch->setHatchStyle(AcDbHatch::kOuter);
    EXPECT_NEAR(areaOf(*hatch), 36, 1e-9);
    hatch->setHatchStyle(AcDbHatch::kIgnore);
    EXPECT_NEAR(areaOf(*hatch), 100, 1e-9);
}

TEST(Hatches, WhatCannotBeReadIsKeptAndCannotBeChanged) {
    host::registerEntityClasses();
    const char* broken[] = {"100|AcDbHatch|2|SOLID|70|1|71|0|91|2|92|1|93|1|72|9|10|1|20|1|97|0|75|0",
                            "100|AcDbHatch|2|SOLID|70|1|91|1|92|2|72|0|73|1|93|4|10|0|20|0|97|0|75|0",
                            "100|AcDbHatch|2|SOLID|70|1|91|2147483647|75|0|98|2147483647",
                            "100|AcDbHatch|2|X"};
    for (const char* rows : broken) {
        const auto hatch = kinds::made<AcDbHatch>(rows);
        EXPECT_EQ(kinds::rowsOf(*hatch), rows);
        EXPECT_EQ(hatch->transformBy(AcGeMatrix3d::translation({1, 0, 0})), Acad::eNotApplicable);
        const kinds::Sketch drawn(*hatch);
        EXPECT_TRUE(drawn.lines.empty());
    }
    const auto flat = kinds::made<AcDbHatch>(solid("92|3|72|0|73|1|93|2|10|0|20|0|10|0|20|0|97|0|"));
    EXPECT_TRUE(kinds::Sketch(*flat).areas.empty());
}

TEST(Hatches, SplineEdgesHaveTheirCountOfFitPointsInNewFilesAlone) {
    const auto hatch = kinds::made<AcDbHatch>(solid(kSpline));
    host::CapturingWriter old;
    old.version = AcDb::kDHL_1015;
    hatch->outGroups(old);
    int counts = 0;
    for (const host::Group group : old.groups) counts += group.code == 97;
    EXPECT_EQ(counts, 1); // the loop's own
}
