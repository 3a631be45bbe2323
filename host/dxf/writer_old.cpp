// What newer kinds of entity become in versions that don't know them. Told from their groups, so that
// it holds for entities of any origin.
#include "host/dxf/known.h"
#include "host/dxf/writer.h"

namespace host::dxf {
namespace {

// An LWPOLYLINE's own groups.
class PolylineGroups final : public GroupWriter {
public:
    struct Vertex {
        double x = 0, y = 0, startWidth = 0, endWidth = 0, bulge = 0;
    };
    std::vector<Vertex> vertices;
    GroupList common; // layer, colour, linetype and the like
    double elevation = 0, width = 0, thickness = 0;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    int flags = 0;

    void write(const Group& group) override {
        if (group.code == 100) {
            own_ = group.text == "AcDbPolyline";
            return;
        }
        if (!own_)
            common.append(group);
        else
            takeOwn(group);
    }

private:
    void takeOwn(const Group& group) {
        switch (group.code) {
        case 70: flags = int(group.integer); return;
        case 38: elevation = group.real; return;
        case 39: thickness = group.real; return;
        case 43: width = group.real; return;
        case 210: normal.x = group.real; return;
        case 220: normal.y = group.real; return;
        case 230: normal.z = group.real; return;
        case 10: vertices.push_back({group.real}); return;
        default: break;
        }
        if (vertices.empty()) return;
        Vertex& vertex = vertices.back();
        if (group.code == 20) vertex.y = group.real;
        if (group.code == 40) vertex.startWidth = group.real;
        if (group.code == 41) vertex.endWidth = group.real;
        if (group.code == 42) vertex.bulge = group.real;
    }
    bool own_ = false;
};

constexpr int kClosed = 1, kLinetypeGeneration = 128;

} // namespace

// The head of a part of a converted entity: a fresh handle, the whole as its owner.
void DrawingWriter::writePartHead(const char* kind, AcDbObjectId whole, const GroupList& common) {
    out_->text(0, std::string_view(kind));
    const std::uint64_t handle = freshHandle();
    out_->handle(5, handle);
    if (hasTies()) out_->handle(330, whole);
    out_->subclass("AcDbEntity");
    for (const Group group : common) out_->write(group);
}

// An LWPOLYLINE as a POLYLINE, in the form in which that would be written itself.
void DrawingWriter::writeOldPolyline(const AcDbEntity& polyline) {
    PolylineGroups data;
    data.database = &database_;
    data.version = AcDb::kDHL_1014; // with markers, and nothing that came later
    polyline.outGroups(data);
    out_->beginObject(nullptr);
    out_->text(0, std::string_view("POLYLINE"));
    writeHandle(polyline);
    writeTies(polyline);
    out_->subclass("AcDbEntity");
    for (const Group group : data.common) out_->write(group);
    out_->subclass("AcDb2dPolyline");
    out_->integer(66, 1);
    out_->point(10, AcGePoint3d(0, 0, data.elevation));
    if (data.thickness != 0) out_->real(39, data.thickness);
    out_->integer(70, data.flags & (kClosed | kLinetypeGeneration));
    if (data.width != 0) out_->real(40, data.width), out_->real(41, data.width);
    out_->normal(210, data.normal);
    writeXdata(polyline);
    for (const PolylineGroups::Vertex& vertex : data.vertices) {
        writePartHead("VERTEX", polyline.objectId(), data.common);
        out_->subclass("AcDbVertex");
        out_->subclass("AcDb2dVertex");
        out_->point(10, AcGePoint3d(vertex.x, vertex.y, data.elevation));
        const bool wide = vertex.startWidth != 0 || vertex.endWidth != 0;
        if (wide) out_->real(40, vertex.startWidth), out_->real(41, vertex.endWidth);
        if (vertex.bulge != 0) out_->real(42, vertex.bulge);
        out_->integer(70, 0);
    }
    writePartHead("SEQEND", polyline.objectId(), data.common);
    step();
}

} // namespace host::dxf
