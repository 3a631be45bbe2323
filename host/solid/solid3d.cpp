// Bodies as entities.
#include "host/solid/solid3d.h"

#include "host/ent/curve_make.h"
#include "host/gi/draw.h"
#include "host/solid/modeler_write.h"

HOST_DEFINE_CLASS(AcDb3dSolid, AcDbEntity, L"3DSOLID")
HOST_DEFINE_CLASS(AcDbBody, AcDbEntity, L"BODY")
HOST_DEFINE_CLASS(AcDbSurface, AcDbEntity, L"SURFACE")
HOST_DEFINE_CLASS(AcDbPlaneSurface, AcDbSurface, L"PLANESURFACE")

namespace host {

const std::vector<CurvePath>& ModelerEntity::wires() const {
    if (!wires_)
        wires_ = std::make_shared<const std::vector<CurvePath>>(wiresOf(readModelerText(own_.list())));
    return *wires_;
}

bool ModelerEntity::inGroup(const Group& group, ReadContext& context) {
    wires_.reset();
    return GroupedEntity::inGroup(group, context);
}

Adesk::Boolean ModelerEntity::subWorldDraw(AcGiWorldDraw* context) const {
    for (const CurvePath& wire : wires())
        if (const auto curve = makeCurve(wire)) curve->worldDraw(context);
    return true;
}

// The lines of text are exchanged, everything else stays where it stood.
Acad::ErrorStatus ModelerEntity::subTransformBy(const AcGeMatrix3d& matrix) {
    const ModelerText text = readModelerText(own_.list());
    const auto moved = movedModelerText(text, matrix);
    if (!moved) return Acad::eNotApplicable;
    if (auto es = change(); es != Acad::eOk) return es;
    GroupList groups;
    bool written = false;
    for (const Group group : own_.list()) {
        if (group.code != 1 && group.code != 3) {
            groups.append(group);
            continue;
        }
        if (std::exchange(written, true)) continue;
        for (const Group line : modelerLines(moved->substr(moved->find_first_not_of('\n'))))
            groups.append(line);
    }
    own_.assign(std::move(groups));
    wires_.reset();
    return Acad::eOk;
}

Acad::ErrorStatus ModelerEntity::subGetGeomExtents(AcDbExtents& extents) const {
    if (wires().empty()) return Acad::eInvalidExtents;
    AcDbExtents box;
    for (const CurvePath& wire : wires()) box.addExt(wire.extents());
    return extents = box, Acad::eOk;
}

} // namespace host
