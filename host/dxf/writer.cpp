// The order of a drawing file: tables, blocks, entities, objects, kept sections. The header and the
// classes, which stand before them, are in writer_head.cpp, single objects in writer_object.cpp.
#include "host/dxf/writer.h"

#include <algorithm>

#include "host/dxf/known.h"

namespace host::dxf {
namespace {

// Lets pass what R12 knows.
class OldCodes final : public GroupWriter {
public:
    explicit OldCodes(GroupWriter& to) : to_(to) {}
    void write(const Group& group) override {
        if (isOldCode(group.code)) to_.write(group);
    }

private:
    GroupWriter& to_;
};

bool isTablePart(const AcDbObject& object) {
    return AcDbSymbolTable::cast(&object) || AcDbSymbolTableRecord::cast(&object);
}

} // namespace

DrawingWriter::DrawingWriter(AcDbDatabase& database, AcDb::AcDbDwgVersion version, GroupSink& head,
                             GroupSink& body, const FileProgress& progress)
    : database_(database), version_(version), head_(head), body_(body), out_(&body), progress_(progress) {
    if (old()) filter_ = std::make_unique<OldCodes>(body), out_ = filter_.get();
    for (GroupWriter* writer : {static_cast<GroupWriter*>(&head_), static_cast<GroupWriter*>(&body_), out_})
        writer->database = &database, writer->version = version;
    lastHandle_ = std::uint64_t(database.handseed()) - 1;
    total_ = std::max<size_t>(1, database.stubs().size());
}

void DrawingWriter::run() {
    countClasses();
    if (version_ >= AcDb::kDHL_1015) references_ = database_.blockReferences();
    writeTables();
    writeBlocks();
    writeEntities();
    if (!old())
        writeObjects();
    else if (database_.originalFileVersion() > version_)
        lose("dictionaries and the objects in them");
    writeKeptSections();
    body_.text(0, std::string_view("EOF"));
    writeHeader();
    if (!old()) writeClasses();
}

void DrawingWriter::beginSection(std::string_view name) {
    out_->text(0, std::string_view("SECTION"));
    out_->text(2, name);
}

void DrawingWriter::writeTables() {
    beginSection("TABLES");
    for (const TableKind& kind : tableKinds())
        if (!old() || kind.name != "BLOCK_RECORD") writeTable(kind);
    for (const KeptSection& kept : database_.keptSections()) {
        if (kept.name != "TABLES") continue;
        if (old())
            lose("unknown tables");
        else
            for (const Group group : kept.groups) body_.write(group);
    }
    endSection();
}

void DrawingWriter::writeTable(const TableKind& kind) {
    const auto* table = behind<AcDbSymbolTable>(database_.tableId(kind.table()));
    if (!table) return;
    out_->text(0, std::string_view("TABLE"));
    out_->text(2, kind.name);
    writeHandle(*table);
    writeTies(*table);
    if (old()) {
        long live = 0;
        for (AcDbObjectId id : table->records()) live += behind<AcDbObject>(id) && !id.isErased();
        out_->integer(70, live);
    } else {
        out_->beginObject(table->tail() ? &table->tail()->kept : nullptr);
        table->outGroups(*out_);
        if (kind.name == "DIMSTYLE" && version_ >= AcDb::kDHL_1015) out_->subclass("AcDbDimStyleTable");
        out_->endObject();
    }
    writeXdata(*table);
    for (AcDbObjectId id : table->records())
        if (const auto* record = behind<AcDbSymbolTableRecord>(id); record && !record->isErased())
            writeObject(*record);
    out_->text(0, std::string_view("ENDTAB"));
}

void DrawingWriter::writeBlocks() {
    beginSection("BLOCKS");
    const auto* table = behind<AcDbBlockTable>(database_.blockTableId());
    for (AcDbObjectId id : table ? table->records() : std::vector<AcDbObjectId>()) {
        const auto* block = behind<AcDbBlockTableRecord>(id);
        if (!block || block->isErased()) continue;
        const bool inEntities = id == database_.modelSpaceId() || id == activeSheet();
        if (old() && (inEntities || block->isPaperSpace())) {
            if (!inEntities && !block->entities().empty()) lose("layouts beyond the first");
            continue;
        }
        if (const auto* begin = behind<AcDbObject>(block->blockBegin())) writeObject(*begin);
        if (!inEntities)
            for (AcDbObjectId entity : block->entities()) writeEntity(entity);
        if (const auto* end = behind<AcDbObject>(block->blockEnd())) writeObject(*end);
    }
    endSection();
}

// The sheet whose entities stand in the section ENTITIES: always the one with the plain name.
AcDbObjectId DrawingWriter::activeSheet() const {
    return database_.find(AcDbBlockTable::desc(), ACDB_PAPER_SPACE);
}

void DrawingWriter::writeEntities() {
    beginSection("ENTITIES");
    for (AcDbObjectId space : {database_.modelSpaceId(), activeSheet()})
        if (const auto* block = behind<AcDbBlockTableRecord>(space))
            for (AcDbObjectId entity : block->entities()) writeEntity(entity);
    endSection();
}

// In the order of the handles, which is the same after every reading.
void DrawingWriter::writeObjects() {
    beginSection("OBJECTS");
    std::vector<AcDbObjectId> ids;
    const AcDbObjectId root = database_.namedObjectsDictionaryId();
    for (const IdStub& stub : database_.stubs()) {
        const AcDbObject* object = stub.object;
        if (!object || object->isErased() || object->objectId() == root) continue;
        if (!AcDbEntity::cast(object) && !isTablePart(*object)) ids.push_back(object->objectId());
    }
    std::sort(ids.begin(), ids.end());
    if (const auto* dictionary = behind<AcDbObject>(root)) writeObject(*dictionary);
    for (AcDbObjectId id : ids) writeObject(*behind<AcDbObject>(id));
    endSection();
}

void DrawingWriter::writeKeptSections() {
    for (const KeptSection& kept : database_.keptSections()) {
        if (kept.name == "TABLES") continue;
        const bool tooNew = old() || (kept.name == "ACDSDATA" && version_ < AcDb::kDHL_1027);
        if (tooNew) {
            lose("the section " + kept.name);
            continue;
        }
        beginSection(kept.name);
        for (const Group group : kept.groups) body_.write(group);
        endSection();
    }
}

std::vector<std::string> DrawingWriter::losses() const {
    std::vector<std::string> sentences;
    for (const auto& [what, count] : lost_)
        sentences.push_back(versionName(version_) + " can't hold " + what + " (" + std::to_string(count) +
                            "); left out");
    return sentences;
}

void DrawingWriter::step() {
    constexpr size_t kEvery = 4096;
    if (++written_ % kEvery || !progress_) return;
    if (!progress_(std::min(1.0, double(written_) / double(total_)))) throw WriteCancelled{};
}

} // namespace host::dxf
