// Blur, histogram, thresholds.
#include "raster/threshold.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "raster/colour.h"

namespace corvane::raster {
namespace {

std::vector<double> gaussianWeights(int size, double sigma) {
    std::vector<double> weights(std::size_t(size), 0.0);
    const int radius = size / 2;
    for (int d = -radius; d <= radius; ++d)
        weights[std::size_t(d + radius)] = std::exp(-d * d / (2 * sigma * sigma));
    const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
    for (double& weight : weights) weight /= sum;
    return weights;
}

Byte roundedByte(double sum) { return Byte(std::clamp(int(sum + 0.5), 0, 255)); }

// One row, with its ends drawn out by the radius.
void blurRow(const Byte* drawnOut, Byte* to, std::int32_t cols, const std::vector<double>& weights) {
    for (std::int32_t x = 0; x < cols; ++x) {
        double sum = 0;
        for (std::size_t k = 0; k < weights.size(); ++k) sum += weights[k] * drawnOut[std::size_t(x) + k];
        to[x] = roundedByte(sum);
    }
}

RasterImage blurAcross(const RasterImage& grey, const std::vector<double>& weights) {
    RasterImage out(grey.rows, grey.cols);
    const std::size_t radius = weights.size() / 2, cols = std::size_t(grey.cols);
    std::vector<Byte> drawnOut(cols + 2 * radius);
    for (std::int32_t y = 0; y < grey.rows; ++y) {
        const Byte* from = grey.row(y);
        std::fill_n(drawnOut.begin(), radius, from[0]);
        std::copy_n(from, cols, drawnOut.begin() + std::ptrdiff_t(radius));
        std::fill_n(drawnOut.end() - std::ptrdiff_t(radius), radius, from[cols - 1]);
        blurRow(drawnOut.data(), out.row(y), grey.cols, weights);
    }
    return out;
}

RasterImage blurDown(const RasterImage& grey, const std::vector<double>& weights) {
    RasterImage out(grey.rows, grey.cols);
    const int radius = int(weights.size()) / 2;
    std::vector<double> sums(std::size_t(grey.cols));
    for (std::int32_t y = 0; y < grey.rows; ++y) {
        std::fill(sums.begin(), sums.end(), 0.0);
        for (int k = -radius; k <= radius; ++k) {
            const Byte* from = grey.row(std::clamp(y + k, 0, grey.rows - 1));
            const double weight = weights[std::size_t(k + radius)];
            for (std::size_t x = 0; x < sums.size(); ++x) sums[x] += weight * from[x];
        }
        std::transform(sums.begin(), sums.end(), out.row(y), roundedByte);
    }
    return out;
}

std::array<std::size_t, 256> histogramOf(const RasterImage& grey) {
    std::array<std::size_t, 256> counts{};
    for (const Byte value : grey.data) ++counts[value];
    return counts;
}

// Sums over the image's upper left part, a row and a column of zeros before it.
std::vector<std::int64_t> integralOf(const RasterImage& grey) {
    const std::size_t stride = std::size_t(grey.cols) + 1;
    std::vector<std::int64_t> sums(stride * (std::size_t(grey.rows) + 1));
    for (std::int32_t y = 0; y < grey.rows; ++y) {
        const Byte* from = grey.row(y);
        const std::int64_t* above = &sums[std::size_t(y) * stride];
        std::int64_t* to = &sums[std::size_t(y + 1) * stride];
        std::int64_t inRow = 0;
        for (std::int32_t x = 0; x < grey.cols; ++x) to[x + 1] = above[x + 1] + (inRow += from[x]);
    }
    return sums;
}

std::vector<int> boxThresholds(const RasterImage& grey, int radius, double offset) {
    const std::vector<std::int64_t> sums = integralOf(grey);
    const std::size_t stride = std::size_t(grey.cols) + 1;
    std::vector<int> thresholds;
    thresholds.reserve(grey.pixels());
    for (std::int32_t y = 0; y < grey.rows; ++y) {
        const std::int32_t top = std::max(y - radius, 0), bottom = std::min(y + radius + 1, grey.rows);
        const std::int64_t *upper = &sums[std::size_t(top) * stride],
                           *lower = &sums[std::size_t(bottom) * stride];
        for (std::int32_t x = 0; x < grey.cols; ++x) {
            const std::int32_t left = std::max(x - radius, 0), right = std::min(x + radius + 1, grey.cols);
            const std::int64_t sum = lower[right] - lower[left] - upper[right] + upper[left];
            thresholds.push_back(int(double(sum) / ((bottom - top) * (right - left)) - offset + 0.5));
        }
    }
    return thresholds;
}

// The Gaussian over the whole block, weight by weight: what the threshold is by definition.
class BlockGaussian {
public:
    BlockGaussian(int block, double sigma) : radius_(block / 2) {
        for (int dy = -radius_; dy <= radius_; ++dy)
            for (int dx = -radius_; dx <= radius_; ++dx)
                weights_.push_back(std::exp(-(dx * dx + dy * dy) / (2 * sigma * sigma)));
        const double sum = std::accumulate(weights_.begin(), weights_.end(), 0.0);
        for (double& weight : weights_) weight /= sum;
    }
    double at(const RasterImage& grey, PixelPoint p) const {
        double sum = 0;
        std::size_t k = 0;
        for (int dy = -radius_; dy <= radius_; ++dy)
            for (int dx = -radius_; dx <= radius_; ++dx, ++k) {
                const PixelPoint q{p.x + dx, p.y + dy};
                if (q.x >= 0 && q.y >= 0 && q.x < grey.cols && q.y < grey.rows)
                    sum += weights_[k] * grey.row(q.y)[q.x];
            }
        return sum;
    }

private:
    int radius_;
    std::vector<double> weights_;
};

// Means by two passes of one dimension, which agree with the block's but for the last digits.
std::vector<double> separableMeans(const RasterImage& grey, const std::vector<double>& weights) {
    const int radius = int(weights.size()) / 2;
    std::vector<double> across(grey.pixels()), means(grey.pixels());
    for (std::int32_t y = 0; y < grey.rows; ++y) {
        const Byte* from = grey.row(y);
        double* to = &across[std::size_t(y) * std::size_t(grey.cols)];
        for (std::int32_t x = 0; x < grey.cols; ++x)
            for (int k = std::max(-radius, -x); k <= std::min(radius, grey.cols - 1 - x); ++k)
                to[x] += weights[std::size_t(k + radius)] * from[x + k];
    }
    for (std::int32_t y = 0; y < grey.rows; ++y) {
        double* to = &means[std::size_t(y) * std::size_t(grey.cols)];
        for (int k = std::max(-radius, -y); k <= std::min(radius, grey.rows - 1 - y); ++k) {
            const double* from = &across[std::size_t(y + k) * std::size_t(grey.cols)];
            for (std::int32_t x = 0; x < grey.cols; ++x) to[x] += weights[std::size_t(k + radius)] * from[x];
        }
    }
    return means;
}

std::vector<int> gaussianThresholds(const RasterImage& grey, int block, double offset) {
    constexpr double kNear = 1e-7; // far above what the passes lose
    const double sigma = block > 0 ? block / 3.0 : 1.0;
    const BlockGaussian exact(block, sigma);
    const std::vector<double> means = separableMeans(grey, gaussianWeights(2 * (block / 2) + 1, sigma));
    std::vector<int> thresholds(means.size());
    for (std::size_t i = 0; i < means.size(); ++i) {
        double value = means[i] - offset + 0.5;
        // Where the last digits decide, the block itself is asked.
        if (std::abs(value - std::round(value)) < kNear) {
            const PixelPoint p{std::int32_t(i % std::size_t(grey.cols)),
                               std::int32_t(i / std::size_t(grey.cols))};
            value = exact.at(grey, p) - offset + 0.5;
        }
        thresholds[i] = int(value);
    }
    return thresholds;
}

} // namespace

RasterImage GaussianBlur(const RasterImage& grey, int size, double sigma) {
    if (grey.empty()) return grey;
    size = std::max(size | 1, 3);
    if (sigma <= 0) sigma = 0.5 * size;
    const std::vector<double> weights = gaussianWeights(size, sigma);
    return blurDown(blurAcross(grey, weights), weights);
}

int OtsuThreshold(const RasterImage& grey) {
    constexpr double kLeast = 2.220446049250313e-16, kMost = 0.9999999999999998;
    if (grey.empty()) return 0;
    const auto counts = histogramOf(grey);
    const double pixels = double(grey.pixels());
    double mean = 0;
    for (std::size_t i = 0; i < 256; ++i) mean += double(i) * double(counts[i]);
    mean /= pixels;
    double lowShare = 0, lowMean = 0, greatest = 0;
    int best = 0;
    for (int t = 0; t < 256; ++t) {
        const double share = double(counts[std::size_t(t)]) / pixels, before = lowShare;
        lowShare += share;
        lowMean = lowShare > 0 ? (t * share + lowMean * before) / lowShare : 0;
        const double highShare = 1 - lowShare;
        if (std::min(lowShare, highShare) < kLeast || std::max(lowShare, highShare) > kMost) continue;
        const double highMean = (mean - lowShare * lowMean) / highShare, apart = lowMean - highMean,
                     between = lowShare * highShare * (apart * apart);
        if (between > greatest) greatest = between, best = t;
    }
    return best;
}

RasterImage DarkMask(const RasterImage& grey, int threshold) {
    RasterImage mask(grey.rows, grey.cols);
    std::transform(grey.data.begin(), grey.data.end(), mask.data.begin(),
                   [threshold](Byte value) { return Byte(value <= threshold ? 255 : 0); });
    return mask;
}

RasterImage AdaptiveThreshold(const RasterImage& grey, Byte maximum, LocalMean mean, LocalSense sense,
                              int block, double offset) {
    if (grey.empty()) return grey;
    block = std::clamp(block, 0, 2 * kLongestSide);
    const std::vector<int> thresholds = mean == LocalMean::box ? boxThresholds(grey, block / 2, offset)
                                                               : gaussianThresholds(grey, block, offset);
    RasterImage mask(grey.rows, grey.cols);
    for (std::size_t i = 0; i < thresholds.size(); ++i) {
        const bool above = grey.data[i] > thresholds[i];
        mask.data[i] = above == (sense == LocalSense::above) ? maximum : 0;
    }
    return mask;
}

RasterImage MaskOf(const RasterImage& image, int blurLevel) {
    if (image.empty()) return {};
    RasterImage grey = ToGrey(image);
    if (blurLevel > 0) grey = GaussianBlur(grey, blurLevel < 3 ? 3 : 5, 0.5 * blurLevel);
    return DarkMask(grey, OtsuThreshold(grey));
}

} // namespace corvane::raster
