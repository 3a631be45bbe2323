// Numbers, curves and matrices out of records.
#include "host/solid/modeler_reader.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/os/numbers.h"

namespace host {
namespace {

constexpr double kFarthest = 1e50;
constexpr size_t kMeetings = 16; // of a record; sound texts stay below 3 in the mean

double placed(std::optional<double> number) {
    if (!number || !(std::abs(*number) <= kFarthest)) throw NotUnderstood();
    return *number;
}

} // namespace

ModelerReader::ModelerReader(const ModelerText& modeler) : modeler_(modeler), patience_(0) {
    for (const ModelerRecord& record : modeler.records) patience_ += kMeetings * (1 + record.fields.size());
}

const ModelerRecord& ModelerReader::at(int index) const {
    if (index < 0 || size_t(index) >= modeler_.records.size()) throw NotUnderstood();
    const ModelerRecord& record = modeler_.records[size_t(index)];
    if (patience_ <= record.fields.size()) throw NotUnderstood();
    patience_ -= 1 + record.fields.size();
    return record;
}

const ModelerRecord& ModelerReader::at(int index, std::string_view kind) const {
    const ModelerRecord& record = at(index);
    if (record.kind != kind) throw NotUnderstood();
    return record;
}

size_t ModelerReader::firstNumber(const ModelerRecord& record, size_t count) {
    for (size_t i = 0; i + count <= record.fields.size(); ++i) {
        const auto run = record.fields.begin() + long(i);
        if (std::all_of(run, run + long(count), [](auto field) { return parseReal(field).has_value(); }))
            return i;
    }
    throw NotUnderstood();
}

std::vector<double> ModelerReader::numbers(const ModelerRecord& record, size_t count) {
    const size_t from = firstNumber(record, count);
    std::vector<double> found;
    for (size_t i = from; i < from + count; ++i) found.push_back(placed(parseReal(record.fields[i])));
    return found;
}

bool ModelerReader::isReversed(const ModelerRecord& record) {
    for (const std::string_view field : record.fields) {
        if (field == "forward" || field == "forward_v") return false;
        if (field == "reversed" || field == "reverse_v") return true;
    }
    throw NotUnderstood();
}

// Rows of numbers are the images of the axes; a scale stands apart.
AcGeMatrix3d ModelerReader::matrixOf(const ModelerRecord& body) const {
    AcGeMatrix3d matrix;
    if (pointer(body, 2) < 0) return matrix;
    const std::vector<double> n = numbers(at(pointer(body, 2), "transform"), 13);
    const double s = n[12];
    matrix.setCoordSystem({n[9], n[10], n[11]}, AcGeVector3d(n[0], n[1], n[2]) * s,
                          AcGeVector3d(n[3], n[4], n[5]) * s, AcGeVector3d(n[6], n[7], n[8]) * s);
    return matrix;
}

AcGePoint3d ModelerReader::pointOf(int vertex) const {
    const ModelerRecord& record = at(vertex, "vertex");
    const std::vector<double> n = numbers(at(pointer(record, 1), "point"), 3);
    return {n[0], n[1], n[2]};
}

FaceEdge ModelerReader::edgeOf(const ModelerRecord& record) const {
    const AcGePoint3d from = pointOf(pointer(record, 0)), to = pointOf(pointer(record, 1));
    const ModelerRecord& curve = at(pointer(record, 3));
    const bool against = isReversed(record);
    if (curve.kind == "straight-curve") return {CurvePath::line(from, to), false};
    if (curve.kind == "ellipse-curve")
        return against ? FaceEdge{arcOf(curve, to, from), true} : FaceEdge{arcOf(curve, from, to), false};
    if (curve.kind == "intcurve-curve") return splineEdge(curve, from);
    throw NotUnderstood();
}

ge::EllipticArc ModelerReader::conicOf(const ModelerRecord& curve) {
    const std::vector<double> n = numbers(curve, 10);
    ge::EllipticArc arc{{n[0], n[1], n[2]}, {n[3], n[4], n[5]}, {n[6], n[7], n[8]}, n[9], 0, 0};
    if (arc.normal.isZeroLength() || arc.majorAxis.isZeroLength() || !(arc.ratio > 0) || arc.ratio > 1)
        throw NotUnderstood();
    arc.normal.normalize();
    return arc;
}

CurvePath ModelerReader::arcOf(const ModelerRecord& curve, const AcGePoint3d& from, const AcGePoint3d& to) {
    ge::EllipticArc arc = conicOf(curve);
    const auto angle = [&](const AcGePoint3d& p) {
        const AcGeVector3d v = p - arc.center;
        return std::atan2(v.dotProduct(arc.minorAxis()) / (arc.ratio * arc.ratio),
                          v.dotProduct(arc.majorAxis));
    };
    constexpr double kTurn = 2 * std::numbers::pi;
    arc.start = angle(from);
    arc.end = from.distanceTo(to) <= 1e-9 * arc.majorRadius() ? arc.start + kTurn : angle(to);
    while (arc.end <= arc.start) arc.end += kTurn;
    return CurvePath::conic(arc);
}

// A B-spline stands in the record as its degree, knots with their counts, and poles.
FaceEdge ModelerReader::splineEdge(const ModelerRecord& record, const AcGePoint3d& from) {
    const auto& fields = record.fields;
    size_t i = 0;
    while (i < fields.size() && fields[i] != "nubs" && fields[i] != "nurbs") ++i;
    if (i + 4 > fields.size()) throw NotUnderstood();
    ge::Nurbs curve;
    curve.rational = fields[i] == "nurbs";
    curve.degree = int(known(parseInteger(fields[i + 1])));
    const std::string_view closure = fields[i + 2];
    const auto knots = known(parseInteger(fields[i + 3]));
    i += 4;
    const bool open = closure == "open" || closure == "0";
    if (curve.degree < 1 || curve.degree > ge::kMaxDegree || knots < 2 || !open) throw NotUnderstood();
    const auto next = [&] {
        if (i >= fields.size()) throw NotUnderstood();
        return fields[i++];
    };
    for (long long k = 0; k < knots; ++k) {
        const double knot = placed(parseReal(next()));
        auto count = known(parseInteger(next()));
        if (k == 0 || k == knots - 1) ++count; // ends are held by one less than they count
        if (count < 1 || count > curve.degree + 1) throw NotUnderstood();
        curve.knots.insert(curve.knots.end(), size_t(count), knot);
    }
    const size_t poles =
        curve.knots.size() - size_t(std::min<long>(curve.degree + 1, long(curve.knots.size())));
    for (size_t k = 0; k < poles; ++k) {
        const double x = placed(parseReal(next())), y = placed(parseReal(next())),
                     z = placed(parseReal(next()));
        curve.poles.emplace_back(x, y, z);
        if (curve.rational) curve.weights.push_back(placed(parseReal(next())));
    }
    if (!curve.isValid()) throw NotUnderstood();
    const double size = curve.size();
    const bool first = curve.startPoint().distanceTo(from) <= 1e-6 * size;
    if (!first && curve.endPoint().distanceTo(from) > 1e-6 * size) throw NotUnderstood(); // a part of it
    return {CurvePath::spline(std::move(curve)), !first};
}

} // namespace host
