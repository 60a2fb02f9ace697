// Measurements as a host adds them: values (exact for simple cases, against
// an independent double-precision reference for random ones), every refusal
// in its order, and what the view draws, keeps and clears.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <random>
#include <vector>

#include "ApiHost.h"

using namespace QELMV;

namespace {

QelVector3dArray pointsOf(std::initializer_list<QelVector3d> points) {
    QelVector3dArray array;
    for (const QelVector3d& p : points)
        array.Append(p);
    return array;
}

double valueOf(long long h, long id) {
    double value = NAN;
    EXPECT_EQ(QelGet3DMeasurement(h, id, &value), 0);
    return value;
}

struct Vec {
    double x, y, z;
};
Vec sub(const QelVector3d& a, const QelVector3d& b) {
    return {double(a.x) - b.x, double(a.y) - b.y, double(a.z) - b.z};
}
double dot(Vec a, Vec b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
Vec cross(Vec a, Vec b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

}  // namespace

TEST(Measurement, ValuesExactForSimpleCasesAndAgainstAReferenceForRandomOnes) {
    HostedWindow w;
    QelVector3dArray d = pointsOf({{0, 0, 0}, {3, 4, 0}});
    const long distance = QelAdd3DMeasurement(w.handle, 0, d);
    ASSERT_TRUE(isId(distance));
    EXPECT_EQ(valueOf(w.handle, distance), 5.0);
    QelVector3dArray a = pointsOf({{1, 0, 0}, {0, 0, 0}, {0, 1, 0}});
    EXPECT_EQ(valueOf(w.handle, QelAdd3DMeasurement(w.handle, 1, a)), 90.0);
    QelVector3dArray straight = pointsOf({{1, 0, 0}, {0, 0, 0}, {-2, 0, 0}});
    EXPECT_EQ(valueOf(w.handle, QelAdd3DMeasurement(w.handle, 1, straight)), 180.0);
    // The normal (p2 - p1) x (p3 - p1) of this plane points up: above is positive.
    QelVector3dArray h = pointsOf({{0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {5, 5, 6}});
    EXPECT_EQ(valueOf(w.handle, QelAdd3DMeasurement(w.handle, 2, h)), 5.0);
    QelVector3dArray below = pointsOf({{0, 0, 1}, {0, 1, 1}, {1, 0, 1}, {5, 5, 6}});
    EXPECT_EQ(valueOf(w.handle, QelAdd3DMeasurement(w.handle, 2, below)), -5.0);

    std::mt19937 random(7);
    std::uniform_real_distribution<float> coordinate(-1000.0f, 1000.0f);
    auto point = [&] {
        return QelVector3d(coordinate(random), coordinate(random), coordinate(random));
    };
    for (int i = 0; i < 200; ++i) {
        const QelVector3d p0 = point(), p1 = point(), p2 = point(), p3 = point();
        QelVector3dArray two = pointsOf({p0, p1}), three = pointsOf({p0, p1, p2}),
                         four = pointsOf({p0, p1, p2, p3});
        const Vec d01 = sub(p1, p0);
        EXPECT_NEAR(valueOf(w.handle, QelAdd3DMeasurement(w.handle, 0, two)),
                    std::sqrt(dot(d01, d01)), 1e-9);
        const Vec u = sub(p0, p1), v = sub(p2, p1);
        const double cosine = dot(u, v) / std::sqrt(dot(u, u) * dot(v, v));
        EXPECT_NEAR(valueOf(w.handle, QelAdd3DMeasurement(w.handle, 1, three)),
                    std::acos(cosine) * 180.0 / M_PI, 1e-7);
        const Vec n = cross(sub(p1, p0), sub(p2, p0));
        EXPECT_NEAR(valueOf(w.handle, QelAdd3DMeasurement(w.handle, 2, four)),
                    dot(sub(p3, p0), n) / std::sqrt(dot(n, n)), 1e-7);
    }
}

TEST(Measurement, RefusalsInTheirOrderChangeNothing) {
    HostedWindow w;
    QelVector3dArray good = pointsOf({{0, 0, 0}, {1, 0, 0}});
    EXPECT_EQ(QelAdd3DMeasurement(12345, 9, good), 11504001);
    EXPECT_EQ(QelAdd3DMeasurement(w.handle, 3, good), 11200002);
    EXPECT_EQ(QelAdd3DMeasurement(w.handle, -1, good), 11200002);
    EXPECT_EQ(QelAdd3DMeasurement(w.handle, 1, good), 11200003) << "an angle takes 3 points";
    QelVector3dArray invalid = pointsOf({{0, 0, 0}, {1, 0, FLT_MAX}});
    EXPECT_EQ(QelAdd3DMeasurement(w.handle, 0, invalid), 11200003);
    QelVector3dArray notFinite = pointsOf({{0, 0, 0}, {NAN, 0, 0}});
    EXPECT_EQ(QelAdd3DMeasurement(w.handle, 0, notFinite), 11200003);
    QelVector3dArray noLeg = pointsOf({{1, 1, 1}, {1, 1, 1}, {0, 1, 0}});
    EXPECT_EQ(QelAdd3DMeasurement(w.handle, 1, noLeg), 11200003);
    QelVector3dArray onALine = pointsOf({{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {0, 0, 5}});
    EXPECT_EQ(QelAdd3DMeasurement(w.handle, 2, onALine), 11200003);

    const Shot before(w.handle);
    const long id = QelAdd3DMeasurement(w.handle, 0, good);
    ASSERT_TRUE(isId(id));
    double value = 0;
    EXPECT_EQ(QelGet3DMeasurement(12345, id, &value), 11504001);
    EXPECT_EQ(QelGet3DMeasurement(w.handle, id, nullptr), 11200003);
    EXPECT_EQ(QelGet3DMeasurement(w.handle, id + 1, &value), 11100022);
    EXPECT_EQ(QelClear3DMeasurement(w.handle, id + 1), 11100022);
    EXPECT_EQ(QelClear3DMeasurement(12345, id), 11504001);
    EXPECT_EQ(QelClearAll3DMeasurement(12345), 11504001);
    EXPECT_EQ(QelSet3DMeasureMode(w.handle, 3), 11200002);
    EXPECT_EQ(QelSet3DMeasureMode(w.handle, -2), 11200002);
    EXPECT_EQ(QelSet3DMeasureMode(12345, 0), 11504001);
    EXPECT_EQ(QelSet3DMeasureMode(w.handle, -1), 0);
    EXPECT_EQ(QelRegisterMeasureEvent(12345, nullptr, nullptr), 11504001);
    // The refused adds took no id: the next one follows the last good one.
    EXPECT_EQ(QelAdd3DMeasurement(w.handle, 0, good), id + 1);
    EXPECT_EQ(QelClear3DMeasurement(w.handle, id), 0);
    EXPECT_EQ(QelGet3DMeasurement(w.handle, id, &value), 11100022);
    EXPECT_STRNE(QelGetStatusText(11200003), QelGetStatusText(-12345));
}

TEST(Measurement, DrawnOverTheDataKeptByADisplayClearedWithTheShapes) {
    HostedWindow w;
    QelPointCloud cloud = gridCloud(41, 0.25f, [](float x, float y) { return 0.1f * (x + y); });
    ASSERT_TRUE(isId(QelDisplayPointCloud(w.handle, cloud)));
    QelSetPerspective(w.handle, QEL_3D_VIEW_TOP);
    Qel3DZoomFitWnd(w.handle);
    const Shot plain(w.handle);
    ASSERT_EQ(plain.status, 0);
    // A distance across the cloud, an angle and a height: drawn in white on
    // black, over the data.
    QelVector3dArray across = pointsOf({{-4, -4, 0}, {4, 4, 0}});
    QelVector3dArray corner = pointsOf({{4, -4, 0}, {0, -4, 0}, {0, 0, 0}});
    QelVector3dArray step = pointsOf({{-4, 2, 0}, {-2, 2, 0}, {-4, 4, 0}, {-3, 3, 2}});
    ASSERT_TRUE(isId(QelAdd3DMeasurement(w.handle, 0, across)));
    ASSERT_TRUE(isId(QelAdd3DMeasurement(w.handle, 1, corner)));
    ASSERT_TRUE(isId(QelAdd3DMeasurement(w.handle, 2, step)));
    const Shot measured(w.handle);
    measured.keep("measurements");
    auto white = [](int r, int g, int b) { return r > 200 && g > 200 && b > 200; };
    const int before = plain.count(white), after = measured.count(white);
    EXPECT_GT(after, before + 500) << "lines, marks and labels";

    // The clip plane cuts them like the data: keeping y <= -1 leaves the
    // distance's lower part only.
    Qel3DPlane below(QelVector3d(0, -1, 0), QelVector3d(0, -1, 0));
    ASSERT_EQ(QelRenderByClippingPlane(w.handle, below), 0);
    const Shot clipped(w.handle);
    clipped.keep("measurements-clipped");
    EXPECT_LT(clipped.count(white), after * 3 / 4) << "half the lines and two labels cut";
    EXPECT_GT(clipped.count(white), 50);
    Qel3DPlane under(QelVector3d(0, 0, -100), QelVector3d(0, 0, 1));
    ASSERT_EQ(QelRenderByClippingPlane(w.handle, under), 0);
    EXPECT_EQ(Shot(w.handle).count(white), after) << "a plane below everything cuts nothing";

    // A new display keeps them; what clears the shapes clears them.
    ASSERT_TRUE(isId(QelDisplayPointCloud(w.handle, cloud)));
    Shot(w.handle).keep("measurements-redisplayed0");
    const Shot redisplayed(w.handle);
    redisplayed.keep("measurements-redisplayed");
    EXPECT_EQ(redisplayed.count(white), after);
    ASSERT_EQ(QelClearAll3DShape(w.handle), 0);
    const Shot cleared(w.handle);
    EXPECT_EQ(cleared.count(white), before);
    EXPECT_EQ(cleared.countUnlike(0, 0, 0, 0), plain.countUnlike(0, 0, 0, 0));
}
