// The exported functions' argument checks: each refusal's code, in the
// order the checks run, and that a refused call changes nothing.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>

#include "ApiHost.h"

using namespace QELMV;

namespace {

const QelVector3d kInvalid;  // (0, 0, +FLT_MAX)

}  // namespace

class ArgumentChecks : public ::testing::Test {
protected:
    HostedWindow window;
    long long h = window.handle;
    QelPointCloud cloud = gridCloud(4, 1, [](float, float) { return 0.0f; });
    long id = QelDisplayPointCloud(h, cloud);
};

TEST_F(ArgumentChecks, DataIsRefusedBeforeAnythingChanges) {
    ASSERT_GE(id, 1);
    QelPointCloud empty;
    EXPECT_EQ(QelDisplayPointCloud(h, empty), 11100002);
    EXPECT_EQ(QelAdd3DRenderObject(h, empty), 11100002);
    QelPointCloud allInvalid = gridCloud(2, 1, [](float, float) { return FLT_MAX; });
    EXPECT_EQ(QelAdd3DRenderObject(h, allInvalid), 11100003);
    EXPECT_GE(QelDisplayPointCloud(h, allInvalid), 1) << "display takes a cloud of invalid points";

    QelRangeImage noSamples;
    EXPECT_EQ(QelDisplayRangeImage(h, noSamples), 11100001);
    EXPECT_EQ(QelAdd3DRenderObject(h, noSamples), 11100001);

    const QelVector3d a(0, 0, 0), b(1, 0, 0), c(0, 1, 0);
    QelTriangleMesh noVertices, noTriangles = meshOf({a, b, c}, {});
    QelTriangleMesh invalidVertices = meshOf({kInvalid, kInvalid, kInvalid}, {0, 1, 2});
    QelTriangleMesh invalidTriangles = meshOf({a, b, c, kInvalid}, {0, 1, 3});
    for (auto display :
         {+[](long long w, QelTriangleMesh&m) { return QelDisplayTriangleMesh(w, m); },
          +[](long long w, QelTriangleMesh&m) { return QelAdd3DRenderObject(w, m); }}) {
        EXPECT_EQ(display(h, noVertices), 11100015);
        EXPECT_EQ(display(h, noTriangles), 11100017);
        EXPECT_EQ(display(h, invalidVertices), 11100016);
        EXPECT_EQ(display(h, invalidTriangles), 11100018);
    }

    QelImage noPixels;
    EXPECT_EQ(QelDisplay2DImage(h, noPixels), 11100023);
    std::vector<float> pixels(16, 1.0f);
    QelImage floats;
    ASSERT_TRUE(floats.CreateImage(reinterpret_cast<unsigned char*>(pixels.data()), 4, 4, 16, 1,
                                   QelImageType(4)));
    EXPECT_EQ(QelDisplay2DImage(h, floats), 11100025);
}

TEST_F(ArgumentChecks, TextOverlayAndMessageText) {
    QelVar number(5L), text("t");
    QelVector3d at(0, 0, 0);
    QelColor white(255, 255, 255);
    EXPECT_EQ(QelDraw3DTextOverlay(h, number, at, 1, white), 11200002);
    QelVector3d nowhere = kInvalid;
    EXPECT_EQ(QelDraw3DTextOverlay(h, number, nowhere, 0, white), 11200002) << "type first";
    EXPECT_EQ(QelDraw3DTextOverlay(h, text, nowhere, 0, white), 11200003);
    EXPECT_EQ(QelDraw3DTextOverlay(h, text, at, 0, white), 11200004);
    const long overlay = QelDraw3DTextOverlay(h, text, at, 1, white);
    EXPECT_GE(overlay, 1);
    EXPECT_EQ(QelClear3DTextOverlay(h, -1), 11100022);
    EXPECT_EQ(QelClear3DTextOverlay(h, overlay), 0);
    EXPECT_EQ(QelClear3DTextOverlay(h, overlay), 11100022);
    EXPECT_EQ(QelClearAll3DTextOverlay(h), 0);
}

TEST_F(ArgumentChecks, ObjectOperations) {
    QelMatrix4 pose, skew;
    pose.SetValue(0, 3, 5.0);
    skew.SetValue(0, 1, 0.5);
    EXPECT_EQ(QelSetObjectModelMatrix(h, id + 99, skew), 11100009) << "the pose check comes first";
    EXPECT_EQ(QelSetObjectModelMatrix(h, id + 99, pose), 11100022);
    EXPECT_EQ(QelSetObjectModelMatrix(h, id, pose), 0);

    EXPECT_EQ(QelSetRenderLineWidth(h, id, 0.0f), 11200003);
    EXPECT_EQ(QelSetRenderLineWidth(h, id, 10.0001f), 11200003);
    EXPECT_EQ(QelSetRenderLineWidth(h, id, 10.0f), 0);
    EXPECT_EQ(QelSetRenderLineWidth(h, id + 99, 1.0f), 11100022);
    EXPECT_EQ(QelSet3DElementSize(h, id, 0), 11200003);
    EXPECT_EQ(QelSet3DElementSize(h, id + 99, 2), 11100022);
    EXPECT_EQ(QelSet3DElementState(h, id + 99, Qel3DGraphicsDataType(3)), 11200003);
    EXPECT_EQ(QelSet3DElementState(h, id + 99, QEL_3D_LINES), 11100022);
    EXPECT_EQ(QelSetPointRenderMode(h, id + 99, Qel3DPointRenderMode(2)), 11200003);
    EXPECT_EQ(QelSetPointRenderMode(h, id + 99, QEL_3D_POINT_SPRITE), 11100022);
    EXPECT_EQ(QelSetPointRenderMode(h, id, QEL_3D_POINT_SPRITE), 0);
    EXPECT_EQ(QelSetObjectVisible(h, id + 99, false), 11100022);
    EXPECT_EQ(QelClearRenderObject(h, id + 99), 11100022);
    EXPECT_EQ(QelClearRenderObject(h, id), 0);
    EXPECT_EQ(QelClearRenderObject(h, id), 11100022);
    EXPECT_EQ(QelClearAllPointCloud(h), 0);
    EXPECT_EQ(QelClearAllRangeImage(h), 0);
    EXPECT_EQ(QelClearAllTriangleMesh(h), 0);
    EXPECT_EQ(QelClear3DScene(h), 0);
}

TEST_F(ArgumentChecks, CameraAndLight) {
    QelVector3d eye(0, 0, 10), centre(0, 0, 0), up(0, 1, 0), bad = kInvalid;
    QelVector3d nan(0, std::nanf(""), 0);
    EXPECT_EQ(QelSetCamera(h, bad, bad, bad), 11200002);
    EXPECT_EQ(QelSetCamera(h, eye, nan, bad), 11200003);
    EXPECT_EQ(QelSetCamera(h, eye, centre, bad), 11200004);
    ASSERT_EQ(QelSetCamera(h, eye, centre, up), 0);
    QelVector3d e, c, u;
    ASSERT_EQ(QelGetCamera(h, &e, &c, &u), 0);
    EXPECT_NEAR(e.z, 10, 1e-4);
    EXPECT_NEAR(c.z, 0, 1e-4);
    EXPECT_NEAR(u.y, 1, 1e-4);

    EXPECT_EQ(QelSetPerspective(h, Qel3DPerspective(7)), 11200002);
    EXPECT_EQ(QelSetProjection(h, true), 0);
    EXPECT_EQ(QelSetProjection(h, false), 0);
    EXPECT_EQ(Qel3DZoom(h, centre, 0.0f), 11200003);
    EXPECT_EQ(Qel3DZoom(h, centre, 2.0f), 0);
    EXPECT_EQ(Qel3DZoomFitWnd(h), 0);

    QelVector3d zero(0, 0, 0), down(0, 0, -1);
    EXPECT_EQ(QelSetLightParameter(h, 0.0f, down), 11200002);
    EXPECT_EQ(QelSetLightParameter(h, 10.5f, zero), 11200002);
    EXPECT_EQ(QelSetLightParameter(h, 10.0f, zero), 11200003);
    EXPECT_EQ(QelSetLightParameter(h, 10.0f, bad), 11200003);
    EXPECT_EQ(QelSetLightParameter(h, 10.0f, down), 0);
    EXPECT_EQ(QelSetLightParameter(h, -0.1f, 2.0f, 2.0f), 11200002);
    EXPECT_EQ(QelSetLightParameter(h, 0.5f, 1.1f, 2.0f), 11200003);
    EXPECT_EQ(QelSetLightParameter(h, 0.5f, 1.0f, 2.0f), 11200004);
    EXPECT_EQ(QelSetLightParameter(h, 0.0f, 1.0f, 0.5f), 0);
    EXPECT_EQ(QelSetLightState(h, false), 0);
    EXPECT_FALSE(findAction(h, "Toggle Light")->isChecked());
}

TEST_F(ArgumentChecks, TextPenRoundTripsWithOpaqueAlpha) {
    QelColor pen(10, 20, 30, 40);
    EXPECT_EQ(QelSet3DTextPen(h, pen, 0), 11200003);
    ASSERT_EQ(QelSet3DTextPen(h, pen, 18), 0);
    QelColor out;
    long size = 0;
    ASSERT_EQ(QelGet3DTextPen(h, &out, &size), 0);
    EXPECT_EQ(out.r, 10);
    EXPECT_EQ(out.g, 20);
    EXPECT_EQ(out.b, 30);
    EXPECT_EQ(out.a, 255);
    EXPECT_EQ(size, 18);
}
