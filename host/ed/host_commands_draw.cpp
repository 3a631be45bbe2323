// LINE, PLINE, CIRCLE, ARC, POINT and TEXT: new objects from points.
#include <cmath>
#include <numbers>

#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"
#include "host/ent/conics.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
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

// -- PLINE --------------------------------------------------------------------------------------------

class PolylineChain {
public:
    explicit PolylineChain(const AcGePoint3d& start)
        : startWidth_(drawing().headerReal("$PLINEWID", 0)), endWidth_(startWidth_) {
        points_ = {start};
    }
    void run() {
        while (extend()) {
        }
        finish();
    }

private:
    bool extend() {
        const bool mayClose = points_.size() > 2;
        const AskedPoint next = askPoint(
            mayClose ? L"\nSpecify next point or [Close/Undo/Width]: "
                     : L"\nSpecify next point or [Undo/Width]: ",
            &points_.back(), mayClose ? L"Close Undo Width _Close Undo Width" : L"Undo Width _Undo Width");
        if (next) {
            widths_.push_back({startWidth_, endWidth_});
            startWidth_ = endWidth_;
            points_.push_back(next.point);
            return true;
        }
        if (next.status != RTKWORD) return false;
        const std::wstring choice = chosenKeyword();
        if (choice == L"Width") return askWidths(), true;
        if (choice == L"Undo") return takeBack(), true;
        closed_ = true;
        return false;
    }
    void askWidths() {
        acedInitGet(RSG_NONEG, nullptr);
        if (acedGetDist(nullptr, (L"\nSpecify starting width <" + shown(startWidth_) + L">: ").c_str(),
                        &startWidth_) == RTCAN)
            return;
        endWidth_ = startWidth_;
        acedInitGet(RSG_NONEG, nullptr);
        acedGetDist(nullptr, (L"\nSpecify ending width <" + shown(endWidth_) + L">: ").c_str(), &endWidth_);
        drawing().setHeaderReal("$PLINEWID", 40, endWidth_);
    }
    void takeBack() {
        if (widths_.empty()) return printLine(L"\nAll segments are undone.");
        widths_.pop_back();
        points_.pop_back();
    }
    void finish() {
        if (points_.size() < 2) return;
        const DrawingPlane plane;
        std::vector<AcDbPolyline::Vertex> vertices;
        for (size_t i = 0; i < points_.size(); ++i) {
            const AcGePoint3d p = plane.own(points_[i]);
            const Widths width = i < widths_.size() ? widths_[i] : Widths{startWidth_, endWidth_};
            vertices.push_back({{p.x, p.y}, 0, width.start, width.end});
        }
        auto polyline = std::make_unique<AcDbPolyline>();
        polyline->setNormal(plane.normal);
        polyline->setElevation(plane.own(points_.front()).z);
        polyline->setVertices(std::move(vertices));
        polyline->setClosed(closed_);
        addToDrawing(std::move(polyline));
    }

    struct Widths {
        double start, end;
    };
    std::vector<AcGePoint3d> points_; // UCS
    std::vector<Widths> widths_;      // of the segments so far
    double startWidth_, endWidth_;
    bool closed_ = false;
};

} // namespace

void lineCommand() {
    AskedPoint start = askPoint(L"\nSpecify first point: ");
    if (start.status == RTNONE) start = {RTNORM, pointFrame().last};
    if (!start) return;
    LineChain chain(start.point);
    while (chain.extend()) {
    }
}

void polylineCommand() {
    AskedPoint start = askPoint(L"\nSpecify start point: ");
    if (start.status == RTNONE) start = {RTNORM, pointFrame().last};
    if (!start) return;
    printLine(L"\nCurrent line-width is " + shown(drawing().headerReal("$PLINEWID", 0)));
    PolylineChain(start.point).run();
}

void circleCommand() {
    const AskedPoint center = askPoint(L"\nSpecify center point for circle: ", nullptr, nullptr, RSG_NONULL);
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
    if (status != RTNORM) return;
    addToDrawing(std::make_unique<AcDbCircle>(ucsToWorld(center.point), DrawingPlane().normal, radius));
}

void arcCommand() {
    const AskedPoint start = askPoint(L"\nSpecify start point of arc: ", nullptr, nullptr, RSG_NONULL);
    if (!start) return;
    const AskedPoint second = askPoint(L"\nSpecify second point of arc: ", &start.point, nullptr, RSG_NONULL);
    if (!second) return;
    const AskedPoint end = askPoint(L"\nSpecify end point of arc: ", &second.point, nullptr, RSG_NONULL);
    if (!end) return;
    const DrawingPlane plane;
    const auto flat = [&](const AskedPoint& asked) {
        const AcGePoint3d p = plane.own(asked.point);
        return AcGePoint2d(p.x, p.y);
    };
    AcGeCircArc2d arc;
    AcGeError error{};
    arc.set(flat(start), flat(second), flat(end), error);
    if (error != AcGe::kOk) return printLine(L"\nThe points lie on a line; no arc goes through them.");
    const AcGePoint2d first = arc.isClockWise() ? arc.endPoint() : arc.startPoint();
    const AcGePoint2d last = arc.isClockWise() ? arc.startPoint() : arc.endPoint();
    const auto angleOf = [&](const AcGePoint2d& p) {
        return std::atan2(p.y - arc.center().y, p.x - arc.center().x);
    };
    const AcGePoint3d center(arc.center().x, arc.center().y, plane.own(start.point).z);
    addToDrawing(std::make_unique<AcDbArc>(AcGeMatrix3d::planeToWorld(plane.normal) * center, plane.normal,
                                           arc.radius(), angleOf(first), angleOf(last)));
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
