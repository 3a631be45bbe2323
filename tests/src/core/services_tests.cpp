// The services that every command stands on.
#include <gmock/gmock.h>

#include "core/appending.h"
#include "core/brackets.h"
#include "core/curve_services.h"
#include "core/messages.h"
#include "core/payload.h"
#include "core/properties.h"
#include "core/selection.h"
#include "core/sysvar_stack.h"
#include "support/drawing.h"

using namespace corvane;
using support::Drawing;
using testing::HasSubstr;

namespace {

AcDbObjectId aLine(Drawing& drawing) {
    return drawing.add(std::make_unique<AcDbLine>(AcGePoint3d(1, 2, 0), AcGePoint3d(4, 6, 0)));
}

// Runs `work` as a command of the drawing, with these answers.
template <class Work> std::string inCommand(Drawing& drawing, const std::wstring& answers, Work work) {
    static Work* current;
    current = &work;
    auto* stack = static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    stack->addCommand(L"TEST", L"TESTWORK", L"TESTWORK", ACRX_CMD_MODAL, [] { (*current)(); });
    const std::string transcript = drawing.run(L"TESTWORK\n" + answers);
    stack->removeGroup(L"TEST");
    return transcript;
}

int piecesOf(AcDbObjectId id, const wchar_t* application) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    const host::ResbufChain chain(entity->xData(application));
    int pieces = 0;
    for (const resbuf* group = chain.get(); group; group = group->rbnext) pieces += group->restype == 1000;
    return pieces;
}

} // namespace

TEST(Payload, IsCutEvery200CharactersAndComesBackWhole) {
    const struct {
        size_t length;
        int pieces;
    } rows[] = {{1, 1}, {200, 1}, {400, 2}, {401, 3}, {5000, 25}};
    for (const auto& row : rows) {
        Drawing drawing;
        const AcDbObjectId id = aLine(drawing);
        std::wstring text;
        for (size_t i = 0; i < row.length; ++i) text += wchar_t(i % 7 == 0 ? 0x4E2D : L'a' + i % 26);
        ASSERT_EQ(Acad::eOk, PayloadText(text).Write(id, L"SCVN_AAC"));
        EXPECT_EQ(row.pieces, piecesOf(id, L"SCVN_AAC")) << row.length;
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        EXPECT_EQ(text, PayloadText::Read(*entity, L"SCVN_AAC").text());
        EXPECT_TRUE(PayloadText::Read(*entity, L"SCVN_AADC").empty());
    }
}

TEST(Payload, NumbersComeBackExactlyAndMissesLeaveTheValueAlone) {
    const PayloadText text =
        PayloadText(L"AAWC2;").Add(L"n", 42).Add(L"len", 1.0 / 3).Add(L"at", AcGePoint3d(0.1, -2e300, 1e-9));
    int n = 0;
    double length = 0;
    AcGePoint3d at;
    EXPECT_TRUE(text.Get(L"n", n) && text.Get(L"len", length) && text.Get(L"at", at));
    EXPECT_EQ(42, n);
    EXPECT_EQ(1.0 / 3, length);
    EXPECT_EQ(AcGePoint3d(0.1, -2e300, 1e-9), at);
    EXPECT_FALSE(text.Get(L"missing", n));
    EXPECT_FALSE(PayloadText(L"n=7").Get(L"n", n)) << "a value without its end is missing";
    EXPECT_FALSE(PayloadText(L"at=1,2;").Get(L"at", at));
    EXPECT_EQ(42, n);
    EXPECT_EQ(0.1, at.x);
}

TEST(Payload, ShortKeysAreFoundInLongerOnesUnlessASemicolonStandsBefore) {
    double d = 0;
    EXPECT_TRUE(PayloadText(L"sd=1;").Get(L"d", d));
    EXPECT_EQ(1, d);
    EXPECT_FALSE(PayloadText(L"sd=1;").Get(L";d", d));
    EXPECT_TRUE(PayloadText(L"sd=1;;d=2;").Get(L";d", d));
    EXPECT_EQ(2, d);
}

TEST(ScaleFactor, IsOneUnlessWritten) {
    Drawing drawing;
    const AcDbObjectId id = aLine(drawing);
    {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        EXPECT_EQ(1.0, ReadScaleFactor(*entity));
    }
    ASSERT_EQ(Acad::eOk, WriteScaleFactor(id, 2.5));
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    EXPECT_EQ(2.5, ReadScaleFactor(*entity));
}

TEST(SysVars, TheStackRestoresTheLastPushedFirst) {
    Drawing drawing;
    SetSysVarInt(L"OSMODE", 33);
    SetSysVarReal(L"PDSIZE", 1.5);
    {
        SdSysVarStack stack;
        stack.Push(L"OSMODE", short(0));
        stack.Push(L"PDSIZE", 4.0);
        stack.Push(L"OSMODE", short(8));
        stack.Push(L"CLAYER", L"0");
        stack.Push(L"LIMMAX", AcGePoint2d(7, 8));
        EXPECT_EQ(8, GetSysVarInt(L"osmode"));
        EXPECT_EQ(4.0, GetSysVarReal(L"PDSIZE"));
        EXPECT_TRUE(stack.Remove(L"OSMODE"));
        EXPECT_EQ(0, GetSysVarInt(L"OSMODE")) << "the value of the push before";
        EXPECT_FALSE(stack.Remove(L"TEXTSIZE"));
    }
    EXPECT_EQ(33, GetSysVarInt(L"OSMODE"));
    EXPECT_EQ(1.5, GetSysVarReal(L"PDSIZE"));
}

TEST(SysVars, UnknownAndMistypedOnesSaySoAndLeaveTheValueAlone) {
    Drawing drawing;
    short number = 5;
    EXPECT_EQ(RTERROR, ReadSysVar(L"CLAYER", number));
    EXPECT_EQ(RTERROR, ReadSysVar(L"NOSUCHVAR", number));
    EXPECT_EQ(5, number);
    EXPECT_EQ(-999, GetSysVarInt(L"NOSUCHVAR"));
    EXPECT_EQ(-999.0, GetSysVarReal(L"NOSUCHVAR"));
    const std::string transcript = inCommand(drawing, L"", [] {
        SdSysVarStack stack;
        stack.Push(L"NOSUCHVAR", short(1));
    });
    EXPECT_THAT(transcript, HasSubstr("Could not save state of system variable \"NOSUCHVAR\"."));
    EXPECT_THAT(transcript, HasSubstr("Could not set system variable \"NOSUCHVAR\"."));
}

TEST(YesNo, EnterAndEscGiveTheDefaultAndOnlyYesIsTrue) {
    const struct {
        const wchar_t* answer;
        bool otherwise, expected;
    } rows[] = {{L"Y\n", false, true},  {L"yes\n", false, true},       {L"N\n", true, false},
                {L"No\n", true, false}, {L"\n", true, true},           {L"\n", false, false},
                {L"^C\n", true, true},  {L"perhaps\nY\n", false, true}};
    for (const auto& row : rows) {
        Drawing drawing;
        bool answer = !row.expected;
        inCommand(drawing, row.answer,
                  [&] { answer = AskYesNo(L"\n是否保护细节(Y/N)[Y]", L"", row.otherwise); });
        EXPECT_EQ(row.expected, answer) << host::utf8(row.answer) << row.otherwise;
    }
}

TEST(Diagnostics, ArePrintedOnlyWhileTheSwitchIsOn) {
    Drawing drawing;
    const auto print = [] { DebugPrint(L"here"); };
    EXPECT_THAT(inCommand(drawing, L"", print), testing::Not(HasSubstr("[] here")));
    drawing.run(L"CVdebugPrint\nY\n");
    EXPECT_THAT(inCommand(drawing, L"", print), HasSubstr("[] here"));
    drawing.run(L"CVdebugPrint\n\n");
    EXPECT_FALSE(DebugPrintOn());
}

TEST(Appending, LandsBesideTheReferenceAlsoInsideABlock) {
    Drawing drawing;
    AcDbBlockTableRecord* record = nullptr;
    AcDbObjectId block, inner, beside, alone;
    ASSERT_TRUE(MakeAnonymousBlock(&drawing.database(), record, block));
    auto* line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    record->appendAcDbEntity(inner, line);
    line->close();
    EXPECT_EQ(L"*U", record->name().substr(0, 2));
    record->close();

    EXPECT_EQ(Acad::eOk,
              AppendBesideEntity(&drawing.database(), new AcDbLine({0, 1, 0}, {1, 1, 0}), inner, beside));
    EXPECT_EQ(Acad::eOk, AppendBesideEntity(&drawing.database(), new AcDbLine({0, 2, 0}, {1, 2, 0}),
                                            AcDbObjectId(), alone));
    AcDbObjectPointer<AcDbEntity> first(beside, AcDb::kForRead), second(alone, AcDb::kForRead);
    EXPECT_EQ(block, first->ownerId());
    EXPECT_EQ(drawing.database().modelSpaceId(), second->ownerId());
    // An owner that is no block refuses, and the entity stays the caller's.
    AcDbLine orphan({0, 0, 0}, {1, 0, 0});
    EXPECT_NE(Acad::eOk, AppendBesideEntity(&drawing.database(), &orphan, block, alone));
    EXPECT_TRUE(orphan.objectId().isNull());
}

TEST(Appending, ABlockFromEntitiesTakesThemOver) {
    Drawing drawing;
    const AcDbObjectId a = aLine(drawing), b = aLine(drawing);
    AcDbObjectIdArray ids({a, b});
    const AcDbObjectId reference = MakeBlockFromEntities({10, 20, 0}, ids);
    EXPECT_TRUE(ids.isEmpty());
    EXPECT_EQ(reference, drawing.only<AcDbBlockReference>());
    AcDbObjectPointer<AcDbBlockReference> insert(reference, AcDb::kForRead);
    AcDbExtents extents;
    ASSERT_EQ(Acad::eOk, insert->getGeomExtents(extents));
    EXPECT_EQ(AcGePoint3d(1, 2, 0), extents.minPoint()) << "the lines are where they were";
    AcDbObjectPointer<AcDbEntity> line(a, AcDb::kForRead);
    EXPECT_EQ(insert->blockTableRecord(), line->ownerId());
}

TEST(Properties, ByLayerAndByBlockAreResolved) {
    Drawing drawing;
    const AcDbObjectId id = aLine(drawing);
    AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    AcDbObjectPointer<AcDbLayerTableRecord> layer(line->layerId(), AcDb::kForWrite);
    AcCmColor green, color;
    green.setColorIndex(3);
    layer->setColor(green);
    layer.close();
    const auto resolved = [&](int index) {
        return line->setColorIndex(Adesk::UInt16(index)), ResolvedColor(*line, color), color.colorIndex();
    };
    EXPECT_EQ(3, resolved(256));
    EXPECT_EQ(7, resolved(0));
    EXPECT_EQ(5, resolved(5));
    std::wstring name;
    int index = 0;
    EXPECT_EQ(Acad::eOk, LayerNameAndColor(*line, name, index));
    EXPECT_EQ(L"0", name);
    EXPECT_EQ(3, index);
}

TEST(Planes, FollowTheArbitraryAxisRuleOnBothSidesOfItsLimit) {
    for (const AcGeVector3d& n :
         {AcGeVector3d(0, 0, 1), AcGeVector3d(0.01, 0.0156, 1), AcGeVector3d(0.016, 0, 1),
          AcGeVector3d(0, 0, -1), AcGeVector3d(1, 2, -3)}) {
        AcGeMatrix3d matrix;
        MatrixFromNormal(n, matrix);
        const AcGeVector3d unit = n.normal();
        const bool steep = std::abs(unit.x) < 1.0 / 64 && std::abs(unit.y) < 1.0 / 64;
        const AcGeVector3d reference = steep ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis;
        const AcGeVector3d x = matrix * AcGeVector3d::kXAxis, z = matrix * AcGeVector3d::kZAxis;
        EXPECT_NEAR(0, x.dotProduct(unit), 1e-14);
        EXPECT_NEAR(0, x.dotProduct(reference), 1e-14);
        EXPECT_GE(reference.crossProduct(unit).dotProduct(x), 0);
        EXPECT_NEAR(1, z.dotProduct(unit), 1e-14);
        AcGePlane plane;
        PlaneFromNormal(n, plane);
        EXPECT_NEAR(1, plane.normal().dotProduct(unit), 1e-14);
    }
}

TEST(CurveServices, SamplesAreEvenAndEndExactly) {
    AcDbPolyline bow;
    bow.addVertexAt(0, {0, 0}, 1.0); // half a circle of radius 5
    bow.addVertexAt(1, {10, 0});
    EXPECT_NEAR(5 * 3.14159265358979, CurveLength(bow), 1e-9);
    AcGePoint3dArray points;
    ASSERT_TRUE(SampleCurveEvenly(bow, points, 9));
    ASSERT_EQ(9, points.length());
    for (int i = 1; i < 9; ++i)
        EXPECT_NEAR(10 * std::sin(3.14159265358979 / 16), points[i].distanceTo(points[i - 1]), 1e-9);
    EXPECT_EQ(AcGePoint3d(10, 0, 0), points.last());
    EXPECT_FALSE(SampleCurveEvenly(AcDbLine({0, 0, 0}, {5e-5, 0, 0}), points, 9));
    EXPECT_EQ(0, CurveLength(AcDbPoint({1, 2, 3})));
}

TEST(CurveServices, PointsInOneDirectionGiveALineAndOthersACurve) {
    const AcGePoint3d straight[] = {{0, 0, 0}, {5, 5, 0}, {2, 2, 0}},
                      bent[] = {{0, 0, 0}, {5, 0, 0}, {5, 5, 0}, {0, 6, 0}};
    const AcGePoint3d rising[] = {{0, 0, 0}, {5, 0, 1}, {5, 5, 2}};
    Drawing drawing;
    AcDbObjectId id;
    const auto make = [&](const AcGePoint3d* points, int count, bool closed) {
        EXPECT_TRUE(MakeCurveThroughPoints(id, count, points, 1, closed, {}, {}));
        return std::wstring(id.objectClass()->name());
    };
    EXPECT_EQ(L"AcDbLine", make(straight, 3, true));
    EXPECT_EQ(L"AcDbLine", make(bent, 2, false));
    EXPECT_EQ(L"AcDbSpline", make(bent, 4, false));
    EXPECT_EQ(L"AcDbSpline", make(bent, 4, true));
    CurveKindIsSpline = false;
    EXPECT_EQ(L"AcDbPolyline", make(bent, 4, true));
    EXPECT_EQ(L"AcDb3dPolyline", make(rising, 3, false));
    CurveKindIsSpline = true;
    EXPECT_FALSE(MakeCurveThroughPoints(id, 1, bent, 1, false, {}, {}));
}

TEST(CurveServices, ColourIndicesOutsideTheRangeTakeTheCurrentColour) {
    const AcGePoint3d points[] = {{0, 0, 0}, {5, 0, 0}};
    Drawing drawing;
    AcCmColor current;
    current.setColorIndex(6);
    drawing.database().setCecolor(current);
    for (const auto& [index, expected] :
         {std::pair(256, 256), std::pair(0, 0), std::pair(17, 17), std::pair(-1, 6), std::pair(900, 6)}) {
        AcDbObjectId id;
        ASSERT_TRUE(MakeCurveThroughPoints(id, 2, points, index, false, {}, {}));
        AcDbObjectPointer<AcDbEntity> curve(id, AcDb::kForRead);
        EXPECT_EQ(expected, curve->colorIndex()) << index;
    }
}

TEST(Ids, HandlesLeadThereAndBackAndWrongOnesComplain) {
    Drawing drawing;
    const AcDbObjectId id = aLine(drawing);
    AcDbHandle handle;
    ASSERT_EQ(Acad::eOk, GetHandle(id, handle));
    AcDbObjectId found;
    EXPECT_EQ(0, IdFromHandleText(&drawing.database(), handle.ascii().c_str(), found, false));
    EXPECT_EQ(id, found);
    const std::string transcript = inCommand(drawing, L"", [&] {
        EXPECT_EQ(3, IdFromHandleText(&drawing.database(), L"FFFFFF", found, true));
        EXPECT_EQ(3, IdFromHandleText(&drawing.database(), L"nonsense", found, true));
    });
    EXPECT_THAT(transcript, HasSubstr("Could not translate handle to objectId (FFFFFF)"));
}

TEST(Extents, OfNothingAreTheFreshBoxAndIdsAreConsumed) {
    Drawing drawing;
    AcDbObjectIdArray ids;
    AcDbExtents extents;
    IdsExtents(extents, ids);
    EXPECT_EQ(1e20, extents.minPoint().x);
    EXPECT_EQ(-1e20, extents.maxPoint().z);
    ids.append(aLine(drawing));
    ids.append(AcDbObjectId());
    IdsExtents(extents, ids);
    EXPECT_EQ(AcGePoint3d(4, 6, 0), extents.maxPoint());
    EXPECT_TRUE(ids.isEmpty());
}

TEST(Brackets, AGroupIsOneStepAndALockIsGivenBack) {
    Drawing drawing;
    const AcGePoint3d points[] = {{0, 0, 0}, {5, 0, 0}};
    inCommand(drawing, L"", [&] {
        const UndoGroup group;
        AcDbObjectId id;
        for (int i = 0; i < 3; ++i) MakeCurveThroughPoints(id, 2, points, 1, false, {}, {});
    });
    EXPECT_EQ(3u, drawing.entities().size());
    drawing.run(L"U\n");
    EXPECT_TRUE(drawing.entities().empty());
    {
        const DocumentLock lock;
        EXPECT_TRUE(bool(lock));
        EXPECT_EQ(AcAp::kWrite, acDocManagerPtr()->curDocument()->lockMode(true));
    }
    EXPECT_EQ(AcAp::kNotLocked, acDocManagerPtr()->curDocument()->lockMode(true));
}

TEST(Views, TheWindowStandsRoundTheViewsCentreInWorldCoordinates) {
    Drawing drawing;
    drawing.run(L"ZOOM\nW\n0,0\n160,90\n");
    AcGePoint3d low, high;
    ViewWindow(low, high);
    EXPECT_NEAR(80, (low.x + high.x) / 2, 1e-9);
    EXPECT_NEAR(45, (low.y + high.y) / 2, 1e-9);
    // The window that was asked for is shown whole, in the screen's proportions.
    EXPECT_NEAR(90, high.y - low.y, 0.1);
    EXPECT_NEAR((high.y - low.y) * 1920 / 1080, high.x - low.x, 1e-9);
    AcGePoint3d activeLow, activeHigh;
    ActiveViewWindow(activeLow, activeHigh);
    EXPECT_NEAR(80, (activeLow.x + activeHigh.x) / 2, 1e-9);
    EXPECT_NEAR(high.y - low.y, activeHigh.y - activeLow.y, 1e-9);
}

TEST(Coordinates, GoThroughTheUcsAndBack) {
    Drawing drawing;
    drawing.database().setHeaderPoint("$UCSORG", {10, 20, 30});
    drawing.database().setHeaderPoint("$UCSXDIR", {0, 1, 0});
    drawing.database().setHeaderPoint("$UCSYDIR", {-1, 0, 0});
    AcGePoint3d point(1, 2, 3);
    UcsToWcs(point);
    EXPECT_LT(point.distanceTo({8, 21, 33}), 1e-12);
    WcsToUcs(point);
    EXPECT_LT(point.distanceTo({1, 2, 3}), 1e-12);
    // What is typed counts in the UCS, what is drawn in the world.
    drawing.run(L"POINT\n1,0\n");
    AcDbObjectPointer<AcDbPoint> drawn(drawing.only<AcDbPoint>(), AcDb::kForRead);
    EXPECT_LT(drawn->position().distanceTo({10, 21, 30}), 1e-12);
}

TEST(CurveServices, BulgedPolylinesStandBesideTheirReference) {
    Drawing drawing;
    const AcGePoint3d points[] = {{0, 0, 4}, {10, 0, 4}, {10, 5, 4}};
    const double bulges[] = {1, 0, 0.5};
    AcDbObjectId id;
    ASSERT_EQ(Acad::eOk, MakeBulgedPolyline(id, 3, points, bulges, true));
    AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    double bulge = 0;
    polyline->getBulgeAt(2, bulge);
    EXPECT_EQ(0.5, bulge);
    EXPECT_EQ(4, polyline->elevation());
    EXPECT_TRUE(polyline->isClosed());
    double width = -1;
    EXPECT_EQ(Acad::eOk, polyline->getConstantWidth(width));
    EXPECT_EQ(0, width) << "the default width, never -1";
    EXPECT_THAT(drawing.bytes(), testing::Not(HasSubstr(" 40\n-1.0\n")));
    EXPECT_EQ(Acad::eInvalidInput, MakeBulgedPolyline(id, 1, points, bulges, true));
}
