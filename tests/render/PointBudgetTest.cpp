// The point budget while the camera moves: a drag or the wheel draws an
// even sample of a large cloud, the release (or the pause after the wheel)
// draws every point (here in one frame: progressive frames are off), and
// screenshots and picking always see every point.
#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QWheelEvent>
#include <cmath>
#include <osgViewer/Viewer>

#include "MRenderer.h"
#include "MouseEvents.h"
#include "OSGDataManager.h"
#include "OSGPointCloud.h"
#include "OutlineSelection.h"
#include "PointPicker.h"
#include "ProgressiveFrames.h"
#include "QelPointCloud.h"
#include "QelVector3dArray.h"
#include "RenderTestScene.h"

namespace {

constexpr int kSide = 200;  // 40,000 points

QelPointCloud dense() {
    QelVector3dArray points(kSide * kSide);
    for (int i = 0; i < kSide; ++i)
        for (int j = 0; j < kSide; ++j)
            points[i * kSide + j] = QelVector3d(-5 + 0.05f * i, -5 + 0.05f * j, 0.02f * (i % 7));
    QelPointCloud cloud;
    cloud.SetPoints(points);
    return cloud;
}

// One frame as painting draws it (not a screenshot).
void paintFrame(GLViewer& view) {
    view.osgWidget()->grab();
}

// How many points a rectangle over the left half of the view selects.
int lassoed(GLViewer& view) {
    const QVector<QPointF> outline{{5, 5}, {150, 295}};
    QelPointCloud selected;
    bool used = false;
    if (OutlineSelection(view).selectPoints(outline, LassoShape::Rectangle, true, &selected,
                                            &used) != 0 ||
        !used)
        return -1;
    return selected.Length();
}

}  // namespace

TEST(PointBudget, ADragDrawsASampleAndTheReleaseDrawsEveryPoint) {
    auto view = makeView(300, 300);
    view->progressive().setEnabled(false);
    view->budget().setBudget(5000);
    const long id = view->content().addPointCloud(dense());
    ASSERT_GE(id, 1);
    auto* cloud = static_cast<OSGPointCloud*>(view->content().registry().find(int(id)));
    paintFrame(*view);
    EXPECT_EQ(cloud->drawnCount(), unsigned(kSide * kSide)) << "a still view draws everything";
    const QImage still = view->grabFrame();
    const int stillSelection = lassoed(*view);
    EXPECT_GT(stillSelection, kSide * kSide / 4);

    QWidget* w = view->osgWidget();
    sendMouse(w, QEvent::MouseButtonPress, QPoint{150, 150});
    paintFrame(*view);
    EXPECT_TRUE(view->budget().isMoving());
    EXPECT_LE(cloud->drawnCount(), 5000u);
    EXPECT_GE(cloud->drawnCount(), 4000u);

    // Screenshots, the lasso and picks in the middle of the drag see every
    // point.
    EXPECT_EQ(litPixels(view->grabFrame()), litPixels(still));
    EXPECT_EQ(lassoed(*view), stillSelection);
    paintFrame(*view);
    EXPECT_LE(cloud->drawnCount(), 5000u) << "and the drag goes on thinned";
    // A pick finds the same point as in a still view, also one the sample
    // leaves out (the sample keeps every 8th point).
    osg::Camera& camera = *view->osgWidget()->viewer()->getCamera();
    bool checked = false;
    for (int x = 140; x < 160 && !checked; ++x) {
        PickHit hit;
        ASSERT_TRUE(PointPicker::pick(camera, *view->root(), x, 150, &hit));
        const int index = int(std::lround((hit.position.x() + 5) / 0.05)) * kSide +
                          int(std::lround((hit.position.y() + 5) / 0.05));
        if (index % 8 == 0) continue;
        view->budget().setBudget(0);
        paintFrame(*view);
        PickHit still;
        ASSERT_TRUE(PointPicker::pick(camera, *view->root(), x, 150, &still));
        EXPECT_EQ(hit.position, still.position);
        EXPECT_EQ(hit.element, still.element);
        view->budget().setBudget(5000);
        paintFrame(*view);
        checked = true;
    }
    EXPECT_TRUE(checked);

    sendMouse(w, QEvent::MouseMove, QPoint{180, 160});
    paintFrame(*view);
    EXPECT_LE(cloud->drawnCount(), 5000u);
    sendMouse(w, QEvent::MouseButtonRelease, QPoint{180, 160});
    paintFrame(*view);
    EXPECT_FALSE(view->budget().isMoving());
    EXPECT_EQ(cloud->drawnCount(), unsigned(kSide * kSide)) << "the settle frame";

    // Without a budget nothing is left out.
    view->budget().setBudget(0);
    sendMouse(w, QEvent::MouseButtonPress, QPoint{150, 150});
    paintFrame(*view);
    EXPECT_EQ(cloud->drawnCount(), unsigned(kSide * kSide));
    sendMouse(w, QEvent::MouseButtonRelease, QPoint{150, 150});
    paintFrame(*view);
}

TEST(PointBudget, TheWheelSettlesOnceAfterItsLastStep) {
    auto view = makeView(300, 300);
    view->progressive().setEnabled(false);
    view->budget().setBudget(5000);
    const long id = view->content().addPointCloud(dense());
    auto* cloud = static_cast<OSGPointCloud*>(view->content().registry().find(int(id)));
    paintFrame(*view);
    QWidget* w = view->osgWidget();
    QWheelEvent wheel(QPointF(150, 150), w->mapToGlobal(QPoint(150, 150)), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &wheel);
    paintFrame(*view);
    EXPECT_TRUE(view->budget().isMoving());
    EXPECT_LE(cloud->drawnCount(), 5000u);
    // A little later the view settles by itself and draws every point.
    QElapsedTimer clock;
    clock.start();
    while (view->budget().isMoving() && clock.elapsed() < 2000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_FALSE(view->budget().isMoving());
    paintFrame(*view);
    EXPECT_EQ(cloud->drawnCount(), unsigned(kSide * kSide));
}

TEST(PointBudget, AHighDensityViewDividesTheBudgetByItsRatio) {
    // Each point covers ratio^2 device pixels there; the budget shrinks by
    // the ratio so a frame in motion stays as quick.
    auto view = makeView(300, 300);
    view->budget().setBudget(5000);
    view->budget().setMoving(true);
    EXPECT_EQ(view->budget().effectiveBudget(), 5000u);
    view->osgWidget()->renderer()->resize(600, 600, 2.0f);
    EXPECT_EQ(view->budget().effectiveBudget(), 2500u);
    view->osgWidget()->renderer()->resize(450, 450, 1.5f);
    EXPECT_EQ(view->budget().effectiveBudget(), 3334u);
    view->budget().setMoving(false);
    EXPECT_EQ(view->budget().effectiveBudget(), 0u) << "a still frame draws every point";
}
