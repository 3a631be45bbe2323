// What the cursor does on its way over a gizmo, and what is shown of a cage.
#include "deform/cage/cage_loops.h"
#include "deform/cage/gizmo_monitor.h"
#include "host/ed/prompting.h"
#include "host/os/clock.h"
#include "host/ui/window.h"

using namespace support;
using namespace corvane::deform;

namespace {

// The loop's parts with the points on the left selected, and a gizmo at 0,50.
class Hovering : public CageLoops {
protected:
    void start(GizmoMode mode) {
        state.select({0, 1, 2});
        state.mode = mode;
        state.redraw();
        state.showGizmo();
    }
    // Moves the cursor to a place so many pixels from the gizmo's centre.
    void hover(double right, double above) { host::cursorMoved({right / 27, 50 + above / 27, 0}); }
    const TransientGizmo& gizmo() { return state.graphics.gizmo(); }
    static unsigned changes() { return acgiGetTransientManager()->generation(); }
    static const AcGiTransientManager::Entry& shown(const AcGiDrawable& drawable) {
        for (const AcGiTransientManager::Entry& entry : acgiGetTransientManager()->entries())
            if (entry.drawable == &drawable) return entry;
        throw std::runtime_error("not shown");
    }
    // The colours that something is drawn with.
    static std::set<std::uint32_t> colors(const AcGiDrawable& drawable) {
        std::set<std::uint32_t> found;
        const host::DisplayList& list = shown(drawable).picture;
        for (const host::DisplayPrimitive& primitive : list.primitives)
            found.insert(list.styleOf(primitive).color.rgb);
        return found;
    }
    static HWND tooltip() {
        for (const HWND window : host::topWindows())
            if (IsWindowVisible(window) && !host::windowOf(window)->isDialog) return window;
        return nullptr;
    }

    CageState state{cage};
};

constexpr std::uint32_t kYellow = 0xFFFF00;

} // namespace

TEST_F(Hovering, LightsTheHandleUnderTheCursorAndTouchesTheGizmoAlone) {
    start(GizmoMode::move);
    const GizmoListening listening(state);
    EXPECT_EQ(9u + 12u + 1u, acgiGetTransientManager()->entries().size());
    EXPECT_EQ(0u, colors(gizmo()).count(kYellow));
    const struct {
        double right, above;
        int handle, sign;
    } rows[] = {{200, 0, kAxisX, 1},
                {-200, 0, kAxisX, -1},
                {0, 500, kAxisY, 1},
                {80, 80, kPlaneXY, 0},
                {300, 300, 0, 0}};
    for (const auto& row : rows) {
        const unsigned before = changes();
        hover(row.right, row.above);
        EXPECT_EQ(before + 1, changes());
        EXPECT_EQ(row.handle, gizmo().hoverHandle);
        EXPECT_EQ(row.sign, gizmo().hoverSign);
        EXPECT_EQ(row.handle ? 1u : 0u, colors(gizmo()).count(kYellow));
        EXPECT_EQ(kNoHandle, state.lockedHandle); // moves lock by clicks alone
        hover(row.right + 1, row.above + 1);
        EXPECT_EQ(before + 1, changes()); // the same handle: nothing is drawn again
    }
    EXPECT_EQ(0, cage.applied);
    host::cursorMoved({8, 50, 0}, false); // nowhere
    EXPECT_EQ(kNoHandle, gizmo().hoverHandle);
}

TEST_F(Hovering, ScalesLockAndTellTheirFactorBesideTheMouse) {
    start(GizmoMode::scale);
    const GizmoListening listening(state);
    hover(300, 300);
    EXPECT_EQ(nullptr, tooltip());
    hover(200, 0); // flat along X: its handle is grey and takes nothing
    EXPECT_EQ(kNoHandle, state.lockedHandle);
    EXPECT_EQ(HandleBit(kAxisX) | HandleBit(kAxisZ) | HandleBit(kPlaneXZ), gizmo().hiddenHandles);
    hover(0, 200);
    EXPECT_EQ(kAxisY, state.lockedHandle);
    hover(300, 610.94); // twice the gizmo's 305.47 pixels up
    EXPECT_EQ(kAxisY, state.lockedHandle);
    const HWND window = tooltip();
    ASSERT_NE(nullptr, window);
    EXPECT_EQ(L"缩放Y: 2.000", host::windowOf(window)->text);
    POINT mouse;
    GetCursorPos(&mouse);
    RECT place;
    GetWindowRect(window, &place);
    EXPECT_EQ(mouse.x + 25, place.left);
    EXPECT_NEAR(mouse.y, (place.top + place.bottom) / 2.0, 1);
    EXPECT_GT(place.right - place.left, 20 + 30);
    state.lockedHandle = kNoHandle;
    state.showGizmo();
    hover(300, 320);
    EXPECT_EQ(nullptr, tooltip());
}

TEST_F(Hovering, RotationsShowTheSectorTheySweep) {
    start(GizmoMode::rotate);
    const GizmoListening listening(state);
    hover(151.2, 151.2);
    EXPECT_EQ(kPlaneXY, state.lockedHandle);
    TransientGizmo& turning = state.graphics.gizmo();
    turning.rotating = true;
    turning.rotateStart = {20, 50, 0};
    const size_t still = shown(turning).picture.primitives.size();
    hover(0, 200);
    EXPECT_NEAR(M_PI / 2, turning.rotateAngle - turning.rotateStartAngle, 1e-2);
    EXPECT_EQ(still + 19 + 1, shown(turning).picture.primitives.size()); // rays, and the rim
    EXPECT_EQ(kPlaneXY, state.lockedHandle);
    hover(10, 150); // over the other rings, which lock nothing now
    EXPECT_EQ(kPlaneXY, state.lockedHandle);
}

TEST_F(Hovering, MovedPointsAreUpdatedInPlace) {
    start(GizmoMode::move);
    const unsigned before = changes();
    state.redraw();
    EXPECT_EQ(before, changes());
    state.placePoint(4, {60, 60, 0}); // the middle one: itself and its four lines
    EXPECT_EQ(before + 5, changes());
    EXPECT_EQ(9u + 12u + 1u, acgiGetTransientManager()->entries().size());
    state.graphics.DropLatticeGraphics();
    EXPECT_TRUE(acgiGetTransientManager()->entries().empty());
}

TEST_F(Hovering, DotsAreLargerAndWhiteWhereSelected) {
    start(GizmoMode::move);
    int large = 0;
    for (const AcGiTransientManager::Entry& entry : acgiGetTransientManager()->entries()) {
        const auto* dot = dynamic_cast<const TransientCP*>(entry.drawable);
        if (!dot) continue;
        const bool chosen = dot->position.x == 0;
        EXPECT_EQ(chosen ? 7 : 210, dot->colorIndex);
        EXPECT_NEAR(0.008 * std::sqrt(20000.0) * (chosen ? 1.5 : 1), dot->size, 1e-9);
        AcDbExtents extents;
        EXPECT_EQ(Acad::eOk, dot->getGeomExtents(extents));
        EXPECT_NEAR(2 * dot->size, extents.maxPoint().x - extents.minPoint().x, 1e-9);
        large += chosen;
    }
    EXPECT_EQ(3, large);
    EXPECT_EQ(0.05, ControlPointSize({{0, 0, 0}, {1, 1, 1}}));
    EXPECT_EQ(5.0, ControlPointSize({{0, 0, 0}, {1e4, 0, 0}}));
    EXPECT_EQ(800.0, GizmoSize({{0, 0, 0}, {1e4, 0, 0}}));
}

TEST_F(Hovering, DotsAreDiscsFromEverySide) {
    start(GizmoMode::move);
    const AcGiDrawable* dot = acgiGetTransientManager()->entries()[12].drawable; // behind the lines
    const auto extents = [&] { return shown(*dot).picture.extents; };
    EXPECT_EQ(0, extents().maxPoint().z - extents().minPoint().z);
    const double width = extents().maxPoint().x - extents().minPoint().x;
    host::setClock(host::ClockSetting{0, 1000});
    drawing.run(L"-VIEW O FRONT\n");
    EXPECT_NEAR(width, extents().maxPoint().z - extents().minPoint().z, 1e-9);
    EXPECT_NEAR(0, extents().maxPoint().y - extents().minPoint().y, 1e-9);
    const unsigned before = changes();
    host::setClock(host::ClockSetting{0, 1500}); // a view that is due to be followed
    drawing.run(L"ZOOM 2x\n");                   // from the same side: nothing is drawn again
    host::setClock(std::nullopt);
    EXPECT_EQ(before, changes());
}

TEST_F(Hovering, GizmosTurnWhenTheCageSaysSo) {
    EXPECT_FALSE(cage.turnGizmo);
    start(GizmoMode::move);
    {
        const GizmoListening listening(state);
        cage.frame = {AcGeVector3d(0, 1, 0), AcGeVector3d(-1, 0, 0), AcGeVector3d::kZAxis};
        cage.turnGizmo();
        hover(0, 200); // up the page is X now
        EXPECT_EQ(kAxisX, gizmo().hoverHandle);
    }
    EXPECT_FALSE(cage.turnGizmo);
}

// Panning tells of every step: the cage is drawn again five times a second at most, and never left out.
TEST_F(Hovering, TheViewIsFollowedAtATick) {
    host::setClock(host::ClockSetting{0, 1000});
    state.redraw();
    state.cage.toggleLock();
    state.redraw();
    const auto marker = [] { return host::screen().vectors().size(); };
    EXPECT_EQ(4u, marker());
    host::viewChanged(); // the first one is followed at once
    EXPECT_EQ(4u, marker());
    host::setClock(host::ClockSetting{0, 1200});
    host::viewChanged();
    EXPECT_EQ(0u, marker());
    host::cursorMoved({1, 1, 0});
    EXPECT_EQ(0u, marker());
    host::setClock(host::ClockSetting{0, 1201});
    host::cursorMoved({1, 2, 0});
    EXPECT_EQ(4u, marker());
    host::setClock(std::nullopt);
    acedRedraw(nullptr, 0);
    state.graphics.DropLatticeGraphics();
}
