#pragma once

#include "ShaderNamedProgram.h"

// The "pointSurfel" program: points drawn as round splats.
class ShaderSurfel : public ShaderNamedProgram {
public:
    explicit ShaderSurfel(osg::Node* node) : ShaderNamedProgram(node, "pointSurfel") {}

    void setSurfelRadius(float r) { setUniformValues("surfel_radius", {r}); }
};
