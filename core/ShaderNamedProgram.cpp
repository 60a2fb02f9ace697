#include "ShaderNamedProgram.h"

#include <osg/Node>

#include "QelGLShaderAlg.h"

ShaderNamedProgram::ShaderNamedProgram(osg::Node* node, const char* programName)
    : ShaderBase(node), programName_(programName) {}

bool ShaderNamedProgram::create() {
    if (shaderAlg_) return false;
    osg::ref_ptr<osg::StateSet> ss = stateSet();
    shaderAlg_ = new QelGLShaderAlg(ss, programName_);
    return shaderAlg_->isReady();
}

void ShaderNamedProgram::attach() {
    if (!shaderAlg_) {
        create();
        return;
    }
    osg::ref_ptr<osg::StateSet> ss = stateSet();
    shaderAlg_->setStateSet(ss, programName_);
}

void ShaderNamedProgram::detach() {
    if (shaderAlg_)
        shaderAlg_->removeFromStateSet();
    else
        ShaderBase::detach();
}

void ShaderNamedProgram::setUniformValues(const char* uniform, std::vector<float> values) {
    if (!shaderAlg_ || !shaderAlg_->isReady()) return;
    std::string name(uniform);
    shaderAlg_->changeUniformValue(name, values);
}
