// Where the screen shows world points: one moment's view as plain data, and the moment's from the host.
#pragma once
#include "core/host/geometry.h"

namespace corvane::deform {

struct Pixel {
    int x = 0, y = 0; // to the right, and down
    bool operator==(const Pixel&) const = default;
};

// From the world to display coordinates (x right, y up, z to the viewer) and on to pixels.
class ScreenMap {
public:
    struct Window {
        double width = 1920, height = 1080; // pixels
        double viewHeight = 1;              // world units
        AcGePoint3d viewCentre;             // display coordinates
    };
    ScreenMap(const AcGeMatrix3d& toDisplay, const Window& window);
    // A plain view from above: world and display coordinates are the same.
    explicit ScreenMap(const Window& window) : ScreenMap(AcGeMatrix3d::kIdentity, window) {}

    AcGePoint3d display(const AcGePoint3d& world) const { return toDisplay_ * world; }
    // The display's x times pixels a unit, and half a pixel, cut to whole numbers; no farther than a
    // thousand million pixels from the middle.
    Pixel pixel(const AcGePoint3d& world) const;
    double pixelsPerUnit() const { return perUnit_; }

private:
    AcGeMatrix3d toDisplay_;
    Window window_;
    double perUnit_; // pixels
};

// The directions to the right and up as seen, in the world, of unit length.
struct ViewAxes {
    AcGeVector3d right = AcGeVector3d::kXAxis, up = AcGeVector3d::kYAxis;
    bool operator==(const ViewAxes&) const = default;
};
ViewAxes CurrentViewAxes();

// The view as the host has it now.
ScreenMap CurrentScreen();
// The pixel of one point, in the view as it is now.
Pixel ScreenPixel(const AcGePoint3d& world);

// Between the world and display coordinates.
AcGePoint3d DisplayPoint(const AcGePoint3d& world);
AcGePoint3d DisplayToWorld(const AcGePoint3d& display);

} // namespace corvane::deform
