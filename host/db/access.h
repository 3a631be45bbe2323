// The database's own way into its objects: opens, joins, erases and restores them without the
// doors that everybody else goes through. Only the sources of this room include it.
#pragma once
#include "host/db/database.h"
#include "host/db/object.h"

namespace host {

class ObjectAccess {
public:
    static Acad::ErrorStatus open(AcDbObject& object, AcDb::OpenMode mode, bool openErased);
    // Ends an open for write, telling what happened; leaves one reader when `keepRead` is set.
    static void endWrite(AcDbObject& object, bool keepRead);

    static void join(AcDbObject& object, IdCell* cell, AcDbObjectId owner);
    static void openNew(AcDbObject& object) { object.writing_ = true, object.isNew_ = true; }
    static void setOwner(AcDbObject& object, AcDbObjectId owner) { object.owner_ = owner; }
    static void setErased(AcDbObject& object, bool erased) { object.erased_ = erased; }
    static void setUndoing(AcDbObject& object, bool undoing) { object.undoing_ = undoing; }
    static bool isOpen(const AcDbObject& o) { return o.readers_ || o.notifies_ || o.writing_; }
    // Data of a snapshot into the object, past the checks of its setters.
    static void restore(AcDbObject& object, const AcDbObject& from);
    // What the host's own classes hold for every object and every entity: owner, xdata, layer and so on.
    static void copyBase(AcDbObject& to, const AcDbObject& from);
    // `in` takes the place of `out` behind the id, with its listeners and its erasure; `out` is nobody's.
    static void exchange(AcDbObject& out, AcDbObject& in);
    // The same for objects that don't stand in the drawing just now, as the undo log holds them.
    static void exchangeAbsent(AcDbObject& out, AcDbObject& in);
    // Puts a copy's ties aside: owner, reactors and extension dictionary.
    static void untie(AcDbObject& copy);
    static void sayGoodbye(AcDbObject& object);

    template <class Call> static void tell(const AcDbObject& object, Call call);
    template <class Call> static void tellDatabase(AcDbDatabase* database, Call call);
    static AcDbObject* object(AcDbObjectId id) { return id.cell() ? id.cell()->object : nullptr; }
};

// Listeners may add and remove listeners while they are told: a copy is walked, the removed are skipped.
template <class Call> void ObjectAccess::tell(const AcDbObject& object, Call call) {
    if (object.listeners_ && !object.listeners_->empty())
        for (const auto listeners = *object.listeners_; auto* listener : listeners)
            if (object.hasReactor(listener)) call(*listener);
    if (!object.tail_ || object.tail_->persistentReactors.empty()) return;
    for (const auto reactors = object.tail_->persistentReactors; auto id : reactors) {
        AcDbObject* reactor = nullptr;
        if (!object.isPersistentReactor(id) || acdbOpenAcDbObject(reactor, id, AcDb::kForNotify) != Acad::eOk)
            continue;
        call(*reactor);
        reactor->close();
    }
}

template <class Call> void ObjectAccess::tellDatabase(AcDbDatabase* database, Call call) {
    if (!database || database->reactors().empty()) return;
    const auto reactors = database->reactors();
    for (auto* reactor : reactors) {
        const auto& present = database->reactors();
        if (std::find(present.begin(), present.end(), reactor) != present.end()) call(*reactor);
    }
}

// The object behind an id when it is of class T, else null; nobody opens anything.
template <class T> T* peek(AcDbObjectId id) { return T::cast(ObjectAccess::object(id)); }

} // namespace host
