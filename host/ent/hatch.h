// AcDbHatch: an area of a plane, inside outlines of several kinds, filled or covered with the lines of a
// pattern. A hatch that nobody changes is written with the groups it was read from.
#pragma once
#include "host/ent/hatch_data.h"

using AcGeVoidPointerArray = AcArray<void*>;

class AcDbHatch : public AcDbEntity {
    HOST_DB_CLASS(AcDbHatch)
public:
    enum HatchLoopType {
        kDefault = 0,
        kExternal = 1,
        kPolyline = 2,
        kDerived = 4,
        kTextbox = 8,
        kOutermost = 16,
        kNotClosed = 32,
        kSelfIntersecting = 64,
        kTextIsland = 128,
        kDuplicate = 256
    };
    enum HatchEdgeType { kLine = 1, kCirArc = 2, kEllArc = 3, kSpline = 4 };
    enum HatchPatternType { kUserDefined = 0, kPreDefined = 1, kCustomDefined = 2 };
    enum HatchStyle { kNormal = 0, kOuter = 1, kIgnore = 2 };
    enum HatchObjectType { kHatchObject = 0, kGradientObject = 1 };

    double elevation() const { return data_.elevation; }
    Acad::ErrorStatus setElevation(double elevation);
    AcGeVector3d normal() const { return data_.normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    // Loops, in coordinates of the plane. Numbers beyond give eInvalidIndex, loopTypeAt then -1.
    int numLoops() const { return int(data_.loops.size()); }
    Adesk::Int32 loopTypeAt(int index) const;
    // Of a polyline loop; eNotApplicable for others. One bulge a vertex, none when all are straight. The
    // first vertex isn't repeated.
    Acad::ErrorStatus getLoopAt(int index, Adesk::Int32& type, AcGePoint2dArray& vertices,
                                AcGeDoubleArray& bulges) const;
    // Of any other loop; eNotApplicable for polylines. By type (HatchEdgeType) new AcGeLineSeg2d,
    // AcGeCircArc2d, AcGeEllipArc2d or AcGeNurbCurve2d, which the caller deletes. Edges without a size are
    // left out.
    Acad::ErrorStatus getLoopAt(int index, Adesk::Int32& type, AcGeVoidPointerArray& edges,
                                AcGeIntArray& edgeTypes) const;
    Acad::ErrorStatus insertLoopAt(int index, Adesk::Int32 type, const AcGePoint2dArray& vertices,
                                   const AcGeDoubleArray& bulges);
    Acad::ErrorStatus appendLoop(Adesk::Int32 type, const AcGePoint2dArray& vertices,
                                 const AcGeDoubleArray& bulges);
    // Along curves of the drawing, in order; a closed polyline becomes a polyline loop. An associative hatch
    // remembers them.
    Acad::ErrorStatus appendLoop(Adesk::Int32 type, const AcDbObjectIdArray& curves);
    Acad::ErrorStatus removeLoopAt(int index);
    bool associative() const { return data_.associative; }
    Acad::ErrorStatus setAssociative(bool associative); // false forgets the entities that were followed
    Acad::ErrorStatus getAssocObjIdsAt(int index, AcDbObjectIdArray& ids) const;

    // The pattern: its name, and lines as they lie in the plane.
    const ACHAR* patternName() const { return data_.name.c_str(); }
    HatchPatternType patternType() const { return HatchPatternType(data_.patternType); }
    bool isSolidFill() const { return data_.solid; }
    bool isGradient() const { return hatchObjectType() == kGradientObject; }
    HatchObjectType hatchObjectType() const;
    double patternAngle() const { return data_.angle; } // radians
    Acad::ErrorStatus setPatternAngle(double angle);
    double patternScale() const { return data_.scale; }
    Acad::ErrorStatus setPatternScale(double scale); // above 0
    bool patternDouble() const { return data_.doubled; }
    Acad::ErrorStatus setPatternDouble(bool doubled);
    double patternSpace() const; // of a user-defined pattern
    Acad::ErrorStatus setPatternSpace(double space);
    // SOLID, and of the named patterns those that patternNames() lists; eInvalidInput for others. A
    // user-defined one is parallel lines at the pattern's angle, or two families of them.
    Acad::ErrorStatus setPattern(HatchPatternType type, const ACHAR* name);
    static std::vector<std::wstring> patternNames();
    int numPatternDefinitions() const { return int(data_.lines.size()); }
    Acad::ErrorStatus getPatternDefinitionAt(int index, double& angle, double& baseX, double& baseY,
                                             double& offsetX, double& offsetY, AcGeDoubleArray& dashes) const;
    HatchStyle hatchStyle() const { return HatchStyle(data_.style); }
    Acad::ErrorStatus setHatchStyle(HatchStyle style);
    // Tells whether there is something to hatch: eInvalidInput without a loop that encloses an area.
    Acad::ErrorStatus evaluateHatch(bool underestimateNumLines = false);
    Acad::ErrorStatus getArea(double& area) const; // to a millionth, by the hatch's style

    const host::HatchData& data() const { return data_; }
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane) const override;
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void inDone(host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    // Similarities; eCannotScaleNonUniformly for others, eNotApplicable for a hatch that couldn't be read.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const override; // pattern lines and dots
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;

private:
    struct Lines {
        std::vector<host::HatchSegment> segments;
        bool complete = true;
    };
    Acad::ErrorStatus change(); // the door of the setters
    bool writesSource(const host::GroupWriter& writer) const;
    host::HatchContours contours(double chordTolerance) const; // that count in the hatch's style
    Lines lines(const host::HatchContours& contours) const;
    double size() const;
    void buildLines();

    host::HatchData data_;
    host::OwnGroups source_; // as read; empty after a change
    bool readable_ = true;
    bool sourceIsNew_ = true; // written by R2010 or later
};
