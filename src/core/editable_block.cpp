// Blocks of entities, their references and replacement; handles in payloads.
#include "core/editable_block.h"

#include "core/appending.h"
#include "core/host/entities.h"
#include "core/selection.h"

namespace corvane {
namespace {

AcDbDatabase* workingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

// In place where the kind of entity can take the matrix, else as the kind that can; null when none can.
std::unique_ptr<AcDbEntity> moved(std::unique_ptr<AcDbEntity> entity, const AcGeMatrix3d& matrix) {
    if (entity->transformBy(matrix) == Acad::eOk) return entity;
    AcDbEntity* other = nullptr;
    return entity->getTransformedCopy(matrix, other) == Acad::eOk ? std::unique_ptr<AcDbEntity>(other)
                                                                  : nullptr;
}

} // namespace

void AppendAll(AcDbBlockTableRecord& record, EntityList entities, AcDbObjectIdArray* ids) {
    record.reserve(record.entities().size() + entities.size());
    for (auto& entity : entities) {
        AcDbObjectId id;
        if (record.appendAcDbEntity(id, entity.get()) != Acad::eOk) continue;
        entity.release()->close();
        if (ids) ids->append(id);
    }
}

AcDbObjectId BuildBlock(EntityList entities, const AcGeMatrix3d& matrix) {
    if (!matrix.isEqualTo(AcGeMatrix3d::kIdentity))
        for (auto& entity : entities) entity = moved(std::move(entity), matrix);
    std::erase(entities, nullptr);
    AcDbBlockTableRecord* record = nullptr;
    AcDbObjectId block;
    if (entities.empty() || !MakeAnonymousBlock(workingDatabase(), record, block)) return {};
    record->setOrigin(AcGePoint3d::kOrigin);
    AppendAll(*record, std::move(entities));
    record->close();
    return block;
}

AcDbObjectId InsertBlock(AcDbObjectId block, const AcGePoint3d& at) {
    auto reference = std::make_unique<AcDbBlockReference>(at, block);
    reference->setDatabaseDefaults();
    AcDbObjectId id;
    if (AppendToCurrentSpace(reference.get(), id) != Acad::eOk) return {};
    reference.release();
    return id;
}

Acad::ErrorStatus ReplaceBlock(AcDbObjectId id, EntityList entities) {
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
    if (!reference) return reference.openStatus();
    const AcDbObjectId block = BuildBlock(std::move(entities), reference->blockTransform().inverse());
    return block.isNull() ? Acad::eInvalidInput : reference->setBlockTableRecord(block);
}

bool IsOnLockedLayer(AcDbObjectId reference) {
    AcDbObjectPointer<AcDbEntity> entity(reference, AcDb::kForRead);
    if (!entity) return false;
    AcDbObjectPointer<AcDbLayerTableRecord> layer(entity->layerId(), AcDb::kForRead);
    return layer && layer->isLocked();
}

void EraseObject(AcDbObjectId id) {
    AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    if (object) object->erase();
}

std::wstring HandleText(AcDbObjectId object) {
    AcDbHandle handle;
    return GetHandle(object, handle) == Acad::eOk ? handle.ascii() : std::wstring();
}

AcDbObjectId ObjectOfHandle(const std::wstring& handle) {
    AcDbObjectId id;
    if (IdFromHandleText(workingDatabase(), handle.c_str(), id, false) != 0 || id.isErased()) return {};
    return id;
}

} // namespace corvane
