// What a drawing itself keeps of an association: the notify object, which hears of changed curves through
// their lists of persistent reactors, and the index from curves to the blocks that follow them. Both are
// entries of one dictionary that all associations share. Undo, save and load treat them like all else in the
// drawing.
#pragma once
#include <functional>
#include <vector>

#include "core/host/database.h"

namespace corvane {

class AssociationIndex {
public:
    // The names of both entries.
    AssociationIndex(const wchar_t* notifyEntry, const wchar_t* indexEntry)
        : notifyEntry_(notifyEntry), indexEntry_(indexEntry) {}

    // The drawing's notify object; made by `make` where there is none. Null when it can't be made.
    AcDbObjectId NotifyObject(AcDbDatabase* database, AcDbObject* (*make)()) const;

    // False when the drawing has no index.
    bool Present(AcDbDatabase* database) const { return !index(database).isNull(); }
    // The blocks that stand in the curve's record, in order; those that are nothing any more are left out.
    std::vector<AcDbObjectId> Blocks(AcDbObjectId curve) const;
    // Into the curve's record, once; dictionaries and record are made where they are missing.
    bool Add(AcDbObjectId curve, AcDbObjectId block) const;
    // Out of the curve's record; a record without any block goes.
    void Remove(AcDbObjectId curve, AcDbObjectId block) const;
    // Every curve that still is there, with its blocks.
    using Visit = std::function<void(AcDbObjectId curve, const std::vector<AcDbObjectId>& blocks)>;
    void ForEach(AcDbDatabase* database, const Visit& visit) const;

private:
    AcDbObjectId index(AcDbDatabase* database) const;
    const wchar_t* notifyEntry_;
    const wchar_t* indexEntry_;
};

} // namespace corvane
