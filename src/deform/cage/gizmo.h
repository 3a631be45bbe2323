// The gizmo as plain data: its modes and handles, which handle the cursor is on, and what a handle does to
// points. What it looks like is in gizmo_graphic.h, what the user is asked in gizmo_loop.h.
#pragma once
#include <span>

#include "deform/cage/cage.h"
#include "deform/cage/screen_map.h"

namespace corvane::deform {

enum class GizmoMode { move = 0, scale = 1, rotate = 2 };

// Handles by number, as drawn, locked and hovered.
enum Handle : int {
    kNoHandle = 0,
    kAxisX = 1,
    kAxisY = 2,
    kAxisZ = 3,
    kPlaneXY = 4,
    kPlaneXZ = 5,
    kPlaneYZ = 6,
    kCentre = 7, // in scale mode all axes evenly
    kLabel = 8   // the mode's name below the centre
};
constexpr bool IsAxis(int handle) { return handle >= kAxisX && handle <= kAxisZ; }
constexpr bool IsPlane(int handle) { return handle >= kPlaneXY && handle <= kPlaneYZ; }
// The bit of a handle in a set of handles.
constexpr unsigned HandleBit(int handle) { return 1u << (handle - 1); }

// Indices of a plane handle's two axes, 0 to 2.
struct PlaneAxes {
    int first, second;
};
constexpr PlaneAxes AxesOfPlane(int handle) {
    return handle == kPlaneXY ? PlaneAxes{0, 1} : handle == kPlaneXZ ? PlaneAxes{0, 2} : PlaneAxes{1, 2};
}
// Whether a handle works along an axis (0 to 2). No handle, and the centre, work along all three.
constexpr bool WorksAlong(int handle, int axis) {
    if (IsAxis(handle)) return handle - kAxisX == axis;
    if (IsPlane(handle)) return AxesOfPlane(handle).first == axis || AxesOfPlane(handle).second == axis;
    return true;
}

// Where a gizmo stands and what of it can be used.
struct GizmoPlace {
    AcGePoint3d centre;
    double size = 1; // world units
    GizmoMode mode = GizmoMode::move;
    unsigned hiddenHandles = 0; // of HandleBit
    GizmoAxes axes{AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis};
};

// Parts of the gizmo, as fractions of its size.
inline constexpr double kPlaneSquare = 0.5, kRingRadius = 0.7, kLabelDrop = 0.12;

// The handles along which the points have no extent (below 1e-9), so that a scale does nothing; none for
// fewer than two points.
unsigned FlatHandles(std::span<const AcGePoint3d> points, const GizmoAxes& axes);

// -- where the cursor is --------------------------------------------------------------------------------

// The handle under a pixel, the label's number, or none. Tolerances are in pixels: 28 both ways round the
// label, which comes first in every mode; 14 from an axis, a square of at least 32 for a plane, 18 from a
// ring, 21 from the centre.
int HitTestGizmo(const GizmoPlace& gizmo, const ScreenMap& screen, Pixel cursor);

// The axis that the direction from the centre to the cursor keeps closest to as seen, and whether it points
// along it (+1) or against it (-1). No handle within 3 pixels of the centre, and where no axis is nearer
// than a cosine of 0.92.
struct AxisHover {
    int handle = kNoHandle, sign = 0;
};
AxisHover AxisTowards(const GizmoPlace& gizmo, const ScreenMap& screen, Pixel cursor);

// The direction in a plane, in radians from its first axis, that is seen from the centre to the cursor; 0 for
// a plane seen edge-on and for the centre itself.
double AngleInPlane(const GizmoPlace& gizmo, const ScreenMap& screen, int plane, Pixel cursor);

// -- what a handle does ---------------------------------------------------------------------------------

// What of a displacement a handle lets through.
AcGeVector3d Constrained(const AcGeVector3d& delta, int handle, const GizmoAxes& axes);

// The factor by which a cursor at `offset` from the pivot scales: its distance along the handle in gizmo
// sizes; 1 below 0.001.
double ScaleFactor(const AcGeVector3d& offset, int handle, double size, const GizmoAxes& axes);
AcGePoint3d Scaled(const AcGePoint3d& point, const AcGePoint3d& pivot, double factor, int handle,
                   const GizmoAxes& axes);

// The turn, in -pi to pi, from one pixel to another about the centre's, counter-clockwise as seen; the other
// way round when the plane is seen from behind.
double Turn(Pixel centre, Pixel from, Pixel to, bool fromBehind);
// Whether the viewer looks against the normal of a plane, which is its first axis times its second.
bool SeenFromBehind(const GizmoPlace& gizmo, const ScreenMap& screen, int plane);
// Turned in a plane, from its first axis towards its second.
AcGePoint3d Rotated(const AcGePoint3d& point, const AcGePoint3d& pivot, double angle, int plane,
                    const GizmoAxes& axes);

} // namespace corvane::deform
