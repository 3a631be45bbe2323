// Between lightweight and old plane polylines.
#include "host/ent/filing.h"
#include "host/ent/polyline.h"
#include "host/ent/polyline2d.h"

Acad::ErrorStatus AcDbPolyline::convertTo(Adesk::Boolean transferId, AcDb2dPolyline*& polyline) const {
    auto made = std::make_unique<AcDb2dPolyline>();
    made->setPropertiesFrom(this);
    made->setNormal(normal_), made->setElevation(elevation_), made->setThickness(thickness_);
    made->setClosed(closed_);
    made->setLinetypeGeneration(plinegen_);
    if (double width = 0; getConstantWidth(width) == Acad::eOk)
        made->setDefaultStartWidth(width), made->setDefaultEndWidth(width);
    for (unsigned i = 0; i < numVerts(); ++i) {
        double start = 0, end = 0;
        getWidthsAt(i, start, end);
        const Vertex& v = vertices_[i];
        made->appendVertex(new AcDb2dVertex({v.point.x, v.point.y, elevation_}, v.bulge, start, end));
    }
    if (transferId && database()) {
        auto* self = const_cast<AcDbPolyline*>(this);
        if (auto es = self->handOverTo(made.get()); es != Acad::eOk) return es;
    }
    return polyline = made.release(), Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::convertFrom(AcDbEntity*& polyline2d, Adesk::Boolean transferId) {
    const auto* old = AcDb2dPolyline::cast(polyline2d);
    if (!old || old->polyType() >= AcDb::k2dQuadSplinePoly) return Acad::eIllegalEntityType;
    if (auto es = willModify(); es != Acad::eOk) return es;
    std::vector<Vertex> vertices;
    old->parts().each<AcDb2dVertex>([&](const AcDb2dVertex& v) {
        const auto widths = old->widthsOf(v);
        vertices.push_back({{v.position().x, v.position().y}, v.bulge(), widths.start, widths.end});
    });
    normal_ = old->normal(), elevation_ = old->elevation(), thickness_ = old->thickness();
    closed_ = old->isClosed(), plinegen_ = old->isLinetypeGenerationOn();
    double width = 0;
    constantWidth_ = old->getConstantWidth(width) == Acad::eOk ? width : 0;
    if (auto es = setVertices(std::move(vertices)); es != Acad::eOk) return es;
    setPropertiesFrom(old);
    if (transferId && old->database()) {
        if (auto es = polyline2d->handOverTo(this); es != Acad::eOk) return es;
        delete polyline2d;
        polyline2d = nullptr;
    }
    return Acad::eOk;
}
