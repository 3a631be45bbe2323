// Bodies of any shape as wires, and moved as wholes. Their faces stay what the modeller made of them.
#pragma once
#include "host/solid/modeler_text.h"
#include "host/solid/planar_faces.h"

namespace host {

// The edges in world coordinates, those on curves that aren't understood left out; for balls and rings, which
// have no edges, great circles along the axes.
std::vector<CurvePath> wiresOf(const ModelerText& modeler);

// The same text with its bodies moved by the matrix. Nothing when a body's place isn't understood or the
// matrix scales unevenly.
std::optional<std::string> movedModelerText(const ModelerText& modeler, const AcGeMatrix3d& matrix);

} // namespace host
