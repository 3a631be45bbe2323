// Loops to whole-number polygons, Clipper's operations (Vatti 1992), and back.
#include "host/solid/face_polygons.h"

#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>

namespace host {
namespace {

// From the faces' plane to a raster of whole numbers; the finest in which the clipper's numbers stay fast.
class Raster {
public:
    Raster(const PlanarFaces& a, const PlanarFaces& b) {
        AcDbExtents box = extentsOf(a);
        box.addExt(extentsOf(b));
        const AcGeVector3d diagonal = box.maxPoint() - box.minPoint();
        const AcGeVector3d normal = a.front().normal;
        const AcGeVector3d x = normal.perpVector().normal();
        const AcGePoint3d middle = box.minPoint() + diagonal / 2, on = a.front().loops[0][0].start();
        const AcGePoint3d origin = middle + normal * (on - middle).dotProduct(normal);
        constexpr double kHalfRange = 5e8;
        scale_ = diagonal.length() > 0 ? kHalfRange / diagonal.length() : 1;
        toWorld_.setCoordSystem(origin, x, normal.crossProduct(x), normal);
        toPlane_ = toWorld_.inverse();
    }
    ClipperLib::Path path(const FaceLoop& loop) const {
        ClipperLib::Path path;
        for (const FaceEdge& edge : loop) {
            const AcGePoint3d p = toPlane_ * edge.start();
            path.emplace_back(std::llround(p.x * scale_), std::llround(p.y * scale_));
        }
        return path;
    }
    FaceLoop loop(const ClipperLib::Path& path) const {
        FaceLoop loop;
        for (size_t i = 0; i < path.size(); ++i)
            loop.push_back({CurvePath::line(point(path[i]), point(path[(i + 1) % path.size()]))});
        return loop;
    }

private:
    AcGePoint3d point(const ClipperLib::IntPoint& p) const {
        return toWorld_ * AcGePoint3d(double(p.X) / scale_, double(p.Y) / scale_, 0);
    }
    double scale_;
    AcGeMatrix3d toPlane_, toWorld_;
};

// Loops of a face count odd and even, so that holes need no sense; faces together count all.
ClipperLib::Paths pathsOf(const PlanarFaces& faces, const Raster& raster) {
    ClipperLib::Paths all;
    for (const PlanarFace& face : faces) {
        ClipperLib::Paths own;
        for (const FaceLoop& loop : face.loops) own.push_back(raster.path(loop));
        ClipperLib::SimplifyPolygons(own, ClipperLib::pftEvenOdd);
        all.insert(all.end(), own.begin(), own.end());
    }
    return all;
}

ClipperLib::ClipType typeOf(AcDb::BoolOperType operation) {
    if (operation == AcDb::kBoolIntersect) return ClipperLib::ctIntersection;
    return operation == AcDb::kBoolSubtract ? ClipperLib::ctDifference : ClipperLib::ctUnion;
}

} // namespace

bool isStraight(const PlanarFaces& faces) {
    return std::all_of(faces.begin(), faces.end(), [](const PlanarFace& face) {
        return std::all_of(face.loops.begin(), face.loops.end(), [](const FaceLoop& loop) {
            return std::all_of(loop.begin(), loop.end(),
                               [](const FaceEdge& edge) { return edge.path.isLine(); });
        });
    });
}

PlanarFaces combinePolygons(const PlanarFaces& first, const PlanarFaces& second,
                            AcDb::BoolOperType operation) {
    const Raster raster(first, second);
    ClipperLib::Clipper clipper;
    clipper.AddPaths(pathsOf(first, raster), ClipperLib::ptSubject, true);
    clipper.AddPaths(pathsOf(second, raster), ClipperLib::ptClip, true);
    ClipperLib::PolyTree tree;
    clipper.Execute(typeOf(operation), tree, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    PlanarFaces faces;
    for (const ClipperLib::PolyNode* node = tree.GetFirst(); node; node = node->GetNext()) {
        if (node->IsHole()) continue;
        PlanarFace face{first.front().normal, {raster.loop(node->Contour)}};
        for (const ClipperLib::PolyNode* hole : node->Childs)
            face.loops.push_back(raster.loop(hole->Contour));
        faces.push_back(std::move(face));
    }
    return faces;
}

} // namespace host
