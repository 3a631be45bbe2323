// The shared dictionary, the notify object and the records of the index.
#include "assoc/association_index.h"

#include <algorithm>
#include <memory>
#include <string>

#include "core/selection.h"

namespace corvane {
namespace {

constexpr wchar_t kDictionary[] = L"SCVN_DICT";
constexpr int kTextGroup = 1000;

AcDbObjectId entryOf(AcDbObjectId dictionary, const wchar_t* key) {
    AcDbObjectPointer<AcDbDictionary> opened(dictionary, AcDb::kForRead);
    AcDbObjectId id;
    if (!opened || opened->getAt(key, id) != Acad::eOk) return {};
    return id;
}

// The entry of that key, made by `make` when there is none.
template <class Make> AcDbObjectId entryMade(AcDbObjectId dictionary, const wchar_t* key, Make make) {
    if (const AcDbObjectId present = entryOf(dictionary, key); !present.isNull()) return present;
    AcDbObjectPointer<AcDbDictionary> opened(dictionary, AcDb::kForWrite);
    if (!opened) return {};
    std::unique_ptr<AcDbObject> object(make());
    AcDbObjectId id;
    if (!object || opened->setAt(key, object.get(), id) != Acad::eOk) return {};
    object.release()->close();
    return id;
}

AcDbObject* newDictionary() { return new AcDbDictionary; }
AcDbObject* newRecord() { return new AcDbXrecord; }

AcDbObjectId sharedDictionary(AcDbDatabase* database) {
    return entryOf(database->namedObjectsDictionaryId(), kDictionary);
}
AcDbObjectId sharedDictionaryMade(AcDbDatabase* database) {
    return entryMade(database->namedObjectsDictionaryId(), kDictionary, newDictionary);
}

using Handles = std::vector<std::wstring>;

Handles handlesIn(AcDbObjectId record) {
    AcDbObjectPointer<AcDbXrecord> opened(record, AcDb::kForRead);
    Handles handles;
    resbuf* chain = nullptr;
    if (!opened || opened->rbChain(&chain) != Acad::eOk) return handles;
    for (const resbuf* group = chain; group; group = group->rbnext)
        if (group->restype == kTextGroup && group->resval.rstring)
            handles.emplace_back(group->resval.rstring);
    acutRelRb(chain);
    return handles;
}

bool write(AcDbObjectId record, const Handles& handles) {
    resbuf head;
    resbuf* last = &head;
    for (const std::wstring& handle : handles) {
        last = last->rbnext = acutNewRb(kTextGroup);
        acutNewString(handle.c_str(), last->resval.rstring);
    }
    AcDbObjectPointer<AcDbXrecord> opened(record, AcDb::kForWrite);
    const bool done = opened && head.rbnext && opened->setFromRbChain(*head.rbnext) == Acad::eOk;
    acutRelRb(head.rbnext);
    return done;
}

std::vector<AcDbObjectId> idsOf(AcDbDatabase* database, const Handles& handles) {
    std::vector<AcDbObjectId> ids;
    for (const std::wstring& handle : handles) {
        AcDbObjectId id;
        if (IdFromHandleText(database, handle.c_str(), id, false) == 0) ids.push_back(id);
    }
    return ids;
}

} // namespace

AcDbObjectId AssociationIndex::NotifyObject(AcDbDatabase* database, AcDbObject* (*make)()) const {
    return entryMade(sharedDictionaryMade(database), notifyEntry_, make);
}

AcDbObjectId AssociationIndex::index(AcDbDatabase* database) const {
    return entryOf(sharedDictionary(database), indexEntry_);
}

std::vector<AcDbObjectId> AssociationIndex::Blocks(AcDbObjectId curve) const {
    AcDbDatabase* database = curve.database();
    return idsOf(database, handlesIn(entryOf(index(database), curve.handle().ascii().c_str())));
}

bool AssociationIndex::Add(AcDbObjectId curve, AcDbObjectId block) const {
    const AcDbObjectId dictionary =
        entryMade(sharedDictionaryMade(curve.database()), indexEntry_, newDictionary);
    const AcDbObjectId record = entryMade(dictionary, curve.handle().ascii().c_str(), newRecord);
    Handles handles = handlesIn(record);
    const std::wstring handle = block.handle().ascii();
    if (std::find(handles.begin(), handles.end(), handle) != handles.end()) return true;
    handles.push_back(handle);
    return write(record, handles);
}

void AssociationIndex::Remove(AcDbObjectId curve, AcDbObjectId block) const {
    const AcDbObjectId dictionary = index(curve.database());
    const std::wstring key = curve.handle().ascii();
    const AcDbObjectId record = entryOf(dictionary, key.c_str());
    Handles handles = handlesIn(record);
    if (std::erase(handles, block.handle().ascii()) == 0) return;
    if (!handles.empty()) {
        write(record, handles);
        return;
    }
    AcDbObjectPointer<AcDbDictionary> opened(dictionary, AcDb::kForWrite);
    AcDbObjectPointer<AcDbXrecord> gone(record, AcDb::kForWrite);
    if (opened && gone && opened->remove(key.c_str()) == Acad::eOk) gone->erase();
}

void AssociationIndex::ForEach(AcDbDatabase* database, const Visit& visit) const {
    AcDbObjectPointer<AcDbDictionary> opened(index(database), AcDb::kForRead);
    if (!opened) return;
    const std::unique_ptr<AcDbDictionaryIterator> entry(opened->newIterator());
    for (; !entry->done(); entry->next()) {
        AcDbObjectId curve;
        if (IdFromHandleText(database, entry->name(), curve, false) != 0) continue;
        visit(curve, idsOf(database, handlesIn(entry->objectId())));
    }
}

} // namespace corvane
