// The window's dialogs and files: import by suffix and its failures, the
// screenshot and the formats Save Screen writes, the background dialog.
#include <gtest/gtest.h>

#include <QImage>
#include <fstream>

#include "../TempDir.h"
#include "ApiHost.h"

using namespace QELMV;

TEST(WindowFurniture, ImportReadsEachKindBySuffix) {
    TempDir dir;
    const std::string files[][2] = {
        {dir.write("part.stl",
                   "solid t\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
                   "vertex 0 1 0\nendloop\nendfacet\nendsolid t\n"),
         "Triangle Mesh"},
        {dir.write("part.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"), "Triangle Mesh"},
        {dir.write("part.off", "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n"), "Triangle Mesh"},
        {dir.write("part.ply",
                   "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\n"
                   "property float y\nproperty float z\nelement face 1\nproperty list "
                   "uchar int vertex_indices\nend_header\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n"),
         "Triangle Mesh"},
        {dir.write("scan.xyz", "0 0 0\n1 0 0\n0 1 1\n"), "Point Cloud"},
        {dir.write("scan.txt", "0,0,0\n1,0,0\n0,1,1\n"), "Point Cloud"},
        {dir.write("scan.pcd",
                   "VERSION .7\nFIELDS x y z\nSIZE 4 4 4\nTYPE F F F\nCOUNT 1 1 1\n"
                   "WIDTH 2\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS 2\nDATA ascii\n"
                   "0 0 0\n1 1 1\n"),
         "Point Cloud"},
        {dir.write("scan.asc", "0 0 0\n1 0 0\n0 1 1\n"), "Point Cloud"},
        {dir.write("scan.xyzn", "0 0 0 0 0 1\n1 0 0 0 0 1\n0 1 1 0 0 1\n"), "Point Cloud"},
        {dir.write("scan.xyzrgb", "0 0 0 255 0 0\n1 0 0 0 255 0\n0 1 1 0 0 255\n"), "Point Cloud"},
        {dir.write("heights.csv", "1,2,3\n4,5,6\n7,8,9\n1,2,3\n"), "Range Image"},
    };
    HostedWindow window;
    ASSERT_EQ(QelSetSamplingRatio(window.handle, 1), 0);
    DialogAnswerer answers;
    for (const auto& file : files) {
        answers.path = QString::fromStdString(file[0]);
        findAction(window.handle, "Import image")->trigger();
        EXPECT_TRUE(statusText(window.handle).contains(QString("Data Type: ") + file[1].c_str()))
            << file[0] << ": " << statusText(window.handle).toStdString();
    }
    EXPECT_TRUE(answers.messages.isEmpty());
    EXPECT_EQ(answers.fileDialogTitles.front(), "Import");
    EXPECT_EQ(
        answers.fileDialogFilters.front(),
        "RangeImage Files (*.srt *.png *.jpg *.bmp *.ecd *.csv *.mri *.tif *.jxr);;PointCloud "
        "File (*.spt *.pcd *.txt *.asc *.obj *.ply *.xyz *.xyzn *.xyzrgb);;TriangleMesh Files "
        "(*.stmt *.obj *.off *.ply *.stl)");

    // A 16-bit PNG height map.
    QImage png(40, 30, QImage::Format_Grayscale16);
    png.fill(QColor(90, 90, 90));
    const std::string pngPath = dir.file("heights.png");
    ASSERT_TRUE(png.save(QString::fromStdString(pngPath)));
    answers.path = QString::fromStdString(pngPath);
    findAction(window.handle, "Import image")->trigger();
    EXPECT_TRUE(statusText(window.handle).contains("40 x 30"));
    // 8-bit BMP and JPG height maps.
    QImage gray(24, 18, QImage::Format_Grayscale8);
    gray.fill(QColor(120, 120, 120));
    for (const char* name : {"heights.bmp", "heights.jpg"}) {
        const std::string path = dir.file(name);
        ASSERT_TRUE(gray.save(QString::fromStdString(path))) << name;
        answers.path = QString::fromStdString(path);
        findAction(window.handle, "Import image")->trigger();
        EXPECT_TRUE(statusText(window.handle).contains("24 x 18")) << name;
    }
    EXPECT_TRUE(answers.messages.isEmpty());
}

TEST(WindowFurniture, BrokenFilesSayLoadFileFailedAndLeaveTheScene) {
    TempDir dir;
    HostedWindow window;
    QelPointCloud cloud = gridCloud(10, 1, [](float, float) { return 0.0f; });
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    const QString before = statusText(window.handle);
    DialogAnswerer answers;
    for (const char* name : {"broken.stl", "broken.pcd", "broken.png"}) {
        answers.path = QString::fromStdString(dir.write(name, "not what the suffix promises"));
        findAction(window.handle, "Import image")->trigger();
    }
    EXPECT_EQ(answers.messages,
              QStringList({"load file failed", "load file failed", "load file failed"}));
    EXPECT_EQ(answers.messageTitles.front(), "Warning");
    EXPECT_EQ(statusText(window.handle), before);
    // Unknown suffixes and a cancelled dialog end the action silently.
    answers.path = QString::fromStdString(dir.write("notes.doc", "x"));
    findAction(window.handle, "Import image")->trigger();
    answers.path.clear();
    findAction(window.handle, "Import image")->trigger();
    EXPECT_EQ(answers.messages.size(), 3);
    EXPECT_EQ(statusText(window.handle), before);
}

TEST(WindowFurniture, ImportShowsMeshFilesWithoutFacesAsPointClouds) {
    TempDir dir;
    HostedWindow window;
    DialogAnswerer answers;
    const std::string files[] = {
        dir.write("scan.ply",
                  "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float "
                  "y\nproperty float z\nend_header\n0 0 0\n1 0 0\n0 1 1\n"),
        dir.write("scan.obj", "v 0 0 0\nv 1 0 0\nv 0 1 1\n"),
        // A PCD saved under a mesh suffix: its content names the format.
        dir.write("scan.stl",
                  "# .PCD v0.7\nVERSION .7\nFIELDS x y z\nSIZE 4 4 4\nTYPE F F F\nCOUNT 1 1 "
                  "1\nWIDTH 3\nHEIGHT 1\nPOINTS 3\nDATA ascii\n0 0 0\n1 0 0\n0 1 0\n"),
    };
    for (const std::string& file : files) {
        ASSERT_EQ(QelClear3DScene(window.handle), 0);
        answers.path = QString::fromStdString(file);
        findAction(window.handle, "Import image")->trigger();
        EXPECT_TRUE(statusText(window.handle).contains("Data Type: Point Cloud")) << file;
        EXPECT_TRUE(statusText(window.handle).contains("Number of Points: 3")) << file;
    }
    EXPECT_TRUE(answers.messages.isEmpty());
    // Neither a mesh nor a cloud: the box as before.
    answers.path = QString::fromStdString(dir.write("junk.ply", "ply\nnot a header\n"));
    findAction(window.handle, "Import image")->trigger();
    EXPECT_EQ(answers.messages, QStringList({"load file failed"}));
}

// A host without an event loop changes the window and grabs at once: the
// picture must already have the new layout.
TEST(WindowFurniture, ScreenshotTakesTheLayoutOfEveryCallBeforeIt) {
    HostedWindow window;
    QelPointCloud cloud = gridCloud(10, 0.2f, [](float, float) { return 0.0f; });
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    pumpEvents();
    const auto sizeNow = [&] {
        Shot shot(window.handle);
        return QSize(shot.width(), shot.height());
    };
    const auto sizeSettled = [&] {
        pumpEvents();
        return sizeNow();
    };
    const QSize full = sizeNow();
    ASSERT_EQ(QelSet3DToolbarVisible(window.handle, false), 0);
    const QSize noToolBar = sizeNow();
    EXPECT_GT(noToolBar.height(), full.height());
    EXPECT_EQ(noToolBar, sizeSettled());
    ASSERT_EQ(QelSet3DStatusbarVisible(window.handle, false), 0);
    const QSize bare = sizeNow();
    EXPECT_GT(bare.height(), noToolBar.height());
    EXPECT_EQ(bare, sizeSettled());
    ASSERT_EQ(QelSet3DWndNumber(window.handle, 7, true), 0);
    EXPECT_EQ(sizeNow(), bare);
    ASSERT_EQ(QelSet3DToolbarVisible(window.handle, true), 0);
    ASSERT_EQ(QelSet3DStatusbarVisible(window.handle, true), 0);
    EXPECT_EQ(sizeNow(), full);
}

TEST(WindowFurniture, SaveScreenWritesTheChosenFormat) {
    TempDir dir;
    HostedWindow window;
    QelPointCloud cloud = gridCloud(20, 0.2f, [](float x, float) { return x; });
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    DialogAnswerer answers;
    for (const char* name : {"shot.bmp", "shot.png", "shot.jpg"}) {
        answers.path = QString::fromStdString(dir.file(name));
        findAction(window.handle, "Save Screen")->trigger();
        QImage saved(QString::fromStdString(dir.file(name)));
        EXPECT_FALSE(saved.isNull()) << name;
        Shot shot(window.handle);
        EXPECT_EQ(saved.size(), QSize(shot.width(), shot.height())) << name;
    }
    EXPECT_EQ(answers.fileDialogTitles.front(), "Screen Shot");
    EXPECT_EQ(answers.fileDialogFilters.front(),
              "BMP File (*.bmp);;PNG File (*.png);;JPG File (*.jpg)");
    std::ifstream png(dir.file("shot.png"), std::ios::binary);
    char magic[4] = {};
    png.read(magic, 4);
    EXPECT_EQ(std::string(magic + 1, 3), "PNG");
}

TEST(WindowFurniture, BackgroundDialogSetsTheColour) {
    HostedWindow window;
    QelPointCloud cloud = gridCloud(4, 0.1f, [](float, float) { return 0.0f; });
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    DialogAnswerer answers;
    answers.colour = QColor(200, 100, 50);
    findAction(window.handle, "Change Background Color")->trigger();
    EXPECT_EQ(answers.fileDialogTitles, QStringList{"Set Background Color"});
    Shot shot(window.handle);
    int r, g, b;
    shot.rgb(1, 1, &r, &g, &b);
    EXPECT_NEAR(r, 200, 2);
    EXPECT_NEAR(g, 100, 2);
    EXPECT_NEAR(b, 50, 2);
}
