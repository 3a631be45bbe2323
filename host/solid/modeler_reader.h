// Records of the modeller's text, read one by one: what faces and wires have in common.
#pragma once
#include "host/solid/modeler_text.h"
#include "host/solid/planar_faces.h"

namespace host {

// Thrown by readers of this room where a record turns out not to be understood, and caught by them.
struct NotUnderstood {};

template <class T> T known(const std::optional<T>& value) {
    if (!value) throw NotUnderstood();
    return *value;
}

class ModelerReader {
public:
    explicit ModelerReader(const ModelerText& modeler);

    // The part of an edge's curve between its vertices, in the body's coordinates: a line, circle, ellipse or
    // B-spline. An edge that runs against its curve is reversed.
    FaceEdge edgeOf(const ModelerRecord& edge) const;
    // From a body's coordinates to the world's.
    AcGeMatrix3d matrixOf(const ModelerRecord& body) const;

    // What is pointed at. Sound texts point at a record a few times; texts in which many share what belongs
    // to one are given up when their records have been met far more often than they are long.
    const ModelerRecord& at(int index) const;
    const ModelerRecord& at(int index, std::string_view kind) const;
    // -1 for pointers that aren't there.
    static int pointer(const ModelerRecord& record, size_t index) {
        return index < record.pointers.size() ? record.pointers[index] : -1;
    }
    // Numbers in a row, from the first place where as many stand behind each other; none may be so large that
    // its square, or the square of a place that a transform gives, is beyond what numbers hold.
    static std::vector<double> numbers(const ModelerRecord& record, size_t count);
    static size_t firstNumber(const ModelerRecord& record, size_t count); // its field
    static bool isReversed(const ModelerRecord& record);

protected:
    const ModelerText& modeler_;

private:
    mutable size_t patience_; // fields that may still be met
    AcGePoint3d pointOf(int vertex) const;
    static ge::EllipticArc conicOf(const ModelerRecord& curve);
    static CurvePath arcOf(const ModelerRecord& curve, const AcGePoint3d& from, const AcGePoint3d& to);
    static FaceEdge splineEdge(const ModelerRecord& record, const AcGePoint3d& from);
};

} // namespace host
