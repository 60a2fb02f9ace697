#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "OSGData.h"
#include "QelPointCloud.h"
#include "SliceOrder.h"

class ShaderPointSprite;

// A point cloud as point geometry. Invalid points keep their slot at
// (0, 0, 0); they take no part in the height range. The vertices are the
// cloud's own copy: the points as given come back from them and the few
// invalid ones kept aside. A big cloud's vertices are stored in slice
// order (see SliceOrder), so that a sample of it is one range to draw;
// colours follow the vertices, and pointIndexOf turns a vertex back into
// the host's point index.
class OSGPointCloud : public OSGData {
public:
    OSGPointCloud(const QelPointCloud& cloud, RenderMode renderMode, ObjectId id,
                  bool useHeightColours);
    // Builds the cloud into the storage of 'previous', a cloud it replaces
    // (see canReuse): the arrays are overwritten instead of allocated, and
    // with hardware GL the next frame updates their buffer objects in place.
    // Everything else is new, as in a cloud built afresh. 'previous' is left
    // to be discarded.
    OSGPointCloud(const QelPointCloud& cloud, RenderMode renderMode, ObjectId id,
                  bool useHeightColours, OSGPointCloud& previous);
    ~OSGPointCloud() override;

    // Whether 'previous' can lend its storage to a cloud of this many points.
    static bool canReuse(const OSGData& previous, int points);
    // The box the vertices of a cloud span (invalid points sit at the origin).
    static osg::BoundingBox extentOf(const QelPointCloud& cloud);

    void setRenderMode(RenderMode) override {}
    void setPointSize(float size) override;
    bool setColors(const QelColorArray& colours) override;
    void applyColourMap(double min, double max) override;
    void applyDefaultColours() override;
    size_t colourCount() const override { return colours_->size(); }
    osg::Vec4 colourAt(size_t i) const override;
    void setUseHeightColours(bool on) override;
    bool heightColoured() const override;

    // Over budget, draws the first of k slices (k = points / budget rounded
    // up): an even sample of a scan's rows or of a cloud in any order.
    void setDrawBudget(unsigned int budget) override;
    // k = points / budget slices, each an even sample, and any run of slices
    // from the first one too. In slice order they are fine slices in runs;
    // a cloud in its own order, or more slices than fine slices, takes every
    // k-th vertex from the j-th.
    unsigned int sliceCount(unsigned int budget) const override;
    void setDrawSlices(unsigned int slices, unsigned int from, unsigned int to) override;

    // 0 plain points, anything else lit sphere sprites.
    void setPointRenderMode(PointRenderMode mode);
    PointRenderMode pointRenderMode() const { return pointRenderMode_; }
    // The points as given, invalid ones included.
    QelVector3dArray points() const;
    size_t pointIndexOf(size_t vertex) const override { return order_.pointAt(vertex); }
    const SliceOrder& order() const { return order_; }
    // The cloud's own colours; empty when it has none.
    const QelColorArray& ownColours() const { return ownColours_; }

private:
    struct Scan;
    void build(const QelPointCloud& cloud);
    // The points copied into their order, scanned on the way for the extent
    // and the height range, invalid ones moved to the origin and kept aside.
    void fillVertices(const QelPointCloud& from);
    Scan gather(const QelVector3d* points, size_t from, size_t to);

    QelColorArray ownColours_;
    // Invalid points by index, as given.
    std::vector<std::pair<size_t, QelVector3d>> invalid_;
    SliceOrder order_;
    // Normalised bytes, a quarter of the memory and upload of floats; the
    // base's float array stays empty.
    osg::ref_ptr<osg::Vec4ubArray> colours_;
    std::unique_ptr<ShaderPointSprite> spriteShader_;
    osg::ref_ptr<osg::PrimitiveSet> allPoints_;
    osg::ref_ptr<osg::DrawElementsUInt> sample_;
    // What is drawn: slices [from_, to_) of slices_ (all when slices_ is 0).
    unsigned int slices_ = 0, from_ = 0, to_ = 0;
    PointRenderMode pointRenderMode_ = PointRenderMode::Plain;
};
