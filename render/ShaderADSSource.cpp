// GLSL of the lighting program. No version line: the sources use the
// fixed-function inputs of the compatibility profile.
//
// The shading is one function used by both stages. Meshes and images shade
// per fragment. Point clouds define QEL_POINTS on their state set, which
// selects a variant of the same program: a point's fragments all share its
// vertex's values, so shading the vertex gives the same picture, and with a
// single varying the rasteriser sets up one colour per point instead of
// four vectors (most of a frame's cost for millions of points in software).
#include <string>

#include "ShaderADS.h"

namespace {

const char* const kShading = R"(#pragma import_defines(QEL_POINTS)
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
#ifndef QEL_POINTS
varying vec3 exNormal_view;
varying vec3 exPosition_view;
varying vec3 exPosition_proj;
#endif

// Whether a model-space point lies on the kept (positive) side of the plane
// Ax+By+Cz+D=0.
bool kept(vec3 position)
{
    return !isClipped || dot(clipplane.xyz, position) + clipplane.w >= 0.0;
}

vec4 shade(vec4 colourIn, vec3 N, vec3 positionView)
{
    vec3 light_dir = normalize(lightDir);

    // A light falling on the back lights it as if the normal were flipped.
    float d = -dot(light_dir, N);
    bool back = d < 0.0;
    float sideFactor = back ? backfaceBrightness : 1.0;
    bool useSpecular = (back ? shinyBackfaces : shinyFrontfaces) == 1;

    vec3 rgb = (ambientWeight + diffuseWeight * abs(d)) * colourIn.rgb;
    if (useSpecular) {
        // The half vector between the light and the eye (at the origin),
        // normalised inside the dot product.
        vec3 halfVector = normalize(-positionView) - light_dir;
        float x = abs(dot(halfVector, N)) * inversesqrt(dot(halfVector, halfVector));
        // x^32 by squaring: exact where pow goes through exp2 and log2.
        x *= x;
        x *= x;
        x *= x;
        x *= x;
        rgb += vec3(specularWeight * x * x);
    }

    // The specular weight always counts, lit or not, so brightness does not
    // jump where the specular term switches off.
    float weightSum = ambientWeight + diffuseWeight + specularWeight;
    return vec4((lightPower * sideFactor / weightSum) * rgb, colourIn.a);
}
)";

// Defined before the two sources below, which point into them.
const std::string kVertex = std::string(kShading) + R"(
void main()
{
    vec4 posView = gl_ModelViewMatrix * gl_Vertex;
    gl_Position = gl_ProjectionMatrix * posView;
#ifdef QEL_POINTS
    // A point cloud's normal is +z for every point: its view-space normal is
    // the normal matrix's last column, the same for the whole draw, and no
    // normal is fetched per vertex.
    exColor = shade(vec4(gl_Color), gl_NormalMatrix[2], posView.xyz);
    // A clipped point goes outside the view volume instead of being
    // discarded fragment by fragment.
    if (!kept(gl_Vertex.xyz))
        gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
#else
    exColor = vec4(gl_Color);
    exNormal_view = gl_NormalMatrix * gl_Normal;
    exPosition_view = posView.xyz;
    // The model-space vertex: the clip plane is given in the data's own
    // coordinates.
    exPosition_proj = gl_Vertex.xyz;
#endif
}
)";

const std::string kFragment = std::string(kShading) + R"(
void main()
{
#ifdef QEL_POINTS
    gl_FragColor = exColor;
#else
    if (!kept(exPosition_proj))
        discard;
    gl_FragColor = shade(exColor, exNormal_view, exPosition_view);
#endif
}
)";

}  // namespace

const char* const ShaderADS::kVertexSource = kVertex.c_str();
const char* const ShaderADS::kFragmentSource = kFragment.c_str();
