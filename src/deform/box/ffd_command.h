// Handler of CVFFD: free-form deformation in a box. Asks for the objects, the number of control points and
// whether to subdivide, then lets the user move control points until they leave.
#pragma once

namespace corvane {

void FreeFormDeformCommand();

} // namespace corvane
