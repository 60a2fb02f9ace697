// Standard views, panning, pick mode and the orthographic box.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include "MRenderer.h"
#include "MouseEvents.h"
#include "PickHandler.h"
#include "RenderTestScene.h"

namespace {

struct ViewCase {
    int view;
    int axes;
    osg::Vec3d look;
    osg::Vec3d up;
};

void sendWheel(QWidget* w, int delta) {
    QWheelEvent e(QPointF(100, 100), QPointF(100, 100), QPoint(), QPoint(0, delta), Qt::NoButton,
                  Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &e);
}

}  // namespace

TEST(Manipulator, StandardViewsOfBothTables) {
    auto view = makeView();
    view->content().dataGroup()->addChild(
        makeQuad({-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}, {1, 1, 1, 1}));
    ViewerManipulator* m = view->manipulator();
    const ViewCase cases[] = {
        {0, 1, {0, 0, 1}, {0, -1, 0}},
        {1, 1, {0, 0, -1}, {0, 1, 0}},
        {2, 1, {0, -1, 0}, {0, 0, -1}},
        {3, 1, {0, 1, 0}, {0, 0, -1}},
        {4, 1, {1, 0, 0}, {0, 0, -1}},
        {5, 1, {-1, 0, 0}, {0, 0, -1}},
        {6, 1, {0.497, 0.501, 0.708}, {0.501, 0.501, -0.706}},
        {0, 0, {0, 0, -1}, {-1, 0, 0}},
        {1, 0, {0, 0, 1}, {1, 0, 0}},
        {2, 0, {-1, 0, 0}, {0, 0, 1}},
        {3, 0, {1, 0, 0}, {0, 0, 1}},
        {4, 0, {0, 1, 0}, {0, 0, 1}},
        {5, 0, {0, -1, 0}, {0, 0, 1}},
        {6, 0, {0.857, 0.286, -0.429}, {0.286, 0.429, 0.857}},
    };
    for (const ViewCase& c : cases) {
        m->setSensorAxes(c.axes);
        const osg::Vec3d centreBefore = m->getCenter();
        m->moveToView(static_cast<StandardView>(c.view));
        osg::Vec3d eye, centre, up;
        m->getInverseLookAt(eye, centre, up);
        const osg::Vec3d look = centre - eye;
        for (int k = 0; k < 3; ++k) {
            EXPECT_NEAR(look[k], c.look[k], 0.01) << "view " << c.view << " axes " << c.axes;
            EXPECT_NEAR(up[k], c.up[k], 0.01) << "view " << c.view << " axes " << c.axes;
        }
        EXPECT_EQ(m->getCenter(), centreBefore) << "views only rotate";
    }
}

TEST(Manipulator, RightDragPansEyeAndCentreTogether) {
    auto view = makeView();
    view->content().dataGroup()->addChild(
        makeQuad({-5, -5, 0}, {5, -5, 0}, {5, 5, 0}, {-5, 5, 0}, {1, 1, 1, 1}));
    QWidget* w = view->osgWidget();
    view->grabFrame();
    ViewerManipulator* m = view->manipulator();
    osg::Vec3d eye0, centre0, up0;
    m->getInverseLookAt(eye0, centre0, up0);
    sendMouse(w, QEvent::MouseButtonPress, QPoint(100, 100), Qt::RightButton);
    sendMouse(w, QEvent::MouseMove, QPoint(110, 100), Qt::RightButton);
    sendMouse(w, QEvent::MouseButtonRelease, QPoint(110, 100), Qt::RightButton);
    view->grabFrame();  // the frame runs the queued events
    osg::Vec3d eye1, centre1, up1;
    m->getInverseLookAt(eye1, centre1, up1);
    const osg::Vec3d moved = eye1 - eye0;
    EXPECT_GT(moved.length(), 1e-3);
    EXPECT_NEAR((centre1 - centre0 - moved).length(), 0.0, 1e-9);
    const osg::Vec3d dir = centre0 - eye0;
    EXPECT_NEAR(moved * dir, 0.0, 1e-9);
    EXPECT_NEAR(moved * up0, 0.0, 1e-9);
    EXPECT_NEAR(((centre1 - eye1) - dir).length(), 0.0, 1e-9) << "the view direction stays";
}

// A pick handler ahead of the manipulator: while enabled, clicks are
// reported and neither the camera nor the point budget's motion follows the
// mouse; disabled, the same drag turns the camera.
TEST(Manipulator, AnEnabledPickHandlerTakesTheMouseFromTheCamera) {
    auto view = makeView();
    ViewerManipulator* m = view->manipulator();
    std::vector<std::pair<float, float>> clicks;
    osg::ref_ptr<PickHandler> pick =
        new PickHandler([&](float x, float y) { clicks.emplace_back(x, y); });
    view->addEventHandler(pick.get());
    pick->setEnabled(true);
    const osg::Matrixd before = m->getMatrix();
    QWidget* w = view->osgWidget();
    sendMouse(w, QEvent::MouseButtonPress, QPoint(50, 60), Qt::LeftButton);
    sendMouse(w, QEvent::MouseMove, QPoint(90, 120), Qt::LeftButton);
    view->grabFrame();
    EXPECT_FALSE(view->budget().isMoving()) << "a pick is no camera motion";
    sendMouse(w, QEvent::MouseButtonRelease, QPoint(90, 120), Qt::LeftButton);
    sendMouse(w, QEvent::MouseButtonPress, QPoint(10, 10), Qt::RightButton);
    sendMouse(w, QEvent::MouseMove, QPoint(30, 10), Qt::RightButton);
    sendMouse(w, QEvent::MouseButtonRelease, QPoint(30, 10), Qt::RightButton);
    sendWheel(w, 120);
    view->grabFrame();
    ASSERT_EQ(clicks.size(), 2u);
    EXPECT_EQ(clicks[0].first, 90.0f);
    EXPECT_EQ(m->getMatrix(), before);

    pick->setEnabled(false);
    sendMouse(w, QEvent::MouseButtonPress, QPoint(50, 60), Qt::LeftButton);
    sendMouse(w, QEvent::MouseMove, QPoint(90, 120), Qt::LeftButton);
    sendMouse(w, QEvent::MouseButtonRelease, QPoint(90, 120), Qt::LeftButton);
    view->grabFrame();
    EXPECT_EQ(clicks.size(), 2u);
    EXPECT_NE(m->getMatrix(), before) << "the drag turned the camera";
}

TEST(Manipulator, OrthographicBoxBoundsWheelAndAspect) {
    auto view = makeView(400, 200);
    view->content().dataGroup()->addChild(
        makeQuad({-26, -26, 0}, {26, -26, 0}, {26, 26, 0}, {-26, 26, 0}, {1, 1, 1, 1}));
    ViewerManipulator* m = view->manipulator();
    const double radius = m->boundingRadius();
    ASSERT_GT(radius, 30.0);
    m->setOrtho(true, -0.001, 0.002, -0.001, 0.001, 1, 100);
    double l, r, b, t, n, f;
    m->getOrthoBox(l, r, b, t, n, f);
    EXPECT_NEAR(l, -radius / 52, 1e-9);
    EXPECT_NEAR(r, 2 * radius / 52, 1e-9) << "all six values scale alike";
    m->setOrtho(true, -5, 5, -5, 5, 1, 100);
    double l2, r2, b2, t2, n2, f2;
    m->getOrthoBox(l2, r2, b2, t2, n2, f2);
    EXPECT_EQ(l2, l) << "switching on twice keeps the first box";

    m->setOrtho(false, 0, 0, 0, 0, 0, 0);
    m->setOrtho(true, 0, 0, 0, 0, 1, 100);
    m->getOrthoBox(l, r, b, t, n, f);
    EXPECT_NEAR(l, -radius / 52, 1e-9) << "a left of 0 still gets the bound";

    m->setOrtho(false, 0, 0, 0, 0, 0, 0);
    m->setOrtho(true, -100, 100, -100, 100, 1, 100);
    sendWheel(view->osgWidget(), -120);
    view->grabFrame();
    m->getOrthoBox(l, r, b, t, n, f);
    EXPECT_NEAR(r, 100 / 0.9, 1e-9);
    EXPECT_NEAR(n, 1 / 0.9, 1e-9);
    sendWheel(view->osgWidget(), 120);
    sendWheel(view->osgWidget(), 120);
    view->grabFrame();
    m->getOrthoBox(l, r, b, t, n, f);
    EXPECT_NEAR(t, 100 * 0.9, 1e-9);

    // Box -1..1 square in a 2:1 window: the projection is squeezed by 0.5.
    m->setOrtho(false, 0, 0, 0, 0, 0, 0);
    m->setOrtho(true, -100, 100, -100, 100, 1, 100);
    view->grabFrame();
    const osg::Matrixd p = view->osgWidget()->renderer()->getCamera()->getProjectionMatrix();
    EXPECT_NEAR(p(0, 0), 0.5 * (2.0 / 200), 1e-12);
    EXPECT_NEAR(p(1, 1), 2.0 / 200, 1e-12);
}
