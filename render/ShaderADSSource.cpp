// GLSL of the lighting program. No version line: the sources use the
// fixed-function inputs of the compatibility profile.
#include "ShaderADS.h"

const char* const ShaderADS::kVertexSource = R"(
varying vec4 exColor;
varying vec3 exNormal_view;
varying vec3 exPosition_view;
varying vec3 exPosition_proj;

void main()
{
    exColor = vec4(gl_Color);
    exNormal_view = gl_NormalMatrix * gl_Normal;
    vec4 posView = gl_ModelViewMatrix * gl_Vertex;
    exPosition_view = posView.xyz;
    // The model-space vertex: the clip plane is given in the data's own
    // coordinates.
    exPosition_proj = gl_Vertex.xyz;
    gl_Position = gl_ProjectionMatrix * posView;
}
)";

const char* const ShaderADS::kFragmentSource = R"(
uniform float lightPower;
uniform float ambientWeight;
uniform float diffuseWeight;
uniform float specularWeight;
uniform vec4 clipplane;
uniform vec3 lightDir;
uniform bool isClipped;
uniform float backfaceBrightness;
uniform int shinyFrontfaces;
uniform int shinyBackfaces;

varying vec4 exColor;
varying vec3 exNormal_view;
varying vec3 exPosition_view;
varying vec3 exPosition_proj;

void main()
{
    // Keep the positive side of the plane Ax+By+Cz+D=0.
    if (isClipped) {
        float res = dot(clipplane.xyz, exPosition_proj) + clipplane.w;
        if (res < 0.0)
            discard;
    }

    vec3 light_dir = normalize(lightDir);
    vec3 view_dir = normalize(-exPosition_view);  // the eye sits at the origin
    vec3 N = exNormal_view;
    vec3 colour = exColor.rgb;

    // A light falling on the back lights it as if the normal were flipped.
    float sideFactor = 1.0;
    bool useSpecular = (shinyFrontfaces == 1);
    float d = dot(-light_dir, N);
    if (d < 0.0) {
        d = -d;
        sideFactor = backfaceBrightness;
        useSpecular = (shinyBackfaces == 1);
    }

    vec3 rgb = ambientWeight * colour + diffuseWeight * d * colour;
    if (useSpecular) {
        vec3 halfVector = normalize(-light_dir + view_dir);
        vec3 specular = vec3(1.0) * pow(abs(dot(halfVector, N)), 32.0);
        rgb += specularWeight * specular;
    }

    // The specular weight always counts, lit or not, so brightness does not
    // jump where the specular term switches off.
    float weightSum = ambientWeight + diffuseWeight + specularWeight;
    gl_FragColor = vec4(lightPower * sideFactor * rgb / weightSum, exColor.a);
}
)";
