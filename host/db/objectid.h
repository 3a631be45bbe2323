// Object ids and handles. An id is a pointer to the object's cell, which stands as long as its
// drawing does, so comparing and opening cost a few instructions; a handle is the number by
// which files know the object.
#pragma once
#include <compare>
#include <functional>

#include "host/db/adesk.h"
#include "host/ge/array.h"

class AcDbDatabase;
class AcDbObject;
class AcRxClass;

class AcDbHandle {
public:
    AcDbHandle() = default;
    explicit AcDbHandle(Adesk::UInt64 value) : value_(value) {}
    // From hexadecimal text; anything else gives the null handle.
    explicit AcDbHandle(const ACHAR* text);
    bool isNull() const { return value_ == 0; }
    // Upper-case hexadecimal text into a buffer of 17 characters or more.
    void getIntoAsciiBuffer(ACHAR* buffer, size_t size = 17) const;
    std::wstring ascii() const;
    Adesk::UInt64 value() const { return value_; }
    operator Adesk::UInt64() const { return value_; }

private:
    Adesk::UInt64 value_ = 0;
};

namespace host {
// Where an id points. Cells are made by their drawing, in order of creation, and never move.
struct IdCell {
    AcDbObject* object = nullptr; // null: referred to but never defined, or undone away
    AcDbDatabase* database = nullptr;
    Adesk::UInt64 handle = 0;
    Adesk::UInt32 undoStep = 0; // the last undo step that holds this object's earlier state
    // In undoStep: undo took the object away, and its handle is free again.
    static constexpr Adesk::UInt32 kUndone = ~Adesk::UInt32(0);
};
} // namespace host

class AcDbObjectId {
public:
    constexpr AcDbObjectId() = default;
    explicit constexpr AcDbObjectId(host::IdCell* cell) : cell_(cell) {}
    static const AcDbObjectId kNull;

    bool isNull() const { return !cell_; }
    void setNull() { cell_ = nullptr; }
    // True when an object stands behind the id, erased or not.
    bool isValid() const { return cell_ && cell_->object; }
    bool isResident() const { return isValid(); }
    bool isErased() const;
    AcDbDatabase* database() const { return cell_ ? cell_->database : nullptr; }
    AcDbHandle handle() const { return AcDbHandle(cell_ ? cell_->handle : 0); }
    // The class of the object, or null when there is none.
    AcRxClass* objectClass() const;
    Adesk::IntDbId asOldId() const { return reinterpret_cast<Adesk::IntDbId>(cell_); }
    AcDbObjectId& setFromOldId(Adesk::IntDbId old) {
        return cell_ = reinterpret_cast<host::IdCell*>(old), *this;
    }

    bool operator==(const AcDbObjectId& other) const = default;
    // In the order of the handles, so that sorted ids are the same in every run.
    bool operator<(const AcDbObjectId& other) const {
        return Adesk::UInt64(handle()) < Adesk::UInt64(other.handle());
    }
    bool operator>(const AcDbObjectId& other) const { return other < *this; }

    host::IdCell* cell() const { return cell_; }

private:
    host::IdCell* cell_ = nullptr;
};

template <> struct std::hash<AcDbObjectId> {
    size_t operator()(const AcDbObjectId& id) const { return std::hash<void*>()(id.cell()); }
};

using AcDbObjectIdArray = AcArray<AcDbObjectId>;
// Ids that state ownership or reference; the difference matters to files alone.
using AcDbHardOwnershipId = AcDbObjectId;
using AcDbSoftOwnershipId = AcDbObjectId;
using AcDbHardPointerId = AcDbObjectId;
using AcDbSoftPointerId = AcDbObjectId;
