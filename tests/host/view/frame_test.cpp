// Views and coordinate systems: round trips everywhere, and numbers worked out by hand.
#include "host/view/view_frame.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace host;
using Kind = CoordinateSystem::Kind;

namespace {

Surroundings tilted() {
    Surroundings around;
    around.user = {{10, 20, 30}, {0, 2, 0}, {-3, 0, 0}}; // turned by a quarter, axes of any length
    around.view.target = {5, -4, 2};
    around.view.direction = {1, -2, 3};
    around.view.twist = 0.7;
    around.view.center = {3, 1};
    around.view.height = 50;
    around.paper = PaperWindow{{100, 80}, 200};
    return around;
}

void expectNear(const std::optional<AcGePoint3d>& p, double x, double y, double z) {
    ASSERT_TRUE(p);
    EXPECT_NEAR(p->x, x, 1e-9);
    EXPECT_NEAR(p->y, y, 1e-9);
    EXPECT_NEAR(p->z, z, 1e-9);
}

} // namespace

TEST(Coordinates, ThereAndBackIsWhereWeWere) {
    const Surroundings around = tilted();
    const CoordinateSystem systems[] = {{Kind::world, {}},
                                        {Kind::user, {}},
                                        {Kind::display, {}},
                                        {Kind::object, {0.3, -0.2, -1}},
                                        {Kind::paper, {}}};
    for (const auto& from : systems) {
        for (const auto& to : systems) {
            for (bool isVector : {false, true}) {
                const auto there = converted({1.5, -2, 7}, from, to, isVector, around);
                const bool paper = from.kind == Kind::paper || to.kind == Kind::paper;
                const bool served =
                    !paper || from.kind == to.kind || from.kind == Kind::display || to.kind == Kind::display;
                ASSERT_EQ(there.has_value(), served);
                if (there) expectNear(converted(*there, to, from, isVector, around), 1.5, -2, 7);
            }
        }
    }
}

TEST(Coordinates, WorkedNumbers) {
    Surroundings around = tilted();
    const CoordinateSystem world{}, user{Kind::user, {}}, display{Kind::display, {}}, paper{Kind::paper, {}};
    expectNear(converted({1, 2, 3}, user, world, false, around), 8, 21, 33);
    expectNear(converted({1, 2, 3}, user, world, true, around), -2, 1, 3);
    around.view = {.target = {100, 0, 0}, .direction = {0, 0, 5}, .center = {3, 1}, .height = 50};
    expectNear(converted({101, 2, 3}, world, display, false, around), 1, 2, 3);
    // Four sheet units to one of the display; the view's middle lies on the window's.
    expectNear(converted({3, 1, 0}, display, paper, false, around), 100, 80, 0);
    expectNear(converted({4, 1, 0}, display, paper, false, around), 104, 80, 0);
    // Seen from the front, x runs to the right and z up.
    around.view = {.direction = {0, -1, 0}};
    expectNear(converted({1, 2, 3}, world, display, false, around), 1, 3, -2);
    // A positive twist turns the picture clockwise, which a quarter shows.
    around.view = {.twist = -M_PI / 2};
    expectNear(converted({1, 0, 0}, world, display, false, around), 0, -1, 0);
}

TEST(Coordinates, NonsenseGivesNothing) {
    Surroundings around = tilted();
    around.user.yAxis = around.user.xAxis;
    const CoordinateSystem world{}, user{Kind::user, {}};
    EXPECT_FALSE(converted({1, 2, 3}, world, user, false, around));
    EXPECT_FALSE(converted({std::nan(""), 0, 0}, world, world, false, around));
    EXPECT_FALSE(converted({1, 2, 3}, world, {Kind::object, {0, 0, 0}}, false, around));
    around.paper.reset();
    EXPECT_FALSE(converted({}, {Kind::display, {}}, {Kind::paper, {}}, false, around));
}

TEST(ViewFrame, PerspectiveEnlargesWhatIsNearAndDropsWhatIsBehindTheEye) {
    const ViewFrame view{.direction = {0, 0, 10}, .perspective = true};
    expectNear(view.seen({1, 0, 0}), 1, 0, 0);
    expectNear(view.seen({1, 0, 5}), 2, 0, 5);
    EXPECT_FALSE(view.seen({1, 0, 10}));
    EXPECT_FALSE(view.seen({1, 0, 11}));
}

TEST(ViewFrame, FittingABoxOfNoSizeStillGivesAView) {
    ViewFrame view{.aspect = 2};
    view.fit({0, 0}, {10, 1}, 0);
    EXPECT_DOUBLE_EQ(view.height, 5);
    view.fit({3, 3}, {3, 3}, 0.1);
    EXPECT_GT(view.height, 0);
}
