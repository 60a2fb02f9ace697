// A big cloud stored in slice order: every point has one place, a run of
// slices is one range and an even sample of a scan, and the cloud still
// answers in the host's numbering (colours, points back, picking).
#include <gtest/gtest.h>

#include <algorithm>
#include <osgViewer/Viewer>
#include <vector>

#include "OSGDataManager.h"
#include "OSGPointCloud.h"
#include "PointPicker.h"
#include "QelPointCloud.h"
#include "RenderTestScene.h"
#include "SliceOrder.h"

namespace {

// A scan of 'width' columns: point i at (column, row), its colour from i.
QelPointCloud scanOf(int width, int rows, bool coloured) {
    const int n = width * rows;
    QelVector3dArray points(n);
    QelColorArray colours;
    if (coloured) colours.Create(n, 3);
    for (int i = 0; i < n; ++i) {
        points[i] = QelVector3d(float(i % width), float(i / width), float(i % 13));
        if (coloured) {
            unsigned char* c = colours.Data() + 3 * size_t(i);
            c[0] = static_cast<unsigned char>(i % 256);
            c[1] = static_cast<unsigned char>((i / 256) % 256);
            c[2] = static_cast<unsigned char>(i % 7);
        }
    }
    QelPointCloud cloud;
    cloud.SetPoints(points);
    if (coloured) cloud.SetColors(colours);
    return cloud;
}

}  // namespace

TEST(SliceOrder, EveryPointHasOnePlaceAndComesBack) {
    EXPECT_TRUE(SliceOrder(SliceOrder::kFrom - 1).isIdentity());
    EXPECT_EQ(SliceOrder(SliceOrder::kFrom - 1).positionOf(777), 777u);
    for (size_t n : {SliceOrder::kFrom, size_t(1000003)}) {
        const SliceOrder order(n);
        ASSERT_FALSE(order.isIdentity());
        std::vector<char> taken(n, 0);
        for (size_t i = 0; i < n; ++i) {
            const size_t at = order.positionOf(i);
            ASSERT_LT(at, n);
            ASSERT_FALSE(taken[at]) << "point " << i << " shares place " << at;
            taken[at] = 1;
            ASSERT_EQ(order.pointAt(at), i);
        }
        // A second thread starting anywhere puts the points where one would.
        const size_t half = n / 2 + 13;
        order.forEach(half, n, [&](size_t i, size_t at) { ASSERT_EQ(at, order.positionOf(i)); });
    }
}

TEST(SliceOrder, EveryRunOfSlicesIsOneRangeAndAnEvenSampleOfAScan) {
    // 2,048 columns: a width that any power-of-two interleave would sample
    // as whole columns.
    const size_t width = 2048, rows = 600, n = width * rows;
    const SliceOrder order(n);
    for (unsigned int k : {2u, 7u, order.fineSlices()}) {
        size_t end = 0;
        for (unsigned int j = 0; j < k; ++j) {
            const auto [first, last] = order.range(k, j, j + 1);
            ASSERT_EQ(first, end) << "slice " << j << " of " << k;
            ASSERT_GT(last, first);
            end = last;
        }
        EXPECT_EQ(end, n);
        EXPECT_EQ(order.range(k, 0, k), std::make_pair(size_t(0), n));
    }
    // The first slice of 7 and the first fine slice alone: over tiles of
    // 64 columns by 50 rows, every tile holds its share within a tenth.
    for (unsigned int k : {7u, order.fineSlices()}) {
        const auto [first, last] = order.range(k, 0, 1);
        std::vector<int> tiles((width / 64) * (rows / 50), 0);
        for (size_t at = first; at < last; ++at) {
            const size_t i = order.pointAt(at);
            ++tiles[(i / width / 50) * (width / 64) + (i % width) / 64];
        }
        const double share = double(last - first) / tiles.size();
        const auto [few, many] = std::minmax_element(tiles.begin(), tiles.end());
        EXPECT_GT(*few, 0.9 * share) << "slice 1 of " << k;
        EXPECT_LT(*many, 1.1 * share) << "slice 1 of " << k;
    }
}

TEST(SliceOrder, ABigCloudAnswersInTheHostsNumbering) {
    const int width = 500, rows = 400;  // 200,000 points: stored in slice order
    const QelPointCloud cloud = scanOf(width, rows, true);
    auto view = makeView(300, 300);
    const long id = view->content().addPointCloud(cloud);
    ASSERT_GE(id, 1);
    auto& object = *static_cast<OSGPointCloud*>(view->content().registry().find(id));
    ASSERT_FALSE(object.order().isIdentity());
    object.setUseHeightColours(false);  // its own colours

    const QelVector3dArray back = object.points();
    for (int i : {0, 1, 4999, 123457, width * rows - 1}) {
        EXPECT_EQ(back[i].x, cloud[i].x) << i;
        EXPECT_EQ(back[i].y, cloud[i].y) << i;
        const QelColor c = cloud.DeepCopyColors()[i];
        EXPECT_EQ(object.colourAt(size_t(i)),
                  osg::Vec4(c.r / 255.0f, c.g / 255.0f, c.b / 255.0f, 1))
            << i;
    }
    // The drawn vertices carry their own points' colours.
    for (size_t at : {size_t(0), size_t(99999), size_t(width * rows - 1)}) {
        const size_t i = object.pointIndexOf(at);
        EXPECT_EQ((*object.vertexArray())[at],
                  osg::Vec3(cloud[int(i)].x, cloud[int(i)].y, cloud[int(i)].z));
    }

    // A click on a point names its index as the host gave it.
    view->grabFrame();
    osg::Camera& camera = *view->osgWidget()->viewer()->getCamera();
    const int marker = 211 * width + 317;
    const QelVector3d p = cloud[marker];
    const osg::Vec3d at = osg::Vec3d(p.x, p.y, p.z) * camera.getViewMatrix() *
                          camera.getProjectionMatrix() *
                          camera.getViewport()->computeWindowMatrix();
    PickHit hit;
    ASSERT_TRUE(PointPicker::pick(camera, *view->root(), at.x(), at.y(), &hit, nullptr,
                                  &view->content().registry()));
    EXPECT_EQ(hit.object, id);
    const QelVector3d picked = cloud[int(hit.element)];
    EXPECT_NEAR(picked.x, hit.position.x(), 1e-4);
    EXPECT_NEAR(picked.y, hit.position.y(), 1e-4);
    EXPECT_NEAR(picked.z, hit.position.z(), 1e-4);

    // Slices 1 and 2 of 5 draw one range: the points of those slices only.
    object.setDrawSlices(5, 1, 3);
    const auto [first, last] = object.order().range(5, 1, 3);
    EXPECT_EQ(object.drawnCount(), last - first);
    const auto* drawn = dynamic_cast<osg::DrawArrays*>(object.geometry()->getPrimitiveSet(0));
    ASSERT_NE(drawn, nullptr);
    EXPECT_EQ(size_t(drawn->getFirst()), first);
}
