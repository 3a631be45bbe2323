// Tables with their records, and blocks.
#include "host/dxf/reader.h"

#include "host/os/text.h"

namespace host::dxf {
namespace {

// What a BLOCK object says of its block, read ahead of the object itself.
struct BlockTitle {
    std::string name;
    std::uint64_t owner = 0;
    int flags = 0;
};

} // namespace

void DrawingReader::readTables() {
    section_ = "TABLES";
    while (!atSectionEnd()) {
        nameObject(stream_.now().text);
        if (stream_.at("TABLE")) {
            readTable();
            continue;
        }
        note("something else than a table was passed over", false);
        stream_.advance();
        stream_.skipToObject();
    }
    endSection();
}

void DrawingReader::readTable() {
    std::string name;
    stream_.lookAhead([&](const Group& group) {
        if (group.code == 2 && name.empty()) name = bare(group.text);
    });
    if (name.empty()) {
        // A head alone, such as one that was written twice: what it should have opened follows.
        note("a table without a name was passed over", true);
        stream_.advance();
        return stream_.skipToObject();
    }
    const TableKind* kind = tableKind(name);
    if (!kind) return keepTable(name);
    object_ = "TABLE " + name;
    AcDbSymbolTable& table = readTableHead(*kind);
    while (!stream_.at("ENDTAB") && !stream_.at("TABLE") && !atSectionEnd()) readRecord(*kind, table);
    if (!stream_.at("ENDTAB")) return note("the table has no end mark", true);
    stream_.advance();
    stream_.skipToObject();
}

// A second table of the same kind adds to the first.
AcDbSymbolTable& DrawingReader::readTableHead(const TableKind& kind) {
    Head head;
    const AcDbObjectId standing = database->tableId(kind.table());
    std::unique_ptr<AcDbObject> made(AcDbObject::cast(kind.table()->create()));
    readBody(*made, head);
    if (auto* table = behind<AcDbSymbolTable>(standing)) return *table;
    const AcDbObjectId id = place(std::move(made), head, {});
    database->setTableId(kind.table(), id);
    return *behind<AcDbSymbolTable>(id);
}

void DrawingReader::readRecord(const TableKind& kind, AcDbSymbolTable& table) {
    nameObject(stream_.now().text);
    if (object_ != kind.name)
        note("the record was taken for one of the table " + std::string(kind.name), true);
    object_ = kind.name;
    Head head;
    std::unique_ptr<AcDbObject> made(AcDbObject::cast(kind.record()->create()));
    auto* record = AcDbSymbolTableRecord::cast(made.get());
    readBody(*record, head);
    giveName(*record, kind);
    giveLinetype(*record);
    const std::wstring name = record->name();
    if (!head.handle) head.handle = names_.waitingHandle(kind, name);
    table.adopt(place(std::move(made), head, table.objectId()), name);
}

// Records are found by their names, but for shape files, which stand nameless among the text styles.
void DrawingReader::giveName(AcDbSymbolTableRecord& record, const TableKind& kind) {
    if (!record.name().empty() || kind.name == "STYLE") return;
    std::wstring name;
    do name = L"Nameless" + std::to_wstring(++nameless_);
    while (!database->find(kind.table(), name).isNull());
    subclass = {};
    record.inGroup(Group::ofText(2, utf8(name)), *this);
    note("the record has no name; it was called " + utf8(name), true);
}

// A layer that names no linetype has the continuous one, by its name in this drawing.
void DrawingReader::giveLinetype(AcDbSymbolTableRecord& record) {
    auto* layer = AcDbLayerTableRecord::cast(&record);
    if (!layer || !layer->linetypeObjectId().isNull()) return;
    subclass = {};
    layer->inGroup(Group::ofText(6, "Continuous"), *this);
}

// A table of an unknown kind is kept between the others.
void DrawingReader::keepTable(const std::string& name) {
    KeptSection kept;
    kept.name = "TABLES";
    for (; !stream_.at("ENDTAB") && !atSectionEnd(); stream_.advance()) {
        Group group = stream_.now();
        if (group.type == GroupType::handle) group.text = {};
        kept.groups.append(group);
    }
    if (!stream_.at("ENDTAB")) throw Fault{"the table " + name + " has no end"};
    kept.groups.append(stream_.now());
    database->keptSections().push_back(std::move(kept));
    stream_.advance();
    stream_.skipToObject();
}

void DrawingReader::readBlocks() {
    while (!atSectionEnd()) {
        nameObject(stream_.now().text);
        if (!stream_.at("BLOCK")) throw Fault{"a block was expected, found " + object_};
        readBlock();
    }
    endSection();
}

void DrawingReader::readBlock() {
    AcDbBlockTableRecord& record = recordOfBlock();
    Head head;
    auto begin = std::make_unique<AcDbBlockBegin>();
    begin->setOwnerId(record.objectId());
    readBody(*begin, head);
    if (record.blockBegin().isNull()) record.setBlockBegin(place(std::move(begin), head, record.objectId()));
    readBlockEntities(record);
    Head endHead;
    auto end = std::make_unique<AcDbBlockEnd>();
    if (stream_.at("ENDBLK")) {
        nameObject("ENDBLK");
        readBody(*end, endHead);
    } else {
        note("the block has no end mark", true);
    }
    if (record.blockEnd().isNull()) record.setBlockEnd(place(std::move(end), endHead, record.objectId()));
}

// The record that the BLOCK object at hand belongs to, by its owner or by its name; made for drawings
// of R12 and before, which have no records.
AcDbBlockTableRecord& DrawingReader::recordOfBlock() {
    BlockTitle title;
    stream_.lookAhead([&](const Group& group) {
        if (group.code == 330 && !title.owner) title.owner = group.handle();
        if (group.code == 2 && title.name.empty()) title.name = stream_.decoder().decode(group.text);
    });
    if (auto* record = behind<AcDbBlockTableRecord>(id(title.owner)))
        if (record->blockBegin().isNull()) return *record;
    if (title.name.empty()) {
        note("the block has no name; it got one", true);
        title.name = "*U" + std::to_string(++nameless_);
    }
    const std::uint64_t free = behind<AcDbObject>(id(title.owner)) ? 0 : title.owner;
    std::wstring name = blockName(title.name);
    // A second block of one name keeps what it holds under a name of its own.
    for (int copy = 1;; ++copy) {
        AcDbBlockTableRecord& record = blockRecord(name, free);
        if (record.blockBegin().isNull()) return record;
        if (copy == 1) note("the block is defined twice; the second was renamed", true);
        name = wide(title.name) + L"$" + std::to_wstring(copy);
    }
}

// R12 names the spaces with a dollar sign.
std::wstring DrawingReader::blockName(const std::string& name) const {
    const std::wstring wideName = wide(name);
    if (equalNoCase(wideName, L"$MODEL_SPACE")) return ACDB_MODEL_SPACE;
    if (equalNoCase(wideName, L"$PAPER_SPACE")) return ACDB_PAPER_SPACE;
    return wideName;
}

// The record of that name; made when there is none, under that handle when it may have one.
AcDbBlockTableRecord& DrawingReader::blockRecord(const std::wstring& name, std::uint64_t handle) {
    const TableKind& kind = *tableKind("BLOCK_RECORD");
    const AcDbObjectId standing = database->find(kind.table(), name);
    if (auto* record = behind<AcDbBlockTableRecord>(standing)) return *record;
    AcDbSymbolTable& table = tableOf(*database, kind);
    auto made = std::make_unique<AcDbBlockTableRecord>();
    subclass = {};
    made->inGroup(Group::ofText(2, utf8(name)), *this);
    Head head;
    head.handle = names_.waitingHandle(kind, name);
    if (!head.handle) head.handle = handle;
    const AcDbObjectId placed = place(std::move(made), head, table.objectId());
    table.adopt(placed, name);
    return *behind<AcDbBlockTableRecord>(placed);
}

} // namespace host::dxf
