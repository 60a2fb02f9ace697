// The vertex shader shared by the point programs ("pointSprite" and
// "pointSurfel"); only the name of the radius uniform differs.
#include "NamedShaderPrograms.h"

std::string pointVertexSource(const char* radiusUniform) {
    const std::string radius(radiusUniform);
    return "#version 120\n"
           "uniform float " +
           radius +
           ";\n"
           "uniform float qel_pixelRatio;\n"  // device pixels per logical pixel
           "varying vec4 colour;\n"
           "void main()\n"
           "{\n"
           "    colour = gl_Color;\n"
           "    gl_Position = ftransform();\n"
           "    gl_PointSize = max(2.0 * qel_pixelRatio * " +
           radius +
           ", 1.0);\n"
           "}\n";
}
