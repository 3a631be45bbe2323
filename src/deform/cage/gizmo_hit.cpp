// Which part of the gizmo is under the cursor.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "deform/cage/gizmo.h"

namespace corvane::deform {
namespace {

constexpr int kLabelReach = 28, kCentreReach = 21, kSmallestSquare = 32, kStill = 3;
constexpr double kAxisReach2 = 14 * 14, kRingReach = 18;
constexpr int kRingChords = 36;
constexpr double kAlong = 0.92; // cosine: within 23 degrees of an axis as seen

double squareOf(double x, double y) { return x * x + y * y; }

// Of the cursor to the segment; one shorter than a tenth of a pixel is its first point.
double squaredDistance(Pixel cursor, Pixel a, Pixel b) {
    constexpr double kShort2 = 0.01;
    const double dx = double(b.x) - a.x, dy = double(b.y) - a.y, length2 = squareOf(dx, dy);
    const double px = double(cursor.x) - a.x, py = double(cursor.y) - a.y;
    const double t = length2 < kShort2 ? 0 : std::clamp((px * dx + py * dy) / length2, 0.0, 1.0);
    return squareOf(px - t * dx, py - t * dy);
}

bool within(Pixel a, Pixel b, int reach) {
    return std::abs(double(a.x) - b.x) <= reach && std::abs(double(a.y) - b.y) <= reach;
}

class HitTest {
public:
    HitTest(const GizmoPlace& gizmo, const ScreenMap& screen, Pixel cursor)
        : gizmo_(gizmo), screen_(screen), cursor_(cursor), centre_(screen.pixel(gizmo.centre)) {}

    int handle() const {
        const Pixel label = screen_.pixel(gizmo_.centre - AcGeVector3d::kYAxis * (kLabelDrop * gizmo_.size));
        if (within(cursor_, label, kLabelReach)) return kLabel;
        const int found = gizmo_.mode == GizmoMode::rotate ? ring() : axisOrPlane();
        if (found) return found;
        const double away2 = squareOf(double(cursor_.x) - centre_.x, double(cursor_.y) - centre_.y);
        return away2 <= kCentreReach * kCentreReach ? kCentre : kNoHandle;
    }

private:
    bool hidden(int handle) const { return gizmo_.hiddenHandles & HandleBit(handle); }
    AcGeVector3d reach(int axis, double part) const {
        return gizmo_.axes[size_t(axis)] * (part * gizmo_.size);
    }

    int axisOrPlane() const {
        for (int handle = kAxisX; handle <= kAxisZ; ++handle) {
            const Pixel tip = screen_.pixel(gizmo_.centre + reach(handle - kAxisX, 1));
            if (!hidden(handle) && squaredDistance(cursor_, centre_, tip) < kAxisReach2) return handle;
        }
        for (int handle = kPlaneXY; handle <= kPlaneYZ; ++handle)
            if (!hidden(handle) && inSquare(handle)) return handle;
        return kNoHandle;
    }

    bool inSquare(int plane) const {
        const auto [first, second] = AxesOfPlane(plane);
        const AcGeVector3d u = reach(first, kPlaneSquare), v = reach(second, kPlaneSquare);
        const std::array corners{centre_, screen_.pixel(gizmo_.centre + u),
                                 screen_.pixel(gizmo_.centre + u + v), screen_.pixel(gizmo_.centre + v)};
        const auto covers = [&](int Pixel::*coordinate) {
            const auto [low, high] =
                std::minmax_element(corners.begin(), corners.end(), [&](const Pixel& a, const Pixel& b) {
                    return a.*coordinate < b.*coordinate;
                });
            const double middle = (double((*low).*coordinate) + (*high).*coordinate) / 2;
            const double half =
                std::max(double((*high).*coordinate) - (*low).*coordinate, double(kSmallestSquare)) / 2;
            return std::fabs(cursor_.*coordinate - middle) <= half;
        };
        return covers(&Pixel::x) && covers(&Pixel::y);
    }

    // The ring that is nearest, the first among equals.
    int ring() const {
        int found = kNoHandle;
        double nearest = kRingReach;
        for (int plane = kPlaneXY; plane <= kPlaneYZ; ++plane)
            if (const double distance = toRing(plane); distance < nearest) nearest = distance, found = plane;
        return found;
    }
    double toRing(int plane) const {
        const auto [first, second] = AxesOfPlane(plane);
        const AcGeVector3d u = reach(first, kRingRadius), v = reach(second, kRingRadius);
        const auto at = [&](int step) {
            const double angle = 2 * M_PI * step / kRingChords;
            return screen_.pixel(gizmo_.centre + u * std::cos(angle) + v * std::sin(angle));
        };
        double nearest2 = HUGE_VAL;
        Pixel from = at(0);
        for (int step = 1; step <= kRingChords; ++step) {
            const Pixel to = at(step);
            nearest2 = std::min(nearest2, squaredDistance(cursor_, from, to));
            from = to;
        }
        return std::sqrt(nearest2);
    }

    const GizmoPlace& gizmo_;
    const ScreenMap& screen_;
    Pixel cursor_, centre_;
};

} // namespace

int HitTestGizmo(const GizmoPlace& gizmo, const ScreenMap& screen, Pixel cursor) {
    return HitTest(gizmo, screen, cursor).handle();
}

AxisHover AxisTowards(const GizmoPlace& gizmo, const ScreenMap& screen, Pixel cursor) {
    const Pixel centre = screen.pixel(gizmo.centre);
    const double x = double(cursor.x) - centre.x, y = double(cursor.y) - centre.y, away = std::hypot(x, y);
    AxisHover best;
    if (away <= kStill) return best;
    double nearest = kAlong;
    const AcGePoint3d from = screen.display(gizmo.centre);
    for (int axis = 0; axis < 3; ++axis) {
        // As seen, but not cut to pixels: an axis of one unit may be shorter than one.
        const AcGeVector3d seen = screen.display(gizmo.centre + gizmo.axes[size_t(axis)]) - from;
        const double length = std::hypot(seen.x, seen.y);
        if (length * screen.pixelsPerUnit() <= 1e-6) continue;
        const double cosine = (x * seen.x - y * seen.y) / (away * length);
        if (std::fabs(cosine) <= nearest) continue;
        nearest = std::fabs(cosine);
        best = {kAxisX + axis, cosine > 0 ? 1 : -1};
    }
    return best;
}

double AngleInPlane(const GizmoPlace& gizmo, const ScreenMap& screen, int plane, Pixel cursor) {
    const Pixel centre = screen.pixel(gizmo.centre);
    const double x = double(cursor.x) - centre.x, y = double(centre.y) - cursor.y;
    const AcGePoint3d from = screen.display(gizmo.centre);
    const auto [first, second] = AxesOfPlane(plane);
    const AcGeVector3d u = screen.display(gizmo.centre + gizmo.axes[size_t(first)]) - from;
    const AcGeVector3d v = screen.display(gizmo.centre + gizmo.axes[size_t(second)]) - from;
    const double across = u.x * v.y - u.y * v.x;
    constexpr double kEdgeOn = 1e-9;
    if (std::fabs(across) < kEdgeOn) return 0;
    const double alongU = (x * v.y - y * v.x) / across, alongV = (y * u.x - x * u.y) / across;
    return std::atan2(alongV, alongU);
}

} // namespace corvane::deform
