// AcGeMatrix3d: transformations of space, applied to column vectors; the last row is (0 0 0 1) but for
// perspective projections, whose points are divided by w.
#pragma once

#include "host/ge/matrix2d.h"
#include "host/ge/point3d.h"
#include "host/ge/scale3d.h"

class AcGePlane;
class AcGeLine3d;

class AcGeMatrix3d {
public:
    double entry[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    static const AcGeMatrix3d kIdentity;

    constexpr AcGeMatrix3d() = default;
    double operator()(unsigned row, unsigned column) const { return entry[row][column]; }
    double& operator()(unsigned row, unsigned column) { return entry[row][column]; }

    AcGeMatrix3d& setToIdentity() { return *this = AcGeMatrix3d(); }
    AcGeMatrix3d& setToTranslation(const AcGeVector3d& v);
    // Counter-clockwise about the axis; an axis of no length gives the identity.
    AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis,
                                const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToScaling(double factor, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToScaling(const AcGeScale3d& factors, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToMirroring(const AcGePlane& plane);
    AcGeMatrix3d& setToMirroring(const AcGePoint3d& point);
    AcGeMatrix3d& setToMirroring(const AcGeLine3d& line);
    // Along direction onto the plane; a direction parallel to the plane gives the identity.
    AcGeMatrix3d& setToProjection(const AcGePlane& plane, const AcGeVector3d& direction);
    // Takes the first coordinate system onto the second; the from axes need be independent, not orthogonal.
    AcGeMatrix3d& setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                     const AcGeVector3d& fromY, const AcGeVector3d& fromZ,
                                     const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                     const AcGeVector3d& toY, const AcGeVector3d& toZ);
    // The forms with a normal follow the DXF arbitrary axis rule and keep the world's origin (object
    // coordinates); the forms with a plane use its own origin and axes.
    AcGeMatrix3d& setToPlaneToWorld(const AcGeVector3d& normal);
    AcGeMatrix3d& setToPlaneToWorld(const AcGePlane& plane);
    AcGeMatrix3d& setToWorldToPlane(const AcGeVector3d& normal);
    AcGeMatrix3d& setToWorldToPlane(const AcGePlane& plane);
    AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                 const AcGeVector3d& yAxis, const AcGeVector3d& zAxis);
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                        AcGeVector3d& zAxis) const;
    AcGeMatrix3d& setTranslation(const AcGeVector3d& v);
    AcGeVector3d translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }

    AcGeMatrix3d operator*(const AcGeMatrix3d& m) const;
    AcGeMatrix3d& operator*=(const AcGeMatrix3d& m) { return *this = *this * m; }
    AcGeMatrix3d& preMultBy(const AcGeMatrix3d& m) { return *this = m * *this; }
    AcGeMatrix3d& postMultBy(const AcGeMatrix3d& m) { return *this = *this * m; }
    AcGeMatrix3d& setToProduct(const AcGeMatrix3d& a, const AcGeMatrix3d& b) { return *this = a * b; }

    double det() const; // of the upper left 3 x 3
    // The axes' images are dependent, judged relative to their lengths.
    bool isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
    // A singular matrix comes back as it is.
    AcGeMatrix3d inverse(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeMatrix3d& invert() { return *this = inverse(); }
    AcGeMatrix3d transpose() const;
    AcGeMatrix3d& transposeIt() { return *this = transpose(); }
    // Axes stay perpendicular; the first asks for one scale factor, too. Tolerances are relative to the
    // scale.
    bool isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    bool isScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    bool isPerspective(const AcGeTol& tol = AcGeContext::gTol) const;
    double scale() const; // the longest of the axes' images
    double norm() const;  // Frobenius, of the upper left 3 x 3
    bool isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeMatrix3d& m) const { return isEqualTo(m); }
    // For object coordinates: the plane's part of this transformation as seen by an entity with this normal
    // and elevation, both of which become their images.
    AcGeMatrix2d convertToLocal(AcGeVector3d& normal, double& elevation) const;

    static AcGeMatrix3d translation(const AcGeVector3d& v) { return AcGeMatrix3d().setToTranslation(v); }
    static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                                 const AcGePoint3d& center = AcGePoint3d::kOrigin) {
        return AcGeMatrix3d().setToRotation(angle, axis, center);
    }
    static AcGeMatrix3d scaling(double factor, const AcGePoint3d& center = AcGePoint3d::kOrigin) {
        return AcGeMatrix3d().setToScaling(factor, center);
    }
    static AcGeMatrix3d scaling(const AcGeScale3d& factors,
                                const AcGePoint3d& center = AcGePoint3d::kOrigin) {
        return AcGeMatrix3d().setToScaling(factors, center);
    }
    static AcGeMatrix3d mirroring(const AcGePlane& plane) { return AcGeMatrix3d().setToMirroring(plane); }
    static AcGeMatrix3d mirroring(const AcGePoint3d& point) { return AcGeMatrix3d().setToMirroring(point); }
    static AcGeMatrix3d mirroring(const AcGeLine3d& line) { return AcGeMatrix3d().setToMirroring(line); }
    static AcGeMatrix3d projection(const AcGePlane& plane, const AcGeVector3d& direction) {
        return AcGeMatrix3d().setToProjection(plane, direction);
    }
    static AcGeMatrix3d alignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                      const AcGeVector3d& fromY, const AcGeVector3d& fromZ,
                                      const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                      const AcGeVector3d& toY, const AcGeVector3d& toZ) {
        return AcGeMatrix3d().setToAlignCoordSys(fromOrigin, fromX, fromY, fromZ, toOrigin, toX, toY, toZ);
    }
    static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal) {
        return AcGeMatrix3d().setToPlaneToWorld(normal);
    }
    static AcGeMatrix3d planeToWorld(const AcGePlane& plane) {
        return AcGeMatrix3d().setToPlaneToWorld(plane);
    }
    static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal) {
        return AcGeMatrix3d().setToWorldToPlane(normal);
    }
    static AcGeMatrix3d worldToPlane(const AcGePlane& plane) {
        return AcGeMatrix3d().setToWorldToPlane(plane);
    }
};

inline constexpr AcGeMatrix3d AcGeMatrix3d::kIdentity{};

inline AcGeVector3d operator*(const AcGeMatrix3d& m, const AcGeVector3d& v) {
    const auto& e = m.entry;
    return {e[0][0] * v.x + e[0][1] * v.y + e[0][2] * v.z, e[1][0] * v.x + e[1][1] * v.y + e[1][2] * v.z,
            e[2][0] * v.x + e[2][1] * v.y + e[2][2] * v.z};
}
inline AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p) {
    const auto& e = m.entry;
    const AcGePoint3d q(e[0][0] * p.x + e[0][1] * p.y + e[0][2] * p.z + e[0][3],
                        e[1][0] * p.x + e[1][1] * p.y + e[1][2] * p.z + e[1][3],
                        e[2][0] * p.x + e[2][1] * p.y + e[2][2] * p.z + e[2][3]);
    const double w = e[3][0] * p.x + e[3][1] * p.y + e[3][2] * p.z + e[3][3];
    return w == 1 ? q : q / w;
}
