// The lighting program and the named programs, checked by pixels of frames
// rendered through the real path.
#include <gtest/gtest.h>

#include <osg/Program>

#include "MRenderer.h"
#include "QelGLShaderAlg.h"
#include "RenderTestScene.h"
#include "ShaderADS.h"
#include "ShaderGlass.h"
#include "ShaderPointSprite.h"
#include "ShaderSurfel.h"

namespace {

int channel(double v) {
    return static_cast<int>(std::lround(std::min(1.0, v) * 255.0));
}

void expectNear(QColor actual, double r, double g, double b, int tolerance = 2) {
    EXPECT_NEAR(actual.red(), channel(r), tolerance);
    EXPECT_NEAR(actual.green(), channel(g), tolerance);
    EXPECT_NEAR(actual.blue(), channel(b), tolerance);
}

}  // namespace

TEST(ShaderADS, FrontAndBackLightingFollowTheWeights) {
    auto view = makeView();
    const osg::Vec4 c(0.8f, 0.4f, 0.2f, 1.0f);
    osg::ref_ptr<osg::Geode> quad =
        makeQuad({-5, -5, 0}, {5, -5, 0}, {5, 5, 0}, {-5, 5, 0}, c, osg::Vec3(0, 0, 1));
    view->content().dataGroup()->addChild(quad);
    QImage image = view->grabFrame();
    keepImage(image, "shader-front-lit");
    // The light runs along the view direction; at the centre the surface
    // faces both light and eye, so d = 1 and the specular term s = 1:
    // (ambient c + diffuse c + specular white) / (0.1 + 0.5 + 0.6).
    const QColor centre = image.pixelColor(100, 100);
    expectNear(centre, (0.6 * c.r() + 0.6) / 1.2, (0.6 * c.g() + 0.6) / 1.2,
               (0.6 * c.b() + 0.6) / 1.2);

    // Seen from the back with the light behind it: the same shading, scaled
    // by the back-face brightness.
    quad->getDrawable(0)->asGeometry()->setNormalArray(vec3s({{0, 0, -1}}),
                                                       osg::Array::BIND_OVERALL);
    ASSERT_EQ(view->light().lighting()->setBackfaceBrightness(0.5f), 0);
    image = view->grabFrame();
    expectNear(image.pixelColor(100, 100), 0.5 * (0.6 * c.r() + 0.6) / 1.2,
               0.5 * (0.6 * c.g() + 0.6) / 1.2, 0.5 * (0.6 * c.b() + 0.6) / 1.2);

    // Without the light, the plain colour.
    view->light().setLightState(false);
    image = view->grabFrame();
    expectNear(image.pixelColor(100, 100), c.r(), c.g(), c.b());
}

TEST(ShaderADS, ClipPlaneKeepsThePositiveSide) {
    auto view = makeView();
    // A quad whose model z runs from 0 at x = -5 to 10 at x = 5, drawn unlit
    // by the ambient and diffuse terms alone (any colour will do).
    view->content().dataGroup()->addChild(makeQuad({-5, -5, 0}, {5, -5, 10}, {5, 5, 10}, {-5, 5, 0},
                                                   osg::Vec4(1, 1, 1, 1),
                                                   osg::Vec3(-0.707f, 0, 0.707f)));
    const QColor background = view->grabFrame().pixelColor(2, 2);
    ASSERT_EQ(view->light().lighting()->setClipPlane(0, 0, 1, -5), 0);
    EXPECT_TRUE(view->light().lighting()->isClipped());
    const QImage image = view->grabFrame();
    keepImage(image, "shader-clip-plane");
    // z = 5 lies at x = 0, which the camera on the z axis sees at the centre
    // column; every drawn pixel left of it is gone, right of it stays.
    int keptLeft = 0, keptRight = 0;
    for (int x = 0; x < 200; ++x)
        for (int y = 60; y < 140; ++y) {
            const bool drawn = image.pixelColor(x, y) != background;
            if (x < 99) keptLeft += drawn;
            if (x > 101) keptRight += drawn;
        }
    EXPECT_EQ(keptLeft, 0);
    EXPECT_GT(keptRight, 4000);
}

TEST(ShaderADS, SettersNeedTheProgram) {
    osg::ref_ptr<osg::Group> node = new osg::Group;
    ShaderADS shader(node.get());
    EXPECT_EQ(shader.setLightPower(2.0f), -1);
    EXPECT_EQ(shader.setClipPlane(0, 0, 1, 0), -1);
    EXPECT_FALSE(shader.isClipped());
    shader.attach();
    float power = 0;
    node->getStateSet()->getUniform("lightPower")->get(power);
    EXPECT_EQ(power, 1.0f) << "a refused value is not used later";
    EXPECT_EQ(shader.setLightPower(2.0f), 0);
    EXPECT_EQ(shader.lightPower(), 2.0f);
    shader.detach();
    EXPECT_EQ(node->getStateSet()->getUniformList().size(), 0u);
    EXPECT_EQ(node->getStateSet()->getAttribute(osg::StateAttribute::PROGRAM), nullptr);
}

namespace {

// A 21 x 21 grid of points in the data group, coloured orange.
osg::ref_ptr<osg::Geode> makePointGrid() {
    osg::ref_ptr<osg::Geometry> g = new osg::Geometry;
    osg::ref_ptr<osg::Vec3Array> v = new osg::Vec3Array;
    for (int i = -10; i <= 10; ++i)
        for (int j = -10; j <= 10; ++j)
            v->push_back(osg::Vec3(i * 0.6f, j * 0.6f, 0));
    g->setVertexArray(v);
    g->setColorArray(vec4s({{1, 0.5f, 0, 1}}), osg::Array::BIND_OVERALL);
    g->setNormalArray(vec3s({{0, 0, 1}}), osg::Array::BIND_OVERALL);
    g->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, static_cast<int>(v->size())));
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(g);
    return geode;
}

bool programLinked(GLViewer& view, osg::Program* program) {
    osg::State* state = view.osgWidget()->renderer()->getCamera()->getGraphicsContext()->getState();
    osg::Program::PerContextProgram* pcp = program->getPCP(*state);
    return pcp && pcp->isLinked();
}

}  // namespace

TEST(NamedPrograms, EachCompilesLinksAndChangesThePicture) {
    auto view = makeView();
    view->light().setLightState(false);
    osg::ref_ptr<osg::Geode> points = makePointGrid();
    osg::ref_ptr<osg::Geode> quad =
        makeQuad({-4, -4, 1}, {4, -4, 1}, {4, 4, 1}, {-4, 4, 1}, osg::Vec4(0.2f, 0.4f, 1.0f, 1.0f));
    view->content().dataGroup()->addChild(points);
    const QImage plainPoints = view->grabFrame();

    ShaderPointSprite sprite(points.get());
    ASSERT_TRUE(sprite.create());
    EXPECT_FALSE(sprite.create()) << "a second create builds nothing";
    sprite.setSphereRadius(6.0f);
    const QImage sprites = view->grabFrame();
    keepImage(sprites, "program-point-sprite");
    auto* spriteProgram = dynamic_cast<osg::Program*>(
        points->getStateSet()->getAttribute(osg::StateAttribute::PROGRAM));
    ASSERT_NE(spriteProgram, nullptr);
    EXPECT_TRUE(programLinked(*view, spriteProgram));
    EXPECT_GT(differingPixels(plainPoints, sprites), 2000) << "spheres are much larger than points";
    sprite.detach();

    ShaderSurfel surfel(points.get());
    ASSERT_TRUE(surfel.create());
    surfel.setSurfelRadius(5.0f);
    const QImage surfels = view->grabFrame();
    keepImage(surfels, "program-surfel");
    auto* surfelProgram = dynamic_cast<osg::Program*>(
        points->getStateSet()->getAttribute(osg::StateAttribute::PROGRAM));
    ASSERT_NE(surfelProgram, nullptr);
    EXPECT_TRUE(programLinked(*view, surfelProgram));
    EXPECT_GT(differingPixels(plainPoints, surfels), 2000);
    EXPECT_GT(differingPixels(sprites, surfels), 500) << "splats are flat, spheres are shaded";
    surfel.detach();

    view->content().dataGroup()->removeChild(points);
    view->content().dataGroup()->addChild(quad);
    const QImage opaque = view->grabFrame();
    ShaderGlass glass(quad.get());
    ASSERT_TRUE(glass.create());
    glass.setGlassColor(0.2f, 0.8f, 0.3f, 0.4f);
    const QImage glassAlone = view->grabFrame();
    auto* glassProgram = dynamic_cast<osg::Program*>(
        quad->getStateSet()->getAttribute(osg::StateAttribute::PROGRAM));
    ASSERT_NE(glassProgram, nullptr);
    EXPECT_TRUE(programLinked(*view, glassProgram));
    EXPECT_GT(differingPixels(opaque, glassAlone), 10000);
    // The points behind the glass show through it.
    view->content().dataGroup()->addChild(points);
    const QImage glassOverPoints = view->grabFrame();
    keepImage(glassOverPoints, "program-glass");
    int seenThrough = 0;
    for (int y = 60; y < 140; ++y)
        for (int x = 60; x < 140; ++x)
            seenThrough += glassAlone.pixel(x, y) != glassOverPoints.pixel(x, y);
    EXPECT_GT(seenThrough, 60) << "points inside the glass square";
}

TEST(NamedPrograms, UniformsChangeOnlyWithAProvider) {
    osg::ref_ptr<osg::Group> node = new osg::Group;
    ShaderSurfel surfel(node.get());
    surfel.setSurfelRadius(9.0f);  // no provider yet: ignored
    EXPECT_EQ(node->getStateSet(), nullptr);
    surfel.attach();
    float radius = 0;
    node->getStateSet()->getUniform("surfel_radius")->get(radius);
    EXPECT_EQ(radius, 2.0f);
    surfel.setSurfelRadius(9.0f);
    node->getStateSet()->getUniform("surfel_radius")->get(radius);
    EXPECT_EQ(radius, 9.0f);

    osg::ref_ptr<osg::StateSet> ss = new osg::StateSet;
    std::string unknown = "marble";
    QelGLShaderAlg missing(ss, unknown);
    EXPECT_FALSE(missing.isReady());
    std::string glass = "glass", colour = "GlassColor";
    QelGLShaderAlg alg(ss, glass);
    std::vector<float> two = {1, 2};
    EXPECT_NE(alg.changeUniformValue(colour, two), 0) << "a vec4 takes four values";
}
