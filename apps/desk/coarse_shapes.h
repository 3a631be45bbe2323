// The contours of a display list once more with fewer points, for views in which many primitives are small.
#pragma once
#include <cstdint>
#include <vector>

#include "host/view/display_list.h"

namespace desk {

class CoarseShapes {
public:
    CoarseShapes() = default;
    // Points nearer than this to the one before are left out, world units.
    explicit CoarseShapes(double step) : step_(step) {}
    double step() const { return step_; }
    // Takes the list's primitives from the first one that isn't here yet.
    void follow(const host::DisplayList& list);
    host::DisplayContours contours(std::uint32_t primitive) const {
        return {points_, ends_, starts_[primitive], starts_[primitive + 1] - starts_[primitive]};
    }

private:
    void add(std::span<const AcGePoint3d> contour);
    double step_ = 0;
    std::vector<AcGePoint3d> points_;
    std::vector<std::uint32_t> ends_;
    std::vector<std::uint32_t> starts_{0}; // first contour of each primitive, and the end of all
};

} // namespace desk
