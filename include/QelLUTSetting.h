#pragma once

#include "QelColor.h"
#include "QelColorArray.h"
#include "QelDataExport.h"
#include "QelRangeImage.h"

namespace QELMV {

// Colour look-up tables 0..6, sampled at t in [0, 1]. Position 0 is the high
// end of a height range and 1 the low end, matching the colour bar, whose
// top shows the maximum:
//   0 grey: white (0) to black (1)
//   1 dark red, red, yellow, cyan, blue, dark blue (the five-piece map)
//   2 rainbow: HSV hue 1 - t at full saturation and value
//   3 near white, yellow, red, dark red
//   4 viridis: yellow (0) to dark purple (1), perceptually uniform
//   5 red (0), yellow, green, cyan, blue (1): the default height map
//   6 inferno: pale yellow (0) to black (1), perceptually uniform
class QEL_DATA_API QelLUTSetting {
public:
    QelLUTSetting() = default;

    // One 3-channel colour per sample, mapped over the image's own range of
    // valid heights. Invalid samples get dark grey (64, 64, 64).
    long ColorMapLUT(const QelRangeImage& image, int lut, QelColorArray* out);
    // The same over [min, max]; heights outside it take the end colours.
    long ColorMapLUT(const QelRangeImage& image, int lut, double min, double max,
                     QelColorArray* out);
    // The table's colour at t (clamped to [0, 1]); alpha 255.
    long GetColor(double t, int lut, QelColor* out);

    static constexpr int kTableCount = 7;
    static constexpr QelColor kInvalidColor{64, 64, 64, 255};
};

}  // namespace QELMV
