#pragma once

#include <memory>
#include <opencv2/core.hpp>
#include <osg/LOD>
#include <osg/PolygonMode>
#include <vector>

#include "OSGData.h"
#include "QelLOD.h"
#include "QelRangeImage.h"
#include "QelVector3dArray.h"
#include "RangePixelReader.h"

// A range image as points, a wireframe or filled triangles, decimated by
// QelLOD and coloured by the height map or by its own colours. The row
// index feeds x and the column index y. Invalid samples make no vertex and
// no triangle.
class OSGRangeImage : public OSGData {
public:
    OSGRangeImage(const QelRangeImage& image, RenderMode renderMode, ObjectId id, int step,
                  bool useHeightColours);

    void setRenderMode(RenderMode mode) override;
    bool setColors(const QelColorArray& colours) override;
    void setPointSize(float size) override;
    void setLineWidth(float width) override;
    osg::Node* node() const override { return lodNode_.get(); }
    osg::Vec3Array* vertexArray() const override;
    osg::Vec4Array* colorArray() const override;
    void applyColourMap(double min, double max) override;
    void setUseHeightColours(bool on) override;
    bool heightColoured() const override;
    void setVisible(bool visible) override;
    void setMatrix(const osg::Matrix& matrix) override;

    int levelCount() const { return static_cast<int>(levelImages_.size()); }
    const QelRangeImage& levelImage(int level) const { return levelImages_[level]; }
    osg::Geometry* levelGeometry(int level) const { return levelGeometries_[level].get(); }
    const QelLOD& lod() const { return *lodBuilder_; }
    const QelRangeImage& source() const { return source_; }
    // The valid samples of the whole image as points, and the pixel index
    // (row * width + column) of each.
    QelVector3dArray sourcePoints(std::vector<long long>* pixels) const;

private:
    // Places samples of one image in space: the grid's resolutions and
    // offsets, or its camera model (type 1).
    struct SamplePlacer {
        explicit SamplePlacer(const QelRangeImage& image);
        osg::Vec3 operator()(long long index, float row, float column) const;
        const QelRangeImage& image;
        RangePixelReader reader;
        bool floating;
        float camera[4] = {0, 0, 1, 1};
    };

    long buildGeometry();
    bool buildVertices(int level);
    osg::ref_ptr<osg::DrawElementsUInt> buildTriangles(int level) const;
    long buildColours();
    void applyLevelColours(const QelColorArray& full);

    osg::ref_ptr<osg::LOD> lodNode_;
    std::vector<QelRangeImage> levelImages_;
    std::vector<osg::ref_ptr<osg::Geometry>> levelGeometries_;
    std::vector<osg::ref_ptr<osg::MatrixTransform>> levelTransforms_;
    std::vector<osg::ref_ptr<osg::Vec3Array>> levelVertices_;
    std::vector<osg::ref_ptr<osg::Vec4Array>> levelColours_;
    std::vector<std::vector<unsigned int>> levelIndexMaps_;
    std::vector<cv::Mat> columnMaps_;
    std::vector<cv::Mat> rowMaps_;
    std::vector<osg::ref_ptr<osg::DrawElementsUInt>> levelTriangles_;
    osg::ref_ptr<osg::PolygonMode> polygonMode_;
    QelRangeImage source_;
    std::unique_ptr<QelLOD> lodBuilder_;
};
