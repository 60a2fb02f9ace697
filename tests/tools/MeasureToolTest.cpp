// The measuring tool driven as a user does: clicks on drawn points make a
// measurement and report it, the camera stays still, Escape drops the one
// in progress, and the tool-bar button with its menu switches it.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <osgViewer/Viewer>

#include "MeasureTool.h"
#include "OSGDataManager.h"
#include "Qel3DGraphicsPrivate.h"
#include "Qel3DIntArray.h"
#include "QelPointCloud.h"
#include "QelTriangleMesh.h"
#include "QelVector3dArray.h"
#include "RenderTestScene.h"

namespace {

struct Reported {
    long long handle;
    long id;
    int kind;
    double value;
};
std::vector<Reported> reported;

void onMeasured(long long handle, long id, int kind, double value, void* user) {
    static_cast<std::vector<Reported>*>(user)->push_back({handle, id, kind, value});
}

class Measuring : public ::testing::Test {
protected:
    void SetUp() override {
        window = std::make_unique<Qel3DGraphicsPrivate>(nullptr, true);
        window->resize(360, 420);
        window->show();
        QCoreApplication::processEvents();
        view = window->viewer();
        QelVector3dArray points;
        for (int i = 0; i <= 20; ++i)
            for (int j = 0; j <= 20; ++j)
                points.Append(QelVector3d(i * 0.5f - 5, j * 0.5f - 5, 0.1f * i));
        QelPointCloud cloud;
        cloud.SetPoints(points);
        ASSERT_GE(view->content().addPointCloud(cloud), 1);
        view->content().setPointSize(view->content().registry().at(0)->id(), 4.0f);
        window->moveToView(StandardView::Top);
        view->camera().zoomFit();
        view->grabFrame();
        reported.clear();
        window->registerMeasure(77, onMeasured, &reported);
    }
    void TearDown() override { window.reset(); }

    // Clicks the drawn point (x, y, z) of the cloud.
    void click(const osg::Vec3d& world) {
        osg::Camera& camera = *view->osgWidget()->viewer()->getCamera();
        const osg::Vec3d w = world * camera.getViewMatrix() * camera.getProjectionMatrix() *
                             camera.getViewport()->computeWindowMatrix();
        const QPointF at(w.x(), camera.getViewport()->height() - w.y());
        QWidget* target = view->osgWidget();
        for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const Qt::MouseButtons held =
                type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
            QMouseEvent event(type, at, target->mapToGlobal(at.toPoint()), Qt::LeftButton, held,
                              Qt::NoModifier);
            QApplication::sendEvent(target, &event);
        }
        view->grabFrame();                  // the frame that sees the click
        QCoreApplication::processEvents();  // the pick after it
    }
    void escape() {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(view->osgWidget(), &press);
    }

    std::unique_ptr<Qel3DGraphicsPrivate> window;
    GLViewer* view = nullptr;
};

}  // namespace

TEST_F(Measuring, ClicksMakeADistanceReportedToTheHostAndTheCameraStays) {
    const osg::Matrixd camera = view->manipulator()->getMatrix();
    window->startMeasuring(MeasureKind::Distance);
    EXPECT_TRUE(window->action(ToolBarAction::Measure)->isChecked());
    click({-4, -4, 0.1});
    EXPECT_EQ(window->measureTool()->pointCount(), 1);
    EXPECT_TRUE(reported.empty());
    click({3, 2, 1.5});
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_EQ(reported[0].handle, 77);
    EXPECT_EQ(reported[0].kind, 0);
    const double expected = std::sqrt(7.0 * 7.0 + 6.0 * 6.0 + 1.4 * 1.4);
    EXPECT_NEAR(reported[0].value, expected, 1e-5) << "snapped to the drawn points";
    double value = 0;
    ASSERT_EQ(view->content().measurement(reported[0].id, &value), 0);
    EXPECT_EQ(value, reported[0].value);
    EXPECT_EQ(window->measureTool()->pointCount(), 0) << "ready for the next one";
    EXPECT_EQ(view->manipulator()->getMatrix(), camera);

    // An angle from three clicks.
    window->startMeasuring(MeasureKind::Angle);
    click({-4, -4, 0.1});
    click({-4, 4, 0.1});
    click({4, 4, 0.9});
    ASSERT_EQ(reported.size(), 2u);
    EXPECT_EQ(reported[1].kind, 1);
    EXPECT_GT(reported[1].value, 80.0);
    EXPECT_LT(reported[1].value, 100.0);
}

// On a surface a click takes the vertex of the hit triangle nearest to the
// cursor: a measured sample, not a point between samples.
TEST_F(Measuring, OnASurfaceAClickSnapsToTheNearestVertex) {
    QelVector3dArray corners;
    for (const QelVector3d& c : {QelVector3d(-5, -5, 0), QelVector3d(5, -5, 0),
                                 QelVector3d(5, 5, 2), QelVector3d(-5, 5, 0)})
        corners.Append(c);
    Qel3DIntArray triangles;
    triangles.SetSize(6);
    const int order[] = {0, 1, 2, 0, 2, 3};
    for (int k = 0; k < 6; ++k)
        triangles[k] = order[k];
    QelTriangleMesh mesh;
    mesh.SetVertices(corners);
    ASSERT_TRUE(mesh.SetTriangles(triangles));
    ASSERT_GE(view->content().addTriangleMesh(mesh, true), 1);
    view->grabFrame();
    window->startMeasuring(MeasureKind::Distance);
    click({4, -4, 0.2});     // on the first triangle, near (5, -5, 0)
    click({3.5, 4.2, 1.7});  // on the second, near (5, 5, 2)
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_NEAR(reported[0].value, std::sqrt(100.0 + 4.0), 1e-6);
}

TEST_F(Measuring, EscapeDropsTheOneInProgressThenLeavesTheTool) {
    window->startMeasuring(MeasureKind::Height);
    click({-4, -4, 0.1});
    click({4, -4, 0.9});
    ASSERT_EQ(window->measureTool()->pointCount(), 2);
    escape();
    EXPECT_EQ(window->measureTool()->pointCount(), 0);
    EXPECT_TRUE(window->action(ToolBarAction::Measure)->isChecked()) << "still measuring";
    escape();
    EXPECT_FALSE(window->action(ToolBarAction::Measure)->isChecked());
    EXPECT_FALSE(window->measureTool()->kind().has_value());
    // Off, a click picks nothing.
    click({-4, -4, 0.1});
    EXPECT_EQ(window->measureTool()->pointCount(), 0);
    EXPECT_TRUE(reported.empty());
}

TEST_F(Measuring, TheButtonsMenuChoosesTheKind) {
    QMenu* menu = window->action(ToolBarAction::Measure)->menu();
    ASSERT_NE(menu, nullptr);
    QStringList texts;
    for (QAction* a : menu->actions())
        texts << a->text();
    EXPECT_EQ(texts, (QStringList{"Distance", "Angle", "Height"}));
    menu->actions().at(2)->trigger();
    EXPECT_EQ(window->measureTool()->kind(), MeasureKind::Height);
    EXPECT_TRUE(window->action(ToolBarAction::Measure)->isChecked());
    window->action(ToolBarAction::Measure)->trigger();  // off
    EXPECT_FALSE(window->measureTool()->kind().has_value());
    window->action(ToolBarAction::Measure)->trigger();  // on again, with the last kind
    EXPECT_EQ(window->measureTool()->kind(), MeasureKind::Height);
    // The other tools switch it off.
    window->action(ToolBarAction::Lasso)->trigger();
    EXPECT_FALSE(window->measureTool()->kind().has_value());
}
