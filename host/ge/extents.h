// AcDbExtents and AcDbExtents2d: boxes along the axes. A fresh box is inside out (+1e20 to -1e20) and takes
// the place of the first thing that is added to it.
#pragma once

#include <algorithm>

#include "host/ge/matrix3d.h"

class AcDbExtents {
public:
    constexpr AcDbExtents() = default;
    constexpr AcDbExtents(const AcGePoint3d& low, const AcGePoint3d& high) : min_(low), max_(high) {}

    constexpr AcGePoint3d minPoint() const { return min_; }
    constexpr AcGePoint3d maxPoint() const { return max_; }
    void set(const AcGePoint3d& low, const AcGePoint3d& high) { *this = AcDbExtents(low, high); }
    // Something has been added; a fresh or inside out box is not valid.
    constexpr bool isValid() const { return min_.x <= max_.x && min_.y <= max_.y && min_.z <= max_.z; }

    void addPoint(const AcGePoint3d& p) {
        min_.set(std::min(min_.x, p.x), std::min(min_.y, p.y), std::min(min_.z, p.z));
        max_.set(std::max(max_.x, p.x), std::max(max_.y, p.y), std::max(max_.z, p.z));
    }
    void addExt(const AcDbExtents& other) {
        if (!other.isValid()) return;
        addPoint(other.min_);
        addPoint(other.max_);
    }
    // Grows by the copy of itself that is moved by v.
    void expandBy(const AcGeVector3d& v) {
        if (isValid()) addExt(AcDbExtents(min_ + v, max_ + v));
    }
    void translateBy(const AcGeVector3d& v) {
        if (isValid()) set(min_ + v, max_ + v);
    }
    // Becomes the box of its eight transformed corners.
    void transformBy(const AcGeMatrix3d& m) {
        if (!isValid()) return;
        AcDbExtents image;
        for (unsigned corner = 0; corner < 8; ++corner)
            image.addPoint(m * AcGePoint3d(corner & 1 ? max_.x : min_.x, corner & 2 ? max_.y : min_.y,
                                           corner & 4 ? max_.z : min_.z));
        *this = image;
    }

private:
    AcGePoint3d min_{1e20, 1e20, 1e20}, max_{-1e20, -1e20, -1e20};
};

class AcDbExtents2d {
public:
    constexpr AcDbExtents2d() = default;
    constexpr AcDbExtents2d(const AcGePoint2d& low, const AcGePoint2d& high) : min_(low), max_(high) {}

    constexpr AcGePoint2d minPoint() const { return min_; }
    constexpr AcGePoint2d maxPoint() const { return max_; }
    void set(const AcGePoint2d& low, const AcGePoint2d& high) { *this = AcDbExtents2d(low, high); }
    constexpr bool isValid() const { return min_.x <= max_.x && min_.y <= max_.y; }

    void addPoint(const AcGePoint2d& p) {
        min_.set(std::min(min_.x, p.x), std::min(min_.y, p.y));
        max_.set(std::max(max_.x, p.x), std::max(max_.y, p.y));
    }
    void addExt(const AcDbExtents2d& other) {
        if (!other.isValid()) return;
        addPoint(other.min_);
        addPoint(other.max_);
    }
    void expandBy(const AcGeVector2d& v) {
        if (isValid()) addExt(AcDbExtents2d(min_ + v, max_ + v));
    }
    void translateBy(const AcGeVector2d& v) {
        if (isValid()) set(min_ + v, max_ + v);
    }
    void transformBy(const AcGeMatrix2d& m) {
        if (!isValid()) return;
        AcDbExtents2d image;
        for (unsigned corner = 0; corner < 4; ++corner)
            image.addPoint(m * AcGePoint2d(corner & 1 ? max_.x : min_.x, corner & 2 ? max_.y : min_.y));
        *this = image;
    }

private:
    AcGePoint2d min_{1e20, 1e20}, max_{-1e20, -1e20};
};
