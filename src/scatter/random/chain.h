// Curves end to end as one length to scatter along, and the disc across a curve, on plain data.
#pragma once
#include <vector>

#include "core/host/geometry.h"

namespace corvane::scatter {

// A curve of the chain, between two distances on it.
struct ScatterPath {
    size_t curve = 0; // index among the curves that were given
    double start = 0, end = 0;
    double length = 0;
};

// Where a distance along the chain falls: a path, and the distance on its curve.
struct ChainPlace {
    size_t path = 0;
    double distance = 0;
};

class CurveChain {
public:
    // Paths of length 1e-9 or less are left out. The smaller distance is the start.
    void Add(size_t curve, double from, double to);
    bool empty() const { return paths_.empty(); }
    double length() const { return paths_.empty() ? 0 : reached_.back(); }
    const ScatterPath& path(size_t index) const { return paths_[index]; }
    // Distances beyond the end belong to the last path. The chain must not be empty.
    ChainPlace At(double distance) const;

private:
    std::vector<ScatterPath> paths_;
    std::vector<double> reached_; // the chain's length at the end of each path
};

// The point of a disc across the tangent, of that radius about the centre, that two numbers in [0, 1) stand
// for; equal areas are equally likely. The disc is round in space: for a tangent in the XY plane half of it
// lies off that plane.
AcGePoint3d AcrossTangent(const AcGePoint3d& centre, const AcGeVector3d& tangent, double radius, double u1,
                          double u2);

} // namespace corvane::scatter
