#include "OSGData.h"

#include <algorithm>
#include <cfloat>
#include <future>
#include <system_error>
#include <vector>

#include <osg/BlendFunc>

#include "ColorMapIndex.h"
#include "ColourBytes.h"
#include "NodeMasks.h"
#include "QelColorArray.h"
#include "QelLUTSetting.h"
#include "ScaledLineWidth.h"
#include "ScaledPoint.h"
#include "SliceOrder.h"

OSGData::OSGData(ObjectId id, ObjectKind kind, bool useHeightColours)
    : id_(id),
      root_(new osg::Geode),
      geometry_(new osg::Geometry),
      vertices_(new osg::Vec3Array),
      colors_(new osg::Vec4Array),
      normals_(new osg::Vec3Array),
      transform_(new osg::MatrixTransform),
      kind_(kind),
      minZ_(DBL_MAX),
      maxZ_(-DBL_MAX),
      useHeightColours_(useHeightColours) {
    if (kind == ObjectKind::RangeImage) return;  // the range image assembles its own tree
    geometry_->setUseDisplayList(false);
    geometry_->setUseVertexBufferObjects(true);
    geometry_->setUseVertexArrayObject(true);
    if (kind == ObjectKind::RangeImageStream) {
        root_->addChild(geometry_.get());
    } else {
        transform_->addChild(geometry_.get());
        root_->addChild(transform_.get());
    }
}

OSGData::~OSGData() = default;

void OSGData::widenHeightRange(double z) {
    minZ_ = std::min(minZ_, z);
    maxZ_ = std::max(maxZ_, z);
}

osg::Vec4 OSGData::heightColour(double z, double min, double max) {
    const double span = (max - min) == 0.0 ? 100.0 : (max - min);
    const double t = (z - min) / span;
    if (t > 1.0) return osg::Vec4(1, 0, 0, 1);
    if (t <= 0.0 || !(t == t)) return osg::Vec4(0, 0, 1, 1);
    QelColor c;
    QELMV::QelLUTSetting().GetColor(1.0 - t, ColorMapIndex::current(), &c);
    return ColourBytes::toVec4(c.r, c.g, c.b, 255);
}

namespace {

void setColour(osg::Vec4& out, const QelColor& c) {
    out = ColourBytes::toVec4(c.r, c.g, c.b, c.a);
}

void setColour(osg::Vec4ub& out, const QelColor& c) {
    out.set(static_cast<unsigned char>(c.r), static_cast<unsigned char>(c.g),
            static_cast<unsigned char>(c.b), static_cast<unsigned char>(c.a));
}

// From this many vertices colouring by height pays for a second thread.
constexpr size_t kTwoThreadsFrom = 500000;

}  // namespace

template <typename Array>
void OSGData::colourByHeight(Array& out, double min, double max) const {
    using Colour = typename Array::ElementDataType;
    // The table sampled at 4096 steps of t, looked up per vertex: the colours
    // are 8-bit, so neighbouring samples differ by at most one level, and ten
    // million vertices cost one table instead of ten million evaluations.
    constexpr int kSteps = 4096;
    std::vector<Colour> table(kSteps + 1);
    for (int k = 0; k <= kSteps; ++k) {
        QelColor c;
        QELMV::QelLUTSetting().GetColor(1.0 - double(k) / kSteps, ColorMapIndex::current(), &c);
        c.a = 255;
        setColour(table[k], c);
    }
    Colour red, blue;
    setColour(red, QelColor(255, 0, 0));
    setColour(blue, QelColor(0, 0, 255));
    const double span = (max - min) == 0.0 ? 100.0 : (max - min);
    const osg::Vec3Array& vertices = *vertices_;
    auto colourAt = [&](size_t i) {
        const double t = (vertices[i].z() - min) / span;
        if (t > 1.0) return red;
        if (t <= 0.0 || !(t == t)) return blue;
        return table[static_cast<size_t>(t * kSteps + 0.5)];
    };
    const size_t n = vertices.size();
    if (n < kTwoThreadsFrom) {
        fillArray(out, n, colourAt);
        return;
    }
    // A big array is coloured in two halves at once; without a thread to
    // spare, in one.
    if (out.size() != n) {
        out.clear();
        out.resize(n);
    }
    auto colourRange = [&](size_t from, size_t to) {
        for (size_t i = from; i < to; ++i)
            out[i] = colourAt(i);
    };
    std::future<void> second = startBeside([&] { colourRange(n / 2, n); });
    colourRange(0, second.valid() ? n / 2 : n);
    if (second.valid()) second.get();
    out.dirty();
}

std::future<void> OSGData::startBeside(std::function<void()> task) {
    try {
        return std::async(std::launch::async, std::move(task));
    } catch (const std::system_error&) {
        return {};
    }
}

template <typename Array>
int OSGData::copyColours(Array& out, const QelColorArray& colours, const SliceOrder* order) {
    int smallest = 255;
    const auto colourOf = [&](size_t i) {
        const QelColor c = colours[static_cast<int>(i)];
        smallest = std::min(smallest, c.a);
        typename Array::ElementDataType colour;
        setColour(colour, c);
        return colour;
    };
    const size_t n = static_cast<size_t>(colours.Length());
    if (!order || order->isIdentity() || n != order->size()) {
        fillArray(out, n, colourOf);
        return smallest;
    }
    if (out.size() != n) {
        out.clear();
        out.resize(n);
    }
    order->forEach(0, n, [&](size_t i, size_t at) { out[at] = colourOf(i); });
    out.dirty();
    return smallest;
}

template void OSGData::colourByHeight(osg::Vec4Array&, double, double) const;
template void OSGData::colourByHeight(osg::Vec4ubArray&, double, double) const;
template int OSGData::copyColours(osg::Vec4Array&, const QelColorArray&, const SliceOrder*);
template int OSGData::copyColours(osg::Vec4ubArray&, const QelColorArray&, const SliceOrder*);

void OSGData::applyColourMap(double min, double max) {
    if (vertices_->empty()) return;
    colourByHeight(*colors_, min, max);
    refreshColours();
}

void OSGData::refreshColours() {
    bindColours(colors_.get());
}

// Marking the array dirty alone does not reach a geometry drawn through a
// vertex array object; handing the array over again makes the next frame
// upload it.
void OSGData::bindColours(osg::Array* colours) {
    colours->dirty();
    geometry_->setColorArray(colours, colours->getNumElements() == 1 ? osg::Array::BIND_OVERALL
                                                                     : osg::Array::BIND_PER_VERTEX);
}

void OSGData::applyDefaultColours() {
    if (coloursLocked_) return;
    applyColourMap(minZ_, maxZ_);
}

osg::ref_ptr<osg::Vec4Array> OSGData::toFloatColours(const QelColorArray& colours, int* minAlpha) {
    osg::ref_ptr<osg::Vec4Array> out = new osg::Vec4Array;
    const int smallest = copyColours(*out, colours);
    if (minAlpha) *minAlpha = smallest;
    return out;
}

bool OSGData::setColors(const QelColorArray& colours) {
    if (!fitsVertices(colours)) return false;
    const int minAlpha = copyColours(*colors_, colours);
    applyAlpha(minAlpha);
    bindColours(colors_.get());
    return true;
}

bool OSGData::fitsVertices(const QelColorArray& colours) const {
    const size_t n = static_cast<size_t>(colours.Length());
    return n == vertices_->size() || n == 1;
}

void OSGData::applyAlpha(int minAlpha) {
    osg::StateSet* ss = geometry_->getOrCreateStateSet();
    if (minAlpha >= 255) {
        ss->setMode(GL_BLEND, osg::StateAttribute::OFF);
        ss->setRenderingHint(osg::StateSet::DEFAULT_BIN);
    } else {
        ss->setAttributeAndModes(new osg::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA),
                                 osg::StateAttribute::ON);
        ss->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    }
}

void OSGData::setPointSize(float size) {
    pointSize_ = size;
    root_->getOrCreateStateSet()->setAttribute(new ScaledPoint(size));
}

void OSGData::setLineWidth(float width) {
    lineWidth_ = width;
    root_->getOrCreateStateSet()->setAttribute(new ScaledLineWidth(width));
}

void OSGData::setVisible(bool visible) {
    root_->setNodeMask(visible ? NodeMasks::kPickable : 0u);
}

bool OSGData::setItemColours(const osg::Vec4Array& colours) {
    // Back to the host's bytes (exact for colours that came from bytes), so
    // every kind keeps one way of taking colours.
    QelColorArray bytes;
    if (!bytes.Create(static_cast<int>(colours.size()), 4)) return false;
    unsigned char* out = bytes.Data();
    for (const osg::Vec4& c : colours) {
        const osg::Vec4ub b = ColourBytes::toVec4ub(c);
        for (int k = 0; k < 4; ++k)
            *out++ = b[k];
    }
    if (!setColors(bytes)) return false;
    markHostColoured();
    return true;
}

bool OSGData::applyItemMatrix(const osg::Matrix& matrix) {
    setMatrix(matrix);
    return true;
}

bool OSGData::setItemPointSize(float size) {
    setPointSize(size);
    return true;
}

bool OSGData::setItemLineWidth(float width) {
    setLineWidth(width);
    return true;
}

osg::BoundingBox OSGData::itemBounds() const {
    return boundsOf(*node());
}

void OSGData::setMatrix(const osg::Matrix& matrix) {
    transform_->setMatrix(matrix);
}

void OSGData::setPolygonMode(osg::PolygonMode* polygonMode, RenderMode mode) {
    polygonMode->setMode(osg::PolygonMode::FRONT_AND_BACK, mode == RenderMode::Wireframe
                                                               ? osg::PolygonMode::LINE
                                                               : osg::PolygonMode::FILL);
}

void OSGData::switchSurfaceMode(
    osg::Geometry* geometry, osg::PolygonMode* polygonMode, RenderMode from, RenderMode to,
    GLsizei pointCount, const std::function<osg::ref_ptr<osg::PrimitiveSet>()>& makeTriangles) {
    osg::StateSet* ss = geometry->getOrCreateStateSet();
    if (from != RenderMode::Points) {
        if (to == RenderMode::Points) {
            ss->removeAttribute(polygonMode);
            geometry->setPrimitiveSet(0, new osg::DrawArrays(GL_POINTS, 0, pointCount));
        } else {
            setPolygonMode(polygonMode, to);
        }
        return;
    }
    osg::ref_ptr<osg::PrimitiveSet> triangles = makeTriangles();
    geometry->setPrimitiveSet(0, triangles.get());
    if (to != RenderMode::Points) {
        ss->setAttribute(polygonMode);
        setPolygonMode(polygonMode, to);
    }
}

unsigned int OSGData::drawnCount() const {
    return geometry_->getNumPrimitiveSets() ? geometry_->getPrimitiveSet(0)->getNumIndices() : 0;
}
