// Dictionaries and xrecords.
#include "host/db/dictionary.h"

#include "host/db/access.h"
#include "host/os/text.h"

HOST_DEFINE_CLASS(AcDbDictionary, AcDbObject, L"DICTIONARY")
HOST_DEFINE_CLASS(AcDbDictionaryWithDefault, AcDbDictionary, L"ACDBDICTIONARYWDFLT")
HOST_DEFINE_CLASS(AcDbXrecord, AcDbObject, L"XRECORD")

// -- looking up ---------------------------------------------------------------------------------------

AcDbDictionaryIterator::AcDbDictionaryIterator(const AcDbDictionary* dictionary) {
    for (const auto& entry : dictionary->entries())
        if (!entry.id.isErased()) entries_.emplace_back(entry.key, entry.id);
}
const ACHAR* AcDbDictionaryIterator::name() const { return done() ? L"" : entries_[at_].first.c_str(); }
AcDbObjectId AcDbDictionaryIterator::objectId() const {
    return done() ? AcDbObjectId() : entries_[at_].second;
}
bool AcDbDictionaryIterator::done() const { return at_ >= entries_.size(); }
bool AcDbDictionaryIterator::next() { return !done() && ++at_ < entries_.size(); }

const AcDbDictionary::Entry* AcDbDictionary::find(const ACHAR* key) const {
    const auto found = key ? byKey_.find(host::lower(key)) : byKey_.end();
    return found == byKey_.end() ? nullptr : &entries_[found->second];
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* key, AcDbObjectId& id) const {
    const Entry* entry = find(key);
    id = entry && !entry->id.isErased() ? entry->id : AcDbObjectId();
    return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

bool AcDbDictionary::has(const ACHAR* key) const {
    AcDbObjectId id;
    return getAt(key, id) == Acad::eOk;
}

bool AcDbDictionary::has(AcDbObjectId id) const {
    std::wstring key;
    return nameAt(id, key) == Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId id, std::wstring& key) const {
    for (const auto& entry : entries_)
        if (entry.id == id && !id.isErased()) return key = entry.key, Acad::eOk;
    return Acad::eKeyNotFound;
}

Adesk::UInt32 AcDbDictionary::numEntries() const {
    Adesk::UInt32 live = 0;
    for (const auto& entry : entries_) live += !entry.id.isErased();
    return live;
}

// -- changing -----------------------------------------------------------------------------------------

void AcDbDictionary::adopt(const std::wstring& key, AcDbObjectId id) { adopt(key, id, hardOwner_); }

void AcDbDictionary::adopt(const std::wstring& key, AcDbObjectId id, bool hard) {
    byKey_.try_emplace(host::lower(key), entries_.size());
    entries_.push_back({key, id, hard});
}

void AcDbDictionary::removeAt(size_t position) {
    entries_.erase(entries_.begin() + std::ptrdiff_t(position));
    byKey_.clear();
    for (size_t i = 0; i < entries_.size(); ++i) byKey_.try_emplace(host::lower(entries_[i].key), i);
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* key, AcDbObject* object, AcDbObjectId& id) {
    id.setNull();
    if (!key || !*key) return Acad::eInvalidKey;
    if (!object) return Acad::eNullObjectPointer;
    if (!database()) return Acad::eNoDatabase;
    if (object->database()) return Acad::eAlreadyInDb;
    if (auto es = willModify(); es != Acad::eOk) return es;
    if (const Entry* present = find(key)) {
        const AcDbObjectId former = present->id;
        if (!former.isErased()) {
            AcDbObjectPointer<AcDbObject> old(former, AcDb::kForWrite);
            if (!old) return old.openStatus();
            old->erase();
        }
        removeAt(size_t(present - entries_.data()));
    }
    id = database()->append(object, objectId());
    adopt(key, id);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::setName(const ACHAR* oldKey, const ACHAR* newKey) {
    const Entry* entry = find(oldKey);
    if (!entry || entry->id.isErased()) return Acad::eKeyNotFound;
    if (!newKey || !*newKey) return Acad::eInvalidKey;
    if (const Entry* taken = find(newKey); taken && taken != entry) {
        if (!taken->id.isErased()) return Acad::eDuplicateKey;
    }
    if (auto es = willModify(); es != Acad::eOk) return es;
    const size_t position = size_t(entry - entries_.data());
    byKey_.erase(host::lower(oldKey));
    entries_[position].key = newKey;
    byKey_[host::lower(newKey)] = position;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key) {
    const Entry* entry = find(key);
    if (!entry) return Acad::eKeyNotFound;
    if (auto es = willModify(); es != Acad::eOk) return es;
    removeAt(size_t(entry - entries_.data()));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(AcDbObjectId id) {
    for (size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i].id != id) continue;
        if (auto es = willModify(); es != Acad::eOk) return es;
        return removeAt(i), Acad::eOk;
    }
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbDictionary::setTreatElementsAsHard(bool hard) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    hardOwner_ = hard;
    for (auto& entry : entries_) entry.hard = hard;
    return Acad::eOk;
}

void AcDbDictionary::subErase(Adesk::Boolean erasing) {
    for (const auto& entry : std::vector<Entry>(entries_)) {
        AcDbObjectPointer<AcDbObject> object(entry.id, AcDb::kForWrite, true);
        if (object && object->ownerId() == objectId() && object->isErased() != erasing)
            object->erase(erasing);
    }
}

// -- files --------------------------------------------------------------------------------------------

bool AcDbDictionary::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbDictionary")) return false;
    switch (group.code) {
    case 280: hardOwner_ = group.integer != 0; return true;
    case 281: mergeStyle_ = int(group.integer); return true;
    case 3: pendingKey_ = group.wide(); return true;
    case 350:
    case 360:
        adopt(pendingKey_, context.id(group.handle()), group.code == 360);
        pendingKey_.clear();
        return true;
    default: return false;
    }
}

void AcDbDictionary::outGroups(host::GroupWriter& writer) const {
    writer.subclass("AcDbDictionary");
    if (writer.version >= AcDb::kDHL_1015) {
        if (hardOwner_) writer.integer(280, 1);
        writer.integer(281, mergeStyle_);
    }
    for (const auto& entry : entries_) {
        if (entry.id.isValid() && entry.id.isErased()) continue; // an id with nothing behind it is kept
        writer.text(3, entry.key);
        writer.handle(entry.hard ? 360 : 350, entry.id);
    }
}

bool AcDbDictionaryWithDefault::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbDictionaryWithDefault") && group.code == 340)
        return default_ = context.id(group.handle()), true;
    return AcDbDictionary::inGroup(group, context);
}

void AcDbDictionaryWithDefault::outGroups(host::GroupWriter& writer) const {
    AcDbDictionary::outGroups(writer);
    writer.subclass("AcDbDictionaryWithDefault");
    writer.handle(340, default_);
}

// -- xrecords -----------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** chain, AcDbDatabase* db) const {
    if (!chain) return Acad::eNullPtr;
    *chain = host::chainFromGroups(data_, db ? db : database());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& chain, AcDbDatabase*) {
    for (const resbuf* b = &chain; b; b = b->rbnext) {
        const bool own = b->restype >= 1 && b->restype <= 369 && b->restype != 5 && b->restype != 105;
        if (!own && (b->restype < 1000 || b->restype > 1071)) return Acad::eInvalidInput;
    }
    host::GroupList data;
    if (!host::groupsFromChain(&chain, data)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    data_ = std::move(data);
    data_.shrink();
    return Acad::eOk;
}

bool AcDbXrecord::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbXrecord")) return false;
    const bool first = !std::exchange(begun_, true);
    if (first && group.code == 280 && context.version >= AcDb::kDHL_1015)
        return mergeStyle_ = int(group.integer), true;
    data_.append(group);
    return true;
}

void AcDbXrecord::outGroups(host::GroupWriter& writer) const {
    writer.subclass("AcDbXrecord");
    if (writer.version >= AcDb::kDHL_1015) writer.integer(280, mergeStyle_);
    for (const auto group : data_) writer.write(group);
}
