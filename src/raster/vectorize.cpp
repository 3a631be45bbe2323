// The two ways from a mask to paths, and the progress of the longer one.
#include "raster/vectorize.h"

#include <algorithm>

#include "raster/borders.h"
#include "raster/components.h"
#include "raster/skeleton.h"
#include "raster/spline_fit.h"
#include "raster/threshold.h"
#include "raster/tracing.h"

namespace corvane::raster {
namespace {

constexpr int kMaskDone = 8, kRegionsFound = 12, kRegionsShare = 84;

class Reporter {
public:
    explicit Reporter(const VectorizeProgress& tell) : tell_(tell) {}
    void at(int percent) {
        if (percent == last_ || !tell_) return;
        last_ = percent;
        tell_(percent);
    }
    bool listens() const { return bool(tell_); }

private:
    const VectorizeProgress& tell_;
    int last_ = -1;
};

// Percentages inside the work on one region.
class RegionReporter {
public:
    RegionReporter(Reporter& reporter, std::size_t i, std::size_t count)
        : reporter_(reporter), base_(share(i, count) + kRegionsFound),
          span_(share(i + 1, count) - share(i, count)) {}
    void at(int percent) { reporter_.at(base_ + span_ * std::clamp(percent, 0, 100) / 100); }
    ThinningProgress thinning() {
        if (!reporter_.listens()) return {};
        return [this](int half, int gone) { at(half == 0 ? gone * 50 / 100 + 10 : gone * 40 / 100 + 20); };
    }

private:
    static int share(std::size_t i, std::size_t count) { return int(i * kRegionsShare / count); }
    Reporter& reporter_;
    int base_, span_;
};

std::vector<PixelPath> outlinesOf(const RasterImage& mask, int minVertices) {
    constexpr double kLeastArea = 2.0;
    std::vector<PixelPath> contours = DropEqualContours(FollowBorders(mask));
    std::erase_if(contours, [=](const PixelPath& contour) {
        return AreaOf(contour) < kLeastArea || std::int64_t(contour.size()) < minVertices;
    });
    return contours;
}

class CentreLines {
public:
    CentreLines(const RasterImage& mask, int minVertices)
        : skeleton_(mask), tracer_(mask.rows, mask.cols), minVertices_(minVertices),
          longestSpur_(std::max(4, minVertices / 2 + 2)) {}

    void addRegion(std::span<const PixelPoint> region, RegionReporter progress) {
        progress.at(2);
        skeleton_.thin(region, progress.thinning());
        progress.at(68);
        skeleton_.prune(region, longestSpur_);
        progress.at(78);
        std::vector<PixelPath> paths = tracer_.trace(skeleton_.remaining(region));
        progress.at(88);
        for (PixelPath& path : paths) CutFoldedTails(path);
        for (PixelPath& path : DropCoveredPaths(std::move(paths))) {
            if (PixelPath fitted = FitCubicBSpline(path); !fitted.empty()) path = std::move(fitted);
            if (std::int64_t(path.size()) >= minVertices_) all_.push_back(std::move(path));
        }
        progress.at(100);
    }
    std::vector<PixelPath> take() { return std::move(all_); }

private:
    Skeleton skeleton_;
    Tracer tracer_;
    int minVertices_, longestSpur_;
    std::vector<PixelPath> all_;
};

std::vector<PixelPath> centreLinesOf(const RasterImage& mask, int minVertices, Reporter& reporter) {
    const Components regions = FindComponents(mask);
    reporter.at(kRegionsFound);
    CentreLines lines(mask, minVertices);
    for (std::size_t i = 0; i < regions.count(); ++i)
        if (regions[i].size() >= 2) lines.addRegion(regions[i], {reporter, i, regions.count()});
    return lines.take();
}

bool readable(const RasterImage& image) {
    return !image.empty() && image.rows <= kLongestSide && image.cols <= kLongestSide &&
           image.data.size() == image.pixels() * image.pixelSize();
}

} // namespace

VectorizeResult VectorizeImage(const RasterImage& image, const VectorizeOptions& options,
                               const RasterImage& mask, const VectorizeProgress& progress) {
    VectorizeResult result;
    if (!readable(image)) {
        result.failure = VectorizeFailure::unreadable;
        return result;
    }
    const bool centre = options.mode == VectorizeMode::centreLines;
    const VectorizeProgress silence;
    Reporter reporter(centre ? progress : silence);
    reporter.at(1);
    const RasterImage own = mask.empty() ? MaskOf(image, options.blurLevel) : RasterImage();
    const RasterImage& traced = mask.empty() ? own : mask;
    if (!readable(traced) || traced.kind != PixelKind::grey) {
        result.failure = VectorizeFailure::noMask;
        return result;
    }
    reporter.at(kMaskDone);
    result.paths = centre ? centreLinesOf(traced, options.minVertices, reporter)
                          : outlinesOf(traced, options.minVertices);
    reporter.at(100);
    return result;
}

} // namespace corvane::raster
