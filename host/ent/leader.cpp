// Leaders: data, form in files, drawing.
#include "host/ent/leader.h"

#include "host/db/database.h"
#include "host/ent/filing.h"
#include "host/ge/curves/interpolate.h"
#include "host/gi/draw.h"

HOST_DEFINE_CLASS(AcDbLeader, AcDbCurve, L"LEADER")

namespace {

constexpr const char* kMarker = "AcDbLeader";
constexpr int kScale = 40, kArrowSize = 41; // variables of dimension styles

// A variable that the entity overrides, in its xdata.
bool overridden(const AcDbObject& entity, int variable, double& value) {
    if (!entity.tail()) return false;
    std::int64_t named = -1;
    bool inStyle = false;
    for (const host::Group group : entity.tail()->xdata) {
        if (group.code == 1001) inStyle = false;
        if (group.is(1000, "DSTYLE")) inStyle = true;
        if (inStyle && group.code == 1040 && named == variable) return value = group.real, true;
        if (group.code == 1070) named = group.integer;
    }
    return false;
}

} // namespace

template <class Image> Acad::ErrorStatus AcDbLeader::moveVertices(Image image) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    own_.mapPoints({10}, image);
    vertices_ = own_.points(10);
    host::forgetKeptPicture(*this);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::setVertexAt(int index, const AcGePoint3d& point) {
    if (index < 0 || index >= numVertices()) return Acad::eInvalidIndex;
    if (!host::finite(point)) return Acad::eInvalidInput;
    int at = 0;
    return moveVertices([&](const AcGePoint3d& p) { return at++ == index ? point : p; });
}

AcGeVector3d AcDbLeader::normal() const { return host::unitNormal(own_.vector(210, AcGeVector3d::kZAxis)); }
AcDbObjectId AcDbLeader::dimensionStyle() const {
    return database() ? database()->find(AcDbDimStyleTable::desc(), own_.text(3)) : AcDbObjectId();
}
AcDbObjectId AcDbLeader::annotationObjId() const {
    AcDbObjectId id;
    if (database() && own_.handle(340)) database()->getAcDbObjectId(id, false, AcDbHandle(own_.handle(340)));
    return id;
}

double AcDbLeader::arrowSize() const {
    double size = 0.18, scale = 1; // where a style says nothing
    const AcDbObjectId style = dimensionStyle();
    const AcDbObject* record = style.isNull() ? nullptr : style.cell()->object;
    host::Group set;
    if (record && record->tail()) {
        if (record->tail()->kept.find(kArrowSize, set)) size = set.real;
        if (record->tail()->kept.find(kScale, set)) scale = set.real;
    }
    overridden(*this, kArrowSize, size), overridden(*this, kScale, scale);
    return size * (scale > 0 ? scale : 1);
}

bool AcDbLeader::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbEntity") && AcDbCurve::inGroup(group, context)) return true;
    return own_.take(group, context, kMarker);
}
void AcDbLeader::inDone(host::ReadContext&) { vertices_ = own_.points(10); }
void AcDbLeader::outGroups(host::GroupWriter& writer) const {
    AcDbCurve::outGroups(writer);
    own_.write(writer, kMarker);
}

host::CurvePath AcDbLeader::makePath() const {
    if (isSplined() && vertices_.size() > 2) {
        auto fit = host::ge::interpolate(vertices_);
        if (fit.curve.isValid()) return host::CurvePath::spline(std::move(fit.curve));
    }
    return host::CurvePath::chain(host::SpaceChain{vertices_, false});
}

// Leaders that are too short for their arrow have none.
std::vector<AcGePoint3d> AcDbLeader::arrow(const host::CurvePath& path) const {
    const double size = arrowSize();
    if (path.isEmpty() || !hasArrowHead() || vertices_.size() < 2 || !(size > 0)) return {};
    if (vertices_[0].distanceTo(vertices_[1]) < 2 * size) return {};
    const AcGeVector3d along = path.derivative(path.startParam(), 1).normal() * size;
    const AcGeVector3d across = normal().crossProduct(along) / 6;
    const AcGePoint3d tip = vertices_[0];
    return {tip, tip + along + across, tip + along - across};
}

Adesk::Boolean AcDbLeader::subWorldDraw(AcGiWorldDraw* context) const {
    AcDbCurve::subWorldDraw(context);
    const std::vector<AcGePoint3d> corners = arrow(makePath());
    if (corners.empty()) return true;
    context->subEntityTraits().setFillType(kAcGiFillAlways);
    context->geometry().polygon(Adesk::UInt32(corners.size()), corners.data());
    return true;
}

Acad::ErrorStatus AcDbLeader::subGetGeomExtents(AcDbExtents& extents) const {
    const host::CurvePath path = makePath();
    if (path.isEmpty()) return Acad::eInvalidExtents;
    AcDbExtents box = path.extents();
    for (const AcGePoint3d& p : arrow(path)) box.addPoint(p);
    return extents = box, Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subTransformBy(const AcGeMatrix3d& matrix) {
    if (auto es = moveVertices([&](const AcGePoint3d& p) { return matrix * p; }); es != Acad::eOk) return es;
    const auto turn = [&](const AcGePoint3d& p) { return AcGePoint3d::kOrigin + matrix * p.asVector(); };
    const auto turnUnit = [&](const AcGePoint3d& p) {
        return AcGePoint3d::kOrigin + (matrix * p.asVector()).normal();
    };
    own_.mapPoints({212, 213}, turn);
    own_.mapPoints({210, 211}, turnUnit);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subGetGripPoints(AcGePoint3dArray& points) const {
    return points.append(AcGePoint3dArray(vertices_)), Acad::eOk;
}
Acad::ErrorStatus AcDbLeader::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    int at = 0;
    return moveVertices([&](const AcGePoint3d& p) { return indices.contains(at++) ? p + offset : p; });
}
