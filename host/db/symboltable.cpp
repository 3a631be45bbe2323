// Symbol tables: names, records and their order. The records' own data are in records.cpp, blocks
// in blocktable.cpp.
#include "host/db/symboltable.h"

#include "host/db/access.h"
#include "host/db/blocktable.h"
#include "host/os/text.h"

HOST_DEFINE_ABSTRACT_CLASS(AcDbSymbolTableRecord, AcDbObject)
HOST_DEFINE_ABSTRACT_CLASS(AcDbSymbolTable, AcDbObject)
HOST_DEFINE_CLASS(AcDbLayerTable, AcDbSymbolTable, L"")
HOST_DEFINE_CLASS(AcDbLinetypeTable, AcDbSymbolTable, L"")
HOST_DEFINE_CLASS(AcDbTextStyleTable, AcDbSymbolTable, L"")
HOST_DEFINE_CLASS(AcDbDimStyleTable, AcDbSymbolTable, L"")
HOST_DEFINE_CLASS(AcDbViewTable, AcDbSymbolTable, L"")
HOST_DEFINE_CLASS(AcDbUCSTable, AcDbSymbolTable, L"")
HOST_DEFINE_CLASS(AcDbViewportTable, AcDbSymbolTable, L"")
HOST_DEFINE_CLASS(AcDbRegAppTable, AcDbSymbolTable, L"")

// -- records ------------------------------------------------------------------------------------------

namespace {

bool isValidName(std::wstring_view name) {
    if (name.starts_with(L'*')) name.remove_prefix(1); // spaces, anonymous blocks, active viewports
    return !name.empty() && name.find_first_of(L"<>/\\\":;?*|=`") == std::wstring_view::npos;
}

// Header variables that name a record go along when it is renamed.
void renameInHeader(AcDbDatabase& database, const std::string& table, const std::wstring& from,
                    const std::wstring& to) {
    struct Row {
        const char* table;
        const char* variable;
        int code;
    };
    static constexpr Row rows[] = {{"LAYER", "$CLAYER", 8},      {"LTYPE", "$CELTYPE", 6},
                                   {"STYLE", "$TEXTSTYLE", 7},   {"STYLE", "$DIMTXSTY", 7},
                                   {"DIMSTYLE", "$DIMSTYLE", 2}, {"UCS", "$UCSNAME", 2}};
    for (const auto& row : rows)
        if (table == row.table && host::equalNoCase(database.headerText(row.variable), from))
            database.setHeaderText(row.variable, row.code, to);
}

} // namespace

Acad::ErrorStatus AcDbSymbolTableRecord::getName(ACHAR*& copy) const {
    acutNewString(name_.c_str(), copy);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name) {
    if (!name || !isValidName(name)) return Acad::eInvalidInput;
    auto* table = host::peek<AcDbSymbolTable>(ownerId());
    if (table && !host::equalNoCase(name, name_) && table->uniqueNames() && table->has(name))
        return Acad::eDuplicateRecordName;
    if (auto es = willModify(); es != Acad::eOk) return es;
    const std::wstring former = std::exchange(name_, name);
    if (!table || !database()) return Acad::eOk;
    database()->undoLog().willModify(*table);
    table->renamed(objectId(), former, name_);
    renameInHeader(*database(), table->tableName(), former, name_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setFlags(int flags) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    flags_ = flags;
    return Acad::eOk;
}

bool AcDbSymbolTableRecord::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbSymbolTableRecord") && !context.within(marker())) return false;
    if (group.code == 2) return name_ = group.wide(), true;
    if (group.code == 70) return flags_ = int(group.integer), true;
    return false;
}

void AcDbSymbolTableRecord::outGroups(host::GroupWriter& writer) const {
    writer.subclass("AcDbSymbolTableRecord");
    writer.subclass(marker());
    writer.text(2, name_);
    writer.integer(70, flags_);
    outOwn(writer);
}

std::string AcDbSymbolTableRecord::dxfName() const {
    const auto* table = host::peek<AcDbSymbolTable>(ownerId());
    return table ? table->tableName() : host::utf8(isA()->dxfName());
}

// -- tables -------------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbObjectId& id, bool getErased) const {
    id.setNull();
    if (!name || !*name) return Acad::eInvalidInput;
    const std::wstring folded = host::lower(name);
    const auto found = byName_.find(folded);
    if (found == byName_.end()) return Acad::eKeyNotFound;
    if (getErased || !found->second.isErased()) return id = found->second, Acad::eOk;
    // Another of that name may live: one that came back, or a tile beside an erased one.
    for (auto record : records_)
        if (!record.isErased())
            if (const auto* r = host::peek<AcDbSymbolTableRecord>(record);
                r && host::lower(r->name_) == folded)
                return id = record, Acad::eOk;
    return Acad::eKeyNotFound;
}

bool AcDbSymbolTable::has(const ACHAR* name) const {
    AcDbObjectId id;
    return getAt(name, id) == Acad::eOk;
}

bool AcDbSymbolTable::has(AcDbObjectId id) const {
    const auto* record = host::peek<AcDbSymbolTableRecord>(id);
    return record && !record->isErased() && record->ownerId() == objectId();
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
    AcDbObjectId id;
    return add(id, record);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
    id.setNull();
    if (!record) return Acad::eNullObjectPointer;
    if (!database()) return Acad::eNoDatabase;
    if (record->database()) return Acad::eAlreadyInDb;
    if (!isWriteEnabled()) return isReadEnabled() ? Acad::eWasOpenForRead : Acad::eNotOpenForWrite;
    if (auto es = willModify(); es != Acad::eOk) return es;
    if (auto es = prepareName(*record); es != Acad::eOk) return es;
    if (record->name_.empty()) return Acad::eInvalidInput;
    if (uniqueNames() && has(record->name_.c_str())) return Acad::eDuplicateRecordName;
    id = database()->append(record, objectId());
    adopt(id, record->name_);
    if (auto* block = AcDbBlockTableRecord::cast(record)) block->addMarks();
    return Acad::eOk;
}

void AcDbSymbolTable::adopt(AcDbObjectId record, const std::wstring& name) {
    records_.push_back(record);
    const auto [entry, isNew] = byName_.try_emplace(host::lower(name), record);
    if (!isNew && entry->second.isErased()) entry->second = record;
}

void AcDbSymbolTable::renamed(AcDbObjectId record, const std::wstring& from, const std::wstring& to) {
    if (const auto old = byName_.find(host::lower(from)); old != byName_.end() && old->second == record)
        byName_.erase(old);
    const auto [entry, isNew] = byName_.try_emplace(host::lower(to), record);
    if (!isNew && entry->second.isErased()) entry->second = record;
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning,
                                               bool skipDeleted) const {
    iterator = new AcDbSymbolTableIterator(this, false);
    iterator->start(atBeginning, skipDeleted);
    return Acad::eOk;
}

bool AcDbSymbolTable::inGroup(const host::Group& group, host::ReadContext&) {
    return group.code == 70; // the number of records, which is counted
}

void AcDbSymbolTable::outGroups(host::GroupWriter& writer) const {
    writer.subclass("AcDbSymbolTable");
    long live = 0;
    for (auto id : records_) live += !id.isErased();
    writer.integer(70, live);
}

std::string AcDbSymbolTable::dxfName() const { return "TABLE"; }

// -- iterator -----------------------------------------------------------------------------------------

AcDbSymbolTableIterator::AcDbSymbolTableIterator(const AcDbSymbolTable* table, bool skipErased)
    : ids_(table->records()) {
    start(true, skipErased);
}

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) {
    at_ = atBeginning ? 0 : long(ids_.size()) - 1;
    if (!done() && skipDeleted && ids_[size_t(at_)].isErased()) step(atBeginning, skipDeleted);
}

bool AcDbSymbolTableIterator::done() const { return at_ < 0 || size_t(at_) >= ids_.size(); }

void AcDbSymbolTableIterator::step(bool forward, bool skipDeleted) {
    do at_ += forward ? 1 : -1;
    while (!done() && skipDeleted && ids_[size_t(at_)].isErased());
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
    if (done()) return Acad::eIteratorDone;
    return id = ids_[size_t(at_)], Acad::eOk;
}

// -- applications -------------------------------------------------------------------------------------

int acdbRegApp(const ACHAR* application) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (!database || !application || !isValidName(application) || *application == L'*') return RTERROR;
    if (!database->find(AcDbRegAppTable::desc(), application).isNull()) return RTNORM;
    AcDbRegAppTable* table = nullptr;
    if (database->getRegAppTable(table, AcDb::kForWrite) != Acad::eOk) return RTERROR;
    auto record = std::make_unique<AcDbRegAppTableRecord>();
    bool added = record->setName(application) == Acad::eOk && table->add(record.get()) == Acad::eOk;
    if (added) record.release()->close();
    table->close();
    return added ? RTNORM : RTERROR;
}
