// Picking and the lasso as a user reaches them: the host shows the two
// tool-bar buttons, clicks them, and the test drives the view with
// synthesized mouse events; the host's callback and the lasso functions
// report what was under the cursor.
#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolButton>
#include <cmath>

#include "ApiHost.h"
#include "MouseEvents.h"

// Xlib names an event KeyPress too.
#undef KeyPress

using namespace QELMV;

namespace {

struct Picked {
    long long window = 0;
    std::vector<QelVector3d> points;
};

void onPick(long long window, QelVector3d& point, void* user) {
    auto* picked = static_cast<Picked*>(user);
    picked->window = window;
    picked->points.push_back(point);
}

QWidget* view(long long h) {
    return childOfClass(h, "MOpenglWidget");
}

// A click as the user makes one; the view handles it in its next frame.
void click(long long h, QPoint at, Qt::MouseButton button = Qt::LeftButton) {
    sendMouse(view(h), QEvent::MouseButtonPress, at, button);
    sendMouse(view(h), QEvent::MouseButtonRelease, at, button);
    for (int i = 0; i < 5; ++i) {
        pumpEvents();
        Shot settle(h);  // a frame, which reads the queued clicks
    }
    pumpEvents();
}

// The centre of the pixels of one colour in a screenshot, or (-1, -1).
QPoint centreOf(const Shot& shot, int r0, int g0, int b0) {
    long sx = 0, sy = 0, n = 0;
    int r, g, b;
    for (int y = 0; y < shot.height(); ++y)
        for (int x = 0; x < shot.width(); ++x) {
            shot.rgb(x, y, &r, &g, &b);
            if (r == r0 && g == g0 && b == b0) sx += x, sy += y, ++n;
        }
    return n ? QPoint(int(sx / n), int(sy / n)) : QPoint(-1, -1);
}

// A 30 x 30 grid at z = 0.1 (x + y), all blue but one white point.
struct MarkedCloud {
    QelPointCloud cloud = gridCloud(30, 0.5f, [](float x, float y) { return 0.1f * (x + y); });
    static constexpr int kMarker = 17 * 30 + 9;
    QelVector3d marker() const { return cloud[kMarker]; }
    long show(long long h, bool add = false) {
        const long id = add ? QelAdd3DRenderObject(h, cloud) : QelDisplayPointCloud(h, cloud);
        QelColorArray colours;
        colours.Create(cloud.Length(), 3);
        for (int i = 0; i < cloud.Length(); ++i) {
            unsigned char* c = colours.Data() + 3 * i;
            c[0] = c[1] = i == kMarker ? 255 : 0;
            c[2] = 255;
        }
        QelSetRenderColor(h, id, colours);
        QelSet3DElementSize(h, id, 5);
        return id;
    }
};

bool same(const QelVector3d& a, const QelVector3d& b, float tolerance = 1e-5f) {
    return std::abs(a.x - b.x) <= tolerance && std::abs(a.y - b.y) <= tolerance &&
           std::abs(a.z - b.z) <= tolerance;
}

class Selection : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(window.created, 0) << QelGetStatusText(window.created);
        ASSERT_EQ(QelSetLightState(h, false), 0);  // exact colours to find the marker by
        ASSERT_EQ(QelRegisterSelectPointEvent(h, onPick, &picked), 0);
        QelVector3d eye(0, 0, 30), centre(0, 0, 0), up(0, 1, 0);
        camera = [=]() mutable { QelSetCamera(h, eye, centre, up); };
    }

    HostedWindow window{1000, 700};
    long long h = window.handle;
    Picked picked;
    std::function<void()> camera;
};

}  // namespace

TEST_F(Selection, ButtonsAppearAtTheEndOfTheToolBarWhenTheHostShowsThem) {
    QAction* lasso = findAction(h, "Draw lasso");
    QAction* pick = findAction(h, "Select point");
    ASSERT_TRUE(lasso && pick);
    EXPECT_FALSE(lasso->isVisible());
    EXPECT_FALSE(pick->isVisible());
    ASSERT_EQ(QelSet3DToolbarVisible(h, 0x00400000L | 0x00200000L, true), 0);
    const QList<QAction*> actions = toolBar(h)->actions();
    EXPECT_EQ(actions.at(actions.size() - 2), lasso);
    EXPECT_EQ(actions.last(), pick);
    EXPECT_FALSE(pick->icon().isNull());
    EXPECT_TRUE(pick->isCheckable() && lasso->isCheckable());
    pumpEvents();
    EXPECT_TRUE(toolBar(h)->widgetForAction(pick)->isVisible());
    keepWidget(toolBar(h), "selection-tool-bar");

    // One tool at a time; Escape leaves either.
    ASSERT_TRUE(pressButton(h, "Select point"));
    EXPECT_TRUE(pick->isChecked());
    ASSERT_TRUE(pressButton(h, "Draw lasso"));
    EXPECT_TRUE(lasso->isChecked());
    EXPECT_FALSE(pick->isChecked());
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(childOfClass(h, "PaintWidget"), &escape);
    EXPECT_FALSE(lasso->isChecked());
    ASSERT_TRUE(pressButton(h, "Select point"));
    QApplication::sendEvent(view(h), &escape);
    EXPECT_FALSE(pick->isChecked());
}

TEST_F(Selection, AClickReportsThePointUnderTheCursor) {
    MarkedCloud data;
    ASSERT_TRUE(isId(data.show(h)));
    camera();
    const QPoint marker = centreOf(Shot(h), 255, 255, 255);
    ASSERT_GE(marker.x(), 0);
    ASSERT_EQ(QelSet3DToolbarVisible(h, 0x00200000L, true), 0);
    ASSERT_TRUE(pressButton(h, "Select point"));

    click(h, marker + QPoint(1, 1));
    ASSERT_EQ(picked.points.size(), 1u);
    EXPECT_EQ(picked.window, h);
    EXPECT_TRUE(same(picked.points[0], data.marker()))
        << picked.points[0].x << " " << picked.points[0].y << " " << picked.points[0].z << " vs "
        << data.marker().x << " " << data.marker().y << " " << data.marker().z;

    // A drag in pick mode leaves the camera where it is.
    QelVector3d eye0, centre0, up0, eye1, centre1, up1;
    ASSERT_EQ(QelGetCamera(h, &eye0, &centre0, &up0), 0);
    sendMouse(view(h), QEvent::MouseButtonPress, {300, 300}, Qt::LeftButton);
    for (int x = 300; x < 500; x += 20) {
        QMouseEvent move(QEvent::MouseMove, QPoint(x, 300), view(h)->mapToGlobal(QPoint(x, 300)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view(h), &move);
        Shot frame(h);
    }
    ASSERT_EQ(QelGetCamera(h, &eye1, &centre1, &up1), 0);
    EXPECT_TRUE(same(eye0, eye1) && same(centre0, centre1)) << "the camera stayed";
    sendMouse(view(h), QEvent::MouseButtonRelease, {500, 300}, Qt::LeftButton);
    pumpEvents();
    picked.points.clear();

    // The background reports nothing; neither does a click after Escape.
    click(h, QPoint(3, 3));
    EXPECT_EQ(picked.points.size(), 0u);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(view(h), &escape);
    click(h, marker);
    EXPECT_EQ(picked.points.size(), 0u);

    // With the axis and a shape in front, the data point is still found.
    ASSERT_EQ(QelSetAxisVisible(h, true), 0);
    Qel3DShape plate;
    plate.Set3DBox(QelVector3d(0, 0, 4), QelVector3d(0, 0, 0), QelVector3d(20, 20, 0.5f));
    ASSERT_TRUE(isId(QelShow3DShape(h, plate)));
    camera();
    ASSERT_TRUE(pressButton(h, "Select point"));
    click(h, marker);
    ASSERT_EQ(picked.points.size(), 1u);
    EXPECT_TRUE(same(picked.points[0], data.marker()));
}

TEST_F(Selection, PicksOnRangeImagesMeshesAndPlacedObjects) {
    ASSERT_EQ(QelSet3DToolbarVisible(h, 0x00200000L, true), 0);
    // A mesh square at z = 2: its surface, at the pixel clicked.
    QelTriangleMesh square = squareMesh(4);
    QelMatrix4 lift;
    lift.SetValue(2, 3, 2);
    const long meshId = QelDisplayTriangleMesh(h, square);
    ASSERT_TRUE(isId(meshId));
    camera();
    ASSERT_TRUE(pressButton(h, "Select point"));
    const QPoint middle(view(h)->width() / 2, view(h)->height() / 2);
    click(h, middle);
    ASSERT_EQ(picked.points.size(), 1u);
    EXPECT_NEAR(picked.points[0].z, 0.0, 1e-4);
    EXPECT_NEAR(picked.points[0].x, 0.0, 0.1);
    EXPECT_NEAR(picked.points[0].y, 0.0, 0.1);
    // Placed by a model matrix: the world point.
    ASSERT_EQ(QelSetObjectModelMatrix(h, meshId, lift), 0);
    click(h, middle);
    ASSERT_EQ(picked.points.size(), 2u);
    EXPECT_NEAR(picked.points[1].z, 2.0, 1e-4);

    // A flat range image 3 units high, in points and faces.
    QelRangeImage image;
    image.SetSize(64, 64, QEL_16U);
    std::vector<unsigned short> samples(64 * 64, 30);
    image.SetValue(samples.data(), 64 * 64, 1.0, 0.0, 0, 0);
    image.SetInfo(0.1, 0.1, 0.1, 32, 32, 0);  // centred on the origin
    const long imageId = QelDisplayRangeImage(h, image);
    ASSERT_TRUE(isId(imageId));
    camera();
    for (auto mode : {QEL_3D_POINTS, QEL_3D_TRIANGLES}) {
        ASSERT_EQ(QelSet3DElementState(h, imageId, mode), 0);
        const size_t before = picked.points.size();
        click(h, middle);
        ASSERT_EQ(picked.points.size(), before + 1) << mode;
        EXPECT_NEAR(picked.points.back().z, 3.0, 1e-4);
        EXPECT_LT(std::hypot(picked.points.back().x, picked.points.back().y), 0.4f * 1.5f)
            << "within the drawn spacing (step 4 of 0.1)";
    }
}

TEST_F(Selection, LassoSelectsFromTheLastObjectAndShowsItBack) {
    QelPointCloud none;
    EXPECT_EQ(QelSelectPointsByLasso(h, static_cast<QelPointCloud*>(nullptr), false), 11200002);
    EXPECT_EQ(QelSelectPointsByLasso(h, &none, false), 11501008);
    MarkedCloud data;
    ASSERT_TRUE(isId(data.show(h)));
    camera();
    ASSERT_EQ(QelSet3DToolbarVisible(h, 0x00400000L, true), 0);
    ASSERT_TRUE(pressButton(h, "Draw lasso"));
    QWidget* layer = childOfClass(h, "PaintWidget");
    ASSERT_NE(layer, nullptr);
    ASSERT_TRUE(layer->isVisible());

    // Strokes draw; they never turn the camera.
    QelVector3d eye0, centre0, up0, eye1, centre1, up1;
    ASSERT_EQ(QelGetCamera(h, &eye0, &centre0, &up0), 0);

    // A one-point stroke draws nothing and selects nothing.
    sendMouse(layer, QEvent::MouseButtonPress, {100, 100}, Qt::LeftButton);
    sendMouse(layer, QEvent::MouseMove, {100, 100}, Qt::LeftButton);
    sendMouse(layer, QEvent::MouseButtonRelease, {100, 100}, Qt::LeftButton);
    EXPECT_EQ(QelSelectPointsByLasso(h, &none, false), 11501009);

    // A loop around the upper left part of the grid.
    const QPoint loop[] = {{250, 60}, {480, 50}, {500, 320}, {300, 330}, {230, 200}};
    sendMouse(layer, QEvent::MouseButtonPress, loop[0], Qt::LeftButton);
    for (QPoint p : loop)
        sendMouse(layer, QEvent::MouseMove, p, Qt::LeftButton);
    sendMouse(layer, QEvent::MouseButtonRelease, loop[4], Qt::LeftButton);
    pumpEvents();
    const Shot drawn(h);
    ASSERT_EQ(QelGetCamera(h, &eye1, &centre1, &up1), 0);
    EXPECT_TRUE(same(eye0, eye1) && same(centre0, centre1)) << "the camera stayed";
    drawn.keep("selection-lasso-drawn");
    EXPECT_GT(drawn.count([](int r, int g, int b) { return r > 200 && g < 60 && b < 60; }), 200)
        << "the red outline";

    QelRangeImage notAnImage;
    EXPECT_EQ(QelSelectPointsByLasso(h, &notAnImage, false), 0) << "a cloud has no samples";
    EXPECT_EQ(notAnImage.Width(), 0);
    QelPointCloud selected;
    ASSERT_EQ(QelSelectPointsByLasso(h, &selected, false), 0);
    ASSERT_GT(selected.Length(), 20);
    EXPECT_LT(selected.Length(), data.cloud.Length() / 2);
    // Upper left on screen is -x, +y of the data.
    for (int i = 0; i < selected.Length(); ++i)
        EXPECT_TRUE(selected[i].x < 1.0f && selected[i].y > -1.0f) << i;

    // Shown back in another colour over the whole cloud.
    ASSERT_TRUE(pressButton(h, "Draw lasso"));
    const long back = QelAdd3DRenderObject(h, selected);
    ASSERT_TRUE(isId(back));
    QelColorArray yellow;
    yellow.Create(1, 3);
    yellow.Data()[0] = yellow.Data()[1] = 255;
    ASSERT_EQ(QelSetRenderColor(h, back, yellow), 0);
    ASSERT_EQ(QelSet3DElementSize(h, back, 7), 0);
    const Shot shown(h);
    shown.keep("selection-shown-back");
    EXPECT_GT(shown.count([](int r, int g, int b) { return r == 255 && g == 255 && b == 0; }), 200);
}
