// One view of a drawing as plain data, and the coordinate systems that hang on it: world, user,
// display, paper and object coordinates.
#pragma once

#include <optional>

#include "host/ge/matrix3d.h"

namespace host {

// Parallel or perspective projection. Display coordinates have their origin at the target, x to the
// right, y up and z towards the viewer; without twist their x axis follows the arbitrary axis rule.
struct ViewFrame {
    AcGePoint3d target{};
    AcGeVector3d direction =
        AcGeVector3d::kZAxis; // from the target to the eye; its length is the eye's distance
    double twist = 0;         // radians; turns the picture clockwise
    AcGePoint2d center{};     // middle of the picture, display coordinates
    double height = 1;        // of the picture, at the target
    double aspect = 1;        // width by height
    bool perspective = false;

    AcGeMatrix3d displayToWorld() const;
    AcGeMatrix3d worldToDisplay() const;
    double width() const { return height * aspect; }

    // A world point as it is seen: display coordinates, brought to the target's plane in perspective (z is
    // kept). Nothing for points at or behind the eye.
    std::optional<AcGePoint3d> seen(const AcGePoint3d& world) const;

    // The same view so that the box of display coordinates fits, with `margin` as a part of its size on
    // each side. A box of no size gets one.
    void fit(const AcGePoint2d& low, const AcGePoint2d& high, double margin);
};

// The axes drawing is done in.
struct UserFrame {
    AcGePoint3d origin;
    AcGeVector3d xAxis = AcGeVector3d::kXAxis, yAxis = AcGeVector3d::kYAxis;
};

// A sheet's opening on the model: its middle and height on the sheet.
struct PaperWindow {
    AcGePoint2d center;
    double height = 1;
};

// What the conversions need to know of the moment.
struct Surroundings {
    UserFrame user;
    ViewFrame view;
    std::optional<PaperWindow> paper;
};

// A coordinate system by the host's codes, or an entity's own, by its normal.
struct CoordinateSystem {
    enum class Kind { world = 0, user = 1, display = 2, paper = 3, object } kind = Kind::world;
    AcGeVector3d normal = AcGeVector3d::kZAxis; // for object coordinates
};

// A point, or with `isVector` a displacement, from one system to the other. Paper coordinates go from
// and to display coordinates alone, and need a paper window; otherwise, and for axes that span no plane,
// for code or numbers that make no sense, nothing comes back.
std::optional<AcGePoint3d> converted(const AcGePoint3d& point, const CoordinateSystem& from,
                                     const CoordinateSystem& to, bool isVector,
                                     const Surroundings& surroundings);

} // namespace host
