#pragma once

#include <osg/Program>
#include <osg/StateSet>
#include <osg/ref_ptr>
#include <string>
#include <vector>

// Installs one of the named GLSL programs ("glass", "pointSprite",
// "pointSurfel") with its uniforms and render state on a state set, and
// changes its uniforms by name. Status values: 0 success, kShaderFailed.
class QelGLShaderAlg {
public:
    QelGLShaderAlg(osg::ref_ptr<osg::StateSet>& stateSet, std::string& name);

    // Installs the named program on another (or the same) state set.
    long setStateSet(osg::ref_ptr<osg::StateSet>& stateSet, std::string& name);
    // Sets a float, vec3 or vec4 uniform from 1, 3 or 4 values.
    long changeUniformValue(std::string& name, std::vector<float>& values);
    // Removes the program and the render state it installed.
    void removeFromStateSet();

    bool isReady() const { return ready_; }
    void getShaderName(std::string& name) const { name = name_; }
    void getStateSet(osg::ref_ptr<osg::StateSet>& stateSet) const { stateSet = stateSet_; }
    osg::Program* program() const { return program_.get(); }

private:
    long install();

    osg::ref_ptr<osg::StateSet> stateSet_;
    std::string name_;
    osg::ref_ptr<osg::Program> program_;
    bool ready_ = false;
};
