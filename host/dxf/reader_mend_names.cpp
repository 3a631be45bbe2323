// What recovery puts right between objects: names that are there twice, objects that nobody owns, and
// applications that aren't registered. Each is noted.
#include "host/dxf/reader.h"
#include "host/dxf/values.h"
#include "host/os/text.h"

namespace host::dxf {
namespace {

constexpr const wchar_t* kOrphanage = L"RECOVERED_OBJECTS"; // the dictionary of what nobody owned

// The name with the first number behind it that makes it new.
template <class IsTaken> std::wstring freeName(const std::wstring& name, IsTaken isTaken) {
    for (int number = 1;; ++number)
        if (std::wstring made = name + L"$" + std::to_wstring(number); !isTaken(made)) return made;
}

} // namespace

void DrawingReader::mendName(AcDbObject& object) {
    if (auto* dictionary = AcDbDictionary::cast(&object)) return mendEntries(*dictionary);
    auto* record = AcDbSymbolTableRecord::cast(&object);
    const auto* table = record ? behind<AcDbSymbolTable>(record->ownerId()) : nullptr;
    if (!table) return;
    const std::wstring name = record->name(), lawful = lawfulName(name);
    const auto isTaken = [&](const std::wstring& one) { return table->has(one.c_str()); };
    const std::wstring made = lawful == name || isTaken(lawful) ? freeName(lawful, isTaken) : lawful;
    AcDbObjectPointer<AcDbSymbolTableRecord> opened(object.objectId(), AcDb::kForWrite);
    if (!opened || opened->setName(made.c_str()) != Acad::eOk) return;
    const char* fault = lawful == name ? " was there twice; the second" : " holds what no name may hold; it";
    note("the name " + utf8(name) + fault + " is called " + utf8(made) + " now", true);
}

void DrawingReader::mendEntries(AcDbDictionary& dictionary) {
    std::map<std::wstring, AcDbObjectId> seen; // by the key folded
    for (const AcDbDictionary::Entry& entry : std::vector(dictionary.entries())) {
        const auto [first, isNew] = seen.try_emplace(lower(entry.key), entry.id);
        if (isNew || entry.id.isErased()) continue;
        AcDbObjectPointer<AcDbDictionary> opened(dictionary.objectId(), AcDb::kForWrite);
        if (!opened || opened->remove(entry.id) != Acad::eOk) continue;
        if (first->second == entry.id) {
            note("the entry " + utf8(entry.key) + " was there twice; one was taken out", true);
            continue;
        }
        const std::wstring made =
            freeName(entry.key, [&](const std::wstring& key) { return dictionary.has(key.c_str()); });
        opened->adopt(made, entry.id, entry.hard);
        note("the entry " + utf8(entry.key) + " was there twice; the second is called " + utf8(made) + " now",
             true);
    }
}

// To the dictionary that lists the object or the object whose extension it is; else into a dictionary of
// its own kind, so that nothing is lost.
void DrawingReader::mendOwner(AcDbObject& object) {
    if (AcDbEntity::cast(&object)) return;
    if (listers_.empty()) gatherListers();
    AcDbObjectId owner = listers_[object.objectId()];
    AcDbObjectPointer<AcDbObject> opened(object.objectId(), AcDb::kForWrite);
    if (!opened) return;
    if (!owner.isNull()) {
        opened->setOwnerId(owner);
        return note("its owner was missing; it belongs to " + utf8(owner.handle().ascii()) + " now", true);
    }
    owner = orphanage();
    const std::wstring key = object.objectId().handle().ascii();
    AcDbObjectPointer<AcDbDictionary> dictionary(owner, AcDb::kForWrite);
    if (!dictionary) return;
    dictionary->adopt(key, object.objectId());
    opened->setOwnerId(owner);
    note("it had no owner; it stands in the dictionary " + utf8(kOrphanage) + " now", true);
}

void DrawingReader::gatherListers() {
    for (const IdCell& cell : database->cells()) {
        if (!cell.object || cell.object->isErased()) continue;
        if (const auto* dictionary = AcDbDictionary::cast(cell.object))
            for (const AcDbDictionary::Entry& entry : dictionary->entries())
                listers_.try_emplace(entry.id, cell.object->objectId());
        if (const ObjectTail* tail = cell.object->tail(); tail && !tail->extensionDictionary.isNull())
            listers_.try_emplace(tail->extensionDictionary, cell.object->objectId());
    }
}

AcDbObjectId DrawingReader::orphanage() {
    const AcDbObjectId rootId = database->namedObjectsDictionaryId();
    AcDbObjectPointer<AcDbDictionary> root(rootId, AcDb::kForWrite);
    AcDbObjectId id;
    if (!root || root->getAt(kOrphanage, id) == Acad::eOk) return id;
    id = database->place(std::make_unique<AcDbDictionary>(), 0, rootId);
    root->adopt(kOrphanage, id);
    return id;
}

void DrawingReader::registerApplications(AcDbObject& object) {
    for (const Group group : object.tail() ? object.tail()->xdata : GroupList()) {
        if (group.code != 1001 || !database->find(AcDbRegAppTable::desc(), group.wide()).isNull()) continue;
        auto made = std::make_unique<AcDbRegAppTableRecord>();
        made->setName(group.wide().c_str());
        AcDbSymbolTable& table = *behind<AcDbSymbolTable>(database->ensureTable(AcDbRegAppTable::desc()));
        table.adopt(database->place(std::move(made), 0, table.objectId()), group.wide());
        note("the application " + std::string(group.text) + " of its xdata wasn't registered; it is now",
             true);
    }
}

} // namespace host::dxf
