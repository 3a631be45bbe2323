// AcDbDatabase: its objects, handles and reactors, and the services of the running host. Header
// variables are in database_header.cpp, the filling of gaps in complete.cpp.
#include "host/db/database.h"

#include <algorithm>

#include "host/db/access.h"
#include "host/db/kept.h"
#include "host/os/text.h"

HOST_DEFINE_CLASS(AcDbDatabase, AcRxObject, L"")

namespace {

std::vector<AcDbDatabase*>& allDatabases() {
    static std::vector<AcDbDatabase*> all;
    return all;
}

// Handles at or above are a broken file's; none is given out there.
constexpr Adesk::UInt64 kHandleLimit = Adesk::UInt64(1) << 62;

} // namespace

const std::vector<AcDbDatabase*>& host::databases() { return allDatabases(); }

void host::registerDatabaseClasses() {
    static const bool once = [] {
        for (const AcRxClass* cls : {AcDbDatabase::desc(),
                                     AcDbObjectReactor::desc(),
                                     AcDbDatabaseReactor::desc(),
                                     AcDbEntity::desc(),
                                     AcDbBlockTableRecord::desc(),
                                     AcDbLayerTableRecord::desc(),
                                     AcDbLinetypeTableRecord::desc(),
                                     AcDbTextStyleTableRecord::desc(),
                                     AcDbViewportTableRecord::desc(),
                                     AcDbDimStyleTableRecord::desc(),
                                     AcDbViewTableRecord::desc(),
                                     AcDbUCSTableRecord::desc(),
                                     AcDbRegAppTableRecord::desc(),
                                     AcDbBlockBegin::desc(),
                                     AcDbBlockEnd::desc(),
                                     AcDbSequenceEnd::desc(),
                                     AcDbDictionaryWithDefault::desc(),
                                     AcDbXrecord::desc(),
                                     AcDbLayout::desc(),
                                     AcDbLayoutManager::desc()})
            (void)cls;
        host::setClassHierarchyListener([] {
            for (auto* database : host::databases()) reviveKeptObjects(*database);
        });
        return !AcDbDatabase::tableClasses().empty();
    }();
    (void)once;
}

const std::vector<const AcRxClass*>& AcDbDatabase::tableClasses() {
    static const std::vector<const AcRxClass*> classes{
        AcDbViewportTable::desc(),  AcDbLinetypeTable::desc(), AcDbLayerTable::desc(),
        AcDbTextStyleTable::desc(), AcDbViewTable::desc(),     AcDbUCSTable::desc(),
        AcDbRegAppTable::desc(),    AcDbDimStyleTable::desc(), AcDbBlockTable::desc()};
    return classes;
}

void buildNewDrawing(AcDbDatabase& database);

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool) : undo_(std::make_unique<host::UndoLog>(*this)) {
    host::registerDatabaseClasses();
    if (buildDefaultDrawing) {
        undo_->setRecording(false);
        buildNewDrawing(*this);
        undo_->setRecording(true);
        undo_->markSaved();
    }
    allDatabases().push_back(this);
}

AcDbDatabase::~AcDbDatabase() {
    host::ObjectAccess::tellDatabase(this, [this](auto& r) { r.goodbye(this); });
    for (const auto& cell : cells_)
        if (cell.object) host::ObjectAccess::sayGoodbye(*cell.object);
    std::erase(allDatabases(), this);
    auto* services = acdbHostApplicationServices();
    if (services->workingDatabase() == this) services->setWorkingDatabase(nullptr);
    undo_.reset();
    for (auto& cell : cells_) delete std::exchange(cell.object, nullptr);
}

// -- handles ------------------------------------------------------------------------------------------

host::IdCell*& AcDbDatabase::slot(Adesk::UInt64 handle) { return pages_[handle / kPage][handle % kPage]; }

host::IdCell* AcDbDatabase::newCell(Adesk::UInt64 handle) {
    host::IdCell& cell = cells_.emplace_back();
    cell.database = this;
    cell.handle = handle;
    return slot(handle) = &cell;
}

host::IdCell* AcDbDatabase::cellOf(Adesk::UInt64 handle, bool create) {
    const auto page = pages_.find(handle / kPage);
    host::IdCell* cell = page == pages_.end() ? nullptr : page->second[handle % kPage];
    return cell || !create || handle == 0 ? cell : newCell(handle);
}

// The next handle that nobody has and nobody refers to.
host::IdCell* AcDbDatabase::freshCell() {
    for (;; ++nextHandle_) {
        const host::IdCell* present = cellOf(nextHandle_, false);
        if (!present || (!present->object && present->undoStep == host::IdCell::kUndone))
            return newCell(nextHandle_++);
    }
}

void AcDbDatabase::raiseHandseed(Adesk::UInt64 atLeast) {
    if (atLeast < kHandleLimit) nextHandle_ = std::max(nextHandle_, atLeast);
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound,
                                                const AcDbHandle& handle) {
    id = AcDbObjectId(cellOf(handle, createIfNotFound));
    if (handle.isNull()) return Acad::eNullHandle;
    return id.isNull() ? Acad::eUnknownHandle : Acad::eOk;
}

// -- objects ------------------------------------------------------------------------------------------

void host::ObjectAccess::join(AcDbObject& object, IdCell* cell, AcDbObjectId owner) {
    object.cell_ = cell;
    object.owner_ = owner;
    cell->object = &object;
}

AcDbObjectId AcDbDatabase::place(std::unique_ptr<AcDbObject> object, Adesk::UInt64 handle,
                                 AcDbObjectId owner) {
    if (!object) return {};
    host::IdCell* cell = handle && handle < kHandleLimit ? cellOf(handle, true) : nullptr;
    if (cell && cell->object) cell = nullptr;
    if (cell)
        raiseHandseed(handle + 1);
    else
        cell = freshCell();
    AcDbObject* resident = object.release();
    host::ObjectAccess::join(*resident, cell, owner);
    resident->joined(*this);
    return AcDbObjectId(cell);
}

AcDbObjectId AcDbDatabase::append(AcDbObject* object, AcDbObjectId owner) {
    if (!object || object->database()) return {};
    undo_->willAppend();
    host::IdCell* cell = freshCell();
    host::ObjectAccess::join(*object, cell, owner);
    host::ObjectAccess::openNew(*object);
    undo_->appended(*object);
    object->joined(*this);
    return AcDbObjectId(cell);
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& id, AcDbObject* object) {
    id.setNull();
    if (!object) return Acad::eNullObjectPointer;
    if (object->database()) return Acad::eAlreadyInDb;
    id = append(object, object->ownerId());
    return Acad::eOk;
}

// -- tables -------------------------------------------------------------------------------------------

AcDbObjectId AcDbDatabase::tableId(const AcRxClass* tableClass) const {
    for (const auto& [cls, id] : tables_)
        if (cls == tableClass) return id;
    return {};
}

void AcDbDatabase::setTableId(const AcRxClass* tableClass, AcDbObjectId id) {
    for (auto& [cls, present] : tables_)
        if (cls == tableClass) return void(present = id);
    tables_.emplace_back(tableClass, id);
}

AcDbObjectId AcDbDatabase::ensureTable(const AcRxClass* tableClass) {
    if (const AcDbObjectId present = tableId(tableClass); !present.isNull()) return present;
    AcRxObject* made = tableClass->create();
    auto* table = AcDbSymbolTable::cast(made);
    if (!table) return delete made, AcDbObjectId();
    const AcDbObjectId id = place(std::unique_ptr<AcDbObject>(table), 0, {});
    setTableId(tableClass, id);
    return id;
}

AcDbObjectId AcDbDatabase::find(const AcRxClass* tableClass, const std::wstring& name) const {
    AcDbObjectId id;
    if (const auto* table = host::peek<AcDbSymbolTable>(tableId(tableClass))) table->getAt(name.c_str(), id);
    return id;
}

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode) {
    return acdbOpenObject(dictionary, namedObjects_, mode);
}

AcDbObjectId AcDbDatabase::modelSpaceId() const { return find(AcDbBlockTable::desc(), ACDB_MODEL_SPACE); }
AcDbObjectId AcDbDatabase::paperSpaceId() const { return find(AcDbBlockTable::desc(), ACDB_PAPER_SPACE); }
AcDbObjectId AcDbDatabase::currentSpaceId() const { return tilemode() ? modelSpaceId() : paperSpaceId(); }
AcDbObjectId AcDbDatabase::layerZero() const { return find(AcDbLayerTable::desc(), L"0"); }
AcDbObjectId AcDbDatabase::byLayerLinetype() const { return find(AcDbLinetypeTable::desc(), L"ByLayer"); }
AcDbObjectId AcDbDatabase::byBlockLinetype() const { return find(AcDbLinetypeTable::desc(), L"ByBlock"); }
AcDbObjectId AcDbDatabase::continuousLinetype() const {
    return find(AcDbLinetypeTable::desc(), L"Continuous");
}

std::map<AcDbObjectId, std::vector<AcDbObjectId>> AcDbDatabase::blockReferences() const {
    std::map<AcDbObjectId, std::vector<AcDbObjectId>> references;
    for (const auto& cell : cells_) {
        const auto* entity = AcDbEntity::cast(cell.object);
        if (!entity || entity->isErased()) continue;
        const AcDbObjectId block = entity->referencedBlock();
        // A dimension shows its block without being a reference to it.
        if (block.isNull() || entity->dxfName() != "INSERT") continue;
        references[block].push_back(entity->objectId());
    }
    for (auto& [block, ids] : references) std::sort(ids.begin(), ids.end());
    return references;
}

// -- reactors and services ----------------------------------------------------------------------------

Acad::ErrorStatus AcDbDatabase::addReactor(AcDbDatabaseReactor* reactor) const {
    if (!reactor) return Acad::eNullPtr;
    if (std::find(reactors_.begin(), reactors_.end(), reactor) != reactors_.end()) return Acad::eDuplicateKey;
    reactors_.push_back(reactor);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::removeReactor(AcDbDatabaseReactor* reactor) const {
    return std::erase(reactors_, reactor) ? Acad::eOk : Acad::eKeyNotFound;
}

AcDbHostApplicationServices* acdbHostApplicationServices() {
    static AcDbHostApplicationServices services;
    return &services;
}

AcDbLayoutManager* AcDbHostApplicationServices::layoutManager() const {
    static AcDbLayoutManager manager;
    return &manager;
}

// A name is the id's cell and its handle; the handle tells whether the cell still stands.
Acad::ErrorStatus acdbGetAdsName(ads_name name, AcDbObjectId id) {
    name[0] = id.asOldId();
    name[1] = std::int64_t(id.handle().value());
    return id.isNull() ? Acad::eNullObjectId : Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
    id.setNull();
    for (auto* database : host::databases()) {
        const AcDbObjectId known(database->cellOf(Adesk::UInt64(name[1]), false));
        if (!known.isNull() && known.asOldId() == name[0]) return id = known, Acad::eOk;
    }
    return Acad::eInvalidInput;
}

int acdbHandEnt(const ACHAR* handle, ads_name name) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    const AcDbObjectId id(database ? database->cellOf(AcDbHandle(handle), false) : nullptr);
    if (!id.isValid()) return RTERROR;
    acdbGetAdsName(name, id);
    return RTNORM;
}
