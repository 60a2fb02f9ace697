#include "QelLOD.h"

#include <cfloat>
#include <cmath>
#include <cstring>

#include "SamplingStep.h"
#include "StatusCodes.h"

namespace {

int cvTypeOf(int dataType) {
    switch (dataType) {
        case QEL_8U:
            return CV_8U;
        case QEL_8S:
            return CV_8S;
        case QEL_16U:
            return CV_16U;
        case QEL_16S:
            return CV_16S;
        case QEL_32S:
            return CV_32S;
        case QEL_32F:
            return CV_32F;
        default:
            return CV_64F;
    }
}
// Samples along an axis of n pixels taken every s pixels: n / s rounded
// down, in exact integer arithmetic. A single-precision quotient gives the
// same wherever it is exact, but rounds 16,777,219 up to 16,777,220 and so
// would read past the source's last row.
int sampledCount(int n, int s) {
    return n / s;
}

}  // namespace

QelLOD::QelLOD(const QelRangeImage& image) : lod_(new osg::LOD), source_(image) {}

int QelLOD::autoStep(double pixelCount) {
    return SamplingStep::automatic(pixelCount);
}

void QelLOD::setStep(int step) {
    step_ = step;
    const double w = source_.ResolutionX() * source_.Width();
    const double h = source_.ResolutionY() * source_.Height();
    switchDistance_ = static_cast<float>(2.0 * std::sqrt(w * w + h * h));
}

int QelLOD::effectiveStep() const {
    return step_ > 0 ? step_ : autoStep(double(source_.Width()) * source_.Height());
}

long QelLOD::buildLevels(const QelRangeImage& image, std::vector<QelRangeImage>& levelImages,
                         std::vector<cv::Mat>& columnMaps, std::vector<cv::Mat>& rowMaps) const {
    levelImages.assign(1, QelRangeImage());
    columnMaps.assign(1, cv::Mat());
    rowMaps.assign(1, cv::Mat());
    const int w = image.Width(), h = image.Height();
    if (double(w) * h == 0) return QelStatus::kRangeImageEmpty;
    const int s = effectiveStep();
    const int rows = sampledCount(h, s), cols = sampledCount(w, s);
    const int dt = image.DataType();
    const bool floating = dt == QEL_32F || dt == QEL_64F;
    QelRangeImage& level = levelImages[0];
    if (image.Type() == 1) {
        level.SetType(1);
        level.SetInfo(image.DeepCopyParas());
    } else {
        level.SetType(0);
        level.SetInfo(image.ResolutionX(), image.ResolutionY(),
                      floating ? 1.0 : image.ResolutionZ(), image.OffsetX(), image.OffsetY(),
                      floating ? 0.0 : image.OffsetZ());
    }
    if (dt < QEL_8U || dt > QEL_64F || !level.SetSize(cols, rows, dt)) return 0;
    if (rows == 0 || cols == 0) return 0;

    const int type = cvTypeOf(dt);
    const cv::Mat full(h, w, type, const_cast<unsigned char*>(image.Data()));
    cv::Mat picked(rows, cols, type, level.Data());  // writes straight into the level image
    cv::Mat columnMap(rows, cols, CV_32F), rowMap(rows, cols, CV_32F);
    const size_t element = full.elemSize();
    for (int r = 0; r < rows; ++r) {
        const unsigned char* from = full.ptr(r * s);
        unsigned char* to = picked.ptr(r);
        float* cm = columnMap.ptr<float>(r);
        float* rm = rowMap.ptr<float>(r);
        for (int c = 0; c < cols; ++c) {
            std::memcpy(to + c * element, from + static_cast<size_t>(c) * s * element, element);
            cm[c] = static_cast<float>(c * s);
            rm[c] = static_cast<float>(r * s);
        }
    }
    columnMaps[0] = columnMap;
    rowMaps[0] = rowMap;
    return 0;
}

void QelLOD::decimateColours(const QelColorArray& colours,
                             std::vector<QelColorArray>& perLevel) const {
    perLevel.assign(1, QelColorArray());
    const int w = source_.Width(), h = source_.Height(), ch = colours.Channel();
    if (colours.Length() != w * h || (ch != 1 && ch != 3 && ch != 4)) return;
    const int s = effectiveStep();
    const int rows = sampledCount(h, s), cols = sampledCount(w, s);
    QelColorArray& level = perLevel[0];
    if (!level.SetSize(cols, rows, ch)) return;
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c)
            std::memcpy(
                level.Data() + (static_cast<size_t>(r) * cols + c) * ch,
                colours.Data() + (static_cast<size_t>(r) * s * w + static_cast<size_t>(c) * s) * ch,
                static_cast<size_t>(ch));
}

long QelLOD::assemble(const std::vector<osg::ref_ptr<osg::Geometry>>& geometries,
                      const std::vector<osg::ref_ptr<osg::MatrixTransform>>& transforms) {
    const size_t levels = std::min(geometries.size(), transforms.size());
    if (levels == 0) return QelStatus::kNoLevels;
    lod_->setRangeMode(osg::LOD::DISTANCE_FROM_EYE_POINT);
    const float d = switchDistance_;
    for (size_t i = 0; i < levels; ++i) {
        transforms[i]->addChild(geometries[i].get());
        const float from = levels == 1 ? 0.0f : d * i;
        const float to = (i + 1 == levels) ? FLT_MAX : d * (i + 1);
        if (!lod_->addChild(transforms[i].get(), from, to)) return QelStatus::kNoLevels;
    }
    return 0;
}
