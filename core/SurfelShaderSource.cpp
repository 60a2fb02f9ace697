// "pointSurfel": every point is drawn as a round splat of radius
// surfel_radius pixels, slightly darker towards its rim so that
// overlapping splats stay distinguishable.
#include "NamedShaderPrograms.h"

const char* const kSurfelFragmentSource = R"(#version 120
varying vec4 colour;
void main()
{
    vec2 p = gl_PointCoord * 2.0 - 1.0;
    float r2 = dot(p, p);
    if (r2 > 1.0)
        discard;
    gl_FragColor = vec4(colour.rgb * (1.0 - 0.3 * r2), colour.a);
}
)";
