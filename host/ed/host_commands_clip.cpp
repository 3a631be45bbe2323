// XCLIP: block references cut to a polygon.
#include <algorithm>

#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"
#include "host/ent/block_clip.h"
#include "host/ent/polyline.h"
#include "host/ent/polyline2d.h"

namespace host {
namespace {

std::optional<BlockClip> clipOf(AcDbObjectId id) {
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
    return reference ? blockClip(*reference) : std::nullopt;
}

struct Boundary {
    std::vector<AcGePoint3d> points; // world
    AcGeVector3d normal;
};

// The corners of a polyline in a plane; its arcs count as chords.
std::optional<Boundary> byPolyline() {
    ads_name name;
    ads_point at;
    AcDbObjectId id;
    if (acedEntSel(L"\nSelect polyline: ", name, at) != RTNORM || acdbGetObjectId(id, name) != Acad::eOk)
        return std::nullopt;
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    Boundary boundary;
    if (const auto* light = AcDbPolyline::cast(curve.object())) {
        boundary.normal = light->normal();
        AcGePoint3d point;
        for (unsigned i = 0; light->getPointAt(i, point) == Acad::eOk; ++i) boundary.points.push_back(point);
    } else if (const auto* old = AcDb2dPolyline::cast(curve.object())) {
        boundary.normal = old->normal();
        old->parts().each<AcDb2dVertex>([&](const AcDb2dVertex& vertex) {
            if (vertex.vertexType() != AcDb::k2dSplineCtlVertex)
                boundary.points.push_back(old->vertexPosition(vertex));
        });
    } else {
        return printLine(L"\nOnly a polyline in a plane can be a boundary."), std::nullopt;
    }
    return boundary;
}

std::optional<Boundary> byPoints() {
    Boundary boundary{{}, DrawingPlane().normal};
    AcGePoint3d last;
    for (;;) {
        const bool first = boundary.points.empty();
        const AskedPoint next =
            askPoint(first ? L"\nSpecify first point: " : L"\nSpecify next point or [Undo]: ",
                     first ? nullptr : &last, first ? nullptr : L"Undo _Undo");
        if (next.status == RTCAN) return std::nullopt;
        if (next) {
            boundary.points.push_back(ucsToWorld(last = next.point));
        } else if (next.status != RTKWORD) {
            return boundary;
        } else {
            boundary.points.pop_back();
            if (!boundary.points.empty()) last = worldToUcs(boundary.points.back());
        }
    }
}

std::optional<Boundary> byRectangle() {
    const AskedPoint first = askPoint(L"\nSpecify first corner: ");
    if (!first) return std::nullopt;
    ads_point from{first.point.x, first.point.y, first.point.z}, to;
    if (acedGetCorner(from, L"\nSpecify opposite corner: ", to) != RTNORM) return std::nullopt;
    const AcGePoint3d &a = first.point, b(to[X], to[Y], a.z);
    return Boundary{{ucsToWorld(a), ucsToWorld({b.x, a.y, a.z}), ucsToWorld(b), ucsToWorld({a.x, b.y, a.z})},
                    DrawingPlane().normal};
}

void newBoundary(const std::vector<AcDbObjectId>& ids) {
    const bool old =
        std::any_of(ids.begin(), ids.end(), [](AcDbObjectId id) { return clipOf(id).has_value(); });
    if (old && !askYesNo(L"\nDelete old boundary(s)? [Yes/No] <Yes>: ", true).value_or(false)) return;
    acedInitGet(0, L"Select Polygonal Rectangular _Select Polygonal Rectangular");
    std::wstring how;
    if (acedGetKword(L"\nSpecify clipping boundary: [Select polyline/Polygonal/Rectangular] <Rectangular>: ",
                     how) == RTCAN)
        return;
    const auto boundary = how == L"Select" ? byPolyline() : how == L"Polygonal" ? byPoints() : byRectangle();
    if (!boundary) return;
    for (const AcDbObjectId id : ids)
        if (setBlockClip(id, boundary->points, boundary->normal) != Acad::eOk)
            return printLine(L"\nA boundary needs three points at least, and a reference that isn't flat.");
}

void drawBoundaries(const std::vector<AcDbObjectId>& ids) {
    for (const AcDbObjectId id : ids) {
        const auto clip = clipOf(id);
        if (!clip) continue;
        auto polyline = std::make_unique<AcDbPolyline>();
        AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
        const std::vector<AcGePoint3d> corners = clip->corners(*reference);
        const AcGeVector3d normal = (corners[1] - corners[0]).crossProduct(corners[2] - corners[1]);
        if (normal.isZeroLength()) continue;
        polyline->setNormal(normal.normal());
        const AcGeMatrix3d flat = AcGeMatrix3d::worldToPlane(normal.normal());
        polyline->setElevation((flat * corners[0]).z);
        for (const AcGePoint3d& corner : corners) {
            const AcGePoint3d p = flat * corner;
            polyline->addVertexAt(polyline->numVerts(), {p.x, p.y});
        }
        polyline->setClosed(true);
        addToDrawing(std::move(polyline));
    }
}

} // namespace

void clipCommand() {
    std::vector<AcDbObjectId> ids = askObjects(true);
    const size_t others = std::erase_if(
        ids, [](AcDbObjectId id) { return !AcDbObjectPointer<AcDbBlockReference>(id, AcDb::kForRead); });
    if (others > 0) printLine(L"\n" + std::to_wstring(others) + L" are no block references.");
    if (ids.empty()) return;
    acedInitGet(0, L"ON OFF Delete Polyline New _ON OFF Delete Polyline New");
    std::wstring option;
    if (acedGetKword(L"\nEnter clipping option [ON/OFF/Delete/generate Polyline/New boundary] <New>: ",
                     option) == RTCAN)
        return;
    if (option.empty() || option == L"New") return newBoundary(ids);
    if (option == L"Polyline") return drawBoundaries(ids);
    size_t without = 0;
    for (const AcDbObjectId id : ids) {
        const auto es = option == L"Delete" ? eraseBlockClip(id) : showBlockClip(id, option == L"ON");
        if (es != Acad::eOk) ++without;
    }
    if (without > 0) printLine(L"\n" + std::to_wstring(without) + L" have no boundary.");
}

} // namespace host
