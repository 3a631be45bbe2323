// Thinning by distance.
#include "apps/desk/coarse_shapes.h"

namespace desk {
namespace {

constexpr std::size_t kFewCorners = 12; // an area of so few may be a strip thinner than the step

} // namespace

void CoarseShapes::follow(const host::DisplayList& list) {
    using Kind = host::DisplayPrimitive::Kind;
    for (std::size_t i = starts_.size() - 1; i < list.primitives.size(); ++i) {
        const host::DisplayPrimitive& primitive = list.primitives[i];
        const host::DisplayContours contours = list.contours(primitive);
        for (std::uint32_t c = 0; c < contours.count && primitive.kind != Kind::text; ++c) {
            const auto contour = contours[c];
            if (primitive.kind == Kind::line || contour.size() > kFewCorners)
                add(contour);
            else
                points_.insert(points_.end(), contour.begin(), contour.end());
            ends_.push_back(std::uint32_t(points_.size()));
        }
        starts_.push_back(std::uint32_t(ends_.size()));
    }
}

// The ends stay.
void CoarseShapes::add(std::span<const AcGePoint3d> contour) {
    const double square = step_ * step_;
    for (std::size_t i = 0; i < contour.size(); ++i)
        if (i == 0 || i + 1 == contour.size() || (contour[i] - points_.back()).lengthSqrd() > square)
            points_.push_back(contour[i]);
}

} // namespace desk
