// Builds every kind of data with the public writers and reads it back.
#include <Qel3DGraphics.h>

#include <cstdio>

#define CHECK(cond)                                            \
    do {                                                       \
        if (!(cond)) {                                         \
            std::fprintf(stderr, "check failed: %s\n", #cond); \
            return 1;                                          \
        }                                                      \
    } while (0)

int main() {
    QelVector3dArray points(2);
    points[0] = QelVector3d(1, 2, 3);
    QelPointCloud cloud;
    cloud.SetPoints(points);
    QelColorArray colors;
    CHECK(colors.Create(2, 3));
    colors.Data()[3] = 200;
    CHECK(cloud.SetColors(colors));
    CHECK(cloud.Length() == 2 && cloud.NumValidPoints() == 1);
    CHECK(cloud.DeepCopyColors()[1].r == 200);

    QelRangeImage range;
    CHECK(range.SetSize(4, 2, QEL_16U));
    const unsigned short row[] = {1, 2, 3, 4};
    CHECK(range.SetValue(row, 4, 1.0, 0.0, 0, 1));
    range.SetInfo(0.1, 0.1, 0.01, 0, 0, 0);
    CHECK(reinterpret_cast<unsigned short*>(range.Data())[5] == 2);
    double maxZ = 0, minZ = 0;
    CHECK(QELMV::Qel3DImageMathematics().RangeImageMaxMin(range, QelROI(), nullptr, nullptr, &maxZ,
                                                          &minZ) == 0);
    CHECK(maxZ > 0.0399 && maxZ < 0.0401);

    QelTriangleMesh mesh;
    QelVector3dArray vertices(3);
    vertices[0] = QelVector3d(0, 0, 0);
    vertices[1] = QelVector3d(1, 0, 0);
    vertices[2] = QelVector3d(0, 1, 0);
    mesh.SetVertices(vertices);
    Qel3DIntArray triangles;
    triangles.SetSize(3);
    triangles[1] = 1;
    triangles[2] = 2;
    CHECK(mesh.SetTriangles(triangles));
    CHECK(mesh.NumValidTriangles() == 1);

    const unsigned char pixels[] = {1, 2, 3, 4, 5, 6};
    QelImage image;
    CHECK(image.CreateImage(pixels, 2, 1, 6, 3, QEL_IMAGE_8U));
    CHECK(image.ImageData()[4] == 5);

    Qel3DShape shape;
    shape.Set3DSphere(QelVector3d(0, 0, 1), 2.5f);
    QelVector3d centre;
    float radius = 0;
    CHECK(shape.ShapeType3D() == QEL_3D_SPHERE && shape.Get3DSphere(&centre, &radius));
    CHECK(radius == 2.5f);

    Qel3DPlane plane(QelVector3d(0, 0, 5), QelVector3d(0, 0, 1));
    CHECK(plane.IsValid() && plane.Point().z == 5);

    QelColor colour;
    CHECK(QELMV::QelLUTSetting().GetColor(0.0, 5, &colour) == 0 && colour.r == 255);
    // The viewer's exported functions link from the installed package.
    CHECK(QELMV::QelDestory3DWnd(12345) == 11504001);
    CHECK(QELMV::QelSetPerspective(12345, QELMV::QEL_3D_VIEW_TOP) == 11504001);
    std::puts("consumer ok");
    return 0;
}
