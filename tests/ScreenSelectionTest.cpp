// Selecting points by a polygon drawn in window pixels.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <osg/Camera>
#include <random>

#include "Qel3DData.h"

namespace {

// A 100 x 100 window looking down -z from (0, 0, 10) with a 90 degree view.
osg::ref_ptr<osg::Camera> makeCamera() {
    osg::ref_ptr<osg::Camera> camera = new osg::Camera;
    camera->setViewport(0, 0, 100, 100);
    camera->setViewMatrixAsLookAt(osg::Vec3d(0, 0, 10), osg::Vec3d(0, 0, 0), osg::Vec3d(0, 1, 0));
    camera->setProjectionMatrixAsPerspective(90.0, 1.0, 1.0, 100.0);
    return camera;
}

QelPointArray square(double x0, double y0, double x1, double y1) {
    QelPointArray p;
    p.Append(QelPoint(x0, y0));
    p.Append(QelPoint(x1, y0));
    p.Append(QelPoint(x1, y1));
    p.Append(QelPoint(x0, y1));
    p.Append(QelPoint(x0, y0));
    return p;
}

// Plain even-odd test, for comparison with the banded one.
bool evenOdd(const std::vector<osg::Vec2d>& poly, double x, double y) {
    bool inside = false;
    for (std::size_t i = 0, j = poly.size() - 1; i < poly.size(); j = i++) {
        const osg::Vec2d &a = poly[i], &b = poly[j];
        if ((a.y() > y) != (b.y() > y) &&
            x < a.x() + (y - a.y()) * (b.x() - a.x()) / (b.y() - a.y()))
            inside = !inside;
    }
    return inside;
}

}  // namespace

TEST(ScreenPolygon, InsideOutsideBehindAndInvalid) {
    auto camera = makeCamera();
    QelVector3dArray pts(5);
    pts[0] = QelVector3d(0, 0, 0);        // window centre (50, 50)
    pts[1] = QelVector3d(5, 0, 0);        // (75, 50)
    pts[2] = QelVector3d(0, 0, 20);       // behind the eye
    pts[3] = QelVector3d(0, 0, FLT_MAX);  // invalid
    pts[4] = QelVector3d(0, -2, 0);       // (50, 40): y grows upwards
    QelVector3dArray out;
    Qel3DIntArray idx;
    Qel3DGraphicsIO io;
    ASSERT_EQ(io.GetPointsInScreenPolygon(*camera, pts, square(40, 35, 60, 60), &out, &idx, true),
              0);
    ASSERT_EQ(out.Length(), 2);
    EXPECT_EQ(idx[0], 0);
    EXPECT_EQ(idx[1], 4);

    ASSERT_EQ(io.GetPointsInScreenPolygon(*camera, pts, square(40, 35, 60, 60), &out, &idx, false),
              0);
    ASSERT_EQ(out.Length(), 2) << "outside: the far right point and the one behind the eye";
    EXPECT_EQ(idx[0], 1);
    EXPECT_EQ(idx[1], 2);

    // A window polygon that would hold the point behind the camera if it
    // were mirrored through the eye.
    ASSERT_EQ(io.GetPointsInScreenPolygon(*camera, pts, square(0, 0, 100, 100), &out, true), 0);
    EXPECT_EQ(out.Length(), 3);
}

TEST(ScreenPolygon, RejectsUnusableInput) {
    auto camera = makeCamera();
    QelVector3dArray pts(1);
    pts[0] = QelVector3d(0, 0, 0);
    QelVector3dArray out;
    out.SetSize(7);
    Qel3DGraphicsIO io;
    QelPointArray line;
    line.Append(QelPoint(0, 0));
    line.Append(QelPoint(10, 10));
    line.Append(QelPoint(0, 0));
    EXPECT_NE(io.GetPointsInScreenPolygon(*camera, pts, line, &out, true), 0);
    EXPECT_EQ(out.Length(), 7) << "nothing written on failure";
    EXPECT_NE(io.GetPointsInScreenPolygon(*camera, pts, square(0, 0, 10, 10), nullptr, true), 0);
    osg::ref_ptr<osg::Camera> noViewport = new osg::Camera;
    EXPECT_NE(io.GetPointsInScreenPolygon(*noViewport, pts, square(0, 0, 10, 10), &out, true), 0);
}

TEST(ScreenPolygon, AgreesWithPlainEvenOddOnAConcaveStar) {
    auto camera = makeCamera();
    // A 64-point star whose edges cross many bands.
    QelPointArray star;
    std::vector<osg::Vec2d> starXY;
    for (int k = 0; k < 64; ++k) {
        const double r = (k % 2) ? 45.0 : 12.0, a = k * 2 * M_PI / 64;
        star.Append(QelPoint(50 + r * std::cos(a), 50 + r * std::sin(a)));
        starXY.emplace_back(50 + r * std::cos(a), 50 + r * std::sin(a));
    }
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> u(-12.f, 12.f);
    const int n = 300000;  // large enough to run on several threads
    QelVector3dArray pts(n);
    for (int i = 0; i < n; ++i)
        pts[i] = QelVector3d(u(rng), u(rng), u(rng) * 0.5f);

    QelVector3dArray out;
    Qel3DIntArray idx;
    ASSERT_EQ(Qel3DGraphicsIO().GetPointsInScreenPolygon(*camera, pts, star, &out, &idx, true), 0);

    const osg::Matrixd mvpw = camera->getViewMatrix() * camera->getProjectionMatrix() *
                              camera->getViewport()->computeWindowMatrix();
    std::vector<char> expected(n, 0);
    int expectedCount = 0;
    for (int i = 0; i < n; ++i) {
        const osg::Vec3d w = osg::Vec3d(pts[i].x, pts[i].y, pts[i].z) * mvpw;
        expected[i] = evenOdd(starXY, w.x(), w.y());
        expectedCount += expected[i];
    }
    ASSERT_GT(expectedCount, 1000);
    ASSERT_EQ(idx.Length(), expectedCount);
    for (int k = 0; k < idx.Length(); ++k)
        ASSERT_TRUE(expected[idx[k]]) << idx[k];
}
