#pragma once

#include <opencv2/core.hpp>
#include <osg/Geometry>
#include <osg/LOD>
#include <osg/MatrixTransform>
#include <vector>

#include "QelColorArray.h"
#include "QelRangeImage.h"

// Level of detail for a range image: picks the sampling step, builds the
// decimated level images with maps back to full-resolution pixels, and
// hangs the levels' geometry under an osg::LOD node. There is one level;
// the per-level machinery is kept general.
class QelLOD {
public:
    explicit QelLOD(const QelRangeImage& image);
    virtual ~QelLOD() = default;

    // Stores the step (0 = automatic) and recomputes the switch distance.
    void setStep(int step);
    int step() const { return step_; }
    int effectiveStep() const;
    float switchDistance() const { return switchDistance_; }
    static int autoStep(double pixelCount);

    // 0, or 11100001 when the image has no pixels.
    long buildLevels(const QelRangeImage& image, std::vector<QelRangeImage>& levelImages,
                     std::vector<cv::Mat>& columnMaps, std::vector<cv::Mat>& rowMaps) const;
    // The colours of each level, picked like the samples; empty when the
    // colours do not cover the image or have 2 channels.
    void decimateColours(const QelColorArray& colours, std::vector<QelColorArray>& perLevel) const;
    // 0, or 11100027 when there are no levels or a child cannot be added.
    long assemble(const std::vector<osg::ref_ptr<osg::Geometry>>& geometries,
                  const std::vector<osg::ref_ptr<osg::MatrixTransform>>& transforms);
    osg::LOD* node() const { return lod_.get(); }

private:
    osg::ref_ptr<osg::LOD> lod_;
    QelRangeImage source_;
    float switchDistance_ = 0.0f;
    int step_ = 0;
};
