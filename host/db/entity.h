// AcDbEntity: what everything drawn has in common. Layer, colour, linetype and their kin, and the
// doors through which entities are drawn, measured, moved and taken apart. The kinds of entity
// live in host/ent.
#pragma once
#include "host/db/color.h"
#include "host/db/object.h"
#include "host/ge/extents.h"
#include "host/ge/matrix3d.h"
#include "host/ge/plane.h"
#include "host/gi/drawable.h"

class AcGiWorldDraw;
class AcGiViewportDraw;

using AcDbVoidPtrArray = AcArray<void*>;

class AcDbEntity : public AcDbObject, public AcGiDrawable {
    ACRX_DECLARE_MEMBERS(AcDbEntity)
public:
    // The block record that holds the entity; for a vertex or attribute, that of its whole.
    AcDbObjectId blockId() const;

    AcCmColor color() const { return color_; }
    Adesk::UInt16 colorIndex() const { return color_.colorIndex(); }
    AcCmEntityColor::ColorMethod colorMethod() const { return color_.colorMethod(); }
    virtual Acad::ErrorStatus setColor(const AcCmColor& color, Adesk::Boolean doSubents = true,
                                       AcDbDatabase* db = nullptr);
    // 0 by block, 1..255, 256 by layer; others give eInvalidInput.
    virtual Acad::ErrorStatus setColorIndex(Adesk::UInt16 index, Adesk::Boolean doSubents = true);

    AcDbObjectId layerId() const { return layer_; }
    // The layer's name; the form with a pointer gives a copy that the caller frees with acutDelString.
    std::wstring layerName() const;
    ACHAR* layer() const;
    Acad::ErrorStatus setLayer(AcDbObjectId layer, Adesk::Boolean doSubents = true, bool allowHidden = false);
    // eKeyNotFound when the drawing has no such layer. Outside a drawing the working database counts.
    Acad::ErrorStatus setLayer(const ACHAR* name, Adesk::Boolean doSubents = true, bool allowHidden = false);

    AcDbObjectId linetypeId() const { return linetype_; }
    Acad::ErrorStatus setLinetype(AcDbObjectId linetype, Adesk::Boolean doSubents = true);
    Acad::ErrorStatus setLinetype(const ACHAR* name, Adesk::Boolean doSubents = true);
    double linetypeScale() const { return linetypeScale_; }
    Acad::ErrorStatus setLinetypeScale(double scale, Adesk::Boolean doSubents = true); // above 0
    AcDb::LineWeight lineWeight() const { return lineWeight_; }
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight, Adesk::Boolean doSubents = true);
    AcDb::Visibility visibility() const { return visible_ ? AcDb::kVisible : AcDb::kInvisible; }
    Acad::ErrorStatus setVisibility(AcDb::Visibility visibility, Adesk::Boolean doSubents = true);
    // The file's 440 value as it stands (alpha in the low byte, method above); 0 by layer.
    Adesk::UInt32 transparencyCode() const { return transparency_; }
    Acad::ErrorStatus setTransparencyCode(Adesk::UInt32 code);

    // All of the above from another entity.
    Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* from, Adesk::Boolean doSubents = true);
    // The drawing's current layer, colour, linetype, linetype scale and lineweight.
    void setDatabaseDefaults(AcDbDatabase* database = nullptr);

    // Moves the entity. eCannotScaleNonUniformly when the kind can't take the matrix,
    // eInvalidInput for a singular or non-finite one; then nothing has changed.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);
    // A moved copy outside any drawing, perhaps of another class (a circle unevenly scaled).
    Acad::ErrorStatus getTransformedCopy(const AcGeMatrix3d& matrix, AcDbEntity*& copy) const;
    // The tight box; eInvalidExtents when there is nothing to measure.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
    // New entities (AcDbEntity*) that together draw what this one draws; the caller owns them.
    Acad::ErrorStatus explode(AcDbVoidPtrArray& parts) const;
    // Appends the points shared with the other entity. With extension, as both or one would go on
    // by their own kind. The form with a plane looks along the plane's normal.
    Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect extension,
                                    AcGePoint3dArray& points, Adesk::GsMarker thisMarker = 0,
                                    Adesk::GsMarker otherMarker = 0) const;
    Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect extension,
                                    const AcGePlane& plane, AcGePoint3dArray& points,
                                    Adesk::GsMarker thisMarker = 0, Adesk::GsMarker otherMarker = 0) const;
    Acad::ErrorStatus getGripPoints(AcGePoint3dArray& points) const;
    Acad::ErrorStatus moveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset);
    Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& points) const;
    Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset);
    Acad::ErrorStatus getOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick, const AcGePoint3d& last,
                                     AcGePoint3dArray& points) const;
    virtual Adesk::Boolean isPlanar() const { return false; }
    virtual Acad::ErrorStatus getPlane(AcGePlane& plane) const;

    Acad::ErrorStatus highlight() const;
    Acad::ErrorStatus unhighlight() const;
    Acad::ErrorStatus draw();
    void recordGraphicsModified(bool = true) { (void)willModify(); }
    // Draws into a context. True when done; false asks for viewportDraw.
    Adesk::Boolean worldDraw(AcGiWorldDraw* context) const override;
    void viewportDraw(AcGiViewportDraw* context) const override;

    // The block record that this entity draws an instance of, or null.
    virtual AcDbObjectId referencedBlock() const { return {}; }

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;
    std::unique_ptr<AcDbObject> snapshot() const override;
    void restore(const AcDbObject& from) override;

protected:
    AcDbEntity() = default;
    AcDbEntity(const AcDbEntity&) = default;
    AcDbEntity& operator=(const AcDbEntity&) = default;

    // What a kind of entity fills in.
    virtual Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const;
    virtual void subViewportDraw(AcGiViewportDraw* context) const;
    virtual Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix);
    virtual Acad::ErrorStatus subGetTransformedCopy(const AcGeMatrix3d& matrix, AcDbEntity*& copy) const;
    virtual Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const;
    virtual Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const;
    // `plane` is null for intersections in space.
    virtual Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect extension,
                                               const AcGePlane* plane, AcGePoint3dArray& points) const;
    virtual Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const;
    virtual Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset);
    virtual Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const;
    virtual Acad::ErrorStatus subMoveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset);
    virtual Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                                const AcGePoint3d& last, AcGePoint3dArray& points) const;
    virtual Acad::ErrorStatus subSetPropertiesFrom(const AcDbEntity*) { return Acad::eOk; }

private:
    friend class host::ObjectAccess;
    template <class Change> void forParts(Adesk::Boolean doSubents, Change change);
    void outPlace(host::GroupWriter& writer) const;
    void forgetColorName();

    AcCmColor color_;
    Adesk::Int16 fileIndex_ = 256; // the index that stands beside a true colour in files; 256 none
    bool visible_ = true;
    AcDb::LineWeight lineWeight_ = AcDb::kLnWtByLayer;
    AcDbObjectId layer_, linetype_;
    double linetypeScale_ = 1.0;
    Adesk::UInt32 transparency_ = 0;
};

namespace host {
// What entities ask of whoever shows them; the view sets it at start-up.
class EntityDisplay {
public:
    virtual ~EntityDisplay() = default;
    virtual void highlight(AcDbObjectId entity, bool on) = 0;
    virtual void redraw(AcDbObjectId entity) = 0;
    // Draws what stands in a block record, in its own coordinates. True when something was drawn.
    virtual bool drawBlock(AcGiWorldDraw* context, AcDbObjectId block) = 0;
};
void setEntityDisplay(EntityDisplay* display); // null: nobody shows anything
EntityDisplay* entityDisplay();
} // namespace host

// Redraws the entity on the screen; eOk also where there is none.
int acdbEntUpd(const ads_name entity); // RTNORM or RTERROR
