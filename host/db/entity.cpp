// AcDbEntity: layer, colour and their kin, and the public doors of drawing, measuring and moving.
// The form in files is in entity_filing.cpp.
#include "host/db/entity.h"

#include <cmath>

#include "host/db/access.h"
#include "host/os/text.h"

HOST_DEFINE_ABSTRACT_CLASS(AcDbEntity, AcDbObject)

namespace {
host::EntityDisplay* theDisplay = nullptr;

AcDbDatabase* databaseFor(const AcDbEntity& entity) {
    return entity.database() ? entity.database() : acdbHostApplicationServices()->workingDatabase();
}
} // namespace

void host::setEntityDisplay(EntityDisplay* display) { theDisplay = display; }
host::EntityDisplay* host::entityDisplay() { return theDisplay; }

AcDbObjectId AcDbEntity::blockId() const {
    constexpr int kDeepest = 4; // an attribute's reference's record, with room to spare
    AcDbObjectId owner = ownerId();
    for (int depth = 0; depth < kDeepest && owner.isValid(); ++depth) {
        if (host::peek<AcDbBlockTableRecord>(owner)) return owner;
        owner = host::ObjectAccess::object(owner)->ownerId();
    }
    return {};
}

// -- properties ---------------------------------------------------------------------------------------

template <class Change> void AcDbEntity::forParts(Adesk::Boolean doSubents, Change change) {
    if (!doSubents || !database()) return;
    std::vector<AcDbObjectId> parts;
    ownedParts(parts);
    for (auto id : parts)
        if (AcDbObjectPointer<AcDbEntity> part(id, AcDb::kForWrite); part) change(*part.object());
}

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color, Adesk::Boolean doSubents, AcDbDatabase* db) {
    if (color.isNone()) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    color_ = color;
    fileIndex_ = Adesk::Int16(color.colorIndex());
    forgetColorName();
    forParts(doSubents, [&](AcDbEntity& part) { part.setColor(color, true, db); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 index, Adesk::Boolean doSubents) {
    AcCmColor color;
    if (index > 256 || color.setColorIndex(index) != Acad::eOk) return Acad::eInvalidInput;
    return setColor(color, doSubents);
}

std::wstring AcDbEntity::layerName() const {
    const auto* record = host::peek<AcDbLayerTableRecord>(layer_);
    return record ? record->name() : L"0";
}

ACHAR* AcDbEntity::layer() const {
    ACHAR* copy = nullptr;
    acutNewString(layerName().c_str(), copy);
    return copy;
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId layer, Adesk::Boolean doSubents, bool) {
    if (!host::peek<AcDbLayerTableRecord>(layer)) return Acad::eInvalidInput;
    if (database() && layer.database() != database()) return Acad::eWrongDatabase;
    if (auto es = willModify(); es != Acad::eOk) return es;
    layer_ = layer;
    forParts(doSubents, [&](AcDbEntity& part) { part.setLayer(layer); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* name, Adesk::Boolean doSubents, bool allowHidden) {
    if (!name) return Acad::eInvalidInput;
    AcDbDatabase* db = databaseFor(*this);
    if (!db) return Acad::eNoDatabase;
    const AcDbObjectId layer = db->find(AcDbLayerTable::desc(), name);
    return layer.isNull() ? Acad::eKeyNotFound : setLayer(layer, doSubents, allowHidden);
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId linetype, Adesk::Boolean doSubents) {
    if (!host::peek<AcDbLinetypeTableRecord>(linetype)) return Acad::eInvalidInput;
    if (database() && linetype.database() != database()) return Acad::eWrongDatabase;
    if (auto es = willModify(); es != Acad::eOk) return es;
    linetype_ = linetype;
    forParts(doSubents, [&](AcDbEntity& part) { part.setLinetype(linetype); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLinetype(const ACHAR* name, Adesk::Boolean doSubents) {
    if (!name) return Acad::eInvalidInput;
    AcDbDatabase* db = databaseFor(*this);
    if (!db) return Acad::eNoDatabase;
    const AcDbObjectId linetype = db->find(AcDbLinetypeTable::desc(), name);
    return linetype.isNull() ? Acad::eKeyNotFound : setLinetype(linetype, doSubents);
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double scale, Adesk::Boolean doSubents) {
    if (!(scale > 0) || !std::isfinite(scale)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    linetypeScale_ = scale;
    forParts(doSubents, [&](AcDbEntity& part) { part.setLinetypeScale(scale); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight weight, Adesk::Boolean doSubents) {
    if (weight < AcDb::kLnWtByLwDefault || weight > AcDb::kLnWt211) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    lineWeight_ = weight;
    forParts(doSubents, [&](AcDbEntity& part) { part.setLineWeight(weight); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility visibility, Adesk::Boolean doSubents) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    visible_ = visibility == AcDb::kVisible;
    forParts(doSubents, [&](AcDbEntity& part) { part.setVisibility(visibility); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setTransparencyCode(Adesk::UInt32 code) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    transparency_ = code;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setPropertiesFrom(const AcDbEntity* from, Adesk::Boolean doSubents) {
    if (!from) return Acad::eNullEntityPointer;
    if (auto es = setColor(from->color_, doSubents); es != Acad::eOk) return es;
    if (!from->layer_.isNull())
        if (auto es = setLayer(from->layer_, doSubents); es != Acad::eOk) return es;
    if (!from->linetype_.isNull())
        if (auto es = setLinetype(from->linetype_, doSubents); es != Acad::eOk) return es;
    setLinetypeScale(from->linetypeScale_, doSubents);
    setLineWeight(from->lineWeight_, doSubents);
    setVisibility(from->visibility(), doSubents);
    setTransparencyCode(from->transparency_);
    return subSetPropertiesFrom(from);
}

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* db) {
    if (!db) db = databaseFor(*this);
    if (!db) return;
    setColor(db->cecolor());
    setLayer(db->clayer());
    setLinetype(db->celtype());
    setLinetypeScale(db->celtscale());
    setLineWeight(db->celweight());
}

// -- moving and measuring -----------------------------------------------------------------------------

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& matrix) {
    for (const auto& row : matrix.entry)
        for (double value : row)
            if (!std::isfinite(value)) return Acad::eInvalidInput;
    if (matrix.isSingular() || matrix.isPerspective()) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    return subTransformBy(matrix);
}

Acad::ErrorStatus AcDbEntity::getTransformedCopy(const AcGeMatrix3d& matrix, AcDbEntity*& copy) const {
    copy = nullptr;
    return subGetTransformedCopy(matrix, copy);
}

Acad::ErrorStatus AcDbEntity::subGetTransformedCopy(const AcGeMatrix3d& matrix, AcDbEntity*& copy) const {
    std::unique_ptr<AcRxObject> made(clone());
    AcDbEntity* entity = AcDbEntity::cast(made.get());
    if (!entity) return Acad::eNotApplicable;
    if (auto es = entity->transformBy(matrix); es != Acad::eOk) return es;
    made.release();
    copy = entity;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
    const auto es = subGetGeomExtents(extents);
    return es == Acad::eOk && !extents.isValid() ? Acad::eInvalidExtents : es;
}

Acad::ErrorStatus AcDbEntity::explode(AcDbVoidPtrArray& parts) const { return subExplode(parts); }

// Either of the two may know how to meet the other.
Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* other, AcDb::Intersect extension,
                                            AcGePoint3dArray& points, Adesk::GsMarker,
                                            Adesk::GsMarker) const {
    if (!other) return Acad::eNullEntityPointer;
    const auto es = subIntersectWith(other, extension, nullptr, points);
    if (es != Acad::eNotImplementedYet) return es;
    constexpr AcDb::Intersect swapped[] = {AcDb::kOnBothOperands, AcDb::kExtendArg, AcDb::kExtendThis,
                                           AcDb::kExtendBoth};
    return other->subIntersectWith(this, swapped[extension & 3], nullptr, points);
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* other, AcDb::Intersect extension,
                                            const AcGePlane& plane, AcGePoint3dArray& points, Adesk::GsMarker,
                                            Adesk::GsMarker) const {
    if (!other) return Acad::eNullEntityPointer;
    return subIntersectWith(other, extension, &plane, points);
}

Acad::ErrorStatus AcDbEntity::getGripPoints(AcGePoint3dArray& points) const {
    return subGetGripPoints(points);
}

Acad::ErrorStatus AcDbEntity::moveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (indices.isEmpty()) return Acad::eOk;
    if (auto es = willModify(); es != Acad::eOk) return es;
    return subMoveGripPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::getStretchPoints(AcGePoint3dArray& points) const {
    return subGetStretchPoints(points);
}

Acad::ErrorStatus AcDbEntity::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (indices.isEmpty()) return Acad::eOk;
    if (auto es = willModify(); es != Acad::eOk) return es;
    return subMoveStretchPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::getOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                             const AcGePoint3d& last, AcGePoint3dArray& points) const {
    return subGetOsnapPoints(mode, pick, last, points);
}

// -- what kinds that fill nothing in answer -----------------------------------------------------------

Acad::ErrorStatus AcDbEntity::getPlane(AcGePlane&) const { return Acad::eNotApplicable; }
Adesk::Boolean AcDbEntity::subWorldDraw(AcGiWorldDraw*) const { return true; }
void AcDbEntity::subViewportDraw(AcGiViewportDraw*) const {}
Acad::ErrorStatus AcDbEntity::subTransformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbEntity::subGetGeomExtents(AcDbExtents&) const { return Acad::eInvalidExtents; }
Acad::ErrorStatus AcDbEntity::subExplode(AcDbVoidPtrArray&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity*, AcDb::Intersect, const AcGePlane*,
                                               AcGePoint3dArray&) const {
    return Acad::eNotImplementedYet;
}
Acad::ErrorStatus AcDbEntity::subGetGripPoints(AcGePoint3dArray&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbEntity::subMoveGripPointsAt(const AcGeIntArray&, const AcGeVector3d&) {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbEntity::subGetStretchPoints(AcGePoint3dArray& points) const {
    return subGetGripPoints(points);
}
Acad::ErrorStatus AcDbEntity::subMoveStretchPointsAt(const AcGeIntArray& indices,
                                                     const AcGeVector3d& offset) {
    return subMoveGripPointsAt(indices, offset);
}
Acad::ErrorStatus AcDbEntity::subGetOsnapPoints(AcDb::OsnapMode, const AcGePoint3d&, const AcGePoint3d&,
                                                AcGePoint3dArray&) const {
    return Acad::eNotApplicable;
}

// -- showing ------------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbEntity::highlight() const {
    if (theDisplay && database()) theDisplay->highlight(objectId(), true);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbEntity::unhighlight() const {
    if (theDisplay && database()) theDisplay->highlight(objectId(), false);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbEntity::draw() {
    if (theDisplay && database()) theDisplay->redraw(objectId());
    return Acad::eOk;
}
Adesk::Boolean AcDbEntity::worldDraw(AcGiWorldDraw* context) const { return subWorldDraw(context); }
void AcDbEntity::viewportDraw(AcGiViewportDraw* context) const { subViewportDraw(context); }

int acdbEntUpd(const ads_name entity) {
    AcDbObjectId id;
    if (acdbGetObjectId(id, entity) != Acad::eOk || !host::peek<AcDbEntity>(id)) return RTERROR;
    if (theDisplay) theDisplay->redraw(id);
    return RTNORM;
}
