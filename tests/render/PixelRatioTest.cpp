// A view whose device pixel ratio changes, as when its window moves to a
// screen of another density: sizes given in logical pixels are drawn anew
// at the new ratio, with no state left from the old one.
#include <gtest/gtest.h>

#include <osg/Geometry>

#include "ExamplePaintSurface.h"
#include "MRenderer.h"
#include "PixelRatio.h"
#include "ScaledLineWidth.h"
#include "ScaledPoint.h"

namespace {

// One white point of 5 logical pixels in the middle, and a white horizontal
// line of width 2 near the top, drawn in clip coordinates.
osg::ref_ptr<osg::Node> pointAndLine() {
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    auto geometry = [](std::initializer_list<osg::Vec3> vertices, GLenum mode) {
        osg::ref_ptr<osg::Geometry> g = new osg::Geometry;
        g->setVertexArray(new osg::Vec3Array(vertices.begin(), vertices.end()));
        osg::ref_ptr<osg::Vec4Array> colour = new osg::Vec4Array(1);
        (*colour)[0] = osg::Vec4(1, 1, 1, 1);
        g->setColorArray(colour, osg::Array::BIND_OVERALL);
        g->addPrimitiveSet(new osg::DrawArrays(mode, 0, GLsizei(vertices.size())));
        return g;
    };
    osg::ref_ptr<osg::Geometry> point = geometry({osg::Vec3(0, 0, 0)}, GL_POINTS);
    point->getOrCreateStateSet()->setAttribute(new ScaledPoint(5));
    osg::ref_ptr<osg::Geometry> line =
        geometry({osg::Vec3(-0.8f, 0.6f, 0), osg::Vec3(0.8f, 0.6f, 0)}, GL_LINES);
    line->getOrCreateStateSet()->setAttribute(new ScaledLineWidth(2));
    geode->addDrawable(point);
    geode->addDrawable(line);
    geode->getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    return geode;
}

struct Frame {
    int pointSide = 0, lineHeight = 0;
};

// The white pixels' extent below and above the middle of the picture.
Frame measure(const QImage& image) {
    int top = image.height(), bottom = -1, left = image.width(), right = -1, lineTop = -1,
        lineBottom = -1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 200) continue;
            if (y > image.height() / 3) {
                top = std::min(top, y), bottom = std::max(bottom, y);
                left = std::min(left, x), right = std::max(right, x);
            } else {
                lineTop = lineTop < 0 ? y : lineTop;
                lineBottom = y;
            }
        }
    return {right - left + 1, lineBottom - lineTop + 1};
}

}  // namespace

TEST(PixelRatio, AChangedRatioRedrawsSizesAtTheNewRatio) {
    ExamplePaintSurface surface(nullptr, QSize(120, 120));
    MRenderer renderer;
    surface.makeCurrent();
    renderer.setup(120, 120, 1.0f);
    renderer.getCamera()->getGraphicsContext()->setDefaultFboId(surface.defaultFramebufferObject());
    renderer.getCamera()->setProjectionMatrix(osg::Matrixd::identity());
    renderer.getCamera()->setViewMatrix(osg::Matrixd::identity());
    renderer.getCamera()->setClearColor(osg::Vec4(0, 0, 0, 1));
    renderer.setSceneData(pointAndLine());
    QObject::connect(&surface, &ExamplePaintSurface::sig_paintGL, [&] { renderer.frame(); });

    std::vector<Frame> frames;
    for (const float ratio : {1.0f, 2.0f, 1.5f, 1.0f}) {
        renderer.resize(120, 120, ratio);  // same pixels, another density
        EXPECT_EQ(PixelRatio::of(renderer.getCamera()), ratio);
        surface.render();
        frames.push_back(measure(surface.grabFramebuffer()));
    }
    EXPECT_EQ(frames[0].pointSide, 5);
    EXPECT_EQ(frames[0].lineHeight, 2);
    EXPECT_EQ(frames[1].pointSide, 10);
    EXPECT_EQ(frames[1].lineHeight, 4);
    EXPECT_NEAR(frames[2].pointSide, 7.5, 1);
    EXPECT_NEAR(frames[2].lineHeight, 3, 1);
    EXPECT_EQ(frames[3].pointSide, 5) << "back at the first ratio";
    EXPECT_EQ(frames[3].lineHeight, 2);
    renderer.setSceneData(nullptr);
    renderer.graphicsWindow()->close(true);
    surface.doneCurrent();
}
