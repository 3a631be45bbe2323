// Polylines as plain data, in the form in which R12 knows them.
#pragma once
#include "host/db/entity.h"
#include "host/dxf/picture.h"

namespace host::dxf {

struct OldPolyline {
    struct Vertex {
        double x = 0, y = 0, z = 0, startWidth = 0, endWidth = 0, bulge = 0;
    };
    GroupList common; // layer, colour, linetype and the like
    std::vector<Vertex> vertices;
    bool inSpace = false; // else in the plane of the normal, at the elevation
    bool closed = false, wholeLinetype = false;
    double elevation = 0, width = 0, thickness = 0;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
};

// The groups that the entity has as any entity, for the version.
GroupList commonGroups(const AcDbEntity& entity, AcDb::AcDbDwgVersion version);
// All others, with their markers, as the latest version has them.
GroupList ownGroups(const AcDbEntity& entity);
// Of an LWPOLYLINE, told from its groups, so that it holds for one of any origin.
OldPolyline polylineOf(const AcDbEntity& lightweight, AcDb::AcDbDwgVersion version);
OldPolyline polylineOf(const DrawnLine& line, const GroupList& common);

} // namespace host::dxf
