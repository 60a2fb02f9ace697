#include "NamedShaderPrograms.h"

#include <osg/BlendFunc>
#include <osg/Depth>
#include <osg/PointSprite>
#include <osg/StateSet>
#include <osg/Uniform>

#include "PixelRatio.h"

namespace {

constexpr unsigned kProgramPointSize = 0x8642;  // GL_VERTEX_PROGRAM_POINT_SIZE

void installPointState(osg::StateSet& ss) {
    ss.setTextureAttributeAndModes(0, new osg::PointSprite, osg::StateAttribute::ON);
    ss.setMode(kProgramPointSize, osg::StateAttribute::ON);
    // One device pixel a pixel unless the view that draws it says otherwise.
    ss.addUniform(new osg::Uniform(PixelRatio::kUniform, 1.0f));
}

void removePointState(osg::StateSet& ss) {
    ss.removeTextureAttribute(0, osg::StateAttribute::POINTSPRITE);
    ss.removeTextureMode(0, GL_POINT_SPRITE_ARB);
    ss.removeMode(kProgramPointSize);
    ss.removeUniform(PixelRatio::kUniform);
}

void installPointSprite(osg::StateSet& ss) {
    installPointState(ss);
    ss.addUniform(new osg::Uniform("eLightPos", osg::Vec3f(0, 0, 1)));
    ss.addUniform(new osg::Uniform("sphere_radius", 3.0f));
}

void installSurfel(osg::StateSet& ss) {
    installPointState(ss);
    ss.addUniform(new osg::Uniform("surfel_radius", 2.0f));
}

void installGlass(osg::StateSet& ss) {
    ss.addUniform(new osg::Uniform("GlassColor", osg::Vec4f(0.55f, 0.75f, 0.9f, 0.35f)));
    ss.addUniform(new osg::Uniform("LightPosition", osg::Vec3f(600, 600, 1000)));
    ss.addUniform(new osg::Uniform("SpecularColor1", osg::Vec4f(1, 1, 1, 1)));
    ss.addUniform(new osg::Uniform("SpecularColor2", osg::Vec4f(0.25f, 0.3f, 0.4f, 1)));
    ss.addUniform(new osg::Uniform("SpecularFactor1", 64.0f));
    ss.addUniform(new osg::Uniform("SpecularFactor2", 8.0f));
    // A see-through surface: blended, drawn after the opaque data, and not
    // hiding what lies behind it.
    ss.setAttributeAndModes(new osg::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA));
    ss.setAttribute(new osg::Depth(osg::Depth::LESS, 0.0, 1.0, false));
    ss.setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
}

void removeGlass(osg::StateSet& ss) {
    ss.removeAttribute(osg::StateAttribute::BLENDFUNC);
    ss.removeMode(GL_BLEND);
    ss.removeAttribute(osg::StateAttribute::DEPTH);
    ss.setRenderingHint(osg::StateSet::DEFAULT_BIN);
}

}  // namespace

const NamedShaderProgram* findNamedShaderProgram(const std::string& name) {
    static const NamedShaderProgram kPrograms[] = {
        {"glass", kGlassVertexSource, kGlassFragmentSource, installGlass, removeGlass},
        {"pointSprite", pointVertexSource("sphere_radius"), kPointSpriteFragmentSource,
         installPointSprite, removePointState},
        {"pointSurfel", pointVertexSource("surfel_radius"), kSurfelFragmentSource, installSurfel,
         removePointState},
    };
    for (const NamedShaderProgram& p : kPrograms)
        if (name == p.name) return &p;
    return nullptr;
}
