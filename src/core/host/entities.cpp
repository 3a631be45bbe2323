// Bulk work on entities by means that only this host offers.
#include "core/host/entities.h"

#include "host/gi/text_metrics.h"
#include "host/view/collector.h"
#include "host/view/database_source.h"

namespace corvane::host_door {

int removeVertices(AcDbPolyline& polyline, const std::vector<bool>& marks) {
    const auto& all = polyline.vertices();
    std::vector<bool> going(marks);
    going.resize(all.size(), false);
    // Removal runs from the last vertex to the first and is refused once two are left, so the marks
    // nearest the start are the ones that stay without effect.
    size_t left = all.size();
    for (size_t i = all.size(); i-- > 0;)
        if (going[i]) (left > 2) ? static_cast<void>(--left) : static_cast<void>(going[i] = false);
    if (left == all.size()) return 0;
    std::vector<AcDbPolyline::Vertex> kept;
    kept.reserve(left);
    for (size_t i = 0; i < all.size(); ++i) {
        if (going[i]) continue;
        AcDbPolyline::Vertex vertex = all[i];
        polyline.getWidthsAt(unsigned(i), vertex.startWidth, vertex.endWidth);
        kept.push_back(vertex);
    }
    const int removed = int(all.size() - left);
    return polyline.setVertices(std::move(kept)) == Acad::eOk ? removed : 0;
}

std::vector<AcGePoint3d> drawnPoints(const AcDbEntity& entity, double error) {
    host::DatabaseSource source(entity.database());
    host::DisplayOptions options;
    options.chordError = error;
    host::DisplayCollector collector(source, options);
    collector.add(entity, entity.objectId());
    const host::DisplayList list = collector.take();
    std::vector<AcGePoint3d> points;
    for (const host::DisplayPrimitive& p : list.primitives) {
        if (p.kind == host::DisplayPrimitive::Kind::text) {
            const host::DisplayText& text = list.texts[p.first];
            const double advance =
                host::textMetrics()->measure(list.faces[text.face], 1.0, text.text).advance;
            for (const AcGePoint3d& corner : {text.origin, text.origin + text.up})
                points.push_back(corner), points.push_back(corner + text.right * advance);
            continue;
        }
        for (std::uint32_t c = p.first; c < p.first + p.count; ++c)
            for (const AcGePoint3d& point : list.contour(c)) points.push_back(point);
    }
    return points;
}

} // namespace corvane::host_door
