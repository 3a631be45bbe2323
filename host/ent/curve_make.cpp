// Entities from paths: each shape becomes the plainest kind of entity that holds it.
#include "host/ent/curve_make.h"

#include <cmath>
#include <numbers>

#include "host/ent/conics.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
#include "host/ent/polyline3d.h"
#include "host/ent/spline.h"

namespace host {

namespace {

// Entities hold no ellipse flatter than this.
constexpr double kLeastRatio = 1e-6;
constexpr double kTwoPi = 2 * std::numbers::pi;

std::unique_ptr<AcDbCurve> makePolyline(const PlaneChain& chain) {
    auto polyline = std::make_unique<AcDbPolyline>();
    std::vector<AcDbPolyline::Vertex> vertices;
    vertices.reserve(chain.vertices.size());
    for (const ge::BulgeVertex& v : chain.vertices) vertices.push_back({v.point, v.bulge, 0, 0});
    polyline->setNormal(chain.normal);
    polyline->setElevation(chain.elevation);
    polyline->setClosed(chain.closed);
    if (polyline->setVertices(std::move(vertices)) != Acad::eOk) return nullptr;
    return polyline;
}

} // namespace

std::unique_ptr<AcDbCurve> makeConic(const ge::EllipticArc& arc) {
    if (!(arc.majorRadius() > 0)) return nullptr;
    if (arc.isCircular()) {
        if (arc.isClosed()) return std::make_unique<AcDbCircle>(arc.center, arc.normal, arc.majorRadius());
        // Angles of arcs count from the X axis that belongs to the normal.
        const double turn = arc.normal.perpVector().angleTo(arc.majorAxis, arc.normal);
        const auto angle = [&](double param) {
            const double rest = std::fmod(param + turn, kTwoPi);
            return rest < 0 ? rest + kTwoPi : rest;
        };
        return std::make_unique<AcDbArc>(arc.center, arc.normal, arc.majorRadius(), angle(arc.start),
                                         angle(arc.end));
    }
    auto ellipse = std::make_unique<AcDbEllipse>(arc.center, arc.normal, arc.majorAxis,
                                                 std::max(arc.ratio, kLeastRatio));
    ellipse->setStartParam(arc.start);
    ellipse->setEndParam(arc.end);
    return ellipse;
}

std::unique_ptr<AcDbCurve> makeCurve(const CurvePath& path) {
    if (path.isEmpty()) return nullptr;
    if (path.isLine())
        return std::make_unique<AcDbLine>(path.asSpaceChain()->points[0], path.asSpaceChain()->points[1]);
    if (const auto* conic = path.asConic()) return makeConic(*conic);
    if (const auto* plane = path.asPlaneChain()) return makePolyline(*plane);
    if (const auto* space = path.asSpaceChain())
        return std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, AcGePoint3dArray(space->points),
                                                space->closed);
    auto spline = std::make_unique<AcDbSpline>();
    if (spline->setNurbs(*path.asNurbs()) != Acad::eOk) return nullptr;
    return spline;
}

} // namespace host
