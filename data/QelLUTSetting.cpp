#include "QelLUTSetting.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "ColorTables.h"
#include "ParallelFor.h"
#include "Qel3DImageMathematics.h"
#include "QelDataStatus.h"
#include "SampleTypes.h"

namespace QELMV {
namespace {

long mapImage(const QelRangeImage& image, int lut, double min, double max, QelColorArray* out) {
    const int count = image.Width() * image.Height();
    QelColorArray colors;
    if (!colors.Create(count, 3)) return QEL_DATA_INVALID_ARGUMENT;
    const auto& table = qel::ColorTables::sampled(lut);
    const double span = (max - min) == 0.0 ? 100.0 : (max - min);
    const double top = qel::ColorTables::kSamples - 1;
    const double scale = top / span;
    const double resZ = image.ResolutionZ(), offZ = image.OffsetZ();
    std::uint8_t* dst = colors.Data();

    qel::visitSampleType(image.DataType(), [&](auto tag) {
        using Tag = decltype(tag);
        using T = typename Tag::Value;
        const T* src = reinterpret_cast<const T*>(image.Data());
        qel::parallelFor(static_cast<std::size_t>(count), [&](size_t begin, size_t end) {
            for (size_t i = begin; i < end; ++i) {
                std::uint8_t* c = dst + 3 * i;
                if (!Tag::isValid(src[i])) {
                    c[0] = c[1] = c[2] = static_cast<std::uint8_t>(QelLUTSetting::kInvalidColor.r);
                    continue;
                }
                // Position 0 of a table is the high end of the range, so the
                // lowest height sits at the table's last entry.
                const double f = top - (qel::heightOf(src[i], resZ, offZ) - min) * scale;
                const double k = f > 0.0 ? std::min(f, top) : 0.0;  // NaN goes to 0
                const qel::Rgb8& rgb = table[static_cast<std::size_t>(k + 0.5)];
                c[0] = rgb.r;
                c[1] = rgb.g;
                c[2] = rgb.b;
            }
        });
    });
    *out = std::move(colors);
    return QEL_DATA_OK;
}

bool usable(const QelRangeImage& image, int lut, const QelColorArray* out) {
    return out && lut >= 0 && lut < QelLUTSetting::kTableCount && image.Width() > 0 &&
           image.Height() > 0 && QelRangeImage::SampleSize(image.DataType()) > 0;
}

}  // namespace

long QelLUTSetting::ColorMapLUT(const QelRangeImage& image, int lut, QelColorArray* out) {
    if (!usable(image, lut, out)) return QEL_DATA_INVALID_ARGUMENT;
    double max = 0.0, min = 0.0;
    // An image without valid samples is all dark grey; any range will do.
    Qel3DImageMathematics().RangeImageMaxMin(image, QelROI(), nullptr, nullptr, &max, &min);
    return mapImage(image, lut, min, max, out);
}

long QelLUTSetting::ColorMapLUT(const QelRangeImage& image, int lut, double min, double max,
                                QelColorArray* out) {
    if (!usable(image, lut, out) || !std::isfinite(min) || !std::isfinite(max))
        return QEL_DATA_INVALID_ARGUMENT;
    return mapImage(image, lut, min, max, out);
}

long QelLUTSetting::GetColor(double t, int lut, QelColor* out) {
    if (!out || lut < 0 || lut >= kTableCount || std::isnan(t)) return QEL_DATA_INVALID_ARGUMENT;
    const qel::Rgb8 c = qel::ColorTables::evaluate(lut, std::clamp(t, 0.0, 1.0));
    *out = QelColor(c.r, c.g, c.b, 255);
    return QEL_DATA_OK;
}

}  // namespace QELMV
