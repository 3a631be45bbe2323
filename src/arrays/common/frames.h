// How copies are turned: frames along a path, the frame an object brings along, and the matrix from one to
// the other. Vectors and matrices alone; which object has which frame stands with the features.
#pragma once
#include <optional>

#include "core/host/geometry.h"

namespace corvane {

// Three perpendicular unit vectors, right-handed.
struct Frame {
    AcGeVector3d x = AcGeVector3d::kXAxis, y = AcGeVector3d::kYAxis, z = AcGeVector3d::kZAxis;
};

// The X axis of a plane with that unit normal, by the arbitrary axis rule of drawing files (limit 1/64).
AcGeVector3d ArbitraryXAxis(const AcGeVector3d& normal);
// From an X and a Z axis of any length that stand perpendicular; what has no length counts as the world's.
Frame FrameOf(const AcGeVector3d& x, const AcGeVector3d& z);

// Across a path: Z along the unit tangent, X level (the world's Z axis times the tangent) or, where the path
// stands upright, the world's Y axis times the tangent. A reference direction comes first: X is the part of
// it that stands across the path, if that is longer than 1e-6.
Frame FrameAcross(const AcGeVector3d& tangent, const std::optional<AcGeVector3d>& reference = {});
// Turned about its Z axis, by radians.
Frame Twisted(const Frame& frame, double angle);

// The rotation that takes the first frame onto the second.
AcGeMatrix3d FrameToFrame(const Frame& from, const Frame& to);
// The rotation about the world's Z axis by the tangent's direction in plan.
AcGeMatrix3d RotationInPlan(const AcGeVector3d& tangent);

// Takes `base` to `point`, scaled and turned about it.
AcGeMatrix3d CopyMatrix(const AcGePoint3d& base, const AcGePoint3d& point, double scale,
                        const AcGeMatrix3d& rotation = AcGeMatrix3d::kIdentity);

} // namespace corvane
