// Block references: their transform taken apart, extents, drawing and explosion. Attribute definitions
// inside a block aren't shown by its references unless they are constant.
#include <algorithm>
#include <cmath>

#include "host/db/blocktable.h"
#include "host/ent/block_clip.h"
#include "host/ent/blockreference.h"
#include "host/ent/curve.h"
#include "host/ent/curve_intersect.h"
#include "host/ent/filing.h"
#include "host/gi/draw.h"

namespace {

constexpr int kDeepest = 32;        // blocks inside blocks; deeper ones refer to themselves
constexpr long kMostCells = 100000; // of a multiple insertion, that are drawn or exploded

const AcDbBlockTableRecord* blockOf(AcDbObjectId id) {
    return id.isNull() || id.isErased() ? nullptr : AcDbBlockTableRecord::cast(id.cell()->object);
}

// Visits what a block shows, straight from the cells: showing changes nothing, whoever has it open.
template <class Visit> void eachShown(AcDbObjectId block, Visit visit) {
    const auto* record = blockOf(block);
    if (!record) return;
    for (AcDbObjectId id : record->entities()) {
        const auto* entity = id.isNull() ? nullptr : AcDbEntity::cast(id.cell()->object);
        if (!entity || entity->isErased()) continue;
        const auto* definition = AcDbAttributeDefinition::cast(entity);
        if (definition && !definition->isConstant()) continue;
        visit(*entity);
    }
}

// One level deeper, while it stands.
class Descent {
public:
    Descent() { ++depth_; }
    ~Descent() { --depth_; }
    Descent(const Descent&) = delete;
    Descent& operator=(const Descent&) = delete;
    bool isTooDeep() const { return depth_ > kDeepest; }

private:
    static inline int depth_ = 0;
};

AcDbExtents extentsThrough(const AcDbEntity& entity, const AcGeMatrix3d& matrix) {
    AcDbExtents box;
    if (const auto* curve = AcDbCurve::cast(&entity)) return curve->path()->transformed(matrix).extents();
    if (const auto* reference = AcDbBlockReference::cast(&entity)) return reference->extentsThrough(matrix);
    AcDbEntity* moved = nullptr;
    if (entity.getTransformedCopy(matrix, moved) == Acad::eOk) {
        const std::unique_ptr<AcDbEntity> owned(moved);
        if (owned->getGeomExtents(box) == Acad::eOk) return box;
    }
    if (entity.getGeomExtents(box) == Acad::eOk) box.transformBy(matrix);
    return box;
}

} // namespace

AcRxObject* AcDbBlockReference::clone() const {
    AcRxObject* copy = AcDbEntity::clone();
    if (copy) static_cast<AcDbBlockReference*>(copy)->parts_.detach();
    return copy;
}

// -- the transform ------------------------------------------------------------------------------------

namespace {

// A block's matrix in the terms of a reference: a mirrored one has a negative X factor.
struct Placing {
    AcGeVector3d normal;
    AcGeScale3d scale;
    double rotation = 0;
};

std::optional<Placing> placingOf(const AcGeMatrix3d& matrix) {
    if (!matrix.isScaledOrtho() || matrix.isSingular()) return {};
    const AcGeVector3d x = matrix * AcGeVector3d::kXAxis, y = matrix * AcGeVector3d::kYAxis,
                       z = matrix * AcGeVector3d::kZAxis;
    Placing out;
    out.normal = z / z.length();
    const double sense = x.crossProduct(y).dotProduct(z) < 0 ? -1 : 1;
    out.scale.set(sense * x.length(), y.length(), z.length());
    const AcGeVector3d along = AcGeMatrix3d::worldToPlane(out.normal) * (x * sense);
    out.rotation = AcGeVector2d(along.x, along.y).angle();
    return out;
}

} // namespace

Acad::ErrorStatus AcDbBlockReference::setBlockTransform(const AcGeMatrix3d& matrix) {
    const auto placing = placingOf(matrix);
    if (!placing) return Acad::eCannotScaleNonUniformly;
    const auto* record = blockOf(block_);
    const AcGePoint3d position = matrix * (record ? record->origin() : AcGePoint3d::kOrigin);
    if (!host::finite(position)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    position_ = position, normal_ = placing->normal;
    scale_ = placing->scale, rotation_ = placing->rotation;
    return Acad::eOk;
}

AcDbBlockReference::Steps AcDbBlockReference::steps() const {
    const AcGeMatrix3d turn = AcGeMatrix3d::planeToWorld(normal_) *
                              AcGeMatrix3d::rotation(rotation_, AcGeVector3d::kZAxis, AcGePoint3d::kOrigin);
    return {turn * AcGeVector3d(columnSpacing_, 0, 0), turn * AcGeVector3d(0, rowSpacing_, 0)};
}

Acad::ErrorStatus AcDbBlockReference::subTransformBy(const AcGeMatrix3d& matrix) {
    const Steps before = steps();
    const AcGeVector3d column = matrix * before.column, row = matrix * before.row;
    if (auto es = setBlockTransform(matrix * blockTransform()); es != Acad::eOk) return es;
    const AcGeMatrix3d back = AcGeMatrix3d::rotation(-rotation_, AcGeVector3d::kZAxis, AcGePoint3d::kOrigin) *
                              AcGeMatrix3d::worldToPlane(normal_);
    columnSpacing_ = (back * column).x, rowSpacing_ = (back * row).y;
    parts_.eachForWrite<AcDbAttribute>([&](AcDbAttribute& attribute) { attribute.transformBy(matrix); });
    return Acad::eOk;
}

// -- extents and drawing ------------------------------------------------------------------------------

// All cells are moved copies of one, so the outermost four tell the box.
AcDbExtents AcDbBlockReference::extentsThrough(const AcGeMatrix3d& matrix) const {
    AcDbExtents box;
    const Descent descent;
    if (descent.isTooDeep()) return box;
    const AcGeMatrix3d whole = matrix * blockTransform();
    eachShown(block_, [&](const AcDbEntity& entity) { box.addExt(::extentsThrough(entity, whole)); });
    const Steps step = steps();
    box.expandBy(matrix * (step.column * (columns_ - 1)));
    box.expandBy(matrix * (step.row * (rows_ - 1)));
    parts_.each<AcDbAttribute>([&](const AcDbAttribute& attribute) {
        if (!attribute.isInvisible()) box.addExt(::extentsThrough(attribute, matrix));
    });
    return box;
}

Acad::ErrorStatus AcDbBlockReference::subGetGeomExtents(AcDbExtents& extents) const {
    const AcDbExtents box = extentsThrough(AcGeMatrix3d::kIdentity);
    if (!box.isValid()) return Acad::eInvalidExtents;
    return extents = box, Acad::eOk;
}

template <class Visit> void AcDbBlockReference::eachCell(Visit visit) const {
    const AcGeMatrix3d first = blockTransform();
    const Steps step = steps();
    long left = kMostCells;
    for (int row = 0; row < rows_; ++row)
        for (int column = 0; column < columns_ && left-- > 0; ++column)
            if (!visit(AcGeMatrix3d::translation(step.column * column + step.row * row) * first)) return;
}

Adesk::Boolean AcDbBlockReference::subWorldDraw(AcGiWorldDraw* context) const {
    const Descent descent;
    if (descent.isTooDeep()) return true;
    AcGiWorldGeometry& to = context->geometry();
    const auto clip = host::blockClip(*this);
    eachCell([&](const AcGeMatrix3d& matrix) {
        to.pushModelTransform(matrix);
        const bool clipped = clip && clip->shown && to.pushClipBoundary(clip->boundary);
        eachShown(block_, [&](const AcDbEntity& entity) { to.draw(&entity); });
        if (clipped) to.popClipBoundary();
        to.popModelTransform();
        return !context->regenAbort();
    });
    parts_.each<AcDbAttribute>([&](const AcDbAttribute& attribute) {
        if (!attribute.isInvisible()) to.draw(&attribute);
    });
    return true;
}

// -- taking apart -------------------------------------------------------------------------------------

namespace {

// A text that shows what the attribute does.
std::unique_ptr<AcDbText> textOf(const AcDbAttribute& attribute) {
    const std::unique_ptr<AcRxObject> copy(attribute.clone()); // without the attribute's ties
    auto text = std::make_unique<AcDbText>();
    text->takeFrom(static_cast<const AcDbText&>(*copy));
    return text;
}

// What can't take the matrix itself is taken apart until its pieces can.
void appendMoved(const AcDbEntity& entity, const AcGeMatrix3d& matrix, AcDbVoidPtrArray& parts) {
    const Descent descent;
    if (descent.isTooDeep()) return;
    if (const auto* attribute = AcDbAttribute::cast(&entity)) {
        auto text = textOf(*attribute);
        if (text->transformBy(matrix) == Acad::eOk) parts.append(text.release());
        return;
    }
    AcDbEntity* moved = nullptr;
    if (entity.getTransformedCopy(matrix, moved) == Acad::eOk) {
        parts.append(moved);
        return;
    }
    AcDbVoidPtrArray pieces;
    if (entity.explode(pieces) != Acad::eOk) return;
    for (void* piece : pieces) {
        const std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(piece));
        appendMoved(*owned, matrix, parts);
    }
}

} // namespace

Acad::ErrorStatus AcDbBlockReference::subExplode(AcDbVoidPtrArray& parts) const {
    if (!blockOf(block_)) return Acad::eNullBlockName;
    if (long(rows_) * columns_ > kMostCells) return Acad::eOutOfRange;
    eachCell([&](const AcGeMatrix3d& matrix) {
        eachShown(block_, [&](const AcDbEntity& entity) { appendMoved(entity, matrix, parts); });
        return true;
    });
    parts_.each<AcDbAttribute>([&](const AcDbAttribute& attribute) {
        if (!attribute.isInvisible()) parts.append(textOf(attribute).release());
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::explodeToOwnerSpace() const {
    AcDbBlockTableRecord* owner = nullptr;
    if (auto es = acdbOpenObject(owner, ownerId(), AcDb::kForWrite); es != Acad::eOk) return es;
    AcDbVoidPtrArray parts;
    auto es = explode(parts);
    for (void* part : parts) {
        auto* entity = static_cast<AcDbEntity*>(part);
        if (es == Acad::eOk) es = owner->appendAcDbEntity(entity);
        if (es == Acad::eOk)
            entity->close();
        else
            delete entity;
    }
    owner->close();
    return es;
}

Acad::ErrorStatus AcDbBlockReference::subIntersectWith(const AcDbEntity* other, AcDb::Intersect extension,
                                                       const AcGePlane* plane,
                                                       AcGePoint3dArray& points) const {
    return host::intersectEntities(*this, *other, extension, plane, points);
}

// -- grips and snap points ----------------------------------------------------------------------------

Acad::ErrorStatus AcDbBlockReference::subGetGripPoints(AcGePoint3dArray& points) const {
    return points.append(position_), Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subMoveGripPointsAt(const AcGeIntArray&, const AcGeVector3d& offset) {
    return subTransformBy(AcGeMatrix3d::translation(offset));
}

Acad::ErrorStatus AcDbBlockReference::subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                                        const AcGePoint3d& last,
                                                        AcGePoint3dArray& points) const {
    if (mode == AcDb::kOsModeIns) points.append(position_);
    AcDbVoidPtrArray parts;
    if (explode(parts) != Acad::eOk) return Acad::eOk;
    for (void* part : parts) {
        const std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
        owned->getOsnapPoints(mode, pick, last, points);
    }
    return Acad::eOk;
}
