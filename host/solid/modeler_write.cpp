// Records of faces, and lines of groups.
#include "host/solid/modeler_write.h"

#include <algorithm>

#include "host/os/numbers.h"

namespace host {
namespace {

std::string numbersOf(std::initializer_list<double> values) {
    std::string text;
    for (const double value : values) text += " " + formatReal(value);
    return text;
}
std::string numbersOf(const AcGePoint3d& p) { return numbersOf({p.x, p.y, p.z}); }
std::string numbersOf(const AcGeVector3d& v) { return numbersOf({v.x, v.y, v.z}); }

// Records point at each other by their places, so each gets its place first and its text when all it points
// at have theirs.
class Records {
public:
    size_t reserve() { return texts_.emplace_back(), texts_.size() - 1; }
    void set(size_t place, std::string text) { texts_[place] = std::move(text); }
    size_t add(std::string text) { return texts_.push_back(std::move(text)), texts_.size() - 1; }
    size_t count() const { return texts_.size(); }
    std::string all() const {
        std::string text;
        for (const std::string& one : texts_) text += one + " #\n";
        return text;
    }

private:
    std::vector<std::string> texts_;
};

std::string to(size_t place) { return " $" + std::to_string(place); }
constexpr const char* kNone = " $-1";

std::string splineText(const ge::Nurbs& given) {
    const ge::Nurbs curve = ge::clamped(given);
    const std::vector<double> knots = curve.distinctKnots();
    std::string text = "intcurve-curve $-1 forward { exactcur full ";
    text += (curve.rational ? "nurbs " : "nubs ") + std::to_string(curve.degree) + " open " +
            std::to_string(knots.size()) + "\n";
    for (size_t i = 0; i < knots.size(); ++i) {
        const bool atEnd = i == 0 || i + 1 == knots.size(); // counts one less there
        text +=
            numbersOf({knots[i]}) + " " + std::to_string(curve.multiplicityAt(knots[i]) - (atEnd ? 1 : 0));
    }
    for (size_t i = 0; i < curve.poles.size(); ++i) {
        text += "\n" + numbersOf(curve.poles[i]);
        if (curve.rational) text += numbersOf({curve.weights[i]});
    }
    return text + "\n 0 null_surface null_surface nullbs nullbs I I } I I";
}

std::string curveText(const CurvePath& path) {
    if (const auto* conic = path.asConic())
        return "ellipse-curve $-1" + numbersOf(conic->center) + numbersOf(conic->normal) +
               numbersOf(conic->majorAxis) + numbersOf({conic->ratio}) + " I I";
    if (const auto* curve = path.asNurbs()) return splineText(*curve);
    const AcGePoint3d from = path.pointAt(path.startParam()), end = path.pointAt(path.endParam());
    return "straight-curve $-1" + numbersOf(from) + numbersOf((end - from).normal()) + " I I";
}

// The outer loop counter-clockwise about the normal, the others clockwise.
std::vector<FaceLoop> oriented(const PlanarFace& face) {
    std::vector<FaceLoop> loops = face.loops;
    const auto size = [](const FaceLoop& loop) { return areaVector(loop).length(); };
    std::stable_sort(loops.begin(), loops.end(),
                     [&](const FaceLoop& a, const FaceLoop& b) { return size(a) > size(b); });
    for (FaceLoop& loop : loops) {
        const bool outer = &loop == &loops.front();
        if ((areaVector(loop).dotProduct(face.normal) > 0) == outer) continue;
        std::reverse(loop.begin(), loop.end());
        for (FaceEdge& edge : loop) edge.reversed = !edge.reversed;
    }
    return loops;
}

// An edge runs with its curve; its coedge tells whether the loop does. Vertices stand where edges meet.
void addLoop(Records& records, const FaceLoop& loop, size_t place, size_t face, const std::string& next) {
    const size_t count = loop.size();
    std::vector<size_t> coedges(count), edges(count), vertices(count);
    for (size_t i = 0; i < count; ++i) coedges[i] = records.reserve();
    for (size_t i = 0; i < count; ++i) {
        edges[i] = records.reserve();
        vertices[i] = records.reserve();
        const size_t point = records.add("point $-1" + numbersOf(loop[i].start()));
        records.set(vertices[i], "vertex $-1" + to(edges[i]) + to(point));
    }
    for (size_t i = 0; i < count; ++i) {
        const size_t after = (i + 1) % count, before = (i + count - 1) % count;
        const size_t curve = records.add(curveText(loop[i].path));
        const size_t first = vertices[loop[i].reversed ? after : i],
                     last = vertices[loop[i].reversed ? i : after];
        records.set(edges[i], "edge $-1" + to(first) + to(last) + to(coedges[i]) + to(curve) + " forward");
        records.set(coedges[i], "coedge $-1" + to(coedges[after]) + to(coedges[before]) + kNone +
                                    to(edges[i]) + (loop[i].reversed ? " reversed" : " forward") + to(place) +
                                    kNone);
    }
    records.set(place, "loop $-1" + next + to(coedges[0]) + to(face));
}

void addFace(Records& records, const PlanarFace& face, size_t lump, const std::string& next) {
    const std::vector<FaceLoop> loops = oriented(face);
    const size_t shell = records.reserve(), place = records.reserve();
    std::vector<size_t> places(loops.size());
    for (size_t& loop : places) loop = records.reserve();
    const AcGeVector3d u = face.normal.perpVector().normal();
    const size_t surface = records.add("plane-surface $-1" + numbersOf(loops[0][0].start()) +
                                       numbersOf(face.normal) + numbersOf(u) + " forward_v I I I I");
    records.set(lump, "lump $-1" + next + to(shell) + to(0));
    records.set(shell, std::string("shell $-1 $-1 $-1") + to(place) + kNone + to(lump));
    records.set(place, std::string("face $-1 $-1") + to(places[0]) + to(shell) + kNone + to(surface) +
                           " forward double out");
    for (size_t i = 0; i < loops.size(); ++i)
        addLoop(records, loops[i], places[i], place, i + 1 < loops.size() ? to(places[i + 1]) : kNone);
}

std::string ciphered(std::string_view plain) {
    std::string line;
    for (const char c : plain) {
        line += c > ' ' ? char(0x9F - c) : c;
        if (line.back() == '^') line += ' ';
    }
    return line;
}

} // namespace

std::string modelerTextOf(const PlanarFaces& faces) {
    Records records;
    const size_t body = records.reserve();
    std::vector<size_t> lumps(faces.size());
    for (size_t& lump : lumps) lump = records.reserve();
    records.set(body, "body $-1" + (lumps.empty() ? std::string(kNone) : to(lumps[0])) + kNone + kNone);
    for (size_t i = 0; i < faces.size(); ++i)
        addFace(records, faces[i], lumps[i], i + 1 < faces.size() ? to(lumps[i + 1]) : kNone);
    return "400 " + std::to_string(records.count()) + " 1 0\n7 Corvane 8 ACIS 4.0 3 now\n" +
           "1 9.9999999999999995e-007 1e-010\n" + records.all();
}

GroupList modelerGroups(const std::string& text) {
    GroupList groups;
    groups.append(Group::ofText(100, "AcDbModelerGeometry"));
    groups.append(Group::ofInteger(70, 1));
    for (const Group line : modelerLines(text)) groups.append(line);
    return groups;
}

// Lines of more letters than a group takes go on in groups 3, parted at blanks.
GroupList modelerLines(const std::string& text) {
    constexpr size_t kLongest = 200;
    GroupList groups;
    for (size_t from = 0; from < text.size();) {
        const size_t end = std::min(text.find('\n', from), text.size());
        for (int code = 1; from < end || code == 1; code = 3) {
            size_t stop = end;
            if (end - from > kLongest) {
                stop = text.rfind(' ', from + kLongest);
                if (stop == text.npos || stop <= from) stop = from + kLongest;
            }
            groups.append(Group::ofText(code, ciphered(std::string_view(text).substr(from, stop - from))));
            from = stop;
        }
        from = end + 1;
    }
    return groups;
}

} // namespace host
