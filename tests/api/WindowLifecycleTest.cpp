// Creating, hosting, moving and destroying windows through the exported
// functions, from a host with plain X11 windows.
#include <gtest/gtest.h>

#include <QPointer>
#include <QWindow>

#include "ApiHost.h"

using namespace QELMV;

TEST(WindowLifecycle, LibraryMakesTheApplicationAndEndsItWithTheLastWindow) {
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    XHostWindow host;
    long long handle = 0;
    ASSERT_EQ(QelCreate3DWnd(host.id(), &handle), 0);
    EXPECT_NE(handle, 0);
    EXPECT_NE(QCoreApplication::instance(), nullptr);
    EXPECT_EQ(QelDestory3DWnd(handle), 0);
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
    // A second window later gets a fresh application.
    ASSERT_EQ(QelCreate3DWnd(host.id(), &handle), 0);
    EXPECT_NE(QCoreApplication::instance(), nullptr);
    EXPECT_EQ(QelDestory3DWnd(handle), 0);
}

TEST(WindowLifecycle, AnApplicationSeenAtCreationIsNeverEndedByTheLibrary) {
    XHostWindow host;
    long long first = 0, second = 0;
    ASSERT_EQ(QelCreate3DWnd(host.id(), &first), 0);
    ASSERT_EQ(QelCreate3DWnd(host.id(), &second), 0);
    EXPECT_EQ(QelDestory3DWnd(first), 0);
    EXPECT_EQ(QelDestory3DWnd(second), 0);
    EXPECT_NE(QCoreApplication::instance(), nullptr);
}

// A host without Qt never runs Qt's event loop. What a destroyed window
// leaves queued is handled by the library then, or it would pile up for as
// long as other windows keep the application; a host's own application is
// the host's to run.
TEST(WindowLifecycle, DestroyHandlesWhatIsQueuedOnlyInTheLibrarysApplication) {
    XHostWindow host;
    long long kept = 0, gone = 0;
    ASSERT_EQ(QelCreate3DWnd(host.id(), &kept), 0);
    ASSERT_EQ(QelCreate3DWnd(host.id(), &gone), 0);
    QPointer<QObject> leftover = new QObject;
    leftover->deleteLater();
    ASSERT_EQ(QelDestory3DWnd(gone), 0);
    EXPECT_TRUE(leftover.isNull());
    // Hosted in a plain raster window: no GL visual is looked up per window.
    QWidget* native = reinterpret_cast<QWidget*>(kept)->window();
    ASSERT_NE(native->windowHandle(), nullptr);
    EXPECT_EQ(native->windowHandle()->surfaceType(), QSurface::RasterSurface);
    EXPECT_EQ(QelDestory3DWnd(kept), 0);
    delete QCoreApplication::instance();  // the second window made it the host's

    static int argc = 1;
    static char name[] = "host";
    static char* argv[] = {name, nullptr};
    auto* own = new QApplication(argc, argv);
    ASSERT_EQ(QelCreate3DWnd(host.id(), &kept), 0);
    ASSERT_EQ(QelCreate3DWnd(host.id(), &gone), 0);
    leftover = new QObject;
    leftover->deleteLater();
    ASSERT_EQ(QelDestory3DWnd(gone), 0);
    EXPECT_FALSE(leftover.isNull());
    EXPECT_EQ(QelDestory3DWnd(kept), 0);
    delete own;
}

TEST(WindowLifecycle, BogusParentsAreRefusedAndTheProcessLives) {
    long long handle = 1234;
    for (long long bogus : {0LL, -5LL, 0x1FFFFFFELL, 0x7FFFFFFFFFFFLL}) {
        EXPECT_EQ(QelCreate3DWnd(bogus, &handle), 11504103) << bogus;
        EXPECT_EQ(handle, 1234) << "no handle is written";
    }
    unsigned long bogusId = 0x1FFFFFFE;
    EXPECT_EQ(QelCreate3DWnd(static_cast<void*>(&bogusId), &handle), 11504103);
    // The application made on the way stays, and a good window still works.
    EXPECT_NE(QCoreApplication::instance(), nullptr);
    HostedWindow window;
    EXPECT_EQ(window.created, 0);
}

TEST(WindowLifecycle, EmbedsIntoTheHostWindowAndFollowsItsSize) {
    HostedWindow window(320, 240);
    ASSERT_EQ(window.created, 0);
    pumpEvents();
    EXPECT_EQ(window.host.children().size(), 1u) << "the library's window is the host's child";
    EXPECT_EQ(windowWidget(window.handle)->size(), QSize(320, 240));
    window.host.resize(500, 300);
    for (int i = 0; i < 50 && windowWidget(window.handle)->width() != 500; ++i)
        pumpEvents();
    EXPECT_EQ(windowWidget(window.handle)->size(), QSize(500, 300));
}

TEST(WindowLifecycle, PointerToAnXWindowIdIsTheThirdForm) {
    XHostWindow host;
    unsigned long id = static_cast<unsigned long>(host.id());
    long long handle = 0;
    ASSERT_EQ(QelCreate3DWnd(static_cast<void*>(&id), &handle), 0);
    EXPECT_EQ(host.children().size(), 1u);
    EXPECT_EQ(QelDestory3DWnd(handle), 0);
}

TEST(WindowLifecycle, RectangleFormAndMoveCheckTheRectangleFirst) {
    XHostWindow host;
    long long handle = 0;
    EXPECT_EQ(QelCreate3DWnd(host.id(), -1, 0, 10, 10, &handle), 11200001);
    EXPECT_EQ(QelCreate3DWnd(host.id(), 0, -1, 10, 10, &handle), 11200002);
    EXPECT_EQ(QelCreate3DWnd(host.id(), 5, 0, 5, 10, &handle), 11200003);
    EXPECT_EQ(QelCreate3DWnd(host.id(), 0, 5, 10, 5, &handle), 11200004);
    // The rectangle codes come before the parent check.
    EXPECT_EQ(QelCreate3DWnd(0, -1, 0, 10, 10, &handle), 11200001);
    EXPECT_EQ(QelCreate3DWnd(0, 0, 0, 10, 10, &handle), 11504103);

    ASSERT_EQ(QelCreate3DWnd(host.id(), 10, 20, 310, 220, &handle), 0);
    EXPECT_EQ(windowWidget(handle)->geometry(), QRect(10, 20, 300, 200));
    EXPECT_EQ(QelMove3DWnd(handle, 0, 0, 100, 50), 0);
    EXPECT_EQ(windowWidget(handle)->geometry(), QRect(0, 0, 100, 50));
    EXPECT_EQ(QelMove3DWnd(handle, 0, 0, 0, 50), 11200003);
    EXPECT_EQ(QelDestory3DWnd(handle), 0);
    // Unknown handle, bad rectangle: the rectangle wins.
    EXPECT_EQ(QelMove3DWnd(handle, 0, 0, 100, -1), 11200004);
    EXPECT_EQ(QelMove3DWnd(handle, 0, 0, 100, 50), 11504001);
}

TEST(WindowLifecycle, AToolkitWidgetParentIsUsedDirectly) {
    HostedWindow anchor;  // makes the application
    QWidget hostWidget;
    hostWidget.resize(300, 300);
    hostWidget.winId();
    long long handle = 0;
    ASSERT_EQ(QelCreate3DWnd(static_cast<long long>(hostWidget.winId()), &handle), 0);
    EXPECT_EQ(windowWidget(handle)->parentWidget(), &hostWidget);
    EXPECT_EQ(QelDestory3DWnd(handle), 0);
    EXPECT_TRUE(hostWidget.findChildren<QWidget*>().isEmpty()) << "the window is deleted";
}

TEST(WindowLifecycle, DestroyedHandlesAreUnknownEverywhere) {
    HostedWindow window;
    const long long h = window.handle;
    ASSERT_EQ(QelDestory3DWnd(h), 0);
    window.created = -1;
    QelPointCloud cloud = gridCloud(3, 1, [](float, float) { return 0.0f; });
    QelVector3d v(0, 0, 0);
    QelColor colour(1, 2, 3);
    QelImage image;
    QelVar text("x");
    Qel3DPlane plane(QelVector3d(0, 0, 0), QelVector3d(0, 0, 1));
    QelMatrix4 identity;
    long size = 0;
    const long codes[] = {QelDestory3DWnd(h),
                          QelSet3DWndNumber(h, 0, true),
                          QelDisplayPointCloud(h, cloud),
                          QelAdd3DRenderObject(h, cloud),
                          QelDraw3DTextOverlay(h, text, v, -1, colour),
                          QelDrawMessageText(h, text),
                          QelClear3DScene(h),
                          QelClearRenderObject(h, 1),
                          QelClearAllPointCloud(h),
                          QelClear3DTextOverlay(h, -1),
                          QelSetObjectVisible(h, 1, true),
                          QelSetObjectModelMatrix(h, 1, identity),
                          QelSetRenderLineWidth(h, 1, 0),
                          QelSet3DElementSize(h, 1, 0),
                          QelSet3DElementState(h, QEL_3D_POINTS),
                          QelSetDefaultLUT(h, -1),
                          QelSetSamplingRatio(h, -1),
                          QelRenderByClippingPlane(h, plane),
                          QelSetCamera(h, v, v, v),
                          QelGetCamera(h, nullptr, nullptr, nullptr),
                          QelSetPerspective(h, Qel3DPerspective(9)),
                          QelSetProjection(h, true),
                          Qel3DZoom(h, v, 0),
                          Qel3DZoomFitWnd(h),
                          QelSetLightState(h, true),
                          QelSetAxisVisible(h, true),
                          QelSetGridVisible(h, false),
                          QelSetLightParameter(h, 0, 0, 0),
                          QelSet3DBackgroundColor(h, colour),
                          QelSet3DToolbarVisible(h, 0L, true),
                          QelSet3DStatusbarLogLevel(h, 5),
                          QelSet3DTextPen(h, colour, 0),
                          QelGet3DTextPen(h, &colour, &size),
                          Qel3DScreenShot(h, &image),
                          QelRegisterSelectPointEvent(h, nullptr, nullptr)};
    for (size_t i = 0; i < sizeof codes / sizeof codes[0]; ++i)
        EXPECT_EQ(codes[i], 11504001) << "call " << i;
}

// Many windows with data, made and destroyed in turn: the leak check of the
// sanitizer build runs over this, and the last window must still draw.
TEST(WindowLifecycle, HundredWindowsWithDataComeAndGo) {
    XHostWindow host(200, 200);
    QelPointCloud cloud = gridCloud(40, 0.5f, [](float x, float y) { return x * y * 0.1f; });
    for (int i = 0; i < 100; ++i) {
        long long handle = 0;
        ASSERT_EQ(QelCreate3DWnd(host.id(), &handle), 0) << i;
        ASSERT_GE(QelDisplayPointCloud(handle, cloud), 1) << i;
        if (i % 10 == 0) {  // the measuring aids come and go with their window
            ASSERT_EQ(QelSetAxisVisible(handle, true), 0);
            findAction(handle, "Show Color Bar")->trigger();
        }
        if (i % 25 == 0 || i == 99) {
            Shot shot(handle);
            ASSERT_EQ(shot.status, 0) << i;
            EXPECT_GT(shot.countUnlike(0, 0, 0), 100) << i;
        }
        ASSERT_EQ(QelDestory3DWnd(handle), 0) << i;
    }
}

TEST(WindowLifecycle, AWindowAfterAClosedOneStartsAsNew) {
    // While another window stays open, the viewer of a closed window serves
    // the next one: nothing the closed window set may show in its successor.
    XHostWindow host(300, 300);
    long long other = 0;
    ASSERT_EQ(QelCreate3DWnd(host.id(), &other), 0);
    QelPointCloud cloud = gridCloud(30, 0.5f, [](float x, float y) { return x * y * 0.1f; });
    auto firstPicture = [&](long long handle) {
        EXPECT_GE(QelDisplayPointCloud(handle, cloud), 1);
        return Shot(handle);
    };
    long long handle = 0;
    ASSERT_EQ(QelCreate3DWnd(host.id(), &handle), 0);
    const Shot before = firstPicture(handle);
    QelVector3d eye0, centre0, up0;
    ASSERT_EQ(QelGetCamera(handle, &eye0, &centre0, &up0), 0);
    QelColor red(255, 0, 0);
    ASSERT_EQ(QelSet3DBackgroundColor(handle, red), 0);
    ASSERT_EQ(QelSetProjection(handle, true), 0);
    ASSERT_EQ(QelSetPerspective(handle, QEL_3D_VIEW_LEFT), 0);
    ASSERT_EQ(QelSetLightState(handle, false), 0);
    ASSERT_EQ(QelDestory3DWnd(handle), 0);

    ASSERT_EQ(QelCreate3DWnd(host.id(), &handle), 0);
    const Shot after = firstPicture(handle);
    QelVector3d eye1, centre1, up1;
    ASSERT_EQ(QelGetCamera(handle, &eye1, &centre1, &up1), 0);
    ASSERT_EQ(QelDestory3DWnd(handle), 0);
    ASSERT_EQ(QelDestory3DWnd(other), 0);
    ASSERT_EQ(before.status, 0);
    ASSERT_EQ(after.status, 0);
    before.keep("first-window");
    after.keep("window-after-a-closed-one");
    ASSERT_EQ(after.width(), before.width());
    ASSERT_EQ(after.height(), before.height());
    EXPECT_EQ(std::memcmp(after.image.ImageData(), before.image.ImageData(),
                          size_t(before.width()) * before.height() * 3),
              0);
    EXPECT_FLOAT_EQ(eye1.x, eye0.x);
    EXPECT_FLOAT_EQ(eye1.y, eye0.y);
    EXPECT_FLOAT_EQ(eye1.z, eye0.z);
}
