#include "OSGPointCloud.h"

#include <cfloat>
#include <cmath>

#include <osg/BoundingBox>
#include <osg/StateSet>

#include "ColourBytes.h"
#include "ShaderPointSprite.h"

namespace {

// The invalid marker is +FLT_MAX; non-finite points are invalid too.
bool isValidPoint(const QelVector3d& p) {
    return !(std::fabs(p.z - FLT_MAX) < 1e-8) && p.IsValid();
}

// A drawable's bounding box known in advance.
class KnownBounds : public osg::Drawable::ComputeBoundingBoxCallback {
public:
    explicit KnownBounds(const osg::BoundingBox& box) : box_(box) {}
    osg::BoundingBox computeBound(const osg::Drawable&) const override { return box_; }

private:
    osg::BoundingBox box_;
};

// From this many points a thread of its own for the source copy pays off.
constexpr int kCopyAsideFrom = 100000;

}  // namespace

OSGPointCloud::OSGPointCloud(const QelPointCloud& cloud, RenderMode renderMode, ObjectId id,
                             bool useHeightColours)
    : OSGData(id, ObjectKind::PointCloud, useHeightColours), colours_(new osg::Vec4ubArray) {
    renderMode_ = renderMode;
    build(cloud);
}

OSGPointCloud::OSGPointCloud(const QelPointCloud& cloud, RenderMode renderMode, ObjectId id,
                             bool useHeightColours, OSGPointCloud& previous)
    : OSGData(id, ObjectKind::PointCloud, useHeightColours),
      source_(std::move(previous.source_)),
      colours_(new osg::Vec4ubArray) {
    renderMode_ = renderMode;
    // The arrays keep their buffer object: an array of unchanged size is
    // sent to it again without reallocating it.
    const size_t n = static_cast<size_t>(cloud.Length());
    if (previous.vertices_->size() == n) vertices_ = previous.vertices_;
    if (previous.colours_->size() == n) colours_ = previous.colours_;
    build(cloud);  // the source into the storage taken over
}

bool OSGPointCloud::canReuse(const OSGData& previous, int points) {
    return previous.kind() == ObjectKind::PointCloud && points > 0 &&
           previous.vertexArray()->size() == static_cast<size_t>(points);
}

osg::BoundingBox OSGPointCloud::extentOf(const QelPointCloud& cloud) {
    osg::BoundingBox box;
    for (int i = 0; i < cloud.Length(); ++i) {
        const QelVector3d& p = cloud[i];
        if (isValidPoint(p))
            box.expandBy(p.x, p.y, p.z);
        else
            box.expandBy(0, 0, 0);
    }
    return box;
}

void OSGPointCloud::build(const QelPointCloud& cloud) {
    colours_->setNormalize(true);
    {
        // A big cloud's owned copy is made on a second thread while the
        // vertices are built from the host's cloud: both only read it and
        // write apart. That thread then also sizes the colour array, so its
        // fresh memory is faulted in before the colours are written. The
        // copy is waited for even when the vertices fail. Without a thread
        // to spare, it is made here.
        std::future<void> copy;
        if (cloud.Length() >= kCopyAsideFrom) {
            const size_t n = static_cast<size_t>(cloud.Length());
            copy = startBeside([&, n] {
                source_ = cloud;
                if (colours_->size() != n) colours_->resize(n);
            });
        }
        if (!copy.valid()) source_ = cloud;
        if (cloud.Length() > 0) fillVertices(cloud);
        if (copy.valid()) copy.get();
    }
    if (source_.Length() == 0) return;
    normals_->push_back(osg::Vec3(0, 0, 1));
    geometry_->setVertexArray(vertices_.get());
    geometry_->setColorArray(colours_.get(), osg::Array::BIND_PER_VERTEX);
    geometry_->addPrimitiveSet(
        new osg::DrawArrays(GL_POINTS, 0, static_cast<GLsizei>(vertices_->size())));
    geometry_->setNormalArray(normals_.get(), osg::Array::BIND_OVERALL);
    // Points light the same per vertex as per fragment, at a fraction of the cost.
    geometry_->getOrCreateStateSet()->setDefine("QEL_POINTS");
    valid_ = 1;
}

OSGPointCloud::~OSGPointCloud() {
    if (spriteShader_) spriteShader_->detach();
}

void OSGPointCloud::fillVertices(const QelPointCloud& from) {
    osg::BoundingBox box;
    bool atOrigin = false;
    fillArray(*vertices_, static_cast<size_t>(from.Length()), [&](size_t i) {
        const QelVector3d& p = from[static_cast<int>(i)];
        if (!isValidPoint(p)) {
            atOrigin = true;
            return osg::Vec3(0, 0, 0);
        }
        widenHeightRange(p.z);
        const osg::Vec3 v(p.x, p.y, p.z);
        box.expandBy(v);
        return v;
    });
    if (atOrigin) box.expandBy(osg::Vec3(0, 0, 0));
    // The geometry's bound is the box found on the way: nothing walks the
    // vertices again for it, whichever points a frame draws.
    geometry_->setComputeBoundingBoxCallback(new KnownBounds(box));
    geometry_->dirtyBound();
}

osg::ref_ptr<osg::PrimitiveSet> OSGPointCloud::rebuildGeometry() {
    fillVertices(source_);
    return new osg::DrawArrays(GL_POINTS, 0, static_cast<GLsizei>(vertices_->size()));
}

void OSGPointCloud::applyDefaultColours() {
    if (coloursLocked_) return;
    const QelColorArray own = useHeightColours_ ? QelColorArray() : source_.DeepCopyColors();
    if (own.IsEmpty() || !fitsVertices(own)) {
        applyColourMap(minZ_, maxZ_);
        return;
    }
    copyColours(*colours_, own);
    bindColours(colours_.get());
}

void OSGPointCloud::applyColourMap(double min, double max) {
    if (vertices_->empty()) return;
    colourByHeight(*colours_, min, max);
    bindColours(colours_.get());
}

bool OSGPointCloud::setColors(const QelColorArray& colours) {
    if (!fitsVertices(colours)) return false;
    applyAlpha(copyColours(*colours_, colours));
    bindColours(colours_.get());
    return true;
}

osg::Vec4 OSGPointCloud::colourAt(size_t i) const {
    const osg::Vec4ub& c = (*colours_)[i];
    return ColourBytes::toVec4(c.r(), c.g(), c.b(), c.a());
}

bool OSGPointCloud::heightColoured() const {
    return OSGData::heightColoured() && (useHeightColours_ || !source_.IsValidColor());
}

void OSGPointCloud::setUseHeightColours(bool on) {
    useHeightColours_ = on;
    applyDefaultColours();
}

unsigned int OSGPointCloud::sliceCount(unsigned int budget) const {
    const size_t n = vertices_->size();
    return budget > 0 && n > budget ? static_cast<unsigned int>((n + budget - 1) / budget) : 1u;
}

void OSGPointCloud::setDrawBudget(unsigned int budget) {
    setDrawSlices(sliceCount(budget), 0, 1);
}

void OSGPointCloud::setDrawSlices(unsigned int slices, unsigned int from, unsigned int to) {
    const bool all = slices <= 1 || (from == 0 && to >= slices);
    if (all) slices = from = to = 0;
    if ((slices == slices_ && from == from_ && to == to_) || geometry_->getNumPrimitiveSets() == 0)
        return;
    if (slices_ == 0) allPoints_ = geometry_->getPrimitiveSet(0);
    slices_ = slices;
    from_ = from;
    to_ = to;
    if (all) {
        geometry_->setPrimitiveSet(0, allPoints_.get());
        return;
    }
    const size_t n = vertices_->size();
    sample_ = new osg::DrawElementsUInt(GL_POINTS);
    sample_->reserve((n / slices + 1) * (to - from));
    for (size_t base = 0; base < n; base += slices)
        for (size_t i = base + from; i < base + to && i < n; ++i)
            sample_->push_back(static_cast<unsigned int>(i));
    geometry_->setPrimitiveSet(0, sample_.get());
}

unsigned int OSGPointCloud::drawnCount() const {
    return geometry_->getNumPrimitiveSets() ? geometry_->getPrimitiveSet(0)->getNumIndices() : 0;
}

void OSGPointCloud::setPointSize(float size) {
    if (pointRenderMode_ == PointRenderMode::Plain) {
        OSGData::setPointSize(size);
        return;
    }
    pointSize_ = size;
    spriteShader_->setSphereRadius(size * 1.1f);
}

void OSGPointCloud::setPointRenderMode(PointRenderMode mode) {
    if (mode == pointRenderMode_) return;
    pointRenderMode_ = mode;
    if (!spriteShader_) spriteShader_ = std::make_unique<ShaderPointSprite>(root_.get());
    if (mode == PointRenderMode::Plain) {
        spriteShader_->detach();
        setPointSize(pointSize());
        return;
    }
    spriteShader_->attach();
    spriteShader_->setSphereRadius(pointSize() * 1.1f);
    spriteShader_->setLightPosition(0, 0, 1);
}
