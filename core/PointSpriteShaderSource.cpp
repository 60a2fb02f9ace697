// "pointSprite": every point is drawn as a lit sphere impostor of radius
// sphere_radius pixels, lit from the direction eLightPos (eye coordinates).
#include "NamedShaderPrograms.h"

const char* const kPointSpriteFragmentSource = R"(#version 120
uniform vec3 eLightPos;
varying vec4 colour;
void main()
{
    vec2 p = gl_PointCoord * 2.0 - 1.0;
    float r2 = dot(p, p);
    if (r2 > 1.0)
        discard;
    vec3 n = vec3(p.x, -p.y, sqrt(1.0 - r2));  // the sphere's normal, facing the eye
    vec3 l = normalize(eLightPos);
    float diffuse = max(dot(n, l), 0.0);
    float specular = pow(max(dot(n, normalize(l + vec3(0.0, 0.0, 1.0))), 0.0), 32.0);
    gl_FragColor = vec4(colour.rgb * (0.25 + 0.75 * diffuse) + vec3(0.35 * specular), colour.a);
}
)";
