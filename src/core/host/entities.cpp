// Bulk work on entities by means that only this host offers.
#include "core/host/entities.h"

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

} // namespace corvane::host_door
