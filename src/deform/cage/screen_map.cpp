// Views and pixels.
#include "deform/cage/screen_map.h"

#include <algorithm>

#include "core/host/editor.h"
#include "core/sysvar_stack.h"

namespace corvane::deform {
namespace {

enum System : short { kWorld = 0, kUser = 1, kDisplay = 2 };

AcGePoint3d transformed(const AcGePoint3d& point, System from, System to) {
    resbuf source, target;
    source.restype = target.restype = RTSHORT;
    source.resval.rint = from, target.resval.rint = to;
    ads_point in{point.x, point.y, point.z}, out{point.x, point.y, point.z};
    acedTrans(in, &source, &target, 0, out);
    return {out[X], out[Y], out[Z]};
}

int cut(double pixels) {
    constexpr double kFarthest = 1e9;
    return int(std::clamp(pixels, -kFarthest, kFarthest));
}

} // namespace

ScreenMap::ScreenMap(const AcGeMatrix3d& toDisplay, const Window& window)
    : toDisplay_(toDisplay), window_(window),
      perUnit_(window.viewHeight > 0 ? window.height / window.viewHeight : 1) {}

// Pixels count from the view's middle, so that drawings far from the origin keep whole pixels apart.
Pixel ScreenMap::pixel(const AcGePoint3d& world) const {
    const AcGePoint3d p = display(world);
    return {cut((p.x - window_.viewCentre.x) * perUnit_ + window_.width / 2 + 0.5),
            cut(window_.height / 2 - (p.y - window_.viewCentre.y) * perUnit_ + 0.5)};
}

ScreenMap CurrentScreen() {
    const AcGePoint3d origin = DisplayPoint(AcGePoint3d::kOrigin);
    AcGeMatrix3d toDisplay;
    toDisplay.setCoordSystem(origin, DisplayPoint({1, 0, 0}) - origin, DisplayPoint({0, 1, 0}) - origin,
                             DisplayPoint({0, 0, 1}) - origin);
    ScreenMap::Window window;
    AcGePoint3d size, centre;
    if (ReadSysVar(L"SCREENSIZE", size) == RTNORM && size.y > 0)
        window.width = size.x, window.height = size.y;
    if (ReadSysVar(L"VIEWSIZE", window.viewHeight) != RTNORM) window.viewHeight = 1;
    if (ReadSysVar(L"VIEWCTR", centre) == RTNORM) window.viewCentre = transformed(centre, kUser, kDisplay);
    return {toDisplay, window};
}

ViewAxes CurrentViewAxes() {
    const AcGePoint3d origin = DisplayToWorld(AcGePoint3d::kOrigin);
    return {DisplayToWorld({1, 0, 0}) - origin, DisplayToWorld({0, 1, 0}) - origin};
}

Pixel ScreenPixel(const AcGePoint3d& world) { return CurrentScreen().pixel(world); }

AcGePoint3d DisplayPoint(const AcGePoint3d& world) { return transformed(world, kWorld, kDisplay); }
AcGePoint3d DisplayToWorld(const AcGePoint3d& display) { return transformed(display, kDisplay, kWorld); }

} // namespace corvane::deform
