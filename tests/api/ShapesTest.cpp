// Shapes as a host shows them: ids, modes, clearing, what survives a
// display, model matrices, colours, and a contact sheet of every kind.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "ApiHost.h"

using namespace QELMV;

namespace {

QelVector3d v(float x, float y, float z) {
    return QelVector3d(x, y, z);
}

long show(long long h, const std::function<void(Qel3DShape&)>& describe) {
    Qel3DShape shape;
    describe(shape);
    return QelShow3DShape(h, shape);
}

// Pixels that are the shapes' default blue.
int bluePixels(const Shot& shot) {
    return shot.count([](int r, int g, int b) { return b > 200 && r < 60 && g < 60; });
}

}  // namespace

TEST(Shapes, IdsModesAndClearing) {
    HostedWindow first, second;
    QelPointCloud cloud = gridCloud(4, 1, [](float, float) { return 0.0f; });
    const long cloudId = QelDisplayPointCloud(first.handle, cloud);
    const long a = show(first.handle, [](Qel3DShape& s) { s.Set3DSphere(v(0, 0, 0), 1); });
    const long b = show(second.handle, [](Qel3DShape& s) { s.Set3DSphere(v(0, 0, 0), 1); });
    ASSERT_TRUE(isId(cloudId) && isId(a) && isId(b));
    EXPECT_EQ(a, cloudId + 1) << "one counter for render objects and shapes";
    EXPECT_EQ(b, a + 1) << "across windows";
    // A refused shape still uses up an id.
    EXPECT_EQ(show(first.handle, [](Qel3DShape& s) { s.Set3DPoint(v(0, 0, 3.4028235e38f)); }),
              11100004);
    EXPECT_EQ(show(first.handle, [](Qel3DShape&) {}), 11100004);
    EXPECT_EQ(show(first.handle, [](Qel3DShape& s) { s.Set3DSphere(v(0, 0, 0), 1); }), b + 3);

    EXPECT_EQ(QelSet3DShapeMode(first.handle, int(a), QEL_3D_SHAPE_WIREFRAME), 0);
    EXPECT_EQ(QelSet3DShapeMode(first.handle, int(a), QEL_3D_SHAPE_SURFACE), 0);
    EXPECT_EQ(QelSet3DShapeMode(first.handle, int(a), Qel3DGraphicsShapeMode(2)), 11200003);
    EXPECT_EQ(QelSet3DShapeMode(first.handle, int(b), QEL_3D_SHAPE_SURFACE), 11100022)
        << "the other window's shape";
    EXPECT_EQ(QelClear3DShape(first.handle, a), 0);
    EXPECT_EQ(QelClear3DShape(first.handle, a), 11100022);
    EXPECT_EQ(QelClearAll3DShape(second.handle), 0);
    EXPECT_EQ(QelClearAll3DShape(second.handle), 0) << "clearing none";
}

TEST(Shapes, SurviveADisplayNotAClearAndAreBlueOpaqueAndUnlit) {
    HostedWindow window;
    ASSERT_EQ(QelSetDefaultLUT(window.handle, 5), 0);
    QelPointCloud cloud = gridCloud(10, 0.1f, [](float, float) { return 0.0f; });
    ASSERT_TRUE(isId(QelDisplayPointCloud(window.handle, cloud)));
    const long box =
        show(window.handle, [](Qel3DShape& s) { s.Set3DBox(v(0, 0, 0), v(0, 0, 0), v(1, 1, 1)); });
    ASSERT_TRUE(isId(box));
    ASSERT_EQ(QelSetPerspective(window.handle, QEL_3D_VIEW_TOP), 0);
    ASSERT_EQ(Qel3DZoomFitWnd(window.handle), 0);
    const int lit = bluePixels(Shot(window.handle));
    EXPECT_GT(lit, 2000);
    // Unlit: the light's state and power change nothing.
    QelVector3d sideways(1, 0, 0);
    ASSERT_EQ(QelSetLightParameter(window.handle, 0.2f, sideways), 0);
    EXPECT_EQ(bluePixels(Shot(window.handle)), lit);
    ASSERT_EQ(QelSetLightState(window.handle, false), 0);
    EXPECT_EQ(bluePixels(Shot(window.handle)), lit);

    // A new display replaces render objects only.
    ASSERT_TRUE(isId(QelDisplayPointCloud(window.handle, cloud)));
    EXPECT_EQ(bluePixels(Shot(window.handle)), lit);
    // A model matrix moves the box out of the picture's centre.
    QelMatrix4 shift;
    shift.SetValue(0, 3, 100.0);
    ASSERT_EQ(QelSetObjectModelMatrix(window.handle, box, shift), 0);
    EXPECT_LT(bluePixels(Shot(window.handle)), lit / 4);
    // Colour and visibility reach shapes too.
    QelMatrix4 back;
    back.SetValue(0, 3, -100.0);
    ASSERT_EQ(QelSetObjectModelMatrix(window.handle, box, back), 0);
    QelColorArray red;
    red.Create(1, 3);
    red.Data()[0] = 255;
    ASSERT_EQ(QelSetRenderColor(window.handle, box, red), 0);
    EXPECT_LT(bluePixels(Shot(window.handle)), 50);
    ASSERT_EQ(QelSetObjectVisible(window.handle, box, false), 0);
    ASSERT_EQ(QelClear3DScene(window.handle), 0);
    EXPECT_EQ(QelClear3DShape(window.handle, box), 11100022) << "clear scene takes shapes";
}

namespace {

// Every kind the host can describe, each in a cell of a 5 x 4 grid.
std::vector<std::function<void(Qel3DShape&, QelVector3d)>> everyKind() {
    auto polygon = [](QelVector3d c) {
        QelVector3dArray p(5);
        const float xy[5][2] = {{-1, -1}, {1, -1}, {1.2f, 0.5f}, {0, 1.2f}, {-1, 0.6f}};
        for (int i = 0; i < 5; ++i)
            p[i] = v(c.x + xy[i][0], c.y + xy[i][1], c.z);
        return p;
    };
    auto lineSet = [](QelVector3d c) {
        // A closed loop (filled in the surface form) and a separate segment.
        Qel3DLineSet set;
        set.SetSize(6, 5);
        const float xy[6][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}, {-1.2f, 1.3f}, {1.2f, 1.6f}};
        for (int i = 0; i < 6; ++i) {
            set.VertexData()[3 * i] = c.x + xy[i][0];
            set.VertexData()[3 * i + 1] = c.y + xy[i][1];
            set.VertexData()[3 * i + 2] = c.z;
        }
        const int lines[] = {0, 1, 1, 2, 2, 3, 3, 0, 4, 5};
        std::copy(lines, lines + 10, set.LineData());
        return set;
    };
    const QelVector3d tilt(30, 20, 0), up(0, 0, 1), slanted(0.4f, 0.3f, 1);
    return {
        [](Qel3DShape& s, QelVector3d c) { s.Set3DPoint(c); },
        [](Qel3DShape& s, QelVector3d c) {
            s.Set3DLine(v(c.x - 1, c.y - 1, c.z), v(c.x + 1, c.y + 1, c.z), QEL_LINE_ARROW);
        },
        [=](Qel3DShape& s, QelVector3d c) { s.Set3DCircle(c, slanted, 1.2f); },
        [=](Qel3DShape& s, QelVector3d c) { s.Set3DBox(c, tilt, v(1.6f, 1.2f, 0.8f)); },
        [](Qel3DShape& s, QelVector3d c) { s.Set3DSphere(c, 1.1f); },
        [=](Qel3DShape& s, QelVector3d c) { s.Set3DCylinder(c, slanted, 0.8f, 1.6f); },
        [](Qel3DShape& s, QelVector3d c) {
            s.Set3DTriangle(v(c.x - 1, c.y - 1, c.z), v(c.x + 1, c.y - 1, c.z),
                            v(c.x, c.y + 1, c.z));
        },
        [=](Qel3DShape& s, QelVector3d c) { s.Set3DPolygon(polygon(c)); },
        [=](Qel3DShape& s, QelVector3d c) { s.Set3DEllipse(c, v(0, 0, 30), 1.4f, 0.7f); },
        [=](Qel3DShape& s, QelVector3d c) { s.Set3DEllipsoid(c, tilt, v(1.3f, 0.8f, 0.6f)); },
        [=](Qel3DShape& s, QelVector3d c) { s.Set3DRect(c, v(0, 0, 20), 2.0f, 1.2f); },
        [=](Qel3DShape& s, QelVector3d c) {
            s.Set3DTorus(c, tilt, 0.6f, 1.3f, 0, 270, QEL_TORUS_PARTIAL);
        },
        [=](Qel3DShape& s, QelVector3d c) { s.Set3DTube(c, slanted, 0.6f, 1.1f, 1.2f, 0, 270); },
        [](Qel3DShape& s, QelVector3d c) { s.Set3DArc(c, v(0, 0, 0), 1.2f, 30, 240); },
        [=](Qel3DShape& s, QelVector3d c) { s.Set3DAnyShape(lineSet(c)); },
        [=](Qel3DShape& s, QelVector3d c) { s.Set3DCone(c, up, 1.0f, 1.8f, 0, 300); },
        [=](Qel3DShape& s, QelVector3d c) { s.Set3DEllipticCylinder(c, tilt, 1.1f, 0.6f, 1.4f); },
        // Infinite: it spans the scene, so it lies below the cloud.
        [](Qel3DShape& s, QelVector3d c) { s.Set3DPlane(v(c.x, c.y, -3), v(0, 0, 1)); },
    };
}

}  // namespace

TEST(Shapes, ContactSheetOfEveryKindInBothForms) {
    HostedWindow window(900, 760);
    QColor grey(70, 70, 80);
    QelColor background(grey.red(), grey.green(), grey.blue(), 255);
    ASSERT_EQ(QelSet3DBackgroundColor(window.handle, background), 0);
    // A cloud under the grid, so shapes are seen beside data.
    QelPointCloud cloud =
        gridCloud(60, 0.35f, [](float x, float y) { return -1.5f + 0.1f * (x + y); });
    const long cloudId = QelDisplayPointCloud(window.handle, cloud);
    ASSERT_TRUE(isId(cloudId));
    ASSERT_EQ(QelSet3DElementSize(window.handle, cloudId, 3), 0);
    std::vector<long> ids;
    const auto kinds = everyKind();
    for (size_t i = 0; i < kinds.size(); ++i) {
        const QelVector3d cell(-8.0f + 4.0f * float(i % 5), 6.0f - 4.0f * float(i / 5), 0);
        ids.push_back(show(window.handle, [&](Qel3DShape& s) { kinds[i](s, cell); }));
        ASSERT_TRUE(isId(ids.back())) << "kind " << i << ": " << ids.back();
        // Each kind its own colour (the plane a dark one), through the
        // per-object colour function.
        const QColor c = i + 1 == kinds.size() ? QColor(35, 45, 70)
                                               : QColor::fromHsv(int(i) * 340 / 17, 200, 255);
        QelColorArray colour;
        colour.Create(1, 3);
        colour.Data()[0] = uchar(c.red());
        colour.Data()[1] = uchar(c.green());
        colour.Data()[2] = uchar(c.blue());
        ASSERT_EQ(QelSetRenderColor(window.handle, ids.back(), colour), 0);
    }
    QelVector3d eye(0, -12, 26), centre(0, 0, 0), up(0, 1, 0);
    for (int mode : {QEL_3D_SHAPE_SURFACE, QEL_3D_SHAPE_WIREFRAME}) {
        for (long id : ids)
            ASSERT_EQ(QelSet3DShapeMode(window.handle, int(id), Qel3DGraphicsShapeMode(mode)), 0);
        ASSERT_EQ(QelSetCamera(window.handle, eye, centre, up), 0);
        Shot shot(window.handle);
        ASSERT_EQ(shot.status, 0);
        shot.keep(mode == QEL_3D_SHAPE_SURFACE ? "shapes-surface" : "shapes-lines");
        // Saturated pixels: the shapes (the cloud and the plane are dull).
        const int shapes = shot.count([](int r, int g, int b) {
            return std::max({r, g, b}) - std::min({r, g, b}) > 120;
        });
        EXPECT_GT(shapes, mode == QEL_3D_SHAPE_SURFACE ? 40000 : 5000);
    }
}

TEST(Shapes, InfiniteLinesAndPlanesFollowNewData) {
    HostedWindow window(400, 400);
    QelPointCloud small = gridCloud(10, 0.1f, [](float, float) { return 0.0f; });
    ASSERT_TRUE(isId(QelDisplayPointCloud(window.handle, small)));
    const long line = show(window.handle, [](Qel3DShape& s) {
        s.Set3DLine(v(0, 0, 0), v(1, 0, 0), QEL_LINE_INFINITE);
    });
    ASSERT_TRUE(isId(line));
    auto spannedColumns = [&] {
        Shot shot(window.handle);
        int columns = 0;
        for (int x = 0; x < shot.width(); ++x) {
            bool blue = false;
            for (int y = 0; y < shot.height() && !blue; ++y) {
                int r, g, b;
                shot.rgb(x, y, &r, &g, &b);
                blue = b > 200 && r < 60 && g < 60;
            }
            columns += blue;
        }
        return double(columns) / shot.width();
    };
    ASSERT_EQ(QelSetPerspective(window.handle, QEL_3D_VIEW_TOP), 0);
    ASSERT_EQ(Qel3DZoomFitWnd(window.handle), 0);
    EXPECT_GT(spannedColumns(), 0.6);
    // Data ten times as wide: the line is re-sized across it.
    QelPointCloud wide = gridCloud(10, 1.0f, [](float, float) { return 0.0f; });
    ASSERT_TRUE(isId(QelDisplayPointCloud(window.handle, wide)));
    ASSERT_EQ(Qel3DZoomFitWnd(window.handle), 0);
    EXPECT_GT(spannedColumns(), 0.6);
}
