// Dictionaries and xrecords: named objects, and free data of a program's own.
#pragma once
#include <unordered_map>

#include "host/db/object.h"

class AcDbDictionary;

class AcDbDictionaryIterator {
public:
    explicit AcDbDictionaryIterator(const AcDbDictionary* dictionary);
    const ACHAR* name() const;
    AcDbObjectId objectId() const;
    bool done() const;
    bool next();

private:
    std::vector<std::pair<std::wstring, AcDbObjectId>> entries_;
    size_t at_ = 0;
};

// Keys are found without regard to case. Entries keep the order they were made in.
class AcDbDictionary : public AcDbObject {
    HOST_DB_CLASS(AcDbDictionary)
public:
    struct Entry {
        std::wstring key;
        AcDbObjectId id;
        bool hard = false; // how files state the ownership
    };
    // eKeyNotFound; erased entries count as missing.
    Acad::ErrorStatus getAt(const ACHAR* key, AcDbObjectId& id) const;
    template <class T> Acad::ErrorStatus getAt(const ACHAR* key, T*& object, AcDb::OpenMode mode) const {
        AcDbObjectId id;
        if (auto es = getAt(key, id); es != Acad::eOk) return es;
        return acdbOpenObject(object, id, mode);
    }
    bool has(const ACHAR* key) const;
    bool has(AcDbObjectId id) const;
    Acad::ErrorStatus nameAt(AcDbObjectId id, std::wstring& key) const;
    Adesk::UInt32 numEntries() const;
    // The object joins the drawing, owned by the dictionary, and stays open for write. An entry of the
    // same key is erased and replaced. On failure the object stays the caller's.
    Acad::ErrorStatus setAt(const ACHAR* key, AcDbObject* object, AcDbObjectId& id);
    Acad::ErrorStatus setName(const ACHAR* oldKey, const ACHAR* newKey);
    // Takes the entry out; the object itself isn't erased.
    Acad::ErrorStatus remove(const ACHAR* key);
    Acad::ErrorStatus remove(AcDbObjectId id);
    // The caller deletes the iterator.
    AcDbDictionaryIterator* newIterator() const { return new AcDbDictionaryIterator(this); }
    bool isTreatElementsAsHard() const { return hardOwner_; }
    Acad::ErrorStatus setTreatElementsAsHard(bool hard);
    AcDb::DuplicateRecordCloning mergeStyle() const { return AcDb::DuplicateRecordCloning(mergeStyle_); }

    const std::vector<Entry>& entries() const { return entries_; }
    // Puts in an object that stands in the drawing already; readers and new drawings use it.
    void adopt(const std::wstring& key, AcDbObjectId id);
    void adopt(const std::wstring& key, AcDbObjectId id, bool hard);
    AcRxObject* clone() const override { return nullptr; }

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    void subErase(Adesk::Boolean erasing) override;

private:
    const Entry* find(const ACHAR* key) const;
    void removeAt(size_t position);
    std::vector<Entry> entries_;
    std::unordered_map<std::wstring, size_t> byKey_; // position by folded key
    std::wstring pendingKey_;
    int mergeStyle_ = 1;
    bool hardOwner_ = false;
};

// A dictionary with a default entry (plot styles).
class AcDbDictionaryWithDefault : public AcDbDictionary {
    HOST_DB_CLASS(AcDbDictionaryWithDefault)
public:
    AcDbObjectId defaultId() const { return default_; }
    void setDefaultId(AcDbObjectId id) { default_ = id; }
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

private:
    AcDbObjectId default_;
};

class AcDbXrecord : public AcDbObject {
    HOST_DB_CLASS(AcDbXrecord)
public:
    // A copy of the data; the caller releases it with acutRelRb. Null data is an empty record.
    Acad::ErrorStatus rbChain(resbuf** chain, AcDbDatabase* database = nullptr) const;
    // Replaces the data. eInvalidInput for codes outside 1 to 369 and 1000 to 1071.
    Acad::ErrorStatus setFromRbChain(const resbuf& chain, AcDbDatabase* database = nullptr);
    AcDb::DuplicateRecordCloning mergeStyle() const { return AcDb::DuplicateRecordCloning(mergeStyle_); }
    const host::GroupList& data() const { return data_; }

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

private:
    host::GroupList data_;
    int mergeStyle_ = 1;
    bool begun_ = false; // the merge style comes first, and is data anywhere else
};

namespace host {
// Result buffers from groups and back; three reals of a point become one. Ids of handles are resolved in
// `database`.
resbuf* chainFromGroups(const GroupList& groups, AcDbDatabase* database);
// False when a type can't be a group; then `groups` is left as it was.
bool groupsFromChain(const resbuf* chain, GroupList& groups);
} // namespace host
