// Pieces of curves that meet end to end become one chain of vertices with bulges: what PEDIT's Join does.
#pragma once
#include <optional>
#include <vector>

#include "host/ent/polyline.h"

namespace host {

// A plane curve as the vertices of an open lightweight polyline, in the coordinates of its plane.
struct JoinPiece {
    std::vector<AcDbPolyline::Vertex> vertices;
};

// The open line, arc, lightweight or 2D polyline in the coordinates of the normal's plane. Nothing for other
// kinds, for closed ones, for splined ones, and when it doesn't lie in the plane of that elevation.
std::optional<JoinPiece> joinPiece(const AcDbEntity& entity, const AcGeVector3d& normal, double elevation);

struct JoinedChain {
    std::vector<AcDbPolyline::Vertex> vertices;
    bool closed = false;       // the chain has come back to its start, whose vertex then stands once
    std::vector<size_t> taken; // numbers of the pieces that are in it, in the order of joining
};
// Grows the first piece at both ends by pieces whose ends lie within `fuzz` of its own, turning them round as
// needed. Of several candidates the first in the list is taken. A piece is used once.
JoinedChain joinChain(const std::vector<JoinPiece>& pieces, size_t first, double fuzz);

} // namespace host
