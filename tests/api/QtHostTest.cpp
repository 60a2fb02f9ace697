// A host built on Qt, as the README offers it to hosts that run their own
// QApplication: a main window whose central widget lays out a side panel
// and a container, and the 3D window made in the container. The view must
// fill the container and follow it; what is drawn is checked, not only the
// widgets' sizes.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QListWidget>
#include <QMainWindow>
#include <QTabWidget>
#include <functional>

#include "Qel3DGraphics.h"

using namespace QELMV;

namespace {

void settle() {
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
}

QWidget* makeContainer(QWidget* parent) {
    return new QWidget(parent);
}

// Whether the view's black background reaches the container's left, right
// and lower edges (the status line's height above the bottom) in what the
// container shows.
bool viewCoversContainer(QWidget* container) {
    const QImage image = container->grab().toImage();
    QRect black;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == qRgb(0, 0, 0)) black |= QRect(x, y, 1, 1);
    const double ratio = image.devicePixelRatioF();
    return black.left() == 0 && black.right() == image.width() - 1 &&
           black.bottom() >= image.height() - 40 * ratio && black.top() <= 60 * ratio;
}

// The centre of the drawn data (anything not black) in a screenshot, and
// the screenshot's size.
struct Drawn {
    QSize size;
    QPointF centre{-1, -1};
};

Drawn drawn(long long h) {
    QelImage shot;
    Drawn out;
    if (Qel3DScreenShot(h, &shot) != 0) return out;
    out.size = QSize(shot.Width(), shot.Height());
    if (const char* dir = std::getenv("QEL_TEST_IMAGE_DIR")) {
        static int n = 0;
        const std::string path = std::string(dir) + "/qthost-" + std::to_string(++n) + ".png";
        shot.SaveImage(std::wstring(path.begin(), path.end()).c_str(), QEL_IMAGE_FORMAT_PNG);
    }
    double sx = 0, sy = 0;
    long n = 0;
    for (int y = 0; y < shot.Height(); ++y)
        for (int x = 0; x < shot.Width(); ++x) {
            const unsigned char* p = shot.ImageData() + (size_t(y) * shot.Width() + x) * 3;
            if (p[0] > 40 || p[1] > 40 || p[2] > 40) sx += x, sy += y, ++n;
        }
    if (n) out.centre = QPointF(sx / n, sy / n);
    return out;
}

QelPointCloud square() {
    QelVector3dArray points;
    points.SetSize(40 * 40);
    for (int i = 0; i < 40; ++i)
        for (int j = 0; j < 40; ++j)
            points[i * 40 + j] = QelVector3d(i * 0.1f, j * 0.1f, 0.0f);
    QelPointCloud cloud;
    cloud.SetPoints(points);
    return cloud;
}

// The first widget of a class inside the window.
QWidget* childOfClass(long long h, const char* className) {
    for (QWidget* w : reinterpret_cast<QWidget*>(h)->findChildren<QWidget*>())
        if (w->inherits(className)) return w;
    return nullptr;
}

// After a zoom-fit the data sit in the middle of the view, and the view's
// picture is as large as the view.
void expectCentred(long long h, const char* when) {
    ASSERT_EQ(QelSetLightState(h, false), 0);
    ASSERT_EQ(QelSetPerspective(h, QEL_3D_VIEW_TOP), 0);
    ASSERT_EQ(Qel3DZoomFitWnd(h), 0);
    const Drawn d = drawn(h);
    QWidget* view = childOfClass(h, "GLViewer");
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(d.size, view->size() * view->devicePixelRatioF()) << when;
    EXPECT_NEAR(d.centre.x(), d.size.width() / 2.0, 4) << when;
    EXPECT_NEAR(d.centre.y(), d.size.height() / 2.0, 4) << when;
}

class QtHost : public ::testing::Test {
protected:
    void SetUp() override {
        auto* central = new QWidget;
        auto* layout = new QHBoxLayout(central);
        layout->addWidget(new QListWidget, 0);
        container = makeContainer(central);
        layout->addWidget(container, 1);
        main.setCentralWidget(central);
        main.resize(800, 600);
        main.show();
        settle();
    }
    void TearDown() override {
        if (h) QelDestory3DWnd(h);
    }
    QMainWindow main;
    QWidget* container = nullptr;
    long long h = 0;
};

}  // namespace

TEST_F(QtHost, TheViewFillsItsContainerAndFollowsIt) {
    ASSERT_EQ(QelCreate3DWnd(static_cast<void*>(container), &h), 0);
    QelPointCloud cloud = square();
    ASSERT_GE(QelDisplayPointCloud(h, cloud), 1);
    settle();
    QWidget* window = reinterpret_cast<QWidget*>(h);
    EXPECT_EQ(window->geometry(), container->rect());
    EXPECT_TRUE(viewCoversContainer(container)) << "the view covers the whole container";
    expectCentred(h, "at first");

    for (const QSize& size : {QSize(1300, 1000), QSize(500, 380)}) {
        main.resize(size);
        settle();
        EXPECT_EQ(window->geometry(), container->rect()) << size.width();
        EXPECT_TRUE(viewCoversContainer(container)) << size.width();
        expectCentred(h, size.width() > 800 ? "grown" : "shrunk");
    }
    EXPECT_TRUE(container->layout() == nullptr) << "the host's widgets are left as they were";
}

namespace {

// Counts the paints of a widget; each paint draws one frame.
class PaintCounter : public QObject {
public:
    int paints = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};

}  // namespace

TEST_F(QtHost, EachResizeDrawsOneFrameAndNothingFollows) {
    ASSERT_EQ(QelCreate3DWnd(static_cast<void*>(container), &h), 0);
    QelPointCloud cloud = square();
    ASSERT_GE(QelDisplayPointCloud(h, cloud), 1);
    settle();
    QWidget* drawing = childOfClass(h, "MOpenglWidget");
    ASSERT_NE(drawing, nullptr);
    PaintCounter counter;
    drawing->installEventFilter(&counter);
    // A drag of the main window's edge: eight sizes, events handled between.
    for (int step = 1; step <= 8; ++step) {
        main.resize(800 + 25 * step, 600 + 10 * step);
        settle();
    }
    EXPECT_LE(counter.paints, 8) << "one frame a resize at most";
    EXPECT_GE(counter.paints, 1);
    const int afterDrag = counter.paints;
    settle();
    EXPECT_EQ(counter.paints, afterDrag) << "no frames once the drag stops";
    drawing->removeEventFilter(&counter);
}

TEST_F(QtHost, AWindowInAHiddenTabIsRightWhenItsTabIsShown) {
    auto* tabs = new QTabWidget;
    auto* first = new QWidget;
    QWidget* second = makeContainer(nullptr);
    tabs->addTab(first, "Parts");
    tabs->addTab(second, "3D");
    main.setCentralWidget(tabs);
    settle();
    ASSERT_EQ(QelCreate3DWnd(static_cast<void*>(second), &h), 0);
    QelPointCloud cloud = square();
    ASSERT_GE(QelDisplayPointCloud(h, cloud), 1);
    main.resize(1100, 700);
    settle();
    tabs->setCurrentIndex(1);
    settle();
    EXPECT_EQ(reinterpret_cast<QWidget*>(h)->geometry(), second->rect());
    EXPECT_TRUE(viewCoversContainer(second));
    expectCentred(h, "in its tab");
    // The whole host at three sizes, for a person to look at.
    if (const char* dir = std::getenv("QEL_TEST_IMAGE_DIR"))
        for (const QSize& size : {QSize(800, 600), QSize(1100, 700), QSize(500, 380)}) {
            main.resize(size);
            settle();
            EXPECT_TRUE(viewCoversContainer(second)) << size.width();
            main.grab().save(QString("%1/qthost-tabs-%2.png").arg(dir).arg(size.width()));
        }
}

TEST_F(QtHost, TheRectangleFormAndAMoveKeepTheHostsGeometry) {
    ASSERT_EQ(QelCreate3DWnd(static_cast<long long>(container->winId()), 10, 20, 310, 220, &h), 0);
    QWidget* window = reinterpret_cast<QWidget*>(h);
    main.resize(1200, 900);
    settle();
    EXPECT_EQ(window->geometry(), QRect(10, 20, 300, 200)) << "the rectangle stays";
    EXPECT_FALSE(viewCoversContainer(container));
    ASSERT_EQ(QelDestory3DWnd(h), 0);

    // Made to fill, then moved by the host: it stays where it was put.
    ASSERT_EQ(QelCreate3DWnd(static_cast<void*>(container), &h), 0);
    settle();
    window = reinterpret_cast<QWidget*>(h);
    EXPECT_EQ(window->geometry(), container->rect());
    ASSERT_EQ(QelMove3DWnd(h, 5, 5, 405, 305), 0);
    main.resize(700, 500);
    settle();
    EXPECT_EQ(window->geometry(), QRect(5, 5, 400, 300));
}

int main(int argc, char** argv) {
    // Keep the GL driver mapped until exit so leak reports can name it.
    dlopen("/usr/lib/x86_64-linux-gnu/dri/swrast_dri.so", RTLD_LAZY | RTLD_NODELETE);
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
