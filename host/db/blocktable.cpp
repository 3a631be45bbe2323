// Blocks: their table, their entities in drawing order, and the marks round them in files.
#include "host/db/blocktable.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "host/db/access.h"
#include "host/os/numbers.h"
#include "host/os/text.h"

HOST_DEFINE_CLASS(AcDbBlockTable, AcDbSymbolTable, L"")
HOST_DEFINE_CLASS(AcDbBlockTableRecord, AcDbSymbolTableRecord, L"BLOCK_RECORD")

// -- table --------------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbBlockTable::prepareName(AcDbSymbolTableRecord& added) {
    auto* record = AcDbBlockTableRecord::cast(&added);
    if (!record) return Acad::eNotThatKindOfClass;
    const std::wstring& name = record->name();
    if (name.size() != 2 || name[0] != L'*') return Acad::eOk;
    for (; scanned_ < records().size(); ++scanned_) {
        const auto* present = host::peek<AcDbBlockTableRecord>(records()[scanned_]);
        if (!present || present->name().size() < 3 || present->name()[0] != L'*') continue;
        const auto number = host::parseInteger(std::wstring_view(present->name()).substr(2));
        if (!number || *number < 0) continue;
        auto& highest = highest_[host::upper(present->name()[1])];
        highest = std::max(highest, Adesk::UInt64(*number));
    }
    Adesk::UInt64& number = highest_[host::upper(name[1])];
    std::wstring next;
    AcDbObjectId taken;
    do next = name + std::to_wstring(++number);
    while (getAt(next.c_str(), taken, true) == Acad::eOk);
    record->setBlockFlags(record->blockFlags() | 1);
    return record->setName(next.c_str());
}

// -- entities of a record -----------------------------------------------------------------------------

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}

// Undo takes the entity out of the list again by itself, so that no copy of a long list is kept.
Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
    id.setNull();
    if (!entity) return Acad::eNullEntityPointer;
    if (!database()) return Acad::eNoDatabase;
    if (entity->database()) return Acad::eAlreadyInDb;
    if (!isWriteEnabled()) return isReadEnabled() ? Acad::eWasOpenForRead : Acad::eNotOpenForWrite;
    if (auto es = assertWriteEnabled(false); es != Acad::eOk) return es;
    if (entity->layerId().isNull()) entity->setLayer(database()->clayer());
    if (entity->linetypeId().isNull()) entity->setLinetype(database()->byLayerLinetype());
    entities_.push_back(AcDbObjectId());
    id = entities_.back() = database()->append(entity, objectId());
    return Acad::eOk;
}

void AcDbBlockTableRecord::addMarks() {
    const auto mark = [&](std::unique_ptr<AcDbEntity> made) {
        made->setLayer(database()->layerZero());
        const AcDbObjectId id = database()->append(made.get(), objectId());
        made.release()->close();
        return id;
    };
    begin_ = mark(std::make_unique<AcDbBlockBegin>());
    end_ = mark(std::make_unique<AcDbBlockEnd>());
}

size_t AcDbBlockTableRecord::takeOut(AcDbObjectId entity) {
    const auto found = std::find(entities_.rbegin(), entities_.rend(), entity);
    if (found == entities_.rend()) return entities_.size();
    const auto at = std::prev(found.base());
    const size_t position = size_t(at - entities_.begin());
    entities_.erase(at);
    return position;
}

void AcDbBlockTableRecord::putIn(AcDbObjectId entity, size_t position) {
    if (entity == begin_ || entity == end_) return; // they stand round the entities, not among them
    entities_.insert(entities_.begin() + std::ptrdiff_t(std::min(position, entities_.size())), entity);
}

namespace {

// Every one open for write, or none: whoever was open before stays so.
class OpenForTakeover {
public:
    Acad::ErrorStatus open(const AcDbObjectIdArray& ids) {
        for (auto id : ids) {
            AcDbEntity* entity = host::peek<AcDbEntity>(id);
            if (!entity) return Acad::eNullEntityPointer;
            if (!entity->isWriteEnabled()) {
                if (auto es = acdbOpenObject(entity, id, AcDb::kForWrite); es != Acad::eOk) return es;
                opened_.push_back(entity);
            }
            entities_.push_back(entity);
        }
        return Acad::eOk;
    }
    ~OpenForTakeover() {
        for (auto* entity : opened_) entity->close();
    }
    const std::vector<AcDbEntity*>& entities() const { return entities_; }

private:
    std::vector<AcDbEntity*> entities_, opened_;
};

} // namespace

Acad::ErrorStatus AcDbBlockTableRecord::assumeOwnershipOf(const AcDbObjectIdArray& ids) {
    if (!database()) return Acad::eNoDatabase;
    for (auto id : ids)
        if (id.database() != database()) return Acad::eWrongDatabase;
    OpenForTakeover takeover;
    if (auto es = takeover.open(ids); es != Acad::eOk) return es;
    if (auto es = willModify(); es != Acad::eOk) return es;
    const std::unordered_set<AcDbObjectId> moving(ids.begin(), ids.end());
    std::unordered_set<AcDbObjectId> emptied;
    for (auto* entity : takeover.entities()) {
        auto* former = host::peek<AcDbBlockTableRecord>(entity->ownerId());
        if (former && emptied.insert(former->objectId()).second) {
            database()->undoLog().willModify(*former);
            std::erase_if(former->entities_, [&](AcDbObjectId id) { return moving.contains(id); });
        }
        if (auto es = entity->setOwnerId(objectId()); es != Acad::eOk) return es;
    }
    std::unordered_set<AcDbObjectId> placed;
    for (auto id : ids)
        if (placed.insert(id).second) entities_.push_back(id);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning,
                                                    bool skipDeleted) const {
    iterator = new AcDbBlockTableRecordIterator(this, atBeginning, skipDeleted);
    return Acad::eOk;
}

AcDbBlockTableRecordIterator::AcDbBlockTableRecordIterator(const AcDbBlockTableRecord* record,
                                                           bool atBeginning, bool skipDeleted)
    : record_(record) {
    start(atBeginning, skipDeleted);
}

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
    at_ = atBeginning ? 0 : long(record_->entities().size()) - 1;
    if (!done() && skipDeleted && record_->entities()[size_t(at_)].isErased()) step(atBeginning, true);
}

bool AcDbBlockTableRecordIterator::done() const {
    return at_ < 0 || size_t(at_) >= record_->entities().size();
}

void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
    do at_ += forward ? 1 : -1;
    while (!done() && skipDeleted && record_->entities()[size_t(at_)].isErased());
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const {
    if (done()) return Acad::eIteratorDone;
    return id = record_->entities()[size_t(at_)], Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErased) const {
    entity = nullptr;
    if (done()) return Acad::eIteratorDone;
    return acdbOpenObject(entity, record_->entities()[size_t(at_)], mode, openErased);
}

// -- a record's data ----------------------------------------------------------------------------------

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
    if (!std::isfinite(origin.x + origin.y + origin.z)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    origin_ = origin;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::setComments(const ACHAR* text) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    comments_ = text ? text : L"";
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::setLayoutId(AcDbObjectId layout) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    layout_ = layout;
    return Acad::eOk;
}

bool AcDbBlockTableRecord::isAnonymous() const {
    return !isModelSpace() && !isPaperSpace() && (blockFlags_ & 1 || name().starts_with(L'*'));
}

bool AcDbBlockTableRecord::isModelSpace() const { return host::equalNoCase(name(), ACDB_MODEL_SPACE); }

bool AcDbBlockTableRecord::isPaperSpace() const {
    constexpr size_t stem = std::size(ACDB_PAPER_SPACE) - 1;
    if (host::equalNoCase(std::wstring_view(name()).substr(0, stem), ACDB_PAPER_SPACE)) return true;
    return isLayout() && !isModelSpace();
}

bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
    const AcRxClass* definition = acrxFindAcRxClass(L"AcDbAttributeDefinition");
    return definition && std::any_of(entities_.begin(), entities_.end(), [&](AcDbObjectId id) {
               return !id.isErased() && id.objectClass()->isDerivedFrom(definition);
           });
}

Acad::ErrorStatus AcDbBlockTableRecord::getBlockReferenceIds(AcDbObjectIdArray& ids, bool directOnly,
                                                             bool) const {
    if (!database()) return Acad::eNotInDatabase;
    const auto all = database()->blockReferences();
    std::vector<AcDbObjectId> found, blocks{objectId()};
    std::unordered_set<AcDbObjectId> seen{objectId()};
    for (size_t i = 0; i < blocks.size(); ++i) {
        const auto references = all.find(blocks[i]);
        if (references == all.end()) continue;
        for (auto reference : references->second) {
            found.push_back(reference);
            const AcDbObjectId owner = host::ObjectAccess::object(reference)->ownerId();
            if (!directOnly && seen.insert(owner).second) blocks.push_back(owner);
        }
    }
    std::sort(found.begin(), found.end());
    for (auto id : found) ids.append(id);
    return Acad::eOk;
}

void AcDbBlockTableRecord::subErase(Adesk::Boolean erasing) {
    auto eraseOne = [&](AcDbObjectId id) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite, true);
        if (entity && entity->isErased() != erasing) entity->erase(erasing);
    };
    for (auto id : entities_) eraseOne(id);
    eraseOne(begin_);
    eraseOne(end_);
}

// -- the record in files ------------------------------------------------------------------------------

bool AcDbBlockTableRecord::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbBlockTableRecord")) return AcDbSymbolTableRecord::inGroup(group, context);
    switch (group.code) {
    case 340: layout_ = context.id(group.handle()); return true;
    case 70: insertUnits_ = int(group.integer); return true;
    case 280: explodable_ = int(group.integer); return true;
    case 281: scaleUniformly_ = int(group.integer); return true;
    default: return AcDbSymbolTableRecord::inGroup(group, context);
    }
}

void AcDbBlockTableRecord::outGroups(host::GroupWriter& writer) const {
    writer.subclass("AcDbSymbolTableRecord");
    writer.subclass(marker());
    writer.text(2, name());
    if (writer.version >= AcDb::kDHL_1015) writer.handle(340, layout_);
    if (writer.version < AcDb::kDHL_1021) return;
    writer.integer(70, insertUnits_);
    writer.integer(280, explodable_);
    writer.integer(281, scaleUniformly_);
}
