// Thinning by queues of pixels to look at, and pruning by walks from the ends.
#include "raster/skeleton.h"

#include <algorithm>
#include <array>
#include <bit>

namespace corvane::raster {
namespace {

// Marks of a foreground pixel: what it is, and in which half's queue it waits.
constexpr Byte kThere = 1, kOnRim = 2, kWaits[2] = {4, 8};

// Clockwise from above, one bit each.
constexpr PixelPoint kClockwise[8] = {{0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}};
constexpr unsigned kUp = 1, kRight = 4, kDown = 16, kLeft = 64;

// By neighbourhood: bit 0 for pixels that go in the first half of a turn, bit 1 for the second.
constexpr std::array<Byte, 256> kGoes = [] {
    std::array<Byte, 256> table{};
    for (unsigned n = 0; n < 256; ++n) {
        const unsigned turned = (n >> 1 | n << 7) & 255;
        const int changes = std::popcount(~n & turned & 255), sum = std::popcount(n);
        if (changes != 1 || sum < 2 || sum > 6) continue;
        const auto all = [n](unsigned bits) { return (n & bits) == bits; };
        if (!all(kUp | kRight | kDown) && !all(kRight | kDown | kLeft)) table[n] |= 1;
        if (!all(kUp | kRight | kLeft) && !all(kUp | kDown | kLeft)) table[n] |= 2;
    }
    return table;
}();

bool byRows(PixelPoint a, PixelPoint b) { return a.y != b.y ? a.y < b.y : a.x < b.x; }

void sortOnce(std::vector<PixelPoint>& pixels) {
    std::sort(pixels.begin(), pixels.end(), byRows);
    pixels.erase(std::unique(pixels.begin(), pixels.end()), pixels.end());
}

std::vector<PixelPoint> foregroundOf(const RasterImage& mask) {
    std::vector<PixelPoint> pixels;
    for (std::int32_t y = 0; y < mask.rows; ++y)
        for (std::int32_t x = 0; x < mask.cols; ++x)
            if (mask.row(y)[x]) pixels.push_back({x, y});
    return pixels;
}

RasterImage maskOf(const RasterImage& like, std::span<const PixelPoint> pixels) {
    RasterImage mask(like.rows, like.cols);
    for (const PixelPoint p : pixels) mask.row(p.y)[p.x] = 255;
    return mask;
}

} // namespace

Skeleton::Skeleton(const RasterImage& mask) : plane_(mask.rows, mask.cols) {
    for (std::size_t k = 0; k < 8; ++k) steps_[k] = plane_.offset(kClockwise[k]);
    for (std::int32_t y = 0; y < mask.rows; ++y) {
        const bool rimRow = y == 0 || y == mask.rows - 1;
        const Byte* from = mask.row(y);
        Byte* to = plane_.at({0, y});
        for (std::int32_t x = 0; x < mask.cols; ++x)
            if (from[x]) to[x] = rimRow || x == 0 || x == mask.cols - 1 ? kThere | kOnRim : kThere;
    }
}

unsigned Skeleton::neighbourhood(const Byte* cell) const {
    unsigned bits = 0;
    for (unsigned k = 0; k < 8; ++k) bits |= unsigned(cell[steps_[k]] & kThere) << k;
    return bits;
}
int Skeleton::neighbours(const Byte* cell) const { return std::popcount(neighbourhood(cell)); }

bool Skeleton::goes(const Byte* cell, int half) const { return kGoes[neighbourhood(cell)] >> half & 1; }

void Skeleton::lookAgainAround(PixelPoint p) {
    Byte* cell = plane_.at(p);
    for (std::size_t k = 0; k < 8; ++k) {
        Byte& beside = cell[steps_[k]];
        if (!beside || beside & kOnRim) continue;
        for (std::size_t half = 0; half < 2; ++half) {
            if (beside & kWaits[half]) continue;
            beside |= kWaits[half];
            pending_[half].push_back({p.x + kClockwise[k].x, p.y + kClockwise[k].y});
        }
    }
}

// All pixels that go are found before the first is cleared. How many they were.
std::size_t Skeleton::clearHalf(int half) {
    going_.clear();
    for (const PixelPoint p : pending_[half]) {
        Byte& cell = *plane_.at(p);
        if (!cell) continue;
        cell &= Byte(~kWaits[half]);
        if (goes(&cell, half)) going_.push_back(p);
    }
    pending_[half].clear();
    for (const PixelPoint p : going_) *plane_.at(p) = 0;
    for (const PixelPoint p : going_) lookAgainAround(p);
    return going_.size();
}

void Skeleton::thin(std::span<const PixelPoint> region, const ThinningProgress& progress) {
    for (const PixelPoint p : region) {
        Byte& cell = *plane_.at(p);
        if (!cell || cell & kOnRim) continue;
        cell |= kWaits[0] | kWaits[1];
        pending_[0].push_back(p);
        pending_[1].push_back(p);
    }
    std::size_t gone = 0, before;
    do {
        before = gone;
        for (int half = 0; half < 2; ++half) {
            gone += clearHalf(half);
            if (progress) progress(half, int(gone * 100 / std::max<std::size_t>(region.size(), 1)));
        }
    } while (gone != before);
}

// The walk's pixels when it reaches a junction in time, else nothing.
std::vector<PixelPoint> Skeleton::spurFrom(PixelPoint end, int limit) const {
    std::vector<PixelPoint> walk{end};
    unsigned back = 0; // the neighbour that the walk came from
    while (int(walk.size()) <= limit) {
        const unsigned around = neighbourhood(plane_.at(walk.back())), forward = around & ~back;
        if (std::popcount(around) > 2) return walk;
        if (std::popcount(forward) != 1) return {};
        const unsigned k = unsigned(std::countr_zero(forward));
        walk.push_back({walk.back().x + kClockwise[k].x, walk.back().y + kClockwise[k].y});
        back = 1u << (k ^ 4);
    }
    return {};
}

void Skeleton::prune(std::span<const PixelPoint> region, int limit) {
    // After the first pass, ends are the old ones and pixels beside those cleared.
    std::vector<PixelPoint> ends = remaining(region);
    while (true) {
        std::erase_if(ends, [this](PixelPoint p) { return !has(p) || neighbours(plane_.at(p)) != 1; });
        sortOnce(ends);
        std::vector<PixelPoint> cleared;
        for (const PixelPoint end : ends) {
            if (!has(end)) continue;
            for (const PixelPoint p : spurFrom(end, limit)) {
                *plane_.at(p) = 0;
                cleared.push_back(p);
            }
        }
        if (cleared.empty()) return;
        for (const PixelPoint p : cleared)
            for (const PixelPoint step : kNeighbours) {
                const PixelPoint beside{p.x + step.x, p.y + step.y};
                if (has(beside)) ends.push_back(beside);
            }
    }
}

std::vector<PixelPoint> Skeleton::remaining(std::span<const PixelPoint> region) const {
    std::vector<PixelPoint> left;
    std::copy_if(region.begin(), region.end(), std::back_inserter(left),
                 [this](PixelPoint p) { return has(p); });
    std::sort(left.begin(), left.end(), byRows);
    return left;
}

RasterImage ThinZhangSuen(const RasterImage& mask) {
    if (mask.empty()) return mask;
    Skeleton skeleton(mask);
    const std::vector<PixelPoint> pixels = foregroundOf(mask);
    skeleton.thin(pixels);
    return maskOf(mask, skeleton.remaining(pixels));
}

RasterImage PruneSpurs(const RasterImage& skeleton, int limit) {
    if (skeleton.empty()) return skeleton;
    Skeleton pruned(skeleton);
    const std::vector<PixelPoint> pixels = foregroundOf(skeleton);
    pruned.prune(pixels, limit);
    return maskOf(skeleton, pruned.remaining(pixels));
}

} // namespace corvane::raster
