// Clipping of hatch lines: crossings of every line with the outlines, then the dashes between them.
#include "host/ent/hatch_lines.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "host/ge/extents.h"

namespace host {

namespace {

struct Crossing {
    std::int64_t line;
    double at;
    bool operator<(const Crossing& other) const {
        return line != other.line ? line < other.line : at < other.at;
    }
};

// A family's own coordinates: u along its lines, v counting them.
struct Frame {
    AcGePoint2d base;
    AcGeVector2d along, across;
    double spacing = 0, shift = 0; // of the next line, across and along

    explicit Frame(const HatchLineFamily& family)
        : base(family.base), along(std::cos(family.angle), std::sin(family.angle)),
          across(along.perpVector()), spacing(family.offset.dotProduct(across)),
          shift(family.offset.dotProduct(along)) {
        // Rounding of parallel offsets makes no lines.
        if (!(std::fabs(spacing) > 1e-9 * std::fabs(shift))) spacing = shift = 0;
    }
    double u(const AcGePoint2d& p) const { return (p - base).dotProduct(along); }
    // Of a lone line only the side counts.
    double v(const AcGePoint2d& p) const {
        const double off = (p - base).dotProduct(across);
        return spacing != 0 ? off / spacing : off;
    }
    AcGePoint2d point(std::int64_t line, double at) const {
        return base + along * at + across * (spacing * double(line));
    }
};

class Clipper {
public:
    Clipper(const HatchLineFamily& family, std::size_t most)
        : frame_(family), dashes_(family.dashes), most_(most) {
        for (double dash : dashes_) period_ += std::fabs(dash);
        if (!(period_ > 0)) dashes_.clear();
    }

    bool cross(const AcGePoint2d& a, const AcGePoint2d& b) {
        const double va = frame_.v(a), vb = frame_.v(b);
        if (!std::isfinite(va) || !std::isfinite(vb)) return false;
        const double first = std::ceil(std::min(va, vb)), end = std::ceil(std::max(va, vb));
        if (frame_.spacing == 0) return first <= 0 && 0 < end ? add(0, va, vb, a, b) : true;
        if (end - first + double(crossings_.size()) > 2.0 * double(most_) || std::fabs(end) > 1e15)
            return false;
        for (double line = first; line < end; ++line) add(std::int64_t(line), va, vb, a, b);
        return true;
    }

    bool finish(std::vector<HatchSegment>& segments) {
        std::sort(crossings_.begin(), crossings_.end());
        const std::size_t before = segments.size();
        for (std::size_t i = 0; i + 1 < crossings_.size(); i += 2)
            if (!lay(crossings_[i].line, crossings_[i].at, crossings_[i + 1].at, segments, before + most_))
                return segments.resize(before), false;
        return true;
    }

private:
    bool add(std::int64_t line, double va, double vb, const AcGePoint2d& a, const AcGePoint2d& b) {
        const double t = (double(line) - va) / (vb - va);
        crossings_.push_back({line, frame_.u(a) + t * (frame_.u(b) - frame_.u(a))});
        return true;
    }

    bool lay(std::int64_t line, double from, double to, std::vector<HatchSegment>& out, std::size_t limit) {
        const auto put = [&](double a, double b) {
            out.push_back({frame_.point(line, a), frame_.point(line, b)});
            return out.size() <= limit;
        };
        if (!(to > from)) return true;
        if (dashes_.empty()) return put(from, to);
        if ((to - from) / period_ * double(dashes_.size()) > 2.0 * double(most_)) return false;
        const double zero = frame_.shift * double(line);
        for (double run = std::floor((from - zero) / period_);; ++run) {
            double at = zero + run * period_;
            if (at >= to) return true;
            for (double dash : dashes_) {
                const double a = std::max(at, from), b = std::min(at + dash, to);
                if (dash >= 0 && (dash > 0 ? a < b : a == at && a <= to) && !put(a, b)) return false;
                at += std::fabs(dash);
            }
        }
    }

    Frame frame_;
    std::vector<double> dashes_;
    std::size_t most_;
    double period_ = 0;
    std::vector<Crossing> crossings_;
};

template <class Visit> bool eachEdge(const std::vector<AcGePoint2d>& contour, Visit visit) {
    for (std::size_t i = 0, last = contour.size() - 1; i < contour.size(); last = i++)
        if (!visit(contour[last], contour[i])) return false;
    return true;
}

bool isInside(const std::vector<AcGePoint2d>& contour, const AcGePoint2d& p) {
    bool inside = false;
    eachEdge(contour, [&](const AcGePoint2d& a, const AcGePoint2d& b) {
        if ((a.y <= p.y) != (b.y <= p.y)) inside ^= p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x);
        return true;
    });
    return inside;
}

struct Measured {
    AcDbExtents2d box;
    double area = 0;
};

bool boxHolds(const AcDbExtents2d& outer, const AcDbExtents2d& inner) {
    return outer.minPoint().x <= inner.minPoint().x && outer.minPoint().y <= inner.minPoint().y &&
           outer.maxPoint().x >= inner.maxPoint().x && outer.maxPoint().y >= inner.maxPoint().y;
}

} // namespace

bool appendHatchLines(const HatchContours& contours, const HatchLineFamily& family, std::size_t most,
                      std::vector<HatchSegment>& segments) {
    Clipper clipper(family, most);
    for (const auto& contour : contours) {
        const bool done = eachEdge(
            contour, [&](const AcGePoint2d& a, const AcGePoint2d& b) { return clipper.cross(a, b); });
        if (!done) return false;
    }
    return clipper.finish(segments);
}

double contourArea(const std::vector<AcGePoint2d>& contour) {
    if (contour.empty()) return 0;
    double twice = 0;
    eachEdge(contour, [&](const AcGePoint2d& a, const AcGePoint2d& b) {
        return twice += (a - contour[0]).crossProduct(b - contour[0]), true;
    });
    return twice / 2;
}

bool isInside(const HatchContours& contours, const AcGePoint2d& point) {
    bool inside = false;
    for (const auto& contour : contours) inside ^= isInside(contour, point);
    return inside;
}

HatchContours withoutInner(const HatchContours& contours, int deepest) {
    std::vector<Measured> measured(contours.size());
    for (std::size_t i = 0; i < contours.size(); ++i) {
        for (const AcGePoint2d& p : contours[i]) measured[i].box.addPoint(p);
        measured[i].area = std::fabs(contourArea(contours[i]));
    }
    HatchContours kept;
    for (std::size_t i = 0; i < contours.size(); ++i) {
        int depth = 0;
        for (std::size_t k = 0; k < contours.size() && depth <= deepest; ++k)
            if (k != i && measured[k].area > measured[i].area && boxHolds(measured[k].box, measured[i].box) &&
                isInside(contours[k], contours[i].front()))
                ++depth;
        if (depth <= deepest) kept.push_back(contours[i]);
    }
    return kept;
}

} // namespace host
