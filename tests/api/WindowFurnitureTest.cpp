// The window around the view: tool bar, status line, badge, message label,
// and what the tool-bar actions do to the view.
#include <gtest/gtest.h>

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
