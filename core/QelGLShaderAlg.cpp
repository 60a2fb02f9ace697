#include "QelGLShaderAlg.h"

#include <osg/Shader>
#include <osg/Uniform>

#include "NamedShaderPrograms.h"
#include "StatusCodes.h"

QelGLShaderAlg::QelGLShaderAlg(osg::ref_ptr<osg::StateSet>& stateSet, std::string& name)
    : stateSet_(stateSet), name_(name) {
    install();
}

long QelGLShaderAlg::setStateSet(osg::ref_ptr<osg::StateSet>& stateSet, std::string& name) {
    if (stateSet_.valid() && stateSet_ != stateSet) removeFromStateSet();
    stateSet_ = stateSet;
    name_ = name;
    return install();
}

long QelGLShaderAlg::install() {
    ready_ = false;
    const NamedShaderProgram* named = findNamedShaderProgram(name_);
    if (!named || !stateSet_.valid()) return QelStatus::kShaderFailed;
    if (!program_.valid() || program_->getName() != name_) {
        program_ = new osg::Program;
        program_->setName(name_);
        program_->addShader(new osg::Shader(osg::Shader::VERTEX, named->vertexSource.c_str()));
        program_->addShader(new osg::Shader(osg::Shader::FRAGMENT, named->fragmentSource.c_str()));
    }
    named->install(*stateSet_);
    stateSet_->setAttributeAndModes(program_.get(), osg::StateAttribute::ON);
    ready_ = true;
    return 0;
}

void QelGLShaderAlg::removeFromStateSet() {
    if (!stateSet_.valid()) return;
    stateSet_->removeAttribute(osg::StateAttribute::PROGRAM);
    if (const NamedShaderProgram* named = findNamedShaderProgram(name_)) named->remove(*stateSet_);
}

long QelGLShaderAlg::changeUniformValue(std::string& name, std::vector<float>& values) {
    if (!ready_ || !stateSet_.valid()) return QelStatus::kShaderFailed;
    osg::Uniform* uniform = stateSet_->getUniform(name);
    if (!uniform) return QelStatus::kShaderFailed;
    bool ok = false;
    switch (values.size()) {
        case 1:
            ok = uniform->set(values[0]);
            break;
        case 3:
            ok = uniform->set(osg::Vec3f(values[0], values[1], values[2]));
            break;
        case 4:
            ok = uniform->set(osg::Vec4f(values[0], values[1], values[2], values[3]));
            break;
        default:
            break;
    }
    return ok ? 0 : -1;
}
