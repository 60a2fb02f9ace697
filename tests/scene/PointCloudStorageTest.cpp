// How a point cloud holds its data: colours as normalised bytes must draw
// what float colours draw; displaying a cloud over one of the same length
// builds it into the old cloud's storage, and the result must be what a
// cloud built afresh would be, while a refused display leaves the old
// cloud untouched.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>

#include "../render/RenderTestScene.h"
#include "OSGDataManager.h"
#include "OSGPointCloud.h"
#include "ObjectIdCounter.h"
#include "QelMatrix4.h"
#include "QelPointCloud.h"

namespace {

// A 41 x 41 grid sloping from z0 to z1, with an invalid marker and a NaN
// point when 'holes' is set.
QelPointCloud slope(float z0, float z1, bool holes) {
    QelVector3dArray pts;
    for (int i = -20; i <= 20; ++i)
        for (int j = -20; j <= 20; ++j)
            pts.Append(QelVector3d(i * 0.2f, j * 0.2f, z0 + (z1 - z0) * (j + 20) / 40.0f));
    if (holes) {
        pts[7].z = FLT_MAX;
        pts[300].x = std::nanf("");
    }
    QelPointCloud cloud;
    cloud.SetPoints(pts);
    return cloud;
}

std::unique_ptr<GLViewer> whiteView() {
    auto view = makeView(160, 160, 20.0);
    view->light().setLightState(false);
    view->decorations().setBackgroundColor(255, 255, 255, 255);
    return view;
}

OSGPointCloud& only(const GLViewer& view) {
    EXPECT_EQ(view.content().registry().count(), 1);
    return *static_cast<OSGPointCloud*>(view.content().registry().at(0));
}

// Everything a host or a frame can see of a cloud, compared with a cloud
// built afresh from the same points.
void expectSameObject(const OSGPointCloud& a, const OSGPointCloud& b) {
    ASSERT_EQ(a.vertexArray()->size(), b.vertexArray()->size());
    for (size_t i = 0; i < a.vertexArray()->size(); ++i)
        ASSERT_EQ((*a.vertexArray())[i], (*b.vertexArray())[i]) << "vertex " << i;
    ASSERT_EQ(a.colourCount(), b.colourCount());
    for (size_t i = 0; i < a.colourCount(); ++i)
        ASSERT_EQ(a.colourAt(i), b.colourAt(i)) << "colour " << i;
    EXPECT_EQ(a.geometry()->getColorArray()->getBinding(),
              b.geometry()->getColorArray()->getBinding());
    EXPECT_EQ(a.minZ(), b.minZ());
    EXPECT_EQ(a.maxZ(), b.maxZ());
    EXPECT_EQ(a.transform()->getMatrix(), b.transform()->getMatrix());
    EXPECT_EQ(a.node()->getNodeMask(), b.node()->getNodeMask());
    EXPECT_EQ(a.pointSize(), b.pointSize());
    EXPECT_EQ(a.geometry()->getOrCreateStateSet()->getRenderingHint(),
              b.geometry()->getOrCreateStateSet()->getRenderingHint());
    EXPECT_EQ(a.points().Length(), b.points().Length());
    EXPECT_EQ(a.points()[299].z, b.points()[299].z);
    EXPECT_EQ(a.drawnCount(), b.drawnCount());
}

}  // namespace

TEST(PointCloudStorage, ByteColoursDrawWhatFloatColoursDraw) {
    QelPointCloud own = slope(-1, 3, true);
    QelColorArray colours;
    colours.Create(own.Length(), 4);
    for (int i = 0; i < own.Length(); ++i) {
        unsigned char* c = colours.Data() + 4 * i;
        c[0] = static_cast<unsigned char>(i * 7);
        c[1] = static_cast<unsigned char>(255 - i * 3);
        c[2] = static_cast<unsigned char>(i * 13);
        c[3] = i % 5 ? 255 : 100;  // some points see-through
    }
    own.SetColors(colours);
    for (const bool light : {true, false})
        for (const bool ownColours : {false, true}) {
            auto bytes = whiteView(), floats = whiteView();
            for (GLViewer* view : {bytes.get(), floats.get()}) {
                view->light().setLightState(light);
                view->content().setPointSize(view->content().addPointCloud(own), 3.0f);
                if (ownColours) view->content().setColours(only(*view).id(), colours);
            }
            OSGPointCloud& drawn = only(*bytes);
            ASSERT_NE(dynamic_cast<const osg::Vec4ubArray*>(drawn.geometry()->getColorArray()),
                      nullptr);
            // The same colours handed to the other view as floats.
            OSGPointCloud& reference = only(*floats);
            osg::ref_ptr<osg::Vec4Array> asFloats = new osg::Vec4Array;
            for (size_t i = 0; i < reference.colourCount(); ++i)
                asFloats->push_back(reference.colourAt(i));
            reference.geometry()->setColorArray(asFloats, osg::Array::BIND_PER_VERTEX);
            const QImage picture = bytes->grabFrame();
            keepImage(picture, ownColours ? "storage-own-colours" : "storage-height-colours");
            EXPECT_GT(countUnlike(picture, Qt::white), 1000);
            EXPECT_EQ(differingPixels(picture, floats->grabFrame(), 1), 0)
                << "light " << light << ", own colours " << ownColours;
        }
}

TEST(PointCloudStorage, BuildsIntoTheOldStorageAndMatchesARebuild) {
    auto reused = whiteView(), fresh = whiteView();
    const long old = reused->content().addPointCloud(slope(0, 1, false), true);
    reused->grabFrame();  // the old cloud's arrays reach their buffer object
    // Everything a host may have changed on the old cloud.
    QelMatrix4 shift;
    shift.SetValue(0, 3, 2.0);
    ASSERT_EQ(reused->content().setModelMatrix(old, shift), 0);
    QelColorArray halfGreen;
    halfGreen.Create(1, 4);
    halfGreen.Data()[1] = 255;
    halfGreen.Data()[3] = 128;
    ASSERT_EQ(reused->content().setColours(old, halfGreen), 0);
    ASSERT_EQ(reused->content().setPointSize(old, 6.0f), 0);
    ASSERT_EQ(reused->content().setVisible(old, false), 0);
    const osg::Vec3Array* storage = only(*reused).vertexArray();

    const QelPointCloud next = slope(-1, 3, true);
    const long id = reused->content().addPointCloud(next, true);
    EXPECT_EQ(id, old + 1);
    EXPECT_EQ(only(*reused).id(), id);
    EXPECT_EQ(only(*reused).vertexArray(), storage) << "built in place";
    EXPECT_EQ((*storage)[7], osg::Vec3(0, 0, 0)) << "an invalid point keeps its slot at the origin";

    fresh->content().addPointCloud(next, true);
    expectSameObject(only(*reused), only(*fresh));
    const QImage picture = reused->grabFrame();
    keepImage(picture, "replace-in-place");
    EXPECT_GT(countUnlike(picture, Qt::white), 1000);
    EXPECT_EQ(differingPixels(picture, fresh->grabFrame()), 0);

    // Replaced in place again (its colours now also in place), and then by a
    // cloud of another length, which is built afresh.
    reused->content().addPointCloud(slope(0, 1, false), true);
    fresh->content().addPointCloud(slope(0, 1, false), true);
    expectSameObject(only(*reused), only(*fresh));
    EXPECT_EQ(differingPixels(reused->grabFrame(), fresh->grabFrame()), 0);
    QelPointCloud shorter = slope(0, 1, false);
    QelVector3dArray fewer = shorter.DeepCopyPoints();
    fewer.SetSize(100);
    shorter.SetPoints(fewer);
    reused->content().addPointCloud(shorter, true);
    EXPECT_NE(only(*reused).vertexArray(), storage);
    EXPECT_EQ(only(*reused).vertexArray()->size(), 100u);
}

TEST(PointCloudStorage, RefusedReplacementLeavesTheOldCloud) {
    auto view = whiteView();
    const QelPointCloud first = slope(0, 1, false);
    const long id = view->content().addPointCloud(first, true);
    const QImage before = view->grabFrame();
    const osg::ref_ptr<osg::Vec3Array> kept =
        new osg::Vec3Array(*only(*view).vertexArray(), osg::CopyOp::DEEP_COPY_ALL);

    QelPointCloud far = slope(0, 1, false);
    QelVector3dArray pts = far.DeepCopyPoints();
    pts[pts.Length() - 1].y = 1e38f;
    far.SetPoints(pts);
    EXPECT_EQ(view->content().addPointCloud(far, true), 11501006);

    EXPECT_EQ(only(*view).id(), id);
    for (size_t i = 0; i < kept->size(); ++i)
        ASSERT_EQ((*only(*view).vertexArray())[i], (*kept)[i]) << "vertex " << i;
    EXPECT_EQ(only(*view).points()[pts.Length() - 1].y, first[pts.Length() - 1].y);
    EXPECT_EQ(differingPixels(view->grabFrame(), before), 0);
}
