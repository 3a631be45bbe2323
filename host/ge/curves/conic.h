// Circles, ellipses and their arcs in space, on plain data. Circles are ellipses with ratio 1 and have closed
// forms for what they need. Conversion to B-splines is in nurbs_make.h, flattening in sampling.h.
#pragma once

#include "host/ge/extents.h"
#include "host/ge/matrix3d.h"

namespace host::ge {

struct ConicClosest {
    AcGePoint3d point;
    double param = 0;
    double distance = 0;
};

// point(u) = center + majorAxis cos u + minorAxis sin u for u from start to end, counter-clockwise about the
// unit normal. majorAxis is perpendicular to the normal and as long as the larger radius; ratio is in (0, 1].
// start < end <= start + 2 pi.
struct EllipticArc {
    AcGePoint3d center;
    AcGeVector3d normal{0, 0, 1};
    AcGeVector3d majorAxis{1, 0, 0};
    double ratio = 1;
    double start = 0;
    double end = 6.283185307179586476925286766559;

    AcGeVector3d minorAxis() const { return normal.crossProduct(majorAxis) * ratio; }
    double majorRadius() const { return majorAxis.length(); }
    double minorRadius() const { return majorAxis.length() * ratio; }
    bool isCircular() const;
    bool isClosed() const; // a whole turn
    double sweep() const { return end - start; }

    AcGePoint3d point(double u) const;
    AcGePoint3d startPoint() const { return point(start); }
    AcGePoint3d endPoint() const { return point(end); }
    AcGeVector3d derivative(double u, int order = 1) const; // order >= 1
    double length() const { return lengthBetween(start, end); }
    // Signed, negative when to < from. Elliptic integrals by Carlson's forms (Carlson, 1979), 1e-14 of the
    // size.
    double lengthBetween(double from, double to) const;
    // The parameter at a length from the start; below 0 the start, beyond the whole length the end.
    double paramAtLength(double length) const;
    // The parameter inside [start, end] that is a whole number of turns from u; if there is none, the nearer
    // end.
    double paramInRange(double u) const;
    // All stationary points that can be nearest are bracketed, one in the point's own quadrant of the ellipse
    // and one in the quadrant across the major axis (after Eberly, 2013), so arcs get their true nearest
    // point, too.
    ConicClosest closestTo(const AcGePoint3d& point) const;
    AcDbExtents extents() const;  // tight
    double area() const;          // between arc and chord; of the whole for a closed one
    EllipticArc reversed() const; // same points, opposite normal
    EllipticArc part(double from, double to) const;
};

// A circular arc with angles measured from the X axis of the plane that the normal gives (arbitrary axis
// rule); an end angle at or below the start is a turn later.
EllipticArc circularArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius,
                        double startAngle, double endAngle);
EllipticArc fullCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);

// The ellipse with these conjugate half diameters: point(u) = center + p cos u + q sin u, start and end kept
// on their points. Rytz's construction in closed form. Half diameters on one line give ratio 0 and the normal
// as passed.
EllipticArc ellipseFromConjugate(const AcGePoint3d& center, const AcGeVector3d& p, const AcGeVector3d& q,
                                 double start, double end, const AcGeVector3d& fallbackNormal);
// Any affine image; circles stay circles where the matrix allows.
EllipticArc transformed(const EllipticArc& arc, const AcGeMatrix3d& m);

} // namespace host::ge
