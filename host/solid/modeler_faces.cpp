// From bodies down to curves.
#include "host/solid/modeler_faces.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/os/numbers.h"

namespace host {
namespace {

// Thrown inside this file alone, where a region turns out not to be understood.
struct NotUnderstood {};

template <class T> T known(const std::optional<T>& value) {
    if (!value) throw NotUnderstood();
    return *value;
}

class FaceReader {
public:
    explicit FaceReader(const ModelerText& modeler) : modeler_(modeler) {}

    PlanarFaces faces() {
        for (const ModelerRecord& record : modeler_.records)
            if (record.kind == "body") readBody(record);
        return std::move(faces_);
    }

private:
    const ModelerRecord& at(int index, std::string_view kind) const {
        if (index < 0 || size_t(index) >= modeler_.records.size()) throw NotUnderstood();
        const ModelerRecord& record = modeler_.records[size_t(index)];
        if (record.kind != kind) throw NotUnderstood();
        return record;
    }
    static int pointer(const ModelerRecord& record, size_t index) {
        return index < record.pointers.size() ? record.pointers[index] : -1;
    }
    // Calls `visit` with each record of a chain, the next of which stands behind its first pointer.
    template <class Visit> void eachOf(int first, std::string_view kind, Visit visit) const {
        size_t steps = 0;
        for (int index = first; index >= 0;) {
            const ModelerRecord& record = at(index, kind);
            if (++steps > modeler_.records.size()) throw NotUnderstood();
            visit(record);
            index = pointer(record, 0);
        }
    }
    // Numbers in a row, from the first field that is one behind all pointers and words at the start.
    static std::vector<double> numbers(const ModelerRecord& record, size_t count) {
        std::vector<double> found;
        size_t from = record.fields.size();
        for (size_t i = 0; i + count <= record.fields.size() && from == record.fields.size(); ++i) {
            const auto run = record.fields.begin() + long(i);
            if (std::all_of(run, run + long(count), [](auto field) { return parseReal(field).has_value(); }))
                from = i;
        }
        // The index before the history pointer is no number of the record's own.
        for (size_t i = from; i < std::min(from + count, record.fields.size()); ++i)
            found.push_back(*parseReal(record.fields[i]));
        if (found.size() != count ||
            !std::all_of(found.begin(), found.end(), [](double x) { return std::isfinite(x); }))
            throw NotUnderstood();
        return found;
    }
    static bool isReversed(const ModelerRecord& record) {
        for (const std::string_view field : record.fields) {
            if (field == "forward" || field == "forward_v") return false;
            if (field == "reversed" || field == "reverse_v") return true;
        }
        throw NotUnderstood();
    }

    void readBody(const ModelerRecord& body) {
        const size_t before = faces_.size();
        eachOf(pointer(body, 0), "lump", [&](const ModelerRecord& lump) {
            eachOf(pointer(lump, 1), "shell", [&](const ModelerRecord& shell) {
                if (pointer(shell, 1) >= 0) throw NotUnderstood(); // faces in sub-shells
                eachOf(pointer(shell, 2), "face", [&](const ModelerRecord& face) { readFace(face); });
            });
        });
        if (pointer(body, 2) < 0) return;
        const std::vector<double> n = numbers(at(pointer(body, 2), "transform"), 13);
        const double s = n[12];
        AcGeMatrix3d matrix; // rows of numbers are the images of the axes
        matrix.setCoordSystem({n[9], n[10], n[11]}, AcGeVector3d(n[0], n[1], n[2]) * s,
                              AcGeVector3d(n[3], n[4], n[5]) * s, AcGeVector3d(n[6], n[7], n[8]) * s);
        const PlanarFaces own(faces_.begin() + long(before), faces_.end());
        const PlanarFaces moved = known(transformedFaces(own, matrix));
        std::copy(moved.begin(), moved.end(), faces_.begin() + long(before));
    }

    void readFace(const ModelerRecord& record) {
        PlanarFace face;
        const std::vector<double> n = numbers(at(pointer(record, 4), "plane-surface"), 6);
        face.normal = AcGeVector3d(n[3], n[4], n[5]);
        if (face.normal.isZeroLength()) throw NotUnderstood();
        face.normal.normalize();
        eachOf(pointer(record, 1), "loop",
               [&](const ModelerRecord& loop) { face.loops.push_back(readLoop(loop)); });
        if (face.loops.empty()) throw NotUnderstood();
        faces_.push_back(std::move(face));
    }

    FaceLoop readLoop(const ModelerRecord& record) const {
        FaceLoop loop;
        const int first = pointer(record, 1);
        int index = first;
        do {
            const ModelerRecord& coedge = at(index, "coedge");
            FaceEdge edge = readEdge(at(pointer(coedge, 3), "edge"));
            if (isReversed(coedge)) edge.reversed = !edge.reversed;
            loop.push_back(std::move(edge));
            if (loop.size() > modeler_.records.size()) throw NotUnderstood();
            index = pointer(coedge, 0);
        } while (index != first);
        return loop;
    }

    AcGePoint3d pointOf(int vertex) const {
        const ModelerRecord& record = at(vertex, "vertex");
        const std::vector<double> n = numbers(at(pointer(record, 1), "point"), 3);
        return {n[0], n[1], n[2]};
    }

    // The part of the curve between the vertices; a reversed edge runs against its curve.
    FaceEdge readEdge(const ModelerRecord& record) const {
        const AcGePoint3d from = pointOf(pointer(record, 0)), to = pointOf(pointer(record, 1));
        const int index = pointer(record, 3);
        if (index < 0 || size_t(index) >= modeler_.records.size()) throw NotUnderstood();
        const ModelerRecord& curve = modeler_.records[size_t(index)];
        const bool against = isReversed(record);
        if (curve.kind == "straight-curve") return {CurvePath::line(from, to), false};
        if (curve.kind == "ellipse-curve")
            return against ? FaceEdge{arcOf(curve, to, from), true} : FaceEdge{arcOf(curve, from, to), false};
        if (curve.kind == "intcurve-curve") return splineEdge(curve, from);
        throw NotUnderstood();
    }

    static CurvePath arcOf(const ModelerRecord& curve, const AcGePoint3d& from, const AcGePoint3d& to) {
        const std::vector<double> n = numbers(curve, 10);
        ge::EllipticArc arc{{n[0], n[1], n[2]}, {n[3], n[4], n[5]}, {n[6], n[7], n[8]}, n[9], 0, 0};
        if (arc.normal.isZeroLength() || arc.majorAxis.isZeroLength() || !(arc.ratio > 0) || arc.ratio > 1)
            throw NotUnderstood();
        arc.normal.normalize();
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
    static FaceEdge splineEdge(const ModelerRecord& record, const AcGePoint3d& from) {
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
            const double knot = known(parseReal(next()));
            auto count = known(parseInteger(next()));
            if (k == 0 || k == knots - 1) ++count; // ends are held by one less than they count
            if (count < 1 || count > curve.degree + 1) throw NotUnderstood();
            curve.knots.insert(curve.knots.end(), size_t(count), knot);
        }
        const size_t poles =
            curve.knots.size() - size_t(std::min<long>(curve.degree + 1, long(curve.knots.size())));
        for (size_t k = 0; k < poles; ++k) {
            const double x = known(parseReal(next())), y = known(parseReal(next())),
                         z = known(parseReal(next()));
            curve.poles.emplace_back(x, y, z);
            if (curve.rational) curve.weights.push_back(known(parseReal(next())));
        }
        if (!curve.isValid()) throw NotUnderstood();
        const double size = curve.size();
        const bool first = curve.startPoint().distanceTo(from) <= 1e-6 * size;
        if (!first && curve.endPoint().distanceTo(from) > 1e-6 * size) throw NotUnderstood(); // a part of it
        return {CurvePath::spline(std::move(curve)), !first};
    }

    const ModelerText& modeler_;
    PlanarFaces faces_;
};

} // namespace

std::optional<PlanarFaces> facesOf(const ModelerText& modeler) {
    try {
        PlanarFaces faces = FaceReader(modeler).faces();
        if (!faces.empty()) return faces;
    } catch (const NotUnderstood&) {
    }
    return std::nullopt;
}

} // namespace host
