// The range image render object: sample types and markers, decimation,
// the row-to-x transposition, triangles, normals and colours.
#include <gtest/gtest.h>

#include <cfloat>
#include <cstring>

#include "../RangeImageSamples.h"
#include "../render/RenderTestScene.h"
#include "ColorMapIndex.h"
#include "OSGRangeImage.h"
#include "QelLOD.h"

namespace {

size_t triangleIndices(const OSGRangeImage& obj) {
    return obj.levelGeometry(0)->getPrimitiveSet(0)->getNumIndices();
}

}  // namespace

TEST(RangeImageObject, EverySampleTypeSkipsItsMarker) {
    for (int type = QEL_8U; type <= QEL_64F; ++type) {
        OSGRangeImage obj(imageOf(type, 3, 3, 7, {4}), RenderMode::Faces, 1, 1, true);
        ASSERT_EQ(obj.isValid(), 1) << type;
        EXPECT_EQ(obj.vertexArray()->size(), 8u) << "type " << type;
        // Of the grid's 8 triangles, the 6 that use the centre are gone.
        EXPECT_EQ(triangleIndices(obj), 6u) << "type " << type;
        EXPECT_EQ(obj.maxZ(), 7.0) << type;
    }
    OSGRangeImage zeros(imageOf(QEL_16U, 4, 4, 0), RenderMode::Faces, 1, 1, true);
    EXPECT_EQ(zeros.vertexArray()->size(), 0u);
    EXPECT_EQ(triangleIndices(zeros), 0u);
}

TEST(RangeImageObject, DecimationSteps) {
    OSGRangeImage automatic(imageOf(QEL_8U, 1000, 1000, 1), RenderMode::Points, 1, 0, true);
    EXPECT_EQ(automatic.levelImage(0).Width(), 250);
    EXPECT_EQ(automatic.levelImage(0).Height(), 250);
    EXPECT_EQ(automatic.vertexArray()->size(), 250u * 250u);
    OSGRangeImage two(imageOf(QEL_8U, 2000, 2000, 1), RenderMode::Points, 2, 2, true);
    EXPECT_EQ(two.levelImage(0).Width(), 1000);
    EXPECT_FLOAT_EQ(two.lod().switchDistance(), 2.0f * std::sqrt(2.0f) * 2000.0f);
}

TEST(RangeImageObject, RowsFeedXAndHolesRemoveTheirTriangles) {
    QelRangeImage img = imageOf(QEL_16U, 6, 5, 100, {2 * 6 + 3});  // hole at row 2, column 3
    img.SetInfo(0.5, 0.25, 0.1, 0, 0, 100);                        // resolution x, y, z, offsets
    OSGRangeImage obj(img, RenderMode::Faces, 1, 1, true);
    const osg::Vec3Array& v = *obj.vertexArray();
    ASSERT_EQ(v.size(), 29u);
    // Row 1, column 4 is vertex 1 * 6 + 4: x from the row, y from the column.
    EXPECT_EQ(v[10], osg::Vec3(1 * 0.25f, 4 * 0.5f, 0.0f));
    // A full 6 x 5 grid has 2 * 5 * 4 triangles; the hole takes six.
    EXPECT_EQ(triangleIndices(obj), 3u * (40 - 6));
    // Its right neighbour has the hole on its left: the normal falls back.
    const osg::Vec3Array& n =
        *static_cast<const osg::Vec3Array*>(obj.levelGeometry(0)->getNormalArray());
    EXPECT_EQ(n[2 * 6 + 3], osg::Vec3(0, 0, 1));  // vertex of (2, 4) after the hole
}

TEST(RangeImageObject, ColourMapIsTableFiveAndColoursFollowVertices) {
    ColorMapIndex::set(0);
    QelRangeImage img = imageOf(QEL_32F, 2, 1, 0);
    reinterpret_cast<float*>(img.Data())[1] = 10.0f;
    OSGRangeImage obj(img, RenderMode::Points, 1, 1, true);
    EXPECT_EQ((*obj.colorArray())[1], osg::Vec4(1, 1, 1, 1))
        << "default colours use the grey table";
    obj.applyColourMap(0, 10);
    EXPECT_EQ((*obj.colorArray())[1], osg::Vec4(1, 0, 0, 1)) << "an explicit range uses table 5";
    ColorMapIndex::set(5);

    QelColorArray wrong;
    wrong.Create(3, 3);
    EXPECT_FALSE(obj.setColors(wrong));
    QelColorArray one;
    one.Create(1, 4);
    one.Data()[1] = 255;
    one.Data()[3] = 255;
    ASSERT_TRUE(obj.setColors(one));
    EXPECT_EQ(obj.colorArray()->size(), 1u);
}

TEST(RangeImageObject, DrawsASurface) {
    auto view = makeView(160, 160, 40.0);
    view->light().setLightState(true);
    QelRangeImage img = imageOf(QEL_16U, 40, 40, 1000, {820, 821, 860, 861});
    for (int r = 0; r < 40; ++r)
        for (int c = 0; c < 40; ++c) {
            auto* s = reinterpret_cast<unsigned short*>(img.Data()) + r * 40 + c;
            if (*s) *s = static_cast<unsigned short>(1000 + 20 * c);
        }
    img.SetInfo(0.5, 0.5, 0.01, 20, 20, 1000);
    OSGRangeImage obj(img, RenderMode::Faces, 1, 1, true);
    view->content().dataGroup()->addChild(obj.node());
    const QImage image = view->grabFrame();
    keepImage(image, "range-image-object");
    EXPECT_GT(countUnlike(image, Qt::black), 8000);
    view->content().dataGroup()->removeChild(obj.node());
}

// 16,777,219 rows: beyond single precision, where a float quotient rounds the
// level's row count up and the level builder and the colour decimation would
// read one row past the source (the sanitizer stage sees that read).
TEST(RangeImageObject, TallImagesKeepEveryLevelWithinTheSource) {
    const int rows = (1 << 24) + 3;
    QelRangeImage image;
    ASSERT_TRUE(image.SetSize(1, rows, QEL_16U));
    QelLOD lod(image);
    lod.setStep(1);
    std::vector<QelRangeImage> levels;
    std::vector<cv::Mat> columnMaps, rowMaps;
    ASSERT_EQ(lod.buildLevels(image, levels, columnMaps, rowMaps), 0);
    EXPECT_EQ(levels[0].Height(), rows);
    EXPECT_EQ(rowMaps[0].rows, rows);
    QelColorArray colours;
    ASSERT_TRUE(colours.SetSize(1, rows, 1));
    std::vector<QelColorArray> perLevel;
    lod.decimateColours(colours, perLevel);
    EXPECT_EQ(perLevel[0].Length(), rows);
}
