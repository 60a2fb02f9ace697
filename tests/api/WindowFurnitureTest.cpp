// The window around the view: tool bar, status line, badge, message label,
// and the import, screenshot and background actions with their dialogs.
#include <gtest/gtest.h>

#include <QImage>
#include <fstream>

#include "../TempDir.h"
#include "ApiHost.h"

using namespace QELMV;

namespace {

QStringList toolBarTexts(long long handle) {
    QStringList texts;
    for (QAction* a : toolBar(handle)->actions())
        texts << (a->isSeparator() ? "|" : a->text());
    return texts;
}

QString statusText(long long handle) {
    return statusLabel(handle)->toolTip();
}

}  // namespace

TEST(WindowFurniture, ToolBarHoldsTheActionsInOrder) {
    HostedWindow window(900, 500);
    QelPointCloud cloud = gridCloud(40, 0.1f, [](float x, float y) { return x * y; });
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    ASSERT_EQ(QelSet3DWndNumber(window.handle, 3, true), 0);
    QelVar message("Inspection 17: OK");
    ASSERT_EQ(QelDrawMessageText(window.handle, message), 0);
    findAction(window.handle, "Top View")->trigger();
    pumpEvents();
    keepWidget(windowWidget(window.handle), "window");
    const QStringList expected = {"Import image",
                                  "Save Screen",
                                  "Render Points",
                                  "Render Edges",
                                  "Render Faces",
                                  "|",
                                  "Set Point Size and Line Width",
                                  "Show Color Bar",
                                  "Toggle Light",
                                  "Eye-Dome Lighting",
                                  "Toggle Axis",
                                  "Show Bounding Box",
                                  "|",
                                  "Reset View",
                                  "Oblique View",
                                  "Top View",
                                  "Bottom View",
                                  "Left View",
                                  "Right View",
                                  "Front View",
                                  "Back View",
                                  "|",
                                  "Clear Mesh",
                                  "|",
                                  "Change Background Color",
                                  "Change render color mode",
                                  "Measure",
                                  "Draw lasso",
                                  "Select point"};
    EXPECT_EQ(toolBarTexts(window.handle), expected);
    // The two selection tools are there but hidden until a host shows them.
    EXPECT_FALSE(findAction(window.handle, "Draw lasso")->isVisible());
    EXPECT_FALSE(findAction(window.handle, "Select point")->isVisible());
    for (QAction* a : toolBar(window.handle)->actions()) {
        if (a->isSeparator()) continue;
        EXPECT_EQ(a->toolTip(), a->text());
        EXPECT_FALSE(a->icon().isNull()) << a->text().toStdString();
    }
    EXPECT_EQ(toolBar(window.handle)->iconSize(), QSize(36, 36));
    EXPECT_EQ(toolBar(window.handle)->windowTitle(), "Tool Bar");
    EXPECT_TRUE(findAction(window.handle, "Render Faces")->isChecked());
    EXPECT_FALSE(findAction(window.handle, "Render Points")->isChecked());
    EXPECT_TRUE(findAction(window.handle, "Toggle Light")->isChecked());
    for (const char* hidden : {"Draw lasso", "Select point"}) {
        QAction* a = findAction(window.handle, hidden);
        ASSERT_NE(a, nullptr);
        EXPECT_FALSE(a->isVisible());
        EXPECT_TRUE(a->isCheckable());
    }
    // The view actions are exclusive.
    findAction(window.handle, "Top View")->trigger();
    findAction(window.handle, "Left View")->trigger();
    EXPECT_FALSE(findAction(window.handle, "Top View")->isChecked());
    EXPECT_TRUE(findAction(window.handle, "Left View")->isChecked());
}

TEST(WindowFurniture, ElementStateForAllChecksOneRenderAction) {
    HostedWindow window;
    const char* actions[] = {"Render Points", "Render Edges", "Render Faces"};
    for (int state = 0; state < 3; ++state) {
        ASSERT_EQ(QelSet3DElementState(window.handle, Qel3DGraphicsDataType(state)), 0);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(findAction(window.handle, actions[i])->isChecked(), i == state) << state;
    }
    EXPECT_EQ(QelSet3DElementState(window.handle, Qel3DGraphicsDataType(3)), 11200002);
    EXPECT_EQ(QelSet3DElementState(window.handle, Qel3DGraphicsDataType(-1)), 11200002);
}

TEST(WindowFurniture, ToolbarMaskShowsAndHidesActions) {
    HostedWindow window;
    EXPECT_EQ(QelSet3DToolbarVisible(window.handle, 0L, false), 11200002);
    EXPECT_EQ(QelSet3DToolbarVisible(window.handle, 0x1L, false), 0);  // the standard set
    for (const char* text :
         {"Import image", "Render Points", "Render Edges", "Render Faces",
          "Set Point Size and Line Width", "Toggle Axis", "Change Background Color", "Front View",
          "Oblique View", "Show Color Bar", "Toggle Light", "Clear Mesh", "Save Screen",
          "Show Bounding Box", "Reset View", "Change render color mode"})
        EXPECT_FALSE(findAction(window.handle, text)->isVisible()) << text;
    EXPECT_EQ(QelSet3DToolbarVisible(window.handle, 0x00000020L | 0x00004000L, true), 0);
    EXPECT_TRUE(findAction(window.handle, "Top View")->isVisible());
    EXPECT_TRUE(findAction(window.handle, "Save Screen")->isVisible());
    EXPECT_FALSE(findAction(window.handle, "Bottom View")->isVisible());
    // A recognised bit that names no action is accepted and changes nothing.
    EXPECT_EQ(QelSet3DToolbarVisible(window.handle, 0x00020000L, true), 0);
    EXPECT_FALSE(findAction(window.handle, "Bottom View")->isVisible());
    EXPECT_EQ(QelSet3DToolbarVisible(window.handle, 0x00400000L | 0x00200000L, true), 0);
    EXPECT_TRUE(findAction(window.handle, "Draw lasso")->isVisible());
    EXPECT_TRUE(findAction(window.handle, "Select point")->isVisible());

    EXPECT_EQ(QelSet3DToolbarVisible(window.handle, false), 0);
    EXPECT_FALSE(toolBar(window.handle)->isVisible());
    EXPECT_EQ(QelSet3DStatusbarVisible(window.handle, false), 0);
    EXPECT_FALSE(statusLabel(window.handle)->isVisible());
}

TEST(WindowFurniture, StatusLineFollowsTheDataAndTheLogLevel) {
    HostedWindow window;
    QelPointCloud cloud = gridCloud(10, 1, [](float, float) { return 0.0f; });
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    EXPECT_TRUE(statusText(window.handle).contains("Data Type: Point Cloud"));
    EXPECT_TRUE(statusText(window.handle).contains("Number of Points: 100"));

    QelRangeImage image;
    image.SetSize(30, 20, QEL_16U);
    std::fill_n(reinterpret_cast<unsigned short*>(image.Data()), 600, 7);
    ASSERT_GE(QelDisplayRangeImage(window.handle, image), 1);
    const QString brief = statusText(window.handle);
    EXPECT_TRUE(brief.contains("Data Type: Range Image"));
    EXPECT_TRUE(brief.contains("30 x 20"));
    EXPECT_FALSE(brief.contains("16U"));
    ASSERT_EQ(QelSet3DStatusbarLogLevel(window.handle, 1), 0);
    EXPECT_TRUE(statusText(window.handle).contains("16U")) << "level 1 shows the details";
    EXPECT_EQ(QelSet3DStatusbarLogLevel(window.handle, 2), 11200002);
    EXPECT_EQ(QelSet3DStatusbarLogLevel(window.handle, -1), 11200002);
    // One line only: shown at either level.
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    EXPECT_TRUE(statusText(window.handle).contains("Number of Points: 100"));
}

TEST(WindowFurniture, LongStatusTextIsElidedToTheLabel) {
    HostedWindow window(150, 300);
    QelPointCloud cloud = gridCloud(10, 1, [](float, float) { return 0.0f; });
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    pumpEvents();
    QLabel* label = statusLabel(window.handle);
    EXPECT_TRUE(label->text().endsWith(QChar(0x2026))) << label->text().toStdString();
    EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->contentsRect().width());
    EXPECT_TRUE(label->toolTip().contains("Number of Points: 100"));
}

TEST(WindowFurniture, NumberBadgeIsAGreyCircleSizedByItsDigits) {
    HostedWindow window;
    EXPECT_EQ(QelSet3DWndNumber(window.handle, 0, true), 11200002);
    EXPECT_EQ(QelSet3DWndNumber(window.handle, 100000, true), 11200002);
    ASSERT_EQ(QelSet3DWndNumber(window.handle, 12345, true), 0);
    QLabel* badge = nullptr;
    for (QLabel* l : windowWidget(window.handle)->findChildren<QLabel*>())
        if (l->text() == "12345") badge = l;
    ASSERT_NE(badge, nullptr);
    EXPECT_TRUE(badge->isVisible());
    EXPECT_EQ(badge->styleSheet(),
              "min-width: 34px; min-height: 34px; max-width:34px; max-height: 34px;border-radius: "
              "17px;  border:1px solid black;background:grey");
    ASSERT_EQ(QelSet3DWndNumber(window.handle, 3, true), 0);
    EXPECT_TRUE(badge->styleSheet().startsWith("min-width: 30px;"));
    ASSERT_EQ(QelSet3DWndNumber(window.handle, 3, false), 0);
    EXPECT_FALSE(badge->isVisible());
}

TEST(WindowFurniture, MessageTextShowsEveryVariantType) {
    HostedWindow window;
    auto shown = [&](QelVar value) {
        EXPECT_EQ(QelDrawMessageText(window.handle, value), 0);
        for (QLabel* l : windowWidget(window.handle)->findChildren<QLabel*>())
            if (l->isVisible() && !l->text().isEmpty() && l != statusLabel(window.handle))
                return l->text();
        return QString();
    };
    EXPECT_EQ(shown(QelVar(42L)), "42");
    EXPECT_EQ(shown(QelVar(3.14159265)), "3.14159");
    EXPECT_EQ(shown(QelVar("narrow")), "narrow");
    EXPECT_EQ(shown(QelVar(L"wide \u4e2d")), QString::fromWCharArray(L"wide \u4e2d"));
    QelVar none;
    EXPECT_EQ(QelDrawMessageText(window.handle, none), 11200002);
    QelPoint at(50, 60);
    QelVar text("moved");
    ASSERT_EQ(QelDrawMessageText(window.handle, text, at), 0);
    int moved = 0;
    for (QLabel* l : windowWidget(window.handle)->findChildren<QLabel*>()) {
        if (l->text() != "moved") continue;
        ++moved;
        EXPECT_EQ(l->pos(), QPoint(50, 60));
    }
    EXPECT_EQ(moved, 1);
}

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

TEST(WindowFurniture, ToolBarActionsChangeTheView) {
    HostedWindow window;
    QelPointCloud cloud = gridCloud(6, 1.0f, [](float, float) { return 0.0f; });
    QelColorArray green;
    green.Create(cloud.Length(), 3);
    for (int i = 0; i < cloud.Length(); ++i)
        green.Data()[i * 3 + 1] = 255;
    cloud.SetColors(green);
    ASSERT_GE(QelDisplayPointCloud(window.handle, cloud), 1);
    ASSERT_EQ(QelSetLightState(window.handle, false), 0);
    QelVector3d eye(0, 0, 20), centre(0, 0, 0), up(0, 1, 0);
    ASSERT_EQ(QelSetCamera(window.handle, eye, centre, up), 0);
    const int plain = Shot(window.handle).countUnlike(0, 0, 0);

    // The property dialog's point size reaches every object.
    DialogAnswerer answers;
    answers.sliders["slPointSize"] = 9;
    findAction(window.handle, "Set Point Size and Line Width")->trigger();
    EXPECT_EQ(answers.fileDialogTitles, QStringList{"Property"});
    const int large = Shot(window.handle).countUnlike(0, 0, 0);
    EXPECT_GT(large, 20 * plain);

    // Colour mode: height colours (flat cloud: one end of the table) or the
    // cloud's own green.
    auto greenPixels = [&] {
        return Shot(window.handle).count([](int r, int g, int b) {
            return g > 200 && r < 60 && b < 60;
        });
    };
    EXPECT_EQ(greenPixels(), 0);
    findAction(window.handle, "Change render color mode")->trigger();
    Shot(window.handle).keep("own-colours");
    EXPECT_GT(greenPixels(), large / 2);
    findAction(window.handle, "Change render color mode")->trigger();
    EXPECT_EQ(greenPixels(), 0);

    // The bounding box adds its edges.
    findAction(window.handle, "Show Bounding Box")->trigger();
    Shot boxed(window.handle);
    boxed.keep("bounding-box");
    EXPECT_GT(boxed.countUnlike(0, 0, 0), large);
    findAction(window.handle, "Show Bounding Box")->trigger();
    EXPECT_EQ(Shot(window.handle).countUnlike(0, 0, 0), large);

    // Render actions set every object's mode and stay exclusive.
    findAction(window.handle, "Render Edges")->trigger();
    EXPECT_TRUE(findAction(window.handle, "Render Edges")->isChecked());
    EXPECT_FALSE(findAction(window.handle, "Render Faces")->isChecked());

    // Clear Mesh empties the scene.
    findAction(window.handle, "Clear Mesh")->trigger();
    QelImage image;
    EXPECT_EQ(Qel3DScreenShot(window.handle, &image), 11501008);
}
