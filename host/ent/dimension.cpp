// Dimensions: shown, measured and moved by their block.
#include "host/ent/dimension.h"

#include "host/db/blocktable.h"
#include "host/db/database.h"
#include "host/ent/blockreference.h"
#include "host/ent/filing.h"

HOST_DEFINE_CLASS(AcDbDimension, AcDbEntity, L"DIMENSION")
HOST_DEFINE_CLASS(AcDbArcDimension, AcDbDimension, L"ARC_DIMENSION")
HOST_DEFINE_CLASS(AcDbRadialDimensionLarge, AcDbDimension, L"LARGE_RADIAL_DIMENSION")

namespace {

// The markers behind the common one, by kind; rotated dimensions have a second one without groups.
constexpr const char* kMarkers[] = {"AcDbAlignedDimension",      "AcDbAlignedDimension",
                                    "AcDb2LineAngularDimension", "AcDbDiametricDimension",
                                    "AcDbRadialDimension",       "AcDb3PointAngularDimension",
                                    "AcDbOrdinateDimension"};
constexpr const char* kRotatedMarker = "AcDbRotatedDimension";

// Groups of the kind rather than of all dimensions.
bool isOfKind(int code) {
    const int base = code % 10;
    return (code >= 13 && code <= 36 && base >= 3 && base <= 6) || code == 40 || code == 50 || code == 52;
}

bool isTranslation(const AcGeMatrix3d& matrix) {
    for (unsigned row = 0; row < 3; ++row)
        for (unsigned column = 0; column < 3; ++column)
            if (std::fabs(matrix(row, column) - (row == column ? 1 : 0)) > 1e-12) return false;
    return true;
}

} // namespace

AcDbDimension::Kind AcDbDimension::kind() const {
    if (isA() != AcDbDimension::desc()) return kOther;
    const std::int64_t kind = own_.integer(70) & 7;
    return kind < kOther ? Kind(kind) : kOther;
}

AcDbObjectId AcDbDimension::dimBlockId() const {
    return database() ? database()->find(AcDbBlockTable::desc(), own_.text(2)) : AcDbObjectId();
}
AcDbObjectId AcDbDimension::dimensionStyle() const {
    return database() ? database()->find(AcDbDimStyleTable::desc(), own_.text(3)) : AcDbObjectId();
}
AcGeVector3d AcDbDimension::normal() const {
    return host::unitNormal(own_.vector(210, AcGeVector3d::kZAxis));
}
AcGePoint3d AcDbDimension::dimBlockPosition() const { return host::toWorld(own_.point(12), normal()); }
AcGePoint3d AcDbDimension::textPosition() const { return host::toWorld(own_.point(11), normal()); }
double AcDbDimension::textRotation() const { return host::toRadians(own_.real(53)); }
double AcDbDimension::horizontalRotation() const { return host::toRadians(own_.real(51)); }

Acad::ErrorStatus AcDbDimension::setDimensionText(const ACHAR* text) {
    if (!text) return Acad::eInvalidInput;
    if (auto es = change(); es != Acad::eOk) return es;
    return own_.setText(1, text), Acad::eOk;
}

// Dimensions from files without markers get those of their kind.
void AcDbDimension::outGroups(host::GroupWriter& writer) const {
    const Kind kind = this->kind();
    if (kind == kOther || own_.hasMarker(kMarkers[kind])) {
        GroupedEntity::outGroups(writer);
    } else {
        AcDbEntity::outGroups(writer);
        writer.subclass(marker());
        for (const host::Group group : own_.list())
            if (group.code != 100 && !isOfKind(group.code)) writer.write(group);
        writer.subclass(kMarkers[kind]);
        for (const host::Group group : own_.list())
            if (group.code != 100 && isOfKind(group.code)) writer.write(group);
    }
    if (kind == kRotated && !own_.hasMarker(kRotatedMarker)) writer.subclass(kRotatedMarker);
}

AcDbBlockReference AcDbDimension::shown() const { return {dimBlockPosition(), dimBlockId()}; }

Adesk::Boolean AcDbDimension::subWorldDraw(AcGiWorldDraw* context) const {
    return shown().worldDraw(context);
}

Acad::ErrorStatus AcDbDimension::subGetGeomExtents(AcDbExtents& extents) const {
    return shown().getGeomExtents(extents);
}

Acad::ErrorStatus AcDbDimension::subExplode(AcDbVoidPtrArray& parts) const { return shown().explode(parts); }

Acad::ErrorStatus AcDbDimension::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!isTranslation(matrix)) return Acad::eNotApplicable;
    const AcGeVector3d offset = matrix.translation();
    const AcGePoint3d block = host::toPlane(dimBlockPosition() + offset, normal());
    const AcGePoint3d text = host::toPlane(textPosition() + offset, normal());
    if (auto es = change(); es != Acad::eOk) return es;
    own_.mapPoints({10, 13, 14, 15, 16}, [&](const AcGePoint3d& p) { return p + offset; });
    own_.setPoint(11, text, 10);
    own_.setPoint(12, block, 11);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::subGetGripPoints(AcGePoint3dArray& points) const {
    for (int code : {13, 14, 15, 16, 10})
        for (const AcGePoint3d& p : own_.points(code)) points.append(p);
    points.append(textPosition());
    return Acad::eOk;
}
