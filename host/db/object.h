// AcDbObject: what every resident of a drawing can do. Opening and closing, ownership, erasing,
// xdata, extension dictionary, reactors, and the hooks by which undo and files see its data.
//
// For the writer of a built-in class: data are plain members; every setter begins with
//     if (auto es = willModify(); es != Acad::eOk) return es;
// HOST_DB_CLASS in the class body gives snapshots for undo, clone and copy from the compiler's
// copy; inGroup and outGroups are the class's form in drawing files.
#pragma once
#include <memory>
#include <vector>

#include "host/db/adesk.h"
#include "host/db/groups.h"
#include "host/db/objectid.h"
#include "host/db/resbuf.h"
#include "host/db/rx.h"

class AcDbDatabase;
class AcDbDwgFiler;
class AcDbDxfFiler;
class AcDbObjectReactor;

namespace host {
class ObjectAccess; // the database's own way in
struct ReadExtras;

// What few objects have: xdata, reactors, an extension dictionary, groups of no known meaning.
struct ObjectTail {
    GroupList xdata; // 1001 groups and what follows each, in order of registration with the object
    std::vector<AcDbObjectId> persistentReactors;
    AcDbObjectId extensionDictionary;
    GroupList kept; // unknown groups, behind the subclass markers (100) they stood behind
};
} // namespace host

class AcDbObject : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcDbObject)
public:
    ~AcDbObject() override;
    AcDbObject& operator=(AcDbObject&&) = delete;

    AcDbObjectId objectId() const { return AcDbObjectId(cell_); }
    AcDbObjectId id() const { return objectId(); }
    AcDbObjectId ownerId() const { return owner_; }
    // Does not add the object to its new owner's list; files and undo use it.
    virtual Acad::ErrorStatus setOwnerId(AcDbObjectId owner);
    void getAcDbHandle(AcDbHandle& handle) const { handle = objectId().handle(); }
    AcDbDatabase* database() const { return cell_ ? cell_->database : nullptr; }

    // Closing ends an open; the first close after a change tells the reactors. eInvalidOpenState
    // when the object isn't open, eOk for objects outside any drawing.
    Acad::ErrorStatus close();
    // From read to write; fails with eWasOpenForRead when others read it, eWasNotifying inside a
    // notification.
    Acad::ErrorStatus upgradeOpen();
    Acad::ErrorStatus downgradeOpen();
    Acad::ErrorStatus upgradeFromNotify(Adesk::Boolean& wasWritable);
    Acad::ErrorStatus downgradeToNotify(Adesk::Boolean wasWritable);
    // Ends an open and takes back what it changed, without telling `modified`. eNotApplicable, and still
    // open, when the same undo step had changed the object before, or undo isn't recording.
    Acad::ErrorStatus cancel();
    // Marks the object erased, or takes the mark away. Needs the object open for write.
    Acad::ErrorStatus erase(Adesk::Boolean erasing = true);
    // Puts `replacement` under this object's id and handle; this one leaves the drawing and belongs
    // to the caller afterwards. Both must be of the same owner kind.
    Acad::ErrorStatus handOverTo(AcDbObject* replacement, Adesk::Boolean keepXData = true,
                                 Adesk::Boolean keepExtDict = true);

    Adesk::Boolean isReadEnabled() const { return !cell_ || readers_ > 0 || notifies_ > 0 || writing_; }
    Adesk::Boolean isWriteEnabled() const { return !cell_ || writing_; }
    Adesk::Boolean isNotifyEnabled() const { return notifies_ > 0; }
    Adesk::Boolean isModified() const { return touched_; }
    Adesk::Boolean isErased() const { return erased_; }
    Adesk::Boolean isEraseStatusToggled() const { return eraseToggled_; }
    Adesk::Boolean isNewObject() const { return isNew_; }
    Adesk::Boolean isNotifying() const { return notifying_; }
    Adesk::Boolean isUndoing() const { return undoing_; }
    Adesk::Boolean isPersistentReactor(AcDbObjectId id) const;

    void assertReadEnabled() const {}
    // Records the state for undo and tells the reactors that a change is coming. Outside an open
    // for write it changes nothing, and the setter that asked returns eNotOpenForWrite.
    Acad::ErrorStatus assertWriteEnabled(Adesk::Boolean autoUndo = true,
                                         Adesk::Boolean recordModified = true);
    void assertNotifyEnabled() const {}

    // Xdata of one registered application, or of all for null; a chain that the caller releases with
    // acutRelRb, null when there is none.
    resbuf* xData(const ACHAR* application = nullptr) const;
    // Replaces the xdata of each application named by a 1001 group; an application with nothing
    // behind its name loses its data. eRegappIdNotFound for unregistered names,
    // eXdataSizeExceeded beyond 16 383 bytes in all, eInvalidInput for groups that xdata can't hold.
    Acad::ErrorStatus setXData(const resbuf* xdata);
    // Bytes still free for xdata.
    int xDataSizeLeft() const;

    AcDbObjectId extensionDictionary() const;
    Acad::ErrorStatus createExtensionDictionary();
    Acad::ErrorStatus releaseExtensionDictionary();

    // Transient reactors aren't saved and aren't owned; const, since listening changes nothing.
    Acad::ErrorStatus addReactor(AcDbObjectReactor* reactor) const;
    Acad::ErrorStatus removeReactor(AcDbObjectReactor* reactor) const;
    Acad::ErrorStatus addPersistentReactor(AcDbObjectId reactor);
    Acad::ErrorStatus removePersistentReactor(AcDbObjectId reactor);
    std::vector<AcDbObjectReactor*> transientReactors() const;
    const std::vector<AcDbObjectId>& persistentReactors() const;
    bool hasReactor(const AcDbObjectReactor* reactor) const;

    // What a persistent reactor hears of the objects it is attached to.
    virtual void openedForModify(const AcDbObject* subject);
    virtual void modified(const AcDbObject* subject);
    virtual void erased(const AcDbObject* subject, Adesk::Boolean erasing = true);
    virtual void copied(const AcDbObject* subject, const AcDbObject* copy);
    virtual void goodbye(const AcDbObject* subject);
    virtual void cancelled(const AcDbObject* subject);
    virtual void modifyUndone(const AcDbObject* subject);
    virtual void modifiedXData(const AcDbObject* subject);
    virtual void unappended(const AcDbObject* subject);
    virtual void reappended(const AcDbObject* subject);
    virtual void subObjModified(const AcDbObject* subject, const AcDbObject* part);
    virtual void objectClosed(const AcDbObjectId id);

    // A copy outside any drawing, with the xdata and without reactors and extension dictionary;
    // null for objects that can't be copied.
    AcRxObject* clone() const override;

    // The public filing of module classes; the base classes file nothing of their own.
    virtual Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer);
    virtual Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const;
    virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer);
    virtual Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const;

    // -- for the host's own classes ------------------------------------------------------------------

    // Takes one group of the object's data (common groups, 102 lists and xdata never come here).
    // False: unknown, and kept for writing.
    virtual bool inGroup(const host::Group& group, host::ReadContext& context);
    // After the last group; puts right what can't be, and says so through the context.
    virtual void inDone(host::ReadContext& context);
    // Writes the object's data behind its handle, reactors and owner, each class with its marker,
    // base class first.
    virtual void outGroups(host::GroupWriter& writer) const;
    // The name behind group 0.
    virtual std::string dxfName() const;
    // Objects that are filed and erased with this one, in order: vertices, attributes and the end mark.
    virtual void ownedParts(std::vector<AcDbObjectId>& parts) const;
    // Takes a part that stands in the drawing already; readers use it. False: this kind has no parts.
    virtual bool addOwnedPart(AcDbObjectId part);
    // After the object and its cell have come together: takes waiting parts into the drawing.
    virtual void joined(AcDbDatabase& database);
    // A copy for undo, and taking such a copy's data back. Identity, erasure and listeners don't travel.
    virtual std::unique_ptr<AcDbObject> snapshot() const;
    virtual void restore(const AcDbObject& from);
    virtual void subErase(Adesk::Boolean erasing);

    const host::ObjectTail* tail() const { return tail_.get(); }
    host::ObjectTail& tailForWrite(); // without an undo record: for readers

protected:
    AcDbObject() = default;
    AcDbObject(const AcDbObject& from);
    AcDbObject& operator=(const AcDbObject& from);

    // The door of every setter; cheap after the first call of an open.
    Acad::ErrorStatus willModify() { return recorded_ || !cell_ ? Acad::eOk : firstChange(true); }

private:
    friend class host::ObjectAccess;
    Acad::ErrorStatus firstChange(bool record);

    host::IdCell* cell_ = nullptr;
    AcDbObjectId owner_;
    std::unique_ptr<host::ObjectTail> tail_;
    mutable std::unique_ptr<std::vector<AcDbObjectReactor*>> listeners_;
    Adesk::UInt16 readers_ = 0;
    Adesk::UInt16 notifies_ = 0; // opens for notify, which stand on top of the others
    bool writing_ : 1 = false;
    bool upgraded_ : 1 = false;    // the writer is one that was opened for notify
    bool touched_ : 1 = false;     // changed since it was opened for write, listeners have been told so
    bool recorded_ : 1 = false;    // undo has its state before the change
    bool firstOfStep_ : 1 = false; // and has it from this open
    bool erased_ : 1 = false;
    bool eraseToggled_ : 1 = false;
    bool isNew_ : 1 = false;
    bool xdataTouched_ : 1 = false;
    mutable bool notifying_ : 1 = false;
    bool undoing_ : 1 = false;
};

// In the body of a built-in class.
#define HOST_DB_CLASS(CLASS)                                                                                 \
    ACRX_DECLARE_MEMBERS(CLASS)                                                                              \
public:                                                                                                      \
    std::unique_ptr<AcDbObject> snapshot() const override {                                                  \
        return std::unique_ptr<AcDbObject>(new CLASS(*this));                                                \
    }                                                                                                        \
    void restore(const AcDbObject& from) override { *this = static_cast<const CLASS&>(from); }

// Opens an object. Reading: eWasOpenForWrite when someone writes it; writing: also eWasOpenForRead;
// eWasErased unless openErased; eNullObjectId, eUnknownHandle for ids with nothing behind them;
// eNotThatKindOfClass for another class (the object isn't left open).
Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false) {
    object = nullptr;
    AcDbObject* any = nullptr;
    if (auto es = acdbOpenAcDbObject(any, id, mode, openErased); es != Acad::eOk) return es;
    if ((object = T::cast(any))) return Acad::eOk;
    any->close();
    return Acad::eNotThatKindOfClass;
}

// Opens for the length of a scope.
template <class T> class AcDbObjectPointer {
public:
    AcDbObjectPointer() = default;
    AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false)
        : status_(acdbOpenObject(object_, id, mode, openErased)) {}
    ~AcDbObjectPointer() { close(); }
    AcDbObjectPointer(const AcDbObjectPointer&) = delete;
    AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;
    Acad::ErrorStatus openStatus() const { return status_; }
    Acad::ErrorStatus open(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
        close();
        return status_ = acdbOpenObject(object_, id, mode, openErased);
    }
    Acad::ErrorStatus close() {
        auto es = object_ ? object_->close() : Acad::eOk;
        object_ = nullptr;
        return es;
    }
    // The object stays open and is the caller's to close.
    Acad::ErrorStatus release(T*& object) {
        object = object_, object_ = nullptr;
        return object ? Acad::eOk : Acad::eNullObjectPointer;
    }
    T* object() const { return object_; }
    T* operator->() const { return object_; }
    explicit operator bool() const { return object_; }
    operator T*() const { return object_; }

private:
    T* object_ = nullptr;
    Acad::ErrorStatus status_ = Acad::eNullObjectId;
};
