// Appending entities and making blocks.
#include "core/appending.h"

#include "core/host/entities.h"

namespace corvane {

Acad::ErrorStatus AppendToRecord(AcDbObjectId recordId, AcDbEntity* entity, AcDbObjectId& id) {
    AcDbObjectPointer<AcDbBlockTableRecord> record(recordId, AcDb::kForWrite);
    if (!record)
        return record.openStatus() == Acad::eNotThatKindOfClass ? Acad::eInvalidInput : record.openStatus();
    const Acad::ErrorStatus status = record->appendAcDbEntity(id, entity);
    if (status == Acad::eOk) entity->close();
    return status;
}

Acad::ErrorStatus AppendToCurrentSpace(AcDbEntity* entity, AcDbObjectId& id) {
    return AppendToRecord(acdbHostApplicationServices()->layoutManager()->getActiveLayoutBTRId(), entity, id);
}

Acad::ErrorStatus AppendToCurrentSpace(AcDbDatabase*, AcDbEntity* entity, AcDbObjectId& id) {
    return AppendToCurrentSpace(entity, id);
}

Acad::ErrorStatus AppendBesideEntity(AcDbDatabase* database, AcDbEntity* entity, AcDbObjectId reference,
                                     AcDbObjectId& id) {
    AcDbObjectPointer<AcDbObject> beside(reference, AcDb::kForRead);
    // A reference that the caller itself writes to can still be looked at.
    if (beside.openStatus() == Acad::eWasOpenForWrite) beside.open(reference, AcDb::kForNotify);
    if (!beside) return AppendToCurrentSpace(database, entity, id);
    return AppendToRecord(beside->ownerId(), entity, id);
}

Acad::ErrorStatus AppendToModelSpace(AcDbDatabase* database, AcDbEntity* entity, AcDbObjectId& id) {
    AcDbBlockTable* table = nullptr;
    if (auto es = database->getBlockTable(table, AcDb::kForRead); es != Acad::eOk) return es;
    AcDbObjectId space;
    const Acad::ErrorStatus status = table->getAt(ACDB_MODEL_SPACE, space);
    table->close();
    return status == Acad::eOk ? AppendToRecord(space, entity, id) : status;
}

bool MakeAnonymousBlock(AcDbDatabase* database, AcDbBlockTableRecord*& record, AcDbObjectId& id) {
    AcDbBlockTable* table = nullptr;
    if (database->getBlockTable(table, AcDb::kForWrite) != Acad::eOk) return false;
    record = new AcDbBlockTableRecord;
    record->setName(L"*U");
    const Acad::ErrorStatus status = table->add(id, record);
    table->close();
    if (status == Acad::eOk) return true;
    delete record;
    record = nullptr;
    return false;
}

AcDbObjectId MakeBlockFromEntities(const AcGePoint3d& origin, AcDbObjectIdArray& ids) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    AcDbBlockTableRecord* record = nullptr;
    AcDbObjectId block, result;
    if (!MakeAnonymousBlock(database, record, block)) return {};
    record->setOrigin(origin);
    record->assumeOwnershipOf(ids);
    record->close();
    ids.setLogicalLength(0);
    auto* reference = new AcDbBlockReference(origin, block);
    reference->setDatabaseDefaults();
    if (AppendToCurrentSpace(reference, result) == Acad::eOk) return result;
    delete reference;
    return {};
}

} // namespace corvane
