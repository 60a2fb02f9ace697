#include "OSGRangeImage.h"

#include <QDebug>
#include <cfloat>
#include <osg/BlendFunc>

#include "ColorMapIndex.h"
#include "ColourBytes.h"
#include "NodeMasks.h"
#include "Qel3DImageMathematics.h"
#include "QelLUTSetting.h"
#include "QelLog.h"
#include "RangePixelReader.h"
#include "ScaledLineWidth.h"
#include "ScaledPoint.h"
#include "StatusCodes.h"

namespace {
constexpr unsigned int kNoVertex = 0xFFFFFFFFu;
}

OSGRangeImage::OSGRangeImage(const QelRangeImage& image, RenderMode renderMode, ObjectId id,
                             int step, bool useHeightColours)
    : OSGData(id, ObjectKind::RangeImage, useHeightColours),
      polygonMode_(new osg::PolygonMode),
      source_(image),
      lodBuilder_(std::make_unique<QelLOD>(source_)) {
    renderMode_ = renderMode;
    lodBuilder_->setStep(step);
    const bool built = buildGeometry() == 0 && buildColours() == 0 &&
                       lodBuilder_->assemble(levelGeometries_, levelTransforms_) == 0;
    lodNode_ = lodBuilder_->node();
    valid_ = built ? 1 : 0;
    double maxZ = 0, minZ = 0;
    if (QELMV::Qel3DImageMathematics().RangeImageMaxMin(source_, QelROI(), nullptr, nullptr, &maxZ,
                                                        &minZ) == 0) {
        maxZ_ = maxZ;
        minZ_ = minZ;
    }
}

osg::Vec3Array* OSGRangeImage::vertexArray() const {
    return levelVertices_.empty() ? vertices_.get() : levelVertices_[0].get();
}

osg::Vec4Array* OSGRangeImage::colorArray() const {
    return levelColours_.empty() ? colors_.get() : levelColours_[0].get();
}

long OSGRangeImage::buildGeometry() {
    const long status = lodBuilder_->buildLevels(source_, levelImages_, columnMaps_, rowMaps_);
    if (status != 0) return status;
    const size_t levels = levelImages_.size();
    levelGeometries_.assign(levels, nullptr);
    levelTransforms_.assign(levels, nullptr);
    levelVertices_.assign(levels, nullptr);
    levelColours_.assign(levels, nullptr);
    levelIndexMaps_.assign(levels, {});
    levelTriangles_.assign(levels, nullptr);
    for (size_t i = 0; i < levels; ++i) {
        const int level = static_cast<int>(i);
        osg::ref_ptr<osg::Geometry> g = new osg::Geometry;
        levelGeometries_[i] = g;
        levelTransforms_[i] = new osg::MatrixTransform;
        levelVertices_[i] = new osg::Vec3Array;
        levelColours_[i] = new osg::Vec4Array;
        if (!buildVertices(level)) return QelStatus::kRangeImageEmpty;
        g->setUseDisplayList(false);
        g->setUseVertexBufferObjects(true);
        g->setUseVertexArrayObject(true);
        g->setVertexArray(levelVertices_[i].get());
        g->getOrCreateStateSet()->setMode(GL_BLEND, osg::StateAttribute::ON);
        g->getOrCreateStateSet()->setAttribute(polygonMode_.get());
        if (renderMode_ == RenderMode::Points) {
            g->addPrimitiveSet(
                new osg::DrawArrays(GL_POINTS, 0, static_cast<GLsizei>(levelVertices_[i]->size())));
        } else {
            levelTriangles_[i] = buildTriangles(level);
            g->addPrimitiveSet(levelTriangles_[i].get());
        }
    }
    if (renderMode_ != RenderMode::Points) setPolygonMode(polygonMode_.get(), renderMode_);
    // The geometry step assembles, and so does the colour step after it:
    // each appends the levels to the LOD once more, as the design has it.
    return lodBuilder_->assemble(levelGeometries_, levelTransforms_);
}

OSGRangeImage::SamplePlacer::SamplePlacer(const QelRangeImage& image)
    : image(image),
      reader(image.Data(), image.Width(), image.DataType()),
      floating(image.DataType() == QEL_32F || image.DataType() == QEL_64F) {
    QelVarArray params = image.DeepCopyParas();
    for (int k = 0; k < 4 && k < params.Length(); ++k)
        camera[k] = params[k].F();
}

osg::Vec3 OSGRangeImage::SamplePlacer::operator()(long long index, float row, float column) const {
    const double raw = reader.value(index);
    const double z = floating ? raw : (raw - image.OffsetZ()) * image.ResolutionZ();
    if (image.Type() == 1) {
        const float zf = static_cast<float>(z);
        return osg::Vec3((column - camera[0]) * zf * camera[2], (row - camera[1]) * zf * camera[3],
                         zf);
    }
    // The row feeds x and the column y.
    return osg::Vec3(static_cast<float>((row - image.OffsetY()) * image.ResolutionY()),
                     static_cast<float>((column - image.OffsetX()) * image.ResolutionX()),
                     static_cast<float>(z));
}

QelVector3dArray OSGRangeImage::sourcePoints(std::vector<long long>* pixels) const {
    const SamplePlacer place(source_);
    const long long width = source_.Width(), n = width * source_.Height();
    pixels->clear();
    for (long long i = 0; i < n; ++i)
        if (place.reader.isValid(i)) pixels->push_back(i);
    // Placed straight into the result: no second copy of a large image.
    QelVector3dArray out(static_cast<int>(pixels->size()));
    for (size_t k = 0; k < pixels->size(); ++k) {
        const long long i = (*pixels)[k];
        const osg::Vec3 p = place(i, static_cast<float>(i / width), static_cast<float>(i % width));
        out[static_cast<int>(k)] = QelVector3d(p.x(), p.y(), p.z());
    }
    return out;
}

bool OSGRangeImage::buildVertices(int level) {
    const QelRangeImage& img = levelImages_[level];
    const int rows = img.Height(), cols = img.Width();
    if (rows == 0 || cols == 0) return false;
    const size_t n = static_cast<size_t>(rows) * cols;
    std::vector<unsigned int>& index = levelIndexMaps_[level];
    index.assign(n, kNoVertex);
    osg::Vec3Array& v = *levelVertices_[level];
    v.resize(n);
    const SamplePlacer place(img);
    const cv::Mat& cm = columnMaps_[level];
    const cv::Mat& rm = rowMaps_[level];
    unsigned int count = 0;
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c) {
            const long long i = static_cast<long long>(r) * cols + c;
            if (!place.reader.isValid(i)) continue;
            v[count] = place(i, rm.at<float>(r, c), cm.at<float>(r, c));
            index[static_cast<size_t>(i)] = count++;
        }
    v.resize(count);

    // Normals from the neighbours above and to the left; (0, 0, 1) where
    // either is missing.
    osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array(n);
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c) {
            const unsigned int me = index[static_cast<size_t>(r) * cols + c];
            if (me == kNoVertex) continue;
            osg::Vec3 normal(0, 0, 1);
            if (r > 0 && c > 0) {
                const unsigned int up = index[static_cast<size_t>(r - 1) * cols + c];
                const unsigned int left = index[static_cast<size_t>(r) * cols + c - 1];
                if (up != kNoVertex && left != kNoVertex) {
                    const osg::Vec3d a = osg::Vec3d(v[up]) - osg::Vec3d(v[me]);
                    const osg::Vec3d b = osg::Vec3d(v[left]) - osg::Vec3d(v[me]);
                    osg::Vec3d cross = a ^ b;
                    cross.normalize();
                    normal = osg::Vec3(cross);
                }
            }
            (*normals)[me] = normal;
        }
    levelGeometries_[level]->setNormalArray(normals.get(), osg::Array::BIND_PER_VERTEX);
    return true;
}

osg::ref_ptr<osg::DrawElementsUInt> OSGRangeImage::buildTriangles(int level) const {
    const QelRangeImage& img = levelImages_[level];
    const int rows = img.Height(), cols = img.Width();
    const std::vector<unsigned int>& index = levelIndexMaps_[level];
    osg::ref_ptr<osg::DrawElementsUInt> t = new osg::DrawElementsUInt(GL_TRIANGLES);
    t->reserve(static_cast<size_t>(rows) * cols * 6);
    auto at = [&](int r, int c) { return index[static_cast<size_t>(r) * cols + c]; };
    for (int r = 1; r < rows; ++r)
        for (int c = 0; c + 1 < cols; ++c) {
            const unsigned int a = at(r - 1, c), b = at(r, c), cc = at(r - 1, c + 1),
                               d = at(r, c + 1);
            if (a != kNoVertex && b != kNoVertex && cc != kNoVertex) {
                t->push_back(a);
                t->push_back(b);
                t->push_back(cc);
            }
            if (b != kNoVertex && cc != kNoVertex && d != kNoVertex) {
                t->push_back(b);
                t->push_back(d);
                t->push_back(cc);
            }
        }
    t->asVector().shrink_to_fit();
    return t;
}

void OSGRangeImage::applyLevelColours(const QelColorArray& full) {
    std::vector<QelColorArray> perLevel;
    lodBuilder_->decimateColours(full, perLevel);
    for (size_t i = 0; i < levelColours_.size() && i < perLevel.size(); ++i) {
        const QelColorArray& c = perLevel[i];
        osg::Vec4Array& out = *levelColours_[i];
        out.clear();
        const std::vector<unsigned int>& index = levelIndexMaps_[i];
        for (int k = 0; k < c.Length() && static_cast<size_t>(k) < index.size(); ++k) {
            if (index[static_cast<size_t>(k)] == kNoVertex) continue;
            const QelColor q = c[k];
            out.push_back(ColourBytes::toVec4(q.r, q.g, q.b, q.a));
        }
        out.dirty();
        levelGeometries_[i]->setColorArray(&out, osg::Array::BIND_PER_VERTEX);
    }
}

long OSGRangeImage::buildColours() {
    qCDebug(qelLog) << "Algorithm.cpp" << source_.IsValidColor();
    QelColorArray full;
    if (!useHeightColours_ && source_.IsValidColor()) {
        full = source_.DeepCopyColors();
    } else {
        full.SetSize(source_.Width(), source_.Height(), 3);
        if (QELMV::QelLUTSetting().ColorMapLUT(source_, ColorMapIndex::current(), &full) != 0)
            return QelStatus::kObjectUnusable;
    }
    applyLevelColours(full);
    return 0;
}

void OSGRangeImage::applyColourMap(double min, double max) {
    minZ_ = min;
    maxZ_ = max;
    QelColorArray full;
    // Table 5 here, whatever the process-wide table is.
    if (QELMV::QelLUTSetting().ColorMapLUT(source_, 5, min, max, &full) != 0) return;
    applyLevelColours(full);
}

bool OSGRangeImage::heightColoured() const {
    return OSGData::heightColoured() && (useHeightColours_ || !source_.IsValidColor());
}

void OSGRangeImage::setUseHeightColours(bool on) {
    useHeightColours_ = on;
    // Off shows the image's own colours where it has them.
    if (!on && source_.IsValidColor())
        applyLevelColours(source_.DeepCopyColors());
    else
        applyColourMap(minZ_, maxZ_);
}

bool OSGRangeImage::setColors(const QelColorArray& colours) {
    const long long pixels = static_cast<long long>(source_.Width()) * source_.Height();
    if (colours.Length() > pixels || colours.IsEmpty()) return false;
    if (colours.Length() == 1) {
        const QelColor c = colours[0];
        const osg::Vec4 rgba = ColourBytes::toVec4(c.r, c.g, c.b, c.a);
        for (size_t i = 0; i < levelColours_.size(); ++i) {
            levelColours_[i]->assign(1, rgba);
            levelColours_[i]->dirty();
            levelGeometries_[i]->setColorArray(levelColours_[i].get(), osg::Array::BIND_OVERALL);
            if (c.a != 255) {
                osg::StateSet* ss = levelGeometries_[i]->getOrCreateStateSet();
                ss->setAttributeAndModes(new osg::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA));
                ss->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
            }
        }
        return true;
    }
    if (colours.Length() != pixels) return false;
    std::vector<QelColorArray> perLevel;
    lodBuilder_->decimateColours(colours, perLevel);
    int minAlpha = 255;
    for (size_t i = 0; i < levelColours_.size() && i < perLevel.size(); ++i) {
        osg::ref_ptr<osg::Vec4Array> converted = new osg::Vec4Array;
        const std::vector<unsigned int>& index = levelIndexMaps_[i];
        for (int k = 0; k < perLevel[i].Length(); ++k) {
            if (index[static_cast<size_t>(k)] == kNoVertex) continue;
            const QelColor q = perLevel[i][k];
            minAlpha = std::min(minAlpha, q.a);
            converted->push_back(ColourBytes::toVec4(q.r, q.g, q.b, q.a));
        }
        if (converted->size() != levelVertices_[i]->size() && converted->size() != 1) return false;
        levelColours_[i]->assign(converted->begin(), converted->end());
        levelColours_[i]->dirty();
        levelGeometries_[i]->setColorArray(levelColours_[i].get(), osg::Array::BIND_PER_VERTEX);
        osg::StateSet* ss = levelGeometries_[i]->getOrCreateStateSet();
        if (minAlpha != 255) {
            ss->setAttributeAndModes(new osg::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA));
            ss->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
        } else {
            ss->setRenderingHint(osg::StateSet::DEFAULT_BIN);
        }
    }
    return true;
}

void OSGRangeImage::setRenderMode(RenderMode mode) {
    if (mode == renderMode_) return;
    const RenderMode previous = renderMode_;
    renderMode_ = mode;
    for (size_t i = 0; i < levelGeometries_.size(); ++i)
        switchSurfaceMode(levelGeometries_[i].get(), polygonMode_.get(), previous, mode,
                          static_cast<GLsizei>(levelVertices_[i]->size()), [this, i] {
                              if (!levelTriangles_[i])
                                  levelTriangles_[i] = buildTriangles(static_cast<int>(i));
                              return osg::ref_ptr<osg::PrimitiveSet>(levelTriangles_[i].get());
                          });
}

void OSGRangeImage::setPointSize(float size) {
    if (lodNode_) lodNode_->getOrCreateStateSet()->setAttribute(new ScaledPoint(size));
}

void OSGRangeImage::setLineWidth(float width) {
    if (!lodNode_) return;
    lodNode_->getOrCreateStateSet()->setAttribute(new ScaledLineWidth(width));
}

void OSGRangeImage::setVisible(bool visible) {
    if (lodNode_) lodNode_->setNodeMask(visible ? NodeMasks::kPickable : 0u);
}

void OSGRangeImage::setMatrix(const osg::Matrix& matrix) {
    for (const auto& t : levelTransforms_)
        t->setMatrix(matrix);
}
