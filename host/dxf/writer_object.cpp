// One object in a file: its name and handle, what ties it to others, its data, its xdata, its parts.
#include "host/dxf/writer.h"

#include <algorithm>

#include "host/dxf/known.h"

namespace host::dxf {
namespace {

// What an object kept, in three: lists that stood before the owner, groups without a marker (from
// files that have none), and the rest, which is woven in behind the markers.
struct KeptParts {
    GroupList lists, unmarked, marked;
    bool divided = false;
};

KeptParts divide(const GroupList& kept) {
    KeptParts parts;
    if (kept.empty() || (*kept.begin()).code == 100) return parts;
    parts.divided = true;
    GroupList* to = &parts.unmarked;
    for (const Group group : kept) {
        if (group.code == 100) to = &parts.marked;
        const bool unmarked = to != &parts.marked;
        if (unmarked && group.code == 102 && group.text.starts_with('{')) to = &parts.lists;
        to->append(group);
        if (unmarked && group.code == 102 && group.text == "}") to = &parts.unmarked;
    }
    return parts;
}

// R12 has no markers: groups that an entity kept behind them would be taken for others.
constexpr const char* kLostGroups = "written without groups that R12 doesn't know";

bool holdsOldCodes(const GroupList& kept) {
    for (const Group group : kept)
        if (group.code != 102 && isOldCode(group.code)) return true;
    return false;
}

bool isGone(AcDbObjectId id) { return id.isNull() || (id.isValid() && id.isErased()); }

} // namespace

void DrawingWriter::writeHandle(const AcDbObject& object) {
    // R12 gives handles to entities, and none to the marks that begin blocks.
    if (old() && (!AcDbEntity::cast(&object) || AcDbBlockBegin::cast(&object))) return;
    const bool dimStyle = AcDbDimStyleTableRecord::cast(&object);
    const std::uint64_t handle = object.objectId().handle();
    out_->handle(dimStyle ? 105 : 5, handle);
    highestWritten_ = std::max(highestWritten_, handle);
}

void DrawingWriter::writeTies(const AcDbObject& object) {
    if (!hasTies()) return;
    if (const ObjectTail* tail = object.tail()) {
        if (!isGone(tail->extensionDictionary)) {
            out_->text(102, std::string_view("{ACAD_XDICTIONARY"));
            out_->handle(360, tail->extensionDictionary);
            out_->text(102, std::string_view("}"));
        }
        const auto& reactors = tail->persistentReactors;
        if (!std::all_of(reactors.begin(), reactors.end(), isGone)) {
            out_->text(102, std::string_view("{ACAD_REACTORS"));
            for (AcDbObjectId id : reactors)
                if (!isGone(id)) out_->handle(330, id);
            out_->text(102, std::string_view("}"));
        }
    }
    out_->handle(330, object.ownerId());
}

void DrawingWriter::writeObject(const AcDbObject& object) {
    static const GroupList kNothing;
    const ObjectTail* tail = object.tail();
    const bool foreign = cameFromLater() && AcDbEntity::cast(&object);
    if (foreign && tail && holdsOldCodes(tail->kept)) losses_.add("entity", "entities", kLostGroups);
    const GroupList& kept = tail && !foreign ? tail->kept : kNothing;
    const KeptParts parts = divide(kept);
    out_->text(0, object.dxfName());
    writeHandle(object);
    if (hasTies())
        for (const Group group : parts.lists) out_->write(group);
    writeTies(object);
    out_->beginObject(parts.divided ? &parts.marked : &kept);
    object.outGroups(*out_);
    out_->endObject();
    for (const Group group : parts.unmarked) out_->write(group);
    if (const auto* block = AcDbBlockTableRecord::cast(&object)) writeReferences(*block);
    writeXdata(object);
    step();
}

void DrawingWriter::writeXdata(const AcDbObject& object) {
    if (!object.tail()) return;
    for (const Group group : object.tail()->xdata) out_->write(group);
}

// The references to a block, anew from the drawing as it is.
void DrawingWriter::writeReferences(const AcDbBlockTableRecord& block) {
    const auto found = references_.find(block.objectId());
    if (found == references_.end() || found->second.empty()) return;
    out_->text(102, std::string_view("{BLKREFS"));
    for (AcDbObjectId id : found->second) out_->handle(331, id);
    out_->text(102, std::string_view("}"));
}

void DrawingWriter::writeEntity(AcDbObjectId id) {
    const auto* entity = behind<AcDbEntity>(id);
    if (!entity || entity->isErased()) return;
    if (version_ < AcDb::kDHL_1018) tellColors(*entity);
    if (!holds(*entity)) return writeOlder(*entity);
    writeObject(*entity);
    writeParts(*entity);
}

void DrawingWriter::writeParts(const AcDbObject& whole) {
    std::vector<AcDbObjectId> parts;
    whole.ownedParts(parts);
    std::erase_if(parts, [](AcDbObjectId id) { return !behind<AcDbObject>(id) || id.isErased(); });
    // A reference whose attributes are gone needs no end mark.
    const bool endAlone = parts.size() == 1 && AcDbSequenceEnd::cast(parts[0].cell()->object);
    if (endAlone && whole.dxfName() != "POLYLINE") return;
    for (AcDbObjectId id : parts) writeObject(*id.cell()->object);
}

} // namespace host::dxf
