// What the gizmo looks like: arrows or cubes along the axes and squares between them, or rings; its centre,
// the name of its mode below, and the sector of a rotation that is being made.
#include <cmath>
#include <vector>

#include "deform/cage/gizmo_names.h"
#include "deform/cage/transients.h"

namespace corvane::deform {
namespace {

constexpr Adesk::UInt16 kLit = 2, kGrey = 253;
constexpr double kHead = 0.15, kHeadWidth = 0.05; // of arrows and cubes, as parts of the size
constexpr double kCentreMark = 0.06, kLetter = 0.14;
constexpr int kRingSteps = 72, kSectorSteps = 72, kSectorRays = 4, kHatch = 8;

Adesk::UInt16 axisColor(int axis) { return Adesk::UInt16(axis == 0 ? 1 : axis == 1 ? 3 : 5); }
// A plane has the colour of its normal.
Adesk::UInt16 handleColor(int handle) {
    if (IsAxis(handle)) return axisColor(handle - kAxisX);
    return axisColor(handle == kPlaneXY ? 2 : handle == kPlaneXZ ? 1 : 0);
}
Adesk::UInt16 modeColor(GizmoMode mode) { return axisColor(int(mode)); }

class GizmoDrawing {
public:
    GizmoDrawing(const TransientGizmo& gizmo, AcGiWorldDraw& context)
        : gizmo_(gizmo), traits_(context.subEntityTraits()), out_(context.geometry()) {}

    void draw() {
        if (gizmo_.mode == GizmoMode::rotate) {
            for (int plane = kPlaneXY; plane <= kPlaneYZ; ++plane) ring(plane);
            if (gizmo_.rotating && IsPlane(gizmo_.lockedHandle)) sector();
        } else {
            // Scales work along axes and evenly: planes are there for moves alone.
            for (int plane = kPlaneXY; plane <= kPlaneYZ && gizmo_.mode == GizmoMode::move; ++plane)
                square(plane);
            for (int axis = 0; axis < 3; ++axis) arm(axis);
        }
        centreMark();
        label();
    }

private:
    AcGeVector3d reach(int axis, double part) const {
        return gizmo_.axes[size_t(axis)] * (part * gizmo_.size);
    }
    bool lit(int handle) const { return gizmo_.hoverHandle == handle; }
    bool locked(int handle) const { return gizmo_.lockedHandle == handle; }

    void look(int handle, Adesk::UInt16 plain) {
        const bool hidden = handle <= kPlaneYZ && (gizmo_.hiddenHandles & HandleBit(handle));
        const bool thick = !hidden && (lit(handle) || locked(handle));
        traits_.setColor(hidden ? kGrey : lit(handle) ? kLit : plain);
        traits_.setLineWeight(thick ? AcDb::kLnWt035 : AcDb::kLnWt000);
        traits_.setFillType(kAcGiFillNever);
    }
    void line(const AcGePoint3d& from, const AcGePoint3d& to) {
        const AcGePoint3d points[] = {from, to};
        out_.polyline(2, points);
    }
    void filled(const std::vector<AcGePoint3d>& corners) {
        traits_.setFillType(kAcGiFillAlways);
        out_.polygon(Adesk::UInt32(corners.size()), corners.data());
    }

    void arm(int axis) {
        const int handle = kAxisX + axis;
        look(handle, axisColor(axis));
        const AcGePoint3d tip = gizmo_.centre + reach(axis, 1);
        line(gizmo_.centre, tip);
        // The rubber axis goes to the side where the cursor is.
        if (lit(handle) && gizmo_.hoverSign < 0) line(gizmo_.centre, gizmo_.centre - reach(axis, 1));
        // Two flat heads across each other show from every side but the tip's.
        for (int side = 1; side <= 2; ++side) {
            const AcGeVector3d width = reach((axis + side) % 3, kHeadWidth);
            if (gizmo_.mode == GizmoMode::move) {
                const AcGePoint3d base = tip - reach(axis, kHead);
                filled({tip, base + width, base - width});
            } else {
                const AcGeVector3d length = reach(axis, kHeadWidth);
                filled(
                    {tip + length + width, tip - length + width, tip - length - width, tip + length - width});
            }
        }
    }

    void square(int plane) {
        const auto [first, second] = AxesOfPlane(plane);
        const AcGeVector3d u = reach(first, kPlaneSquare), v = reach(second, kPlaneSquare);
        look(plane, handleColor(plane));
        const AcGePoint3d corners[] = {gizmo_.centre + u, gizmo_.centre + u + v, gizmo_.centre + v};
        out_.polyline(3, corners);
        if (!lit(plane) && !locked(plane)) return;
        for (int i = 1; i < kHatch; ++i) {
            const double part = double(i) / kHatch;
            line(gizmo_.centre + u * part, gizmo_.centre + v * part);
            line(gizmo_.centre + u + v * part, gizmo_.centre + u * part + v);
        }
    }

    AcGePoint3d onRing(int plane, double angle) const {
        const auto [first, second] = AxesOfPlane(plane);
        return gizmo_.centre + reach(first, kRingRadius * std::cos(angle)) +
               reach(second, kRingRadius * std::sin(angle));
    }
    void ring(int plane) {
        look(plane, handleColor(plane));
        std::vector<AcGePoint3d> points;
        for (int i = 0; i <= kRingSteps; ++i) points.push_back(onRing(plane, 2 * M_PI * i / kRingSteps));
        out_.polyline(Adesk::UInt32(points.size()), points.data());
    }
    // A fan with some of its rays, so that what is behind it can be seen.
    void sector() {
        const int plane = gizmo_.lockedHandle;
        look(plane, handleColor(plane));
        const double swept = gizmo_.rotateAngle - gizmo_.rotateStartAngle;
        std::vector<AcGePoint3d> rim;
        for (int i = 0; i <= kSectorSteps; ++i) {
            rim.push_back(onRing(plane, gizmo_.rotateStartAngle + swept * i / kSectorSteps));
            if (i % kSectorRays == 0) line(gizmo_.centre, rim.back());
        }
        out_.polyline(Adesk::UInt32(rim.size()), rim.data());
    }

    void centreMark() {
        look(kCentre, modeColor(gizmo_.mode));
        for (int normal = 0; normal < 3; ++normal) {
            const AcGeVector3d u = reach((normal + 1) % 3, kCentreMark),
                               v = reach((normal + 2) % 3, kCentreMark);
            const AcGePoint3d& c = gizmo_.centre;
            const AcGePoint3d corners[] = {c + u, c + v, c - u, c - v, c + u};
            out_.polyline(5, corners);
        }
    }
    void label() {
        look(kLabel, modeColor(gizmo_.mode));
        const CString name = GizmoModeName(gizmo_.mode);
        const double height = kLetter * gizmo_.size;
        // As wide as letters are on the whole; Chinese ones are squares.
        double width = 0;
        for (const wchar_t letter : std::wstring(name)) width += letter > 0x2E80 ? 1.3 : 0.8;
        const auto& [right, up] = gizmo_.facing;
        const AcGePoint3d top = gizmo_.centre - AcGeVector3d::kYAxis * (kLabelDrop * gizmo_.size);
        out_.text(top - up * height - right * (width * height / 2), right.crossProduct(up), right, height, 1,
                  0, name);
    }

    const TransientGizmo& gizmo_;
    AcGiSubEntityTraits& traits_;
    AcGiWorldGeometry& out_;
};

} // namespace

Adesk::Boolean TransientGizmo::subWorldDraw(AcGiWorldDraw* context) const {
    if (visible) GizmoDrawing(*this, *context).draw();
    return true;
}

} // namespace corvane::deform
