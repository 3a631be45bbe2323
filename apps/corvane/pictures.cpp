// Pictures of the drawing's current space.
#include "apps/corvane/pictures.h"

#include <array>

#include "apps/corvane/report.h"
#include "host/ent/polyline.h"
#include "host/ent/polyline2d.h"
#include "host/ent/polyline3d.h"
#include "host/os/text.h"
#include "host/picture/picture.h"
#include "host/view/collector.h"

namespace app {
namespace {

// Vertices of the older kinds are objects of their own.
template <class Vertex> void addParts(const host::OwnedParts& parts, std::vector<AcGePoint3d>& out) {
    std::vector<AcDbObjectId> ids;
    parts.list(ids);
    for (const AcDbObjectId id : ids) {
        AcDbObjectPointer<Vertex> vertex(id, AcDb::kForRead);
        if (vertex) out.push_back(vertex->position());
    }
}

void addVertices(const AcDbEntity& entity, std::vector<AcGePoint3d>& out) {
    AcGePoint3d point;
    if (const auto* polyline = AcDbPolyline::cast(&entity)) {
        for (unsigned i = 0; i < polyline->numVerts(); ++i)
            if (polyline->getPointAt(i, point) == Acad::eOk) out.push_back(point);
    } else if (const auto* old = AcDb2dPolyline::cast(&entity)) {
        const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(old->normal());
        const size_t from = out.size();
        addParts<AcDb2dVertex>(old->parts(), out);
        for (size_t i = from; i < out.size(); ++i) out[i].transformBy(toWorld);
    } else if (const auto* spatial = AcDb3dPolyline::cast(&entity)) {
        addParts<AcDb3dPolylineVertex>(spatial->parts(), out);
    }
}

ExitStatus told(const host::PictureResult& result, const std::string& path) {
    if (!result) return complain(result.error), ExitStatus::file;
    if (!result.note.empty()) complain(path + ": " + result.note);
    return ExitStatus::done;
}

std::wstring caption(const wchar_t* when, const Snapshot& moment) {
    return std::wstring(when) + L": " + std::to_wstring(moment.objects) + L" objects, " +
           std::to_wstring(moment.vertices.size()) + L" vertices";
}

// The current space as it fills a picture. Points whose size hangs on the view are drawn anew once it is
// known what the picture shows.
host::DisplayList wholeSpace(AcDbDatabase& database) {
    host::DisplayList list = host::displaySpace(database, {});
    if (database.headerInteger("$PDMODE", 0) == 0) return list;
    host::DisplayOptions options;
    const AcDbExtents2d box = host::seenExtents(list, options.view);
    if (!box.isValid()) return list;
    constexpr double kMargin = 0.02;
    options.view.aspect = 1.6;
    options.view.fit(box.minPoint(), box.maxPoint(), kMargin);
    return host::displaySpace(database, {}, options);
}

} // namespace

bool isPicturePath(const std::string& path, const std::string& option) {
    if (host::pictureFormat(path)) return true;
    complain(option + " " + path + ": the ending must be .svg, .png or .pdf");
    return false;
}

ExitStatus drawPicture(const std::string& path, AcDbDatabase& database) {
    host::PictureOptions options;
    options.path = path;
    return told(host::writePicture(wholeSpace(database), options), path);
}

Snapshot Snapshot::take(AcDbDatabase& database) {
    Snapshot moment;
    moment.list = wholeSpace(database);
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.currentSpaceId(), AcDb::kForRead);
    if (!space) return moment;
    for (const AcDbObjectId id : space->entities()) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (!entity) continue;
        ++moment.objects;
        addVertices(*entity, moment.vertices);
    }
    return moment;
}

ExitStatus drawBeforeAfter(const std::string& path, const Snapshot& before, const Snapshot& after,
                           bool markVertices) {
    std::array<host::PicturePanel, 2> panels;
    panels[0] = {&before.list, caption(L"Before", before), {}};
    panels[1] = {&after.list, caption(L"After", after), {}};
    if (markVertices) panels[0].vertices = before.vertices, panels[1].vertices = after.vertices;
    host::PictureOptions options;
    options.path = path;
    return told(host::writePicture(panels, options), path);
}

} // namespace app
