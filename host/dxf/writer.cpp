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
    if (old()) codes_ = std::make_unique<OldCodes>(body), out_ = codes_.get();
    if (version < AcDb::kDHL_1015 && version < database.originalFileVersion()) {
        names_.emplace(database, codePageFor(database, version));
        bodyNames_ = std::make_unique<NameFilter>(*names_, *out_), out_ = bodyNames_.get();
        headNames_ = std::make_unique<NameFilter>(*names_, head);
        losses_.add("name", "names", "shortened or spelt in other characters", names_->changed());
    }
    for (GroupWriter* writer :
         {static_cast<GroupWriter*>(&head_), static_cast<GroupWriter*>(&body_), out_, headNames_.get()})
        if (writer) writer->database = &database, writer->version = version;
    lastHandle_ = std::uint64_t(database.handseed()) - 1;
    total_ = std::max<size_t>(1, database.cells().size());
    database.undoLog().commit();
    changed_ = database.undoLog().undoSteps() > 0;
}

void DrawingWriter::run() {
    countClasses();
    if (version_ >= AcDb::kDHL_1015) references_ = database_.blockReferences(), foreseeReferences();
    writeTables();
    writeBlocks();
    writeEntities();
    if (!old())
        writeObjects();
    else
        tellObjects();
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
            losses_.add("unknown table", "unknown tables", "left out");
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
            if (!inEntities && !block->entities().empty())
                losses_.add("layout beyond the first", "layouts beyond the first", "left out");
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

// The objects behind the root dictionary, in the order of the handles, which is the same after every
// reading.
std::vector<AcDbObjectId> DrawingWriter::plainObjects() const {
    std::vector<AcDbObjectId> ids;
    const AcDbObjectId root = database_.namedObjectsDictionaryId();
    for (const IdCell& cell : database_.cells()) {
        const AcDbObject* object = cell.object;
        if (!object || object->isErased() || object->objectId() == root) continue;
        if (!AcDbEntity::cast(object) && !isTablePart(*object)) ids.push_back(object->objectId());
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

void DrawingWriter::writeObjects() {
    beginSection("OBJECTS");
    const AcDbObjectId root = database_.namedObjectsDictionaryId();
    if (const auto* dictionary = behind<AcDbObject>(root)) writeObject(*dictionary);
    for (AcDbObjectId id : plainObjects()) writeObject(*behind<AcDbObject>(id));
    endSection();
}

// A drawing that came without dictionaries has none of its own to lose.
void DrawingWriter::tellObjects() {
    if (database_.originalFileVersion() <= version_) return;
    losses_.add("object of the dictionaries", "objects of the dictionaries", "left out",
                long(plainObjects().size()));
}

void DrawingWriter::writeKeptSections() {
    for (const KeptSection& kept : database_.keptSections()) {
        if (kept.name == "TABLES") continue;
        const bool tooNew = old() || (kept.name == "ACDSDATA" && version_ < AcDb::kDHL_1027);
        if (tooNew) {
            // Thumbnails show the drawing as it was; solids that lose their data are told one by one.
            if (kept.name != "THUMBNAILIMAGE" && kept.name != "ACDSDATA")
                losses_.add("section " + kept.name, "sections " + kept.name, "left out");
            continue;
        }
        beginSection(kept.name);
        for (const Group group : kept.groups) body_.write(group);
        endSection();
    }
}

void DrawingWriter::step() {
    constexpr size_t kEvery = 4096;
    if (++written_ % kEvery || !progress_) return;
    if (!progress_(std::min(1.0, double(written_) / double(total_)))) throw WriteCancelled{};
}

} // namespace host::dxf
