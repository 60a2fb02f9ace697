// Colour look-up tables and the colouring of range images.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>

#include "Qel3DData.h"

using QELMV::QelLUTSetting;

namespace {

QelColor colorAt(double t, int lut) {
    QelColor c;
    EXPECT_EQ(QelLUTSetting().GetColor(t, lut, &c), 0);
    return c;
}

void expectColor(const QelColor& c, int r, int g, int b) {
    EXPECT_EQ(c.r, r);
    EXPECT_EQ(c.g, g);
    EXPECT_EQ(c.b, b);
    EXPECT_EQ(c.a, 255);
}

}  // namespace

TEST(ColorTables, DefaultHeightMapRunsRedToBlue) {
    expectColor(colorAt(0.0, 5), 255, 0, 0);
    expectColor(colorAt(0.25, 5), 255, 255, 0);
    expectColor(colorAt(0.5, 5), 0, 255, 0);
    expectColor(colorAt(0.75, 5), 0, 255, 255);
    expectColor(colorAt(1.0, 5), 0, 0, 255);
    expectColor(colorAt(7.0, 5), 0, 0, 255);  // clamped
}

TEST(ColorTables, BarSchemesMatchTheColourBar) {
    // Position 0 is the bar's top (maximum), 1 its bottom.
    expectColor(colorAt(0.0, 0), 255, 255, 255);
    expectColor(colorAt(1.0, 0), 0, 0, 0);
    expectColor(colorAt(1.0, 1), 0, 0, 128);      // dark blue at the bottom
    expectColor(colorAt(0.375, 1), 255, 255, 0);  // yellow
    expectColor(colorAt(0.0, 1), 128, 0, 0);      // dark red at the top
    expectColor(colorAt(1.0, 2), 255, 0, 0);      // hue 0
    expectColor(colorAt(2.0 / 3.0, 2), 0, 255, 0);
    expectColor(colorAt(1.0, 3), 128, 0, 0);
    const QelColor top3 = colorAt(0.0, 3);
    EXPECT_EQ(top3.r, 255);
    EXPECT_LT(top3.b, 255) << "scheme 3 stops short of white";
}

TEST(ColorTables, PerceptualMapsRunDarkToLight) {
    for (int lut : {4, 6}) {
        int previous = 1 << 20;
        for (int k = 0; k <= 10; ++k) {
            const QelColor c = colorAt(k / 10.0, lut);
            const int lightness = 3 * c.r + 6 * c.g + c.b;
            EXPECT_LT(lightness, previous) << "table " << lut << " at " << k;
            previous = lightness;
        }
    }
    QelColor c;
    EXPECT_NE(QelLUTSetting().GetColor(0.5, 7, &c), 0);
    EXPECT_NE(QelLUTSetting().GetColor(0.5, -1, &c), 0);
    EXPECT_NE(QelLUTSetting().GetColor(NAN, 1, &c), 0);
}

TEST(ColorMapLUT, MapsOwnRangeAndGreysInvalidSamples) {
    QelRangeImage img;
    ASSERT_TRUE(img.SetSize(3, 1, QEL_16U));
    const unsigned short raw[] = {100, 0, 300};
    img.SetValue(raw, 3, 1, 0, 0, 0);
    img.SetInfo(1, 1, 0.5, 0, 0, 100);  // heights 0, invalid, 100
    QelColorArray out;
    ASSERT_EQ(QelLUTSetting().ColorMapLUT(img, 5, &out), 0);
    ASSERT_EQ(out.Length(), 3);
    ASSERT_EQ(out.Channel(), 3);
    expectColor(out[0], 0, 0, 255);
    expectColor(out[1], 64, 64, 64);
    expectColor(out[2], 255, 0, 0);

    // An explicit range in the same unit; outside it the end colours hold.
    ASSERT_EQ(QelLUTSetting().ColorMapLUT(img, 5, 0.0, 200.0, &out), 0);
    expectColor(out[2], 0, 255, 0);
    ASSERT_EQ(QelLUTSetting().ColorMapLUT(img, 5, 50.0, 60.0, &out), 0);
    expectColor(out[0], 0, 0, 255);
    expectColor(out[2], 255, 0, 0);
}

TEST(ColorMapLUT, FloatSamplesAreHeightsAndBadInputFails) {
    QelRangeImage img;
    ASSERT_TRUE(img.SetSize(2, 1, QEL_32F));
    const float h[] = {-5.0f, 5.0f};
    img.SetValue(h, 2, 1, 0, 0, 0);
    img.SetInfo(1, 1, 1000, 0, 0, 1000);  // ignored for float samples
    QelColorArray out;
    ASSERT_EQ(QelLUTSetting().ColorMapLUT(img, 5, -5.0, 5.0, &out), 0);
    expectColor(out[0], 0, 0, 255);
    expectColor(out[1], 255, 0, 0);

    EXPECT_NE(QelLUTSetting().ColorMapLUT(img, 9, &out), 0);
    EXPECT_NE(QelLUTSetting().ColorMapLUT(img, 5, nullptr), 0);
    EXPECT_NE(QelLUTSetting().ColorMapLUT(img, 5, NAN, 1.0, &out), 0);
    EXPECT_NE(QelLUTSetting().ColorMapLUT(QelRangeImage(), 5, &out), 0);
}
