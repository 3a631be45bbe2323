// Joining, exploding, nesting.
#include "scatter/random/loops.h"

#include <algorithm>
#include <memory>

#include "scatter/random/winding.h"

namespace corvane::scatter {
namespace {

constexpr double kSamePlace = 1e-12; // a squared distance

bool meet(const AcGePoint3d& a, const AcGePoint3d& b) { return (a - b).lengthSqrd() <= kSamePlace; }

// Puts a piece that begins or ends at the chain's tip behind it, and out of the list.
bool extend(PointChain& chain, std::vector<PointChain>& pieces) {
    for (PointChain& piece : pieces) {
        if (!meet(chain.back(), piece.front())) {
            if (!meet(chain.back(), piece.back())) continue;
            std::reverse(piece.begin(), piece.end());
        }
        chain.insert(chain.end(), piece.begin() + 1, piece.end());
        std::swap(piece, pieces.back());
        pieces.pop_back();
        return true;
    }
    return false;
}

void addPieces(const AcDbRegion& region, const std::function<PointChain(const AcDbCurve&)>& flatten,
               std::vector<PointChain>& pieces, int depth) {
    AcDbVoidPtrArray parts;
    if (region.explode(parts) != Acad::eOk) return;
    for (void* pointer : parts) {
        const std::unique_ptr<AcDbEntity> part(static_cast<AcDbEntity*>(pointer));
        if (const auto* curve = AcDbCurve::cast(part.get())) pieces.push_back(flatten(*curve));
        if (const auto* inner = AcDbRegion::cast(part.get()); inner && depth > 0)
            addPieces(*inner, flatten, pieces, depth - 1);
    }
}

} // namespace

std::vector<PointChain> ChainLoops(std::vector<PointChain> pieces) {
    std::erase_if(pieces, [](const PointChain& piece) { return piece.size() < 2; });
    std::vector<PointChain> loops;
    while (!pieces.empty()) {
        PointChain chain = std::move(pieces.back());
        pieces.pop_back();
        while (!meet(chain.back(), chain.front()) && extend(chain, pieces)) continue;
        if (chain.size() < 4 || !meet(chain.back(), chain.front())) continue;
        chain.pop_back();
        loops.push_back(std::move(chain));
    }
    return loops;
}

std::vector<PointChain> LoopsOf(const AcDbRegion& region,
                                const std::function<PointChain(const AcDbCurve&)>& flatten) {
    std::vector<PointChain> pieces;
    addPieces(region, flatten, pieces, 1);
    return ChainLoops(std::move(pieces));
}

std::vector<NestedLoop> NestLoops(const std::vector<PointChain>& loops) {
    std::vector<NestedLoop> nested;
    std::vector<WindingIndex> indices;
    for (size_t i = 0; i < loops.size(); ++i) {
        NestedLoop loop{{}, i, 0};
        for (const AcGePoint3d& p : loops[i]) loop.points.emplace_back(p.x, p.y);
        indices.emplace_back(loop.points);
        nested.push_back(std::move(loop));
    }
    for (NestedLoop& loop : nested) {
        // Loops of a region don't cross, so that one point tells of all; a chord's middle is on no corner.
        const AcGePoint2d probe = loop.points[0] + (loop.points[1] - loop.points[0]) / 2;
        for (const NestedLoop& other : nested)
            loop.depth += &other != &loop && indices[other.loop].At(probe) != 0;
    }
    for (NestedLoop& loop : nested)
        if ((SignedArea(loop.points) > 0) != (loop.depth % 2 == 0))
            std::reverse(loop.points.begin(), loop.points.end());
    return nested;
}

} // namespace corvane::scatter
