// What happens while a prompt waits: monitors, jigs, filtered keys, and the vectors on the screen.
#include "host/ed/editor_reactor.h"
#include "host/ed/input_point.h"
#include "host/ed/jig.h"
#include "host/ed/message_filter.h"
#include "host/ed/prompting.h"
#include "host/os/keys.h"
#include "host/ui/window.h"
#include "host/view/screen.h"
#include "host/view/transients.h"
#include "tests/host/ed/support.h"

using edtest::Bench;
using edtest::near;

namespace {

class Listening final : public AcEdInputPointMonitor {
public:
    Acad::ErrorStatus monitorInputPoint(const AcEdInputPoint& input, AcEdInputPointMonitorResult&) override {
        heard.push_back(input.computedPoint());
        computed.push_back(input.pointComputed());
        if (onMove) onMove();
        return Acad::eOk;
    }
    std::vector<AcGePoint3d> heard;
    std::vector<bool> computed;
    std::function<void()> onMove;
};

} // namespace

TEST(InputPoints, MonitorsHearMovesAndClicksInWorldCoordinates) {
    Bench bench;
    bench.run(L"UCS 100,0\n\n");
    AcEdInputPointManager& manager = *bench.document()->inputPointManager();
    Listening monitor;
    EXPECT_EQ(Acad::eOk, manager.addPointMonitor(&monitor));
    EXPECT_EQ(Acad::eDuplicateKey, manager.addPointMonitor(&monitor));
    ads_point point{};
    bench.answer(L"move 1,2 move 3,4 5,6\n", [&] { acedGetPoint(nullptr, L"", point); });
    ASSERT_EQ(3u, monitor.heard.size());
    EXPECT_TRUE(near(monitor.heard[0], {101, 2, 0}));
    EXPECT_TRUE(near(monitor.heard[2], {105, 6, 0}));
    // Where the view gives no point the last one stands.
    host::cursorMoved({9, 9, 9}, false);
    EXPECT_FALSE(monitor.computed.back());
    EXPECT_TRUE(near(monitor.heard.back(), {105, 6, 0}));
    EXPECT_EQ(Acad::eOk, manager.removePointMonitor(&monitor));
    EXPECT_EQ(Acad::eKeyNotFound, manager.removePointMonitor(&monitor));
    host::cursorMoved({1, 1, 1});
    EXPECT_EQ(4u, monitor.heard.size());
}

TEST(InputPoints, MonitorsMayTakeOthersOutAndMoveTheCursorThemselves) {
    Bench bench;
    AcEdInputPointManager& manager = *bench.document()->inputPointManager();
    Listening first, second;
    manager.addPointMonitor(&first);
    manager.addPointMonitor(&second);
    first.onMove = [&] {
        manager.removePointMonitor(&second);
        host::cursorMoved({7, 7, 7}); // not told: it would never end
    };
    host::cursorMoved({1, 1, 1});
    EXPECT_EQ(1u, first.heard.size());
    EXPECT_TRUE(second.heard.empty());
    manager.removePointMonitor(&first);
}

TEST(InputPoints, TheMouseOfScriptsIsWhereTheViewShowsTheCursor) {
    Bench bench;
    bench.run(L"ZOOM W 0,0 1920,1080\n");
    bench.answer(L"move 960,540 move 480,1080 1,1\n", [] {
        Listening monitor;
        std::vector<POINT> places;
        monitor.onMove = [&] { GetCursorPos(&places.emplace_back()); };
        curDoc()->inputPointManager()->addPointMonitor(&monitor);
        ads_point point{};
        acedGetPoint(nullptr, L"", point);
        curDoc()->inputPointManager()->removePointMonitor(&monitor);
        ASSERT_EQ(3u, places.size());
        EXPECT_NEAR(960, places[0].x, 1);
        EXPECT_NEAR(540, places[0].y, 1);
        EXPECT_LT(places[1].x, places[0].x);
        EXPECT_LT(places[1].y, places[0].y); // higher in the drawing
    });
}

TEST(Keys, HeldOnesAnswerAsTheSystemDoes) {
    host::heldKeys() = *host::parseKeys("ctrl+space");
    EXPECT_LT(GetAsyncKeyState(VK_CONTROL), 0);
    EXPECT_LT(GetAsyncKeyState(VK_SPACE), 0);
    EXPECT_EQ(0, GetAsyncKeyState(VK_MENU));
    host::heldKeys() = {};
    EXPECT_EQ(0, GetAsyncKeyState(VK_CONTROL));
}

namespace {
std::vector<UINT> seenByOuter, seenByInner;
BOOL outerFilter(MSG* message) { return seenByOuter.push_back(UINT(message->wParam)), FALSE; }
BOOL innerFilter(MSG* message) {
    EXPECT_EQ(WM_KEYDOWN, message->message);
    seenByInner.push_back(UINT(message->wParam));
    return message->wParam == VK_TAB;
}
} // namespace

TEST(Keys, FiltersSeePressedOnesTheLatestFirst) {
    Bench bench;
    EXPECT_FALSE(acedRegisterFilterWinMsg(nullptr));
    EXPECT_TRUE(acedRegisterFilterWinMsg(outerFilter));
    EXPECT_TRUE(acedRegisterFilterWinMsg(innerFilter));
    EXPECT_FALSE(acedRegisterFilterWinMsg(innerFilter));
    ads_point point{};
    const std::string said = bench.answer(L"press tab press g press nothing 1,2\n",
                                          [&] { EXPECT_EQ(RTNORM, acedGetPoint(nullptr, L"", point)); });
    EXPECT_EQ((std::vector<UINT>{VK_TAB, 'G'}), seenByInner);
    EXPECT_EQ((std::vector<UINT>{'G'}), seenByOuter);
    EXPECT_NE(std::string::npos, said.find("Keys to press"));
    EXPECT_TRUE(acedRemoveFilterWinMsg(innerFilter));
    EXPECT_FALSE(acedRemoveFilterWinMsg(innerFilter));
    EXPECT_FALSE(host::keyFiltered(VK_TAB));
    acedRemoveFilterWinMsg(outerFilter);
}

TEST(Vectors, StandInTheWorldUntilTheScreenIsDrawnAnew) {
    Bench bench;
    bench.run(L"UCS 10,0\n\n");
    const ads_point a{0, 0, 0}, b{5, 0, 0}, broken{0, NAN, 0};
    EXPECT_EQ(RTERROR, acedGrDraw(a, broken, 1, 0));
    EXPECT_EQ(RTERROR, acedGrDraw(a, b, 256, 0));
    const unsigned before = host::screen().generation();
    EXPECT_EQ(RTNORM, acedGrDraw(a, b, 1, 1));
    EXPECT_NE(before, host::screen().generation());
    ASSERT_EQ(1u, host::screen().vectors().size());
    EXPECT_TRUE(near(host::screen().vectors()[0].from, {10, 0, 0}));
    EXPECT_TRUE(host::screen().vectors()[0].highlight);
    acedGrDraw(a, b, -1, 0);
    EXPECT_EQ(2u, host::screen().vectors().size());
    acedGrDraw(a, b, -1, 0); // the same once more is gone
    EXPECT_EQ(1u, host::screen().vectors().size());
    acedRedraw(nullptr, 0);
    EXPECT_TRUE(host::screen().vectors().empty());
    acedGrDraw(a, b, 1, 0);
    bench.run(L"ZOOM 2x\n");
    EXPECT_TRUE(host::screen().vectors().empty());
}

TEST(Vectors, RedrawOfOneEntityHighlightsIt) {
    Bench bench;
    const AcDbObjectId line = bench.addLine({0, 0, 0}, {1, 0, 0});
    ads_name name;
    acdbGetAdsName(name, line);
    acedRedraw(name, 3);
    EXPECT_EQ(1u, host::screen().highlighted().count(line));
    acedRedraw(name, 4);
    EXPECT_EQ(0u, host::screen().highlighted().count(line));
}

TEST(Views, ReactorsHearOfChangesOnce) {
    class Counting final : public AcEditorReactor {
    public:
        void viewChanged() override { ++count; }
        int count = 0;
    } reactor;
    Bench bench;
    bench.addLine({0, 0, 0}, {10, 10, 0});
    acedEditor->addReactor(&reactor);
    bench.run(L"ZOOM E PLAN W -VIEW O SW LINE 0,0 1,1\n\n");
    acedEditor->removeReactor(&reactor);
    EXPECT_EQ(3, reactor.count);
}

namespace {

// A circle dragged by its radius or its centre.
class CircleJig final : public AcEdJig {
public:
    explicit CircleJig(bool byRadius) : byRadius_(byRadius) {}
    DragStatus sampler() override {
        setDispPrompt(byRadius_ ? L"\nRadius: " : L"\nCentre: ");
        setKeywordList(L"Diameter Two");
        return byRadius_ ? acquireDist(radius, {10, 0, 0}) : acquirePoint(centre);
    }
    Adesk::Boolean update() override {
        ++updates;
        byRadius_ ? circle->setRadius(radius) : circle->setCenter(centre);
        const auto& entries = acgiGetTransientManager()->entries();
        shown = entries.empty() ? -1 : entries[0].picture.extents.maxPoint().x;
        return true;
    }
    AcDbEntity* entity() const override { return circle; }

    AcDbCircle* circle = new AcDbCircle({10, 0, 0}, AcGeVector3d::kZAxis, 1);
    AcGePoint3d centre;
    double radius = 1, shown = 0;
    int updates = 0;

private:
    bool byRadius_;
};

} // namespace

TEST(Jigs, FollowTheCursorAndEndWithTheAnswer) {
    Bench bench;
    CircleJig jig(true);
    bench.answer(L"move 13,0 move 13,0 move 14,0 5\n", [&] { EXPECT_EQ(AcEdJig::kNormal, jig.drag()); });
    EXPECT_EQ(5, jig.radius);
    // One at the start, one for each place that is new, one for the answer.
    EXPECT_EQ(4, jig.updates);
    EXPECT_NEAR(14, jig.shown, 1e-6); // before the answer was taken in: radius 4 about 10
    EXPECT_TRUE(acgiGetTransientManager()->entries().empty());
    const AcDbObjectId id = jig.append();
    EXPECT_EQ(5, AcDbObjectPointer<AcDbCircle>(id, AcDb::kForRead)->radius());
}

TEST(Jigs, TellHowThePromptEnded) {
    struct Row {
        const wchar_t* answer;
        int controls;
        AcEdJig::DragStatus status;
    };
    const Row rows[] = {{L"3,4\n", 0, AcEdJig::kNormal},
                        {L"two\n", 0, AcEdJig::kKW2},
                        {L"\n3,4\n", 0, AcEdJig::kNormal}, // Enter doesn't serve
                        {L"\n", AcEdJig::kNullResponseAccepted, AcEdJig::kNull},
                        {L"^C\n", 0, AcEdJig::kCancel}};
    Bench bench;
    for (const Row& row : rows) {
        CircleJig jig(false);
        jig.setUserInputControls(row.controls);
        bench.answer(row.answer, [&] { EXPECT_EQ(row.status, jig.drag()) << row.status; });
        if (row.status == AcEdJig::kNormal) {
            EXPECT_TRUE(near(jig.circle->center(), {3, 4, 0}));
        }
        delete jig.circle;
    }
    EXPECT_TRUE(acgiGetTransientManager()->entries().empty());
}
