// Frames and matrices of copies.
#include "arrays/common/frames.h"

#include <cmath>

namespace corvane {
namespace {

constexpr double kNoLength = 1e-6;

AcGeVector3d unitOr(const AcGeVector3d& v, const AcGeVector3d& otherwise) {
    const double length = v.length();
    return length > 0 && std::isfinite(length) ? v / length : otherwise;
}

} // namespace

AcGeVector3d ArbitraryXAxis(const AcGeVector3d& normal) {
    constexpr double kNearZ = 1.0 / 64;
    const bool nearZ = std::abs(normal.x) < kNearZ && std::abs(normal.y) < kNearZ;
    const AcGeVector3d& axis = nearZ ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis;
    return unitOr(axis.crossProduct(normal), AcGeVector3d::kXAxis);
}

Frame FrameOf(const AcGeVector3d& x, const AcGeVector3d& z) {
    Frame frame;
    frame.x = unitOr(x, AcGeVector3d::kXAxis);
    frame.z = unitOr(z, AcGeVector3d::kZAxis);
    frame.y = unitOr(frame.z.crossProduct(frame.x), AcGeVector3d::kYAxis);
    return frame;
}

Frame FrameAcross(const AcGeVector3d& tangent, const std::optional<AcGeVector3d>& reference) {
    AcGeVector3d across = AcGeVector3d::kZAxis.crossProduct(tangent);
    if (across.length() < kNoLength) across = AcGeVector3d::kYAxis.crossProduct(tangent);
    if (reference) {
        const AcGeVector3d part = *reference - tangent * reference->dotProduct(tangent);
        if (part.length() > kNoLength) across = part;
    }
    return FrameOf(across, tangent);
}

Frame Twisted(const Frame& frame, double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return {frame.x * c + frame.y * s, frame.y * c - frame.x * s, frame.z};
}

AcGeMatrix3d FrameToFrame(const Frame& from, const Frame& to) {
    return AcGeMatrix3d::alignCoordSys(AcGePoint3d::kOrigin, from.x, from.y, from.z, AcGePoint3d::kOrigin,
                                       to.x, to.y, to.z);
}

AcGeMatrix3d RotationInPlan(const AcGeVector3d& tangent) {
    return AcGeMatrix3d::rotation(std::atan2(tangent.y, tangent.x), AcGeVector3d::kZAxis);
}

AcGeMatrix3d CopyMatrix(const AcGePoint3d& base, const AcGePoint3d& point, double scale,
                        const AcGeMatrix3d& rotation) {
    AcGeMatrix3d matrix = rotation;
    for (unsigned row = 0; row < 3; ++row)
        for (unsigned column = 0; column < 3; ++column) matrix(row, column) *= scale;
    return matrix.setTranslation(point.asVector() - matrix * base.asVector());
}

} // namespace corvane
