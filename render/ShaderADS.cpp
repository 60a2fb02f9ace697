#include "ShaderADS.h"

#include <osg/Node>
#include <osg/Program>
#include <osg/StateSet>
#include <osg/Uniform>

#include "StatusCodes.h"

namespace {
const char* const kUniformNames[] = {
    "lightPower", "ambientWeight", "diffuseWeight",      "specularWeight",  "clipplane",
    "lightDir",   "isClipped",     "backfaceBrightness", "shinyFrontfaces", "shinyBackfaces"};
}

ShaderADS::ShaderADS(osg::Node* node) : ShaderBase(node) {}

void ShaderADS::attach() {
    osg::StateSet* ss = stateSet();
    osg::ref_ptr<osg::Program> program = new osg::Program;
    program->setName("ShaderADS");
    program->addShader(new osg::Shader(osg::Shader::VERTEX, kVertexSource));
    program->addShader(new osg::Shader(osg::Shader::FRAGMENT, kFragmentSource));
    const auto on = osg::StateAttribute::ON;
    ss->addUniform(new osg::Uniform("lightPower", lightPower_), on);
    ss->addUniform(new osg::Uniform("ambientWeight", ambientWeight_), on);
    ss->addUniform(new osg::Uniform("diffuseWeight", diffuseWeight_), on);
    ss->addUniform(new osg::Uniform("specularWeight", specularWeight_), on);
    ss->addUniform(new osg::Uniform("clipplane", clipPlane_), on);
    ss->addUniform(new osg::Uniform("lightDir", lightDir_), on);
    ss->addUniform(new osg::Uniform("isClipped", isClipped_), on);
    ss->addUniform(new osg::Uniform("backfaceBrightness", backfaceBrightness_), on);
    ss->addUniform(new osg::Uniform("shinyFrontfaces", shinyFrontfaces_), on);
    ss->addUniform(new osg::Uniform("shinyBackfaces", shinyBackfaces_), on);
    ss->setAttributeAndModes(program.get(), on);
}

void ShaderADS::detach() {
    osg::StateSet* ss = stateSet();
    ss->removeAttribute(osg::StateAttribute::PROGRAM);
    for (const char* name : kUniformNames)
        ss->removeUniform(name);
}

template <typename T>
int ShaderADS::setUniform(const char* name, const T& value, T& field) {
    osg::Uniform* uniform = stateSet()->getUniform(name);
    if (!uniform || !uniform->set(value)) return QelStatus::kShaderFailed;
    field = value;
    return 0;
}

int ShaderADS::setLightPower(float v) {
    return setUniform("lightPower", v, lightPower_);
}
int ShaderADS::setAmbientWeight(float v) {
    return setUniform("ambientWeight", v, ambientWeight_);
}
int ShaderADS::setDiffuseWeight(float v) {
    return setUniform("diffuseWeight", v, diffuseWeight_);
}
int ShaderADS::setSpecularWeight(float v) {
    return setUniform("specularWeight", v, specularWeight_);
}
int ShaderADS::setBackfaceBrightness(float v) {
    return setUniform("backfaceBrightness", v, backfaceBrightness_);
}
int ShaderADS::setShinyFrontfaces(int v) {
    return setUniform("shinyFrontfaces", v, shinyFrontfaces_);
}
int ShaderADS::setShinyBackfaces(int v) {
    return setUniform("shinyBackfaces", v, shinyBackfaces_);
}

int ShaderADS::setLightDir(float x, float y, float z) {
    return setUniform("lightDir", osg::Vec3f(x, y, z), lightDir_);
}

int ShaderADS::setClipPlane(float a, float b, float c, float d) {
    if (setUniform("clipplane", osg::Vec4f(a, b, c, d), clipPlane_) != 0)
        return QelStatus::kShaderFailed;
    return setUniform("isClipped", true, isClipped_);
}
