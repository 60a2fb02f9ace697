// A host on a high-density screen: the process runs with QT_SCALE_FACTOR
// set before the first window (CTest runs this program at 1.5 and 2). The
// frame must hold the whole view in device pixels, sizes given in pixels
// keep their look, and clicks and lassos land where the user sees them.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QMouseEvent>
#include <QToolButton>
#include <algorithm>
#include <cmath>

#include "ApiHost.h"
#include "MouseEvents.h"

// After the toolkit's headers, as in ApiHost.h.
#include <X11/Xutil.h>

using namespace QELMV;

namespace {

double expectedRatio() {
    const QByteArray factor = qgetenv("QT_SCALE_FACTOR");
    return factor.isEmpty() ? 1.0 : factor.toDouble();
}

// The box of the pixels a test accepts, in the picture's pixels.
struct Extent {
    int left = 1 << 30, top = 1 << 30, right = -1, bottom = -1;
    long count = 0;
    void add(int x, int y) {
        left = std::min(left, x), right = std::max(right, x);
        top = std::min(top, y), bottom = std::max(bottom, y);
        ++count;
    }
    double centreX() const { return (left + right) / 2.0; }
    double centreY() const { return (top + bottom) / 2.0; }
};

// Over the columns [fromX, toX) when given.
Extent extentOf(const Shot& shot, const std::function<bool(int, int, int)>& test, int fromX = 0,
                int toX = -1) {
    Extent e;
    int r, g, b;
    for (int y = 0; y < shot.height(); ++y)
        for (int x = fromX; x < (toX < 0 ? shot.width() : toX); ++x) {
            shot.rgb(x, y, &r, &g, &b);
            if (test(r, g, b)) e.add(x, y);
        }
    return e;
}

bool white(int r, int g, int b) {
    return r > 200 && g > 200 && b > 200;
}

// A colour neither the colour table nor the tool bar's icons use.
bool magenta(int r, int g, int b) {
    return r > 200 && b > 200 && g < 60;
}

// A magenta square of side 10, seen from above at 30 units.
void showSquare(long long h) {
    QelTriangleMesh square = squareMesh(5);
    const long id = QelDisplayTriangleMesh(h, square);
    ASSERT_GE(id, 1);
    QelColorArray colour;
    colour.Create(1, 3);
    colour.Data()[0] = colour.Data()[2] = 255;
    ASSERT_EQ(QelSetRenderColor(h, id, colour), 0);
    ASSERT_EQ(lookDown(h, 30), 0);
}

struct Picked {
    std::vector<QelVector3d> points;
};

void onPick(long long, QelVector3d& point, void* user) {
    static_cast<Picked*>(user)->points.push_back(point);
}

void onMeasure(long long, long, int, double value, void* user) {
    static_cast<std::vector<double>*>(user)->push_back(value);
}

// A press and release at a window position, and the frames that see them.
void clickAt(long long h, QWidget* view, const QPointF& at) {
    sendMouse(view, QEvent::MouseButtonPress, at);
    sendMouse(view, QEvent::MouseButtonRelease, at);
    for (int i = 0; i < 5; ++i) {
        pumpEvents();
        Shot frame(h);
    }
    pumpEvents();
}

class HighDensity : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(window.created, 0) << QelGetStatusText(window.created);
        ratio = qApp->devicePixelRatio();
        ASSERT_DOUBLE_EQ(ratio, expectedRatio()) << "the scale factor reached the toolkit";
        ASSERT_EQ(QelSetLightState(h, false), 0);
    }
    // X pixels, as a host sizes its window.
    HostedWindow window{900, 700};
    long long h = window.handle;
    double ratio = 1;
};

}  // namespace

TEST_F(HighDensity, TheFrameHoldsTheWholeViewInDevicePixels) {
    // A square in the middle of the view: drawn whole, square and centred
    // at any density (a frame cropped to a corner shows it off-centre).
    showSquare(h);
    const Shot shot(h);
    ASSERT_EQ(shot.status, 0);
    shot.keep("high-density-square");
    QWidget* view = childOfClass(h, "MOpenglWidget");
    ASSERT_NE(view, nullptr);
    // Device pixels: the view's logical size times the ratio; it spans the
    // host window's width, which is given in X (device) pixels.
    EXPECT_EQ(shot.width(), std::lround(view->width() * ratio));
    EXPECT_EQ(shot.height(), std::lround(view->height() * ratio));
    EXPECT_NEAR(shot.width(), 900, 1);

    const Extent e = extentOf(shot, magenta);
    ASSERT_GT(e.count, 0);
    EXPECT_NEAR(e.centreX(), shot.width() / 2.0, 3);
    EXPECT_NEAR(e.centreY(), shot.height() / 2.0, 3);
    EXPECT_NEAR(e.right - e.left, e.bottom - e.top, 2);
    EXPECT_NEAR(double(e.bottom - e.top + 1) / shot.height(), 0.63, 0.05);

    // The widget path (the colour bar over the frame) gives the same pixels.
    ASSERT_TRUE(pressButton(h, "Show Color Bar"));
    const Shot painted(h);
    ASSERT_EQ(painted.status, 0);
    EXPECT_EQ(painted.width(), shot.width());
    EXPECT_EQ(painted.height(), shot.height());
    const Extent p = extentOf(painted, magenta);
    EXPECT_NEAR(p.centreX(), e.centreX(), 1);
    EXPECT_NEAR(p.bottom - p.top, e.bottom - e.top, 1);
}

TEST_F(HighDensity, EyeDomeLightingRingsASilhouetteAsWideAsItsRadius) {
    // On a white background, the pass darkens a ring around the square as
    // wide as its radius: 2 logical pixels, 2 * ratio device pixels.
    showSquare(h);
    QelColor background(255, 255, 255, 255);
    ASSERT_EQ(QelSet3DBackgroundColor(h, background), 0);
    ASSERT_EQ(QelSetAxisVisible(h, false), 0);
    const Extent square = extentOf(Shot(h), magenta);
    ASSERT_EQ(QelSetEyeDomeLighting(h, true, 1.0, 2.0), 0);
    const Shot shot(h);
    const Extent after = extentOf(shot, magenta);
    EXPECT_EQ(after.count, square.count) << "the square itself is flat: unshaded";
    const int ring = shot.count([](int r, int g, int b) { return r < 128 && g < 128 && b < 128; });
    const double perimeter = 2.0 * ((square.right - square.left) + (square.bottom - square.top));
    EXPECT_NEAR(ring / perimeter, 2 * ratio, 0.6 * ratio);
}

TEST_F(HighDensity, PointsAndLinesKeepTheirLook) {
    // One point of size 6 logical pixels covers about (6 * ratio)^2 device
    // pixels.
    QelVector3dArray one;
    one.SetSize(1);
    one[0] = QelVector3d(0, 0, 0);
    QelPointCloud cloud;
    cloud.SetPoints(one);
    const long id = QelDisplayPointCloud(h, cloud);
    ASSERT_GE(id, 1);
    ASSERT_EQ(QelSet3DElementSize(h, id, 6), 0);
    QelColorArray whiteColour;
    whiteColour.Create(1, 3);
    std::memset(whiteColour.Data(), 255, 3);
    ASSERT_EQ(QelSetRenderColor(h, id, whiteColour), 0);
    ASSERT_EQ(lookDown(h, 30), 0);
    const Shot shot(h);
    const Extent e = extentOf(shot, white);
    const double side = 6 * ratio;
    EXPECT_GE(e.right - e.left + 1, std::floor(side));
    EXPECT_LE(e.right - e.left + 1, std::ceil(side) + 1);

    // A line of width 3 is 3 * ratio device pixels wide.
    Qel3DShape line;
    line.Set3DLine(QelVector3d(-5, 2, 0), QelVector3d(5, 2, 0), QEL_LINE_SEGMENT);
    const long lineId = QelShow3DShape(h, line);
    ASSERT_GE(lineId, 1);
    QelColorArray red;
    red.Create(1, 3);
    red.Data()[0] = 255;
    ASSERT_EQ(QelSetRenderColor(h, lineId, red), 0);
    ASSERT_EQ(QelSetRenderLineWidth(h, lineId, 3), 0);
    const Shot lined(h);
    lined.keep("high-density-point-and-line");
    const Extent l =
        extentOf(lined, [](int r, int g, int b) { return r > 200 && g < 60 && b < 60; });
    ASSERT_GT(l.count, 0);
    EXPECT_GE(l.bottom - l.top + 1, std::floor(3 * ratio));
    EXPECT_LE(l.bottom - l.top + 1, std::ceil(3 * ratio) + 1);
}

TEST_F(HighDensity, AMeasurementKeepsItsLineWidthAndLabelSize) {
    QelVector3dArray one;
    one.SetSize(1);
    one[0] = QelVector3d(0, 0, -1);
    QelPointCloud cloud;
    cloud.SetPoints(one);
    ASSERT_GE(QelDisplayPointCloud(h, cloud), 1);
    ASSERT_EQ(lookDown(h, 30), 0);
    const Shot before(h);
    // A horizontal distance: its line is 2 logical pixels thick, its label
    // about 14 logical pixels a line high, three lines.
    QelVector3dArray ends;
    ends.SetSize(2);
    ends[0] = QelVector3d(-5, -2, 0);
    ends[1] = QelVector3d(5, -2, 0);
    ASSERT_GE(QelAdd3DMeasurement(h, 0, ends), 1);
    const Shot measured(h);
    measured.keep("high-density-measurement");
    // The line's thickness: its row is the one with the most white pixels;
    // a little right of its left end mark, the white run across that row.
    std::vector<int> perRow(size_t(measured.height()), 0);
    int r, g, b;
    for (int y = 0; y < measured.height(); ++y)
        for (int x = 0; x < measured.width(); ++x) {
            measured.rgb(x, y, &r, &g, &b);
            perRow[size_t(y)] += white(r, g, b);
        }
    const int row = int(std::max_element(perRow.begin(), perRow.end()) - perRow.begin());
    auto isWhite = [&](int x, int y) {
        measured.rgb(x, y, &r, &g, &b);
        return white(r, g, b);
    };
    int left = 0;
    while (left < measured.width() - 1 && !isWhite(left, row))
        ++left;
    const int column = left + int(std::lround(10 * ratio));
    int top = row, bottom = row;
    while (top > 0 && isWhite(column, top - 1))
        --top;
    while (bottom < measured.height() - 1 && isWhite(column, bottom + 1))
        ++bottom;
    EXPECT_GE(bottom - top + 1, std::floor(2 * ratio));
    EXPECT_LE(bottom - top + 1, std::ceil(2 * ratio) + 1);
    // The label's three lines: the whole drawing at least 3 x 14 logical
    // pixels tall.
    const Extent all =
        extentOf(measured, [](int r, int g, int b) { return r > 120 && g > 120 && b > 120; });
    EXPECT_GE(all.bottom - all.top + 1, 3 * 14 * ratio * 0.8);
}

TEST_F(HighDensity, AClickPicksWhatIsUnderTheCursorAndALassoWhatItEncloses) {
    // A grid of points, all blue but a white and a red marker.
    QelPointCloud cloud = gridCloud(30, 0.5f, [](float, float) { return 0.0f; });
    const int marker = 21 * 30 + 7, second = 6 * 30 + 22;
    const long id = QelDisplayPointCloud(h, cloud);
    ASSERT_GE(id, 1);
    QelColorArray colours;
    colours.Create(cloud.Length(), 3);
    for (int i = 0; i < cloud.Length(); ++i) {
        unsigned char* c = colours.Data() + 3 * i;
        c[0] = i == marker || i == second ? 255 : 0;
        c[1] = i == marker ? 255 : 0;
        c[2] = i == second ? 0 : 255;
    }
    ASSERT_EQ(QelSetRenderColor(h, id, colours), 0);
    ASSERT_EQ(QelSet3DElementSize(h, id, 4), 0);
    ASSERT_EQ(lookDown(h, 40), 0);  // the whole grid in view

    // The marker's device pixel in the screenshot, in the widget's logical
    // coordinates.
    const Extent m = extentOf(Shot(h), white);
    ASSERT_GT(m.count, 0);
    const QPointF at(m.centreX() / ratio, m.centreY() / ratio);
    Picked picked;
    ASSERT_EQ(QelRegisterSelectPointEvent(h, onPick, &picked), 0);
    ASSERT_EQ(QelSet3DToolbarVisible(h, 0x00200000L, true), 0);
    ASSERT_TRUE(pressButton(h, "Select point"));
    QWidget* view = childOfClass(h, "MOpenglWidget");
    clickAt(h, view, at);
    ASSERT_EQ(picked.points.size(), 1u);
    EXPECT_NEAR(picked.points[0].x, cloud[marker].x, 1e-5);
    EXPECT_NEAR(picked.points[0].y, cloud[marker].y, 1e-5);
    ASSERT_TRUE(pressButton(h, "Select point"));

    // The measuring tool takes the points under the cursor the same way.
    const Extent r =
        extentOf(Shot(h), [](int red, int g, int b) { return red > 200 && g < 60 && b < 60; });
    ASSERT_GT(r.count, 0);
    std::vector<double> measured;
    ASSERT_EQ(QelRegisterMeasureEvent(h, onMeasure, &measured), 0);
    ASSERT_EQ(QelSet3DMeasureMode(h, 0), 0);
    clickAt(h, view, at);
    clickAt(h, view, QPointF(r.centreX() / ratio, r.centreY() / ratio));
    ASSERT_EQ(QelSet3DMeasureMode(h, -1), 0);
    ASSERT_EQ(measured.size(), 1u);
    EXPECT_NEAR(measured[0],
                std::hypot(cloud[marker].x - cloud[second].x, cloud[marker].y - cloud[second].y),
                1e-5);
    ASSERT_EQ(QelClearAll3DMeasurement(h), 0);

    // A lasso around the left half of the view (logical coordinates)
    // selects the points with x < 0, and only those.
    ASSERT_EQ(QelSet3DToolbarVisible(h, 0x00400000L, true), 0);
    ASSERT_TRUE(pressButton(h, "Draw lasso"));
    QWidget* layer = childOfClass(h, "PaintWidget");
    ASSERT_NE(layer, nullptr);
    const double w = layer->width(), ht = layer->height();
    const QPointF loop[] = {{2, 2}, {w / 2 - 1, 2}, {w / 2 - 1, ht - 2}, {2, ht - 2}};
    sendMouse(layer, QEvent::MouseButtonPress, loop[0]);
    for (const QPointF& p : loop)
        sendMouse(layer, QEvent::MouseMove, p);
    sendMouse(layer, QEvent::MouseButtonRelease, loop[3]);
    pumpEvents();
    const Shot drawn(h);
    drawn.keep("high-density-lasso");
    QelPointCloud selected;
    ASSERT_EQ(QelSelectPointsByLasso(h, &selected, false), 0);
    EXPECT_EQ(selected.Length(), cloud.Length() / 2);
    for (int i = 0; i < selected.Length(); ++i)
        ASSERT_LT(selected[i].x, 0.0f) << i;
}

TEST_F(HighDensity, TheEmbeddedWindowFillsItsHostOnTheScreen) {
    // What the X server shows: the library's X window is as large as the
    // host's, in X pixels, and the data sits in the middle of it.
    showSquare(h);
    for (int i = 0; i < 10; ++i)
        pumpEvents();
    Display* display = window.host.display();
    const std::vector<Window> children = window.host.children();
    ASSERT_EQ(children.size(), 1u);
    XWindowAttributes child{};
    ASSERT_TRUE(XGetWindowAttributes(display, children[0], &child));
    EXPECT_NEAR(child.width, 900, 1);
    EXPECT_NEAR(child.height, 700, 1);

    // An X11 grab of the host window: the square is whole and centred
    // across the width.
    XImage* grab = XGetImage(display, static_cast<Window>(window.host.id()), 0, 0, 900, 700,
                             AllPlanes, ZPixmap);
    ASSERT_NE(grab, nullptr);
    Extent e;
    for (int y = 0; y < 700; ++y)
        for (int x = 0; x < 900; ++x) {
            const unsigned long p = XGetPixel(grab, x, y);
            if (magenta(int((p >> 16) & 0xff), int((p >> 8) & 0xff), int(p & 0xff))) e.add(x, y);
        }
    XDestroyImage(grab);
    const Shot shot(h);
    const Extent s = extentOf(shot, magenta);
    ASSERT_GT(e.count, 0);
    EXPECT_NEAR(e.centreX(), 450, 3);
    EXPECT_NEAR(e.right - e.left, s.right - s.left, 2) << "the same size as in the screenshot";
    EXPECT_NEAR(e.bottom - e.top, s.bottom - s.top, 2);

    // The host grows its window: the view follows, in X pixels.
    window.host.resize(1000, 760);
    for (int i = 0; i < 10; ++i)
        pumpEvents();
    ASSERT_TRUE(XGetWindowAttributes(display, children[0], &child));
    EXPECT_NEAR(child.width, 1000, 1);
    EXPECT_NEAR(child.height, 760, 1);
    EXPECT_NEAR(Shot(h).width(), 1000, 1);
}
