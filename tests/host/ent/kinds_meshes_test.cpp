// Meshes with parts: wires, boxes, images, copies, and what they explode into.
#include "host/ent/faces.h"
#include "host/ent/meshes.h"
#include "kinds_support.h"

namespace {

// A cube whose upper face has a hidden edge, as two triangles would.
std::unique_ptr<AcDbPolyFaceMesh> cube() {
    host::registerEntityClasses();
    auto mesh = std::make_unique<AcDbPolyFaceMesh>();
    for (int i = 0; i < 8; ++i)
        mesh->appendVertex(new AcDbPolyFaceMeshVertex(
            {double((i & 1) ^ ((i >> 1) & 1)), double((i >> 1) & 1), double(i >> 2)}));
    const Adesk::Int16 faces[][4] = {{1, 2, 3, 4}, {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 4, 8, 7}, {4, 1, 5, 8}};
    for (const auto& f : faces) mesh->appendFaceRecord(new AcDbFaceRecord(f[0], f[1], f[2], f[3]));
    mesh->appendFaceRecord(new AcDbFaceRecord(5, 6, -7, 0));
    mesh->appendFaceRecord(new AcDbFaceRecord(-5, 7, 8, 0));
    return mesh;
}
AcGePoint3dArray grid(int rows, int columns) {
    AcGePoint3dArray points;
    for (int i = 0; i < rows; ++i)
        for (int k = 0; k < columns; ++k) points.append({double(k), double(i), double(i * k)});
    return points;
}
std::vector<AcDbFace*> faces(const AcDbVoidPtrArray& parts) {
    std::vector<AcDbFace*> out;
    for (void* part : parts) out.push_back(AcDbFace::cast(static_cast<AcDbEntity*>(part)));
    return out;
}

} // namespace

TEST(Meshes, EdgesAreDrawnOnceAndHiddenOnesNotAtAll) {
    const auto mesh = cube();
    EXPECT_EQ(mesh->numVertices(), 8);
    EXPECT_EQ(mesh->numFaces(), 7);
    EXPECT_EQ(mesh->wires().edges.size(), 12u);
    const kinds::Sketch sketch(*mesh);
    EXPECT_NEAR(sketch.length(), 12, 1e-12);
    kinds::expectBox(kinds::boxOf(*mesh), {0, 0, 0}, {1, 1, 1});
    AcDbVoidPtrArray parts;
    ASSERT_EQ(mesh->explode(parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 7);
    Adesk::Boolean visible = true;
    faces(parts)[5]->isEdgeVisibleAt(2, visible);
    EXPECT_FALSE(visible);
    for (AcDbFace* face : faces(parts)) delete face;
}

TEST(Meshes, GridsCloseEitherWayAndShortOnesHoldWhatIsThere) {
    host::registerEntityClasses();
    EXPECT_EQ(AcDbPolygonMesh(3, 4, grid(3, 4)).wires().edges.size(), 3u * 3 + 4 * 2);
    EXPECT_EQ(AcDbPolygonMesh(3, 4, grid(3, 4), true).wires().edges.size(), 3u * 3 + 4 * 3);
    EXPECT_EQ(AcDbPolygonMesh(3, 4, grid(3, 4), true, true).wires().edges.size(), 3u * 4 + 4 * 3);
    EXPECT_EQ(AcDbPolygonMesh(3, 4, grid(2, 4)).wires().edges.size(), 2u * 3 + 4);
    EXPECT_TRUE(AcDbPolygonMesh(32767, 32767, grid(1, 1), true, true).wires().edges.empty());
    AcDbVoidPtrArray parts;
    ASSERT_EQ(AcDbPolygonMesh(3, 4, grid(3, 4), true).explode(parts), Acad::eOk);
    EXPECT_EQ(parts.length(), 9);
    for (AcDbFace* face : faces(parts)) delete face;
    EXPECT_EQ(AcDbPolygonMesh(3, 4, grid(2, 4)).explode(parts), Acad::eDegenerateGeometry);
}

TEST(Meshes, ASmoothedMeshShowsItsSurface) {
    const auto mesh = kinds::made<AcDbPolygonMesh>(
        "100|AcDbPolygonMesh|66|1|10|0|20|0|30|0|70|20|71|2|72|2|73|3|74|3|75|6");
    for (int i = 0; i < 4; ++i) {
        auto* vertex = new AcDbPolygonMeshVertex({100.0 * i, 0, 0});
        vertex->setVertexType(AcDb::k3dControlVertex);
        mesh->appendVertex(vertex);
    }
    for (const AcGePoint3d& p : grid(3, 3)) {
        auto* vertex = new AcDbPolygonMeshVertex(p);
        vertex->setVertexType(AcDb::k3dFitVertex);
        mesh->appendVertex(vertex);
    }
    EXPECT_EQ(mesh->wires().edges.size(), 12u);
    kinds::expectBox(kinds::boxOf(*mesh), {0, 0, 0}, {2, 2, 4});
    EXPECT_EQ(kinds::rowsOf(*mesh), "100|AcDbPolygonMesh|66|1|10|0|20|0|30|0|70|20|71|2|72|2|73|3|74|3|75|6");
}

TEST(Meshes, PartsComeBackFromTheirGroups) {
    const std::string face = "100|AcDbFaceRecord|10|0|20|0|30|0|70|128|71|-1|72|2|73|-7";
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbFaceRecord>(face)), face);
    const std::string corner = "100|AcDbVertex|100|AcDbPolyFaceMeshVertex|10|1|20|2|30|3|70|192";
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbPolyFaceMeshVertex>(corner)), corner);
    const std::string old = "70|192|10|1|20|2|30|3"; // of R12, without markers
    kinds::expectPoint(kinds::made<AcDbPolyFaceMeshVertex>(old)->position(), {1, 2, 3});
    const std::string wrong = "100|AcDbPolyFaceMesh|70|64|71|2|72|1";
    const auto mesh = kinds::made<AcDbPolyFaceMesh>(wrong);
    mesh->appendFaceRecord(new AcDbFaceRecord(1, -32768, 32767, 5));
    EXPECT_TRUE(mesh->wires().edges.empty());
    AcDbExtents box;
    EXPECT_EQ(mesh->getGeomExtents(box), Acad::eInvalidExtents);
}

TEST(Meshes, InADrawingTheyMoveWithTheirVerticesAndCopiesHaveTheirOwn) {
    AcDbDatabase drawing;
    auto mesh = cube();
    AcDbObjectId id;
    {
        AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
        ASSERT_EQ(space->appendAcDbEntity(id, mesh.get()), Acad::eOk);
        mesh.release()->close();
    }
    AcDbObjectPointer<AcDbPolyFaceMesh> open(id, AcDb::kForWrite);
    const std::unique_ptr<AcDbPolyFaceMesh> copy(
        AcDbPolyFaceMesh::cast(static_cast<AcDbObject*>(open->clone())));
    ASSERT_EQ(open->transformBy(AcGeMatrix3d::translation({5, 0, 0}) * AcGeMatrix3d::scaling(2)), Acad::eOk);
    kinds::expectBox(kinds::boxOf(*open.object()), {5, 0, 0}, {7, 2, 2});
    kinds::expectBox(kinds::boxOf(*copy), {0, 0, 0}, {1, 1, 1});
    EXPECT_EQ(copy->wires().edges.size(), 12u);
}
