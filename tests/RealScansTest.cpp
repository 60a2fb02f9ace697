// The public real scans beside the project (shared/realdata), loaded as a
// user would and checked against the counts their SOURCES.md gives.
#include <gtest/gtest.h>

#include <filesystem>

#include "Qel3DData.h"
#include "TempDir.h"

using QELMV::Qel3DFileOperation;

namespace {

std::string realFile(const char* name) {
    const std::string path = std::string(QEL_REALDATA_DIR) + "/" + name;
    return std::filesystem::exists(path) ? path : std::string();
}

}  // namespace

TEST(RealScans, BunnyInFourMeshFormats) {
    for (const char* name : {"bunny.ply", "bunny.obj", "bunny.off", "bunny_ascii.stl"}) {
        const std::string path = realFile(name);
        if (path.empty()) GTEST_SKIP() << "no real data beside the project";
        QelVar file = widePath(path);
        QelTriangleMesh mesh;
        ASSERT_EQ(Qel3DFileOperation().Load(&mesh, file, true, true), 0) << name;
        EXPECT_EQ(mesh.NumVertices(), 1839) << name;
        EXPECT_EQ(mesh.NumTriangles(), 3674) << name;
        EXPECT_EQ(mesh.NumValidTriangles(), 3674) << name;
    }
    // Without merging the STL keeps three corners per facet.
    QelVar stl = widePath(realFile("bunny_ascii.stl"));
    QelTriangleMesh soup;
    ASSERT_EQ(Qel3DFileOperation().Load(&soup, stl, true, false), 0);
    EXPECT_EQ(soup.NumVertices(), 3 * 3674);
}

TEST(RealScans, OrganisedStereoScanKeepsItsNaNPointsAndColours) {
    const std::string path = realFile("table_scene_mug_stereo_textured.pcd");
    if (path.empty()) GTEST_SKIP() << "no real data beside the project";
    QelVar file = widePath(path);
    QelPointCloud organised;
    ASSERT_EQ(Qel3DFileOperation().Load(&organised, file, true, true), 0);
    EXPECT_EQ(organised.Length(), 307200);
    EXPECT_EQ(organised.NumValidPoints(), 307200 - 97920);
    EXPECT_TRUE(organised.IsValidColor());
    QelPointCloud valid;
    ASSERT_EQ(Qel3DFileOperation().Load(&valid, file, true, false), 0);
    EXPECT_EQ(valid.Length(), 307200 - 97920);
}
