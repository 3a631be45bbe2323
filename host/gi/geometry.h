// AcGiGeometry and its two kinds: the primitives a drawable draws with. A collector must take
// polylines, polygons and transformations; everything else comes to it as those unless it overrides
// the call. All points are in the model coordinates of the transformation pushed last.
#pragma once

#include <cstddef>
#include <span>

#include "host/db/adesk.h"
#include "host/ge/array.h"
#include "host/ge/matrix3d.h"
#include "host/gi/textstyle.h"

class AcGiDrawable;

enum AcGiArcType { kAcGiArcSimple = 0, kAcGiArcSector = 1, kAcGiArcChord = 2 };

namespace host {

// A polyline with arcs and widths, in the plane of its normal (object coordinates).
struct PlineVertex {
    AcGePoint2d point;
    double bulge = 0;                    // of the segment that starts here: tan of a quarter of its angle
    double startWidth = 0, endWidth = 0; // of that segment
};
struct Pline {
    std::span<const PlineVertex> vertices;
    bool closed = false;
    bool wholeLinetype = false; // dashes run through the vertices instead of starting anew
    double elevation = 0;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
};

// An ellipse or a part of one: centre + cos(t) * major + sin(t) * minor, t from start to end.
struct EllipticArc {
    AcGePoint3d center;
    AcGeVector3d major, minor;
    double start = 0, end = 6.283185307179586;
};

} // namespace host

// What a reference shows of its block: the inside of a polygon.
struct AcGiClipBoundary {
    AcGePoint2dArray m_aptPoints;         // in the XY plane of clip space; two are corners of a rectangle
    AcGeMatrix3d m_xToClipSpace;          // from the world of the reference when it was clipped
    AcGeMatrix3d m_xInverseBlockRefXForm; // from that world to the block
};

class AcGiGeometry {
public:
    virtual ~AcGiGeometry() = default;

    virtual void getModelToWorldTransform(AcGeMatrix3d& matrix) const = 0;
    virtual void getWorldToModelTransform(AcGeMatrix3d& matrix) const;
    virtual Adesk::Boolean pushModelTransform(const AcGeMatrix3d& matrix) = 0;
    virtual Adesk::Boolean pushModelTransform(const AcGeVector3d& normal); // of object coordinates
    virtual Adesk::Boolean popModelTransform() = 0;

    // What is drawn from here on, in the coordinates of the transformation pushed last (a block's), is cut to
    // the boundary. False when the drawer can't; then nothing is to be popped.
    virtual Adesk::Boolean pushClipBoundary(const AcGiClipBoundary& boundary) {
        (void)boundary;
        return false;
    }
    virtual void popClipBoundary() {}

    // Every drawing call gives false, always: the regeneration goes on. `normal` tells the direction of
    // the traits' thickness.
    virtual Adesk::Boolean polyline(Adesk::UInt32 count, const AcGePoint3d* points,
                                    const AcGeVector3d* normal = nullptr, Adesk::GsMarker marker = -1) = 0;
    virtual Adesk::Boolean polygon(Adesk::UInt32 count, const AcGePoint3d* points) = 0;
    // Several loops filled together by the odd-even rule: those inside others are holes. `counts` holds
    // the number of points of each loop.
    virtual Adesk::Boolean polyPolygon(Adesk::UInt32 loops, const Adesk::UInt32* counts,
                                       const AcGePoint3d* points);

    virtual Adesk::Boolean circle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal);
    virtual Adesk::Boolean circle(const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3);
    virtual Adesk::Boolean circularArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                                       const AcGeVector3d& startVector, double sweepAngle,
                                       AcGiArcType type = kAcGiArcSimple);
    virtual Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point,
                                       const AcGePoint3d& end, AcGiArcType type = kAcGiArcSimple);
    virtual Adesk::Boolean ellipArc(const host::EllipticArc& arc, AcGiArcType type = kAcGiArcSimple);
    virtual Adesk::Boolean pline(const host::Pline& polyline);

    // A grid of rows by columns of points.
    virtual Adesk::Boolean mesh(Adesk::UInt32 rows, Adesk::UInt32 columns, const AcGePoint3d* points);
    // Faces by vertex index: a count, then so many indices; a negative count is a hole of the face
    // before it. Lists that point outside the vertices are cut off there.
    virtual Adesk::Boolean shell(Adesk::UInt32 vertexCount, const AcGePoint3d* vertices,
                                 Adesk::UInt32 faceListSize, const Adesk::Int32* faceList);

    // Text with its lower left corner of the baseline at `position`, running along `direction`. In the
    // first form the font is the plain one and control codes (%%d, %%u ...) are read; in the second they
    // are unless `raw`. `length` is -1 for text that ends with its zero.
    virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                const AcGeVector3d& direction, double height, double width, double oblique,
                                const ACHAR* message);
    virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                const AcGeVector3d& direction, const ACHAR* message, Adesk::Int32 length,
                                Adesk::Boolean raw, const AcGiTextStyle& style);

    virtual Adesk::Boolean xline(const AcGePoint3d& on, const AcGePoint3d& alsoOn);
    virtual Adesk::Boolean ray(const AcGePoint3d& start, const AcGePoint3d& through);

    // Draws another drawable in place, with traits of its own.
    virtual Adesk::Boolean draw(const AcGiDrawable* drawable) = 0;

protected:
    // The distance a chord may keep from its arc when curves are drawn as polylines, in model units.
    virtual double chordError(double radius) const { return radius * 5e-4; }
};

class AcGiWorldGeometry : public AcGiGeometry {
public:
    virtual void setExtents(AcGePoint3d*) {}
    virtual void startAttributesSegment() {}
};

class AcGiViewportGeometry : public AcGiGeometry {
public:
    // In the coordinates of the eye (x right, y up, z to the viewer), and of the picture's pixels.
    virtual Adesk::Boolean polylineEye(Adesk::UInt32 count, const AcGePoint3d* points) = 0;
    virtual Adesk::Boolean polygonEye(Adesk::UInt32 count, const AcGePoint3d* points) = 0;
    virtual Adesk::Boolean polylineDc(Adesk::UInt32 count, const AcGePoint3d* points) = 0;
    virtual Adesk::Boolean polygonDc(Adesk::UInt32 count, const AcGePoint3d* points) = 0;
};
