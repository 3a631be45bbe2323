// Entities of blocks and spaces, and the parts that follow polylines and block references.
#include "host/dxf/reader.h"

#include "host/dxf/known.h"

namespace host::dxf {

void DrawingReader::readEntities() {
    while (!atSectionEnd()) readEntity(nullptr);
    endSection();
}

void DrawingReader::readBlockEntities(AcDbBlockTableRecord& block) {
    while (!stream_.at("ENDBLK") && !stream_.at("BLOCK") && !atSectionEnd()) readEntity(&block);
    closeWhole();
}

// Into the block given, or for null into the space that the entity names.
void DrawingReader::readEntity(AcDbBlockTableRecord* block) {
    const std::string kind(stream_.now().text);
    nameObject(kind);
    if (isPartOfWhole(kind)) return readPart(kind);
    closeWhole();
    nameObject(kind);
    if (kind == "SEQEND") {
        note("an end mark of a sequence that never began was passed over", true);
        stream_.advance();
        return stream_.skipToObject();
    }
    Head head;
    std::unique_ptr<AcDbObject> object = makeEntity(kind);
    readBody(*object, head);
    sawModernKind_ |= !isOldKind(kind);
    AcDbBlockTableRecord& record = block ? *block : home(head);
    AcDbObject* entity = object.get();
    record.adopt(place(std::move(object), head, record.objectId()));
    if (kind == "POLYLINE") whole_ = {entity, "VERTEX", true, false};
    if (kind == "INSERT") whole_ = {entity, "ATTRIB", head.parts, false};
}

std::unique_ptr<AcDbObject> DrawingReader::makeEntity(std::string_view kind) {
    return kind == "POLYLINE" ? factory_.polyline(polylineTraits()) : factory_.entity(kind);
}

PolylineTraits DrawingReader::polylineTraits() {
    PolylineTraits traits;
    stream_.lookAhead([&](const Group& group) {
        if (group.code == 100) traits.marker = bare(group.text);
        if (group.code == 70) traits.flags = int(group.integer);
    });
    return traits;
}

bool DrawingReader::isPartOfWhole(std::string_view kind) const {
    if (!whole_.object) return false;
    return kind == whole_.parts || (kind == "SEQEND" && (whole_.any || whole_.expected));
}

void DrawingReader::readPart(std::string_view kind) {
    AcDbObject& whole = *whole_.object;
    const bool end = kind == "SEQEND";
    std::unique_ptr<AcDbObject> part = end ? std::make_unique<AcDbSequenceEnd>()
                                       : kind == "VERTEX"
                                           ? factory_.vertex(whole, [this] { return polylineTraits(); })
                                           : factory_.entity(kind);
    Head head;
    readBody(*part, head);
    // References without attributes have no end mark.
    if (end && !whole_.any && whole_.parts == "ATTRIB") {
        whole_ = {};
        return note("an end mark of a sequence without parts was left out", true);
    }
    whole.addOwnedPart(place(std::move(part), head, whole.objectId()));
    whole_.any = true;
    if (end) whole_ = {};
}

// A sequence that breaks off without its end mark gets one.
void DrawingReader::closeWhole() {
    const Whole whole = std::exchange(whole_, {});
    if (!whole.object || (!whole.any && whole.parts == "ATTRIB")) return;
    nameObject(whole.object->dxfName());
    handle_ = whole.object->objectId().handle();
    note("the sequence of parts has no end mark", true);
    auto end = std::make_unique<AcDbSequenceEnd>();
    if (const auto* entity = AcDbEntity::cast(whole.object)) end->setLayer(entity->layerId());
    whole.object->addOwnedPart(place(std::move(end), {}, whole.object->objectId()));
}

// The space that an entity of the section ENTITIES stands in: its owner, or by group 67.
AcDbBlockTableRecord& DrawingReader::home(const Head& head) {
    if (auto* record = behind<AcDbBlockTableRecord>(head.owner)) return *record;
    if (!head.owner.isNull()) note("the owner is no block; the entity stands in its space", true, head.line);
    AcDbBlockTableRecord*& space = head.paper ? paperSpace_ : modelSpace_;
    if (!space) space = &blockRecord(head.paper ? ACDB_PAPER_SPACE : ACDB_MODEL_SPACE);
    return *space;
}

} // namespace host::dxf
