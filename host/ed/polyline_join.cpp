// Joining: pieces read from entities, and the chain that grows by an index of their ends.
#include "host/ed/polyline_join.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "host/ent/conics.h"
#include "host/ent/line.h"
#include "host/ent/polyline2d.h"

namespace host {
namespace {

using Vertex = AcDbPolyline::Vertex;
using Vertices = std::vector<Vertex>;

// World points into the plane; refuses what lies beside it.
class Plane {
public:
    Plane(const AcGeVector3d& normal, double elevation)
        : fromWorld_(AcGeMatrix3d::worldToPlane(normal)), normal_(normal), elevation_(elevation) {}
    bool add(Vertices& vertices, const AcGePoint3d& world, double bulge = 0, double startWidth = 0,
             double endWidth = 0) const {
        const AcGePoint3d own = fromWorld_ * world;
        vertices.push_back({{own.x, own.y}, bulge, startWidth, endWidth});
        return std::abs(own.z - elevation_) <= 1e-6 * (1 + std::abs(elevation_));
    }
    // 1 or -1 for normals along or against the plane's, 0 for others.
    double sense(const AcGeVector3d& normal) const {
        const double along = normal.dotProduct(normal_);
        return std::abs(std::abs(along) - 1) > 1e-9 ? 0 : along > 0 ? 1 : -1;
    }

private:
    AcGeMatrix3d fromWorld_;
    AcGeVector3d normal_;
    double elevation_;
};

bool read(const AcDbPolyline& polyline, const Plane& plane, Vertices& vertices) {
    const double sense = plane.sense(polyline.normal());
    bool level = sense != 0 && !polyline.isClosed() && polyline.numVerts() > 1;
    for (unsigned i = 0; level && i < polyline.numVerts(); ++i) {
        const Vertex& vertex = polyline.vertices()[i];
        AcGePoint3d point;
        polyline.getPointAt(i, point);
        level = plane.add(vertices, point, sense * vertex.bulge, vertex.startWidth, vertex.endWidth);
    }
    return level;
}

bool read(const AcDbEntity& entity, const Plane& plane, Vertices& vertices) {
    if (const auto* line = AcDbLine::cast(&entity))
        return plane.add(vertices, line->startPoint()) && plane.add(vertices, line->endPoint());
    if (const auto* arc = AcDbArc::cast(&entity)) {
        AcGePoint3d start, end;
        arc->getStartPoint(start), arc->getEndPoint(end);
        const double sense = plane.sense(arc->normal());
        return sense != 0 && plane.add(vertices, start, sense * std::tan(arc->totalAngle() / 4)) &&
               plane.add(vertices, end);
    }
    if (const auto* polyline = AcDbPolyline::cast(&entity)) return read(*polyline, plane, vertices);
    if (const auto* old = AcDb2dPolyline::cast(&entity)) {
        AcDbPolyline light;
        std::unique_ptr<AcRxObject> copy(old->clone());
        AcDbEntity* source = AcDbEntity::cast(copy.get());
        return light.convertFrom(source, false) == Acad::eOk && read(light, plane, vertices);
    }
    return false;
}

// The same piece walked from its end.
Vertices turnedRound(const Vertices& vertices) {
    Vertices turned(vertices.size());
    for (size_t i = 0, last = vertices.size() - 1; i <= last; ++i) {
        turned[i].point = vertices[last - i].point;
        if (i == last) break;
        const Vertex& segment = vertices[last - i - 1];
        turned[i].bulge = -segment.bulge;
        turned[i].startWidth = segment.endWidth, turned[i].endWidth = segment.startWidth;
    }
    return turned;
}

// The ends of pieces that wait, by their X.
class Ends {
public:
    Ends(const std::vector<JoinPiece>& pieces, double fuzz) : pieces_(pieces), fuzz_(fuzz) {
        for (size_t i = 0; i < pieces.size(); ++i)
            for (const Vertex* end : {&pieces[i].vertices.front(), &pieces[i].vertices.back()})
                byX_.emplace(end->point.x, i);
    }
    void take(size_t piece) {
        for (const Vertex* end : {&pieces_[piece].vertices.front(), &pieces_[piece].vertices.back()}) {
            const auto [low, high] = byX_.equal_range(end->point.x);
            const auto at = std::find_if(low, high, [&](const auto& entry) { return entry.second == piece; });
            if (at != high) byX_.erase(at);
        }
    }
    // The first piece in the list with an end there.
    std::optional<size_t> at(const AcGePoint2d& point) const {
        std::optional<size_t> best;
        const auto stop = byX_.upper_bound(point.x + fuzz_);
        for (auto entry = byX_.lower_bound(point.x - fuzz_); entry != stop; ++entry) {
            const Vertices& vertices = pieces_[entry->second].vertices;
            const bool meets = vertices.front().point.distanceTo(point) <= fuzz_ ||
                               vertices.back().point.distanceTo(point) <= fuzz_;
            if (meets && (!best || entry->second < *best)) best = entry->second;
        }
        return best;
    }

private:
    const std::vector<JoinPiece>& pieces_;
    double fuzz_;
    std::multimap<double, size_t> byX_;
};

bool hasLength(const Vertices& chain) {
    return std::any_of(chain.begin() + 1, chain.end(),
                       [&](const Vertex& v) { return v.point != chain.front().point; });
}

// Grows the chain behind its last vertex until no piece meets it or it has come back to its start.
void grow(JoinedChain& chain, const std::vector<JoinPiece>& pieces, Ends& ends, double fuzz) {
    for (;;) {
        const AcGePoint2d tip = chain.vertices.back().point;
        if (chain.vertices.size() > 2 && tip.distanceTo(chain.vertices.front().point) <= fuzz) return;
        const auto next = ends.at(tip);
        if (!next) return;
        ends.take(*next);
        chain.taken.push_back(*next);
        Vertices piece = pieces[*next].vertices;
        if (piece.front().point.distanceTo(tip) > fuzz) piece = turnedRound(piece);
        // The chain's vertex stays where the two meet.
        piece.front().point = tip;
        chain.vertices.pop_back();
        chain.vertices.insert(chain.vertices.end(), piece.begin(), piece.end());
    }
}

} // namespace

std::optional<JoinPiece> joinPiece(const AcDbEntity& entity, const AcGeVector3d& normal, double elevation) {
    JoinPiece piece;
    if (!read(entity, Plane(normal, elevation), piece.vertices) || !hasLength(piece.vertices)) return {};
    return piece;
}

JoinedChain joinChain(const std::vector<JoinPiece>& pieces, size_t first, double fuzz) {
    JoinedChain chain{pieces[first].vertices, false, {first}};
    Ends ends(pieces, fuzz);
    ends.take(first);
    grow(chain, pieces, ends, fuzz);
    chain.vertices = turnedRound(chain.vertices);
    grow(chain, pieces, ends, fuzz);
    chain.vertices = turnedRound(chain.vertices);
    chain.closed = chain.vertices.size() > 2 &&
                   chain.vertices.front().point.distanceTo(chain.vertices.back().point) <= fuzz;
    if (chain.closed) chain.vertices.pop_back();
    return chain;
}

} // namespace host
