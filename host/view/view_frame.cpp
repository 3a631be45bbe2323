// Projections and conversions; everything goes through world coordinates but paper.
#include "host/view/view_frame.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

bool isFinite(const AcGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

AcGePoint3d applied(const AcGeMatrix3d& matrix, const AcGePoint3d& point, bool isVector) {
    if (!isVector) return matrix * point;
    const AcGeVector3d v = matrix * point.asVector();
    return {v.x, v.y, v.z};
}

std::optional<AcGeMatrix3d> toWorld(const CoordinateSystem& system, const Surroundings& around) {
    using Kind = CoordinateSystem::Kind;
    AcGeMatrix3d matrix;
    switch (system.kind) {
    case Kind::world: return matrix;
    case Kind::user: {
        const UserFrame& user = around.user;
        const AcGeVector3d z = user.xAxis.crossProduct(user.yAxis);
        if (z.isZeroLength()) return std::nullopt;
        const AcGeVector3d x = user.xAxis.normal(), up = z.normal();
        return matrix.setCoordSystem(user.origin, x, up.crossProduct(x), up);
    }
    case Kind::display:
        if (around.view.direction.isZeroLength()) return std::nullopt;
        return around.view.displayToWorld();
    case Kind::object:
        if (system.normal.isZeroLength()) return std::nullopt;
        return matrix.setToPlaneToWorld(system.normal);
    case Kind::paper: break;
    }
    return std::nullopt;
}

std::optional<AcGePoint3d> throughPaper(const AcGePoint3d& p, bool toPaper, bool isVector,
                                        const Surroundings& around) {
    if (!around.paper || !(around.paper->height > 0) || !(around.view.height > 0)) return std::nullopt;
    const double scale = around.paper->height / around.view.height;
    const AcGePoint2d view = isVector ? AcGePoint2d() : around.view.center;
    const AcGePoint2d paper = isVector ? AcGePoint2d() : around.paper->center;
    if (toPaper)
        return AcGePoint3d(paper.x + (p.x - view.x) * scale, paper.y + (p.y - view.y) * scale, p.z * scale);
    return AcGePoint3d(view.x + (p.x - paper.x) / scale, view.y + (p.y - paper.y) / scale, p.z / scale);
}

} // namespace

AcGeMatrix3d ViewFrame::displayToWorld() const {
    AcGeMatrix3d plane;
    plane.setToPlaneToWorld(direction);
    return AcGeMatrix3d::rotation(-twist, direction, target) * AcGeMatrix3d::translation(target.asVector()) *
           plane;
}

AcGeMatrix3d ViewFrame::worldToDisplay() const { return displayToWorld().inverse(); }

std::optional<AcGePoint3d> ViewFrame::seen(const AcGePoint3d& world) const {
    AcGePoint3d p = worldToDisplay() * world;
    if (!perspective) return p;
    const double distance = direction.length();
    if (!(distance - p.z > 1e-9 * distance)) return std::nullopt;
    const double shrink = distance / (distance - p.z);
    return AcGePoint3d(p.x * shrink, p.y * shrink, p.z);
}

void ViewFrame::fit(const AcGePoint2d& low, const AcGePoint2d& high, double margin) {
    center.set((low.x + high.x) / 2, (low.y + high.y) / 2);
    const double across = std::max(0.0, high.x - low.x), up = std::max(0.0, high.y - low.y);
    const double grown = 1 + 2 * std::max(0.0, margin);
    height = std::max(up, across / aspect) * grown;
    if (!(height > 0) || !std::isfinite(height)) height = 1;
}

std::optional<AcGePoint3d> converted(const AcGePoint3d& point, const CoordinateSystem& from,
                                     const CoordinateSystem& to, bool isVector, const Surroundings& around) {
    using Kind = CoordinateSystem::Kind;
    if (!isFinite(point)) return std::nullopt;
    if (from.kind == Kind::paper || to.kind == Kind::paper) {
        if (from.kind == to.kind) return point;
        const bool toPaper = to.kind == Kind::paper;
        if ((toPaper ? from.kind : to.kind) != Kind::display) return std::nullopt;
        return throughPaper(point, toPaper, isVector, around);
    }
    const auto there = toWorld(from, around), back = toWorld(to, around);
    if (!there || !back) return std::nullopt;
    return applied(back->inverse(), applied(*there, point, isVector), isVector);
}

} // namespace host
