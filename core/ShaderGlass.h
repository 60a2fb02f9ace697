#pragma once

#include "ShaderNamedProgram.h"

// The "glass" program: a transparent tinted surface with two specular lobes.
class ShaderGlass : public ShaderNamedProgram {
public:
    explicit ShaderGlass(osg::Node* node) : ShaderNamedProgram(node, "glass") {}

    void setGlassColor(float r, float g, float b, float a) {
        setUniformValues("GlassColor", {r, g, b, a});
    }
    void setLightPosition(float x, float y, float z) {
        setUniformValues("LightPosition", {x, y, z});
    }
    void setSpecularColor1(float r, float g, float b, float a) {
        setUniformValues("SpecularColor1", {r, g, b, a});
    }
    void setSpecularColor2(float r, float g, float b, float a) {
        setUniformValues("SpecularColor2", {r, g, b, a});
    }
    void setSpecularFactor1(float f) { setUniformValues("SpecularFactor1", {f}); }
    void setSpecularFactor2(float f) { setUniformValues("SpecularFactor2", {f}); }
};
