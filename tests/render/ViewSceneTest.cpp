// The view's scene set-up, screenshots at other sizes and text overlays.
#include <gtest/gtest.h>

#include "ExamplePaintSurface.h"
#include "MRenderer.h"
#include "ObjectIdCounter.h"
#include "QelColor.h"
#include "QelVar.h"
#include "QelVector3d.h"
#include "RenderTestScene.h"
#include "TextOverlay.h"

TEST(ViewScene, ClearColourIsTheBackgroundColour) {
    GLViewer view;
    view.resize(120, 80);
    view.decorations().setBackgroundColor(10, 200, 30, 255);
    const QImage image = view.grabFrame();
    ASSERT_EQ(image.size(), QSize(120, 80));
    EXPECT_EQ(countUnlike(image, QColor(10, 200, 30), 0), 0);
    EXPECT_TRUE(view.isInitialised());
    ASSERT_EQ(view.root()->getNumChildren(), 5u);
    EXPECT_EQ(view.root()->getChild(1), view.content().dataGroup());
    view.decorations().setBackgroundColor(255, 255, 255, 255);
    EXPECT_EQ(countUnlike(view.grabFrame(), QColor(255, 255, 255), 0), 0);
}

TEST(ViewScene, GrabAtAnotherSizeLeavesTheSurfaceAlone) {
    auto view = makeView(160, 120);
    QImage big;
    view->osgWidget()->grabImage(big, 321.7, 99.2);
    EXPECT_EQ(big.size(), QSize(321, 99));
    EXPECT_EQ(view->osgWidget()->surface()->size(), QSize(160, 120));
    EXPECT_EQ(view->grabFrame().size(), QSize(160, 120));
}

TEST(TextOverlay, GbkTextDrawsOverTheData) {
    auto view = makeView(240, 160);
    view->decorations().setBackgroundColor(0, 0, 0, 255);
    view->light().setLightState(false);
    // "中文" in GBK.
    const QelVar text("\xd6\xd0\xce\xc4");
    const long first =
        view->content().addTextOverlay(text, QelVector3d(-6, 3, 0), 4.0f, QelColor(0, 255, 0, 255));
    QImage image = view->grabFrame();
    keepImage(image, "text-overlay");
    const int green = image.width() * image.height() - countUnlike(image, QColor(0, 255, 0), 60);
    EXPECT_GT(green, 60) << "the two characters draw green pixels";
    EXPECT_EQ(view->content().textOverlays().find(first)->text()->getText().size(), 2u);

    // A red quad between the eye and the text hides nothing of it.
    view->content().dataGroup()->addChild(
        makeQuad({-20, -20, 5}, {20, -20, 5}, {20, 20, 5}, {-20, 20, 5}, osg::Vec4(1, 0, 0, 1)));
    image = view->grabFrame();
    keepImage(image, "text-overlay-over-data");
    const int greenOverData =
        image.width() * image.height() - countUnlike(image, QColor(0, 255, 0), 60);
    EXPECT_NEAR(greenOverData, green, green / 10);

    const long second = view->content().addTextOverlay(QelVar(L"wide"), QelVector3d(0, 0, 0), 1.0f,
                                                       QelColor(255, 255, 255, 255));
    EXPECT_EQ(second, first + 1);
    EXPECT_EQ(view->content().removeTextOverlay(first), 0);
    EXPECT_EQ(view->content().removeTextOverlay(first), 11100022);
    EXPECT_EQ(view->content().removeTextOverlay(-1), 11100022);
    EXPECT_EQ(view->content().removeAllTextOverlays(), 0);
    EXPECT_EQ(view->content().textOverlayCount(), 0);
    EXPECT_GT(ObjectIdCounter::peek(), second);
}

TEST(ViewScene, ManyViewsComeAndGo) {
    for (int i = 0; i < 20; ++i) {
        auto view = makeView(64, 64);
        view->content().dataGroup()->addChild(
            makeQuad({-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}, {1, 1, 1, 1}));
        view->content().addTextOverlay(QelVar("x"), QelVector3d(0, 0, 0), 1.0f,
                                       QelColor(255, 255, 255, 255));
        EXPECT_EQ(view->grabFrame().size(), QSize(64, 64));
    }
}

TEST(ViewScene, AClosedViewsViewerServesTheNextOnlyWhileAnotherLives) {
    auto keeper = makeView(64, 64);
    const osgViewer::Viewer* closed = nullptr;
    {
        auto first = makeView(64, 64);
        closed = first->osgWidget()->viewer();
    }
    EXPECT_TRUE(MRenderer::holdsSpare());
    auto next = makeView(64, 64);
    EXPECT_EQ(next->osgWidget()->viewer(), closed);
    EXPECT_FALSE(MRenderer::holdsSpare());
    next.reset();
    EXPECT_TRUE(MRenderer::holdsSpare());
    keeper.reset();
    EXPECT_FALSE(MRenderer::holdsSpare()) << "the last view keeps nothing";
}

TEST(TextOverlay, KeepsTheHostsTextWholeButLaysOutOnlyTheCap) {
    osg::ref_ptr<osgText::Text> text = new osgText::Text;
    const osgText::Text& prototype = *text;
    const std::wstring longText(10000, L'a');
    TextOverlay overlay(prototype, 1, longText, osg::Vec3(), 1.0f, osg::Vec4(1, 1, 1, 1));
    EXPECT_EQ(overlay.fullText(), longText);
    EXPECT_EQ(overlay.text()->getText().size(), 4096u + 1);
    TextOverlay shortOne(prototype, 2, L"short", osg::Vec3(), 1.0f, osg::Vec4(1, 1, 1, 1));
    EXPECT_EQ(shortOne.text()->getText().size(), 5u);
}
