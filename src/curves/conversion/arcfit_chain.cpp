// The deviation of biarcs from sampled curve.
#include "curves/conversion/arcfit_chain.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {
namespace {

constexpr double kFar = std::numeric_limits<double>::infinity();
constexpr double kAgainst = 0.5; // cosine of the angle between curve and arc from which they part

const ArcPath& arcBeside(const Biarc& biarc, const AcGePoint2d& point) {
    return biarc.count == 2 && (point - biarc.joint).dotProduct(biarc.second.tangent) >= 0 ? biarc.second
                                                                                           : biarc.first;
}

} // namespace

FitChain::FitChain(const std::vector<FitSample>& samples, size_t first, size_t last) {
    const size_t count = last - first + 1;
    points_.reserve(count), tangents_.reserve(count), curvatures_.reserve(count), eighths_.reserve(count);
    for (size_t i = first; i <= last; ++i) {
        const FitSample& sample = samples[i];
        const AcGeVector2d step = i > first ? sample.point - points_.back() : AcGeVector2d();
        points_.push_back(sample.point);
        tangents_.push_back(sample.tangent);
        curvatures_.push_back(sample.curvature);
        eighths_.push_back(step.dotProduct(step) / 8);
    }
}

double FitChain::reach(size_t k, const ArcPath& arc) const {
    if (DirectionAt(arc, points_[k]).dotProduct(tangents_[k]) < kAgainst) return kFar;
    return std::abs(DistanceFromArc(arc, points_[k]));
}

double FitChain::bow(size_t k, double curvature) const {
    return eighths_[k] *
           std::max(std::abs(curvatures_[k] - curvature), std::abs(curvatures_[k - 1] - curvature));
}

// A few samples tell most biarcs that fail. Each of them is looked at by deviation() as well.
bool FitChain::probe(size_t from, size_t to, const Biarc& biarc, double limit) const {
    const size_t span = to - from;
    if (span < 8) return true;
    for (const size_t eighth : {2, 6, 4, 1, 7}) {
        const size_t k = from + span * eighth / 8;
        if (reach(k, arcBeside(biarc, points_[k])) > limit) return false;
    }
    return true;
}

double FitChain::deviation(size_t from, size_t to, const Biarc& biarc, double limit) const {
    if (!probe(from, to, biarc, limit)) return kFar;
    double worst = 0, before = 0;
    const ArcPath* arc = &biarc.first;
    for (size_t k = from; k <= to; ++k) {
        const ArcPath* beside = &arcBeside(biarc, points_[k]);
        if (arc == &biarc.second && beside != arc) return kFar; // back over the joint
        const double here = reach(k, *beside);
        double most = std::max(before, here);
        if (k > from) most += std::max(bow(k, beside->curvature), bow(k, arc->curvature));
        if (!(most <= limit)) return kFar;
        worst = std::max(worst, most);
        before = here;
        arc = beside;
    }
    return worst;
}

} // namespace corvane
