// Which discs stay when they are taken in order and none may touch one that stays, and which boxes are free:
// both by grids, on plain data.
#pragma once
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "core/host/geometry.h"

namespace corvane::scatter {

struct Disc {
    AcGePoint3d centre;
    double radius = 0;
};
// True for each disc that goes: some disc before it stays whose centre is nearer than both radii and 0.001.
// The outcome is that of comparing all pairs. Discs of like size meet in one grid; each factor of 8 in radius
// has a grid of its own, so that a few large discs don't make the small ones share cells.
std::vector<bool> OverlappedDiscs(std::span<const Disc> discs);

// A pattern that stands: centre, half its extents' diagonal, their width and height.
struct ScatterPlacement {
    double x = 0, y = 0, z = 0;
    double radius = 0, width = 0, height = 0;
    bool boxed = false; // counts by width and height, else by the square round its radius
};

// Placements by the cells of a grid. Nothing that reaches farther than a cell is found.
class PlacementGrid {
public:
    // A cell that isn't above 0 counts as 1.
    PlacementGrid(const AcGePoint2d& origin, double cell) : origin_(origin), cell_(cell > 0 ? cell : 1) {}
    // Whether a box of that width and height about the centre runs into a placement, by more than 1e-9.
    bool IsTaken(const AcGePoint2d& centre, double width, double height) const;
    void Add(const ScatterPlacement& placement);

private:
    struct Cell {
        std::int64_t column, row;
        bool operator==(const Cell&) const = default;
    };
    struct CellHash {
        size_t operator()(const Cell& cell) const {
            return size_t(cell.column) * 0x9E3779B97F4A7C15u ^ size_t(cell.row) * 0xC2B2AE3D27D4EB4Fu;
        }
    };
    Cell cellOf(double x, double y) const;

    AcGePoint2d origin_;
    double cell_;
    std::unordered_map<Cell, std::vector<ScatterPlacement>, CellHash> cells_;
};

} // namespace corvane::scatter
