// Border following and what comes of it.
#include "raster/borders.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <set>

namespace corvane::raster {
namespace {

// Counter-clockwise as seen on the screen, from the right.
constexpr PixelPoint kRound[8] = {{1, 0}, {1, -1}, {0, -1}, {-1, -1}, {-1, 0}, {-1, 1}, {0, 1}, {1, 1}};

class BorderFollower {
public:
    explicit BorderFollower(const RasterImage& mask)
        : mask_(mask), visited_(mask_.cells.size()), stride_(mask_.stride) {
        for (int s = 0; s < 8; ++s) steps_[std::size_t(s)] = mask_.offset(kRound[s]);
    }

    std::vector<PixelPath> all() {
        for (std::int32_t y = 0; y < mask_.rows; ++y) scanRow(y);
        return std::move(contours_);
    }

private:
    // Rows are read eight pixels at a time: few words hold a pixel to start from.
    void scanRow(std::int32_t y) {
        const std::ptrdiff_t row = mask_.at({0, y}) - mask_.cells.data();
        std::int32_t x = 0;
        for (; x + 8 <= mask_.cols; x += 8)
            if (const std::uint64_t starts = startsIn(row + x))
                for (std::int32_t k = x; k < x + 8; ++k) tryStart({k, y});
        for (; x < mask_.cols; ++x) tryStart({x, y});
    }
    std::uint64_t word(const Byte* from) const {
        std::uint64_t bytes;
        std::memcpy(&bytes, from, sizeof bytes);
        return bytes;
    }
    std::uint64_t startsIn(std::ptrdiff_t at) const {
        const Byte* p = mask_.cells.data() + at;
        const std::uint64_t here = word(p);
        if (here == 0) return 0;
        return here & ~(word(p - 1) & word(p + 1) & word(p - stride_) & word(p + stride_)) &
               ~word(visited_.data() + at);
    }
    void tryStart(PixelPoint p) {
        const std::ptrdiff_t at = mask_.at(p) - mask_.cells.data();
        const Byte* cell = mask_.cells.data() + at;
        if (!*cell || visited_[std::size_t(at)]) return;
        if (cell[-1] && cell[1] && cell[-stride_] && cell[stride_]) return;
        contours_.push_back(follow(p, at));
    }

    PixelPath follow(PixelPoint start, std::ptrdiff_t startAt) {
        const Byte* cells = mask_.cells.data();
        const int from = !cells[startAt - stride_] && !cells[startAt - 1] ? 0 : 4;
        visited_[std::size_t(startAt)] = 255;
        int s = from;
        do s = (s - 1) & 7;
        while (!cells[startAt + steps_[std::size_t(s)]] && s != from);
        if (s == from) return {start};

        const std::ptrdiff_t first = startAt + steps_[std::size_t(s)];
        PixelPath path;
        PixelPoint current = start;
        std::ptrdiff_t at = startAt;
        int previous = s ^ 4;
        while (true) {
            do ++s;
            while (!cells[at + steps_[std::size_t(s & 7)]] && s < 15);
            const int direction = s & 7;
            if (direction != previous) {
                path.push_back(current);
                previous = direction;
            }
            const std::ptrdiff_t left = at;
            at += steps_[std::size_t(direction)];
            current = {current.x + kRound[direction].x, current.y + kRound[direction].y};
            visited_[std::size_t(at)] = 255;
            if (at == startAt && left == first) return path;
            s = (direction + 4) & 7;
        }
    }

    FramedMask mask_;
    std::vector<Byte> visited_;
    std::ptrdiff_t stride_;
    std::array<std::ptrdiff_t, 8> steps_{};
    std::vector<PixelPath> contours_;
};

std::vector<std::uint32_t> pixelSetOf(const PixelPath& path) {
    std::vector<std::uint32_t> keys;
    keys.reserve(path.size());
    for (const PixelPoint p : path) keys.push_back(PixelKey(p));
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    return keys;
}

} // namespace

std::vector<PixelPath> FollowBorders(const RasterImage& mask) {
    if (mask.empty()) return {};
    std::vector<PixelPath> contours = BorderFollower(mask).all();
    std::stable_sort(contours.begin(), contours.end(),
                     [](const PixelPath& a, const PixelPath& b) { return a.size() > b.size(); });
    return contours;
}

std::vector<PixelPath> DropEqualContours(std::vector<PixelPath> contours) {
    if (contours.size() < 2) return contours;
    std::set<std::vector<std::uint32_t>> seen;
    std::erase_if(contours, [&](const PixelPath& contour) {
        std::vector<std::uint32_t> keys = pixelSetOf(contour);
        return keys.empty() || !seen.insert(std::move(keys)).second;
    });
    return contours;
}

double AreaOf(const PixelPath& path) {
    std::int64_t twice = 0;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const PixelPoint a = path[i], b = path[i + 1 < path.size() ? i + 1 : 0];
        twice += std::int64_t(a.x) * b.y - std::int64_t(b.x) * a.y;
    }
    return double(std::abs(twice)) / 2;
}

} // namespace corvane::raster
