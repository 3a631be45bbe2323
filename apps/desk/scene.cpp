// The list by entity, its order and its index.
#include "apps/desk/scene.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>
#include <utility>

#include "host/view/readable.h"
#include "host/view/screen.h"

namespace desk {
namespace {

constexpr size_t kMostLoose = 2000;  // primitives outside the index, beside an eighth of those in it
constexpr size_t kMostChanged = 200; // entities drawn one by one, beside a quarter of all
constexpr size_t kMostGone = 20'000; // primitives left behind, beside as many as there are

constexpr double kCoarse = 4; // times what curves may keep from their lines: half a pixel of a whole drawing

bool isEndless(const host::DisplayPrimitive& primitive) {
    using Kind = host::DisplayPrimitive::Kind;
    return primitive.kind == Kind::ray || primitive.kind == Kind::xline;
}

// By the middle and the half sides, whose parts along an axis of the view add up.
AcDbExtents2d seenBox(const AcDbExtents& box, const AcGeMatrix3d& toDisplay) {
    if (!box.isValid()) return {};
    const AcGeVector3d half = (box.maxPoint() - box.minPoint()) / 2;
    const AcGePoint3d middle = toDisplay * (box.minPoint() + half);
    const auto reach = [&](unsigned row) {
        return std::abs(toDisplay(row, 0)) * half.x + std::abs(toDisplay(row, 1)) * half.y +
               std::abs(toDisplay(row, 2)) * half.z;
    };
    const double x = reach(0), y = reach(1);
    return {AcGePoint2d(middle.x - x, middle.y - y), AcGePoint2d(middle.x + x, middle.y + y)};
}

const std::vector<AcDbObjectId>& entitiesOf(AcDbDatabase& database) {
    static const std::vector<AcDbObjectId> none;
    const auto* space = host::readable<AcDbBlockTableRecord>(database.currentSpaceId());
    return space ? space->entities() : none;
}

host::DisplayOptions optionsFor(const ScreenMap& map) {
    host::DisplayOptions options;
    options.view = map.view();
    options.pixelsAcross = map.pixels().width();
    return options;
}

} // namespace

// -- the list ------------------------------------------------------------------------------------------

void Scene::clear() { *this = Scene(); }

const host::DisplayList& Scene::list() const {
    static const host::DisplayList empty;
    return collector_ ? collector_->list() : empty;
}

void Scene::rebuild(AcDbDatabase& database, const ScreenMap& map) {
    clear();
    host::screen(); // entities draw their blocks through it
    source_ = std::make_unique<host::DatabaseSource>(&database);
    const host::DisplayOptions options = host::optionsForSpace(database, {}, optionsFor(map));
    collector_ = std::make_unique<host::DisplayCollector>(*source_, options);
    coarse_ = CoarseShapes(kCoarse * options.chordError);
    takeOrder(entitiesOf(database));
    for (const AcDbObjectId id : order_) draw(id);
    coarse_.follow(list());
}

void Scene::touch(PrimitiveRange range) {
    for (std::uint32_t i = range.first; i < range.end; ++i) {
        touched_.box.addExt(list().primitives[i].box);
        touched_.anywhere = touched_.anywhere || isEndless(list().primitives[i]);
    }
}

void Scene::forget(PrimitiveRange range) {
    touch(range);
    std::fill(gone_.begin() + range.first, gone_.begin() + range.end, true);
    goneCount_ += range.end - range.first;
}

// Where the entities stand in drawing order now; those that have left are taken out, those that have come
// named. Mostly some have come or gone at the end; else all are counted anew.
std::vector<AcDbObjectId> Scene::takeOrder(const std::vector<AcDbObjectId>& entities) {
    const size_t both = std::min(order_.size(), entities.size());
    const bool sameStart =
        std::equal(entities.begin(), entities.begin() + std::ptrdiff_t(both), order_.begin());
    const size_t kept = sameStart ? both : 0;
    std::unordered_map<AcDbObjectId, Part> before;
    for (size_t i = kept; i < order_.size(); ++i)
        if (auto part = parts_.extract(order_[i])) before.insert(std::move(part));
    std::vector<AcDbObjectId> fresh;
    parts_.reserve(entities.size());
    for (size_t i = kept; i < entities.size(); ++i) {
        const auto old = before.extract(entities[i]);
        if (!old) fresh.push_back(entities[i]);
        Part& part = parts_[entities[i]] = old ? old.mapped() : Part();
        part.rank = std::uint32_t(i);
    }
    for (const auto& [id, part] : before) forget(part.range);
    if (!sameStart) {
        indexed_ = false;
        for (size_t owner = 0; owner < ranks_.size(); ++owner)
            if (const auto part = parts_.find(list().owners[owner]); part != parts_.end())
                ranks_[owner] = part->second.rank;
    }
    if (!sameStart || order_.size() != entities.size()) order_ = entities;
    return fresh;
}

// At the end of the list; what stood there of the entity before is gone.
void Scene::draw(AcDbObjectId id) {
    const auto known = parts_.find(id);
    if (known == parts_.end()) return;
    Part& part = known->second;
    forget(part.range);
    part.range.first = std::uint32_t(list().primitives.size());
    if (const auto* entity = host::readable<AcDbEntity>(id)) {
        const bool viewMatters = collector_->add(*entity, id);
        if (viewMatters && !std::exchange(part.viewed, true)) viewed_.push_back(id);
        ranks_.push_back(part.rank);
    }
    part.range.end = std::uint32_t(list().primitives.size());
    gone_.resize(part.range.end, false);
    touch(part.range);
}

Scene::Touched Scene::update(AcDbDatabase& database, const ScreenMap& map,
                             const std::vector<AcDbObjectId>& changed) {
    // Much is quicker drawn in one go, and that leaves nothing behind.
    const size_t living = list().primitives.size() - goneCount_;
    if (!collector_ || changed.size() > kMostChanged + order_.size() / 4 || goneCount_ > kMostGone + living) {
        rebuild(database, map);
        return {.everything = true, .anywhere = true, .box = {}};
    }
    touched_ = {};
    collector_->setView(map.view(), map.pixels().width());
    std::vector<AcDbObjectId> stale = takeOrder(entitiesOf(database));
    stale.insert(stale.end(), changed.begin(), changed.end());
    std::unordered_set<AcDbObjectId> done;
    for (const AcDbObjectId id : stale)
        if (done.insert(id).second) draw(id);
    coarse_.follow(list());
    if (indexed_) indexLoose(side_);
    return touched_;
}

PrimitiveRange Scene::of(AcDbObjectId owner) const {
    const auto found = parts_.find(owner);
    return found == parts_.end() ? PrimitiveRange() : found->second.range;
}

AcDbExtents2d Scene::extents(const host::ViewFrame& view) const {
    return host::seenExtents(list(), view, [this](size_t i) { return !gone_[i]; });
}

bool Scene::isBefore(std::uint32_t a, std::uint32_t b) const {
    const auto rank = [this](std::uint32_t primitive) { return ranks_[list().primitives[primitive].owner]; };
    return rank(a) != rank(b) ? rank(a) < rank(b) : a < b;
}

// -- the index -----------------------------------------------------------------------------------------

void Scene::index(const ScreenMap& map) {
    side_ = map;
    endless_.clear();
    loose_.clear();
    firstLoose_ = 0;
    indexLoose(map);
    drawn_.clear();
    for (std::uint32_t i = 0; i < loose_.size(); ++i)
        if (!gone_[i]) drawn_.push_back(i);
    const auto before = [this](std::uint32_t a, std::uint32_t b) { return isBefore(a, b); };
    if (!std::is_sorted(drawn_.begin(), drawn_.end(), before))
        std::sort(drawn_.begin(), drawn_.end(), before);
    std::vector<AcDbExtents2d> boxes;
    boxes.reserve(drawn_.size());
    for (const std::uint32_t i : drawn_) boxes.push_back(loose_[i]);
    boxes_ = BoxIndex(boxes);
    firstLoose_ = std::uint32_t(loose_.size());
    loose_.clear();
    indexed_ = true;
}

// The boxes of what has come since.
void Scene::indexLoose(const ScreenMap& map) {
    const AcGeMatrix3d toDisplay = map.view().worldToDisplay();
    const auto& primitives = list().primitives;
    for (auto i = std::uint32_t(firstLoose_ + loose_.size()); i < primitives.size(); ++i) {
        // In perspective sizes change with the depth: everything may show.
        const bool anywhere = map.view().perspective || isEndless(primitives[i]);
        if (anywhere) endless_.push_back(i);
        loose_.push_back(anywhere ? AcDbExtents2d() : seenBox(primitives[i].box, toDisplay));
    }
    if (loose_.size() > kMostLoose + firstLoose_ / 8) indexed_ = false;
}

void Scene::prepare(const ScreenMap& map) {
    if (!indexed_ || !(side_.sameSide(map) || (map.view().perspective && side_.view().perspective)))
        index(map);
}

void Scene::find(const AcDbExtents2d& box, std::vector<std::uint32_t>& out) const {
    boxes_.find(box, out);
    for (std::uint32_t& i : out) i = drawn_[i];
    const auto sorted = std::ptrdiff_t(out.size());
    for (size_t i = 0; i < loose_.size(); ++i)
        if (meets(loose_[i], box)) out.push_back(firstLoose_ + std::uint32_t(i));
    out.insert(out.end(), endless_.begin(), endless_.end());
    const auto before = [this](std::uint32_t a, std::uint32_t b) { return isBefore(a, b); };
    std::sort(out.begin() + sorted, out.end(), before);
    std::inplace_merge(out.begin(), out.begin() + sorted, out.end(), before);
    if (goneCount_ > 0) std::erase_if(out, [this](std::uint32_t i) { return gone_[i]; });
}

const std::vector<std::uint32_t>& Scene::within(const AcDbExtents2d& box, const ScreenMap& map) {
    prepare(map);
    find(box, found_);
    return found_;
}

std::vector<AcDbObjectId> Scene::ownersWithin(const AcDbExtents2d& box, const ScreenMap& map) {
    std::vector<AcDbObjectId> owners;
    for (const std::uint32_t i : within(box, map)) {
        const AcDbObjectId owner = list().owners[list().primitives[i].owner];
        if (!owner.isNull() && (owners.empty() || owners.back() != owner)) owners.push_back(owner);
    }
    return owners;
}

} // namespace desk
