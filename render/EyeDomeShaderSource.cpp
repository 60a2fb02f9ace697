// The eye-dome lighting programs: a triangle that covers the view, the
// shade of each pixel from its neighbours' depth, and the picture
// multiplied by the shade.
#include "EyeDomeShaderSource.h"

const char* const kEyeDomeVertexSource = R"(#version 120
void main()
{
    gl_Position = vec4(gl_Vertex.xy, 0.0, 1.0);
}
)";

// Depth as the eye sees it: log2 of the distance in a perspective view (a
// step reads the same near and far), the distance over the scene's depth
// in an orthographic one (where nothing shrinks with distance), both
// scaled to match at the middle of the scene. The shade follows the
// mean of how far the four neighbours lie in front: exp(-300 strength
// mean(max(0, d - dn))).
const char* const kEyeDomeShadeSource = R"(#version 120
uniform sampler2D depthMap;
uniform vec2 viewSize;
uniform float shadeScale;
uniform vec2 nearFar;
uniform bool orthographic;
uniform float depthScale;
uniform float strength;
uniform float radius;

float eyeDepth(vec2 pixel)
{
    float d = texture2D(depthMap, pixel / viewSize).r;
    float n = nearFar.x, f = nearFar.y;
    if (orthographic)
        return (n + d * (f - n)) / (depthScale * 0.6931472);
    return log2(n * f / (f - d * (f - n)));
}

void main()
{
    vec2 pixel = floor(gl_FragCoord.xy) * shadeScale + 0.5;
    float here = eyeDepth(pixel);
    float sum = max(0.0, here - eyeDepth(pixel + vec2(radius, 0.0)))
              + max(0.0, here - eyeDepth(pixel - vec2(radius, 0.0)))
              + max(0.0, here - eyeDepth(pixel + vec2(0.0, radius)))
              + max(0.0, here - eyeDepth(pixel - vec2(0.0, radius)));
    float shade = exp(-300.0 * strength * sum * 0.25);
    gl_FragColor = vec4(shade, shade, shade, 1.0);
}
)";

const char* const kEyeDomeCompositeSource = R"(#version 120
uniform sampler2D shadeMap;
uniform vec2 viewOrigin;
uniform vec2 shadeSize;
void main()
{
    float shade = texture2D(shadeMap, (gl_FragCoord.xy - viewOrigin) / shadeSize).r;
    gl_FragColor = vec4(shade, shade, shade, 1.0);
}
)";
