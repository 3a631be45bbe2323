// Blends that follow their curves: changes by plain commands, in a second run, undone, with parts erased and
// copied, in several drawings at once.
#include <gmock/gmock.h>

#include "assoc/association_index.h"
#include "support/blends.h"

using namespace corvane;
using support::BlendDrawing;
using support::copiesOf;
using support::Reopened;

namespace {

const AssociationIndex kIndex(L"BLEND_PERSREAC", L"BLEND_INDEX");

std::wstring picked(AcDbObjectId id) { return L"(handent \"" + id.handle().ascii() + L"\")"; }

// The ends of the only copy, half-way between the ends of the curves as they are now.
void expectHalfWay(AcDbObjectId blend, AcDbObjectId curve1, AcDbObjectId curve2, const std::string& caption) {
    const auto copies = copiesOf(blend);
    ASSERT_EQ(1u, copies.size()) << caption;
    AcGePoint3d a0, a1, b0, b1;
    AcDbObjectPointer<AcDbCurve> first(curve1, AcDb::kForRead), second(curve2, AcDb::kForRead);
    first->getStartPoint(a0), first->getEndPoint(a1), second->getStartPoint(b0), second->getEndPoint(b1);
    EXPECT_LT(copies[0].front().distanceTo(a0 + (b0 - a0) / 2), 1e-7) << caption;
    EXPECT_LT(copies[0].back().distanceTo(a1 + (b1 - a1) / 2), 1e-7) << caption;
}

} // namespace

TEST(FollowingBlend, FollowsPlainCommandsInASecondRun) {
    struct Row {
        const char* caption;
        std::wstring script;
    };
    BlendDrawing drawing;
    drawing.first = drawing.addPolyline({{0, 0}, {30, 10}, {60, 0}});
    drawing.second = drawing.addLine(0, 30, 60, 30);
    drawing.run(L"PLBLENDS\n15,5\n10,30\n\n1\n0\n");
    const std::string bytes = drawing.bytes();
    const std::wstring one = picked(drawing.first), two = picked(drawing.second);
    const Row rows[] = {
        {"move", L"_MOVE " + one + L"\n\n0,0 3,-20\n"},
        {"move both", L"_MOVE " + one + L"\n" + two + L"\n\n0,0 3,-20\n"},
        {"stretch", L"_STRETCH c 50,-5 70,5\n\n0,0 10,-10\n"},
        {"scale", L"_SCALE " + two + L"\n\n0,30 1.5\n"},
        {"rotate", L"_ROTATE " + one + L"\n\n0,0 20\n"},
        {"edit a vertex", L"PEDIT " + one + L"\nW\n2\n\n"},
        {"scale everything", L"_SCALE all\n\n0,0 2\n"},
        {"rotate everything", L"_ROTATE all\n\n0,0 30\n"},
        {"mirror everything", L"_MIRROR all\n\n0,50 1,50 Y\n"},
    };
    for (const Row& row : rows) {
        const Reopened second(bytes);
        const auto before = copiesOf(second.blend());
        drawing.run(row.script);
        EXPECT_FALSE(drawing.outcome.leftOver) << row.caption;
        expectHalfWay(second.blend(), second.same(drawing.first), second.same(drawing.second), row.caption);
        // And in the file that is saved then.
        const Reopened third(host::drawingBytes(second.database()));
        expectHalfWay(third.blend(), third.same(drawing.first), third.same(drawing.second), row.caption);
        drawing.run(L"_MOVE " + one + L"\n\n0,0 0,-1\n");
        expectHalfWay(third.blend(), third.same(drawing.first), third.same(drawing.second), row.caption);
    }
}

TEST(FollowingBlend, UndoAndRedoBringTheDrawingBackByteForByte) {
    BlendDrawing drawing;
    drawing.addTwoLines();
    std::vector<std::string> states{drawing.bytes()};
    const AcDbObjectId line = drawing.first;
    for (const std::wstring& script :
         {std::wstring(L"PLBLENDS\n10,0\n10,30\n\n1\n0\n"), L"_MOVE " + picked(line) + L"\n\n0,0 0,-10\n",
          L"_SCALE " + picked(line) + L"\n\n0,0 2\n", L"_ERASE " + picked(line) + L"\n\n"}) {
        drawing.run(script);
        states.push_back(drawing.bytes());
    }
    for (size_t i = states.size() - 1; i-- > 0;) {
        drawing.run(L"U\n");
        EXPECT_TRUE(states[i] == drawing.bytes()) << "back to " << i;
    }
    for (size_t i = 1; i < states.size(); ++i) {
        drawing.run(L"REDO\n");
        EXPECT_TRUE(states[i] == drawing.bytes()) << "on to " << i;
    }
    drawing.run(L"U\n_MOVE " + picked(drawing.second) + L"\n\n0,0 0,50\n");
    expectHalfWay(drawing.blend(), drawing.first, drawing.second, "after all that");
}

TEST(FollowingBlend, MakingABlendRebuildsNothing) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines();
    AcDbObjectPointer<AcDbBlockReference> opened(blend, AcDb::kForRead);
    AcDbObjectPointer<AcDbBlockTableRecord> block(opened->blockTableRecord(), AcDb::kForRead);
    EXPECT_EQ(2u, block->entities().size()) << "none was made, erased and made again";
    EXPECT_EQ(1u, AcDbObjectPointer<AcDbObject>(drawing.first, AcDb::kForRead)->persistentReactors().size());
}

TEST(FollowingBlend, ChangedTogetherCurvesRebuildTheirBlendOnce) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines();
    drawing.run(L"_MOVE " + picked(drawing.first) + L"\n" + picked(drawing.second) + L"\n\n0,0 5,5\n");
    AcDbObjectPointer<AcDbBlockReference> opened(blend, AcDb::kForRead);
    AcDbObjectPointer<AcDbBlockTableRecord> block(opened->blockTableRecord(), AcDb::kForRead);
    EXPECT_EQ(4u, block->entities().size()) << "two erased, two new";
}

TEST(FollowingBlend, AGuideThatChangesIsFollowed) {
    BlendDrawing drawing;
    drawing.addTwoLines();
    const AcDbObjectId guide = drawing.addPolyline({{0, 0}, {-20, 0}, {-20, 30}, {0, 30}});
    drawing.run(L"PLBLENDS\n10,0\n10,30\n-20,15\n\n1\n0\n_STRETCH c -25,-5 -15,35\n\n0,0 -10,0\n");
    EXPECT_LT(copiesOf(drawing.blend())[0].front().distanceTo({-30, 15, 0}), 1e-9);
    drawing.run(L"_ERASE " + picked(guide) + L"\n\n");
    EXPECT_LT(copiesOf(drawing.blend())[0].front().distanceTo({0, 15, 0}), 1e-9) << "it steers no more";
}

TEST(FollowingBlend, TurningACurveRoundDoesNotTwistTheBlend) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines(L"1");
    for (const bool turned : {true, false, true}) {
        drawing.run(L"PLDD\n" + picked(drawing.second) + L"\n\n");
        EXPECT_EQ(turned, ReadBlend(blend)->reversed2);
        // Changes that turn nothing leave the flag alone, however many.
        for (int i = 0; i < 3; ++i) {
            drawing.run(L"_MOVE " + picked(drawing.second) + L"\n\n0,0 0,1\n");
            EXPECT_EQ(turned, ReadBlend(blend)->reversed2) << i;
        }
        EXPECT_FALSE(ReadBlend(blend)->reversed1);
        EXPECT_LT(copiesOf(blend)[0].front().x, 1) << "still from the left";
    }
}

TEST(FollowingBlend, AnErasedCurveLeavesTheBlendAsItWas) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines();
    const auto before = copiesOf(blend);
    drawing.run(L"_ERASE " + picked(drawing.first) + L"\n\n_MOVE " + picked(drawing.second) +
                L"\n\n0,0 0,9\n");
    const auto after = copiesOf(blend);
    ASSERT_EQ(before.size(), after.size());
    EXPECT_EQ(before[0], after[0]);
    EXPECT_THAT(kIndex.Blocks(drawing.second), testing::ElementsAre(blend));
    drawing.run(L"U\nU\n_MOVE " + picked(drawing.second) + L"\n\n0,0 0,30\n");
    EXPECT_LT(copiesOf(blend)[0].front().distanceTo({0, 20, 0}), 1e-9) << "both are there again";
}

TEST(FollowingBlend, AnErasedBlendFallsOutAndComesBackWithUndo) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines();
    drawing.run(L"_ERASE " + picked(blend) + L"\n\n_MOVE " + picked(drawing.first) + L"\n\n0,0 0,-3\n");
    EXPECT_TRUE(kIndex.Blocks(drawing.first).empty());
    EXPECT_THAT(kIndex.Blocks(drawing.second), testing::ElementsAre(blend)) << "until it changes, too";
    drawing.run(L"U\nU\n_MOVE " + picked(drawing.first) + L"\n\n0,0 0,-30\n");
    EXPECT_LT(copiesOf(blend)[0].front().distanceTo({0, -10, 0}), 1e-9);
    // One whose record somebody took away.
    resbuf name;
    name.restype = 1001;
    std::wstring application = L"SCVN_BLEND";
    name.resval.rstring = application.data();
    AcDbObjectPointer<AcDbObject>(blend, AcDb::kForWrite)->setXData(&name);
    drawing.run(L"_MOVE " + picked(drawing.first) + L"\n\n0,0 0,1\n");
    EXPECT_TRUE(kIndex.Blocks(drawing.first).empty());
}

TEST(FollowingBlend, ACopyOfACurveIsNotFollowedACopyOfTheBlendIs) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines();
    drawing.run(L"COPY\n" + picked(drawing.first) + L"\n\n0,0\n0,-50\n\n");
    const auto before = copiesOf(blend);
    const AcDbObjectId copied = drawing.entities().back();
    drawing.run(L"_MOVE " + picked(copied) + L"\n\n0,0 0,-9\n");
    EXPECT_EQ(before, copiesOf(blend));
    drawing.run(L"COPY\n" + picked(blend) + L"\n\n0,0\n200,0\n\n_MOVE " + picked(drawing.first) +
                L"\n\n0,0 0,-30\n");
    const AcDbObjectId second = drawing.blend();
    ASSERT_NE(blend, second);
    EXPECT_LT(copiesOf(blend)[0].front().distanceTo({0, -10, 0}), 1e-9);
    EXPECT_LT(copiesOf(second)[0].front().distanceTo({200, -10, 0}), 1e-9) << "at its own place";
}

TEST(FollowingBlend, SeveralDrawingsKeepTheirOwnLists) {
    BlendDrawing drawing;
    drawing.blendTwoLines(L"1");
    const std::string bytes = drawing.bytes();
    const Reopened one(bytes), two(bytes);
    for (const Reopened* each : {&one, &two, &one}) {
        acDocManagerPtr()->setCurDocument(each->document());
        drawing.run(L"_MOVE " + picked(drawing.first) + L"\n\n0,0 0,-8\n");
        expectHalfWay(each->blend(), each->same(drawing.first), each->same(drawing.second), "own drawing");
    }
    EXPECT_NEAR((30 - 16) / 2.0, copiesOf(one.blend())[0][0].y, 1e-9);
    EXPECT_NEAR((30 - 8) / 2.0, copiesOf(two.blend())[0][0].y, 1e-9);
    EXPECT_NEAR(15, copiesOf(drawing.blend())[0][0].y, 1e-9) << "the first drawing stands as it was";
}

TEST(FollowingBlend, ADrawingThatIsNotCurrentIsWorkedOffAsWell) {
    BlendDrawing drawing;
    const std::string empty = drawing.bytes();
    const AcDbObjectId blend = drawing.blendTwoLines(L"1");
    const Reopened other(empty);
    ASSERT_EQ(other.document(), acDocManagerPtr()->curDocument());
    const std::string before = host::drawingBytes(other.database());
    AcDbObjectPointer<AcDbLine>(drawing.first, AcDb::kForWrite)->setStartPoint({0, -40, 0});
    drawing.run(L"SETVAR\nORTHOMODE\n0\n");
    EXPECT_NEAR(-5, copiesOf(blend)[0].front().y, 1e-9);
    EXPECT_TRUE(before == host::drawingBytes(other.database())) << "and leaves the current one alone";
}

TEST(FollowingBlend, WithoutItsIndexTheBlocksAreSearched) {
    BlendDrawing drawing;
    drawing.blendTwoLines(L"1");
    AcDbObjectId shared;
    AcDbObjectPointer<AcDbDictionary> all(drawing.database().namedObjectsDictionaryId(), AcDb::kForRead);
    ASSERT_EQ(Acad::eOk, all->getAt(L"SCVN_DICT", shared));
    all.close();
    AcDbObjectPointer<AcDbDictionary> entries(shared, AcDb::kForWrite);
    AcDbObjectId index;
    ASSERT_EQ(Acad::eOk, entries->getAt(L"BLEND_INDEX", index));
    ASSERT_EQ(Acad::eOk, entries->remove(L"BLEND_INDEX"));
    AcDbObjectPointer<AcDbObject>(index, AcDb::kForWrite)->erase();
    entries.close();
    const Reopened second(drawing.bytes());
    drawing.run(L"_MOVE " + picked(drawing.first) + L"\n\n0,0 0,-8\n");
    expectHalfWay(second.blend(), second.same(drawing.first), second.same(drawing.second), "found");
    EXPECT_THAT(kIndex.Blocks(second.same(drawing.first)), testing::ElementsAre(second.blend()))
        << "and indexed anew";
}

TEST(FollowingBlend, ACurveThatUndoTookAwayComesBackFreeOfTheModule) {
    BlendDrawing drawing;
    drawing.run(L"LINE\n0,30\n60,30\n\nLINE\n0,0\n60,0\n\nPLBLENDS\n10,0\n10,30\n\n1\n0\nU\nU\n");
    UnloadBlends();
    drawing.run(L"REDO\n");
    const AcDbObjectId line = drawing.entities().back();
    EXPECT_TRUE(AcDbObjectPointer<AcDbObject>(line, AcDb::kForRead)->transientReactors().empty());
    LoadBlends();
    drawing.run(L"REDO\n_MOVE " + picked(line) + L"\n\n0,0 0,10\n");
    EXPECT_NEAR(20, copiesOf(drawing.blend())[0].front().y, 1e-9);
}

TEST(FollowingBlend, WithoutTheModuleDrawingsKeepWhatTheyHave) {
    BlendDrawing drawing;
    drawing.blendTwoLines(L"1");
    const std::string before = drawing.bytes();
    UnloadBlends();
    EXPECT_TRUE(before == drawing.bytes());
    drawing.run(L"_MOVE " + picked(drawing.first) + L"\n\n0,0 0,-8\n");
    EXPECT_NEAR(15, copiesOf(drawing.blend())[0].front().y, 1e-9) << "nobody listens";
    LoadBlends();
    drawing.run(L"_MOVE " + picked(drawing.first) + L"\n\n0,0 0,-2\n");
    EXPECT_NEAR(10, copiesOf(drawing.blend())[0].front().y, 1e-9) << "the notify object woke up";
}
