// Payloads of arrays, their making, and the preview.
#include "arrays/common/editable_array.h"

#include "core/host/editor.h"
#include "core/host/entities.h"
#include "core/host/system.h"

namespace corvane {

PayloadText ReadArrayPayload(AcDbObjectId id, const ArrayKind& kind) {
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
    if (!reference) return {};
    const PayloadText payload = PayloadText::Read(*reference, kind.application);
    return payload.text().starts_with(kind.marker) ? payload : PayloadText();
}

AcDbObjectId ObjectOfKey(const PayloadText& payload, const wchar_t* key) {
    std::wstring handle;
    return payload.Get(key, handle) ? ObjectOfHandle(handle) : AcDbObjectId();
}

std::wstring FreshArrayName(const wchar_t* prefix) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    return prefix + host_door::freshGuid(database->handseed());
}

AcDbObjectId CreateArray(ArrayContents contents, const PayloadText& payload, const ArrayKind& kind) {
    const AcDbObjectId block =
        BuildBlock(std::move(contents.entities), AcGeMatrix3d::translation(-contents.insertion.asVector()));
    if (block.isNull()) return {};
    const AcDbObjectId reference = InsertBlock(block, contents.insertion);
    if (!reference.isNull() && payload.Write(reference, kind.application) == Acad::eOk) return reference;
    EraseObject(reference);
    EraseObject(block);
    return {};
}

Acad::ErrorStatus ReplaceArray(AcDbObjectId reference, ArrayContents contents, const PayloadText& payload,
                               const ArrayKind& kind) {
    if (auto es = ReplaceBlock(reference, std::move(contents.entities)); es != Acad::eOk) return es;
    return payload.Write(reference, kind.application);
}

void ArrayPreview::Show(EntityList entities) {
    Clear();
    AcDbObjectPointer<AcDbBlockTableRecord> space(
        acdbHostApplicationServices()->layoutManager()->getActiveLayoutBTRId(), AcDb::kForWrite);
    if (space) AppendAll(*space, std::move(entities), &shown_);
    space.close();
    acedUpdateDisplay();
}

void ArrayPreview::Clear() {
    for (const AcDbObjectId id : shown_) EraseObject(id);
    shown_.setLogicalLength(0);
}

} // namespace corvane
