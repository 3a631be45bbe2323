// AcDb3dSolid, AcDbBody and AcDbSurface: bodies in space as files hold them. They show as wires, are measured
// by them, and are moved, turned and evenly scaled as wholes. Bodies whose data isn't text (drawings since
// R2013 keep it apart, in binary) are kept as they came, show nothing and have no extents.
#pragma once
#include <memory>

#include "host/ent/own_groups.h"
#include "host/solid/modeler_wires.h"

namespace host {

class ModelerEntity : public GroupedEntity {
public:
    bool inGroup(const Group& group, ReadContext& context) override;

protected:
    const char* marker() const override { return "AcDbModelerGeometry"; }
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    // eNotApplicable for bodies that can't be moved so.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override; // of the wires

private:
    const std::vector<CurvePath>& wires() const;
    mutable std::shared_ptr<const std::vector<CurvePath>> wires_; // once they were asked for
};

} // namespace host

class AcDb3dSolid : public host::ModelerEntity {
    HOST_DB_CLASS(AcDb3dSolid)
};
class AcDbBody : public host::ModelerEntity {
    HOST_DB_CLASS(AcDbBody)
};
class AcDbSurface : public host::ModelerEntity {
    HOST_DB_CLASS(AcDbSurface)
};
class AcDbPlaneSurface : public AcDbSurface {
    HOST_DB_CLASS(AcDbPlaneSurface)
};
