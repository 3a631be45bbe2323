// From the drawing to the pixels of the canvas and back, for one view.
#pragma once
#include <QPointF>
#include <QRectF>
#include <QSize>

#include "host/ge/extents.h"
#include "host/view/view_frame.h"

namespace desk {

class ScreenMap {
public:
    ScreenMap() = default;
    // The view's height fills the canvas's height; its width follows from the canvas.
    ScreenMap(const host::ViewFrame& view, QSize pixels);

    const host::ViewFrame& view() const { return view_; }
    QSize pixels() const { return pixels_; }
    double pixelsPerUnit() const { return scale_; }

    // False for points behind the eye, and for places that are no numbers.
    bool toScreen(const AcGePoint3d& world, AcGePoint2d& out) const;
    AcGeMatrix3d worldToPixels() const; // the same for parallel projections; z is the height above the target
    AcGePoint2d toDisplay(const QPointF& pixel) const; // display coordinates of the view
    QPointF fromDisplay(const AcGePoint2d& display) const;
    // The point of the plane that is seen at the pixel; of the view's own plane when that one is seen edge
    // on.
    AcGePoint3d toPlane(const QPointF& pixel, const AcGePoint3d& origin, const AcGeVector3d& normal) const;
    // False where a plane with that normal is seen edge on.
    bool facesPlane(const QPointF& pixel, const AcGeVector3d& normal) const;
    // What the rectangle of pixels covers, in display coordinates.
    AcDbExtents2d covered(const QRectF& pixels) const;
    AcDbExtents2d covered() const;
    // Both show the drawing from the same side, so that one's picture can be moved and scaled into the
    // other's.
    bool sameSide(const ScreenMap& other) const;

private:
    AcGeVector3d sightAt(const QPointF& pixel) const; // towards the eye
    host::ViewFrame view_;
    QSize pixels_{1, 1};
    double scale_ = 1;
    AcGeMatrix3d toDisplay_, toWorld_;
};

} // namespace desk
