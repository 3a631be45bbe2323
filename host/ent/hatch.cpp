// Hatches: their data through the host's interface, and their form in files. Drawing and measuring is in
// hatch_draw.cpp.
#include "host/ent/hatch.h"

#include <algorithm>
#include <numbers>

#include "host/db/database.h"
#include "host/ent/curve.h"
#include "host/ent/filing.h"
#include "host/ge/arc.h"
#include "host/ge/edges2d.h"
#include "host/os/text.h"

HOST_DEFINE_CLASS(AcDbHatch, AcDbEntity, L"HATCH")

Acad::ErrorStatus AcDbHatch::change() {
    if (!readable_) return Acad::eNotApplicable;
    if (auto es = willModify(); es != Acad::eOk) return es;
    source_ = {};
    return Acad::eOk;
}

// -- files --------------------------------------------------------------------------------------------

bool AcDbHatch::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbEntity") && AcDbEntity::inGroup(group, context)) return true;
    return source_.take(group, context, "AcDbHatch");
}

void AcDbHatch::inDone(host::ReadContext& context) {
    data_ = {};
    sourceIsNew_ = context.version >= AcDb::kDHL_1024;
    readable_ = source_.isEmpty() || host::readHatch(source_.list(), data_);
    data_.normal = host::unitNormal(data_.normal);
    if (!host::finite(data_.elevation)) data_.elevation = 0;
    if (!readable_) context.repaired("hatch whose outlines can't be read to the end: it is kept as it is");
}

// The groups that were read say the same in every version but for two things: gradients, and counts of
// fit points inside spline edges.
bool AcDbHatch::writesSource(const host::GroupWriter& writer) const {
    if (source_.isEmpty()) return false;
    if (!readable_) return true;
    if (writer.version < AcDb::kDHL_1018 && !data_.rest.empty()) return false;
    if (sourceIsNew_ == (writer.version >= AcDb::kDHL_1024)) return true;
    for (const host::HatchLoop& loop : data_.loops)
        for (const host::HatchEdge& edge : loop.edges)
            if (std::holds_alternative<host::HatchSpline>(edge)) return false;
    return true;
}

void AcDbHatch::outGroups(host::GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    if (writesSource(writer)) return source_.write(writer, "AcDbHatch");
    writer.subclass("AcDbHatch");
    host::writeHatch(data_, writer);
}

// -- loops --------------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbHatch::setElevation(double elevation) {
    if (!host::finite(elevation)) return Acad::eInvalidInput;
    if (auto es = change(); es != Acad::eOk) return es;
    return data_.elevation = elevation, Acad::eOk;
}
Acad::ErrorStatus AcDbHatch::setNormal(const AcGeVector3d& normal) {
    if (auto es = change(); es != Acad::eOk) return es;
    return data_.normal = host::unitNormal(normal), Acad::eOk;
}
Acad::ErrorStatus AcDbHatch::getPlane(AcGePlane& plane) const {
    const AcGePoint3d origin = host::toWorld({0, 0, data_.elevation}, data_.normal);
    return plane.set(origin, data_.normal), Acad::eOk;
}

Adesk::Int32 AcDbHatch::loopTypeAt(int index) const {
    return index >= 0 && index < numLoops() ? data_.loops[size_t(index)].type : -1;
}

Acad::ErrorStatus AcDbHatch::getLoopAt(int index, Adesk::Int32& type, AcGePoint2dArray& vertices,
                                       AcGeDoubleArray& bulges) const {
    if (index < 0 || index >= numLoops()) return Acad::eInvalidIndex;
    const host::HatchLoop& loop = data_.loops[size_t(index)];
    if (!loop.isPolyline) return Acad::eNotApplicable;
    type = loop.type;
    vertices.removeAll(), bulges.removeAll();
    for (const host::ge::BulgeVertex& vertex : loop.vertices) {
        vertices.append(vertex.point);
        if (loop.bulged) bulges.append(vertex.bulge);
    }
    return Acad::eOk;
}

namespace {

void* newCurve(const host::ge::EllipticArc& arc, AcDbHatch::HatchEdgeType type) {
    const bool clockwise = arc.normal.z < 0;
    const AcGePoint2d center(arc.center.x, arc.center.y);
    const double radius = arc.majorRadius();
    const AcGeVector2d axis = AcGeVector2d(arc.majorAxis.x, arc.majorAxis.y) / radius;
    if (type == AcDbHatch::kCirArc)
        return new AcGeCircArc2d(center, radius, arc.start, arc.end, axis, clockwise);
    return new AcGeEllipArc2d(center, axis, clockwise ? -axis.perpVector() : axis.perpVector(), radius,
                              arc.minorRadius(), arc.start, arc.end);
}

void* newCurve(const host::ge::Nurbs& curve) {
    AcGePoint2dArray points;
    for (const AcGePoint3d& pole : curve.poles) points.append(AcGePoint2d(pole.x, pole.y));
    return new AcGeNurbCurve2d(curve.degree, AcGeDoubleArray(curve.knots), std::move(points),
                               AcGeDoubleArray(curve.weights), curve.periodic);
}

// Null for edges without a size.
void* newCurve(const host::HatchEdge& edge) {
    if (const auto* line = std::get_if<host::HatchLine>(&edge))
        return new AcGeLineSeg2d(line->start, line->end);
    if (const auto* spline = std::get_if<host::HatchSpline>(&edge))
        return spline->curve.isValid() ? newCurve(spline->curve) : nullptr;
    const auto arc = host::conicOf(edge);
    return arc ? newCurve(*arc, AcDbHatch::HatchEdgeType(edge.index() + 1)) : nullptr;
}

} // namespace

Acad::ErrorStatus AcDbHatch::getLoopAt(int index, Adesk::Int32& type, AcGeVoidPointerArray& edges,
                                       AcGeIntArray& edgeTypes) const {
    if (index < 0 || index >= numLoops()) return Acad::eInvalidIndex;
    const host::HatchLoop& loop = data_.loops[size_t(index)];
    if (loop.isPolyline) return Acad::eNotApplicable;
    type = loop.type;
    edges.removeAll(), edgeTypes.removeAll();
    for (const host::HatchEdge& edge : loop.edges) {
        void* curve = newCurve(edge);
        if (!curve) continue;
        edges.append(curve);
        edgeTypes.append(int(edge.index()) + 1);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::insertLoopAt(int index, Adesk::Int32 type, const AcGePoint2dArray& vertices,
                                          const AcGeDoubleArray& bulges) {
    if (index < 0 || index > numLoops()) return Acad::eInvalidIndex;
    if (vertices.length() < 2 || (!bulges.isEmpty() && bulges.length() != vertices.length()))
        return Acad::eInvalidInput;
    host::HatchLoop loop;
    loop.type = type | kPolyline, loop.isPolyline = true;
    for (int i = 0; i < vertices.length(); ++i) {
        const double bulge = bulges.isEmpty() ? 0 : bulges[i];
        if (!host::finite(vertices[i]) || !std::isfinite(bulge)) return Acad::eInvalidInput;
        loop.vertices.push_back({vertices[i], bulge});
        loop.bulged |= bulge != 0;
    }
    if (auto es = change(); es != Acad::eOk) return es;
    data_.loops.insert(data_.loops.begin() + index, std::move(loop));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::appendLoop(Adesk::Int32 type, const AcGePoint2dArray& vertices,
                                        const AcGeDoubleArray& bulges) {
    return insertLoopAt(numLoops(), type, vertices, bulges);
}

Acad::ErrorStatus AcDbHatch::appendLoop(Adesk::Int32 type, const AcDbObjectIdArray& curves) {
    host::HatchLoop loop;
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(data_.normal);
    for (AcDbObjectId id : curves) {
        const AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
        if (curve.openStatus() != Acad::eOk) return curve.openStatus();
        host::appendPath(curve->path()->transformed(toPlane), loop);
        if (data_.associative) loop.sources.push_back(id.handle());
    }
    if (loop.edges.empty() == loop.vertices.empty()) return Acad::eInvalidInput; // nothing, or a mixture
    loop.type = loop.isPolyline ? type | kPolyline : type & ~kPolyline;
    if (auto es = change(); es != Acad::eOk) return es;
    data_.loops.push_back(std::move(loop));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::removeLoopAt(int index) {
    if (index < 0 || index >= numLoops()) return Acad::eInvalidIndex;
    if (auto es = change(); es != Acad::eOk) return es;
    data_.loops.erase(data_.loops.begin() + index);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setAssociative(bool associative) {
    if (auto es = change(); es != Acad::eOk) return es;
    data_.associative = associative;
    if (!associative)
        for (host::HatchLoop& loop : data_.loops) loop.sources.clear();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getAssocObjIdsAt(int index, AcDbObjectIdArray& ids) const {
    if (index < 0 || index >= numLoops()) return Acad::eInvalidIndex;
    if (!database()) return Acad::eNoDatabase;
    for (std::uint64_t handle : data_.loops[size_t(index)].sources) {
        AcDbObjectId id;
        if (database()->getAcDbObjectId(id, false, AcDbHandle(handle)) == Acad::eOk) ids.append(id);
    }
    return Acad::eOk;
}

// -- the pattern --------------------------------------------------------------------------------------

namespace {

// Patterns of parallel lines at their natural size in millimetres: degrees, base, offset along the lines'
// own axes, dashes.
struct PatternRow {
    const wchar_t* name;
    std::vector<host::HatchLineFamily> lines;
};
const std::vector<PatternRow>& patternRows() {
    constexpr double kStep = 3.175;
    static const std::vector<PatternRow> rows = {
        {L"ANSI31", {{45, {0, 0}, {0, kStep}, {}}}},
        {L"ANSI32", {{45, {0, 0}, {0, 3 * kStep}, {}}, {45, {4.490128053, 0}, {0, 3 * kStep}, {}}}},
        {L"ANSI37", {{45, {0, 0}, {0, kStep}, {}}, {135, {0, 0}, {0, kStep}, {}}}},
        {L"DASH", {{0, {0, 0}, {kStep, kStep}, {kStep, -kStep}}}},
        {L"LINE", {{0, {0, 0}, {0, kStep}, {}}}},
        {L"NET", {{0, {0, 0}, {0, kStep}, {}}, {90, {0, 0}, {0, kStep}, {}}}}};
    return rows;
}

AcGeVector2d turned(const AcGeVector2d& v, double angle) { return AcGeVector2d(v).rotateBy(angle); }

host::HatchLineFamily placed(const host::HatchLineFamily& row, double angle, double scale) {
    host::HatchLineFamily family = row;
    family.angle = host::toRadians(row.angle) + angle;
    family.base = AcGePoint2d::kOrigin + turned(row.base.asVector() * scale, angle);
    family.offset = turned(row.offset * scale, family.angle);
    for (double& dash : family.dashes) dash *= scale;
    return family;
}

} // namespace

std::vector<std::wstring> AcDbHatch::patternNames() {
    std::vector<std::wstring> names{L"SOLID"};
    for (const PatternRow& row : patternRows()) names.push_back(row.name);
    return names;
}

AcDbHatch::HatchObjectType AcDbHatch::hatchObjectType() const {
    host::Group kind;
    return data_.rest.find(450, kind) && kind.integer == 1 ? kGradientObject : kHatchObject;
}

double AcDbHatch::patternSpace() const {
    return data_.lines.empty() ? 1 : data_.lines.front().offset.length();
}

// Anew for the angle, scale and name of the moment. Custom patterns keep their lines.
void AcDbHatch::buildLines() {
    if (data_.patternType == kUserDefined) {
        const double space = patternSpace();
        data_.lines = {placed({0, {0, 0}, {0, space}, {}}, data_.angle, 1)};
        if (data_.doubled) data_.lines.push_back(placed({90, {0, 0}, {0, space}, {}}, data_.angle, 1));
        return;
    }
    for (const PatternRow& row : patternRows()) {
        if (!host::equalNoCase(data_.name, row.name)) continue;
        data_.lines.clear();
        for (const auto& line : row.lines) data_.lines.push_back(placed(line, data_.angle, data_.scale));
    }
}

Acad::ErrorStatus AcDbHatch::setPattern(HatchPatternType type, const ACHAR* name) {
    if (!name && type != kUserDefined) return Acad::eInvalidInput;
    const std::wstring wanted = type == kUserDefined ? L"_USER" : name;
    const auto names = patternNames();
    const bool known = std::any_of(names.begin(), names.end(),
                                   [&](const std::wstring& n) { return host::equalNoCase(n, wanted); });
    if (!known && type != kUserDefined) return Acad::eInvalidInput;
    if (auto es = change(); es != Acad::eOk) return es;
    data_.name = wanted, data_.patternType = type;
    data_.solid = host::equalNoCase(wanted, L"SOLID");
    data_.rest.clear(); // a gradient before
    if (data_.solid)
        data_.lines.clear();
    else
        buildLines();
    return Acad::eOk;
}

// The lines turn with the angle and grow with the scale, whatever pattern they are of.
Acad::ErrorStatus AcDbHatch::setPatternAngle(double angle) {
    if (!std::isfinite(angle)) return Acad::eInvalidInput;
    if (auto es = change(); es != Acad::eOk) return es;
    const double turn = angle - data_.angle;
    for (host::HatchLineFamily& family : data_.lines) {
        family.angle += turn;
        family.base = AcGePoint2d::kOrigin + turned(family.base.asVector(), turn);
        family.offset = turned(family.offset, turn);
    }
    return data_.angle = angle, Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setPatternScale(double scale) {
    if (!(scale > 0) || !std::isfinite(scale)) return Acad::eInvalidInput;
    if (auto es = change(); es != Acad::eOk) return es;
    const double factor = data_.scale > 0 ? scale / data_.scale : 1;
    for (host::HatchLineFamily& family : data_.lines) {
        family.base *= factor, family.offset *= factor;
        for (double& dash : family.dashes) dash *= factor;
    }
    return data_.scale = scale, Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setPatternDouble(bool doubled) {
    if (auto es = change(); es != Acad::eOk) return es;
    data_.doubled = doubled;
    if (data_.patternType == kUserDefined && !data_.solid) buildLines();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setPatternSpace(double space) {
    if (!(space > 0) || !std::isfinite(space)) return Acad::eInvalidInput;
    if (data_.patternType != kUserDefined) return Acad::eNotApplicable;
    if (auto es = change(); es != Acad::eOk) return es;
    const double factor = space / patternSpace();
    for (host::HatchLineFamily& family : data_.lines) family.offset *= factor;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getPatternDefinitionAt(int index, double& angle, double& baseX, double& baseY,
                                                    double& offsetX, double& offsetY,
                                                    AcGeDoubleArray& dashes) const {
    if (index < 0 || index >= numPatternDefinitions()) return Acad::eInvalidIndex;
    const host::HatchLineFamily& family = data_.lines[size_t(index)];
    angle = family.angle, baseX = family.base.x, baseY = family.base.y;
    offsetX = family.offset.x, offsetY = family.offset.y;
    return dashes = AcGeDoubleArray(family.dashes), Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setHatchStyle(HatchStyle style) {
    if (style < kNormal || style > kIgnore) return Acad::eInvalidInput;
    if (auto es = change(); es != Acad::eOk) return es;
    return data_.style = style, Acad::eOk;
}
