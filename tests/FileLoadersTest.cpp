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
