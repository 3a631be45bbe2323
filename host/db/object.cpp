// AcDbObject: opening, closing, changing, erasing, and the notifications that go with them. Xdata
// is in object_xdata.cpp, listeners and ties in object_ties.cpp, filing in object_filing.cpp.
#include "host/db/object.h"

#include "host/db/access.h"
#include "host/db/entity.h"

HOST_DEFINE_ABSTRACT_CLASS(AcDbObject, AcRxObject)

namespace {
constexpr Adesk::UInt16 kMaxReaders = 256;
}

AcDbObject::~AcDbObject() {
    if (cell_ && cell_->object == this) cell_->object = nullptr;
    if (listeners_) host::ObjectAccess::sayGoodbye(*this);
}

AcDbObject::AcDbObject(const AcDbObject& from)
    : AcRxObject(from), owner_(from.owner_),
      tail_(from.tail_ ? std::make_unique<host::ObjectTail>(*from.tail_) : nullptr) {}

AcDbObject& AcDbObject::operator=(const AcDbObject& from) {
    if (this == &from) return *this;
    owner_ = from.owner_;
    tail_ = from.tail_ ? std::make_unique<host::ObjectTail>(*from.tail_) : nullptr;
    return *this;
}

// -- opening ------------------------------------------------------------------------------------------

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    object = nullptr;
    if (id.isNull()) return Acad::eNullObjectId;
    AcDbObject* resident = id.cell()->object;
    if (!resident) return Acad::eUnknownHandle;
    const auto es = host::ObjectAccess::open(*resident, mode, openErased);
    if (es == Acad::eOk) object = resident;
    return es;
}

Acad::ErrorStatus host::ObjectAccess::open(AcDbObject& o, AcDb::OpenMode mode, bool openErased) {
    if (o.erased_ && !openErased) return Acad::eWasErased;
    if (mode == AcDb::kForNotify) return ++o.notifies_, Acad::eOk;
    if (o.writing_) return Acad::eWasOpenForWrite;
    if (o.notifies_) return Acad::eWasOpenForNotify;
    if (mode == AcDb::kForRead) {
        if (o.readers_ >= kMaxReaders) return Acad::eAtMaxReaders;
        return ++o.readers_, Acad::eOk;
    }
    if (o.notifying_) return Acad::eWasNotifying;
    if (o.readers_) return Acad::eWasOpenForRead;
    o.writing_ = true;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::close() {
    if (!cell_) return Acad::eOk;
    if (notifies_) {
        if (upgraded_) host::ObjectAccess::endWrite(*this, false);
        return --notifies_, Acad::eOk;
    }
    if (writing_) return host::ObjectAccess::endWrite(*this, false), Acad::eOk;
    if (readers_) return --readers_, Acad::eOk;
    return Acad::eInvalidOpenState;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
    if (!cell_) return Acad::eOk;
    if (notifying_) return Acad::eWasNotifying;
    if (writing_) return Acad::eWasOpenForWrite;
    if (notifies_) return Acad::eWasOpenForNotify;
    if (readers_ == 0) return Acad::eNotOpenForRead;
    if (readers_ > 1) return Acad::eWasOpenForRead;
    readers_ = 0;
    writing_ = true;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
    if (!cell_) return Acad::eOk;
    if (!writing_) return readers_ ? Acad::eWasOpenForRead : Acad::eNotOpenForWrite;
    if (notifying_) return Acad::eWasNotifying;
    if (notifies_) return Acad::eWasOpenForNotify;
    host::ObjectAccess::endWrite(*this, true);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::upgradeFromNotify(Adesk::Boolean& wasWritable) {
    wasWritable = isWriteEnabled();
    if (wasWritable) return Acad::eOk;
    if (!notifies_) return Acad::eInvalidOpenState;
    if (notifying_) return Acad::eWasNotifying;
    if (readers_) return Acad::eWasOpenForRead;
    if (notifies_ > 1) return Acad::eWasOpenForNotify;
    writing_ = upgraded_ = true;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeToNotify(Adesk::Boolean wasWritable) {
    if (!cell_ || wasWritable) return Acad::eOk;
    if (!upgraded_) return Acad::eNotOpenForWrite;
    host::ObjectAccess::endWrite(*this, false);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::cancel() {
    if (!cell_) return Acad::eOk;
    if (!writing_ || notifies_) return close();
    if (notifying_) return Acad::eWasNotifying;
    const bool changed = touched_ || isNew_;
    const bool canGoBack = firstOfStep_ && !isNew_ && !eraseToggled_;
    if (changed && !(canGoBack && database()->undoLog().takeBack(*this))) return Acad::eNotApplicable;
    const bool told = touched_;
    writing_ = touched_ = recorded_ = firstOfStep_ = xdataTouched_ = false;
    if (!told) return Acad::eOk;
    notifying_ = true;
    host::ObjectAccess::tell(*this, [this](auto& r) { r.cancelled(this); });
    notifying_ = false;
    return Acad::eOk;
}

// -- changing -----------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbObject::assertWriteEnabled(Adesk::Boolean autoUndo, Adesk::Boolean) {
    if (!cell_ || (touched_ && (recorded_ || !autoUndo))) return Acad::eOk;
    return firstChange(autoUndo);
}

Acad::ErrorStatus AcDbObject::firstChange(bool record) {
    if (undoing_) return Acad::eOk; // its own data are being put back
    if (!writing_) return Acad::eNotOpenForWrite;
    if (notifying_ || database()->undoLog().replaying()) return Acad::eWasNotifying;
    if (record && !recorded_) {
        firstOfStep_ = database()->undoLog().willModify(*this);
        recorded_ = true;
    }
    if (touched_) return Acad::eOk;
    touched_ = true;
    notifying_ = true;
    host::ObjectAccess::tell(*this, [this](auto& r) { r.openedForModify(this); });
    host::ObjectAccess::tellDatabase(database(),
                                     [this](auto& r) { r.objectOpenedForModify(database(), this); });
    notifying_ = false;
    return Acad::eOk;
}

namespace {

struct Happened {
    bool appended, modified, xdata, erasure;
};

void announce(const AcDbObject& object, const Happened& happened) {
    using host::ObjectAccess;
    const AcDbObject* subject = &object;
    const AcDbDatabase* database = object.database();
    const bool erased = object.isErased();
    if (happened.appended)
        ObjectAccess::tellDatabase(object.database(), [&](auto& r) { r.objectAppended(database, subject); });
    if (happened.modified) {
        ObjectAccess::tell(object, [&](auto& r) { r.modified(subject); });
        ObjectAccess::tellDatabase(object.database(), [&](auto& r) { r.objectModified(database, subject); });
    }
    if (happened.xdata) ObjectAccess::tell(object, [&](auto& r) { r.modifiedXData(subject); });
    if (happened.erasure) {
        ObjectAccess::tell(object, [&](auto& r) { r.erased(subject, erased); });
        ObjectAccess::tellDatabase(object.database(),
                                   [&](auto& r) { r.objectErased(database, subject, erased); });
    }
    if (const auto* whole = host::peek<AcDbEntity>(object.ownerId()))
        ObjectAccess::tell(*whole, [&](auto& r) { r.subObjModified(whole, subject); });
}

} // namespace

// While the listeners are told, the object counts as open for read by one.
void host::ObjectAccess::endWrite(AcDbObject& o, bool keepRead) {
    const Happened happened{o.isNew_, o.touched_, o.xdataTouched_, o.eraseToggled_};
    o.writing_ = o.upgraded_ = o.isNew_ = o.touched_ = o.recorded_ = false;
    o.firstOfStep_ = o.xdataTouched_ = o.eraseToggled_ = false;
    o.readers_ = 1;
    if (happened.appended || happened.modified) {
        o.notifying_ = true;
        announce(o, happened);
        o.notifying_ = false;
    }
    if (keepRead) return;
    --o.readers_;
    if (!happened.appended && !happened.modified) return;
    const AcDbObjectId id = o.objectId();
    tell(o, [id](auto& r) { r.objectClosed(id); });
}

// -- erasing ------------------------------------------------------------------------------------------

namespace {
// Erases or brings back what belongs to an object, also where somebody reads it just now.
void eraseBelonging(AcDbObjectId id, bool erasing) {
    AcDbObject* object = host::ObjectAccess::object(id);
    if (!object || object->isErased() == erasing) return;
    const bool opened = !object->isWriteEnabled();
    if (opened && acdbOpenAcDbObject(object, id, AcDb::kForWrite, true) != Acad::eOk) {
        object = host::ObjectAccess::object(id);
        object->database()->undoLog().willErase(*object);
        host::ObjectAccess::setErased(*object, erasing);
        return;
    }
    object->erase(erasing);
    if (opened) object->close();
}
} // namespace

Acad::ErrorStatus AcDbObject::erase(Adesk::Boolean erasing) {
    if (!cell_) return Acad::eNotInDatabase;
    if (erased_ == erasing) return erasing ? Acad::eWasErased : Acad::eOk;
    if (auto es = assertWriteEnabled(false); es != Acad::eOk) return es;
    database()->undoLog().willErase(*this);
    erased_ = erasing;
    eraseToggled_ = !eraseToggled_;
    std::vector<AcDbObjectId> belonging;
    ownedParts(belonging);
    if (tail_ && !tail_->extensionDictionary.isNull()) belonging.push_back(tail_->extensionDictionary);
    for (auto id : belonging) eraseBelonging(id, erasing);
    subErase(erasing);
    return Acad::eOk;
}

void AcDbObject::subErase(Adesk::Boolean) {}
