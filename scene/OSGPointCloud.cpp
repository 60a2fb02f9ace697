#include "OSGPointCloud.h"

#include <cfloat>
#include <cmath>

#include <osg/BoundingBox>
#include <osg/GLExtensions>
#include <osg/State>
#include <osg/StateSet>
#include <osg/VertexArrayState>

#include "ColourBytes.h"
#include "GraphicsDriver.h"
#include "ShaderPointSprite.h"

namespace {

// The invalid marker is +FLT_MAX; non-finite points are invalid too.
// Inline: a big cloud checks every point.
inline bool isValidXyz(float x, float y, float z) {
    return std::isfinite(x) && std::isfinite(y) && std::isfinite(z) && z != FLT_MAX;
}

inline bool isValidPoint(const QelVector3d& p) {
    return isValidXyz(p.x, p.y, p.z);
}

// A drawable's bounding box known in advance.
class KnownBounds : public osg::Drawable::ComputeBoundingBoxCallback {
public:
    explicit KnownBounds(const osg::BoundingBox& box) : box_(box) {}
    osg::BoundingBox computeBound(const osg::Drawable&) const override { return box_; }

private:
    osg::BoundingBox box_;
};

// Draws a geometry of client arrays in the shared vertex array state, whose
// caches must not be trusted here:
// - the array buffer binding is no part of a vertex array object, so one
//   drawn with its own object may have left its buffer bound while the
//   shared state believes none is: client pointers would then be read as
//   offsets into that buffer;
// - the state skips setting an array it believes set, by the array's
//   address: a new array made where a freed one was would be drawn from
//   the freed memory. So it forgets its arrays before and after.
// It is also left as the drawables after it expect: text draws without
// saying whether it uses buffer objects, and would take this one's "no".
class ClientArraysDraw : public osg::Drawable::DrawCallback {
public:
    void drawImplementation(osg::RenderInfo& info, const osg::Drawable* drawable) const override {
        osg::State& state = *info.getState();
        osg::VertexArrayState& arrays = *state.getCurrentVertexArrayState();
        osg::GLExtensions* gl = state.get<osg::GLExtensions>();
        gl->glBindBuffer(GL_ARRAY_BUFFER_ARB, 0);
        gl->glBindBuffer(GL_ELEMENT_ARRAY_BUFFER_ARB, 0);
        arrays.resetBufferObjectPointers();
        forget(arrays);
        drawable->drawImplementation(info);
        forget(arrays);
        arrays.setVertexBufferObjectSupported(state.useVertexBufferObject(true));
    }

private:
    static void forget(osg::VertexArrayState& arrays) {
        for (osg::VertexArrayState::ArrayDispatch* d :
             {arrays._vertexArray.get(), arrays._normalArray.get(), arrays._colorArray.get()})
            if (d) {
                d->array = nullptr;
                d->modifiedCount = 0xffffffff;
            }
    }
};

// From this many points a second thread pays off.
constexpr size_t kSecondThreadFrom = 100000;

}  // namespace

OSGPointCloud::OSGPointCloud(const QelPointCloud& cloud, RenderMode renderMode, ObjectId id,
                             bool useHeightColours)
    : OSGData(id, ObjectKind::PointCloud, useHeightColours), colours_(new osg::Vec4ubArray) {
    renderMode_ = renderMode;
    build(cloud);
}

OSGPointCloud::OSGPointCloud(const QelPointCloud& cloud, RenderMode renderMode, ObjectId id,
                             bool useHeightColours, OSGPointCloud& previous)
    : OSGData(id, ObjectKind::PointCloud, useHeightColours), colours_(new osg::Vec4ubArray) {
    renderMode_ = renderMode;
    // The arrays keep their memory, and with hardware GL their buffer
    // objects: an array of unchanged size is written again in place.
    const size_t n = static_cast<size_t>(cloud.Length());
    if (previous.vertices_->size() == n) vertices_ = previous.vertices_;
    if (previous.colours_->size() == n) colours_ = previous.colours_;
    build(cloud);  // the points into the storage taken over
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
    if (cloud.IsValidColor()) ownColours_ = cloud.DeepCopyColors();
    const size_t n = static_cast<size_t>(std::max(cloud.Length(), 0));
    if (n == 0) return;
    {
        // A big cloud's colour array is sized on a second thread while the
        // vertices are copied, so both fresh blocks of memory are faulted in
        // at once. Without a thread to spare, it is sized when coloured.
        std::future<void> sizing;
        if (n >= kSecondThreadFrom && colours_->size() != n)
            sizing = startBeside([this, n] { colours_->resize(n); });
        fillVertices(cloud);
        if (sizing.valid()) sizing.get();
    }
    normals_->push_back(osg::Vec3(0, 0, 1));
    // Software GL reads client arrays where they are: no copy into buffer
    // objects before the first frame.
    if (GraphicsDriver::isSoftware()) {
        geometry_->setUseVertexBufferObjects(false);
        geometry_->setUseVertexArrayObject(false);
        geometry_->setDrawCallback(new ClientArraysDraw);
    }
    geometry_->setVertexArray(vertices_.get());
    geometry_->setColorArray(colours_.get(), osg::Array::BIND_PER_VERTEX);
    geometry_->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, static_cast<GLsizei>(n)));
    geometry_->setNormalArray(normals_.get(), osg::Array::BIND_OVERALL);
    // Points light the same per vertex as per fragment, at a fraction of the cost.
    geometry_->getOrCreateStateSet()->setDefine("QEL_POINTS");
    valid_ = 1;
}

OSGPointCloud::~OSGPointCloud() {
    if (spriteShader_) spriteShader_->detach();
}

struct OSGPointCloud::Scan {
    float lo[3] = {FLT_MAX, FLT_MAX, FLT_MAX}, hi[3] = {-FLT_MAX, -FLT_MAX, -FLT_MAX};
    std::vector<std::pair<size_t, QelVector3d>> invalid;
};

OSGPointCloud::Scan OSGPointCloud::gather(const QelVector3d* points, size_t from, size_t to) {
    Scan s;
    osg::Vec3* v = &vertices_->front();
    order_.forEach(from, to, [&](size_t i, size_t at) {
        const QelVector3d& p = points[i];
        if (!isValidPoint(p)) {
            s.invalid.emplace_back(i, p);
            v[at].set(0, 0, 0);
            return;
        }
        v[at].set(p.x, p.y, p.z);
        s.lo[0] = std::min(s.lo[0], p.x);
        s.hi[0] = std::max(s.hi[0], p.x);
        s.lo[1] = std::min(s.lo[1], p.y);
        s.hi[1] = std::max(s.hi[1], p.y);
        s.lo[2] = std::min(s.lo[2], p.z);
        s.hi[2] = std::max(s.hi[2], p.z);
    });
    return s;
}

void OSGPointCloud::fillVertices(const QelPointCloud& from) {
    const size_t n = static_cast<size_t>(from.Length());
    order_ = SliceOrder(n);
    if (vertices_->size() != n) {
        vertices_->clear();
        vertices_->resize(n);
    }
    vertices_->dirty();
    // One pass reads the points and writes them into their order: halves on
    // two threads.
    const QelVector3d* points = &from[0];
    std::future<Scan> second;
    if (n >= kSecondThreadFrom) {
        try {
            second = std::async(std::launch::async,
                                [this, points, n] { return gather(points, n / 2, n); });
        } catch (const std::system_error&) {
        }
    }
    Scan all = gather(points, 0, second.valid() ? n / 2 : n);
    if (second.valid()) {
        Scan upper = second.get();
        for (int k = 0; k < 3; ++k) {
            all.lo[k] = std::min(all.lo[k], upper.lo[k]);
            all.hi[k] = std::max(all.hi[k], upper.hi[k]);
        }
        all.invalid.insert(all.invalid.end(), upper.invalid.begin(), upper.invalid.end());
    }
    invalid_ = std::move(all.invalid);
    osg::BoundingBox box;
    if (all.lo[0] <= all.hi[0]) {
        box.set(all.lo[0], all.lo[1], all.lo[2], all.hi[0], all.hi[1], all.hi[2]);
        widenHeightRange(all.lo[2]);
        widenHeightRange(all.hi[2]);
    }
    if (!invalid_.empty()) box.expandBy(osg::Vec3(0, 0, 0));
    // The geometry's bound is the box found on the way: nothing walks the
    // vertices again for it, whichever points a frame draws.
    geometry_->setComputeBoundingBoxCallback(new KnownBounds(box));
    geometry_->dirtyBound();
}

QelVector3dArray OSGPointCloud::points() const {
    const size_t n = vertices_->size();
    QelVector3dArray out(static_cast<int>(n));
    if (n == 0) return out;
    const osg::Vec3* v = &vertices_->front();
    QelVector3d* to = &out[0];
    order_.forEach(
        0, n, [&](size_t i, size_t at) { to[i] = QelVector3d(v[at].x(), v[at].y(), v[at].z()); });
    for (const auto& [i, p] : invalid_)
        out[static_cast<int>(i)] = p;
    return out;
}

void OSGPointCloud::applyDefaultColours() {
    if (coloursLocked_) return;
    if (useHeightColours_ || ownColours_.IsEmpty() || !fitsVertices(ownColours_)) {
        applyColourMap(minZ_, maxZ_);
        return;
    }
    copyColours(*colours_, ownColours_, &order_);
    bindColours(colours_.get());
}

void OSGPointCloud::applyColourMap(double min, double max) {
    if (vertices_->empty()) return;
    colourByHeight(*colours_, min, max);
    bindColours(colours_.get());
}

bool OSGPointCloud::setColors(const QelColorArray& colours) {
    if (!fitsVertices(colours)) return false;
    applyAlpha(copyColours(*colours_, colours, &order_));
    bindColours(colours_.get());
    return true;
}

osg::Vec4 OSGPointCloud::colourAt(size_t i) const {
    const osg::Vec4ub& c =
        (*colours_)[colours_->size() == order_.size() ? order_.positionOf(i) : i];
    return ColourBytes::toVec4(c.r(), c.g(), c.b(), c.a());
}

bool OSGPointCloud::heightColoured() const {
    return OSGData::heightColoured() && (useHeightColours_ || ownColours_.IsEmpty());
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
    if (!order_.isIdentity() && slices <= order_.fineSlices()) {
        const auto [first, last] = order_.range(slices, from, to);
        geometry_->setPrimitiveSet(0, new osg::DrawArrays(GL_POINTS, static_cast<GLint>(first),
                                                          static_cast<GLsizei>(last - first)));
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
