// Coordinate systems of the moment, and acedTrans over them.
#include <numbers>

#include "host/ed/editor.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/os/numbers.h"
#include "host/os/text.h"

namespace host {
namespace {

AcDbDatabase* database() { return acdbHostApplicationServices()->workingDatabase(); }

ViewFrame activeFrame() {
    ViewFrame frame;
    AcDbViewportTable* table = nullptr;
    if (!database() || database()->getViewportTable(table, AcDb::kForRead) != Acad::eOk) return frame;
    AcDbViewportTableRecord* active = nullptr;
    if (table->getAt(L"*Active", active, AcDb::kForRead) == Acad::eOk) {
        frame.target = active->target(), frame.direction = active->viewDirection(),
        frame.twist = active->viewTwist();
        frame.center = active->centerPoint(), frame.height = active->height();
        frame.aspect = active->height() > 0 ? active->width() / active->height() : 1;
        frame.perspective = active->perspectiveEnabled();
        active->close();
    }
    table->close();
    return frame;
}

AcGePoint3d transformed(const AcGePoint3d& point, CoordinateSystem::Kind from, CoordinateSystem::Kind to) {
    return converted(point, {from, AcGeVector3d::kZAxis}, {to, AcGeVector3d::kZAxis}, false, surroundings())
        .value_or(point);
}

std::optional<CoordinateSystem> systemOf(const resbuf* code) {
    CoordinateSystem system;
    if (!code) return std::nullopt;
    switch (code->restype) {
    case RTSHORT:
    case RTLONG: {
        const int value = code->restype == RTSHORT ? code->resval.rint : code->resval.rlong;
        if (value < 0 || value > 3) return std::nullopt;
        system.kind = CoordinateSystem::Kind(value);
        return system;
    }
    case RT3DPOINT:
    case RTPOINT:
        system.kind = CoordinateSystem::Kind::object;
        system.normal.set(code->resval.rpoint[X], code->resval.rpoint[Y], code->resval.rpoint[Z]);
        return system;
    case RTENAME: {
        AcDbObjectId id;
        AcDbObjectPointer<AcDbEntity> entity;
        if (acdbGetObjectId(id, code->resval.rlname) != Acad::eOk ||
            entity.open(id, AcDb::kForRead) != Acad::eOk)
            return std::nullopt;
        AcGePlane plane;
        system.kind = CoordinateSystem::Kind::object;
        if (entity->getPlane(plane) == Acad::eOk) system.normal = plane.normal();
        return system;
    }
    default: return std::nullopt;
    }
}

} // namespace

Surroundings surroundings() {
    Surroundings now;
    if (!database()) return now;
    const AcGePoint3d x = database()->headerPoint("$UCSXDIR", {1, 0, 0}),
                      y = database()->headerPoint("$UCSYDIR", {0, 1, 0});
    now.user = {database()->headerPoint("$UCSORG"), x.asVector(), y.asVector()};
    now.view = activeFrame();
    return now;
}

void keepView(AcDbDatabase& drawing, const ViewFrame& view) {
    AcDbObjectPointer<AcDbViewportTable> table(drawing.viewportTableId(), AcDb::kForRead);
    AcDbObjectId id;
    if (!table || table->getAt(L"*Active", id) != Acad::eOk) return;
    AcDbObjectPointer<AcDbViewportTableRecord> active(id, AcDb::kForWrite);
    if (!active) return;
    active->setCenterPoint(view.center);
    active->setHeight(view.height);
    active->setWidth(view.height * view.aspect);
    active->setTarget(view.target);
    active->setViewDirection(view.direction);
    active->setViewTwist(view.twist);
}

PointFrame pointFrame() {
    PointFrame frame;
    const auto number = [](const wchar_t* name) {
        return parseReal(std::wstring_view(systemVariableText(*findSystemVariable(name)))).value_or(0);
    };
    frame.elevation = number(L"ELEVATION");
    frame.angleBase = number(L"ANGBASE") * std::numbers::pi / 180;
    frame.clockwise = number(L"ANGDIR") != 0;
    resbuf last;
    if (acedGetVar(L"LASTPOINT", &last) == RTNORM)
        frame.last.set(last.resval.rpoint[X], last.resval.rpoint[Y], last.resval.rpoint[Z]);
    return frame;
}

void setLastPoint(const AcGePoint3d& p) {
    setSessionVariable(L"LASTPOINT", wide(formatReal(p.x) + "," + formatReal(p.y) + "," + formatReal(p.z)));
}

AcGePoint3d ucsToWorld(const AcGePoint3d& point) {
    return transformed(point, CoordinateSystem::Kind::user, CoordinateSystem::Kind::world);
}
AcGePoint3d worldToUcs(const AcGePoint3d& point) {
    return transformed(point, CoordinateSystem::Kind::world, CoordinateSystem::Kind::user);
}

} // namespace host

int acedTrans(const ads_point from, const resbuf* fromSystem, const resbuf* toSystem, int isVector,
              ads_point to) {
    const auto source = host::systemOf(fromSystem), target = host::systemOf(toSystem);
    if (!source || !target) return RTERROR;
    const auto result =
        host::converted({from[X], from[Y], from[Z]}, *source, *target, isVector != 0, host::surroundings());
    if (!result) return RTERROR;
    to[X] = result->x, to[Y] = result->y, to[Z] = result->z;
    return RTNORM;
}
