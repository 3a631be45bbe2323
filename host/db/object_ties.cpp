// AcDbObject: who listens to an object, its extension dictionary, and the exchange of one object
// for another behind an id.
#include <algorithm>

#include "host/db/access.h"
#include "host/db/dictionary.h"
#include "host/db/entity.h"
#include "host/db/reactor.h"

HOST_DEFINE_CLASS(AcDbObjectReactor, AcRxObject, L"")
HOST_DEFINE_CLASS(AcDbDatabaseReactor, AcRxObject, L"")

void AcDbObject::openedForModify(const AcDbObject*) {}
void AcDbObject::modified(const AcDbObject*) {}
void AcDbObject::erased(const AcDbObject*, Adesk::Boolean) {}
void AcDbObject::copied(const AcDbObject*, const AcDbObject*) {}
void AcDbObject::goodbye(const AcDbObject*) {}
void AcDbObject::cancelled(const AcDbObject*) {}
void AcDbObject::modifyUndone(const AcDbObject*) {}
void AcDbObject::modifiedXData(const AcDbObject*) {}
void AcDbObject::unappended(const AcDbObject*) {}
void AcDbObject::reappended(const AcDbObject*) {}
void AcDbObject::subObjModified(const AcDbObject*, const AcDbObject*) {}
void AcDbObject::objectClosed(const AcDbObjectId) {}

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId owner) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    owner_ = owner;
    return Acad::eOk;
}

// -- listeners ----------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbObject::addReactor(AcDbObjectReactor* reactor) const {
    if (!reactor) return Acad::eNullPtr;
    if (!listeners_) listeners_ = std::make_unique<std::vector<AcDbObjectReactor*>>();
    if (hasReactor(reactor)) return Acad::eDuplicateKey;
    listeners_->push_back(reactor);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::removeReactor(AcDbObjectReactor* reactor) const {
    if (!hasReactor(reactor)) return Acad::eKeyNotFound;
    std::erase(*listeners_, reactor);
    return Acad::eOk;
}

bool AcDbObject::hasReactor(const AcDbObjectReactor* reactor) const {
    return listeners_ && std::find(listeners_->begin(), listeners_->end(), reactor) != listeners_->end();
}

std::vector<AcDbObjectReactor*> AcDbObject::transientReactors() const {
    return listeners_ ? *listeners_ : std::vector<AcDbObjectReactor*>();
}

const std::vector<AcDbObjectId>& AcDbObject::persistentReactors() const {
    static const std::vector<AcDbObjectId> none;
    return tail_ ? tail_->persistentReactors : none;
}

Adesk::Boolean AcDbObject::isPersistentReactor(AcDbObjectId id) const {
    const auto& reactors = persistentReactors();
    return std::find(reactors.begin(), reactors.end(), id) != reactors.end();
}

Acad::ErrorStatus AcDbObject::addPersistentReactor(AcDbObjectId reactor) {
    if (reactor.isNull()) return Acad::eNullObjectId;
    if (isPersistentReactor(reactor)) return Acad::eDuplicateKey;
    if (auto es = willModify(); es != Acad::eOk) return es;
    tailForWrite().persistentReactors.push_back(reactor);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::removePersistentReactor(AcDbObjectId reactor) {
    if (!isPersistentReactor(reactor)) return Acad::eKeyNotFound;
    if (auto es = willModify(); es != Acad::eOk) return es;
    std::erase(tail_->persistentReactors, reactor);
    return Acad::eOk;
}

host::ObjectTail& AcDbObject::tailForWrite() {
    if (!tail_) tail_ = std::make_unique<host::ObjectTail>();
    return *tail_;
}

void host::ObjectAccess::sayGoodbye(AcDbObject& object) {
    if (!object.listeners_) return;
    const auto listeners = std::exchange(*object.listeners_, {});
    for (auto* listener : listeners) listener->goodbye(&object);
}

// -- extension dictionary -----------------------------------------------------------------------------

AcDbObjectId AcDbObject::extensionDictionary() const {
    const AcDbObjectId id = tail_ ? tail_->extensionDictionary : AcDbObjectId();
    return id.isErased() ? AcDbObjectId() : id;
}

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
    if (!cell_) return Acad::eNotInDatabase;
    if (!extensionDictionary().isNull()) return Acad::eAlreadyInDb;
    if (auto es = willModify(); es != Acad::eOk) return es;
    auto* dictionary = new AcDbDictionary;
    dictionary->setTreatElementsAsHard(true);
    tailForWrite().extensionDictionary = database()->append(dictionary, objectId());
    return dictionary->close();
}

// Only an empty dictionary goes.
Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
    const AcDbObjectId id = extensionDictionary();
    if (id.isNull()) return Acad::eKeyNotFound;
    AcDbDictionary* dictionary = nullptr;
    if (auto es = acdbOpenObject(dictionary, id, AcDb::kForWrite); es != Acad::eOk) return es;
    auto es = dictionary->numEntries() ? Acad::eContainerNotEmpty : willModify();
    if (es == Acad::eOk) {
        dictionary->erase();
        tail_->extensionDictionary.setNull();
    }
    dictionary->close();
    return es;
}

// -- exchange -----------------------------------------------------------------------------------------

void host::ObjectAccess::exchangeAbsent(AcDbObject& out, AcDbObject& in) {
    in.cell_ = std::exchange(out.cell_, nullptr);
    in.erased_ = out.erased_;
    in.listeners_ = std::move(out.listeners_);
}

void host::ObjectAccess::exchange(AcDbObject& out, AcDbObject& in) {
    exchangeAbsent(out, in);
    in.cell_->object = &in;
    out.readers_ = out.notifies_ = 0;
    out.writing_ = out.upgraded_ = out.touched_ = out.recorded_ = false;
    out.isNew_ = out.xdataTouched_ = out.eraseToggled_ = out.notifying_ = false;
}

Acad::ErrorStatus AcDbObject::handOverTo(AcDbObject* replacement, Adesk::Boolean keepXData,
                                         Adesk::Boolean keepExtDict) {
    if (!replacement) return Acad::eNullObjectPointer;
    if (replacement == this) return Acad::eSelfReference;
    if (!cell_) return Acad::eNotInDatabase;
    if (replacement->cell_) return Acad::eAlreadyInDb;
    if (AcDbEntity::cast(this) && !AcDbEntity::cast(replacement)) return Acad::eIllegalEntityType;
    if (auto es = willModify(); es != Acad::eOk) return es;
    replacement->owner_ = owner_;
    if (tail_) {
        auto& tail = replacement->tailForWrite();
        tail.persistentReactors = tail_->persistentReactors;
        if (keepXData) tail.xdata = tail_->xdata;
        if (keepExtDict) tail.extensionDictionary = tail_->extensionDictionary;
    }
    AcDbDatabase* drawing = database();
    if (auto& log = drawing->undoLog(); log.recording()) {
        auto former = snapshot();
        if (isA()->isCustom()) {
            std::unique_ptr<AcDbObject> live(AcDbObject::cast(isA()->create()));
            if (live) host::ObjectAccess::restore(*live, *former);
            former = std::move(live);
        }
        if (former) log.replaced(objectId(), std::move(former));
    }
    host::ObjectAccess::exchange(*this, *replacement);
    owner_.setNull();
    replacement->writing_ = replacement->touched_ = replacement->recorded_ = true;
    replacement->joined(*drawing);
    return Acad::eOk;
}
