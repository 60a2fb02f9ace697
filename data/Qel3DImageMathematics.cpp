#include "Qel3DImageMathematics.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "QelDataStatus.h"
#include "SampleTypes.h"

namespace QELMV {

long Qel3DImageMathematics::RangeImageMaxMin(const QelRangeImage& image, const QelROI& roi,
                                             QelPoint* maxPosition, QelPoint* minPosition,
                                             double* maxHeight, double* minHeight) {
    const int w = image.Width(), h = image.Height();
    if (w <= 0 || h <= 0) return QEL_DATA_EMPTY;
    long long c0 = 0, r0 = 0, c1 = w - 1, r1 = h - 1;
    if (!roi.IsWholeImage()) {
        c0 = std::max(c0, std::llround(std::max(roi.TopLeft().x, -1e18)));
        r0 = std::max(r0, std::llround(std::max(roi.TopLeft().y, -1e18)));
        c1 = std::min(c1, std::llround(std::min(roi.BottomRight().x, 1e18)));
        r1 = std::min(r1, std::llround(std::min(roi.BottomRight().y, 1e18)));
        if (c0 > c1 || r0 > r1) return QEL_DATA_INVALID_ARGUMENT;
    }

    double best[2] = {-DBL_MAX, DBL_MAX};  // max, min
    long long where[2] = {-1, -1};
    const double resZ = image.ResolutionZ(), offZ = image.OffsetZ();
    const bool known = qel::visitSampleType(image.DataType(), [&](auto tag) {
        using Tag = decltype(tag);
        using T = typename Tag::Value;
        const T* src = reinterpret_cast<const T*>(image.Data());
        for (long long r = r0; r <= r1; ++r) {
            const T* row = src + r * w;
            for (long long c = c0; c <= c1; ++c) {
                if (!Tag::isValid(row[c])) continue;
                const double z = qel::heightOf(row[c], resZ, offZ);
                if (z > best[0] || where[0] < 0) best[0] = z, where[0] = r * w + c;
                if (z < best[1] || where[1] < 0) best[1] = z, where[1] = r * w + c;
            }
        }
    });
    if (!known) return QEL_DATA_INVALID_ARGUMENT;
    if (where[0] < 0) return QEL_DATA_NO_VALID_SAMPLE;

    if (maxPosition) *maxPosition = QelPoint(double(where[0] % w), double(where[0] / w));
    if (minPosition) *minPosition = QelPoint(double(where[1] % w), double(where[1] / w));
    if (maxHeight) *maxHeight = best[0];
    if (minHeight) *minHeight = best[1];
    return QEL_DATA_OK;
}

}  // namespace QELMV
