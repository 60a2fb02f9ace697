#include "ShaderBase.h"

#include <osg/Node>
#include <osg/StateSet>

#include "QelGLShaderAlg.h"

ShaderBase::~ShaderBase() {
    delete shaderAlg_;
}

osg::StateSet* ShaderBase::stateSet() const {
    return node_->getOrCreateStateSet();
}

void ShaderBase::detach() {
    stateSet()->removeAttribute(osg::StateAttribute::PROGRAM);
}

bool ShaderBase::isReady() const {
    return shaderAlg_ && shaderAlg_->isReady();
}
