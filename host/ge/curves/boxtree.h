// A tree of boxes over things in a plane that stay where they are: which of them reach into a box, and which
// is nearest to a point. Built once; what the things are is the caller's business.
#pragma once

#include <algorithm>
#include <array>
#include <vector>

#include "host/ge/extents.h"

namespace host::ge {

class BoxTree {
public:
    // O(n log n): halves of equal count, split across the longer side of the middles' box.
    explicit BoxTree(std::vector<AcDbExtents2d> boxes);

    // Calls visit(index) for every box that meets the one given; visit returns false to end the search.
    template <class Visit> void visitMeeting(const AcDbExtents2d& box, Visit&& visit) const;

    // The least value of distance(index), where that is at least the distance from the point to the box;
    // `bound` where none is less. The search ends early once a value is at most `enough`.
    template <class Distance>
    double nearest(const AcGePoint2d& point, double bound, double enough, Distance&& distance) const;

private:
    struct Node {
        AcDbExtents2d box;
        int first = 0, count = 0; // of order_; the children of a node with count 0 are at first and first + 1
    };
    struct Stretch {
        int node, from, to;
    };
    static constexpr int kLeaf = 4;

    static bool meet(const AcDbExtents2d& a, const AcDbExtents2d& b) {
        return a.minPoint().x <= b.maxPoint().x && b.minPoint().x <= a.maxPoint().x &&
               a.minPoint().y <= b.maxPoint().y && b.minPoint().y <= a.maxPoint().y;
    }
    // Squared: roots would be most of a search's cost.
    static double squaredDistance(const AcDbExtents2d& box, const AcGePoint2d& p) {
        const double dx = std::max(std::max(box.minPoint().x - p.x, p.x - box.maxPoint().x), 0.0);
        const double dy = std::max(std::max(box.minPoint().y - p.y, p.y - box.maxPoint().y), 0.0);
        return dx * dx + dy * dy;
    }
    void split(const Stretch& stretch, std::vector<Stretch>& open);

    std::vector<AcDbExtents2d> boxes_;
    std::vector<int> order_;
    std::vector<Node> nodes_;
};

template <class Visit> void BoxTree::visitMeeting(const AcDbExtents2d& box, Visit&& visit) const {
    if (nodes_.empty() || !meet(nodes_[0].box, box)) return;
    std::vector<int> open{0};
    while (!open.empty()) {
        const Node& node = nodes_[size_t(open.back())];
        open.pop_back();
        if (node.count == 0) {
            for (int child : {node.first + 1, node.first})
                if (meet(nodes_[size_t(child)].box, box)) open.push_back(child);
            continue;
        }
        for (int i = node.first; i < node.first + node.count; ++i) {
            const int index = order_[size_t(i)];
            if (meet(boxes_[size_t(index)], box) && !visit(index)) return;
        }
    }
}

template <class Distance>
double BoxTree::nearest(const AcGePoint2d& point, double bound, double enough, Distance&& measure) const {
    struct Open {
        int node;
        double least; // squared distance
    };
    // Deeper than any tree of this many halvings.
    std::array<Open, 128> open;
    size_t top = 0;
    double square = bound * bound;
    if (!nodes_.empty()) open[top++] = {0, squaredDistance(nodes_[0].box, point)};
    while (top > 0 && bound > enough) {
        const Open next = open[--top];
        if (next.least >= square) continue;
        const Node& node = nodes_[size_t(next.node)];
        if (node.count == 0) {
            Open near{node.first, squaredDistance(nodes_[size_t(node.first)].box, point)};
            Open far{node.first + 1, squaredDistance(nodes_[size_t(node.first) + 1].box, point)};
            if (far.least < near.least) std::swap(near, far);
            if (far.least < square) open[top++] = far;
            if (near.least < square) open[top++] = near;
            continue;
        }
        for (int i = node.first; i < node.first + node.count; ++i) {
            const int index = order_[size_t(i)];
            if (squaredDistance(boxes_[size_t(index)], point) >= square) continue;
            bound = std::min(bound, measure(index)), square = bound * bound;
        }
    }
    return bound;
}

} // namespace host::ge
