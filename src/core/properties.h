// Colour and layer of entities, and what the view shows.
#pragma once
#include "core/host/database.h"

namespace corvane {

// The entity's colour if it has one of its own; index 7 for by-block; the layer's otherwise.
void ResolvedColor(const AcDbEntity& entity, AcCmColor& color);
// From the layer's record: the status of opening it, the outputs untouched on failure.
Acad::ErrorStatus LayerNameAndColor(const AcDbEntity& entity, std::wstring& name, int& colorIndex);

// The visible rectangle in world coordinates, from the view's centre and height and the screen's proportions
// (16 to 9 where there is no screen).
void ViewWindow(AcGePoint3d& lowerLeft, AcGePoint3d& upperRight);
// The same from the active viewport's own width and height.
void ActiveViewWindow(AcGePoint3d& lowerLeft, AcGePoint3d& upperRight);

void UcsToWcs(AcGePoint3d& point);
void WcsToUcs(AcGePoint3d& point);
// The plane through the origin, and the matrix to the world, of a normal by the arbitrary axis rule of
// drawing files (limit 1/64); the identity for the Z axis.
void PlaneFromNormal(const AcGeVector3d& normal, AcGePlane& plane);
void MatrixFromNormal(const AcGeVector3d& normal, AcGeMatrix3d& matrix);

} // namespace corvane
