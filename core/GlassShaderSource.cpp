// "glass": a transparent surface tinted by GlassColor, lit from
// LightPosition (eye coordinates) with two specular lobes, the sharp one
// (SpecularColor1, SpecularFactor1) and a broad sheen (SpecularColor2,
// SpecularFactor2), and more opaque at grazing angles.
#include "NamedShaderPrograms.h"

const char* const kGlassVertexSource = R"(#version 120
varying vec3 normalView;
varying vec3 positionView;
void main()
{
    normalView = gl_NormalMatrix * gl_Normal;
    vec4 p = gl_ModelViewMatrix * gl_Vertex;
    positionView = p.xyz;
    gl_Position = gl_ProjectionMatrix * p;
}
)";

const char* const kGlassFragmentSource = R"(#version 120
uniform vec4 GlassColor;
uniform vec3 LightPosition;
uniform vec4 SpecularColor1;
uniform vec4 SpecularColor2;
uniform float SpecularFactor1;
uniform float SpecularFactor2;
varying vec3 normalView;
varying vec3 positionView;
void main()
{
    vec3 n = normalize(normalView);
    vec3 v = normalize(-positionView);
    if (dot(n, v) < 0.0)
        n = -n;  // both sides are glass
    vec3 l = normalize(LightPosition - positionView);
    float rv = max(dot(reflect(-l, n), v), 0.0);
    float lobe1 = pow(rv, max(SpecularFactor1, 1.0));
    float lobe2 = pow(rv, max(SpecularFactor2, 1.0));
    float diffuse = max(dot(n, l), 0.0);
    float fresnel = pow(1.0 - max(dot(n, v), 0.0), 3.0);
    vec3 rgb = GlassColor.rgb * (0.6 + 0.4 * diffuse) + SpecularColor1.rgb * lobe1 +
               0.5 * SpecularColor2.rgb * lobe2;
    float alpha = GlassColor.a + 0.5 * fresnel + SpecularColor1.a * lobe1;
    gl_FragColor = vec4(min(rgb, vec3(1.0)), clamp(alpha, 0.0, 1.0));
}
)";
