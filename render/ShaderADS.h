#pragma once

#include <osg/Vec3f>
#include <osg/Vec4f>

#include "ShaderBase.h"

// Ambient, diffuse and specular lighting with an optional clip plane given
// in the data's own coordinates. Setters return 0, or -1 while the program
// is not attached (the value is then not taken).
class ShaderADS : public ShaderBase {
public:
    explicit ShaderADS(osg::Node* node);

    bool create() override { return true; }
    void attach() override;
    void detach() override;

    int setLightPower(float value);
    int setAmbientWeight(float value);
    int setDiffuseWeight(float value);
    int setSpecularWeight(float value);
    int setBackfaceBrightness(float value);
    int setShinyFrontfaces(int value);
    int setShinyBackfaces(int value);
    int setLightDir(float x, float y, float z);
    // Keeps the half-space A x + B y + C z + D >= 0 and turns clipping on.
    int setClipPlane(float a, float b, float c, float d);

    float lightPower() const { return lightPower_; }
    float ambientWeight() const { return ambientWeight_; }
    float diffuseWeight() const { return diffuseWeight_; }
    float specularWeight() const { return specularWeight_; }
    const osg::Vec4f& clipPlane() const { return clipPlane_; }
    const osg::Vec3f& lightDir() const { return lightDir_; }
    bool isClipped() const { return isClipped_; }

    // The GLSL sources (no version line; fixed-function inputs).
    static const char* const kVertexSource;
    static const char* const kFragmentSource;

private:
    template <typename T>
    int setUniform(const char* name, const T& value, T& field);

    float lightPower_ = 1.0f;
    float ambientWeight_ = 0.1f;
    float diffuseWeight_ = 0.5f;
    float specularWeight_ = 0.6f;
    osg::Vec4f clipPlane_{0, 0, 0, 0};
    osg::Vec3f lightDir_{0, 0, -1};
    bool isClipped_ = false;
    float backfaceBrightness_ = 1.0f;
    int shinyFrontfaces_ = 1;
    int shinyBackfaces_ = 1;
};
