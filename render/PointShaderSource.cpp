// The vertex shader shared by the point programs ("pointSprite" and
// "pointSurfel"); only the name of the radius uniform differs.
#include "NamedShaderPrograms.h"

std::string pointVertexSource(const char* radiusUniform) {
    const std::string radius(radiusUniform);
    return "#version 120\n"
           "uniform float " +
           radius +
           ";\n"
           "varying vec4 colour;\n"
           "void main()\n"
           "{\n"
           "    colour = gl_Color;\n"
           "    gl_Position = ftransform();\n"
           "    gl_PointSize = max(2.0 * " +
           radius +
           ", 1.0);\n"
           "}\n";
}
