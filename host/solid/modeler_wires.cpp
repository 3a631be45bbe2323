// Wires, and the transform that stands beside a body.
#include "host/solid/modeler_wires.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "host/os/numbers.h"
#include "host/solid/modeler_reader.h"

namespace host {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

class WireReader : ModelerReader {
public:
    using ModelerReader::ModelerReader;

    std::vector<CurvePath> wires() {
        for (const ModelerRecord& record : modeler_.records) {
            try {
                if (record.kind == "edge") wires_.push_back(edgeOf(record).path);
                if (record.kind == "face" && pointer(record, 1) < 0) addWhole(record);
            } catch (const NotUnderstood&) { // the others still tell of the shape
            }
        }
        return std::move(wires_);
    }
    // Of the first body; texts of drawings hold one.
    AcGeMatrix3d place() const {
        for (const ModelerRecord& record : modeler_.records)
            if (record.kind == "body") return matrixOf(record);
        return {};
    }

private:
    void addCircle(const AcGePoint3d& centre, const AcGeVector3d& normal, double radius) {
        if (!(radius > 0)) throw NotUnderstood();
        wires_.push_back(
            CurvePath::conic({centre, normal, normal.perpVector().normal() * radius, 1, 0, kTurn}));
    }

    // A face without a bound is all of its surface.
    void addWhole(const ModelerRecord& face) {
        const ModelerRecord& surface = at(pointer(face, 4));
        if (surface.kind == "sphere-surface") {
            const std::vector<double> n = numbers(surface, 4);
            for (const AcGeVector3d& axis :
                 {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis})
                addCircle({n[0], n[1], n[2]}, axis, std::abs(n[3]));
        } else if (surface.kind == "torus-surface") {
            const std::vector<double> n = numbers(surface, 8);
            addRing({n[0], n[1], n[2]}, AcGeVector3d(n[3], n[4], n[5]), n[6], std::abs(n[7]));
        }
    }

    void addRing(const AcGePoint3d& centre, AcGeVector3d axis, double large, double small) {
        if (axis.isZeroLength()) throw NotUnderstood();
        axis.normalize();
        addCircle(centre, axis, large + small);
        const AcGeVector3d x = axis.perpVector().normal(), y = axis.crossProduct(x);
        for (const AcGeVector3d& out : {x, y, -x, -y})
            addCircle(centre + out * large, axis.crossProduct(out), small);
    }

    std::vector<CurvePath> wires_;
};

// A transform as its record holds it: what it does besides moving and scaling is told behind the numbers.
struct Transform {
    std::string numbers;
    bool turns = false, mirrors = false;
};

// Rows are the images of the axes, of length 1; the scale stands behind the shift.
std::optional<Transform> transformOf(const AcGeMatrix3d& matrix) {
    AcGePoint3d origin;
    std::array<AcGeVector3d, 3> axes;
    matrix.getCoordSystem(origin, axes[0], axes[1], axes[2]);
    const double scale = axes[0].length();
    if (!std::isfinite(scale + origin.x + origin.y + origin.z)) return std::nullopt;
    constexpr double kEven = 1e-9;
    for (size_t i = 0; i < 3; ++i) {
        const bool even = std::abs(axes[i].length() - scale) <= kEven * scale;
        const bool square = std::abs(axes[i].dotProduct(axes[(i + 1) % 3])) <= kEven * scale * scale;
        if (!(scale > 0) || !even || !square) return std::nullopt;
    }
    Transform transform;
    for (const AcGeVector3d& axis : axes)
        for (const double value : {axis.x, axis.y, axis.z})
            transform.numbers += formatReal(value / scale) + " ";
    for (const double value : {origin.x, origin.y, origin.z}) transform.numbers += formatReal(value) + " ";
    transform.numbers += formatReal(scale);
    transform.turns = (axes[0] / scale - AcGeVector3d::kXAxis).length() > kEven ||
                      (axes[1] / scale - AcGeVector3d::kYAxis).length() > kEven;
    transform.mirrors = axes[0].crossProduct(axes[1]).dotProduct(axes[2]) < 0;
    return transform;
}

// Changes to a text, given by places in the old one, from the last to the first.
class Edits {
public:
    explicit Edits(const std::string& text) : base_(text.data()), text_(text) {}
    void replace(std::string_view old, const std::string& with) { insert(old, with, old.size()); }
    void append(const std::string& record, size_t at) { edits_.push_back({at, 0, record}); }
    std::string done() {
        std::sort(edits_.begin(), edits_.end(), [](const Edit& a, const Edit& b) { return a.at > b.at; });
        for (const Edit& edit : edits_) text_.replace(edit.at, edit.length, edit.with);
        return std::move(text_);
    }

private:
    struct Edit {
        size_t at, length;
        std::string with;
    };
    void insert(std::string_view old, const std::string& with, size_t length) {
        edits_.push_back({size_t(old.data() - base_), length, with});
    }
    const char* base_;
    std::string text_;
    std::vector<Edit> edits_;
};

std::string_view spanOf(std::string_view first, std::string_view last) {
    return {first.data(), size_t(last.data() + last.size() - first.data())};
}

// The fields in front of a record's own: attributes and history, of which a new record has none.
std::string commonFields(const ModelerText& modeler) {
    constexpr int kHistorySince = 700;
    return modeler.version >= kHistorySince ? " $-1 -1 $-1 " : " $-1 ";
}

class Mover : ModelerReader {
public:
    Mover(const ModelerText& modeler, const AcGeMatrix3d& matrix)
        : ModelerReader(modeler), matrix_(matrix), edits_(modeler.text) {}

    std::string moved() {
        bool any = false;
        for (const ModelerRecord& record : modeler_.records) {
            if (record.kind != "body") continue;
            move(record);
            any = true;
        }
        if (!any) throw NotUnderstood();
        return edits_.done();
    }

private:
    void move(const ModelerRecord& body) {
        const Transform moved = known(transformOf(matrix_ * matrixOf(body)));
        if (const int index = pointer(body, 2); index >= 0) return exchange(at(index, "transform"), moved);
        // The body's third own pointer, which is the last of its fields that point.
        const auto field = std::find_if(body.fields.rbegin(), body.fields.rend(),
                                        [](std::string_view text) { return text.starts_with('$'); });
        if (body.pointers.size() < 3 || field == body.fields.rend()) throw NotUnderstood();
        addTransform(*field, moved);
    }

    static std::string flag(bool set, const char* name) { return (set ? "" : "no_") + std::string(name); }

    // Flags are words, or 0 and 1.
    void exchangeFlag(const ModelerRecord& record, size_t at, bool set, const char* name) {
        if (at >= record.fields.size()) return;
        const std::string_view old = record.fields[at];
        const bool number = old == "0" || old == "1";
        if (number || old == flag(!set, name))
            edits_.replace(old, number ? (set ? "1" : "0") : flag(set, name));
    }
    void exchange(const ModelerRecord& record, const Transform& moved) {
        if (std::find(exchanged_.begin(), exchanged_.end(), &record) != exchanged_.end()) return; // shared
        exchanged_.push_back(&record);
        const size_t first = firstNumber(record, 13), behind = first + 13;
        edits_.replace(spanOf(record.fields[first], record.fields[behind - 1]), moved.numbers);
        exchangeFlag(record, behind, moved.turns, "rotate");
        exchangeFlag(record, behind + 1, moved.mirrors, "reflect");
    }

    // Behind all records, so that their numbers stay. Their count stands in the head unless it is 0.
    void addTransform(std::string_view pointer, const Transform& moved) {
        const size_t end = modeler_.text.rfind('#'), count = modeler_.records.size();
        if (end == modeler_.text.npos || added_) throw NotUnderstood();
        added_ = true;
        edits_.replace(pointer, "$" + std::to_string(count));
        edits_.append("\ntransform" + commonFields(modeler_) + moved.numbers + " " +
                          flag(moved.turns, "rotate") + " " + flag(moved.mirrors, "reflect") + " no_shear #",
                      end + 1);
        const std::string_view all = modeler_.text;
        const size_t version = all.find_first_not_of(" \n"), gap = all.find(' ', version),
                     number = all.find_first_not_of(' ', gap), stop = all.find(' ', number);
        if (stop == all.npos) throw NotUnderstood();
        const std::string_view stated = all.substr(number, stop - number);
        if (parseInteger(stated).value_or(0) == int(count)) edits_.replace(stated, std::to_string(count + 1));
    }

    AcGeMatrix3d matrix_;
    Edits edits_;
    bool added_ = false;
    std::vector<const ModelerRecord*> exchanged_;
};

} // namespace

std::vector<CurvePath> wiresOf(const ModelerText& modeler) {
    try {
        WireReader reader(modeler);
        const AcGeMatrix3d place = reader.place();
        std::vector<CurvePath> wires = reader.wires();
        for (CurvePath& wire : wires) wire = wire.transformed(place);
        return wires;
    } catch (const NotUnderstood&) {
        return {};
    }
}

std::optional<std::string> movedModelerText(const ModelerText& modeler, const AcGeMatrix3d& matrix) {
    try {
        return Mover(modeler, matrix).moved();
    } catch (const NotUnderstood&) {
        return std::nullopt;
    }
}

} // namespace host
