// PLINE: polylines of straight segments and arcs, drawn point by point.
#include <cmath>
#include <numbers>

#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"
#include "host/ent/polyline.h"
#include "host/ge/arc.h"

namespace host {
namespace {

double angleOf(const AcGeVector3d& v) { return std::atan2(v.y, v.x); }

// The bulge of the arc that leaves `from` in a direction (radians) and ends at `to`.
double tangentBulge(const AcGePoint3d& from, double direction, const AcGePoint3d& to) {
    return std::tan(std::remainder(angleOf(to - from) - direction, 2 * std::numbers::pi) / 2);
}

class PolylineChain {
public:
    explicit PolylineChain(const AcGePoint3d& start)
        : startWidth_(drawing().headerReal("$PLINEWID", 0)), endWidth_(startWidth_) {
        points_ = {start};
    }
    void run() {
        while (arcs_ ? extendByArc() : extendByLine()) {
        }
        finish();
    }

private:
    struct Segment {
        double startWidth, endWidth, bulge;
    };
    const AcGePoint3d& tip() const { return points_.back(); }
    // The direction in which the chain arrives at its tip.
    double arriving() const {
        if (segments_.empty()) return startDirection_;
        const double chord = angleOf(tip() - points_[points_.size() - 2]);
        return chord + 2 * std::atan(segments_.back().bulge);
    }

    bool extendByLine() {
        const bool mayClose = points_.size() > 2;
        const AskedPoint next = askPoint(
            mayClose ? L"\nSpecify next point or [Arc/Close/Halfwidth/Length/Undo/Width]: "
                     : L"\nSpecify next point or [Arc/Halfwidth/Length/Undo/Width]: ",
            &tip(),
            mayClose ? L"Arc Close Halfwidth Length Undo Width _Arc Close Halfwidth Length Undo Width"
                     : L"Arc Halfwidth Length Undo Width _Arc Halfwidth Length Undo Width");
        if (next) return add(next.point, 0), true;
        if (next.status != RTKWORD) return false;
        const std::wstring choice = chosenKeyword();
        if (choice == L"Close") return closed_ = true, segments_.push_back(segment(0)), false;
        if (choice == L"Arc") return arcs_ = true;
        if (choice == L"Length") return byLength(), true;
        return common(choice), true;
    }

    bool extendByArc() {
        const wchar_t kWords[] = L"Angle CEnter CLose Direction Halfwidth Line Radius Second Undo Width "
                                 L"_Angle CEnter CLose Direction Halfwidth Line Radius Second Undo Width";
        const AskedPoint next =
            askPoint(L"\nSpecify endpoint of arc or [Angle/CEnter/CLose/Direction/Halfwidth/"
                     L"Line/Radius/Second pt/Undo/Width]: ",
                     &tip(), kWords);
        if (next) return addArc(next.point, tangentBulge(tip(), arriving(), next.point)), true;
        if (next.status != RTKWORD) return false;
        const std::wstring choice = chosenKeyword();
        if (choice == L"CLose") {
            closed_ = points_.size() > 1;
            if (closed_) segments_.push_back(segment(tangentBulge(tip(), arriving(), points_.front())));
            return false;
        }
        if (choice == L"Line") return arcs_ = false, true;
        if (choice == L"Angle") return byAngle(), true;
        if (choice == L"CEnter") return byCenter(), true;
        if (choice == L"Direction") return byDirection(), true;
        if (choice == L"Radius") return byRadius(), true;
        if (choice == L"Second") return bySecondPoint(), true;
        return common(choice), true;
    }
    // What lines and arcs offer alike.
    void common(const std::wstring& choice) {
        if (choice == L"Undo") return takeBack();
        askWidths(choice == L"Halfwidth" ? 2 : 1);
    }

    std::optional<AcGePoint3d> askEnd() {
        const AskedPoint end = askPoint(L"\nSpecify endpoint of arc: ", &tip(), nullptr, RSG_NONULL);
        return end ? std::optional(end.point) : std::nullopt;
    }
    void byLength() {
        double length = 0;
        acedInitGet(RSG_NONULL, nullptr);
        if (acedGetDist(nullptr, L"\nSpecify length of line: ", &length) != RTNORM) return;
        add(tip() + AcGeVector3d(std::cos(arriving()), std::sin(arriving()), 0) * length, 0);
    }
    void byAngle() {
        double sweep = 0;
        acedInitGet(RSG_NONULL | RSG_NOZERO, nullptr);
        if (acedGetAngle(nullptr, L"\nSpecify included angle: ", &sweep) != RTNORM) return;
        if (const auto end = askEnd()) addArc(*end, std::tan(sweep / 4));
    }
    // Counter-clockwise to the direction of the end, as far from the center as the tip is.
    void byCenter() {
        const AskedPoint center = askPoint(L"\nSpecify center point of arc: ", &tip(), nullptr, RSG_NONULL);
        const auto end = center ? askEnd() : std::nullopt;
        if (!end) return;
        const AcGeVector3d from = tip() - center.point, to = *end - center.point;
        double sweep = std::remainder(angleOf(to) - angleOf(from), 2 * std::numbers::pi);
        if (sweep <= 0) sweep += 2 * std::numbers::pi;
        if (to.length() == 0)
            return printLine(L"\nThe end lies in the center; the arc would have no radius.");
        addArc(center.point + to * (from.length() / to.length()), std::tan(sweep / 4));
    }
    void byDirection() {
        const AskedPoint towards = askPoint(L"\nSpecify the tangent direction for the start point of arc: ",
                                            &tip(), nullptr, RSG_NONULL);
        const auto end = towards ? askEnd() : std::nullopt;
        if (end) addArc(*end, tangentBulge(tip(), angleOf(towards.point - tip()), *end));
    }
    // The smaller arc, bent the way in which the chain would go on.
    void byRadius() {
        double radius = 0;
        ads_point base{tip().x, tip().y, tip().z};
        acedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG, nullptr);
        if (acedGetDist(base, L"\nSpecify radius of arc: ", &radius) != RTNORM) return;
        const auto end = askEnd();
        if (!end) return;
        const double half = (*end - tip()).length() / 2;
        if (half > radius) return printLine(L"\nThe end is farther away than the diameter.");
        const double bulge = std::tan(std::asin(half / radius) / 2);
        addArc(*end, tangentBulge(tip(), arriving(), *end) < 0 ? -bulge : bulge);
    }
    void bySecondPoint() {
        const AskedPoint second = askPoint(L"\nSpecify second point on arc: ", &tip(), nullptr, RSG_NONULL);
        const auto end = second ? askEnd() : std::nullopt;
        if (!end) return;
        const double before = angleOf(tip() - second.point), after = angleOf(*end - second.point);
        // Half the sweep is what the angle at the second point lacks to a straight line.
        const double turn = std::remainder(after - before - std::numbers::pi, 2 * std::numbers::pi);
        addArc(*end, std::tan(turn / 2));
    }

    Segment segment(double bulge) const { return {startWidth_, endWidth_, bulge}; }
    void addArc(const AcGePoint3d& point, double bulge) {
        constexpr double kWhole = 1e6; // a bulge beyond is a full turn back to where it began
        if (point == tip() || !(std::abs(bulge) < kWhole))
            return printLine(L"\nNo arc leads there; specify another point.");
        add(point, bulge);
    }
    void add(const AcGePoint3d& point, double bulge) {
        segments_.push_back(segment(bulge));
        startWidth_ = endWidth_;
        points_.push_back(point);
    }
    void askWidths(double factor) {
        const wchar_t* what = factor == 1 ? L"width" : L"half-width";
        double start = startWidth_ / factor;
        acedInitGet(RSG_NONEG, nullptr);
        if (acedGetDist(nullptr,
                        (std::wstring(L"\nSpecify starting ") + what + L" <" + shown(start) + L">: ").c_str(),
                        &start) == RTCAN)
            return;
        double end = start;
        acedInitGet(RSG_NONEG, nullptr);
        acedGetDist(nullptr,
                    (std::wstring(L"\nSpecify ending ") + what + L" <" + shown(end) + L">: ").c_str(), &end);
        startWidth_ = start * factor, endWidth_ = end * factor;
        drawing().setHeaderReal("$PLINEWID", 40, endWidth_);
    }
    void takeBack() {
        if (segments_.empty()) return printLine(L"\nAll segments are undone.");
        segments_.pop_back();
        points_.pop_back();
    }
    void finish() {
        if (points_.size() < 2) return;
        const DrawingPlane plane;
        std::vector<AcDbPolyline::Vertex> vertices;
        for (size_t i = 0; i < points_.size(); ++i) {
            const AcGePoint3d p = plane.own(points_[i]);
            const Segment s = i < segments_.size() ? segments_[i] : segment(0);
            vertices.push_back({{p.x, p.y}, s.bulge, s.startWidth, s.endWidth});
        }
        auto polyline = std::make_unique<AcDbPolyline>();
        polyline->setNormal(plane.normal);
        polyline->setElevation(plane.own(points_.front()).z);
        polyline->setVertices(std::move(vertices));
        polyline->setClosed(closed_);
        addToDrawing(std::move(polyline));
    }

    std::vector<AcGePoint3d> points_; // UCS
    std::vector<Segment> segments_;   // from each point to the next
    double startWidth_, endWidth_;
    double startDirection_ = 0; // of the first arc, where nothing leads to it
    bool closed_ = false, arcs_ = false;
};

} // namespace

void polylineCommand() {
    AskedPoint start = askPoint(L"\nSpecify start point: ");
    if (start.status == RTNONE) start = {RTNORM, pointFrame().last};
    if (!start) return;
    printLine(L"\nCurrent line-width is " + shown(drawing().headerReal("$PLINEWID", 0)));
    PolylineChain(start.point).run();
}

} // namespace host
