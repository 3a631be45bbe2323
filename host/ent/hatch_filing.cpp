// The groups of hatches: nested lists, read in their order and written from the data.
#include <algorithm>

#include "host/ent/filing.h"
#include "host/ent/hatch_data.h"

namespace host {

namespace {

constexpr int kPolylineLoop = 2;

class HatchReader {
public:
    HatchReader(const GroupList& groups, HatchData& data) : data_(data) {
        for (const Group group : groups)
            if (group.code != 100) groups_.push_back(group);
    }

    bool run() {
        data_.loops.clear();
        while (!done() && now().code != 91) takeHead(groups_[at_++]);
        if (done()) return false;
        const std::int64_t count = groups_[at_++].integer;
        for (std::int64_t i = 0; i < count && !done(); ++i)
            if (now().code != 92 || !takeLoop()) return false;
        if (std::int64_t(data_.loops.size()) != count) return false;
        while (!done()) takeTail();
        return true;
    }

private:
    bool done() const { return at_ >= groups_.size(); }
    const Group& now() const { return groups_[at_]; }
    bool at(int code) const { return !done() && now().code == code; }
    int codeAt(std::size_t place) const { return place < groups_.size() ? groups_[place].code : -1; }
    double real(int code, double fallback = 0) {
        return at(code) && now().type == GroupType::real ? groups_[at_++].real : fallback;
    }
    std::int64_t integer(int code, std::int64_t fallback = 0) {
        return at(code) ? groups_[at_++].integer : fallback;
    }
    bool point(int code, AcGePoint2d& p) {
        if (!at(code)) return false;
        p.x = real(code), p.y = real(code + 10);
        return finite(p);
    }
    double angle(int code) { return toRadians(real(code)); }

    void takeHead(const Group& group) {
        switch (group.code) {
        case 10:
        case 20: return;
        case 30: data_.elevation = group.real; return;
        case 2: data_.name = group.wide(); return;
        case 70: data_.solid = group.integer != 0; return;
        case 71: data_.associative = group.integer != 0; return;
        default:
            if (!takeTriple(group, 210, data_.normal)) data_.rest.append(group);
        }
    }

    bool takeLoop() {
        HatchLoop loop;
        loop.type = int(integer(92));
        loop.isPolyline = loop.type & kPolylineLoop;
        const bool read = loop.isPolyline ? takePolyline(loop) : takeEdges(loop);
        const std::int64_t sources = integer(97);
        for (std::int64_t i = 0; i < sources && at(330); ++i) loop.sources.push_back(groups_[at_++].handle());
        data_.loops.push_back(std::move(loop));
        return read;
    }

    bool takePolyline(HatchLoop& loop) {
        loop.bulged = integer(72) != 0;
        loop.closed = integer(73, 1) != 0;
        const std::int64_t count = integer(93);
        for (std::int64_t i = 0; i < count; ++i) {
            ge::BulgeVertex vertex;
            if (!point(10, vertex.point)) return false;
            vertex.bulge = real(42);
            loop.vertices.push_back(vertex);
        }
        return true;
    }

    bool takeEdges(HatchLoop& loop) {
        const std::int64_t count = integer(93);
        for (std::int64_t i = 0; i < count; ++i) {
            if (!at(72)) return false;
            switch (integer(72)) {
            case 1: loop.edges.push_back(HatchLine()); break;
            case 2: loop.edges.push_back(HatchArc()); break;
            case 3: loop.edges.push_back(HatchEllipse()); break;
            case 4: loop.edges.push_back(HatchSpline()); break;
            default: return false;
            }
            if (!std::visit([this](auto& edge) { return take(edge); }, loop.edges.back())) return false;
        }
        return true;
    }

    bool take(HatchLine& line) { return point(10, line.start) && point(11, line.end); }
    bool take(HatchArc& arc) {
        if (!point(10, arc.center)) return false;
        arc.radius = real(40), arc.start = angle(50), arc.end = angle(51);
        arc.clockwise = integer(73, 1) == 0;
        return true;
    }
    bool take(HatchEllipse& ellipse) {
        AcGePoint2d major;
        if (!point(10, ellipse.center) || !point(11, major)) return false;
        ellipse.major = major.asVector();
        ellipse.ratio = real(40), ellipse.start = angle(50), ellipse.end = angle(51);
        ellipse.clockwise = integer(73, 1) == 0;
        return true;
    }

    bool take(HatchSpline& spline) {
        ge::Nurbs& curve = spline.curve;
        curve.degree = int(integer(94, 3));
        curve.rational = integer(73) != 0;
        curve.periodic = integer(74) != 0;
        integer(95), integer(96); // the counts; what is there counts more
        while (at(40)) curve.knots.push_back(real(40));
        for (AcGePoint2d p; at(10);) {
            if (!point(10, p)) return false;
            curve.poles.push_back({p.x, p.y, 0});
            if (at(42)) curve.weights.push_back(real(42));
        }
        while (at(42)) curve.weights.push_back(real(42));
        if (curve.weights.size() != curve.poles.size()) curve.rational = false;
        if (!curve.rational) curve.weights.clear();
        return takeFit(spline);
    }

    // Since R2010 a count of fit points stands here, 0 for none; it must not be taken for the loop's count
    // of sources, which has the same code.
    bool takeFit(HatchSpline& spline) {
        const int next = codeAt(at_ + 1);
        const bool own = at(97) && (now().integer > 0 ? next == 11 : next == 97 || next == 72);
        if (own) ++at_;
        for (AcGePoint2d p; at(11);) {
            if (!point(11, p)) return false;
            spline.fitPoints.push_back(p);
        }
        AcGePoint2d tangent;
        if (at(12) && point(12, tangent)) spline.startTangent = tangent.asVector();
        if (at(13) && point(13, tangent)) spline.endTangent = tangent.asVector();
        return true;
    }

    void takeTail() {
        const Group& group = now();
        switch (group.code) {
        case 75: data_.style = int(integer(75)); return;
        case 76: data_.patternType = int(integer(76)); return;
        case 52: data_.angle = angle(52); return;
        case 41: data_.scale = real(41); return;
        case 77: data_.doubled = integer(77) != 0; return;
        case 47: data_.pixelSize = real(47); return;
        case 78: return takeLines();
        case 98: return takeSeeds();
        default: data_.rest.append(group), ++at_;
        }
    }

    void takeLines() {
        ++at_;
        while (at(53)) {
            HatchLineFamily family;
            family.angle = angle(53);
            family.base.x = real(43), family.base.y = real(44);
            family.offset.x = real(45), family.offset.y = real(46);
            integer(79);
            while (at(49)) family.dashes.push_back(real(49));
            data_.lines.push_back(std::move(family));
        }
    }

    void takeSeeds() {
        ++at_;
        for (AcGePoint2d seed; at(10);)
            if (point(10, seed)) data_.seeds.push_back(seed);
    }

    HatchData& data_;
    std::vector<Group> groups_;
    std::size_t at_ = 0;
};

class HatchWriter {
public:
    explicit HatchWriter(GroupWriter& to) : to_(to) {}

    void operator()(const HatchLine& line) {
        to_.integer(72, 1);
        to_.point(10, line.start), to_.point(11, line.end);
    }
    void operator()(const HatchArc& arc) {
        to_.integer(72, 2);
        to_.point(10, arc.center);
        to_.real(40, arc.radius);
        sweep(arc.start, arc.end, arc.clockwise);
    }
    void operator()(const HatchEllipse& ellipse) {
        to_.integer(72, 3);
        to_.point(10, ellipse.center), to_.point(11, AcGePoint2d(ellipse.major.x, ellipse.major.y));
        to_.real(40, ellipse.ratio);
        sweep(ellipse.start, ellipse.end, ellipse.clockwise);
    }
    void operator()(const HatchSpline& spline) {
        const ge::Nurbs& curve = spline.curve;
        to_.integer(72, 4);
        to_.integer(94, curve.degree);
        to_.integer(73, curve.rational), to_.integer(74, curve.periodic);
        to_.integer(95, std::int64_t(curve.knots.size())), to_.integer(96, std::int64_t(curve.poles.size()));
        for (double knot : curve.knots) to_.real(40, knot);
        for (std::size_t i = 0; i < curve.poles.size(); ++i) {
            to_.point(10, AcGePoint2d(curve.poles[i].x, curve.poles[i].y));
            if (curve.rational) to_.real(42, curve.weights[i]);
        }
        if (to_.version < AcDb::kDHL_1024) return;
        to_.integer(97, std::int64_t(spline.fitPoints.size()));
        for (const AcGePoint2d& p : spline.fitPoints) to_.point(11, p);
        tangent(12, spline.startTangent), tangent(13, spline.endTangent);
    }

    void loop(const HatchLoop& loop) {
        to_.integer(92, loop.type);
        if (loop.isPolyline)
            polyline(loop);
        else
            to_.integer(93, std::int64_t(loop.edges.size()));
        for (const HatchEdge& edge : loop.edges) std::visit(*this, edge);
        to_.integer(97, std::int64_t(loop.sources.size()));
        for (std::uint64_t handle : loop.sources) to_.handle(330, handle);
    }

    void pattern(const HatchData& data) {
        to_.real(52, fileDegrees(data.angle)), to_.real(41, data.scale);
        to_.integer(77, data.doubled), to_.integer(78, std::int64_t(data.lines.size()));
        for (const HatchLineFamily& family : data.lines) {
            to_.real(53, fileDegrees(family.angle));
            to_.real(43, family.base.x), to_.real(44, family.base.y);
            to_.real(45, family.offset.x), to_.real(46, family.offset.y);
            to_.integer(79, std::int64_t(family.dashes.size()));
            for (double dash : family.dashes) to_.real(49, dash);
        }
    }

private:
    void polyline(const HatchLoop& loop) {
        to_.integer(72, loop.bulged), to_.integer(73, loop.closed);
        to_.integer(93, std::int64_t(loop.vertices.size()));
        for (const ge::BulgeVertex& vertex : loop.vertices) {
            to_.point(10, vertex.point);
            if (loop.bulged) to_.real(42, vertex.bulge);
        }
    }
    void sweep(double start, double end, bool clockwise) {
        to_.real(50, fileDegrees(start)), to_.real(51, fileDegrees(end));
        to_.integer(73, !clockwise);
    }
    void tangent(int code, const std::optional<AcGeVector2d>& direction) {
        if (direction) to_.point(code, AcGePoint2d(direction->x, direction->y));
    }
    GroupWriter& to_;
};

} // namespace

bool readHatch(const GroupList& groups, HatchData& data) { return HatchReader(groups, data).run(); }

void writeHatch(const HatchData& data, GroupWriter& writer) {
    HatchWriter out(writer);
    writer.point(10, AcGePoint3d(0, 0, data.elevation));
    writer.vector(210, data.normal);
    writer.text(2, data.name);
    writer.integer(70, data.solid), writer.integer(71, data.associative);
    writer.integer(91, std::int64_t(data.loops.size()));
    for (const HatchLoop& loop : data.loops) out.loop(loop);
    writer.integer(75, data.style), writer.integer(76, data.patternType);
    if (!data.solid) out.pattern(data);
    if (data.pixelSize) writer.real(47, *data.pixelSize);
    writer.integer(98, std::int64_t(data.seeds.size()));
    for (const AcGePoint2d& seed : data.seeds) writer.point(10, seed);
    // Gradients came with R2004.
    if (writer.version >= AcDb::kDHL_1018)
        for (const Group group : data.rest) writer.write(group);
}

} // namespace host
