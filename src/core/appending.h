// New entities into the drawing: current space, beside another entity, model space; anonymous blocks.
// An entity is closed and belongs to the drawing on success; on failure it stays the caller's.
#pragma once
#include "core/host/database.h"

namespace corvane {

Acad::ErrorStatus AppendToCurrentSpace(AcDbEntity* entity, AcDbObjectId& id);
// The database plays no part in the choice of the space.
Acad::ErrorStatus AppendToCurrentSpace(AcDbDatabase* database, AcDbEntity* entity, AcDbObjectId& id);
// Into the block or layout that holds the reference entity, so that a curve that is built anew lands where
// the one it replaces was. The current space for a null reference or one that can't be opened; eInvalidInput
// for one owned by anything else than a block.
Acad::ErrorStatus AppendBesideEntity(AcDbDatabase* database, AcDbEntity* entity, AcDbObjectId reference,
                                     AcDbObjectId& id);
Acad::ErrorStatus AppendToModelSpace(AcDbDatabase* database, AcDbEntity* entity, AcDbObjectId& id);
// Into the record of that id.
Acad::ErrorStatus AppendToRecord(AcDbObjectId record, AcDbEntity* entity, AcDbObjectId& id);

// A new anonymous block; `record` is open for write, the caller fills and closes it. False and nothing made
// on failure.
bool MakeAnonymousBlock(AcDbDatabase* database, AcDbBlockTableRecord*& record, AcDbObjectId& id);
// Puts the entities (the array is consumed) into a new anonymous block of the working database with that
// origin, and a reference to it at the origin into the current space. Gives the reference's id; null on
// failure.
AcDbObjectId MakeBlockFromEntities(const AcGePoint3d& origin, AcDbObjectIdArray& ids);

} // namespace corvane
