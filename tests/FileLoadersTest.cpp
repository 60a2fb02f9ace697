// The file loaders on real files written here, in every variant the formats
// allow, and on truncated or garbage input.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <fstream>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "Qel3DData.h"
#include "TempDir.h"

using QELMV::Qel3DFileOperation;

namespace {

template <typename T>
void put(std::string& s, T v, bool bigEndian = false) {
    char b[sizeof(T)];
    std::memcpy(b, &v, sizeof(T));
    if (bigEndian) std::reverse(b, b + sizeof(T));
    s.append(b, sizeof(T));
}

QelPointCloud loadCloud(const std::string& path, long* status, bool keepInvalid = true) {
    QelPointCloud cloud;
    QelVar p = widePath(path);
    *status = Qel3DFileOperation().Load(&cloud, p, true, keepInvalid);
    return cloud;
}

QelTriangleMesh loadMesh(const std::string& path, long* status, bool merge = false) {
    QelTriangleMesh mesh;
    QelVar p = widePath(path);
    *status = Qel3DFileOperation().Load(&mesh, p, true, merge);
    return mesh;
}

// Every prefix-truncation of a valid file must fail cleanly or succeed; the
// loader must never crash, and a failed load must leave the target alone.
template <typename Target>
void expectTruncationsSafe(const TempDir& dir, const std::string& name, const std::string& bytes) {
    for (std::size_t cut = 0; cut < bytes.size();
         cut += std::max<std::size_t>(1, bytes.size() / 60)) {
        const std::string path = dir.write(name, bytes.substr(0, cut));
        Target target;
        QelVector3dArray marker(1);
        marker[0] = QelVector3d(7, 7, 7);
        if constexpr (std::is_same<Target, QelPointCloud>::value)
            target.SetPoints(marker);
        else
            target.SetVertices(marker);
        QelVar p = widePath(path);
        const long status = Qel3DFileOperation().Load(&target, p, true, true);
        if (status != 0) {
            if constexpr (std::is_same<Target, QelPointCloud>::value) {
                ASSERT_EQ(target.Length(), 1) << name << " cut at " << cut;
            } else {
                ASSERT_EQ(target.NumVertices(), 1) << name << " cut at " << cut;
            }
        }
    }
}

const char kPlyHeaderTail[] =
    "element vertex 4\nproperty float x\nproperty float y\nproperty float z\n"
    "property uchar red\nproperty uchar green\nproperty uchar blue\n"
    "element face 1\nproperty list uchar int vertex_indices\nend_header\n";

std::string binaryPly(bool bigEndian) {
    std::string s = std::string("ply\nformat ") +
                    (bigEndian ? "binary_big_endian" : "binary_little_endian") + " 1.0\n" +
                    kPlyHeaderTail;
    for (int i = 0; i < 4; ++i) {
        put<float>(s, float(i), bigEndian);
        put<float>(s, float(i % 2), bigEndian);
        put<float>(s, 0.5f * i, bigEndian);
        s += char(10 * i);
        s += char(20);
        s += char(30);
    }
    s += char(4);
    for (int i : {0, 1, 2, 3})
        put<int>(s, i, bigEndian);
    return s;
}

}  // namespace

TEST(PlyLoader, AsciiAndBinaryGiveTheSameMesh) {
    TempDir dir;
    const std::string ascii = std::string("ply\nformat ascii 1.0\ncomment made by a test\n") +
                              kPlyHeaderTail +
                              "0 0 0 0 20 30\n1 1 0.5 10 20 30\n2 0 1 20 20 30\n3 1 1.5 30 20 30\n"
                              "4 0 1 2 3\n";
    for (const std::string& bytes : {ascii, binaryPly(false), binaryPly(true)}) {
        long status = -1;
        const QelTriangleMesh mesh = loadMesh(dir.write("m.ply", bytes), &status);
        ASSERT_EQ(status, 0);
        ASSERT_EQ(mesh.NumVertices(), 4);
        EXPECT_EQ(mesh.NumTriangles(), 2);  // the quad as a fan
        EXPECT_EQ(mesh.TriangleData()[3], 0);
        EXPECT_EQ(mesh.TriangleData()[5], 3);
        EXPECT_FLOAT_EQ(mesh.VertexData()[3 * 3 + 2], 1.5f);
        ASSERT_TRUE(mesh.IsValidVertexColor());
        EXPECT_EQ(mesh.DeepCopyVertexColor()[3].r, 30);
    }
    long status = -1;
    const QelPointCloud cloud = loadCloud(dir.write("c.ply", binaryPly(false)), &status);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(cloud.Length(), 4);
    EXPECT_TRUE(cloud.IsValidColor());
}

TEST(PlyLoader, RejectsLiesAndTruncation) {
    TempDir dir;
    long status = 0;
    std::string huge = binaryPly(false);
    huge.replace(huge.find("vertex 4"), 8, "vertex 400000000");
    loadMesh(dir.write("huge.ply", huge), &status);
    EXPECT_NE(status, 0);

    std::string badIndex = binaryPly(false);
    badIndex[badIndex.size() - 4] = 9;  // last face index names vertex 9
    loadMesh(dir.write("idx.ply", badIndex), &status);
    EXPECT_NE(status, 0);

    loadMesh(dir.write("nohead.ply", "ply\nformat ascii 1.0\nelement vertex 1\n"), &status);
    EXPECT_NE(status, 0);
    expectTruncationsSafe<QelTriangleMesh>(dir, "t.ply", binaryPly(true));
}

TEST(StlLoader, AsciiAndBinaryWithOptionalMerging) {
    TempDir dir;
    const std::string ascii =
        "solid part\n"
        " facet normal 0 0 1\n  outer loop\n   vertex 0 0 0\n   vertex 1 0 0\n   vertex 0 1 0\n"
        "  endloop\n endfacet\n"
        " facet normal 0 0 1\n  outer loop\n   vertex 1 0 0\n   vertex 1 1 0\n   vertex 0 1 0\n"
        "  endloop\n endfacet\nendsolid part\n";
    std::string binary(80, 'x');
    binary.replace(0, 5, "solid");  // binary files may start with "solid" as well
    put<std::uint32_t>(binary, 2);
    const float tri[2][9] = {{0, 0, 0, 1, 0, 0, 0, 1, 0}, {1, 0, 0, 1, 1, 0, 0, 1, 0}};
    for (const auto& t : tri) {
        for (int k = 0; k < 3; ++k)
            put<float>(binary, 0.0f);
        for (float v : t)
            put<float>(binary, v);
        put<std::uint16_t>(binary, 0);
    }
    for (const std::string& bytes : {ascii, binary}) {
        long status = -1;
        QelTriangleMesh soup = loadMesh(dir.write("s.stl", bytes), &status, false);
        ASSERT_EQ(status, 0);
        EXPECT_EQ(soup.NumVertices(), 6);
        EXPECT_EQ(soup.NumValidTriangles(), 2);
        QelTriangleMesh merged = loadMesh(dir.write("s.stl", bytes), &status, true);
        ASSERT_EQ(status, 0);
        EXPECT_EQ(merged.NumVertices(), 4);
        EXPECT_EQ(merged.NumValidTriangles(), 2);
    }
    long status = 0;
    loadMesh(dir.write("bad.stl", "solid x\n facet normal 0 0 1\n outer loop\n vertex 0 0 0\n"),
             &status);
    EXPECT_NE(status, 0);
    expectTruncationsSafe<QelTriangleMesh>(dir, "t.stl", binary);
}

TEST(StlLoader, BinaryIsToldBySizeWhateverTheHeaderSays) {
    TempDir dir;
    // What CAD exporters write: a binary file whose header reads like ASCII.
    std::string binary = "solid exported by a CAD program";
    binary.resize(80, ' ');
    put<std::uint32_t>(binary, 1);
    for (float v : {0.f, 0.f, 1.f, 0.f, 0.f, 0.f, 2.f, 0.f, 0.f, 0.f, 3.f, 0.f})
        put<float>(binary, v);
    put<std::uint16_t>(binary, 0);
    long status = -1;
    QelTriangleMesh mesh = loadMesh(dir.write("cad.stl", binary), &status);
    ASSERT_EQ(status, 0);
    ASSERT_EQ(mesh.NumTriangles(), 1);
    EXPECT_FLOAT_EQ(mesh.VertexData()[3], 2.0f);

    // Size does not match the count: ASCII first, binary when ASCII has no facet.
    loadMesh(dir.write("trailing.stl", binary + "extra bytes"), &status);
    EXPECT_EQ(status, 0);
    loadMesh(dir.write("empty.stl", "solid nothing\nendsolid nothing\n"), &status);
    EXPECT_EQ(status, QELMV::QEL_DATA_EMPTY);
}

TEST(PlyLoader, TriangleStripsRestartFlipAndDropDegenerates) {
    TempDir dir;
    // Strip 0 1 2 3 4, restart, strip 5 6 7 7 (its last triangle degenerate).
    const std::string ply =
        "ply\nformat ascii 1.0\nelement vertex 8\nproperty float x\nproperty float y\n"
        "property float z\nelement tristrips 1\nproperty list int int vertex_indices\n"
        "end_header\n0 0 0\n0 1 0\n1 0 0\n1 1 0\n2 0 0\n5 0 0\n5 1 0\n6 0 0\n"
        "10 0 1 2 3 4 -1 5 6 7 7\n";
    long status = -1;
    QelTriangleMesh mesh = loadMesh(dir.write("strip.ply", ply), &status);
    ASSERT_EQ(status, 0);
    ASSERT_EQ(mesh.NumTriangles(), 4);
    const std::vector<int> expected = {0, 1, 2, 2, 1, 3, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(std::vector<int>(mesh.TriangleData(), mesh.TriangleData() + 12), expected);
    // Every triangle keeps the winding of the first: normals all along -z.
    for (int t = 0; t < 4; ++t) {
        const float* v = mesh.VertexData();
        const int* i = mesh.TriangleData() + 3 * t;
        const float ax = v[3 * i[1]] - v[3 * i[0]], ay = v[3 * i[1] + 1] - v[3 * i[0] + 1];
        const float bx = v[3 * i[2]] - v[3 * i[0]], by = v[3 * i[2] + 1] - v[3 * i[0] + 1];
        EXPECT_LT(ax * by - ay * bx, 0.0f) << "triangle " << t;
    }
    // Indices outside the vertex list (other than the -1 restart) are refused.
    std::string bad = ply;
    bad.replace(bad.find("-1 5"), 2, "-2");
    loadMesh(dir.write("bad.ply", bad), &status);
    EXPECT_EQ(status, QELMV::QEL_DATA_FILE_MALFORMED);
    bad = ply;
    bad.replace(bad.find("7 7\n"), 3, "7 8");
    loadMesh(dir.write("bad.ply", bad), &status);
    EXPECT_EQ(status, QELMV::QEL_DATA_FILE_MALFORMED);
}

TEST(FileOperation, ContentNamesTheFormatWhenTheSuffixLies) {
    TempDir dir;
    const std::string pcd =
        "# .PCD v0.7\nVERSION .7\nFIELDS x y z\nSIZE 4 4 4\nTYPE F F F\nCOUNT 1 1 1\n"
        "WIDTH 3\nHEIGHT 1\nPOINTS 3\nDATA ascii\n0 0 0\n1 0 0\n0 1 0\n";
    long status = -1;
    EXPECT_EQ(loadCloud(dir.write("scan.ply", pcd), &status).Length(), 3);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(loadCloud(dir.write("scan.xyz", pcd), &status).Length(), 3);
    EXPECT_EQ(status, 0);
    // A PCD has no faces: as a mesh it is still refused.
    loadMesh(dir.write("scan.ply", pcd), &status);
    EXPECT_NE(status, 0);

    EXPECT_EQ(loadMesh(dir.write("part.stl", binaryPly(false)), &status).NumTriangles(), 2);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(loadMesh(dir.write("part.obj", "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n"), &status)
                  .NumTriangles(),
              1);
    EXPECT_EQ(status, 0);
}

TEST(ObjLoader, RelativeIndicesColoursAndPointClouds) {
    TempDir dir;
    const std::string obj =
        "# a square\nmtllib none.mtl\nv 0 0 0 1 0 0\nv 1 0 0 0 1 0\nv 1 1 0 0 0 1\n"
        "v 0 1 0 1 1 1\nvn 0 0 1\nf -4//1 -3//1 -2//1 -1//1\n";
    long status = -1;
    const QelTriangleMesh mesh = loadMesh(dir.write("a.obj", obj), &status);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(mesh.NumTriangles(), 2);
    EXPECT_EQ(mesh.TriangleData()[5], 3);
    EXPECT_EQ(mesh.DeepCopyVertexColor()[1].g, 255);

    const QelPointCloud cloud = loadCloud(dir.write("b.obj", obj), &status);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(cloud.Length(), 4);

    loadMesh(dir.write("c.obj", "v 0 0 0\nv 1 0 0\nf 1 2 3\n"), &status);
    EXPECT_NE(status, 0);
    loadMesh(dir.write("d.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 -4\n"), &status);
    EXPECT_NE(status, 0);
    loadMesh(dir.write("e.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\n"), &status);
    EXPECT_NE(status, 0) << "a mesh needs faces";
}

TEST(OffLoader, PlainAndColouredVariants) {
    TempDir dir;
    long status = -1;
    QelTriangleMesh mesh = loadMesh(
        dir.write("a.off", "OFF\n# comment\n4 1 0\n0 0 0\n1 0 0\n1 1 0\n0 1 0\n4 0 1 2 3\n"),
        &status);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(mesh.NumTriangles(), 2);
    EXPECT_FALSE(mesh.IsValidVertexColor());

    mesh = loadMesh(dir.write("b.off",
                              "COFF 3 1 0\n0 0 0 255 0 0 255\n1 0 0 0 1.0 0\n0 1 0 0 0 255\n"
                              "3 0 1 2\n"),
                    &status);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(mesh.DeepCopyVertexColor()[0].r, 255);
    EXPECT_EQ(mesh.DeepCopyVertexColor()[1].g, 255);

    loadMesh(dir.write("c.off", "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 3\n"), &status);
    EXPECT_NE(status, 0);
    loadMesh(dir.write("d.off", "OFF\n99999999 1 0\n0 0 0\n"), &status);
    EXPECT_NE(status, 0);
    loadMesh(dir.write("e.off", "4OFF\n"), &status);
    EXPECT_NE(status, 0);
}

namespace {

// LZF as literal runs only: valid for any decoder, enough to exercise ours.
std::string lzfLiterals(const std::string& raw) {
    std::string out;
    for (std::size_t i = 0; i < raw.size(); i += 32) {
        const std::size_t n = std::min<std::size_t>(32, raw.size() - i);
        out += char(n - 1);
        out += raw.substr(i, n);
    }
    return out;
}

const char kPcdHeader[] =
    "# .PCD v0.7\nVERSION 0.7\nFIELDS x y z rgb\nSIZE 4 4 4 4\nTYPE F F F U\nCOUNT 1 1 1 1\n"
    "WIDTH 3\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS 3\n";

}  // namespace

TEST(PcdLoader, AsciiBinaryAndCompressedAgree) {
    TempDir dir;
    const float xyz[3][3] = {{1, 2, 3}, {4, 5, 6}, {NAN, NAN, NAN}};
    const std::uint32_t rgb[3] = {0xff0000, 0x00ff00, 0x0000ff};
    std::string ascii =
        std::string(kPcdHeader) + "DATA ascii\n1 2 3 16711680\n4 5 6 65280\nnan nan nan 255\n";
    std::string binary = std::string(kPcdHeader) + "DATA binary\n";
    std::string fieldMajor;
    for (int i = 0; i < 3; ++i) {
        for (float v : xyz[i])
            put<float>(binary, v);
        put<std::uint32_t>(binary, rgb[i]);
    }
    for (int f = 0; f < 4; ++f)
        for (int i = 0; i < 3; ++i)
            f < 3 ? put<float>(fieldMajor, xyz[i][f]) : put<std::uint32_t>(fieldMajor, rgb[i]);
    std::string compressed = std::string(kPcdHeader) + "DATA binary_compressed\n";
    const std::string packed = lzfLiterals(fieldMajor);
    put<std::uint32_t>(compressed, static_cast<std::uint32_t>(packed.size()));
    put<std::uint32_t>(compressed, static_cast<std::uint32_t>(fieldMajor.size()));
    compressed += packed;

    for (const std::string& bytes : {ascii, binary, compressed}) {
        long status = -1;
        QelPointCloud cloud = loadCloud(dir.write("p.pcd", bytes), &status);
        ASSERT_EQ(status, 0);
        ASSERT_EQ(cloud.Length(), 3);
        EXPECT_FLOAT_EQ(cloud[1].y, 5);
        EXPECT_FALSE(cloud[2].IsValid());
        EXPECT_EQ(cloud.DeepCopyColors()[0].r, 255);
        EXPECT_EQ(cloud.DeepCopyColors()[1].g, 255);
        cloud = loadCloud(dir.write("p.pcd", bytes), &status, false);
        EXPECT_EQ(cloud.Length(), 2) << "invalid points dropped on request";
    }

    // A back reference reaching before the start of the output is corrupt.
    std::string corrupt = std::string(kPcdHeader) + "DATA binary_compressed\n";
    put<std::uint32_t>(corrupt, 3);
    put<std::uint32_t>(corrupt, 48);
    corrupt += std::string("\xe0\x05\x00", 3);
    long status = 0;
    loadCloud(dir.write("bad.pcd", corrupt), &status);
    EXPECT_NE(status, 0);
    expectTruncationsSafe<QelPointCloud>(dir, "t.pcd", compressed);
    expectTruncationsSafe<QelPointCloud>(dir, "u.pcd", binary);
}

TEST(XyzLoader, SeparatorsHeadersAndExtraColumns) {
    TempDir dir;
    long status = -1;
    QelPointCloud cloud =
        loadCloud(dir.write("a.txt", "x,y,z,r,g,b\n1,2,3,255,0,0\n4;5;6;0;128;0\n"), &status);
    ASSERT_EQ(status, 0);
    ASSERT_EQ(cloud.Length(), 2);
    EXPECT_EQ(cloud.DeepCopyColors()[1].g, 128);

    cloud = loadCloud(dir.write("b.xyzn", "1 2 3 0 0 1\n4 5 6 0 1 0\n"), &status);
    ASSERT_EQ(status, 0);
    EXPECT_TRUE(cloud.DeepCopyColors().IsEmpty()) << "normals are not colours";

    cloud = loadCloud(dir.write("c.xyzrgb", "1 2 3 0.5 0 1\n"), &status);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(cloud.DeepCopyColors()[0].r, 128);

    cloud = loadCloud(dir.write("d.asc", "# scan\n1 2 3 0.1 0.2 0.97\n4 5 nan\n"), &status);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(cloud.Length(), 2);
    EXPECT_FALSE(cloud[1].IsValid());
    EXPECT_TRUE(cloud.DeepCopyColors().IsEmpty());

    loadCloud(dir.write("e.xyz", "1 2 3\n4 5\n"), &status);
    EXPECT_NE(status, 0);
    loadCloud(dir.write("f.xyz", ""), &status);
    EXPECT_NE(status, 0);
}

TEST(RangeImageLoader, ImageDepthsAreKept) {
    TempDir dir;
    cv::Mat u16(3, 4, CV_16U, cv::Scalar(0));
    u16.at<std::uint16_t>(1, 2) = 1234;
    cv::imwrite(dir.file("a.png"), u16);
    cv::Mat f32(2, 2, CV_32F, cv::Scalar(1.5f));
    f32.at<float>(0, 1) = NAN;
    cv::imwrite(dir.file("b.tif"), f32);
    cv::Mat bgr(2, 2, CV_8UC3, cv::Scalar(10, 20, 30));
    cv::imwrite(dir.file("c.bmp"), bgr);

    QelRangeImage img;
    QelVar a = widePath(dir.file("a.png"));
    ASSERT_EQ(Qel3DFileOperation().Load(&img, a, true), 0);
    EXPECT_EQ(img.DataType(), QEL_16U);
    EXPECT_EQ(img.Width(), 4);
    EXPECT_EQ(reinterpret_cast<std::uint16_t*>(img.Data())[1 * 4 + 2], 1234);

    QelVar b = widePath(dir.file("b.tif"));
    ASSERT_EQ(Qel3DFileOperation().Load(&img, b, 0.5, 0.25, 2.0), 0);
    EXPECT_EQ(img.DataType(), QEL_32F);
    EXPECT_EQ(reinterpret_cast<float*>(img.Data())[1], -FLT_MAX) << "NaN becomes the marker";
    EXPECT_DOUBLE_EQ(img.ResolutionY(), 0.25);

    QelVar c = widePath(dir.file("c.bmp"));
    ASSERT_EQ(Qel3DFileOperation().Load(&img, c, true), 0);
    EXPECT_EQ(img.DataType(), QEL_8U);
    EXPECT_EQ(img.Data()[0], 22);  // luminance of (R 30, G 20, B 10)
    ASSERT_TRUE(img.IsValidColor());
    EXPECT_EQ(img.ColorData()[0], 30);

    const std::string png = dir.file("a.png");
    ASSERT_TRUE(img.Load(std::wstring(png.begin(), png.end()).c_str(), 0.01, 100));
    EXPECT_DOUBLE_EQ(img.ResolutionZ(), 0.01);
    EXPECT_DOUBLE_EQ(img.OffsetZ(), 100);
}

TEST(RangeImageLoader, CsvRowsAndFailuresLeaveTargetAlone) {
    TempDir dir;
    QelRangeImage img;
    QelVar csv = widePath(dir.write("h.csv", "1.5,2,3,\n4,,6\n\n7;8;9\n"));
    ASSERT_EQ(Qel3DFileOperation().Load(&img, csv, true), 0);
    ASSERT_EQ(img.Width(), 3);
    ASSERT_EQ(img.Height(), 3);
    EXPECT_FLOAT_EQ(reinterpret_cast<float*>(img.Data())[0], 1.5f);
    EXPECT_EQ(reinterpret_cast<float*>(img.Data())[4], -FLT_MAX);

    for (const char* bad : {"1,2\n3\n", "1,x,3\n", ""}) {
        QelVar p = widePath(dir.write("bad.csv", bad));
        EXPECT_NE(Qel3DFileOperation().Load(&img, p, true), 0) << bad;
        EXPECT_EQ(img.Width(), 3);
    }
    QelVar garbage = widePath(dir.write("g.png", std::string("\x89PNG\r\n\x1a\n garbage", 17)));
    EXPECT_NE(Qel3DFileOperation().Load(&img, garbage, true), 0);
    EXPECT_EQ(img.Height(), 3);

    // The three-resolution form takes only finite, positive resolutions.
    QelVar resolved = widePath(dir.write("r.csv", "1,2\n3,4\n"));
    const double bad[] = {std::nan(""), 0.0, -1.0, INFINITY};
    for (double r : bad) {
        EXPECT_EQ(Qel3DFileOperation().Load(&img, resolved, r, 1.0, 1.0),
                  QELMV::QEL_DATA_INVALID_ARGUMENT);
        EXPECT_EQ(Qel3DFileOperation().Load(&img, resolved, 1.0, 1.0, r),
                  QELMV::QEL_DATA_INVALID_ARGUMENT);
    }
    EXPECT_EQ(img.Height(), 3);
    ASSERT_EQ(Qel3DFileOperation().Load(&img, resolved, 0.5, 0.25, 2.0), 0);
    EXPECT_EQ(img.ResolutionZ(), 2.0);
}

TEST(FileOperation, PipesAndObviouslyWrongFilesAreRefusedWithoutReadingThem) {
    TempDir dir;
    // A named pipe nobody writes to: opening it for reading would block.
    for (const char* name : {"pipe.xyz", "pipe.stl", "pipe.png"}) {
        const std::string fifo = dir.file(name);
        ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
        QelVar p = widePath(fifo);
        QelPointCloud cloud;
        QelTriangleMesh mesh;
        QelRangeImage image;
        // Refused at once: unreadable, or (a mesh from .xyz) not a format of the target.
        for (long status : {Qel3DFileOperation().Load(&cloud, p, true, true),
                            Qel3DFileOperation().Load(&mesh, p, true, true),
                            Qel3DFileOperation().Load(&image, p, true)})
            EXPECT_TRUE(status == QELMV::QEL_DATA_FILE_NOT_READABLE ||
                        status == QELMV::QEL_DATA_FORMAT_UNSUPPORTED)
                << name << " " << status;
    }
    // A sparse 64 GB file of zero bytes: refused from its first bytes (read
    // whole, it could not even be allocated).
    for (const char* name : {"zeros.xyz", "zeros.ply", "zeros.stl", "zeros.obj", "zeros.off",
                             "zeros.pcd", "zeros.csv", "zeros.png"}) {
        const std::string path = dir.file(name);
        std::ofstream(path).close();
        ASSERT_EQ(::truncate(path.c_str(), 64ll << 30), 0);
        QelVar p = widePath(path);
        QelPointCloud cloud;
        QelTriangleMesh mesh;
        QelRangeImage image;
        const std::string suffix = std::string(name).substr(6);
        if (suffix == "csv" || suffix == "png") {
            EXPECT_EQ(Qel3DFileOperation().Load(&image, p, true), QELMV::QEL_DATA_FILE_MALFORMED)
                << name;
        } else {
            const long cloudStatus = Qel3DFileOperation().Load(&cloud, p, true, true);
            const long meshStatus = Qel3DFileOperation().Load(&mesh, p, true, true);
            EXPECT_TRUE(cloudStatus == QELMV::QEL_DATA_FILE_MALFORMED ||
                        cloudStatus == QELMV::QEL_DATA_FORMAT_UNSUPPORTED)
                << name << " " << cloudStatus;
            EXPECT_TRUE(meshStatus == QELMV::QEL_DATA_FILE_MALFORMED ||
                        meshStatus == QELMV::QEL_DATA_FORMAT_UNSUPPORTED)
                << name << " " << meshStatus;
        }
    }
}

TEST(FileOperation, PathsAndSuffixes) {
    TempDir dir;
    QelPointCloud cloud;
    QelVar missing = widePath(dir.file("none.ply"));
    EXPECT_EQ(Qel3DFileOperation().Load(&cloud, missing, true, true),
              QELMV::QEL_DATA_FILE_NOT_READABLE);
    QelVar folder = widePath(dir.file(""));
    QelRangeImage img;
    EXPECT_NE(Qel3DFileOperation().Load(&img, folder, true), 0);
    QelVar unknown = widePath(dir.write("a.abc", "1 2 3\n"));
    EXPECT_EQ(Qel3DFileOperation().Load(&cloud, unknown, true, true),
              QELMV::QEL_DATA_FORMAT_UNSUPPORTED);
    QelVar number(3L);
    EXPECT_NE(Qel3DFileOperation().Load(&cloud, number, true, true), 0);
    EXPECT_NE(Qel3DFileOperation().Load(static_cast<QelPointCloud*>(nullptr), unknown, true, true),
              0);

    // Narrow paths, upper-case suffixes and non-ASCII file names all work.
    const std::string named = dir.write("Punkte-\xc3\xa4.XYZ", "1 2 3\n");
    QelVar narrow(named.c_str());
    EXPECT_EQ(Qel3DFileOperation().Load(&cloud, narrow, true, true), 0);
    QelVar wide(L"");
    const std::string base = dir.file("");
    const std::wstring w = std::wstring(base.begin(), base.end()) + L"Punkte-\u00e4.XYZ";
    wide = QelVar(w.c_str());
    EXPECT_EQ(Qel3DFileOperation().Load(&cloud, wide, true, true), 0);
}

TEST(FileOperation, AnImageSignatureFollowedByNothingValidIsRefusedFromItsHeader) {
    // Each format's signature, then zeros to 64 GB (sparse): its header
    // cannot be right, so the file is refused without being read whole
    // (read whole, it could not even be allocated).
    TempDir dir;
    const std::pair<const char*, std::string> signatures[] = {
        {"zeros.png", std::string("\x89PNG\r\n\x1a\n", 8)},
        {"zeros.tif", std::string("II*\0", 4)},
        {"zeros.tiff", std::string("MM\0*", 4)},
        {"zeros.bmp", "BM"},
        {"zeros.jpg", "\xff\xd8\xff"},
    };
    for (const auto& [name, signature] : signatures) {
        const std::string path = dir.write(name, signature);
        ASSERT_EQ(::truncate(path.c_str(), 64ll << 30), 0);
        QelVar p = widePath(path);
        QelRangeImage image;
        EXPECT_EQ(Qel3DFileOperation().Load(&image, p, true), QELMV::QEL_DATA_FILE_MALFORMED)
            << name;
    }
    // Real files of each format still pass the same check.
    cv::Mat grey(5, 7, CV_8U, cv::Scalar(9));
    for (const char* name : {"ok.png", "ok.tif", "ok.bmp", "ok.jpg"}) {
        ASSERT_TRUE(cv::imwrite(dir.file(name), grey)) << name;
        QelVar p = widePath(dir.file(name));
        QelRangeImage image;
        EXPECT_EQ(Qel3DFileOperation().Load(&image, p, true), 0) << name;
        EXPECT_EQ(image.Width(), 7) << name;
    }
    // A PNG whose IHDR names an impossible image (zero width).
    std::string png("\x89PNG\r\n\x1a\n", 8);
    png += std::string("\0\0\0\x0dIHDR", 8) + std::string(4, '\0') + std::string("\0\0\0\x05", 4) +
           std::string("\x08\0\0\0\0", 5) + std::string(4, '\0');
    QelVar bad = widePath(dir.write("bad.png", png));
    QelRangeImage image;
    EXPECT_EQ(Qel3DFileOperation().Load(&image, bad, true), QELMV::QEL_DATA_FILE_MALFORMED);
}

TEST(RangeImageLoader, ScalesThatLeaveSinglePrecisionAreRefused) {
    // Finite resolutions whose products with a 16-bit range overflow floats,
    // and scales that are not numbers.
    TempDir dir;
    cv::Mat u16(3, 4, CV_16U, cv::Scalar(1000));
    cv::imwrite(dir.file("h.png"), u16);
    QelVar path = widePath(dir.file("h.png"));
    QelRangeImage img;
    for (const double huge : {1e300, 1e40, 1e36}) {
        // Positions reach 4 pixels times the resolution; heights 65535 times.
        if (huge * 4 > FLT_MAX) {
            EXPECT_EQ(Qel3DFileOperation().Load(&img, path, huge, 1.0, 1.0),
                      QELMV::QEL_DATA_INVALID_ARGUMENT)
                << huge;
        }
        EXPECT_EQ(Qel3DFileOperation().Load(&img, path, 1.0, 1.0, huge),
                  QELMV::QEL_DATA_INVALID_ARGUMENT)
            << huge;
    }
    EXPECT_EQ(img.Width(), 0) << "a refused load leaves the target alone";
    EXPECT_EQ(Qel3DFileOperation().Load(&img, path, 1.0, 1.0, 1e30), 0) << "65535e30 fits";

    const std::string png = dir.file("h.png");
    const std::wstring wide(png.begin(), png.end());
    QelRangeImage kept;
    ASSERT_TRUE(kept.Load(wide.c_str(), 0.5, 2));
    for (const auto& [scale, offset] :
         {std::pair(std::nan(""), 0.0), std::pair(double(INFINITY), 0.0),
          std::pair(1.0, std::nan("")), std::pair(1e300, 0.0), std::pair(1.0, -1e300)})
        EXPECT_FALSE(kept.Load(wide.c_str(), scale, offset)) << scale << " " << offset;
    EXPECT_DOUBLE_EQ(kept.ResolutionZ(), 0.5) << "a refused load leaves the image alone";
}
