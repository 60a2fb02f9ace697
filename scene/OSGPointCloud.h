#pragma once

#include <memory>

#include "OSGData.h"
#include "QelPointCloud.h"

class ShaderPointSprite;

// A point cloud as point geometry. Invalid points keep their slot at
// (0, 0, 0), so vertex indices equal point indices; they take no part in
// the height range.
class OSGPointCloud : public OSGData {
public:
    OSGPointCloud(const QelPointCloud& cloud, int renderMode, int id, bool useHeightColours);
    ~OSGPointCloud() override;

    void setRenderMode(int) override {}
    osg::ref_ptr<osg::PrimitiveSet> rebuildGeometry() override;
    void setPointSize(float size) override;
    void applyDefaultColours() override;
    void setUseHeightColours(bool on) override;
    bool heightColoured() const override;

    // Over budget, draws every k-th point (k = points / budget rounded up):
    // an even sample of a scan's rows or of a cloud in any order.
    void setDrawBudget(unsigned int budget) override;
    // Points drawn now.
    unsigned int drawnCount() const;

    // 0 plain points, anything else lit sphere sprites.
    void setPointRenderMode(int mode);
    int pointRenderMode() const { return pointRenderMode_; }
    const QelPointCloud& source() const { return source_; }

private:
    void fillVertices();

    QelPointCloud source_;
    std::unique_ptr<ShaderPointSprite> spriteShader_;
    osg::ref_ptr<osg::PrimitiveSet> allPoints_;
    osg::ref_ptr<osg::DrawElementsUInt> sample_;
    unsigned int budget_ = 0;
    int pointRenderMode_ = 0;
};
