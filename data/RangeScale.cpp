#include "RangeScale.h"

#include <cmath>
#include <limits>

#include "QelRangeImage.h"
#include "SampleTypes.h"

namespace qel {
namespace {

bool fits(double value) {
    return std::isfinite(value) && std::fabs(value) <= double(std::numeric_limits<float>::max());
}

// Positions (0 - offset) * resolution to (count - offset) * resolution.
bool positionsFit(double count, double resolution, double offset) {
    return fits(resolution) && fits(offset) && fits((0.0 - offset) * resolution) &&
           fits((count - offset) * resolution);
}

}  // namespace

bool RangeScale::fitsSinglePrecision(const QelRangeImage& image, double resolutionX,
                                     double resolutionY, double resolutionZ, double offsetX,
                                     double offsetY, double offsetZ) {
    if (!positionsFit(image.Width(), resolutionX, offsetX) ||
        !positionsFit(image.Height(), resolutionY, offsetY) || !fits(resolutionZ) || !fits(offsetZ))
        return false;
    bool heightsFit = true;
    visitSampleType(image.DataType(), [&](auto tag) {
        using Tag = decltype(tag);
        using T = typename Tag::Value;
        if constexpr (!Tag::kFloat) {
            const double low = heightOf(std::numeric_limits<T>::lowest(), resolutionZ, offsetZ);
            const double high = heightOf(std::numeric_limits<T>::max(), resolutionZ, offsetZ);
            heightsFit = fits(low) && fits(high);
        }
    });
    return heightsFit;
}

}  // namespace qel
