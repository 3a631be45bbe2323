// The list, its index and its owners.
#include "apps/desk/scene.h"

#include <algorithm>

#include "host/view/collector.h"

namespace desk {
namespace {

bool isEndless(const host::DisplayPrimitive& primitive) {
    using Kind = host::DisplayPrimitive::Kind;
    return primitive.kind == Kind::ray || primitive.kind == Kind::xline;
}

AcDbExtents2d seenBox(AcDbExtents box, const AcGeMatrix3d& toDisplay) {
    if (!box.isValid()) return {};
    box.transformBy(toDisplay);
    return {AcGePoint2d(box.minPoint().x, box.minPoint().y), AcGePoint2d(box.maxPoint().x, box.maxPoint().y)};
}

} // namespace

void Scene::rebuild(AcDbDatabase& database, const ScreenMap& map) {
    host::DisplayOptions options;
    options.view = map.view();
    options.pixelsAcross = map.pixels().width();
    list_ = host::displaySpace(database, {}, options);
    indexed_ = false;
    owners_.clear();
    for (std::uint32_t i = 0; i < list_.primitives.size(); ++i) {
        const AcDbObjectId owner = list_.owners[list_.primitives[i].owner];
        if (owner.isNull()) continue;
        PrimitiveRange& range = owners_.try_emplace(owner, PrimitiveRange{i, i}).first->second;
        range.end = i + 1;
    }
}

void Scene::clear() {
    list_ = {};
    owners_.clear();
    indexed_ = false;
}

void Scene::index(const ScreenMap& map) {
    const AcGeMatrix3d toDisplay = map.view().worldToDisplay();
    std::vector<AcDbExtents2d> boxes(list_.primitives.size());
    endless_.clear();
    for (std::uint32_t i = 0; i < boxes.size(); ++i) {
        // In perspective sizes change with the depth: everything may show.
        if (map.view().perspective || isEndless(list_.primitives[i]))
            endless_.push_back(i);
        else
            boxes[i] = seenBox(list_.primitives[i].box, toDisplay);
    }
    boxes_ = BoxIndex(boxes);
    side_ = map;
    indexed_ = true;
}

const std::vector<std::uint32_t>& Scene::within(const AcDbExtents2d& box, const ScreenMap& map) {
    if (!indexed_ || !(side_.sameSide(map) || (map.view().perspective && side_.view().perspective)))
        index(map);
    boxes_.find(box, found_);
    if (endless_.empty()) return found_;
    const auto middle = std::ptrdiff_t(found_.size());
    found_.insert(found_.end(), endless_.begin(), endless_.end());
    std::inplace_merge(found_.begin(), found_.begin() + middle, found_.end());
    return found_;
}

std::vector<AcDbObjectId> Scene::ownersWithin(const AcDbExtents2d& box, const ScreenMap& map) {
    std::vector<AcDbObjectId> owners;
    for (const std::uint32_t i : within(box, map)) {
        const AcDbObjectId owner = list_.owners[list_.primitives[i].owner];
        if (!owner.isNull() && (owners.empty() || owners.back() != owner)) owners.push_back(owner);
    }
    return owners;
}

PrimitiveRange Scene::of(AcDbObjectId owner) const {
    const auto found = owners_.find(owner);
    return found == owners_.end() ? PrimitiveRange() : found->second;
}

} // namespace desk
