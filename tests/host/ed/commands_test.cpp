// The host's own commands, undo through them, commands from code and inside each other.
#include <numbers>

#include "host/dxf/dxf.h"
#include "host/ed/commands.h"
#include "host/ent/text.h"
#include "host/os/files.h"
#include "host/os/text.h"
#include "tests/host/ed/support.h"

using edtest::Bench;
using edtest::near;
using testing::HasSubstr;

namespace {

double lengthOf(AcDbObjectId id) {
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    double end = 0, length = -1;
    if (curve && curve->getEndParam(end) == Acad::eOk) curve->getDistAtParam(end, length);
    return length;
}

AcDbObjectPointer<AcDbLayerTableRecord> layer(const Bench& bench, const wchar_t* name) {
    return {bench.database().find(AcDbLayerTable::desc(), name), AcDb::kForRead};
}

} // namespace

TEST(Commands, LinesCloseAndTakeBackTheirSegments) {
    Bench bench;
    bench.run(L"LINE 0,0 30,0 99,99 u 30,40 c\n");
    const auto ids = bench.entities();
    ASSERT_EQ(3u, ids.size());
    EXPECT_DOUBLE_EQ(30, lengthOf(ids[0]));
    EXPECT_DOUBLE_EQ(40, lengthOf(ids[1]));
    EXPECT_DOUBLE_EQ(50, lengthOf(ids[2]));
    EXPECT_THAT(bench.run(L"LINE 0,0 u\n\n"), HasSubstr("All segments are undone."));
}

TEST(Commands, PolylinesKeepWidthsAndCloseOnTheirStart) {
    Bench bench;
    bench.run(L"PLINE 0,0 w 2 4 10,0 10,10 c\n");
    const auto polyline = bench.last<AcDbPolyline>();
    ASSERT_TRUE(polyline);
    EXPECT_EQ(3u, polyline->numVerts());
    EXPECT_TRUE(polyline->isClosed());
    double start = 0, end = 0;
    polyline->getWidthsAt(0, start, end);
    EXPECT_EQ(2, start);
    EXPECT_EQ(4, end);
    polyline->getWidthsAt(1, start, end);
    EXPECT_EQ(4, start); // goes on as wide as the first segment ended
    EXPECT_NEAR(20 + std::sqrt(200), lengthOf(polyline->objectId()), 1e-12);
}

TEST(Commands, ArcsGoThroughTheirThreePointsEitherWayRound) {
    Bench bench;
    for (const wchar_t* script : {L"ARC 10,0 0,10 -10,0\n", L"ARC 10,0 0,-10 -10,0\n"}) {
        bench.run(script);
        const auto arc = bench.last<AcDbArc>();
        ASSERT_TRUE(arc);
        EXPECT_TRUE(near(arc->center(), {0, 0, 0}));
        EXPECT_NEAR(10 * std::numbers::pi, arc->length(), 1e-9);
        AcGePoint3d on;
        const AcGePoint3d through(0, script[11] == L'-' ? -10 : 10, 0);
        arc->getClosestPointTo(through, on);
        EXPECT_TRUE(near(on, through));
    }
    const size_t before = bench.entities().size();
    EXPECT_THAT(bench.run(L"ARC 0,0 1,1 2,2\n"), HasSubstr("lie on a line"));
    EXPECT_EQ(before, bench.entities().size());
}

TEST(Commands, ObjectsTakeTheCurrentLayerAndColour) {
    Bench bench;
    bench.run(L"-LAYER m Walls\n\nCECOLOR 3\nCIRCLE 0,0 d 10\n");
    const auto circle = bench.last<AcDbCircle>();
    ASSERT_TRUE(circle);
    EXPECT_EQ(5, circle->radius());
    EXPECT_EQ(L"Walls", circle->layerName());
    EXPECT_EQ(3, circle->colorIndex());
}

TEST(Commands, PointsAreThoseOfTheUserCoordinateSystem) {
    Bench bench;
    // Turned so that its X axis is the world's Y, its Y axis the world's Z; from (100, 0, 0).
    bench.database().setHeaderPoint("$UCSORG", {100, 0, 0});
    bench.database().setHeaderPoint("$UCSXDIR", {0, 1, 0});
    bench.database().setHeaderPoint("$UCSYDIR", {0, 0, 1});
    bench.run(L"LINE 0,0 10,0\n\n");
    AcGePoint3d end;
    bench.last<AcDbLine>()->getEndPoint(end);
    EXPECT_TRUE(near(end, {100, 10, 0}));
    bench.run(L"PLINE 0,0 0,5\n\n");
    bench.last<AcDbPolyline>()->getEndPoint(end);
    EXPECT_TRUE(near(end, {100, 0, 5}));
    bench.run(L"ARC 10,0 0,10 -10,0\n");
    EXPECT_TRUE(near(bench.last<AcDbArc>()->center(), {100, 0, 0}));
    EXPECT_TRUE(bench.last<AcDbArc>()->normal().isEqualTo(AcGeVector3d::kXAxis));
    bench.run(L"LINE *1,2,3 *4,5,6\n\n"); // world points
    bench.last<AcDbLine>()->getEndPoint(end);
    EXPECT_TRUE(near(end, {4, 5, 6}));
}

TEST(Commands, TextKeepsBlanksAndItsAngle) {
    Bench bench;
    bench.run(L"TEXT 1,2 3.5 90 two words\n");
    const auto text = bench.last<AcDbText>();
    ASSERT_TRUE(text);
    EXPECT_STREQ(L"two words", text->textStringConst());
    EXPECT_EQ(3.5, text->height());
    EXPECT_NEAR(std::numbers::pi / 2, text->rotation(), 1e-12);
}

TEST(Commands, MoveAndCopyByTwoPointsOrByDisplacement) {
    Bench bench;
    const AcDbObjectId id = bench.addCircle({0, 0, 0}, 1);
    const auto center = [](AcDbObjectId circle) {
        return AcDbObjectPointer<AcDbCircle>(circle, AcDb::kForRead)->center();
    };
    bench.run(L"MOVE all\n\n1,1 4,5\n");
    EXPECT_TRUE(near(center(id), {3, 4, 0}));
    bench.run(L"MOVE all\n\n1,2\n\n"); // Enter: the point is the way
    EXPECT_TRUE(near(center(id), {4, 6, 0}));
    bench.run(L"COPY all\n\n0,0 10,0 20,0 30,0 u\n\n");
    const auto ids = bench.entities();
    ASSERT_EQ(3u, ids.size());
    EXPECT_TRUE(near(center(ids[1]), {14, 6, 0}));
    EXPECT_TRUE(near(center(ids[2]), {24, 6, 0}));
    EXPECT_TRUE(near(center(id), {4, 6, 0}));
}

TEST(Commands, LockedLayersAreLeftAlone) {
    Bench bench;
    bench.addLine({0, 0, 0}, {1, 0, 0});
    bench.run(L"-LAYER m Keep\n\nPOINT 5,5\n-LAYER lo Keep\n\n");
    EXPECT_THAT(bench.run(L"ERASE all\n\n"), HasSubstr("1 was on a locked layer."));
    EXPECT_EQ(1u, bench.entities().size());
}

TEST(Commands, LayersAreMadeSetColouredAndSwitched) {
    Bench bench;
    bench.run(L"-LAYER n A,B,C\nc red A,B\noff B\nf C\nlo C\ns A\n\n");
    EXPECT_EQ(1, layer(bench, L"A")->color().colorIndex());
    EXPECT_EQ(7, layer(bench, L"C")->color().colorIndex());
    EXPECT_TRUE(layer(bench, L"B")->isOff() && !layer(bench, L"A")->isOff());
    EXPECT_TRUE(layer(bench, L"C")->isFrozen() && layer(bench, L"C")->isLocked());
    EXPECT_EQ(layer(bench, L"A")->objectId(), bench.database().clayer());
    bench.run(L"LA on *\nt *\nu *\n\n");
    EXPECT_FALSE(layer(bench, L"B")->isOff() || layer(bench, L"C")->isFrozen() ||
                 layer(bench, L"C")->isLocked());
    const std::string transcript = bench.run(L"-LAYER f A\ns Nowhere\nn a*b\non X*\nc puce\nm \n\n");
    EXPECT_THAT(transcript, HasSubstr("Cannot freeze the current layer \"A\"."));
    EXPECT_THAT(transcript, HasSubstr("nothing of the name \"Nowhere\""));
    EXPECT_THAT(transcript, HasSubstr("\"a*b\" is no name for a layer"));
    EXPECT_THAT(transcript, HasSubstr("No layers match \"X*\"."));
    EXPECT_THAT(transcript, HasSubstr("A color is a number"));
    EXPECT_FALSE(layer(bench, L"A")->isFrozen());
}

TEST(Commands, ListTellsLengthAndArea) {
    Bench bench;
    bench.run(L"PLINE 0,0 40,0 40,30 c\n");
    const std::string transcript = bench.run(L"LIST all\n\n");
    for (const char* part :
         {"LWPOLYLINE", "Layer: \"0\"", "Length = 120.0000", "Area = 600.0000", "Vertices: 3"})
        EXPECT_THAT(transcript, HasSubstr(part));
}

TEST(Commands, ZoomShowsWhatIsDrawn) {
    Bench bench;
    bench.addLine({1000, 1000, 0}, {1100, 1400, 0});
    resbuf size, center;
    bench.run(L"ZOOM e\n");
    acedGetVar(L"VIEWSIZE", &size);
    acedGetVar(L"VIEWCTR", &center);
    EXPECT_GE(size.resval.rreal, 400);
    EXPECT_LE(size.resval.rreal, 450);
    EXPECT_NEAR(1050, center.resval.rpoint[X], 1e-9);
    EXPECT_NEAR(1200, center.resval.rpoint[Y], 1e-9);
    const double before = size.resval.rreal;
    bench.run(L"ZOOM 2x\n");
    acedGetVar(L"VIEWSIZE", &size);
    EXPECT_DOUBLE_EQ(before / 2, size.resval.rreal);
    bench.run(L"ZOOM w 0,0 10,100\n");
    acedGetVar(L"VIEWSIZE", &size);
    EXPECT_DOUBLE_EQ(100, size.resval.rreal);
    EXPECT_THAT(bench.run(L"ZOOM w 5,5 5,9\nZOOM zero\n"),
                testing::AllOf(HasSubstr("The window has no area."), HasSubstr("A corner, a factor")));
}

TEST(Commands, UndoBringsTheDrawingBackByteForByte) {
    Bench bench;
    bench.run(L"PLINE 0,0 10,0 10,10 c\nTEXT 0,0 2 0 word\n");
    std::vector<std::string> states = {bench.bytes()};
    const wchar_t* steps[] = {
        L"CIRCLE 5,5 2\n",          L"MOVE all\n\n1,1 2,2\n", L"ERASE l\n\n", L"-LAYER m New\nc 4\n\n\n",
        L"COPY all\n\n0,0 5,5\n\n", L"LTSCALE 3\n",           L"ZOOM e\n",    L"LINE 0,0 1,1 2,2 u\n\n"};
    for (const wchar_t* step : steps) {
        bench.run(step);
        states.push_back(bench.bytes());
        EXPECT_NE(states[states.size() - 2], states.back()) << host::utf8(step);
    }
    for (size_t i = std::size(steps); i > 0; --i) {
        bench.run(L"U\n");
        EXPECT_EQ(states[i - 1], bench.bytes()) << "back before " << host::utf8(steps[i - 1]);
    }
    for (size_t i = 1; i < states.size(); ++i) {
        bench.run(L"REDO\n");
        EXPECT_EQ(states[i], bench.bytes()) << "again " << host::utf8(steps[i - 1]);
    }
}

TEST(Commands, UndoCountsGroupsAndMarks) {
    Bench bench;
    bench.run(L"POINT 1,1\nUNDO begin\nPOINT 2,2\nPOINT 3,3\nUNDO end\nPOINT 4,4\n");
    EXPECT_THAT(bench.run(L"UNDO 2\n"), HasSubstr("POINT GROUP"));
    EXPECT_EQ(1u, bench.entities().size());
    bench.run(L"UNDO mark\nPOINT 5,5\nPOINT 6,6\nUNDO back\n");
    EXPECT_EQ(1u, bench.entities().size());
    EXPECT_THAT(bench.run(L"UNDO back n\n"), HasSubstr("This will undo everything."));
    EXPECT_EQ(1u, bench.entities().size());
    EXPECT_THAT(bench.run(L"UNDO back y\nU\n"), HasSubstr("Nothing to undo."));
    EXPECT_TRUE(bench.entities().empty());
    EXPECT_THAT(bench.run(L"UNDO end\n"), HasSubstr("No group has been begun."));
    EXPECT_THAT(bench.run(L"POINT 1,1\nREDO\n"), HasSubstr("Nothing to redo."));
}

TEST(Commands, SavingWritesTheFileAndForgetsTheChanges) {
    Bench bench;
    const std::string path = edtest::settingsFolder() + "/a drawing.dxf";
    bench.addLine({0, 0, 0}, {1, 0, 0});
    EXPECT_TRUE(bench.database().undoLog().changedSinceSave());
    bench.run(L"SAVEAS " + host::wide(path) + L"\n");
    EXPECT_FALSE(bench.database().undoLog().changedSinceSave());
    EXPECT_EQ(host::wide(path), bench.document()->fileName());
    bench.run(L"POINT 1,1\nQSAVE\n");
    AcDbDatabase read(false);
    EXPECT_TRUE(host::readDrawing(path, read).ok);
    EXPECT_EQ(bench.bytes(), host::drawingBytes(read));
    // Another drawing's file is replaced only after a yes.
    Bench other;
    std::string before, after;
    host::readWhole(path, before);
    other.run(L"SAVEAS " + host::wide(path) + L"\nn\n");
    host::readWhole(path, after);
    EXPECT_EQ(before, after);
    EXPECT_THAT(other.run(L"SAVEAS /nonexistent/folder/x.dxf\n"), HasSubstr("Not saved: cannot write"));
    EXPECT_STREQ(L"", other.document()->fileName());
}

TEST(Commands, RunFromCodeTakeTheirAnswersFromTheCall) {
    Bench bench;
    const ads_point center{1, 2, 3};
    EXPECT_EQ(RTNORM, acedCommandS(RTSTR, L"_.CIRCLE", RT3DPOINT, center, RTREAL, 4.0, RTNONE));
    ASSERT_TRUE(bench.last<AcDbCircle>());
    EXPECT_TRUE(near(bench.last<AcDbCircle>()->center(), {1, 2, 3}));
    EXPECT_EQ(4, bench.last<AcDbCircle>()->radius());
    ads_name one;
    acdbGetAdsName(one, bench.entities().back());
    EXPECT_EQ(RTNORM, acedCommandS(RTSTR, L"_.ERASE", RTENAME, one, RTSTR, L"", RTNONE));
    EXPECT_TRUE(bench.entities().empty());
    EXPECT_EQ(RTERROR, acedCommandS(RTSTR, L"NOSUCH", RTNONE));
    EXPECT_EQ(RTERROR,
              acedCommandS(RTSTR, L"CIRCLE", RTSTR, L"0,0", RTNONE)); // ends in the middle: cancelled
    EXPECT_TRUE(bench.entities().empty());
    // A backslash lets the user answer.
    bench.answer(L"7,7\n", [] {
        EXPECT_EQ(RTNORM, acedCommandS(RTSTR, L"CIRCLE", RTSTR, L"\\", RTREAL, 2.0, RTNONE));
    });
    EXPECT_TRUE(near(bench.last<AcDbCircle>()->center(), {7, 7, 0}));
}

TEST(Commands, TransparentOnesRunInsideOthers) {
    Bench bench;
    const std::string transcript = bench.run(L"LINE 0,0 'ORTHOMODE 1 10,0 'CIRCLE 'NOSUCH 10,10\n\n");
    EXPECT_EQ(2u, bench.entities().size());
    EXPECT_EQ(1, bench.database().headerInteger("$ORTHOMODE", 0));
    EXPECT_THAT(transcript, HasSubstr("The command CIRCLE can't be used transparently."));
    EXPECT_THAT(transcript, HasSubstr("Unknown command \"'NOSUCH\"."));
}

TEST(Commands, ShortFormsMarksAndEnterServeAsNames) {
    Bench bench;
    bench.run(L"l 0,0 1,1\n\n_.c 0,0 5\n._PoInT 3,3\n");
    EXPECT_EQ(3u, bench.entities().size());
    EXPECT_FALSE(bench.outcome.unknownCommand);
    EXPECT_THAT(bench.run(L"?\n"), testing::AllOf(HasSubstr("HOST:"), HasSubstr("Draws a point")));
}

TEST(Commands, NamesAreUniqueAmongAllGroups) {
    Bench bench;
    auto& stack = *static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    const auto nothing = [] {};
    EXPECT_EQ(Acad::eDuplicateKey, stack.addCommand(L"MINE", L"line", L"MYLINE", 0, nothing));
    EXPECT_EQ(Acad::eDuplicateKey, stack.addCommand(L"MINE", L"MYLINE", L"Line", 0, nothing));
    EXPECT_EQ(Acad::eInvalidInput, stack.addCommand(L"MINE", L"MYLINE", L"ML", 0, nullptr));
    EXPECT_EQ(Acad::eOk, stack.addCommand(L"MINE", L"MYLINE", L"ML", 0, nothing));
    EXPECT_TRUE(stack.lookUpCmd(L"ml"));
    EXPECT_FALSE(stack.lookUpCmd(L"_ML")); // the language-independent name is asked for
    EXPECT_EQ(Acad::eOk, stack.removeGroup(L"mine"));
    EXPECT_EQ(Acad::eKeyNotFound, stack.removeCmd(L"MINE", L"MYLINE"));
}
