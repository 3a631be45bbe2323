// AcDbRegion: plane areas bounded by loops of curves. Regions from files keep their data as it came until
// they are changed, and are understood where they are asked for; what can't be understood is kept, shows
// nothing and has no extents.
#pragma once
#include <memory>

#include "host/ent/own_groups.h"
#include "host/solid/face_boolean.h"

class AcDbRegion : public host::GroupedEntity {
    HOST_DB_CLASS(AcDbRegion)
public:
    // New regions (AcDbRegion*, the caller's), one for each closed loop that the curves (AcDbCurve*) form
    // alone or end to end, in a plane. eInvalidInput, and none, when they form none.
    static Acad::ErrorStatus createFromCurves(const AcDbVoidPtrArray& curves, AcDbVoidPtrArray& regions);

    // Makes this region the outcome and leaves the other one empty. eInvalidInput for regions of different
    // planes and for ones not understood; eGeneralModelingFailure when the modeller fails.
    Acad::ErrorStatus booleanOper(AcDb::BoolOperType operation, AcDbRegion* other);
    bool isNull() const; // encloses nothing, or isn't understood
    Acad::ErrorStatus getArea(double& area) const;
    Acad::ErrorStatus getNormal(AcGeVector3d& normal) const;
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane) const override;

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    const char* marker() const override { return "AcDbModelerGeometry"; }
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // Of several faces a region each (AcDbRegion*), of one its curves (AcDbCurve*).
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const override;

private:
    const host::PlanarFaces& faces() const;
    void take(host::PlanarFaces faces); // as its shape from now on
    // Understood already, or made here; shared by copies, which never change it.
    mutable std::shared_ptr<const host::PlanarFaces> faces_;
};

namespace host {
// Makes the classes of this room known.
void registerSolidClasses();
} // namespace host
