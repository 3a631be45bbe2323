// The plot area of a graph in a dialog: shares of its width and height to pixels and back. What is drawn in
// it is each graph's own.
#pragma once
#include <algorithm>
#include <cmath>

namespace corvane {

struct PlotPixel {
    int x = 0, y = 0;
    bool operator==(const PlotPixel&) const = default;
};
// Both within 0..1; the value runs upward.
struct PlotShare {
    double t = 0, value = 0;
};

// The client area less 16 pixels on each side.
class UnitPlot {
public:
    static constexpr int kInset = 16;
    UnitPlot(int clientWidth, int clientHeight)
        : width_(std::max(0, clientWidth - 2 * kInset)), height_(std::max(0, clientHeight - 2 * kInset)) {}

    // The nearest pixel, of shares brought within 0..1.
    PlotPixel toPixel(PlotShare at) const {
        return {nearest(kInset + unit(at.t) * width_), nearest(bottom() - unit(at.value) * height_)};
    }
    // What lies under the pixel, moved into the plot area first.
    PlotShare toShare(PlotPixel pixel) const {
        const int across = std::clamp(pixel.x - kInset, 0, width_);
        const int up = std::clamp(bottom() - pixel.y, 0, height_);
        return {double(across) / std::max(1, width_), double(up) / std::max(1, height_)};
    }

    int left() const { return kInset; }
    int top() const { return kInset; }
    int right() const { return kInset + width_; }
    int bottom() const { return kInset + height_; }

private:
    static double unit(double share) { return share >= 0 ? std::min(share, 1.0) : 0.0; }
    static int nearest(double value) { return int(std::floor(value + 0.5)); }
    int width_, height_;
};

} // namespace corvane
