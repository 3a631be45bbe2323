// What newer kinds of entity become in versions that don't know them: parts they are made of, a
// reference to the block that shows them, or the lines they are drawn with.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/dxf/known.h"
#include "host/dxf/old_viewport.h"
#include "host/dxf/writer.h"

namespace host::dxf {
namespace {

using Parts = std::vector<std::unique_ptr<AcDbEntity>>;

Parts explode(const AcDbEntity& entity) {
    AcDbVoidPtrArray made;
    const Acad::ErrorStatus status = entity.explode(made);
    Parts parts;
    for (int i = 0; i < made.length(); ++i) parts.emplace_back(static_cast<AcDbEntity*>(made[i]));
    if (status != Acad::eOk) parts.clear();
    return parts;
}

// Passes on all groups but those behind one marker.
class WithoutSubclass final : public GroupWriter {
public:
    WithoutSubclass(std::string_view marker, GroupWriter& to) : marker_(marker), to_(to) {
        database = to.database, version = to.version;
    }
    void write(const Group& group) override {
        if (group.code == 100) skipping_ = group.text == marker_;
        if (!skipping_) to_.write(group);
    }

private:
    std::string_view marker_;
    GroupWriter& to_;
    bool skipping_ = false;
};

// Since R2013 solids hold their shape in a section of its own, in a form that older versions can't read.
bool lacksShape(const AcDbEntity& entity) {
    constexpr std::string_view kModelers = " 3DSOLID BODY REGION SURFACE EXTRUDEDSURFACE LOFTEDSURFACE "
                                           "NURBSURFACE PLANESURFACE REVOLVEDSURFACE SWEPTSURFACE ";
    if (kModelers.find(" " + entity.dxfName() + " ") == std::string_view::npos) return false;
    Group shape;
    return !ownGroups(entity).find(1, shape);
}

const AcDbBlockTableRecord* shownBlock(const AcDbEntity& entity) {
    const auto* block = behind<AcDbBlockTableRecord>(entity.referencedBlock());
    return block && !block->isErased() ? block : nullptr;
}

// To a digit that reading and writing again doesn't change.
double roundedDegrees(double radians) {
    constexpr double kLastDigit = 1e9;
    return std::round(radians * 180 / std::numbers::pi * kLastDigit) / kLastDigit;
}

std::string becameParts(const Parts& parts) {
    const std::string kind = parts.front()->dxfName();
    return kind == "TEXT"   ? "written as texts"
           : kind == "LINE" ? "written as lines"
                            : "written as their parts";
}

} // namespace

bool DrawingWriter::holds(const AcDbEntity& entity) const {
    const std::string kind = entity.dxfName();
    const bool downward = version_ < database_.originalFileVersion();
    if (downward && version_ < AcDb::kDHL_1027 && lacksShape(entity)) return false;
    if (downward && old() && kind == "VIEWPORT") return false; // they look different there
    return knowsKind(version_, kind) || (!downward && version_ >= AcDb::kDHL_1014);
}

void DrawingWriter::tellColors(const AcDbEntity& entity) {
    if (entity.color().isByColor())
        losses_.add("true colour", "true colours", "written as the nearest of the 255 colours");
    constexpr Adesk::UInt32 kByValue = 2, kOpaque = 255; // the method in the high byte
    const Adesk::UInt32 code = entity.transparencyCode();
    if (code >> 24 == kByValue && (code & 0xFF) != kOpaque)
        losses_.add("transparency", "transparencies", "left out");
}

void DrawingWriter::writeOlder(const AcDbEntity& entity) {
    const std::string kind = entity.dxfName();
    --counts_[kind];
    if (kind == "VIEWPORT") return writeOldViewport(entity);
    if (kind == "LWPOLYLINE") return writePolyline(polylineOf(entity, version_), entity, true);
    const bool written =
        writeHelix(entity) || writeReference(entity) || writeExploded(entity) || writePicture(entity);
    if (!written) losses_.addEntity(kind, "left out");
    step();
}

void DrawingWriter::writeOldViewport(const AcDbEntity& entity) {
    writeNewHead("VIEWPORT", entity, true);
    for (const Group group : commonGroups(entity, version_)) out_->write(group);
    for (const Group group : oldViewport(ownGroups(entity), database_)) out_->write(group);
    step();
}

// A helix is a spline that knows more.
bool DrawingWriter::writeHelix(const AcDbEntity& entity) {
    if (entity.dxfName() != "HELIX" || !knowsKind(version_, "SPLINE")) return false;
    writeNewHead("SPLINE", entity, true);
    WithoutSubclass spline("AcDbHelix", *out_);
    entity.outGroups(spline);
    writeXdata(entity);
    losses_.addEntity("HELIX", "written as splines");
    return true;
}

bool DrawingWriter::writeExploded(const AcDbEntity& entity) {
    const Parts parts = explode(entity);
    if (parts.empty()) return false;
    for (const auto& part : parts)
        if (!knowsKind(version_, part->dxfName()) || part->dxfName() == "POLYLINE") return false;
    for (const auto& part : parts) writePart(*part, entity, &part == &parts.front());
    losses_.addEntity(entity.dxfName(), becameParts(parts));
    return true;
}

// Block references that will come of other entities count among the references to their blocks.
void DrawingWriter::foreseeReferences() {
    if (version_ >= database_.originalFileVersion()) return;
    for (const IdCell& cell : database_.cells()) {
        const auto* entity =
            cell.object && !cell.object->isErased() ? AcDbEntity::cast(cell.object) : nullptr;
        if (!entity || holds(*entity) || !shownBlock(*entity)) continue;
        auto& ids = references_[entity->referencedBlock()];
        ids.push_back(entity->objectId());
        std::sort(ids.begin(), ids.end());
    }
}

// Tables and newer kinds of dimension name the block that shows them; a table stands at its place.
bool DrawingWriter::writeReference(const AcDbEntity& entity) {
    const AcDbBlockTableRecord* block = shownBlock(entity);
    if (!block) return false;
    AcGePoint3d place;
    if (Group group; entity.dxfName() == "ACAD_TABLE") {
        const GroupList own = ownGroups(entity);
        for (int axis = 0; axis < 3; ++axis)
            if (own.find(10 + 10 * axis, group)) place[unsigned(axis)] = group.real;
    }
    writeNewHead("INSERT", entity, true);
    out_->subclass("AcDbEntity");
    for (const Group group : commonGroups(entity, version_)) out_->write(group);
    out_->subclass("AcDbBlockReference");
    out_->text(2, block->name());
    out_->point(10, place);
    writeXdata(entity);
    losses_.addEntity(entity.dxfName(), "written as block references");
    return true;
}

bool DrawingWriter::writePicture(const AcDbEntity& entity) {
    const Picture picture = pictureOf(entity, reach());
    if ((picture.lines.empty() && picture.texts.empty()) || !picture.complete) return false;
    const GroupList common = commonGroups(entity, version_);
    bool first = true, onlyLines = true;
    for (const DrawnLine& line : picture.lines) {
        if (line.points.size() > 2)
            writePolyline(polylineOf(line, common), entity, first), onlyLines = false;
        else
            writeLine(line, common, entity, first);
        first = false;
    }
    for (const DrawnText& text : picture.texts) writeText(text, common, entity, std::exchange(first, false));
    const char* texts = picture.texts.empty() ? "" : " and texts";
    losses_.addEntity(entity.dxfName(),
                      std::string("written as ") + (onlyLines ? "lines" : "polylines") + texts);
    return true;
}

void DrawingWriter::writeLine(const DrawnLine& line, const GroupList& common, const AcDbEntity& whole,
                              bool first) {
    writeNewHead("LINE", whole, first);
    out_->subclass("AcDbEntity");
    for (const Group group : common) out_->write(group);
    out_->subclass("AcDbLine");
    out_->point(10, line.points[0]), out_->point(11, line.points[1]);
    if (first) writeXdata(whole);
}

void DrawingWriter::writeText(const DrawnText& text, const GroupList& common, const AcDbEntity& whole,
                              bool first) {
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(text.normal);
    const AcGeVector3d along = toPlane * text.along;
    writeNewHead("TEXT", whole, first);
    out_->subclass("AcDbEntity");
    for (const Group group : common) out_->write(group);
    out_->subclass("AcDbText");
    out_->point(10, toPlane * text.place);
    out_->real(40, text.height);
    out_->text(1, text.text);
    const double angle = roundedDegrees(std::atan2(along.y, along.x));
    if (angle != 0) out_->real(50, angle);
    if (text.width > 0 && text.width != 1) out_->real(41, text.width);
    if (text.oblique != 0) out_->real(51, roundedDegrees(text.oblique));
    out_->recordName(7, database_.find(AcDbTextStyleTable::desc(), L"Standard"));
    out_->normal(210, text.normal);
    out_->subclass("AcDbText");
    if (first) writeXdata(whole);
}

// How far lines without end go: well beyond what is drawn.
double DrawingWriter::reach() {
    constexpr double kLeast = 1000, kTimes = 10;
    if (reach_ != 0) return reach_;
    const double size = database_.extmin().distanceTo(database_.extmax());
    return reach_ = size < 1e15 ? std::max(kLeast, kTimes * size) : kLeast;
}

// Returns the handle.
std::uint64_t DrawingWriter::writeNewHead(const char* kind, const AcDbEntity& whole, bool first) {
    out_->beginObject(nullptr);
    out_->text(0, std::string_view(kind));
    if (first) {
        writeHandle(whole);
        writeTies(whole);
        return whole.objectId().handle();
    }
    const std::uint64_t handle = freshHandle();
    out_->handle(5, handle);
    if (hasTies()) out_->handle(330, whole.ownerId());
    return handle;
}

// One of the entities that came of another; it isn't in the drawing.
void DrawingWriter::writePart(AcDbEntity& part, const AcDbEntity& whole, bool first) {
    part.setOwnerId(whole.ownerId());
    writeNewHead(part.dxfName().c_str(), whole, first);
    part.outGroups(*out_);
    out_->endObject();
    if (first) writeXdata(whole);
}

// In the form in which a polyline of that kind would be written itself.
void DrawingWriter::writePolyline(const OldPolyline& polyline, const AcDbEntity& whole, bool first) {
    constexpr int kClosed = 1, kInSpace = 8, kVertexInSpace = 32, kLinetypeGeneration = 128;
    const bool inSpace = polyline.inSpace;
    const std::uint64_t owner = writeNewHead("POLYLINE", whole, first);
    out_->subclass("AcDbEntity");
    for (const Group group : polyline.common) out_->write(group);
    out_->subclass(inSpace ? "AcDb3dPolyline" : "AcDb2dPolyline");
    out_->integer(66, 1);
    out_->point(10, AcGePoint3d(0, 0, inSpace ? 0 : polyline.elevation));
    if (polyline.thickness != 0) out_->real(39, polyline.thickness);
    out_->integer(70, (polyline.closed ? kClosed : 0) | (inSpace ? kInSpace : 0) |
                          (polyline.wholeLinetype ? kLinetypeGeneration : 0));
    if (polyline.width != 0) out_->real(40, polyline.width), out_->real(41, polyline.width);
    out_->normal(210, polyline.normal);
    if (first) writeXdata(whole);
    for (const OldPolyline::Vertex& vertex : polyline.vertices) {
        writeSubhead("VERTEX", owner, polyline.common);
        out_->subclass("AcDbVertex");
        out_->subclass(inSpace ? "AcDb3dPolylineVertex" : "AcDb2dVertex");
        out_->point(10, AcGePoint3d(vertex.x, vertex.y, vertex.z));
        const bool wide = vertex.startWidth != 0 || vertex.endWidth != 0;
        if (wide) out_->real(40, vertex.startWidth), out_->real(41, vertex.endWidth);
        if (vertex.bulge != 0) out_->real(42, vertex.bulge);
        out_->integer(70, inSpace ? kVertexInSpace : 0);
    }
    writeSubhead("SEQEND", owner, polyline.common);
    step();
}

// The head of a polyline's vertex or end mark: a fresh handle, the whole as its owner.
void DrawingWriter::writeSubhead(const char* kind, std::uint64_t whole, const GroupList& common) {
    out_->text(0, std::string_view(kind));
    out_->handle(5, freshHandle());
    if (hasTies()) out_->handle(330, whole);
    out_->subclass("AcDbEntity");
    for (const Group group : common) out_->write(group);
}

} // namespace host::dxf
