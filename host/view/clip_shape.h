// A polygon that what is drawn is cut to, seen along the axis of a coordinate system of its own.
#pragma once
#include <functional>
#include <span>
#include <vector>

#include "host/ge/matrix3d.h"

namespace host {

class ClipShape {
public:
    using Contour = std::vector<AcGePoint3d>;
    using Take = std::function<void(const Contour&)>;

    // The polygon lies in the XY plane of the coordinates that the matrix leads to. One of fewer than three
    // points, or a matrix without an inverse, cuts nothing.
    ClipShape(std::vector<AcGePoint2d> polygon, const AcGeMatrix3d& worldToClip);

    bool holds(const AcGePoint3d& world) const;
    // The parts of an open path within the polygon; a path of one point stays one. The polygon may be of any
    // shape.
    void cutPath(std::span<const AcGePoint3d> world, const Take& take) const;
    // The parts of a closed contour within: one for each convex piece of the polygon, which meet along their
    // edges (Sutherland, Hodgman 1974, on the ears of the polygon, Meisters 1975).
    void cutArea(std::span<const AcGePoint3d> world, const Take& take) const;

private:
    bool inside(const AcGePoint3d& clip) const;
    void cutSegment(const AcGePoint3d& from, const AcGePoint3d& to, std::vector<double>& at) const;
    Contour toClip(std::span<const AcGePoint3d> world) const;
    Contour toWorld(const Contour& clip) const;

    AcGeMatrix3d worldToClip_, clipToWorld_;
    std::vector<AcGePoint2d> polygon_;             // counter-clockwise; empty: cuts nothing
    std::vector<std::vector<AcGePoint2d>> pieces_; // convex, counter-clockwise
};

} // namespace host
