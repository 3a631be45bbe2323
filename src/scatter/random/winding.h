// Whether polygons wind round points, by an index over their edges; on plain data.
#pragma once
#include <span>
#include <vector>

#include "core/host/geometry.h"

namespace corvane::scatter {

// The polygon's area by the shoelace formula; counter-clockwise ones have a positive one.
double SignedArea(std::span<const AcGePoint2d> polygon);

// The winding number of a closed polygon round points (Sunday 2001). The edges are sorted into level strips,
// so that a point is compared with those alone that pass its height.
class WindingIndex {
public:
    WindingIndex() = default;
    explicit WindingIndex(std::vector<AcGePoint2d> polygon);
    // Not 0: the point is inside. Upward edges count 1 to their left, downward ones -1 to their right and for
    // points on them.
    int At(const AcGePoint2d& point) const;
    const std::vector<AcGePoint2d>& polygon() const { return polygon_; }

private:
    size_t stripOf(double y) const;
    std::vector<AcGePoint2d> polygon_;
    double low_ = 0, high_ = 0;
    size_t strips_ = 1;
    // The edges of strip i are edges_[first_[i]] up to edges_[first_[i + 1]], each by its first corner.
    std::vector<size_t> first_;
    std::vector<std::uint32_t> edges_;
};

} // namespace corvane::scatter
