// Choice of nodes and of their directions.
//
// On a stretch where the curvature changes at the rate k', the widest chain of equal arcs that keeps one
// direction at its joints strays from the curve as k' h^3 / 6 times the third Bernoulli polynomial of s/h: at
// most k' h^3 / 124.7, with joints on the curve, turned off its direction by k' h^2 / 12. Arcs with the
// curve's own direction at every other joint stray by k' h^3 / 40.5, and reach two thirds of that length. As
// real curves aren't so even, the search has the whole turn and parts of it to choose from.
#include "curves/conversion/arcfit_nodes.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

constexpr double kWidestArc = 124.7;
constexpr double kNodesPerArc = 48;
constexpr double kFewestNodes = 300; // on a stretch
constexpr double kFewestPerTurn = 200;
constexpr double kLargestSwing = 0.3;                // radians
constexpr std::array kSwings = {0.0, 0.5, 0.7, 0.9}; // shares of the whole turn

AcGeVector2d unit(const AcGeVector2d& v) { return v / v.length(); }
AcGeVector2d turned(const AcGeVector2d& v, double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return {c * v.x - s * v.y, s * v.x + c * v.y};
}

// The samples of one stretch.
struct Stretch {
    const FitSample* samples;
    size_t count;
    const FitSample& at(size_t i) const { return samples[i]; }
    bool doubled(size_t i) const { // with the sample after it
        return i + 1 < count && at(i).point.distanceTo(at(i + 1).point) <= 1e-12 * at(count - 1).distance;
    }
    double turnAt(size_t i) const {
        return std::abs(
            std::atan2(at(i).tangent.x * at(i + 1).tangent.y - at(i).tangent.y * at(i + 1).tangent.x,
                       at(i).tangent.dotProduct(at(i + 1).tangent)));
    }
    // Change of the curvature with the way, from the neighbours on the same side of every jump.
    double curvatureRate(size_t i) const {
        if (i == 0 || i + 1 >= count || doubled(i - 1) || doubled(i)) return 0;
        const double way = at(i + 1).distance - at(i - 1).distance;
        return way > 0 ? (at(i + 1).curvature - at(i - 1).curvature) / way : 0;
    }
};

// Samples that bend to one side.
struct Bend {
    size_t first, last;
    int side;     // 1 left, -1 right
    double turn;  // radians
    double depth; // how far it keeps from its chord, about
};
std::vector<Bend> bendsOf(const Stretch& stretch) {
    std::vector<Bend> bends;
    for (size_t i = 0; i < stretch.count; ++i) {
        const double k = stretch.at(i).curvature;
        const int side = k > 0 ? 1 : k < 0 ? -1 : 0;
        if (side == 0) continue;
        if (bends.empty() || bends.back().side != side) bends.push_back({i, i, side, 0, 0});
        Bend& bend = bends.back();
        if (i > bend.first)
            bend.turn += std::abs(k) * (stretch.at(i).distance - stretch.at(bend.last).distance);
        bend.last = i;
        bend.depth = bend.turn * (stretch.at(i).distance - stretch.at(bend.first).distance) / 8;
    }
    return bends;
}

// The samples where the curve changes sides. What bends less than a part of the tolerance is the noise of
// straight runs and no side.
std::vector<bool> inflectionsOf(const Stretch& stretch, double tolerance) {
    constexpr double kNoise = 0.05; // of the tolerance
    std::vector<Bend> bends = bendsOf(stretch);
    std::erase_if(bends, [&](const Bend& bend) { return bend.depth < kNoise * tolerance; });
    std::vector<bool> inflects(stretch.count, false);
    for (size_t b = 1; b < bends.size(); ++b)
        if (bends[b].side != bends[b - 1].side) inflects[(bends[b - 1].last + bends[b].first + 1) / 2] = true;
    return inflects;
}

void addSwing(FitNode& node, double rate, double tolerance) {
    if (rate == 0) return;
    const double length = std::cbrt(kWidestArc * tolerance / std::abs(rate));
    const double swing = std::min(std::abs(rate) * length * length / 12, kLargestSwing);
    const AcGeVector2d along = node.directions[0];
    for (size_t d = 0; d < kSwings.size(); ++d)
        node.directions[d] = turned(along, std::copysign(swing * kSwings[d], -rate));
    node.directionCount = int(kSwings.size());
}

FitNode nodeAt(const Stretch& stretch, size_t i, bool inflects, double tolerance) {
    FitNode node;
    node.arriving = node.leaving = i;
    node.directions[0] = stretch.at(i).tangent;
    node.inflection = inflects;
    if (i > 0 && i + 1 < stretch.count) addSwing(node, stretch.curvatureRate(i), tolerance);
    return node;
}

FitNode nodeAtPair(const Stretch& stretch, size_t i) {
    FitNode node;
    node.arriving = i, node.leaving = i + 1;
    node.directions[0] = stretch.at(i).tangent;
    if (stretch.turnAt(i) < 1e-9) return node;
    node.corner = true;
    node.directions[1] = stretch.at(i + 1).tangent;
    node.directions[2] = unit(node.directions[0] + node.directions[1]);
    node.directionCount = 3;
    return node;
}

// Corners of a polyline drawn for a curve: the third direction is that of the parabola through the corner and
// its neighbours.
void smoothCorners(std::vector<FitNode>& nodes, const Stretch& stretch) {
    const FitNode* before = &nodes.front();
    FitNode* here = nullptr;
    for (FitNode& next : nodes) {
        if (&next == before || (!next.corner && &next != &nodes.back())) continue;
        if (here) {
            const AcGePoint2d middle = stretch.at(here->arriving).point;
            const double back = middle.distanceTo(stretch.at(before->leaving).point);
            const double ahead = stretch.at(next.arriving).point.distanceTo(middle);
            here->directions[2] = unit(here->directions[0] * ahead + here->directions[1] * back);
            before = here;
        }
        here = &next;
    }
}

} // namespace

std::vector<FitNode> FindFitNodes(const std::vector<FitSample>& samples, size_t first, size_t last,
                                  double tolerance) {
    const Stretch stretch{samples.data() + first, last - first + 1};
    const double length = samples[last].distance - samples[first].distance;
    const std::vector<bool> inflects = inflectionsOf(stretch, tolerance);
    std::vector<FitNode> nodes;
    double due = 1; // nodes that should have come since the last one
    for (size_t i = 0; i < stretch.count; ++i) {
        if (i > 0) {
            const double way = stretch.at(i).distance - stretch.at(i - 1).distance;
            const double arcs =
                way * std::cbrt(std::abs(stretch.curvatureRate(i)) / (kWidestArc * tolerance));
            const double turns = way * std::abs(stretch.at(i).curvature) / 6.28;
            due +=
                arcs * kNodesPerArc + turns * kFewestPerTurn + (length > 0 ? way / length * kFewestNodes : 0);
        }
        if (i + 1 < stretch.count && i > 0 && stretch.doubled(i)) {
            nodes.push_back(nodeAtPair(stretch, i++));
        } else if (i == 0 || i + 1 == stretch.count || due >= 1 || inflects[i]) {
            nodes.push_back(nodeAt(stretch, i, inflects[i], tolerance));
        } else {
            continue;
        }
        due = 0;
    }
    smoothCorners(nodes, stretch);
    return nodes;
}

} // namespace corvane
