#include "QelDataStreamAlg.h"

#include <climits>
#include <cstring>
#include <new>

#include "ColourBytes.h"
#include "QelDataEnums.h"
#include "RangeImageFilter.h"
#include "StatusCodes.h"

namespace {

constexpr unsigned int kNoVertex = 0xFFFFFFFFu;

template <typename T>
void filter(QThreadPool& pool, QelRangeImage& image, const QelRangeImageParameter& p) {
    const double scale = p.resolutionZ, offset = -p.offsetZ * p.resolutionZ;
    T* pixels = reinterpret_cast<T*>(image.Data());
    // Four tasks over rows [h * (k / 4), h * ((k + 1) / 4)): integer division
    // gives the last task every row, as the split has always been.
    for (int k = 0; k < 4; ++k)
        pool.start(new RangeImageFilter<T>(pixels, p.zMin, p.zMax, scale, offset, p.width,
                                           p.height * (k / 4), p.height * ((k + 1) / 4)));
    pool.waitForDone();
}

}  // namespace

QelDataStreamAlg::QelDataStreamAlg(const QelRangeImageParameter& parameter,
                                   const osg::ref_ptr<osg::Vec3Array>& vertices,
                                   const osg::ref_ptr<osg::Vec4Array>& colours,
                                   const osg::ref_ptr<osg::Vec3Array>& normals,
                                   const osg::ref_ptr<osg::DrawElementsUInt>& triangles)
    : parameter_(parameter),
      vertices_(vertices),
      colours_(colours),
      normals_(normals),
      triangles_(triangles) {
    pool_.setMaxThreadCount(10);
}

long QelDataStreamAlg::initialize() {
    const QelRangeImageParameter& p = parameter_;
    try {
        if (!image_.SetSize(p.width, p.height, p.dataType) ||
            !image_.SetColorSize(p.width, p.height, p.colourChannels))
            return QelStatus::kCountTooLarge;
        image_.SetInfo(p.resolutionX, p.resolutionY, p.resolutionZ, p.offsetX, p.offsetY,
                       p.offsetZ);
        gridRows_ = (p.height + p.rowStep - 1) / p.rowStep;
        gridColumns_ = (p.width + p.columnStep - 1) / p.columnStep;
        index_.assign(size_t(gridRows_) * size_t(gridColumns_), kNoVertex);
        // Room for the whole scan up front: growing by reallocation would copy
        // every vertex received so far, now and then, in the middle of a band.
        const size_t cells = index_.size();
        vertices_->clear();
        colours_->clear();
        normals_->clear();
        triangles_->clear();
        vertices_->reserve(cells);
        colours_->reserve(cells);
        normals_->reserve(cells);
        triangles_->reserve(cells * 6);
    } catch (const std::bad_alloc&) {
        return QelStatus::kCountTooLarge;
    }
    lastStart_ = lastEnd_ = linesReceived_ = 0;
    vertexCount_ = 0;
    finished_ = filtered_ = started_ = false;
    return 0;
}

long QelDataStreamAlg::appendDataStream(const void* data, const void* colour, int type, int start,
                                        int end) {
    const QelRangeImageParameter& p = parameter_;
    if (finished_) return QelStatus::kStreamFinished;
    if (start < 0 || start > p.height) return QelStatus::argument(6);
    if (end < 0 || end > p.height) return QelStatus::argument(7);
    if (start > end || start < lastEnd_) return QelStatus::argument(6);
    if (type != p.dataType || !data) return QelStatus::kStreamCopyFailed;
    if (!colour) return QelStatus::kStreamBufferMissing;
    if (p.columnStep >= p.width && p.width > 1) return QelStatus::kStreamNoColumn;

    const size_t lineBytes = size_t(p.width) * size_t(QelRangeImage::SampleSize(type));
    const size_t colourLineBytes = size_t(p.width) * size_t(p.colourChannels);
    const size_t lines = size_t(end - start);
    std::memcpy(image_.Data() + size_t(start) * lineBytes, data, lines * lineBytes);
    std::memcpy(image_.ColorData() + size_t(start) * colourLineBytes, colour,
                lines * colourLineBytes);
    if (!started_) {
        vertices_->clear();
        colours_->clear();
        started_ = true;
    }
    lastStart_ = start;
    linesReceived_ += end - start;
    lastEnd_ = linesReceived_ > p.height ? p.height : end;

    const size_t firstVertex = vertices_->size();
    appendVertices(start, end);
    appendColours(firstVertex);
    appendTriangles(start, end);
    return 0;
}

unsigned int& QelDataStreamAlg::vertexAt(int row, int column) {
    return index_[size_t(row) * size_t(gridColumns_) + size_t(column)];
}

// The height of a pixel and whether it makes a vertex: not the type's
// invalid marker and inside [zMin, zMax].
double QelDataStreamAlg::height(long long pixel, bool* valid) const {
    const QelRangeImageParameter& p = parameter_;
    double raw = 0;
    if (p.dataType == QEL_16U) {
        raw = reinterpret_cast<const std::uint16_t*>(image_.Data())[pixel];
        *valid = raw >= 1e-8;
    } else {
        raw = reinterpret_cast<const std::int32_t*>(image_.Data())[pixel];
        *valid = raw != double(INT_MIN);
    }
    const double z = raw * p.resolutionZ - p.offsetZ * p.resolutionZ;
    *valid = *valid && z >= p.zMin && z <= p.zMax;
    return z;
}

void QelDataStreamAlg::appendVertices(int start, int end) {
    const QelRangeImageParameter& p = parameter_;
    bandVertices_.clear();
    for (int r = start; r < end; ++r) {
        if (r % p.rowStep != 0) continue;
        const int gr = r / p.rowStep;
        for (int c = 0, gc = 0; c < p.width; c += p.columnStep, ++gc) {
            const long long pixel = (long long)r * p.width + c;
            bool valid = false;
            const double z = height(pixel, &valid);
            if (!valid) continue;
            // The row feeds x and the column y, as for whole range images.
            const osg::Vec3 v(float((r - p.offsetY) * p.resolutionY),
                              float((c - p.offsetX) * p.resolutionX), float(z));
            vertexAt(gr, gc) = vertexCount_++;
            vertices_->push_back(v);
            bandVertices_.push_back(static_cast<unsigned int>(pixel));
            osg::Vec3 normal(0, 0, 1);
            const unsigned int up = gr > 0 ? vertexAt(gr - 1, gc) : kNoVertex;
            const unsigned int left = gc > 0 ? vertexAt(gr, gc - 1) : kNoVertex;
            if (up != kNoVertex && left != kNoVertex) {
                osg::Vec3d n = (osg::Vec3d((*vertices_)[up]) - osg::Vec3d(v)) ^
                               (osg::Vec3d((*vertices_)[left]) - osg::Vec3d(v));
                n.normalize();
                normal = osg::Vec3(n);
            }
            normals_->push_back(normal);
        }
    }
}

void QelDataStreamAlg::appendColours(size_t firstVertex) {
    const int ch = parameter_.colourChannels;
    const unsigned char* plane = image_.ColorData();
    colours_->reserve(firstVertex + bandVertices_.size());
    for (unsigned int pixel : bandVertices_) {
        const unsigned char* c = plane + size_t(pixel) * size_t(ch);
        // Grey (with alpha) or colour (with alpha); opaque without one.
        if (ch < 3)
            colours_->push_back(ColourBytes::toVec4(c[0], c[0], c[0], ch == 2 ? c[1] : 255));
        else
            colours_->push_back(ColourBytes::toVec4(c[0], c[1], c[2], ch == 4 ? c[3] : 255));
    }
}

// The cell rule: with A above, B the pixel, C above-right and D right,
// triangles (A, B, C) and (B, D, C) where all three have vertices.
void QelDataStreamAlg::appendTriangles(int start, int end) {
    const QelRangeImageParameter& p = parameter_;
    for (int r = start; r < end; ++r) {
        if (r % p.rowStep != 0 || r / p.rowStep == 0) continue;
        const int gr = r / p.rowStep;
        for (int gc = 0; gc + 1 < gridColumns_; ++gc) {
            const unsigned int a = vertexAt(gr - 1, gc), b = vertexAt(gr, gc),
                               c = vertexAt(gr - 1, gc + 1), d = vertexAt(gr, gc + 1);
            std::vector<unsigned int>& t = triangles_->asVector();
            if (a != kNoVertex && b != kNoVertex && c != kNoVertex) t.insert(t.end(), {a, b, c});
            if (b != kNoVertex && d != kNoVertex && c != kNoVertex) t.insert(t.end(), {b, d, c});
        }
    }
}

void QelDataStreamAlg::finish(QelRangeImage* result) {
    if (!result) {
        finished_ = true;
        return;
    }
    if (!filtered_) {
        if (image_.Width() == 0 || image_.Height() == 0) return;
        if (parameter_.dataType == QEL_16U) filter<std::uint16_t>(pool_, image_, parameter_);
        if (parameter_.dataType == QEL_32S) filter<std::int32_t>(pool_, image_, parameter_);
        filtered_ = true;
    }
    *result = image_;
    finished_ = true;
}
