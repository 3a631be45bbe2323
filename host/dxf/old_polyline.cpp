// Gathering a polyline from the groups of an entity or from drawn points.
#include "host/dxf/old_polyline.h"

#include <algorithm>

namespace host::dxf {
namespace {

// Parts an entity's groups into the common ones and those of its own class.
class EntityGroups : public GroupWriter {
public:
    EntityGroups(const AcDbEntity& entity, AcDb::AcDbDwgVersion target) : old_(target <= AcDb::kDHL_1009) {
        database = entity.database();
        version = std::max(target, AcDb::kDHL_1012); // with markers
    }
    GroupList common;

    void write(const Group& group) final {
        if (group.code == 100) own_ = group.text != "AcDbEntity";
        if (own_)
            takeOwn(group);
        else if (group.code != 100 && !(old_ && isNewer(group.code)))
            common.append(group);
    }

protected:
    virtual void takeOwn(const Group&) {}

private:
    // Linetype scale and visibility, which came with the markers.
    static bool isNewer(int code) { return code == 48 || code == 60; }
    bool old_, own_ = false;
};

class OwnGroups final : public EntityGroups {
public:
    explicit OwnGroups(const AcDbEntity& entity) : EntityGroups(entity, AcDb::kDHL_1032) {}
    GroupList own;

protected:
    void takeOwn(const Group& group) override { own.append(group); }
};

class PolylineGroups final : public EntityGroups {
public:
    using EntityGroups::EntityGroups;
    OldPolyline polyline;

protected:
    void takeOwn(const Group& group) override {
        constexpr int kClosed = 1, kLinetypeGeneration = 128;
        switch (group.code) {
        case 70:
            polyline.closed = group.integer & kClosed;
            polyline.wholeLinetype = group.integer & kLinetypeGeneration;
            return;
        case 38: polyline.elevation = group.real; return;
        case 39: polyline.thickness = group.real; return;
        case 43: polyline.width = group.real; return;
        case 210: polyline.normal.x = group.real; return;
        case 220: polyline.normal.y = group.real; return;
        case 230: polyline.normal.z = group.real; return;
        case 10: polyline.vertices.push_back({group.real}); return;
        default: break;
        }
        if (!polyline.vertices.empty()) takeVertex(polyline.vertices.back(), group);
    }

private:
    static void takeVertex(OldPolyline::Vertex& vertex, const Group& group) {
        if (group.code == 20) vertex.y = group.real;
        if (group.code == 40) vertex.startWidth = group.real;
        if (group.code == 41) vertex.endWidth = group.real;
        if (group.code == 42) vertex.bulge = group.real;
    }
};

} // namespace

GroupList commonGroups(const AcDbEntity& entity, AcDb::AcDbDwgVersion version) {
    EntityGroups groups(entity, version);
    entity.outGroups(groups);
    return std::move(groups.common);
}

GroupList ownGroups(const AcDbEntity& entity) {
    OwnGroups groups(entity);
    groups.beginObject(entity.tail() ? &entity.tail()->kept : nullptr);
    entity.outGroups(groups);
    groups.endObject();
    return std::move(groups.own);
}

OldPolyline polylineOf(const AcDbEntity& lightweight, AcDb::AcDbDwgVersion version) {
    PolylineGroups groups(lightweight, version);
    lightweight.outGroups(groups);
    groups.polyline.common = std::move(groups.common);
    for (OldPolyline::Vertex& vertex : groups.polyline.vertices) vertex.z = groups.polyline.elevation;
    return std::move(groups.polyline);
}

OldPolyline polylineOf(const DrawnLine& line, const GroupList& common) {
    OldPolyline polyline;
    polyline.common = common;
    polyline.closed = line.closed;
    polyline.elevation = line.points.front().z;
    for (const AcGePoint3d& p : line.points) {
        polyline.vertices.push_back({p.x, p.y, p.z});
        polyline.inSpace |= p.z != polyline.elevation;
    }
    return polyline;
}

} // namespace host::dxf
