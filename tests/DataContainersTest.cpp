// Value semantics and writers of the data containers, as a host uses them.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>

#include "Qel3DData.h"

TEST(Vector3d, DefaultIsInvalidAndNonFiniteIsInvalid) {
    EXPECT_FALSE(QelVector3d().IsValid());
    EXPECT_TRUE(QelVector3d(1, 2, 3).IsValid());
    EXPECT_FALSE(QelVector3d(NAN, 0, 0).IsValid());
    EXPECT_FALSE(QelVector3d(0, INFINITY, 0).IsValid());
    EXPECT_FALSE(QelVector3d(0, 0, FLT_MAX).IsValid());
    EXPECT_TRUE(QelVector3d(0, 0, -FLT_MAX).IsValid());
    EXPECT_FLOAT_EQ(QelVector3d(3, 4, 12).Norm(), 13.0f);
}

TEST(Vector3dArray, DataIsPackedTriples) {
    QelVector3dArray a(2);
    a[1] = QelVector3d(4, 5, 6);
    EXPECT_EQ(a.Length(), 2);
    EXPECT_FLOAT_EQ(a.Data()[3], 4);
    EXPECT_FLOAT_EQ(a.Data()[5], 6);
    EXPECT_FALSE(a[0].IsValid());
    EXPECT_FALSE(a.SetSize(-1));
    EXPECT_EQ(a.Length(), 2);
}

TEST(PointCloud, CopiesAreDeepAndColoursMustMatch) {
    QelVector3dArray pts(3);
    pts[0] = QelVector3d(0, 0, 0);
    pts[1] = QelVector3d(1, 1, 1);
    QelPointCloud cloud;
    cloud.SetPoints(pts);
    EXPECT_EQ(cloud.Length(), 3);
    EXPECT_EQ(cloud.NumValidPoints(), 2);

    QelColorArray wrong;
    wrong.Create(2, 3);
    EXPECT_FALSE(cloud.SetColors(wrong));
    QelColorArray colors;
    ASSERT_TRUE(colors.Create(3, 4));
    colors.Data()[4 * 2 + 3] = 7;
    EXPECT_TRUE(cloud.SetColors(colors));
    EXPECT_TRUE(cloud.IsValidColor());

    QelPointCloud copy = cloud.DeepCopy();
    cloud[1].x = 99;
    cloud.SetColors(QelColorArray());
    EXPECT_FLOAT_EQ(copy[1].x, 1);
    EXPECT_EQ(copy.DeepCopyColors()[2].a, 7);
    EXPECT_TRUE(cloud.DeepCopyColors().IsEmpty());
}

TEST(ColorArray, ElementsExpandToRgba) {
    QelColorArray grey;
    ASSERT_TRUE(grey.Create(1, 1));
    grey.Data()[0] = 42;
    const QelColor g = grey[0];
    EXPECT_EQ(g.r, 42);
    EXPECT_EQ(g.b, 42);
    EXPECT_EQ(g.a, 255);
    QelColorArray bad;
    EXPECT_FALSE(bad.Create(4, 5));
    EXPECT_FALSE(bad.Create(-1, 3));
    EXPECT_FALSE(bad.Create(0x7fffffff, 4));
    EXPECT_TRUE(bad.IsEmpty());
}

TEST(RangeImage, SetSizeFillsEveryTypeWithItsMarker) {
    struct Case {
        int type;
        double marker;
    };
    const Case cases[] = {{QEL_8U, 0},        {QEL_8S, -128},           {QEL_16U, 0},
                          {QEL_16S, -32768},  {QEL_32S, -2147483648.0}, {QEL_32F, -FLT_MAX},
                          {QEL_64F, -DBL_MAX}};
    for (const Case& c : cases) {
        QelRangeImage img;
        ASSERT_TRUE(img.SetSize(3, 2, c.type));
        double last = 0;
        switch (c.type) {
            case QEL_8U:
                last = img.Data()[5];
                break;
            case QEL_8S:
                last = reinterpret_cast<signed char*>(img.Data())[5];
                break;
            case QEL_16U:
                last = reinterpret_cast<unsigned short*>(img.Data())[5];
                break;
            case QEL_16S:
                last = reinterpret_cast<short*>(img.Data())[5];
                break;
            case QEL_32S:
                last = reinterpret_cast<int*>(img.Data())[5];
                break;
            case QEL_32F:
                last = reinterpret_cast<float*>(img.Data())[5];
                break;
            default:
                last = reinterpret_cast<double*>(img.Data())[5];
                break;
        }
        EXPECT_EQ(last, c.marker) << "type " << c.type;
    }
    QelRangeImage img;
    EXPECT_FALSE(img.SetSize(70000, 70000, QEL_8U));
    EXPECT_FALSE(img.SetSize(2, 2, 7));
    EXPECT_EQ(img.Width(), 0);
}

TEST(RangeImage, SetValueScalesValidSamplesAndKeepsMarkers) {
    QelRangeImage img;
    ASSERT_TRUE(img.SetSize(4, 2, QEL_16U));
    const unsigned short raw[] = {10, 0, 30};
    ASSERT_TRUE(img.SetValue(raw, 3, 2.0, 1.0, 3, 0));  // runs over into row 1
    const auto* s = reinterpret_cast<const unsigned short*>(img.Data());
    EXPECT_EQ(s[3], 21);
    EXPECT_EQ(s[4], 0);
    EXPECT_EQ(s[5], 61);
    EXPECT_FALSE(img.SetValue(raw, 3, 1.0, 0.0, 2, 1));  // past the end
    EXPECT_FALSE(img.SetValue(nullptr, 1, 1.0, 0.0, 0, 0));
    EXPECT_EQ(s[6], 0);

    const unsigned short huge[] = {60000};
    ASSERT_TRUE(img.SetValue(huge, 1, 2.0, 0.0, 0, 0));
    EXPECT_EQ(s[0], 65535);  // clamped, not wrapped
}

TEST(RangeImage, ColoursAndParametersAreDeepCopied) {
    QelRangeImage img;
    ASSERT_TRUE(img.SetSize(2, 2, QEL_32F));
    EXPECT_FALSE(img.IsValidColor());
    ASSERT_TRUE(img.SetColorSize(2, 2, 3));
    const unsigned char rgb[] = {1, 2, 3, 4, 5, 6};
    EXPECT_FALSE(img.SetColorValue(rgb, 2, 4, 0, 0));
    ASSERT_TRUE(img.SetColorValue(rgb, 2, 3, 0, 1));
    EXPECT_TRUE(img.IsValidColor());
    QelVarArray params;
    params.Append(QelVar(1.5));
    img.SetInfo(params);
    img.SetInfo(0.1, 0.2, 0.3, 1, 2, 3);

    QelRangeImage copy = img.DeepCopy();
    img.ColorData()[6] = 99;
    img.SetInfo(QelVarArray());
    EXPECT_EQ(copy.ColorData()[6], 1);
    EXPECT_EQ(copy.DeepCopyParas().Length(), 1);
    EXPECT_DOUBLE_EQ(copy.DeepCopyParas()[0].D(), 1.5);
    EXPECT_DOUBLE_EQ(copy.ResolutionY(), 0.2);
    EXPECT_DOUBLE_EQ(copy.OffsetZ(), 3);
}

TEST(TriangleMesh, ValidTrianglesNeedDistinctInRangeValidVertices) {
    QelVector3dArray v(4);
    v[0] = QelVector3d(0, 0, 0);
    v[1] = QelVector3d(1, 0, 0);
    v[2] = QelVector3d(0, 1, 0);  // v[3] stays invalid
    QelTriangleMesh mesh;
    mesh.SetVertices(v);
    Qel3DIntArray idx;
    const int tri[] = {0, 1, 2, 0, 1, 3, 0, 0, 1, 0, 1, 9, -1, 1, 2};
    idx.SetSize(15);
    std::copy(tri, tri + 15, idx.Data());
    ASSERT_TRUE(mesh.SetTriangles(idx));
    EXPECT_EQ(mesh.NumTriangles(), 5);
    EXPECT_EQ(mesh.NumValidTriangles(), 1);
    EXPECT_EQ(mesh.NumValidVertices(), 3);
    idx.SetSize(4);
    EXPECT_FALSE(mesh.SetTriangles(idx));
    EXPECT_EQ(mesh.NumTriangles(), 5);
}

TEST(Image, CreateImageDropsRowPaddingAndRejectsBadInput) {
    const unsigned char px[] = {1, 2, 3, 0, 4, 5, 6, 0};  // 1 x 2, 3 channels, stride 4
    QelImage img;
    ASSERT_TRUE(img.CreateImage(px, 1, 2, 4, 3, QEL_IMAGE_8U));
    EXPECT_EQ(img.ImageData()[3], 4);
    EXPECT_FALSE(img.CreateImage(px, 2, 2, 4, 3, QEL_IMAGE_8U));  // stride too short
    EXPECT_FALSE(img.CreateImage(nullptr, 1, 1, 3, 3, QEL_IMAGE_8U));
    EXPECT_FALSE(img.CreateImage(px, 1, 1, 4, 3, static_cast<QelImageType>(9)));
    EXPECT_EQ(img.Height(), 2);
}

TEST(Var, ReadersConvertBetweenNumbersOnly) {
    EXPECT_EQ(QelVar().ValType(), -1);
    EXPECT_EQ(QelVar(3L).ValType(), 0);
    EXPECT_EQ(QelVar(2.5).ValType(), 1);
    EXPECT_EQ(QelVar("a").ValType(), 2);
    EXPECT_EQ(QelVar(L"b").ValType(), 3);
    EXPECT_EQ(QelVar(2.9).L(), 2);
    EXPECT_EQ(QelVar(1e300).L(), std::numeric_limits<long>::max());
    EXPECT_EQ(QelVar(NAN).L(), 0);
    EXPECT_DOUBLE_EQ(QelVar(7L).D(), 7.0);
    EXPECT_STREQ(QelVar(7L).S(), "");
    EXPECT_STREQ(QelVar(L"wide").WS(), L"wide");
    EXPECT_EQ(QelVar(static_cast<const char*>(nullptr)).ValType(), -1);
}

TEST(MatrixAndPlane, DefaultsAndValidity) {
    QelMatrix4 m;
    EXPECT_EQ(m.Value(2, 2), 1.0);
    EXPECT_TRUE(m.SetValue(0, 3, 5.0));
    EXPECT_FALSE(m.SetValue(4, 0, 1.0));
    EXPECT_EQ(m.Transposed().Value(3, 0), 5.0);
    EXPECT_FALSE(Qel3DPlane().IsValid());
    EXPECT_TRUE(Qel3DPlane(QelVector3d(0, 0, 5), QelVector3d(0, 0, 1)).IsValid());
    EXPECT_FALSE(Qel3DPlane(QelVector3d(0, 0, 5), QelVector3d(0, 0, 0)).IsValid());
    EXPECT_FALSE(Qel3DPlane(QelVector3d(NAN, 0, 5), QelVector3d(0, 0, 1)).IsValid());
}

TEST(Shape, SettersMakeTheKindAndGettersCheckIt) {
    Qel3DShape shape;
    EXPECT_EQ(shape.ShapeType3D(), 0);
    shape.Set3DCone(QelVector3d(1, 2, 3), QelVector3d(0, 90, 0), 5, 1, 10, 360);
    EXPECT_EQ(shape.ShapeType3D(), QEL_3D_CONE);
    QelVector3d c, a;
    float r1 = 0, r2 = 0, h = 0, sweep = 0;
    ASSERT_TRUE(shape.Get3DCone(&c, &a, &r1, &r2, &h, &sweep));
    EXPECT_FLOAT_EQ(c.z, 3);
    EXPECT_FLOAT_EQ(a.y, 90);
    EXPECT_FLOAT_EQ(sweep, 360);
    float radius = 0;
    EXPECT_FALSE(shape.Get3DSphere(&c, &radius));
    EXPECT_FALSE(shape.Get3DCone(&c, nullptr, &r1, &r2, &h, &sweep));

    shape.Set3DPoint(QelVector3d(0, 0, FLT_MAX));
    QelVector3d p(1, 1, 1);
    EXPECT_FALSE(shape.Get3DPoint(&p));  // unset point: reported, still written
    EXPECT_EQ(p.z, FLT_MAX);

    Qel3DLineSet lines;
    lines.SetSize(3, 2);
    lines.LineData()[3] = 2;
    shape.Set3DAnyShape(lines);
    Qel3DLineSet back;
    ASSERT_TRUE(shape.Get3DAnyShape(&back));
    EXPECT_EQ(back.NumLine(), 2);
    EXPECT_EQ(back.LineData()[3], 2);

    shape.Set3DTorus(QelVector3d(0, 0, 0), QelVector3d(0, 0, 0), 1, 2, 0, 180, QEL_TORUS_PARTIAL);
    Qel3DTorusType type = QEL_TORUS_FULL;
    float f[4];
    ASSERT_TRUE(shape.Get3DTorus(&c, &a, &f[0], &f[1], &f[2], &f[3], &type));
    EXPECT_EQ(type, QEL_TORUS_PARTIAL);
}
