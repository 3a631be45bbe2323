// Projection to pixels, and rays back into the drawing.
#include "apps/desk/screen_map.h"

#include <cmath>

namespace desk {

ScreenMap::ScreenMap(const host::ViewFrame& view, QSize pixels)
    : view_(view), pixels_(pixels.expandedTo({1, 1})), scale_(1), toDisplay_(view.worldToDisplay()),
      toWorld_(view.displayToWorld()) {
    if (!(view_.height > 0) || !std::isfinite(view_.height)) view_.height = 1;
    view_.aspect = double(pixels_.width()) / pixels_.height();
    scale_ = pixels_.height() / view_.height;
}

bool ScreenMap::toScreen(const AcGePoint3d& world, AcGePoint2d& out) const {
    AcGePoint3d seen;
    if (view_.perspective) {
        const auto found = view_.seen(world);
        if (!found) return false;
        seen = *found;
    } else {
        seen = toDisplay_ * world;
    }
    out.set(pixels_.width() / 2.0 + (seen.x - view_.center.x) * scale_,
            pixels_.height() / 2.0 - (seen.y - view_.center.y) * scale_);
    return std::isfinite(out.x) && std::isfinite(out.y);
}

AcGeMatrix3d ScreenMap::worldToPixels() const {
    AcGeMatrix3d shown;
    shown.entry[0][0] = scale_;
    shown.entry[1][1] = -scale_;
    shown.entry[0][3] = pixels_.width() / 2.0 - view_.center.x * scale_;
    shown.entry[1][3] = pixels_.height() / 2.0 + view_.center.y * scale_;
    return shown * toDisplay_;
}

AcGePoint2d ScreenMap::toDisplay(const QPointF& pixel) const {
    return {view_.center.x + (pixel.x() - pixels_.width() / 2.0) / scale_,
            view_.center.y - (pixel.y() - pixels_.height() / 2.0) / scale_};
}

QPointF ScreenMap::fromDisplay(const AcGePoint2d& p) const {
    return {pixels_.width() / 2.0 + (p.x - view_.center.x) * scale_,
            pixels_.height() / 2.0 - (p.y - view_.center.y) * scale_};
}

bool ScreenMap::facesPlane(const QPointF& pixel, const AcGeVector3d& normal) const {
    const AcGeVector3d sight = sightAt(pixel);
    constexpr double kEdgeOn = 1e-6;
    return std::abs(normal.dotProduct(sight)) > kEdgeOn * normal.length() * sight.length();
}

AcGeVector3d ScreenMap::sightAt(const QPointF& pixel) const {
    const AcGePoint2d at = toDisplay(pixel);
    const AcGePoint3d on = toWorld_ * AcGePoint3d(at.x, at.y, 0);
    return view_.perspective ? view_.target + view_.direction - on : view_.direction;
}

AcGePoint3d ScreenMap::toPlane(const QPointF& pixel, const AcGePoint3d& origin,
                               const AcGeVector3d& normal) const {
    const AcGePoint2d at = toDisplay(pixel);
    const AcGePoint3d on = toWorld_ * AcGePoint3d(at.x, at.y, 0);
    if (!facesPlane(pixel, normal)) return on;
    const AcGeVector3d sight = sightAt(pixel);
    return on + sight * (normal.dotProduct(origin - on) / normal.dotProduct(sight));
}

AcDbExtents2d ScreenMap::covered(const QRectF& pixels) const {
    AcDbExtents2d box;
    box.addPoint(toDisplay(pixels.topLeft()));
    box.addPoint(toDisplay(pixels.bottomRight()));
    return box;
}

AcDbExtents2d ScreenMap::covered() const { return covered(QRectF(QPointF(0, 0), QSizeF(pixels_))); }

bool ScreenMap::sameSide(const ScreenMap& other) const {
    return !view_.perspective && !other.view_.perspective && view_.direction == other.view_.direction &&
           view_.twist == other.view_.twist && view_.target == other.view_.target;
}

} // namespace desk
