// Meshes as wires: points and the edges between them, each once.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "host/ge/extents.h"
#include "host/gi/draw.h"

namespace host {

struct Wires {
    struct Edge {
        std::uint32_t from, to;
        auto operator<=>(const Edge&) const = default;
    };
    std::vector<AcGePoint3d> points;
    std::vector<Edge> edges;

    // Edges to points that aren't there, and from a point to itself, are passed over.
    void addEdge(std::int64_t from, std::int64_t to) {
        const auto count = std::int64_t(points.size());
        if (from == to || from < 0 || to < 0 || from >= count || to >= count) return;
        edges.push_back({std::uint32_t(std::min(from, to)), std::uint32_t(std::max(from, to))});
    }
    void finish() {
        std::sort(edges.begin(), edges.end());
        edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    }
    void draw(AcGiWorldGeometry& to) const {
        for (const Edge& edge : edges) {
            const AcGePoint3d ends[] = {points[edge.from], points[edge.to]};
            to.polyline(2, ends);
        }
    }
    AcDbExtents extents() const {
        AcDbExtents box;
        for (const AcGePoint3d& p : points) box.addPoint(p);
        return box;
    }
};

} // namespace host
