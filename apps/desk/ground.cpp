// Round distances, and three arrows.
#include "apps/desk/ground.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"

namespace desk {
namespace {

constexpr double kClosest = 14; // pixels between lines of the grid
constexpr int kStrong = 5;      // each so many lines one is stronger
constexpr double kMostLines = 600;
constexpr double kCorner = 44, kArm = 32; // pixels: the axes' place, and their length
const QColor kAxisX(0xD8, 0x4A, 0x4A), kAxisY(0x4C, 0xB0, 0x50), kAxisZ(0x48, 0x88, 0xE0);

// The user's axes, unit length; false when they span no plane.
struct Axes {
    AcGePoint3d origin;
    AcGeVector3d x, y, z;
};
std::optional<Axes> userAxes() {
    const host::UserFrame user = host::surroundings().user;
    const AcGeVector3d z = user.xAxis.crossProduct(user.yAxis);
    if (z.isZeroLength()) return std::nullopt;
    const AcGeVector3d x = user.xAxis.normal(), up = z.normal();
    return Axes{user.origin, x, up.crossProduct(x), up};
}

// 1, 2 or 5 times a power of ten, and no less.
double roundUp(double least) {
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double times : {1.0, 2.0, 5.0})
        if (power * times >= least) return power * times;
    return power * 10;
}

QPointF seen(const ScreenMap& map, const AcGePoint3d& world) {
    AcGePoint2d p;
    return map.toScreen(world, p) ? QPointF(p.x, p.y) : QPointF();
}

} // namespace

bool gridShows() { return host::systemVariableText(*host::findSystemVariable(L"GRIDMODE")) == L"1"; }

void paintGrid(QImage& picture, const ScreenMap& map, bool dark) {
    const std::optional<Axes> axes = userAxes();
    if (!axes || map.view().perspective) return;
    const AcGeVector3d sight = map.view().direction.normal();
    const double step =
        roundUp(kClosest / map.pixelsPerUnit() / std::max(0.05, std::abs(axes->z.dotProduct(sight))));
    AcDbExtents2d box; // of the picture on the plane
    const double wide = map.pixels().width(), high = map.pixels().height();
    for (const QPointF corner : {QPointF(0, 0), QPointF(wide, 0), QPointF(0, high), QPointF(wide, high)}) {
        const AcGeVector3d from = map.toPlane(corner, axes->origin, axes->z) - axes->origin;
        box.addPoint({from.dotProduct(axes->x), from.dotProduct(axes->y)});
    }
    const AcGePoint2d low = box.minPoint(), up = box.maxPoint();
    if (!((up.x - low.x) / step < kMostLines && (up.y - low.y) / step < kMostLines)) return;
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto at = [&](double x, double y) { return seen(map, axes->origin + axes->x * x + axes->y * y); };
    const auto line = [&](double number, const QPointF& from, const QPointF& to) {
        const int alpha = std::fmod(number, kStrong) == 0 ? 44 : 20;
        painter.setPen(QPen(dark ? QColor(255, 255, 255, alpha) : QColor(0, 0, 0, alpha), 1));
        painter.drawLine(from, to);
    };
    for (double n = std::ceil(low.x / step); n * step <= up.x; ++n)
        line(n, at(n * step, low.y), at(n * step, up.y));
    for (double n = std::ceil(low.y / step); n * step <= up.y; ++n)
        line(n, at(low.x, n * step), at(up.x, n * step));
}

void paintAxes(QPainter& painter, const ScreenMap& map, bool dark) {
    const std::optional<Axes> axes = userAxes();
    if (!axes) return;
    const AcGeMatrix3d toDisplay = map.view().worldToDisplay();
    const QPointF corner(kCorner, map.pixels().height() - kCorner);
    painter.setRenderHint(QPainter::Antialiasing);
    struct Arm {
        AcGeVector3d axis;
        const char* name;
        QColor color;
    };
    for (const Arm& arm : {Arm{axes->z, "Z", kAxisZ}, Arm{axes->x, "X", kAxisX}, Arm{axes->y, "Y", kAxisY}}) {
        const AcGeVector3d shown = toDisplay * arm.axis;
        const QPointF along(shown.x, -shown.y);
        constexpr double kShort = 0.08; // arms that point at the eye
        if (std::hypot(along.x(), along.y()) < kShort) continue;
        painter.setPen(QPen(dark ? arm.color : arm.color.darker(130), 2, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(corner, corner + along * kArm);
        const QPointF name = corner + along * (kArm + 8);
        painter.drawText(QRectF(name - QPointF(8, 8), QSizeF(16, 16)), Qt::AlignCenter, arm.name);
    }
}

} // namespace desk
