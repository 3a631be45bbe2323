// How objects of modules' classes come to life and become kept data again, as the classes come and
// go; and how such an object reads its own state.
#include <algorithm>

#include "host/db/access.h"
#include "host/db/capture.h"
#include "host/db/filed.h"
#include "host/db/kept.h"
#include "host/os/text.h"

namespace host {

AcDbObjectId DrawingContext::id(std::uint64_t handle) {
    return database && handle ? AcDbObjectId(database->cellOf(handle, true)) : AcDbObjectId();
}
AcDbObjectId DrawingContext::layer(std::string_view name) {
    return database ? database->find(AcDbLayerTable::desc(), wide(name)) : AcDbObjectId();
}
AcDbObjectId DrawingContext::linetype(std::string_view name) {
    return database ? database->find(AcDbLinetypeTable::desc(), wide(name)) : AcDbObjectId();
}
AcDbObjectId DrawingContext::textStyle(std::string_view name) {
    return database ? database->find(AcDbTextStyleTable::desc(), wide(name)) : AcDbObjectId();
}
AcDbObjectId DrawingContext::block(std::string_view name) {
    return database ? database->find(AcDbBlockTable::desc(), wide(name)) : AcDbObjectId();
}

namespace {

const GroupList* keptGroups(const AcDbObject& object) {
    if (const auto* kept = dynamic_cast<const KeptObject*>(&object)) return &kept->groups();
    if (const auto* kept = dynamic_cast<const KeptEntity*>(&object)) return &kept->groups();
    return nullptr;
}

AcDbDatabase* drawingOf(const AcDbObject& object, const AcDbObject& other) {
    if (object.database()) return object.database();
    return other.database() ? other.database() : object.ownerId().database();
}

Acad::ErrorStatus readFields(AcDbObject& object, const AcDbObject& from) {
    if (const auto* filed = dynamic_cast<const FiledData*>(&from)) {
        MemoryFiler filer = filed->filer;
        filer.rewind();
        return object.dwgInFields(&filer);
    }
    const GroupList* groups = keptGroups(from);
    if (!groups) return Acad::eOk;
    DrawingContext context(drawingOf(object, from));
    GroupListFiler filer(*groups, context);
    return object.dxfInFields(&filer);
}

bool isRemoved(const AcRxClass* cls) { return cls->isCustom() && acrxFindAcRxClass(cls->name()) != cls; }

std::unique_ptr<AcDbObject> fresh(const AcRxClass* cls) {
    AcRxObject* made = cls->create();
    if (AcDbObject* object = AcDbObject::cast(made)) return std::unique_ptr<AcDbObject>(object);
    delete made;
    return nullptr;
}

// The object that kept data stand for, or null when no module knows the kind or can read them.
std::unique_ptr<AcDbObject> living(const AcDbObject& kept) {
    const AcRxClass* cls = findClassByDxfName(kept.dxfName());
    if (!cls || !cls->isCustom() || !keptGroups(kept)) return nullptr;
    auto object = fresh(cls);
    const bool entity = AcDbEntity::cast(&kept) != nullptr;
    if (!object || (AcDbEntity::cast(object.get()) != nullptr) != entity) return nullptr;
    ObjectAccess::copyBase(*object, kept);
    return readFields(*object, kept) == Acad::eOk ? std::move(object) : nullptr;
}

// The data of an object whose class is going.
std::unique_ptr<AcDbObject> keptForm(const AcDbObject& object, const AcRxClass* cls) {
    const std::string name = utf8(cls->dxfName());
    CapturingWriter writer;
    writer.database = object.database();
    GroupWriterFiler filer(writer);
    object.dxfOutFields(&filer);
    auto finish = [&](auto kept) -> std::unique_ptr<AcDbObject> {
        ObjectAccess::copyBase(*kept, object);
        kept->setGroups(std::move(writer.groups));
        return kept;
    };
    if (AcDbEntity::cast(&object)) return finish(std::make_unique<KeptEntity>(name));
    return finish(std::make_unique<KeptObject>(name));
}

// Files must go on naming the class of data that nobody understands any more.
void rememberClass(AcDbDatabase& database, const AcRxClass* cls) {
    auto& rows = database.fileClasses();
    const std::string name = utf8(cls->dxfName());
    if (std::any_of(rows.begin(), rows.end(), [&](const FileClass& row) { return row.dxfName == name; }))
        return;
    rows.push_back({name, utf8(cls->name()), utf8(cls->appName()), cls->proxyFlags(), 0, false,
                    cls->isDerivedFrom(AcDbEntity::desc())});
}

// The same for what the undo log holds. Earlier states stay data, which objects of either form can take;
// whole objects that are absent just now change their form, too.
void exchangeHeld(std::unique_ptr<AcDbObject>& held) {
    if (const auto* filed = dynamic_cast<const FiledData*>(held.get())) {
        if (!isRemoved(filed->cls)) return;
        auto object = fresh(filed->cls);
        if (!object) return;
        ObjectAccess::restore(*object, *held);
        held = keptForm(*object, filed->cls);
    } else if (held && isRemoved(held->isA())) {
        auto kept = keptForm(*held, held->isA());
        ObjectAccess::exchangeAbsent(*held, *kept);
        held = std::move(kept);
    } else if (held && !held->objectId().isNull() && !held->isA()->isCustom()) {
        auto object = living(*held);
        if (!object) return;
        ObjectAccess::exchangeAbsent(*held, *object);
        held = std::move(object);
    }
}

} // namespace

void takeFields(AcDbObject& object, const AcDbObject& from) {
    if (object.isA()->isCustom()) readFields(object, from);
}

void reviveKeptObjects(AcDbDatabase& database) {
    database.undoLog().forEachHeld(exchangeHeld);
    // Reading groups may make cells, which join at the end.
    for (size_t i = 0; i < database.cells().size(); ++i) {
        AcDbObject* object = database.cells()[i].object;
        if (!object || ObjectAccess::isOpen(*object)) continue;
        const AcRxClass* cls = object->isA();
        std::unique_ptr<AcDbObject> next;
        if (isRemoved(cls))
            next = keptForm(*object, cls), rememberClass(database, cls);
        else if (!cls->isCustom() && keptGroups(*object))
            next = living(*object);
        if (!next) continue;
        ObjectAccess::exchange(*object, *next);
        delete object;
        next.release()->joined(database);
    }
}

} // namespace host
