// What a host sees after showing data: screenshots taken through the
// exported functions, judged by their pixels.
#include <gtest/gtest.h>

#include <cmath>

#include "../RangeImageSamples.h"
#include "ApiHost.h"

using namespace QELMV;

namespace {

void setBackground(long long handle, int r, int g, int b) {
    QelColor colour(r, g, b, 255);
    ASSERT_EQ(QelSet3DBackgroundColor(handle, colour), 0);
}

// A 60 x 60 plane z = x over [-3, 3]^2.
QelPointCloud slope() {
    return gridCloud(60, 0.1f, [](float x, float) { return x; });
}

bool reddish(int r, int g, int b) {
    return r > 150 && r > g + 60 && r > b + 60;
}
bool bluish(int r, int g, int b) {
    return b > 150 && b > r + 60 && b > g + 60;
}

// A range image of a raised square block on a base, of the given type.
QelRangeImage blockImage(int type, int size) {
    QelRangeImage image = imageOf(type, size, size, 10);
    for (int r = size / 4; r < 3 * size / 4; ++r)
        for (int c = size / 4; c < 3 * size / 4; ++c)
            setSample(image, r * size + c, 40);
    return image;
}

}  // namespace

TEST(Display, BackgroundColourFillsWhatTheDataDoesNotCover) {
    HostedWindow window;
    setBackground(window.handle, 40, 80, 120);
    QelPointCloud cloud = slope();
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    ASSERT_EQ(lookDown(window.handle, 40), 0);
    Shot shot(window.handle);
    ASSERT_EQ(shot.status, 0);
    int r, g, b;
    shot.rgb(2, 2, &r, &g, &b);
    EXPECT_NEAR(r, 40, 2);
    EXPECT_NEAR(g, 80, 2);
    EXPECT_NEAR(b, 120, 2);
    EXPECT_GT(shot.countUnlike(40, 80, 120), 500) << "the cloud is drawn";
}

TEST(Display, HeightColoursRunFromBlueLowToRedHigh) {
    HostedWindow window;
    QelPointCloud cloud = slope();
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    ASSERT_EQ(QelSetLightState(window.handle, false), 0);
    ASSERT_EQ(lookDown(window.handle, 12), 0);
    Shot shot(window.handle);
    shot.keep("height-colours");
    ASSERT_EQ(shot.status, 0);
    // x runs to the right: the left third is low (blue), the right third high (red).
    int leftBlue = 0, rightRed = 0, leftRed = 0, rightBlue = 0, r, g, b;
    for (int y = 0; y < shot.height(); ++y)
        for (int x = 0; x < shot.width(); ++x) {
            shot.rgb(x, y, &r, &g, &b);
            const bool left = x<shot.width() / 3, right = x> 2 * shot.width() / 3;
            leftBlue += left && bluish(r, g, b);
            leftRed += left && reddish(r, g, b);
            rightRed += right && reddish(r, g, b);
            rightBlue += right && bluish(r, g, b);
        }
    EXPECT_GT(leftBlue, 300);
    EXPECT_GT(rightRed, 300);
    EXPECT_EQ(leftRed, 0);
    EXPECT_EQ(rightBlue, 0);
}

TEST(Display, OwnColoursWithAlphaBlendOverTheBackground) {
    HostedWindow window;
    setBackground(window.handle, 255, 255, 255);
    ASSERT_EQ(QelSetLightState(window.handle, false), 0);
    QelPointCloud cloud = gridCloud(80, 0.05f, [](float, float) { return 0.0f; });
    const long id = QelDisplayPointCloud(window.handle, cloud);
    ASSERT_GE(id, 1);
    QelColorArray colours;
    colours.Create(cloud.Length(), 4);
    for (int i = 0; i < cloud.Length(); ++i) {
        unsigned char* c = colours.Data() + i * 4;
        c[0] = 255, c[1] = 0, c[2] = 0, c[3] = 128;
    }
    ASSERT_EQ(QelSetRenderColor(window.handle, id, colours), 0);
    ASSERT_EQ(QelSet3DElementSize(window.handle, id, 6), 0);
    ASSERT_EQ(lookDown(window.handle, 6), 0);
    Shot shot(window.handle);
    shot.keep("half-transparent-red");
    int r, g, b;
    shot.rgb(shot.width() / 2, shot.height() / 2, &r, &g, &b);
    EXPECT_GT(r, 240);
    EXPECT_NEAR(g, 127, 8) << "half of the white shows through";
    EXPECT_NEAR(b, 127, 8);

    QelColorArray twoChannels;
    twoChannels.Create(cloud.Length(), 2);
    EXPECT_EQ(QelSetRenderColor(window.handle, id, twoChannels), 11501004);
    QelColorArray empty;
    EXPECT_EQ(QelSetRenderColor(window.handle, id, empty), 11501001);
    EXPECT_EQ(QelSetRenderColor(window.handle, id + 1000, colours), 11100022);
}

TEST(Display, HiddenObjectsLeaveOnlyTheBackground) {
    HostedWindow window;
    QelPointCloud cloud = slope();
    const long id = QelDisplayPointCloud(window.handle, cloud);
    ASSERT_EQ(lookDown(window.handle, 12), 0);
    ASSERT_EQ(QelSetObjectVisible(window.handle, id, false), 0);
    EXPECT_EQ(Shot(window.handle).countUnlike(0, 0, 0), 0);
    ASSERT_EQ(QelSetObjectVisible(window.handle, id, true), 0);
    EXPECT_GT(Shot(window.handle).countUnlike(0, 0, 0), 1000);
    EXPECT_EQ(QelSetObjectVisible(window.handle, id + 1, true), 11100022);
}

TEST(Display, ClipPlaneKeepsOneSide) {
    HostedWindow window;
    QelPointCloud flat = gridCloud(60, 0.1f, [](float, float) { return 0.0f; });
    ASSERT_GE(QelDisplayPointCloud(window.handle, flat), 1);
    ASSERT_EQ(lookDown(window.handle, 12), 0);
    const int whole = Shot(window.handle).countUnlike(0, 0, 0);
    Qel3DPlane keepRight(QelVector3d(0, 0, 0), QelVector3d(1, 0, 0));
    ASSERT_EQ(QelRenderByClippingPlane(window.handle, keepRight), 0);
    Shot clipped(window.handle);
    clipped.keep("clip-plane");
    const int half = clipped.countUnlike(0, 0, 0);
    EXPECT_NEAR(half, whole / 2, whole / 8);
    // Nothing left of the centre line is drawn.
    int leftDrawn = 0, r, g, b;
    for (int y = 0; y < clipped.height(); ++y)
        for (int x = 0; x < clipped.width() / 2 - 3; ++x) {
            clipped.rgb(x, y, &r, &g, &b);
            leftDrawn += r + g + b > 30;
        }
    EXPECT_EQ(leftDrawn, 0);
    Qel3DPlane invalid;
    EXPECT_EQ(QelRenderByClippingPlane(window.handle, invalid), 11501007);
}

TEST(Display, PointSizeGrowsThePoints) {
    HostedWindow window;
    QelPointCloud sparse = gridCloud(5, 1.0f, [](float, float) { return 0.0f; });
    const long id = QelDisplayPointCloud(window.handle, sparse);
    ASSERT_EQ(lookDown(window.handle, 12), 0);
    ASSERT_EQ(QelSet3DElementSize(window.handle, id, 1), 0);
    const int small = Shot(window.handle).countUnlike(0, 0, 0);
    ASSERT_EQ(QelSet3DElementSize(window.handle, id, 8), 0);
    const int large = Shot(window.handle).countUnlike(0, 0, 0);
    EXPECT_GE(small, 25);
    EXPECT_GE(large, 25 * 40) << "each point covers about 8 x 8 pixels";
}

TEST(Display, MeshRenderModesDrawPointsEdgesOrFaces) {
    HostedWindow window;
    QelTriangleMesh mesh = squareMesh(2.0f);
    const long id = QelDisplayTriangleMesh(window.handle, mesh);
    ASSERT_GE(id, 1);
    ASSERT_EQ(lookDown(window.handle, 10), 0);
    int counts[3];
    const char* names[3] = {"mesh-points", "mesh-edges", "mesh-faces"};
    for (int state = 0; state < 3; ++state) {
        ASSERT_EQ(QelSet3DElementState(window.handle, id, Qel3DGraphicsDataType(state)), 0);
        Shot shot(window.handle);
        shot.keep(names[state]);
        counts[state] = shot.countUnlike(0, 0, 0);
    }
    EXPECT_GT(counts[0], 0);
    EXPECT_LT(counts[0], 100) << "four vertices";
    EXPECT_GT(counts[1], 4 * counts[0]) << "five edges";
    EXPECT_GT(counts[2], 5 * counts[1]) << "two filled triangles";
}

TEST(Display, RangeImageModesRoundTripToTheSamePicture) {
    HostedWindow window;
    QelRangeImage image = blockImage(QEL_16U, 80);
    ASSERT_GE(QelDisplayRangeImage(window.handle, image), 1);
    QelVector3d eye(40, 40, 400), centre(40, 40, 0), up(0, 1, 0);
    ASSERT_EQ(QelSetCamera(window.handle, eye, centre, up), 0);
    ASSERT_EQ(QelSet3DElementState(window.handle, QEL_3D_POINTS), 0);
    const int points = Shot(window.handle).countUnlike(0, 0, 0);
    ASSERT_EQ(QelSet3DElementState(window.handle, QEL_3D_LINES), 0);
    Shot edges(window.handle);
    edges.keep("range-image-wireframe");
    ASSERT_EQ(QelSet3DElementState(window.handle, QEL_3D_TRIANGLES), 0);
    Shot faces(window.handle);
    faces.keep("range-image-faces");
    ASSERT_EQ(QelSet3DElementState(window.handle, QEL_3D_POINTS), 0);
    EXPECT_EQ(Shot(window.handle).countUnlike(0, 0, 0), points);
    EXPECT_GT(edges.countUnlike(0, 0, 0), points);
    EXPECT_GT(faces.countUnlike(0, 0, 0), edges.countUnlike(0, 0, 0));
}

TEST(Display, EverySampleTypeShowsAndItsMarkerStaysEmpty) {
    HostedWindow window;
    QelVector3d eye(40, 40, 400), centre(40, 40, 0), up(0, 1, 0);
    int reference = -1;
    for (int type = QEL_8U; type <= QEL_64F; ++type) {
        QelRangeImage image = blockImage(type, 80);
        // A hole of invalid samples in the middle of the block.
        const QelRangeImage marker = imageOf(type, 1, 1, 0, {0});
        for (int r = 36; r < 44; ++r)
            for (int c = 36; c < 44; ++c)
                std::memcpy(image.Data() + (r * 80 + c) * QelRangeImage::SampleSize(type),
                            marker.Data(), QelRangeImage::SampleSize(type));
        ASSERT_GE(QelDisplayRangeImage(window.handle, image), 1) << type;
        ASSERT_EQ(QelSetCamera(window.handle, eye, centre, up), 0);
        Shot shot(window.handle);
        ASSERT_EQ(shot.status, 0);
        if (type == QEL_8U) shot.keep("range-image-with-hole");
        int r, g, b;
        shot.rgb(shot.width() / 2, shot.height() / 2, &r, &g, &b);
        EXPECT_LT(r + g + b, 20) << "the hole is empty, type " << type;
        const int drawn = shot.countUnlike(0, 0, 0);
        if (reference < 0) reference = drawn;
        EXPECT_NEAR(drawn, reference, reference / 50) << "type " << type;
    }
}

TEST(Display, StandardViewsTurnTheCamera) {
    HostedWindow window;
    QelPointCloud cloud = slope();
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    struct {
        Qel3DPerspective view;
        QelVector3d look;
    } views[] = {{QEL_3D_VIEW_TOP, {0, 0, 1}},    {QEL_3D_VIEW_BOTTOM, {0, 0, -1}},
                 {QEL_3D_VIEW_FRONT, {0, -1, 0}}, {QEL_3D_VIEW_BACK, {0, 1, 0}},
                 {QEL_3D_VIEW_LEFT, {1, 0, 0}},   {QEL_3D_VIEW_RIGHT, {-1, 0, 0}}};
    for (const auto& v : views) {
        ASSERT_EQ(QelSetPerspective(window.handle, v.view), 0);
        QelVector3d eye, centre, up;
        ASSERT_EQ(QelGetCamera(window.handle, &eye, &centre, &up), 0);
        QelVector3d d(centre.x - eye.x, centre.y - eye.y, centre.z - eye.z);
        const float n = d.Norm();
        EXPECT_NEAR(d.x / n, v.look.x, 0.01) << v.view;
        EXPECT_NEAR(d.y / n, v.look.y, 0.01) << v.view;
        EXPECT_NEAR(d.z / n, v.look.z, 0.01) << v.view;
    }
    // Seen from the front the slope is an edge-on band; from the top it fills a square.
    ASSERT_EQ(QelSetPerspective(window.handle, QEL_3D_VIEW_TOP), 0);
    const int top = Shot(window.handle).countUnlike(0, 0, 0);
    ASSERT_EQ(QelSetPerspective(window.handle, QEL_3D_VIEW_OBLIQUE), 0);
    Shot oblique(window.handle);
    oblique.keep("oblique-view");
    EXPECT_GT(top, 0);
    EXPECT_NE(oblique.countUnlike(0, 0, 0), top);
    EXPECT_EQ(QelSetPerspective(window.handle, Qel3DPerspective(7)), 11200002);
    EXPECT_TRUE(findAction(window.handle, "Oblique View")->isChecked());
}

TEST(Display, IdsComeFromOneCounterAcrossKindsAndWindows) {
    HostedWindow first, second;
    QelVar text("label");
    QelVector3d at(0, 0, 0);
    QelColor white(255, 255, 255);
    QelPointCloud cloud = slope();
    const long a = QelDisplayPointCloud(first.handle, cloud);
    const long b = QelDraw3DTextOverlay(first.handle, text, at, 1.0f, white);
    QelRangeImage block = blockImage(QEL_8U, 40);
    const long c = QelAdd3DRenderObject(second.handle, block);
    EXPECT_EQ(b, a + 1);
    EXPECT_EQ(c, a + 2);
    // A build that fails still uses up its id: a 4 x 3 image samples to nothing.
    QelRangeImage tiny = imageOf(QEL_16U, 4, 3, 5);
    EXPECT_EQ(QelAdd3DRenderObject(second.handle, tiny), 11000013);
    EXPECT_EQ(QelDraw3DTextOverlay(second.handle, text, at, 1.0f, white), a + 4);
}

TEST(Display, ScreenshotNeedsDataAndLeavesTheBadgeOut) {
    HostedWindow window;
    QelImage image;
    EXPECT_EQ(Qel3DScreenShot(window.handle, &image), 11501008);
    QelPointCloud cloud = slope();
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    setBackground(window.handle, 255, 255, 255);
    ASSERT_EQ(QelSet3DWndNumber(window.handle, 7, true), 0);
    Shot shot(window.handle);
    ASSERT_EQ(shot.status, 0);
    EXPECT_EQ(shot.image.Channels(), 3);
    // The grey badge would sit in the top-left corner.
    int grey = 0, r, g, b;
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x) {
            shot.rgb(x, y, &r, &g, &b);
            grey += r < 200;
        }
    EXPECT_EQ(grey, 0);
    QLabel* badge = nullptr;
    for (QLabel* l : windowWidget(window.handle)->findChildren<QLabel*>())
        if (l->text() == "7") badge = l;
    ASSERT_NE(badge, nullptr);
    EXPECT_TRUE(badge->isVisible()) << "shown again after the picture";
}

TEST(Display, ScreenshotIsWhatTheViewPaints) {
    // Height colours on a slope seen from an angle: no flip or channel swap
    // leaves this picture unchanged.
    HostedWindow window;
    QelPointCloud cloud = slope();
    const long id = QelDisplayPointCloud(window.handle, cloud);
    ASSERT_EQ(QelSet3DElementSize(window.handle, id, 4), 0);
    QWidget* view = nullptr;
    for (QWidget* w : windowWidget(window.handle)->findChildren<QWidget*>())
        if (w->inherits("MOpenglWidget")) view = w;
    ASSERT_NE(view, nullptr);
    const Shot shot(window.handle);
    ASSERT_EQ(shot.status, 0);
    const QImage painted = view->grab().toImage();
    ASSERT_EQ(QSize(shot.width(), shot.height()), painted.size());
    int differing = 0, r, g, b;
    for (int y = 0; y < shot.height(); ++y)
        for (int x = 0; x < shot.width(); ++x) {
            shot.rgb(x, y, &r, &g, &b);
            differing += QColor(painted.pixel(x, y)) != QColor(r, g, b);
        }
    EXPECT_EQ(differing, 0);
    EXPECT_GT(shot.countUnlike(0, 0, 0), 500) << "the cloud is drawn";
}

TEST(Display, NewDataIsFittedOnlyWhenTheCameraDoesNotShowIt) {
    HostedWindow window;
    QelPointCloud cloud = slope();
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    ASSERT_EQ(lookDown(window.handle, 12), 0);
    // The same part again: the host's view stays.
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    QelVector3d eye, centre, up;
    ASSERT_EQ(QelGetCamera(window.handle, &eye, &centre, &up), 0);
    EXPECT_NEAR(eye.z, 12, 1e-3);
    // Data far outside the view is brought into it.
    QelPointCloud far = gridCloud(30, 0.1f, [](float, float) { return 0.0f; });
    for (int i = 0; i < far.Length(); ++i)
        far[i].x += 500;
    ASSERT_GE(QelDisplayPointCloud(window.handle, far), 1);
    ASSERT_EQ(QelGetCamera(window.handle, &eye, &centre, &up), 0);
    EXPECT_NEAR(centre.x, 500, 1);
    EXPECT_GT(Shot(window.handle).countUnlike(0, 0, 0), 200);
}

TEST(Display, ImagesMeshesMatricesAndClearingByKind) {
    HostedWindow window;
    // A 2D image shown as a relief: a bright square on a dark ground.
    std::vector<unsigned char> pixels(64 * 64, 20);
    for (int r = 16; r < 48; ++r)
        for (int c = 16; c < 48; ++c)
            pixels[r * 64 + c] = 220;
    QelImage image;
    ASSERT_TRUE(image.CreateImage(pixels.data(), 64, 64, 64, 1, QelImageType(0)));
    ASSERT_GE(QelDisplay2DImage(window.handle, image), 1);
    EXPECT_TRUE(statusLabel(window.handle)->toolTip().contains("Data Type: Image2D"));
    EXPECT_TRUE(statusLabel(window.handle)->toolTip().contains("64 x 64"));
    Shot relief(window.handle);
    relief.keep("image-relief");
    EXPECT_GT(relief.countUnlike(0, 0, 0), 1000);

    // A mesh beside a cloud; clearing by kind takes only its kind.
    QelTriangleMesh mesh = squareMesh(1.0f);
    const long meshId = QelDisplayTriangleMesh(window.handle, mesh);
    ASSERT_GE(meshId, 1);
    EXPECT_TRUE(statusLabel(window.handle)->toolTip().contains("Number of Faces: 2"));
    QelPointCloud cloud = gridCloud(5, 0.1f, [](float, float) { return 0.0f; });
    const long cloudId = QelAdd3DRenderObject(window.handle, cloud);
    ASSERT_GE(cloudId, 1);
    ASSERT_EQ(lookDown(window.handle, 10), 0);
    const int both = Shot(window.handle).countUnlike(0, 0, 0);

    // A pose matrix moves the mesh; the picture changes, the pixel count hardly.
    QelMatrix4 shift;
    shift.SetValue(0, 3, 1.5);
    ASSERT_EQ(QelSetObjectModelMatrix(window.handle, meshId, shift), 0);
    Shot moved(window.handle);
    int r, g, b;
    moved.rgb(moved.width() / 2 - 40, moved.height() / 2, &r, &g, &b);
    EXPECT_LT(r + g + b, 30) << "the mesh has left the left of the centre";

    EXPECT_EQ(QelClearAllPointCloud(window.handle), 0);
    EXPECT_EQ(QelSetObjectVisible(window.handle, cloudId, true), 11100022);
    EXPECT_EQ(QelSetObjectVisible(window.handle, meshId, true), 0);
    EXPECT_EQ(QelClearAllTriangleMesh(window.handle), 0);
    EXPECT_EQ(QelSetObjectVisible(window.handle, meshId, true), 11100022);
    EXPECT_GT(both, 0);
}
