#pragma once

class QelRangeImage;

namespace qel {

// Whether a range image's positions and heights stay within single
// precision (the viewer draws them as floats) under given resolutions and
// offsets: every pixel position, and for integer samples every value the
// sample type can hold. Float samples are heights already; the viewer
// treats those beyond single precision as invalid samples.
class RangeScale {
public:
    static bool fitsSinglePrecision(const QelRangeImage& image, double resolutionX,
                                    double resolutionY, double resolutionZ, double offsetX,
                                    double offsetY, double offsetZ);
};

}  // namespace qel
