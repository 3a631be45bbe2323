// The gizmo's mathematics on plain data: pixels, handles under the cursor, moves, scales and turns.
#include "deform/cage/gizmo.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace corvane::deform;

namespace {

// A pixel a unit, the origin in the middle of 1000 by 800 pixels.
ScreenMap::Window window() { return {1000, 800, 800, AcGePoint3d::kOrigin}; }
const ScreenMap kPlan(window());

// The view whose display axes are these world directions.
ScreenMap viewOf(const AcGeVector3d& right, const AcGeVector3d& up, double height = 800) {
    AcGeMatrix3d toWorld;
    toWorld.setCoordSystem(AcGePoint3d::kOrigin, right, up, right.crossProduct(up));
    ScreenMap::Window shown = window();
    shown.viewHeight = height;
    return {toWorld.inverse(), shown};
}
ScreenMap isometric(double height = 800) {
    const AcGeVector3d right = AcGeVector3d(1, 1, 0).normal(), back = AcGeVector3d(1, -1, 1).normal();
    return viewOf(right, back.crossProduct(right), height);
}

GizmoPlace gizmo(GizmoMode mode, unsigned hidden = 0) {
    GizmoPlace place;
    place.size = 400, place.mode = mode, place.hiddenHandles = hidden;
    return place;
}

void expectNear(const AcGePoint3d& expected, const AcGePoint3d& actual, const char* what = "") {
    EXPECT_NEAR(0, expected.distanceTo(actual), 1e-9)
        << what << ": " << actual.x << ", " << actual.y << ", " << actual.z;
}

} // namespace

TEST(ScreenMaps, PixelsCountFromTheMiddleOfTheViewDownwards) {
    const ScreenMap map({1920, 1080, 108, {1000, 500, 0}});
    EXPECT_EQ((Pixel{960, 540}), map.pixel({1000, 500, 7}));
    EXPECT_EQ((Pixel{970, 530}), map.pixel({1001, 501, 0}));
    EXPECT_EQ((Pixel{970, 539}), map.pixel({1001, 500.06, 0})); // 960.5 and 540.5 are cut, not rounded
    EXPECT_EQ((Pixel{1000000000, -1000000000}), map.pixel({1e300, 1e300, 0}));
}

// The gizmo of 400 at the origin, seen from above: X reaches to pixel 900, Y up to 0; Z is a dot.
TEST(GizmoHits, HandlesAreFoundInTheirOrder) {
    constexpr auto kMove = GizmoMode::move, kRotate = GizmoMode::rotate;
    const unsigned x = HandleBit(kAxisX), xz = HandleBit(kPlaneXZ);
    struct Row {
        const char* what;
        GizmoMode mode;
        Pixel cursor;
        int handle;
        unsigned hidden = 0;
    };
    const Row rows[] = {
        {"on the X axis", kMove, {700, 400}, kAxisX},
        {"13 pixels off it", kMove, {800, 413}, kAxisX},
        {"14 pixels are too far", kMove, {800, 414}, kNoHandle},
        {"beyond its tip", kMove, {913, 400}, kAxisX},
        {"on the Y axis", kMove, {500, 200}, kAxisY},
        {"in the XY square", kMove, {600, 300}, kPlaneXY},
        {"its far corner counts", kMove, {700, 200}, kPlaneXY},
        {"XZ is seen edge-on, and widened to 32 pixels", kMove, {690, 416}, kPlaneXZ},
        {"and no more", kMove, {690, 417}, kNoHandle},
        {"YZ alike", kMove, {484, 300}, kPlaneYZ},
        {"near the centre", kMove, {482, 410}, kCentre},
        {"21 pixels count", kMove, {479, 400}, kCentre},
        {"22 don't", kMove, {478, 400}, kNoHandle},
        {"the label first, over the Y axis' other side", kMove, {528, 476}, kLabel},
        {"beside the label", kMove, {529, 476}, kNoHandle},
        {"a hidden axis gives way to the plane", kMove, {690, 410}, kPlaneXZ, x},
        {"and hidden planes to nothing", kMove, {690, 410}, kNoHandle, x | xz},
        {"the XY ring before the edge-on XZ ring", kRotate, {780, 400}, kPlaneXY},
        {"the XZ ring inside", kRotate, {600, 410}, kPlaneXZ},
        {"the YZ ring", kRotate, {510, 250}, kPlaneYZ},
        {"18 pixels are too far", kRotate, {600, 382}, kNoHandle},
        {"a chord's middle", kRotate, {500 + 279, 400 - 24}, kPlaneXY},
        {"the label over the YZ ring", kRotate, {500, 448}, kLabel},
        {"handles don't hide in rotations", kRotate, {600, 410}, kPlaneXZ, x | xz},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.handle, HitTestGizmo(gizmo(row.mode, row.hidden), kPlan, row.cursor)) << row.what;
}

TEST(GizmoHits, ZoomingAndMovingTogetherChangesNothing) {
    const GizmoPlace place = gizmo(GizmoMode::move);
    GizmoPlace far = place;
    far.centre.set(5e6, -3e6, 0), far.size = place.size / 1000;
    const ScreenMap zoomed({1000, 800, 0.8, far.centre});
    for (int x = 470; x < 930; x += 9)
        for (int y = 190; y < 500; y += 7)
            EXPECT_EQ(HitTestGizmo(place, kPlan, {x, y}), HitTestGizmo(far, zoomed, {x, y}))
                << x << ", " << y;
}

TEST(GizmoHits, TheAxisTowardsTheCursorIsTheOneWithinAReach) {
    struct Row {
        Pixel cursor;
        int handle, sign;
    };
    const Row rows[] = {{{600, 390}, kAxisX, 1},         {{400, 410}, kAxisX, -1},
                        {{505, 700}, kAxisY, -1},        {{600, 300}, kNoHandle, 0},
                        {{503, 400}, kNoHandle, 0},      {{504, 400}, kAxisX, 1},
                        {{600, 400 - 43}, kNoHandle, 0}, {{600, 400 - 42}, kAxisX, 1}}; // cosine 0.92
    for (const Row& row : rows) {
        const AxisHover found = AxisTowards(gizmo(GizmoMode::move), kPlan, row.cursor);
        EXPECT_EQ(row.handle, found.handle) << row.cursor.x << ", " << row.cursor.y;
        EXPECT_EQ(row.sign, found.sign);
    }
    // Z is up in an isometric view; a unit of it may be less than a pixel.
    for (const double height : {8.0, 800.0, 8e6})
        EXPECT_EQ(kAxisZ, AxisTowards(gizmo(GizmoMode::move), isometric(height), {500, 300}).handle);
}

TEST(GizmoHits, FlatSelectionsHideTheHandlesAcrossThem) {
    const GizmoAxes axes = gizmo(GizmoMode::scale).axes;
    const AcGePoint3d face[] = {{5, 0, 0}, {5, 1, 0}, {5, 0, 1}}, row[] = {{0, 2, 3}, {7, 2, 3}},
                      same[] = {{1, 1, 1}, {1, 1, 1}}, body[] = {{0, 0, 0}, {1, 2, 3}};
    EXPECT_EQ(HandleBit(kAxisX), FlatHandles(face, axes));
    EXPECT_EQ(HandleBit(kAxisY) | HandleBit(kAxisZ) | HandleBit(kPlaneYZ), FlatHandles(row, axes));
    EXPECT_EQ(63u, FlatHandles(same, axes));
    EXPECT_EQ(0u, FlatHandles(body, axes));
    EXPECT_EQ(0u, FlatHandles({same, 1}, axes));
}

TEST(GizmoMoves, HandlesLetThroughWhatLiesAlongThem) {
    struct Row {
        int handle;
        AcGeVector3d passed;
        double factor; // of a cursor at (6, 8, 24) on a gizmo of 2
    };
    const Row rows[] = {{kAxisX, {6, 0, 0}, 3},
                        {kAxisY, {0, 8, 0}, 4},
                        {kAxisZ, {0, 0, 24}, 12},
                        {kPlaneXY, {6, 8, 0}, 5},
                        {kPlaneXZ, {6, 0, 24}, std::sqrt(612) / 2},
                        {kPlaneYZ, {0, 8, 24}, std::sqrt(640) / 2},
                        {kCentre, {6, 8, 24}, 13},
                        {kNoHandle, {6, 8, 24}, 13}};
    const GizmoAxes axes = gizmo(GizmoMode::move).axes;
    const AcGePoint3d pivot(1, 1, 1), point(2, 3, 4);
    for (const Row& row : rows) {
        const AcGeVector3d delta(6, 8, 24), passed = Constrained(delta, row.handle, axes);
        expectNear(pivot + row.passed, pivot + passed, "delta");
        EXPECT_NEAR(row.factor, ScaleFactor(delta, row.handle, 2, axes), 1e-12) << row.handle;
        // Twice as far along the handle, and where it was across it.
        expectNear(point + Constrained(point - pivot, row.handle, axes),
                   Scaled(point, pivot, 2, row.handle, axes), "scaled");
    }
    EXPECT_EQ(1.0, ScaleFactor({0.0009, 50, 0}, kAxisX, 2, axes));
    EXPECT_EQ(0.0005, ScaleFactor({0.001, 50, 0}, kAxisX, 2, axes));
    // What stays keeps every bit.
    EXPECT_EQ(0.1 + 0.2, Scaled({5, 0.1 + 0.2, 7}, {1e6, 1e6, 0}, 3, kAxisX, axes).y);
}

TEST(GizmoMoves, FramesOfTheirOwnTurnTheHandles) {
    const AcGeVector3d x(0.6, 0.8, 0), y(-0.8, 0.6, 0);
    const GizmoAxes axes{x, y, AcGeVector3d::kZAxis};
    expectNear(AcGePoint3d(3, 4, 0), AcGePoint3d::kOrigin + Constrained({3, 4, 9}, kAxisX, axes));
    expectNear(AcGePoint3d(6, 8, 9), Scaled({3, 4, 9}, AcGePoint3d::kOrigin, 2, kAxisX, axes));
    const AcGePoint3d row[] = {{0, 0, 0}, {3, 4, 0}};
    EXPECT_EQ(HandleBit(kAxisY) | HandleBit(kAxisZ) | HandleBit(kPlaneYZ), FlatHandles(row, axes));
}

TEST(GizmoMoves, TurnsAreNormalisedAndGoAsSeen) {
    const Pixel c{500, 400};
    const auto at = [&](double degrees) {
        const double a = degrees * M_PI / 180;
        return Pixel{c.x + int(std::lround(1e6 * std::cos(a))), c.y - int(std::lround(1e6 * std::sin(a)))};
    };
    struct Row {
        double from, to, turn;
    };
    for (const Row& row :
         {Row{0, 90, 90}, {90, 0, -90}, {170, -170, 20}, {-170, 170, -20}, {10, 199, -171}}) {
        EXPECT_NEAR(row.turn, Turn(c, at(row.from), at(row.to), false) * 180 / M_PI, 1e-4);
        EXPECT_NEAR(-row.turn, Turn(c, at(row.from), at(row.to), true) * 180 / M_PI, 1e-4);
    }
}

// The law of rotations: whichever side a plane is seen from, points follow the cursor.
TEST(GizmoMoves, RotatedPointsFollowTheCursorOnBothSidesOfEachPlane) {
    GizmoPlace place = gizmo(GizmoMode::rotate);
    place.centre.set(100, -50, 30);
    const auto& [x, y, z] = place.axes;
    const ScreenMap views[] = {viewOf(x, y), viewOf(y, x), viewOf(x, z),
                               viewOf(z, x), viewOf(y, z), viewOf(z, y)};
    for (int i = 0; i < 6; ++i) {
        const int plane = kPlaneXY + i / 2;
        const auto [first, second] = AxesOfPlane(plane);
        const AcGePoint3d point =
            place.centre + place.axes[size_t(first)] * 300 + place.axes[size_t(second)] * 70;
        const AcGePoint3d turned = Rotated(point, place.centre, 0.7, plane, place.axes);
        const ScreenMap& view = views[i];
        const double seen = Turn(view.pixel(place.centre), view.pixel(point), view.pixel(turned),
                                 SeenFromBehind(place, view, plane));
        EXPECT_NEAR(0.7, seen, 0.01) << i;
        EXPECT_NEAR(point.distanceTo(place.centre), turned.distanceTo(place.centre), 1e-9);
    }
}

TEST(GizmoMoves, AnglesInPlanesAreThoseSeen) {
    GizmoPlace place = gizmo(GizmoMode::rotate);
    const ScreenMap view = isometric();
    for (int plane = kPlaneXY; plane <= kPlaneYZ; ++plane)
        for (const double angle : {-2.5, -0.4, 0.0, 0.9, 3.0}) {
            const auto [first, second] = AxesOfPlane(plane);
            const AcGePoint3d at = place.centre + place.axes[size_t(first)] * (300 * std::cos(angle)) +
                                   place.axes[size_t(second)] * (300 * std::sin(angle));
            EXPECT_NEAR(angle, AngleInPlane(place, view, plane, view.pixel(at)), 0.02) << plane;
        }
    EXPECT_EQ(0, AngleInPlane(place, kPlan, kPlaneXZ, {600, 300})); // edge-on
}
