// Multiple lines: reading their nested lists, strokes, images.
#include "host/ent/mline.h"

#include "host/ent/filing.h"
#include "host/ent/line.h"
#include "host/gi/draw.h"

HOST_DEFINE_CLASS(AcDbMline, AcDbEntity, L"MLINE")

AcGeVector3d AcDbMline::normal() const { return host::unitNormal(own_.vector(210, AcGeVector3d::kZAxis)); }

// Each 74 begins the numbers (41) of the vertex's next element, each 75 those of its fill (42).
void AcDbMline::parse() {
    vertices_.clear();
    for (const host::Group group : own_.list()) {
        if (group.code == 11) vertices_.emplace_back();
        if (vertices_.empty()) continue;
        Vertex& vertex = vertices_.back();
        if (host::takeTriple(group, 11, vertex.point) || host::takeTriple(group, 12, vertex.direction) ||
            host::takeTriple(group, 13, vertex.miter))
            continue;
        if (group.code == 74) vertex.elements.emplace_back();
        if (group.code == 41 && !vertex.elements.empty()) vertex.elements.back().push_back(group.real);
    }
}

void AcDbMline::inDone(host::ReadContext&) { parse(); }

std::vector<AcDbMline::Stroke> AcDbMline::strokes() const {
    std::vector<Stroke> strokes;
    const auto at = [](const Vertex& vertex, size_t element) {
        const bool known = element < vertex.elements.size() && !vertex.elements[element].empty();
        return vertex.point + vertex.miter * (known ? vertex.elements[element][0] : 0);
    };
    const size_t segments = vertices_.empty() ? 0 : vertices_.size() - (closedMline() ? 0 : 1);
    for (size_t i = 0; i < segments; ++i) {
        const Vertex &vertex = vertices_[i], &next = vertices_[(i + 1) % vertices_.size()];
        for (size_t element = 0; element < vertex.elements.size(); ++element) {
            const std::vector<double>& numbers = vertex.elements[element];
            const AcGePoint3d start = at(vertex, element), end = at(next, element);
            for (size_t k = 1; k < numbers.size(); k += 2)
                strokes.push_back({start + vertex.direction * numbers[k],
                                   k + 1 < numbers.size() ? start + vertex.direction * numbers[k + 1] : end});
        }
    }
    return strokes;
}

Adesk::Boolean AcDbMline::subWorldDraw(AcGiWorldDraw* context) const {
    const AcGeVector3d up = normal();
    for (const Stroke& stroke : strokes()) {
        const AcGePoint3d ends[] = {stroke.from, stroke.to};
        context->geometry().polyline(2, ends, &up);
    }
    return true;
}

Acad::ErrorStatus AcDbMline::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    for (const Stroke& stroke : strokes()) box.addPoint(stroke.from), box.addPoint(stroke.to);
    if (!box.isValid() || !host::finite(box.minPoint()) || !host::finite(box.maxPoint()))
        return Acad::eInvalidExtents;
    return extents = box, Acad::eOk;
}

Acad::ErrorStatus AcDbMline::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    if (auto es = change(); es != Acad::eOk) return es;
    const double scale = matrix.scale();
    own_.mapPoints({10, 11}, [&](const AcGePoint3d& p) { return matrix * p; });
    own_.mapPoints({12, 13, 210}, [&](const AcGePoint3d& p) {
        return AcGePoint3d::kOrigin + matrix * p.asVector() / scale;
    });
    own_.edit([&](host::Group& group) {
        if (group.code == 40 || group.code == 41 || group.code == 42) group.real *= scale;
    });
    parse();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::subExplode(AcDbVoidPtrArray& parts) const {
    for (const Stroke& stroke : strokes()) {
        auto* line = new AcDbLine(stroke.from, stroke.to);
        line->setPropertiesFrom(this);
        parts.append(static_cast<AcDbEntity*>(line));
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const Vertex& vertex : vertices_) points.append(vertex.point);
    return Acad::eOk;
}
