#pragma once

#include <osg/FrameBufferObject>
#include <osg/Geometry>
#include <osg/Program>
#include <osg/Texture2D>
#include <osg/Uniform>

// Eye-dome lighting as one drawable, drawn after the data and the shapes
// and before the overlays: it copies the view's depth into a texture,
// shades each pixel (into a texture of its own, at full or half
// resolution) by how far its four neighbours at 'radius' pixels lie in
// front of it, in log depth for a perspective view and in linear depth for
// an orthographic one, and multiplies the picture by that shade. Pixels of
// the background beside a silhouette darken too: a halo. The depth buffer
// is left as it was, so what is drawn after still hides behind the data.
class EyeDomePass : public osg::Geometry {
public:
    EyeDomePass();

    // strength > 0; radius in device pixels; scale 1 shades every pixel,
    // 2 one in each 2 x 2 block (while the camera moves).
    void setStrength(float strength) { strength_->set(strength); }
    void setRadius(float pixels) { radius_->set(pixels); }
    void setScale(int scale) { scale_ = scale; }

    // The sizes of the depth and the shade textures as last drawn, in
    // device pixels.
    int depthWidth() const { return depthWidth_; }
    int depthHeight() const { return depthHeight_; }
    int shadeWidth() const { return shadeWidth_; }
    int shadeHeight() const { return shadeHeight_; }

    void drawImplementation(osg::RenderInfo& renderInfo) const override;
    // Never culled, and no part of the scene's extent.
    osg::BoundingBox computeBoundingBox() const override { return osg::BoundingBox(); }

private:
    // Textures the size of the view (depth) and of the shaded grid.
    void fitTextures(int width, int height) const;
    // Points the shade program at the projection's depth.
    void setDepthMapping(const osg::Matrixd& projection) const;

    int scale_ = 1;
    mutable int depthWidth_ = 0, depthHeight_ = 0, shadeWidth_ = 0, shadeHeight_ = 0;
    mutable osg::ref_ptr<osg::Texture2D> depth_, shade_;
    mutable osg::ref_ptr<osg::FrameBufferObject> target_;
    osg::ref_ptr<osg::Program> shadeProgram_, compositeProgram_;
    osg::ref_ptr<osg::Uniform> strength_, radius_, nearFar_, orthographic_, depthScale_,
        shadeScale_, viewSize_, viewOrigin_, shadeSize_, depthMap_, shadeMap_;
};
