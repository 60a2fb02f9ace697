#pragma once

#include "ShaderNamedProgram.h"

// The "pointSprite" program: points drawn as lit sphere impostors.
class ShaderPointSprite : public ShaderNamedProgram {
public:
    explicit ShaderPointSprite(osg::Node* node) : ShaderNamedProgram(node, "pointSprite") {}

    void setLightPosition(float x, float y, float z) { setUniformValues("eLightPos", {x, y, z}); }
    void setSphereRadius(float r) { setUniformValues("sphere_radius", {r}); }
};
