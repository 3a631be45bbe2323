// Outlines as polygons, and the host's command.
#include "scatter/random/clip.h"

#include <algorithm>
#include <cmath>

#include "core/appending.h"
#include "core/editable_block.h"
#include "core/host/editor.h"
#include "core/host/entities.h"
#include "core/selection.h"
#include "scatter/random/loops.h"

namespace corvane::scatter {
namespace {

constexpr double kStraight = 1e-6, kSamePlace = 1e-12; // a squared distance

using Outline = PointChain;

// The length of the steps in which curves are followed: a third of the boundaries' mean size.
double stepFor(const std::vector<AcDbObjectId>& boundaries) {
    double sum = 0;
    int measured = 0;
    for (const AcDbObjectId id : boundaries) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcDbExtents box;
        if (!entity || entity->getGeomExtents(box) != Acad::eOk) continue;
        const AcGeVector3d size = box.maxPoint() - box.minPoint();
        sum += (size.x + size.y) / 2;
        ++measured;
    }
    const double step = measured ? sum / measured / 3 : 0;
    return step > 1e-6 ? step : 1;
}

int partsOf(double length, double step, int least, int most) {
    const double parts = std::ceil(length / step);
    return parts < most ? int(std::max<double>(parts, least)) : most; // also where the length is no number
}

void addPart(const AcDbCurve& curve, double from, double to, int parts, Outline& outline) {
    AcGePoint3d point;
    for (int i = 0; i < parts; ++i)
        if (curve.getPointAtParam(from + (to - from) * i / parts, point) == Acad::eOk)
            outline.push_back(point);
}

double spanOf(const AcDbCurve& curve, double from, double to) {
    double start = 0, end = 0;
    curve.getDistAtParam(from, start);
    curve.getDistAtParam(to, end);
    return std::abs(end - start);
}

// The curve as points, without its end point.
Outline flattened(const AcDbCurve& curve, double step) {
    Outline outline;
    if (const auto* polyline = AcDbPolyline::cast(&curve)) {
        for (unsigned i = 0; i < polyline->numVerts(); ++i) {
            const bool arc = polyline->segType(i) == AcDbPolyline::kArc;
            addPart(curve, i, i + 1.0, arc ? partsOf(spanOf(curve, i, i + 1.0), step, 4, 2000) : 1, outline);
        }
    } else {
        double from = 0, to = 0;
        if (curve.getStartParam(from) != Acad::eOk || curve.getEndParam(to) != Acad::eOk) return outline;
        const int parts = AcDbLine::cast(&curve) ? 1 : partsOf(spanOf(curve, from, to), step, 12, 5000);
        addPart(curve, from, to, parts, outline);
    }
    return outline;
}

bool isStraight(const AcDbPolyline& polyline) {
    double bulge = 0;
    for (unsigned i = 0; i < polyline.numVerts(); ++i)
        if (polyline.getBulgeAt(i, bulge) == Acad::eOk && std::abs(bulge) > kStraight) return false;
    return true;
}

bool clipBy(AcDbObjectId reference, AcDbObjectId polyline) {
    const SelectionSet set = SelectionSet::Of({reference});
    ads_name boundary;
    if (set.empty() || acdbGetAdsName(boundary, polyline) != Acad::eOk) return false;
    const int status = acedCommandS(RTSTR, L"_.XCLIP", RTPICKS, set.name(), RTSTR, L"", RTSTR, L"_New", RTSTR,
                                    L"_Select", RTENAME, boundary, RTSTR, L"", RTNONE);
    if (status == RTNORM) acedUpdateDisplay();
    return status == RTNORM;
}

// By a polyline that is there for the command alone.
bool clipBy(AcDbObjectId reference, Outline outline) {
    while (outline.size() > 1 && (outline.back() - outline.front()).lengthSqrd() <= kSamePlace)
        outline.pop_back();
    if (outline.size() < 3) return false;
    auto polyline = std::make_unique<AcDbPolyline>();
    std::vector<AcDbPolyline::Vertex> vertices;
    for (const AcGePoint3d& p : outline) vertices.push_back({{p.x, p.y}, 0, -1, -1});
    if (polyline->setVertices(std::move(vertices)) != Acad::eOk) return false;
    polyline->setElevation(outline.front().z);
    polyline->setClosed(true);
    polyline->setDatabaseDefaults();
    AcDbObjectId id;
    if (AppendToModelSpace(acdbHostApplicationServices()->workingDatabase(), polyline.get(), id) != Acad::eOk)
        return false;
    polyline.release();
    const bool done = clipBy(reference, id);
    EraseObject(id);
    return done;
}

// Regions of the loops, straight between their points.
std::vector<std::unique_ptr<AcDbRegion>> regionsOf(const std::vector<Outline>& loops) {
    std::vector<std::unique_ptr<AcDbRegion>> regions;
    for (const Outline& loop : loops) {
        AcDb3dPolyline ring(AcDb::k3dSimplePoly, AcGePoint3dArray(loop), true);
        AcDbVoidPtrArray curves, made;
        curves.append(static_cast<AcDbEntity*>(&ring));
        AcDbRegion::createFromCurves(curves, made);
        for (void* region : made) regions.emplace_back(AcDbRegion::cast(static_cast<AcDbEntity*>(region)));
    }
    return regions;
}

// The outer loops of a boundary.
std::vector<Outline> outlinesOf(AcDbObjectId boundary, double step) {
    AcDbObjectPointer<AcDbEntity> entity(boundary, AcDb::kForRead);
    if (!entity) return {};
    if (const auto* curve = AcDbCurve::cast(entity.object())) return {flattened(*curve, step)};
    const auto* region = AcDbRegion::cast(entity.object());
    if (!region) return {};
    const auto loops = LoopsOf(*region, [step](const AcDbCurve& curve) {
        Outline points = flattened(curve, step);
        AcGePoint3d last;
        if (curve.getEndPoint(last) == Acad::eOk) points.push_back(last);
        return points;
    });
    std::vector<Outline> outer;
    for (const NestedLoop& loop : NestLoops(loops))
        if (loop.depth == 0) outer.push_back(loops[loop.loop]);
    return outer;
}

// What lies round all loops; empty when they don't hang together, since a clip has one outline.
Outline unionOf(const std::vector<Outline>& loops) {
    const auto regions = regionsOf(loops);
    if (regions.size() != loops.size() || regions.empty()) return {};
    for (size_t i = 1; i < regions.size(); ++i)
        if (regions[0]->booleanOper(AcDb::kBoolUnite, regions[i].get()) != Acad::eOk) return {};
    const auto parts = LoopsOf(*regions[0], [](const AcDbCurve& line) {
        Outline ends(2);
        line.getStartPoint(ends[0]);
        line.getEndPoint(ends[1]);
        return ends;
    });
    Outline outline;
    for (const NestedLoop& loop : NestLoops(parts)) {
        if (loop.depth > 0) continue;
        if (!outline.empty()) return {};
        outline = parts[loop.loop];
    }
    return outline;
}

Outline outlineOf(const std::vector<AcDbObjectId>& boundaries, double step) {
    std::vector<Outline> loops;
    for (const AcDbObjectId id : boundaries)
        for (Outline& outline : outlinesOf(id, step)) loops.push_back(std::move(outline));
    return loops.size() == 1 ? loops[0] : unionOf(loops);
}

} // namespace

bool ClipToBoundaries(AcDbObjectId reference, const std::vector<AcDbObjectId>& boundaries) {
    if (boundaries.size() == 1) {
        AcDbObjectPointer<AcDbPolyline> polyline(boundaries[0], AcDb::kForRead);
        const bool asItIs = polyline && polyline->isClosed() && isStraight(*polyline);
        polyline.close();
        if (asItIs) return clipBy(reference, boundaries[0]);
    }
    return clipBy(reference, outlineOf(boundaries, stepFor(boundaries)));
}

} // namespace corvane::scatter
