// Areas, images, and loops out of loose curves.
#include "host/solid/planar_faces.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

constexpr double kFlat = 1e-6; // of a loop's size

// Lines, conics and B-splines of a curve.
void appendEdges(const CurvePath& path, FaceLoop& loop) {
    if (path.isLine() || path.asConic() || path.asNurbs()) return loop.push_back({path});
    for (int i = 0; i < path.pieceCount(); ++i) {
        const PathPiece piece = path.piece(i);
        if (const auto* line = std::get_if<AcGeLineSeg3d>(&piece)) {
            if (line->startPoint().distanceTo(line->endPoint()) > 0)
                loop.push_back({CurvePath::line(line->startPoint(), line->endPoint())});
        } else if (const auto* conic = std::get_if<ge::EllipticArc>(&piece)) {
            loop.push_back({CurvePath::conic(*conic)});
        } else {
            loop.push_back({CurvePath::spline(std::get<ge::Nurbs>(piece))});
        }
    }
}

// Open chains, found by their ends from left to right.
class Joiner {
public:
    Joiner(std::vector<FaceLoop> chains, double tolerance) : tolerance_(tolerance) {
        for (FaceLoop& chain : chains) {
            ends_.push_back({chain.front().start(), chains_.size(), false});
            ends_.push_back({chain.back().end(), chains_.size(), true});
            chains_.push_back(std::move(chain));
        }
        used_.assign(chains_.size(), false);
        std::stable_sort(ends_.begin(), ends_.end(),
                         [](const End& a, const End& b) { return a.at.x < b.at.x; });
    }

    std::vector<FaceLoop> loops() {
        std::vector<FaceLoop> found;
        for (size_t i = 0; i < chains_.size(); ++i) {
            if (used_[i]) continue;
            used_[i] = true;
            FaceLoop loop = std::move(chains_[i]);
            while (!meet(loop.back().end(), loop.front().start()) && extend(loop)) continue;
            if (meet(loop.back().end(), loop.front().start())) found.push_back(std::move(loop));
        }
        return found;
    }

private:
    struct End {
        AcGePoint3d at;
        size_t chain;
        bool last; // the chain's end, else its start
    };
    bool meet(const AcGePoint3d& a, const AcGePoint3d& b) const { return a.distanceTo(b) <= tolerance_; }

    // By the first free chain with an end there, turned round if need be.
    bool extend(FaceLoop& loop) {
        const AcGePoint3d tip = loop.back().end();
        auto at = std::lower_bound(ends_.begin(), ends_.end(), tip.x - tolerance_,
                                   [](const End& end, double x) { return end.at.x < x; });
        for (; at != ends_.end() && at->at.x <= tip.x + tolerance_; ++at) {
            if (used_[at->chain] || !meet(at->at, tip)) continue;
            used_[at->chain] = true;
            FaceLoop& next = chains_[at->chain];
            if (at->last) {
                std::reverse(next.begin(), next.end());
                for (FaceEdge& edge : next) edge.reversed = !edge.reversed;
            }
            std::move(next.begin(), next.end(), std::back_inserter(loop));
            return true;
        }
        return false;
    }

    double tolerance_;
    std::vector<FaceLoop> chains_;
    std::vector<End> ends_;
    std::vector<bool> used_;
};

} // namespace

std::optional<PlanarFaces> transformedFaces(const PlanarFaces& faces, const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return std::nullopt;
    PlanarFaces moved(faces);
    for (PlanarFace& face : moved) {
        double elevation = 0;
        matrix.convertToLocal(face.normal, elevation);
        for (FaceLoop& loop : face.loops)
            for (FaceEdge& edge : loop) edge.path = edge.path.transformed(matrix);
    }
    return moved;
}

AcGeVector3d areaVector(const FaceLoop& loop) {
    AcGeVector3d twice, area;
    const AcGePoint3d origin = loop.front().start();
    for (const FaceEdge& edge : loop) {
        twice += (edge.start() - origin).crossProduct(edge.end() - origin);
        const AcGeVector3d own = edge.path.areaVector(); // between the edge and its chord
        area += edge.reversed ? -own : own;
    }
    return area + twice / 2;
}

double areaOf(const PlanarFace& face) {
    double sum = 0, largest = 0;
    for (const FaceLoop& loop : face.loops) {
        const double area = areaVector(loop).length();
        sum += area;
        largest = std::max(largest, area);
    }
    return 2 * largest - sum;
}

AcDbExtents extentsOf(const PlanarFaces& faces) {
    AcDbExtents box;
    for (const PlanarFace& face : faces)
        for (const FaceLoop& loop : face.loops)
            for (const FaceEdge& edge : loop) box.addExt(edge.path.extents());
    return box;
}

std::vector<FaceLoop> closedLoops(const std::vector<const CurvePath*>& curves, double tolerance) {
    std::vector<FaceLoop> closed, open;
    for (const CurvePath* curve : curves) {
        if (!curve || curve->isEmpty()) continue;
        FaceLoop loop;
        appendEdges(*curve, loop);
        if (loop.empty()) continue;
        const bool round = loop.back().end().distanceTo(loop.front().start()) <= tolerance;
        (round ? closed : open).push_back(std::move(loop));
    }
    Joiner joiner(std::move(open), tolerance);
    for (FaceLoop& loop : joiner.loops()) closed.push_back(std::move(loop));
    return closed;
}

std::optional<PlanarFace> faceOf(FaceLoop loop) {
    const AcGeVector3d area = areaVector(loop);
    AcDbExtents box;
    for (const FaceEdge& edge : loop) box.addExt(edge.path.extents());
    const double size = (box.maxPoint() - box.minPoint()).length();
    if (!(area.length() > 1e-12 * size * size) || !std::isfinite(size)) return std::nullopt;
    PlanarFace face;
    face.normal = area.normal();
    const AcGePoint3d origin = loop.front().start();
    const auto offPlane = [&](const AcGePoint3d& p) {
        return std::abs((p - origin).dotProduct(face.normal)) > kFlat * size;
    };
    constexpr int kProbes = 5;
    for (const FaceEdge& edge : loop)
        for (int i = 1; i <= kProbes; ++i) {
            const double from = edge.path.startParam(), to = edge.path.endParam();
            if (offPlane(edge.path.pointAt(from + (to - from) * i / kProbes))) return std::nullopt;
        }
    // Seen from above where it can be, as everything that is drawn in a plan.
    if (face.normal.z < -1e-9) face.normal = -face.normal;
    face.loops.push_back(std::move(loop));
    return face;
}

} // namespace host
