// The view's render-object operations: ids, replacement, removal by kind
// and the info texts. What the picture shows is the API's display tests'.
#include <gtest/gtest.h>

#include "../render/RenderTestScene.h"
#include "OSGDataManager.h"
#include "ObjectIdCounter.h"
#include "QelPointCloud.h"
#include "QelRangeImage.h"
#include "QelTriangleMesh.h"

namespace {

QelPointCloud gridCloud(float z0, float z1) {
    QelVector3dArray pts;
    for (int i = -20; i <= 20; ++i)
        for (int j = -20; j <= 20; ++j)
            pts.Append(QelVector3d(i * 0.2f, j * 0.2f, z0 + (z1 - z0) * (j + 20) / 40.0f));
    QelPointCloud cloud;
    cloud.SetPoints(pts);
    return cloud;
}

QelTriangleMesh triangle() {
    QelVector3dArray v(3);
    v[0] = QelVector3d(0, 0, 0);
    v[1] = QelVector3d(1, 0, 0);
    v[2] = QelVector3d(0, 1, 0);
    QelTriangleMesh mesh;
    mesh.SetVertices(v);
    Qel3DIntArray idx;
    idx.SetSize(3);
    idx[1] = 1;
    idx[2] = 2;
    mesh.SetTriangles(idx);
    return mesh;
}

}  // namespace

TEST(ViewObjects, IdsInfoTextsAndRemoval) {
    GLViewer view;
    const long first = view.content().addPointCloud(gridCloud(0, 1));
    ASSERT_GE(first, 1);
    EXPECT_EQ(view.content().infoText(),
              QStringList{"  Data Type: Point Cloud \t Number of Points: 1681"});
    const long mesh = view.content().addTriangleMesh(triangle());
    EXPECT_EQ(mesh, first + 1);
    EXPECT_TRUE(view.content().infoText().first().contains("Number of Faces: 1"));
    QelRangeImage img;
    img.SetSize(4, 3, QEL_16U);
    const unsigned short ones[12] = {5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5};
    img.SetValue(ones, 12, 1, 0, 0, 0);
    view.content().setSamplingRatio(1);  // the automatic step would sample 4 x 3 pixels to nothing
    const long range = view.content().addRangeImage(img);
    ASSERT_GE(range, 1);
    EXPECT_EQ(view.content().infoText().size(), 2);
    EXPECT_TRUE(view.content().infoText().at(1).endsWith("16U"));
    EXPECT_EQ(view.content().registry().count(), 3);

    EXPECT_EQ(view.content().clearRenderObject(9999), 11100022);
    EXPECT_TRUE(view.content().infoText().at(1).endsWith("16U"))
        << "a failed removal changes nothing";
    EXPECT_EQ(view.content().clearAllPointClouds(), 0);
    EXPECT_EQ(view.content().infoText(), QStringList{"Clear Point Cloud"});
    EXPECT_EQ(view.content().clearAllPointClouds(), 0) << "nothing left of the kind is fine";
    EXPECT_EQ(view.content().registry().count(), 2);
    EXPECT_EQ(view.content().clearRenderObject(mesh), 0);
    EXPECT_EQ(view.content().clearRenderObject(range), 0);
    EXPECT_EQ(view.content().infoText(), QStringList{QString()})
        << "the last one gone: an empty line";

    // Replacing keeps nothing of before, and still numbers on.
    view.content().addPointCloud(gridCloud(0, 1));
    const long replaced = view.content().addRangeImage(img, true);
    ASSERT_EQ(view.content().registry().count(), 1);
    EXPECT_EQ(view.content().registry().at(0)->id(), replaced);
    EXPECT_EQ(ObjectIdCounter::peek(), replaced + 1);
}
