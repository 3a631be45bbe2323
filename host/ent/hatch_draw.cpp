// What hatches show: filled outlines, or pattern lines clipped to them; their box, area and images.
#include <algorithm>
#include <cmath>

#include "host/db/database.h"
#include "host/ent/filing.h"
#include "host/ent/hatch.h"
#include "host/ent/line.h"
#include "host/gi/draw.h"

namespace {

// A pattern with more lines and dashes than this is shown as a filled area, since it would look like one.
constexpr std::size_t kMostSegments = 200'000;

} // namespace

double AcDbHatch::size() const {
    AcDbExtents box;
    return subGetGeomExtents(box) == Acad::eOk ? box.minPoint().distanceTo(box.maxPoint()) : 0;
}

host::HatchContours AcDbHatch::contours(double chordTolerance) const {
    host::HatchContours all;
    for (const host::HatchLoop& loop : data_.loops)
        if (auto points = host::flatten(loop, chordTolerance); !points.empty())
            all.push_back(std::move(points));
    if (data_.style == kOuter) return host::withoutInner(all, 1);
    return data_.style == kIgnore ? host::withoutInner(all, 0) : all;
}

AcDbHatch::Lines AcDbHatch::lines(const host::HatchContours& contours) const {
    Lines out;
    for (const host::HatchLineFamily& family : data_.lines) {
        const std::size_t left = kMostSegments - std::min(kMostSegments, out.segments.size());
        out.complete &= host::appendHatchLines(contours, family, left, out.segments);
        if (!out.complete) break;
    }
    return out;
}

namespace {

void drawFilled(const host::HatchContours& contours, double elevation, AcGiWorldDraw& context) {
    std::vector<Adesk::UInt32> counts;
    std::vector<AcGePoint3d> points;
    for (const auto& contour : contours) {
        counts.push_back(Adesk::UInt32(contour.size()));
        for (const AcGePoint2d& p : contour) points.push_back({p.x, p.y, elevation});
    }
    context.subEntityTraits().setFillType(kAcGiFillAlways);
    context.geometry().polyPolygon(Adesk::UInt32(counts.size()), counts.data(), points.data());
}

void drawSegments(const std::vector<host::HatchSegment>& segments, double elevation, AcGiWorldGeometry& to) {
    for (const host::HatchSegment& segment : segments) {
        const AcGePoint3d ends[] = {{segment.from.x, segment.from.y, elevation},
                                    {segment.to.x, segment.to.y, elevation}};
        const bool dot = segment.from.x == segment.to.x && segment.from.y == segment.to.y;
        to.polyline(dot ? 1 : 2, ends);
    }
}

// Gradients show the middle of their colours.
bool middleColor(const host::GroupList& gradient, AcCmColor& color) {
    unsigned sum[3] = {}, count = 0;
    for (const host::Group group : gradient) {
        if (group.code != 421) continue;
        for (int part = 0; part < 3; ++part) sum[part] += (group.integer >> (16 - 8 * part)) & 255;
        ++count;
    }
    if (count == 0) return false;
    color.setRGB(Adesk::UInt8(sum[0] / count), Adesk::UInt8(sum[1] / count), Adesk::UInt8(sum[2] / count));
    return true;
}

} // namespace

Adesk::Boolean AcDbHatch::subWorldDraw(AcGiWorldDraw* context) const {
    AcDbExtents box;
    if (subGetGeomExtents(box) != Acad::eOk) return true;
    double tolerance = context->deviation(kAcGiMaxDevForBoundary, box.minPoint());
    if (!(tolerance > 0)) tolerance = 1e-4 * box.minPoint().distanceTo(box.maxPoint());
    const host::HatchContours shown = contours(tolerance);
    if (shown.empty()) return true;
    AcGiWorldGeometry& to = context->geometry();
    const bool tilted = !host::isWorldZ(data_.normal);
    if (tilted) to.pushModelTransform(data_.normal);
    AcCmColor color;
    if (isGradient() && middleColor(data_.rest, color)) context->subEntityTraits().setTrueColor(color);
    const Lines pattern = data_.solid ? Lines() : lines(shown);
    if (data_.solid || !pattern.complete) {
        drawFilled(shown, data_.elevation, *context);
    } else {
        if (database()) context->subEntityTraits().setLineType(database()->continuousLinetype());
        drawSegments(pattern.segments, data_.elevation, to);
    }
    if (tilted) to.popModelTransform();
    return true;
}

Acad::ErrorStatus AcDbHatch::evaluateHatch(bool) {
    return contours(1e-3 * size()).empty() ? Acad::eInvalidInput : Acad::eOk;
}

// Loops nest, so each adds or takes away its area by the number of others around it.
Acad::ErrorStatus AcDbHatch::getArea(double& area) const {
    const host::HatchContours all = contours(1e-7 * size());
    if (all.empty()) return Acad::eInvalidInput;
    double sum = 0;
    for (size_t i = 0; i < all.size(); ++i) {
        host::HatchContours others = all;
        others.erase(others.begin() + long(i));
        sum += std::fabs(host::contourArea(all[i])) * (host::isInside(others, all[i].front()) ? -1 : 1);
    }
    return area = sum, Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    for (const host::HatchLoop& loop : data_.loops)
        for (const host::CurvePath& path : host::pathsOf(loop, data_.normal, data_.elevation))
            box.addExt(path.extents());
    if (!box.isValid() || !host::finite(box.minPoint()) || !host::finite(box.maxPoint()))
        return Acad::eInvalidExtents;
    return extents = box, Acad::eOk;
}

// A hatch that moves no longer follows the entities it was made from.
Acad::ErrorStatus AcDbHatch::subTransformBy(const AcGeMatrix3d& matrix) {
    AcGeVector3d normal = data_.normal;
    double elevation = data_.elevation;
    const AcGeMatrix2d local = matrix.convertToLocal(normal, elevation);
    if (!local.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    if (auto es = setAssociative(false); es != Acad::eOk) return es;
    host::transform(data_, local);
    data_.normal = normal, data_.elevation = elevation;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::subExplode(AcDbVoidPtrArray& parts) const {
    if (data_.solid) return Acad::eNotApplicable;
    const Lines pattern = lines(contours(1e-4 * size()));
    if (!pattern.complete) return Acad::eOutOfRange;
    for (const host::HatchSegment& segment : pattern.segments) {
        const AcGePoint3d from =
            host::toWorld({segment.from.x, segment.from.y, data_.elevation}, data_.normal);
        const AcGePoint3d to = host::toWorld({segment.to.x, segment.to.y, data_.elevation}, data_.normal);
        AcDbEntity* part = new AcDbLine(from, to);
        if (from.distanceTo(to) == 0) delete std::exchange(part, new AcDbPoint(from));
        part->setPropertiesFrom(this);
        parts.append(part);
    }
    return Acad::eOk;
}

// One grip, in the middle, that moves the whole.
Acad::ErrorStatus AcDbHatch::subGetGripPoints(AcGePoint3dArray& points) const {
    AcDbExtents box;
    if (subGetGeomExtents(box) == Acad::eOk)
        points.append(box.minPoint() + (box.maxPoint() - box.minPoint()) * 0.5);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbHatch::subMoveGripPointsAt(const AcGeIntArray&, const AcGeVector3d& offset) {
    return subTransformBy(AcGeMatrix3d::translation(offset));
}
