// Control points and their Bernstein volume. The inner loops are in lattice_lanes.cpp.
#include "deform/box/lattice.h"

#include <algorithm>
#include <cmath>

#include "deform/box/lattice_lanes.h"

namespace corvane::deform {
namespace {

constexpr double kThinSide = 0.01;  // sides below it are widened to it
constexpr double kNoRatio = 0.001;  // sides up to it tell nothing about scale
constexpr double kNoExtent = 1e-10; // sides up to it have no fractions

double power(double base, int exponent) { return exponent == 2 ? base * base : std::pow(base, exponent); }

} // namespace

double BernsteinWeight(int i, int n, double t) {
    if (i < 0 || i > n) return 0;
    const double s = 1 - t;
    switch (n) {
    case 0: return 1;
    case 1: return i == 0 ? s : t;
    case 2: return i == 0 ? s * s : i == 1 ? 2 * t * s : t * t;
    case 3: return i == 0 ? s * s * s : i == 1 ? 3 * t * s * s : i == 2 ? 3 * t * t * s : t * t * t;
    default: break;
    }
    double binomial = 1;
    for (int m = 1; m <= i; ++m) binomial *= double(n - m + 1) / m;
    return binomial * power(t, i) * power(s, n - i);
}

AcGePoint3d ToBoxCoordinates(const AcGePoint3d& point, const AcGePoint3d& boxMin, const AcGePoint3d& boxMax) {
    AcGePoint3d params;
    for (unsigned axis = 0; axis < 3; ++axis) {
        const double side = boxMax[axis] - boxMin[axis];
        const double share = std::abs(side) > kNoExtent ? (point[axis] - boxMin[axis]) / side : 0;
        params[axis] = std::clamp(share, 0.0, 1.0);
    }
    return params;
}

LatticeGrid::LatticeGrid(const AxisCounts& counts, const AcGePoint3d& boxMin, const AcGePoint3d& boxMax)
    : counts_(counts), min_(boxMin), max_(boxMax) {
    for (unsigned axis = 0; axis < 3; ++axis) {
        counts_[axis] = std::clamp(counts_[axis], 1, kMostControlPoints);
        centre_[axis] = (min_[axis] + max_[axis]) / 2;
        if (max_[axis] - min_[axis] >= kThinSide) continue;
        min_[axis] = centre_[axis] - kThinSide / 2;
        max_[axis] = centre_[axis] + kThinSide / 2;
    }
}

AcGePoint3d LatticeGrid::rest(int i, int j, int k) const {
    const int index[] = {i, j, k};
    AcGePoint3d point = centre_;
    for (unsigned axis = 0; axis < 3; ++axis)
        if (counts_[axis] > 1)
            point[axis] = min_[axis] + double(index[axis]) / (counts_[axis] - 1) * (max_[axis] - min_[axis]);
    return point;
}

std::vector<std::array<int, 2>> LatticeGrid::edges() const {
    const auto [nx, ny, nz] = counts_;
    std::vector<std::array<int, 2>> edges;
    edges.reserve(size_t(3 * size()));
    for (int j = 0; j < ny; ++j)
        for (int k = 0; k < nz; ++k)
            for (int i = 0; i + 1 < nx; ++i) edges.push_back({index(i, j, k), index(i + 1, j, k)});
    for (int i = 0; i < nx; ++i)
        for (int k = 0; k < nz; ++k)
            for (int j = 0; j + 1 < ny; ++j) edges.push_back({index(i, j, k), index(i, j + 1, k)});
    for (int i = 0; i < nx; ++i)
        for (int j = 0; j < ny; ++j)
            for (int k = 0; k + 1 < nz; ++k) edges.push_back({index(i, j, k), index(i, j, k + 1)});
    return edges;
}

// Told as one plus what the corners have moved, so that it is exactly one while they haven't.
LatticeScale ScaleOf(const LatticeGrid& grid, const AcGePoint3d& first, const AcGePoint3d& last) {
    const auto [nx, ny, nz] = grid.counts();
    const AcGeVector3d moved = (last - grid.rest(nx - 1, ny - 1, nz - 1)) - (first - grid.rest(0, 0, 0));
    double growth[3];
    for (unsigned axis = 0; axis < 3; ++axis) {
        const double side = grid.boxMax()[axis] - grid.boxMin()[axis];
        growth[axis] = grid.counts()[axis] == 1 || side <= kNoRatio ? 0 : moved[axis] / side;
    }
    return {1 + (growth[0] + growth[1] + growth[2]) / 3, 1 + (growth[0] + growth[1]) / 2};
}

LatticeVolume::LatticeVolume(const LatticeGrid& grid, std::span<const AcGePoint3d> positions)
    : grid_(grid), shift_(size_t(3 * grid.size())) {
    const auto [nx, ny, nz] = grid.counts();
    const size_t size = size_t(grid.size());
    size_t at = 0;
    for (int i = 0; i < nx; ++i)
        for (int j = 0; j < ny; ++j)
            for (int k = 0; k < nz; ++k, ++at) {
                const AcGeVector3d shift = positions[at] - grid.rest(i, j, k);
                for (unsigned axis = 0; axis < 3; ++axis) shift_[axis * size + at] = shift[axis];
                still_ = still_ && shift.x == 0 && shift.y == 0 && shift.z == 0;
            }
}

void LatticeVolume::move(std::span<const LatticeSample> samples, std::span<AcGePoint3d> out) const {
    for (size_t n = 0; n < samples.size(); ++n) {
        out[n] = samples[n].point;
        for (unsigned axis = 0; axis < 3; ++axis)
            if (grid_.counts()[axis] == 1) out[n][axis] = grid_.centre()[axis];
    }
    if (!still_) addShifts(grid_.counts(), shift_, samples, out);
}

AcGePoint3d LatticeVolume::at(double u, double v, double w) const {
    const AcGeVector3d sides = grid_.boxMax() - grid_.boxMin();
    LatticeSample sample;
    sample.params = AcGePoint3d(u, v, w);
    sample.point = grid_.boxMin() + AcGeVector3d(u * sides.x, v * sides.y, w * sides.z);
    AcGePoint3d moved;
    move({&sample, 1}, {&moved, 1});
    return moved;
}

} // namespace corvane::deform
