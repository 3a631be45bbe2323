// AcGiWorldDraw and AcGiViewportDraw: what a drawable is handed to draw with.
#pragma once

#include "host/gi/drawable.h"
#include "host/gi/geometry.h"
#include "host/gi/traits.h"

class AcDbDatabase;

enum AcGiRegenType {
    eAcGiRegenTypeInvalid = 0,
    kAcGiStandardDisplay = 2,
    kAcGiHideOrShadeCommand = 3,
    kAcGiRenderCommand = 4,
    kAcGiForExplode = 5,
    kAcGiSaveWorldDrawForProxy = 6,
    kAcGiForExtents = 7
};

enum AcGiDeviationType {
    kAcGiMaxDevForCircle = 0,
    kAcGiMaxDevForCurve = 1,
    kAcGiMaxDevForBoundary = 2,
    kAcGiMaxDevForIsoline = 3,
    kAcGiMaxDevForFacet = 4
};

class AcGiContext {
public:
    virtual ~AcGiContext() = default;
    virtual AcDbDatabase* database() const = 0;
    virtual bool isPsOut() const { return false; }
    virtual bool isPlotGeneration() const { return false; }
};

class AcGiCommonDraw {
public:
    virtual ~AcGiCommonDraw() = default;
    virtual AcGiRegenType regenType() const = 0;
    virtual Adesk::Boolean regenAbort() const = 0; // the user wants no more of it
    virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
    virtual AcGiGeometry* rawGeometry() const = 0;
    virtual Adesk::Boolean isDragging() const = 0;
    // How far a polyline may keep from the curve it stands for, in world units, near a world point.
    virtual double deviation(AcGiDeviationType type, const AcGePoint3d& near) const = 0;
    virtual Adesk::UInt32 numberOfIsolines() const = 0;
    virtual AcGiContext* context() = 0;
};

class AcGiWorldDraw : public AcGiCommonDraw {
public:
    virtual AcGiWorldGeometry& geometry() const = 0;
    AcGiGeometry* rawGeometry() const override { return &geometry(); }
};

// The view that something is drawn for.
class AcGiViewport {
public:
    virtual ~AcGiViewport() = default;
    virtual void getWorldToEyeTransform(AcGeMatrix3d& matrix) const = 0;
    virtual void getEyeToWorldTransform(AcGeMatrix3d& matrix) const = 0;
    virtual Adesk::Boolean isPerspective() const = 0;
    virtual AcGeVector3d viewDir() const = 0; // from the target to the eye, unit length
    virtual void getCameraTarget(AcGePoint3d& target) const = 0;
    virtual void getCameraUpVector(AcGeVector3d& up) const = 0;
    // Pixels that a unit square at the world point covers, across and up.
    virtual void getNumPixelsInUnitSquare(const AcGePoint3d& at, AcGePoint2d& pixels) const = 0;
};

class AcGiViewportDraw : public AcGiCommonDraw {
public:
    virtual AcGiViewport& viewport() const = 0;
    virtual AcGiViewportGeometry& geometry() const = 0;
    AcGiGeometry* rawGeometry() const override { return &geometry(); }
};
