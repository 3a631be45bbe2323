// Solids, traces and faces: data, form in files, and what they do as entities.
#include "host/ent/faces.h"

#include "host/ent/filing.h"
#include "host/gi/draw.h"

HOST_DEFINE_CLASS(AcDbTrace, AcDbEntity, L"TRACE")
HOST_DEFINE_CLASS(AcDbSolid, AcDbTrace, L"SOLID")
HOST_DEFINE_CLASS(AcDbFace, AcDbEntity, L"3DFACE")

namespace {

using Corners = std::array<AcGePoint3d, 4>;
using FiledCorners = std::array<host::FiledPoint, 4>;

// A component of one of the four corners: codes 10 to 13 and those of their Y and Z.
template <class Four> bool takeCorner(const host::Group& group, Four& corners, bool& hasFourth) {
    for (int i = 0; i < 4; ++i)
        if (host::takeTriple(group, 10 + i, corners[size_t(i)])) return hasFourth |= i == 3, true;
    return false;
}

template <class Four> Acad::ErrorStatus boxOf(const Four& corners, AcDbExtents& extents) {
    AcDbExtents box;
    for (const AcGePoint3d& p : corners) box.addPoint(p);
    return extents = box, Acad::eOk;
}

template <class Four>
void moveChosen(Four& corners, const AcGeIntArray& indices, const AcGeVector3d& offset) {
    for (int i = 0; i < 4; ++i)
        if (indices.contains(i)) corners[size_t(i)] += offset;
}

Acad::ErrorStatus snap(AcDb::OsnapMode mode, const Corners& round, AcGePoint3dArray& points) {
    for (size_t i = 0; i < 4; ++i) {
        if (mode == AcDb::kOsModeEnd) points.append(round[i]);
        if (mode == AcDb::kOsModeMid) points.append(round[i] + (round[(i + 1) % 4] - round[i]) * 0.5);
    }
    return Acad::eOk;
}

Corners unzigzagged(const FiledCorners& c) { return {c[0], c[1], c[3], c[2]}; }

} // namespace

// -- solids and traces --------------------------------------------------------------------------------

Acad::ErrorStatus AcDbTrace::getPointAt(unsigned index, AcGePoint3d& point) const {
    if (index > 3) return Acad::eInvalidIndex;
    return point = corners_[index], Acad::eOk;
}
Acad::ErrorStatus AcDbTrace::setPointAt(unsigned index, const AcGePoint3d& point) {
    if (index > 3) return Acad::eInvalidIndex;
    HOST_SET_FINITE(corners_[index], point);
}
Acad::ErrorStatus AcDbTrace::setThickness(double thickness) { HOST_SET_FINITE(thickness_, thickness); }
Acad::ErrorStatus AcDbTrace::setNormal(const AcGeVector3d& normal) {
    HOST_SET(normal_, host::unitNormal(normal));
}
Acad::ErrorStatus AcDbTrace::getPlane(AcGePlane& plane) const {
    return plane.set(corners_[0], normal_), Acad::eOk;
}

bool AcDbTrace::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbTrace")) {
        if (takeCorner(group, corners_, hasFourth_) || host::takeTriple(group, 210, normal_)) return true;
        if (group.code == 39) return thickness_ = group.real, true;
    }
    return AcDbEntity::inGroup(group, context);
}

void AcDbTrace::inDone(host::ReadContext&) {
    normal_ = host::unitNormal(normal_);
    if (!hasFourth_) corners_[3] = corners_[2];
    for (host::FiledPoint& p : corners_) p.fromPlane(normal_);
}

void AcDbTrace::outGroups(host::GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass("AcDbTrace");
    for (int i = 0; i < 4; ++i) writer.point(10 + i, corners_[size_t(i)].inPlane(normal_));
    if (thickness_ != 0) writer.real(39, thickness_);
    writer.normal(210, normal_);
}

Adesk::Boolean AcDbTrace::subWorldDraw(AcGiWorldDraw* context) const {
    const Corners round = unzigzagged(corners_);
    context->subEntityTraits().setFillType(kAcGiFillAlways);
    context->geometry().polygon(round[2].distanceTo(round[3]) > 0 ? 4 : 3, round.data());
    return true;
}

Acad::ErrorStatus AcDbTrace::subTransformBy(const AcGeMatrix3d& matrix) {
    AcGeVector3d normal = normal_;
    double elevation = 0;
    matrix.convertToLocal(normal, elevation);
    if (auto es = willModify(); es != Acad::eOk) return es;
    for (host::FiledPoint& p : corners_) p = matrix * p;
    if (thickness_ != 0) thickness_ *= (matrix * normal_).length();
    normal_ = normal;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTrace::subGetGeomExtents(AcDbExtents& extents) const {
    return boxOf(corners_, extents);
}
Acad::ErrorStatus AcDbTrace::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const AcGePoint3d& p : corners_) points.append(p);
    return Acad::eOk;
}
// Single corners stay in the plane.
Acad::ErrorStatus AcDbTrace::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    moveChosen(corners_, indices, indices.length() < 4 ? offset.orthoProject(normal_) : offset);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbTrace::subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d&, const AcGePoint3d&,
                                               AcGePoint3dArray& points) const {
    return snap(mode, unzigzagged(corners_), points);
}

// -- faces --------------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbFace::getVertexAt(unsigned index, AcGePoint3d& point) const {
    if (index > 3) return Acad::eInvalidIndex;
    return point = corners_[index], Acad::eOk;
}
Acad::ErrorStatus AcDbFace::setVertexAt(unsigned index, const AcGePoint3d& point) {
    if (index > 3) return Acad::eInvalidIndex;
    HOST_SET_FINITE(corners_[index], point);
}
Acad::ErrorStatus AcDbFace::isEdgeVisibleAt(unsigned index, Adesk::Boolean& visible) const {
    if (index > 3) return Acad::eInvalidIndex;
    return visible = !(hiddenEdges_ & (1 << index)), Acad::eOk;
}
Acad::ErrorStatus AcDbFace::makeEdgeVisibleAt(unsigned index) {
    if (index > 3) return Acad::eInvalidIndex;
    HOST_SET(hiddenEdges_, hiddenEdges_ & ~(1 << index));
}
Acad::ErrorStatus AcDbFace::makeEdgeInvisibleAt(unsigned index) {
    if (index > 3) return Acad::eInvalidIndex;
    HOST_SET(hiddenEdges_, hiddenEdges_ | (1 << index));
}

bool AcDbFace::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbFace")) {
        if (takeCorner(group, corners_, hasFourth_)) return true;
        if (group.code == 70) return hiddenEdges_ = int(group.integer), true;
    }
    return AcDbEntity::inGroup(group, context);
}

void AcDbFace::inDone(host::ReadContext&) {
    if (!hasFourth_) corners_[3] = corners_[2];
}

void AcDbFace::outGroups(host::GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass("AcDbFace");
    for (int i = 0; i < 4; ++i) writer.point(10 + i, corners_[size_t(i)]);
    if (hiddenEdges_ != 0) writer.integer(70, hiddenEdges_);
}

// Faces show their visible edges.
Adesk::Boolean AcDbFace::subWorldDraw(AcGiWorldDraw* context) const {
    for (size_t i = 0; i < 4; ++i) {
        const AcGePoint3d edge[] = {corners_[i], corners_[(i + 1) % 4]};
        const bool isEdge = edge[0].distanceTo(edge[1]) > 0;
        if (isEdge && !(hiddenEdges_ & (1 << i))) context->geometry().polyline(2, edge);
    }
    return true;
}

Acad::ErrorStatus AcDbFace::subTransformBy(const AcGeMatrix3d& matrix) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    for (AcGePoint3d& p : corners_) p = matrix * p;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::subGetGeomExtents(AcDbExtents& extents) const { return boxOf(corners_, extents); }
Acad::ErrorStatus AcDbFace::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const AcGePoint3d& p : corners_) points.append(p);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    moveChosen(corners_, indices, offset);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d&, const AcGePoint3d&,
                                              AcGePoint3dArray& points) const {
    return snap(mode, corners_, points);
}
