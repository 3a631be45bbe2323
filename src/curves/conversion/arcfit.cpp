// The search for the fewest arcs. What a pair of arcs strays is arcfit_chain.h's, where they may join
// arcfit_nodes.h's.
#include "curves/conversion/arcfit.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "curves/conversion/arcfit_chain.h"
#include "curves/conversion/arcfit_nodes.h"

namespace corvane {
namespace {

// Costs: what is wanted less outweighs any number of what is wanted more.
using Cost = std::int64_t;
constexpr Cost kArc = 10'000;
constexpr Cost kUnproven = 1'000'000'000;
constexpr Cost kBrokenJoint = 1'000'000'000'000;
constexpr Cost kUnreached = std::numeric_limits<Cost>::max();
constexpr size_t kWindow = 320;      // steps of every length up to this many nodes, above ever wider ones
constexpr size_t kWider = 24;        // by this part of their length
constexpr double kGentleBulge = 0.3; // of what is drawn without proof
constexpr int kPatience = 48;        // steps that fail in a row before longer ones are given up

// The best way to a node in one of its directions.
struct Way {
    Cost cost = kUnreached;
    int level = 0; // of the largest deviation on the way, which decides between ways of equal cost
    int fromNode = -1;
    signed char fromDirection = 0;
    bool betterThan(const Way& other) const {
        return cost < other.cost || (cost == other.cost && level < other.level);
    }
};
// Deviations count in so many parts of the tolerance: differences below one aren't worth a measurement.
constexpr int kLevels = 32;

class StretchFit {
public:
    StretchFit(const std::vector<FitSample>& samples, size_t first, size_t last, double tolerance)
        : chain_(samples, first, last), nodes_(FindFitNodes(samples, first, last, tolerance)),
          ways_(nodes_.size()), tolerance_(tolerance) {}

    void run(std::vector<FitArc>& arcs) {
        ways_.front()[0].cost = 0;
        for (size_t i = 0; i + 1 < nodes_.size(); ++i) {
            if (nodes_[i].corner) turnAt(i);
            for (int d = 0; d < nodes_[i].directionCount; ++d)
                if (ways_[i][size_t(d)].cost != kUnreached) stepFrom(i, d);
        }
        collect(arcs);
    }

private:
    const AcGePoint2d& pointOf(size_t node) const { return chain_.point(nodes_[node].arriving); }
    Biarc between(size_t i, int from, size_t j, int to) const {
        return SolveBiarc(pointOf(i), nodes_[i].directions[size_t(from)], pointOf(j),
                          nodes_[j].directions[size_t(to)]);
    }

    // At a corner a piece may leave in another direction than the one before came in.
    void turnAt(size_t i) {
        const auto arrived = ways_[i];
        for (int from = 0; from < nodes_[i].directionCount; ++from)
            for (int to = 0; to < nodes_[i].directionCount; ++to)
                if (arrived[size_t(from)].cost != kUnreached)
                    offer(i, to,
                          {arrived[size_t(from)].cost + kBrokenJoint, arrived[size_t(from)].level, int(i),
                           static_cast<signed char>(from)});
    }

    void offer(size_t j, int direction, const Way& way) {
        Way& best = ways_[j][size_t(direction)];
        if (way.betterThan(best)) best = way;
    }

    void stepFrom(size_t i, int direction) {
        int failures = 0;
        for (size_t j = i + 1; j < nodes_.size() && failures < kPatience; ++j) {
            bool tried = false, fits = false;
            for (int d = 0; d < nodes_[j].directionCount; ++d) {
                const std::optional<bool> outcome = tryStep(i, direction, j, d);
                tried |= outcome.has_value();
                fits |= outcome.value_or(false);
            }
            if (tried) failures = fits ? 0 : failures + 1;
            // No piece goes across a change of sides: who sets up a machine or edits the arcs looks for a
            // joint there.
            if (nodes_[j].inflection) break;
            if (j - i > kWindow && j + 1 < nodes_.size()) j = std::min(j + (j - i) / kWider, nextEnd(j) - 1);
        }
        stepAnyway(i, direction);
    }

    // The next node behind j that no step may go beyond.
    size_t nextEnd(size_t j) const {
        for (++j; j + 1 < nodes_.size() && !nodes_[j].inflection; ++j) {
        }
        return j;
    }

    // What is left where nothing stays within the tolerance: between samples too far apart to prove it, the
    // curve's own directions; at corners and cusps its chord.
    void stepAnyway(size_t i, int direction) {
        const Way& start = ways_[i][size_t(direction)];
        const auto from = static_cast<signed char>(direction);
        for (int d = 0; d < nodes_[i + 1].directionCount; ++d) {
            offer(i + 1, d, {start.cost + 2 * kBrokenJoint, start.level, int(i), from});
            const Biarc biarc = between(i, direction, i + 1, d);
            const bool smooth =
                !nodes_[i].corner && !nodes_[i + 1].corner && biarc.count > 0 &&
                std::max(std::abs(biarc.firstBulge), std::abs(biarc.secondBulge)) < kGentleBulge;
            if (smooth)
                offer(i + 1, d, {start.cost + biarc.count * kArc + kUnproven, start.level, int(i), from});
        }
    }

    // Nothing when the step could not improve on what is known, whether it fits or not.
    std::optional<bool> tryStep(size_t i, int from, size_t j, int to) {
        const Way& start = ways_[i][size_t(from)];
        const Way& best = ways_[j][size_t(to)];
        if (start.cost + kArc > best.cost) return std::nullopt;
        const Biarc biarc = between(i, from, j, to);
        if (biarc.count == 0) return false;
        const Cost cost = start.cost + biarc.count * kArc;
        const bool tie = cost == best.cost;
        if (cost > best.cost || (tie && start.level >= best.level)) return std::nullopt;
        const double limit = tie ? tolerance_ * (best.level - 1) / kLevels : tolerance_;
        const double deviation = chain_.deviation(nodes_[i].leaving, nodes_[j].arriving, biarc, limit);
        // What loses a tie may still be within the tolerance: it says nothing about longer steps.
        if (!(deviation <= limit)) return tie ? std::nullopt : std::optional(false);
        const int level = int(std::ceil(deviation / tolerance_ * kLevels));
        offer(j, to, {cost, std::max(start.level, level), int(i), static_cast<signed char>(from)});
        return true;
    }

    void collect(std::vector<FitArc>& arcs) const {
        const size_t before = arcs.size();
        size_t node = nodes_.size() - 1;
        int direction = 0;
        for (int d = 1; d < nodes_[node].directionCount; ++d)
            if (ways_[node][size_t(d)].betterThan(ways_[node][size_t(direction)])) direction = d;
        while (node > 0) {
            const Way& way = ways_[node][size_t(direction)];
            if (size_t(way.fromNode) != node) append(way, node, direction, arcs);
            node = size_t(way.fromNode), direction = way.fromDirection;
        }
        std::reverse(arcs.begin() + std::ptrdiff_t(before), arcs.end());
    }
    void append(const Way& way, size_t node, int direction, std::vector<FitArc>& arcs) const {
        const size_t from = size_t(way.fromNode);
        const Cost cost = ways_[node][size_t(direction)].cost - ways_[from][size_t(way.fromDirection)].cost;
        if (cost >= kBrokenJoint) return arcs.push_back({pointOf(from), pointOf(node), 0});
        const Biarc biarc = between(from, way.fromDirection, node, direction);
        if (biarc.count == 2) arcs.push_back({biarc.joint, pointOf(node), biarc.secondBulge});
        arcs.push_back({pointOf(from), biarc.joint, biarc.firstBulge});
    }

    FitChain chain_;
    std::vector<FitNode> nodes_;
    std::vector<std::array<Way, 4>> ways_;
    double tolerance_;
};

bool isFinite(const FitSample& s) {
    return std::isfinite(s.point.x) && std::isfinite(s.point.y) && std::isfinite(s.tangent.x) &&
           std::isfinite(s.tangent.y) && std::isfinite(s.curvature) && std::isfinite(s.distance);
}

bool isSharp(const FitSample& a, const FitSample& b, double length) {
    return b.distance - a.distance <= 1e-12 * length &&
           a.tangent.dotProduct(b.tangent) < std::cos(kSharpTurn);
}

} // namespace

std::vector<FitArc> FitArcs(const std::vector<FitSample>& samples, double tolerance) {
    std::vector<FitArc> arcs;
    if (samples.size() < 2 || !(tolerance > 0) || !std::all_of(samples.begin(), samples.end(), isFinite))
        return arcs;
    const double length = samples.back().distance;
    size_t first = 0;
    for (size_t i = 1; i < samples.size(); ++i) {
        const bool sharp = i + 1 < samples.size() && isSharp(samples[i], samples[i + 1], length);
        if (!sharp && i + 1 < samples.size()) continue;
        StretchFit(samples, first, i, tolerance).run(arcs);
        first = i + 1;
    }
    return arcs;
}

} // namespace corvane
