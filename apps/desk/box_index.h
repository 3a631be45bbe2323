// Finds the boxes that meet a window among very many: a packed tree over boxes in Morton order.
#pragma once
#include <cstdint>
#include <vector>

#include "host/ge/extents.h"

namespace desk {

inline bool meets(const AcDbExtents2d& a, const AcDbExtents2d& b) {
    return a.minPoint().x <= b.maxPoint().x && a.maxPoint().x >= b.minPoint().x &&
           a.minPoint().y <= b.maxPoint().y && a.maxPoint().y >= b.minPoint().y;
}

// Built once over boxes that don't change, sixteen to a node; boxes that aren't valid are never found. The
// order of space-filling curves for packing is Kamel and Faloutsos' (1993), with Morton's curve (1966) in
// place of Hilbert's.
class BoxIndex {
public:
    BoxIndex() = default;
    explicit BoxIndex(const std::vector<AcDbExtents2d>& boxes);

    // The numbers of the boxes that meet the window, edges included, in rising order.
    void find(const AcDbExtents2d& window, std::vector<std::uint32_t>& out) const;
    size_t size() const { return items_.size(); }

private:
    struct Node {
        AcDbExtents2d box;
        std::uint32_t first = 0, count = 0; // of the level below; on the lowest of items_
    };
    void addLevel();
    size_t end_ = 0; // beyond the highest number
    std::vector<std::uint32_t> items_;
    std::vector<AcDbExtents2d> boxes_;      // in the order of items_
    std::vector<std::vector<Node>> levels_; // the lowest first
};

} // namespace desk
