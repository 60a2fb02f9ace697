// Eye-dome lighting: off, a frame is the frame without it; on, the edge of
// a nearer surface darkens while flat interiors keep their colour, the
// background beside a silhouette gets a halo, and the pass's textures
// follow the view's size and pixel ratio.
#include <gtest/gtest.h>

#include <QApplication>
#include <QResizeEvent>
#include <osgViewer/Viewer>

#include "CameraController.h"
#include "EyeDomeLighting.h"
#include "EyeDomePass.h"
#include "PixelRatio.h"
#include "PointBudget.h"
#include "QelOSGWidget.h"
#include "RenderTestScene.h"

namespace {

const osg::Vec4 kRed(1, 0, 0, 1);
const osg::Vec4 kGreen(0, 1, 0, 1);

// Two flat squares facing the camera: a red one behind, a green one in
// front of it, half over it.
std::unique_ptr<GLViewer> twoSquares() {
    auto view = makeView(240, 240, 60.0);
    osg::Group* data = view->content().dataGroup();
    data->addChild(makeQuad({-8, -8, 0}, {8, -8, 0}, {8, 8, 0}, {-8, 8, 0}, kRed));
    data->addChild(makeQuad({0, -4, 4}, {10, -4, 4}, {10, 4, 4}, {0, 4, 4}, kGreen));
    return view;
}

// The pixel of a world point (x, y, z) in a grabbed frame, 'left' pixels
// further left.
QColor at(GLViewer& view, const QImage& frame, const osg::Vec3d& world, int left = 0) {
    osg::Camera& camera = *view.osgWidget()->viewer()->getCamera();
    const osg::Vec3d w = world * camera.getViewMatrix() * camera.getProjectionMatrix() *
                         camera.getViewport()->computeWindowMatrix();
    return frame.pixelColor(int(w.x()) - left, frame.height() - 1 - int(w.y()));
}

}  // namespace

TEST(EyeDome, OffIsTheFrameWithoutIt) {
    auto view = twoSquares();
    const QImage before = view->grabFrame();
    view->eyeDome().setEnabled(true, 1.0, 2.0);
    EXPECT_NE(view->grabFrame(), before);
    view->eyeDome().setEnabled(false);
    EXPECT_EQ(view->grabFrame(), before) << "byte for byte";
}

class EyeDomeProjections : public ::testing::TestWithParam<bool> {};

// In perspective and orthographic views alike.
TEST_P(EyeDomeProjections, TheNearerEdgeDarkensFlatInteriorsDoNot) {
    auto view = twoSquares();
    view->camera().setProjection(GetParam());
    const QImage plain = view->grabFrame();
    view->eyeDome().setEnabled(true, 1.0, 2.0);
    const QImage shaded = view->grabFrame();
    keepImage(shaded, GetParam() ? "eye-dome-squares-orthographic" : "eye-dome-squares");
    // Inside either square every neighbour lies at the same depth.
    for (const osg::Vec3d& inside : {osg::Vec3d(-5, 5, 0), osg::Vec3d(5, 0, 4)})
        EXPECT_EQ(at(*view, shaded, inside), at(*view, plain, inside));
    // On the red square a pixel left of the green one's edge, the neighbour
    // to the right lies in front: darker.
    const osg::Vec3d edge(0, 0, 4);
    EXPECT_LT(at(*view, shaded, edge, 1).red(), at(*view, plain, edge, 1).red() / 2);
}

INSTANTIATE_TEST_SUITE_P(EyeDome, EyeDomeProjections, ::testing::Bool());

TEST(EyeDome, TexturesFollowTheViewsSize) {
    auto view = twoSquares();
    view->eyeDome().setEnabled(true);
    view->grabFrame();
    const EyeDomePass& pass = view->eyeDome().pass();
    EXPECT_EQ(pass.depthWidth(), 240);
    EXPECT_EQ(pass.shadeHeight(), 240);
    QWidget* widget = view->osgWidget();
    const QSize old = widget->size();
    widget->resize(320, 200);
    QResizeEvent resized(widget->size(), old);
    QApplication::sendEvent(widget, &resized);
    view->grabFrame();
    EXPECT_EQ(pass.depthWidth(), 320);
    EXPECT_EQ(pass.depthHeight(), 200);
    EXPECT_EQ(pass.shadeWidth(), 320);
    // While the camera moves, the shade is computed on half the pixels.
    view->budget().setMoving(true);
    view->grabFrame();
    EXPECT_EQ(pass.depthWidth(), 320);
    EXPECT_EQ(pass.shadeWidth(), 160);
    EXPECT_EQ(pass.shadeHeight(), 100);
    view->budget().setMoving(false);
}
