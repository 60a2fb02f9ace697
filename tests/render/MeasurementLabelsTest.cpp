// Measurement labels: laid out where they touch neither each other nor the
// cube axis's labels, at every standard view, and at the view's pixel ratio.
#include <gtest/gtest.h>

#include "MeasurementLabels.h"
#include "QelCubeAxis3d.h"
#include "QelPointCloud.h"
#include "QelVector3dArray.h"
#include "RenderTestScene.h"

namespace {

QelPointCloud surface() {
    QelVector3dArray points;
    for (int i = 0; i <= 40; ++i)
        for (int j = 0; j <= 30; ++j)
            points.Append(QelVector3d(i * 0.25f, j * 0.25f, 0.5f + 0.02f * float(i + j)));
    QelPointCloud cloud;
    cloud.SetPoints(points);
    return cloud;
}

bool overlaps(const MeasurementLabels::Box& a, double left, double bottom, double right,
              double top) {
    return a.left < right && left < a.right && a.bottom < top && bottom < a.top;
}

}  // namespace

TEST(MeasurementLabels, NoLabelTouchesAnotherOrAnAxisLabelAtAnyStandardView) {
    auto view = makeView(640, 520);
    SceneContent& content = view->content();
    ASSERT_GE(content.addPointCloud(surface()), 1);
    // Five measurements whose anchors crowd one corner.
    const osg::Vec3d a(2, 2, 0.6), b(2.5, 2, 0.7), c(2, 2.5, 0.7), d(3, 3, 1.5);
    ASSERT_GE(content.addMeasurement(MeasureKind::Distance, {a, b}), 1);
    ASSERT_GE(content.addMeasurement(MeasureKind::Distance, {a, c}), 1);
    ASSERT_GE(content.addMeasurement(MeasureKind::Angle, {b, a, c}), 1);
    ASSERT_GE(content.addMeasurement(MeasureKind::Height, {a, b, c, d}), 1);
    ASSERT_GE(content.addMeasurement(MeasureKind::Distance, {b, c}), 1);
    view->decorations().setAxisVisible(true);
    for (int v = 0; v <= 6; ++v) {
        SCOPED_TRACE(v);
        view->camera().moveToView(static_cast<StandardView>(v));
        view->camera().zoomFit();
        view->grabFrame();
        view->grabFrame();  // the axis lays out for the view the first frame left
        const std::vector<MeasurementLabels::Box>& boxes = view->measurementLabels()->boxes();
        ASSERT_EQ(boxes.size(), 5u);
        for (size_t i = 0; i < boxes.size(); ++i) {
            EXPECT_GT(boxes[i].right - boxes[i].left, 20.0);
            for (size_t j = i + 1; j < boxes.size(); ++j)
                EXPECT_FALSE(boxes[i].overlaps(boxes[j], 0.0)) << i << " " << j;
            for (const QelCubeAxis3d::Label& l : view->decorations().cubeAxis()->labels())
                EXPECT_FALSE(overlaps(boxes[i], l.left, l.bottom, l.right, l.top))
                    << i << " and the axis label " << l.text;
        }
    }
}

TEST(MeasurementLabels, LabelsStayThroughANewDisplay) {
    auto view = makeView(300, 300);
    SceneContent& content = view->content();
    ASSERT_GE(content.addPointCloud(surface()), 1);
    ASSERT_GE(content.addMeasurement(MeasureKind::Distance, {{1, 1, 1}, {8, 6, 1}}), 1);
    view->camera().zoomFit();
    const int withLabel =
        view->grabFrame().width() > 0 ? countUnlike(view->grabFrame(), Qt::black, 40) : 0;
    ASSERT_GE(content.addPointCloud(surface(), true), 1);
    EXPECT_EQ(countUnlike(view->grabFrame(), Qt::black, 40), withLabel);
}

// The labels are drawn from one picture: every box shows its text, and
// nothing of it falls outside the boxes.
TEST(MeasurementLabels, EachTextIsDrawnInsideItsBox) {
    auto view = makeView(400, 300);
    SceneContent& content = view->content();
    // Far apart, so that every label finds a place.
    ASSERT_GE(content.addMeasurement(MeasureKind::Distance, {{-8, -4, 0}, {-2, -5, 0}}), 1);
    ASSERT_GE(content.addMeasurement(MeasureKind::Angle, {{4, 4, 0}, {6, 2, 0}, {8, 4, 0}}), 1);
    view->grabFrame();
    const QImage shown = view->grabFrame().convertToFormat(QImage::Format_RGB32);
    const std::vector<MeasurementLabels::Box> boxes = view->measurementLabels()->boxes();
    ASSERT_EQ(boxes.size(), 2u);
    view->measurementLabels()->canvas()->setNodeMask(0u);
    const QImage bare = view->grabFrame().convertToFormat(QImage::Format_RGB32);
    view->measurementLabels()->canvas()->setNodeMask(~0u);
    keepImage(shown, "measurement-labels");

    std::vector<int> inside(boxes.size(), 0);
    int outside = 0;
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x) {
            if (shown.pixel(x, y) == bare.pixel(x, y)) continue;
            const double wx = x + 0.5, wy = shown.height() - y - 0.5;  // y up
            bool found = false;
            for (size_t k = 0; k < boxes.size(); ++k)
                if (wx > boxes[k].left - 3 && wx < boxes[k].right + 3 && wy > boxes[k].bottom - 3 &&
                    wy < boxes[k].top + 3) {
                    ++inside[k];
                    found = true;
                }
            outside += !found;
        }
    EXPECT_EQ(outside, 0);
    // A distance's three lines of text, an angle's one.
    EXPECT_GT(inside[0], 300);
    EXPECT_GT(inside[1], 60);
}
