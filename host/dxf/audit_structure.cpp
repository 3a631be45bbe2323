// What concerns several objects: owners, layers, names, blocks that contain themselves.
#include <map>
#include <set>

#include "host/dxf/audit_walk.h"
#include "host/dxf/tables.h"
#include "host/dxf/values.h"
#include "host/os/text.h"

namespace host::dxf {
namespace {

std::string handleText(AcDbObjectId id) { return utf8(id.handle().ascii()); }

// Tells the names that come a second time, without regard to case.
class Names {
public:
    bool isNew(const std::wstring& name) { return seen_.insert(lower(name)).second; }

private:
    std::set<std::wstring> seen_;
};

// The blocks that stand in each block, and a search for one that is reached from itself.
class BlockTree {
public:
    void add(AcDbObjectId outer, AcDbObjectId inner) { inside_[outer].insert(inner); }
    bool containsItself(AcDbObjectId block) const {
        std::vector<AcDbObjectId> open{block};
        std::set<AcDbObjectId> seen;
        while (!open.empty()) {
            const auto children = inside_.find(open.back());
            open.pop_back();
            if (children == inside_.end()) continue;
            if (children->second.contains(block)) return true;
            for (AcDbObjectId child : children->second)
                if (seen.insert(child).second) open.push_back(child);
        }
        return false;
    }

private:
    std::map<AcDbObjectId, std::set<AcDbObjectId>> inside_;
};

} // namespace

void AuditWalk::checkPlace(const AcDbObject& object) {
    const AcDbObjectId id = object.objectId();
    if (std::uint64_t(id.handle()) >= std::uint64_t(database_.handseed()))
        find("handle-seed", object, "the handle isn't below the next one to be given out");
    const bool root = id == database_.namedObjectsDictionaryId() || AcDbSymbolTable::cast(&object);
    const auto* owner = behind<AcDbObject>(object.ownerId());
    if (!root && (!owner || owner->isErased()))
        find("broken-owner", object,
             object.ownerId().isNull() ? std::string("it has no owner")
                                       : "its owner " + handleText(object.ownerId()) + " is missing");
    const auto* entity = AcDbEntity::cast(&object);
    if (entity && !behind<AcDbLayerTableRecord>(entity->layerId()))
        find("missing-layer", object, "it stands on no layer");
}

void AuditWalk::checkNames() {
    for (const TableKind& kind : tableKinds()) {
        const auto* table = behind<AcDbSymbolTable>(database_.tableId(kind.table()));
        if (!table || kind.name == "VPORT") continue; // the tiles of the screen share a name
        Names names;
        for (AcDbObjectId id : table->records()) {
            const auto* record = behind<AcDbSymbolTableRecord>(id);
            // Shape files stand among the text styles without a name.
            if (!record || record->isErased() || record->name().empty()) continue;
            if (!names.isNew(record->name()))
                find("duplicate-name", *record, utf8(record->name()) + " is there twice");
            if (lawfulName(record->name()) != record->name())
                find("bad-name", *record, utf8(record->name()) + " holds what no name may hold");
        }
    }
    for (const IdCell& cell : database_.cells()) {
        const auto* dictionary = cell.object ? AcDbDictionary::cast(cell.object) : nullptr;
        if (!dictionary || dictionary->isErased()) continue;
        Names names;
        for (const AcDbDictionary::Entry& entry : dictionary->entries())
            if (!entry.id.isErased() && !names.isNew(entry.key))
                find("duplicate-name", *dictionary, "the entry " + utf8(entry.key) + " is there twice");
    }
}

void AuditWalk::checkBlocks() {
    const auto* table = behind<AcDbBlockTable>(database_.blockTableId());
    if (!table) return;
    BlockTree tree;
    for (AcDbObjectId id : table->records()) {
        const auto* block = behind<AcDbBlockTableRecord>(id);
        for (AcDbObjectId entity :
             block && !block->isErased() ? block->entities() : std::vector<AcDbObjectId>())
            if (const auto* reference = behind<AcDbEntity>(entity); reference && !reference->isErased())
                if (const AcDbObjectId inner = reference->referencedBlock(); !inner.isNull())
                    tree.add(id, inner);
    }
    for (AcDbObjectId id : table->records())
        if (const auto* block = behind<AcDbBlockTableRecord>(id); block && tree.containsItself(id))
            find("cyclic-block", *block, utf8(block->name()) + " contains itself");
}

} // namespace host::dxf
