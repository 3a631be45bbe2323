// The packed tree: sorting, levels, search.
#include "apps/desk/box_index.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace desk {
namespace {

constexpr std::uint32_t kFan = 16;

// The bits of the low half, each with a free one behind it.
std::uint64_t spread(std::uint64_t v) {
    v = (v | v << 16) & 0x0000FFFF0000FFFF;
    v = (v | v << 8) & 0x00FF00FF00FF00FF;
    v = (v | v << 4) & 0x0F0F0F0F0F0F0F0F;
    v = (v | v << 2) & 0x3333333333333333;
    return (v | v << 1) & 0x5555555555555555;
}

std::uint64_t cell(double value, double low, double size) {
    constexpr double kCells = 4294967295.0;
    return size > 0 ? std::uint64_t(std::clamp((value - low) / size, 0.0, 1.0) * kCells) : 0;
}

// Rising order; of many by marks, of few by comparison. Numbers lie below `end`.
void putInOrder(std::vector<std::uint32_t>& numbers, size_t end) {
    if (numbers.size() < end / 64) return std::sort(numbers.begin(), numbers.end());
    std::vector<std::uint64_t> marks(end / 64 + 1);
    for (const std::uint32_t n : numbers) marks[n / 64] |= std::uint64_t(1) << n % 64;
    numbers.clear();
    for (size_t word = 0; word < marks.size(); ++word)
        for (std::uint64_t rest = marks[word]; rest; rest &= rest - 1)
            numbers.push_back(std::uint32_t(word * 64) + std::uint32_t(std::countr_zero(rest)));
}

} // namespace

BoxIndex::BoxIndex(const std::vector<AcDbExtents2d>& boxes) : end_(boxes.size()) {
    AcDbExtents2d all;
    for (const AcDbExtents2d& box : boxes)
        if (box.isValid()) all.addExt(box);
    std::vector<std::pair<std::uint64_t, std::uint32_t>> order;
    const double width = all.maxPoint().x - all.minPoint().x, height = all.maxPoint().y - all.minPoint().y;
    for (std::uint32_t i = 0; i < boxes.size(); ++i) {
        if (!boxes[i].isValid()) continue;
        const AcGePoint2d low = boxes[i].minPoint(), high = boxes[i].maxPoint();
        order.emplace_back(spread(cell((low.x + high.x) / 2, all.minPoint().x, width)) |
                               spread(cell((low.y + high.y) / 2, all.minPoint().y, height)) << 1,
                           i);
    }
    std::sort(order.begin(), order.end());
    for (const auto& [code, i] : order) items_.push_back(i), boxes_.push_back(boxes[i]);
    addLevel();
    while (levels_.back().size() > 1) addLevel();
}

void BoxIndex::addLevel() {
    const std::vector<Node>* below = levels_.empty() ? nullptr : &levels_.back();
    const auto count = std::uint32_t(below ? below->size() : items_.size());
    std::vector<Node> level;
    for (std::uint32_t first = 0; first < count; first += kFan) {
        Node node{{}, first, std::min(kFan, count - first)};
        for (std::uint32_t i = first; i < first + node.count; ++i)
            node.box.addExt(below ? (*below)[i].box : boxes_[i]);
        level.push_back(node);
    }
    levels_.push_back(std::move(level));
}

void BoxIndex::find(const AcDbExtents2d& window, std::vector<std::uint32_t>& out) const {
    out.clear();
    if (items_.empty()) return;
    std::vector<std::pair<size_t, std::uint32_t>> open{{levels_.size() - 1, 0}};
    while (!open.empty()) {
        const auto [level, at] = open.back();
        open.pop_back();
        const Node& node = levels_[level][at];
        if (!meets(node.box, window)) continue;
        for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
            if (level > 0)
                open.emplace_back(level - 1, i);
            else if (meets(boxes_[i], window))
                out.push_back(items_[i]);
        }
    }
    putInOrder(out, end_);
}

} // namespace desk
