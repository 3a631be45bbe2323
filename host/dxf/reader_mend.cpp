// What recovery puts right in a drawing that could be read: references that lead nowhere are taken out,
// blocks that contain themselves are opened. Each is noted.
#include <set>

#include "host/dxf/audit.h"
#include "host/dxf/reader.h"
#include "host/os/text.h"

namespace host::dxf {
namespace {

// As an audit sees it: ownership and hard pointers.
bool mustLead(int code) {
    return (code >= 340 && code <= 369) || (code >= 390 && code <= 399) || code == 480 || code == 481;
}

bool isThere(const AcDbDatabase& database, const Group& group) {
    const IdCell* cell = const_cast<AcDbDatabase&>(database).cellOf(group.handle(), false);
    return cell && cell->object && !cell->object->isErased();
}

std::vector<const AcDbEntity*> referencesIn(AcDbObjectId id) {
    std::vector<const AcDbEntity*> found;
    const auto* block = behind<AcDbBlockTableRecord>(id);
    for (AcDbObjectId entityId : block ? block->entities() : std::vector<AcDbObjectId>())
        if (const auto* entity = behind<AcDbEntity>(entityId);
            entity && !entity->isErased() && !entity->referencedBlock().isNull())
            found.push_back(entity);
    return found;
}

// Whether a block stands in another, or is it.
bool reaches(AcDbObjectId from, AcDbObjectId block) {
    std::vector<AcDbObjectId> open{from};
    std::set<AcDbObjectId> seen{from};
    while (!open.empty()) {
        const AcDbObjectId now = open.back();
        if (now == block) return true;
        open.pop_back();
        for (const AcDbEntity* reference : referencesIn(now))
            if (seen.insert(reference->referencedBlock()).second)
                open.push_back(reference->referencedBlock());
    }
    return false;
}

} // namespace

void DrawingReader::mend() {
    for (const IdCell& cell : database->cells())
        if (cell.object && cell.object->tail()) mendReferences(*cell.object);
    for (const AuditFinding& finding : audit(*database))
        if (finding.code == "cyclic-block") openCycle(id(finding.handle));
    nameObject({});
}

void DrawingReader::mendReferences(AcDbObject& object) {
    nameObject({});
    object_ = object.dxfName();
    handle_ = object.objectId().handle();
    const AcDbObjectId extension = object.tail()->extensionDictionary;
    if (!extension.isNull() && !behind<AcDbObject>(extension)) {
        object.tailForWrite().extensionDictionary = {};
        note("its extension dictionary " + utf8(extension.handle().ascii()) + " is missing; it has none now",
             true);
    }
    GroupList rest;
    for (const Group group : object.tail()->kept) {
        const bool dead = group.type == GroupType::handle && group.handle() && mustLead(group.code) &&
                          !isThere(*database, group);
        if (!dead) {
            rest.append(group);
            continue;
        }
        note("group " + std::to_string(group.code) + " led to " + utf8(AcDbHandle(group.handle()).ascii()) +
                 ", where no object is; it was taken out",
             true);
    }
    if (!(rest == object.tail()->kept)) object.tailForWrite().kept = std::move(rest);
}

void DrawingReader::openCycle(AcDbObjectId block) {
    for (const AcDbEntity* reference : referencesIn(block)) {
        const AcDbObjectId inner = reference->referencedBlock();
        if (!reaches(inner, block)) continue;
        AcDbObjectPointer<AcDbEntity> opened(reference->objectId(), AcDb::kForWrite);
        if (!opened || opened->erase() != Acad::eOk) continue;
        object_ = reference->dxfName();
        handle_ = reference->objectId().handle();
        note("it put a block into itself; it was erased", true);
    }
}

} // namespace host::dxf
