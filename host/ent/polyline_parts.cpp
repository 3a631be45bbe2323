// Parts of old polylines and block references: waiting and resident ones.
#include "host/ent/polyline_parts.h"

#include <algorithm>

#include "host/db/blocktable.h"
#include "host/db/database.h"

namespace host {

namespace {
std::unique_ptr<AcDbEntity> copyOf(const AcDbObject& part) {
    return std::unique_ptr<AcDbEntity>(static_cast<AcDbEntity*>(part.clone()));
}
} // namespace

OwnedParts::OwnedParts(const OwnedParts& from) : ids_(from.ids_), end_(from.end_) {
    for (const auto& part : from.waiting_) waiting_.push_back(copyOf(*part));
}
OwnedParts& OwnedParts::operator=(const OwnedParts& from) {
    if (this != &from) {
        OwnedParts copy(from);
        std::swap(ids_, copy.ids_), std::swap(waiting_, copy.waiting_), std::swap(end_, copy.end_);
    }
    return *this;
}

size_t OwnedParts::living() const {
    const auto erased = std::count_if(ids_.begin(), ids_.end(),
                                      [](AcDbObjectId id) { return !id.isValid() || id.isErased(); });
    return size() - size_t(erased);
}

AcDbObjectId OwnedParts::append(AcDbEntity& whole, AcDbEntity* part, AcDbObjectId after) {
    AcDbDatabase* database = whole.database();
    if (!database) {
        waiting_.emplace_back(part);
        return {};
    }
    if (part->layerId().isNull()) part->setPropertiesFrom(&whole);
    const AcDbObjectId id = database->append(part, whole.objectId());
    const bool atEnd = after.isNull() || ids_.empty() || ids_.back() == after;
    const auto place = atEnd ? ids_.end() : std::find(ids_.begin(), ids_.end(), after);
    ids_.insert(place == ids_.end() ? place : place + 1, id);
    addEndMark(whole, *database);
    return id;
}

void OwnedParts::addEndMark(AcDbEntity& whole, AcDbDatabase& database) {
    if (!end_.isNull()) return;
    auto* mark = new AcDbSequenceEnd;
    mark->setPropertiesFrom(&whole);
    end_ = database.append(mark, whole.objectId());
    mark->close();
}

AcDbObjectId OwnedParts::insertFirst(AcDbEntity& whole, AcDbEntity* part) {
    const AcDbObjectId id = append(whole, part);
    if (id.isNull())
        std::rotate(waiting_.rbegin(), waiting_.rbegin() + 1, waiting_.rend());
    else
        std::rotate(ids_.rbegin(), ids_.rbegin() + 1, ids_.rend());
    return id;
}

void OwnedParts::insertBehind(AcDbEntity& whole, size_t number, AcDbEntity* part) {
    if (!whole.database()) {
        waiting_.emplace(waiting_.begin() + long(std::min(number + 1, waiting_.size())), part);
        return;
    }
    AcDbObjectId behind;
    size_t at = 0;
    for (AcDbObjectId id : ids_)
        if (!id.isErased() && at++ == number) behind = id;
    append(whole, part, behind);
    part->close();
}

void OwnedParts::adopt(AcDbObjectId part) {
    if (part.isValid() && AcDbSequenceEnd::cast(part.cell()->object))
        end_ = part;
    else
        ids_.push_back(part);
}

void OwnedParts::join(AcDbEntity& whole, AcDbDatabase& database) {
    if (waiting_.empty()) return;
    ids_.reserve(ids_.size() + waiting_.size());
    for (auto& part : waiting_) {
        if (part->layerId().isNull()) part->setPropertiesFrom(&whole);
        AcDbObject* resident = part.release();
        ids_.push_back(database.append(static_cast<AcDbEntity*>(resident), whole.objectId()));
        resident->close();
    }
    waiting_.clear();
    addEndMark(whole, database);
}

void OwnedParts::list(std::vector<AcDbObjectId>& parts) const {
    parts.insert(parts.end(), ids_.begin(), ids_.end());
    if (!end_.isNull()) parts.push_back(end_);
}

void OwnedParts::detach() {
    for (AcDbObjectId id : ids_)
        if (id.isValid() && !id.isErased()) waiting_.push_back(copyOf(*id.cell()->object));
    ids_.clear();
    end_.setNull();
}

// Marks are never given twice, so wholes with the same mixture have the same parts in the same state.
std::uint64_t OwnedParts::state(std::uint64_t ownState) const {
    std::uint64_t mixed = ownState;
    each<VertexEntity>([&](const VertexEntity& part) {
        mixed = (mixed ^ part.mark()) * 0x9E3779B97F4A7C15u;
        mixed ^= mixed >> 29;
    });
    return mixed;
}

} // namespace host

AcDbObjectIterator::AcDbObjectIterator(std::vector<AcDbObjectId> ids, bool skipDeleted)
    : ids_(std::move(ids)) {
    skip(1, skipDeleted);
}
void AcDbObjectIterator::start(bool atBeginning, bool skipDeleted) {
    at_ = atBeginning ? 0 : long(ids_.size()) - 1;
    skip(atBeginning ? 1 : -1, skipDeleted);
}
void AcDbObjectIterator::step(bool forward, bool skipDeleted) {
    at_ += forward ? 1 : -1;
    skip(forward ? 1 : -1, skipDeleted);
}
void AcDbObjectIterator::skip(long direction, bool skipDeleted) {
    while (skipDeleted && !done() && ids_[size_t(at_)].isErased()) at_ += direction;
}
AcDbEntity* AcDbObjectIterator::entity() const {
    AcDbEntity* entity = nullptr;
    acdbOpenObject(entity, objectId(), AcDb::kForRead);
    return entity;
}
