// The point cloud render object: vertices, height range, colours, and that
// it draws through the real path.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <osg/BlendFunc>

#include "../render/RenderTestScene.h"
#include "ColorMapIndex.h"
#include "OSGPointCloud.h"
#include "QelPointCloud.h"

namespace {

QelPointCloud cloudOf(std::initializer_list<QelVector3d> points) {
    QelVector3dArray a;
    for (const QelVector3d& p : points)
        a.Append(p);
    QelPointCloud cloud;
    cloud.SetPoints(a);
    return cloud;
}

void expectColour(const osg::Vec4& c, float r, float g, float b) {
    EXPECT_NEAR(c.r(), r, 1e-6);
    EXPECT_NEAR(c.g(), g, 1e-6);
    EXPECT_NEAR(c.b(), b, 1e-6);
}

}  // namespace

TEST(PointCloudObject, InvalidPointsKeepTheirSlot) {
    OSGPointCloud obj(cloudOf({{0, 0, 1}, {1, 0, 4}, {2, 2, FLT_MAX}, {3, 0, -2}, {4, 0, NAN}}),
                      RenderMode::Points, 7, true);
    ASSERT_EQ(obj.isValid(), 1);
    ASSERT_EQ(obj.vertexArray()->size(), 5u);
    EXPECT_EQ((*obj.vertexArray())[2], osg::Vec3(0, 0, 0));
    EXPECT_EQ((*obj.vertexArray())[4], osg::Vec3(0, 0, 0));
    EXPECT_EQ(obj.minZ(), -2.0);
    EXPECT_EQ(obj.maxZ(), 4.0);
    EXPECT_EQ(obj.kind(), ObjectKind::PointCloud);
    EXPECT_EQ(obj.id(), 7);
    // The points come back as given, invalid ones included.
    const QelVector3dArray back = obj.points();
    ASSERT_EQ(back.Length(), 5);
    EXPECT_EQ(back[1].z, 4.0f);
    EXPECT_EQ(back[2].z, FLT_MAX);
    EXPECT_TRUE(std::isnan(back[4].z));
    EXPECT_EQ(back[4].x, 4.0f);

    // A big cloud is scanned in two halves: invalid points in both, the
    // extremes in the second.
    const int n = 300001;
    QelVector3dArray many(n);
    for (int i = 0; i < n; ++i)
        many[i] = QelVector3d(float(i % 100), float(i / 100), float(i % 7));
    many[5] = QelVector3d(1, 2, INFINITY);
    many[n - 3] = QelVector3d(NAN, 0, 1);
    many[n - 2] = QelVector3d(-50, 9, 20);
    QelPointCloud big;
    big.SetPoints(many);
    OSGPointCloud bigObj(big, RenderMode::Points, 9, true);
    EXPECT_EQ(bigObj.minZ(), 0.0);
    EXPECT_EQ(bigObj.maxZ(), 20.0);
    const osg::BoundingBox box = bigObj.geometry()->getBoundingBox();
    EXPECT_EQ(box.xMin(), -50.0f);
    EXPECT_EQ(box.yMax(), float((n - 1) / 100));
    EXPECT_EQ((*bigObj.vertexArray())[bigObj.order().positionOf(n - 3)], osg::Vec3(0, 0, 0));
    const QelVector3dArray bigBack = bigObj.points();
    EXPECT_TRUE(std::isinf(bigBack[5].z));
    EXPECT_TRUE(std::isnan(bigBack[n - 3].x));
    EXPECT_EQ(bigBack[n - 2].x, -50.0f);
    EXPECT_EQ(bigBack[1234].y, 12.0f);

    OSGPointCloud empty(QelPointCloud(), RenderMode::Points, 8, true);
    EXPECT_EQ(empty.isValid(), 0);
    EXPECT_EQ(empty.geometry()->getNumPrimitiveSets(), 0u);
}

TEST(PointCloudObject, HeightColoursUseFixedEndsAndTheInvertedTable) {
    OSGPointCloud flat(cloudOf({{0, 0, 2}, {1, 1, 2}}), RenderMode::Points, 1, true);
    flat.applyDefaultColours();
    expectColour(flat.colourAt(0), 0, 0, 1);  // span 100, t = 0: blue

    ColorMapIndex::set(0);  // grey: white at position 0, unlike the red above the range
    OSGPointCloud obj(cloudOf({{0, 0, 0}, {1, 0, 10}, {2, 0, 5}}), RenderMode::Points, 2, true);
    obj.applyColourMap(0.0, 10.0);
    expectColour(obj.colourAt(0), 0, 0, 1);
    expectColour(obj.colourAt(1), 1, 1, 1);  // t = 1 looks up position 0
    obj.applyColourMap(0.0, 9.0);
    expectColour(obj.colourAt(1), 1, 0, 0);  // above the range: red
    ColorMapIndex::set(9);                   // ignored
    EXPECT_EQ(ColorMapIndex::current(), 0);
    ColorMapIndex::set(5);

    OSGPointCloud allInvalid(cloudOf({{0, 0, FLT_MAX}, {1, 0, FLT_MAX}}), RenderMode::Points, 3,
                             true);
    allInvalid.applyDefaultColours();
    expectColour(allInvalid.colourAt(1), 0, 0, 1);
}

TEST(PointCloudObject, OwnColoursAndExplicitColours) {
    QelPointCloud cloud = cloudOf({{0, 0, 0}, {1, 0, 1}});
    QelColorArray own;
    own.Create(2, 3);
    own.Data()[3] = 255;  // second point red
    cloud.SetColors(own);
    OSGPointCloud obj(cloud, RenderMode::Points, 1, false);
    obj.applyDefaultColours();
    expectColour(obj.colourAt(1), 1, 0, 0);
    obj.setUseHeightColours(true);
    expectColour(obj.colourAt(1), 1, 0, 0);  // the top of the range is red in table 5
    expectColour(obj.colourAt(0), 0, 0, 1);

    QelColorArray three;
    three.Create(3, 4);
    EXPECT_FALSE(obj.setColors(three));
    EXPECT_EQ(obj.colourCount(), 2u);

    QelColorArray one;
    one.Create(1, 4);
    one.Data()[3] = 128;
    ASSERT_TRUE(obj.setColors(one));
    EXPECT_EQ(obj.geometry()->getColorArray()->getBinding(), osg::Array::BIND_OVERALL);
    const osg::StateSet* ss = obj.geometry()->getStateSet();
    EXPECT_EQ(ss->getRenderingHint(), osg::StateSet::TRANSPARENT_BIN);
    EXPECT_NE(ss->getAttribute(osg::StateAttribute::BLENDFUNC), nullptr);
}

TEST(PointCloudObject, DrawsWhereItsMatrixPutsIt) {
    auto view = makeView(100, 100, 20.0);
    view->light().setLightState(false);
    QelVector3dArray pts;
    for (int i = -10; i <= 10; ++i)
        for (int j = -10; j <= 10; ++j)
            pts.Append(QelVector3d(i * 0.1f, j * 0.1f, 0));
    QelPointCloud cloud;
    cloud.SetPoints(pts);
    OSGPointCloud obj(cloud, RenderMode::Points, 1, true);
    obj.applyDefaultColours();
    obj.setPointSize(3.0f);
    view->content().dataGroup()->addChild(obj.node());
    QImage image = view->grabFrame();
    keepImage(image, "point-cloud-object");
    EXPECT_GT(countUnlike(image.copy(40, 40, 20, 20), Qt::black), 100);
    obj.setMatrix(osg::Matrix::translate(3, 0, 0));
    image = view->grabFrame();
    EXPECT_EQ(countUnlike(image.copy(40, 40, 20, 20), Qt::black), 0) << "moved off the centre";
    EXPECT_GT(countUnlike(image, Qt::black), 100);
    view->content().dataGroup()->removeChild(obj.node());
}

TEST(PointCloudObject, BoundsComeFromTheVertexPassAndStayWhileThinned) {
    // Invalid points sit at the origin and count; valid ones lie at x >= 1.
    OSGPointCloud obj(cloudOf({{1, 1, 1}, {2, 3, 4}, {5, 5, FLT_MAX}, {3, 2, -2}, {4, 4, NAN}}),
                      RenderMode::Points, 1, true);
    const osg::BoundingBox expected(0, 0, -2, 3, 3, 4);
    EXPECT_EQ(obj.geometry()->getBoundingBox()._min, expected._min);
    EXPECT_EQ(obj.geometry()->getBoundingBox()._max, expected._max);
    obj.setDrawBudget(2);
    EXPECT_EQ(obj.geometry()->getBoundingBox()._max, expected._max)
        << "every point, not the sample";

    OSGPointCloud valid(cloudOf({{1, 1, 1}, {2, 3, 4}}), RenderMode::Points, 2, true);
    EXPECT_EQ(valid.geometry()->getBoundingBox()._min, osg::Vec3(1, 1, 1));
}

TEST(PointCloudObject, ABigCloudIsColouredLikeASmallOne) {
    // Both clouds span the same heights, repeated every 1,000 points; the
    // big one is coloured in two halves at once.
    auto cloudOfLength = [](int n) {
        QelVector3dArray points(n);
        for (int i = 0; i < n; ++i)
            points[i] = QelVector3d(float(i % 997), float(i / 997), 0.001f * (i % 1000));
        QelPointCloud cloud;
        cloud.SetPoints(points);
        return cloud;
    };
    const int small = 1000 * 100, big = 1000 * 700;
    OSGPointCloud few(cloudOfLength(small), RenderMode::Points, 1, true),
        many(cloudOfLength(big), RenderMode::Points, 2, true);
    few.applyDefaultColours();
    many.applyDefaultColours();
    ASSERT_EQ(many.colourCount(), size_t(big));
    for (int i = 0; i < big; i += 7)
        ASSERT_EQ(many.colourAt(size_t(i)), few.colourAt(size_t(i % small))) << i;
    EXPECT_EQ(many.colourAt(size_t(big - 1)), few.colourAt(size_t(small - 1)));
}
