// The exported switch of incremental frames, seen by a host: while it is
// on, a big cloud's first painted picture is a sample that fills in; while
// it is off, the first paint is the whole picture. Screenshots are whole
// either way.
#include <gtest/gtest.h>

#include <QImage>
#include <cstdlib>

#include "ApiHost.h"
#include "Qel3DGraphics.h"

using namespace QELMV;

namespace {

constexpr long kUnknownWindow = 11504001;

int litPixels(const QImage& image) {
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += qGray(image.pixel(x, y)) > 20;
    return n;
}

// The view as the next paint draws it.
QImage painted(long long handle) {
    return childOfClass(handle, "MOpenglWidget")->grab().toImage();
}

}  // namespace

TEST(IncrementalFrames, OnTheFirstPaintIsASampleOffItIsWhole) {
    EXPECT_EQ(QelSetIncrementalFrames(0x1234, false), kUnknownWindow);
    // A budget far below the cloud, for this window only.
    setenv("QEL3D_POINT_BUDGET", "3000", 1);
    HostedWindow w;
    unsetenv("QEL3D_POINT_BUDGET");
    ASSERT_EQ(w.created, 0);
    ASSERT_NE(childOfClass(w.handle, "MOpenglWidget"), nullptr);
    QelPointCloud cloud = gridCloud(200, 0.02f, [](float, float) { return 0.f; });
    QelSetPerspective(w.handle, QEL_3D_VIEW_TOP);

    ASSERT_GE(QelDisplayPointCloud(w.handle, cloud), 1);
    const int sample = litPixels(painted(w.handle));
    const int whole = Shot(w.handle).countUnlike(0, 0, 0, 20);
    EXPECT_LT(sample, whole / 2) << "on: a sample first";
    pumpEvents(40);
    EXPECT_GT(litPixels(painted(w.handle)), whole * 9 / 10) << "then every point";

    ASSERT_EQ(QelSetIncrementalFrames(w.handle, false), 0);
    ASSERT_GE(QelDisplayPointCloud(w.handle, cloud), 1);
    EXPECT_GT(litPixels(painted(w.handle)), whole * 9 / 10) << "off: the whole picture at once";
    ASSERT_EQ(QelSetIncrementalFrames(w.handle, true), 0);
    ASSERT_GE(QelDisplayPointCloud(w.handle, cloud), 1);
    EXPECT_LT(litPixels(painted(w.handle)), whole / 2) << "on again";
}
