// What the gizmo's handles do to points.
#include <algorithm>
#include <cmath>

#include "deform/cage/gizmo.h"

namespace corvane::deform {
namespace {

// A half and a whole turn as messages and constants of this command have them.
constexpr double kHalfTurn = 3.1415926535, kWholeTurn = 6.283185307;

double along(const AcGeVector3d& v, const GizmoAxes& axes, int axis) {
    return v.dotProduct(axes[size_t(axis)]);
}

// The sum of the axes, each times what `part` makes of the vector's length along it.
template <class Part> AcGeVector3d combined(const AcGeVector3d& v, const GizmoAxes& axes, Part part) {
    AcGeVector3d sum;
    for (int axis = 0; axis < 3; ++axis) sum += axes[size_t(axis)] * part(axis, along(v, axes, axis));
    return sum;
}

} // namespace

unsigned FlatHandles(std::span<const AcGePoint3d> points, const GizmoAxes& axes) {
    constexpr double kFlat = 1e-9;
    if (points.size() < 2) return 0;
    bool flat[3];
    for (int axis = 0; axis < 3; ++axis) {
        double low = HUGE_VAL, high = -HUGE_VAL;
        for (const AcGePoint3d& point : points) {
            const double at = along(point.asVector(), axes, axis);
            low = std::min(low, at), high = std::max(high, at);
        }
        flat[axis] = high - low < kFlat;
    }
    unsigned handles = 0;
    for (int handle = kAxisX; handle <= kPlaneYZ; ++handle) {
        bool useless = true;
        for (int axis = 0; axis < 3; ++axis) useless = useless && (flat[axis] || !WorksAlong(handle, axis));
        if (useless) handles |= HandleBit(handle);
    }
    return handles;
}

AcGeVector3d Constrained(const AcGeVector3d& delta, int handle, const GizmoAxes& axes) {
    return combined(delta, axes, [&](int axis, double d) { return WorksAlong(handle, axis) ? d : 0.0; });
}

double ScaleFactor(const AcGeVector3d& offset, int handle, double size, const GizmoAxes& axes) {
    constexpr double kTooNear = 0.001;
    const double distance = Constrained(offset, handle, axes).length();
    return distance < kTooNear || !(size > 0) ? 1.0 : distance / size;
}

// What a handle doesn't work along keeps every bit.
AcGePoint3d Scaled(const AcGePoint3d& point, const AcGePoint3d& pivot, double factor, int handle,
                   const GizmoAxes& axes) {
    return point + combined(point - pivot, axes, [&](int axis, double d) {
               return WorksAlong(handle, axis) ? d * factor - d : 0.0;
           });
}

// Pixels count downwards: from the start's direction to the end's is clockwise as seen.
double Turn(Pixel centre, Pixel from, Pixel to, bool fromBehind) {
    const auto direction = [&](Pixel p) {
        return std::atan2(double(p.y) - centre.y, double(p.x) - centre.x);
    };
    double turn = direction(from) - direction(to);
    while (turn > kHalfTurn) turn -= kWholeTurn;
    while (turn < -kHalfTurn) turn += kWholeTurn;
    return fromBehind ? -turn : turn;
}

bool SeenFromBehind(const GizmoPlace& gizmo, const ScreenMap& screen, int plane) {
    const auto [first, second] = AxesOfPlane(plane);
    const AcGeVector3d normal = gizmo.axes[size_t(first)].crossProduct(gizmo.axes[size_t(second)]);
    return screen.display(gizmo.centre + normal).z < screen.display(gizmo.centre).z;
}

AcGePoint3d Rotated(const AcGePoint3d& point, const AcGePoint3d& pivot, double angle, int plane,
                    const GizmoAxes& axes) {
    const auto [first, second] = AxesOfPlane(plane);
    const AcGeVector3d offset = point - pivot;
    const double u = along(offset, axes, first), v = along(offset, axes, second);
    const double c = std::cos(angle), s = std::sin(angle);
    const AcGeVector3d shift =
        axes[size_t(first)] * (u * c - v * s - u) + axes[size_t(second)] * (u * s + v * c - v);
    return point + shift;
}

} // namespace corvane::deform
