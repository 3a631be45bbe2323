// Distances by count and by spacing.
#include "arrays/common/spacing.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

constexpr double kNoLength = 1e-6, kNoWeight = 1e-9, kPastEnd = 1e-6;
constexpr int kMostSteps = 99999;

struct Run {
    double base = 0, sign = 1;
};
Run runOf(const GuideMeasure& guide, const GuideStart& start) {
    const double sign = start.direction < 0 ? -1 : 1;
    if (guide.closed) return {guide.rayDistance, sign};
    return start.fromEnd ? Run{guide.length, -sign} : Run{0, sign};
}

double weightAt(const ArraySettings& settings, double t) {
    return settings.gaps.kind == kConstant ? 1 : SpacingWeight(settings.gaps, t, settings.gain);
}

// On a ring one gap more than lies between the copies: the one that closes it keeps its share.
std::vector<double> byCount(const GuideMeasure& guide, const ArraySettings& settings, const Run& run) {
    const int n = std::clamp(settings.count, 2, kMostCopies), gaps = guide.closed ? n : n - 1;
    std::vector<double> weights(static_cast<size_t>(gaps));
    double sum = 0;
    for (int i = 0; i < gaps; ++i) sum += weights[size_t(i)] = weightAt(settings, (i + 0.5) / gaps);
    if (sum < kNoWeight) sum = 1;
    std::vector<double> distances{run.base};
    distances.reserve(size_t(n));
    double along = 0;
    for (int i = 1; i < n; ++i) {
        along += weights[size_t(i - 1)] / sum * guide.length;
        distances.push_back(run.sign * along + run.base);
    }
    return distances;
}

bool passedEnd(const GuideMeasure& guide, const Run& run, double position) {
    if (guide.closed) return std::abs(position - run.base) >= guide.length;
    return run.sign > 0 ? position > guide.length + kPastEnd : position < -kPastEnd;
}

std::vector<double> bySpacing(const GuideMeasure& guide, const ArraySettings& settings, const Run& run) {
    const double step = ClampNumber(settings.spacing, guide.length / 1000, guide.length / 2);
    const int whole = int(std::floor(guide.length / step)), n = std::max(2, whole + (guide.closed ? 0 : 1));
    const int gaps = guide.closed ? n : n - 1;
    std::vector<double> distances{run.base};
    double position = run.base;
    for (int i = 1; i <= kMostSteps && int(distances.size()) < n; ++i) {
        const double t = double(i) / gaps;
        position += step * SpacingWeight(settings.gaps, t, settings.gain) * run.sign;
        if (passedEnd(guide, run, position)) break;
        distances.push_back(position);
    }
    if (distances.size() < 2) distances = {run.base, run.base + run.sign * step};
    return distances;
}

double ontoGuide(const GuideMeasure& guide, double distance) {
    if (!guide.closed) return std::clamp(distance, 0.0, guide.length);
    const double rest = std::fmod(distance, guide.length);
    return rest < 0 ? rest + guide.length : rest;
}

} // namespace

std::vector<double> SampleDistances(const GuideMeasure& guide, const ArraySettings& settings,
                                    const GuideStart& start) {
    if (!(guide.length >= kNoLength) || !std::isfinite(guide.length)) return {};
    const Run run = runOf(guide, start);
    std::vector<double> distances =
        settings.mode == kBySpacing ? bySpacing(guide, settings, run) : byCount(guide, settings, run);
    for (double& distance : distances) distance = ontoGuide(guide, distance);
    return distances;
}

double CopyPosition(size_t index, size_t copies, bool closed) {
    if (closed) return copies ? double(index) / double(copies) : 0;
    return copies > 1 ? double(index) / double(copies - 1) : 0;
}

} // namespace corvane
