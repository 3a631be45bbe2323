// AcGeMatrix2d: affine transformations of the plane, applied to column vectors.
#pragma once

#include "host/ge/point2d.h"

class AcGeLine2d;

class AcGeMatrix2d {
public:
    double entry[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    static const AcGeMatrix2d kIdentity;

    constexpr AcGeMatrix2d() = default;
    double operator()(unsigned row, unsigned column) const { return entry[row][column]; }
    double& operator()(unsigned row, unsigned column) { return entry[row][column]; }

    AcGeMatrix2d& setToIdentity() { return *this = AcGeMatrix2d(); }
    AcGeMatrix2d& setToTranslation(const AcGeVector2d& v);
    AcGeMatrix2d& setToRotation(double angle, const AcGePoint2d& center = AcGePoint2d::kOrigin);
    AcGeMatrix2d& setToScaling(double factor, const AcGePoint2d& center = AcGePoint2d::kOrigin);
    AcGeMatrix2d& setToMirroring(const AcGePoint2d& point);
    AcGeMatrix2d& setToMirroring(const AcGeLine2d& line);
    AcGeMatrix2d& setToAlignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromX,
                                     const AcGeVector2d& fromY, const AcGePoint2d& toOrigin,
                                     const AcGeVector2d& toX, const AcGeVector2d& toY);
    AcGeMatrix2d& setCoordSystem(const AcGePoint2d& origin, const AcGeVector2d& e0, const AcGeVector2d& e1);
    void getCoordSystem(AcGePoint2d& origin, AcGeVector2d& e0, AcGeVector2d& e1) const;
    AcGeMatrix2d& setTranslation(const AcGeVector2d& v);
    AcGeVector2d translation() const { return {entry[0][2], entry[1][2]}; }

    AcGeMatrix2d operator*(const AcGeMatrix2d& m) const;
    AcGeMatrix2d& operator*=(const AcGeMatrix2d& m) { return *this = *this * m; }
    AcGeMatrix2d& preMultBy(const AcGeMatrix2d& m) { return *this = m * *this; }
    AcGeMatrix2d& postMultBy(const AcGeMatrix2d& m) { return *this = *this * m; }
    AcGeMatrix2d& setToProduct(const AcGeMatrix2d& a, const AcGeMatrix2d& b) { return *this = a * b; }

    double det() const { return entry[0][0] * entry[1][1] - entry[0][1] * entry[1][0]; }
    bool isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
    // A singular matrix comes back as it is.
    AcGeMatrix2d inverse() const;
    AcGeMatrix2d& invert() { return *this = inverse(); }
    bool isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    double scale() const; // the longer column
    bool isEqualTo(const AcGeMatrix2d& m, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeMatrix2d& m) const { return isEqualTo(m); }

    static AcGeMatrix2d translation(const AcGeVector2d& v) { return AcGeMatrix2d().setToTranslation(v); }
    static AcGeMatrix2d rotation(double angle, const AcGePoint2d& center = AcGePoint2d::kOrigin) {
        return AcGeMatrix2d().setToRotation(angle, center);
    }
    static AcGeMatrix2d scaling(double factor, const AcGePoint2d& center = AcGePoint2d::kOrigin) {
        return AcGeMatrix2d().setToScaling(factor, center);
    }
    static AcGeMatrix2d mirroring(const AcGePoint2d& point) { return AcGeMatrix2d().setToMirroring(point); }
    static AcGeMatrix2d mirroring(const AcGeLine2d& line) { return AcGeMatrix2d().setToMirroring(line); }
};

inline constexpr AcGeMatrix2d AcGeMatrix2d::kIdentity{};

inline AcGeVector2d operator*(const AcGeMatrix2d& m, const AcGeVector2d& v) {
    return {m.entry[0][0] * v.x + m.entry[0][1] * v.y, m.entry[1][0] * v.x + m.entry[1][1] * v.y};
}
inline AcGePoint2d operator*(const AcGeMatrix2d& m, const AcGePoint2d& p) {
    return {m.entry[0][0] * p.x + m.entry[0][1] * p.y + m.entry[0][2],
            m.entry[1][0] * p.x + m.entry[1][1] * p.y + m.entry[1][2]};
}
