// What a paint draws: a change to the widgets over the view (the message,
// the lasso's stroke) repaints without a scene frame and still shows on the
// window; a camera move or new data draws one; with reuse off, every paint
// draws one.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMouseEvent>

#include "CameraController.h"
#include "PaintWidget.h"
#include "Qel3DGraphicsPrivate.h"
#include "QelOSGWidget.h"
#include "QelPointCloud.h"
#include "QelVar.h"
#include "QelVector3dArray.h"
#include "RenderTestScene.h"

namespace {

class FrameReuse : public ::testing::Test {
protected:
    void SetUp() override {
        window = std::make_unique<Qel3DGraphicsPrivate>(nullptr, true);
        window->resize(360, 320);
        window->show();
        view = window->viewer();
        QelVector3dArray points;
        for (int i = 0; i < 30; ++i)
            for (int j = 0; j < 30; ++j)
                points.Append(QelVector3d(i * 0.2f, j * 0.2f, 0.05f * float(i)));
        QelPointCloud cloud;
        cloud.SetPoints(points);
        ASSERT_GE(view->content().addPointCloud(cloud), 1);
        settle();
    }
    void TearDown() override { window.reset(); }

    // Lets every pending paint happen.
    static void settle() {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }
    long frames() const { return view->osgWidget()->paintedFrames(); }
    // The window as it is painted, the frame shown in it included.
    QImage picture() const { return window->grab().toImage(); }

    std::unique_ptr<Qel3DGraphicsPrivate> window;
    GLViewer* view = nullptr;
};

}  // namespace

TEST_F(FrameReuse, AMessageOrAStrokeRepaintsWithoutASceneFrame) {
    const long before = frames();
    ASSERT_GT(before, 0) << "the view was painted";
    window->drawMessageText(QelVar("Inspection 17: OK"));
    settle();
    EXPECT_EQ(frames(), before) << "the message alone changed";
    // A grab of the window draws its frame anew, as screenshots do.
    const QImage withMessage = picture();
    const long grabbed = frames();
    window->drawMessageText(QelVar("Inspection 18: NOT OK, three defects found"));
    settle();
    EXPECT_EQ(frames(), grabbed);
    EXPECT_NE(picture(), withMessage) << "the new message shows";

    // A lasso stroke over the still view.
    window->action(ToolBarAction::Lasso)->trigger();
    settle();
    const long lasso = frames();
    PaintWidget* layer = window->lassoLayer();
    int step = 0;
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseMove}) {
        const QPointF at(40 + 30 * step, 40 + 20 * step);
        ++step;
        QMouseEvent event(type, at, layer->mapToGlobal(at.toPoint()), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(layer, &event);
        settle();
    }
    EXPECT_EQ(frames(), lasso) << "the stroke alone changed";
}

TEST_F(FrameReuse, TheCameraOrTheDataDrawAFrameAndReuseCanBeOff) {
    long before = frames();
    view->camera().zoomFit();
    view->camera().moveToView(StandardView::Top);
    settle();
    EXPECT_GT(frames(), before) << "the camera moved";
    before = frames();
    QelVector3dArray one;
    one.Append(QelVector3d(1, 1, 3));
    QelPointCloud more;
    more.SetPoints(one);
    ASSERT_GE(view->content().addPointCloud(more), 1);
    settle();
    EXPECT_GT(frames(), before) << "new data";

    view->osgWidget()->setIncremental(false);
    before = frames();
    window->drawMessageText(QelVar("every paint draws"));
    settle();
    EXPECT_GT(frames(), before);
}
