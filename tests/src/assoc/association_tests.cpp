// The association with a kind of its own: blocks that only count how often they were made anew.
#include <gmock/gmock.h>

#include "assoc/association.h"
#include "core/appending.h"
#include "support/drawing.h"

using namespace corvane;
using testing::ElementsAre;

namespace {

// The kind's blocks, each with the curves that it follows, and those that were made anew, in order.
std::map<AcDbObjectId, std::vector<AcDbObjectId>> followed;
std::vector<AcDbObjectId> rebuilt;

std::optional<std::vector<AcDbObjectId>> curvesOf(AcDbObjectId block) {
    const auto found = followed.find(block);
    return found == followed.end() ? std::nullopt : std::optional(found->second);
}
AcDbObject* makeNotify() {
    return new AcDbDictionary;
} // any object serves: this kind's tests change curves openly

class Counted : public testing::TestWithParam<bool> {
protected:
    Counted()
        : association({L"COUNTED_PERSREAC", L"COUNTED_INDEX", makeNotify, curvesOf,
                       [](AcDbObjectId block) { return rebuilt.push_back(block), true; }, GetParam()}) {
        followed.clear(), rebuilt.clear();
    }
    ~Counted() override { association.Detach(); }

    AcDbObjectId line(double y) {
        return drawing.add(std::make_unique<AcDbLine>(AcGePoint3d(0, y, 0), AcGePoint3d(9, y, 0)));
    }
    AcDbObjectId follow(const std::vector<AcDbObjectId>& curves) {
        AcDbBlockTableRecord* record = nullptr;
        AcDbObjectId id;
        EXPECT_TRUE(MakeAnonymousBlock(&drawing.database(), record, id));
        record->close();
        const AcDbObjectId block = drawing.add(std::make_unique<AcDbBlockReference>(AcGePoint3d(), id));
        followed[block] = curves;
        association.Follow(block, curves);
        return block;
    }
    void change(AcDbObjectId id) {
        AcDbObjectPointer<AcDbLine> opened(id, AcDb::kForWrite);
        opened->setColorIndex(Adesk::UInt16(opened->colorIndex() % 7 + 1));
    }

    support::Drawing drawing;
    Association association;
};

} // namespace

TEST_P(Counted, BlocksAreMadeAnewAtTheEndOfTheCommandOrAtOnce) {
    const AcDbObjectId a = line(0), b = line(1), c = line(2);
    const AcDbObjectId first = follow({a, b}), second = follow({b, c});
    EXPECT_THAT(rebuilt, ElementsAre()) << "following is no change";
    change(b);
    const bool atOnce = GetParam();
    EXPECT_EQ(atOnce ? 2u : 0u, rebuilt.size());
    drawing.run(L"SETVAR\nORTHOMODE\n0\n");
    EXPECT_THAT(rebuilt, ElementsAre(first, second));
    rebuilt.clear();
    change(a), change(b), change(c);
    drawing.run(L"SETVAR\nORTHOMODE\n0\n");
    // At the end: once, however many curves have changed.
    const std::vector each{first, first, second, second}, once{first, second};
    EXPECT_EQ(atOnce ? each : once, rebuilt);
}

TEST_P(Counted, AQueueWaitsForTheLock) {
    const AcDbObjectId a = line(0), block = follow({a});
    AcApDocument* document = acDocManagerPtr()->curDocument();
    ASSERT_EQ(Acad::eOk, acDocManagerPtr()->lockDocument(document, AcAp::kXWrite));
    change(a);
    association.Flush();
    EXPECT_THAT(rebuilt, ElementsAre()) << "somebody holds the drawing for himself";
    acDocManagerPtr()->unlockDocument(document);
    association.Flush();
    EXPECT_THAT(rebuilt, ElementsAre(block));
}

TEST_P(Counted, WhatIsNoBlockOfTheKindFallsOut) {
    const AcDbObjectId a = line(0), block = follow({a});
    followed.clear();
    change(a);
    association.Flush();
    followed[block] = {a};
    change(a);
    association.Flush();
    EXPECT_THAT(rebuilt, ElementsAre()) << "the index has forgotten it";
    association.Follow(block, std::vector{a});
    change(a);
    association.Flush();
    EXPECT_THAT(rebuilt, ElementsAre(block));
}

TEST_P(Counted, DetachingEndsItAll) {
    const AcDbObjectId a = line(0);
    follow({a});
    association.Detach();
    EXPECT_TRUE(AcDbObjectPointer<AcDbObject>(a, AcDb::kForRead)->transientReactors().empty());
    change(a);
    drawing.run(L"SETVAR\nORTHOMODE\n0\n");
    EXPECT_THAT(rebuilt, ElementsAre());
}

INSTANTIATE_TEST_SUITE_P(AtTheEndAndAtOnce, Counted, testing::Bool());
