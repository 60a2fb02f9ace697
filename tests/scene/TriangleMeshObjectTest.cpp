// The triangle mesh render object: primitives per render mode, the cached
// triangles, own colours and refused indices.
#include <gtest/gtest.h>

#include <cfloat>
#include <osg/PolygonMode>

#include "../render/RenderTestScene.h"
#include "OSGTriangleMesh.h"

namespace {

QelTriangleMesh squareMesh(std::vector<int> triangles, bool colours = false) {
    QelVector3dArray v(5);
    v[0] = QelVector3d(-1, -1, 0);
    v[1] = QelVector3d(1, -1, 0);
    v[2] = QelVector3d(1, 1, 2);
    v[3] = QelVector3d(-1, 1, 0);  // v[4] stays invalid
    QelTriangleMesh mesh;
    mesh.SetVertices(v);
    Qel3DIntArray idx;
    idx.SetSize(static_cast<int>(triangles.size()));
    std::copy(triangles.begin(), triangles.end(), idx.Data());
    mesh.SetTriangles(idx);
    if (colours) {
        QelColorArray c;
        c.Create(5, 3);
        for (int i = 0; i < 5; ++i)
            c.Data()[3 * i + 1] = 255;
        mesh.SetVertexColors(c);
    }
    return mesh;
}

osg::PolygonMode::Mode polygonMode(const OSGTriangleMesh& m) {
    auto* pm = dynamic_cast<const osg::PolygonMode*>(
        m.geometry()->getStateSet()->getAttribute(osg::StateAttribute::POLYGONMODE));
    return pm ? pm->getMode(osg::PolygonMode::FRONT) : osg::PolygonMode::POINT;
}

}  // namespace

TEST(TriangleMeshObject, ModesSwitchAndReuseTheTriangles) {
    OSGTriangleMesh mesh(squareMesh({0, 1, 2, 0, 2, 3, 0, 9, 1, 0, 4, 1}), RenderMode::Faces, 5);
    ASSERT_EQ(mesh.isValid(), 1);
    EXPECT_EQ(mesh.kind(), ObjectKind::TriangleMesh);
    osg::DrawElementsUInt* triangles = mesh.triangles();
    ASSERT_NE(triangles, nullptr);
    EXPECT_EQ(triangles->size(), 6u) << "out-of-range and invalid-vertex triangles dropped";
    EXPECT_EQ(polygonMode(mesh), osg::PolygonMode::FILL);
    EXPECT_EQ(mesh.maxZ(), 2.0);

    mesh.setRenderMode(RenderMode::Points);
    EXPECT_EQ(mesh.geometry()->getPrimitiveSet(0)->getMode(), GLenum(GL_POINTS));
    EXPECT_EQ(mesh.geometry()->getPrimitiveSet(0)->getNumIndices(), 5u);
    mesh.setRenderMode(RenderMode::Wireframe);
    EXPECT_EQ(mesh.geometry()->getPrimitiveSet(0), triangles) << "built once, reused";
    EXPECT_EQ(polygonMode(mesh), osg::PolygonMode::LINE);
    mesh.setRenderMode(RenderMode::Faces);
    EXPECT_EQ(polygonMode(mesh), osg::PolygonMode::FILL);
}

TEST(TriangleMeshObject, NoTrianglesDrawsNothingUntilPoints) {
    OSGTriangleMesh mesh(squareMesh({}), RenderMode::Faces, 1);
    EXPECT_EQ(mesh.geometry()->getPrimitiveSet(0)->getNumIndices(), 0u);
    mesh.setRenderMode(RenderMode::Points);
    EXPECT_EQ(mesh.geometry()->getPrimitiveSet(0)->getNumIndices(), 5u);
}

TEST(TriangleMeshObject, OwnColoursAreKeptAndDrawn) {
    auto view = makeView(100, 100, 8.0);
    view->light().setLightState(false);
    OSGTriangleMesh mesh(squareMesh({0, 1, 2, 0, 2, 3}, true), RenderMode::Faces, 1);
    mesh.applyDefaultColours();  // locked: the mesh's own green stays
    ASSERT_EQ(mesh.colorArray()->size(), 5u);
    EXPECT_EQ((*mesh.colorArray())[0], osg::Vec4(0, 1, 0, 1));
    view->content().dataGroup()->addChild(mesh.node());
    const QImage image = view->grabFrame();
    keepImage(image, "mesh-object");
    EXPECT_EQ(image.pixelColor(50, 50), QColor(0, 255, 0));
    view->content().dataGroup()->removeChild(mesh.node());
}
