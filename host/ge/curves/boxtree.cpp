// Building the tree of boxes; its searches are in the header, for the sake of what they call.
#include "host/ge/curves/boxtree.h"

#include <numeric>

namespace host::ge {

BoxTree::BoxTree(std::vector<AcDbExtents2d> boxes) : boxes_(std::move(boxes)), order_(boxes_.size()) {
    std::iota(order_.begin(), order_.end(), 0);
    if (boxes_.empty()) return;
    nodes_.reserve(boxes_.size());
    nodes_.emplace_back();
    std::vector<Stretch> open{{0, 0, int(boxes_.size())}};
    while (!open.empty()) {
        const Stretch next = open.back();
        open.pop_back();
        split(next, open);
    }
}

void BoxTree::split(const Stretch& stretch, std::vector<Stretch>& open) {
    const auto [node, from, to] = stretch;
    const auto middle = [&](int index) {
        const AcDbExtents2d& box = boxes_[size_t(index)];
        return box.minPoint() + (box.maxPoint() - box.minPoint()) * 0.5;
    };
    AcDbExtents2d box, middles;
    for (int i = from; i < to; ++i) {
        box.addExt(boxes_[size_t(order_[size_t(i)])]);
        middles.addPoint(middle(order_[size_t(i)]));
    }
    if (to - from <= kLeaf) {
        nodes_[size_t(node)] = {box, from, to - from};
        return;
    }
    const AcGeVector2d size = middles.maxPoint() - middles.minPoint();
    const unsigned axis = size.y > size.x;
    const int half = from + (to - from) / 2;
    // Equal middles in order of their index: the tree is the same everywhere.
    std::nth_element(order_.begin() + from, order_.begin() + half, order_.begin() + to, [&](int a, int b) {
        const double p = middle(a)[axis], q = middle(b)[axis];
        return p != q ? p < q : a < b;
    });
    const int child = int(nodes_.size());
    nodes_.resize(nodes_.size() + 2);
    nodes_[size_t(node)] = {box, child, 0};
    open.push_back({child + 1, half, to});
    open.push_back({child, from, half});
}

} // namespace host::ge
