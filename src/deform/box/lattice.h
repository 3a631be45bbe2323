// The lattice in a box as plain data: where its control points lie, and how a volume of Bernstein polynomials
// over it moves what is inside (Sederberg and Parry, 1986). Objects of the drawing are sampled and written
// back elsewhere.
#pragma once
#include <array>
#include <span>
#include <vector>

#include "core/host/geometry.h"

namespace corvane::deform {

// The Bernstein polynomial of index i and degree n at t; 0 for indices outside 0..n.
double BernsteinWeight(int i, int n, double t);

// A world point as fractions of the box's sides, each held to 0..1; 0 along a side of 1e-10 or less.
AcGePoint3d ToBoxCoordinates(const AcGePoint3d& point, const AcGePoint3d& boxMin, const AcGePoint3d& boxMax);

constexpr int kMostControlPoints = 16; // along an axis

using AxisCounts = std::array<int, 3>; // control points along X, Y, Z: 1 to 16 each

// A box with evenly spaced control points, numbered with X slowest and Z fastest.
class LatticeGrid {
public:
    LatticeGrid() = default;
    // A side shorter than 0.01 is widened to 0.01 round its middle.
    LatticeGrid(const AxisCounts& counts, const AcGePoint3d& boxMin, const AcGePoint3d& boxMax);

    const AxisCounts& counts() const { return counts_; }
    int size() const { return counts_[0] * counts_[1] * counts_[2]; }
    const AcGePoint3d& boxMin() const { return min_; }
    const AcGePoint3d& boxMax() const { return max_; }
    const AcGePoint3d& centre() const { return centre_; }
    int index(int i, int j, int k) const { return (i * counts_[1] + j) * counts_[2] + k; }
    // Where a control point lies until it is moved: at the box's middle along an axis that has only one.
    AcGePoint3d rest(int i, int j, int k) const;
    // Neighbours along X, then Y, then Z.
    std::vector<std::array<int, 2>> edges() const;

private:
    AxisCounts counts_{1, 1, 1};
    AcGePoint3d min_, max_, centre_;
};

// How far the current diagonal of the lattice is the box's, as the mean of the ratios along X, Y and Z, and
// along X and Y: 1 until corner points move. An axis with one layer of control points, and a side of 0.001
// or less, count as 1.
struct LatticeScale {
    double inSpace = 1, inPlane = 1;
};
LatticeScale ScaleOf(const LatticeGrid& grid, const AcGePoint3d& first, const AcGePoint3d& last);

// A sample that the lattice moves.
struct LatticeSample {
    AcGePoint3d point;  // world
    AcGePoint3d params; // its box coordinates
};

// The volume as its control points stand when it is made.
class LatticeVolume {
public:
    // `positions` has one entry for each of the grid's control points.
    LatticeVolume(const LatticeGrid& grid, std::span<const AcGePoint3d> positions);

    // Where the samples go. Along an axis with several layers each goes from where it is, by the weighted
    // displacements of the control points: inside the box this is the volume itself, since evenly spaced
    // points reproduce it, and samples that nothing moves keep every bit. A sample beyond the box goes along
    // with the nearest place on its side, and isn't pressed onto it. Along an axis with one layer every
    // sample goes to that layer. `out` is as long as `samples`.
    // Costs a basis of each axis and a sum of products a sample: O(nx ny nz), without a power for each
    // product; blocks of samples side by side in the processor's lanes. The lanes add and multiply in the
    // same order whatever their number, so that all processors give the same bits.
    void move(std::span<const LatticeSample> samples, std::span<AcGePoint3d> out) const;
    // The point of the volume at box coordinates in 0..1.
    AcGePoint3d at(double u, double v, double w) const;

private:
    LatticeGrid grid_;
    std::vector<double> shift_; // of the control points: all x, all y, all z
    bool still_ = true;         // no control point has moved
};

} // namespace corvane::deform
