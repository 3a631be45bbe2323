// ELLIPSE, SPLINE, BLOCK, INSERT, PURGE, UCS, PLAN, -VIEW, NEW, OPEN and CLOSE.
#include <numbers>

#include "host/dxf/dxf.h"
#include "host/ent/blockreference.h"
#include "host/ent/spline.h"
#include "host/ent/text.h"
#include "host/os/files.h"
#include "host/os/text.h"
#include "host/view/collector.h"
#include "tests/host/ed/support.h"

using edtest::Bench;
using edtest::near;
using testing::HasSubstr;
using testing::Not;

namespace {

AcGePoint3d variable(const wchar_t* name) {
    resbuf value;
    EXPECT_EQ(RTNORM, acedGetVar(name, &value));
    return {value.resval.rpoint[X], value.resval.rpoint[Y], value.resval.rpoint[Z]};
}

} // namespace

TEST(Draw, EllipsesByAxisCentreRotationAndArc) {
    struct Row {
        const wchar_t* script;
        AcGePoint3d center;
        AcGeVector3d major;
        double ratio;
    };
    for (const Row& row : {Row{L"ELLIPSE 0,0 10,0 3\n", {5, 0, 0}, {5, 0, 0}, 0.6},
                           Row{L"ELLIPSE c 1,1 4,1 6\n", {1, 1, 0}, {0, 6, 0}, 0.5},
                           Row{L"ELLIPSE c 0,0 10,0 r 60\n", {0, 0, 0}, {10, 0, 0}, 0.5}}) {
        Bench bench;
        bench.run(row.script);
        const auto ellipse = bench.last<AcDbEllipse>();
        ASSERT_TRUE(ellipse) << host::utf8(row.script);
        EXPECT_TRUE(near(row.center, ellipse->center()));
        EXPECT_NEAR(0, (ellipse->majorAxis() - row.major).length(), 1e-9) << host::utf8(row.script);
        EXPECT_NEAR(row.ratio, ellipse->radiusRatio(), 1e-9);
    }
    Bench bench;
    bench.run(L"ELLIPSE a c 0,0 10,0 5 0 90\n");
    AcGePoint3d start, end;
    bench.last<AcDbEllipse>()->getStartPoint(start);
    bench.last<AcDbEllipse>()->getEndPoint(end);
    EXPECT_TRUE(near({10, 0, 0}, start));
    EXPECT_TRUE(near({0, 5, 0}, end));
    EXPECT_THAT(bench.run(L"ELLIPSE 0,0 10,0 1e-9\n"), HasSubstr("too short"));
}

TEST(Draw, PolylinesHaveArcsByEveryWayOfTellingThem) {
    Bench slot;
    slot.run(L"PLINE 0,0 10,0 a 10,10 l 0,10 a cl\n");
    double end = 0, length = 0;
    slot.last<AcDbPolyline>()->getEndParam(end);
    slot.last<AcDbPolyline>()->getDistAtParam(end, length);
    EXPECT_TRUE(slot.last<AcDbPolyline>()->isClosed());
    EXPECT_NEAR(20 + 10 * std::numbers::pi, length, 1e-9);
    // A quarter circle to the left from 0,0 to 5,5, told in many ways; all begin towards +X.
    const double quarter = std::tan(std::numbers::pi / 8);
    for (const wchar_t* way : {L"5,5", L"a 90 5,5", L"ce 0,5 5,5", L"d 9,0 5,5", L"r 5 5,5",
                               L"s 3.5355339059327378,1.4644660940672622 5,5"}) {
        Bench bench;
        bench.run(L"PLINE 0,0 a " + std::wstring(way) + L" \n");
        ASSERT_TRUE(bench.last<AcDbPolyline>()) << host::utf8(way);
        double bulge = 0;
        bench.last<AcDbPolyline>()->getBulgeAt(0, bulge);
        EXPECT_NEAR(quarter, bulge, 1e-9) << host::utf8(way);
        AcGePoint3d tip;
        bench.last<AcDbPolyline>()->getPointAt(1, tip);
        EXPECT_TRUE(near({5, 5, 0}, tip)) << host::utf8(way);
    }
    Bench bench;
    bench.run(L"PLINE 0,0 a 10,10 l l 5 h 1 2 20,20 \n");
    AcGePoint3d third;
    bench.last<AcDbPolyline>()->getPointAt(2, third);
    EXPECT_TRUE(near({10, 15, 0}, third)); // on in the direction of the arc's end
    double start = 0, stop = 0;
    bench.last<AcDbPolyline>()->getWidthsAt(2, start, stop);
    EXPECT_EQ(2, start);
    EXPECT_EQ(4, stop);
}

TEST(Draw, CirclesThroughPointsAndArcsByTheirCentre) {
    Bench bench;
    bench.run(L"CIRCLE 3p 10,0 0,10 -10,0\n");
    EXPECT_TRUE(near({0, 0, 0}, bench.last<AcDbCircle>()->center()));
    EXPECT_NEAR(10, bench.last<AcDbCircle>()->radius(), 1e-9);
    bench.run(L"CIRCLE 2p 0,0 8,0\n");
    EXPECT_TRUE(near({4, 0, 0}, bench.last<AcDbCircle>()->center()));
    for (const wchar_t* script : {L"ARC c 1,1 3,1 1,9\n", L"ARC c 1,1 3,1 a 90\n"}) {
        bench.run(script);
        AcGePoint3d end;
        bench.last<AcDbArc>()->getEndPoint(end);
        EXPECT_TRUE(near({1, 3, 0}, end));
    }
}

TEST(Draw, SplinesGoThroughFitPointsOrAreDrawnByControlPoints) {
    Bench bench;
    bench.run(L"SPLINE 0,0 10,5 20,0 30,9 u 30,5 \n");
    ASSERT_TRUE(bench.last<AcDbSpline>());
    EXPECT_EQ(4, bench.last<AcDbSpline>()->numFitPoints());
    AcGePoint3d nearest;
    bench.last<AcDbSpline>()->getClosestPointTo({10, 5, 0}, nearest);
    EXPECT_TRUE(near({10, 5, 0}, nearest));
    bench.run(L"SPLINE m cv 0,0 10,10 20,10 30,0 \n");
    EXPECT_EQ(4, bench.last<AcDbSpline>()->numControlPoints());
    AcGePoint3d middle;
    bench.last<AcDbSpline>()->getPointAtParam(0.5, middle);
    EXPECT_TRUE(near({15, 7.5, 0}, middle));
    bench.run(L"SPLINE m cv 0,0 10,0 10,10 0,10 c\n");
    EXPECT_TRUE(bench.last<AcDbSpline>()->isClosed());
    EXPECT_TRUE(bench.last<AcDbSpline>()->isPeriodic());
}

TEST(Blocks, InsertAsksForAttributesAndRedefinitionReachesAllReferences) {
    Bench bench;
    auto definition = std::make_unique<AcDbAttributeDefinition>();
    definition->setTag(L"NUMBER");
    definition->setPrompt(L"Number of the tree");
    definition->setTextString(L"7");
    definition->setPosition({1, 1, 0});
    definition->setHeight(2);
    bench.addCircle({5, 5, 0}, 1);
    bench.add(std::move(definition));
    bench.run(L"BLOCK tree\n5,5 all\n\n");
    EXPECT_TRUE(bench.entities().empty());
    const std::string told = bench.run(L"INSERT tree\n100,100 2\n\n0\nOld oak\n");
    EXPECT_THAT(told, HasSubstr("Number of the tree <7>"));
    const auto reference = bench.last<AcDbBlockReference>();
    ASSERT_TRUE(reference);
    std::unique_ptr<AcDbObjectIterator> attributes(reference->attributeIterator());
    ASSERT_FALSE(attributes->done());
    AcDbObjectPointer<AcDbAttribute> attribute(attributes->objectId(), AcDb::kForRead);
    EXPECT_STREQ(L"Old oak", attribute->textStringConst());
    EXPECT_TRUE(near({92, 92, 0}, attribute->position()));
    EXPECT_EQ(4, attribute->height());
    attribute.close();
    bench.addCircle({0, 0, 0}, 30);
    bench.run(L"BLOCK tree\ny 0,0 l\n\n");
    AcDbExtents box;
    reference->getGeomExtents(box);
    EXPECT_GE(box.maxPoint().x, 160 - 1e-9);
    EXPECT_THAT(bench.run(L"INSERT bush\n"), HasSubstr("no block \"bush\""));
    // A reference to the block can't go into the block.
    EXPECT_THAT(bench.run(L"BLOCK tree\ny 0,0 l\n\n"), HasSubstr("would contain itself"));
}

TEST(Blocks, PurgeTakesOutWhatNothingUsesEvenWhenNested) {
    Bench bench;
    bench.addLayer(L"Empty");
    bench.addLayer(L"Inside");
    bench.run(L"LINE 0,0 5,5 \n");
    bench.putOnLayer(bench.entities().back(), L"Inside");
    bench.run(L"BLOCK inner\n0,0 l\n\nINSERT inner\n0,0\n\n\n\nBLOCK outer\n0,0 l\n\n");
    bench.run(L"INSERT outer\n0,0\n\n\n\n");
    EXPECT_THAT(bench.run(L"PURGE b\n\nn\n"), HasSubstr("No unreferenced blocks found."));
    const std::string layers = bench.run(L"PURGE la\n\nn\n");
    EXPECT_THAT(layers, HasSubstr("Deleting layer \"Empty\"."));
    EXPECT_THAT(layers, Not(HasSubstr("Inside")));
    bench.run(L"ERASE l\n\n");
    EXPECT_THAT(bench.run(L"PURGE b\nout*\ny n\n"), HasSubstr("No unreferenced blocks found."));
    const std::string blocks = bench.run(L"PURGE a\n\nn\n");
    for (const char* gone : {"block \"outer\"", "block \"inner\"", "layer \"Inside\""})
        EXPECT_THAT(blocks, HasSubstr(gone));
    AcDbDatabase reread(false);
    EXPECT_TRUE(host::readDrawingBytes(bench.bytes(), "purged", reread).ok);
}

TEST(Views, UserAxesAreSetSavedRestoredAndTurned) {
    Bench bench;
    bench.run(L"UCS 10,20,30 @0,1 @-1,0\n");
    EXPECT_TRUE(near({10, 20, 30}, variable(L"UCSORG")));
    EXPECT_TRUE(near({0, 1, 0}, variable(L"UCSXDIR")));
    bench.run(L"LINE 0,0 5,0 \n");
    AcGePoint3d end;
    bench.last<AcDbLine>()->getEndPoint(end);
    EXPECT_TRUE(near({10, 25, 30}, end));
    bench.run(L"UCS s Side\nUCS w\nUCS x 90\n");
    EXPECT_TRUE(near({0, 0, 1}, variable(L"UCSYDIR")));
    bench.run(L"UCS p\n");
    EXPECT_TRUE(near({0, 1, 0}, variable(L"UCSYDIR")));
    bench.run(L"UCS r side\n");
    EXPECT_TRUE(near({10, 20, 30}, variable(L"UCSORG")));
    // Saved with the drawing.
    AcDbDatabase reread(false);
    ASSERT_TRUE(host::readDrawingBytes(bench.bytes(), "axes", reread).ok);
    AcDbObjectPointer<AcDbUCSTableRecord> side(reread.find(AcDbUCSTable::desc(), L"Side"), AcDb::kForRead);
    ASSERT_TRUE(side);
    EXPECT_TRUE(near({10, 20, 30}, side->origin()));
    EXPECT_EQ(AcGeVector3d(0, 1, 0), side->xAxis());
    EXPECT_THAT(bench.run(L"UCS 0,0 1,0 2,0\n"), HasSubstr("span no plane"));
    EXPECT_THAT(bench.run(L"UCS d Side\nUCS r Side\n"), HasSubstr("no UCS \"Side\""));
}

TEST(Views, PlanAndViewLookFromWhereTheySay) {
    Bench bench;
    bench.addLine({0, 0, 0}, {100, 0, 50});
    bench.run(L"-VIEW o f\n");
    EXPECT_TRUE(near({0, -1, 0}, variable(L"VIEWDIR")));
    bench.run(L"-VIEW _SWISO\n");
    EXPECT_TRUE(near({-1, -1, 1}, variable(L"VIEWDIR")));
    bench.run(L"-VIEW f\n");
    EXPECT_TRUE(near({0, -1, 0}, variable(L"VIEWDIR")));
    bench.run(L"-VIEW s Front\nPLAN w\n");
    EXPECT_TRUE(near({0, 0, 1}, variable(L"VIEWDIR")));
    bench.run(L"-VIEW r front\n");
    EXPECT_TRUE(near({0, -1, 0}, variable(L"VIEWDIR")));
    // Plan of turned axes: their X points to the right.
    bench.run(L"UCS z 30\nPLAN c\n");
    ads_point right{1, 0, 0}, seen;
    resbuf user, display;
    user.restype = display.restype = RTSHORT;
    user.resval.rint = 1, display.resval.rint = 2;
    ASSERT_EQ(RTNORM, acedTrans(right, &user, &display, 1, seen));
    EXPECT_TRUE(near({1, 0, 0}, {seen[X], seen[Y], seen[Z]}));
    EXPECT_THAT(bench.run(L"-VIEW r nowhere\n"), HasSubstr("no view \"nowhere\""));
}

TEST(Documents, OpenCloseAndNewChangeTheCurrentDrawing) {
    Bench bench;
    const std::string path = edtest::settingsFolder() + "/second.dxf";
    AcApDocument* first = bench.document();
    bench.run(L"LINE 0,0 1,1 \nSAVEAS " + host::wide(path) + L"\nNEW\n");
    AcApDocument* fresh = curDoc();
    EXPECT_NE(first, fresh);
    bench.run(L"CIRCLE 0,0 5\nOPEN " + host::wide(path) + L"\n");
    EXPECT_EQ(first, curDoc()); // open already
    EXPECT_THAT(bench.run(L"OPEN " + host::wide(path) + L".missing\n"), HasSubstr("Not opened"));
    acDocManagerPtr()->setCurDocument(fresh);
    bench.run(L"CLOSE n\n");
    EXPECT_EQ(first, curDoc());
    EXPECT_EQ(1u, bench.entities().size());
}

TEST(Clips, ReferencesShowWhatLiesInTheirBoundary) {
    Bench bench;
    bench.run(L"LINE 0,0 100,0 \nCIRCLE 50,0 10\nTEXT 90,5 2 0\nfar away\nBLOCK bar\n0,0 all\n\nINSERT "
              L"bar\n10,20\n\n\n\n");
    const auto shown = [&] { return host::displaySpace(bench.database(), {}).extents; };
    const AcDbExtents whole = shown();
    bench.run(L"XCLIP l\n\nn r 20,10 70,25\n");
    EXPECT_TRUE(
        near({20, 10, 0}, {shown().minPoint().x, shown().minPoint().y, 0}, 0.01)); // chords of the circle
    EXPECT_TRUE(near({70, 25, 0}, {shown().maxPoint().x, shown().maxPoint().y, 0}, 0.01));
    EXPECT_TRUE(host::displaySpace(bench.database(), {}).texts.empty());
    // The boundary goes with the reference, comes back from a file, and is undone.
    bench.run(L"MOVE l\n\n0,0 1000,0\nROTATE l\n\n1010,20 90\n");
    AcDbDatabase reread(false);
    ASSERT_TRUE(host::readDrawingBytes(bench.bytes(), "clipped", reread).ok);
    for (AcDbDatabase* drawing : {&bench.database(), &reread}) {
        const AcDbExtents box = host::displaySpace(*drawing, {}).extents;
        EXPECT_NEAR(box.minPoint().y, 30, 1e-6);
        EXPECT_NEAR(box.maxPoint().y, 80, 1e-6);
    }
    bench.run(L"UNDO 2\nXCLIP l\n\noff\n");
    EXPECT_TRUE(near(whole.maxPoint(), shown().maxPoint()));
    bench.run(L"XCLIP l\n\non\n");
    EXPECT_NEAR(shown().maxPoint().x, 70, 1e-9);
    bench.run(L"XCLIP l\n\np\n");
    ASSERT_TRUE(bench.last<AcDbPolyline>());
    AcDbExtents outline;
    bench.last<AcDbPolyline>()->getGeomExtents(outline);
    EXPECT_TRUE(near({20, 10, 0}, outline.minPoint()));
    const std::string told = bench.run(L"XCLIP all\n\nd\nXCLIP all\n\nd\n");
    EXPECT_THAT(told, HasSubstr("1 are no block references."));
    EXPECT_THAT(told, HasSubstr("1 have no boundary."));
    EXPECT_TRUE(near(whole.maxPoint(), shown().maxPoint()));
}
