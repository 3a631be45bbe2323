// Plane faces in the modeller's text, as drawing files hold it.
#pragma once
#include <string>

#include "host/db/groups.h"
#include "host/solid/planar_faces.h"

namespace host {

// One body with a lump a face, in version 4 of the modeller's text; lines end in "\n".
std::string modelerTextOf(const PlanarFaces& faces);
// The groups of an entity with that text: its marker, the text's version, and its lines, ciphered.
GroupList modelerGroups(const std::string& text);
// Its lines alone.
GroupList modelerLines(const std::string& text);

} // namespace host
