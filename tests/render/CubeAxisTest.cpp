// The cube axis: round-numbered ticks, its size rule, tick density, label
// colour and a layout whose labels never touch each other or the data.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <osg/ComputeBoundsVisitor>
#include <stdexcept>

#include "AxisTicks.h"
#include "QelCubeAxis3d.h"
#include "QelPointCloud.h"
#include "QelVector3dArray.h"
#include "RenderTestScene.h"

namespace {

osg::ref_ptr<osg::Camera> cameraAt(const osg::Vec3d& eye, int width = 800, int height = 800) {
    osg::ref_ptr<osg::Camera> camera = new osg::Camera;
    camera->setViewport(0, 0, width, height);
    camera->setProjectionMatrixAsPerspective(30.0, double(width) / height, 0.1, 1000.0);
    camera->setViewMatrixAsLookAt(eye, osg::Vec3d(0, 0, 0), osg::Vec3d(0, 1, 0));
    return camera;
}

// A cube axis of (-1, 1) on every axis seen from 'eye'; the test keeps the camera.
std::unique_ptr<QelCubeAxis3d> unitAxis(osg::ref_ptr<osg::Camera> camera) {
    return std::make_unique<QelCubeAxis3d>(camera, -1, 1, -1, 1, -1, 1);
}

// A wavy surface of points over [0, 40] x [0, 30], heights 2..8.
QelPointCloud wavySurface() {
    const int nx = 160, ny = 120;
    QelVector3dArray points;
    points.SetSize(nx * ny);
    for (int i = 0; i < nx; ++i)
        for (int j = 0; j < ny; ++j) {
            const float x = 40.0f * i / (nx - 1), y = 30.0f * j / (ny - 1);
            points[i * ny + j] = QelVector3d(x, y, 5.0f + 3.0f * std::sin(x / 6) * std::cos(y / 5));
        }
    QelPointCloud cloud;
    cloud.SetPoints(points);
    return cloud;
}

bool isRound(double step) {
    const double mantissa = step / std::pow(10.0, std::floor(std::log10(step) + 1e-12));
    return std::abs(mantissa - 1) < 1e-9 || std::abs(mantissa - 2) < 1e-9 ||
           std::abs(mantissa - 5) < 1e-9;
}

}  // namespace

TEST(AxisTicks, RoundStepsWithJustTheDecimalsTheyNeed) {
    for (double span : {1e-3, 2.7e-3, 0.05, 0.3, 1.0, 7.3, 12.5, 99.0, 1234.5, 5e5, 1e6}) {
        for (double lo : {-span / 3, 0.0, 17.0 * span}) {
            for (int intervals = 3; intervals <= 12; ++intervals) {
                SCOPED_TRACE(testing::Message()
                             << "[" << lo << ", " << lo + span << "] / " << intervals);
                const double step = AxisTicks::step(lo, lo + span, intervals);
                ASSERT_TRUE(isRound(step)) << step;
                // The smallest round step that gives at most that many intervals.
                EXPECT_GE(step, span / intervals * (1 - 1e-9));
                const double smaller = step / (isRound(step / 2) ? 2.0 : 2.5);
                EXPECT_LT(smaller, span / intervals);
                const auto ticks = AxisTicks::ticks(lo, lo + span, step);
                ASSERT_GE(ticks.size(), 1u);
                const int decimals = AxisTicks::decimals(step);
                for (const auto& tick : ticks) {
                    EXPECT_GE(tick.value, lo - step * 1e-6);
                    EXPECT_LE(tick.value, lo + span + step * 1e-6);
                    EXPECT_NEAR(std::remainder(tick.value, step), 0.0, step * 1e-6);
                    // The label reads back as the value.
                    EXPECT_NEAR(std::atof(tick.label.c_str()), tick.value, step * 1e-6)
                        << tick.label;
                    if (std::abs(tick.value) < step * 1e-6) {
                        EXPECT_EQ(tick.label.find('-'), std::string::npos) << "no minus zero";
                    }
                }
                if (decimals > 0) {
                    const double scaled = step * std::pow(10.0, decimals - 1);
                    EXPECT_GT(std::abs(scaled - std::round(scaled)), 1e-6) << "fewer decimals do";
                }
            }
        }
    }
    EXPECT_EQ(AxisTicks::label(-0.0001, 2), "0.00");
    EXPECT_EQ(AxisTicks::step(3, 3, 5), 0.0);
    EXPECT_TRUE(AxisTicks::ticks(0, 1e9, 1e-3).empty()) << "never a million labels";
}

TEST(CubeAxis, FlatDataHasNoAxis) {
    osg::ref_ptr<osg::Camera> none;
    try {
        QelCubeAxis3d flat(none, 0, 1, 0, 1, 2, 2);
        FAIL() << "a zero extent must be refused";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), " - CubeAxis size is not right");
    }
    osg::ref_ptr<osg::Camera> camera = cameraAt({0, 0, 20});
    QelCubeAxis3d axis(camera, 0, 1, 0, 2, 0, 3);
    EXPECT_FALSE(camera.valid()) << "the caller's reference is released";
    EXPECT_THROW(axis.setBounds(0, 1, 5, 5, 0, 1), std::runtime_error);
    EXPECT_EQ(axis.bounds()[3], 2.0) << "a refused size changes nothing";

    // The view shows flat data without an axis and without a failure.
    auto view = makeView(160, 120);
    view->decorations().setAxisVisible(true);
    QelVector3dArray points;
    points.SetSize(3);
    points[0] = QelVector3d(0, 0, 1);
    points[1] = QelVector3d(4, 0, 1);
    points[2] = QelVector3d(0, 3, 1);
    QelPointCloud cloud;
    cloud.SetPoints(points);
    EXPECT_GE(view->content().addPointCloud(cloud), 1);
    EXPECT_EQ(view->decorations().cubeAxis(), nullptr);
    EXPECT_EQ(view->root()->getNumChildren(), 5u);
    EXPECT_FALSE(view->grabFrame().isNull());
}

TEST(CubeAxis, CornersFacesAndOpposites) {
    auto axis = unitAxis(cameraAt({0, 0, 20}));
    const char* names[] = {"Top", "Bottom", "Left", "Right", "Front", "Back"};
    ASSERT_EQ(axis->faces().size(), 6u);
    for (int f = 0; f < 6; ++f) {
        const QelCubeAxis3d::Face& face = axis->faces()[f];
        EXPECT_EQ(face.name, names[f]);
        for (const osg::Vec3d& p : face.points)  // every corner lies on its face's plane
            EXPECT_DOUBLE_EQ(p * face.normal, 1.0) << face.name;
    }
    const int pairs[8] = {6, 7, 4, 5, 2, 3, 0, 1};
    for (int c = 0; c < 8; ++c) {
        EXPECT_EQ(axis->oppositeCorner(c), pairs[c]);
        // Opposite corners share no face.
        for (const auto& face : axis->faces()) {
            const bool has = std::count(face.corners.begin(), face.corners.end(), c) > 0;
            const bool hasOpposite =
                std::count(face.corners.begin(), face.corners.end(), pairs[c]) > 0;
            EXPECT_FALSE(has && hasOpposite);
        }
    }
}

TEST(CubeAxis, TickDensityFollowsTheDistanceAndHoldsOnAThreshold) {
    osg::ref_ptr<osg::Camera> camera = cameraAt({0, 0, 100});
    auto axis = unitAxis(camera);
    const float r = static_cast<float>(axis->referenceDistance());
    EXPECT_FLOAT_EQ(r, 3.9f * std::sqrt(12.0f) / 2.0f);
    auto countAt = [&](float d) {
        camera->setViewMatrixAsLookAt(osg::Vec3d(0, 0, d), osg::Vec3d(), osg::Vec3d(0, 1, 0));
        axis->update();
        return axis->tickCount();
    };
    const float edge = 3.5f * r;
    EXPECT_EQ(countAt(100), 3);
    EXPECT_EQ(countAt(edge), 3) << "exactly on 3.5 R the count stays";
    EXPECT_EQ(countAt(std::nextafter(edge, 0.0f)), 6);
    EXPECT_EQ(countAt(edge), 6) << "and stays from the near side too";
    EXPECT_EQ(countAt(std::nextafter(edge, 1e9f)), 3);
    EXPECT_EQ(countAt(2.0f * r), 8);
    EXPECT_EQ(countAt(1.0f * r), 10);
    EXPECT_EQ(countAt(0.5f * r), 12);
}

TEST(CubeAxis, PortraitViewportDoublesTheReferenceDistance) {
    auto wide = unitAxis(cameraAt({0, 0, 20}, 900, 400));
    auto tall = unitAxis(cameraAt({0, 0, 20}, 400, 900));
    EXPECT_DOUBLE_EQ(tall->referenceDistance(), 2.0 * wide->referenceDistance());
    osg::ref_ptr<osg::Camera> empty = cameraAt({0, 0, 20}, 0, 300);
    auto none = unitAxis(empty);
    EXPECT_EQ(none->referenceDistance(), QelCubeAxis3d::kNoDistance);
    EXPECT_TRUE(none->labels().empty()) << "no layout without a viewport";
}

TEST(CubeAxis, ViewAnglesSayHowNearlyTheViewerLooksAlongEachAxis) {
    auto axis = unitAxis(cameraAt({0, 0, 20}));
    EXPECT_NEAR(axis->viewAngles().x(), 90.0, 1e-6);
    EXPECT_NEAR(axis->viewAngles().z(), 0.0, 1e-6);
    auto oblique = unitAxis(cameraAt({-10, -10, 10}));
    for (int a = 0; a < 3; ++a)
        EXPECT_NEAR(oblique->viewAngles()[a], 54.7356, 1e-3);
}

TEST(CubeAxis, LayoutStaysUntilTheViewChangesEnough) {
    osg::ref_ptr<osg::Camera> camera = cameraAt({-6, -8, 5});
    auto axis = unitAxis(camera);
    ASSERT_FALSE(axis->labels().empty());
    const osg::Drawable* first = axis->node()->asGroup()->getChild(2)->asGeode()->getDrawable(0);
    axis->updateIfViewChanged();
    EXPECT_EQ(axis->node()->asGroup()->getChild(2)->asGeode()->getDrawable(0), first)
        << "the same view keeps its labels";
    camera->setViewMatrixAsLookAt(osg::Vec3d(8, 6, 5), osg::Vec3d(), osg::Vec3d(0, 0, 1));
    axis->updateIfViewChanged();
    EXPECT_NE(axis->node()->asGroup()->getChild(2)->asGeode()->getDrawable(0), first);
}

TEST(CubeAxis, LabelsTakeTheInverseOfTheBackground) {
    auto view = makeView(160, 120);
    view->decorations().setAxisVisible(true);
    ASSERT_GE(view->content().addPointCloud(wavySurface()), 1);
    ASSERT_NE(view->decorations().cubeAxis(), nullptr);
    view->decorations().setBackgroundColor(255, 255, 255, 255);
    EXPECT_EQ(view->decorations().cubeAxis()->labelColor(), osg::Vec4(0, 0, 0, 1));
    view->decorations().setBackgroundColor(10, 20, 30, 255);
    EXPECT_EQ(view->decorations().cubeAxis()->labelColor(),
              osg::Vec4(245 / 255.0f, 235 / 255.0f, 225 / 255.0f, 1.0f));
}

// At every standard view: the labels do not overlap each other, none covers
// a pixel of the data, and each one's box holds pixels of its text.
TEST(CubeAxis, LabelsNeverTouchEachOtherOrTheDataAtTheStandardViews) {
    auto view = makeView(640, 520);
    ASSERT_GE(view->content().addPointCloud(wavySurface()), 1);
    view->content().setPointSize(1, 2.0f);
    const char* names[] = {"top", "bottom", "front", "back", "left", "right", "oblique"};
    for (int v = 0; v <= 6; ++v) {
        SCOPED_TRACE(names[v]);
        view->decorations().setAxisVisible(false);
        view->camera().moveToView(static_cast<StandardView>(v));
        view->camera().zoomFit();
        view->decorations().setAxisVisible(true);
        view->camera().zoomFit();  // leaves room for the labels
        const QImage withAxis = view->grabFrame();
        view->decorations().setAxisVisible(false);
        const QImage dataOnly = view->grabFrame();
        view->decorations().setAxisVisible(true);
        const QImage again = view->grabFrame();
        ASSERT_EQ(again, withAxis) << "the same view, the same layout";
        keepImage(withAxis, (std::string("cube-axis-") + names[v]).c_str());
        const auto& labels = view->decorations().cubeAxis()->labels();
        ASSERT_GE(labels.size(), 6u);
        for (size_t i = 0; i < labels.size(); ++i) {
            const auto& a = labels[i];
            for (size_t j = i + 1; j < labels.size(); ++j) {
                const auto& b = labels[j];
                EXPECT_FALSE(a.left < b.right && b.left < a.right && a.bottom < b.top &&
                             b.bottom < a.top)
                    << a.text << " and " << b.text;
            }
            int data = 0, text = 0;
            for (int y = int(a.bottom); y <= int(a.top); ++y)
                for (int x = int(a.left); x <= int(a.right); ++x) {
                    const int row = withAxis.height() - 1 - y;
                    if (x < 0 || row < 0 || x >= withAxis.width() || row >= withAxis.height())
                        continue;
                    data += dataOnly.pixelColor(x, row) != Qt::black;
                    text += withAxis.pixelColor(x, row).lightness() > 128;
                }
            EXPECT_EQ(data, 0) << "label " << a.text << " covers the data";
            EXPECT_GT(text, 3) << "label " << a.text << " is drawn where it is placed";
        }
    }
}

TEST(CubeAxis, GridAndClipPlaneChangeWhatIsDrawn) {
    auto view = makeView(320, 260);
    ASSERT_GE(view->content().addPointCloud(wavySurface()), 1);
    view->camera().moveToView(StandardView::Oblique);
    view->decorations().setAxisVisible(true);
    view->camera().zoomFit();
    const QImage full = view->grabFrame();
    view->decorations().setGridVisible(false);
    const QImage noGrid = view->grabFrame();
    EXPECT_GT(countUnlike(noGrid, Qt::black, 0), 0);
    int changed = 0;
    for (int y = 0; y < full.height(); ++y)
        for (int x = 0; x < full.width(); ++x)
            changed += full.pixel(x, y) != noGrid.pixel(x, y);
    EXPECT_GT(changed, 200) << "the grid draws lines";
    view->decorations().setGridVisible(true);
    EXPECT_EQ(view->grabFrame(), full);
}

TEST(CubeAxis, ExtremeExtentsLayOutWithoutFailing) {
    for (double half : {1e-20, 1e-6, 2.1e9}) {
        SCOPED_TRACE(half);
        osg::ref_ptr<osg::Camera> camera = cameraAt(osg::Vec3d(-3, -4, 3) * half);
        camera->setProjectionMatrixAsPerspective(30.0, 1.0, half * 0.01, half * 100);
        QelCubeAxis3d axis(camera, -half, half, -half, half, -half / 2, half / 2);
        for (const auto& label : axis.labels())
            EXPECT_LE(label.text.size(), 40u) << label.text;
        if (half >= 1e-6) {
            EXPECT_GE(axis.labels().size(), 3u);
        }
    }
}
