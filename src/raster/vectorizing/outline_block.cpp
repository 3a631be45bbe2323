// Polylines from paths, and the reference that turns image rows upright.
#include "raster/vectorizing/outline_block.h"

#include <algorithm>
#include <memory>

#include "core/appending.h"
#include "raster/evening.h"

namespace corvane {
namespace {

double sizeOf(const raster::PixelPath& path) {
    const auto [left, right] =
        std::minmax_element(path.begin(), path.end(), [](auto a, auto b) { return a.x < b.x; });
    const auto [top, bottom] =
        std::minmax_element(path.begin(), path.end(), [](auto a, auto b) { return a.y < b.y; });
    return double(right->x - left->x) + double(bottom->y - top->y);
}

std::unique_ptr<AcDbPolyline> polylineOf(raster::PixelPath path, bool outline, int level) {
    const bool closed = outline || path.front() == path.back();
    if (!outline && closed && level > 0) path.pop_back(); // an even ring needs its start only once
    const auto line = raster::EvenPath(path, closed, raster::EveningTolerance(sizeOf(path), level));
    std::vector<AcDbPolyline::Vertex> vertices;
    vertices.reserve(line.size());
    for (const raster::PathPoint& p : line) vertices.push_back({{p.x, p.y}, 0, -1, -1});
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->setVertices(std::move(vertices));
    polyline->setClosed(closed);
    return polyline;
}

} // namespace

AcDbObjectId MakeOutlineBlock(const std::vector<raster::PixelPath>& paths, raster::VectorizeMode mode,
                              int level, const std::function<void(size_t done)>& told) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    AcDbBlockTableRecord* record = nullptr;
    AcDbObjectId block;
    if (!MakeAnonymousBlock(database, record, block)) return {};
    const size_t every = std::max<size_t>(1, paths.size() / 20);
    for (size_t i = 0; i < paths.size(); ++i) {
        if (paths[i].size() >= 2) {
            auto polyline = polylineOf(paths[i], mode == raster::VectorizeMode::outlines, level);
            polyline->setDatabaseDefaults(database);
            AcDbObjectId id;
            if (record->appendAcDbEntity(id, polyline.get()) == Acad::eOk) polyline.release()->close();
        }
        if ((i + 1) % every == 0 || i + 1 == paths.size()) told(i + 1);
    }
    record->close();
    return block;
}

bool PlaceOutlineBlock(AcDbObjectId block, const AcGePoint3d& corner, double height, int rows) {
    auto reference =
        std::make_unique<AcDbBlockReference>(AcGePoint3d(corner.x, corner.y + height, corner.z), block);
    const double scale = height / rows;
    reference->setDatabaseDefaults();
    AcDbObjectId id;
    if (reference->setScaleFactors({scale, -scale, scale}) != Acad::eOk ||
        AppendToCurrentSpace(reference.get(), id) != Acad::eOk)
        return false;
    reference.release();
    return true;
}

} // namespace corvane
