#pragma once

#include <string>

namespace osg {
class StateSet;
}

// The GLSL programs that QelGLShaderAlg installs by name.
struct NamedShaderProgram {
    const char* name;
    std::string vertexSource;
    std::string fragmentSource;
    // Adds the program's uniforms (with defaults) and render state.
    void (*install)(osg::StateSet& stateSet);
    // Removes the render state again (uniforms stay; they are inert).
    void (*remove)(osg::StateSet& stateSet);
};

// The program of that name, or null.
const NamedShaderProgram* findNamedShaderProgram(const std::string& name);

extern const char* const kGlassVertexSource;
extern const char* const kGlassFragmentSource;
extern const char* const kPointSpriteFragmentSource;
extern const char* const kSurfelFragmentSource;
// The vertex shader of both point programs: points as screen squares of
// twice the radius that the named uniform holds, in pixels.
std::string pointVertexSource(const char* radiusUniform);
