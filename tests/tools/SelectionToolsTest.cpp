// Picking and lasso selection against the view's own camera: the picked
// point under a pixel, the nodes a pick takes out and puts back, and the
// points an outline selects compared with a brute-force projection.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMouseEvent>
#include <algorithm>
#include <cmath>
#include <osgViewer/Viewer>
#include <set>

#include "MouseEvents.h"
#include "OSGDataManager.h"
#include "PaintWidget.h"
#include "PointPicker.h"
#include "Qel3DGraphicsPrivate.h"
#include "Qel3DShape.h"
#include "QelCubeAxis3d.h"
#include "QelMatrix4.h"
#include "QelPointCloud.h"
#include "QelRangeImage.h"
#include "QelTriangleMesh.h"
#include "QelVector3dArray.h"
#include "RangeImageSamples.h"
#include "RenderTestScene.h"
#include "StatusCodes.h"

namespace {

// Points on a grid over [-5, 5]^2 at height z, spacing 0.5.
QelPointCloud gridAt(float z) {
    QelVector3dArray points(21 * 21);
    for (int i = 0; i < 21; ++i)
        for (int j = 0; j < 21; ++j)
            points[i * 21 + j] = QelVector3d(-5 + 0.5f * i, -5 + 0.5f * j, z + 0.05f * i);
    QelPointCloud cloud;
    cloud.SetPoints(points);
    return cloud;
}

QelTriangleMesh squareAt(float half, float z) {
    QelVector3dArray v(4);
    v[0] = QelVector3d(-half, -half, z);
    v[1] = QelVector3d(half, -half, z);
    v[2] = QelVector3d(half, half, z);
    v[3] = QelVector3d(-half, half, z);
    Qel3DIntArray t;
    t.SetSize(6);
    const int idx[] = {0, 1, 2, 0, 2, 3};
    std::copy(idx, idx + 6, t.Data());
    QelTriangleMesh mesh;
    mesh.SetVertices(v);
    mesh.SetTriangles(t);
    return mesh;
}

// A 16-bit image whose samples are base + their column.
QelRangeImage ramp(int width, int height, int base) {
    QelRangeImage image = imageOf(QEL_16U, width, height, 0);
    for (int i = 0; i < width * height; ++i)
        setSample(image, i, base + i % width);
    return image;
}

osg::Camera& cameraOf(GLViewer& view) {
    return *view.osgWidget()->viewer()->getCamera();
}

// Window position (y up) of a world point through the view's camera.
osg::Vec3d windowOf(GLViewer& view, const osg::Vec3d& world) {
    osg::Camera& c = cameraOf(view);
    return world * c.getViewMatrix() * c.getProjectionMatrix() *
           c.getViewport()->computeWindowMatrix();
}

bool same(const osg::Vec3d& a, const QelVector3d& b) {
    return std::abs(a.x() - b.x) < 1e-5 && std::abs(a.y() - b.y) < 1e-5 &&
           std::abs(a.z() - b.z) < 1e-5;
}

// The even-odd rule, written out independently of the library's.
bool inside(const std::vector<QPointF>& polygon, double x, double y) {
    bool in = false;
    for (size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const QPointF& a = polygon[i];
        const QPointF& b = polygon[j];
        if ((a.y() > y) != (b.y() > y) &&
            x < (b.x() - a.x()) * (y - a.y()) / (b.y() - a.y()) + a.x())
            in = !in;
    }
    return in;
}

// Drags the left button through the given widget positions.
void stroke(QWidget* w, const std::vector<QPointF>& path,
            Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    sendMouse(w, QEvent::MouseButtonPress, path.front(), Qt::LeftButton, modifiers);
    for (const QPointF& p : path)
        sendMouse(w, QEvent::MouseMove, p, Qt::LeftButton, modifiers);
    sendMouse(w, QEvent::MouseButtonRelease, path.back(), Qt::LeftButton, modifiers);
}

}  // namespace

TEST(PointPicker, ReportsTheDrawnPointOrSurfaceNearestTheEye) {
    auto view = makeView(300, 300);
    const QelPointCloud cloud = gridAt(0);
    const long cloudId = view->content().addPointCloud(cloud);
    ASSERT_GE(cloudId, 1);
    view->grabFrame();
    PickHit hit;
    // A click two pixels beside a drawn point reports that point.
    const QelVector3d marker = cloud[3 * 21 + 17];
    const osg::Vec3d at = windowOf(*view, osg::Vec3d(marker.x, marker.y, marker.z));
    ASSERT_TRUE(PointPicker::pick(cameraOf(*view), *view->root(), at.x() + 2, at.y() - 1, &hit,
                                  nullptr, &view->content().registry()));
    EXPECT_TRUE(same(hit.position, marker))
        << hit.position.x() << " " << hit.position.y() << " " << hit.position.z();
    // The hit names the cloud and the point's index in it.
    EXPECT_EQ(hit.object, cloudId);
    EXPECT_EQ(hit.element, 3 * 21 + 17);
    // Drawn as lit sprites, the same.
    ASSERT_EQ(view->content().setPointRenderMode(cloudId, PointRenderMode::Sprite), 0);
    view->grabFrame();
    ASSERT_TRUE(PointPicker::pick(cameraOf(*view), *view->root(), at.x() + 2, at.y() + 2, &hit));
    EXPECT_TRUE(same(hit.position, marker));
    ASSERT_EQ(view->content().setPointRenderMode(cloudId, PointRenderMode::Plain), 0);
    // Between the grid's points there is nothing to pick.
    const osg::Vec3d gap = windowOf(*view, osg::Vec3d(marker.x + 0.25, marker.y + 0.25, 0.9));
    EXPECT_FALSE(PointPicker::pick(cameraOf(*view), *view->root(), gap.x(), gap.y(), &hit));
    // Outside the data: nothing.
    EXPECT_FALSE(PointPicker::pick(cameraOf(*view), *view->root(), 2, 2, &hit));

    // A square above the cloud is nearer the eye: its surface wins.
    ASSERT_GE(view->content().addTriangleMesh(squareAt(1.0f, 2.0f)), 1);
    view->grabFrame();
    const osg::Vec3d centre = windowOf(*view, osg::Vec3d(0.0, 0.0, 2.0));
    ASSERT_TRUE(PointPicker::pick(cameraOf(*view), *view->root(), centre.x(), centre.y(), &hit));
    EXPECT_NEAR(hit.position.z(), 2.0, 1e-4);
    EXPECT_NEAR(hit.position.x(), 0.0, 0.05);
    EXPECT_EQ(hit.object, 0) << "no registry given: no object named";

    // A clipped part is not drawn and not picked: the cloud under the square is.
    const osg::Vec4d below(0, 0, -1, 1.5);  // keeps z <= 1.5
    ASSERT_TRUE(
        PointPicker::pick(cameraOf(*view), *view->root(), centre.x(), centre.y(), &hit, &below));
    EXPECT_LT(hit.position.z(), 1.5);
}

TEST(PointPicker, RangeImagesInEveryModeAndPlacedObjects) {
    auto view = makeView(300, 300);
    QelRangeImage image = ramp(40, 30, 0);  // heights from the column
    image.SetInfo(0.25, 0.25, 0.1, 0, 0, 0);
    const long id = view->content().addRangeImage(image);
    ASSERT_GE(id, 1);
    // Sample (row 8, column 20), on the grid drawn at the automatic step 4:
    // x from the row, y from the column.
    const osg::Vec3d sample(8 * 0.25, 20 * 0.25, 20 * 0.1);
    const double spacing = 4 * 0.25;
    for (RenderMode mode : {RenderMode::Points, RenderMode::Wireframe, RenderMode::Faces}) {
        SCOPED_TRACE(static_cast<int>(mode));
        ASSERT_EQ(view->content().setElementState(id, mode), 0);
        view->grabFrame();
        const osg::Vec3d at = windowOf(*view, sample);
        PickHit hit;
        ASSERT_TRUE(PointPicker::pick(cameraOf(*view), *view->root(), at.x(), at.y(), &hit));
        EXPECT_LT((hit.position - sample).length(), spacing) << "within the drawn spacing";
    }

    // The world point of an object placed by a model matrix.
    QelMatrix4 shift;
    shift.SetValue(0, 3, -6);
    ASSERT_EQ(view->content().setModelMatrix(id, shift), 0);
    ASSERT_EQ(view->content().setElementState(id, RenderMode::Points), 0);
    view->grabFrame();
    const osg::Vec3d placed = sample + osg::Vec3d(-6, 0, 0);
    const osg::Vec3d at = windowOf(*view, placed);
    PickHit hit;
    ASSERT_TRUE(PointPicker::pick(cameraOf(*view), *view->root(), at.x(), at.y(), &hit));
    EXPECT_LT((hit.position - placed).length(), 1e-4) << "the drawn point itself";
}

TEST(PointPicker, ShapesAndTheAxisArePassedByAndTheSceneStaysAsItIs) {
    auto view = makeView(300, 300);
    const QelPointCloud cloud = gridAt(0);
    ASSERT_GE(view->content().addPointCloud(cloud), 1);
    view->decorations().setAxisVisible(true);
    // A box between the eye and the data.
    Qel3DShape box;
    box.Set3DBox(QelVector3d(0, 0, 5), QelVector3d(0, 0, 0), QelVector3d(8, 8, 1));
    ASSERT_GE(view->content().showShape(box), 1);
    view->grabFrame();
    ASSERT_NE(view->decorations().cubeAxis(), nullptr);
    osg::Node* axis = view->decorations().cubeAxis()->node();

    PointPicker picker(view.get());
    std::vector<osg::Vec3f> picked;
    QObject::connect(&picker, &PointPicker::sig_pointPicked,
                     [&](const PickHit& hit) { picked.emplace_back(hit.position); });
    const QelVector3d marker = cloud[10 * 21 + 10];
    const osg::Vec3d at = windowOf(*view, osg::Vec3d(marker.x, marker.y, marker.z));
    osg::Group* root = view->root();
    std::vector<osg::Node*> children;
    for (unsigned i = 0; i < root->getNumChildren(); ++i)
        children.push_back(root->getChild(i));
    ASSERT_EQ(children.size(), 6u);
    EXPECT_EQ(children.back(), axis);
    for (int round = 0; round < 2; ++round) {
        picker.pickAt(float(at.x()), float(at.y()));
        ASSERT_EQ(picked.size(), size_t(round + 1));
        EXPECT_TRUE(same(osg::Vec3d(picked.back()), marker)) << "the data behind the box";
        EXPECT_EQ(picker.lastHit().object, view->content().registry().at(0)->id());
        for (unsigned i = 0; i < children.size(); ++i)
            EXPECT_EQ(root->getChild(i), children[i]) << "no node moved";
    }
    // Empty background: no report.
    picker.pickAt(3, 3);
    EXPECT_EQ(picked.size(), 2u);
}

class LassoSelection : public ::testing::Test {
protected:
    void SetUp() override {
        window = std::make_unique<Qel3DGraphicsPrivate>(nullptr, true);
        window->resize(360, 420);
        window->show();
        QCoreApplication::processEvents();
        view = window->viewer();
        view->grabFrame();
        layer = window->lassoLayer();
    }
    void TearDown() override { window.reset(); }

    // The points a brute-force projection puts inside the outline (widget
    // coordinates, closed), or outside it.
    std::set<std::tuple<float, float, float>> bruteForce(const QelVector3dArray& points,
                                                         std::vector<QPointF> outline,
                                                         bool keepInside) {
        const double h = view->height();
        for (QPointF& p : outline)
            p.setY(h - p.y());
        std::set<std::tuple<float, float, float>> out;
        for (int i = 0; i < points.Length(); ++i) {
            const osg::Vec3d w = windowOf(*view, osg::Vec3d(points[i].x, points[i].y, points[i].z));
            if (inside(outline, w.x(), w.y()) == keepInside)
                out.emplace(points[i].x, points[i].y, points[i].z);
        }
        return out;
    }
    static std::set<std::tuple<float, float, float>> asSet(const QelPointCloud& cloud) {
        std::set<std::tuple<float, float, float>> out;
        for (int i = 0; i < cloud.Length(); ++i)
            out.emplace(cloud[i].x, cloud[i].y, cloud[i].z);
        return out;
    }

    std::unique_ptr<Qel3DGraphicsPrivate> window;
    GLViewer* view = nullptr;
    PaintWidget* layer = nullptr;
};

TEST_F(LassoSelection, FreeLassoAndRectangleSelectWhatTheCameraShowsInside) {
    QelPointCloud cloud = gridAt(0);
    const long id = view->content().addPointCloud(cloud);
    ASSERT_GE(id, 1);
    view->camera().moveToView(StandardView::Oblique);
    view->camera().zoomFit();
    view->grabFrame();
    window->action(ToolBarAction::Lasso)->trigger();
    ASSERT_TRUE(layer->isVisible());

    // A free, concave lasso.
    const std::vector<QPointF> lasso = {{60, 80},   {300, 90}, {180, 200},
                                        {290, 330}, {70, 300}, {120, 190}};
    stroke(layer, lasso);
    std::vector<QPointF> closed(layer->outline().begin(), layer->outline().end());
    QelPointCloud selected;
    ASSERT_EQ(window->selectByLasso(&selected, false), 0);
    const auto expected = bruteForce(cloud.DeepCopyPoints(), closed, true);
    ASSERT_GT(expected.size(), 20u);
    EXPECT_EQ(asSet(selected), expected);
    EXPECT_TRUE(layer->outline().isEmpty()) << "the lasso is cleared after a selection";

    // "Remove" keeps the complement.
    stroke(layer, lasso);
    QelPointCloud outside;
    ASSERT_EQ(window->selectByLasso(&outside, true), 0);
    EXPECT_EQ(asSet(outside), bruteForce(cloud.DeepCopyPoints(), closed, false));
    EXPECT_EQ(outside.Length() + selected.Length(), cloud.Length());

    // A rectangle from a drag with Shift held: its four corners.
    stroke(layer, {{40, 60}, {100, 150}, {250, 260}}, Qt::ShiftModifier);
    EXPECT_EQ(layer->shapeMode(), LassoShape::Rectangle);
    QelPointCloud boxed;
    ASSERT_EQ(window->selectByLasso(&boxed, false), 0);
    EXPECT_EQ(asSet(boxed), bruteForce(cloud.DeepCopyPoints(),
                                       {{40, 60}, {250, 60}, {250, 260}, {40, 260}}, true));

    // Placed by a model matrix: chosen where drawn, returned as the cloud holds them.
    QelMatrix4 shift;
    shift.SetValue(0, 3, 2.5);
    ASSERT_EQ(view->content().setModelMatrix(id, shift), 0);
    view->grabFrame();
    stroke(layer, lasso);
    QelPointCloud moved;
    ASSERT_EQ(window->selectByLasso(&moved, false), 0);
    QelVector3dArray drawn = cloud.DeepCopyPoints();
    for (int i = 0; i < drawn.Length(); ++i)
        drawn[i].x += 2.5f;
    std::set<std::tuple<float, float, float>> expectedOwn;
    for (const auto& [x, y, z] : bruteForce(drawn, closed, true))
        expectedOwn.emplace(x - 2.5f, y, z);
    EXPECT_EQ(asSet(moved), expectedOwn);
    EXPECT_NE(asSet(moved), asSet(selected));
}

TEST_F(LassoSelection, StrokesNeedTheLeftButtonAndMoreThanOnePoint) {
    QelPointCloud none;
    EXPECT_EQ(window->selectByLasso(&none, false), QelStatus::kNoRenderObject);
    ASSERT_GE(view->content().addPointCloud(gridAt(0)), 1);
    view->grabFrame();
    window->action(ToolBarAction::Lasso)->trigger();

    // A click without movement draws nothing and selects nothing.
    stroke(layer, {{50, 50}});
    EXPECT_EQ(window->selectByLasso(&none, false), QelStatus::kLassoTooShort);
    EXPECT_EQ(none.Length(), 0);

    // The right button never starts a stroke.
    sendMouse(layer, QEvent::MouseButtonPress, {40, 40}, Qt::RightButton);
    sendMouse(layer, QEvent::MouseMove, {200, 40}, Qt::RightButton);
    sendMouse(layer, QEvent::MouseMove, {200, 200}, Qt::RightButton);
    sendMouse(layer, QEvent::MouseButtonRelease, {200, 200}, Qt::RightButton);
    EXPECT_TRUE(layer->outline().size() <= 1);

    // With the tool off, the layer gives the mouse back to the camera.
    window->action(ToolBarAction::Lasso)->trigger();
    EXPECT_FALSE(layer->isVisible());
}

TEST_F(LassoSelection, RangeImagesKeepTheSelectedSamples) {
    QelRangeImage image = ramp(60, 50, 100);
    image.SetInfo(0.2, 0.2, 0.05, 0, 0, 0);
    const long id = view->content().addRangeImage(image);
    ASSERT_GE(id, 1);
    view->camera().moveToView(StandardView::Top);
    view->camera().zoomFit();
    view->grabFrame();
    window->action(ToolBarAction::Lasso)->trigger();
    const std::vector<QPointF> lasso = {{100, 100}, {260, 120}, {240, 300}, {110, 260}};
    stroke(layer, lasso);
    std::vector<QPointF> closed(layer->outline().begin(), layer->outline().end());
    QelRangeImage selected;
    ASSERT_EQ(window->selectByLasso(&selected, false), 0);
    ASSERT_EQ(selected.Width(), 60);
    ASSERT_EQ(selected.Height(), 50);
    // Kept samples are exactly those a projection of the sample points puts inside.
    int kept = 0;
    for (int r = 0; r < 50; ++r)
        for (int c = 0; c < 60; ++c) {
            const double z = (100 + c) * 0.05;
            const osg::Vec3d w = windowOf(*view, osg::Vec3d(r * 0.2, c * 0.2, z));
            std::vector<QPointF> up = closed;
            for (QPointF& p : up)
                p.setY(view->height() - p.y());
            const bool in = inside(up, w.x(), w.y());
            const unsigned short v =
                reinterpret_cast<const unsigned short*>(selected.Data())[r * 60 + c];
            EXPECT_EQ(v != 0, in) << r << " " << c;
            if (in) {
                EXPECT_EQ(v, 100 + c);
            }
            kept += in;
        }
    EXPECT_GT(kept, 100);
}
