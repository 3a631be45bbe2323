// Block references: data, transform and form in files. Extents, drawing and explosion live in
// blockreference_draw.cpp.
#include "host/ent/blockreference.h"

#include "host/db/blocktable.h"
#include "host/db/database.h"
#include "host/ent/filing.h"

HOST_DEFINE_CLASS(AcDbBlockReference, AcDbEntity, L"INSERT")

namespace {
constexpr const char *kPlain = "AcDbBlockReference", *kMultiple = "AcDbMInsertBlock";
enum Stated { kColumns = 1, kRows = 2, kColumnSpacing = 4, kRowSpacing = 8 };
} // namespace

AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord)
    : position_(position), block_(blockTableRecord) {}

Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& position) {
    HOST_SET_FINITE(position_, position);
}
Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId block) { HOST_SET(block_, block); }
Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& scale) {
    for (double s : {scale.sx, scale.sy, scale.sz})
        if (!std::isfinite(s) || s == 0) return Acad::eInvalidInput;
    HOST_SET(scale_, scale);
}
Acad::ErrorStatus AcDbBlockReference::setRotation(double angle) { HOST_SET_FINITE(rotation_, angle); }
Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& normal) {
    HOST_SET(normal_, host::unitNormal(normal));
}
Acad::ErrorStatus AcDbBlockReference::setArray(int rows, int columns, double rowSpacing,
                                               double columnSpacing) {
    if (rows < 1 || columns < 1 || rows > 32767 || columns > 32767 || !std::isfinite(rowSpacing) ||
        !std::isfinite(columnSpacing))
        return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    rows_ = rows, columns_ = columns, rowSpacing_ = rowSpacing, columnSpacing_ = columnSpacing;
    marker_ = nullptr;
    return Acad::eOk;
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
    AcGePoint3d origin;
    AcDbBlockTableRecord* block = nullptr;
    if (acdbOpenObject(block, block_, AcDb::kForRead) == Acad::eOk) origin = block->origin(), block->close();
    AcGeMatrix3d scaling;
    scaling.entry[0][0] = scale_.sx, scaling.entry[1][1] = scale_.sy, scaling.entry[2][2] = scale_.sz;
    AcGeMatrix3d matrix =
        AcGeMatrix3d::translation(position_.asVector()) * AcGeMatrix3d::planeToWorld(normal_) *
        AcGeMatrix3d::rotation(rotation_, AcGeVector3d::kZAxis, AcGePoint3d::kOrigin) * scaling;
    return matrix * AcGeMatrix3d::translation(-origin.asVector());
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* attribute) {
    AcDbObjectId id;
    return appendAttribute(id, attribute);
}
Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
    if (!attribute) return Acad::eNullEntityPointer;
    if (!attribute->objectId().isNull()) return Acad::eAlreadyInDb;
    if (auto es = willModify(); es != Acad::eOk) return es;
    id = parts_.append(*this, attribute);
    return Acad::eOk;
}
AcDbObjectIterator* AcDbBlockReference::attributeIterator() const {
    return new AcDbObjectIterator(parts_.ids());
}

bool AcDbBlockReference::inGroup(const host::Group& group, host::ReadContext& context) {
    const bool multiple = context.within(kMultiple);
    if (multiple || context.within(kPlain)) {
        if (!context.subclass.empty()) marker_ = multiple ? kMultiple : kPlain;
        switch (group.code) {
        case 2: block_ = context.block(group.text); return true;
        case 41: scale_.sx = group.real; return true;
        case 42: scale_.sy = group.real; return true;
        case 43: scale_.sz = group.real; return true;
        case 44: columnSpacing_ = group.real, stated_ |= kColumnSpacing; return true;
        case 45: rowSpacing_ = group.real, stated_ |= kRowSpacing; return true;
        case 50: rotation_ = host::toRadians(group.real); return true;
        case 66: return true; // attributes follow; told by the parts themselves
        case 70: columns_ = int(group.integer), stated_ |= kColumns; return true;
        case 71: rows_ = int(group.integer), stated_ |= kRows; return true;
        default:
            if (host::takeTriple(group, 10, position_) || host::takeTriple(group, 210, normal_)) return true;
        }
    }
    return AcDbEntity::inGroup(group, context);
}

void AcDbBlockReference::inDone(host::ReadContext& context) {
    normal_ = host::unitNormal(normal_);
    position_.fromPlane(normal_);
    rows_ = rows_ > 0 ? rows_ : 1, columns_ = columns_ > 0 ? columns_ : 1;
    for (double* s : {&scale_.sx, &scale_.sy, &scale_.sz}) {
        if (std::isfinite(*s) && *s != 0) continue;
        *s = 1;
        context.repaired("block reference with a scale of 0: taken as 1");
    }
    if (block_.isNull()) context.repaired("block reference without a block: it draws nothing");
}

void AcDbBlockReference::outGroups(host::GroupWriter& writer) const {
    const bool multiple = rows_ > 1 || columns_ > 1;
    AcDbEntity::outGroups(writer);
    writer.subclass(marker_ ? marker_ : multiple ? kMultiple : kPlain);
    if (parts_.living() > 0) writer.integer(66, 1);
    writer.recordName(2, block_);
    writer.point(10, position_.inPlane(normal_));
    if (scale_.sx != 1) writer.real(41, scale_.sx);
    if (scale_.sy != 1) writer.real(42, scale_.sy);
    if (scale_.sz != 1) writer.real(43, scale_.sz);
    if (rotation_ != 0) writer.real(50, host::fileDegrees(rotation_));
    if (multiple || (stated_ & kColumns)) writer.integer(70, columns_);
    if (multiple || (stated_ & kRows)) writer.integer(71, rows_);
    if (multiple || (stated_ & kColumnSpacing)) writer.real(44, columnSpacing_);
    if (multiple || (stated_ & kRowSpacing)) writer.real(45, rowSpacing_);
    writer.normal(210, normal_);
}
