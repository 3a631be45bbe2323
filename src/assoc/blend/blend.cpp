// Blends and their association with their curves.
#include "assoc/blend/blend.h"

#include "assoc/blend/blend_build.h"
#include "assoc/blend/blend_orientation.h"
#include "core/appending.h"
#include "core/brackets.h"
#include "core/editable_block.h"

namespace corvane {

ACRX_NO_CONS_DEFINE_MEMBERS(CvBlendToNotify, NotifyObject)

CvBlendToNotify::CvBlendToNotify() : NotifyObject(BlendAssociation()) {}
Acad::ErrorStatus CvBlendToNotify::dwgInFields(AcDbDwgFiler* filer) {
    AcDbObject::dwgInFields(filer);
    return filer->filerStatus();
}
Acad::ErrorStatus CvBlendToNotify::dwgOutFields(AcDbDwgFiler* filer) const {
    AcDbObject::dwgOutFields(filer);
    return filer->filerStatus();
}
Acad::ErrorStatus CvBlendToNotify::dxfInFields(AcDbDxfFiler* filer) {
    AcDbObject::dxfInFields(filer);
    return filer->filerStatus();
}
Acad::ErrorStatus CvBlendToNotify::dxfOutFields(AcDbDxfFiler* filer) const {
    AcDbObject::dxfOutFields(filer);
    return filer->filerStatus();
}
void CvBlendToNotify::rxInit() {
    constexpr int kDwgVersion = 33, kMaintenanceVersion = 427;
    gpDesc = newAcRxClass(
        L"CvBlendToNotify", L"AcDbObject", kDwgVersion, kMaintenanceVersion, 0,
        [] { return static_cast<AcRxObject*>(new CvBlendToNotify); }, L"CVBLENDTONOTIFY", L"blendpersreac");
}

namespace {

AcDbObject* makeNotify() { return new CvBlendToNotify; }

std::optional<std::vector<AcDbObjectId>> curvesOf(AcDbObjectId block) {
    const auto record = ReadBlend(block);
    return record ? std::optional(record->Curves()) : std::nullopt;
}

std::optional<CurveEnds> endsOf(AcDbObjectId id) {
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    CurveEnds ends;
    if (!curve || curve->getStartPoint(ends.start) != Acad::eOk || curve->getEndPoint(ends.end) != Acad::eOk)
        return {};
    return ends;
}

// A curve that was turned round is taken the other way from now on. The flag is judged together with the turn
// it stands for: judged on the bare curve, each rebuild would flip the flag of a curve that nobody has
// touched.
bool followTurns(BlendRecord& record) {
    const auto follow = [](AcDbObjectId curve, const AcGePoint3d& anchor, bool& reversed) {
        const auto ends = endsOf(curve);
        if (!ends) return false;
        if (TurnedSince(*ends, reversed, anchor)) reversed = !reversed;
        return true;
    };
    return !record.hasAnchors || (follow(record.curve1, record.anchor1, record.reversed1) &&
                                  follow(record.curve2, record.anchor2, record.reversed2));
}

// Where a reference shows its block. Copies lie between their curves however the reference was turned or
// scaled meanwhile.
struct Placement {
    AcDbObjectId block;
    AcGeMatrix3d toBlock;
};
std::optional<Placement> placementOf(AcDbObjectId reference) {
    AcDbObjectPointer<AcDbBlockReference> opened(reference, AcDb::kForRead);
    if (!opened) return {};
    return Placement{opened->blockTableRecord(), opened->blockTransform().inverse()};
}

bool holdsInPlan(AcDbObjectId reference, const AcGePoint3d& point) {
    constexpr double kSlack = 1e-6;
    AcDbObjectPointer<AcDbEntity> opened(reference, AcDb::kForRead);
    AcDbExtents box;
    if (!opened || opened->getGeomExtents(box) != Acad::eOk) return false;
    const AcGePoint3d low = box.minPoint(), high = box.maxPoint();
    return point.x >= low.x - kSlack && point.x <= high.x + kSlack && point.y >= low.y - kSlack &&
           point.y <= high.y + kSlack;
}

// The references of the anonymous block that owns the entity.
AcDbObjectIdArray referencesRound(AcDbObjectId entity) {
    AcDbObjectIdArray references;
    AcDbObjectPointer<AcDbObject> opened(entity, AcDb::kForRead);
    if (!opened) return references;
    AcDbObjectPointer<AcDbBlockTableRecord> owner(opened->ownerId(), AcDb::kForRead);
    const std::wstring name = owner ? owner->name() : L"";
    if (name.starts_with(L"*U") || name.starts_with(L"*u")) owner->getBlockReferenceIds(references);
    return references;
}

} // namespace

Association& BlendAssociation() {
    static Association blends({L"BLEND_PERSREAC", L"BLEND_INDEX", makeNotify, curvesOf, RebuildBlend, false});
    return blends;
}

void LoadBlends() {
    CvBlendToNotify::rxInit();
    acrxBuildClassHierarchy();
}

void UnloadBlends() {
    BlendAssociation().Detach();
    if (CvBlendToNotify::desc()) deleteAcRxClass(CvBlendToNotify::desc());
    CvBlendToNotify::gpDesc = nullptr;
}

MadeBlend CreateBlend(const BlendRecord& record) {
    const DocumentLock lock;
    if (!lock) return {{}, BlendFailure::lock};
    const auto copies = ComputeBlend(record);
    if (!copies) return {{}, BlendFailure::curves};
    AcDbBlockTableRecord* made = nullptr;
    AcDbObjectId block;
    if (!MakeAnonymousBlock(record.curve1.database(), made, block)) return {{}, BlendFailure::block};
    made->close();
    if (!FillBlendBlock(block, *copies, AcGeMatrix3d::translation(AcGePoint3d::kOrigin - copies->base),
                        false)) {
        EraseObject(block);
        return {{}, BlendFailure::definition};
    }
    const AcDbObjectId reference = InsertBlock(block, copies->base);
    if (reference.isNull()) {
        EraseObject(block);
        return {{}, BlendFailure::reference};
    }
    WriteBlend(reference, record);
    BlendAssociation().Follow(reference, record.Curves());
    return {reference};
}

bool UpdateBlend(AcDbObjectId reference, BlendRecord record) {
    const auto placement = placementOf(reference);
    if (!placement || !followTurns(record)) return false;
    const auto copies = ComputeBlend(record);
    if (!copies || !FillBlendBlock(placement->block, *copies, placement->toBlock, true)) return false;
    if (WriteBlend(reference, record) != Acad::eOk) return false;
    BlendAssociation().Follow(reference, record.Curves());
    return true;
}

bool RebuildBlend(AcDbObjectId reference) {
    const auto record = ReadBlend(reference);
    return record && UpdateBlend(reference, *record);
}

AcDbObjectId FindBlend(AcDbObjectId picked, const AcGePoint3d& point) {
    if (picked.objectClass()->isDerivedFrom(AcDbBlockReference::desc()) && ReadBlend(picked)) return picked;
    AcDbObjectId first;
    for (const AcDbObjectId reference : referencesRound(picked)) {
        if (!ReadBlend(reference)) continue;
        if (holdsInPlan(reference, point)) return reference;
        if (first.isNull()) first = reference;
    }
    return first;
}

} // namespace corvane
