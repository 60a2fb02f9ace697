// A hostile host: NaN, infinities, 1e38 and -FLT_MAX where numbers go,
// degenerate cameras, refused data over a shown scene. Every call gets its
// code, and after each group the window still draws a known cloud.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <thread>
#include <vector>

#include "ApiHost.h"

using namespace QELMV;

namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
const float kNaN = std::nanf("");
const float kHostile[] = {kNaN, kInf, -kInf, 1e38f, -FLT_MAX};

}  // namespace

class HostileInput : public ::testing::Test {
protected:
    HostedWindow window;
    long long h = window.handle;
    QelPointCloud known = gridCloud(30, 0.1f, [](float x, float) { return x; });

    void SetUp() override {
        ASSERT_EQ(window.created, 0);
        const long id = QelDisplayPointCloud(h, known);
        ASSERT_TRUE(id >= 1 && id < 11000000) << id;
    }

    // The window is still usable: the known cloud of 900 points, shown
    // again and fitted, has nearly all its points on screen.
    void expectStillDraws(const char* after) {
        // Unlit, in the bright default table: the colours of other tests'
        // tables and of the light set above do not count here.
        ASSERT_EQ(QelSetLightState(h, false), 0);
        ASSERT_EQ(QelSetDefaultLUT(h, 5), 0);
        ASSERT_GE(QelDisplayPointCloud(h, known), 1) << after;
        ASSERT_EQ(QelSetPerspective(h, QEL_3D_VIEW_TOP), 0) << after;
        ASSERT_EQ(Qel3DZoomFitWnd(h), 0) << after;
        Shot shot(h);
        ASSERT_EQ(shot.status, 0) << after;
        EXPECT_GT(shot.countUnlike(0, 0, 0), 800) << "nothing drawn after " << after;
    }
};

TEST_F(HostileInput, RefusedDataLeavesTheSceneAsItWas) {
    Shot before(h);
    QelVector3dArray far(2);
    far[0] = QelVector3d(0, 0, 0);
    far[1] = QelVector3d(1e38f, 0, 0);
    QelPointCloud tooWide;
    tooWide.SetPoints(far);
    EXPECT_EQ(QelDisplayPointCloud(h, tooWide), 11501006);
    QelTriangleMesh mesh = squareMesh(1);
    QelVector3dArray vertices = mesh.DeepCopyVertex();
    vertices[2] = QelVector3d(0, -FLT_MAX, 0);
    mesh.SetVertices(vertices);
    EXPECT_EQ(QelDisplayTriangleMesh(h, mesh), 11501006);
    Shot after(h);
    ASSERT_EQ(after.status, 0) << "the scene was wiped";
    EXPECT_EQ(after.countUnlike(0, 0, 0), before.countUnlike(0, 0, 0));
}

TEST_F(HostileInput, CameraAndZoomRefuseWhatWouldBreakTheView) {
    QelVector3d centre(0, 0, 0), up(0, 1, 0), eye(0, 0, 10);
    for (float v : kHostile) {
        QelVector3d bad(v, 0, 1);
        EXPECT_EQ(QelSetCamera(h, bad, centre, up), 11200002) << v;
        EXPECT_EQ(QelSetCamera(h, eye, bad, up), 11200003) << v;
        EXPECT_EQ(QelSetCamera(h, eye, centre, bad), 11200004) << v;
        EXPECT_EQ(Qel3DZoom(h, bad, 2.0f), 11200002) << v;
        EXPECT_EQ(Qel3DZoom(h, centre, v), 11200003) << v;
    }
    EXPECT_EQ(QelSetCamera(h, eye, eye, up), 11200003) << "eye on the centre";
    QelVector3d along(0, 0, 5);
    EXPECT_EQ(QelSetCamera(h, eye, centre, along), 11200004) << "up along the line of sight";
    QelVector3d none(0, 0, 0);
    EXPECT_EQ(QelSetCamera(h, eye, centre, none), 11200004);
    for (float factor : {1e-38f, FLT_MIN, 1e-30f, 1e30f, FLT_MAX})
        EXPECT_EQ(Qel3DZoom(h, centre, factor), 11200003) << factor;
    EXPECT_EQ(Qel3DZoom(h, centre, 1.5f), 0);
    for (float v : kHostile) {
        QelVector3d direction(v, 0, -1);
        const long status = QelSetLightParameter(h, 1.0f, direction);
        // A huge but finite direction is only a direction.
        EXPECT_EQ(status, std::isfinite(v) ? 0 : 11200003) << v;
        EXPECT_EQ(QelSetLightParameter(h, v, direction), 11200002) << v;
        EXPECT_EQ(QelSetLightParameter(h, v, 0.5f, 0.5f), 11200002) << v;
    }
    expectStillDraws("camera, zoom and light");
}

TEST_F(HostileInput, AValidCameraAlwaysBringsThePictureBack) {
    // Far but accepted: the largest distances a host may set.
    QelVector3d centre(0, 0, 0), up(0, 1, 0), remote(0, 0, 1e15f);
    EXPECT_EQ(QelSetCamera(h, remote, centre, up), 0);
    QelVector3d eye(0, 0, 10);
    ASSERT_EQ(QelSetCamera(h, eye, centre, up), 0);
    Shot shot(h);
    EXPECT_GT(shot.countUnlike(0, 0, 0), 800);
    expectStillDraws("a remote camera");
}

TEST_F(HostileInput, ArgumentsOutsideTheirRangeAreRefusedOrClamped) {
    EXPECT_EQ(QelSetPerspective(h, Qel3DPerspective(-1)), 11200002);
    EXPECT_EQ(QelSetPerspective(h, Qel3DPerspective(-2147483647 - 1)), 11200002);

    QelVar text("label");
    QelVector3d at(0, 0, 0);
    QelColor colour(255, 0, 0, 255);
    for (float size : {kNaN, kInf, -kInf, 0.0f, -1.0f})
        EXPECT_EQ(QelDraw3DTextOverlay(h, text, at, size, colour), 11200004) << size;

    for (double v : {double(kNaN), 1e300, -1e300, double(kInf)}) {
        QelPoint where(v, v);
        EXPECT_EQ(QelDrawMessageText(h, text, where), 0) << v;
    }

    QelColor loud(300, -20, 1000, 999);
    ASSERT_EQ(QelSet3DTextPen(h, loud, 12), 0);
    QelColor pen;
    long size = 0;
    ASSERT_EQ(QelGet3DTextPen(h, &pen, &size), 0);
    EXPECT_EQ(pen.r, 255);
    EXPECT_EQ(pen.g, 0);
    EXPECT_EQ(pen.b, 255);

    const long id = QelAdd3DRenderObject(h, known);
    for (double v : {double(kNaN), double(kInf), -1e300}) {
        QelMatrix4 m;
        m.SetValue(0, 3, v);
        EXPECT_EQ(QelSetObjectModelMatrix(h, id, m), 11100009) << v;
    }
    expectStillDraws("text, pen, matrices");
}

TEST_F(HostileInput, CreationWithoutAPlaceForTheHandleCreatesNothing) {
    XHostWindow host;
    EXPECT_EQ(QelCreate3DWnd(host.id(), nullptr), 11200002);
    EXPECT_EQ(QelCreate3DWnd(host.id(), 0, 0, 100, 100, nullptr), 11200006);
    unsigned long id = static_cast<unsigned long>(host.id());
    EXPECT_EQ(QelCreate3DWnd(static_cast<void*>(&id), nullptr), 11200002);
    pumpEvents();
    EXPECT_TRUE(host.children().empty()) << "a window nobody can address was made";
}

TEST_F(HostileInput, RangeImagesWithHeightsBeyondSinglePrecisionDrawTheRest) {
    QelRangeImage image;
    image.SetSize(40, 40, QEL_64F);
    auto* samples = reinterpret_cast<double*>(image.Data());
    for (int i = 0; i < 40 * 40; ++i)
        samples[i] = (i % 40) * 0.05;
    samples[5] = 1e300;
    samples[77] = DBL_MAX;
    samples[300] = -1e300;
    ASSERT_EQ(QelSetSamplingRatio(h, 1), 0);
    ASSERT_EQ(QelSetLightState(h, false), 0);
    ASSERT_EQ(QelSetDefaultLUT(h, 5), 0);
    ASSERT_GE(QelDisplayRangeImage(h, image), 1);
    ASSERT_EQ(Qel3DZoomFitWnd(h), 0);
    Shot shot(h);
    EXPECT_GT(shot.countUnlike(0, 0, 0), 2000) << "the whole image vanished";
}

TEST_F(HostileInput, CallsFromAnotherThreadAreRefusedAndChangeNothing) {
    Shot before(h);
    QelPointCloud other = gridCloud(5, 1, [](float, float) { return 1.0f; });
    std::vector<long> codes;
    XHostWindow host;
    std::thread worker([&] {
        QelImage picture;
        codes.push_back(Qel3DScreenShot(h, &picture));
        codes.push_back(QelDisplayPointCloud(h, other));
        codes.push_back(QelAdd3DRenderObject(h, other));
        codes.push_back(QelClear3DScene(h));
        codes.push_back(QelSetPerspective(h, QEL_3D_VIEW_LEFT));
        codes.push_back(Qel3DZoomFitWnd(h));
        codes.push_back(QelSetAxisVisible(h, true));
        codes.push_back(QelSetGridVisible(h, false));
        codes.push_back(QelDestory3DWnd(h));
        long long made = 0;
        codes.push_back(QelCreate3DWnd(host.id(), &made));
    });
    worker.join();
    for (long code : codes)
        EXPECT_EQ(code, 11504002);
    EXPECT_STREQ(QelGetStatusText(11504002), "called from a thread other than the GUI thread");
    Shot after(h);
    ASSERT_EQ(after.status, 0);
    EXPECT_EQ(after.countUnlike(0, 0, 0), before.countUnlike(0, 0, 0));
    expectStillDraws("calls from a worker thread");
}

TEST_F(HostileInput, HugeTextsAreLaidOutOnlyUpToTheCap) {
    const std::string huge(16 * 1024 * 1024, 'x');
    QelVar text(huge.c_str());
    ASSERT_EQ(QelDrawMessageText(h, text), 0);
    QelVector3d at(0, 0, 0);
    QelColor colour(255, 255, 0, 255);
    ASSERT_GE(QelDraw3DTextOverlay(h, text, at, 1.0f, colour), 1);
    QLabel* message = nullptr;
    for (QLabel* label : windowWidget(h)->findChildren<QLabel*>())
        if (label->text().startsWith("xxxx")) message = label;
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(message->text().size(), 4096 + 1);
    EXPECT_TRUE(message->text().endsWith(QChar(0x2026)));
    Shot shot(h);  // lays out the overlay; megabytes would take seconds a frame
    EXPECT_EQ(shot.status, 0);
    expectStillDraws("huge texts");
}

TEST_F(HostileInput, DataBeyondTheMemoryBudgetIsRefusedAtOnce) {
    Shot before(h);
    ::setenv("QEL3D_MEMORY_LIMIT_MB", "16", 1);
    ASSERT_EQ(QelSetSamplingRatio(h, 1), 0);
    QelRangeImage big;
    big.SetSize(2000, 2000, QEL_16U);
    EXPECT_EQ(QelDisplayRangeImage(h, big), 11501005);
    EXPECT_EQ(QelAdd3DRenderObject(h, big), 11501005);
    QelPointCloud many = gridCloud(500, 0.01f, [](float, float) { return 0.0f; });
    EXPECT_EQ(QelDisplayPointCloud(h, many), 11501005);
    QelPointCloud few = gridCloud(20, 0.01f, [](float, float) { return 0.0f; });
    const long small = QelAdd3DRenderObject(h, few);
    ::unsetenv("QEL3D_MEMORY_LIMIT_MB");
    EXPECT_TRUE(small >= 1 && small < 11000000) << small;
    ASSERT_EQ(QelClearRenderObject(h, small), 0);
    Shot after(h);
    EXPECT_EQ(after.countUnlike(0, 0, 0), before.countUnlike(0, 0, 0)) << "the scene changed";
    expectStillDraws("refusals for memory");
}

// Memory that runs out while data is built (the estimate let it through)
// is a status code, never an exception thrown into the host.
TEST_F(HostileInput, MemoryRunningOutWhileBuildingIsAStatus) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer's allocator ends the process instead of throwing";
#endif
    Shot before(h);
    QelPointCloud many = gridCloud(3000, 0.001f, [](float x, float) { return x; });
    // The address space is capped a little above what is mapped now, far
    // below the 9 million points' vertex arrays.
    long pages = 0;
    FILE* statm = std::fopen("/proc/self/statm", "r");
    ASSERT_NE(statm, nullptr);
    ASSERT_EQ(std::fscanf(statm, "%ld", &pages), 1);
    std::fclose(statm);
    rlimit old{};
    ASSERT_EQ(::getrlimit(RLIMIT_AS, &old), 0);
    rlimit tight = old;
    tight.rlim_cur = rlim_t(pages) * rlim_t(::sysconf(_SC_PAGESIZE)) + (48u << 20);
    ::setenv("QEL3D_MEMORY_LIMIT_MB", "100000", 1);
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &tight), 0);
    const long shown = QelDisplayPointCloud(h, many);
    const long added = QelAdd3DRenderObject(h, many);
    ::setrlimit(RLIMIT_AS, &old);
    ::unsetenv("QEL3D_MEMORY_LIMIT_MB");
    EXPECT_EQ(shown, 11501005);
    EXPECT_EQ(added, 11501005);
    Shot after(h);
    EXPECT_EQ(after.countUnlike(0, 0, 0), before.countUnlike(0, 0, 0)) << "the scene changed";
    expectStillDraws("memory running out");
}

// Every per-object function with ids that name nothing, and every numeric
// argument with the hostile values.
TEST_F(HostileInput, EveryObjectFunctionWithBadIdsAndNumbers) {
    const long id = QelAdd3DRenderObject(h, known);
    ASSERT_TRUE(id >= 1 && id < 11000000);
    QelMatrix4 pose;
    QelColorArray colours;
    colours.Create(1, 3);
    for (long bad : {-1L, 0L, 2147483647L, -2147483647L - 1, id + 100000}) {
        EXPECT_EQ(QelClearRenderObject(h, bad), 11100022) << bad;
        EXPECT_EQ(QelClear3DTextOverlay(h, bad), 11100022) << bad;
        EXPECT_EQ(QelSetObjectVisible(h, bad, false), 11100022) << bad;
        EXPECT_EQ(QelSetObjectModelMatrix(h, bad, pose), 11100022) << bad;
        EXPECT_EQ(QelSetRenderColor(h, bad, colours), 11100022) << bad;
        EXPECT_EQ(QelSetRenderLineWidth(h, bad, 1.0f), 11100022) << bad;
        EXPECT_EQ(QelSet3DElementSize(h, bad, 2), 11100022) << bad;
        EXPECT_EQ(QelSet3DElementState(h, bad, QEL_3D_POINTS), 11100022) << bad;
        EXPECT_EQ(QelSetPointRenderMode(h, int(bad), QEL_3D_POINT_PLAIN), 11100022) << bad;
    }
    for (float v : kHostile) {
        EXPECT_EQ(QelSetRenderLineWidth(h, id, v), 11200003) << v;
        QelVector3d point(v, 0, 0), normal(0, 0, 1), tilted(v, v, 1);
        QelVector3d origin(0, 0, 0);
        Qel3DPlane throughBad(point, normal), badNormal(origin, tilted);
        EXPECT_EQ(QelRenderByClippingPlane(h, throughBad), std::isfinite(v) ? 0 : 11501007) << v;
        EXPECT_EQ(QelRenderByClippingPlane(h, badNormal), std::isfinite(v) ? 0 : 11501007) << v;
    }
    // Finite but overflowing in single precision: the plane's offset.
    QelVector3d far(1e38f, 1e38f, 1e38f), steep(1e38f, 1e38f, 1e38f);
    Qel3DPlane overflowing(far, steep);
    EXPECT_EQ(QelRenderByClippingPlane(h, overflowing), 11501007);
    QelVector3d zero(0, 0, 0);
    Qel3DPlane flat(zero, zero);
    EXPECT_EQ(QelRenderByClippingPlane(h, flat), 11501007) << "no normal";
    QelVector3d origin(0, 0, 0), up(0, 0, 1);
    Qel3DPlane none(origin, up);
    ASSERT_EQ(QelRenderByClippingPlane(h, none), 0);
    for (int size : {0, -1, -2147483647 - 1})
        EXPECT_EQ(QelSet3DElementSize(h, id, size), 11200003) << size;
    EXPECT_EQ(QelSet3DElementSize(h, id, 2147483647), 0);
    EXPECT_EQ(QelSet3DElementSize(h, id, 1), 0);
    for (int state : {-1, 3, 2147483647})
        EXPECT_EQ(QelSet3DElementState(h, id, Qel3DGraphicsDataType(state)), 11200003) << state;
    // Values >= 2 are refused; any other than 0 means sprites.
    EXPECT_EQ(QelSetPointRenderMode(h, int(id), Qel3DPointRenderMode(2)), 11200003);
    EXPECT_EQ(QelSetPointRenderMode(h, int(id), Qel3DPointRenderMode(-1)), 0);
    EXPECT_EQ(QelSetPointRenderMode(h, int(id), QEL_3D_POINT_PLAIN), 0);
    for (int table : {-1, 7, 2147483647})
        EXPECT_EQ(QelSetDefaultLUT(h, table), 11200002) << table;
    EXPECT_EQ(QelSetDefaultLUT(h, 6), 0) << "the last table";
    for (int ratio : {-1, -2147483647 - 1})
        EXPECT_EQ(QelSetSamplingRatio(h, ratio), 11200002) << ratio;
    ASSERT_EQ(QelSetSamplingRatio(h, 0), 0);
    // The window stays usable after every move a hostile host can make.
    for (int bad : {-1, 2147483647})
        EXPECT_NE(QelMove3DWnd(h, bad, bad, bad, bad), 0) << bad;
    EXPECT_EQ(QelMove3DWnd(h, 0, 0, 400, 400), 0);
    expectStillDraws("bad ids and numbers on object functions");
}

// The window's own functions with extreme integers.
TEST_F(HostileInput, WindowFunctionsWithExtremeIntegers) {
    const int kMin = -2147483647 - 1, kMax = 2147483647;
    XHostWindow host;
    long long made = 0;
    for (int bad : {-1, kMin}) {
        EXPECT_EQ(QelCreate3DWnd(host.id(), bad, 0, 100, 100, &made), 11200001) << bad;
        EXPECT_EQ(QelCreate3DWnd(host.id(), 0, bad, 100, 100, &made), 11200002) << bad;
        EXPECT_EQ(QelMove3DWnd(h, bad, 0, 100, 100), 11200001) << bad;
        EXPECT_EQ(QelMove3DWnd(h, 0, bad, 100, 100), 11200002) << bad;
    }
    EXPECT_EQ(QelMove3DWnd(h, kMax, 0, kMax, 100), 11200003) << "right not beyond left";
    EXPECT_EQ(QelMove3DWnd(h, 0, kMax, 100, kMax), 11200004);
    EXPECT_EQ(made, 0) << "a refused creation wrote a handle";
    for (int number : {0, -1, kMin, 100000, kMax})
        EXPECT_EQ(QelSet3DWndNumber(h, number, true), 11200002) << number;
    for (int level : {-1, 2, kMin, kMax})
        EXPECT_EQ(QelSet3DStatusbarLogLevel(h, level), 11200002) << level;
    QelColor pen(255, 255, 255, 255);
    for (long size : {0L, -1L, long(kMin)})
        EXPECT_EQ(QelSet3DTextPen(h, pen, size), 11200003) << size;
    for (long mask : {0L, long(0x00020000) << 40})
        EXPECT_EQ(QelSet3DToolbarVisible(h, mask, true), 11200002) << mask;
    EXPECT_EQ(QelMove3DWnd(h, 0, 0, 400, 400), 0);
    expectStillDraws("extreme integers on window functions");
}
