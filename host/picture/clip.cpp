// Clipping against an upright box.
#include "host/picture/clip.h"

#include <algorithm>

#include "host/picture/page.h"

namespace host {
namespace {

bool allInside(const std::vector<AcGePoint2d>& points, const ClipBox& box) {
    return std::all_of(points.begin(), points.end(), [&](const AcGePoint2d& p) { return box.holds(p); });
}

bool allBeyondOneSide(const std::vector<AcGePoint2d>& points, const ClipBox& box) {
    AcDbExtents2d around;
    for (const AcGePoint2d& p : points) around.addPoint(p);
    return !box.meets(around);
}

void appendWhole(const std::vector<AcGePoint2d>& from, std::vector<AcGePoint2d>& points,
                 std::vector<std::uint32_t>& ends) {
    points.insert(points.end(), from.begin(), from.end());
    ends.push_back(static_cast<std::uint32_t>(points.size()));
}

struct Inside {
    double from = 0, to = 1;
    bool any = true;
};

Inside insidePart(const AcGePoint2d& a, const AcGePoint2d& b, const ClipBox& box) {
    Inside part;
    const double p[] = {a.x - b.x, b.x - a.x, a.y - b.y, b.y - a.y};
    const double q[] = {a.x - box.left, box.right - a.x, a.y - box.top, box.bottom - a.y};
    for (int side = 0; side < 4 && part.any; ++side) {
        if (p[side] == 0)
            part.any = q[side] >= 0;
        else if (p[side] < 0)
            part.from = std::max(part.from, q[side] / p[side]);
        else
            part.to = std::min(part.to, q[side] / p[side]);
        part.any = part.any && part.from <= part.to;
    }
    return part;
}

// Keeps what lies on the inner side of one edge: where distance(p) is not negative.
template <class Distance> void cut(std::vector<AcGePoint2d>& area, Distance&& distance) {
    std::vector<AcGePoint2d> kept;
    for (std::size_t i = 0; i < area.size(); ++i) {
        const AcGePoint2d &a = area[i], &b = area[(i + 1) % area.size()];
        const double da = distance(a), db = distance(b);
        if (da >= 0) kept.push_back(a);
        if ((da >= 0) != (db >= 0)) kept.push_back(a + (b - a) * (da / (da - db)));
    }
    area = std::move(kept);
}

} // namespace

ClipBox ClipBox::around(const PageRect& rect, double band) {
    return {rect.x - band, rect.y - band, rect.x + rect.width + band, rect.y + rect.height + band};
}

void clipLine(const std::vector<AcGePoint2d>& line, const ClipBox& box, std::vector<AcGePoint2d>& points,
              std::vector<std::uint32_t>& ends) {
    if (line.empty() || allBeyondOneSide(line, box)) return;
    if (allInside(line, box)) {
        appendWhole(line, points, ends);
        return;
    }
    bool open = false;
    const auto close = [&] {
        if (open) ends.push_back(static_cast<std::uint32_t>(points.size()));
        open = false;
    };
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        const Inside part = insidePart(line[i], line[i + 1], box);
        if (!part.any) {
            close();
            continue;
        }
        const AcGeVector2d way = line[i + 1] - line[i];
        if (!open) points.push_back(line[i] + way * part.from);
        points.push_back(line[i] + way * part.to);
        open = true;
        if (part.to < 1) close();
    }
    close();
}

void clipArea(const std::vector<AcGePoint2d>& area, const ClipBox& box, std::vector<AcGePoint2d>& points,
              std::vector<std::uint32_t>& ends) {
    if (area.size() < 2 || allBeyondOneSide(area, box)) return;
    if (allInside(area, box)) {
        appendWhole(area, points, ends);
        return;
    }
    std::vector<AcGePoint2d> rest = area;
    cut(rest, [&](const AcGePoint2d& p) { return p.x - box.left; });
    cut(rest, [&](const AcGePoint2d& p) { return box.right - p.x; });
    cut(rest, [&](const AcGePoint2d& p) { return p.y - box.top; });
    cut(rest, [&](const AcGePoint2d& p) { return box.bottom - p.y; });
    if (rest.size() > 2) appendWhole(rest, points, ends);
}

} // namespace host
