// What recovery puts right in a drawing that could be read, finding by finding of an audit: references
// that lead nowhere, blocks that contain themselves, counts and sizes. Each is noted. Names and owners are
// in reader_mend_names.cpp.
#include <algorithm>
#include <map>
#include <set>

#include "host/dxf/audit_walk.h"
#include "host/dxf/reader.h"
#include "host/dxf/values.h"
#include "host/os/text.h"

namespace host::dxf {
namespace {

// As an audit sees it: ownership and hard pointers.
bool mustLead(int code) {
    return (code >= 340 && code <= 369) || (code >= 390 && code <= 399) || code == 480 || code == 481;
}

// What stands in for a record that is missing, where a kind can't do without.
struct StandInRow {
    std::string_view kind;
    int code;
    const AcRxClass* (*table)();
    const wchar_t* name;
};
const AcRxClass* textStyles() { return AcDbTextStyleTable::desc(); }
const AcRxClass* linetypes() { return AcDbLinetypeTable::desc(); }
constexpr StandInRow kStandIns[] = {
    {"DIMSTYLE", 340, textStyles, L"Standard"},   {"LTYPE", 340, textStyles, L"Standard"},
    {"MLEADERSTYLE", 340, linetypes, L"ByLayer"}, {"MLEADERSTYLE", 342, textStyles, L"Standard"},
    {"MULTILEADER", 341, linetypes, L"ByLayer"},  {"MULTILEADER", 343, textStyles, L"Standard"},
};

// The groups of an object as it would write them itself.
class OwnGroups final : public GroupWriter {
public:
    explicit OwnGroups(const AcDbObject& object) {
        database = object.database();
        version = std::max(database->originalFileVersion(), kFirstWithMarkers);
        object.outGroups(*this);
    }
    void write(const Group& group) override { groups.append(group); }
    GroupList groups;
};

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
    for (const AuditFinding& finding : audit(*database)) {
        auto* object = behind<AcDbObject>(id(finding.handle));
        if (!object || object->isErased()) continue;
        object_ = object->dxfName();
        handle_ = finding.handle;
        if (finding.code == "broken-reference") mendReferences(*object);
        if (finding.code == "cyclic-block") openCycle(object->objectId());
        if (finding.code == "wrong-count") mendCounts(*object);
        if (finding.code == "bad-value") mendValues(*object);
        if (finding.code == "duplicate-name" || finding.code == "bad-name") mendName(*object);
        if (finding.code == "broken-owner") mendOwner(*object);
        if (finding.code == "unregistered") registerApplications(*object);
    }
    nameObject({});
}

void DrawingReader::mendReferences(AcDbObject& object) {
    const AcDbObjectId extension = object.tail() ? object.tail()->extensionDictionary : AcDbObjectId();
    if (!extension.isNull() && !behind<AcDbObject>(extension)) {
        object.tailForWrite().extensionDictionary = {};
        note("its extension dictionary " + utf8(extension.handle().ascii()) + " is missing; it has none now",
             true);
    }
    if (object.tail()) mendKept(object);
    bool changed = false;
    GroupList mended;
    for (Group group : OwnGroups(object).groups) {
        if (leadsNowhere(group)) {
            const AcDbObjectId standIn = standInFor(object.dxfName(), group.code);
            tellDead(group, standIn.isNull() ? "it leads to nothing now" : "the standard one was taken");
            group = Group::ofHandle(group.code, standIn.handle());
            changed = true;
        }
        mended.append(group);
    }
    if (changed) refile(object, std::move(mended));
}

bool DrawingReader::leadsNowhere(const Group& group) const {
    return group.type == GroupType::handle && group.handle() && mustLead(group.code) &&
           !isThere(*database, group);
}

void DrawingReader::tellDead(const Group& group, const char* cure) {
    note("group " + std::to_string(group.code) + " led to " + utf8(AcDbHandle(group.handle()).ascii()) +
             ", where no object is; " + cure,
         true);
}

AcDbObjectId DrawingReader::standInFor(std::string_view kind, int code) const {
    for (const StandInRow& row : kStandIns)
        if (row.kind == kind && row.code == code) return database->find(row.table(), row.name);
    return {};
}

void DrawingReader::mendKept(AcDbObject& object) {
    GroupList rest;
    for (Group group : object.tail()->kept) {
        if (!leadsNowhere(group)) {
            rest.append(group);
            continue;
        }
        const AcDbObjectId standIn = standInFor(object.dxfName(), group.code);
        tellDead(group, standIn.isNull() ? "it was taken out" : "the standard one was taken");
        if (!standIn.isNull()) rest.append(Group::ofHandle(group.code, standIn.handle()));
    }
    if (!(rest == object.tail()->kept)) object.tailForWrite().kept = std::move(rest);
}

// The object takes its groups anew, from a list with the markers among them; what it is tied to stays.
void DrawingReader::refile(AcDbObject& object, GroupList groups) {
    const AcDbObjectId owner = object.ownerId();
    const ObjectTail tail = object.tail() ? *object.tail() : ObjectTail();
    const bool holdsOthers = AcDbSymbolTable::cast(&object) || AcDbBlockTableRecord::cast(&object);
    std::vector<AcDbObjectId> parts;
    object.ownedParts(parts);
    if (holdsOthers || !parts.empty() || object.isA()->isCustom()) return;
    std::unique_ptr<AcDbObject> fresh;
    if (auto* kept = dynamic_cast<KeptObject*>(&object)) return kept->setGroups(std::move(groups));
    if (auto* kept = dynamic_cast<KeptEntity*>(&object))
        fresh = std::make_unique<KeptEntity>(kept->dxfName());
    else
        fresh.reset(AcDbObject::cast(object.isA()->create()));
    if (!fresh) return;
    subclass = {};
    const AcDb::AcDbDwgVersion was =
        std::exchange(version, std::max(database->originalFileVersion(), kFirstWithMarkers));
    for (const Group group : groups) {
        if (group.code == 100)
            subclass = marker_ = group.text;
        else
            fresh->inGroup(group, *this);
    }
    fresh->inDone(*this);
    version = was;
    AcDbObjectPointer<AcDbObject> opened(object.objectId(), AcDb::kForWrite);
    if (!opened) return;
    opened->restore(*fresh);
    opened->setOwnerId(owner);
    opened->tailForWrite() = tail;
}

void DrawingReader::mendCounts(AcDbObject& object) {
    const OwnGroups own(object);
    std::map<int, std::int64_t> right; // by code
    CountKeeper counts;
    const auto finish = [&] {
        counts.mismatches([&](const CountRow& row, std::int64_t stated, std::int64_t counted) {
            note(sentenceFor(row, stated, counted) + "; what is there was counted", true);
            right[row.code] = counted;
        });
    };
    for (const Group group : own.groups) {
        if (group.code == 100)
            finish(), counts.begin(group.text);
        else
            counts.take(group);
    }
    finish();
    GroupList mended;
    for (const Group group : own.groups) {
        const auto found = right.find(group.code);
        mended.append(found == right.end() ? group : Group::ofInteger(group.code, found->second));
    }
    if (!right.empty()) refile(object, std::move(mended));
}

// Round things without a radius show nothing and are erased; other values give way to some that serve.
void DrawingReader::mendValues(AcDbObject& object) {
    const std::string kind = object.dxfName();
    if (kind == "CIRCLE" || kind == "ARC") {
        AcDbObjectPointer<AcDbObject> opened(object.objectId(), AcDb::kForWrite);
        if (opened && opened->erase() == Acad::eOk) note("its radius was 0; it was erased", true);
        return;
    }
    GroupList mended;
    ValueKeeper values;
    bool changed = false;
    for (const Group group : OwnGroups(object).groups) {
        Group value = group;
        const char* fault = values.fault(value);
        mended.append(value);
        if (!fault || value == group) continue;
        changed = true;
        note(std::string(fault) + "; it was put right", true);
    }
    if (changed) refile(object, std::move(mended));
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
