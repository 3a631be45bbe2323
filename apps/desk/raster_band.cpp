// Columns and rows of thin lines; sums of areas; wide lines as areas.
#include "apps/desk/raster_band.h"

#include <algorithm>
#include <cmath>

namespace desk {
namespace {

constexpr int kShift = 16;
constexpr std::int64_t kOne = 1 << kShift; // a pixel in fixed point
constexpr double kSmoothTurn = 0.94;       // cosine of the turn up to which a wide line needs no round corner

std::int64_t fixed(double v) { return std::int64_t(v * kOne); }

// The next whole number not below a small one.
int upward(double v) {
    const int whole = int(v);
    return whole + (v > whole);
}

// The share of a line one pixel wide in the pixels of one column (or row), whose middle line it crosses
// between `low` and `high`; at most three of them.
template <class Mark> void spread(std::int64_t low, std::int64_t high, Mark mark) {
    const int first = int(low >> kShift), last = int((high - 1) >> kShift);
    if (first == last) return mark(first, std::uint32_t((high - low) >> (kShift - 8)));
    mark(first, std::uint32_t((kOne - (low & (kOne - 1))) >> (kShift - 8)));
    if (last - first == 2) mark(first + 1, 256);
    mark(last, std::uint32_t((((high - 1) & (kOne - 1)) + 1) >> (kShift - 8)));
}

} // namespace

RasterBand::RasterBand(std::uint32_t* pixels, std::ptrdiff_t stride, const Place& place)
    : pixels_(pixels), stride_(stride), left_(place.left), right_(place.right), top_(place.top),
      bottom_(place.bottom), firstRow_(place.bottom), lastRow_(place.top) {}

void RasterBand::setInk(std::uint32_t rgb, std::uint8_t opacity) {
    redBlue_ = rgb & 0x00FF00FF;
    green_ = rgb & 0x0000FF00;
    opacity_ = opacity + (opacity >> 7u);
}

// Shares count to 256. Red and blue are mixed in one go, with room for the products between them.
inline void RasterBand::blend(std::uint32_t& pixel, std::uint32_t share) const {
    const std::uint32_t redBlue = pixel & 0x00FF00FF, green = pixel & 0x0000FF00;
    const std::uint32_t mixed = (redBlue + (((redBlue_ - redBlue) * share) >> 8)) & 0x00FF00FF;
    const std::uint32_t mixedGreen = (green + (((green_ - green) * share) >> 8)) & 0x0000FF00;
    pixel = 0xFF000000 | mixed | mixedGreen;
}

inline void RasterBand::mark(int column, int y, std::uint32_t share) {
    if (column >= left_ && column < right_ && y >= top_ && y < bottom_)
        blend(row(y)[column], share * opacity_ >> 8);
}

void RasterBand::dot(Point at) {
    if (at.x >= left_ && at.x < right_ && at.y >= top_ && at.y < bottom_) mark(int(at.x), int(at.y), 256);
}

// -- thin lines ----------------------------------------------------------------------------------------

// To the band and two pixels round it (Liang, Barsky 1984); false when nothing is left.
bool RasterBand::cut(Point& from, Point& to) const {
    const double dx = to.x - from.x, dy = to.y - from.y;
    double first = 0, last = 1;
    const auto keep = [&](double step, double room) {
        if (step == 0) return room >= 0;
        const double t = room / step;
        step < 0 ? first = std::max(first, t) : last = std::min(last, t);
        return first <= last;
    };
    constexpr double kBand = 2;
    if (!keep(-dx, from.x - (left_ - kBand)) || !keep(dx, right_ + kBand - from.x) ||
        !keep(-dy, from.y - (top_ - kBand)) || !keep(dy, bottom_ + kBand - from.y))
        return false;
    const Point start = from;
    if (first > 0) from = {start.x + dx * first, start.y + dy * first};
    if (last < 1) to = {start.x + dx * last, start.y + dy * last};
    return true;
}

// Level and upright lines take the pixels of their ends whole, so that corners are closed.
void RasterBand::thinLine(Point from, Point to) {
    if (from.y == to.y) {
        from.y = to.y = std::floor(from.y) + 0.5;
        (from.x <= to.x ? from.x : to.x) -= 0.5;
        (from.x <= to.x ? to.x : from.x) += 0.5;
    } else if (from.x == to.x) {
        from.x = to.x = std::floor(from.x) + 0.5;
        (from.y <= to.y ? from.y : to.y) -= 0.5;
        (from.y <= to.y ? to.y : from.y) += 0.5;
    }
    std::abs(to.x - from.x) >= std::abs(to.y - from.y) ? flat(from, to) : steep(from, to);
}

// Columns whose middle lies within [from, to): what one segment of a path leaves the next one takes.
void RasterBand::flat(Point from, Point to) {
    if (from.x > to.x) std::swap(from, to);
    const double slope = (to.y - from.y) / (to.x - from.x), tall = std::sqrt(1 + slope * slope);
    const std::int64_t start = fixed(from.y + (0.5 - from.x) * slope - tall / 2), step = fixed(slope);
    const std::int64_t height = fixed(tall);
    if (!(from.x < to.x) || !cut(from, to)) return;
    const int first = std::max(left_, upward(from.x - 0.5));
    const int end = std::min(right_, upward(to.x - 0.5));
    for (int x = first; x < end; ++x) {
        const std::int64_t low = start + x * step;
        spread(low, low + height, [&](int y, std::uint32_t share) { mark(x, y, share); });
    }
}

void RasterBand::steep(Point from, Point to) {
    if (from.y > to.y) std::swap(from, to);
    const double slope = (to.x - from.x) / (to.y - from.y), wide = std::sqrt(1 + slope * slope);
    const std::int64_t start = fixed(from.x + (0.5 - from.y) * slope - wide / 2), step = fixed(slope);
    const std::int64_t width = fixed(wide);
    if (!(from.y < to.y) || !cut(from, to)) return;
    const int first = std::max(top_, upward(from.y - 0.5));
    const int end = std::min(bottom_, upward(to.y - 0.5));
    for (int y = first; y < end; ++y) {
        const std::int64_t low = start + y * step;
        spread(low, low + width, [&](int x, std::uint32_t share) { mark(x, y, share); });
    }
}

// -- areas ---------------------------------------------------------------------------------------------

inline void RasterBand::add(int y, int column, double area) {
    Reach& reach = reach_[std::size_t(y - top_)];
    if (reach.from == reach.to) reach = {column, column};
    reach.from = std::min(reach.from, column);
    reach.to = std::max(reach.to, column + 1);
    sums(y)[column - left_] += float(area);
}

// A piece of a side within one row: its height counts in full for all columns to its right, and in part for
// those that it crosses. What lies to the left counts from the first column on, what lies to the right only
// says that the area goes on to there.
inline void RasterBand::sideInRow(int y, double fromX, double toX, double height) {
    double low = std::min(fromX, toX), high = std::max(fromX, toX);
    if (low < left_) {
        const double out = high <= left_ ? height : height * (left_ - low) / (high - low);
        add(y, left_, out);
        if (high <= left_) return;
        height -= out;
        low = left_;
    }
    if (high > right_) {
        const double out = low >= right_ ? height : height * (high - right_) / (high - low);
        add(y, right_, out);
        if (low >= right_) return;
        height -= out;
        high = right_;
    }
    const int first = int(low), last = std::max(first, upward(high) - 1);
    if (first == last) {
        const double left = height * ((low + high) / 2 - first);
        add(y, first, height - left);
        add(y, first + 1, left);
        return;
    }
    const double perColumn = height / (high - low);
    double carried = 0, x = low;
    for (int column = first; column <= last; ++column) {
        const double end = std::min(high, double(column + 1)), part = (end - x) * perColumn;
        const double left = part * ((x + end) / 2 - column);
        add(y, column, part - left + carried);
        carried = left;
        x = end;
    }
    add(y, last + 1, carried);
}

void RasterBand::side(Point from, Point to) {
    if (from.y == to.y) return;
    if (sums_.empty()) {
        sums_.assign(std::size_t(bottom_ - top_) * std::size_t(right_ - left_ + 2), 0);
        reach_.assign(std::size_t(bottom_ - top_), {});
    }
    const double sign = from.y < to.y ? 1 : -1;
    if (sign < 0) std::swap(from, to);
    if (to.y <= top_ || from.y >= bottom_) return;
    const double slope = (to.x - from.x) / (to.y - from.y);
    const double start = std::max(from.y, double(top_)), stop = std::min(to.y, double(bottom_));
    const auto at = [&](double y) { return from.x + (y - from.y) * slope; };
    double y = start, x = at(start);
    firstRow_ = std::min(firstRow_, int(start));
    while (y < stop) {
        const int rowOfIt = int(y);
        const double end = std::min(stop, double(rowOfIt + 1)), endX = at(end);
        sideInRow(rowOfIt, x, endX, sign * (end - y));
        lastRow_ = std::max(lastRow_, rowOfIt + 1);
        y = end;
        x = endX;
    }
}

void RasterBand::contour(std::span<const Point> closed) {
    for (std::size_t i = 0; i < closed.size(); ++i)
        side(closed[i], closed[i + 1 < closed.size() ? i + 1 : 0]);
}

void RasterBand::fillRow(int y, bool oddEven) {
    Reach& reach = reach_[std::size_t(y - top_)];
    float* inRow = sums(y) - left_;
    float sum = 0;
    const auto share = [&] {
        float covered = std::abs(sum);
        if (oddEven) {
            covered = std::fmod(covered, 2.0F);
            if (covered > 1) covered = 2 - covered;
        }
        return std::uint32_t(std::min(covered, 1.0F) * 256 + 0.5F) * opacity_ >> 8;
    };
    std::uint32_t* pixels = row(y);
    const int end = std::min(reach.to, right_);
    for (int x = reach.from; x < end; ++x) {
        sum += inRow[x];
        inRow[x] = 0;
        if (const std::uint32_t covered = share()) blend(pixels[x], covered);
    }
    for (int x = end; x < reach.to; ++x) inRow[x] = 0;
    reach = {};
}

void RasterBand::fill(bool oddEven) {
    for (int y = firstRow_; y < lastRow_; ++y) fillRow(y, oddEven);
    firstRow_ = bottom_;
    lastRow_ = top_;
}

// -- wide lines ----------------------------------------------------------------------------------------

void RasterBand::disc(Point middle, double radius) {
    if (middle.y + radius < top_ || middle.y - radius >= bottom_) return;
    const int corners = std::clamp(8 + int(radius * 2), 8, 64);
    Point before{middle.x + radius, middle.y};
    for (int i = 1; i <= corners; ++i) {
        const double turn = 2 * M_PI * i / corners;
        const Point next{middle.x + radius * std::cos(turn), middle.y + radius * std::sin(turn)};
        side(before, next);
        before = next;
    }
}

// The same way round as discs, so that what overlaps adds up.
void RasterBand::beam(Point from, Point to, double half) {
    const double dx = to.x - from.x, dy = to.y - from.y, length = std::hypot(dx, dy);
    if (!(length > 0)) return;
    const double x = -dy / length * half, y = dx / length * half;
    const Point corners[] = {
        {from.x - x, from.y - y}, {to.x - x, to.y - y}, {to.x + x, to.y + y}, {from.x + x, from.y + y}};
    contour(corners);
}

void RasterBand::wideLine(std::span<const Point> path, double width) {
    const double half = width / 2;
    for (std::size_t i = 0; i < path.size(); ++i) {
        bool round = i == 0 || i + 1 == path.size();
        if (!round) {
            const Point a{path[i].x - path[i - 1].x, path[i].y - path[i - 1].y};
            const Point b{path[i + 1].x - path[i].x, path[i + 1].y - path[i].y};
            const double lengths = std::hypot(a.x, a.y) * std::hypot(b.x, b.y);
            round = !(a.x * b.x + a.y * b.y > kSmoothTurn * lengths);
        }
        if (round) disc(path[i], half);
        if (i > 0) beam(path[i - 1], path[i], half);
    }
    fill(false);
}

} // namespace desk
