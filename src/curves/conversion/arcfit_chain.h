// How far a biarc strays from a stretch of sampled curve: the test in the innermost loop of the arc fit.
#pragma once
#include <vector>

#include "curves/conversion/arcfit.h"

namespace corvane {

// The samples by column, for one stretch without sharp corners.
class FitChain {
public:
    explicit FitChain(const std::vector<FitSample>& samples, size_t first, size_t last);
    size_t size() const { return points_.size(); }
    const AcGePoint2d& point(size_t k) const { return points_[k]; }

    // The most that the biarc from sample `from` to sample `to` strays from the curve between them, what
    // either may bow out between samples included; infinite when it is more than `limit` or when the arcs run
    // against the curve. Every sample is held against the arc beside it in the order of the curve, so that
    // loops and crossings can't lend each other their arcs; and as both run from end to end, no part of
    // the arcs is far from the curve either.
    double deviation(size_t from, size_t to, const Biarc& biarc, double limit) const;

private:
    double reach(size_t k, const ArcPath& arc) const; // distance of sample k, infinite against the arc
    double bow(size_t k, double curvature) const;     // between the samples k - 1 and k
    bool probe(size_t from, size_t to, const Biarc& biarc, double limit) const;

    std::vector<AcGePoint2d> points_;
    std::vector<AcGeVector2d> tangents_;
    std::vector<double> curvatures_;
    std::vector<double> eighths_; // of the squared distance from the sample before
};

} // namespace corvane
