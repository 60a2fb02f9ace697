// GLSL of the cube axis's lines: the fixed-function inputs of the
// compatibility profile, and the same clip plane test as the lighting
// program, on the box's world coordinates.
#include "QelCubeAxis3d.h"

const char* const QelCubeAxis3d::kVertexSource = R"(
uniform vec4 clipplane;
varying float planeSide;
void main()
{
    gl_Position = ftransform();
    gl_FrontColor = gl_Color;
    planeSide = dot(clipplane.xyz, gl_Vertex.xyz) + clipplane.w;
}
)";

const char* const QelCubeAxis3d::kFragmentSource = R"(
uniform bool isClipped;
varying float planeSide;
void main()
{
    if (isClipped && planeSide < 0.0) discard;
    gl_FragColor = gl_Color;
}
)";
