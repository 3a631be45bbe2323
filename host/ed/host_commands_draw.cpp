// LINE, CIRCLE, ARC, POINT and TEXT: new objects from points. PLINE has a file of its own.
#include <array>
#include <cmath>
#include <numbers>

#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"
#include "host/ent/conics.h"
#include "host/ent/line.h"
#include "host/ent/text.h"
#include "host/ge/arc.h"

namespace host {
namespace {

void erase(AcDbObjectId id) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (entity) entity->erase();
}

// -- LINE ---------------------------------------------------------------------------------------------

class LineChain {
public:
    explicit LineChain(const AcGePoint3d& start) : points_{start} {}
    // False when the chain has ended.
    bool extend() {
        const bool mayClose = points_.size() > 2;
        const AskedPoint next = askPoint(
            mayClose ? L"\nSpecify next point or [Close/Undo]: " : L"\nSpecify next point or [Undo]: ",
            &points_.back(), mayClose ? L"Close Undo _Close Undo" : L"Undo _Undo");
        if (next) return add(next.point), true;
        if (next.status != RTKWORD) return false;
        if (chosenKeyword() == L"Close") return add(points_.front()), false;
        takeBack();
        return true;
    }

private:
    void add(const AcGePoint3d& point) {
        auto line = std::make_unique<AcDbLine>(ucsToWorld(points_.back()), ucsToWorld(point));
        line->setNormal(DrawingPlane().normal);
        lines_.push_back(addToDrawing(std::move(line)));
        points_.push_back(point);
    }
    void takeBack() {
        if (lines_.empty()) return printLine(L"\nAll segments are undone.");
        erase(lines_.back());
        lines_.pop_back();
        points_.pop_back();
    }
    std::vector<AcGePoint3d> points_; // UCS
    std::vector<AcDbObjectId> lines_;
};

// -- CIRCLE and ARC -----------------------------------------------------------------------------------

void addCircle(const AcGePoint3d& center, double radius) {
    addToDrawing(std::make_unique<AcDbCircle>(ucsToWorld(center), DrawingPlane().normal, radius));
}

// The circle through UCS points, as an arc from the first to the last in the plane's own coordinates.
std::optional<AcGeCircArc2d> circleThrough(const DrawingPlane& plane,
                                           const std::array<AcGePoint3d, 3>& points) {
    const auto flat = [&](const AcGePoint3d& point) {
        const AcGePoint3d p = plane.own(point);
        return AcGePoint2d(p.x, p.y);
    };
    AcGeCircArc2d arc;
    AcGeError error{};
    arc.set(flat(points[0]), flat(points[1]), flat(points[2]), error);
    if (error == AcGe::kOk) return arc;
    return printLine(L"\nThe points lie on a line; no arc goes through them."), std::nullopt;
}

void circleByThree() {
    std::array<AcGePoint3d, 3> points;
    const wchar_t* prompts[] = {L"\nSpecify first point on circle: ", L"\nSpecify second point on circle: ",
                                L"\nSpecify third point on circle: "};
    for (size_t i = 0; i < points.size(); ++i) {
        const AskedPoint asked = askPoint(prompts[i], nullptr, nullptr, RSG_NONULL);
        if (!asked) return;
        points[i] = asked.point;
    }
    const DrawingPlane plane;
    const auto arc = circleThrough(plane, points);
    if (!arc) return;
    const AcGePoint3d center(arc->center().x, arc->center().y, plane.own(points[0]).z);
    addToDrawing(std::make_unique<AcDbCircle>(AcGeMatrix3d::planeToWorld(plane.normal) * center, plane.normal,
                                              arc->radius()));
}

void circleByTwo() {
    const AskedPoint first =
        askPoint(L"\nSpecify first end point of circle's diameter: ", nullptr, nullptr, RSG_NONULL);
    if (!first) return;
    const AskedPoint second =
        askPoint(L"\nSpecify second end point of circle's diameter: ", &first.point, nullptr, RSG_NONULL);
    if (!second) return;
    const AcGeVector3d half = (second.point - first.point) / 2;
    if (half.length() == 0) return printLine(L"\nThe two points are the same; a diameter needs two.");
    addCircle(first.point + half, half.length());
}

// Counter-clockwise from the start to the direction of the end.
void arcByCenter() {
    const AskedPoint center = askPoint(L"\nSpecify center point of arc: ", nullptr, nullptr, RSG_NONULL);
    if (!center) return;
    const AskedPoint start = askPoint(L"\nSpecify start point of arc: ", &center.point, nullptr, RSG_NONULL);
    if (!start) return;
    const AskedPoint end =
        askPoint(L"\nSpecify end point of arc or [Angle]: ", &center.point, L"Angle _Angle", RSG_NONULL);
    const AcGeVector3d radius = start.point - center.point;
    if (radius.length() == 0)
        return printLine(L"\nThe start lies in the center; the arc would have no radius.");
    const double from = std::atan2(radius.y, radius.x);
    double to = std::atan2(end.point.y - center.point.y, end.point.x - center.point.x);
    if (end.status == RTKWORD) {
        double sweep = 0;
        ads_point base{center.point.x, center.point.y, center.point.z};
        acedInitGet(RSG_NONULL | RSG_NOZERO, nullptr);
        if (acedGetAngle(base, L"\nSpecify included angle: ", &sweep) != RTNORM) return;
        to = from + sweep;
    } else if (!end) {
        return;
    }
    const DrawingPlane plane;
    addToDrawing(std::make_unique<AcDbArc>(ucsToWorld(center.point), plane.normal, radius.length(),
                                           plane.ownAngle(from), plane.ownAngle(to)));
}

} // namespace

void lineCommand() {
    AskedPoint start = askPoint(L"\nSpecify first point: ");
    if (start.status == RTNONE) start = {RTNORM, pointFrame().last};
    if (!start) return;
    LineChain chain(start.point);
    while (chain.extend()) {
    }
}

void circleCommand() {
    const AskedPoint center =
        askPoint(L"\nSpecify center point for circle or [3P/2P]: ", nullptr, L"3P 2P _3P 2P", RSG_NONULL);
    if (center.status == RTKWORD) return chosenKeyword() == L"3P" ? circleByThree() : circleByTwo();
    if (!center) return;
    ads_point base{center.point.x, center.point.y, center.point.z};
    double radius = 0;
    acedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG, L"Diameter _Diameter");
    int status = acedGetDist(base, L"\nSpecify radius of circle or [Diameter]: ", &radius);
    if (status == RTKWORD) {
        acedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG, nullptr);
        status = acedGetDist(base, L"\nSpecify diameter of circle: ", &radius);
        radius /= 2;
    }
    if (status == RTNORM) addCircle(center.point, radius);
}

void arcCommand() {
    const AskedPoint start =
        askPoint(L"\nSpecify start point of arc or [Center]: ", nullptr, L"Center _Center", RSG_NONULL);
    if (start.status == RTKWORD) return arcByCenter();
    if (!start) return;
    const AskedPoint second = askPoint(L"\nSpecify second point of arc: ", &start.point, nullptr, RSG_NONULL);
    if (!second) return;
    const AskedPoint end = askPoint(L"\nSpecify end point of arc: ", &second.point, nullptr, RSG_NONULL);
    if (!end) return;
    const DrawingPlane plane;
    const auto arc = circleThrough(plane, {start.point, second.point, end.point});
    if (!arc) return;
    const AcGePoint2d first = arc->isClockWise() ? arc->endPoint() : arc->startPoint();
    const AcGePoint2d last = arc->isClockWise() ? arc->startPoint() : arc->endPoint();
    const auto angleOf = [&](const AcGePoint2d& p) {
        return std::atan2(p.y - arc->center().y, p.x - arc->center().x);
    };
    const AcGePoint3d center(arc->center().x, arc->center().y, plane.own(start.point).z);
    addToDrawing(std::make_unique<AcDbArc>(AcGeMatrix3d::planeToWorld(plane.normal) * center, plane.normal,
                                           arc->radius(), angleOf(first), angleOf(last)));
}

void pointCommand() {
    const AskedPoint at = askPoint(L"\nSpecify a point: ", nullptr, nullptr, RSG_NONULL);
    if (!at) return;
    auto point = std::make_unique<AcDbPoint>(ucsToWorld(at.point));
    point->setNormal(DrawingPlane().normal);
    addToDrawing(std::move(point));
}

void textCommand() {
    const AskedPoint start = askPoint(L"\nSpecify start point of text: ", nullptr, nullptr, RSG_NONULL);
    if (!start) return;
    ads_point base{start.point.x, start.point.y, start.point.z};
    AcDbObjectPointer<AcDbTextStyleTableRecord> style(drawing().textstyle(), AcDb::kForRead);
    double height = style && style->textSize() > 0 ? style->textSize() : drawing().textsize();
    if (!style || style->textSize() == 0) {
        acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
        if (acedGetDist(base, (L"\nSpecify height <" + shown(height) + L">: ").c_str(), &height) == RTCAN)
            return;
        drawing().setHeaderReal("$TEXTSIZE", 40, height);
    }
    double angle = 0;
    if (acedGetOrient(base, L"\nSpecify rotation angle of text <0>: ", &angle) == RTCAN) return;
    std::wstring words;
    if (acedGetString(1, L"\nEnter text: ", words) != RTNORM || words.empty()) return;
    const DrawingPlane plane;
    auto text = std::make_unique<AcDbText>(ucsToWorld(start.point), words.c_str(), drawing().textstyle(),
                                           height, plane.ownAngle(angle));
    text->setNormal(plane.normal);
    if (style) text->setWidthFactor(style->xScale()), text->setOblique(style->obliquingAngle());
    addToDrawing(std::move(text));
}

} // namespace host
