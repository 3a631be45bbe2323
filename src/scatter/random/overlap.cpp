// Grids of discs and of boxes.
#include "scatter/random/overlap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace corvane::scatter {
namespace {

constexpr double kGap = 0.001;
constexpr int kOctaves = 3; // a grid holds radii within a factor of 2 to that power

using Cell3 = std::array<std::int64_t, 3>;

struct Cell3Hash {
    size_t operator()(const Cell3& c) const {
        size_t h = 0;
        for (const std::int64_t i : c) h = (h ^ size_t(i)) * 0x9E3779B97F4A7C15u;
        return h ^ h >> 32;
    }
};

// Far beyond any drawing cells run together, which costs time but loses nothing.
std::int64_t cellIndex(double at) {
    constexpr double kFar = 4e18;
    return std::int64_t(std::clamp(std::floor(at), -kFar, kFar));
}

bool touch(const Disc& a, const Disc& b) {
    const double reach = a.radius + b.radius + kGap;
    return (a.centre - b.centre).lengthSqrd() < reach * reach;
}

// Discs of like radius that stay, in the cells of their centres.
class DiscGrid {
public:
    explicit DiscGrid(double largestRadius) : largest_(largestRadius), cell_(2 * largestRadius + kGap) {}

    void add(const Disc& disc) {
        const Cell3 cell = cellOf(disc.centre);
        for (size_t axis = 0; axis < 3; ++axis) {
            low_[axis] = discs_ == 0 ? cell[axis] : std::min(low_[axis], cell[axis]);
            high_[axis] = discs_ == 0 ? cell[axis] : std::max(high_[axis], cell[axis]);
        }
        cells_[cell].push_back(disc);
        ++discs_;
    }

    bool touches(const Disc& disc) const {
        if (discs_ == 0) return false;
        const double reach = disc.radius + largest_ + kGap;
        const AcGeVector3d across(reach, reach, reach);
        Cell3 from = cellOf(disc.centre - across), to = cellOf(disc.centre + across);
        double visits = 1;
        for (size_t axis = 0; axis < 3; ++axis) {
            from[axis] = std::max(from[axis], low_[axis]);
            to[axis] = std::min(to[axis], high_[axis]);
            if (from[axis] > to[axis]) return false;
            visits *= double(to[axis] - from[axis] + 1);
        }
        return visits > double(cells_.size()) ? inAnyCell(disc) : inCells(disc, from, to);
    }

private:
    Cell3 cellOf(const AcGePoint3d& p) const {
        return {cellIndex(p.x / cell_), cellIndex(p.y / cell_), cellIndex(p.z / cell_)};
    }
    static bool inCell(const Disc& disc, const std::vector<Disc>& cell) {
        return std::any_of(cell.begin(), cell.end(), [&](const Disc& other) { return touch(disc, other); });
    }
    bool inAnyCell(const Disc& disc) const {
        return std::any_of(cells_.begin(), cells_.end(),
                           [&](const auto& cell) { return inCell(disc, cell.second); });
    }
    bool inCells(const Disc& disc, const Cell3& from, const Cell3& to) const {
        for (std::int64_t i = from[0]; i <= to[0]; ++i)
            for (std::int64_t j = from[1]; j <= to[1]; ++j)
                for (std::int64_t k = from[2]; k <= to[2]; ++k)
                    if (const auto cell = cells_.find({i, j, k});
                        cell != cells_.end() && inCell(disc, cell->second))
                        return true;
        return false;
    }

    double largest_, cell_;
    size_t discs_ = 0;
    Cell3 low_{}, high_{};
    std::unordered_map<Cell3, std::vector<Disc>, Cell3Hash> cells_;
};

// Level 0 holds radii of up to 1; discs without a size go with the smallest that have one.
int levelOf(double radius) { return int(std::ceil(std::log2(std::max(radius, kGap)) / kOctaves)); }

} // namespace

std::vector<bool> OverlappedDiscs(std::span<const Disc> discs) {
    std::vector<bool> gone(discs.size(), false);
    std::map<int, DiscGrid, std::greater<>> levels; // large discs first: they are met the most
    for (size_t i = 0; i < discs.size(); ++i) {
        const Disc& disc = discs[i];
        gone[i] = std::any_of(levels.begin(), levels.end(),
                              [&](const auto& level) { return level.second.touches(disc); });
        if (gone[i]) continue;
        const int level = levelOf(disc.radius);
        levels.try_emplace(level, std::exp2(level * kOctaves)).first->second.add(disc);
    }
    return gone;
}

PlacementGrid::Cell PlacementGrid::cellOf(double x, double y) const {
    return {cellIndex((x - origin_.x) / cell_), cellIndex((y - origin_.y) / cell_)};
}

bool PlacementGrid::IsTaken(const AcGePoint2d& centre, double width, double height) const {
    const Cell middle = cellOf(centre.x, centre.y);
    for (std::int64_t column = middle.column - 1; column <= middle.column + 1; ++column)
        for (std::int64_t row = middle.row - 1; row <= middle.row + 1; ++row) {
            const auto cell = cells_.find({column, row});
            if (cell == cells_.end()) continue;
            for (const ScatterPlacement& p : cell->second) {
                const double halfWidth = p.boxed ? p.width / 2 : p.radius;
                const double halfHeight = p.boxed ? p.height / 2 : p.radius;
                if (std::abs(centre.x - p.x) < halfWidth + width / 2 - 1e-9 &&
                    std::abs(centre.y - p.y) < halfHeight + height / 2 - 1e-9)
                    return true;
            }
        }
    return false;
}

void PlacementGrid::Add(const ScatterPlacement& placement) {
    cells_[cellOf(placement.x, placement.y)].push_back(placement);
}

} // namespace corvane::scatter
