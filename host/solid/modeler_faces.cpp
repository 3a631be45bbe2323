// From bodies down to curves.
#include "host/solid/modeler_faces.h"

#include <algorithm>

#include "host/solid/modeler_reader.h"

namespace host {
namespace {

class FaceReader : ModelerReader {
public:
    using ModelerReader::ModelerReader;

    PlanarFaces faces() {
        for (const ModelerRecord& record : modeler_.records)
            if (record.kind == "body") readBody(record);
        return std::move(faces_);
    }

private:
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

    void readBody(const ModelerRecord& body) {
        const size_t before = faces_.size();
        eachOf(pointer(body, 0), "lump", [&](const ModelerRecord& lump) {
            eachOf(pointer(lump, 1), "shell", [&](const ModelerRecord& shell) {
                if (pointer(shell, 1) >= 0) throw NotUnderstood(); // faces in sub-shells
                eachOf(pointer(shell, 2), "face", [&](const ModelerRecord& face) { readFace(face); });
            });
        });
        if (pointer(body, 2) < 0) return;
        const PlanarFaces own(faces_.begin() + long(before), faces_.end());
        const PlanarFaces moved = known(transformedFaces(own, matrixOf(body)));
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
            FaceEdge edge = edgeOf(at(pointer(coedge, 3), "edge"));
            if (isReversed(coedge)) edge.reversed = !edge.reversed;
            loop.push_back(std::move(edge));
            if (loop.size() > modeler_.records.size()) throw NotUnderstood();
            index = pointer(coedge, 0);
        } while (index != first);
        return loop;
    }

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
