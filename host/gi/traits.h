// AcGiSubEntityTraits: how what is drawn next looks. A drawable sets them before it draws; values are
// as in drawings, so by layer and by block are resolved by whoever collects.
#pragma once

#include "host/db/adesk.h"
#include "host/db/color.h"
#include "host/db/objectid.h"

enum AcGiFillType { kAcGiFillAlways = 1, kAcGiFillNever = 2 };

class AcGiSubEntityTraits {
public:
    virtual ~AcGiSubEntityTraits() = default;

    virtual void setColor(Adesk::UInt16 index) = 0; // 0 by block, 1 to 255, 256 by layer
    virtual void setTrueColor(const AcCmColor& color) = 0;
    virtual void setLayer(AcDbObjectId layer) = 0;
    virtual void setLineType(AcDbObjectId linetype) = 0;
    virtual void setSelectionMarker(Adesk::GsMarker marker) = 0; // 0: no part of its own
    virtual void setFillType(AcGiFillType fill) = 0;             // for polygons, circles, shells, meshes
    virtual void setLineWeight(AcDb::LineWeight weight) = 0;
    virtual void setLineTypeScale(double scale = 1.0) = 0;
    virtual void setThickness(double thickness) = 0;

    virtual Adesk::UInt16 color() const = 0;
    virtual AcCmColor trueColor() const = 0;
    virtual AcDbObjectId layerId() const = 0;
    virtual AcDbObjectId lineTypeId() const = 0;
    virtual AcGiFillType fillType() const = 0;
    virtual AcDb::LineWeight lineWeight() const = 0;
    virtual double lineTypeScale() const = 0;
    virtual double thickness() const = 0;
    virtual Adesk::GsMarker selectionMarker() const = 0;
};

namespace host {

// The values themselves, for those who hold or save them.
struct TraitValues {
    AcCmColor color;
    AcDbObjectId layer, linetype;
    double linetypeScale = 1.0, thickness = 0.0;
    AcDb::LineWeight lineWeight = AcDb::kLnWtByLayer;
    AcGiFillType fill = kAcGiFillNever;
    Adesk::GsMarker marker = 0;
    bool operator==(const TraitValues&) const = default;
};

// Traits that are kept as they were set. Scales that aren't above 0 and thicknesses that are no
// numbers change nothing.
class StoredTraits : public AcGiSubEntityTraits {
public:
    TraitValues values;

    void setColor(Adesk::UInt16 index) override { values.color.setColorIndex(index); }
    void setTrueColor(const AcCmColor& color) override { values.color = color; }
    void setLayer(AcDbObjectId layer) override { values.layer = layer; }
    void setLineType(AcDbObjectId linetype) override { values.linetype = linetype; }
    void setSelectionMarker(Adesk::GsMarker marker) override { values.marker = marker; }
    void setFillType(AcGiFillType fill) override { values.fill = fill; }
    void setLineWeight(AcDb::LineWeight weight) override { values.lineWeight = weight; }
    void setLineTypeScale(double scale = 1.0) override {
        if (scale > 0 && scale < 1e100) values.linetypeScale = scale;
    }
    void setThickness(double thickness) override {
        if (thickness > -1e100 && thickness < 1e100) values.thickness = thickness;
    }
    Adesk::UInt16 color() const override { return values.color.colorIndex(); }
    AcCmColor trueColor() const override { return values.color; }
    AcDbObjectId layerId() const override { return values.layer; }
    AcDbObjectId lineTypeId() const override { return values.linetype; }
    AcGiFillType fillType() const override { return values.fill; }
    AcDb::LineWeight lineWeight() const override { return values.lineWeight; }
    double lineTypeScale() const override { return values.linetypeScale; }
    double thickness() const override { return values.thickness; }
    Adesk::GsMarker selectionMarker() const override { return values.marker; }
};

} // namespace host
