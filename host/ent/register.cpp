// The list of entity classes.
#include "host/ent/register.h"

#include "host/db/blocktable.h"
#include "host/ent/blockreference.h"
#include "host/ent/conics.h"
#include "host/ent/dimension.h"
#include "host/ent/faces.h"
#include "host/ent/hatch.h"
#include "host/ent/helix.h"
#include "host/ent/kept_picture.h"
#include "host/ent/leader.h"
#include "host/ent/line.h"
#include "host/ent/meshes.h"
#include "host/ent/mline.h"
#include "host/ent/polyline.h"
#include "host/ent/polyline2d.h"
#include "host/ent/polyline3d.h"
#include "host/ent/raster_image.h"
#include "host/ent/ray.h"
#include "host/ent/spline.h"
#include "host/ent/subdmesh.h"
#include "host/ent/text.h"
#include "host/ent/viewport.h"

namespace host {
namespace {
template <class... Classes> void describe() { (Classes::desc(), ...); }
} // namespace

void registerEntityClasses() {
    describe<AcDbLine, AcDbPoint, AcDbCircle, AcDbArc, AcDbEllipse, AcDbPolyline, AcDb2dPolyline,
             AcDb2dVertex, AcDb3dPolyline, AcDb3dPolylineVertex, AcDbSpline, AcDbText, AcDbAttribute,
             AcDbAttributeDefinition, AcDbMText, AcDbBlockReference, AcDbTrace, AcDbSolid, AcDbFace,
             AcDbHelix, AcDbRay, AcDbXline, AcDbHatch, AcDbPolyFaceMesh, AcDbPolyFaceMeshVertex,
             AcDbFaceRecord, AcDbPolygonMesh, AcDbPolygonMeshVertex, AcDbSubDMesh, AcDbDimension,
             AcDbArcDimension, AcDbRadialDimensionLarge, AcDbLeader, AcDbMline, AcDbRasterImage, AcDbWipeout,
             AcDbViewport>();
    showKeptEntities();
}

} // namespace host
