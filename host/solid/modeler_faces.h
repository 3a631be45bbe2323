// Plane faces out of the modeller's records.
#pragma once
#include "host/solid/modeler_text.h"
#include "host/solid/planar_faces.h"

namespace host {

// The faces of a region: plane ones with loops of lines, circles, ellipses and B-splines. Nothing when a
// record is of another kind, is missing, or holds numbers that can't be; a region is understood whole or not
// at all.
std::optional<PlanarFaces> facesOf(const ModelerText& modeler);

} // namespace host
