// What skeletons draw twice: tails that double back along their own path, paths beside longer ones.
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "raster/tracing.h"

namespace corvane::raster {
namespace {

constexpr std::size_t kFewestPoints = 8, kShortestTail = 4, kLongestTail = 48;
constexpr std::int64_t kBesideSquared = 5, kReachSquared = 9;

double distance(PixelPoint a, PixelPoint b) { return std::sqrt(double(SquaredDistance(a, b))); }

// For points of the tail: the least squared distance to the first m points of the path, for all the m asked.
class DistancesToHead {
public:
    DistancesToHead(const PixelPath& path, std::size_t longest) : path_(path), longest_(longest) {}

    std::int64_t at(std::size_t point, std::size_t m) {
        Row& row = rows_[path_.size() - 1 - point];
        if (row.least.empty()) fill(row, path_[point]);
        return row.least[m - shortestHead()];
    }

private:
    struct Row {
        std::vector<std::int64_t> least; // by the head's length, from the shortest on
    };
    std::size_t shortestHead() const { return path_.size() - longest_ - kShortestTail; }
    void fill(Row& row, PixelPoint p) const {
        const std::size_t shortest = shortestHead(), longestHead = path_.size() - 2 * kShortestTail;
        std::int64_t least = std::numeric_limits<std::int64_t>::max();
        for (std::size_t i = 0; i < longestHead; ++i) {
            if (i >= shortest) row.least.push_back(least);
            least = std::min(least, SquaredDistance(p, path_[i]));
        }
        row.least.push_back(least);
    }

    const PixelPath& path_;
    std::size_t longest_;
    Row rows_[kLongestTail];
};

bool runsBeside(DistancesToHead& toHead, std::size_t from, std::size_t count, std::size_t head) {
    std::size_t near = 0, far = 0;
    for (std::size_t j = from; j < count; ++j) {
        const std::int64_t e = toHead.at(j, head);
        near += e < kBesideSquared;
        far += e > kReachSquared;
    }
    return near * 100 >= (count - from) * 75 && far <= 1;
}

bool isFolded(const PixelPath& path, std::size_t from) {
    double length = 0;
    for (std::size_t j = from; j + 1 < path.size(); ++j) length += distance(path[j], path[j + 1]);
    return length >= 6.0 && length >= 1.8 * distance(path[from], path.back()) + 2.0;
}

bool endsMeet(const PixelPath& a, const PixelPath& b) {
    for (const PixelPoint p : {a.front(), a.back()})
        for (const PixelPoint q : {b.front(), b.back()})
            if (SquaredDistance(p, q) <= kReachSquared) return true;
    return false;
}

// The points of all paths in squares of four pixels, sorted, so that what is near is found by three searches.
class PointsBySquare {
public:
    explicit PointsBySquare(const std::vector<PixelPath>& paths) {
        for (std::size_t i = 0; i < paths.size(); ++i)
            for (const PixelPoint p : paths[i]) entries_.push_back({squareOf(p), i, p});
        std::sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
            return a.square != b.square ? a.square < b.square : a.path < b.path;
        });
    }
    // Calls `visit` with path and squared distance of each point within 3 pixels of p.
    template <class Visit> void near(PixelPoint p, Visit visit) const {
        const std::int64_t square = squareOf(p);
        for (std::int64_t line = square - kLine; line <= square + kLine; line += kLine) {
            const auto first = std::lower_bound(entries_.begin(), entries_.end(), line - 1,
                                                [](const Entry& e, std::int64_t s) { return e.square < s; });
            for (auto e = first; e != entries_.end() && e->square <= line + 1; ++e)
                if (const std::int64_t d = SquaredDistance(p, e->point); d <= kReachSquared)
                    visit(e->path, d);
        }
    }

private:
    static constexpr std::int64_t kLine = 1 << 20;
    struct Entry {
        std::int64_t square;
        std::size_t path;
        PixelPoint point;
    };
    static std::int64_t squareOf(PixelPoint p) { return std::int64_t(p.y >> 2) * kLine + (p.x >> 2); }
    std::vector<Entry> entries_;
};

class CoveredPaths {
public:
    explicit CoveredPaths(const std::vector<PixelPath>& paths)
        : paths_(paths), squares_(paths), dropped_(paths.size()) {
        std::vector<std::size_t> order(paths.size());
        std::iota(order.begin(), order.end(), std::size_t(0));
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t a, std::size_t b) { return paths[a].size() > paths[b].size(); });
        for (const std::size_t i : order) dropped_[i] = isCovered(i);
    }
    bool dropped(std::size_t i) const { return dropped_[i]; }

private:
    // Paths of more points have been decided before; one that covers this one passes by its first point.
    bool isCovered(std::size_t i) const {
        const PixelPath& path = paths_[i];
        if (path.size() < 2) return false;
        std::vector<std::size_t> candidates;
        squares_.near(path.front(), [&](std::size_t other, std::int64_t) {
            if (!dropped_[other] && paths_[other].size() >= path.size() + 3) candidates.push_back(other);
        });
        std::sort(candidates.begin(), candidates.end());
        candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
        return std::any_of(candidates.begin(), candidates.end(), [&](std::size_t longer) {
            return !endsMeet(path, paths_[longer]) && covers(longer, path);
        });
    }
    bool covers(std::size_t longer, const PixelPath& path) const {
        std::int64_t sum = 0;
        std::size_t close = 0;
        for (const PixelPoint p : path) {
            std::int64_t least = kReachSquared + 1;
            squares_.near(p, [&](std::size_t other, std::int64_t d) {
                if (other == longer) least = std::min(least, d);
            });
            if (least > kReachSquared) return false;
            sum += least;
            close += least < kBesideSquared;
        }
        const std::size_t n = path.size();
        return close >= 1 && close * 100 / n >= 75 && sum / std::int64_t(n) < kBesideSquared;
    }

    const std::vector<PixelPath>& paths_;
    PointsBySquare squares_;
    std::vector<bool> dropped_;
};

} // namespace

std::size_t FoldedTailStart(const PixelPath& path) {
    const std::size_t n = path.size(), longest = std::min(n / 2, kLongestTail);
    if (n < kFewestPoints || longest < kShortestTail) return n;
    const std::size_t reach = std::min(longest, n - kShortestTail - 3); // heads of 3 points at least
    DistancesToHead toHead(path, reach);
    std::size_t cut = n;
    for (std::size_t k = kShortestTail; k <= reach; ++k) {
        const std::size_t from = n - k, head = from - kShortestTail;
        if (toHead.at(n - 1, head) > kReachSquared) continue;
        if (runsBeside(toHead, from, n, head) && isFolded(path, from)) cut = from;
    }
    return cut;
}

void CutFoldedTails(PixelPath& path) {
    for (int time = 0; time < 2; ++time) {
        const std::size_t count = path.size();
        if (count < kFewestPoints) return;
        path.resize(FoldedTailStart(path));
        if (path.size() < kFewestPoints) return;
        std::reverse(path.begin(), path.end());
        path.resize(FoldedTailStart(path));
        std::reverse(path.begin(), path.end());
        if (path.size() < kFewestPoints || path.size() == count) return;
    }
}

std::vector<PixelPath> DropCoveredPaths(std::vector<PixelPath> paths) {
    if (paths.size() < 2) return paths;
    const CoveredPaths covered(paths);
    std::size_t i = 0;
    std::vector<PixelPath> kept;
    for (PixelPath& path : paths)
        if (!covered.dropped(i++)) kept.push_back(std::move(path));
    return kept;
}

} // namespace corvane::raster
