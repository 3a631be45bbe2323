// Frames of objects, the matrices of copies, and the copies.
#include "arrays/one_curve/copies.h"

#include <cmath>
#include <numbers>

namespace corvane {
namespace {

constexpr const wchar_t* kDirection = RegisteredAppNames::kWorldDirection;
constexpr int kDirectionGroup = 1013;

Frame turnedInPlane(const AcGeVector3d& normal, double rotation) {
    const AcGeVector3d z = normal.normal();
    return Twisted(FrameOf(ArbitraryXAxis(z), z), rotation);
}

// A line lies in many planes and so has none of its own.
bool planeOf(const AcDbEntity& object, AcGePlane& plane) {
    return !AcDbLine::cast(&object) && object.isPlanar() && object.getPlane(plane) == Acad::eOk;
}

AcGeMatrix3d rotationOf(const ArrayParams& params, const Frame& object, const AcGeVector3d& tangent,
                        double position, const std::optional<AcGeVector3d>& reference) {
    if (!params.alongTangent) return AcGeMatrix3d::kIdentity;
    if (!params.acrossPath) return RotationInPlan(tangent);
    const double degrees = params.startTwist + (params.endTwist - params.startTwist) * position;
    const Frame across = FrameAcross(tangent, reference);
    return FrameToFrame(object, Twisted(across, degrees * std::numbers::pi / 180));
}

std::unique_ptr<AcDbEntity> copyOf(const AcDbEntity& prototype, const AcGeMatrix3d& matrix) {
    std::unique_ptr<AcRxObject> copy(prototype.clone());
    auto* entity = AcDbEntity::cast(copy.get());
    if (!entity || entity->transformBy(matrix) != Acad::eOk) return nullptr;
    copy.release();
    return std::unique_ptr<AcDbEntity>(entity);
}

AcGePoint3d insertionOf(const std::vector<GuidePoint>& places, const ArrayContents& contents) {
    if (places.front().found) return places.front().point;
    AcDbExtents box;
    if (contents.entities.empty() || contents.entities.front()->getGeomExtents(box) != Acad::eOk)
        return AcGePoint3d::kOrigin;
    return box.minPoint() + (box.maxPoint() - box.minPoint()) / 2;
}

} // namespace

AcGeMatrix3d CopyPlacement(const ArrayParams& params, const AcGePoint3d& base, const Frame& object,
                           const GuidePoint& place, double position,
                           const std::optional<AcGeVector3d>& reference) {
    const double scale = SizeFactor(params.settings.sizes, position, params.settings.gain);
    return CopyMatrix(base, place.point, scale,
                      rotationOf(params, object, place.tangent, position, reference));
}

std::optional<ArrayContents> MakeCopies(const ArraySource& source, const ArrayParams& params) {
    AcDbObjectPointer<AcDbCurve> path(source.path, AcDb::kForRead);
    AcDbObjectPointer<AcDbEntity> prototype(source.prototype, AcDb::kForRead);
    if (!path || !prototype) return std::nullopt;
    const auto distances = SampleDistances(*path, params.settings, params.start);
    if (distances.empty()) return std::nullopt;
    const bool closed = path->isClosed(), remembers = AcDbCurve::cast(prototype.object()) != nullptr;
    if (remembers && acdbRegApp(kDirection) == RTERROR) return std::nullopt;
    const auto reference = RememberedDirection(*path);
    const Frame object = ObjectFrame(*prototype);
    std::vector<GuidePoint> places = GuidePointsAt(*path, distances);
    ArrayContents contents;
    contents.entities.reserve(places.size());
    for (size_t i = 0; i < places.size(); ++i) {
        GuidePoint& place = places[i];
        if (!place.found) continue;
        if (params.start.direction < 0) place.tangent = -place.tangent;
        const double position = CopyPosition(i, places.size(), closed);
        auto copy =
            copyOf(*prototype, CopyPlacement(params, source.base, object, place, position, reference));
        if (!copy) continue;
        if (remembers) RememberDirection(*copy, place.tangent);
        contents.entities.push_back(std::move(copy));
    }
    contents.insertion = insertionOf(places, contents);
    return contents;
}

bool HasOwnPlane(AcDbObjectId id) {
    AcDbObjectPointer<AcDbEntity> object(id, AcDb::kForRead);
    if (!object) return false;
    const AcDbEntity* entity = object.object();
    AcGePlane plane;
    return AcDbBlockReference::cast(entity) || AcDbText::cast(entity) || AcDbMText::cast(entity) ||
           (AcDbCurve::cast(entity) && planeOf(*entity, plane));
}

Frame ObjectFrame(const AcDbEntity& object) {
    if (const auto* reference = AcDbBlockReference::cast(&object)) {
        AcGePoint3d origin;
        AcGeVector3d x, y, z;
        reference->blockTransform().getCoordSystem(origin, x, y, z);
        return FrameOf(x, z);
    }
    if (const auto* text = AcDbText::cast(&object)) return turnedInPlane(text->normal(), text->rotation());
    if (const auto* text = AcDbMText::cast(&object)) return turnedInPlane(text->normal(), text->rotation());
    AcGePlane plane;
    if (AcDbCurve::cast(&object) && planeOf(object, plane)) return turnedInPlane(plane.normal(), 0);
    return {};
}

std::optional<AcGeVector3d> RememberedDirection(const AcDbObject& object) {
    const host::ResbufChain chain(object.xData(kDirection));
    for (const resbuf* group = chain.get(); group; group = group->rbnext) {
        if (group->restype != kDirectionGroup) continue;
        const ads_point& p = group->resval.rpoint;
        const AcGeVector3d direction(p[X], p[Y], p[Z]);
        if (!direction.isZeroLength()) return direction;
    }
    return std::nullopt;
}

Acad::ErrorStatus RememberDirection(AcDbEntity& entity, const AcGeVector3d& direction) {
    const host::ResbufChain chain(acutNewRb(1001));
    acutNewString(kDirection, chain.get()->resval.rstring);
    resbuf* group = chain.get()->rbnext = acutNewRb(kDirectionGroup);
    group->resval.rpoint[X] = direction.x;
    group->resval.rpoint[Y] = direction.y;
    group->resval.rpoint[Z] = direction.z;
    return entity.setXData(chain.get());
}

} // namespace corvane
