// Regions as entities.
#include "host/solid/region.h"

#include <algorithm>
#include <cmath>

#include "host/ent/curve_make.h"
#include "host/gi/draw.h"
#include "host/solid/modeler_faces.h"
#include "host/solid/modeler_write.h"
#include "host/solid/solid3d.h"

HOST_DEFINE_CLASS(AcDbRegion, AcDbEntity, L"REGION")

namespace {

constexpr double kMeet = 1e-8, kSamePlane = 1e-7; // of the size of what is joined

double sizeOf(const AcDbExtents& box) {
    return box.isValid()
               ? (box.maxPoint() - box.minPoint()).length() + box.minPoint().asVector().length() * 1e-8
               : 0;
}

bool inOnePlane(const host::PlanarFaces& a, const host::PlanarFaces& b) {
    const AcGeVector3d& normal = a.front().normal;
    if (!normal.isParallelTo(b.front().normal)) return false;
    const AcGePoint3d p = a.front().loops.front().front().start(),
                      q = b.front().loops.front().front().start();
    const double size = sizeOf(host::extentsOf(a)) + sizeOf(host::extentsOf(b));
    return std::abs((p - q).dotProduct(normal)) <= kSamePlane * size;
}

} // namespace

const host::PlanarFaces& AcDbRegion::faces() const {
    if (!faces_) {
        auto read = own_.isEmpty() ? std::nullopt : host::facesOf(host::readModelerText(own_.list()));
        faces_ = std::make_shared<const host::PlanarFaces>(read ? std::move(*read) : host::PlanarFaces());
    }
    return *faces_;
}

bool AcDbRegion::inGroup(const host::Group& group, host::ReadContext& context) {
    faces_.reset();
    return GroupedEntity::inGroup(group, context);
}

void AcDbRegion::outGroups(host::GroupWriter& writer) const {
    if (!own_.isEmpty() || isNull()) return GroupedEntity::outGroups(writer);
    AcDbEntity::outGroups(writer);
    host::OwnGroups made;
    made.assign(host::modelerGroups(host::modelerTextOf(faces())));
    made.write(writer, marker());
}

void AcDbRegion::take(host::PlanarFaces faces) {
    faces_ = std::make_shared<const host::PlanarFaces>(std::move(faces));
    own_ = host::OwnGroups();
}

Acad::ErrorStatus AcDbRegion::createFromCurves(const AcDbVoidPtrArray& curves, AcDbVoidPtrArray& regions) {
    std::vector<std::shared_ptr<const host::CurvePath>> kept;
    std::vector<const host::CurvePath*> paths;
    AcDbExtents box;
    for (void* pointer : curves) {
        const auto* curve = AcDbCurve::cast(static_cast<const AcDbEntity*>(pointer));
        if (!curve) continue;
        kept.push_back(curve->path());
        if (kept.back()->isEmpty()) continue;
        paths.push_back(kept.back().get());
        box.addExt(kept.back()->extents());
    }
    bool any = false;
    for (host::FaceLoop& loop : host::closedLoops(paths, kMeet * sizeOf(box))) {
        auto face = host::faceOf(std::move(loop));
        if (!face) continue;
        auto* region = new AcDbRegion;
        region->take({std::move(*face)});
        regions.append(static_cast<AcDbEntity*>(region));
        any = true;
    }
    return any ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbRegion::booleanOper(AcDb::BoolOperType operation, AcDbRegion* other) {
    if (!other || other == this) return Acad::eInvalidInput;
    const host::PlanarFaces &mine = faces(), &theirs = other->faces();
    if (!mine.empty() && !theirs.empty() && !inOnePlane(mine, theirs)) return Acad::eInvalidInput;
    auto combined = host::combineFaces(mine, theirs, operation);
    if (!combined) return Acad::eGeneralModelingFailure;
    if (auto es = change(); es != Acad::eOk) return es;
    if (auto es = other->change(); es != Acad::eOk) return es;
    take(std::move(*combined));
    other->take({});
    return Acad::eOk;
}

bool AcDbRegion::isNull() const { return faces().empty(); }

Acad::ErrorStatus AcDbRegion::getArea(double& area) const {
    if (isNull()) return Acad::eInvalidInput;
    area = 0;
    for (const host::PlanarFace& face : faces()) area += host::areaOf(face);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRegion::getNormal(AcGeVector3d& normal) const {
    if (isNull()) return Acad::eInvalidInput;
    return normal = faces().front().normal, Acad::eOk;
}

Acad::ErrorStatus AcDbRegion::getPlane(AcGePlane& plane) const {
    if (isNull()) return Acad::eInvalidInput;
    const host::PlanarFace& face = faces().front();
    return plane.set(face.loops.front().front().start(), face.normal), Acad::eOk;
}

Adesk::Boolean AcDbRegion::subWorldDraw(AcGiWorldDraw* context) const {
    for (const host::PlanarFace& face : faces())
        for (const host::FaceLoop& loop : face.loops)
            for (const host::FaceEdge& edge : loop)
                if (const auto curve = host::makeCurve(edge.path)) curve->worldDraw(context);
    return true;
}

Acad::ErrorStatus AcDbRegion::subTransformBy(const AcGeMatrix3d& matrix) {
    if (isNull()) return Acad::eNotApplicable;
    auto moved = host::transformedFaces(faces(), matrix);
    if (!moved) return Acad::eInvalidInput;
    if (auto es = change(); es != Acad::eOk) return es;
    take(std::move(*moved));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRegion::subGetGeomExtents(AcDbExtents& extents) const {
    if (isNull()) return Acad::eInvalidExtents;
    return extents = host::extentsOf(faces()), Acad::eOk;
}

Acad::ErrorStatus AcDbRegion::subExplode(AcDbVoidPtrArray& parts) const {
    if (isNull()) return Acad::eInvalidInput;
    const auto add = [&](AcDbEntity* entity) {
        entity->setPropertiesFrom(this);
        parts.append(entity);
    };
    if (faces().size() > 1) {
        for (const host::PlanarFace& face : faces()) {
            auto* region = new AcDbRegion;
            region->take({face});
            add(region);
        }
        return Acad::eOk;
    }
    for (const host::FaceLoop& loop : faces().front().loops)
        for (const host::FaceEdge& edge : loop)
            if (auto curve = host::makeCurve(edge.path)) add(curve.release());
    return Acad::eOk;
}

void host::registerSolidClasses() {
    AcDbRegion::desc(), AcDb3dSolid::desc(), AcDbBody::desc(), AcDbSurface::desc(), AcDbPlaneSurface::desc();
}
