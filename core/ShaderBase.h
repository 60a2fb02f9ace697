#pragma once

namespace osg {
class Node;
class StateSet;
}  // namespace osg
class QelGLShaderAlg;

// A GLSL program attached to the state set of one scene node.
class ShaderBase {
public:
    explicit ShaderBase(osg::Node* node) : node_(node) {}
    virtual ~ShaderBase();
    ShaderBase(const ShaderBase&) = delete;
    ShaderBase& operator=(const ShaderBase&) = delete;

    virtual bool create() = 0;
    virtual void attach() = 0;
    // Removes the program from the node's state set.
    virtual void detach();
    // Whether the named-program provider is ready (false without one).
    virtual bool isReady() const;

protected:
    osg::StateSet* stateSet() const;

    osg::Node* node_;                      // not owned
    QelGLShaderAlg* shaderAlg_ = nullptr;  // owned, for named programs
};
