// Results that stay editable: entities in an anonymous block whose reference carries the parameters they were
// made by, so that picking it again can build it anew. The features give the entities and the payload.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "core/host/database.h"

namespace corvane {

// Entities outside any drawing, in their order.
using EntityList = std::vector<std::unique_ptr<AcDbEntity>>;

// Into the record; entities that can't be appended are left out. The ids of the others, if asked for.
void AppendAll(AcDbBlockTableRecord& record, EntityList entities, AcDbObjectIdArray* ids = nullptr);
// A new anonymous block of the entities, moved by the matrix. Those that can't be moved are left out; null
// when none is left, or on failure.
AcDbObjectId BuildBlock(EntityList entities, const AcGeMatrix3d& matrix = AcGeMatrix3d::kIdentity);
// A reference to the block at that point, with the drawing's defaults, in the current space; null on failure.
AcDbObjectId InsertBlock(AcDbObjectId block, const AcGePoint3d& at);
// Gives the reference, wherever it has been taken since, a new anonymous block that shows the entities where
// they are. The old block is left for purging. eInvalidInput when there is nothing to show.
Acad::ErrorStatus ReplaceBlock(AcDbObjectId reference, EntityList entities);
// True when the reference's layer is locked, so that commands must leave it as it is.
bool IsOnLockedLayer(AcDbObjectId reference);
void EraseObject(AcDbObjectId id);

// The handle as payloads hold it; empty when the object can't be opened.
std::wstring HandleText(AcDbObjectId object);
// The object of that handle in the working database; null when it is gone.
AcDbObjectId ObjectOfHandle(const std::wstring& handle);

} // namespace corvane
