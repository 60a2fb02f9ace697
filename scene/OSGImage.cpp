#include "OSGImage.h"

#include <cstdint>
#include <cstring>

#include "SamplingStep.h"

OSGImage::OSGImage(const QelImage& image, RenderMode renderMode, ObjectId id, int step)
    : OSGData(id, ObjectKind::Image, true),
      source_(image),
      step_(step),
      polygonMode_(new osg::PolygonMode) {
    renderMode_ = renderMode;
    coloursLocked_ = 1;
    geometry_->setVertexArray(vertices_.get());
    geometry_->setColorArray(colors_.get(), osg::Array::BIND_PER_VERTEX);
    geometry_->setNormalArray(normals_.get(), osg::Array::BIND_PER_VERTEX);
    geometry_->getOrCreateStateSet()->setAttribute(polygonMode_.get());
    if (source_.Width() > 0 && source_.Height() > 0) {
        osg::ref_ptr<osg::PrimitiveSet> primitive = rebuildGeometry();
        geometry_->addPrimitiveSet(primitive.get());
    }
    if (renderMode != RenderMode::Points) setPolygonMode(polygonMode_.get(), renderMode);
    valid_ = 1;
}

int OSGImage::effectiveStep() const {
    if (step_ > 0) return step_;
    return SamplingStep::automatic(double(source_.Width()) * source_.Height());
}

void OSGImage::buildArrays() {
    const int s = effectiveStep();
    const int w = source_.Width(), h = source_.Height(), ch = source_.Channels();
    columns_ = w / s;
    rows_ = h / s;
    const size_t n = static_cast<size_t>(rows_) * static_cast<size_t>(columns_);
    vertices_->assign(n, osg::Vec3(0, 0, 0));
    colors_->assign(n, osg::Vec4(0, 0, 0, 0));
    normals_->assign(n, osg::Vec3(0, 0, 0));
    const int type = source_.BitDepth();
    const int valueSize = QelImage::ValueSize(type);
    const unsigned char* pixels = source_.ImageData();
    // One channel value as an 8-bit level: 16-bit values are scaled down.
    auto level = [&](const unsigned char* p) -> double {
        switch (type) {
            case QEL_IMAGE_8S:
                return static_cast<double>(static_cast<std::int8_t>(p[0]));
            case QEL_IMAGE_16U: {
                std::uint16_t v;
                std::memcpy(&v, p, 2);
                return v / 65535.0 * 255.0;
            }
            case QEL_IMAGE_16S: {
                std::int16_t v;
                std::memcpy(&v, p, 2);
                return v / 65535.0 * 255.0;
            }
            case QEL_IMAGE_32F: {
                float v;
                std::memcpy(&v, p, 4);
                return v;
            }
            default:
                return p[0];
        }
    };
    for (int r = 0; r < rows_; ++r)
        for (int c = 0; c < columns_; ++c) {
            const size_t i = static_cast<size_t>(r) * columns_ + c;
            const unsigned char* px =
                pixels +
                (static_cast<size_t>(r) * s * w + static_cast<size_t>(c) * s) * ch * valueSize;
            double height = 0;
            if (ch == 1) {
                height = level(px);
                const float g = static_cast<float>(height / 255.0);
                (*colors_)[i].set(g, g, g, 1);
            } else if (ch == 3) {
                const double c0 = level(px), c1 = level(px + valueSize),
                             c2 = level(px + 2 * valueSize);
                height = 0.299 * c0 + 0.587 * c1 + 0.114 * c2;
                (*colors_)[i].set(static_cast<float>(c2 / 255), static_cast<float>(c1 / 255),
                                  static_cast<float>(c0 / 255), 1);
            } else {
                continue;  // other channel counts stay zero
            }
            (*vertices_)[i].set(static_cast<float>(r * s), static_cast<float>(c * s),
                                static_cast<float>(height));
            widenHeightRange(height);
        }
    // Normals from the differences to the previous row and column (the next
    // ones on the first row and column).
    auto at = [&](int r, int c) { return (*vertices_)[static_cast<size_t>(r) * columns_ + c]; };
    for (int r = 0; r < rows_; ++r)
        for (int c = 0; c < columns_; ++c) {
            const osg::Vec3 p = at(r, c);
            const osg::Vec3 dRow =
                r > 0 ? p - at(r - 1, c) : (rows_ > 1 ? at(r + 1, c) - p : osg::Vec3(1, 0, 0));
            const osg::Vec3 dCol =
                c > 0 ? p - at(r, c - 1) : (columns_ > 1 ? at(r, c + 1) - p : osg::Vec3(0, 1, 0));
            (*normals_)[static_cast<size_t>(r) * columns_ + c] = dRow ^ dCol;
        }
    vertices_->dirty();
    colors_->dirty();
    normals_->dirty();
}

osg::ref_ptr<osg::PrimitiveSet> OSGImage::rebuildGeometry() {
    buildArrays();
    if (renderMode_ == RenderMode::Points) {
        triangles_ = nullptr;
        return new osg::DrawArrays(GL_POINTS, 0, rows_ * columns_);
    }
    osg::ref_ptr<osg::DrawElementsUInt> t = new osg::DrawElementsUInt(GL_TRIANGLES);
    if (rows_ > 1 && columns_ > 1) t->reserve(static_cast<size_t>(rows_ - 1) * (columns_ - 1) * 6);
    for (int r = 0; r + 1 < rows_; ++r)
        for (int c = 0; c + 1 < columns_; ++c) {
            const unsigned i = static_cast<unsigned>(r * columns_ + c),
                           n = static_cast<unsigned>(columns_);
            for (unsigned v : {i, i + n, i + 1, i + n, i + n + 1, i + 1})
                t->push_back(v);
        }
    triangles_ = t;
    return t;
}

void OSGImage::setStep(int step) {
    step_ = step;
    triangles_ = nullptr;
    geometry_->removePrimitiveSet(0, geometry_->getNumPrimitiveSets());
    if (source_.Width() > 0 && source_.Height() > 0) {
        osg::ref_ptr<osg::PrimitiveSet> primitive = rebuildGeometry();
        geometry_->addPrimitiveSet(primitive.get());
    }
}

void OSGImage::setRenderMode(RenderMode mode) {
    if (mode == renderMode_ || geometry_->getNumPrimitiveSets() == 0) {
        renderMode_ = mode;
        return;
    }
    const RenderMode previous = renderMode_;
    renderMode_ = mode;
    switchSurfaceMode(geometry_.get(), polygonMode_.get(), previous, mode, rows_ * columns_,
                      [this] { return triangles_.valid() ? triangles_ : rebuildGeometry(); });
}
