#pragma once

#include <osg/PolygonMode>

#include "OSGData.h"
#include "QelImage.h"

// A 2D image shown as a relief: every sampled pixel becomes a vertex whose
// height is its grey value (x = row, y = column), coloured with its own
// colour, drawn as points, wireframe or faces.
class OSGImage : public OSGData {
public:
    OSGImage(const QelImage& image, RenderMode renderMode, ObjectId id, int step);

    void setStep(int step);
    int effectiveStep() const;
    void setRenderMode(RenderMode mode) override;
    osg::ref_ptr<osg::PrimitiveSet> rebuildGeometry() override;
    int rows() const { return rows_; }
    int columns() const { return columns_; }

private:
    void buildArrays();

    QelImage source_;
    int step_;
    osg::ref_ptr<osg::PolygonMode> polygonMode_;
    osg::ref_ptr<osg::PrimitiveSet> triangles_;
    int rows_ = 0;
    int columns_ = 0;
};
