// Every kind the factory builds, in both forms: it builds, its counts, the
// world-space extent after its pose, unit normals, and the angle rules of
// swept solids.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <osg/BoundingBox>
#include <set>
#include <tuple>

#include "Qel3DShape.h"
#include "RenderBins.h"
#include "Shape.h"
#include "ShapeAdapters.h"
#include "ShapeFactory.h"

namespace {

QelVector3d v(float x, float y, float z) {
    return QelVector3d(x, y, z);
}

osg::BoundingBox worldBox(const Shape& shape) {
    osg::BoundingBox box;
    const osg::Matrixd pose = shape.transform()->getMatrix();
    for (const osg::Vec3& p : *shape.vertices())
        box.expandBy(p * pose);
    return box;
}

struct Kind {
    const char* name;
    std::function<void(Qel3DShape&)> describe;
    osg::Vec3 min, max;  // the exact world extent
};

QelVector3dArray square() {
    QelVector3dArray corners(4);
    corners[0] = v(0, 0, 1);
    corners[1] = v(2, 0, 1);
    corners[2] = v(2, 3, 1);
    corners[3] = v(0, 3, 1);
    return corners;
}

Qel3DLineSet squareLines() {
    Qel3DLineSet set;
    set.SetSize(4, 4);
    const float corners[] = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};
    std::copy(corners, corners + 12, set.VertexData());
    const int lines[] = {0, 1, 1, 2, 2, 3, 3, 0};
    std::copy(lines, lines + 8, set.LineData());
    return set;
}

const Kind kKinds[] = {
    {"point", [](Qel3DShape& s) { s.Set3DPoint(v(1, 2, 3)); }, {0, 1, 2}, {2, 3, 4}},
    {"line",
     [](Qel3DShape& s) { s.Set3DLine(v(0, 0, 0), v(1, 2, 3), QEL_LINE_SEGMENT); },
     {0, 0, 0},
     {1, 2, 3}},
    {"circle",
     [](Qel3DShape& s) { s.Set3DCircle(v(0, 0, 0), v(0, 0, 1), 2); },
     {-2, -2, 0},
     {2, 2, 0}},
    {"plane", [](Qel3DShape& s) { s.Set3DPlane(v(0, 0, 5), v(0, 0, 1)); }, {-1, -1, 5}, {1, 1, 5}},
    {"box",
     [](Qel3DShape& s) { s.Set3DBox(v(0, 0, 0), v(0, 0, 0), v(2, 4, 6)); },
     {-1, -2, -3},
     {1, 2, 3}},
    {"box turned about x",
     [](Qel3DShape& s) { s.Set3DBox(v(5, 0, 0), v(90, 0, 0), v(2, 4, 6)); },
     {4, -3, -2},
     {6, 3, 2}},
    {"sphere", [](Qel3DShape& s) { s.Set3DSphere(v(0, 0, 0), 2); }, {-2, -2, -2}, {2, 2, 2}},
    {"cylinder",
     [](Qel3DShape& s) { s.Set3DCylinder(v(0, 0, 0), v(1, 0, 0), 1, 4); },
     {-2, -1, -1},
     {2, 1, 1}},
    {"triangle",
     [](Qel3DShape& s) { s.Set3DTriangle(v(0, 0, 0), v(1, 0, 0), v(0, 1, 0)); },
     {0, 0, 0},
     {1, 1, 0}},
    {"polygon", [](Qel3DShape& s) { s.Set3DPolygon(square()); }, {0, 0, 1}, {2, 3, 1}},
    {"ellipse",
     [](Qel3DShape& s) { s.Set3DEllipse(v(0, 0, 0), v(0, 0, 0), 3, 1); },
     {-3, -1, 0},
     {3, 1, 0}},
    {"ellipsoid",
     [](Qel3DShape& s) { s.Set3DEllipsoid(v(0, 0, 0), v(0, 0, 0), v(1, 2, 3)); },
     {-1, -2, -3},
     {1, 2, 3}},
    {"rectangle",
     [](Qel3DShape& s) { s.Set3DRect(v(0, 0, 0), v(0, 0, 0), 4, 2); },
     {-2, -1, 0},
     {2, 1, 0}},
    {"torus",
     [](Qel3DShape& s) { s.Set3DTorus(v(0, 0, 0), v(0, 0, 0), 1, 3, 0, 360, QEL_TORUS_FULL); },
     {-3, -3, -1},
     {3, 3, 1}},
    {"tube",
     [](Qel3DShape& s) { s.Set3DTube(v(0, 0, 0), v(0, 0, 1), 1, 2, 2, 0, 360); },
     {-2, -2, -1},
     {2, 2, 1}},
    {"arc",
     [](Qel3DShape& s) { s.Set3DArc(v(0, 0, 0), v(0, 0, 0), 2, 0, 90); },
     {0, 0, 0},
     {2, 2, 0}},
    {"line set", [](Qel3DShape& s) { s.Set3DAnyShape(squareLines()); }, {0, 0, 0}, {1, 1, 0}},
    {"cone",
     [](Qel3DShape& s) { s.Set3DCone(v(0, 0, 0), v(0, 0, 1), 1, 2, 0, 360); },
     {-1, -1, -1},
     {1, 1, 1}},
    {"elliptic cylinder",
     [](Qel3DShape& s) { s.Set3DEllipticCylinder(v(0, 0, 0), v(0, 0, 0), 2, 1, 4); },
     {-2, -1, -2},
     {2, 1, 2}},
};

std::unique_ptr<Shape> build(const std::function<void(Qel3DShape&)>& describe) {
    Qel3DShape description;
    describe(description);
    return createShape(description, 7);
}

}  // namespace

TEST(ShapeKinds, EveryKindBuildsInBothFormsToItsExactExtent) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        std::unique_ptr<Shape> shape = build(kind.describe);
        ASSERT_TRUE(shape);
        EXPECT_EQ(shape->getId(), 7u);
        EXPECT_EQ(shape->mode(), RenderMode::Faces);
        for (RenderMode mode : {RenderMode::Faces, RenderMode::Wireframe}) {
            shape->setShapeMode(mode);
            ASSERT_GT(shape->vertices()->size(), 0u) << "mode " << static_cast<int>(mode);
            const osg::BoundingBox box = worldBox(*shape);
            for (int a = 0; a < 3; ++a) {
                EXPECT_NEAR(box._min[a], kind.min[a], 1e-4)
                    << "mode " << static_cast<int>(mode) << " axis " << a;
                EXPECT_NEAR(box._max[a], kind.max[a], 1e-4)
                    << "mode " << static_cast<int>(mode) << " axis " << a;
            }
            ASSERT_EQ(shape->normals()->size(), shape->vertices()->size());
            for (const osg::Vec3& n : *shape->normals())
                ASSERT_NEAR(n.length(), 1.0f, 1e-4);
            for (unsigned int i = 0; i < shape->geometry()->getNumPrimitiveSets(); ++i) {
                const GLenum m = shape->geometry()->getPrimitiveSet(i)->getMode();
                EXPECT_TRUE(mode == RenderMode::Wireframe ? m == GL_LINES
                                                          : (m == GL_LINES || m == GL_TRIANGLES));
            }
        }
    }
}

TEST(ShapeKinds, CountsTheDesignFixes) {
    auto sphere = build([](Qel3DShape& s) { s.Set3DSphere(v(0, 0, 0), 1); });
    ASSERT_EQ(sphere->geometry()->getNumPrimitiveSets(), 1u);
    EXPECT_EQ(sphere->geometry()->getPrimitiveSet(0)->getMode(), GLenum(GL_TRIANGLES));
    EXPECT_EQ(sphere->geometry()->getPrimitiveSet(0)->getNumIndices(), 4800u);
    auto box = build([](Qel3DShape& s) { s.Set3DBox(v(0, 0, 0), v(0, 0, 0), v(1, 1, 1)); });
    ASSERT_EQ(box->geometry()->getNumPrimitiveSets(), 2u);
    EXPECT_EQ(box->vertices()->size(), 36u);
    EXPECT_EQ(box->geometry()->getPrimitiveSet(1)->getMode(), GLenum(GL_LINES));
    EXPECT_EQ(box->geometry()->getPrimitiveSet(1)->getNumIndices(), 24u);
    // The 24 indices are 12 distinct edges.
    const osg::PrimitiveSet* edges = box->geometry()->getPrimitiveSet(1);
    std::set<std::pair<std::tuple<float, float, float>, std::tuple<float, float, float>>> distinct;
    for (unsigned int i = 0; i < 24; i += 2) {
        osg::Vec3 a = (*box->vertices())[edges->index(i)],
                  b = (*box->vertices())[edges->index(i + 1)];
        if (b < a) std::swap(a, b);
        distinct.insert({{a.x(), a.y(), a.z()}, {b.x(), b.y(), b.z()}});
    }
    EXPECT_EQ(distinct.size(), 12u);
}

TEST(ShapeKinds, SweepsReduceByWholeTurnsAndEmptyOnes) {
    auto cone = [](float sweep) {
        return build([=](Qel3DShape& s) { s.Set3DCone(v(0, 0, 0), v(0, 0, 1), 1, 2, 0, sweep); });
    };
    const osg::BoundingBox full = worldBox(*cone(360)), twice = worldBox(*cone(720));
    EXPECT_NEAR(twice._min.x(), -1, 1e-4);
    EXPECT_NEAR(twice._min.y(), -1, 1e-4);
    EXPECT_EQ(cone(720)->vertices()->size(), cone(360)->vertices()->size());
    EXPECT_NEAR(full._min.y(), -1, 1e-4);
    // 450 degrees: a quarter from the start angle.
    const osg::BoundingBox quarter = worldBox(*cone(450));
    EXPECT_NEAR(quarter._min.x(), 0, 1e-4);
    EXPECT_NEAR(quarter._min.y(), 0, 1e-4);
    EXPECT_NEAR(quarter._max.x(), 1, 1e-4);
    EXPECT_NEAR(quarter._max.y(), 1, 1e-4);
    EXPECT_EQ(cone(0)->vertices()->size(), 0u);
    auto tube = [](float inner, float outer, float sweep) {
        return build(
            [=](Qel3DShape& s) { s.Set3DTube(v(0, 0, 0), v(0, 0, 1), inner, outer, 2, 0, sweep); });
    };
    EXPECT_EQ(tube(3, 2, 360)->vertices()->size(), 0u) << "inner above outer";
    EXPECT_EQ(tube(1, 2, 0)->vertices()->size(), 0u) << "no sweep";
    EXPECT_GT(tube(1, 2, 90)->vertices()->size(), 0u);
}

TEST(ShapeKinds, RefusedDescriptionsAndTheModeAsymmetry) {
    EXPECT_FALSE(build([](Qel3DShape&) {})) << "no kind";
    EXPECT_FALSE(build([](Qel3DShape& s) { s.Set3DPoint(v(0, 0, 3.4028235e38f)); }));
    EXPECT_FALSE(build(
        [](Qel3DShape& s) { s.Set3DLine(v(0, 0, 0), v(0, 0, -3.4028235e38f), QEL_LINE_SEGMENT); }));
    EXPECT_FALSE(build([](Qel3DShape& s) { s.Set3DSphere(v(0, 0, 0), std::nanf("")); }));

    auto box = build([](Qel3DShape& s) { s.Set3DBox(v(0, 0, 0), v(0, 0, 0), v(1, 1, 1)); });
    box->setShapeMode(RenderMode::Wireframe);
    EXPECT_EQ(box->vertices()->size(), 24u);  // 12 edges
    box->setShapeMode(RenderMode::Points);    // no shape mode: emptied, and the mode kept
    EXPECT_EQ(box->vertices()->size(), 0u);
    EXPECT_EQ(box->mode(), RenderMode::Wireframe);
    // A new shape: opaque blue, blended with the destination's alpha, unlit.
    ASSERT_EQ(box->colors()->size(), 1u);
    EXPECT_EQ((*box->colors())[0], osg::Vec4(0, 0, 1, 1));
    const osg::StateSet* ss = box->geometry()->getStateSet();
    EXPECT_EQ(ss->getMode(GL_LIGHTING) & osg::StateAttribute::ON, 0u);
    EXPECT_NE(ss->getMode(GL_BLEND) & osg::StateAttribute::ON, 0u);
    // Depth-sorted, after the translucent data.
    EXPECT_EQ(ss->getBinNumber(), RenderBins::kShapes);
    EXPECT_EQ(ss->getBinName(), "DepthSortedBin");
}

TEST(ShapeKinds, PointSizeIsTheRadiusOfAPointAndInfiniteShapesFitTheScene) {
    auto point = build([](Qel3DShape& s) { s.Set3DPoint(v(0, 0, 0)); });
    point->setPointSize(5);
    EXPECT_NEAR(worldBox(*point)._max.x(), 5, 1e-4);
    point->setPointSize(0);
    EXPECT_NEAR(worldBox(*point)._max.x(), 5, 1e-4);

    auto line =
        build([](Qel3DShape& s) { s.Set3DLine(v(0, 0, 0), v(1, 0, 0), QEL_LINE_INFINITE); });
    line->fitToScene(osg::Vec3(-10, -1, -1), osg::Vec3(30, 1, 1), 20, osg::Vec3(10, 0, 0));
    EXPECT_NEAR(worldBox(*line)._min.x(), 10 - 30, 1e-3);
    EXPECT_NEAR(worldBox(*line)._max.x(), 10 + 30, 1e-3);
    auto plane = build([](Qel3DShape& s) { s.Set3DPlane(v(0, 0, 0), v(0, 0, 1)); });
    plane->fitToScene(osg::Vec3(-5, -5, 2), osg::Vec3(5, 5, 8), 10, osg::Vec3(0, 0, 5));
    EXPECT_NEAR(worldBox(*plane)._max.x(), 12, 1e-3);
    EXPECT_NEAR(worldBox(*plane)._max.z(), 0, 1e-4) << "the plane stays where it is";
    auto segment =
        build([](Qel3DShape& s) { s.Set3DLine(v(0, 0, 0), v(1, 0, 0), QEL_LINE_SEGMENT); });
    segment->fitToScene(osg::Vec3(-10, -1, -1), osg::Vec3(30, 1, 1), 20, osg::Vec3(10, 0, 0));
    EXPECT_NEAR(worldBox(*segment)._max.x(), 1, 1e-4) << "a segment keeps its length";
}

// The kinds no description reaches, built from their parameters.
TEST(ShapeKinds, BuildersReachedOnlyDirectly) {
    auto extentIs = [](const Shape& s, osg::Vec3 min, osg::Vec3 max) {
        const osg::BoundingBox box = worldBox(s);
        for (int a = 0; a < 3; ++a) {
            EXPECT_NEAR(box._min[a], min[a], 1e-4) << "axis " << a;
            EXPECT_NEAR(box._max[a], max[a], 1e-4) << "axis " << a;
        }
    };
    ShapePoint point(1, osg::Vec3(1, 2, 3));
    ASSERT_EQ(point.vertices()->size(), 1u);
    EXPECT_EQ(point.geometry()->getPrimitiveSet(0)->getMode(), GLenum(GL_POINTS));
    point.setPointSize(4);
    EXPECT_EQ(point.pointSize(), 4.0f);

    ShapeLineSegment segment(2, osg::Vec3(0, 0, 0), osg::Vec3(1, 2, 3));
    extentIs(segment, {0, 0, 0}, {1, 2, 3});

    std::array<osg::Vec3, 8> corners;
    for (int i = 0; i < 8; ++i)
        corners[size_t(i)] = osg::Vec3((i & 4) ? 2 : 0, (i & 2) ? 1 : 0, (i & 1) ? 3 : 0);
    ShapeHexahedron hexahedron(3, corners);
    extentIs(hexahedron, {0, 0, 0}, {2, 1, 3});
    hexahedron.setShapeMode(RenderMode::Wireframe);
    EXPECT_EQ(hexahedron.vertices()->size(), 24u);

    // Clamped: the curve starts and ends on its end control points.
    ShapeBSplineCurve bspline(4, std::vector<osg::Vec3>{{0, 0, 0}, {1, 2, 0}, {3, 2, 0}, {4, 0, 0}},
                              3);
    EXPECT_EQ(bspline.vertices()->front(), osg::Vec3(0, 0, 0));
    EXPECT_EQ(bspline.vertices()->back(), osg::Vec3(4, 0, 0));
    EXPECT_LT(worldBox(bspline)._max.y(), 2.0f) << "inside the control polygon";
    // A rational quadratic with weight sqrt(2)/2 is an exact quarter circle.
    ShapeNurbsCurve arc(
        5, std::vector<BSpline::Weighted>{{{1, 0, 0}, 1}, {{1, 1, 0}, 0.70710678f}, {{0, 1, 0}, 1}},
        2);
    for (const osg::Vec3& p : *arc.vertices())
        ASSERT_NEAR(p.length(), 1.0f, 1e-5);

    std::vector<osg::Vec3> grid;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            grid.emplace_back(float(i), float(j), 0);
    ShapeBSplineSurf patch(6, grid, 3, 3, 2);
    extentIs(patch, {0, 0, 0}, {2, 2, 0});
    std::vector<BSpline::Weighted> weighted;
    for (const osg::Vec3& p : grid)
        weighted.push_back({p, 1.0f});
    ShapeNurbsSurf same(7, weighted, 3, 3, 2);
    EXPECT_EQ(*same.vertices(), *patch.vertices());

    ShapeGaussSurf bump(8, osg::Vec3(0, 0, 0), osg::Vec3(0, 0, 0), 2, 1, 1, 3);
    EXPECT_NEAR(worldBox(bump)._max.z(), 2.0f, 1e-5);
    EXPECT_NEAR(worldBox(bump)._max.x(), 3.0f, 1e-5);
    ShapePolynomialSurf tilted(9, osg::Vec3(0, 0, 0), osg::Vec3(0, 0, 0),
                               std::vector<float>{1, 0, 1, 0}, 1, 2.0f);
    extentIs(tilted, {-2, -2, -1}, {2, 2, 3});
    for (Shape* s : std::initializer_list<Shape*>{&bump, &tilted, &patch})
        for (const osg::Vec3& n : *s->normals())
            ASSERT_NEAR(n.length(), 1.0f, 1e-4);
}

TEST(ShapeKinds, APolygonThatCannotBeFilledShowsItsOutline) {
    QelVector3dArray bowtie(4);
    bowtie[0] = v(0, 0, 0);
    bowtie[1] = v(2, 2, 0);
    bowtie[2] = v(2, 0, 0);
    bowtie[3] = v(0, 2, 0);
    auto shape = build([&](Qel3DShape& s) { s.Set3DPolygon(bowtie); });
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->vertices()->size(), 8u) << "four edges, no triangles";
    for (unsigned int i = 0; i < shape->geometry()->getNumPrimitiveSets(); ++i)
        EXPECT_EQ(shape->geometry()->getPrimitiveSet(i)->getMode(), GLenum(GL_LINES));
}
