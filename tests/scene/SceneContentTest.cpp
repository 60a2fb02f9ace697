// What a view shows, without a view: one look-up for every id, changes that
// apply to some kinds of item and not others, and what each change tells
// the view.
#include <gtest/gtest.h>

#include "MeasurementGeometry.h"
#include "OSGData.h"
#include "OSGDataManager.h"
#include "Qel3DShape.h"
#include "QelColor.h"
#include "QelColorArray.h"
#include "QelMatrix4.h"
#include "QelPointCloud.h"
#include "QelVar.h"
#include "QelVector3d.h"
#include "QelVector3dArray.h"
#include "SceneContent.h"
#include "SceneItem.h"
#include "ShapeManager.h"
#include "StatusCodes.h"

namespace {

QelPointCloud threePoints() {
    QelVector3dArray points;
    for (float x : {0.0f, 1.0f, 2.0f})
        points.Append(QelVector3d(x, 0, x));
    QelPointCloud cloud;
    cloud.SetPoints(points);
    return cloud;
}

QelColorArray colours(int count, int channels) {
    QelColorArray array;
    array.Create(count, channels);
    for (int i = 0; i < count * channels; ++i)
        array.Data()[i] = static_cast<unsigned char>(10 * i);
    return array;
}

QelMatrix4 shiftX(double dx) {
    QelMatrix4 m;
    m.SetValue(0, 3, dx);
    return m;
}

struct Fixture {
    SceneContent content;
    long cloud = content.addPointCloud(threePoints());
    long shape = [this] {
        Qel3DShape box;
        box.Set3DBox(QelVector3d(0, 0, 0), QelVector3d(0, 0, 0), QelVector3d(1, 1, 1));
        return content.showShape(box);
    }();
    long text = content.addTextOverlay(QelVar(L"label"), QelVector3d(4, 5, 6), 2.0f,
                                       QelColor(255, 0, 0, 255));
};

}  // namespace

TEST(SceneContent, EveryIdIsFoundOnceWhateverItNames) {
    Fixture f;
    ASSERT_GE(f.cloud, 1);
    ASSERT_GT(f.shape, f.cloud);
    ASSERT_GT(f.text, f.shape);
    SceneContent& c = f.content;
    ASSERT_NE(c.find(f.cloud), nullptr);
    EXPECT_EQ(c.find(f.cloud)->itemId(), f.cloud);
    EXPECT_EQ(c.find(f.cloud), c.registry().find(f.cloud));
    EXPECT_EQ(c.find(f.shape)->itemId(), f.shape);
    EXPECT_EQ(c.find(f.text)->itemId(), f.text);
    EXPECT_EQ(c.find(f.text + 1), nullptr);
    EXPECT_EQ(c.find(-1), nullptr);
    EXPECT_EQ(c.find(0), nullptr);

    // Bounds in world coordinates: the cloud's box, the text's anchor.
    const osg::BoundingBox cloudBox = c.find(f.cloud)->itemBounds();
    EXPECT_FLOAT_EQ(cloudBox.xMax(), 2.0f);
    EXPECT_FLOAT_EQ(cloudBox.zMin(), 0.0f);
    EXPECT_EQ(c.find(f.text)->itemBounds().center(), osg::Vec3(4, 5, 6));

    EXPECT_EQ(c.clearScene(), 0);
    EXPECT_EQ(c.find(f.cloud), nullptr);
    EXPECT_EQ(c.find(f.shape), nullptr);
    EXPECT_EQ(c.find(f.text), nullptr);
}

TEST(SceneContent, ChangesReachEveryKindTheyApplyTo) {
    Fixture f;
    SceneContent& c = f.content;
    for (long id : {f.cloud, f.shape, f.text})
        EXPECT_EQ(c.setVisible(id, false), 0) << id;
    EXPECT_EQ(c.registry().find(f.cloud)->node()->getNodeMask(), 0u);

    // Sizes and matrices have no meaning for a text.
    EXPECT_EQ(c.setPointSize(f.cloud, 5.0f), 0);
    EXPECT_EQ(c.setPointSize(f.shape, 5.0f), 0);
    EXPECT_EQ(c.setPointSize(f.text, 5.0f), QelStatus::kObjectNotFound);
    EXPECT_EQ(c.setLineWidth(f.text, 2.0f), QelStatus::kObjectNotFound);
    EXPECT_EQ(c.setModelMatrix(f.text, shiftX(1)), QelStatus::kObjectNotFound);
    EXPECT_EQ(c.setPointSize(9999, 5.0f), QelStatus::kObjectNotFound);

    // A render object takes a matrix as its own; a shape puts it before its
    // pose, so a second shift moves it twice as far.
    for (int round = 1; round <= 2; ++round) {
        ASSERT_EQ(c.setModelMatrix(f.cloud, shiftX(10)), 0);
        ASSERT_EQ(c.setModelMatrix(f.shape, shiftX(10)), 0);
        EXPECT_FLOAT_EQ(c.find(f.cloud)->itemBounds().xMax(), 12.0f) << round;
        EXPECT_NEAR(c.find(f.shape)->itemBounds().center().x(), 10.0 * round, 1e-4) << round;
    }
}

TEST(SceneContent, ColoursAreCheckedOnceForEveryKind) {
    Fixture f;
    SceneContent& c = f.content;
    EXPECT_EQ(c.setColours(9999, colours(1, 3)), QelStatus::kObjectNotFound);
    for (long id : {f.cloud, f.shape, f.text}) {
        EXPECT_EQ(c.setColours(id, QelColorArray()), QelStatus::kColorRefused) << id;
        EXPECT_EQ(c.setColours(id, colours(1, 1)), QelStatus::kColorChannels) << id;
    }
    // One colour a point, or one for all; any other count is refused.
    EXPECT_EQ(c.setColours(f.cloud, colours(2, 3)), QelStatus::kColorRefused);
    ASSERT_EQ(c.setColours(f.cloud, colours(3, 4)), 0);
    const OSGData* cloud = c.registry().find(f.cloud);
    EXPECT_FALSE(cloud->heightColoured()) << "the host's colours stay";
    EXPECT_NEAR(cloud->colourAt(2).g(), 90 / 255.0, 1e-6);
    // Shapes and texts take the first colour.
    ASSERT_EQ(c.setColours(f.shape, colours(3, 3)), 0);
    EXPECT_NEAR((*c.shapes().find(f.shape)->colors())[0].g(), 10 / 255.0, 1e-6);
    ASSERT_EQ(c.setColours(f.text, colours(1, 4)), 0);
    EXPECT_NEAR(c.textOverlays().find(f.text)->text()->getColor().b(), 20 / 255.0, 1e-6);
}

TEST(SceneContent, RenderObjectsMoveTheBoundsShapesAndTextsAreOverlays) {
    Fixture f;
    SceneContent& c = f.content;
    int data = 0, redraw = 0, overlay = 0;
    QObject::connect(&c, &SceneContent::sig_dataChanged, [&] { ++data; });
    QObject::connect(&c, &SceneContent::sig_redraw, [&] { ++redraw; });
    QObject::connect(&c, &SceneContent::sig_overlayChanged, [&] { ++overlay; });
    ASSERT_EQ(c.setVisible(f.cloud, false), 0);
    EXPECT_EQ(data, 1);
    EXPECT_EQ(redraw, 0);
    ASSERT_EQ(c.setVisible(f.shape, false), 0);
    ASSERT_EQ(c.setShapeMode(f.shape, RenderMode::Wireframe), 0);
    EXPECT_EQ(overlay, 2);
    ASSERT_EQ(c.setVisible(f.text, false), 0);
    EXPECT_EQ(overlay, 3);
    EXPECT_EQ(redraw, 0);
    // A refused change tells nobody.
    EXPECT_NE(c.setPointSize(f.text, 3.0f), 0);
    EXPECT_EQ(data + redraw + overlay, 4);
}

// Labels give four significant digits of the value as rounded: a float
// difference of 0.0099999998 reads 0.01000, as 0.02 does 0.02000.
TEST(SceneContent, MeasurementLabelsRoundToFourDigits) {
    EXPECT_EQ(MeasurementGeometry::fourDigits(0.0099999998), "0.01000");
    EXPECT_EQ(MeasurementGeometry::fourDigits(0.02), "0.02000");
    EXPECT_EQ(MeasurementGeometry::fourDigits(9999.6), "10000");
    EXPECT_EQ(MeasurementGeometry::fourDigits(-123.456), "-123.5");
    EXPECT_EQ(MeasurementGeometry::fourDigits(0.0), "0.000");
    MeasurementGeometry g;
    ASSERT_EQ(MeasurementGeometry::make(MeasureKind::Distance, {{0, 0, 0.02f}, {3, 4, 0.03f}}, &g),
              0);
    EXPECT_EQ(g.label(), "5.000\n\u0394x 3.000  \u0394y 4.000  \u0394z 0.01000\nhorizontal 5.000");
    ASSERT_EQ(MeasurementGeometry::make(MeasureKind::Angle, {{1, 0, 0}, {0, 0, 0}, {0, 1, 0}}, &g),
              0);
    EXPECT_EQ(g.label(), "90.00\u00b0");
}
