// Range statistics, the pose test and polygon triangulation.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <osg/Array>

#include "EarClipping.h"
#include "Qel3DData.h"
#include "QelTrimeshFromLines.h"
#include "SimplePolygon.h"

using QELMV::Qel3DAxisTransform;
using QELMV::Qel3DImageMathematics;

TEST(RangeImageMaxMin, SkipsInvalidSamplesAndHonoursTheRegion) {
    QelRangeImage img;
    ASSERT_TRUE(img.SetSize(4, 3, QEL_16S));
    const short raw[] = {5, -32768, 9, 1, 2, 3, 40, 4, -7, 6, 7, -32768};
    img.SetValue(raw, 12, 1, 0, 0, 0);
    img.SetInfo(1, 1, 0.5, 0, 0, 1);
    QelPoint maxAt, minAt;
    double maxZ = 0, minZ = 0;
    ASSERT_EQ(Qel3DImageMathematics().RangeImageMaxMin(img, QelROI(), &maxAt, &minAt, &maxZ, &minZ),
              0);
    EXPECT_DOUBLE_EQ(maxZ, (40 - 1) * 0.5);
    EXPECT_DOUBLE_EQ(minZ, (-7 - 1) * 0.5);
    EXPECT_EQ(maxAt.x, 2);
    EXPECT_EQ(maxAt.y, 1);
    EXPECT_EQ(minAt.x, 0);
    EXPECT_EQ(minAt.y, 2);

    QelROI roi;
    ASSERT_TRUE(roi.GenRect1(QelPoint(0, 0), QelPoint(1, 1)));  // corners included
    ASSERT_EQ(Qel3DImageMathematics().RangeImageMaxMin(img, roi, nullptr, nullptr, &maxZ, &minZ),
              0);
    EXPECT_DOUBLE_EQ(maxZ, (5 - 1) * 0.5);
    EXPECT_DOUBLE_EQ(minZ, (2 - 1) * 0.5);

    ASSERT_TRUE(roi.GenRect1(QelPoint(10, 10), QelPoint(20, 20)));
    EXPECT_NE(Qel3DImageMathematics().RangeImageMaxMin(img, roi, nullptr, nullptr, &maxZ, &minZ),
              0);
    QelRangeImage empty;
    ASSERT_TRUE(empty.SetSize(2, 2, QEL_32F));
    EXPECT_NE(
        Qel3DImageMathematics().RangeImageMaxMin(empty, QelROI(), nullptr, nullptr, &maxZ, &minZ),
        0);
}

TEST(PoseMatrix, AcceptsRigidMotionsOnly) {
    Qel3DAxisTransform t;
    QelMatrix4 m;
    EXPECT_TRUE(t.IsPoseMatrix(m));
    const double a = 0.3;
    m.SetValue(0, 0, std::cos(a));
    m.SetValue(0, 1, -std::sin(a));
    m.SetValue(1, 0, std::sin(a));
    m.SetValue(1, 1, std::cos(a));
    m.SetValue(0, 3, 100);
    EXPECT_TRUE(t.IsPoseMatrix(m));

    QelMatrix4 mirror;
    mirror.SetValue(2, 2, -1);
    EXPECT_FALSE(t.IsPoseMatrix(mirror));
    QelMatrix4 scaled;
    scaled.SetValue(1, 1, 2);
    EXPECT_FALSE(t.IsPoseMatrix(scaled));
    QelMatrix4 projective;
    projective.SetValue(3, 0, 0.1);
    EXPECT_FALSE(t.IsPoseMatrix(projective));
    QelMatrix4 nan;
    nan.SetValue(0, 3, NAN);
    EXPECT_FALSE(t.IsPoseMatrix(nan));
    QelMatrix4 nearly;
    nearly.SetValue(0, 0, 1 + 1e-7);  // float-precision noise is fine
    EXPECT_TRUE(t.IsPoseMatrix(nearly));
}

namespace {

double triangulatedArea(const std::vector<Point>& p, const std::vector<Triangle>& tris) {
    double area = 0;
    for (const Triangle& t : tris) {
        const Point &a = p[t.a], &b = p[t.b], &c = p[t.c];
        const double ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z;
        const double vx = c.x - a.x, vy = c.y - a.y, vz = c.z - a.z;
        const double cx = uy * vz - uz * vy, cy = uz * vx - ux * vz, cz = ux * vy - uy * vx;
        area += 0.5 * std::sqrt(cx * cx + cy * cy + cz * cz);
    }
    return area;
}

long triangulate(const std::vector<Point>& p, std::vector<Triangle>& tris) {
    SimplePolygon polygon(p);
    const long status = polygon.initialize();
    if (status != 0) return status;
    EarClipping clipper(polygon);
    if (clipper.initialize() != 0) return -1;
    return clipper.getTriangles(tris) ? 0 : -2;
}

}  // namespace

TEST(EarClipping, ConcavePolygonInATiltedPlane) {
    // An L shape of area 3, tilted out of every axis plane.
    const double l[6][2] = {{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}};
    std::vector<Point> p;
    for (const auto& q : l)
        p.push_back({q[0], q[1] * 0.6, q[1] * 0.8 + 5});
    std::vector<Triangle> tris;
    ASSERT_EQ(triangulate(p, tris), 0);
    EXPECT_EQ(tris.size(), 4u);
    EXPECT_NEAR(triangulatedArea(p, tris), 3.0, 1e-9);

    // The same outline clockwise, closed by repeating the first vertex.
    std::vector<Point> reversed(p.rbegin(), p.rend());
    reversed.push_back(reversed.front());
    ASSERT_EQ(triangulate(reversed, tris), 0);
    EXPECT_NEAR(triangulatedArea(reversed, tris), 3.0, 1e-9);

    // A collinear vertex on an edge is fine.
    std::vector<Point> square = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}};
    ASSERT_EQ(triangulate(square, tris), 0);
    EXPECT_NEAR(triangulatedArea(square, tris), 4.0, 1e-9);
}

TEST(EarClipping, DegenerateAndSelfTouchingInputFails) {
    std::vector<Triangle> tris;
    EXPECT_NE(triangulate({{0, 0, 0}, {1, 1, 1}}, tris), 0);
    EXPECT_NE(triangulate({{0, 0, 0}, {1, 1, 1}, {2, 2, 2}}, tris), 0) << "collinear";
    EXPECT_NE(triangulate({{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 2, 0}}, tris), 0) << "bow tie";
    // Two squares touching at one corner.
    EXPECT_NE(triangulate({{0, 0, 0},
                           {1, 0, 0},
                           {1, 1, 0},
                           {2, 1, 0},
                           {2, 2, 0},
                           {1, 2, 0},
                           {1, 1, 0},
                           {0, 1, 0}},
                          tris),
              0);
    EXPECT_NE(triangulate({{0, 0, 0}, {1, 0, 0}, {NAN, 1, 0}}, tris), 0);
    EXPECT_NE(triangulate({{0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {0, 1, 0}}, tris), 0)
        << "repeated vertex";
    SimplePolygon never({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    EarClipping clipper(never);
    EXPECT_NE(clipper.initialize(), 0);
    EXPECT_FALSE(clipper.getTriangles(tris));
}

TEST(TrimeshFromLines, ClosedLoopsOnly) {
    osg::ref_ptr<osg::Vec3Array> v = new osg::Vec3Array;
    for (const auto& q :
         {osg::Vec3(0, 0, 0), osg::Vec3(1, 0, 0), osg::Vec3(1, 1, 0), osg::Vec3(0, 1, 0),
          osg::Vec3(5, 0, 0), osg::Vec3(6, 0, 0), osg::Vec3(6, 1, 0)})
        v->push_back(q);
    // A closed square (segments in scrambled order) and an open chain.
    const std::vector<unsigned> lines = {2, 3, 0, 1, 3, 0, 1, 2, 4, 5, 5, 6};
    QelTrimeshFromLines mesher(*v, lines);
    ASSERT_EQ(mesher.initialize(), 0);
    std::vector<unsigned> tris;
    ASSERT_TRUE(mesher.getTrimesh(tris));
    ASSERT_EQ(tris.size(), 6u);
    for (unsigned i : tris)
        EXPECT_LT(i, 4u);

    const std::vector<unsigned> open = {4, 5, 5, 6};
    QelTrimeshFromLines chain(*v, open);
    ASSERT_EQ(chain.initialize(), 0);
    EXPECT_FALSE(chain.getTrimesh(tris));

    const std::vector<unsigned> outOfRange = {0, 9};
    QelTrimeshFromLines bad(*v, outOfRange);
    EXPECT_NE(bad.initialize(), 0);
}
