// Payloads of references, their blocks, and the preview.
#include "arrays/common/editable_array.h"

#include "core/appending.h"
#include "core/host/editor.h"
#include "core/host/entities.h"
#include "core/host/system.h"
#include "core/selection.h"

namespace corvane {
namespace {

using Entities = std::vector<std::unique_ptr<AcDbEntity>>;

AcDbDatabase* workingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

// Entities that can't be appended are left out.
void appendAll(AcDbBlockTableRecord& record, Entities entities, AcDbObjectIdArray* ids = nullptr) {
    record.reserve(record.entities().size() + entities.size());
    for (auto& entity : entities) {
        AcDbObjectId id;
        if (record.appendAcDbEntity(id, entity.get()) != Acad::eOk) continue;
        entity.release()->close();
        if (ids) ids->append(id);
    }
}

// In place where the kind of entity can take the matrix, else as the kind that can; null when none can.
std::unique_ptr<AcDbEntity> moved(std::unique_ptr<AcDbEntity> entity, const AcGeMatrix3d& matrix) {
    if (entity->transformBy(matrix) == Acad::eOk) return entity;
    AcDbEntity* other = nullptr;
    return entity->getTransformedCopy(matrix, other) == Acad::eOk ? std::unique_ptr<AcDbEntity>(other)
                                                                  : nullptr;
}

// A new anonymous block of the entities, moved; null when nothing is left to put into it.
AcDbObjectId makeBlock(Entities entities, const AcGeMatrix3d& matrix) {
    for (auto& entity : entities) entity = moved(std::move(entity), matrix);
    std::erase(entities, nullptr);
    AcDbBlockTableRecord* record = nullptr;
    AcDbObjectId block;
    if (entities.empty() || !MakeAnonymousBlock(workingDatabase(), record, block)) return {};
    record->setOrigin(AcGePoint3d::kOrigin);
    appendAll(*record, std::move(entities));
    record->close();
    return block;
}

void eraseObject(AcDbObjectId id) {
    AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    if (object) object->erase();
}

} // namespace

PayloadText ReadArrayPayload(AcDbObjectId id, const ArrayKind& kind) {
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
    if (!reference) return {};
    const PayloadText payload = PayloadText::Read(*reference, kind.application);
    return payload.text().starts_with(kind.marker) ? payload : PayloadText();
}

AcDbObjectId ObjectOfKey(const PayloadText& payload, const wchar_t* key) {
    std::wstring handle;
    AcDbObjectId id;
    if (!payload.Get(key, handle) || IdFromHandleText(workingDatabase(), handle.c_str(), id, false) != 0)
        return {};
    return id.isErased() ? AcDbObjectId() : id;
}

std::wstring HandleText(AcDbObjectId object) {
    AcDbHandle handle;
    return GetHandle(object, handle) == Acad::eOk ? handle.ascii() : std::wstring();
}

std::wstring FreshArrayName(const wchar_t* prefix) {
    return prefix + host_door::freshGuid(workingDatabase()->handseed());
}

AcDbObjectId CreateArray(ArrayContents contents, const PayloadText& payload, const ArrayKind& kind) {
    const AcDbObjectId block =
        makeBlock(std::move(contents.entities), AcGeMatrix3d::translation(-contents.insertion.asVector()));
    if (block.isNull()) return {};
    auto reference = std::make_unique<AcDbBlockReference>(contents.insertion, block);
    reference->setDatabaseDefaults();
    AcDbObjectId id;
    if (AppendToCurrentSpace(reference.get(), id) != Acad::eOk) return eraseObject(block), AcDbObjectId();
    reference.release();
    if (payload.Write(id, kind.application) == Acad::eOk) return id;
    eraseObject(id);
    eraseObject(block);
    return {};
}

Acad::ErrorStatus ReplaceArray(AcDbObjectId id, ArrayContents contents, const PayloadText& payload,
                               const ArrayKind& kind) {
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
    if (!reference) return reference.openStatus();
    const AcDbObjectId block = makeBlock(std::move(contents.entities), reference->blockTransform().inverse());
    if (block.isNull()) return Acad::eInvalidInput;
    if (auto es = reference->setBlockTableRecord(block); es != Acad::eOk) return es;
    reference.close();
    return payload.Write(id, kind.application);
}

void ArrayPreview::Show(std::vector<std::unique_ptr<AcDbEntity>> entities) {
    Clear();
    AcDbObjectPointer<AcDbBlockTableRecord> space(
        acdbHostApplicationServices()->layoutManager()->getActiveLayoutBTRId(), AcDb::kForWrite);
    if (space) appendAll(*space, std::move(entities), &shown_);
    space.close();
    acedUpdateDisplay();
}

void ArrayPreview::Clear() {
    for (const AcDbObjectId id : shown_) eraseObject(id);
    shown_.setLogicalLength(0);
}

} // namespace corvane
