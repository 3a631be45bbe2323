// ELLIPSE and SPLINE.
#include <cmath>
#include <numbers>

#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"
#include "host/ent/conics.h"
#include "host/ent/polyline2d.h"
#include "host/ent/polyline3d.h"
#include "host/ent/spline.h"

namespace host {
namespace {

// -- ELLIPSE ------------------------------------------------------------------------------------------

struct EllipseAxes {
    AcGePoint3d center; // UCS
    AcGeVector3d axis;  // half of it, UCS
    double otherHalf = 0;
};

// What is drawn and how, from the words that may stand before the first point.
struct EllipseStart {
    AcGePoint3d point; // UCS
    bool arc = false, byCenter = false;
};
std::optional<EllipseStart> askEllipseStart() {
    EllipseStart start;
    for (;;) {
        const wchar_t* prompt = start.byCenter ? L"\nSpecify center of ellipse: "
                                : start.arc    ? L"\nSpecify axis endpoint of elliptical arc or [Center]: "
                                               : L"\nSpecify axis endpoint of ellipse or [Arc/Center]: ";
        const wchar_t* words = start.byCenter ? nullptr
                               : start.arc    ? L"Center _Center"
                                              : L"Arc Center _Arc Center";
        const AskedPoint first = askPoint(prompt, nullptr, words, RSG_NONULL);
        if (first) return start.point = first.point, start;
        if (first.status != RTKWORD) return std::nullopt;
        (chosenKeyword() == L"Arc" ? start.arc : start.byCenter) = true;
    }
}

std::optional<EllipseAxes> askAxes(const EllipseStart& first) {
    const bool byCenter = first.byCenter;
    const AskedPoint second =
        askPoint(byCenter ? L"\nSpecify endpoint of axis: " : L"\nSpecify other endpoint of axis: ",
                 &first.point, nullptr, RSG_NONULL);
    if (!second) return std::nullopt;
    EllipseAxes axes{first.point, second.point - first.point};
    if (!byCenter) axes.axis = axes.axis * 0.5, axes.center = first.point + axes.axis;
    if (axes.axis.length() == 0)
        return printLine(L"\nThe two points are the same; an axis needs two."), std::nullopt;
    ads_point base{axes.center.x, axes.center.y, axes.center.z};
    acedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG, L"Rotation _Rotation");
    const int status =
        acedGetDist(base, L"\nSpecify distance to other axis or [Rotation]: ", &axes.otherHalf);
    if (status == RTKWORD) {
        // A circle of that axis, tilted round it.
        double tilt = 0;
        acedInitGet(RSG_NONULL, nullptr);
        if (acedGetAngle(base, L"\nSpecify rotation around major axis: ", &tilt) != RTNORM) return {};
        axes.otherHalf = axes.axis.length() * std::abs(std::cos(tilt));
    } else if (status != RTNORM) {
        return std::nullopt;
    }
    return axes;
}

std::unique_ptr<AcDbEllipse> ellipseOf(const EllipseAxes& axes) {
    const AcGeVector3d normal = DrawingPlane().normal;
    const AcGePoint3d center = ucsToWorld(axes.center);
    AcGeVector3d major = ucsToWorld(axes.center + axes.axis) - center;
    double ratio = axes.otherHalf / major.length();
    if (ratio > 1) {
        major = normal.crossProduct(major) * ratio;
        ratio = 1 / ratio;
    }
    constexpr double kFlattest = 1e-6;
    if (!(ratio >= kFlattest)) return nullptr;
    return std::make_unique<AcDbEllipse>(center, normal, major, ratio);
}

// Angles count from the first axis that was given.
bool askPart(AcDbEllipse& ellipse, const EllipseAxes& axes) {
    double start = 0, end = 0;
    ads_point base{axes.center.x, axes.center.y, axes.center.z};
    if (acedGetAngle(base, L"\nSpecify start angle: ", &start) != RTNORM ||
        acedGetAngle(base, L"\nSpecify end angle: ", &end) != RTNORM)
        return false;
    const double turn = axes.otherHalf > axes.axis.length() ? -std::numbers::pi / 2 : 0;
    const auto param = [&](double angle) {
        return std::atan2(std::sin(angle + turn) / ellipse.radiusRatio(), std::cos(angle + turn));
    };
    constexpr double kWhole = 2 * std::numbers::pi;
    const double from = param(start);
    double sweep = std::remainder(param(end) - from, kWhole);
    if (sweep <= 0) sweep += kWhole;
    return ellipse.setStartParam(from) == Acad::eOk && ellipse.setEndParam(from + sweep) == Acad::eOk;
}

// -- SPLINE -------------------------------------------------------------------------------------------

struct SplinePoints {
    std::vector<AcGePoint3d> points; // world
    bool closed = false;
};

std::optional<SplinePoints> askSplinePoints(const AcGePoint3d& first) {
    std::vector<AcGePoint3d> asked = {first}; // UCS
    for (;;) {
        const bool mayClose = asked.size() > 2;
        const AskedPoint next =
            askPoint(mayClose ? L"\nEnter next point or [Undo/Close]: " : L"\nEnter next point or [Undo]: ",
                     &asked.back(), mayClose ? L"Undo Close _Undo Close" : L"Undo _Undo");
        if (next.status == RTCAN) return std::nullopt;
        if (next) {
            asked.push_back(next.point);
        } else if (next.status == RTKWORD && chosenKeyword() == L"Undo") {
            if (asked.size() > 1) asked.pop_back();
        } else {
            SplinePoints result{{}, next.status == RTKWORD};
            for (const AcGePoint3d& point : asked) result.points.push_back(ucsToWorld(point));
            return result;
        }
    }
}

// A cubic over the control points, or of lower degree when there are few; clamped, or periodic.
std::unique_ptr<AcDbSpline> controlled(const SplinePoints& given) {
    std::vector<AcGePoint3d> points = given.points;
    const int degree = int(std::min<size_t>(3, points.size() - 1));
    if (given.closed)
        for (int i = 0; i < degree; ++i) points.push_back(given.points[size_t(i)]);
    AcGePoint3dArray poles;
    for (const AcGePoint3d& point : points) poles.append(point);
    AcGeDoubleArray knots;
    const int count = int(points.size()), spans = count - degree;
    for (int i = 0; i <= count + degree; ++i)
        knots.append(given.closed ? double(i - degree) : std::clamp(double(i - degree), 0.0, double(spans)));
    return std::make_unique<AcDbSpline>(degree, false, given.closed, given.closed, poles, knots,
                                        AcGeDoubleArray());
}

std::unique_ptr<AcDbSpline> fitted(const SplinePoints& given) {
    AcGePoint3dArray points;
    for (const AcGePoint3d& point : given.points) points.append(point);
    if (given.closed) points.append(given.points.front());
    return std::make_unique<AcDbSpline>(points);
}

// Splined polylines become the splines that they show.
void convertToSplines() {
    size_t refused = 0;
    for (const AcDbObjectId id : askObjects(true)) {
        AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
        AcDbSpline* spline = nullptr;
        const auto* flat = AcDb2dPolyline::cast(curve.object());
        const auto* spatial = AcDb3dPolyline::cast(curve.object());
        const bool smooth = (flat && flat->polyType() != AcDb::k2dSimplePoly) ||
                            (spatial && spatial->polyType() != AcDb::k3dSimplePoly);
        if (!smooth || curve->getSpline(spline) != Acad::eOk) {
            ++refused;
            continue;
        }
        spline->setPropertiesFrom(curve.object());
        curve.close();
        addBeside(std::unique_ptr<AcDbEntity>(spline), id);
        eraseAll({id});
    }
    if (refused > 0) printLine(L"\n" + std::to_wstring(refused) + L" are no splined polylines.");
}

} // namespace

void ellipseCommand() {
    const auto start = askEllipseStart();
    const auto axes = start ? askAxes(*start) : std::nullopt;
    auto ellipse = axes ? ellipseOf(*axes) : nullptr;
    if (axes && !ellipse) return printLine(L"\nThe second axis is too short.");
    if (!ellipse || (start->arc && !askPart(*ellipse, *axes))) return;
    addToDrawing(std::move(ellipse));
}

void splineCommand() {
    bool byControlPoints = false;
    for (;;) {
        const AskedPoint first =
            askPoint(L"\nSpecify first point or [Method/Object]: ", nullptr, L"Method Object _Method Object");
        if (first) {
            const auto points = askSplinePoints(first.point);
            if (points && points->points.size() > 1)
                addToDrawing(byControlPoints ? controlled(*points) : fitted(*points));
            return;
        }
        if (first.status != RTKWORD) return;
        if (chosenKeyword() == L"Object") return convertToSplines();
        acedInitGet(0, L"Fit CV _Fit CV");
        std::wstring method;
        if (acedGetKword(L"\nEnter spline creation method [Fit/CV] <Fit>: ", method) == RTCAN) return;
        byControlPoints = method == L"CV";
    }
}

} // namespace host
